// A drop-down list that the mouse wheel cannot change by accident.
#pragma once

#include <QComboBox>
#include <QWheelEvent>

namespace ui
{

/// The wheel scrolls the form, and chooses only while the list is open: over a closed list it would
/// change a value nobody meant to change.
class CalmList : public QComboBox
{
public:
    /// Takes the focus by click and TAB, not by the wheel.
    explicit CalmList(QWidget *parent = nullptr) : QComboBox(parent)
    {
        setFocusPolicy(Qt::StrongFocus);
    }

protected:
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};

} // namespace ui
