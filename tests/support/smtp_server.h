// A real mail server on loopback for a test, and what it received.
#pragma once

#include "store/session.h"

#include <QProcess>
#include <QTemporaryDir>

/// One message as it arrived.
struct CorreoRecibido {
    QStringList para; // of the envelope
    QString asunto;   // decoded
    QString cuerpo;   // decoded
    QByteArray crudo;
    bool seguro = false; // came over TLS
    QString conexion;
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
    QList<CorreoRecibido> Recibidos() const;
    void Parar();

private:
    QTemporaryDir m_carpeta;
    QProcess m_proceso;
    int m_puerto = 0;
};
