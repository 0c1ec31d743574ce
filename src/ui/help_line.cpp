#include "ui/help_line.h"

#include "ui/theme.h"

#include <QAccessible>
#include <QPainter>
#include <QStyle>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{
const QString hint = u"suave"_s;
const QString done = u"logro"_s;
const QString failed = u"falla"_s;
} // namespace

HelpLine::HelpLine(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setProperty("clase", hint);
}

void HelpLine::tell(const QString &text) { put(text, hint); }
void HelpLine::success(const QString &text) { put(text, done); }
void HelpLine::faultOf(const QString &text) { put(text, failed); }
void HelpLine::clean() { put({}, hint); }

void HelpLine::put(const QString &text, const QString &kind)
{
    if (property("clase").toString() != kind) {
        setProperty("clase", kind);
        style()->unpolish(this);
        style()->polish(this);
    }
    setText(text);
    setAccessibleName(text);
    resizeEvent(nullptr);
    if (!text.isEmpty()) {
        QAccessibleEvent told(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&told);
    }
}

QString HelpLine::line() const { return text().simplified(); }

QRect HelpLine::textPlace() const
{
    QRect place = contentsRect();
    if (!text().isEmpty() && property("clase").toString() != hint)
        place.setLeft(place.left() + fontMetrics().ascent() + space::S);
    return place;
}

QSize HelpLine::minimumSizeHint() const { return {0, fontMetrics().height() + space::XS}; }

void HelpLine::resizeEvent(QResizeEvent *)
{
    const bool cut = fontMetrics().horizontalAdvance(line()) > textPlace().width();
    setToolTip(cut || text().contains(u'\n') ? text().toHtmlEscaped() : QString());
}

void HelpLine::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect place = textPlace();
    const QColor colour = palette().color(foregroundRole());
    if (place.left() > contentsRect().left()) {
        const qreal side = fontMetrics().ascent() * 0.8;
        const QRectF sign(contentsRect().left() + 1, place.center().y() - side / 2, side, side);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colour, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        if (property("clase").toString() == done) {
            painter.drawPolyline(QPolygonF{{sign.left(), sign.center().y()},
                                           {sign.left() + side * 0.35, sign.bottom() - 1},
                                           {sign.right(), sign.top() + 1}});
        } else {
            painter.drawLine(sign.topLeft(), sign.bottomRight());
            painter.drawLine(sign.topRight(), sign.bottomLeft());
        }
    }
    painter.setPen(colour);
    painter.drawText(place, int(alignment()),
                     fontMetrics().elidedText(line(), Qt::ElideRight, place.width()));
}

LineProgress::LineProgress(Sesion &s, HelpLine *line) : m_s(s), m_before(s.progress)
{
    s.progress.stage = [line](const QString &text) {
        line->tell(text);
        line->repaint();
    };
    s.progress.bar = {};
}

LineProgress::~LineProgress() { m_s.progress = m_before; }
