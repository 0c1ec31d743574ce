// The splash screen: does the work of starting up in steps, and handles the login.
#pragma once

#include "startup/login.h"
#include "ui/form_base.h"

#include <QElapsedTimer>

class QLabel;
class QProgressBar;
class QTimer;

namespace startup
{

/// What the splash needs from the program around it. An empty step is skipped.
struct StartSteps {
    std::function<bool()> otherInstance; // whether another instance runs on this machine
    std::function<bool()> prepareFolder; // before the store is opened; false ends the program
    std::function<void()> openStore;     // settings are readable: apply colours and the like
    std::function<void()> loadBoard;     // build the board, hidden
    std::function<void()> startTasks;    // the day's automation
    std::function<void()> loadOwners;    // screens that are kept loaded but hidden
    std::function<void()> loadSales;
    std::function<void()> showBoard;
    std::function<void()> finish; // ends the program
};

} // namespace startup

/// The form of the splash screen.
class frminicio : public ui::FormBase
{
    Q_OBJECT
public:
    /// The first step runs as soon as the event loop does.
    frminicio(Sesion &s, startup::StartSteps steps, QWidget *parent = nullptr);
    ~frminicio() override;

    /// Ends the program, unless a step is under way.
    void reject() override;

private:
    void build();
    void wire();
    void tick();
    void step();
    bool openAll();
    bool firstRun();
    void startLogin();
    void nameEntered();
    void passwordEntered();
    void afterEntry();
    void showLogin(bool visible);
    void chooseScene(int howMany);
    void showPictures();
    void stage(const QString &text);
    void progress(int done, int total);
    void repaintNow(bool always);
    void end();
    void finish();
    void leaveProgress();

    startup::StartSteps m_steps;
    startup::Login m_login;
    QElapsedTimer m_lastPaint;
    QString m_scene;
    int m_step = 0;
    bool m_working = false;
    bool m_over = false;

    QTimer *Timer1 = nullptr;
    QLabel *m_mark = nullptr;
    QLabel *lblDibujo = nullptr;
    QLabel *lblinicio = nullptr;
    QProgressBar *bar = nullptr;
    QWidget *m_entry = nullptr;
    QLabel *Label1 = nullptr;
    QLabel *Label2 = nullptr;
    QLineEdit *txtusr = nullptr;
    QLineEdit *txtpas = nullptr;
};
