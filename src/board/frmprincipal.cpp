#include "board/frmprincipal.h"

#include "board/board_view.h"
#include "board/ringing.h"
#include "board/version_text.h"
#include "store/lookups.h"
#include "ui/calm_keyboard.h"
#include "ui/form_registry.h"
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

using namespace Qt::StringLiterals;

namespace
{

enum Texto { NoDisponible = 1, CambioDeDia = 1201, Ayudas = 9121, Pizarra = 9122 };

constexpr int railWidth = 232;
constexpr int pictureColumn = 64;
constexpr int iconColumn = 56;
constexpr int smallScreen = 800;
constexpr int clockMs = 20'000;
constexpr int beeps = 10;
constexpr int beepMs = 60;

} // namespace

Escritorio Escritorio::Real()
{
    return {[](const QUrl &link) { return QDesktopServices::openUrl(link); },
            [] {
                for (int i = 0; i < beeps; ++i)
                    QTimer::singleShot(i * beepMs, qApp, [] { QApplication::beep(); });
            },
            [] { QCoreApplication::exit(0); }};
}

frmprincipal::frmprincipal(Sesion &s, Formularios &formularios, Escritorio escritorio,
                           QWidget *parent)
    : FormBase(s, u"frmprincipal"_s, parent),
      m_formularios(formularios),
      m_escritorio(std::move(escritorio))
{
    setWindowFlags(Qt::Window);
    build();
    wire();
}

void frmprincipal::build()
{
    GPizarra = named(new QTableView, u"GPizarra"_s, m_s(Pizarra));
    m_model = new ModeloDePizarra(
        m_s,
        [this](const Destino &d) {
            return !d.enlace.isEmpty() || m_formularios.Existe(d.formulario);
        },
        this);
    GPizarra->setModel(m_model);
    GPizarra->setItemDelegate(new DelegadoDePizarra(GPizarra));
    GPizarra->horizontalHeader()->hide();
    GPizarra->verticalHeader()->hide();
    GPizarra->setShowGrid(false);
    GPizarra->setTabKeyNavigation(false);
    GPizarra->setMouseTracking(true);
    GPizarra->setSelectionBehavior(QAbstractItemView::SelectRows);
    GPizarra->setSelectionMode(QAbstractItemView::SingleSelection);
    GPizarra->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    GPizarra->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    auto *hints = new QLabel(m_s(Ayudas));
    hints->setProperty("clase", u"suave"_s);

    auto *page = new QVBoxLayout;
    page->setContentsMargins(Espacio::XL, Espacio::L, Espacio::XL, Espacio::M);
    page->setSpacing(Espacio::M);
    page->addWidget(buildHead());
    page->addWidget(GPizarra, 1);
    page->addWidget(hints);

    auto *all = new QHBoxLayout(this);
    all->setContentsMargins({});
    all->setSpacing(0);
    all->addWidget(buildRail());
    all->addLayout(page, 1);

    TimerHora = new QTimer(this);
    TimerHora->setObjectName(u"TimerHora"_s);
    TimerHora->setInterval(clockMs);
    setMinimumSize(720, 480);
    rememberSize({1180, 720});
    GPizarra->setFocus();
}

QWidget *frmprincipal::buildRail()
{
    auto *rail = new QFrame;
    rail->setObjectName(u"riel"_s);
    rail->setFixedWidth(railWidth);
    auto *column = new QVBoxLayout(rail);
    column->setContentsMargins(Espacio::M, Espacio::L, Espacio::M, Espacio::M);
    column->setSpacing(2);

    auto *mark = new QLabel;
    mark->setPixmap(
        Icono(u"kelvara"_s, Tono::SobreMarco).pixmap(QSize(32, 32), devicePixelRatioF()));
    auto *name = new QLabel(u"Kelvara"_s);
    name->setProperty("clase", u"marca"_s);
    auto *brand = new QHBoxLayout;
    brand->setContentsMargins(Espacio::S, 0, 0, Espacio::M);
    brand->setSpacing(Espacio::M);
    brand->addWidget(mark);
    brand->addWidget(name, 1);
    column->addLayout(brand);

    for (const BotonDeTablero &button : BotonesDeTablero()) {
        if (button.formulario.isEmpty())
            column->addStretch();
        column->addWidget(buildButton(button));
    }
    return rail;
}

QPushButton *frmprincipal::buildButton(const BotonDeTablero &button)
{
    const QString keys = u"Alt+"_s + QChar(button.digito);
    const QString caption = m_s(button.texto);
    auto *b = named(new QPushButton(Icono(button.dibujo.toString(), Tono::SobreMarco), caption),
                    button.nombre.toString(), caption);
    b->setAccessibleDescription(keys);
    b->setIconSize({24, 24});
    b->setMinimumHeight(36);
    b->setMaximumHeight(52);
    b->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    b->setAutoDefault(false);
    // Not the button's own shortcut, which acts only after it has shown itself pressed.
    connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, b, &QPushButton::click);
    b->setEnabled(button.formulario.isEmpty()
                  || m_formularios.Existe(button.formulario.toString()));

    auto *hint = new QLabel(keys);
    hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto *row = new QHBoxLayout(b);
    row->setContentsMargins(0, 0, Espacio::S, 0);
    row->addStretch();
    row->addWidget(hint);
    connect(b, &QPushButton::clicked, this, [this, &button] { navigate(button); });
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
    portrait->setPixmap(Icono(u"usr"_s).pixmap(QSize(28, 28), devicePixelRatioF()));

    auto *names = new QVBoxLayout;
    names->setSpacing(2);
    names->addWidget(lblClinica);
    names->addWidget(lblDatos);
    auto *head = new QWidget;
    auto *row = new QHBoxLayout(head);
    row->setContentsMargins(Espacio::XS, 0, Espacio::XS, 0);
    row->setSpacing(Espacio::S);
    row->addLayout(names, 1);
    row->addWidget(portrait);
    row->addWidget(lblUsuario);
    return head;
}

void frmprincipal::wire()
{
    connect(GPizarra, &QTableView::clicked, this,
            [this](const QModelIndex &cell) { follow(m_model->DestinoDe(cell)); });
    connect(GPizarra, &QTableView::entered, this, &frmprincipal::pointAt);
    GPizarra->installEventFilter(this);
    connect(TimerHora, &QTimer::timeout, this, &frmprincipal::tick);
    connect(new QShortcut(QKeySequence(Qt::Key_F5), this), &QShortcut::activated, this,
            &frmprincipal::CargarPizarra);
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this,
            [this] { m_escritorio.abrir(QUrl(PaginaDeAyuda(m_s))); });
}

void frmprincipal::opened(const QVariantMap &) { CargarPizarra(); }

void frmprincipal::CargarPizarra()
{
    guarded([this] {
        m_model->Cargar();
        setWindowTitle(TituloDelTablero(m_s));
    });
    layRows();
    const DatosDeClinica &clinic = m_s.clinica;
    lblClinica->setText(clinic.nom.isEmpty() ? u"Kelvara"_s : clinic.nom);
    QStringList details{clinic.dir, clinic.tel};
    details.removeAll(QString());
    lblDatos->setText(details.join(u"  ·  "_s));
    lblDatos->setVisible(!details.isEmpty());
    lblUsuario->setText(m_s.usuario.nom);
}

void frmprincipal::layRows()
{
    GPizarra->clearSpans();
    GPizarra->horizontalHeader()->setMinimumSectionSize(1);
    GPizarra->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    GPizarra->horizontalHeader()->setSectionResizeMode(ModeloDePizarra::Mensaje,
                                                       QHeaderView::Stretch);
    GPizarra->setColumnWidth(ModeloDePizarra::Dibujo, pictureColumn);
    GPizarra->setColumnWidth(ModeloDePizarra::Icono1, iconColumn);
    GPizarra->setColumnWidth(ModeloDePizarra::Icono2, iconColumn);
    GPizarra->setSpan(0, ModeloDePizarra::Mensaje, 1,
                      ModeloDePizarra::Columnas - ModeloDePizarra::Mensaje);
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const auto kind = ModeloDePizarra::Clase(
            m_model->index(row, 0).data(ModeloDePizarra::PapelClase).toInt());
        if (kind == ModeloDePizarra::Clase::Vacia)
            GPizarra->setSpan(row, 0, 1, ModeloDePizarra::Columnas);
        GPizarra->setRowHeight(row, DelegadoDePizarra::AltoDe(kind, GPizarra->fontMetrics()));
    }
    GPizarra->setCurrentIndex(m_model->index(1, ModeloDePizarra::Mensaje));
}

void frmprincipal::Mostrar()
{
    if (screen()->size().width() <= smallScreen)
        showMaximized();
    else
        show();
    GPizarra->setFocus();
}

void frmprincipal::navigate(const BotonDeTablero &button)
{
    if (button.formulario.isEmpty())
        return reject();
    if (!PuedeUsar(m_s.usuario, button))
        return m_s.dialogos.Mensaje(m_s(NoDisponible));
    follow({button.formulario.toString(), {}, {}});
}

void frmprincipal::follow(const Destino &target)
{
    if (!target.enlace.isEmpty())
        m_escritorio.abrir(target.enlace);
    else if (!target.formulario.isEmpty())
        guarded([this, &target] { m_formularios.Abrir(target.formulario, target.parametros); });
}

void frmprincipal::pointAt(const QModelIndex &cell)
{
    const bool active = !m_model->DestinoDe(cell).Ninguno();
    GPizarra->viewport()->setCursor(active ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

bool frmprincipal::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == GPizarra && event->type() == QEvent::KeyPress
        && boardKey(*static_cast<QKeyEvent *>(event)))
        return true;
    return FormBase::eventFilter(watched, event);
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
        follow(m_model->DestinoDeFila(cell));
        return true;
    case Qt::Key_1:
        follow(m_model->DestinoDe(cell.siblingAtColumn(ModeloDePizarra::Icono1)));
        return true;
    case Qt::Key_2:
        follow(m_model->DestinoDe(cell.siblingAtColumn(ModeloDePizarra::Icono2)));
        return true;
    default:
        return false;
    }
}

void frmprincipal::keyPressEvent(QKeyEvent *event)
{
    // ESC closes screens, and people press it twice: it must not end the program.
    if (event->key() != Qt::Key_Escape)
        FormBase::keyPressEvent(event);
}

void frmprincipal::showEvent(QShowEvent *event)
{
    TimerHora->start();
    FormBase::showEvent(event);
}

void frmprincipal::tick()
{
    // No box on top of another: what rings while one waits is not rung later.
    if (DialogosDeVentana::HayUnaAbierta())
        return;
    guarded([this] {
        for (const QString &text : AlarmasQueSuenan(m_s)) {
            m_escritorio.pitar();
            interrupt(text);
        }
    });
    if (CambioElDia(m_s)) {
        interrupt(m_s(CambioDeDia));
        reject();
    }
}

/// Whatever somebody is typing at this moment, it is no answer.
void frmprincipal::interrupt(const QString &text)
{
    const TecladoEnCalma calm;
    m_s.dialogos.Mensaje(text);
}

void frmprincipal::reject()
{
    TimerHora->stop();
    FormBase::reject();
    m_escritorio.terminar();
}
