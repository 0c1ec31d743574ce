#include "startup/frminicio.h"

#include "startup/frmregistroinicial.h"
#include "startup/start_steps.h"
#include "store/opening.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QCoreApplication>
#include <QFrame>
#include <QGridLayout>
#include <QLocale>
#include <QProgressBar>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    PidaNombre = 3401,
    PidaContrasena = 3402,
    YaEstaAbierto = 3403,
    Iniciando = 3404,
    CargandoComponentes = 3405,
    ControlDeUsuario = 3406,
    TareasDelInicio = 3407,
};

constexpr QSize pictureSize(640, 260);
constexpr QSize portraitSize(128, 128);
constexpr QSize markSize(40, 40);
constexpr int stepMs = 15;
constexpr int paintMs = 33;
constexpr int splashPictures = 4;
constexpr int splashPicturesAfterLogin = 3;

void call(const std::function<void()> &step)
{
    if (step)
        step();
}

} // namespace

frminicio::frminicio(Sesion &s, PasosDeInicio pasos, QWidget *parent)
    : FormBase(s, u"frminicio"_s, parent), m_steps(std::move(pasos))
{
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    setWindowTitle(u"Kelvara"_s);
    build();
    wire();
    Timer1->start();
}

frminicio::~frminicio() { m_s.avance = {}; }

void frminicio::build()
{
    lblDibujo = named(new QLabel, u"lblDibujo"_s, u"Kelvara"_s);
    lblDibujo->setFixedSize(pictureSize);
    lblDibujo->setAlignment(Qt::AlignCenter);

    m_mark = new QLabel;
    chooseScene(splashPictures);
    auto *name = new QLabel(u"Kelvara"_s);
    name->setProperty("clase", u"titulo"_s);
    lblinicio = named(new QLabel, u"lblinicio"_s, {});
    lblinicio->setProperty("clase", u"suave"_s);
    lblinicio->setTextFormat(Qt::PlainText);
    lblinicio->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    barra = named(new QProgressBar, u"barra"_s, m_s(TareasDelInicio));
    barra->setTextVisible(false);
    barra->setRange(0, 1);
    QSizePolicy keepsItsPlace = barra->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    barra->setSizePolicy(keepsItsPlace);

    Label1 = named(new QLabel(m_s(PidaNombre)), u"Label1"_s, m_s(PidaNombre));
    Label2 = named(new QLabel(m_s(PidaContrasena)), u"Label2"_s, m_s(PidaContrasena));
    txtusr = named(new QLineEdit, u"txtusr"_s, m_s(PidaNombre));
    txtpas = named(new QLineEdit, u"txtpas"_s, m_s(PidaContrasena));
    txtpas->setEchoMode(QLineEdit::Password);
    Label1->setBuddy(txtusr);
    Label2->setBuddy(txtpas);
    m_entry = new QWidget;
    auto *entry = new QGridLayout(m_entry);
    entry->setContentsMargins({});
    entry->setHorizontalSpacing(Espacio::L);
    entry->setVerticalSpacing(Espacio::XS);
    entry->addWidget(Label1, 0, 0);
    entry->addWidget(Label2, 0, 1);
    entry->addWidget(txtusr, 1, 0);
    entry->addWidget(txtpas, 1, 1);

    auto *titles = new QHBoxLayout;
    titles->setSpacing(Espacio::M);
    titles->addWidget(m_mark);
    titles->addWidget(name);
    titles->addStretch();

    auto *foot = new QFrame;
    foot->setObjectName(u"pie"_s);
    foot->setFixedHeight(186);
    auto *column = new QVBoxLayout(foot);
    column->setContentsMargins(Espacio::XL, Espacio::L, Espacio::XL, Espacio::L);
    column->setSpacing(Espacio::M);
    column->addLayout(titles);
    column->addWidget(m_entry);
    column->addStretch();
    column->addWidget(lblinicio);
    column->addWidget(barra);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(1, 1, 1, 1); // room for the border
    all->setSpacing(0);
    all->setSizeConstraint(QLayout::SetFixedSize);
    all->addWidget(lblDibujo);
    all->addWidget(foot);
    showLogin(false);

    Timer1 = new QTimer(this);
    Timer1->setObjectName(u"Timer1"_s);
    Timer1->setSingleShot(true);
    Timer1->setInterval(stepMs);
}

void frminicio::wire()
{
    // One shot at a time: a step that repaints must not be entered again by its own timer.
    connect(Timer1, &QTimer::timeout, this, &frminicio::tick);
    connect(txtusr, &QLineEdit::returnPressed, this, &frminicio::nameEntered);
    connect(txtpas, &QLineEdit::returnPressed, this, &frminicio::passwordEntered);
    refuseApostrophe({txtusr, txtpas});
    m_s.avance.etapa = [this](const QString &text) { stage(text); };
    m_s.avance.barra = [this](int done, int total) { progress(done, total); };
}

void frminicio::tick()
{
    m_working = true;
    step();
    m_working = false;
}

void frminicio::step()
{
    if (m_steps.otraInstancia && m_steps.otraInstancia()) {
        m_s.dialogos.Mensaje(m_s(YaEstaAbierto));
        return end();
    }
    switch (m_step++) {
    case 0:
        stage(m_s(Iniciando));
        if (!openAll())
            return end();
        break;
    case 2:
        stage(m_s(CargandoComponentes));
        guarded([this] { call(m_steps.cargarTablero); });
        stage(m_s(ControlDeUsuario));
        return startLogin();
    case 3:
        stage(m_s(TareasDelInicio));
        // What the pass could not do is told; the clinic can still work today.
        guarded([this] { call(m_steps.iniciarTareas); });
        break;
    case 7:
        return finish();
    default:
        break;
    }
    Timer1->start();
}

bool frminicio::openAll()
{
    bool goesOn = false;
    const bool fine = guarded([this, &goesOn] {
        call(m_steps.prepararCarpeta);
        if (const auto failure = AbrirAlmacen(m_s)) {
            m_s.dialogos.Mensaje(failure->texto);
            return;
        }
        call(m_steps.almacenAbierto);
        showPictures(); // in the clinic's own colour, which is known only now
        goesOn = firstRun() && ComprobarInicio(m_s, QLocale());
    });
    return fine && goesOn;
}

bool frminicio::firstRun()
{
    if (!EsPrimeraVez(m_s))
        return true;
    EmpezarPrimeraVez(m_s);
    frmRegistroInicial form(m_s, this);
    if (form.exec() != QDialog::Accepted)
        return false;
    TerminarPrimeraVez(m_s);
    return true;
}

void frminicio::startLogin()
{
    const bool fine = guarded([this] { m_login = EmpezarLogin(m_s); });
    if (!fine)
        return end();
    if (m_login.paso == Login::Paso::Dentro)
        return Timer1->start();
    lblDibujo->setPixmap(Imagen(u"usr"_s, portraitSize, devicePixelRatioF()));
    showLogin(true);
    txtusr->setFocus();
}

void frminicio::nameEntered()
{
    if (guarded([this] { DarNombre(m_s, m_login, txtusr->text()); }))
        afterEntry();
}

void frminicio::passwordEntered()
{
    if (guarded([this] { DarContrasena(m_s, m_login, txtpas->text()); }))
        afterEntry();
}

void frminicio::afterEntry()
{
    stage(m_login.aviso);
    switch (m_login.paso) {
    case Login::Paso::PideNombre:
        txtusr->setFocus();
        txtusr->selectAll();
        break;
    case Login::Paso::PideContrasena:
        txtpas->setFocus();
        txtpas->selectAll();
        break;
    case Login::Paso::Termina:
        end();
        break;
    case Login::Paso::Dentro:
        showLogin(false);
        chooseScene(splashPicturesAfterLogin);
        Timer1->start();
        break;
    }
}

void frminicio::showLogin(bool visible)
{
    m_entry->setVisible(visible);
    barra->setVisible(!visible);
    txtpas->clear();
}

void frminicio::chooseScene(int howMany)
{
    m_scene = u"inicio%1"_s.arg(QRandomGenerator::global()->bounded(1, howMany + 1));
    showPictures();
}

void frminicio::showPictures()
{
    lblDibujo->setPixmap(Imagen(m_scene, pictureSize, devicePixelRatioF(), Tono::Escena));
    m_mark->setPixmap(Icono(u"kelvara"_s).pixmap(markSize, devicePixelRatioF()));
}

void frminicio::stage(const QString &text)
{
    lblinicio->setText(text);
    lblinicio->setAccessibleName(text);
    repaintNow(true);
}

void frminicio::progress(int done, int total)
{
    barra->setRange(0, std::max(total, 1));
    barra->setValue(done);
    repaintNow(done >= total);
}

void frminicio::repaintNow(bool always)
{
    if (!always && m_lastPaint.isValid() && m_lastPaint.elapsed() < paintMs)
        return;
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    m_lastPaint.start();
}

void frminicio::reject()
{
    // A pass that is cut off half way would be run again in full.
    if (!m_working)
        end();
}

void frminicio::end()
{
    if (m_over)
        return;
    m_over = true;
    Timer1->stop();
    hide();
    call(m_steps.terminar);
}

void frminicio::finish()
{
    m_over = true;
    m_step = 0;
    m_s.avance = {};
    guarded([this] { call(m_steps.cargarPropietarios); });
    hide();
    guarded([this] { call(m_steps.cargarVentas); });
    guarded([this] { call(m_steps.mostrarTablero); });
    close();
}
