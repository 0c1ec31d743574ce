// How much of a long run of the outbox is our own work and how much the mail server's. Prints,
// three times: the seconds of a bare loop of the mail library over one connection, those of the
// outbox with as many tasks on the same server, and their ratio.

#include "agenda/tasks.h"
#include "messages/mail_account.h"
#include "messages/outbox.h"
#include "store/settings_row.h"
#include "support/clinic.h"
#include "support/smtp_server.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <curl/curl.h>

using namespace Qt::StringLiterals;

namespace
{

// @return seconds
double bare(int port, int mails)
{
    QElapsedTimer clock;
    clock.start();
    CURL *c = curl_easy_init();
    for (int i = 0; i < mails; ++i) {
        QByteArray text = "From: v@x.example\r\nSubject: s\r\nContent-Type: text/plain; "
                          "charset=utf-8\r\n\r\nDear C"
                          + QByteArray::number(i) + "\r\n";
        FILE *source = fmemopen(text.data(), size_t(text.size()), "r");
        curl_easy_reset(c);
        curl_easy_setopt(c, CURLOPT_URL,
                         QByteArray("smtp://localhost:" + QByteArray::number(port)).constData());
        curl_easy_setopt(c, CURLOPT_USERNAME, "v@x.example");
        curl_easy_setopt(c, CURLOPT_PASSWORD, "llave");
        curl_easy_setopt(c, CURLOPT_MAIL_FROM, "<v@x.example>");
        curl_slist *to =
            curl_slist_append(nullptr, ("<c" + QByteArray::number(i) + "@x.example>").constData());
        curl_easy_setopt(c, CURLOPT_MAIL_RCPT, to);
        curl_easy_setopt(c, CURLOPT_UPLOAD, 1L);
        curl_easy_setopt(c, CURLOPT_READDATA, source);
        if (curl_easy_perform(c) != CURLE_OK)
            std::fprintf(stderr, "a mail was not taken\n");
        curl_slist_free_all(to);
        std::fclose(source);
    }
    curl_easy_cleanup(c);
    return double(clock.nsecsElapsed()) / 1e9;
}

class Speed : public Clinic
{
public:
    void TestBody() override {}

    double run(int port, int mails)
    {
        s.programFolder = folder.path() + u'/';
        messages::saveMailAccount(
            s, {u"v@x.example"_s, u"llave"_s, u"localhost"_s, port, messages::Encryption::None});
        store::saveSetting(s, "MensajeriaFrecuente", u"Dear <nomcli>"_s);
        Lote batch(s);
        for (int i = 0; i < mails; ++i) {
            s.clientes->Execute("insert into clientes (idc, ayn, email) values (?, ?, ?)", i + 1,
                                u"C%1"_s.arg(i), u"c%1@x.example"_s.arg(i));
            agenda::Task t;
            t.tip = agenda::TaskKind::Frequent;
            t.ida = i + 1;
            t.medio = 1;
            t.fcreacion = hoy;
            AgregarTarea(s, t);
        }
        batch.commit();
        QElapsedTimer clock;
        clock.start();
        EnviarMensajes(s, hoy);
        const double seconds = double(clock.nsecsElapsed()) / 1e9;
        const int sent =
            s.morvane->read("select count(*) from TareasAgenda where fmedio = ?", hoy).toInt();
        if (sent != mails)
            std::fprintf(stderr, "only %d of %d mails went out\n", sent, mails);
        return seconds;
    }
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    const int mails = argc > 1 ? std::max(1, std::atoi(argv[1])) : 2000;
    const double pause = argc > 2 ? std::atof(argv[2]) : 0;
    std::printf("%d mails: bare s, outbox s, ratio\n", mails);
    for (int i = 0; i < 3; ++i) {
        const MailServer server({u"--slow"_s, QString::number(pause / 2)});
        const double alone = bare(server.portNumber(), mails);
        Speed speed;
        const double ours = speed.run(server.portNumber(), mails);
        std::printf("%.2f %.2f %.2f\n", alone, ours, ours / alone);
    }
}
