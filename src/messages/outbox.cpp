#include "messages/outbox.h"

#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "columns/configuracion.h"
#include "contact/contact.h"
#include "messages/mail.h"
#include "messages/templates.h"
#include "printing/document_set.h"
#include "printing/letter.h"
#include "printing/report.h"
#include "store/data_folder.h"
#include "store/lookups.h"
#include "store/opening.h"
#include "texts/agenda.h"
#include "texts/texts.h"

#include <span>

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

// How long a terminal waits for another one that is sending mails, in seconds.
constexpr int SendingWait = 3;
// A mail handed to the server must be marked as sent. While another terminal blocks the store, the
// attempt is repeated this often, each time for as long as the engine waits.
constexpr int LogAttempts = 20;

// --- The day's tasks ---

struct Pending {
    int id = 0;
    int tip = 0;
    int ida = 0;
    int medio = 0;
    store::Value artaux;
    QString des;
};

// Open tasks that call for a mail. Parameters: two channels, then the day twice.
const std::string DueMails =
    "(medio = ? or medio = ?) and est = 0 and fmedio is null and (fcreacion = ? or dia = ?)";

// Reads all at once, so that changes by another terminal do not disturb the run.
std::vector<Pending> readPending(Sesion &s, const std::string &condition,
                                 const std::vector<store::Value> &values)
{
    std::vector<Pending> pending;
    Recordset r = s.morvane->open("select id, tip, ida, medio, ArtAux, des from TareasAgenda where "
                                      + condition,
                                  values, false);
    for (; !r.EOF_(); r.MoveNext())
        pending.push_back({.id = r[0].toInt(),
                           .tip = r[1].toInt(),
                           .ida = r[2].toInt(),
                           .medio = r[3].toInt(),
                           .artaux = r[4],
                           .des = r[5].toText()});
    return pending;
}

// Marks a task as sent. @return false when another terminal already has, or the task is gone
bool wentOut(Sesion &s, QDate hoy, const Pending &p)
{
    return s.morvane->Execute("update TareasAgenda set fmedio = ? where id = ? and fmedio is null",
                              hoy, p.id)
           > 0;
}

// Consecutive tasks with the same reason and addressee. One message covers them all.
using Group = std::span<const Pending>;

Group groupFrom(const std::vector<Pending> &pending, size_t start)
{
    size_t end = start + 1;
    while (end < pending.size() && pending[end].tip == pending[start].tip
           && pending[end].ida == pending[start].ida)
        ++end;
    return Group(pending).subspan(start, end - start);
}

// --- Delivery lists ---

struct DeliveryList {
    const char16_t *supply; // of the categories on the list
    contact::DeliveryTable scratch;
    QString report;
    int question;
};

// The services that deliver products of such categories to the client's home.
std::vector<store::Value> servicesOf(Sesion &s, const char16_t *supply)
{
    std::vector<store::Value> services;
    Recordset r = s.finanzas->OpenSnapshot(
        "SELECT DISTINCT idserv FROM FLCategorias WHERE Suministro = ? and idserv is not null",
        supply);
    for (; !r.EOF_(); r.MoveNext())
        if (r[0].toInt() != 0)
            services.push_back(r[0]);
    return services;
}

bool isForDelivery(Sesion &s, const char16_t *supply, const store::Value &product)
{
    return !product.isNull()
           && !s.finanzas
                   ->read("SELECT FLCategorias.IDCat FROM FLCategorias LEFT JOIN Articulos ON "
                          "FLCategorias.IDCat = Articulos.IDCat WHERE FLCategorias.Suministro = ? "
                          "AND Articulos.Ida = ?",
                          supply, product)
                   .isNull();
}

std::vector<Pending> deliveryPending(Sesion &s, QDate hoy, const DeliveryList &list)
{
    std::vector<store::Value> values = servicesOf(s, list.supply);
    if (values.empty())
        return {};
    std::string condition;
    for (size_t i = 0; i < values.size(); ++i)
        condition += i ? " OR tip = ?" : "(tip = ?";
    values.push_back(hoy);
    std::vector<Pending> pending = readPending(
        s, condition + ") and medio = 4 and fmedio is null and dia = ? order by ida, id", values);
    std::erase_if(pending,
                  [&](const Pending &p) { return !isForDelivery(s, list.supply, p.artaux); });
    return pending;
}

void fillScratch(Sesion &s, const DeliveryList &list, const std::vector<Pending> &inList)
{
    s.rep97->Execute("delete * from " + std::string(list.scratch.table));
    for (const Pending &p : inList)
        contact::addToList(s, list.scratch, p.ida, p.artaux.toInt());
}

// A list is marked as sent once it is laid out. On purpose: that is before the question, so
// answering No drops the list. A faulty report definition costs only the list, not the messages,
// and its tasks stay open.
void deliver(Sesion &s, QDate hoy, const DeliveryList &list)
{
    std::unique_ptr<printing::DocumentHtml> document;
    bool own = false;
    try {
        const std::vector<Pending> inList = deliveryPending(s, hoy, list);
        fillScratch(s, list, inList);
        if (inList.empty())
            return;
        document = printing::runReport(s, list.report);
        Lote lote(s);
        for (const Pending &p : inList)
            own |= wentOut(s, hoy, p);
        lote.commit();
    } catch (const store::StoreError &e) {
        s.dialogos.Mensaje(store::errorText(s, e));
        return;
    }
    if (own && s.dialogos.Pregunta(s(list.question)))
        printing::printOrTell(s, *document);
}

// --- Mails ---

QString subjectOf(const Sesion &s, int tip)
{
    switch (tip) {
    case agenda::TaskKind::Birthday:
    case agenda::TaskKind::FeaturedBirthday:
        return s.clinic.nom + u' ' + s(text::HappyBirthday);
    case agenda::TaskKind::PrepaidInArrears:
        return s(text::PrepaidMedicine);
    default:
        return s(text::NoticeFrom) + u' ' + s.clinic.nom;
    }
}

int patientOf(int tip, int ida)
{
    return agenda::taskSubject(tip) == agenda::Subject::Patient ? ida : 0;
}

// The template of a task; appointments use the one for appointment reminders.
int templateOf(int tip) { return tip > 0 ? agenda::TaskKind::AppointmentReminder : tip; }

bool isDue(int tip, int medio)
{
    switch (tip) {
    case agenda::TaskKind::Birthday:
    case agenda::TaskKind::FeaturedBirthday:
    case agenda::TaskKind::DebtReminder:
    case agenda::TaskKind::DoseReminder:
    case agenda::TaskKind::FoodShortage:
    case agenda::TaskKind::DiscontinuedDose:
    case agenda::TaskKind::PrepaidInArrears:
    case agenda::TaskKind::NewClient:
    case agenda::TaskKind::Frequent:
        return true;
    default:
        return tip > 0 && medio == agenda::Channel::Mail;
    }
}

bool passesToLetter(Sesion &s, int tip)
{
    switch (tip) {
    case agenda::TaskKind::DebtReminder:
        return true; // On purpose: whatever the setting says.
    case agenda::TaskKind::Birthday:
        return s.configuracion[setting::MedidasCumple].toInt() == agenda::Channel::MailOrLetter;
    case agenda::TaskKind::DoseReminder:
        return s.configuracion[setting::MedidasRevac].toInt() == agenda::Channel::MailOrLetter;
    default:
        return false;
    }
}

void logFailure(Sesion &s, const QString &reason)
{
    store::logError(s, store::ErrorNumber::Mail, reason, u"EnviarMensajes"_s);
}

// The mail run is abandoned; the board says so for the rest of the day.
void warnWithoutMail(Sesion &s)
{
    if (s.morvane->read("SELECT Dibujo FROM Pizarra WHERE Dibujo = ?", board::picture::MailProblem)
            .isNull())
        AgregarPizarra(s, s(text::MailNotConfigured), board::picture::MailProblem,
                       board::click::VideoPage);
}

void passToLetters(Sesion &s, QDate hoy)
{
    struct measureOf {
        std::string_view column;
        int tip;
    };
    for (const measureOf m : {measureOf{setting::MedidasCumple, agenda::TaskKind::Birthday},
                              measureOf{setting::MedidasRevac, agenda::TaskKind::DoseReminder},
                              measureOf{setting::MedidasDeudores, agenda::TaskKind::DebtReminder}})
        if (s.configuracion[m.column].toInt() == agenda::Channel::MailOrLetter)
            s.morvane->Execute("update TareasAgenda set medio = ? where " + DueMails
                                   + " and (tip = ?)",
                               agenda::Channel::Letter, agenda::Channel::Mail,
                               agenda::Channel::MailOrLetter, hoy, hoy, m.tip);
}

// Nothing is sent about a deceased patient, or to a client deleted since the task was written.
bool getsNothing(Sesion &s, int idm, int idc)
{
    if (idm != 0 && s.clientes->read("select dec from mascotas where idm = ?", idm).toBool())
        return true;
    return s.clientes->read("select idc from clientes where idc = ?", idc).isNull();
}

// Marks a group as sent; for a dose reminder the dose of the first task as well.
// On purpose: the tasks after the first count as sent, whatever became of the first.
// @return whether the first task was still unmarked
bool markGroup(Sesion &s, QDate hoy, Group group, bool firstWentOut)
{
    const Pending &p = group.front();
    bool had = true;
    if (firstWentOut)
        had = wentOut(s, hoy, p);
    else if (passesToLetter(s, p.tip))
        s.morvane->Execute("update TareasAgenda set medio = 2 where id = ?", p.id);
    for (const Pending &other : group.subspan(1))
        wentOut(s, hoy, other);
    if (firstWentOut && p.tip == agenda::TaskKind::DoseReminder)
        s.clientes->Execute("update ArtPlan set Ana = -1 where Idm = ? and Ida = ? and Dos = ?",
                            p.ida, p.artaux.toInt(), p.des.toInt());
    return had;
}

// Marks at once and as a unit everything that a message covers, so that nothing is sent again after
// a crash. Most groups need a single statement, which costs half the disk writes of a batch over
// all files.
bool log(Sesion &s, QDate hoy, Group group, bool firstWentOut)
{
    if (group.size() == 1 && group.front().tip != agenda::TaskKind::DoseReminder)
        return markGroup(s, hoy, group, firstWentOut);
    Lote lote(s);
    const bool had = markGroup(s, hoy, group, firstWentOut);
    lote.commit();
    return had;
}

void logEvenIfWaiting(Sesion &s, QDate hoy, Group group, bool firstWentOut)
{
    for (int attempt = 1;; ++attempt) {
        try {
            log(s, hoy, group, firstWentOut);
            return;
        } catch (const store::StoreError &e) {
            if (e.number != store::ErrorNumber::Locked || attempt == LogAttempts)
                throw;
        }
    }
}

struct Mensaje {
    int idc = 0;
    QString subject;
    QString text; // "" when nothing is to be sent
};

// Tasks that nothing is sent for do not count as sent; nor do those whose template is empty.
Mensaje messageOf(Sesion &s, const Pending &p)
{
    const int idm = patientOf(p.tip, p.ida);
    const int idc = taskAddressee(s, p.tip, p.ida);
    if (!isDue(p.tip, p.medio) || getsNothing(s, idm, idc))
        return {};
    const QString text =
        ComponerMensaje(s, templateOf(p.tip), idc, idm, p.artaux.toInt(), agenda::Channel::Mail);
    return {idc, subjectOf(s, p.tip), text.trimmed().isEmpty() ? QString() : text};
}

// Sends the groups one by one. @return the number of appointment reminders sent
int sendInTurn(Sesion &s, QDate hoy, const std::vector<Pending> &pending, MailSession &mail,
               int &done, const std::function<void()> &advance)
{
    int appointments = 0;
    QString noted;
    while (done < int(pending.size())) {
        advance();
        const Group group = groupFrom(pending, size_t(done));
        const Mensaje m = messageOf(s, group.front());
        if (m.text.isEmpty()) {
            ++done;
            continue;
        }
        const bool sent = EnviarCorreo(s, mail, m.subject, m.idc, m.text);
        logEvenIfWaiting(s, hoy, group, sent);
        if (mail.error() != std::exchange(noted, mail.error()))
            logFailure(s, noted); // the same failure only once
        appointments += sent && group.front().tip > 0;
        done += int(group.size());
    }
    advance();
    return appointments;
}

// @return message for the user saying why the run was abandoned; "" when it was not
QString sendMails(Sesion &s, QDate hoy)
{
    const std::vector<Pending> pending =
        readPending(s, DueMails + " order by tip, ida, id",
                    {agenda::Channel::Mail, agenda::Channel::MailOrLetter, hoy, hoy});
    if (pending.empty())
        return {};
    int done = 0;
    const std::function<void()> advance = [&] { s.progress.tellBar(done, int(pending.size())); };
    s.progress.tellStage(s(text::SendingMails));
    QString reason;
    std::unique_ptr<MailSession> mail = AbrirSesionCorreo(s, &reason, advance);
    if (!mail) {
        Lote lote(s);
        passToLetters(s, hoy);
        if (!reason.isEmpty())
            logFailure(s, reason);
        warnWithoutMail(s);
        lote.commit();
        return reason;
    }
    const int appointments = sendInTurn(s, hoy, pending, *mail, done, advance);
    if (mail->missed()) {
        reason = mail->error();
        warnWithoutMail(s);
    }
    CerrarSesionCorreo(mail);
    if (appointments > 0)
        AgregarPizarra(s,
                       s(text::WeMustSend) + u' ' + QString::number(appointments) + u' '
                           + s(text::RemindersOfToday),
                       board::picture::Messages, board::click::Agenda);
    return reason;
}

// --- Letters ---

void sendLetters(Sesion &s, QDate hoy)
{
    const std::vector<Pending> pending = readPending(
        s, "medio = 2 and fmedio is null and fcreacion = ? order by tip, ida, id", {hoy});
    s.progress.tellStage(s(text::PerformingTasks));
    printing::DocumentSet letters; // one print job, and a single question if there is no printer
    store::Answer answer = store::Answer::Yes;
    for (size_t i = 0; i < pending.size();) {
        const Group group = groupFrom(pending, i);
        const Pending &p = group.front();
        const int idm = patientOf(p.tip, p.ida);
        const int idc = taskAddressee(s, p.tip, p.ida);
        const bool letter = p.tip == agenda::TaskKind::Birthday
                            || p.tip == agenda::TaskKind::DoseReminder
                            || p.tip == agenda::TaskKind::DebtReminder;
        i += group.size();
        if (!letter || getsNothing(s, idm, idc))
            continue;
        const QString text =
            ComponerMensaje(s, p.tip, idc, idm, p.artaux.toInt(), agenda::Channel::Letter);
        // On purpose: marked as sent before the question, so answering No drops the letter. If
        // another terminal has marked it in the meantime, that terminal asks about it.
        if (text.trimmed().isEmpty() || !log(s, hoy, group, true))
            continue;
        const QString name = idm != 0 ? LeerCampo(s, "clientes", "mascotas", idm, "nom")
                                      : LeerCampo(s, "clientes", "clientes", idc, "ayn");
        if (answer != store::Answer::All && answer != store::Answer::None)
            answer = s.dialogos.askOfSeries(s(text::PrintLetterQuestion) + u' ' + name + u'?');
        if (answer == store::Answer::Yes || answer == store::Answer::All)
            letters.add(printing::composeLetter(
                s, printing::letterTitle(agenda::taskReason(s, p.tip), name), text));
    }
    if (!letters.isEmpty())
        printing::printOrTell(s, letters);
}

} // namespace

int messages::taskAddressee(Sesion &s, int tip, int ida)
{
    switch (agenda::taskSubject(tip)) {
    case agenda::Subject::Patient:
        return LeerCampo(s, "clientes", "mascotas", ida, "idc").toInt();
    case agenda::Subject::Client:
        return ida;
    default:
        return 0;
    }
}

bool EnviarMensajes(Sesion &s, QDate hoy)
{
    deliver(s, hoy, {u"p", {"auxrevacunacion", "vac"}, u"revac"_s, text::PrintVaccinationQuestion});
    deliver(s, hoy, {u"c", {"auxrealimentacion", "ali"}, u"ali2"_s, text::PrintFoodListQuestion});
    bool only = false;
    QString failure;
    {
        // The lock is not held while a question or message is open: that may last past midnight,
        // and the next day must not wait. Lists and letters go to whoever marks them first.
        const auto sending = s.motor->lock(u"kelvara.correo"_s, SendingWait,
                                           [&s](const QString &) { s.progress.tellBar(0, 1); });
        only = sending->isHeld();
        if (only)
            failure = sendMails(s, hoy);
    }
    if (!failure.isEmpty())
        s.dialogos.Mensaje(s(text::MailFailed).arg(failure));
    sendLetters(s, hoy);
    return only;
}
