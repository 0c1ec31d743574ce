// The base of every form: its name, error handling, keys and remembered size.
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

/// A caption as a screen reader should say it: without the '&' of its shortcut letter and without
/// trailing dots.
QString spoken(QString caption);

/// Base of all forms. ESC closes; ENTER walks the boxes given to enterChain() and clicks the
/// focused button. However a form is closed, reject() is called, so override that to ask a question
/// or to clean up.
class FormBase : public QDialog
{
    Q_OBJECT
public:
    /// @param name object name, also the key of the form's remembered settings
    FormBase(Sesion &s, const QString &name, QWidget *parent = nullptr);

    /// Called by the registry each time before the form is shown.
    /// @param parameters what the caller passed to FormRegistry::open; often empty
    virtual void opened(const QVariantMap &parameters);

    /// Runs a task that may throw. All failures of a form end here and are reported: nothing
    /// escapes into the event loop, and what the user typed stays on the form.
    /// @return false when the task threw; the user has been told
    bool guarded(const std::function<void()> &task);

    /// The user has come back to the form: it stands in front, in the active window.
    void comeForward();
    /// Whether the form can be closed and nothing is lost; asks where something would be.
    virtual bool mayLeave() { return true; }

protected:
    /// Called inside guarded() each time the form becomes the active window. After a failure the
    /// next activation is skipped, so that closing the message does not repeat it.
    virtual void activated();

    /// Makes ENTER move from each box to the next one that is enabled and visible, selecting its
    /// text. In a box of several lines ENTER starts a new line, and CTRL+ENTER or TAB move on.
    void enterChain(const QList<QWidget *> &boxes);

    /// Makes a button that ENTER clicks only while it has the focus.
    /// @param caption number of its text
    /// @param picture name of its icon, "" for none
    /// @param key key combination to mention in the tool tip, "" for none
    QPushButton *button(const QString &name, int caption, const QString &picture = {},
                        const QString &key = {});

    /// Keeps apostrophes out of these boxes: a typed one is refused with a note, a pasted one
    /// becomes a blank.
    void refuseApostrophe(const QList<QLineEdit *> &boxes);
    /// The same for other kinds of boxes: editable lists and boxes of several lines.
    void refuseApostropheIn(const QList<QWidget *> &boxes);

    /// Restores the size of last time, or takes @p first (pixels); saves it when the form is
    /// hidden.
    void rememberSize(QSize first);
    /// Likewise for the widths and order of a table's columns.
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
    bool m_passOver = false; // skip the next activation
};

} // namespace ui

/// Gives a control its given name and what a screen reader says for it, which may be a caption.
/// @return the control
template <typename W>
/// Sets a control's object name and its accessible name, for which a caption will do.
/// @return the control
W *named(W *control, const QString &name, const QString &accessible)
{
    control->setObjectName(name);
    control->setAccessibleName(ui::spoken(accessible));
    return control;
}
