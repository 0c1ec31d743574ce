#include "messages/mail.h"

#include "messages/mail_account.h"
#include "messages/mail_message.h"
#include "store/lookups.h"
#include "store/settings_row.h"

#include <QUuid>
#include <curl/curl.h>
#include <mutex>

using namespace Qt::StringLiterals;

namespace
{

constexpr int SinCuenta = 4601;

// A server that is there answers in a second; a phone line out of town may take some.
constexpr long SegundosParaConectar = 15;
constexpr long SegundosPorMensaje = 60; // unless this machine's setting says otherwise
constexpr int FallosSeguidos = 3;       // of the line, after which the run is given up

struct LiberarCurl {
    void operator()(CURL *c) const { curl_easy_cleanup(c); }
    void operator()(curl_slist *l) const { curl_slist_free_all(l); }
    void operator()(curl_mime *m) const { curl_mime_free(m); }
};
template <typename T>
using Dueno = std::unique_ptr<T, LiberarCurl>;

class Lista
{
public:
    void Agregar(const QByteArray &linea)
    {
        if (curl_slist *nueva = curl_slist_append(m_lista.get(), linea.constData())) {
            (void)m_lista.release();
            m_lista.reset(nueva);
        }
    }
    curl_slist *Cabeza() const { return m_lista.get(); }

private:
    Dueno<curl_slist> m_lista;
};

QString RemitenteDe(const CuentaDeCorreo &cuenta)
{
    return cuenta.usuario.contains(u'@') ? cuenta.usuario : cuenta.usuario + u'@' + cuenta.servidor;
}

/// What goes wrong before the server has judged the message, and so with every other one as well.
bool EsDeLaConexion(CURLcode codigo)
{
    return codigo == CURLE_COULDNT_RESOLVE_HOST || codigo == CURLE_COULDNT_CONNECT
           || codigo == CURLE_OPERATION_TIMEDOUT || codigo == CURLE_SEND_ERROR
           || codigo == CURLE_RECV_ERROR || codigo == CURLE_GOT_NOTHING
           || codigo == CURLE_SSL_CONNECT_ERROR || codigo == CURLE_PEER_FAILED_VERIFICATION
           || codigo == CURLE_USE_SSL_FAILED || codigo == CURLE_LOGIN_DENIED
           || codigo == CURLE_WEIRD_SERVER_REPLY;
}

class CorreoPorSmtp final : public SesionDeCorreo
{
public:
    CorreoPorSmtp(Sesion &s, CuentaDeCorreo cuenta)
        : m_s(s),
          m_cuenta(std::move(cuenta)),
          m_autoridad(LeerAjusteDeMaquina(s, u"correo/autoridad"_s).toUtf8()),
          m_segundos(qMax(
              1L, LeerAjusteDeMaquina(s, u"correo/segundos"_s, QString::number(SegundosPorMensaje))
                      .toLong()))
    {
        static std::once_flag unaVez;
        std::call_once(unaVez, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
        m_curl.reset(curl_easy_init());
    }

    ~CorreoPorSmtp() override = default; // closing the handle says QUIT

    /// Connects, makes the line safe and signs on.
    bool Entrar()
    {
        Preparar();
        curl_easy_setopt(m_curl.get(), CURLOPT_CUSTOMREQUEST, "NOOP");
        curl_easy_setopt(m_curl.get(), CURLOPT_NOBODY, 1L);
        return Correr() == CURLE_OK;
    }

    bool Enviar(const QString &asunto, const QString &direcciones, const QString &cuerpo) override
    {
        const QStringList destinos = DireccionesValidas(direcciones);
        if (destinos.isEmpty()) {
            m_error = direcciones;
            return false;
        }
        if (m_perdida)
            return false; // the reason is told already
        const CURLcode codigo = Transmitir(asunto, destinos, cuerpo);
        if (codigo == CURLE_OK) {
            m_fallos = 0;
            return true;
        }
        // A line that broke is made once again, for the messages that follow. This one is not sent
        // a second time: the server may have taken it before the line broke.
        if (EsDeLaConexion(codigo)) {
            const QString motivo = m_error;
            m_perdida = ++m_fallos >= FallosSeguidos || !Entrar();
            m_error = motivo;
        }
        return false;
    }

    QString Error() const override { return m_error; }

private:
    void Preparar()
    {
        CURL *c = m_curl.get();
        // Keeps the connection, forgets everything else of the last transfer.
        curl_easy_reset(c);
        const QByteArray esquema = m_cuenta.cifrado == Cifrado::Tls ? "smtps://" : "smtp://";
        const QByteArray url =
            esquema + m_cuenta.servidor.toUtf8() + ':' + QByteArray::number(m_cuenta.puerto);
        curl_easy_setopt(c, CURLOPT_URL, url.constData());
        curl_easy_setopt(c, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
        curl_easy_setopt(c, CURLOPT_USE_SSL,
                         m_cuenta.cifrado == Cifrado::Ninguno ? CURLUSESSL_NONE : CURLUSESSL_ALL);
        curl_easy_setopt(c, CURLOPT_SSL_VERIFYPEER, 1L);
        curl_easy_setopt(c, CURLOPT_SSL_VERIFYHOST, 2L);
        if (!m_autoridad.isEmpty())
            curl_easy_setopt(c, CURLOPT_CAINFO, m_autoridad.constData());
        curl_easy_setopt(c, CURLOPT_USERNAME, m_cuenta.usuario.toUtf8().constData());
        curl_easy_setopt(c, CURLOPT_PASSWORD, m_cuenta.contrasena.toUtf8().constData());
        curl_easy_setopt(c, CURLOPT_CONNECTTIMEOUT, qMin(SegundosParaConectar, m_segundos));
        curl_easy_setopt(c, CURLOPT_TIMEOUT, m_segundos);
        curl_easy_setopt(c, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(c, CURLOPT_ERRORBUFFER, m_detalle);
        curl_easy_setopt(c, CURLOPT_NOPROXY, "*");
    }

    CURLcode Correr()
    {
        m_detalle[0] = '\0';
        const CURLcode codigo = curl_easy_perform(m_curl.get());
        if (codigo != CURLE_OK)
            m_error = QString::fromUtf8(m_detalle[0] ? m_detalle : curl_easy_strerror(codigo));
        return codigo;
    }

    CURLcode Transmitir(const QString &asunto, const QStringList &destinos, const QString &cuerpo)
    {
        Preparar();
        CURL *c = m_curl.get();
        const QString remitente = RemitenteDe(m_cuenta);
        curl_easy_setopt(c, CURLOPT_MAIL_FROM, ('<' + remitente.toUtf8() + '>').constData());
        Lista rcpt;
        for (const QString &d : destinos)
            rcpt.Agregar('<' + d.toUtf8() + '>');
        curl_easy_setopt(c, CURLOPT_MAIL_RCPT, rcpt.Cabeza());
        curl_easy_setopt(c, CURLOPT_MAIL_RCPT_ALLLOWFAILS, 1L);

        Lista cabeceras;
        cabeceras.Agregar("From: " + DireccionConNombre(m_s.clinica.nom, remitente));
        cabeceras.Agregar("To: " + destinos.join(u", "_s).toUtf8());
        cabeceras.Agregar("Subject: " + ValorDeCabecera(asunto));
        cabeceras.Agregar("Date: " + FechaDeCorreo(m_s.reloj.ahora()));
        cabeceras.Agregar("Message-ID: <" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces)
                          + '@' + remitente.section(u'@', -1).toUtf8() + '>');
        // So that out-of-office machines do not answer.
        cabeceras.Agregar("Auto-Submitted: auto-generated");
        curl_easy_setopt(c, CURLOPT_HTTPHEADER, cabeceras.Cabeza());

        const Dueno<curl_mime> mime(curl_mime_init(c));
        curl_mimepart *parte = curl_mime_addpart(mime.get());
        QString texto = cuerpo;
        texto.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u"\n"_s, u"\r\n"_s);
        const QByteArray bytes = texto.toUtf8();
        curl_mime_data(parte, bytes.constData(), size_t(bytes.size()));
        curl_mime_type(parte, "text/plain; charset=utf-8");
        curl_mime_encoder(parte, "quoted-printable");
        curl_easy_setopt(c, CURLOPT_MIMEPOST, mime.get());
        const CURLcode codigo = Correr();
        curl_easy_setopt(c, CURLOPT_MIMEPOST, nullptr);
        return codigo;
    }

    Sesion &m_s;
    CuentaDeCorreo m_cuenta;
    QByteArray m_autoridad; // file of an authority of the clinic's own, beside the system's
    Dueno<CURL> m_curl;
    QString m_error;
    long m_segundos; // that a message may take
    int m_fallos = 0;
    bool m_perdida = false;
    char m_detalle[CURL_ERROR_SIZE] = {};
};

} // namespace

std::unique_ptr<SesionDeCorreo> AbrirSesionCorreo(Sesion &s, QString *error)
{
    CuentaDeCorreo cuenta = LeerCuentaDeCorreo(s);
    if (!cuenta.Completa() || cuenta.servidor.isEmpty()) {
        s.dialogos.Mensaje(s(SinCuenta));
        return nullptr;
    }
    auto correo = std::make_unique<CorreoPorSmtp>(s, std::move(cuenta));
    if (correo->Entrar())
        return correo;
    if (error)
        *error = correo->Error();
    return nullptr;
}

bool EnviarCorreo(Sesion &s, SesionDeCorreo &correo, const QString &asunto, int idc,
                  const QString &cuerpo)
{
    const QString direcciones = DireccionCliente(s, idc);
    if (direcciones.isEmpty()) {
        s.clientes->Execute("update clientes set FaltaMail = -1 where idc = ?", idc);
        return false;
    }
    return correo.Enviar(asunto, direcciones, cuerpo);
}

void CerrarSesionCorreo(std::unique_ptr<SesionDeCorreo> &correo) { correo.reset(); }

QString DireccionCliente(Sesion &s, int idc)
{
    const QString direcciones = LeerCampo(s, "clientes", "clientes", idc, "email");
    return direcciones.contains(u'@') ? direcciones : QString();
}
