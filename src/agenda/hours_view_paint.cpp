#include "agenda/hours_view.h"

#include "agenda/tasks.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QPaintEvent>
#include <QPainter>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

constexpr int IconSide = 16;
constexpr int NarrowWidth = 110; // below this the hour would take too much room
constexpr int TightWidth = 56;   // below this there is room for a name only
constexpr qsizetype FewestLetters = 3;
constexpr int IconWidth = 90;

} // namespace

QString agenda::whatFits(const QFontMetrics &font, const QString &text, int width)
{
    const QString cut = font.elidedText(text, Qt::ElideRight, width);
    return cut == text || cut.size() > FewestLetters ? cut : QString();
}

void HoursView::paintEvent(QPaintEvent *event)
{
    QPainter p(viewport());
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(event->rect(), ui::paletteInUse().surface);
    if (m_days.isEmpty())
        return;
    const QRect below(0, top(), viewport()->width(), viewport()->height() - top());
    p.setClipRect(below);
    drawHours(p, event->region());
    drawBlocks(p, event->region() & below, false);
    drawNow(p);
    p.setClipping(false);
    if (event->rect().top() < top()) {
        drawHead(p);
        drawBlocks(p, event->region(), true);
    }
    if (m_drag.underWay) {
        if (m_drag.hour.isValid())
            p.setClipRect(below);
        drawDragged(p);
    }
}

/// Draws the tasks above the hours or those among them. The selected one comes last, on top of its
/// neighbours.
void HoursView::drawBlocks(QPainter &p, const QRegion &dirty, bool above) const
{
    const auto draw = [&](const Block &b, bool chosen) {
        const QRect place = rectOf(b);
        if ((b.row >= 0) == above && dirty.intersects(place))
            drawBlock(p, place, taskOf(b), chosen);
    };
    for (const Block &b : m_blocks)
        if (taskOf(b).id != m_chosen)
            draw(b, false);
    if (const Block *b = blockOf(m_chosen)) {
        p.setOpacity(m_drag.underWay ? 0.4 : 1);
        draw(*b, !m_drag.underWay);
        p.setOpacity(1);
    }
}

/// Draws the dragged task where it would be dropped.
void HoursView::drawDragged(QPainter &p) const
{
    const Block *b = blockOf(m_drag.id);
    if (!b)
        return;
    Block there = *b;
    there.column = std::max(0, int(m_days.indexOf(m_drag.dia)));
    there.lane = {};
    if (m_drag.hour.isValid()) {
        const int from = dayMinute(m_drag.hour);
        const int length = b->row < 0 ? b->section.until - b->section.from : step;
        there.row = -1;
        there.section = {from, std::min(from + length, dayEnd)};
    }
    DayTask t = taskOf(*b);
    t.hor = m_drag.hour;
    p.setOpacity(0.92);
    drawBlock(p, rectOf(there), t, true);
    p.setOpacity(1);
}

void HoursView::drawHours(QPainter &p, const QRegion &dirty) const
{
    const ui::Palette colours = ui::paletteInUse();
    const int width = viewport()->width();
    for (const auto &[from, to] : {std::pair(0, workBegins), std::pair(workEnds, dayEnd)})
        p.fillRect(QRect(gutter(), yOf(from), width, yOf(to) - yOf(from)),
                   colours.alternateSurface);
    QColor faint = colours.border;
    faint.setAlphaF(0.5F);
    for (int m = 0; m < dayEnd; m += step) {
        if (!dirty.intersects(QRect(0, yOf(m) - 1, width, lineHeight() + 2)))
            continue;
        p.setPen(QPen(m % 60 == 0 ? colours.border : faint, 1));
        p.drawLine(gutter(), yOf(m), width, yOf(m));
        if (m % 60 == 0) {
            p.setPen(colours.softText);
            p.drawText(QRect(0, yOf(m) + 1, gutter() - ui::space::S, lineHeight()),
                       int(Qt::AlignRight) | Qt::AlignVCenter, QTime(m / 60, 0).toString(u"HH:mm"));
        }
    }
    p.setPen(colours.border);
    for (int c = 0; c < m_days.size(); ++c)
        p.drawLine(gutter() + c * columnWidth(), 0, gutter() + c * columnWidth(),
                   viewport()->height());
    if (m_chosen == 0 && !m_drag.underWay) {
        p.setPen(hasFocus() ? QPen(colours.accent, 2) : QPen(colours.border, 1));
        p.setBrush(hasFocus() ? colours.softAccent : Qt::transparent);
        p.drawRoundedRect(cursorPlace(), 4, 4);
        p.setBrush(Qt::NoBrush);
    }
}

void HoursView::drawHead(QPainter &p) const
{
    const ui::Palette colours = ui::paletteInUse();
    const int line = fontMetrics().height() + ui::space::M;
    p.fillRect(QRect(0, 0, viewport()->width(), top()), colours.surface);
    p.setPen(colours.border);
    p.drawLine(0, top() - 1, viewport()->width(), top() - 1);
    const QLocale local;
    for (int c = 0; c < m_days.size() && m_days.size() > 1; ++c) {
        const QRect place(gutter() + c * columnWidth(), 0, columnWidth(), line);
        const bool today = m_days[c] == m_s.reloj.hoy;
        p.setFont(c == m_column ? m_strong : font());
        if (c == m_column)
            p.fillRect(QRect(place.left() + 1, line - 3, place.width() - 2, 3), colours.accent);
        p.setPen(today ? colours.accent : colours.text);
        const QString name = local.dayName(m_days[c].dayOfWeek(), QLocale::ShortFormat) + u' '
                             + QString::number(m_days[c].day());
        p.drawText(place, Qt::AlignCenter,
                   p.fontMetrics().elidedText(name, Qt::ElideRight, place.width() - 4));
    }
    p.setFont(font());
}

void HoursView::drawBlock(QPainter &p, const QRect &place, const DayTask &t, bool chosen) const
{
    const ui::Palette colours = ui::paletteInUse();
    const bool own = t.tip < 0; // not a client's appointment
    const QColor ground = chosen ? colours.accent : own ? colours.background : colours.softAccent;
    const QColor ink = chosen ? colours.onAccent : t.est ? colours.softText : colours.text;
    p.save();
    p.setPen(QPen(chosen && hasFocus() ? colours.text : own ? colours.border : ground, 1));
    p.setBrush(ground);
    p.drawRoundedRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    p.setClipRect(place, Qt::IntersectClip);
    p.fillRect(QRect(place.left(), place.top() + 2, 3, place.height() - 4),
               t.est ? colours.border : colours.accent);

    // Narrow tasks show only the name; their position shows the hour.
    const bool narrow = place.width() < NarrowWidth, tight = place.width() < TightWidth;
    QRect text = place.adjusted(tight ? ui::space::XS + 1 : ui::space::S, 1, -2, -1);
    if (text.width() < fontMetrics().averageCharWidth())
        return p.restore();
    const int line = fontMetrics().lineSpacing();
    const QString icon = t.est ? u"tarearealizada"_s : t.icon;
    if (!icon.isEmpty() && place.width() > IconWidth) {
        const QRect picture(text.right() - IconSide + 1, text.top() + (line - IconSide) / 2,
                            IconSide, IconSide);
        ui::namedIcon(icon, chosen && !colours.dark ? ui::Tone::OnFrame : ui::Tone::Normal)
            .paint(&p, picture);
        text.setRight(picture.left() - ui::space::XS);
    }
    const auto draw = [&](int row, const QString &words, bool strong) {
        const int y = place.top() + row * line + (place.height() < 2 * line ? 0 : 1);
        if (row > 0 && (tight || y + line > place.bottom() + 2))
            return;
        p.setFont(strong ? m_strong : font());
        p.drawText(QRect(text.left(), y, text.width(), std::min(line, place.height())),
                   int(Qt::AlignLeft) | Qt::AlignVCenter,
                   whatFits(p.fontMetrics(), words, text.width()));
    };
    p.setPen(ink);
    const QString hour = t.hor.isValid() ? t.hor.toString(u"HH:mm") + u' ' : QString();
    const bool user = t.tip == TaskKind::UserTask;
    const QString who = user ? t.des.simplified() : t.patient;
    draw(0, (narrow ? QString() : hour) + (who.isEmpty() ? t.item : who), !t.est);
    draw(1, who.isEmpty() ? t.des.simplified() : t.item, false);
    if (!user)
        draw(2, t.des.simplified(), false);
    p.restore();
}

void HoursView::drawNow(QPainter &p) const
{
    const int column = int(m_days.indexOf(m_s.reloj.hoy));
    if (column < 0)
        return;
    const int y = yOf(dayMinute(m_s.reloj.hourOf()));
    const int x = gutter() + column * columnWidth();
    p.setPen(QPen(ui::paletteInUse().error, 1.5));
    p.drawLine(x, y, x + columnWidth(), y);
    p.setBrush(ui::paletteInUse().error);
    p.drawEllipse(QPoint(x, y), 3, 3);
    p.setBrush(Qt::NoBrush);
}
