// Controls bound to a column of the settings row: each change the user makes is written at once.
#pragma once

#include "store/session.h"
#include "ui/form_base.h"

#include <QGroupBox>

class QButtonGroup;
class QCheckBox;

namespace ui
{

/// A group of radio buttons; each option stands for a number. A value that matches no option leaves
/// none of them checked.
class OptionsGroup : public QGroupBox
{
    Q_OBJECT
public:
    /// Lays the options out in one column.
    /// @param options number to store and caption of each option
    OptionsGroup(const QString &title, const QList<std::pair<int, QString>> &options,
                 QWidget *parent = nullptr);
    /// The number of the checked option, 0 when none is checked.
    int Value() const;
    /// Checks the option with this number without emitting chosen().
    void setValue(int value);

Q_SIGNALS:
    /// The user checked an option.
    void chosen(int value);

private:
    QButtonGroup *m_group;
};

/// Functions that show a column's value in a control and write each change the user makes to the
/// settings row. Boxes write when the focus leaves them or ENTER is pressed, and only if their text
/// has changed. Text that is no valid value, or a write that fails, brings the stored value back.
/// @throws StoreError when the column cannot be read; failed writes are reported through the guard
namespace bind
{
/// The form's FormBase::guarded: runs the task, reports a failure and returns false for it.
using Guard = std::function<bool(const std::function<void()> &)>;

/// Binds a group of options to a whole-number column.
void Options(Sesion &s, const Guard &guard, OptionsGroup *group, std::string_view column);
/// Binds a check box to a Yes/No column.
void Checkbox(Sesion &s, const Guard &guard, QCheckBox *checkbox, std::string_view column);
/// Binds a box to a text column.
void text(Sesion &s, const Guard &guard, QLineEdit *box, std::string_view column);
/// Binds a box to a whole-number column. An empty box stores null.
void whole(Sesion &s, const Guard &guard, QLineEdit *box, std::string_view column);
/// Binds a box to a column of numbers with decimals, written with the session's decimal mark. An
/// empty box stores null.
void numberOf(Sesion &s, const Guard &guard, QLineEdit *box, std::string_view column);
/// Binds a box to a time column, shown as HH:mm. An empty box stores null.
void hourOf(Sesion &s, const Guard &guard, QLineEdit *box, std::string_view column);

/// Runs a task whenever the focus leaves a control, and when its form is hidden, so that
/// half-finished typing counts too.
void onLeaving(QWidget *control, const std::function<void()> &task);
} // namespace bind

} // namespace ui
