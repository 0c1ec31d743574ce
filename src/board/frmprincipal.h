// The home screen: the day's board and the ways to everything else.
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

/// What the board asks of the desktop. Tests put their own.
struct Desk {
    std::function<bool(const QUrl &)> open;
    std::function<void()> beep;
    std::function<void()> finish;
    std::function<qint64()> milliseconds = ui::steadyMilliseconds;

    /// The real one: pages in the browser, folders in the file manager.
    static Desk real();
};

} // namespace board

class frmprincipal : public ui::FormBase
{
    Q_OBJECT
public:
    frmprincipal(Sesion &s, ui::FormRegistry &forms, board::Desk desk = board::Desk::real(),
                 QWidget *parent = nullptr);

    /// Reads title, clinic and lines again. Called once the user is known, and by who changes the
    /// report.
    void CargarPizarra();
    /// Shows the board, on the whole of a small screen.
    void showBoard();

    ~frmprincipal() override;

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
    void layRows();
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
