#include "clients/registry.h"

#include "clients/reference_lists.h"
#include "store/identifiers.h"
#include "texts/clients.h"
#include "texts/texts.h"

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

// Writes what the panel takes into a row that is there. @return false when it is gone
bool save(Sesion &s, const ClientRecord &f, int idc)
{
    const int dep = ensureRegion(s, f.region, f.codt2);
    const int loc = ensureSubregion(s, f.subregion, f.codp2, dep);
    const auto isShort = [&](std::string_view column, const QString &text) {
        return s.clientes->trimmed("clientes", column, text.trimmed());
    };
    const int rows = s.clientes->Execute(
        "update clientes set ayn = ?, dir = ?, loc = ?, dep = ?, codp2 = ?, codt2 = ?, tel2 = ?, "
        "telc2 = ?, email = ?, mark = ?, obs = ? where idc = ?",
        isShort("ayn", f.ayn), isShort("dir", f.dir), loc, dep, isShort("codp2", f.codp2),
        isShort("codt2", f.codt2), isShort("tel2", f.tel2), isShort("telc2", f.telc2),
        isShort("email", f.email), f.mark, f.obs, idc);
    if (rows == 0)
        return false;
    // Letters failed for want of the postal code alone.
    if (!f.codp2.trimmed().isEmpty())
        s.clientes->Execute("update clientes set faltadir = 0 where idc = ? and faltadir <> 0",
                            idc);
    SubirRanking(s, "cldepartamento", dep);
    SubirRanking(s, "cllocalidad", loc);
    return true;
}

bool save(Sesion &s, const PatientRecord &f, int idm)
{
    const int raz = ensureBreed(s, f.breed, f.esp);
    const auto isShort = [&](std::string_view column, const QString &text) {
        return s.clientes->trimmed("mascotas", column, text.trimmed());
    };
    const int rows = s.clientes->Execute(
        "update mascotas set nom = ?, raz = ?, pel = ?, car = ?, Chip = ?, fecn = ?, pes = ?, "
        "sex = ?, ped = ?, rep = ?, dec = ?, ser = ?, obs = ? where idm = ?",
        isShort("nom", f.nom), raz, f.pel, isShort("car", f.car), isShort("Chip", f.Chip), f.fecn,
        f.pes, f.sex, f.ped, f.rep, f.dec, int(f.service), f.obs, idm);
    if (rows == 0)
        return false;
    SubirRanking(s, "mlrazas", raz);
    return true;
}

// Intended: a change writes these three species only, for any other it leaves what was there.
int knownSpecies(const QString &name)
{
    const QString known[] = {u"Canino"_s, u"Felino"_s, u"Equino"_s};
    for (int i = 0; i < 3; ++i)
        if (name.compare(known[i], Qt::CaseInsensitive) == 0)
            return i + 1;
    return 0;
}

// The client that has a new one's telephone already.
struct Repeated {
    int idc = 0;
    QString ayn;
    QString tel2;
};

std::optional<Repeated> withTelephone(Sesion &s, const QString &tel2)
{
    if (tel2.isEmpty())
        return std::nullopt;
    const Recordset r = s.clientes->OpenSnapshot(
        "select top 1 idc, ayn, tel2 from clientes where tel2 = ? order by idc", tel2);
    return r.EOF_() ? std::nullopt
                    : std::optional(Repeated{r[0].toInt(), r[1].toText(), r[2].toText()});
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

int clients::nextClient(Sesion &s) { return s.configuracion["contadorclientes"].toInt() + 1; }
int clients::nextPatient(Sesion &s) { return s.configuracion["contadormascotas"].toInt() + 1; }

Addition clients::addClient(Sesion &s, const ClientRecord &record)
{
    Addition addition;
    if ((addition.rejection = check(s, record)))
        return addition;
    const auto repeated = withTelephone(s, record.tel2.trimmed());
    if (repeated
        && !s.dialogos.confirm(s(text::SameClientFound) + u' ' + repeated->ayn
                               + s(text::SameClientTelephone) + u' ' + repeated->tel2 + u". "_s
                               + s(text::SameClientAdvice))) {
        addition.existing = repeated->idc;
        return addition;
    }
    Lote lote(s);
    const int idc = store::takeIdentifier(s, "contadorclientes", store::Highest16BitId);
    s.clientes->Execute("insert into clientes (idc, feci, fecu, deuda) values (?, ?, ?, 0)", idc,
                        s.reloj.hoy, s.reloj.hoy);
    save(s, record, idc);
    s.morvane->Execute("insert into perfiles (idc) values (?)", idc);
    lote.commit();
    addition.id = idc;
    return addition;
}

std::optional<Rejection> clients::modifyClient(Sesion &s, const ClientRecord &record)
{
    if (const auto rejection = check(s, record))
        return rejection;
    {
        Lote lote(s);
        if (save(s, record, record.idc)) {
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
    const int idm = store::takeIdentifier(s, "contadormascotas", store::Highest16BitId);
    s.clientes->Execute("insert into mascotas (idm, idc, esp, feci, fot) values (?, ?, ?, ?, 0)",
                        idm, record.idc, record.esp, s.reloj.hoy);
    save(s, record, idm);
    lote.commit();
    addition.id = idm;
    return addition;
}

std::optional<Rejection> clients::modifyPatient(Sesion &s, const PatientRecord &record,
                                                const QString &species, bool validBirth)
{
    if (const auto rejection = check(s, record, validBirth))
        return rejection;
    {
        Lote lote(s);
        if (save(s, record, record.idm)) {
            if (const int esp = knownSpecies(species))
                s.clientes->Execute("update mascotas set esp = ? where idm = ?", esp, record.idm);
            lote.commit();
            return std::nullopt;
        }
    }
    return reject(s, text::PatientIsGone, Field::None);
}
