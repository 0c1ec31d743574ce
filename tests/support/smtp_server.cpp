#include "support/smtp_server.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace
{

const QString Python = u"/usr/bin/python3"_s; // the system's own, which has the server's library

// One self-signed certificate, which is then its own authority.
void HacerCertificado(const QString &carpeta)
{
    QProcess::execute(u"openssl"_s, {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s,
                                     u"-days"_s, u"2"_s, u"-subj"_s, u"/CN=localhost"_s,
                                     u"-addext"_s, u"subjectAltName=DNS:localhost"_s, u"-keyout"_s,
                                     carpeta + u"/key.pem"_s, u"-out"_s, carpeta + u"/cert.pem"_s});
}

// Head and body of a message as a mail program reads them.
CorreoRecibido Leer(const QByteArray &crudo)
{
    QProcess p;
    p.start(Python,
            {u"-c"_s,
             u"import sys,json,email,email.policy\n"
             u"m=email.message_from_bytes(sys.stdin.buffer.read(),policy=email.policy.default)\n"
             u"print(json.dumps([m['Subject'],m.get_content()]))"_s});
    p.write(crudo);
    p.closeWriteChannel();
    p.waitForFinished();
    const QJsonArray a = QJsonDocument::fromJson(p.readAllStandardOutput()).array();
    CorreoRecibido c;
    c.asunto = a[0].toString();
    c.cuerpo = a[1].toString();
    c.crudo = crudo;
    return c;
}

} // namespace

ServidorDeCorreo::ServidorDeCorreo(QStringList opciones)
{
    const bool starttls = opciones.removeAll(u"--starttls"_s) > 0;
    if (starttls || opciones.contains(u"--tls"_s)) {
        HacerCertificado(m_carpeta.path());
        opciones << u"--certificate"_s << m_carpeta.filePath(u"cert.pem"_s) << u"--key"_s
                 << m_carpeta.filePath(u"key.pem"_s);
    }
    m_proceso.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_proceso.start(Python, QStringList{QStringLiteral(KELVARA_TESTS "/support/smtp_server.py"),
                                        m_carpeta.path()}
                                + opciones);
    if (m_proceso.waitForReadyRead(20000))
        m_puerto = m_proceso.readLine().trimmed().toInt();
}

ServidorDeCorreo::~ServidorDeCorreo() { Parar(); }

void ServidorDeCorreo::Parar()
{
    m_proceso.kill();
    m_proceso.waitForFinished();
}

QString ServidorDeCorreo::Autoridad() const { return m_carpeta.filePath(u"cert.pem"_s); }

QList<CorreoRecibido> ServidorDeCorreo::Recibidos() const
{
    QList<CorreoRecibido> recibidos;
    const QDir carpeta(m_carpeta.path());
    for (const QString &nombre : carpeta.entryList({u"*.eml"_s}, QDir::Files, QDir::Name)) {
        QFile f(carpeta.filePath(nombre));
        if (!f.open(QIODevice::ReadOnly))
            continue;
        CorreoRecibido c = Leer(f.readAll());
        QFile sobre(carpeta.filePath(nombre.chopped(4) + u".json"_s));
        if (sobre.open(QIODevice::ReadOnly)) {
            const QJsonObject o = QJsonDocument::fromJson(sobre.readAll()).object();
            for (const auto &v : o[u"to"_s].toArray())
                c.para << v.toString();
            c.seguro = o[u"tls"_s].toBool();
            c.conexion = QString::number(o[u"connection"_s].toDouble(), 'f', 0);
        }
        recibidos << c;
    }
    return recibidos;
}
