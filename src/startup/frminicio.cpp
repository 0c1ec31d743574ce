#include "startup/frminicio.h"

#include "startup/frmregistroinicial.h"
#include "startup/start_steps.h"
#include "store/opening.h"
#include "texts/texts.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QCoreApplication>
#include <QFrame>
#include <QGridLayout>
#include <QLocale>
#include <QProgressBar>
#include <QRandomGenerator>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

constexpr QSize pictureSize(640, 260);
constexpr QSize portraitSize(128, 128);
constexpr QSize markSize(40, 40);
constexpr int StepMs = 15;
constexpr int PaintMs = 33;
constexpr int SplashPictures = 4;
constexpr int SplashPicturesAfterLogin = 3;

void call(const std::function<void()> &step)
{
    if (step)
        step();
}

} // namespace

frminicio::frminicio(Sesion &s, StartSteps steps, QWidget *parent)
    : ui::FormBase(s, u"frminicio"_s, parent), m_steps(std::move(steps))
{
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    setWindowTitle(u"Kelvara"_s);
    build();
    wire();
    Timer1->start();
}

frminicio::~frminicio() { leaveProgress(); }

void frminicio::leaveProgress()
{
    m_s.progress.stage = {};
    m_s.progress.bar = {};
}

void frminicio::build()
{
    lblDibujo = named(new QLabel, u"lblDibujo"_s, u"Kelvara"_s);
    lblDibujo->setFixedSize(pictureSize);
    lblDibujo->setAlignment(Qt::AlignCenter);

    m_mark = new QLabel;
    chooseScene(SplashPictures);
    auto *name = new QLabel(u"Kelvara"_s);
    name->setProperty("clase", u"titulo"_s);
    lblinicio = named(new QLabel, u"lblinicio"_s, {});
    lblinicio->setProperty("clase", u"suave"_s);
    lblinicio->setTextFormat(Qt::PlainText);
    lblinicio->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    bar = named(new QProgressBar, u"barra"_s, m_s(text::StartupTasks));
    bar->setTextVisible(false);
    bar->setRange(0, 1);
    QSizePolicy keepsItsPlace = bar->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    bar->setSizePolicy(keepsItsPlace);

    Label1 = named(new QLabel(m_s(text::EnterNameAndPressEnter)), u"Label1"_s,
                   m_s(text::EnterNameAndPressEnter));
    Label2 = named(new QLabel(m_s(text::EnterPasswordAndPressEnter)), u"Label2"_s,
                   m_s(text::EnterPasswordAndPressEnter));
    txtusr = named(new QLineEdit, u"txtusr"_s, m_s(text::EnterNameAndPressEnter));
    txtpas = named(new QLineEdit, u"txtpas"_s, m_s(text::EnterPasswordAndPressEnter));
    txtpas->setEchoMode(QLineEdit::Password);
    Label1->setBuddy(txtusr);
    Label2->setBuddy(txtpas);
    m_entry = new QWidget;
    auto *entry = new QGridLayout(m_entry);
    entry->setContentsMargins({});
    entry->setHorizontalSpacing(ui::space::L);
    entry->setVerticalSpacing(ui::space::XS);
    entry->addWidget(Label1, 0, 0);
    entry->addWidget(Label2, 0, 1);
    entry->addWidget(txtusr, 1, 0);
    entry->addWidget(txtpas, 1, 1);

    auto *titles = new QHBoxLayout;
    titles->setSpacing(ui::space::M);
    titles->addWidget(m_mark);
    titles->addWidget(name);
    titles->addStretch();

    auto *foot = new QFrame;
    foot->setObjectName(u"pie"_s);
    foot->setFixedHeight(186);
    auto *column = new QVBoxLayout(foot);
    column->setContentsMargins(ui::space::XL, ui::space::L, ui::space::XL, ui::space::L);
    column->setSpacing(ui::space::M);
    column->addLayout(titles);
    column->addWidget(m_entry);
    column->addStretch();
    column->addWidget(lblinicio);
    column->addWidget(bar);

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
    Timer1->setInterval(StepMs);
}

void frminicio::wire()
{
    // Single shot: a step that processes events must not be re-entered by its own timer.
    connect(Timer1, &QTimer::timeout, this, &frminicio::tick);
    connect(txtusr, &QLineEdit::returnPressed, this, &frminicio::nameEntered);
    connect(txtpas, &QLineEdit::returnPressed, this, &frminicio::passwordEntered);
    refuseApostrophe({txtusr, txtpas});
    m_s.progress.stage = [this](const QString &text) { stage(text); };
    m_s.progress.bar = [this](int done, int total) { progress(done, total); };
}

void frminicio::tick()
{
    m_working = true;
    step();
    m_working = false;
}

void frminicio::step()
{
    if (m_steps.otherInstance && m_steps.otherInstance()) {
        m_s.dialogos.Mensaje(m_s(text::KelvaraIsRunning));
        return end();
    }
    switch (m_step++) {
    case 0:
        stage(m_s(text::Starting));
        if (!openAll())
            return end();
        break;
    case 2:
        stage(m_s(text::LoadingComponents));
        guarded([this] { call(m_steps.loadBoard); });
        stage(m_s(text::UserControl));
        return startLogin();
    case 3:
        stage(m_s(text::StartupTasks));
        // Failures of the pass are reported, but the clinic can still work today.
        guarded([this] { call(m_steps.startTasks); });
        if (!m_s.motor) // a file was damaged and could not be repaired
            return end();
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
        if (m_steps.prepareFolder && !m_steps.prepareFolder())
            return;
        if (const auto failure = store::openStore(m_s)) {
            m_s.dialogos.Mensaje(failure->text);
            return;
        }
        call(m_steps.openStore);
        showPictures(); // the clinic's colour is known only now
        goesOn = firstRun() && checkStart(m_s, QLocale());
    });
    return fine && goesOn;
}

bool frminicio::firstRun()
{
    if (!isFirstRun(m_s))
        return true;
    beginFirstRun(m_s);
    frmRegistroInicial form(m_s, this);
    if (form.exec() != QDialog::Accepted)
        return false;
    finishFirstRun(m_s);
    return true;
}

void frminicio::startLogin()
{
    const bool fine = guarded([this] { m_login = beginLogin(m_s); });
    if (!fine)
        return end();
    if (m_login.step == Login::Step::Inside)
        return Timer1->start();
    lblDibujo->setPixmap(ui::Image(u"usr"_s, portraitSize, devicePixelRatioF()));
    showLogin(true);
    txtusr->setFocus();
}

void frminicio::nameEntered()
{
    if (guarded([this] { giveName(m_s, m_login, txtusr->text()); }))
        afterEntry();
}

void frminicio::passwordEntered()
{
    if (guarded([this] { givePassword(m_s, m_login, txtpas->text()); }))
        afterEntry();
}

void frminicio::afterEntry()
{
    stage(m_login.notice);
    switch (m_login.step) {
    case Login::Step::AsksName:
        txtusr->setFocus();
        txtusr->selectAll();
        break;
    case Login::Step::AsksPassword:
        txtpas->setFocus();
        txtpas->selectAll();
        break;
    case Login::Step::Ends:
        end();
        break;
    case Login::Step::Inside:
        showLogin(false);
        chooseScene(SplashPicturesAfterLogin);
        Timer1->start();
        break;
    }
}

void frminicio::showLogin(bool visible)
{
    m_entry->setVisible(visible);
    bar->setVisible(!visible);
    txtpas->clear();
}

void frminicio::chooseScene(int howMany)
{
    m_scene = u"inicio%1"_s.arg(QRandomGenerator::global()->bounded(1, howMany + 1));
    showPictures();
}

void frminicio::showPictures()
{
    lblDibujo->setPixmap(ui::Image(m_scene, pictureSize, devicePixelRatioF(), ui::Tone::Scene));
    m_mark->setPixmap(ui::namedIcon(u"kelvara"_s).pixmap(markSize, devicePixelRatioF()));
}

void frminicio::stage(const QString &text)
{
    lblinicio->setText(text);
    lblinicio->setAccessibleName(text);
    repaintNow(true);
}

void frminicio::progress(int done, int total)
{
    bar->setRange(0, std::max(total, 1));
    bar->setValue(done);
    repaintNow(done >= total);
}

void frminicio::repaintNow(bool always)
{
    if (!always && m_lastPaint.isValid() && m_lastPaint.elapsed() < PaintMs)
        return;
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    m_lastPaint.start();
}

void frminicio::reject()
{
    // An interrupted pass would have to run again in full.
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
    call(m_steps.finish);
}

void frminicio::finish()
{
    m_over = true;
    m_step = 0;
    leaveProgress();
    m_s.motor->setPatience(store::WorkingPatienceMs);
    guarded([this] { call(m_steps.loadOwners); });
    hide();
    guarded([this] { call(m_steps.loadSales); });
    guarded([this] { call(m_steps.showBoard); });
    close();
}
