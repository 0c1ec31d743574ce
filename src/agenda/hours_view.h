// A day or a week by its hours, tasks standing where they are.
#pragma once

#include "agenda/day_list.h"
#include "agenda/hours_layout.h"

#include <QAbstractScrollArea>

namespace agenda
{

/// As much of a text as a width holds, with dots where it is cut; nothing when fewer than three
/// letters would be left.
QString whatFits(const QFontMetrics &font, const QString &text, int width);

/// Tasks that overlap stand side by side; those without an hour stand above the hours. A task is
/// dragged to another hour or day with the mouse, quarter by quarter; one without an hour that is
/// dropped above the hours stays without. ESC gives the drag up.
///
/// By keys: arrows move over the half hours and days, CTRL with UP and DOWN over the tasks, HOME
/// and END to where the working day begins and ends. The view writes nothing: it tells.
class HoursView : public QAbstractScrollArea
{
    Q_OBJECT
public:
    HoursView(Sesion &s, QWidget *parent = nullptr);

    /// Takes the place of what was shown. The cursor keeps its day if that is still there.
    void show(const QList<QDate> &days, std::vector<DayTask> tasks);
    /// Makes a task the selected one and scrolls to it; 0 for none.
    void choose(int id);
    int chosenOne() const;
    /// Puts the cursor on a day that is shown.
    void goTo(QDate dia);
    QDate cursorDay() const;
    QTime cursorHour() const;
    /// Where a task stands, in the viewport; empty when it is not shown.
    QRect placeOf(int id) const;
    /// Where an hour begins.
    QPoint pointOf(QDate dia, QTime hour) const;

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user came to another task; 0 for a free hour.
    void chosenTask(int id);
    void chosenDay(QDate dia);
    /// Beyond the first or the last day shown.
    void requestedDay(QDate dia);
    /// ENTER or a double click.
    void takenTask(int id);
    void freeHourTaken(QDate dia, QTime hour);
    /// Dropped elsewhere; at no hour above them.
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
    static constexpr int step = 30; // of the cursor
    static constexpr int dayEnd = 24 * 60;
    static constexpr int workBegins = 8 * 60, workEnds = 20 * 60;
    static constexpr int mostAbove = 3; // rows above the hours

    /// A task and where it stands.
    struct Block {
        size_t task = 0;
        int column = 0;
        Section section;
        Lane lane;
        int row = -1; // above the hours; -1 for one that has its hour
    };
    struct Drag {
        int id = 0;
        QPoint from;
        int grabbed = 0; // minutes below its beginning where the hand holds it
        bool underWay = false;
        bool inItsPlace = true; // nothing moves, not even to the next quarter
        QDate dia;
        QTime hour; // none above the hours
    };

    using Drawn = QHash<int, std::pair<QRect, DayTask>>; // by id
    Drawn drawnTasks() const;
    void drawChanges(const Drawn &before);
    void lay();
    void layScroll();
    int top() const; // of the hours
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
    int m_rows = 0;                 // above the hours
    int m_height = 1, m_gutter = 0; // of a quarter of an hour, and where the hours are written
    int m_column = 0, m_minute;     // cursor
    int m_chosen = 0;
    Drag m_drag;
    QFont m_strong;
    bool m_shifted = false; // scrolled to the working day once
};

} // namespace agenda
