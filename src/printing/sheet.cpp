#include "printing/sheet.h"

#include <QColor>
#include <QFontMetricsF>
#include <QImage>
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

QFont Hoja::Letra(double puntos, bool negrita) const
{
    QFont letra = LetraDeDocumento(puntos);
    letra.setBold(negrita);
    return letra;
}

QRectF Hoja::EnPuntos(const QRectF &caja) const
{
    return {caja.topLeft() * m_porMm, caja.size() * m_porMm};
}

void Hoja::Texto(const QRectF &caja, const QString &texto, double puntos, int alineacion,
                 bool negrita)
{
    m_pintor.save();
    const QRectF donde = EnPuntos(caja);
    m_pintor.setClipRect(donde, Qt::IntersectClip);
    m_pintor.setFont(Letra(puntos, negrita));
    m_pintor.drawText(donde, alineacion | Qt::TextWordWrap, texto);
    m_pintor.restore();
}

void Hoja::Linea(const QRectF &caja, const QString &texto, double puntos, int alineacion,
                 bool negrita)
{
    const QFont letra = Letra(puntos, negrita);
    const QFontMetricsF medida(letra, m_pintor.device());
    const QRectF donde = EnPuntos(caja);
    m_pintor.setFont(letra);
    m_pintor.drawText(donde, alineacion | Qt::TextSingleLine,
                      medida.elidedText(texto, Qt::ElideRight, donde.width()));
}

double Hoja::Alto(const QString &texto, double ancho, double puntos, bool negrita) const
{
    const QFontMetricsF medida(Letra(puntos, negrita), m_pintor.device());
    return medida.boundingRect(QRectF(0, 0, ancho * m_porMm, 1e6), Qt::TextWordWrap, texto).height()
           / m_porMm;
}

void Hoja::Raya(QPointF desde, QPointF hasta, double grosor)
{
    m_pintor.setPen(QPen(Qt::black, grosor * m_porMm));
    m_pintor.drawLine(desde * m_porMm, hasta * m_porMm);
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

void Hoja::Foto(const QRectF &caja, const QImage &imagen)
{
    if (imagen.isNull())
        return;
    const QRectF donde = EnPuntos(caja);
    const QSizeF tamano = QSizeF(imagen.size()).scaled(donde.size(), Qt::KeepAspectRatio);
    m_pintor.drawImage(QRectF(donde.topLeft(), tamano), imagen);
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
