// A list that the wheel does not change by chance.
#pragma once

#include <QComboBox>
#include <QWheelEvent>

namespace ui
{

/// The wheel scrolls the form below it and chooses in the open list alone: over a closed one it
/// would write what nobody meant.
class CalmList : public QComboBox
{
public:
    explicit CalmList(QWidget *parent = nullptr) : QComboBox(parent)
    {
        setFocusPolicy(Qt::StrongFocus);
    }

protected:
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};

} // namespace ui
