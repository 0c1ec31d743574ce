// The sheet on which documents are drawn, measured in millimetres.
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;
class QColor;

namespace printing
{

/// A painter that measures in millimetres from the upper left corner of the printable area, and
/// font sizes in points, whatever the resolution of the device.
class Sheet
{
public:
    /// @param painter must be active, with its origin at the upper left corner of the area
    explicit Sheet(QPainter &painter);

    /// Draws one line of text, elided where it is wider than the box.
    /// @param points font size
    /// @param alignment Qt::Alignment flags
    void Line(const QRectF &box, const QString &text, double points, int alignment,
              bool bold = false);
    /// Draws the outline of a box. @param thickness in millimetres
    void frame(const QRectF &box, double thickness = 0.2);
    /// Fills a box with a colour.
    void padding(const QRectF &box, const QColor &color);
    /// Draws one of the program's vector pictures, centred and as large as fits the box. An unknown
    /// name draws nothing.
    void pictureOf(const QRectF &box, const QString &name);

private:
    QRectF inPoints(const QRectF &box) const;
    QPainter &m_painter;
    double m_byMm; // device pixels in a millimetre
};

/// The typeface of all documents. Shaping is off because contextual glyphs carry no character code,
/// and text in a PDF must be searchable.
QFont documentFont(double points);

} // namespace printing
