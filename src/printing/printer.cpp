#include "printing/printer.h"

#include "printing/frmvistaprevia.h"

#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{
enum Texto {
    GuardarComoPdf = 9853,
    SinImpresoraGuardar = 9860,
    FiltroPdf = 9863,
    NoImprime = 9864
};
} // namespace

std::unique_ptr<QPrinter> CrearImpresora(const QString &nombre, const Documento &documento)
{
    auto impresora = std::make_unique<QPrinter>(QPrinter::HighResolution);
    if (!nombre.isEmpty())
        impresora->setPrinterName(nombre);
    else
        impresora->setResolution(600);
    impresora->setPageLayout(QPageLayout(TamanoHabitual(), documento.Orientacion(), MargenesMm,
                                         QPageLayout::Millimeter));
    impresora->setDocName(documento.Titulo());
    return impresora;
}

void ImprimirDocumento(Sesion &s, Documento &documento, QPrinter &impresora)
{
    if (DibujarEn(impresora, documento) == 0 || impresora.printerState() == QPrinter::Error)
        throw ErrorDeAlmacen(ErrorNum::Impresora, s(NoImprime) + u' ' + impresora.printerName());
}

bool GuardarPdfPreguntando(Sesion &s, Documento &documento, const QPageSize &tamano)
{
    static const QRegularExpression noCabe(uR"([/\\:*?"<>|\x00-\x1f])"_s);
    QString nombre = documento.Titulo();
    nombre.replace(noCabe, u"-"_s);
    auto archivo =
        s.dialogos.GuardarArchivo(s(GuardarComoPdf).remove(u'&'), nombre + u".pdf"_s, s(FiltroPdf));
    if (!archivo)
        return false;
    if (!archivo->endsWith(u".pdf"_s, Qt::CaseInsensitive))
        *archivo += u".pdf"_s;
    GuardarPdf(documento, *archivo, tamano);
    return true;
}

void ImpresionDeEscritorio::Imprimir(Sesion &s, Documento &documento)
{
    const QString nombre = QPrinterInfo::defaultPrinterName();
    if (nombre.isEmpty()) {
        if (s.dialogos.Pregunta(s(SinImpresoraGuardar)))
            GuardarPdfPreguntando(s, documento, TamanoHabitual());
        return;
    }
    const auto impresora = CrearImpresora(nombre, documento);
    ImprimirDocumento(s, documento, *impresora);
}

void ImpresionDeEscritorio::Mostrar(Sesion &s, Documento &documento)
{
    frmVistaPrevia vista(s, documento);
    vista.exec();
}
