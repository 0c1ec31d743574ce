#include "support/smtp_server.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace
{

const QString Python = u"/usr/bin/python3"_s; // the system's own, which has the server's library

// One self-signed certificate, which is then its own authority.
bool HacerCertificado(const QString &carpeta)
{
    QProcess openssl;
    openssl.start(u"openssl"_s, {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s,
                                 u"-days"_s, u"2"_s, u"-subj"_s, u"/CN=localhost"_s, u"-addext"_s,
                                 u"subjectAltName=DNS:localhost"_s, u"-keyout"_s,
                                 carpeta + u"/key.pem"_s, u"-out"_s, carpeta + u"/cert.pem"_s});
    return openssl.waitForFinished() && openssl.exitStatus() == QProcess::NormalExit
           && openssl.exitCode() == 0;
}

} // namespace

ServidorDeCorreo::ServidorDeCorreo(QStringList opciones)
{
    const bool starttls = opciones.removeAll(u"--starttls"_s) > 0;
    if (starttls || opciones.contains(u"--tls"_s)) {
        if (!HacerCertificado(m_carpeta.path()))
            return; // a server that does not live
        opciones << u"--certificate"_s << Autoridad() << u"--key"_s
                 << m_carpeta.filePath(u"key.pem"_s);
    }
    m_proceso.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_proceso.start(Python, QStringList{QStringLiteral(KELVARA_TESTS "/support/smtp_server.py"),
                                        m_carpeta.filePath(u"received"_s)}
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
    QFile f(m_carpeta.filePath(u"received"_s));
    if (!f.open(QIODevice::ReadOnly))
        return recibidos;
    for (const QByteArray &linea : f.readAll().split('\n')) {
        const QJsonObject o = QJsonDocument::fromJson(linea).object();
        if (o.isEmpty())
            continue;
        CorreoRecibido c;
        c.de = o[u"from"_s].toString();
        for (const auto &v : o[u"to"_s].toArray())
            c.para << v.toString();
        c.asunto = o[u"subject"_s].toString();
        c.cuerpo = o[u"body"_s].toString().remove(u'\r');
        if (c.cuerpo.endsWith(u'\n'))
            c.cuerpo.chop(1);
        c.crudo = o[u"raw"_s].toString();
        c.seguro = o[u"tls"_s].toBool();
        c.conexion = o[u"connection"_s].toInt();
        recibidos << c;
    }
    return recibidos;
}
