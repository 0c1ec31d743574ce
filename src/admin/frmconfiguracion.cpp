#include "admin/frmconfiguracion.h"

#include "store/settings_row.h"
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

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Hospedaje = 3205,
    Finanzas = 9101,
    Configuracion = 9106,
    Veterinaria = 9119,
    Usuarios = 9550,
    Automatizacion,
    Recordatorios,
    Alimento,
    Perfiles,
    Mensajes,
    Correo,
    Listas_,
    Aspecto,
    Red,
    TituloDeLista = 9560,
    Teclas = 9561,
    PaginaSinLeer = 9628,
};

struct Pagina {
    QStringView nombre;
    int titulo;
    QStringView icono;
    QWidget *(*construir)(const ContextoDePagina &);
};

constexpr Pagina pages[] = {
    {u"clinica", Veterinaria, u"cfgClinica", PaginaDeClinica},
    {u"usuarios", Usuarios, u"usr", PaginaDeUsuarios},
    {u"automatizacion", Automatizacion, u"cfgAutomatizacion", PaginaDeAutomatizacion},
    {u"medidas", Recordatorios, u"cfgMedidas", PaginaDeMedidas},
    {u"alimento", Alimento, u"cfgAlimento", PaginaDeAlimento},
    {u"perfiles", Perfiles, u"Propietarios", PaginaDePerfiles},
    {u"mensajes", Mensajes, u"cfgMensajes", PaginaDeMensajes},
    {u"correo", Correo, u"Mensajeria", PaginaDeCorreo},
    {u"listas", Listas_, u"Listados", PaginaDeListas},
    {u"finanzas", Finanzas, u"Finanzas", PaginaDeFinanzas},
    {u"hospedaje", Hospedaje, u"cfgHospedaje", PaginaDeHospedaje},
    {u"aspecto", Aspecto, u"cfgAspecto", PaginaDeAspecto},
    {u"red", Red, u"cfgRed", PaginaDeRed},
};
constexpr int pageCount = int(std::size(pages));

constexpr QSize firstSize(1020, 700);
constexpr int iconSize = 22;

QString keyOfLastPage() { return u"frmConfiguracion/pagina"_s; }

int pageOfName(const QString &name)
{
    for (int i = 0; i < pageCount; ++i)
        if (pages[i].nombre == name)
            return i;
    return -1;
}

/// The first control of a page that can be worked; of options the one that is chosen.
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

frmConfiguracion::frmConfiguracion(Sesion &s, Formularios &formularios, QWidget *parent)
    : FormBase(s, u"frmConfiguracion"_s, parent), m_formularios(formularios)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(s(Configuracion));
    setWindowIcon(Icono(u"Configuracion"_s));
    build();
    wire();
    rememberSize(firstSize);
}

QStringList frmConfiguracion::Paginas()
{
    QStringList names;
    for (const Pagina &page : pages)
        names << page.nombre.toString();
    return names;
}

void frmConfiguracion::build()
{
    lstPaginas = named(new QListWidget, u"lstPaginas"_s, m_s(TituloDeLista));
    lstPaginas->setIconSize(QSize(iconSize, iconSize));
    lstPaginas->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    stkPaginas = new QStackedWidget;
    for (const Pagina &page : pages) {
        auto *item = new QListWidgetItem(m_s(page.titulo), lstPaginas);
        item->setSizeHint(QSize(0, iconSize + 2 * Espacio::S));
        auto *slot = new QScrollArea;
        slot->setFrameShape(QFrame::NoFrame);
        slot->setFocusPolicy(Qt::NoFocus);
        slot->setWidgetResizable(true);
        stkPaginas->addWidget(slot);
    }
    drawIcons();
    lstPaginas->setFixedWidth(
        std::max(180, lstPaginas->sizeHintForColumn(0) + iconSize + 2 * Espacio::L));

    auto *heading = new QLabel(m_s(TituloDeLista));
    heading->setProperty("clase", u"suave"_s);
    heading->setBuddy(lstPaginas);
    auto *left = new QVBoxLayout;
    left->setSpacing(Espacio::XS);
    left->addWidget(heading);
    left->addWidget(lstPaginas, 1);

    lblTitulo = new QLabel;
    lblTitulo->setProperty("clase", u"titulo"_s);
    auto *right = new QVBoxLayout;
    right->setSpacing(Espacio::L);
    right->addWidget(lblTitulo);
    right->addWidget(stkPaginas, 1);

    auto *middle = new QHBoxLayout;
    middle->setSpacing(Espacio::XL);
    middle->addLayout(left);
    middle->addLayout(right, 1);

    Ayu = named(new LineaDeAyuda, u"Ayu"_s, {});
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::L, Espacio::L, Espacio::L, Espacio::S);
    all->setSpacing(Espacio::S);
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
    // Also where the ENTER chain or a letter leads: what is worked in is seen.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        QScrollArea *shown = area(stkPaginas->currentIndex());
        if (now && shown && shown->isAncestorOf(now))
            shown->ensureWidgetVisible(now, Espacio::S, Espacio::L);
    });
}

void frmConfiguracion::drawIcons()
{
    for (int i = 0; i < pageCount; ++i)
        lstPaginas->item(i)->setIcon(Icono(pages[i].icono.toString()));
}

QScrollArea *frmConfiguracion::area(int page) const
{
    return qobject_cast<QScrollArea *>(stkPaginas->widget(page));
}

void frmConfiguracion::opened(const QVariantMap &parametros)
{
    const int wanted = pageOfName(parametros.value(u"pagina"_s).toString());
    if (!isVisible()) {
        const int last = pageOfName(LeerAjusteDeMaquina(m_s, keyOfLastPage()));
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
    lblTitulo->setText(m_s(pages[page].titulo));
    stkPaginas->setCurrentIndex(page);
    if (area(page)->widget())
        Ayu->Decir(m_s(Teclas));
    else
        Ayu->Fallo(m_s(PaginaSinLeer));
}

void frmConfiguracion::buildPage(int page)
{
    const ContextoDePagina context{
        m_s,
        m_formularios,
        this,
        Ayu,
        [this](const std::function<void()> &task) { return guarded(task); },
        [this](const QList<QLineEdit *> &boxes) { refuseApostrophe(boxes); },
        [this](const QList<QWidget *> &boxes) { enterChain(boxes); }};
    guarded([this, page, &context] {
        auto *holder = new QWidget;
        auto *column = new QVBoxLayout(holder);
        column->setContentsMargins(0, 0, Espacio::L, Espacio::L);
        area(page)->setWidget(holder);
        QWidget *built = nullptr;
        try {
            built = pages[page].construir(context);
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
    const int page = (lstPaginas->currentRow() + by + pageCount) % pageCount;
    lstPaginas->setFocus(); // what was typed is written by its page first
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
            return true; // not for the button that now has the focus
        }
    }
    return FormBase::eventFilter(watched, event);
}

void frmConfiguracion::reject()
{
    if (QWidget *box = focusWidget())
        box->clearFocus();
    FormBase::reject();
}

void frmConfiguracion::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous() && lstPaginas->currentRow() >= 0)
        // Like the size of a form: where it cannot be kept, nobody needs to be told.
        QSettings(ArchivoDeMaquina(m_s), QSettings::IniFormat)
            .setValue(keyOfLastPage(), pages[lstPaginas->currentRow()].nombre.toString());
    FormBase::hideEvent(event);
}

void frmConfiguracion::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange && lstPaginas)
        drawIcons();
    FormBase::changeEvent(event);
}
