// The row of ways from the client and patient shown to everything that is done for them.
#pragma once

#include "boarding/stay.h"
#include "ui/bound.h"

#include <QUrl>
#include <array>

namespace ui
{

class FormRegistry;
class HelpLine;

} // namespace ui

class QMenu;
class QPushButton;

namespace clients
{

/// Hands a link to the desktop; tests put their own. @return false when nothing opens it
using OpenLink = std::function<bool(const QUrl &)>;

class AccessesBar : public QWidget
{
    Q_OBJECT
public:
    AccessesBar(Sesion &s, ui::FormRegistry &forms, ui::bind::Guard guard, OpenLink open,
                ui::HelpLine *help, QWidget *parent = nullptr);

    /// Says again which buttons can be used with the client and patient of the session.
    /// @param free nothing is being entered
    void update(bool free);
    /// The button of the kennels for the patient shown.
    void setBoarding(boarding::Stay stay);
    /// The quick access menu of the client with this name: record, sell, prepaid, exit; by letter,
    /// digit or mouse.
    void openMenu(const QPoint &place, const QString &client);
    /// Writes to these addresses, parted by commas.
    void Mail(const QString &addresses);
    QPushButton *recordOf() const { return cmdficha; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Access;
    static const QList<Access> &accesses();
    void build();
    void buildMenu();
    void take(const Access &access);
    QString savedMail();
    void telephone();

    Sesion &m_s;
    ui::FormRegistry &m_forms;
    ui::bind::Guard m_guard;
    OpenLink m_open;
    ui::HelpLine *m_help;
    QMenu *m_menu = nullptr;
    QAction *m_title = nullptr;
    std::array<QAction *, 4> m_entries{}; // menu1 to menu4

    QPushButton *cmdficha, *cmdvender, *cmdobra, *cmdHospedaje, *cmdTurnos, *cmddeuda, *cmdAvisos,
        *cmdMail, *cmdTel, *cmdImprimir;
};

} // namespace clients
