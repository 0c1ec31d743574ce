// Boxes that take one kind of value and drop every key that cannot be part of it.
#pragma once

#include "store/session.h"

#include <QLineEdit>
#include <optional>

/// Whether a box that loses the focus is left: another window or a menu over the form is not
/// leaving it.
bool EsDejada(const QFocusEvent &event);

/// Whole digits.
class CajaDeEntero : public QLineEdit
{
    Q_OBJECT
public:
    /// @param digitos most that can be typed, up to 9
    explicit CajaDeEntero(int digitos, QWidget *parent = nullptr);
    /// nullopt while the box is empty.
    std::optional<int> Entero() const;
    /// A negative number empties the box.
    void PonerEntero(std::optional<int> n);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    int m_digitos;
};

/// A number with decimals; point and comma both type the decimal mark of the session. A minus
/// cannot be typed; a negative number is shown as it is.
class CajaDeNumero : public QLineEdit
{
    Q_OBJECT
public:
    explicit CajaDeNumero(const Sesion &s, QWidget *parent = nullptr);
    std::optional<Moneda> Numero() const;
    void PonerNumero(std::optional<Moneda> n);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QChar m_separador;
};

/// A day typed over the mask "__/__/____", in the order of the locale. On leaving it with what is
/// no day the user is told "Fecha invalida" and the empty mask comes back.
class CajaDeFecha : public QLineEdit
{
    Q_OBJECT
public:
    explicit CajaDeFecha(Sesion &s, QWidget *parent = nullptr);
    /// Nothing but the mask.
    bool Vacia() const;
    /// Empty, or a day.
    bool Valida() const;
    QDate Dia() const;
    void PonerDia(QDate dia);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    Sesion &m_s;
};

/// A time of day over the mask "__:__". Anything else becomes empty on leaving, after
/// editingFinished has told it.
class CajaDeHora : public QLineEdit
{
    Q_OBJECT
public:
    explicit CajaDeHora(QWidget *parent = nullptr);
    QTime Hora() const; // invalid when empty
    void PonerHora(QTime hora);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
};
