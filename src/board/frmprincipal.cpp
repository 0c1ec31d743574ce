#include "board/frmprincipal.h"

#include "board/board_view.h"
#include "board/ringing.h"
#include "board/version_text.h"
#include "store/lookups.h"
#include "texts/texts.h"
#include "texts/ui.h"
#include "ui/calm_keyboard.h"
#include "ui/form_registry.h"
#include "ui/pages.h"
#include "ui/pictures.h"
#include "ui/theme.h"
#include "ui/window_dialogs.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFrame>
#include <QHeaderView>
#include <QScreen>
#include <QShortcut>
#include <QTableView>

using namespace board;
using namespace Qt::StringLiterals;

namespace
{

constexpr int RailWidth = 232, NarrowRail = 64;
constexpr int PictureColumn = 64;
constexpr int IconColumn = 56;
constexpr int SmallScreen = 800;
constexpr int ClockMs = 20'000;
constexpr int Beeps = 10;
constexpr int BeepMs = 60;

} // namespace

Desk Desk::real()
{
    return {[](const QUrl &link) { return QDesktopServices::openUrl(link); },
            [] {
                for (int i = 0; i < Beeps; ++i)
                    QTimer::singleShot(i * BeepMs, qApp, [] { QApplication::beep(); });
            },
            [] { QCoreApplication::exit(0); }, ui::steadyMilliseconds};
}

frmprincipal::frmprincipal(Sesion &s, ui::FormRegistry &forms, Desk desk, QWidget *parent)
    : ui::FormBase(s, u"frmprincipal"_s, parent), m_forms(forms), m_desk(std::move(desk))
{
    setWindowFlags(Qt::Window);
    build();
    wire();
    m_forms.setHost([this](ui::FormBase &form) { m_pages->bringForward(form); });
}

frmprincipal::~frmprincipal() { m_forms.setHost({}); }

void frmprincipal::build()
{
    m_boardPage = buildBoard();
    m_pages = new ui::Pages(m_boardPage);
    auto *all = new QHBoxLayout(this);
    all->setContentsMargins({});
    all->setSpacing(0);
    all->addWidget(buildRail());
    all->addWidget(m_pages, 1);

    TimerHora = new QTimer(this);
    TimerHora->setObjectName(u"TimerHora"_s);
    TimerHora->setInterval(ClockMs);
    setMinimumSize(720, 480);
    rememberSize({1366, 768});
    GPizarra->setFocus();
}

QWidget *frmprincipal::buildBoard()
{
    GPizarra = named(new QTableView, u"GPizarra"_s, m_s(text::BoardTitle));
    m_model = new BoardModel(
        m_s, [this](const Target &d) { return !d.link.isEmpty() || m_forms.exists(d.form); }, this);
    GPizarra->setModel(m_model);
    GPizarra->setItemDelegate(new BoardDelegate(GPizarra));
    GPizarra->horizontalHeader()->hide();
    GPizarra->verticalHeader()->hide();
    GPizarra->setShowGrid(false);
    GPizarra->setTabKeyNavigation(false);
    GPizarra->setMouseTracking(true);
    GPizarra->setSelectionBehavior(QAbstractItemView::SelectRows);
    GPizarra->setSelectionMode(QAbstractItemView::SingleSelection);
    GPizarra->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    GPizarra->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    auto *hints = new QLabel(m_s(text::BoardHelp));
    hints->setProperty("clase", u"suave"_s);

    auto *board = new QWidget;
    auto *page = new QVBoxLayout(board);
    page->setContentsMargins(ui::space::XL, ui::space::L, ui::space::XL, ui::space::M);
    page->setSpacing(ui::space::M);
    page->addWidget(buildHead());
    page->addWidget(GPizarra, 1);
    page->addWidget(hints);
    return board;
}

QWidget *frmprincipal::buildRail()
{
    m_rail = new QFrame;
    m_rail->setObjectName(u"riel"_s);
    m_rail->setFixedWidth(RailWidth);
    auto *column = new QVBoxLayout(m_rail);
    column->setContentsMargins(ui::space::M, ui::space::L, ui::space::M, ui::space::M);
    column->setSpacing(2);

    const auto ownButton = [this](const QString &name, const QString &picture, int caption,
                                  const QString &keys) {
        auto *b = named(new QPushButton(ui::namedIcon(picture, ui::Tone::OnFrame), {}), name,
                        m_s(caption));
        b->setToolTip(m_s(caption) + u" ("_s + keys + u')');
        b->setAutoDefault(false);
        b->setIconSize({24, 24});
        connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, b,
                &QPushButton::click);
        return b;
    };
    cmdPizarra = ownButton(u"cmdPizarra"_s, u"kelvara"_s, text::BackToBoard, u"Alt+Home"_s);
    cmdPizarra->setIconSize({32, 32});
    cmdPizarra->setFixedSize(48, 48);
    m_brand = new QLabel(u"Kelvara"_s);
    m_brand->setProperty("clase", u"marca"_s);
    auto *brand = new QHBoxLayout;
    brand->setContentsMargins(0, 0, 0, ui::space::M);
    brand->setSpacing(ui::space::XS);
    brand->addWidget(cmdPizarra);
    brand->addWidget(m_brand, 1);
    column->addLayout(brand);

    for (const BoardButton &button : boardButtons()) {
        if (button.form.isEmpty()) {
            column->addStretch();
            cmdVentana =
                ownButton(u"cmdVentana"_s, u"ventana"_s, text::OwnWindow, u"Ctrl+Shift+N"_s);
            cmdVentana->hide();
            column->addWidget(cmdVentana);
        }
        column->addWidget(buildButton(button));
    }
    return m_rail;
}

QPushButton *frmprincipal::buildButton(const BoardButton &button)
{
    const QString keys = u"Alt+"_s + QChar(button.digit);
    const QString caption = m_s(button.text);
    auto *b =
        named(new QPushButton(ui::namedIcon(button.dibujo.toString(), ui::Tone::OnFrame), caption),
              button.name.toString(), caption);
    b->setAccessibleDescription(keys);
    b->setIconSize({24, 24});
    b->setMinimumHeight(36);
    b->setMaximumHeight(52);
    b->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    b->setAutoDefault(false);
    // A button's own shortcut acts only after animating the press.
    connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, b, &QPushButton::click);
    b->setEnabled(button.form.isEmpty() || m_forms.exists(button.form.toString()));

    auto *hint = new QLabel(keys);
    hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto *row = new QHBoxLayout(b);
    row->setContentsMargins(0, 0, ui::space::S, 0);
    row->addStretch();
    row->addWidget(hint);
    connect(b, &QPushButton::clicked, this, [this, &button] { navigate(button); });
    hint->setObjectName(u"tecla"_s);
    m_railButtons.append({b, caption});
    return b;
}

QWidget *frmprincipal::buildHead()
{
    lblClinica = named(new QLabel, u"lblClinica"_s, {});
    lblClinica->setProperty("clase", u"titulo"_s);
    lblDatos = named(new QLabel, u"lblDatos"_s, {});
    lblDatos->setProperty("clase", u"suave"_s);
    lblUsuario = named(new QLabel, u"lblUsuario"_s, {});
    for (QLabel *label : {lblClinica, lblDatos, lblUsuario}) {
        label->setTextFormat(Qt::PlainText);
        label->setSizePolicy(label == lblUsuario ? QSizePolicy::Preferred : QSizePolicy::Ignored,
                             QSizePolicy::Preferred);
    }
    auto *portrait = new QLabel;
    portrait->setPixmap(ui::namedIcon(u"usr"_s).pixmap(QSize(28, 28), devicePixelRatioF()));

    auto *names = new QVBoxLayout;
    names->setSpacing(2);
    names->addWidget(lblClinica);
    names->addWidget(lblDatos);
    auto *head = new QWidget;
    auto *row = new QHBoxLayout(head);
    row->setContentsMargins(ui::space::XS, 0, ui::space::XS, 0);
    row->setSpacing(ui::space::S);
    row->addLayout(names, 1);
    row->addWidget(portrait);
    row->addWidget(lblUsuario);
    return head;
}

void frmprincipal::wire()
{
    connect(GPizarra, &QTableView::clicked, this,
            [this](const QModelIndex &cell) { follow(m_model->targetOf(cell)); });
    connect(GPizarra, &QTableView::entered, this, &frmprincipal::pointAt);
    GPizarra->installEventFilter(this);
    connect(TimerHora, &QTimer::timeout, this, &frmprincipal::tick);
    // The board's own: pages read themselves anew by the same key.
    auto *again = new QShortcut(QKeySequence(Qt::Key_F5), m_boardPage);
    connect(again, &QShortcut::activated, this, &frmprincipal::CargarPizarra);
    connect(m_pages, &ui::Pages::changed, this, [this] {
        if (m_pages->current())
            pageChanged();
        else
            CargarPizarra(); // what was done on a page may have settled a line
    });
    connect(cmdPizarra, &QPushButton::clicked, m_pages, &ui::Pages::goHome);
    connect(cmdVentana, &QPushButton::clicked, m_pages, &ui::Pages::separate);
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this,
            [this] { m_desk.open(QUrl(store::helpPage(m_s))); });
}

void frmprincipal::opened(const QVariantMap &) { CargarPizarra(); }

void frmprincipal::activated() { m_pages->activate(); }

/// The title says where one is; beside a page the rail makes room.
void frmprincipal::pageChanged()
{
    const ui::FormBase *page = m_pages->current();
    setWindowTitle(page ? page->windowTitle() + u" · "_s + m_title : m_title);
    narrowRail(page != nullptr);
}

void frmprincipal::narrowRail(bool narrow)
{
    m_rail->setFixedWidth(narrow ? NarrowRail : RailWidth);
    m_rail->layout()->setContentsMargins(narrow ? ui::space::S : ui::space::M, ui::space::L,
                                         narrow ? ui::space::S : ui::space::M, ui::space::M);
    m_brand->setVisible(!narrow);
    cmdVentana->setVisible(narrow);
    for (const auto &[button, caption] : std::as_const(m_railButtons)) {
        const QString keys = button->accessibleDescription();
        button->setText(narrow ? QString() : caption);
        button->setToolTip(narrow ? ui::spoken(caption) + u" ("_s + keys + u')' : QString());
        button->findChild<QLabel *>(u"tecla"_s)->setVisible(!narrow);
    }
}

void frmprincipal::CargarPizarra()
{
    const int before = GPizarra->currentIndex().row();
    guarded([this] {
        m_model->load();
        m_title = boardTitle(m_s);
    });
    pageChanged(); // also where the lines could not be read
    layRows(before);
    const store::ClinicData &clinic = m_s.clinic;
    lblClinica->setText(clinic.nom.isEmpty() ? u"Kelvara"_s : clinic.nom);
    QStringList details{clinic.dir, clinic.tel};
    details.removeAll(QString());
    lblDatos->setText(details.join(u"  ·  "_s));
    lblDatos->setVisible(!details.isEmpty());
    lblUsuario->setText(m_s.user.nom);
}

void frmprincipal::layRows(int current)
{
    GPizarra->clearSpans();
    GPizarra->horizontalHeader()->setMinimumSectionSize(1);
    GPizarra->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    GPizarra->horizontalHeader()->setSectionResizeMode(BoardModel::Message, QHeaderView::Stretch);
    GPizarra->setColumnWidth(BoardModel::Picture, PictureColumn);
    GPizarra->setColumnWidth(BoardModel::Icon1, IconColumn);
    GPizarra->setColumnWidth(BoardModel::Icon2, IconColumn);
    GPizarra->setSpan(0, BoardModel::Message, 1, BoardModel::ColumnCount - BoardModel::Message);
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const auto kind =
            BoardModel::Kind(m_model->index(row, 0).data(BoardModel::KindRole).toInt());
        if (kind == BoardModel::Kind::Empty)
            GPizarra->setSpan(row, 0, 1, BoardModel::ColumnCount);
        GPizarra->setRowHeight(row, BoardDelegate::heightOf(kind, GPizarra->fontMetrics()));
    }
    GPizarra->setCurrentIndex(
        m_model->index(std::clamp(current, 1, m_model->rowCount() - 1), BoardModel::Message));
}

void frmprincipal::showBoard()
{
    if (screen()->size().width() <= SmallScreen)
        showMaximized();
    else
        show();
    GPizarra->setFocus();
}

void frmprincipal::navigate(const BoardButton &button)
{
    if (button.form.isEmpty())
        return reject();
    if (!canUse(m_s.user, button))
        return m_s.dialogos.Mensaje(m_s(text::FeatureNotAvailable));
    follow({button.form.toString(), {}, {}});
}

void frmprincipal::follow(const Target &target)
{
    if (!target.link.isEmpty())
        m_desk.open(target.link);
    else if (!target.form.isEmpty())
        guarded([this, &target] { m_forms.open(target.form, target.parameters); });
}

void frmprincipal::pointAt(const QModelIndex &cell)
{
    const bool active = !m_model->targetOf(cell).None();
    GPizarra->viewport()->setCursor(active ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

bool frmprincipal::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == GPizarra && event->type() == QEvent::KeyPress
        && boardKey(*static_cast<QKeyEvent *>(event)))
        return true;
    return ui::FormBase::eventFilter(watched, event);
}

bool frmprincipal::boardKey(const QKeyEvent &key)
{
    if (key.modifiers() & ~Qt::KeypadModifier)
        return false;
    const QModelIndex cell = GPizarra->currentIndex();
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        follow(m_model->rowTarget(cell));
        return true;
    case Qt::Key_1:
        follow(m_model->targetOf(cell.siblingAtColumn(BoardModel::Icon1)));
        return true;
    case Qt::Key_2:
        follow(m_model->targetOf(cell.siblingAtColumn(BoardModel::Icon2)));
        return true;
    default:
        return false;
    }
}

void frmprincipal::keyPressEvent(QKeyEvent *event)
{
    // ESC closes other forms, and people tend to press it twice: it must not end the program.
    if (event->key() != Qt::Key_Escape)
        ui::FormBase::keyPressEvent(event);
}

void frmprincipal::showEvent(QShowEvent *event)
{
    TimerHora->start();
    ui::FormBase::showEvent(event);
}

void frmprincipal::tick()
{
    // Never stack a message on another. Alarms whose time is past by then do not ring.
    if (ui::WindowDialogs::isOneOpen())
        return;
    guarded([this] {
        for (const QString &text : ringingAlarms(m_s)) {
            m_desk.beep();
            interrupt(text);
        }
    });
    if (dayChanged(m_s)) {
        interrupt(m_s(text::DayHasChanged));
        end(); // what is being typed stays as a draft
    }
}

/// A key that was meant for another box must not answer the message.
void frmprincipal::interrupt(const QString &text)
{
    const ui::KeyboardInCalm calm(m_desk.milliseconds);
    m_s.dialogos.Mensaje(text);
}

void frmprincipal::reject()
{
    if (m_pages->mayLeaveAll())
        end();
}

void frmprincipal::end()
{
    TimerHora->stop();
    ui::FormBase::reject();
    m_desk.finish();
}
