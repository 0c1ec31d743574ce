#include "admin/frmconfiguracion_rows.h"
#include "admin/list_maintenance.h"
#include "texts/admin.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "ui/form_base.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

/// Object names of one list's buttons. Regions are never deleted, so they lack the third.
struct ListOfPage {
    clients::List list;
    QStringView grid;
    QStringView add;
    QStringView change;
    QStringView remove;
};

constexpr ListOfPage lists[] = {
    {clients::List::Region, u"grdDepartamento", u"cmdND", u"cmdMD", u""},
    {clients::List::Subregion, u"grdLocalidad", u"cmdNL", u"cmdML", u"cmdEL"},
    {clients::List::Marketing, u"grdMarketing", u"cmdNM", u"cmdMM", u"cmdEM"},
    {clients::List::Species, u"grdEspecies", u"cmdNE", u"cmdME", u"cmdEE"},
    {clients::List::Breed, u"grdRazas", u"cmdNR", u"cmdMR", u"cmdER"},
    {clients::List::Coat, u"grdPelajes", u"cmdNP", u"cmdMp", u"cmdEP"},
};

constexpr int NameWidth = 260;

/// One list: its grid and the buttons that change it.
class Maintenance : public QWidget
{
public:
    Maintenance(const PageContext &c, const ListOfPage &which) : m_c(c), m_list(which.list)
    {
        auto *model = new ui::GridModel(c.s, columns(), this);
        m_grid = named(new ui::Grid(c.s, model), which.grid.toString(),
                       c.s(text::Regions + int(which.list)));
        m_grid->setEmptyText(c.s(text::ListIsEmpty));
        auto *buttons = new QHBoxLayout;
        buttons->setSpacing(ui::space::S);
        buttons->addWidget(
            button(which.add, text::SettingsListsAdd, Qt::Key_Insert, [this] { add(); }));
        m_change =
            button(which.change, text::SettingsListsModify, Qt::Key_F2, [this] { change(); });
        buttons->addWidget(m_change);
        if (!which.remove.isEmpty()) {
            m_remove =
                button(which.remove, text::DeleteEntryButton, Qt::Key_Delete, [this] { remove(); });
            buttons->addWidget(m_remove);
        }
        buttons->addStretch();
        auto *all = new QVBoxLayout(this);
        all->setContentsMargins(0, ui::space::M, 0, 0);
        all->setSpacing(ui::space::S);
        all->addWidget(m_grid, 1);
        all->addLayout(buttons);
        connect(m_grid, &ui::Grid::chosenRow, this, [this] { change(); });
        warnOnEntering(c, m_grid, m_remove ? text::ListKeyHelp : text::ListKeyHelpWithoutDelete);
        // Entries are also added while clients are entered, here and on other terminals.
        onShow(this, [this] { m_c.guarded([this] { load(m_grid->IdActual()); }); });
    }

private:
    QList<ui::GridColumn> columns() const
    {
        const Sesion &s = m_c.s;
        QList<ui::GridColumn> all{{s(text::Name), ui::Kind::Text, NameWidth}};
        if (m_list == clients::List::Region || m_list == clients::List::Subregion)
            all.append({s(m_list == clients::List::Region ? text::SubregionAreaCode
                                                          : text::SubregionPostalCode)});
        if (m_list == clients::List::Subregion || m_list == clients::List::Breed)
            all.append({s(m_list == clients::List::Subregion ? text::Region : text::Species)});
        all.append({{}, ui::Kind::Whole, 0, true});
        return all;
    }

    ui::GridRow row(const clients::Entry &entry)
    {
        ui::GridRow row;
        row.cells << entry.nom;
        if (m_list == clients::List::Region || m_list == clients::List::Subregion)
            row.cells << entry.code;
        if (m_list == clients::List::Subregion || m_list == clients::List::Breed)
            row.cells << parentName(m_c.s, m_list, entry);
        row.cells << entry.id;
        return row;
    }

    QPushButton *button(QStringView name, int caption, Qt::Key key,
                        const std::function<void()> &task)
    {
        auto *b = parts::buttonOf(m_c.s(caption), name.toString());
        b->setToolTip(QKeySequence(key).toString(QKeySequence::NativeText));
        connect(b, &QPushButton::clicked, this, task);
        auto *shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, b, [b] { b->click(); });
        return b;
    }

    /// Reads all rows and selects that entry, or else the first.
    void load(int id)
    {
        std::vector<ui::GridRow> rows;
        for (const clients::Entry &entry : clients::loadList(m_c.s, m_list))
            rows.push_back(row(entry));
        ui::GridModel *model = m_grid->gridModel();
        model->set(std::move(rows));
        const bool any = model->allRows() > 0;
        if (any && !m_grid->IrA(id))
            m_grid->Seleccionar(0);
        m_change->setEnabled(any);
        if (m_remove)
            m_remove->setEnabled(any);
    }

    void add()
    {
        m_c.guarded([this] {
            if (const auto id = addEntry(m_c.s, m_list))
                done(text::EntryAdded, *id);
        });
    }

    void change()
    {
        m_c.guarded([this, id = m_grid->IdActual()] {
            if (id != 0 && modifyEntry(m_c.s, m_list, id))
                done(text::EntryChanged, id);
        });
    }

    void remove()
    {
        m_c.guarded([this, id = m_grid->IdActual()] {
            if (id == 0 || !deleteEntry(m_c.s, m_list, id))
                return;
            const int row = m_grid->currentRow();
            const ui::GridModel *model = m_grid->gridModel();
            const int next = row + 1 < model->allRows() ? row + 1 : row - 1;
            done(text::EntryDeleted, model->idOf(next));
        });
    }

    void done(int what, int id)
    {
        load(id);
        m_grid->setFocus();
        m_c.help->success(m_c.s(what));
    }

    PageContext m_c;
    clients::List m_list;
    ui::Grid *m_grid = nullptr;
    QPushButton *m_change = nullptr;
    QPushButton *m_remove = nullptr;
};

} // namespace

QWidget *admin::listsPage(const PageContext &c)
{
    auto *page = new QWidget;
    auto *tabs = named(new QTabWidget, u"tabListas"_s, c.s(text::Lists));
    tabs->tabBar()->setAccessibleName(tabs->accessibleName());
    tabs->setDocumentMode(true);
    for (const ListOfPage &which : lists)
        tabs->addTab(new Maintenance(c, which), c.s(text::Regions + int(which.list)));
    parts::Column(page)->addWidget(tabs, 1);
    return page;
}
