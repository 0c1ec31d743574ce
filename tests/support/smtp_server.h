// A real mail server on loopback for a test, and what it received.
#pragma once

#include <QList>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// One message as it arrived.
struct ReceivedMail {
    QString de; // of the envelope
    QStringList recipient;
    QString subject; // decoded
    QString body;    // decoded, without the line break that ends it
    QString raw;
    bool sure = false; // came over TLS
    int connection = 0;
};

class MailServer
{
public:
    /// @param options of smtp_server.py; "--tls" and "--starttls" get a certificate for localhost
    explicit MailServer(QStringList options = {});
    ~MailServer();

    bool lives() const { return m_port > 0; }
    int portNumber() const { return m_port; }
    /// File of the authority that signed the certificate.
    QString authority() const;
    /// In the order in which they came.
    QList<ReceivedMail> receivedMails() const;
    void stop();

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    int m_port = 0;
};
