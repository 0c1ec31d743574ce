// The sheet that documents are drawn on, in millimetres.
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;
class QColor;

namespace printing
{

/// A painter with a ruler: everything in millimetres from the upper left corner of what can be
/// printed on, letters in points, whatever the resolution of the device.
class Sheet
{
public:
    explicit Sheet(QPainter &painter);

    /// One line, shortened with dots where it is wider than the box.
    /// @param alignment Qt::Alignment flags
    void Line(const QRectF &box, const QString &text, double points, int alignment,
              bool bold = false);
    void frame(const QRectF &box, double thickness = 0.2);
    void padding(const QRectF &box, const QColor &color);
    /// One of the program's drawings, sharp at any size.
    void pictureOf(const QRectF &box, const QString &name);

private:
    QRectF inPoints(const QRectF &box) const;
    QPainter &m_painter;
    double m_byMm; // device pixels
};

/// The typeface of all documents. Without the variants of signs by their neighbours, which are
/// drawings without a code: what is searched for in a PDF must be there.
QFont documentFont(double points);

} // namespace printing
