// The pages of the one window: main forms side by side in a stack, the last one opened in front.
#pragma once

#include <QPointer>
#include <QStackedWidget>

class QScrollArea;

namespace ui
{

class FormBase;

/// A stack of forms over a home page. A form that is opened comes to the front; one that closes
/// gives way to the one before it, in the end to home. What stands behind waits as it was left.
/// Where there is less room than a form needs, it scrolls.
class Pages : public QStackedWidget
{
    Q_OBJECT
public:
    /// @param home shown while no form is open; the stack becomes its parent
    explicit Pages(QWidget *home, QWidget *parent = nullptr);
    /// Lets go of the forms, which belong to whoever made them.
    ~Pages() override;

    /// Brings a form to the front; one that has a window of its own is raised there.
    void bringForward(FormBase &form);
    /// The form in front, nullptr at home.
    FormBase *current() const;
    /// Puts home in front; the forms stay open behind it.
    void goHome();
    /// Gives the form in front a window of its own, for a second screen, until it is closed.
    void separate();
    /// Asks each open form whether it may be left: those with a window of their own, then the one
    /// in front and those behind it.
    /// @return false when one may not; it is in front then
    bool mayLeaveAll();
    /// The window that the stack stands in became the active one.
    void activate();

Q_SIGNALS:
    /// Another page is in front, or it is called otherwise.
    void changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QScrollArea *frameOf(const FormBase &form) const;
    QScrollArea *adopt(FormBase &form);
    void release(FormBase &form);
    void closed(FormBase &form);
    void keepInSight(QWidget *focused);

    QWidget *m_home;
    QList<QPointer<FormBase>> m_open;  // the one in front last
    QList<QPointer<FormBase>> m_apart; // that were given a window of their own
};

} // namespace ui
