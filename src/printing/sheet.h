// The sheet that documents are drawn on, in millimetres.
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QImage;
class QPainter;
class QColor;

/// A painter with a ruler: everything in millimetres from the upper left corner of what can be
/// printed on, letters in points, whatever the resolution of the device.
class Hoja
{
public:
    explicit Hoja(QPainter &pintor);

    /// A text within a box, wrapped between words; what does not fit below is cut.
    /// @param alineacion Qt::Alignment flags
    void Texto(const QRectF &caja, const QString &texto, double puntos, int alineacion,
               bool negrita = false);
    /// One line, shortened with dots where it is wider than the box.
    void Linea(const QRectF &caja, const QString &texto, double puntos, int alineacion,
               bool negrita = false);
    /// Height that a text takes in a width.
    double Alto(const QString &texto, double ancho, double puntos, bool negrita = false) const;
    void Raya(QPointF desde, QPointF hasta, double grosor = 0.2);
    void Marco(const QRectF &caja, double grosor = 0.2);
    void Relleno(const QRectF &caja, const QColor &color);
    /// A picture as large as fits the box, its proportions kept, in the upper left corner.
    void Foto(const QRectF &caja, const QImage &imagen);
    /// One of the program's drawings, sharp at any size.
    void Dibujo(const QRectF &caja, const QString &nombre);

private:
    QFont Letra(double puntos, bool negrita) const;
    QRectF EnPuntos(const QRectF &caja) const;
    QPainter &m_pintor;
    double m_porMm; // device pixels
};

/// The typeface of all documents. Without the variants of signs by their neighbours, which are
/// drawings without a code: what is searched for in a PDF must be there.
QFont LetraDeDocumento(double puntos);

/// Points to millimetres.
inline constexpr double MmPorPunto = 25.4 / 72;
