// Dialling through a modem on a serial port.
#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <memory>

/// The telephone number in a box that may hold several: the first, digits and "+" only; "" when
/// there is none.
QString NumeroParaMarcar(const QString &telefonos);

/// One call. The port is set to 9600 baud, no parity, 8 data bits, 1 stop bit.
class Marcador : public QObject
{
    Q_OBJECT
public:
    explicit Marcador(QObject *parent = nullptr);
    ~Marcador() override;

    /// Opens the port if it is not open and sends ATDT, the number, ";" and a carriage return.
    /// @return false when the port cannot be opened; see Error
    bool Llamar(const QString &puerto, const QString &numero);
    /// Hangs up (ATH) and closes the port.
    void Terminar();
    bool Abierto() const;
    QString Error() const;
    /// How long the modem may take to answer; 15 seconds unless told otherwise.
    void FijarEspera(std::chrono::milliseconds espera);

Q_SIGNALS:
    /// The modem has answered OK.
    void marcado();
    /// It answered something else (BUSY, ERROR, NO CARRIER, NO DIALTONE) or the port failed, which
    /// is @p motivo; empty when the modem fell silent.
    void fallado(const QString &motivo);

private:
    void leer();
    struct Interno;
    std::unique_ptr<Interno> d;
};
