#include "clients/frmimportar.h"

#include "ui/calm_list.h"
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

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Volver = 9485,
    Cancelar = 9111,
    NombresDeDatos = 9750,
    Titulo = 9751,
    Elegir = 9752,
    ElijaUno = 9753,
    QueContienen = 9756,
    Orden = 9757,
    Ordenes = 9758,
    SinPropietario = 9759,
    Probar = 9760,
    Importar_ = 9761,
    Mostrar = 9762,
    Titulos = 9763,
    Suertes = 9764,
    PrimeroProbar = 9765,
    Todas = 9870,
};

// Rows of the file shown beside each column.
constexpr int Examples = 3;

// Places in cmbMostrar: everything, one for each Suerte, then those with a warning.
constexpr int ShowAll = 0;
constexpr int ShowWarnings = 5;

// One of the lists above the columns; arriving by key brings the column into view.
class ListaDeDatos : public ListaCalma
{
public:
    ListaDeDatos(const QStringList &names, QTableWidget *table, int column)
        : m_table(table), m_column(column)
    {
        addItems(names);
        setMaxVisibleItems(count());
        // As wide as most names; the list that opens is as wide as all.
        setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        setMinimumContentsLength(14);
        view()->setMinimumWidth(view()->sizeHintForColumn(0) + Espacio::XL);
    }

protected:
    void focusInEvent(QFocusEvent *event) override
    {
        m_table->scrollTo(m_table->model()->index(0, m_column));
        ListaCalma::focusInEvent(event);
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

frmImportar::frmImportar(Sesion &s, QWidget *parent) : FormBase(s, u"frmImportar"_s, parent)
{
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(s(Titulo));
    setAcceptDrops(true);
    build();
    clear();
    rememberSize({1040, 660});
    rememberColumns(grdInforme->horizontalHeader());
}

void frmImportar::build()
{
    cmdElegir = named(new QPushButton(m_s(Elegir)), u"cmdElegir"_s, m_s(Elegir));
    lblArchivo = named(new QLabel, u"lblArchivo"_s, m_s(Elegir));
    lblArchivo->setTextFormat(Qt::PlainText);
    auto *head = new QHBoxLayout;
    head->setSpacing(Espacio::M);
    head->addWidget(cmdElegir);
    head->addWidget(lblArchivo, 1);

    auto *nothing = named(new QLabel(m_s(ElijaUno)), u"lblVacio"_s, m_s(ElijaUno));
    nothing->setProperty("clase", u"suave"_s);
    nothing->setAlignment(Qt::AlignCenter);
    nothing->setWordWrap(true);
    auto *work = new QWidget;
    auto *halves = new QVBoxLayout(work);
    halves->setContentsMargins(0, 0, 0, 0);
    halves->setSpacing(Espacio::M);
    halves->addWidget(buildColumns());
    halves->addWidget(buildReport(), 1);
    pages = new QStackedWidget;
    pages->addWidget(nothing);
    pages->addWidget(work);

    barAvance = named(new QProgressBar, u"barAvance"_s, m_s(Titulo));
    barAvance->setTextVisible(false);
    QSizePolicy keepsRoom = barAvance->sizePolicy();
    keepsRoom.setRetainSizeWhenHidden(true);
    barAvance->setSizePolicy(keepsRoom);
    Ayu = named(new LineaDeAyuda, u"Ayu"_s, QString());
    cmdProbar = named(new QPushButton(m_s(Probar)), u"cmdProbar"_s, m_s(Probar));
    cmdImportar = named(new QPushButton(m_s(Importar_)), u"cmdImportar"_s, m_s(Importar_));
    cmdVolver = named(new QPushButton, u"cmdVolver"_s, m_s(Volver));
    auto *foot = new QHBoxLayout;
    foot->setSpacing(Espacio::M);
    foot->addWidget(Ayu, 1);
    foot->addWidget(cmdProbar);
    foot->addWidget(cmdImportar);
    foot->addWidget(cmdVolver);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::L, Espacio::L, Espacio::L, Espacio::L);
    all->setSpacing(Espacio::M);
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
    auto *caption = new QLabel(m_s(QueContienen));
    caption->setProperty("clase", u"suave"_s);
    tblColumnas = named(new QTableWidget, u"tblColumnas"_s, m_s(QueContienen));
    tblColumnas->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tblColumnas->setSelectionMode(QAbstractItemView::NoSelection);
    tblColumnas->setFocusPolicy(Qt::NoFocus); // the lists in it are walked with TAB
    tblColumnas->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    tblColumnas->setShowGrid(false);
    tblColumnas->setWordWrap(false); // long values are cut: each row stays one line
    tblColumnas->verticalHeader()->hide();
    caption->setBuddy(tblColumnas);

    cmbOrden = named(new ListaCalma, u"cmbOrden"_s, m_s(Orden));
    cmbOrden->addItems(m_s(Ordenes).split(u'|'));
    cmbOrden->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *order = new QLabel(m_s(Orden));
    order->setBuddy(cmbOrden);
    txtPropietario = named(new QLineEdit, u"txtPropietario"_s, m_s(SinPropietario));
    txtPropietario->setMaxLength(m_s.clientes->Ancho("clientes", "ayn"));
    txtPropietario->setMinimumWidth(160);
    txtPropietario->setAcceptDrops(false); // a file that is dropped on it is meant for the form
    refuseApostrophe({txtPropietario});
    auto *owner = new QLabel(m_s(SinPropietario));
    owner->setBuddy(txtPropietario);
    auto *choices = new QHBoxLayout;
    choices->setSpacing(Espacio::S);
    choices->addWidget(order);
    choices->addWidget(cmbOrden);
    choices->addSpacing(Espacio::L);
    choices->addWidget(owner);
    choices->addWidget(txtPropietario, 1);

    auto *half = new QWidget;
    auto *column = new QVBoxLayout(half);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Espacio::S);
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
    cmbMostrar = named(new ListaCalma, u"cmbMostrar"_s, m_s(Mostrar));
    cmbMostrar->addItem(m_s(Todas));
    cmbMostrar->addItems(m_s(Suertes).split(u'|'));
    auto *show = new QLabel(m_s(Mostrar));
    show->setBuddy(cmbMostrar);
    auto *head = new QHBoxLayout;
    head->setSpacing(Espacio::S);
    head->addWidget(lblResumen, 1);
    head->addWidget(show, 0, Qt::AlignBottom);
    head->addWidget(cmbMostrar, 0, Qt::AlignBottom);

    const QStringList titles = m_s(Titulos).split(u'|');
    static constexpr int widths[] = {80, 120, 200, 160, 300};
    QList<ColumnaDeGrilla> columns;
    for (qsizetype i = 0; i < titles.size(); ++i)
        columns << ColumnaDeGrilla{.titulo = titles[i],
                                   .clase = i == 0 ? Clase::Entero : Clase::Texto,
                                   .ancho = widths[i]};
    m_model = new ModeloDeGrilla(m_s, columns, this);
    grdInforme = named(new Grilla(m_s, m_model), u"grdInforme"_s, m_s(Titulo));
    grdInforme->PermitirVarias();

    auto *half = new QWidget;
    auto *column = new QVBoxLayout(half);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Espacio::S);
    column->addLayout(head);
    column->addWidget(grdInforme, 1);
    return half;
}

void frmImportar::opened(const QVariantMap &parametros)
{
    if (m_working)
        return;
    clear();
    if (const QString file = parametros.value(u"archivo"_s).toString(); !file.isEmpty())
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
    Ayu->Limpiar();
    enableAll();
    cmdElegir->setFocus();
}

void frmImportar::choose()
{
    guarded([this] {
        const auto file = m_s.dialogos.ElegirArchivo(spoken(m_s(Elegir)),
                                                     u"CSV (*.csv *.tsv *.txt *.CSV *.TXT)"_s);
        if (file)
            load(*file);
    });
}

void frmImportar::load(const QString &file)
{
    guarded([&] {
        VistaDeArchivo view = MirarArchivo(m_s, file, Examples);
        if (!view.falla.isEmpty()) {
            Ayu->Fallo(QFileInfo(file).fileName() + u": "_s + view.falla);
            return;
        }
        clear(); // of the former file, which one that is none leaves as it is
        m_file = file;
        m_view = std::move(view);
        lblArchivo->setText(QFileInfo(file).fileName() + u"   "_s + TextoDeVista(m_s, m_view));
        lblArchivo->setToolTip(file);
        fillColumns();
        pages->setCurrentIndex(1);
        changed();
        cmdProbar->setFocus();
    });
}

// One column on screen for each of the file: its title, what it holds, and its first values.
void frmImportar::fillColumns()
{
    const QStringList names = m_s(NombresDeDatos).split(u'|');
    m_columns.clear();
    tblColumnas->clear();
    tblColumnas->setColumnCount(int(m_view.titulos.size()));
    tblColumnas->setRowCount(1 + int(m_view.filas.size()));
    tblColumnas->setHorizontalHeaderLabels(m_view.titulos);
    QWidget *before = cmdElegir;
    for (int c = 0; c < m_view.titulos.size(); ++c) {
        auto *list = named(new ListaDeDatos(names, tblColumnas, c), u"cmbColumna%1"_s.arg(c + 1),
                           u"%1: "_s.arg(c + 1) + m_view.titulos[c]);
        list->setCurrentIndex(int(m_view.columnas[c]));
        connect(list, &QComboBox::activated, this, [this, c] { mapColumn(c); });
        tblColumnas->setCellWidget(0, c, list);
        for (int r = 0; r < m_view.filas.size(); ++r) {
            auto *cell = new QTableWidgetItem(m_view.filas[r].value(c).simplified());
            cell->setToolTip(cell->text());
            tblColumnas->setItem(r + 1, c, cell);
        }
        tblColumnas->setColumnWidth(c, std::max(list->sizeHint().width() + Espacio::S, 150));
        setTabOrder(before, list);
        before = list;
        m_columns << list;
    }
    setTabOrder(before, cmbOrden);
    // Room for what there is, and for the bar below it; the report gets all the rest.
    tblColumnas->resizeRowsToContents();
    int height = tblColumnas->horizontalHeader()->sizeHint().height()
                 + tblColumnas->horizontalScrollBar()->sizeHint().height() + Espacio::S;
    for (int r = 0; r <= m_view.filas.size(); ++r)
        height += tblColumnas->rowHeight(r);
    tblColumnas->setFixedHeight(height);
}

// What one column holds, no other does.
void frmImportar::mapColumn(int column)
{
    for (int c = 0; c < m_columns.size(); ++c)
        if (c != column && m_columns[c]->currentIndex() == m_columns[column]->currentIndex())
            m_columns[c]->setCurrentIndex(0);
    changed();
}

// What was told does not hold any more.
void frmImportar::changed()
{
    m_report.reset();
    Ayu->Limpiar();
    showReport();
}

OpcionesDeImportacion frmImportar::chosen() const
{
    OpcionesDeImportacion o;
    o.archivo = m_file;
    for (const QComboBox *list : m_columns)
        o.columnas << Dato(list->currentIndex());
    if (cmbOrden->currentIndex() > 0)
        o.orden = cmbOrden->currentIndex() == 1 ? OrdenDeFecha::DiaMes : OrdenDeFecha::MesDia;
    o.propietario = txtPropietario->text();
    return o;
}

void frmImportar::run(bool write)
{
    using Falta = InformeDeImportacion::Falta;
    if (m_working)
        return;
    m_working = true;
    m_stop = false;
    Ayu->Limpiar();
    enableAll();
    cmdVolver->setFocus();
    const Avance before = m_s.avance;
    m_s.avance.barra = [this](int done, int total) {
        barAvance->setMaximum(total);
        barAvance->setValue(done);
        QCoreApplication::processEvents();
    };
    const auto goOn = [this] { return !m_stop; };
    InformeDeImportacion report;
    const bool done = guarded([&] {
        report = write ? Importar(m_s, chosen(), goOn) : ProbarImportacion(m_s, chosen(), goOn);
    });
    m_s.avance = before;
    m_working = false;
    if (report.interrumpido && !report.escrito) { // what was told before still holds
        enableAll();
        Ayu->Fallo(FinalDeImportacion(m_s, report));
        (cmdImportar->isEnabled() ? cmdImportar : cmdProbar)->setFocus();
        return;
    }
    m_report.reset();
    if (done && report.falta == Falta::Nada)
        m_report = std::move(report);
    showReport();
    if (m_report) {
        const QString how = FinalDeImportacion(m_s, *m_report);
        if (m_report->interrumpido)
            Ayu->Fallo(how);
        else
            Ayu->Logro(how);
        (cmdImportar->isEnabled() ? cmdImportar : cmdVolver)->setFocus();
        return;
    }
    if (!report.falla.isEmpty())
        Ayu->Fallo(report.falla);
    if (report.falta == Falta::Orden)
        cmbOrden->setFocus();
    else if (report.falta == Falta::Propietario)
        txtPropietario->setFocus();
    else if (report.falta == Falta::Columnas && !m_columns.isEmpty())
        m_columns.constFirst()->setFocus();
    else
        cmdProbar->setFocus();
}

void frmImportar::showReport()
{
    lblResumen->setText(m_report ? ResumenDeImportacion(m_s, *m_report) : QString());
    cmbMostrar->setCurrentIndex(ShowAll);
    fillGrid();
    enableAll();
}

void frmImportar::fillGrid()
{
    const int wanted = cmbMostrar->currentIndex();
    std::vector<FilaDeGrilla> rows;
    if (m_report)
        for (const LineaDeInforme &l : m_report->lineas) {
            const bool shown = wanted == ShowAll || (wanted == ShowWarnings && l.aviso)
                               || wanted == 1 + int(l.suerte);
            if (!shown)
                continue;
            FilaDeGrilla row{
                .celdas = {l.linea, TextoDeSuerte(m_s, l.suerte), l.cliente, l.mascota, l.texto},
                .celdaRealzada = 1,
                .motivo = l.texto};
            if (l.suerte == Suerte::Rechazada || l.suerte == Suerte::SinLugar)
                row.realce = Realce::Alerta;
            else if (l.aviso)
                row.realce = Realce::Aviso;
            else if (l.suerte == Suerte::Existente)
                row.realce = Realce::Hecho;
            rows.push_back(std::move(row));
        }
    grdInforme->PonerVacio(m_report ? QString() : m_s(PrimeroProbar));
    m_model->Poner(std::move(rows));
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
    cmdImportar->setEnabled(ready && m_report && !m_report->escrito
                            && m_report->clientesNuevos + m_report->mascotasNuevas > 0);
    cmdVolver->setText(m_s(m_working ? Cancelar : Volver));
    cmdVolver->setAccessibleName(cmdVolver->text());
    barAvance->setVisible(m_working);
    barAvance->reset();
}

// While it works, leaving stops the work.
void frmImportar::reject()
{
    if (m_working)
        m_stop = true;
    else
        FormBase::reject();
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
