// Input boxes for one kind of value, which ignore every key that cannot be part of it.
#pragma once

#include "store/session.h"

#include <QLineEdit>
#include <optional>

namespace ui
{

/// Whether a focus-out event means that the user has left the box. Switching to another window or
/// opening a menu does not count.
bool isLeft(const QFocusEvent &event);

/// A box for non-negative whole numbers.
class WholeNumberBox : public QLineEdit
{
    Q_OBJECT
public:
    /// @param digits how many digits can be typed, 1 to 9
    explicit WholeNumberBox(int digits, QWidget *parent = nullptr);
    /// The number typed, nullopt while the box is empty.
    std::optional<int> whole() const;
    /// Shows a number; nullopt or a negative number empties the box.
    void setWholeNumber(std::optional<int> n);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    int m_digits;
};

/// A box for numbers with decimals. Both point and comma type the session's decimal mark. A minus
/// cannot be typed, but a negative number set by the program is shown.
class NumberBox : public QLineEdit
{
    Q_OBJECT
public:
    /// Takes the decimal mark from the session.
    explicit NumberBox(const Sesion &s, QWidget *parent = nullptr);
    /// The number typed, nullopt when the text is no number.
    std::optional<Moneda> numberOf() const;
    /// Shows a number; nullopt empties the box.
    void setNumber(std::optional<Moneda> n);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QChar m_separator;
};

/// A box for a time of day, with the mask "__:__". Anything that is no time is cleared when the
/// focus leaves the box, after editingFinished has been emitted.
class HourBox : public QLineEdit
{
    Q_OBJECT
public:
    /// Starts out empty.
    explicit HourBox(QWidget *parent = nullptr);
    /// The time typed, invalid when the box is empty or holds no complete time.
    QTime hourOf() const;
    /// Shows a time as HH:mm; an invalid one empties the box.
    void setHour(QTime hour);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
};

} // namespace ui
