#include "ui/day_box.h"

#include "texts/ui.h"
#include "ui/boxes.h"
#include "ui/field_note.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QAction>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QToolButton>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

constexpr QSize CalendarSize{280, 220};
const QString EmptyMask = u"__/__/____"_s;

} // namespace

void ui::dressCalendar(QCalendarWidget *month)
{
    month->setFirstDayOfWeek(QLocale().firstDayOfWeek());
    month->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    month->setHorizontalHeaderFormat(QCalendarWidget::SingleLetterDayNames);
    month->setMinimumSize(CalendarSize);
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        month->setWeekdayTextFormat(day, month->weekdayTextFormat(Qt::Monday));
    const std::pair<QString, QString> arrows[] = {{u"qt_calendar_prevmonth"_s, u"‹"_s},
                                                  {u"qt_calendar_nextmonth"_s, u"›"_s}};
    for (const auto &[name, sign] : arrows)
        if (auto *arrow = month->findChild<QToolButton *>(name)) {
            arrow->setIcon({});
            arrow->setText(sign);
        }
}

DayBox::DayBox(Sesion &s, store::Lean lean, Need need, QWidget *parent)
    : QLineEdit(parent),
      m_s(s),
      m_lean(lean),
      m_need(need),
      m_last(lean == store::Lean::Behind ? s.reloj.hoy : QDate()),
      m_calendarAction(addAction(namedIcon(u"AgendaPizarra"_s), QLineEdit::TrailingPosition))
{
    setPlaceholderText(EmptyMask);
    const QString form = s(store::isMonthFirst() ? text::MonthFirstMask : text::DayFirstMask);
    setToolTip(form + u'\n' + s(text::DayBoxHint));
    setAccessibleDescription(form);
    m_calendarAction->setToolTip(s(text::PickFromCalendar));
    connect(m_calendarAction, &QAction::triggered, this, &DayBox::openCalendar);
    // textChanged, to catch text restored from a draft too.
    connect(this, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_edited = text != (m_day.isValid() ? store::dayText(m_day) : QString());
    });
}

QDate DayBox::day() const
{
    if (!m_edited)
        return m_day;
    const QDate d = typed();
    return takes(d) ? d : QDate();
}

void DayBox::setDay(QDate day)
{
    const bool changed = day != m_day;
    m_day = day;
    setText(day.isValid() ? store::dayText(day) : QString());
    m_edited = false;
    clearRefusal(this);
    if (changed)
        Q_EMIT dayChanged(day);
}

bool DayBox::isEmpty() const { return text().trimmed().isEmpty(); }

bool DayBox::isAcceptable() const { return isEmpty() ? m_need == Need::Optional : day().isValid(); }

void DayBox::setRange(QDate first, QDate last)
{
    m_first = first;
    m_last = last;
}

QDate DayBox::typed() const { return store::readDay(text(), m_s.reloj.hoy, m_lean); }

bool DayBox::takes(QDate day) const
{
    return day.isValid() && (!m_first.isValid() || day >= m_first)
           && (!m_last.isValid() || day <= m_last);
}

QString DayBox::refusal() const
{
    const QDate d = typed();
    if (d.isValid() && m_last.isValid() && d > m_last)
        return m_s(text::DayTooLate).arg(store::dayText(m_last));
    if (d.isValid() && m_first.isValid() && d < m_first)
        return m_s(text::DayTooEarly).arg(store::dayText(m_first));
    return m_s(text::InvalidDate) + u". "_s + m_s(text::DayBoxHint);
}

bool DayBox::commit()
{
    if (!m_edited)
        return isAcceptable();
    if (isAcceptable()) {
        setDay(isEmpty() ? QDate() : typed());
        return true;
    }
    if (isEmpty()) { // a date is required: back to the previous one
        setDay(m_day);
        return m_day.isValid();
    }
    refuse(this, refusal());
    return false;
}

void DayBox::step(int days)
{
    const QDate from = day().isValid() ? day() : m_s.reloj.hoy;
    const QDate to = day().isValid() ? from.addDays(days) : from;
    if (takes(to))
        setDay(to);
    selectAll();
}

void DayBox::openCalendar()
{
    auto *month = new QCalendarWidget(this);
    month->setObjectName(objectName() + u"_calendario"_s);
    month->setWindowFlags(Qt::Popup);
    month->setAttribute(Qt::WA_DeleteOnClose);
    dressCalendar(month);
    if (m_first.isValid())
        month->setMinimumDate(m_first);
    if (m_last.isValid())
        month->setMaximumDate(m_last);
    month->setSelectedDate(day().isValid() ? day() : m_s.reloj.hoy);
    const auto take = [this, month](QDate d) {
        month->close();
        setDay(d);
        setFocus();
    };
    connect(month, &QCalendarWidget::clicked, this, take);
    connect(month, &QCalendarWidget::activated, this, take);
    month->adjustSize();
    month->move(mapToGlobal(QPoint(0, height())));
    month->show();
    month->setFocus();
}

bool DayBox::event(QEvent *event)
{
    // ESC belongs to the form unless there is something to undo here.
    if (event->type() == QEvent::ShortcutOverride && m_edited
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void DayBox::keyPressEvent(QKeyEvent *event)
{
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier)
            return openCalendar();
        if (plain)
            return step(event->key() == Qt::Key_Up ? 1 : -1);
        break;
    case Qt::Key_F4:
        if (plain)
            return openCalendar();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // The form moves on only from a valid date.
        if (commit())
            break;
        return;
    case Qt::Key_Escape:
        if (m_edited) {
            setDay(m_day);
            return selectAll();
        }
        break;
    default:
        break;
    }
    QLineEdit::keyPressEvent(event);
}

void DayBox::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (isLeft(*event))
        commit();
}

void DayBox::paintEvent(QPaintEvent *event)
{
    QLineEdit::paintEvent(event);
    const QDate d = day();
    if (!d.isValid())
        return;
    // After the text, if there is room.
    const QString name = QLocale().dayName(d.dayOfWeek(), QLocale::ShortFormat);
    const QFontMetrics font = fontMetrics();
    const int iconRoom = height();
    const QRect place = rect().adjusted(0, 0, -iconRoom, 0);
    const int left = place.right() - font.horizontalAdvance(name);
    if (left < font.horizontalAdvance(text()) + 2 * space::M)
        return;
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, name);
}
