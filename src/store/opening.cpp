#include "store/opening.h"

#include "store/data_folder.h"
#include "store/schema.h"
#include "store/upkeep.h"
#include "texts/texts.h"

using namespace store;
using namespace Qt::StringLiterals;

namespace
{

QString textOf(const Sesion &s, const StoreError &e)
{
    switch (e.number) {
    case ErrorNumber::DatabaseNotFound:
        return s(text::CannotOpenDatabase);
    case ErrorNumber::DatabaseDamaged:
        return e.description;
    default:
        return errorText(s, e);
    }
}

// When a column refuses a value, the description begins with the column's name in quotes.
QString columnOf(const StoreError &e)
{
    return e.description.startsWith(u'"') ? e.description.section(u'"', 1, 1) : QString();
}

void openLists(Sesion &s)
{
    s.configuracion = s.morvane->OpenList("select * from configuracion");
    Lists &l = s.lists;
    l.flcategorias = s.finanzas->OpenList("select * from flcategorias order by nom");
    l.mlrazas = s.clientes->OpenList("select * from mlrazas order by nom");
    l.mlespecies = s.clientes->OpenList("select * from mlespecies order by nom");
    l.proveedores = s.finanzas->OpenList("select * from proveedores");
    l.artvenc = s.finanzas->OpenList("select * from ArtVenc");
    l.cllocalidad = s.clientes->OpenList("select * from CLlocalidad order by nom");
    l.cldepartamento = s.clientes->OpenList("select * from CLDepartamento order by nom");
    l.clientes = s.clientes->OpenList("select * from Clientes order by idc", "idc");
    l.mascotas = s.clientes->OpenList("select * from Mascotas order by idm", "idm");
    l.artplan = s.clientes->OpenList("select * from artplan", "idm");
}

QString pathOf(const Sesion &s, const QString &base)
{
    return pathUnder(s.dataFolder, fileOf(base));
}

bool exists(const Sesion &s, const QString &base) { return s.motor->exists(base.toStdString()); }

QString withHolder(const Sesion &s, const QString &text, const QString &holder)
{
    return holder.isEmpty() ? text : text + u' ' + s(text::HeldBy).arg(holder);
}

// --- Waiting ---

// Shorter waits are over before the user could read the message.
constexpr int ToldAfterMs = 400;

// The engine does not know who holds its write lock. Whoever holds it for long is running the start
// of the day, under a lock that names its holder.
void tellWaiting(const Sesion &s, int ms)
{
    if (ms < ToldAfterMs || !s.progress.waiting)
        return;
    s.progress.tellWaiting(
        withHolder(s, s(text::WaitingForTerminal), s.motor->lockHolder(u"kelvara.dia"_s)));
}

void enter(Sesion &s)
{
    QString last;
    const auto tell = [&s, &last](const QString &holder) {
        last = holder;
        s.progress.tellWaiting(withHolder(s, s(text::FolderIsWorkedOn), holder));
    };
    s.presence =
        s.motor->lock(u"kelvara.sesiones"_s, StartPatienceMs / 1000, tell, Lock::Mode::Shared);
    if (!s.presence->isHeld())
        throw OpeningFailure{ErrorNumber::Locked,
                             withHolder(s, s(text::HeldByAnotherTerminal), last)};
}

// --- The databases ---

void requireFiles(const Sesion &s)
{
    for (const QString &base : {u"morvane"_s, u"clientes"_s, u"finanzas"_s})
        if (!exists(s, base))
            throw StoreError(ErrorNumber::DatabaseNotFound, pathOf(s, base));
}

void checkVersion(Sesion &s)
{
    int version = 0;
    try {
        Base morvane(*s.motor, "morvane", s.reloj);
        const Value v = morvane.read("select Ver from configuracion");
        if (v.isNull() && morvane.read("select count(*) from configuracion").toInt() == 0)
            throw OpeningFailure{ErrorNumber::NoCurrentRecord, s(text::SettingsRowMissing)};
        version = v.toInt();
    } catch (const StoreError &e) {
        if (e.number == ErrorNumber::TableNotFound)
            throw OpeningFailure{ErrorNumber::NoCurrentRecord, s(text::SettingsRowMissing)};
        if (e.number != ErrorNumber::Parameters) // no such column: older than any version
            throw;
    }
    if (version != SchemaVersion)
        throw OpeningFailure{
            ErrorNumber::NotInCollection,
            s(version < SchemaVersion ? text::DataOfOlderVersion : text::DataOfNewerVersion)
                .arg(version)
                .arg(SchemaVersion)};
}

void makeFile(const Sesion &s, const QString &base)
{
    const std::string schema = base.toStdString();
    const auto motor = s.createEngine(s.dataFolder);
    motor->create(schema);
    motor->open(schema);
    Lote batch(*motor);
    createTables(*motor, schema, readSchema(base));
    batch.commit();
}

// The scratch file only serves other programs, so failing to create it does no harm.
void makeScratchFile(Sesion &s)
{
    if (exists(s, u"rep97"_s))
        return;
    try {
        if (const Alone alone(s); alone)
            makeFile(s, u"rep97"_s);
    } catch (const StoreError &) {
        return;
    }
}

// A missing file of health-plan members is replaced by an empty one only if no client is a member;
// otherwise the members would disappear.
void makeMembersFile(Sesion &s)
{
    if (exists(s, u"os"_s))
        return;
    Base clientes(*s.motor, "clientes", s.reloj);
    if (clientes.read("select count(*) from clientes where obra <> 0").toInt() > 0)
        throw StoreError(ErrorNumber::DatabaseNotFound, pathOf(s, u"os"_s));
    const Alone alone(s);
    if (!alone)
        throw OpeningFailure{ErrorNumber::Locked, s(text::CloseTerminalsToUpdate)};
    makeFile(s, u"os"_s);
}

void completeDatabases(Sesion &s)
{
    std::vector<std::pair<std::string, std::vector<DeclaredTable>>> lacking;
    for (const QString &base : clinicDatabases()) {
        auto tables = readSchema(base);
        if (!isComplete(*s.motor, base.toStdString(), tables))
            lacking.emplace_back(base.toStdString(), std::move(tables));
    }
    if (lacking.empty())
        return;
    const Alone alone(s);
    if (!alone)
        throw OpeningFailure{ErrorNumber::Locked, s(text::CloseTerminalsToUpdate)};
    s.progress.tellStage(s(text::BringingUpToDate));
    copyDatabases(s, s.dataFolder + u"kelvara.copias/"_s
                         + s.reloj.now().toString(u"yyyy-MM-dd-HHmmss"_s));
    Lote batch(*s.motor);
    for (const auto &[base, tables] : lacking)
        complete(*s.motor, base, tables);
    batch.commit();
}

void openAll(Sesion &s)
{
    for (const char *base : {"morvane", "clientes", "finanzas"})
        s.motor->open(base);
    checkVersion(s);
    makeMembersFile(s);
    s.motor->open("os");
    completeDatabases(s);
    makeScratchFile(s);
    s.motor->openInMemory("rep97");
    createTables(*s.motor, "rep97", readSchema(u"rep97"_s));

    for (const auto &[base, name] :
         {std::pair(&s.morvane, "morvane"), std::pair(&s.clientes, "clientes"),
          std::pair(&s.finanzas, "finanzas"), std::pair(&s.os, "os"), std::pair(&s.rep97, "rep97")})
        *base = std::make_unique<Base>(*s.motor, name, s.reloj);
    openLists(s);
    // Fail now rather than later if the data cannot be written; the change is rolled back.
    Lote test(s);
    s.morvane->Execute("update configuracion set Ver = Ver");
}

void closeDatabases(Sesion &s)
{
    s.lists = {};
    s.configuracion = {};
    for (auto *base : {&s.morvane, &s.clientes, &s.finanzas, &s.os, &s.rep97})
        base->reset();
    if (s.motor)
        s.motor->closeAll();
}

void makeEngine(Sesion &s)
{
    s.motor = s.createEngine(s.dataFolder);
    s.motor->setPatience(StartPatienceMs);
    s.motor->whileWaiting([&s](int ms) { tellWaiting(s, ms); });
}

void repairFolder(Sesion &s)
{
    refuseForeignFiles(s);
    const Alone alone(s);
    if (!alone)
        throw OpeningFailure{ErrorNumber::Locked, s(text::CloseOnTerminals)};
    s.progress.tellStage(s(text::CheckingFiles));
    if (const QString done = repairDatabases(s); !done.isEmpty())
        s.dialogos.Mensaje(done);
}

} // namespace

QString store::errorText(const Sesion &s, const StoreError &e)
{
    const auto ofColumn = [&](int text) {
        const QString column = columnOf(e);
        return column.isEmpty() ? e.description : s(text).arg(column);
    };
    switch (e.number) {
    case ErrorNumber::FullDisk:
        return s(text::DiskIsFull);
    case ErrorNumber::ReadOnly:
        return s(text::FolderIsReadOnly);
    case ErrorNumber::Locked:
        return s(text::HeldByAnotherTerminal);
    case ErrorNumber::PathOrDisk:
        return s(text::FolderUnreachable) + u'\n' + e.description;
    case ErrorNumber::DatabaseDamaged:
        return s(text::DamageIsRepairedAtStart) + u'\n' + e.description;
    case ErrorNumber::Overflow:
        return ofColumn(text::ValueIsOutOfRange);
    case ErrorNumber::TextTooLong:
        return ofColumn(text::TextIsTooLong);
    case ErrorNumber::TypeMismatch:
        return ofColumn(text::ValueIsOfAnotherKind);
    case ErrorNumber::NullNotTaken:
        return ofColumn(text::ValueIsNeeded);
    case ErrorNumber::Conflict:
        return ofColumn(text::ChangedMeanwhile);
    case ErrorNumber::OutOfMemory:
        return s(text::SelectionTooLarge);
    default:
        return e.description;
    }
}

std::optional<OpeningFailure> store::openStore(Sesion &s)
{
    closeStore(s);
    makeEngine(s);
    try {
        requireFiles(s);
        enter(s);
        if (isDamageNoted(s))
            repairFolder(s);
        try {
            openAll(s);
        } catch (const StoreError &e) {
            if (e.number != ErrorNumber::DatabaseDamaged)
                throw;
            closeDatabases(s);
            repairFolder(s);
            openAll(s);
        }
        return std::nullopt;
    } catch (const OpeningFailure &failure) {
        closeStore(s);
        return failure;
    } catch (const StoreError &e) {
        closeStore(s);
        return OpeningFailure{e.number, textOf(s, e)};
    }
}

void store::closeStore(Sesion &s)
{
    closeDatabases(s);
    s.presence.reset();
    s.motor.reset();
}

void store::readClinic(Sesion &s)
{
    const Recordset r = s.morvane->OpenSnapshot("select * from veterinaria");
    s.clinic = r.EOF_() ? ClinicData{}
                        : ClinicData{r["nom"].toText(), r["pro"].toText(), r["dir"].toText(),
                                     r["tel"].toText()};
}
