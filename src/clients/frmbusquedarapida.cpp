#include "clients/frmbusquedarapida.h"

#include "clients/search.h"
#include "texts/clients.h"
#include "texts/search.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

enum Column { OfOwner, OfPatient, OfTelephone, DeIdc, DeIdm };

// Beyond these, one more letter narrows the matches down.
constexpr int RowsShown = 40;

} // namespace

frmBusquedaRapida::frmBusquedaRapida(Sesion &s, ui::FormRegistry &forms)
    : ui::FormBase(s, u"frmBusquedaRapida"_s), m_forms(forms)
{
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(s(text::QuickSearchTitle));
    build();
    connect(txtBuscar, &QLineEdit::textChanged, this, &frmBusquedaRapida::search);
    connect(grd, &ui::Grid::chosenRow, this, &frmBusquedaRapida::take);
    rememberSize({680, 460});
}

void frmBusquedaRapida::build()
{
    txtBuscar = named(new QLineEdit, u"txtBuscar"_s, m_s(text::QuickFindHint));
    txtBuscar->setPlaceholderText(m_s(text::QuickFindHint));
    txtBuscar->setClearButtonEnabled(true);
    txtBuscar->setMaxLength(100);
    txtBuscar->installEventFilter(this);

    auto *model = new ui::GridModel(m_s,
                                    {{.title = m_s(text::Owner), .width = 250},
                                     {.title = m_s(text::QuickSearchPatient), .width = 190},
                                     {.title = m_s(text::QuickSearchTelephone), .width = 160},
                                     {.kind = ui::Kind::Whole, .hidden = true},
                                     {.kind = ui::Kind::Whole, .hidden = true}},
                                    this);
    grd = named(new ui::Grid(m_s, model), u"grd"_s, m_s(text::QuickSearchTitle));
    grd->setSortingEnabled(false); // the best match comes first
    grd->horizontalHeader()->setSectionsClickable(false);

    Ayu = named(new ui::HelpLine, u"Ayu"_s, {});

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::L, ui::space::L, ui::space::L, ui::space::M);
    all->setSpacing(ui::space::M);
    all->addWidget(txtBuscar);
    all->addWidget(grd, 1);
    all->addWidget(Ayu);
}

void frmBusquedaRapida::opened(const QVariantMap &)
{
    txtBuscar->clear();
    search();
    txtBuscar->setFocus();
    guarded([this] { m_index.bringUpToDate(m_s); });
}

bool frmBusquedaRapida::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched == txtBuscar) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (grd->walk(key))
            return true;
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            take(grd->currentRow());
            return true;
        }
    }
    return ui::FormBase::eventFilter(watched, event);
}

void frmBusquedaRapida::search()
{
    guarded([this] {
        const QString text = txtBuscar->text();
        const QuickAnswer found = m_index.find(m_s, text, RowsShown);
        std::vector<ui::GridRow> rows;
        int owner = 0;
        for (const FoundQuick &h : found.rows) {
            // An owner is shown only once, above all its animals.
            const bool first = h.idc != owner;
            owner = h.idc;
            ui::GridRow &row = rows.emplace_back();
            row.cells = {first ? h.owner : QString(), h.patient, first ? h.telephones : QString(),
                         h.idc, h.idm};
            if (h.dec) {
                row.cells[OfPatient] = h.patient + u" ("_s + m_s(text::Deceased) + u')';
                row.highlight = ui::Highlight::Off;
                row.highlightedCell = OfPatient;
                row.reason = m_s(text::Deceased);
            }
        }
        grd->setEmptyText(m_s(text.trimmed().isEmpty() ? text::AnyPieceHint : text::NobodyMatches));
        grd->gridModel()->set(std::move(rows));
        grd->Seleccionar(0);

        const int shown = grd->gridModel()->allRows();
        if (shown == 0)
            Ayu->clean();
        else if (found.total > shown)
            Ayu->tell(m_s(text::QuickFindShowsSome)
                          .arg(locale().toString(shown), locale().toString(found.total)));
        else
            Ayu->tell(m_s(text::EnterOpensHint));
    });
}

void frmBusquedaRapida::take(int row)
{
    if (row < 0)
        return;
    guarded([this, row] {
        const QList<store::Value> &cells = grd->gridModel()->Row(row).cells;
        const int idm = cells[DeIdm].toInt();
        const bool taken = idm > 0 ? takeFound(m_s, Search::Patients, idm)
                                   : takeFound(m_s, Search::Clientes, cells[DeIdc].toInt());
        if (!taken) {
            Ayu->faultOf(m_s(text::SearchRowIsGone));
            return;
        }
        accept();
        m_forms.open(u"frmPropietarios"_s);
    });
}
