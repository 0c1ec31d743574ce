#include "printing/printer.h"

#include "printing/frmvistaprevia.h"

#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{
enum Texto {
    NadaQueMostrar = 5060,
    GuardarComoPdf = 9853,
    Impresora = 9855,
    SinImpresoraGuardar = 9860,
    FiltroPdf = 9863,
    NoImprime = 9864,
    NoSeGuarda = 9865
};
} // namespace

QString Impresoras::Primera() const
{
    return nombres.contains(habitual) ? habitual : nombres.value(0);
}

Impresoras ImpresorasDelSistema()
{
    return {QPrinterInfo::availablePrinterNames(), QPrinterInfo::defaultPrinterName()};
}

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

void ImprimirDocumento(Sesion &s, Documento &documento, QPrinter &impresora, const QString &nombre)
{
    const auto paginas = DibujarEn(impresora, documento);
    if (!paginas || impresora.printerState() == QPrinter::Error)
        throw ErrorDeAlmacen(ErrorNum::Impresora, s(NoImprime) + u' ' + nombre);
    if (paginas == 0)
        s.dialogos.Mensaje(s(NadaQueMostrar));
}

bool GuardarPdfPreguntando(Sesion &s, Documento &documento, const QPageSize &tamano)
{
    static const QRegularExpression noCabe(uR"([/\\:*?"<>|\x00-\x1f])"_s);
    QString nombre = documento.Titulo();
    nombre.replace(noCabe, u"-"_s);
    auto archivo =
        s.dialogos.GuardarArchivo(spoken(s(GuardarComoPdf)), nombre + u".pdf"_s, s(FiltroPdf));
    if (!archivo)
        return false;
    if (!archivo->endsWith(u".pdf"_s, Qt::CaseInsensitive))
        *archivo += u".pdf"_s;
    try {
        if (GuardarPdf(documento, *archivo, tamano) > 0)
            return true;
        s.dialogos.Mensaje(s(NadaQueMostrar));
    } catch (const ErrorDeAlmacen &e) {
        s.dialogos.Mensaje(s(NoSeGuarda) + u'\n' + e.descripcion);
    }
    return false;
}

ImpresionDeEscritorio::ImpresionDeEscritorio(std::function<Impresoras()> listar)
    : m_listar(std::move(listar))
{
}

// @return "" when the user backs out
QString ImpresionDeEscritorio::Elegir(Sesion &s, const Impresoras &impresoras)
{
    const QStringList &nombres = impresoras.nombres;
    if (nombres.size() == 1 || nombres.contains(impresoras.habitual))
        return impresoras.Primera();
    if (nombres.contains(m_elegida))
        return m_elegida;
    QList<Opcion> opciones;
    for (int i = 0; i < nombres.size(); ++i)
        opciones << Opcion{nombres[i], i};
    const QString titulo = spoken(s(Impresora));
    const auto elegidas = s.dialogos.Seleccionar(titulo, {titulo}, opciones, false);
    if (!elegidas || elegidas->isEmpty())
        return {};
    return m_elegida = nombres.value(elegidas->first().valor);
}

void ImpresionDeEscritorio::Imprimir(Sesion &s, Documento &documento)
{
    const Impresoras impresoras = m_listar();
    if (impresoras.nombres.isEmpty()) {
        if (s.dialogos.Pregunta(s(SinImpresoraGuardar)))
            GuardarPdfPreguntando(s, documento, TamanoHabitual());
        return;
    }
    const QString nombre = Elegir(s, impresoras);
    if (!nombre.isEmpty())
        ImprimirDocumento(s, documento, *CrearImpresora(nombre, documento), nombre);
}

void ImpresionDeEscritorio::Mostrar(Sesion &s, Documento &documento)
{
    frmVistaPrevia vista(s, documento, m_listar());
    vista.exec();
}
