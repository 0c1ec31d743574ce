// The sheet that documents are drawn on, in millimetres.
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;
class QColor;

/// A painter with a ruler: everything in millimetres from the upper left corner of what can be
/// printed on, letters in points, whatever the resolution of the device.
class Hoja
{
public:
    explicit Hoja(QPainter &pintor);

    /// One line, shortened with dots where it is wider than the box.
    /// @param alineacion Qt::Alignment flags
    void Linea(const QRectF &caja, const QString &texto, double puntos, int alineacion,
               bool negrita = false);
    void Marco(const QRectF &caja, double grosor = 0.2);
    void Relleno(const QRectF &caja, const QColor &color);
    /// One of the program's drawings, sharp at any size.
    void Dibujo(const QRectF &caja, const QString &nombre);

private:
    QRectF EnPuntos(const QRectF &caja) const;
    QPainter &m_pintor;
    double m_porMm; // device pixels
};

/// The typeface of all documents. Without the variants of signs by their neighbours, which are
/// drawings without a code: what is searched for in a PDF must be there.
QFont LetraDeDocumento(double puntos);
