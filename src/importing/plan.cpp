#include "importing/plan.h"

#include "columns/configuracion.h"
#include "store/lookups.h"
#include "store/opening.h"
#include "store/settings_row.h"
#include "texts/clients.h"
#include "texts/import.h"
#include "texts/texts.h"

#include <QLocale>
#include <QRegularExpression>
#include <algorithm>

using namespace clients;
using namespace importing;
using namespace Qt::StringLiterals;

namespace importing
{

namespace
{

constexpr int RowsPerProgress = 2000;

template <typename T>
bool contradicts(const T &a, const T &b, const T &unknown)
{
    return a != unknown && b != unknown && a != b;
}

} // namespace

QString fileFailure(const Sesion &s, const DelimitedFile &file)
{
    switch (file.failure()) {
    case DelimitedFile::Failure::NoSeLee:
        return s(text::FileUnreadable).arg(file.systemError());
    case DelimitedFile::Failure::NotIsText:
        return s(text::FileIsNotText);
    case DelimitedFile::Failure::OpenQuotes:
        return s(text::QuotesNotClosed).arg(file.Line());
    case DelimitedFile::Failure::None:
        break;
    }
    return {};
}

bool Plan::fail(ImportReport::Missing missing, const QString &text)
{
    report.missing = missing;
    report.failure = text;
    return false;
}

bool Plan::make(const KeepGoing &keepGoing)
{
    if (!prepare() || !locateOrder(keepGoing) || !read(keepGoing))
        return false;
    match();
    warnWelcome();
    return true;
}

// Warns that the daily run will greet all these new clients by mail. Nobody can be asked here.
void Plan::warnWelcome()
{
    if (s.configuracion[setting::AutNuevoCliente].toInt() != 1)
        return;
    for (size_t n = 0; n < rows.size(); ++n)
        if (report.lines[n].outcome == Outcome::New && addsClient(rows[n])
            && !owners[size_t(rows[n].client)].f.email.isEmpty()) {
            report.notes << s(text::WelcomeMailNote)
                                .arg(s(text::SettingsButton), s(text::Automation),
                                     s(text::NewClientQuestion), s(text::Nothing));
            return;
        }
}

// Checks that the columns suffice, and loads the lists that rows refer to.
bool Plan::prepare()
{
    using Missing = ImportReport::Missing;
    const bool withClient = m_reader.has(Datum::Client) || m_reader.has(Datum::Surname)
                            || m_reader.has(Datum::IdClient);
    const bool withPatient = std::any_of(o.columns.begin(), o.columns.end(), isOfPatient);
    const QString owner = m_reader.defaultOwner(report.notes);
    if (!withClient && !withPatient)
        return fail(Missing::ColumnCount, s(text::NoNameColumns));
    if (!withClient && owner.isEmpty())
        return fail(Missing::Owner, s(text::OwnersAreMissing));
    if (isNumeric(owner))
        return fail(Missing::Owner, s(text::NumberIsNoName).arg(owner));
    if (withPatient && !m_reader.has(Datum::Patient))
        report.notes << s(text::NoPatientNamesNote);
    if (!withClient && std::any_of(o.columns.begin(), o.columns.end(), [](Datum d) {
            return d != Datum::Nothing && !isOfPatient(d);
        }))
        report.notes << s(text::ClientsUnusedNote);

    regions.load(s, nullptr);
    subregions.load(s, &regions);
    allSpecies.load(s, nullptr);
    breeds.load(s, &allSpecies);
    coats.load(s, nullptr);
    return true;
}

bool Plan::goesOn(const DelimitedFile &file, const KeepGoing &keepGoing)
{
    s.progress.tellBar(int(file.hasBeenRead() / 1024), int(file.extent() / 1024) + 1);
    report.interrupted = keepGoing && !keepGoing();
    return !report.interrupted;
}

// Searches all birth dates for one that can be read in only one way.
bool Plan::locateOrder(const KeepGoing &keepGoing)
{
    using Missing = ImportReport::Missing;
    if (o.order || !m_reader.has(Datum::Birth)) {
        m_reader.setOrder(o.order.value_or(DateOrder::DayMonth));
        return true;
    }
    DelimitedFile file(o.file);
    QStringList fields;
    file.read(fields);
    bool dayMonth = false, monthDay = false, ambiguous = false;
    for (int n = 0; file.read(fields); ++n) {
        if (n % RowsPerProgress == 0 && !goesOn(file, keepGoing))
            return false;
        switch (orderThatTests(fields.value(m_reader.columnOf(Datum::Birth)))) {
        case OrderTest::DayMonth:
            dayMonth = true;
            break;
        case OrderTest::MonthDay:
            monthDay = true;
            break;
        case OrderTest::Ambiguous:
            ambiguous = true;
            break;
        case OrderTest::None:
            break;
        }
    }
    if (ambiguous && dayMonth == monthDay)
        return fail(Missing::Order, s(text::DateOrderIsMissing));
    m_reader.setOrder(monthDay && !dayMonth ? DateOrder::MonthDay : DateOrder::DayMonth);
    return true;
}

bool Plan::read(const KeepGoing &keepGoing)
{
    using Missing = ImportReport::Missing;
    DelimitedFile file(o.file);
    QStringList fields;
    const bool any = file.read(fields);
    if (file.failure() != DelimitedFile::Failure::None)
        return fail(Missing::File, fileFailure(s, file));
    if (!any)
        return fail(Missing::File, s(text::FileIsEmpty));
    const qsizetype titles = fields.size();
    if (m_reader.has(Datum::Weight)) {
        const QString title = fields.value(m_reader.columnOf(Datum::Weight)).simplified();
        if (m_reader.isOtherUnit(title))
            report.notes << s(text::WeightUnitNote).arg(m_reader.ownUnit(), title);
    }
    for (int n = 0; file.read(fields); ++n) {
        if (n % RowsPerProgress == 0 && !goesOn(file, keepGoing)) {
            report.lines.clear();
            return false;
        }
        ReportLine line;
        line.line = file.Line();
        report.lines.push_back(line);
        rows.emplace_back();
        const bool surplus =
            std::any_of(fields.begin() + std::min(titles, fields.size()), fields.end(),
                        [](const QString &c) { return !c.trimmed().isEmpty(); });
        if (surplus) {
            report.lines.back().outcome = Outcome::Rejected;
            report.lines.back().text = s(text::TooManyFields).arg(fields.size()).arg(titles);
            continue;
        }
        place(m_reader.read(fields));
    }
    if (file.failure() != DelimitedFile::Failure::None)
        return fail(Missing::File, fileFailure(s, file));
    return true;
}

// The index of a name in a list; a new name is added at the end. -1 for no name or a full list.
int Plan::enter(PlannedList &list, const QString &nom, int parent, const QString &code)
{
    if (nom.isEmpty())
        return -1;
    const QString key = folded(nom);
    if (const auto i = list.byName.constFind(key); i != list.byName.constEnd())
        return *i;
    if (list.free <= 0) {
        m_notices << s(text::ListIsFull).arg(nom);
        return -1;
    }
    --list.free;
    const int place = int(list.entries.size());
    list.byName.insert(key, place);
    list.entries.push_back({0, nom, code, parent});
    return place;
}

int Plan::speciesOf(const QString &text)
{
    if (const auto i = allSpecies.byName.constFind(folded(text)); i != allSpecies.byName.constEnd())
        return *i;
    if (const int known = knownSpecies(text))
        if (const auto i = allSpecies.byId.constFind(known); i != allSpecies.byId.constEnd())
            return *i;
    return enter(allSpecies, text);
}

// A line that could be read, in its place among the owners and animals of the file.
void Plan::place(ReadLine read)
{
    m_notices = std::move(read.notices);
    ReportLine &line = report.lines.back();
    PlannedRow &row = rows.back();
    if (!read.client) {
        line.outcome = Outcome::Rejected;
        line.text = read.refused;
        line.client = read.writtenClient;
        line.patient = read.writtenPatient;
        return;
    }
    std::optional<PlannedPatient> patient;
    if (read.patient)
        patient = planned(*read.patient);
    const auto before = owners.size();
    row.client = clientOf(*read.client, read.clientNumber);
    row.opensClient = owners.size() > before;
    line.client = owners[size_t(row.client)].f.ayn;
    if (patient) {
        patient->client = row.client;
        const auto were = animals.size();
        row.patient = patientOf(std::move(*patient), read.patient->number, line.line);
        row.opensPatient = animals.size() > were;
        line.patient = animals[size_t(row.patient)].f.nom;
    }
    line.notice = !m_notices.isEmpty();
    line.text = m_notices.join(u"; "_s);
}

// The animal of a line with its entries of the lists, which are added where they are new.
PlannedPatient Plan::planned(const ReadPatient &read)
{
    PlannedPatient m;
    m.f = read.record;
    m.withSex = read.withSex;
    m.species = speciesOf(read.species);
    m.breed = enter(breeds, read.breed, m.species);
    if (m.species < 0 && m.breed >= 0)
        m.species = breeds.entries[size_t(m.breed)].parent;
    m.coat = enter(coats, read.coat);
    return m;
}

// Finds the owner of a row. Owners with a number in the file are identified by it, all others by
// name and contact. Two owners of the same name never share a telephone, e-mail or street address,
// so that each is recognised when the file is imported again.
int Plan::clientOf(const ClientRecord &f, const QString &number)
{
    if (const auto i = m_clientByNumber.constFind(number);
        !number.isEmpty() && i != m_clientByNumber.constEnd()) {
        if (const QString byNumber = s(text::OwnerByNumber).arg(number); f.ayn != byNumber)
            rename(*i, byNumber, f.ayn);
        complete(*i, f);
        return *i;
    }
    const ClientContact contact = contactOf(f);
    int which = m_directory.withSharedContact(contact);
    if (which < 0 && number.isEmpty())
        which = m_directory.either(contact);
    if (which >= 0) {
        complete(which, f);
    } else {
        which = int(owners.size());
        PlannedClient c;
        c.f = f;
        c.contact = contact;
        c.region = enter(regions, f.region, -1, f.codt2);
        c.subregion = enter(subregions, f.subregion, c.region, f.codp2);
        owners.push_back(std::move(c));
        m_directory.add(which, contact);
    }
    if (!number.isEmpty())
        m_clientByNumber.insert(number, which);
    return which;
}

// Names an owner whose earlier rows had no name.
void Plan::rename(int client, const QString &before, const QString &name)
{
    PlannedClient &c = owners[size_t(client)];
    if (c.existing || c.f.ayn != before)
        return;
    m_directory.remove(client, c.contact);
    c.f.ayn = name;
    c.contact = contactOf(c.f);
    m_directory.add(client, c.contact);
}

// Adds what a further row of an owner knows that the rows before it did not.
void Plan::complete(int client, ClientRecord f)
{
    PlannedClient &c = owners[size_t(client)];
    f.ayn = c.f.ayn;
    // A contact that belongs to another owner of this name stays with that one.
    ClientRecord contactOnly;
    contactOnly.ayn = f.ayn;
    for (QString ClientRecord::*field :
         {&ClientRecord::tel2, &ClientRecord::telc2, &ClientRecord::email, &ClientRecord::dir}) {
        if (!(c.f.*field).isEmpty() || (f.*field).isEmpty())
            continue;
        contactOnly.*field = f.*field;
        const ClientContact newOne = contactOf(contactOnly);
        (contactOnly.*field).clear();
        m_directory.remove(client, c.contact);
        const int who = m_directory.withSharedContact(newOne);
        if (who < 0)
            c.f.*field = f.*field;
        c.contact = contactOf(c.f);
        m_directory.add(client, c.contact);
    }
    for (QString ClientRecord::*field :
         {&ClientRecord::codp2, &ClientRecord::codt2, &ClientRecord::obs})
        if ((c.f.*field).isEmpty())
            c.f.*field = f.*field;
    if (c.region < 0)
        c.region = enter(regions, f.region, -1, f.codt2);
    if (c.subregion < 0)
        c.subregion = enter(subregions, f.subregion, c.region, f.codp2);
}

bool Plan::samePatient(const PlannedPatient &a, const PlannedPatient &b) const
{
    return !contradicts(a.species, b.species, -1) && !contradicts(a.breed, b.breed, -1)
           && !contradicts(a.coat, b.coat, -1) && !contradicts(a.f.fecn, b.f.fecn, QDate())
           && !contradicts(a.f.Chip, b.f.Chip, QString())
           && !(a.withSex && b.withSex && a.f.sex % 2 != b.f.sex % 2);
}

// Adds what a further row of an animal knows that the rows before it did not.
void Plan::complete(PlannedPatient &m, const PlannedPatient &other)
{
    for (int PlannedPatient::*place :
         {&PlannedPatient::species, &PlannedPatient::breed, &PlannedPatient::coat})
        if (m.*place < 0)
            m.*place = other.*place;
    for (QString PatientRecord::*field :
         {&PatientRecord::car, &PatientRecord::Chip, &PatientRecord::obs})
        if ((m.f.*field).isEmpty())
            m.f.*field = other.f.*field;
    if (!m.f.fecn.isValid())
        m.f.fecn = other.f.fecn;
    if (m.f.pes == 0)
        m.f.pes = other.f.pes;
    if (!m.withSex && other.withSex) {
        m.withSex = true;
        m.f.sex = other.f.sex % 2 + (m.f.sex >= 2 ? 2 : 0);
    }
    if (other.f.sex >= 2 && m.f.sex < 2)
        m.f.sex += 2;
    m.f.ped = m.f.ped || other.f.ped;
    m.f.dec = m.f.dec || other.f.dec;
}

// Finds the animal of a row among those of the same owner and name: by its number if it has one,
// else the first that the row does not contradict. A row with neither name nor number is always a
// new animal.
int Plan::patientOf(PlannedPatient m, const QString &number, int line)
{
    const int newOne = int(animals.size());
    const QString key = QString::number(m.client) + u'\n' + folded(m.f.nom);
    if (!number.isEmpty()) {
        const auto i = m_patientByNumber.constFind(key + u'\n' + number);
        if (i != m_patientByNumber.constEnd()) {
            complete(animals[size_t(*i)], m);
            return *i;
        }
        m_patientByNumber.insert(key + u'\n' + number, newOne);
        if (m.f.nom.isEmpty())
            m.f.nom = s.clientes
                          ->trimmed("mascotas", "nom",
                                    QuitarApostrofes(s(text::PatientByNumber).arg(number)))
                          .trimmed();
    } else if (m.f.nom.isEmpty()) {
        m.f.nom = s(text::PatientByNumber).arg(++owners[size_t(m.client)].unnamed);
    } else {
        std::vector<int> &namesakes = m_patientsByName[key];
        for (const int i : namesakes)
            if (samePatient(animals[size_t(i)], m)) {
                complete(animals[size_t(i)], m);
                return i;
            }
        namesakes.push_back(newOne);
    }
    m.line = line;
    animals.push_back(std::move(m));
    return newOne;
}

// Finds what the clinic has already, and where the identifiers run out. Each client or patient of
// the clinic matches only one owner or animal of the file, both in their order, so that everything
// is recognised when the file is imported again.
void Plan::match()
{
    matchClients();
    matchPatients();
    giveOutIds();
    count();
}

void Plan::matchClients()
{
    ClientsDirectory known;
    QHash<int, ClientContact> contact;
    Recordset c = s.clientes->OpenSnapshot(
        "select idc, ayn, dir, tel2, telc2, email from clientes order by idc");
    for (; !c.EOF_(); c.MoveNext()) {
        ClientRecord f;
        f.idc = c[0].toInt();
        f.ayn = c[1].toText();
        f.dir = c[2].toText();
        f.tel2 = c[3].toText();
        f.telc2 = c[4].toText();
        f.email = c[5].toText();
        const ClientContact d = contactOf(f);
        known.add(f.idc, d);
        contact.insert(f.idc, d);
    }
    for (PlannedClient &planned : owners) {
        int idc = known.withSharedContact(planned.contact);
        if (idc < 0)
            idc = known.either(planned.contact);
        if (idc < 0)
            continue;
        planned.existing = true;
        planned.f.idc = idc;
        known.remove(idc, contact[idc]);
    }
}

void Plan::matchPatients()
{
    QHash<QString, std::vector<KnownPatient>> known;
    const auto key = [](int idc, const QString &nom) {
        return QString::number(idc) + u'\n' + folded(nom);
    };
    Recordset p =
        s.clientes->OpenSnapshot("select idc, nom, esp, fecn, Chip from mascotas order by idm");
    for (; !p.EOF_(); p.MoveNext())
        known[key(p[0].toInt(), p[1].toText())].push_back(
            {p[2].toInt(), p[3].toDate(), p[4].toText(), false});
    for (PlannedPatient &m : animals) {
        const PlannedClient &owner = owners[size_t(m.client)];
        if (!owner.existing)
            continue;
        const auto namesakes = known.find(key(owner.f.idc, m.f.nom));
        if (namesakes == known.end())
            continue;
        // No patient can have a species that is still to be added.
        const int esp = m.species < 0                ? 0
                        : allSpecies.idAt(m.species) ? allSpecies.idAt(m.species)
                                                     : -1;
        const auto same = std::ranges::find_if(*namesakes, [&](const KnownPatient &candidate) {
            return !candidate.taken && !contradicts(esp, candidate.esp, 0)
                   && !contradicts(m.f.fecn, candidate.fecn, QDate())
                   && !contradicts(m.f.Chip, candidate.chip, QString());
        });
        if (same != namesakes->end())
            same->taken = m.existing = true;
    }
}

// What becomes of each line: new as long as identifiers last.
void Plan::giveOutIds()
{
    const auto left = [this](std::string_view counter) {
        return store::Highest16BitId - s.configuracion[counter].toInt();
    };
    int clientsLeft = left(setting::contadorclientes),
        patientsLeft = left(setting::contadormascotas);
    bool full = false;
    for (size_t n = 0; n < rows.size(); ++n) {
        const PlannedRow &row = rows[n];
        ReportLine &line = report.lines[n];
        if (line.outcome == Outcome::Rejected)
            continue;
        const bool client = addsClient(row), patient = addsPatient(row);
        PlannedPatient *m = row.patient < 0 ? nullptr : &animals[size_t(row.patient)];
        if (!client && !patient) {
            line.outcome = m && m->withoutPlace ? Outcome::WithoutPlace : Outcome::Existing;
            if (m && !row.opensPatient)
                line.text +=
                    (line.text.isEmpty() ? QString() : u"; "_s) + s(text::RepeatsLine).arg(m->line);
            continue;
        }
        // The first line that does not fit ends the import, so that there are no gaps and no animal
        // without its owner.
        full = full || (client && clientsLeft == 0) || (patient && patientsLeft == 0);
        if (full) {
            line.outcome = Outcome::WithoutPlace;
            if (m)
                m->withoutPlace = true;
        } else {
            clientsLeft -= client;
            patientsLeft -= patient;
        }
    }
}

bool Plan::addsClient(const PlannedRow &row) const
{
    return row.opensClient && !owners[size_t(row.client)].existing;
}

bool Plan::addsPatient(const PlannedRow &row) const
{
    return row.opensPatient && !animals[size_t(row.patient)].existing;
}

void Plan::count()
{
    ImportReport &i = report;
    i.newClients = i.existingClients = i.newPatients = i.existingPatients = 0;
    i.rejected = i.notices = i.withoutPlace = i.firstWithoutPlace = 0;
    for (size_t n = 0; n < rows.size(); ++n) {
        const PlannedRow &row = rows[n];
        const ReportLine &line = i.lines[n];
        if (line.outcome == Outcome::Rejected) {
            ++i.rejected;
            continue;
        }
        if (line.outcome == Outcome::WithoutPlace) {
            if (i.withoutPlace++ == 0)
                i.firstWithoutPlace = line.line;
            continue;
        }
        const bool client = addsClient(row), patient = addsPatient(row);
        i.notices += line.notice;
        i.newClients += client;
        i.newPatients += patient;
        i.existingClients += row.opensClient && !client;
        i.existingPatients += row.patient >= 0 && !patient;
    }
}

} // namespace importing
