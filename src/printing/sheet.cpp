#include "printing/sheet.h"

#include <QColor>
#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPainter>
#include <QSvgRenderer>

using namespace printing;
using namespace Qt::StringLiterals;

QFont printing::documentFont(double points)
{
    QFont font(u"Inter"_s);
    font.setPointSizeF(points);
    font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}

Sheet::Sheet(QPainter &painter) : m_painter(painter), m_byMm(painter.device()->logicalDpiX() / 25.4)
{
}

QRectF Sheet::inPoints(const QRectF &box) const
{
    return {box.topLeft() * m_byMm, box.size() * m_byMm};
}

void Sheet::Line(const QRectF &box, const QString &text, double points, int alignment, bool bold)
{
    QFont font = documentFont(points);
    font.setBold(bold);
    const QFontMetricsF measure(font, m_painter.device());
    const QRectF where = inPoints(box);
    m_painter.setFont(font);
    m_painter.drawText(where, alignment | Qt::TextSingleLine,
                       measure.elidedText(text, Qt::ElideRight, where.width()));
}

void Sheet::frame(const QRectF &box, double thickness)
{
    m_painter.setPen(QPen(Qt::black, thickness * m_byMm));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(inPoints(box));
}

void Sheet::padding(const QRectF &box, const QColor &color)
{
    m_painter.fillRect(inPoints(box), color);
}

void Sheet::pictureOf(const QRectF &box, const QString &name)
{
    QSvgRenderer dibujo(u":/pictures/"_s + name + u".svg"_s);
    if (!dibujo.isValid())
        return;
    const QRectF where = inPoints(box);
    QRectF inside({}, dibujo.viewBoxF().size().scaled(where.size(), Qt::KeepAspectRatio));
    inside.moveCenter(where.center());
    dibujo.render(&m_painter, inside);
}
