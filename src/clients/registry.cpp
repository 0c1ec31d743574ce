#include "clients/registry.h"

#include "clients/mail_domains.h"
#include "clients/reference_lists.h"
#include "columns/configuracion.h"
#include "store/identifiers.h"
#include "texts/clients.h"
#include "texts/texts.h"

#include <QRegularExpression>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

Rejection reject(Sesion &s, int text, Field field)
{
    s.dialogos.Mensaje(s(text));
    return {field};
}

QString nameOf(Sesion &s, List list, int id)
{
    const auto e = entryById(s, list, id);
    return e ? e->nom : QString();
}

std::optional<Rejection> check(Sesion &s, const ClientRecord &f)
{
    if (f.ayn.trimmed().isEmpty())
        return reject(s, text::PleaseEnterName, Field::Name);
    if (withoutLetters(f.ayn))
        return reject(s, 31, Field::Name);
    if (withoutLetters(f.region))
        return reject(s, 31, Field::Region);
    if (withoutLetters(f.subregion))
        return reject(s, 31, Field::Subregion);
    return std::nullopt;
}

std::optional<Rejection> check(Sesion &s, const PatientRecord &f, bool validBirth)
{
    if (f.nom.trimmed().isEmpty())
        return reject(s, text::PleaseEnterName, Field::Name);
    if (withoutLetters(f.nom))
        return reject(s, 31, Field::Name);
    if (!validBirth || (f.fecn.isValid() && f.fecn > s.reloj.hoy))
        return reject(s, text::EnterValidDate, Field::Birth);
    return std::nullopt;
}

// Ids of a client's region and sub-region.
struct Places {
    int dep = 0;
    int loc = 0;
};

Places placesOf(Sesion &s, const ClientRecord &f)
{
    Places p;
    p.dep = ensureRegion(s, f.region, f.codt2);
    p.loc = ensureSubregion(s, f.subregion, f.codp2, p.dep);
    return p;
}

void countUses(Sesion &s, const Places &p)
{
    SubirRanking(s, tableOf(List::Region).table, p.dep);
    SubirRanking(s, tableOf(List::Subregion).table, p.loc);
}

auto cutterOf(Sesion &s, std::string_view table)
{
    return [&s, table](std::string_view column, const QString &text) {
        return s.clientes->trimmed(table, column, text.trimmed());
    };
}

// Updates the columns that the panel shows. @return false when the row no longer exists
bool save(Sesion &s, const ClientRecord &f)
{
    const Places p = placesOf(s, f);
    const auto cut = cutterOf(s, "clientes");
    const int rows = s.clientes->Execute(
        "update clientes set ayn = ?, dir = ?, loc = ?, dep = ?, codp2 = ?, codt2 = ?, tel2 = ?, "
        "telc2 = ?, email = ?, mark = ?, obs = ? where idc = ?",
        cut("ayn", f.ayn), cut("dir", f.dir), p.loc, p.dep, cut("codp2", f.codp2),
        cut("codt2", f.codt2), cut("tel2", f.tel2), cut("telc2", f.telc2), cut("email", f.email),
        f.mark, f.obs, f.idc);
    if (rows == 0)
        return false;
    // Only the postal code was missing for letters to arrive.
    if (!f.codp2.trimmed().isEmpty())
        s.clientes->Execute("update clientes set faltadir = 0 where idc = ? and faltadir <> 0",
                            f.idc);
    settleMail(s, f.email, f.idc);
    countUses(s, p);
    return true;
}

bool save(Sesion &s, const PatientRecord &f)
{
    const int raz = ensureBreed(s, f.breed, f.esp);
    const auto cut = cutterOf(s, "mascotas");
    const int rows = s.clientes->Execute(
        "update mascotas set nom = ?, raz = ?, pel = ?, car = ?, Chip = ?, fecn = ?, pes = ?, "
        "sex = ?, ped = ?, rep = ?, dec = ?, ser = ?, obs = ? where idm = ?",
        cut("nom", f.nom), raz, f.pel, cut("car", f.car), cut("Chip", f.Chip), f.fecn, f.pes, f.sex,
        f.ped, f.rep, f.dec, int(f.service), f.obs, f.idm);
    if (rows == 0)
        return false;
    SubirRanking(s, tableOf(List::Breed).table, raz);
    return true;
}

// On purpose: a change can only set these three species; any other name leaves the species as it
// was.
int knownSpecies(const QString &name)
{
    const QString known[] = {u"Canino"_s, u"Felino"_s, u"Equino"_s};
    for (int i = 0; i < 3; ++i)
        if (name.compare(known[i], Qt::CaseInsensitive) == 0)
            return i + 1;
    return 0;
}

// An existing client with the telephone of a new one.
struct Repeated {
    int idc = 0;
    QString ayn;
    QString tel2;
};

// The numbers in a box, reduced to their digits: 555-0155 becomes 5550155.
QStringList numbersOf(const QString &telephones)
{
    constexpr int Shortest = 3;
    QStringList numbers;
    for (const QString &one : telephones.split(u','))
        if (const QString digits = QString(one).remove(QRegularExpression(u"\\D"_s));
            digits.size() >= Shortest)
            numbers << digits;
    return numbers;
}

std::optional<Repeated> withTelephone(Sesion &s, const ClientRecord &f)
{
    const QStringList wanted = numbersOf(f.tel2 + u',' + f.telc2);
    if (wanted.isEmpty())
        return std::nullopt;
    Recordset r = s.clientes->OpenSnapshot("select idc, ayn, tel2, telc2 from clientes where "
                                           "tel2 <> '' or telc2 <> '' order by idc");
    for (; !r.EOF_(); r.MoveNext())
        for (const QString &telephones : {r[2].toText(), r[3].toText()})
            for (const QString &number : numbersOf(telephones))
                if (wanted.contains(number))
                    return Repeated{r[0].toInt(), r[1].toText(), telephones};
    return std::nullopt;
}

} // namespace

std::optional<ClientRecord> clients::readClient(Sesion &s, int idc)
{
    const Recordset r = s.clientes->OpenSnapshot("select * from clientes where idc = ?", idc);
    if (r.EOF_())
        return std::nullopt;
    ClientRecord f;
    f.idc = idc;
    f.ayn = r["ayn"].toText();
    f.dir = r["dir"].toText();
    f.subregion = nameOf(s, List::Subregion, r["loc"].toInt());
    f.codp2 = r["codp2"].toText();
    f.region = nameOf(s, List::Region, r["dep"].toInt());
    f.codt2 = r["codt2"].toText();
    f.tel2 = r["tel2"].toText();
    f.telc2 = r["telc2"].toText();
    f.email = r["email"].toText();
    f.mark = r["mark"].toInt();
    f.obs = r["obs"].toText();
    f.feci = r["feci"].toDate();
    f.fecu = r["fecu"].toDate();
    f.deuda = r["deuda"].toBool();
    return f;
}

std::optional<PatientRecord> clients::readPatient(Sesion &s, int idm)
{
    const Recordset r = s.clientes->OpenSnapshot("select * from mascotas where idm = ?", idm);
    if (r.EOF_())
        return std::nullopt;
    PatientRecord f;
    f.idm = idm;
    f.idc = r["idc"].toInt();
    f.nom = r["nom"].toText();
    f.esp = r["esp"].toInt();
    f.breed = nameOf(s, List::Breed, r["raz"].toInt());
    f.pel = r["pel"].toInt();
    f.car = r["car"].toText();
    f.Chip = r["Chip"].toText();
    f.fecn = r["fecn"].toDate();
    f.pes = r["pes"].toDouble();
    f.sex = r["sex"].toInt();
    f.ped = r["ped"].toBool();
    f.rep = r["rep"].toBool();
    f.dec = r["dec"].toBool();
    f.service = r["ser"].toInt() > 0;
    f.obs = r["obs"].toText();
    f.fot = r["fot"].toBool();
    return f;
}

int clients::nextClient(Sesion &s)
{
    return s.configuracion[setting::contadorclientes].toInt() + 1;
}
int clients::nextPatient(Sesion &s)
{
    return s.configuracion[setting::contadormascotas].toInt() + 1;
}

int clients::insertClient(Sesion &s, const ClientRecord &f, int dep, int loc)
{
    const int idc = store::takeIdentifier(s, setting::contadorclientes, store::Highest16BitId);
    const auto cut = cutterOf(s, "clientes");
    s.clientes->Execute(
        "insert into clientes (idc, ayn, dir, loc, dep, codp2, codt2, tel2, telc2, email, mark,"
        " obs, feci, fecu, deuda) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0)",
        idc, cut("ayn", f.ayn), cut("dir", f.dir), loc, dep, cut("codp2", f.codp2),
        cut("codt2", f.codt2), cut("tel2", f.tel2), cut("telc2", f.telc2), cut("email", f.email),
        f.mark, f.obs, s.reloj.hoy, f.fecu);
    s.morvane->Execute("insert into perfiles (idc) values (?)", idc);
    return idc;
}

int clients::insertPatient(Sesion &s, const PatientRecord &f, int breed)
{
    const int idm = store::takeIdentifier(s, setting::contadormascotas, store::Highest16BitId);
    const auto cut = cutterOf(s, "mascotas");
    s.clientes->Execute(
        "insert into mascotas (idm, idc, nom, esp, raz, pel, car, Chip, fecn, pes, sex, ped, rep,"
        " dec, ser, obs, feci, fot) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0)",
        idm, f.idc, cut("nom", f.nom), f.esp, breed, f.pel, cut("car", f.car), cut("Chip", f.Chip),
        f.fecn, f.pes, f.sex, f.ped, f.rep, f.dec, int(f.service), f.obs, s.reloj.hoy);
    return idm;
}

Addition clients::addClient(Sesion &s, const ClientRecord &record)
{
    Addition addition;
    if ((addition.rejection = check(s, record)))
        return addition;
    const auto repeated = withTelephone(s, record);
    if (repeated
        && !s.dialogos.confirm(s(text::SameClientFound) + u' ' + repeated->ayn
                               + s(text::SameClientTelephone) + u' ' + repeated->tel2 + u". "_s
                               + s(text::SameClientAdvice))) {
        addition.existing = repeated->idc;
        return addition;
    }
    Lote lote(s);
    const Places places = placesOf(s, record);
    ClientRecord visiting = record;
    visiting.fecu = s.reloj.hoy;
    addition.id = insertClient(s, visiting, places.dep, places.loc);
    countUses(s, places);
    settleMail(s, record.email, addition.id);
    lote.commit();
    return addition;
}

std::optional<Rejection> clients::modifyClient(Sesion &s, const ClientRecord &record)
{
    if (const auto rejection = check(s, record))
        return rejection;
    {
        Lote lote(s);
        if (save(s, record)) {
            lote.commit();
            return std::nullopt;
        }
    }
    return reject(s, text::ClientIsGone, Field::None);
}

Addition clients::addPatient(Sesion &s, const PatientRecord &record, bool validBirth)
{
    Addition addition;
    if ((addition.rejection = check(s, record, validBirth)))
        return addition;
    if (s.clientes->read("select idc from clientes where idc = ?", record.idc).isNull()) {
        addition.rejection = reject(s, text::ChooseClientFirst, Field::Client);
        return addition;
    }
    Lote lote(s);
    const int breed = ensureBreed(s, record.breed, record.esp);
    addition.id = insertPatient(s, record, breed);
    SubirRanking(s, tableOf(List::Breed).table, breed);
    lote.commit();
    return addition;
}

std::optional<Rejection> clients::modifyPatient(Sesion &s, const PatientRecord &record,
                                                const QString &species, bool validBirth)
{
    if (const auto rejection = check(s, record, validBirth))
        return rejection;
    {
        Lote lote(s);
        if (save(s, record)) {
            if (const int esp = knownSpecies(species))
                s.clientes->Execute("update mascotas set esp = ? where idm = ?", esp, record.idm);
            lote.commit();
            return std::nullopt;
        }
    }
    return reject(s, text::PatientIsGone, Field::None);
}
