// The date box used throughout the program.
#pragma once

#include "store/session.h"
#include "store/typed_day.h"

#include <QLineEdit>

class QAction;
class QCalendarWidget;

namespace ui
{

/// A date typed freely (see store::readDay), stepped with UP and DOWN, or picked from a calendar
/// (ALT+DOWN, F4). The weekday is shown behind it. Text that is no date, or a date out of range,
/// stays as typed and is reported beside the box; ESC restores the previous date.
class DayBox : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(QDate date READ day WRITE setDay NOTIFY dayChanged)
public:
    enum class Need { Required, Optional };

    /// @param lean which way a date typed without a year is resolved
    /// @param need whether the box may stay empty
    DayBox(Sesion &s, store::Lean lean, Need need, QWidget *parent = nullptr);

    /// The date shown or, while the user is typing, the date typed so far. Invalid when the box is
    /// empty or its text is no acceptable date.
    QDate day() const;
    /// Shows a date; an invalid one empties the box. Emits dayChanged() if the date is a new one.
    void setDay(QDate day);
    /// Whether the box holds nothing but blanks.
    bool isEmpty() const;
    /// Whether the box holds an acceptable date, or is empty and may be.
    bool isAcceptable() const;
    /// Limits the dates accepted, both ends included.
    /// @param first, last an invalid date means no limit
    void setRange(QDate first, QDate last);

    /// Takes over what was typed, or reports beside the box why it cannot. An empty box that needs
    /// a date goes back to the previous one.
    /// @return whether the box holds an acceptable value now
    bool commit();

Q_SIGNALS:
    /// The date has changed; not emitted while the user is still typing it.
    void dayChanged(QDate day);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QDate typed() const;
    bool takes(QDate day) const;
    void step(int days);
    void openCalendar();
    QString refusal() const;

    Sesion &m_s;
    store::Lean m_lean;
    Need m_need;
    QDate m_day, m_first, m_last;
    bool m_edited = false;
    QAction *m_calendarAction;
};

/// Dresses a calendar in the program's style: no red weekends, plain arrows.
void dressCalendar(QCalendarWidget *month);

} // namespace ui
