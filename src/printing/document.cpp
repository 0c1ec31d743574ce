#include "printing/document.h"

#include "store/session.h"

#include <QFile>
#include <QLocale>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

using namespace Qt::StringLiterals;

QPageSize TamanoHabitual()
{
    // Where Letter is what the shops sell (territories of the locale data that name it).
    static constexpr QLocale::Territory conCarta[] = {
        QLocale::UnitedStates, QLocale::Canada,           QLocale::Mexico,
        QLocale::Colombia,     QLocale::Venezuela,        QLocale::Chile,
        QLocale::CostaRica,    QLocale::ElSalvador,       QLocale::Guatemala,
        QLocale::Nicaragua,    QLocale::Panama,           QLocale::PuertoRico,
        QLocale::Philippines,  QLocale::DominicanRepublic};
    const auto pais = QLocale().territory();
    const bool carta =
        std::find(std::begin(conCarta), std::end(conCarta), pais) != std::end(conCarta);
    return QPageSize(carta ? QPageSize::Letter : QPageSize::A4);
}

void ImprimirODecir(Sesion &s, Documento &documento)
{
    try {
        s.impresion.Imprimir(s, documento);
    } catch (const ErrorDeAlmacen &e) {
        s.dialogos.Mensaje(e.descripcion);
    }
}

std::optional<int> DibujarEn(QPagedPaintDevice &dispositivo, Documento &documento)
{
    const QSizeF area = dispositivo.pageLayout().paintRect(QPageLayout::Millimeter).size();
    const int paginas = documento.Componer(dispositivo, area);
    QPainter pintor;
    for (int p = 0; p < paginas; ++p) {
        if (p == 0 ? !pintor.begin(&dispositivo) : !dispositivo.newPage())
            return std::nullopt;
        pintor.save();
        documento.Dibujar(pintor, p);
        pintor.restore();
    }
    return paginas;
}

int GuardarPdf(Documento &documento, const QString &archivo, const QPageSize &tamano)
{
    QSaveFile destino(archivo);
    const auto falla = [&] {
        throw ErrorDeAlmacen(ErrorNum::RutaODisco, archivo + u": "_s + destino.errorString());
    };
    if (!destino.open(QIODevice::WriteOnly))
        falla();
    std::optional<int> paginas;
    {
        QPdfWriter pdf(&destino);
        pdf.setResolution(600);
        pdf.setTitle(documento.Titulo());
        pdf.setCreator(u"Kelvara"_s);
        pdf.setPageLayout(
            QPageLayout(tamano, documento.Orientacion(), MargenesMm, QPageLayout::Millimeter));
        paginas = DibujarEn(pdf, documento);
    }
    if (paginas == 0)
        return 0;
    // The commit does not look at what is still to be written.
    if (!paginas || !destino.flush() || !destino.commit())
        falla();
    return *paginas;
}
