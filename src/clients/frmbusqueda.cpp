#include "clients/frmbusqueda.h"

#include "texts/clients.h"
#include "texts/search.h"
#include "texts/texts.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

// Cells of a patient's row that hold a Yes/No: from pedigree to death.
constexpr int OfPedigree = 8, OfDeath = 10;

// The search waits for a pause of this length in the typing.
constexpr int PauseMs = 120;

QList<ui::GridColumn> columnsOf(const Sesion &s, Search search)
{
    // Id, name, owner, breed, species, coat, features, chip, three flags, address, sub-region,
    // two telephones, notes.
    static constexpr int ofPatients[] = {64, 120, 170, 150, 84,  120, 150, 150,
                                         80, 96,  90,  180, 130, 110, 110, 200};
    // Id, name, address, sub-region, region, two codes, two telephones, mail, source, notes.
    static constexpr int ofClients[] = {64, 190, 200, 140, 110, 120, 120, 120, 120, 200, 120, 200};

    QList<ui::GridColumn> columns;
    const std::span<const int> titles = titlesOf(search);
    for (size_t i = 0; i < titles.size(); ++i) {
        ui::GridColumn column{.title = s(titles[i])};
        if (i == 0)
            column.kind = ui::Kind::Code;
        else if (search == Search::Patients && i >= OfPedigree && i <= OfDeath)
            column.kind = ui::Kind::YesNo;
        column.width = search == Search::Patients ? ofPatients[i] : ofClients[i];
        columns << column;
    }
    return columns;
}

} // namespace

frmBusqueda::frmBusqueda(Sesion &s, ui::FormRegistry &forms, Search search)
    : ui::FormBase(s, search == Search::Patients ? u"frmBusquedaMascotas"_s
                                                 : u"frmBusquedaClientes"_s),
      m_forms(forms),
      m_search(search)
{
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(
        s(search == Search::Patients ? text::PatientSearchTitle : text::ClientSearchTitle));
    m_pause.setSingleShot(true);
    m_pause.setInterval(PauseMs);
    build();
    listen();
    rememberSize({1120, 600});
    rememberColumns(grd->horizontalHeader());
}

QComboBox *frmBusqueda::criteria(const QString &name, int label)
{
    auto *list = named(new QComboBox, name, m_s(label));
    for (const SearchCriterion &c : criteriaOf(m_search))
        list->addItem(m_s(c.name));
    list->setMaxVisibleItems(list->count());
    return list;
}

QLineEdit *frmBusqueda::textBox(const QString &name)
{
    auto *box = named(new QLineEdit, name, m_s(text::FindPlaceholder));
    box->setMaxLength(160); // width of the widest column
    box->setClearButtonEnabled(true);
    return box;
}

void frmBusqueda::build()
{
    cmbCriterioUno = criteria(u"cmbCriterioUno"_s, text::SearchBy);
    cmbCriterioDos = criteria(u"cmbCriterioDos"_s, text::AndAlsoBy);
    // The most common pair: a patient with its owner, a client with its address.
    cmbCriterioDos->setCurrentIndex(m_search == Search::Patients ? 6 : 1);
    txtTextoUno = textBox(u"txtTextoUno"_s);
    txtTextoDos = textBox(u"txtTextoDos"_s);
    refuseApostrophe({txtTextoUno, txtTextoDos});

    auto *questions = new QGridLayout;
    questions->setHorizontalSpacing(ui::space::M);
    questions->setVerticalSpacing(ui::space::S);
    const auto row = [&](int r, int label, QComboBox *list, QLineEdit *box) {
        auto *first = new QLabel(m_s(label));
        first->setBuddy(list);
        auto *second = new QLabel(m_s(text::FindPlaceholder));
        second->setBuddy(box);
        questions->addWidget(first, r, 0);
        questions->addWidget(list, r, 1);
        questions->addWidget(second, r, 2);
        questions->addWidget(box, r, 3);
    };
    row(0, text::SearchBy, cmbCriterioUno, txtTextoUno);
    row(1, text::AndAlsoBy, cmbCriterioDos, txtTextoDos);
    questions->setColumnStretch(3, 1);

    grd = named(new ui::Grid(m_s, new ui::GridModel(m_s, columnsOf(m_s, m_search), this)), u"grd"_s,
                windowTitle());
    Ayu = named(new ui::HelpLine, u"Ayu"_s, {});
    cmdContinuar =
        named(new QPushButton(m_s(text::SearchGoOn)), u"cmdContinuar"_s, m_s(text::SearchGoOn));
    cmdContinuar->setDefault(true);
    cmdContinuar->setEnabled(false);

    auto *foot = new QHBoxLayout;
    foot->setSpacing(ui::space::L);
    foot->addWidget(Ayu, 1);
    foot->addWidget(cmdContinuar);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::L, ui::space::L, ui::space::L, ui::space::L);
    all->setSpacing(ui::space::M);
    all->addLayout(questions);
    all->addWidget(grd, 1);
    all->addLayout(foot);

    enterChain({cmbCriterioUno, txtTextoUno});
    enterChain({cmbCriterioDos, txtTextoDos});
}

void frmBusqueda::listen()
{
    const auto restart = [this] { m_pause.start(); };
    for (QLineEdit *box : {txtTextoUno, txtTextoDos}) {
        connect(box, &QLineEdit::textChanged, this, restart);
        box->installEventFilter(this);
    }
    for (const auto &[list, box] :
         {std::pair(cmbCriterioUno, txtTextoUno), std::pair(cmbCriterioDos, txtTextoDos)}) {
        hintFor(list, box);
        connect(list, &QComboBox::currentIndexChanged, this, [this, list = list, box = box] {
            hintFor(list, box);
            if (!box->text().isEmpty())
                m_pause.start();
        });
    }
    connect(&m_pause, &QTimer::timeout, this, &frmBusqueda::searchTyped);
    connect(grd, &ui::Grid::chosenRow, this, &frmBusqueda::take);
    connect(grd, &ui::Grid::changedRow, this, [this](int r) { cmdContinuar->setEnabled(r >= 0); });
    connect(cmdContinuar, &QPushButton::clicked, this, [this] { take(grd->currentRow()); });
}

void frmBusqueda::hintFor(QComboBox *criterion, QLineEdit *box)
{
    const bool yesNo = criteriaOf(m_search)[size_t(criterion->currentIndex())].siNo;
    box->setPlaceholderText(yesNo ? m_s(text::OneYesTwoNo) : QString());
}

void frmBusqueda::opened(const QVariantMap &)
{
    txtTextoUno->clear();
    txtTextoDos->clear();
    m_pause.stop();
    grd->gridModel()->set({});
    grd->setEmptyText(m_s(text::SearchHint));
    Ayu->clean();
    txtTextoUno->setFocus();
}

bool frmBusqueda::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && (watched == txtTextoUno || watched == txtTextoDos)) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (grd->walk(key))
            return true;
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            searchAll();
            return true;
        }
    }
    return ui::FormBase::eventFilter(watched, event);
}

void frmBusqueda::hideEvent(QHideEvent *event)
{
    m_pause.stop();
    ui::FormBase::hideEvent(event);
}

Conditions frmBusqueda::asked() const
{
    return {Condition{cmbCriterioUno->currentIndex(), txtTextoUno->text()},
            Condition{cmbCriterioDos->currentIndex(), txtTextoDos->text()}};
}

void frmBusqueda::searchTyped()
{
    guarded([this] {
        Finding found = findWhileTyping(m_s, m_search, asked());
        if (!found.impediment.isEmpty())
            Ayu->faultOf(found.impediment);
        else
            showRows(std::move(found));
    });
}

void frmBusqueda::searchAll()
{
    m_pause.stop();
    guarded([this] {
        Finding found = clients::find(m_s, m_search, asked());
        if (!found.impediment.isEmpty()) {
            Ayu->faultOf(found.impediment);
            m_s.dialogos.Mensaje(found.impediment);
            return;
        }
        const bool searched = found.sought;
        showRows(std::move(found));
        if (searched && grd->currentRow() >= 0)
            grd->setFocus();
    });
}

void frmBusqueda::showRows(Finding found)
{
    if (!found.sought) {
        Ayu->tell(m_s(text::SearchHint));
        return;
    }
    const int before = grd->IdActual();
    std::vector<ui::GridRow> rows;
    rows.reserve(found.rows.size());
    for (QList<store::Value> &cells : found.rows) {
        ui::GridRow &row = rows.emplace_back();
        if (m_search == Search::Patients && cells[OfDeath].toBool()) {
            row.highlight = ui::Highlight::Off;
            row.highlightedCell = 1;
            row.reason = m_s(text::Deceased);
        }
        row.cells = std::move(cells);
    }
    grd->setEmptyText(m_s(text::NothingMatches));
    grd->gridModel()->set(std::move(rows));
    if (!grd->IrA(before))
        grd->Seleccionar(0);

    const int count = grd->gridModel()->allRows();
    if (count == 0)
        Ayu->clean();
    else
        Ayu->tell(m_s(found.more ? text::SearchShowsSome : text::SearchFoundSome)
                      .arg(locale().toString(count)));
}

void frmBusqueda::take(int row)
{
    if (row < 0)
        return;
    guarded([this, row] {
        if (!takeFound(m_s, m_search, grd->gridModel()->idOf(row))) {
            Ayu->faultOf(m_s(text::SearchRowIsGone));
            return;
        }
        accept();
        m_forms.open(u"frmPropietarios"_s);
    });
}
