#include "admin/frmconfiguracion_pages.h"
#include "admin/users.h"
#include "texts/admin.h"
#include "texts/texts.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QShortcut>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

enum Column { Nom, Ut };

class Users : public QWidget
{
public:
    explicit Users(const PageContext &c) : m_c(c)
    {
        m_rows = new ui::GridModel(c.s,
                                   {{c.s(text::User), ui::Kind::Text, 320},
                                    {c.s(text::SettingsUsersType), ui::Kind::Text, 160},
                                    {u"IDU"_s, ui::Kind::Whole, 60, true}},
                                   this);
        grdUsr = new ui::Grid(c.s, m_rows);
        grdUsr->setObjectName(u"grdUsr"_s);
        grdUsr->setAccessibleName(c.s(text::SettingsUsers));
        grdUsr->setMinimumHeight(160);
        cmdUsrNuevo = parts::buttonOf(c.s(text::SettingsUsersNew), u"cmdUsrNuevo"_s);
        cmdUsrModificarContrasena =
            parts::buttonOf(c.s(text::ChangePassword), u"cmdUsrModificarContrasena"_s);
        cmdUsrEliminar = parts::buttonOf(c.s(text::DeleteEntryButton), u"cmdUsrEliminar"_s);
        layOut();
        wire();
        reload(c.s.user.idu);
    }

private:
    void layOut()
    {
        QVBoxLayout *column = parts::Column(this);
        column->setSpacing(ui::space::M);
        auto *buttons = new QHBoxLayout;
        buttons->setSpacing(ui::space::S);
        for (QPushButton *button : {cmdUsrNuevo, cmdUsrModificarContrasena, cmdUsrEliminar})
            buttons->addWidget(button);
        buttons->addStretch();
        column->addWidget(grdUsr, 1);
        column->addLayout(buttons);
        column->addSpacing(ui::space::S);
        for (int help = text::FirstHelp; help <= text::LastHelp; ++help)
            column->addWidget(parts::noteOf(m_c.s(help)));
    }

    void wire()
    {
        connect(cmdUsrNuevo, &QPushButton::clicked, this, &Users::add);
        connect(cmdUsrModificarContrasena, &QPushButton::clicked, this, &Users::changePassword);
        connect(cmdUsrEliminar, &QPushButton::clicked, this, &Users::remove);
        connect(grdUsr, &ui::Grid::chosenRow, this, &Users::changePassword);
        const auto key = [this](Qt::Key k, void (Users::*task)()) {
            auto *shortcut = new QShortcut(k, grdUsr);
            shortcut->setContext(Qt::WidgetShortcut);
            connect(shortcut, &QShortcut::activated, this, task);
        };
        key(Qt::Key_Insert, &Users::add);
        key(Qt::Key_Delete, &Users::remove);
    }

    void reload(int selected)
    {
        std::vector<ui::GridRow> rows;
        for (const UserRow &u : readUsers(m_c.s))
            rows.push_back({.cells = {u.nom, typeText(m_c.s, u.ut), u.idu}});
        m_rows->set(std::move(rows));
        if (m_rows->allRows() > 0 && !grdUsr->IrA(selected))
            grdUsr->Seleccionar(0);
        for (QPushButton *button : {cmdUsrModificarContrasena, cmdUsrEliminar})
            button->setEnabled(m_rows->allRows() > 0);
    }

    int currentId() const { return grdUsr->IdActual(); }
    QString currentName() const { return m_rows->cellText(grdUsr->currentRow(), Nom); }

    void add()
    {
        m_c.guarded([this] {
            const auto added = newUser(m_c.s);
            if (!added)
                return;
            reload(*added);
            m_c.help->success(m_c.s(text::SettingsUsersAdded) + currentName());
        });
    }

    void changePassword()
    {
        if (grdUsr->currentRow() < 0)
            return;
        m_c.guarded([this] {
            if (modifyPassword(m_c.s, currentId()))
                m_c.help->success(m_c.s(text::PasswordChanged) + currentName());
        });
    }

    void remove()
    {
        if (grdUsr->currentRow() < 0)
            return;
        m_c.guarded([this] {
            const QString name = currentName();
            if (!deleteUser(m_c.s, currentId()))
                return;
            reload(m_c.s.user.idu);
            m_c.help->success(m_c.s(text::SettingsUsersDeleted) + name);
        });
    }

    PageContext m_c;
    ui::GridModel *m_rows = nullptr;
    ui::Grid *grdUsr = nullptr;
    QPushButton *cmdUsrNuevo = nullptr;
    QPushButton *cmdUsrModificarContrasena = nullptr;
    QPushButton *cmdUsrEliminar = nullptr;
};

} // namespace

QWidget *admin::usersPage(const PageContext &c) { return new Users(c); }
