// The home screen: the daily board and the way to every other form.
#pragma once

#include "board/navigation.h"
#include "ui/calm_keyboard.h"
#include "ui/form_base.h"

namespace ui
{

class FormRegistry;
class Pages;

} // namespace ui

namespace board
{

class BoardModel;

} // namespace board

class QFrame;
class QLabel;
class QModelIndex;
class QPushButton;
class QTableView;
class QTimer;

namespace board
{

/// What the board needs from the desktop. Tests supply their own.
struct Desk {
    std::function<bool(const QUrl &)> open; // false when nothing could open it
    std::function<void()> beep;             // announces an alarm
    std::function<void()> finish;           // ends the program
    std::function<qint64()> milliseconds = ui::steadyMilliseconds; // to tell pauses in typing

    /// The real desktop: links open in the browser, folders in the file manager.
    static Desk real();
};

} // namespace board

/// The home screen, around which the program runs: closing it ends the program.
class frmprincipal : public ui::FormBase
{
    Q_OBJECT
public:
    /// @param forms forms that the buttons and the board's lines open
    /// @param desk what it needs from the desktop
    frmprincipal(Sesion &s, ui::FormRegistry &forms, board::Desk desk = board::Desk::real(),
                 QWidget *parent = nullptr);

    /// Reads the title, the clinic's data and the lines again. Called once the user is known and
    /// whenever the board has changed.
    void CargarPizarra();
    /// Shows the board, maximized on a small screen.
    void showBoard();

    ~frmprincipal() override;

    /// Reads the board again.
    void opened(const QVariantMap &parameters) override;
    /// Ends the program, once every open page may be left.
    void reject() override;

protected:
    void activated() override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void build();
    void wire();
    QWidget *buildBoard();
    QWidget *buildRail();
    QWidget *buildHead();
    QPushButton *buildButton(const board::BoardButton &button);
    void layRows(int current);
    void pageChanged();
    void narrowRail(bool narrow);
    void end();

    void navigate(const board::BoardButton &button);
    void follow(const board::Target &target);
    void pointAt(const QModelIndex &cell);
    bool boardKey(const QKeyEvent &key);
    void tick();
    void interrupt(const QString &text);

    ui::FormRegistry &m_forms;
    board::Desk m_desk;
    board::BoardModel *m_model = nullptr;

    ui::Pages *m_pages = nullptr;
    QWidget *m_boardPage = nullptr;
    QFrame *m_rail = nullptr;
    QLabel *m_brand = nullptr;
    QList<QPair<QPushButton *, QString>> m_railButtons; // with their captions
    QString m_title;

    QTableView *GPizarra = nullptr;
    QTimer *TimerHora = nullptr;
    QPushButton *cmdPizarra = nullptr, *cmdVentana = nullptr;
    QLabel *lblClinica = nullptr;
    QLabel *lblDatos = nullptr;
    QLabel *lblUsuario = nullptr;
};
