#include "importing/frmimportar.h"

#include "texts/clients.h"
#include "texts/import.h"
#include "texts/texts.h"
#include "ui/calm_list.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/theme.h"

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTableWidget>
#include <QUrl>

using namespace importing;
using namespace Qt::StringLiterals;

namespace
{

// Number of rows of the file shown below each column title.
constexpr int Examples = 3;

// Indexes in cmbMostrar: all lines, one for each Outcome, then lines with a warning.
constexpr int ShowAll = 0;
constexpr int ShowWarnings = 5;

// One of the lists above the columns. Reaching it by keyboard scrolls its column into view.
class DataList : public ui::CalmList
{
public:
    DataList(const QStringList &names, QTableWidget *table, int column)
        : m_table(table), m_column(column)
    {
        addItems(names);
        setMaxVisibleItems(count());
        // Wide enough for most names; the list that drops down is wide enough for all.
        setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        setMinimumContentsLength(14);
        view()->setMinimumWidth(view()->sizeHintForColumn(0) + ui::space::XL);
    }

protected:
    void focusInEvent(QFocusEvent *event) override
    {
        m_table->scrollTo(m_table->model()->index(0, m_column));
        ui::CalmList::focusInEvent(event);
    }

private:
    QTableWidget *m_table;
    int m_column;
};

QString localFile(const QMimeData *data)
{
    return data->urls().size() == 1 ? data->urls().constFirst().toLocalFile() : QString();
}

} // namespace

frmImportar::frmImportar(Sesion &s, QWidget *parent) : ui::FormBase(s, u"frmImportar"_s, parent)
{
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(s(text::ImportTitle));
    setAcceptDrops(true);
    build();
    clear();
    rememberSize({1040, 660});
    rememberColumns(grdInforme->horizontalHeader());
}

void frmImportar::build()
{
    cmdElegir = named(new QPushButton(m_s(text::ImportChooseFile)), u"cmdElegir"_s,
                      m_s(text::ImportChooseFile));
    lblArchivo = named(new QLabel, u"lblArchivo"_s, m_s(text::ImportChooseFile));
    lblArchivo->setTextFormat(Qt::PlainText);
    auto *head = new QHBoxLayout;
    head->setSpacing(ui::space::M);
    head->addWidget(cmdElegir);
    head->addWidget(lblArchivo, 1);

    auto *nothing =
        named(new QLabel(m_s(text::ImportStartHint)), u"lblVacio"_s, m_s(text::ImportStartHint));
    nothing->setProperty("clase", u"suave"_s);
    nothing->setAlignment(Qt::AlignCenter);
    nothing->setWordWrap(true);
    auto *work = new QWidget;
    auto *halves = new QVBoxLayout(work);
    halves->setContentsMargins(0, 0, 0, 0);
    halves->setSpacing(ui::space::M);
    halves->addWidget(buildColumns());
    halves->addWidget(buildReport(), 1);
    pages = new QStackedWidget;
    pages->addWidget(nothing);
    pages->addWidget(work);

    barAvance = named(new QProgressBar, u"barAvance"_s, m_s(text::ImportTitle));
    barAvance->setTextVisible(false);
    QSizePolicy keepsRoom = barAvance->sizePolicy();
    keepsRoom.setRetainSizeWhenHidden(true);
    barAvance->setSizePolicy(keepsRoom);
    Ayu = named(new ui::HelpLine, u"Ayu"_s, QString());
    cmdProbar =
        named(new QPushButton(m_s(text::DryRunButton)), u"cmdProbar"_s, m_s(text::DryRunButton));
    cmdImportar =
        named(new QPushButton(m_s(text::ImportButton)), u"cmdImportar"_s, m_s(text::ImportButton));
    cmdVolver = named(new QPushButton, u"cmdVolver"_s, m_s(text::BackButton));
    auto *foot = new QHBoxLayout;
    foot->setSpacing(ui::space::M);
    foot->addWidget(Ayu, 1);
    foot->addWidget(cmdProbar);
    foot->addWidget(cmdImportar);
    foot->addWidget(cmdVolver);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::L, ui::space::L, ui::space::L, ui::space::L);
    all->setSpacing(ui::space::M);
    all->addLayout(head);
    all->addWidget(pages, 1);
    all->addWidget(barAvance);
    all->addLayout(foot);

    enterChain({cmbOrden, txtPropietario, cmdProbar});
    connect(cmdElegir, &QPushButton::clicked, this, &frmImportar::choose);
    connect(cmdProbar, &QPushButton::clicked, this, [this] { run(false); });
    connect(cmdImportar, &QPushButton::clicked, this, [this] { run(true); });
    connect(cmdVolver, &QPushButton::clicked, this, &frmImportar::reject);
    connect(cmbOrden, &QComboBox::activated, this, &frmImportar::changed);
    connect(txtPropietario, &QLineEdit::textEdited, this, &frmImportar::changed);
    connect(cmbMostrar, &QComboBox::activated, this, &frmImportar::fillGrid);
}

QWidget *frmImportar::buildColumns()
{
    auto *caption = new QLabel(m_s(text::ImportColumnsCaption));
    caption->setProperty("clase", u"suave"_s);
    tblColumnas = named(new QTableWidget, u"tblColumnas"_s, m_s(text::ImportColumnsCaption));
    tblColumnas->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tblColumnas->setSelectionMode(QAbstractItemView::NoSelection);
    tblColumnas->setFocusPolicy(Qt::NoFocus); // TAB moves through the lists in it
    tblColumnas->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    tblColumnas->setShowGrid(false);
    tblColumnas->setWordWrap(false); // long values are cut, so that each row stays one line high
    tblColumnas->verticalHeader()->hide();
    caption->setBuddy(tblColumnas);

    cmbOrden = named(new ui::CalmList, u"cmbOrden"_s, m_s(text::ImportDateOrder));
    cmbOrden->addItems(m_s(text::ImportDateOrders).split(u'|'));
    cmbOrden->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *order = new QLabel(m_s(text::ImportDateOrder));
    order->setBuddy(cmbOrden);
    txtPropietario = named(new QLineEdit, u"txtPropietario"_s, m_s(text::ImportDefaultOwner));
    txtPropietario->setMaxLength(m_s.clientes->widthOf("clientes", "ayn"));
    txtPropietario->setMinimumWidth(160);
    txtPropietario->setAcceptDrops(false); // a file dropped on it is meant for the form
    refuseApostrophe({txtPropietario});
    auto *owner = new QLabel(m_s(text::ImportDefaultOwner));
    owner->setBuddy(txtPropietario);
    auto *choices = new QHBoxLayout;
    choices->setSpacing(ui::space::S);
    choices->addWidget(order);
    choices->addWidget(cmbOrden);
    choices->addSpacing(ui::space::L);
    choices->addWidget(owner);
    choices->addWidget(txtPropietario, 1);

    auto *half = new QWidget;
    auto *column = new QVBoxLayout(half);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(ui::space::S);
    column->addWidget(caption);
    column->addWidget(tblColumnas);
    column->addLayout(choices);
    return half;
}

QWidget *frmImportar::buildReport()
{
    lblResumen = named(new QLabel, u"lblResumen"_s, QString());
    lblResumen->setTextFormat(Qt::PlainText);
    lblResumen->setWordWrap(true);
    lblResumen->setTextInteractionFlags(Qt::TextSelectableByMouse);
    cmbMostrar = named(new ui::CalmList, u"cmbMostrar"_s, m_s(text::ImportShow));
    cmbMostrar->addItem(m_s(text::ImportShowAll));
    cmbMostrar->addItems(m_s(text::ImportOutcomeNames).split(u'|'));
    auto *show = new QLabel(m_s(text::ImportShow));
    show->setBuddy(cmbMostrar);
    auto *head = new QHBoxLayout;
    head->setSpacing(ui::space::S);
    head->addWidget(lblResumen, 1);
    head->addWidget(show, 0, Qt::AlignBottom);
    head->addWidget(cmbMostrar, 0, Qt::AlignBottom);

    const QStringList titles = m_s(text::ImportResultTitles).split(u'|');
    static constexpr int widths[] = {80, 120, 200, 160, 300};
    QList<ui::GridColumn> columns;
    for (qsizetype i = 0; i < titles.size(); ++i)
        columns << ui::GridColumn{.title = titles[i],
                                  .kind = i == 0 ? ui::Kind::Whole : ui::Kind::Text,
                                  .width = widths[i]};
    m_model = new ui::GridModel(m_s, columns, this);
    grdInforme = named(new ui::Grid(m_s, m_model), u"grdInforme"_s, m_s(text::ImportTitle));
    grdInforme->allowSeveral();

    auto *half = new QWidget;
    auto *column = new QVBoxLayout(half);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(ui::space::S);
    column->addLayout(head);
    column->addWidget(grdInforme, 1);
    return half;
}

void frmImportar::opened(const QVariantMap &parameters)
{
    if (m_working)
        return;
    clear();
    if (const QString file = parameters.value(u"archivo"_s).toString(); !file.isEmpty())
        load(file);
}

void frmImportar::clear()
{
    m_file.clear();
    m_report.reset();
    lblArchivo->clear();
    txtPropietario->clear();
    cmbOrden->setCurrentIndex(0);
    pages->setCurrentIndex(0);
    Ayu->clean();
    enableAll();
    cmdElegir->setFocus();
}

void frmImportar::choose()
{
    guarded([this] {
        const auto file = m_s.dialogos.ElegirArchivo(ui::spoken(m_s(text::ImportChooseFile)),
                                                     u"CSV (*.csv *.tsv *.txt *.CSV *.TXT)"_s);
        if (file)
            load(*file);
    });
}

void frmImportar::load(const QString &file)
{
    guarded([&] {
        FileView view = inspectFile(m_s, file, Examples);
        if (!view.failure.isEmpty()) {
            Ayu->faultOf(QFileInfo(file).fileName() + u": "_s + view.failure);
            return;
        }
        clear(); // only now: an unreadable file leaves the previous one in place
        m_file = file;
        m_view = std::move(view);
        lblArchivo->setText(QFileInfo(file).fileName() + u"   "_s + viewText(m_s, m_view));
        lblArchivo->setToolTip(file);
        fillColumns();
        pages->setCurrentIndex(1);
        changed();
        cmdProbar->setFocus();
    });
}

// Shows every column of the file: its title, what it holds, and its first values.
void frmImportar::fillColumns()
{
    const QStringList names = m_s(text::ImportTargetNames).split(u'|');
    m_columns.clear();
    tblColumnas->clear();
    tblColumnas->setColumnCount(int(m_view.titles.size()));
    tblColumnas->setRowCount(1 + int(m_view.rows.size()));
    tblColumnas->setHorizontalHeaderLabels(m_view.titles);
    QWidget *before = cmdElegir;
    for (int c = 0; c < m_view.titles.size(); ++c) {
        auto *list = named(new DataList(names, tblColumnas, c), u"cmbColumna%1"_s.arg(c + 1),
                           u"%1: "_s.arg(c + 1) + m_view.titles[c]);
        list->setCurrentIndex(int(m_view.columns[c]));
        connect(list, &QComboBox::activated, this, [this, c] { mapColumn(c); });
        tblColumnas->setCellWidget(0, c, list);
        for (int r = 0; r < m_view.rows.size(); ++r) {
            auto *cell = new QTableWidgetItem(m_view.rows[r].value(c).simplified());
            cell->setToolTip(cell->text());
            tblColumnas->setItem(r + 1, c, cell);
        }
        tblColumnas->setColumnWidth(c, std::max(list->sizeHint().width() + ui::space::S, 150));
        setTabOrder(before, list);
        before = list;
        m_columns << list;
    }
    setTabOrder(before, cmbOrden);
    // As high as its contents and the scroll bar; the report gets the rest.
    tblColumnas->resizeRowsToContents();
    int height = tblColumnas->horizontalHeader()->sizeHint().height()
                 + tblColumnas->horizontalScrollBar()->sizeHint().height() + ui::space::S;
    for (int r = 0; r <= m_view.rows.size(); ++r)
        height += tblColumnas->rowHeight(r);
    tblColumnas->setFixedHeight(height);
}

// No two columns may hold the same datum, so choosing one here clears it elsewhere.
void frmImportar::mapColumn(int column)
{
    for (int c = 0; c < m_columns.size(); ++c)
        if (c != column && m_columns[c]->currentIndex() == m_columns[column]->currentIndex())
            m_columns[c]->setCurrentIndex(0);
    changed();
}

// The report is no longer valid.
void frmImportar::changed()
{
    m_report.reset();
    Ayu->clean();
    showReport();
}

ImportOptions frmImportar::chosen() const
{
    ImportOptions o;
    o.file = m_file;
    for (const QComboBox *list : m_columns)
        o.columns << Datum(list->currentIndex());
    if (cmbOrden->currentIndex() > 0)
        o.order = cmbOrden->currentIndex() == 1 ? DateOrder::DayMonth : DateOrder::MonthDay;
    o.owner = txtPropietario->text();
    return o;
}

void frmImportar::run(bool write)
{
    if (m_working)
        return;
    m_working = true;
    m_stop = false;
    Ayu->clean();
    enableAll();
    cmdVolver->setFocus();
    const store::Progress before = m_s.progress;
    m_s.progress.bar = [this](int done, int total) {
        barAvance->setMaximum(total);
        barAvance->setValue(done);
        QCoreApplication::processEvents();
    };
    const auto goOn = [this] { return !m_stop; };
    ImportReport report;
    const bool done = guarded([&] {
        report = write ? importFile(m_s, chosen(), goOn) : testImport(m_s, chosen(), goOn);
    });
    m_s.progress = before;
    m_working = false;
    if (report.interrupted && !report.written) { // the previous report is still valid
        enableAll();
        Ayu->faultOf(importEnd(m_s, report));
        (cmdImportar->isEnabled() ? cmdImportar : cmdProbar)->setFocus();
        return;
    }
    m_report.reset();
    if (!done || report.missing != ImportReport::Missing::Nothing) {
        showReport();
        return tellMissing(report);
    }
    m_report = std::move(report);
    showReport();
    const QString how = importEnd(m_s, *m_report);
    if (m_report->interrupted)
        Ayu->faultOf(how);
    else
        Ayu->success(how);
    (cmdImportar->isEnabled() ? cmdImportar : cmdVolver)->setFocus();
}

/// Says why there is no report, where that can be put right.
void frmImportar::tellMissing(const ImportReport &report)
{
    using Missing = ImportReport::Missing;
    if (!report.failure.isEmpty())
        Ayu->faultOf(report.failure);
    if (report.missing == Missing::Order)
        cmbOrden->setFocus();
    else if (report.missing == Missing::Owner)
        txtPropietario->setFocus();
    else if (report.missing == Missing::ColumnCount && !m_columns.isEmpty())
        m_columns.constFirst()->setFocus();
    else
        cmdProbar->setFocus();
}

void frmImportar::showReport()
{
    lblResumen->setText(m_report ? importSummary(m_s, *m_report) : QString());
    cmbMostrar->setCurrentIndex(ShowAll);
    fillGrid();
    enableAll();
}

void frmImportar::fillGrid()
{
    const int wanted = cmbMostrar->currentIndex();
    std::vector<ui::GridRow> rows;
    if (m_report)
        for (const ReportLine &l : m_report->lines) {
            const bool shown = wanted == ShowAll || (wanted == ShowWarnings && l.notice)
                               || wanted == 1 + int(l.outcome);
            if (!shown)
                continue;
            ui::GridRow row{
                .cells = {l.line, outcomeText(m_s, l.outcome), l.client, l.patient, l.text},
                .highlightedCell = 1,
                .reason = l.text};
            if (l.outcome == Outcome::Rejected || l.outcome == Outcome::WithoutPlace)
                row.highlight = ui::Highlight::Alert;
            else if (l.notice)
                row.highlight = ui::Highlight::Notice;
            else if (l.outcome == Outcome::Existing)
                row.highlight = ui::Highlight::Done;
            rows.push_back(std::move(row));
        }
    grdInforme->setEmptyText(m_report ? QString() : m_s(text::DryRunHint));
    m_model->set(std::move(rows));
}

void frmImportar::enableAll()
{
    const bool ready = !m_file.isEmpty() && !m_working;
    cmdElegir->setEnabled(!m_working);
    tblColumnas->setEnabled(ready);
    cmbOrden->setEnabled(ready);
    txtPropietario->setEnabled(ready);
    cmdProbar->setEnabled(ready);
    cmbMostrar->setEnabled(ready && m_report);
    cmdImportar->setEnabled(ready && m_report && !m_report->written
                            && m_report->newClients + m_report->newPatients > 0);
    cmdVolver->setText(m_s(m_working ? text::Cancel : text::BackButton));
    cmdVolver->setAccessibleName(cmdVolver->text());
    barAvance->setVisible(m_working);
    barAvance->reset();
}

// While an import is running, closing the form only stops the import.
void frmImportar::reject()
{
    if (m_working)
        m_stop = true;
    else
        ui::FormBase::reject();
}

void frmImportar::dragEnterEvent(QDragEnterEvent *event)
{
    if (!m_working && !localFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void frmImportar::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    load(localFile(event->mimeData()));
}

void importing::registerImportForms(Sesion &s, ui::FormRegistry &forms)
{
    forms.enrol(u"frmImportar"_s, [&s] { return new frmImportar(s); });
}
