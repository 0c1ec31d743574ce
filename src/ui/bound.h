// Controls tied to a column of the settings row: what the user changes is written at once.
#pragma once

#include "store/session.h"
#include "ui/form_base.h"

#include <QGroupBox>

class QButtonGroup;
class QCheckBox;

namespace ui
{

/// Options of which one is chosen; the column keeps its number. A value that is none of the
/// options shows none chosen.
class OptionsGroup : public QGroupBox
{
    Q_OBJECT
public:
    /// @param options number stored and caption
    OptionsGroup(const QString &title, const QList<std::pair<int, QString>> &options,
                 QWidget *parent = nullptr);
    int Value() const; // 0 when none is chosen
    void setValue(int value);

Q_SIGNALS:
    /// The user chose; not when setValue does.
    void chosen(int value);

private:
    QButtonGroup *m_group;
};

/// Shows the column's value, and writes each change of the user to the settings row. The control
/// belongs to a form whose guard tells of what fails; then the stored value is shown again, as it
/// is for a text that is no such value. Boxes write when they are left or ENTER is pressed, if
/// their text changed.
/// @throws StoreError when the column cannot be read
namespace bind
{
using Guard = std::function<bool(const std::function<void()> &)>;

void Options(Sesion &s, const Guard &guard, OptionsGroup *group, std::string_view column);
void Checkbox(Sesion &s, const Guard &guard, QCheckBox *checkbox, std::string_view column);
void text(Sesion &s, const Guard &guard, QLineEdit *box, std::string_view column);
void whole(Sesion &s, const Guard &guard, QLineEdit *box, std::string_view column);
void numberOf(Sesion &s, const Guard &guard, QLineEdit *box, std::string_view column);
void hourOf(Sesion &s, const Guard &guard, QLineEdit *box, std::string_view column);

/// Runs a task when a control is left, and when its form goes off the screen: what was typed there
/// counts as well.
void onLeaving(QWidget *control, const std::function<void()> &task);
} // namespace bind

} // namespace ui
