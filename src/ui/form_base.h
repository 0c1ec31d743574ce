// What every form stands on: its given name, a guard, keys and a memory for its size.
#pragma once

#include "store/session.h"

#include <QDialog>
#include <QHash>
#include <QList>
#include <QPointer>
#include <QVariantMap>

class QHeaderView;
class QLineEdit;
class QPushButton;

namespace ui
{

/// A caption as it is said, or shown where its letter cannot be pressed: without the letter's mark
/// and the dots of what asks for more.
QString spoken(QString caption);

/// Base of all forms. ESC closes; ENTER walks the boxes given to enterChain and clicks the button
/// that has the focus. A form leaves by reject() whichever way it is closed, so that is the one
/// place to override for a question or for what must be done at the end.
class FormBase : public QDialog
{
    Q_OBJECT
public:
    FormBase(Sesion &s, const QString &name, QWidget *parent = nullptr);

    /// Called by the registry each time the form is about to be shown: with what, if anything.
    virtual void opened(const QVariantMap &parameters);

    /// Runs what can fail. Here every failure of a form ends and is told: nothing is thrown into
    /// the event loop, and what the user typed stays on the form.
    /// @return false when it failed; the user has been told
    bool guarded(const std::function<void()> &task);

    /// The user has come back to the form: it stands in front, in the active window.
    void comeForward();
    /// Whether the form can be closed and nothing is lost; asks where something would be.
    virtual bool mayLeave() { return true; }

protected:
    /// Called, guarded, each time the form becomes the active window: it was opened, or the user
    /// comes back to it. After a failure the next time is passed over.
    virtual void activated();

    /// ENTER moves from each of these to the next that can be used; boxes arrive selected. In a
    /// box of several lines ENTER is a new line, and CTRL+ENTER or TAB move on.
    void enterChain(const QList<QWidget *> &boxes);

    /// A button under a text of the table, which ENTER clicks only while it has the focus.
    /// @param picture its name, "" for none
    /// @param key told in the tooltip
    QPushButton *button(const QString &name, int caption, const QString &picture = {},
                        const QString &key = {});

    /// Keeps the apostrophe out of these boxes: typed, it is refused with a message; pasted, it
    /// becomes a blank.
    void refuseApostrophe(const QList<QLineEdit *> &boxes);
    /// The same for boxes of any kind: lines, lists that can be typed in, several lines.
    void refuseApostropheIn(const QList<QWidget *> &boxes);

    /// Opens with the size of last time, or with @p first; keeps it when the form is hidden.
    void rememberSize(QSize first);
    /// The same for the widths and the order of a table's columns.
    void rememberColumns(QHeaderView *header);

    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;

    Sesion &m_s;

private:
    void moveOn(QObject *from);
    QString headerKey(const QHeaderView *header) const;

    QHash<QObject *, QWidget *> m_nextBox;
    QList<QPointer<QHeaderView>> m_headers;
    bool m_remembersSize = false;
    bool m_activating = false;
    bool m_passOver = false; // the next activation
};

} // namespace ui

/// Gives a control its given name and what a screen reader says for it, which may be a caption.
/// @return the control
template <typename W>
W *named(W *control, const QString &name, const QString &accessible)
{
    control->setObjectName(name);
    control->setAccessibleName(ui::spoken(accessible));
    return control;
}
