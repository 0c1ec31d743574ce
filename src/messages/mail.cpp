#include "messages/mail.h"

#include "contact/contact.h"
#include "messages/mail_account.h"
#include "messages/mail_message.h"
#include "store/lookups.h"
#include "store/settings_row.h"
#include "texts/agenda.h"
#include "texts/texts.h"

#include <QUrl>
#include <QUuid>
#include <cstring>
#include <curl/curl.h>
#include <mutex>

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

// A working server answers within a second; a slow rural line may take several.
constexpr long ConnectSeconds = 15;
constexpr int SecondsPerMessage = 60; // unless set otherwise on this machine
constexpr int MostSeconds = 3600;
constexpr long SignOffSeconds = 2;
constexpr int FailuresInARow = 2; // of the connection, after which the server is given up on

// Reply codes of SMTP (RFC 5321).
constexpr long Rejection = 400;  // this one and all above are refusals
constexpr long ClosesLine = 421; // refuses and closes the connection
constexpr long WaitText = 354;   // asks for the text; the verdict on it is still to come

struct ReleaseCurl {
    void operator()(CURL *c) const { curl_easy_cleanup(c); }
    void operator()(curl_slist *l) const { curl_slist_free_all(l); }
};
template <typename T>
using Owner = std::unique_ptr<T, ReleaseCurl>;

class List
{
public:
    void add(const QByteArray &line)
    {
        if (curl_slist *newOne = curl_slist_append(m_list.get(), line.constData())) {
            (void)m_list.release();
            m_list.reset(newOne);
        }
    }
    curl_slist *head() const { return m_list.get(); }

private:
    Owner<curl_slist> m_list;
};

// The message, which the library reads piece by piece.
struct Reading {
    QByteArray bytes;
    qsizetype read = 0;

    bool all() const { return read == bytes.size(); }
    static size_t supply(char *where, size_t one, size_t count, void *reading) noexcept
    {
        Reading &l = *static_cast<Reading *>(reading);
        const qsizetype n = std::min(qsizetype(one * count), l.bytes.size() - l.read);
        std::memcpy(where, l.bytes.constData() + l.read, size_t(n));
        l.read += n;
        return size_t(n);
    }
};

QString senderOf(const MailAccount &account)
{
    return account.user.contains(u'@') ? account.user : account.user + u'@' + account.server;
}

int seconds(const Sesion &s)
{
    const int dados = store::readMachineSetting(s, u"correo/segundos"_s).toInt();
    return dados < 1 ? SecondsPerMessage : std::min(dados, MostSeconds);
}

class MailBySmtp final : public MailSession
{
public:
    MailBySmtp(Sesion &s, MailAccount account, std::function<void()> meanwhile)
        : m_s(s),
          m_account(std::move(account)),
          m_sender(senderOf(m_account)),
          m_meanwhile(std::move(meanwhile)),
          m_authority(store::readMachineSetting(s, u"correo/autoridad"_s).toUtf8()),
          m_seconds(seconds(s))
    {
        static std::once_flag oneTime;
        std::call_once(oneTime, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
        m_curl.reset(curl_easy_init());
        QUrl url;
        url.setScheme(m_account.encryption == Encryption::Tls ? u"smtps"_s : u"smtp"_s);
        url.setHost(m_account.server); // stays empty if it is not a valid host name
        url.setPort(m_account.port);
        m_url = url.host().isEmpty() ? QByteArray() : url.toEncoded();
    }

    ~MailBySmtp() override
    {
        if (m_inside)
            signOff();
    }

    /// Connects, encrypts the connection and logs in.
    bool enter()
    {
        if (!m_curl || m_url.isEmpty() || validAddresses(m_sender) != QStringList{m_sender}) {
            m_error = m_account.server + u' ' + m_sender;
            return false;
        }
        prepare();
        curl_easy_setopt(m_curl.get(), CURLOPT_CUSTOMREQUEST, "NOOP");
        curl_easy_setopt(m_curl.get(), CURLOPT_NOBODY, 1L);
        m_inside = run() == CURLE_OK;
        return m_inside;
    }

    bool send(const QString &subject, const QString &addresses, const QString &body) override
    {
        if (m_missed)
            return false; // m_error still holds the reason
        const QStringList targets = validAddresses(addresses);
        if (targets.isEmpty()) {
            m_error = m_s(text::InvalidMailAddress).arg(addresses.simplified());
            return false;
        }
        Outcome outcome = transmit(subject, targets, body);
        // Some servers limit the messages per connection and say so; this one was not accepted.
        if (outcome == Outcome::OtherLine && enter())
            outcome = transmit(subject, targets, body);
        if (outcome == Outcome::Taken || outcome == Outcome::Rejected) {
            m_failures = 0;
            return outcome == Outcome::Taken;
        }
        // After a broken connection, connect once more for the messages that follow.
        const QString reason = m_error;
        if (m_mute)
            signOff();
        m_missed = ++m_failures >= FailuresInARow || !enter();
        m_error = reason;
        return outcome == Outcome::WithoutAnswer;
    }

    QString error() const override { return m_error; }
    bool missed() const override { return m_missed; }

private:
    // What became of a message. If the server has the whole text but did not answer
    // (WithoutAnswer), it may have accepted it.
    enum class Outcome { Taken, Rejected, WithoutAnswer, OtherLine, Broken };

    void prepare()
    {
        CURL *c = m_curl.get();
        // Keeps the connection but resets every option of the last transfer.
        curl_easy_reset(c);
        curl_easy_setopt(c, CURLOPT_URL, m_url.constData());
        curl_easy_setopt(c, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
        curl_easy_setopt(c, CURLOPT_USE_SSL,
                         m_account.encryption == Encryption::None ? CURLUSESSL_NONE
                                                                  : CURLUSESSL_ALL);
        curl_easy_setopt(c, CURLOPT_SSL_VERIFYPEER, 1L);
        curl_easy_setopt(c, CURLOPT_SSL_VERIFYHOST, 2L);
        if (!m_authority.isEmpty())
            curl_easy_setopt(c, CURLOPT_CAINFO, m_authority.constData());
        curl_easy_setopt(c, CURLOPT_USERNAME, m_account.user.toUtf8().constData());
        curl_easy_setopt(c, CURLOPT_PASSWORD, m_account.password.toUtf8().constData());
        curl_easy_setopt(c, CURLOPT_CONNECTTIMEOUT, qMin(ConnectSeconds, m_seconds));
        curl_easy_setopt(c, CURLOPT_TIMEOUT, m_seconds);
        curl_easy_setopt(c, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(c, CURLOPT_ERRORBUFFER, m_detail);
        curl_easy_setopt(c, CURLOPT_NOPROXY, "*");
        curl_easy_setopt(c, CURLOPT_NOPROGRESS, m_meanwhile ? 0L : 1L);
        curl_easy_setopt(c, CURLOPT_XFERINFODATA, &m_meanwhile);
        curl_easy_setopt(c, CURLOPT_XFERINFOFUNCTION, &Meanwhile);
    }

    // Closes the open connection. By default the library would reuse one that no longer answers,
    // and at the end wait two minutes for the reply to QUIT.
    void signOff()
    {
        prepare();
        curl_easy_setopt(m_curl.get(), CURLOPT_CUSTOMREQUEST, "QUIT");
        curl_easy_setopt(m_curl.get(), CURLOPT_NOBODY, 1L);
        curl_easy_setopt(m_curl.get(), CURLOPT_TIMEOUT, SignOffSeconds);
        curl_easy_setopt(m_curl.get(), CURLOPT_FORBID_REUSE, 1L);
        curl_easy_perform(m_curl.get());
        m_inside = false;
    }

    static int Meanwhile(void *meanwhile, curl_off_t, curl_off_t, curl_off_t, curl_off_t) noexcept
    {
        (*static_cast<const std::function<void()> *>(meanwhile))();
        return 0;
    }

    // The server's last reply code, 0 if there was none.
    long answerOf() const
    {
        long code = 0;
        curl_easy_getinfo(m_curl.get(), CURLINFO_RESPONSE_CODE, &code);
        return code;
    }

    Outcome outcomeOf(CURLcode code, bool deliveredWhole) const
    {
        const long answer = answerOf();
        if (code == CURLE_OK)
            return Outcome::Taken;
        if (answer == ClosesLine)
            return Outcome::OtherLine;
        // The refusal is about this message only; the next one may be accepted.
        if (answer >= Rejection
            && (code == CURLE_SEND_ERROR || code == CURLE_RECV_ERROR
                || code == CURLE_WEIRD_SERVER_REPLY))
            return Outcome::Rejected;
        return answer == WaitText && deliveredWhole ? Outcome::WithoutAnswer : Outcome::Broken;
    }

    CURLcode run()
    {
        m_detail[0] = '\0';
        const CURLcode code = curl_easy_perform(m_curl.get());
        m_mute = code == CURLE_OPERATION_TIMEDOUT;
        if (code != CURLE_OK)
            m_error = QString::fromUtf8(m_detail[0] ? m_detail : curl_easy_strerror(code));
        return code;
    }

    Outcome transmit(const QString &subject, const QStringList &targets, const QString &body)
    {
        prepare();
        CURL *c = m_curl.get();
        curl_easy_setopt(c, CURLOPT_MAIL_FROM, ('<' + m_sender.toUtf8() + '>').constData());
        List rcpt;
        for (const QString &d : targets)
            rcpt.add('<' + d.toUtf8() + '>');
        curl_easy_setopt(c, CURLOPT_MAIL_RCPT, rcpt.head());
        curl_easy_setopt(c, CURLOPT_MAIL_RCPT_ALLLOWFAILS, 1L);

        Reading message{Mensaje(subject, targets, body)};
        curl_easy_setopt(c, CURLOPT_UPLOAD, 1L);
        curl_easy_setopt(c, CURLOPT_READFUNCTION, &Reading::supply);
        curl_easy_setopt(c, CURLOPT_READDATA, &message);
        curl_easy_setopt(c, CURLOPT_INFILESIZE_LARGE, curl_off_t(message.bytes.size()));
        const CURLcode code = run();
        return outcomeOf(code, message.all());
    }

    QByteArray Mensaje(const QString &subject, const QStringList &targets,
                       const QString &body) const
    {
        QByteArray m;
        const auto header = [&m](const char *name, const QByteArray &value) {
            m += name;
            m += ": " + value + "\r\n";
        };
        header("From", addressWithName(m_s.clinic.nom, m_sender));
        header("To", targets.join(u",\r\n "_s).toUtf8());
        header("Subject", headerValue(subject));
        header("Date", mailDate(m_s.reloj.now()));
        header("Message-ID", '<' + QUuid::createUuid().toByteArray(QUuid::WithoutBraces) + '@'
                                 + m_sender.section(u'@', -1).toUtf8() + '>');
        // Keeps out-of-office programs from replying (RFC 3834).
        header("Auto-Submitted", "auto-generated");
        header("MIME-Version", "1.0");
        header("Content-Type", "text/plain; charset=utf-8");
        header("Content-Transfer-Encoding", "quoted-printable");
        return m + "\r\n" + mailText(body);
    }

    Sesion &m_s;
    MailAccount m_account;
    QString m_sender;
    std::function<void()> m_meanwhile;
    QByteArray m_url;
    QByteArray m_authority; // file with the clinic's own certificate authority, beside the system's
    Owner<CURL> m_curl;
    QString m_error;
    long m_seconds; // time limit per message
    int m_failures = 0;
    bool m_inside = false;
    bool m_mute = false; // the last reply did not come in time
    bool m_missed = false;
    char m_detail[CURL_ERROR_SIZE] = {};
};

} // namespace

std::unique_ptr<MailSession> AbrirSesionCorreo(Sesion &s, QString *error,
                                               std::function<void()> meanwhile)
{
    MailAccount account = readMailAccount(s);
    if (!account.complete() || account.server.isEmpty()) {
        s.dialogos.Mensaje(
            s(account.complete() ? text::MailServerMissing : text::MailAccountMissing));
        return nullptr;
    }
    auto mail = std::make_unique<MailBySmtp>(s, std::move(account), std::move(meanwhile));
    if (mail->enter())
        return mail;
    if (error)
        *error = mail->error();
    return nullptr;
}

bool EnviarCorreo(Sesion &s, MailSession &mail, const QString &subject, int idc,
                  const QString &body)
{
    const QString addresses = DireccionCliente(s, idc);
    if (addresses.isEmpty()) {
        s.clientes->Execute("update clientes set FaltaMail = -1 where idc = ?", idc);
        return false;
    }
    return mail.send(subject, addresses, body);
}

void CerrarSesionCorreo(std::unique_ptr<MailSession> &mail) { mail.reset(); }
