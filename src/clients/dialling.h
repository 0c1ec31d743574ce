// Dialling through a modem on a serial port.
#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <memory>

namespace clients
{

/// The telephone number in a box that may hold several: the first, digits and "+" only; "" when
/// there is none.
QString NumberToDial(const QString &telephones);

/// One call. The port is set to 9600 baud, no parity, 8 data bits, 1 stop bit.
class Dialler : public QObject
{
    Q_OBJECT
public:
    explicit Dialler(QObject *parent = nullptr);
    ~Dialler() override;

    /// Opens the port if it is not open and sends ATDT, the number, ";" and a carriage return.
    /// @return false when the port cannot be opened; see Error
    bool call(const QString &port, const QString &number);
    /// Hangs up (ATH) and closes the port.
    void finish();
    bool isOpen() const;
    QString error() const;
    /// How long the modem may take to answer; 15 seconds unless told otherwise.
    void setWait(std::chrono::milliseconds wait);

Q_SIGNALS:
    /// The modem has answered OK.
    void marked();
    /// It answered something else (BUSY, ERROR, NO CARRIER, NO DIALTONE) or the port failed, which
    /// is @p reason; empty when the modem fell silent.
    void failed(const QString &reason);

private:
    void read();
    struct Internals;
    std::unique_ptr<Internals> d;
};

} // namespace clients
