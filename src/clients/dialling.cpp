#include "clients/dialling.h"

#include <QSerialPort>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{

// Longer than any answer; what a device sends without end is not kept.
constexpr qsizetype MayorRespuesta = 4096;

constexpr const char *Negativas[] = {"BUSY",        "ERROR",        "NO ANSWER",
                                     "NO DIALTONE", "NO DIAL TONE", "NO CARRIER"};

} // namespace

QString NumeroParaMarcar(const QString &telefonos)
{
    for (const QString &uno : telefonos.split(u',')) {
        QString numero;
        bool cifras = false;
        for (const QChar c : uno)
            if (c >= u'0' && c <= u'9') {
                numero += c;
                cifras = true;
            } else if (c == u'+' && numero.isEmpty()) {
                numero += c;
            }
        if (cifras)
            return numero;
    }
    return {};
}

struct Marcador::Interno {
    QSerialPort puerto;
    QTimer silencio;
    QByteArray respuesta;
    QString error;
    bool esperando = false;

    bool Dejar()
    {
        silencio.stop();
        return std::exchange(esperando, false);
    }
};

Marcador::Marcador(QObject *parent) : QObject(parent), d(std::make_unique<Interno>())
{
    d->silencio.setSingleShot(true);
    FijarEspera(std::chrono::seconds(15));
    connect(&d->silencio, &QTimer::timeout, this, [this] {
        if (d->Dejar())
            Q_EMIT fallado({});
    });
    connect(&d->puerto, &QSerialPort::readyRead, this, &Marcador::leer);
    connect(&d->puerto, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError e) {
        if (e == QSerialPort::NoError || e == QSerialPort::TimeoutError)
            return;
        d->error = d->puerto.errorString();
        if (!d->Dejar())
            return;
        d->puerto.close();
        Q_EMIT fallado(d->error);
    });
}

Marcador::~Marcador()
{
    d->Dejar();
    disconnect(&d->puerto, nullptr, this, nullptr);
}

bool Marcador::Llamar(const QString &puerto, const QString &numero)
{
    d->Dejar();
    d->error.clear();
    // Only what a number is made of reaches the modem, whose commands are text too.
    const QString marcado = NumeroParaMarcar(numero);
    if (marcado.isEmpty())
        return false;
    if (d->puerto.isOpen() && d->puerto.portName() != puerto)
        d->puerto.close();
    if (!d->puerto.isOpen()) {
        d->puerto.setPortName(puerto);
        d->puerto.setBaudRate(QSerialPort::Baud9600);
        d->puerto.setParity(QSerialPort::NoParity);
        d->puerto.setDataBits(QSerialPort::Data8);
        d->puerto.setStopBits(QSerialPort::OneStop);
        if (!d->puerto.open(QIODevice::ReadWrite)) {
            d->error = d->puerto.errorString();
            return false;
        }
    }
    d->respuesta.clear();
    d->esperando = true;
    d->silencio.start();
    d->puerto.write("ATDT" + marcado.toLatin1() + ";\r");
    return true;
}

void Marcador::Terminar()
{
    d->Dejar();
    if (!d->puerto.isOpen())
        return;
    d->puerto.write("ATH\r");
    d->puerto.flush();
    d->puerto.close();
}

bool Marcador::Abierto() const { return d->puerto.isOpen(); }

QString Marcador::Error() const { return d->error; }

void Marcador::FijarEspera(std::chrono::milliseconds espera) { d->silencio.setInterval(espera); }

void Marcador::leer()
{
    // An answer may come in pieces, with the echo of the command before it.
    d->respuesta = (d->respuesta + d->puerto.readAll()).right(MayorRespuesta);
    if (!d->esperando)
        return;
    for (const char *negativa : Negativas)
        if (d->respuesta.contains(negativa)) {
            d->Dejar();
            Q_EMIT fallado(QString::fromLatin1(negativa));
            return;
        }
    if (d->respuesta.contains("OK") && d->Dejar())
        Q_EMIT marcado();
}
