// A real mail server on loopback for a test, and what it received.
#pragma once

#include <QList>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// One message as it arrived.
struct CorreoRecibido {
    QString de; // of the envelope
    QStringList para;
    QString asunto; // decoded
    QString cuerpo; // decoded, without the line break that ends it
    QString crudo;
    bool seguro = false; // came over TLS
    int conexion = 0;
};

class ServidorDeCorreo
{
public:
    /// @param opciones of smtp_server.py; "--tls" and "--starttls" get a certificate for localhost
    explicit ServidorDeCorreo(QStringList opciones = {});
    ~ServidorDeCorreo();

    bool Vive() const { return m_puerto > 0; }
    int Puerto() const { return m_puerto; }
    /// File of the authority that signed the certificate.
    QString Autoridad() const;
    /// In the order in which they came.
    QList<CorreoRecibido> Recibidos() const;
    void Parar();

private:
    QTemporaryDir m_carpeta;
    QProcess m_proceso;
    int m_puerto = 0;
};
