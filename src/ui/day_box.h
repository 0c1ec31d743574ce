// The box for a day, the one for the whole program.
#pragma once

#include "store/session.h"
#include "store/typed_day.h"

#include <QLineEdit>

class QAction;
class QCalendarWidget;

namespace ui
{

/// A day that is typed as people do (see store::readDay), walked by UP and DOWN, or picked from a
/// calendar (ALT+DOWN, F4). The weekday stands behind it. What is no day, or none that the box
/// takes, stays as it was typed and is told beside the box; ESC brings back the day before.
class DayBox : public QLineEdit
{
    Q_OBJECT
    Q_PROPERTY(QDate date READ day WRITE setDay NOTIFY dayChanged)
public:
    enum class Need { Required, Optional };

    DayBox(Sesion &s, store::Lean lean, Need need, QWidget *parent = nullptr);

    /// The day shown; while something else is being typed, that one if it is a day. Invalid when
    /// the box is empty or holds none.
    QDate day() const;
    void setDay(QDate day);
    bool isEmpty() const;
    /// A day that the box takes, or nothing where nothing is needed.
    bool isAcceptable() const;
    /// Days out of this range are refused. @param first, last invalid for no limit
    void setRange(QDate first, QDate last);

    /// Takes what is typed; what cannot be taken is told. @return whether it could
    bool commit();

Q_SIGNALS:
    /// A day was entered, once it is whole.
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

/// The month as calm as the rest: no red, no arrows of another style.
void dressCalendar(QCalendarWidget *month);

} // namespace ui
