#include "printing/sheet.h"

#include <QColor>
#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

QFont LetraDeDocumento(double puntos)
{
    QFont letra(u"Inter"_s);
    letra.setPointSizeF(puntos);
    letra.setStyleStrategy(QFont::PreferNoShaping);
    return letra;
}

Hoja::Hoja(QPainter &pintor) : m_pintor(pintor), m_porMm(pintor.device()->logicalDpiX() / 25.4) {}

QRectF Hoja::EnPuntos(const QRectF &caja) const
{
    return {caja.topLeft() * m_porMm, caja.size() * m_porMm};
}

void Hoja::Linea(const QRectF &caja, const QString &texto, double puntos, int alineacion,
                 bool negrita)
{
    QFont letra = LetraDeDocumento(puntos);
    letra.setBold(negrita);
    const QFontMetricsF medida(letra, m_pintor.device());
    const QRectF donde = EnPuntos(caja);
    m_pintor.setFont(letra);
    m_pintor.drawText(donde, alineacion | Qt::TextSingleLine,
                      medida.elidedText(texto, Qt::ElideRight, donde.width()));
}

void Hoja::Marco(const QRectF &caja, double grosor)
{
    m_pintor.setPen(QPen(Qt::black, grosor * m_porMm));
    m_pintor.setBrush(Qt::NoBrush);
    m_pintor.drawRect(EnPuntos(caja));
}

void Hoja::Relleno(const QRectF &caja, const QColor &color)
{
    m_pintor.fillRect(EnPuntos(caja), color);
}

void Hoja::Dibujo(const QRectF &caja, const QString &nombre)
{
    QSvgRenderer dibujo(u":/pictures/"_s + nombre + u".svg"_s);
    if (!dibujo.isValid())
        return;
    const QRectF donde = EnPuntos(caja);
    QRectF dentro({}, dibujo.viewBoxF().size().scaled(donde.size(), Qt::KeepAspectRatio));
    dentro.moveCenter(donde.center());
    dibujo.render(&m_pintor, dentro);
}
