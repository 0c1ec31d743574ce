// The print preview of every document.
#pragma once

#include "printing/printer.h"
#include "ui/form_base.h"

class QComboBox;
class QLabel;
class QPrintPreviewWidget;
class QSpinBox;

/// Shows a document as it will be printed, with a choice of page, zoom, printer and paper size;
/// prints it or saves it as a PDF. It works without any printer.
class frmVistaPrevia : public ui::FormBase
{
    Q_OBJECT
public:
    /// @param document must outlive the form
    frmVistaPrevia(Sesion &s, Documento &document, const printing::Printers &printers,
                   QWidget *parent = nullptr);
    ~frmVistaPrevia() override;

private:
    void build(const printing::Printers &printers);
    void wire();
    void choosePrinter();
    void chooseSheet();
    void showPage();
    void print();
    void savePdf();

    Documento &m_document;
    std::unique_ptr<QPrinter> m_printer;
    QPrintPreviewWidget *view = nullptr;
    QComboBox *cmbImpresora = nullptr;
    QComboBox *cmbHoja = nullptr;
    QComboBox *cmbZoom = nullptr;
    QSpinBox *txtPagina = nullptr;
    QLabel *lblPaginas = nullptr;
    QPushButton *cmdImprimir = nullptr;
    QPushButton *cmdPdf = nullptr;
    QPushButton *cmdCerrar = nullptr;
};
