#include "printing/frmvistaprevia.h"

#include "ui/theme.h"

#include <QComboBox>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    NadaQueMostrar = 5060,
    PaginaDe = 9850,
    VistaPrevia = 9851,
    Imprimir = 9852,
    GuardarComoPdf = 9853,
    Cerrar = 9854,
    Impresora = 9855,
    Hoja_ = 9856,
    Zoom = 9857,
    Pagina = 9858,
    SinImpresora = 9859,
    AnchoDePagina = 9861,
    PaginaEntera = 9862,
};

constexpr double zooms[] = {0, -1, 0.5, 0.75, 1, 1.25, 1.5, 2, 3}; // 0 page width, -1 whole page

} // namespace

frmVistaPrevia::frmVistaPrevia(Sesion &s, Documento &documento, const Impresoras &impresoras,
                               QWidget *parent)
    : FormBase(s, u"frmVistaPrevia"_s, parent), m_documento(documento)
{
    setModal(true);
    setWindowTitle(s(VistaPrevia) + u" - "_s + documento.Titulo());
    m_printer = CrearImpresora(impresoras.Primera(), documento);
    build(impresoras);
    wire();
    rememberSize({1000, 700});
}

frmVistaPrevia::~frmVistaPrevia()
{
    delete vista; // before the printer that it draws on
}

void frmVistaPrevia::build(const Impresoras &impresoras)
{
    const auto label = [this](int text, QWidget *buddy) {
        auto *l = new QLabel(m_s(text));
        l->setBuddy(buddy);
        return l;
    };
    cmbImpresora = named(new QComboBox, u"cmbImpresora"_s, m_s(Impresora));
    cmbImpresora->addItems(impresoras.nombres);
    cmbImpresora->setCurrentText(impresoras.Primera());
    cmbImpresora->setEnabled(!impresoras.nombres.isEmpty());
    if (impresoras.nombres.isEmpty())
        cmbImpresora->addItem(m_s(SinImpresora));

    cmbHoja = named(new QComboBox, u"cmbHoja"_s, m_s(Hoja_));
    for (const QPageSize::PageSizeId id : {QPageSize::A4, QPageSize::Letter})
        cmbHoja->addItem(QPageSize::name(id), int(id));
    cmbHoja->setCurrentIndex(cmbHoja->findData(int(TamanoHabitual().id())));

    cmbZoom = named(new QComboBox, u"cmbZoom"_s, m_s(Zoom));
    for (const double z : zooms)
        cmbZoom->addItem(z == 0  ? m_s(AnchoDePagina)
                         : z < 0 ? m_s(PaginaEntera)
                                 : u"%1 %"_s.arg(qRound(z * 100)));
    cmbZoom->setCurrentIndex(1);

    txtPagina = named(new QSpinBox, u"txtPagina"_s, m_s(Pagina));
    txtPagina->setMinimum(1);
    lblPaginas = new QLabel;
    cmdImprimir = button(u"cmdImprimir"_s, Imprimir);
    cmdImprimir->setDefault(true);
    cmdImprimir->setEnabled(!impresoras.nombres.isEmpty());
    cmdPdf = button(u"cmdPdf"_s, GuardarComoPdf);
    cmdCerrar = button(u"cmdCerrar"_s, Cerrar);

    auto *bar = new QHBoxLayout;
    bar->setSpacing(Espacio::S);
    for (QWidget *w : std::initializer_list<QWidget *>{
             label(Impresora, cmbImpresora), cmbImpresora, label(Hoja_, cmbHoja), cmbHoja,
             label(Zoom, cmbZoom), cmbZoom, label(Pagina, txtPagina), txtPagina, lblPaginas})
        bar->addWidget(w);
    bar->addStretch();

    vista = new QPrintPreviewWidget(m_printer.get());
    vista->setAccessibleName(m_s(VistaPrevia));

    auto *foot = new QHBoxLayout;
    foot->setSpacing(Espacio::S);
    foot->addStretch();
    foot->addWidget(cmdCerrar);
    foot->addWidget(cmdPdf);
    foot->addWidget(cmdImprimir);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::L, Espacio::L, Espacio::L, Espacio::L);
    all->setSpacing(Espacio::M);
    all->addLayout(bar);
    all->addWidget(vista, 1);
    all->addLayout(foot);
    cmdImprimir->isEnabled() ? cmdImprimir->setFocus() : cmdPdf->setFocus();
}

void frmVistaPrevia::wire()
{
    connect(vista, &QPrintPreviewWidget::paintRequested, this,
            [this](QPrinter *p) { guarded([&] { DibujarEn(*p, m_documento); }); });
    connect(vista, &QPrintPreviewWidget::previewChanged, this, &frmVistaPrevia::showPage);
    connect(cmbImpresora, &QComboBox::activated, this, &frmVistaPrevia::choosePrinter);
    connect(cmbHoja, &QComboBox::activated, this, &frmVistaPrevia::chooseSheet);
    connect(cmbZoom, &QComboBox::activated, this, [this](int i) {
        if (zooms[i] > 0)
            vista->setZoomFactor(zooms[i]);
        else
            zooms[i] == 0 ? vista->fitToWidth() : vista->fitInView();
    });
    connect(txtPagina, &QSpinBox::valueChanged, vista, &QPrintPreviewWidget::setCurrentPage);
    connect(new QShortcut(Qt::CTRL | Qt::Key_PageDown, this), &QShortcut::activated, txtPagina,
            &QSpinBox::stepUp);
    connect(new QShortcut(Qt::CTRL | Qt::Key_PageUp, this), &QShortcut::activated, txtPagina,
            &QSpinBox::stepDown);
    connect(cmdImprimir, &QPushButton::clicked, this, &frmVistaPrevia::print);
    connect(cmdPdf, &QPushButton::clicked, this, &frmVistaPrevia::savePdf);
    connect(cmdCerrar, &QPushButton::clicked, this, &frmVistaPrevia::reject);
    vista->fitInView();
}

void frmVistaPrevia::choosePrinter()
{
    m_printer->setPrinterName(cmbImpresora->currentText());
    chooseSheet(); // a printer brings a sheet and margins of its own
}

void frmVistaPrevia::chooseSheet()
{
    const QPageSize sheet(QPageSize::PageSizeId(cmbHoja->currentData().toInt()));
    m_printer->setPageLayout(
        QPageLayout(sheet, m_documento.Orientacion(), MargenesMm, QPageLayout::Millimeter));
    vista->updatePreview();
}

void frmVistaPrevia::showPage()
{
    const QSignalBlocker quiet(txtPagina);
    txtPagina->setMaximum(qMax(1, vista->pageCount()));
    txtPagina->setValue(vista->currentPage());
    const bool empty = vista->pageCount() == 0;
    lblPaginas->setText(empty ? m_s(NadaQueMostrar) : u"/ %1"_s.arg(vista->pageCount()));
    cmdImprimir->setEnabled(!empty && cmbImpresora->isEnabled());
    cmdPdf->setEnabled(!empty);
}

void frmVistaPrevia::print()
{
    guarded([this] {
        try {
            ImprimirDocumento(m_s, m_documento, *m_printer, cmbImpresora->currentText());
            accept();
        } catch (const ErrorDeAlmacen &e) {
            // A printer that is off is no failure of the program to be logged.
            if (e.numero != ErrorNum::Impresora)
                throw;
            m_s.dialogos.Mensaje(e.descripcion);
        }
    });
}

void frmVistaPrevia::savePdf()
{
    guarded(
        [this] { GuardarPdfPreguntando(m_s, m_documento, m_printer->pageLayout().pageSize()); });
}
