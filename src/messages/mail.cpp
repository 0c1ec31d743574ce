#include "messages/mail.h"

#include "contact/contact.h"
#include "messages/mail_account.h"
#include "messages/mail_message.h"
#include "store/lookups.h"
#include "store/settings_row.h"

#include <QUrl>
#include <QUuid>
#include <cstring>
#include <curl/curl.h>
#include <mutex>

using namespace Qt::StringLiterals;

namespace
{

enum Texto { SinCuenta = 4601, SinServidor = 9980, DireccionNoValida = 9983 };

// A server that is there answers in a second; a phone line out of town may take some.
constexpr long SegundosParaConectar = 15;
constexpr int SegundosPorMensaje = 60; // unless this machine's setting says otherwise
constexpr int SegundosComoMucho = 3600;
constexpr long SegundosParaDespedirse = 2;
constexpr int FallosSeguidos = 2; // of the line, after which the run is given up

constexpr long Rechazo = 400;       // this reply and all above it say no
constexpr long CierraLaLinea = 421; // says no and hangs up
constexpr long EsperaElTexto = 354; // the last word of a server that has not judged the text yet

struct LiberarCurl {
    void operator()(CURL *c) const { curl_easy_cleanup(c); }
    void operator()(curl_slist *l) const { curl_slist_free_all(l); }
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

// The message, as the library asks for it piece by piece.
struct Lectura {
    QByteArray bytes;
    qsizetype leidos = 0;

    bool Toda() const { return leidos == bytes.size(); }
    static size_t Leer(char *donde, size_t uno, size_t cuantos, void *lectura) noexcept
    {
        Lectura &l = *static_cast<Lectura *>(lectura);
        const qsizetype n = std::min(qsizetype(uno * cuantos), l.bytes.size() - l.leidos);
        std::memcpy(donde, l.bytes.constData() + l.leidos, size_t(n));
        l.leidos += n;
        return size_t(n);
    }
};

QString RemitenteDe(const CuentaDeCorreo &cuenta)
{
    return cuenta.usuario.contains(u'@') ? cuenta.usuario : cuenta.usuario + u'@' + cuenta.servidor;
}

int Segundos(const Sesion &s)
{
    const int dados = LeerAjusteDeMaquina(s, u"correo/segundos"_s).toInt();
    return dados < 1 ? SegundosPorMensaje : std::min(dados, SegundosComoMucho);
}

class CorreoPorSmtp final : public SesionDeCorreo
{
public:
    CorreoPorSmtp(Sesion &s, CuentaDeCorreo cuenta, std::function<void()> mientras)
        : m_s(s),
          m_cuenta(std::move(cuenta)),
          m_remitente(RemitenteDe(m_cuenta)),
          m_mientras(std::move(mientras)),
          m_autoridad(LeerAjusteDeMaquina(s, u"correo/autoridad"_s).toUtf8()),
          m_segundos(Segundos(s))
    {
        static std::once_flag unaVez;
        std::call_once(unaVez, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
        m_curl.reset(curl_easy_init());
        QUrl url;
        url.setScheme(m_cuenta.cifrado == Cifrado::Tls ? u"smtps"_s : u"smtp"_s);
        url.setHost(m_cuenta.servidor); // stays empty for what is no name of a server
        url.setPort(m_cuenta.puerto);
        m_url = url.host().isEmpty() ? QByteArray() : url.toEncoded();
    }

    ~CorreoPorSmtp() override
    {
        if (m_dentro)
            Despedirse();
    }

    /// Connects, makes the line safe and signs on.
    bool Entrar()
    {
        if (!m_curl || m_url.isEmpty()
            || DireccionesValidas(m_remitente) != QStringList{m_remitente}) {
            m_error = m_cuenta.servidor + u' ' + m_remitente;
            return false;
        }
        Preparar();
        curl_easy_setopt(m_curl.get(), CURLOPT_CUSTOMREQUEST, "NOOP");
        curl_easy_setopt(m_curl.get(), CURLOPT_NOBODY, 1L);
        m_dentro = Correr() == CURLE_OK;
        return m_dentro;
    }

    bool Enviar(const QString &asunto, const QString &direcciones, const QString &cuerpo) override
    {
        if (m_perdida)
            return false; // for the reason that stands already
        const QStringList destinos = DireccionesValidas(direcciones);
        if (destinos.isEmpty()) {
            m_error = m_s(DireccionNoValida).arg(direcciones.simplified());
            return false;
        }
        Suerte suerte = Transmitir(asunto, destinos, cuerpo);
        // A server that takes so many messages on one line says so: this one it has not taken.
        if (suerte == Suerte::OtraLinea && Entrar())
            suerte = Transmitir(asunto, destinos, cuerpo);
        if (suerte == Suerte::Tomado || suerte == Suerte::Rechazado) {
            m_fallos = 0;
            return suerte == Suerte::Tomado;
        }
        // A line that broke is made once again, for the messages that follow.
        const QString motivo = m_error;
        if (m_muda)
            Despedirse();
        m_perdida = ++m_fallos >= FallosSeguidos || !Entrar();
        m_error = motivo;
        return suerte == Suerte::SinRespuesta;
    }

    QString Error() const override { return m_error; }
    bool Perdida() const override { return m_perdida; }

private:
    // What became of a message. Without an answer to the whole of its text the server may have it.
    enum class Suerte { Tomado, Rechazado, SinRespuesta, OtraLinea, Rota };

    void Preparar()
    {
        CURL *c = m_curl.get();
        // Keeps the connection, forgets everything else of the last transfer.
        curl_easy_reset(c);
        curl_easy_setopt(c, CURLOPT_URL, m_url.constData());
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
        curl_easy_setopt(c, CURLOPT_NOPROGRESS, m_mientras ? 0L : 1L);
        curl_easy_setopt(c, CURLOPT_XFERINFODATA, &m_mientras);
        curl_easy_setopt(c, CURLOPT_XFERINFOFUNCTION, &Mientras);
    }

    // Ends the line that is open. Left to itself the library would use one that fell silent again,
    // and at the end wait two minutes for an answer to its QUIT.
    void Despedirse()
    {
        Preparar();
        curl_easy_setopt(m_curl.get(), CURLOPT_CUSTOMREQUEST, "QUIT");
        curl_easy_setopt(m_curl.get(), CURLOPT_NOBODY, 1L);
        curl_easy_setopt(m_curl.get(), CURLOPT_TIMEOUT, SegundosParaDespedirse);
        curl_easy_setopt(m_curl.get(), CURLOPT_FORBID_REUSE, 1L);
        curl_easy_perform(m_curl.get());
        m_dentro = false;
    }

    static int Mientras(void *mientras, curl_off_t, curl_off_t, curl_off_t, curl_off_t) noexcept
    {
        (*static_cast<const std::function<void()> *>(mientras))();
        return 0;
    }

    // The server's last word, 0 when it said none.
    long Respuesta() const
    {
        long codigo = 0;
        curl_easy_getinfo(m_curl.get(), CURLINFO_RESPONSE_CODE, &codigo);
        return codigo;
    }

    Suerte SuerteDe(CURLcode codigo, bool entregadoEntero) const
    {
        const long respuesta = Respuesta();
        if (codigo == CURLE_OK)
            return Suerte::Tomado;
        if (respuesta == CierraLaLinea)
            return Suerte::OtraLinea;
        // The server has judged this message; the next one may please it.
        if (respuesta >= Rechazo
            && (codigo == CURLE_SEND_ERROR || codigo == CURLE_RECV_ERROR
                || codigo == CURLE_WEIRD_SERVER_REPLY))
            return Suerte::Rechazado;
        return respuesta == EsperaElTexto && entregadoEntero ? Suerte::SinRespuesta : Suerte::Rota;
    }

    CURLcode Correr()
    {
        m_detalle[0] = '\0';
        const CURLcode codigo = curl_easy_perform(m_curl.get());
        m_muda = codigo == CURLE_OPERATION_TIMEDOUT;
        if (codigo != CURLE_OK)
            m_error = QString::fromUtf8(m_detalle[0] ? m_detalle : curl_easy_strerror(codigo));
        return codigo;
    }

    Suerte Transmitir(const QString &asunto, const QStringList &destinos, const QString &cuerpo)
    {
        Preparar();
        CURL *c = m_curl.get();
        curl_easy_setopt(c, CURLOPT_MAIL_FROM, ('<' + m_remitente.toUtf8() + '>').constData());
        Lista rcpt;
        for (const QString &d : destinos)
            rcpt.Agregar('<' + d.toUtf8() + '>');
        curl_easy_setopt(c, CURLOPT_MAIL_RCPT, rcpt.Cabeza());
        curl_easy_setopt(c, CURLOPT_MAIL_RCPT_ALLLOWFAILS, 1L);

        Lectura mensaje{Mensaje(asunto, destinos, cuerpo)};
        curl_easy_setopt(c, CURLOPT_UPLOAD, 1L);
        curl_easy_setopt(c, CURLOPT_READFUNCTION, &Lectura::Leer);
        curl_easy_setopt(c, CURLOPT_READDATA, &mensaje);
        curl_easy_setopt(c, CURLOPT_INFILESIZE_LARGE, curl_off_t(mensaje.bytes.size()));
        const CURLcode codigo = Correr();
        return SuerteDe(codigo, mensaje.Toda());
    }

    QByteArray Mensaje(const QString &asunto, const QStringList &destinos,
                       const QString &cuerpo) const
    {
        QByteArray m;
        const auto cabecera = [&m](const char *nombre, const QByteArray &valor) {
            m += nombre;
            m += ": " + valor + "\r\n";
        };
        cabecera("From", DireccionConNombre(m_s.clinica.nom, m_remitente));
        cabecera("To", destinos.join(u",\r\n "_s).toUtf8());
        cabecera("Subject", ValorDeCabecera(asunto));
        cabecera("Date", FechaDeCorreo(m_s.reloj.ahora()));
        cabecera("Message-ID", '<' + QUuid::createUuid().toByteArray(QUuid::WithoutBraces) + '@'
                                   + m_remitente.section(u'@', -1).toUtf8() + '>');
        // So that out-of-office machines do not answer.
        cabecera("Auto-Submitted", "auto-generated");
        cabecera("MIME-Version", "1.0");
        cabecera("Content-Type", "text/plain; charset=utf-8");
        cabecera("Content-Transfer-Encoding", "quoted-printable");
        return m + "\r\n" + TextoDeCorreo(cuerpo);
    }

    Sesion &m_s;
    CuentaDeCorreo m_cuenta;
    QString m_remitente;
    std::function<void()> m_mientras;
    QByteArray m_url;
    QByteArray m_autoridad; // file of an authority of the clinic's own, beside the system's
    Dueno<CURL> m_curl;
    QString m_error;
    long m_segundos; // that a message may take
    int m_fallos = 0;
    bool m_dentro = false;
    bool m_muda = false; // the last answer did not come in time
    bool m_perdida = false;
    char m_detalle[CURL_ERROR_SIZE] = {};
};

} // namespace

std::unique_ptr<SesionDeCorreo> AbrirSesionCorreo(Sesion &s, QString *error,
                                                  std::function<void()> mientras)
{
    CuentaDeCorreo cuenta = LeerCuentaDeCorreo(s);
    if (!cuenta.Completa() || cuenta.servidor.isEmpty()) {
        s.dialogos.Mensaje(s(cuenta.Completa() ? SinServidor : SinCuenta));
        return nullptr;
    }
    auto correo = std::make_unique<CorreoPorSmtp>(s, std::move(cuenta), std::move(mientras));
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
