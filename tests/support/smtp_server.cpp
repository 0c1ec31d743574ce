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
bool makeCertificate(const QString &folder)
{
    QProcess openssl;
    openssl.start(u"openssl"_s, {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s,
                                 u"-days"_s, u"2"_s, u"-subj"_s, u"/CN=localhost"_s, u"-addext"_s,
                                 u"subjectAltName=DNS:localhost"_s, u"-keyout"_s,
                                 folder + u"/key.pem"_s, u"-out"_s, folder + u"/cert.pem"_s});
    return openssl.waitForFinished() && openssl.exitStatus() == QProcess::NormalExit
           && openssl.exitCode() == 0;
}

} // namespace

MailServer::MailServer(QStringList options)
{
    const bool starttls = options.removeAll(u"--starttls"_s) > 0;
    if (starttls || options.contains(u"--tls"_s)) {
        if (!makeCertificate(m_folder.path()))
            return; // a server that does not live
        options << u"--certificate"_s << authority() << u"--key"_s
                << m_folder.filePath(u"key.pem"_s);
    }
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(Python, QStringList{QStringLiteral(KELVARA_TESTS "/support/smtp_server.py"),
                                        m_folder.filePath(u"received"_s)}
                                + options);
    if (m_process.waitForReadyRead(20000))
        m_port = m_process.readLine().trimmed().toInt();
}

MailServer::~MailServer() { stop(); }

void MailServer::stop()
{
    m_process.kill();
    m_process.waitForFinished();
}

QString MailServer::authority() const { return m_folder.filePath(u"cert.pem"_s); }

QList<ReceivedMail> MailServer::receivedMails() const
{
    QList<ReceivedMail> received;
    QFile f(m_folder.filePath(u"received"_s));
    if (!f.open(QIODevice::ReadOnly))
        return received;
    for (const QByteArray &line : f.readAll().split('\n')) {
        const QJsonObject o = QJsonDocument::fromJson(line).object();
        if (o.isEmpty())
            continue;
        ReceivedMail c;
        c.de = o[u"from"_s].toString();
        for (const auto &v : o[u"to"_s].toArray())
            c.recipient << v.toString();
        c.subject = o[u"subject"_s].toString();
        c.body = o[u"body"_s].toString().remove(u'\r');
        if (c.body.endsWith(u'\n'))
            c.body.chop(1);
        c.raw = o[u"raw"_s].toString();
        c.sure = o[u"tls"_s].toBool();
        c.connection = o[u"connection"_s].toInt();
        received << c;
    }
    return received;
}
