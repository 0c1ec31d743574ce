#include "clients/dialling.h"

#include <QSerialPort>
#include <QTimer>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

// Longer than any answer; limits what is kept of a device that never stops sending.
constexpr qsizetype HighestAnswer = 4096;

constexpr const char *Negative[] = {"BUSY",        "ERROR",        "NO ANSWER",
                                    "NO DIALTONE", "NO DIAL TONE", "NO CARRIER"};

} // namespace

QString clients::NumberToDial(const QString &telephones)
{
    for (const QString &one : telephones.split(u',')) {
        QString number;
        bool figures = false;
        for (const QChar c : one)
            if (c >= u'0' && c <= u'9') {
                number += c;
                figures = true;
            } else if (c == u'+' && number.isEmpty()) {
                number += c;
            }
        if (figures)
            return number;
    }
    return {};
}

struct Dialler::Internals {
    QSerialPort port;
    QTimer silence;
    QByteArray answer;
    QString error;
    bool waiting = false;

    bool leave()
    {
        silence.stop();
        return std::exchange(waiting, false);
    }
};

Dialler::Dialler(QObject *parent) : QObject(parent), d(std::make_unique<Internals>())
{
    d->silence.setSingleShot(true);
    setWait(std::chrono::seconds(15));
    connect(&d->silence, &QTimer::timeout, this, [this] {
        if (d->leave())
            Q_EMIT failed({});
    });
    connect(&d->port, &QSerialPort::readyRead, this, &Dialler::read);
    connect(&d->port, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError e) {
        if (e == QSerialPort::NoError || e == QSerialPort::TimeoutError)
            return;
        d->error = d->port.errorString();
        if (!d->leave())
            return;
        d->port.close();
        Q_EMIT failed(d->error);
    });
}

Dialler::~Dialler()
{
    d->leave();
    disconnect(&d->port, nullptr, this, nullptr);
}

bool Dialler::call(const QString &port, const QString &number)
{
    d->leave();
    d->error.clear();
    // The modem's commands are text too, so nothing but digits and "+" may reach it.
    const QString marked = NumberToDial(number);
    if (marked.isEmpty())
        return false;
    if (d->port.isOpen() && d->port.portName() != port)
        d->port.close();
    if (!d->port.isOpen()) {
        d->port.setPortName(port);
        d->port.setBaudRate(QSerialPort::Baud9600);
        d->port.setParity(QSerialPort::NoParity);
        d->port.setDataBits(QSerialPort::Data8);
        d->port.setStopBits(QSerialPort::OneStop);
        if (!d->port.open(QIODevice::ReadWrite)) {
            d->error = d->port.errorString();
            return false;
        }
    }
    d->answer.clear();
    d->waiting = true;
    d->silence.start();
    d->port.write("ATDT" + marked.toLatin1() + ";\r");
    return true;
}

void Dialler::finish()
{
    d->leave();
    if (!d->port.isOpen())
        return;
    d->port.write("ATH\r");
    d->port.flush();
    d->port.close();
}

bool Dialler::isOpen() const { return d->port.isOpen(); }

QString Dialler::error() const { return d->error; }

void Dialler::setWait(std::chrono::milliseconds wait) { d->silence.setInterval(wait); }

void Dialler::read()
{
    // An answer may arrive in pieces, after the echo of the command.
    d->answer = (d->answer + d->port.readAll()).right(HighestAnswer);
    if (!d->waiting)
        return;
    for (const char *negative : Negative)
        if (d->answer.contains(negative)) {
            d->leave();
            Q_EMIT failed(QString::fromLatin1(negative));
            return;
        }
    if (d->answer.contains("OK") && d->leave())
        Q_EMIT marked();
}
