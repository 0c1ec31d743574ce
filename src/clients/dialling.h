// Dials through a modem on a serial port.
#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <memory>

namespace clients
{

/// The first number of a box that may hold several, reduced to digits and "+"; "" when there is
/// none.
QString NumberToDial(const QString &telephones);

/// One call at a time. The port is set to 9600 baud, no parity, 8 data bits and 1 stop bit.
class Dialler : public QObject
{
    Q_OBJECT
public:
    /// Opens no port yet.
    explicit Dialler(QObject *parent = nullptr);
    /// Closes the port without hanging up; call finish() for that.
    ~Dialler() override;

    /// Opens the port if necessary and sends ATDT, the number, ";" and a carriage return.
    /// @return false when the port cannot be opened or the number has no digit; see error()
    bool call(const QString &port, const QString &number);
    /// Hangs up (ATH) and closes the port.
    void finish();
    /// Whether the port is open.
    bool isOpen() const;
    /// What went wrong with the port, as the system words it; "" if nothing did.
    QString error() const;
    /// Sets how long the modem may take to answer; 15 seconds by default.
    void setWait(std::chrono::milliseconds wait);

Q_SIGNALS:
    /// The modem answered OK.
    void marked();
    /// The call failed. @p reason is the modem's answer (BUSY, ERROR, NO CARRIER, NO DIALTONE) or
    /// the port's error; empty when the modem did not answer in time.
    void failed(const QString &reason);

private:
    void read();
    struct Internals;
    std::unique_ptr<Internals> d;
};

} // namespace clients
