#include "admin/frmconfiguracion.h"

#include "store/settings_row.h"
#include "texts/admin.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "ui/help_line.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QApplication>
#include <QButtonGroup>
#include <QListWidget>
#include <QScrollArea>
#include <QSettings>
#include <QShortcut>
#include <QStackedWidget>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

struct Page {
    QStringView name;
    int title;
    QStringView icon;
    QWidget *(*build)(const PageContext &);
};

constexpr Page pages[] = {
    {u"clinica", text::SettingsClinic, u"cfgClinica", clinicPage},
    {u"usuarios", text::SettingsUsers, u"usr", usersPage},
    {u"automatizacion", text::Automation, u"cfgAutomatizacion", automationPage},
    {u"medidas", text::SettingsReminders, u"cfgMedidas", measuresPage},
    {u"alimento", text::Food, u"cfgAlimento", foodPage},
    {u"perfiles", text::SettingsProfiles, u"Propietarios", profilesPage},
    {u"mensajes", text::SettingsMessages, u"cfgMensajes", messagesPage},
    {u"correo", text::SettingsMail, u"Mensajeria", mailPage},
    {u"listas", text::Lists, u"Listados", listsPage},
    {u"finanzas", text::FinanceButton, u"Finanzas", financePage},
    {u"hospedaje", text::SettingsBoarding, u"cfgHospedaje", boardingPage},
    {u"aspecto", text::SettingsLook, u"cfgAspecto", lookPage},
    {u"red", text::SettingsNetwork, u"cfgRed", networkPage},
};
constexpr int PageCount = int(std::size(pages));

constexpr QSize firstSize(1020, 700);
constexpr int IconSize = 22;

QString keyOfLastPage() { return u"frmConfiguracion/pagina"_s; }

int pageOfName(const QString &name)
{
    for (int i = 0; i < PageCount; ++i)
        if (pages[i].name == name)
            return i;
    return -1;
}

/// The first usable control of a page; in a group of options the chosen one.
QWidget *firstControl(const QWidget *page)
{
    for (QWidget *w = page->nextInFocusChain(); w && w != page; w = w->nextInFocusChain()) {
        if (!page->isAncestorOf(w) || !w->isVisibleTo(page) || !w->isEnabled()
            || !(w->focusPolicy() & Qt::TabFocus))
            continue;
        const auto *option = qobject_cast<const QAbstractButton *>(w);
        if (option && option->isCheckable() && option->autoExclusive() && !option->isChecked()
            && option->group() && option->group()->checkedButton())
            return option->group()->checkedButton();
        return w;
    }
    return nullptr;
}

} // namespace

frmConfiguracion::frmConfiguracion(Sesion &s, ui::FormRegistry &forms, QWidget *parent)
    : ui::FormBase(s, u"frmConfiguracion"_s, parent), m_forms(forms)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(s(text::SettingsButton));
    setWindowIcon(ui::namedIcon(u"Configuracion"_s));
    build();
    wire();
    rememberSize(firstSize);
}

QStringList frmConfiguracion::Pages()
{
    QStringList names;
    for (const Page &page : pages)
        names << page.name.toString();
    return names;
}

void frmConfiguracion::build()
{
    lstPaginas = named(new QListWidget, u"lstPaginas"_s, m_s(text::PagesTitle));
    lstPaginas->setIconSize(QSize(IconSize, IconSize));
    lstPaginas->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    stkPaginas = new QStackedWidget;
    for (const Page &page : pages) {
        auto *item = new QListWidgetItem(m_s(page.title), lstPaginas);
        item->setSizeHint(QSize(0, IconSize + 2 * ui::space::S));
        auto *slot = new QScrollArea;
        slot->setFrameShape(QFrame::NoFrame);
        slot->setFocusPolicy(Qt::NoFocus);
        slot->setWidgetResizable(true);
        stkPaginas->addWidget(slot);
    }
    drawIcons();
    lstPaginas->setFixedWidth(
        std::max(180, lstPaginas->sizeHintForColumn(0) + IconSize + 2 * ui::space::L));

    auto *heading = new QLabel(m_s(text::PagesTitle));
    heading->setProperty("clase", u"suave"_s);
    heading->setBuddy(lstPaginas);
    auto *left = new QVBoxLayout;
    left->setSpacing(ui::space::XS);
    left->addWidget(heading);
    left->addWidget(lstPaginas, 1);

    lblTitulo = new QLabel;
    lblTitulo->setProperty("clase", u"titulo"_s);
    auto *right = new QVBoxLayout;
    right->setSpacing(ui::space::L);
    right->addWidget(lblTitulo);
    right->addWidget(stkPaginas, 1);

    auto *middle = new QHBoxLayout;
    middle->setSpacing(ui::space::XL);
    middle->addLayout(left);
    middle->addLayout(right, 1);

    Ayu = named(new ui::HelpLine, u"Ayu"_s, {});
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::L, ui::space::L, ui::space::L, ui::space::S);
    all->setSpacing(ui::space::S);
    all->addLayout(middle, 1);
    all->addWidget(Ayu);
}

void frmConfiguracion::wire()
{
    connect(lstPaginas, &QListWidget::currentRowChanged, this, &frmConfiguracion::showPage);
    lstPaginas->installEventFilter(this);
    const auto key = [this](Qt::Key k, int by) {
        auto *shortcut = new QShortcut(QKeySequence(Qt::CTRL | k), this);
        connect(shortcut, &QShortcut::activated, this, [this, by] { step(by); });
    };
    key(Qt::Key_PageDown, 1);
    key(Qt::Key_PageUp, -1);
    // Also when the ENTER chain or a shortcut letter leads there: the focused control must be in
    // view.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        QScrollArea *shown = area(stkPaginas->currentIndex());
        if (now && shown && shown->isAncestorOf(now))
            shown->ensureWidgetVisible(now, ui::space::S, ui::space::L);
    });
}

void frmConfiguracion::drawIcons()
{
    for (int i = 0; i < PageCount; ++i)
        lstPaginas->item(i)->setIcon(ui::namedIcon(pages[i].icon.toString()));
}

QScrollArea *frmConfiguracion::area(int page) const
{
    return qobject_cast<QScrollArea *>(stkPaginas->widget(page));
}

void frmConfiguracion::opened(const QVariantMap &parameters)
{
    const int wanted = pageOfName(parameters.value(u"pagina"_s).toString());
    if (!isVisible()) {
        const int last = pageOfName(store::readMachineSetting(m_s, keyOfLastPage()));
        lstPaginas->setCurrentRow(std::max({wanted, wanted < 0 ? last : -1, 0}));
        lstPaginas->setFocus();
    } else if (wanted >= 0) {
        lstPaginas->setCurrentRow(wanted);
    }
}

void frmConfiguracion::showPage(int page)
{
    if (page < 0)
        return;
    if (!area(page)->widget())
        buildPage(page);
    lblTitulo->setText(m_s(pages[page].title));
    stkPaginas->setCurrentIndex(page);
    if (area(page)->widget())
        Ayu->tell(m_s(text::SettingsKeyHelp));
    else
        Ayu->faultOf(m_s(text::PageUnreadable));
}

void frmConfiguracion::buildPage(int page)
{
    const PageContext context{m_s,
                              m_forms,
                              this,
                              Ayu,
                              [this](const std::function<void()> &task) { return guarded(task); },
                              [this](const QList<QLineEdit *> &boxes) { refuseApostrophe(boxes); },
                              [this](const QList<QWidget *> &boxes) { enterChain(boxes); }};
    guarded([this, page, &context] {
        auto *holder = new QWidget;
        auto *column = new QVBoxLayout(holder);
        column->setContentsMargins(0, 0, ui::space::L, ui::space::L);
        area(page)->setWidget(holder);
        QWidget *built = nullptr;
        try {
            built = pages[page].build(context);
        } catch (...) {
            delete area(page)->takeWidget();
            throw;
        }
        column->addWidget(built);
        const QLayout *inside = built->layout();
        if (!inside || !(inside->expandingDirections() & Qt::Vertical))
            column->addStretch();
    });
}

void frmConfiguracion::step(int by)
{
    const int page = (lstPaginas->currentRow() + by + PageCount) % PageCount;
    lstPaginas->setFocus(); // lets the page write what was typed
    lstPaginas->setCurrentRow(page);
}

void frmConfiguracion::enterPage()
{
    const QWidget *page = area(stkPaginas->currentIndex())->widget();
    if (QWidget *control = page ? firstControl(page) : nullptr)
        control->setFocus(Qt::TabFocusReason);
}

bool frmConfiguracion::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == lstPaginas && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            enterPage();
            return true; // must not reach the button that now has the focus
        }
    }
    return ui::FormBase::eventFilter(watched, event);
}

void frmConfiguracion::reject()
{
    mayLeave();
    ui::FormBase::reject();
}

bool frmConfiguracion::mayLeave()
{
    if (QWidget *box = focusWidget())
        box->clearFocus(); // boxes store when they are left
    return true;
}

void frmConfiguracion::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous() && lstPaginas->currentRow() >= 0)
        // As with a form's size, it does not matter if this cannot be saved.
        QSettings(store::machineFile(m_s), QSettings::IniFormat)
            .setValue(keyOfLastPage(), pages[lstPaginas->currentRow()].name.toString());
    ui::FormBase::hideEvent(event);
}

void frmConfiguracion::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange && lstPaginas)
        drawIcons();
    ui::FormBase::changeEvent(event);
}
