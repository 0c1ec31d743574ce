// A day or a week by the hour, with its tasks in place.
#pragma once

#include "agenda/day_list.h"
#include "agenda/hours_layout.h"

#include <QAbstractScrollArea>

namespace agenda
{

/// As much of a text as fits a width in pixels, elided where it is cut; empty when fewer than three
/// letters would remain.
QString whatFits(const QFontMetrics &font, const QString &text, int width);

/// The hours of one or several days. Tasks that overlap are drawn side by side; those without an
/// hour are above the hours. The mouse drags a task to another hour or day in steps of a quarter of
/// an hour; a task without an hour that is dropped above the hours still has none. ESC cancels
/// the drag.
///
/// Keyboard: the arrows move by half hours and days, CTRL+UP and CTRL+DOWN from task to task, HOME
/// and END to the start and the end of the working day. The view stores nothing; its signals report
/// what the user wants.
class HoursView : public QAbstractScrollArea
{
    Q_OBJECT
public:
    /// Builds an empty view; show() fills it.
    HoursView(Sesion &s, QWidget *parent = nullptr);

    /// Replaces the days and tasks shown. The cursor stays on its day if that is still shown.
    void show(const QList<QDate> &days, std::vector<DayTask> tasks);
    /// Selects a task and scrolls to it; 0 selects none.
    void choose(int id);
    /// The id of the selected task, 0 for none.
    int chosenOne() const;
    /// Moves the cursor to one of the days shown.
    void goTo(QDate dia);
    /// The day that the cursor is on.
    QDate cursorDay() const;
    /// The half hour that the cursor is on.
    QTime cursorHour() const;
    /// The rectangle of a task in viewport coordinates; empty when it is not shown.
    QRect placeOf(int id) const;
    /// The point in the viewport where an hour of a day begins.
    QPoint pointOf(QDate dia, QTime hour) const;

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user selected another task; 0 for a free hour.
    void chosenTask(int id);
    /// The user moved to another of the days shown.
    void chosenDay(QDate dia);
    /// The user moved past the first or the last day shown.
    void requestedDay(QDate dia);
    /// ENTER or a double click on a task.
    void takenTask(int id);
    /// ENTER or a double click on a free hour.
    void freeHourTaken(QDate dia, QTime hour);
    /// The user dropped a task elsewhere; above the hours @p hour is invalid.
    void movedTask(int id, QDate dia, QTime hour);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    static constexpr int quarter = 15;
    static constexpr int step = 30; // minutes by which the cursor moves
    static constexpr int dayEnd = 24 * 60;
    static constexpr int workBegins = 8 * 60, workEnds = 20 * 60;
    static constexpr int mostAbove = 3; // rows above the hours

    /// A task and its place.
    struct Block {
        size_t task = 0;
        int column = 0;
        Section section;
        Lane lane;
        int row = -1; // row above the hours; -1 for a task with an hour
    };
    struct Drag {
        int id = 0;
        QPoint from;
        int grabbed = 0; // minutes from the task's start to where the mouse holds it
        bool underWay = false;
        bool inItsPlace = true; // dropping now would not move it, not even to the next quarter
        QDate dia;
        QTime hour; // invalid above the hours
    };

    // Coordinates are those of the viewport, in pixels; minutes count from midnight.
    using Drawn = QHash<int, std::pair<QRect, DayTask>>; // by id
    Drawn drawnTasks() const;
    void drawChanges(const Drawn &before);
    void lay();
    void layScroll();
    int top() const; // where the hours begin
    int lineHeight() const { return m_height; }
    int gutter() const { return m_gutter; }
    int columnWidth() const;
    int yOf(int minutes) const;
    int minuteAt(int y) const;
    int columnAt(int x) const;
    QRect rectOf(const Block &b) const;
    const Block *blockAt(QPoint p) const;
    const Block *blockOf(int id) const;
    QRect cursorPlace() const;
    const DayTask &taskOf(const Block &b) const { return m_tasks[b.task]; }

    // hours_view_paint.cpp
    void drawHours(QPainter &p, const QRegion &dirty) const;
    void drawBlocks(QPainter &p, const QRegion &dirty, bool above) const;
    void drawHead(QPainter &p) const;
    void drawDragged(QPainter &p) const;
    void drawBlock(QPainter &p, const QRect &place, const DayTask &t, bool chosen) const;
    void drawNow(QPainter &p) const;

    void moveCursor(int column, int minutes);
    void place(int column, int minutes, int id);
    void select(int id, bool tell);
    void walkTasks(int step);
    void ensureVisible(int from, int until);
    void take();
    void drag(QPoint p);
    void stopDragging();
    void say();

    Sesion &m_s;
    QList<QDate> m_days;
    std::vector<DayTask> m_tasks;
    std::vector<Block> m_blocks;    // by day and hour
    int m_rows = 0;                 // rows above the hours
    int m_height = 1, m_gutter = 0; // height of a quarter of an hour; width of the hour labels
    int m_column = 0, m_minute;     // cursor
    int m_chosen = 0;
    Drag m_drag;
    QFont m_strong;
    bool m_shifted = false; // whether it has been scrolled to the working day
};

} // namespace agenda
