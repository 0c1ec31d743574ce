// The splash: it does the work of a start in steps and asks who is working.
#pragma once

#include "startup/login.h"
#include "ui/form_base.h"

#include <QElapsedTimer>

class QLabel;
class QProgressBar;
class QTimer;

namespace startup
{

/// What the splash needs of the program around it. A step that is empty is left out.
struct StartSteps {
    std::function<bool()> otherInstance; // another one runs on this machine
    std::function<void()> prepareFolder; // before the store is opened
    std::function<void()> openStore;     // the settings can be read: dress the program
    std::function<void()> loadBoard;     // build the board, hidden
    std::function<void()> startTasks;    // the automation of the day
    std::function<void()> loadOwners;    // screens that stay loaded hidden
    std::function<void()> loadSales;
    std::function<void()> showBoard;
    std::function<void()> finish; // ends the program
};

} // namespace startup

class frminicio : public ui::FormBase
{
    Q_OBJECT
public:
    frminicio(Sesion &s, startup::StartSteps steps, QWidget *parent = nullptr);
    ~frminicio() override;

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
