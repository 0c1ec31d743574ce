#include "agenda/hours_view.h"

#include "agenda/frmagenda_look.h"
#include "agenda/tasks.h"
#include "texts/agenda.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QScrollBar>
#include <QStyleHints>
#include <QTimer>
#include <QToolTip>
#include <algorithm>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

} // namespace

HoursView::HoursView(Sesion &s, QWidget *parent)
    : QAbstractScrollArea(parent), m_s(s), m_minute(dayMinute(s.reloj.hourOf()) / step * step)
{
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setAccessibleName(s(text::HoursTitle));
    viewport()->setMouseTracking(true);
    verticalScrollBar()->setFocusPolicy(Qt::NoFocus);
    auto *clock = new QTimer(this); // moves the line that marks the present time
    connect(clock, &QTimer::timeout, viewport(), qOverload<>(&QWidget::update));
    clock->start(60'000);
}

QSize HoursView::minimumSizeHint() const { return {280, 240}; }
QSize HoursView::sizeHint() const { return {620, 480}; }

void HoursView::show(const QList<QDate> &days, std::vector<DayTask> tasks)
{
    stopDragging();
    const QDate before = cursorDay();
    const int rows = m_rows;
    const Drawn drawn = drawnTasks();
    const bool sameDays = std::exchange(m_days, days) == days;
    m_tasks = std::move(tasks);
    m_column = std::max(0, int(m_days.indexOf(before)));
    lay();
    if (!blockOf(m_chosen))
        m_chosen = 0;
    layScroll();
    say();
    if (sameDays && rows == m_rows)
        drawChanges(drawn);
    else
        viewport()->update();
}

HoursView::Drawn HoursView::drawnTasks() const
{
    Drawn drawn;
    for (const Block &b : m_blocks)
        drawn.insert(taskOf(b).id, {rectOf(b), taskOf(b)});
    return drawn;
}

/// Redraws only what has changed: a key usually moves one task, and on a full day redrawing all of
/// them is slow. Many small pieces would take longer than the whole view, though.
void HoursView::drawChanges(const Drawn &before)
{
    constexpr qsizetype mostPieces = 24;
    const Drawn now = drawnTasks();
    QList<QRect> changed;
    const auto note = [&](const Drawn &some, const Drawn &others) {
        for (auto task = some.cbegin(); task != some.cend(); ++task)
            if (const auto other = others.constFind(task.key());
                other == others.cend() || *other != *task)
                changed << task->first.adjusted(-1, -1, 1, 1);
    };
    note(before, now);
    note(now, before);
    if (changed.size() > mostPieces)
        return viewport()->update();
    for (const QRect &place : std::as_const(changed))
        viewport()->update(place);
}

void HoursView::lay()
{
    m_blocks.clear();
    m_rows = 0;
    for (int column = 0; column < m_days.size(); ++column) {
        const size_t first = m_blocks.size();
        std::vector<Section> stretches;
        std::vector<size_t> above; // indexes in m_blocks
        for (size_t i = 0; i < m_tasks.size(); ++i) {
            const DayTask &t = m_tasks[i];
            if (t.dia != m_days[column])
                continue;
            Block b{i, column, {}, {}, -1};
            if (t.hor.isValid()) {
                const int from = dayMinute(t.hor);
                b.section = {from, std::min(from + std::max(t.minutes, quarter), dayEnd)};
            } else {
                above.push_back(m_blocks.size());
            }
            m_blocks.push_back(b);
        }
        // When there are not enough rows, tasks share them side by side.
        const int rows = std::min(int(above.size()), mostAbove);
        for (int i = 0; i < int(above.size()); ++i) {
            m_blocks[above[size_t(i)]].row = i % rows;
            m_blocks[above[size_t(i)]].lane = {i / rows, (int(above.size()) - 1) / rows + 1};
        }
        m_rows = std::max(m_rows, rows);
        std::stable_sort(
            m_blocks.begin() + std::ptrdiff_t(first), m_blocks.end(),
            [](const Block &a, const Block &b) { return a.section.from < b.section.from; });
        for (size_t i = first; i < m_blocks.size(); ++i)
            if (m_blocks[i].row < 0)
                stretches.push_back(m_blocks[i].section);
        const std::vector<Lane> lanes = setSideBySide(stretches);
        size_t lane = 0;
        for (size_t i = first; i < m_blocks.size(); ++i)
            if (m_blocks[i].row < 0)
                m_blocks[i].lane = lanes[lane++];
    }
}

void HoursView::layScroll()
{
    m_strong = font();
    m_strong.setWeight(QFont::DemiBold);
    m_height = fontMetrics().lineSpacing() + 2;
    m_gutter = fontMetrics().horizontalAdvance(u"00:00"_s) + 2 * ui::space::S;
    const int shown = std::max(1, viewport()->height() - top());
    verticalScrollBar()->setPageStep(shown);
    verticalScrollBar()->setSingleStep(lineHeight());
    verticalScrollBar()->setRange(0, std::max(0, dayEnd / quarter * lineHeight() - shown));
}

int HoursView::top() const
{
    const int above = m_rows > 0 ? m_rows * (lineHeight() + 2) + ui::space::XS : 0;
    // The form already shows the name of a single day.
    return (m_days.size() > 1 ? fontMetrics().height() + ui::space::L : 1) + above;
}

int HoursView::columnWidth() const
{
    return std::max(1, (viewport()->width() - gutter()) / std::max(1, int(m_days.size())));
}

int HoursView::yOf(int minutes) const
{
    return top() + minutes * lineHeight() / quarter - verticalScrollBar()->value();
}

int HoursView::minuteAt(int y) const
{
    const int m = (y - top() + verticalScrollBar()->value()) * quarter / lineHeight();
    return std::clamp(m, 0, dayEnd - 1);
}

int HoursView::columnAt(int x) const
{
    return std::clamp((x - gutter()) / columnWidth(), 0, std::max(0, int(m_days.size()) - 1));
}

QRect HoursView::rectOf(const Block &b) const
{
    const int left = gutter() + b.column * columnWidth() + 2;
    const int width = columnWidth() - ui::space::XS - 2;
    const int lane = width / b.lane.total;
    if (b.row >= 0) {
        const int line = lineHeight() + 2;
        return {left + b.lane.index * lane, top() - m_rows * line - 2 + b.row * line,
                std::max(6, lane - 2), line - 2};
    }
    const int from = yOf(b.section.from), to = yOf(b.section.until);
    return {left + b.lane.index * lane, from + 1, std::max(6, lane - 2),
            std::max(lineHeight(), to - from) - 2};
}

const HoursView::Block *HoursView::blockAt(QPoint p) const
{
    for (auto b = m_blocks.rbegin(); b != m_blocks.rend(); ++b)
        if ((b->row >= 0 || p.y() >= top()) && rectOf(*b).contains(p))
            return &*b;
    return nullptr;
}

const HoursView::Block *HoursView::blockOf(int id) const
{
    const auto b = std::ranges::find_if(
        m_blocks, [&](const Block &x) { return id != 0 && taskOf(x).id == id; });
    return b == m_blocks.end() ? nullptr : &*b;
}

int HoursView::chosenOne() const { return m_chosen; }

QDate HoursView::cursorDay() const { return m_days.value(m_column); }

QTime HoursView::cursorHour() const { return {m_minute / 60, m_minute % 60}; }

QRect HoursView::placeOf(int id) const
{
    const Block *b = blockOf(id);
    return b ? rectOf(*b) : QRect();
}

QPoint HoursView::pointOf(QDate dia, QTime hour) const
{
    const int column = std::max(0, int(m_days.indexOf(dia)));
    return {gutter() + column * columnWidth() + columnWidth() / 2, yOf(dayMinute(hour)) + 1};
}

void HoursView::choose(int id) { select(id, false); }

/// The rectangle that marks the cursor: that of the selected task, else of a free half hour.
QRect HoursView::cursorPlace() const
{
    if (const Block *b = blockOf(m_chosen))
        return rectOf(*b);
    return {gutter() + m_column * columnWidth() + 2, yOf(m_minute) + 2,
            columnWidth() - ui::space::XS, yOf(m_minute + step) - yOf(m_minute) - 3};
}

/// Moves the cursor and redraws only what that changes, not the whole day.
void HoursView::place(int column, int minutes, int id)
{
    const auto draw = [this] { viewport()->update(cursorPlace().adjusted(-3, -3, 3, 3)); };
    draw();
    if (column != m_column)
        viewport()->update(0, 0, viewport()->width(), top());
    m_column = column;
    m_minute = minutes;
    m_chosen = id;
    draw();
    say();
}

void HoursView::select(int id, bool tell)
{
    const Block *b = blockOf(id);
    const bool other = (b ? id : 0) != m_chosen;
    if (!b) {
        place(m_column, m_minute, 0);
    } else if (b->row >= 0) {
        place(b->column, m_minute, id);
    } else {
        place(b->column, b->section.from / step * step, id);
        ensureVisible(b->section.from, b->section.until);
    }
    if (tell && other)
        Q_EMIT chosenTask(m_chosen);
}

void HoursView::goTo(QDate dia)
{
    if (const int column = int(m_days.indexOf(dia)); column >= 0 && column != m_column)
        place(column, m_minute, m_chosen);
}

void HoursView::ensureVisible(int from, int until)
{
    QScrollBar *bar = verticalScrollBar();
    if (yOf(until) > viewport()->height())
        bar->setValue(bar->value() + yOf(until) - viewport()->height() + ui::space::S);
    if (yOf(from) < top())
        bar->setValue(bar->value() - (top() - yOf(from)) - ui::space::S);
}

/// Describes the cursor's place for screen readers.
void HoursView::say()
{
    if (m_days.isEmpty())
        return;
    const Block *b = blockOf(m_chosen);
    const QString day = QLocale().toString(cursorDay(), QLocale::LongFormat);
    const QString text = b ? taskSubject(taskOf(*b)) + u", "_s + taskOf(*b).detail.simplified()
                           : cursorHour().toString(u"HH:mm") + u", "_s + m_s(text::FreeHour);
    setAccessibleDescription(day + u", "_s + text);
    if (hasFocus()) {
        QAccessibleEvent told(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&told);
    }
}

void HoursView::moveCursor(int column, int minutes)
{
    if (column < 0 || column >= m_days.size()) {
        const QDate day = cursorDay().addDays(column < 0 ? -1 : 1);
        select(0, true);
        Q_EMIT requestedDay(day);
        if (const int there = int(m_days.indexOf(day)); there >= 0)
            moveCursor(there, minutes);
        return;
    }
    const bool otherDay = column != m_column;
    minutes = std::clamp(minutes, 0, dayEnd - step);
    // The task that begins within the half hour, else one that is still going on.
    const Block *found = nullptr;
    for (const Block &b : m_blocks)
        if (b.column == column && b.row < 0 && b.section.from < minutes + step
            && b.section.until > minutes && (!found || found->section.from < minutes))
            found = &b;
    const int id = found ? taskOf(*found).id : 0;
    const bool otherTask = id != m_chosen;
    place(column, minutes, id);
    ensureVisible(m_minute, m_minute + step);
    // The task comes first, because a new day alone would make the list select one itself.
    if (otherTask)
        Q_EMIT chosenTask(m_chosen);
    if (otherDay)
        Q_EMIT chosenDay(cursorDay());
}

/// To the next task of the day, from the cursor when none is selected.
void HoursView::walkTasks(int direction)
{
    std::vector<const Block *> ofDay;
    for (const Block &b : m_blocks)
        if (b.column == m_column)
            ofDay.push_back(&b);
    const auto here =
        std::ranges::find_if(ofDay, [this](const Block *b) { return taskOf(*b).id == m_chosen; });
    std::ptrdiff_t i = here - ofDay.begin();
    if (here != ofDay.end())
        i += direction;
    else
        i = std::ranges::count_if(ofDay,
                                  [this](const Block *b) { return b->section.from < m_minute; })
            - (direction < 0);
    if (i >= 0 && i < std::ssize(ofDay))
        select(taskOf(*ofDay[size_t(i)]).id, true);
}

void HoursView::take()
{
    if (m_chosen != 0)
        Q_EMIT takenTask(m_chosen);
    else if (!m_days.isEmpty())
        Q_EMIT freeHourTaken(cursorDay(), cursorHour());
}

void HoursView::keyPressEvent(QKeyEvent *event)
{
    if (m_drag.underWay && event->key() == Qt::Key_Escape)
        return stopDragging();
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool jump = modifiers == Qt::ControlModifier;
    if (modifiers != Qt::NoModifier && !jump)
        return event->ignore();
    switch (event->key()) {
    case Qt::Key_Up:
        return jump ? walkTasks(-1) : moveCursor(m_column, m_minute - step);
    case Qt::Key_Down:
        return jump ? walkTasks(1) : moveCursor(m_column, m_minute + step);
    case Qt::Key_Left:
        return moveCursor(m_column - 1, m_minute);
    case Qt::Key_Right:
        return moveCursor(m_column + 1, m_minute);
    case Qt::Key_Home:
        return moveCursor(m_column, workBegins);
    case Qt::Key_End:
        return moveCursor(m_column, workEnds);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return take();
    default:
        event->ignore();
    }
}

void HoursView::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    say();
    viewport()->update();
}

void HoursView::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    stopDragging();
    viewport()->update();
}

void HoursView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    layScroll();
}

void HoursView::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        layScroll();
}

void HoursView::showEvent(QShowEvent *event)
{
    QAbstractScrollArea::showEvent(event);
    if (!std::exchange(m_shifted, true))
        verticalScrollBar()->setValue((workBegins - step) * lineHeight() / quarter);
}

bool HoursView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const Block *b = blockAt(help->pos());
        if (b)
            QToolTip::showText(help->globalPos(),
                               u"<b>"_s + taskSubject(taskOf(*b)).toHtmlEscaped() + u"</b><br>"_s
                                   + taskOf(*b).detail.toHtmlEscaped().replace(u"\n"_s, u"<br>"_s),
                               viewport(), rectOf(*b));
        else
            QToolTip::hideText();
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void HoursView::mousePressEvent(QMouseEvent *event)
{
    const QPoint p = event->position().toPoint();
    if (event->button() != Qt::LeftButton || m_days.isEmpty())
        return;
    if (const Block *b = blockAt(p)) {
        const QDate before = cursorDay();
        // A task without an hour is held by its upper edge.
        Drag held;
        held.id = taskOf(*b).id;
        held.from = p;
        held.grabbed = b->row < 0 ? minuteAt(p.y()) - b->section.from : 0;
        select(held.id, true);
        if (cursorDay() != before)
            Q_EMIT chosenDay(cursorDay());
        m_drag = held; // set last, because showing another day cancels a drag
    } else if (p.y() >= top()) {
        const QDate before = cursorDay();
        const bool other = m_chosen != 0;
        place(columnAt(p.x()), minuteAt(p.y()) / step * step, 0);
        if (other)
            Q_EMIT chosenTask(0);
        if (cursorDay() != before)
            Q_EMIT chosenDay(cursorDay());
    } else {
        moveCursor(columnAt(p.x()), m_minute);
    }
}

void HoursView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QPoint p = event->position().toPoint();
    if (event->button() == Qt::LeftButton && (p.y() >= top() || blockAt(p)))
        take();
}

void HoursView::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint p = event->position().toPoint();
    if (m_drag.id != 0 && event->buttons() & Qt::LeftButton) {
        if (m_drag.underWay
            || (p - m_drag.from).manhattanLength()
                   >= QGuiApplication::styleHints()->startDragDistance())
            drag(p);
        return;
    }
    viewport()->setCursor(blockAt(p) ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

void HoursView::drag(QPoint p)
{
    const Block *b = blockOf(m_drag.id);
    if (!b)
        return stopDragging();
    m_drag.underWay = true;
    viewport()->setCursor(Qt::ClosedHandCursor);
    const int column = columnAt(p.x()), minute = minuteAt(p.y()) - m_drag.grabbed;
    const bool above = b->row >= 0 && p.y() < top();
    QScrollBar *bar = verticalScrollBar();
    if (p.y() > viewport()->height() - lineHeight())
        bar->setValue(bar->value() + lineHeight());
    else if (p.y() < top() + lineHeight() && p.y() >= 0 && !above)
        bar->setValue(bar->value() - lineHeight());
    m_drag.dia = m_days[column];
    m_drag.hour = above ? QTime() : toQuarter(minute);
    m_drag.inItsPlace =
        column == b->column && (b->row < 0 ? qAbs(minute - b->section.from) <= quarter / 2 : above);
    viewport()->update();
}

void HoursView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    if (m_drag.underWay)
        drag(event->position().toPoint());
    const Drag done = m_drag;
    stopDragging();
    if (done.underWay && !done.inItsPlace)
        Q_EMIT movedTask(done.id, done.dia, done.hour);
}

void HoursView::stopDragging()
{
    if (std::exchange(m_drag, {}).id == 0)
        return;
    viewport()->setCursor(Qt::ArrowCursor);
    viewport()->update();
}
