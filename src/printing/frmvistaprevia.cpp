#include "printing/frmvistaprevia.h"

#include "texts/printing.h"
#include "texts/texts.h"
#include "ui/theme.h"

#include <QComboBox>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>

using namespace printing;
using namespace Qt::StringLiterals;

namespace
{

constexpr double Zooms[] = {0, -1, 0.5, 0.75, 1, 1.25, 1.5, 2, 3}; // 0: page width, -1: whole page

} // namespace

frmVistaPrevia::frmVistaPrevia(Sesion &s, Documento &document, const Printers &printers,
                               QWidget *parent)
    : ui::FormBase(s, u"frmVistaPrevia"_s, parent), m_document(document)
{
    setModal(true);
    setWindowTitle(s(text::PreviewTitle) + u" - "_s + document.titleOf());
    m_printer = createPrinter(printers.firstOne(), document);
    build(printers);
    wire();
    rememberSize({1000, 700});
}

frmVistaPrevia::~frmVistaPrevia()
{
    delete view; // must go before the printer that it draws on
}

void frmVistaPrevia::build(const Printers &printers)
{
    const auto label = [this](int text, QWidget *buddy) {
        auto *l = new QLabel(m_s(text));
        l->setBuddy(buddy);
        return l;
    };
    cmbImpresora = named(new QComboBox, u"cmbImpresora"_s, m_s(text::PreviewPrinter));
    cmbImpresora->addItems(printers.names);
    cmbImpresora->setCurrentText(printers.firstOne());
    cmbImpresora->setEnabled(!printers.names.isEmpty());
    if (printers.names.isEmpty())
        cmbImpresora->addItem(m_s(text::NoPrinter));

    cmbHoja = named(new QComboBox, u"cmbHoja"_s, m_s(text::PreviewSheet));
    for (const QPageSize::PageSizeId id : {QPageSize::A4, QPageSize::Letter})
        cmbHoja->addItem(QPageSize::name(id), int(id));
    cmbHoja->setCurrentIndex(cmbHoja->findData(int(usualSize().id())));

    cmbZoom = named(new QComboBox, u"cmbZoom"_s, m_s(text::PreviewZoom));
    for (const double z : Zooms)
        cmbZoom->addItem(z == 0  ? m_s(text::PageWidth)
                         : z < 0 ? m_s(text::WholePage)
                                 : u"%1 %"_s.arg(qRound(z * 100)));
    cmbZoom->setCurrentIndex(1);

    txtPagina = named(new QSpinBox, u"txtPagina"_s, m_s(text::PreviewPage));
    txtPagina->setMinimum(1);
    lblPaginas = new QLabel;
    cmdImprimir = button(u"cmdImprimir"_s, text::PrintButton);
    cmdImprimir->setDefault(true);
    cmdImprimir->setEnabled(!printers.names.isEmpty());
    cmdPdf = button(u"cmdPdf"_s, text::SaveAsPdf);
    cmdCerrar = button(u"cmdCerrar"_s, text::PreviewClose);

    auto *bar = new QHBoxLayout;
    bar->setSpacing(ui::space::S);
    for (QWidget *w : std::initializer_list<QWidget *>{
             label(text::PreviewPrinter, cmbImpresora), cmbImpresora,
             label(text::PreviewSheet, cmbHoja), cmbHoja, label(text::PreviewZoom, cmbZoom),
             cmbZoom, label(text::PreviewPage, txtPagina), txtPagina, lblPaginas})
        bar->addWidget(w);
    bar->addStretch();

    view = new QPrintPreviewWidget(m_printer.get());
    view->setAccessibleName(m_s(text::PreviewTitle));

    auto *foot = new QHBoxLayout;
    foot->setSpacing(ui::space::S);
    foot->addStretch();
    foot->addWidget(cmdCerrar);
    foot->addWidget(cmdPdf);
    foot->addWidget(cmdImprimir);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::L, ui::space::L, ui::space::L, ui::space::L);
    all->setSpacing(ui::space::M);
    all->addLayout(bar);
    all->addWidget(view, 1);
    all->addLayout(foot);
    cmdImprimir->isEnabled() ? cmdImprimir->setFocus() : cmdPdf->setFocus();
}

void frmVistaPrevia::wire()
{
    connect(view, &QPrintPreviewWidget::paintRequested, this,
            [this](QPrinter *p) { guarded([&] { drawIn(*p, m_document); }); });
    connect(view, &QPrintPreviewWidget::previewChanged, this, &frmVistaPrevia::showPage);
    connect(cmbImpresora, &QComboBox::activated, this, &frmVistaPrevia::choosePrinter);
    connect(cmbHoja, &QComboBox::activated, this, &frmVistaPrevia::chooseSheet);
    connect(cmbZoom, &QComboBox::activated, this, [this](int i) {
        if (Zooms[i] > 0)
            view->setZoomFactor(Zooms[i]);
        else
            Zooms[i] == 0 ? view->fitToWidth() : view->fitInView();
    });
    connect(txtPagina, &QSpinBox::valueChanged, view, &QPrintPreviewWidget::setCurrentPage);
    connect(new QShortcut(Qt::CTRL | Qt::Key_PageDown, this), &QShortcut::activated, txtPagina,
            &QSpinBox::stepUp);
    connect(new QShortcut(Qt::CTRL | Qt::Key_PageUp, this), &QShortcut::activated, txtPagina,
            &QSpinBox::stepDown);
    connect(cmdImprimir, &QPushButton::clicked, this, &frmVistaPrevia::print);
    connect(cmdPdf, &QPushButton::clicked, this, &frmVistaPrevia::savePdf);
    connect(cmdCerrar, &QPushButton::clicked, this, &frmVistaPrevia::reject);
    view->fitInView();
}

void frmVistaPrevia::choosePrinter()
{
    m_printer->setPrinterName(cmbImpresora->currentText());
    chooseSheet(); // changing the printer also changes paper size and margins
}

void frmVistaPrevia::chooseSheet()
{
    const QPageSize sheet(QPageSize::PageSizeId(cmbHoja->currentData().toInt()));
    m_printer->setPageLayout(
        QPageLayout(sheet, m_document.orientationOf(), MarginsMm, QPageLayout::Millimeter));
    view->updatePreview();
}

void frmVistaPrevia::showPage()
{
    const QSignalBlocker quiet(txtPagina);
    txtPagina->setMaximum(qMax(1, view->pageCount()));
    txtPagina->setValue(view->currentPage());
    const bool empty = view->pageCount() == 0;
    lblPaginas->setText(empty ? m_s(text::NoData) : u"/ %1"_s.arg(view->pageCount()));
    cmdImprimir->setEnabled(!empty && cmbImpresora->isEnabled());
    cmdPdf->setEnabled(!empty);
}

void frmVistaPrevia::print()
{
    guarded([this] {
        try {
            printDocument(m_s, m_document, *m_printer, cmbImpresora->currentText());
            accept();
        } catch (const store::StoreError &e) {
            // A printer that is switched off is not an error of the program, so it is not logged.
            if (e.number != store::ErrorNumber::Printer)
                throw;
            m_s.dialogos.Mensaje(e.description);
        }
    });
}

void frmVistaPrevia::savePdf()
{
    guarded([this] { savePdfAsking(m_s, m_document, m_printer->pageLayout().pageSize()); });
}
