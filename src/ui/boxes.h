// Boxes that take one kind of value and drop every key that cannot be part of it.
#pragma once

#include "store/session.h"

#include <QLineEdit>
#include <optional>

namespace ui
{

/// Whether a box that loses the focus is left: another window or a menu over the form is not
/// leaving it.
bool isLeft(const QFocusEvent &event);

/// Whole digits.
class WholeNumberBox : public QLineEdit
{
    Q_OBJECT
public:
    /// @param digits most that can be typed, up to 9
    explicit WholeNumberBox(int digits, QWidget *parent = nullptr);
    /// nullopt while the box is empty.
    std::optional<int> whole() const;
    /// A negative number empties the box.
    void setWholeNumber(std::optional<int> n);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    int m_digits;
};

/// A number with decimals; point and comma both type the decimal mark of the session. A minus
/// cannot be typed; a negative number is shown as it is.
class NumberBox : public QLineEdit
{
    Q_OBJECT
public:
    explicit NumberBox(const Sesion &s, QWidget *parent = nullptr);
    std::optional<Moneda> numberOf() const;
    void setNumber(std::optional<Moneda> n);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QChar m_separator;
};

/// A time of day over the mask "__:__". Anything else becomes empty on leaving, after
/// editingFinished has told it.
class HourBox : public QLineEdit
{
    Q_OBJECT
public:
    explicit HourBox(QWidget *parent = nullptr);
    QTime hourOf() const; // invalid when empty
    void setHour(QTime hour);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
};

} // namespace ui
