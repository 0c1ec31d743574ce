// What a form that shows records is doing with one of them: showing it, taking a new one, changing
// it. Decisions only; the buttons are in record_buttons.h.
#pragma once

#include <QVariantMap>

namespace ui
{

enum class Mode { View, New, Modify };

/// Which of the four buttons below a record can be seen and used. Save stands only while something
/// is entered; the button that began it stays and reads "cancel".
struct RecordChoices {
    struct Choice {
        bool shown = true;
        bool usable = true;
    };
    Choice save, newOne, modify, erase;
};

/// @param mode what this record's panel is doing
/// @param free nothing is being entered anywhere on the form
/// @param hasRow there is a record to change or to delete
/// @param mayAdd whether a new one has what it belongs to
RecordChoices recordChoices(Mode mode, bool free, bool hasRow, bool mayAdd);

/// The one entry that a form has under way, in one of its panels at most.
class Entering
{
public:
    bool underWay() const { return m_mode != Mode::View; }
    /// What the panel with that number is doing.
    Mode modeOf(int panel) const { return panel == m_panel ? m_mode : Mode::View; }
    /// The panel that is being typed in; -1 for none.
    int panel() const { return underWay() ? m_panel : -1; }

    /// @param boxes what stands in the panel's boxes before anything is typed
    void begin(int panel, Mode mode, QVariantMap boxes);
    /// Whether the boxes say anything else than at the beginning: what would be lost.
    bool hasChanged(const QVariantMap &boxes) const { return underWay() && boxes != m_before; }
    void end();

private:
    int m_panel = -1;
    Mode m_mode = Mode::View;
    QVariantMap m_before;
};

} // namespace ui
