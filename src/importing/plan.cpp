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
            && !clientes[size_t(rows[n].client)].f.email.isEmpty()) {
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
    m_column.fill(-1);
    for (int i = int(o.columns.size()) - 1; i >= 0; --i)
        m_column[size_t(o.columns[i])] = i;
    const bool withClient = has(Datum::Client) || has(Datum::Surname) || has(Datum::IdClient);
    const bool withPatient = std::any_of(o.columns.begin(), o.columns.end(), isOfPatient);
    m_owner = clean(o.owner, "clientes", "ayn");
    report.notes << m_notices;
    if (!withClient && !withPatient)
        return fail(Missing::ColumnCount, s(text::NoNameColumns));
    if (!withClient && m_owner.isEmpty())
        return fail(Missing::Owner, s(text::OwnersAreMissing));
    if (isNumeric(m_owner))
        return fail(Missing::Owner, s(text::NumberIsNoName).arg(m_owner));
    if (withPatient && !has(Datum::Patient))
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
    if (o.order || !has(Datum::Birth)) {
        m_order = o.order.value_or(DateOrder::DayMonth);
        return true;
    }
    DelimitedFile file(o.file);
    QStringList fields;
    file.read(fields);
    bool dayMonth = false, monthDay = false, ambiguous = false;
    for (int n = 0; file.read(fields); ++n) {
        if (n % RowsPerProgress == 0 && !goesOn(file, keepGoing))
            return false;
        switch (orderThatTests(fields.value(m_column[size_t(Datum::Birth)]))) {
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
    m_order = monthDay && !dayMonth ? DateOrder::MonthDay : DateOrder::DayMonth;
    return true;
}

bool Plan::read(const KeepGoing &keepGoing)
{
    using Missing = ImportReport::Missing;
    DelimitedFile file(o.file);
    QStringList fields;
    const bool hay = file.read(fields);
    if (file.failure() != DelimitedFile::Failure::None)
        return fail(Missing::File, fileFailure(s, file));
    if (!hay)
        return fail(Missing::File, s(text::FileIsEmpty));
    const qsizetype titles = fields.size();
    if (has(Datum::Weight)) {
        const QString title = fields.value(m_column[size_t(Datum::Weight)]).simplified();
        if (isOtherUnit(title))
            report.notes << s(text::WeightUnitNote).arg(ownUnit(), title);
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
        readRow(fields);
    }
    if (file.failure() != DelimitedFile::Failure::None)
        return fail(Missing::File, fileFailure(s, file));
    return true;
}

QString Plan::Field(Datum d) const
{
    const int column = m_column[size_t(d)];
    if (column < 0)
        return {};
    // "---", "???" and the like mean an empty field.
    static const QRegularExpression nothing(u"^[\\s?._*/\\\\–—-]+$"_s);
    const QString text = m_campos->value(column).trimmed();
    return nothing.match(text).hasMatch() ? QString() : text;
}

void Plan::warn(int text, const QString &value) { m_notices << s(text).arg(value); }

// Fits a one-line text into its column and warns about any change.
QString Plan::clean(const QString &text, std::string_view table, std::string_view column)
{
    QString t = text.simplified();
    if (t.isEmpty())
        return t;
    if (t.contains(u'\'')) {
        warn(text::ApostropheRemoved, t);
        t = QuitarApostrofes(t).simplified();
    }
    if (const QString isShort = s.clientes->trimmed(table, column, t).trimmed(); isShort != t) {
        warn(text::ValueCutShort, t);
        return isShort;
    }
    return t;
}

// Fits telephone numbers or e-mail addresses into their column: as many as fit completely, since
// part of a number is useless.
QString Plan::thoseThatFit(const QString &text, std::string_view column)
{
    QString t = text.simplified();
    if (t.contains(u'\'')) {
        warn(text::ApostropheRemoved, t);
        t = QuitarApostrofes(t);
    }
    const int width = s.clientes->widthOf("clientes", column);
    if (t.size() <= width)
        return t;
    warn(text::ValueCutShort, t);
    static const QRegularExpression parts(u"\\s*[,;/]\\s*"_s);
    QString together;
    for (const QString &part : t.split(parts, Qt::SkipEmptyParts)) {
        const QString mas = together.isEmpty() ? part : together + u", "_s + part;
        if (mas.size() <= width)
            together = mas;
    }
    return together;
}

// The index of a name in a list, appended if it is new; -1 for no name, or when the list is full.
int Plan::enter(PlannedList &list, const QString &text, int parent, const QString &code)
{
    const QString nom = clean(text, tableOf(list.list).table, "nom");
    if (nom.isEmpty())
        return -1;
    const QString key = folded(nom);
    if (const auto i = list.byName.constFind(key); i != list.byName.constEnd())
        return *i;
    if (list.free <= 0) {
        warn(text::ListIsFull, nom);
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

bool Plan::yesNo(Datum d)
{
    const QString text = Field(d);
    const auto value = readYesNo(text);
    if (!value && d == Datum::Deceased && readDate(text, m_order).isValid())
        return true; // it is the date of death
    if (!value)
        warn(text::NeitherYesNorNo, text);
    return value.value_or(false);
}

// The clinic's unit of weight.
QString Plan::ownUnit() const
{
    return s.configuracion[setting::KgLbs].toInt() == store::weightUnit::Libras ? u"lb"_s : u"kg"_s;
}

bool Plan::isOtherUnit(const QString &text) const
{
    const QString unit = writtenUnit(text);
    return !unit.isEmpty() && unit != ownUnit();
}

std::optional<ClientRecord> Plan::clientRecord(QString &reason)
{
    ClientRecord f;
    f.ayn = Field(Datum::Surname) + u' ' + Field(Datum::Client);
    const bool withoutName = f.ayn.trimmed().isEmpty();
    if (const QString number = Field(Datum::IdClient); withoutName && !number.isEmpty()) {
        f.ayn = s(text::OwnerByNumber).arg(number);
    } else if (withoutName) {
        if (m_owner.isEmpty()) {
            reason = s(text::ClientHasNoName);
            return std::nullopt;
        }
        f.ayn = m_owner; // nothing in the row is about this client
        return f;
    }
    f.ayn = clean(f.ayn, "clientes", "ayn");
    if (f.ayn.isEmpty() || isNumeric(f.ayn)) {
        reason = f.ayn.isEmpty() ? s(text::ClientHasNoName) : s(text::NumberIsNoName).arg(f.ayn);
        return std::nullopt;
    }
    f.dir = clean(Field(Datum::Address), "clientes", "dir");
    f.codp2 = Field(Datum::PostalCode).simplified();
    if (f.codp2.size() > s.clientes->widthOf("clientes", "codp2")) {
        warn(text::PostalCodeTooLong, f.codp2); // truncated it would be that of another place
        f.codp2.clear();
    }
    f.codp2 = clean(f.codp2, "clientes", "codp2");
    f.codt2 = clean(Field(Datum::AreaCode), "clientes", "codt2");
    f.tel2 = thoseThatFit(Field(Datum::Telephone), "tel2");
    f.telc2 = thoseThatFit(Field(Datum::Mobile), "telc2");
    f.email = thoseThatFit(Field(Datum::Email), "email");
    f.obs = QuitarApostrofes(Field(Datum::ClientNotes));
    f.region = Field(Datum::Region);
    f.subregion = Field(Datum::Subregion);
    for (QString *place : {&f.region, &f.subregion})
        if (isNumeric(*place)) {
            warn(text::RegionIsNumber, *place);
            place->clear();
        }
    return f;
}

std::optional<PlannedPatient> Plan::patientRecord(QString &reason, bool &hay)
{
    hay = false;
    for (int d = int(Datum::Patient); d < DatumCount; ++d)
        hay = hay || !Field(Datum(d)).isEmpty();
    if (!hay)
        return std::nullopt;

    PlannedPatient m;
    m.f.nom = clean(Field(Datum::Patient), "mascotas", "nom");
    if (has(Datum::Patient) && (m.f.nom.isEmpty() || isNumeric(m.f.nom))) {
        reason =
            m.f.nom.isEmpty() ? s(text::PatientHasNoName) : s(text::NumberIsNoName).arg(m.f.nom);
        return std::nullopt;
    }
    m.species = speciesOf(Field(Datum::Species));
    m.breed = enter(breeds, Field(Datum::Breed), m.species);
    if (m.species < 0 && m.breed >= 0)
        m.species = breeds.entries[size_t(m.breed)].parent;
    m.coat = enter(coats, Field(Datum::Coat));
    m.f.car = clean(Field(Datum::Marks), "mascotas", "car");
    m.f.Chip = clean(Field(Datum::Chip), "mascotas", "Chip");
    m.f.obs = QuitarApostrofes(Field(Datum::PatientNotes));
    m.f.ped = yesNo(Datum::Pedigree);
    m.f.dec = yesNo(Datum::Deceased);

    if (const QString text = Field(Datum::Birth); !text.isEmpty()) {
        const QDate dia = readDate(text, m_order);
        if (dia.isValid() && dia.year() >= 1900 && dia <= s.reloj.hoy)
            m.f.fecn = dia;
        else
            warn(text::BirthDateUnreadable, text);
    }
    if (const QString text = Field(Datum::Weight); !text.isEmpty()) {
        const auto peso = readWeight(text);
        if (!peso)
            warn(text::WeightUnreadable, text);
        else if (isOtherUnit(text))
            m_notices << s(text::WeightUnitNote).arg(ownUnit(), text);
        m.f.pes = peso.value_or(0);
    }
    if (const QString text = Field(Datum::Sex); !text.isEmpty()) {
        const auto sex = readSex(text);
        if (!sex)
            warn(text::SexUnreadable, text);
        m.withSex = sex.has_value();
        m.f.sex = sex.value_or(0);
    }
    if (yesNo(Datum::Neutered) && m.f.sex < 2)
        m.f.sex += 2;
    return m;
}

void Plan::readRow(const QStringList &fields)
{
    m_campos = &fields;
    m_notices.clear();
    ReportLine &line = report.lines.back();
    PlannedRow &row = rows.back();

    QString reason;
    bool hasPatient = false;
    auto patient = patientRecord(reason, hasPatient);
    std::optional<ClientRecord> client;
    if (reason.isEmpty())
        client = clientRecord(reason);
    if (!reason.isEmpty() || !client) {
        line.outcome = Outcome::Rejected;
        line.text = reason;
        line.client = (Field(Datum::Surname) + u' ' + Field(Datum::Client)).trimmed();
        line.patient = Field(Datum::Patient);
        return;
    }
    const auto before = clientes.size();
    row.client = clientOf(*client, Field(Datum::IdClient));
    row.opensClient = clientes.size() > before;
    line.client = clientes[size_t(row.client)].f.ayn;
    if (patient) {
        patient->client = row.client;
        const auto were = mascotas.size();
        row.patient = patientOf(std::move(*patient), line.line);
        row.opensPatient = mascotas.size() > were;
        line.patient = mascotas[size_t(row.patient)].f.nom;
    }
    line.notice = !m_notices.isEmpty();
    line.text = m_notices.join(u"; "_s);
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
        which = int(clientes.size());
        PlannedClient c;
        c.f = f;
        c.contact = contact;
        c.region = enter(regions, f.region, -1, f.codt2);
        c.subregion = enter(subregions, f.subregion, c.region, f.codp2);
        clientes.push_back(std::move(c));
        m_directory.add(which, contact);
    }
    if (!number.isEmpty())
        m_clientByNumber.insert(number, which);
    return which;
}

// Names an owner whose earlier rows had no name.
void Plan::rename(int client, const QString &before, const QString &name)
{
    PlannedClient &c = clientes[size_t(client)];
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
    PlannedClient &c = clientes[size_t(client)];
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
int Plan::patientOf(PlannedPatient m, int line)
{
    const int newOne = int(mascotas.size());
    const QString key = QString::number(m.client) + u'\n' + folded(m.f.nom);
    if (const QString number = Field(Datum::IdPatient); !number.isEmpty()) {
        const auto i = m_patientByNumber.constFind(key + u'\n' + number);
        if (i != m_patientByNumber.constEnd()) {
            complete(mascotas[size_t(*i)], m);
            return *i;
        }
        m_patientByNumber.insert(key + u'\n' + number, newOne);
        if (m.f.nom.isEmpty())
            m.f.nom = clean(s(text::PatientByNumber).arg(number), "mascotas", "nom");
    } else if (m.f.nom.isEmpty()) {
        m.f.nom = s(text::PatientByNumber).arg(++clientes[size_t(m.client)].unnamed);
    } else {
        std::vector<int> &namesakes = m_patientsByName[key];
        for (const int i : namesakes)
            if (samePatient(mascotas[size_t(i)], m)) {
                complete(mascotas[size_t(i)], m);
                return i;
            }
        namesakes.push_back(newOne);
    }
    m.line = line;
    mascotas.push_back(std::move(m));
    return newOne;
}

// Finds what the clinic has already, and where the identifiers run out. Each client or patient of
// the clinic matches only one owner or animal of the file, both in their order, so that everything
// is recognised when the file is imported again.
void Plan::match()
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
        ClientContact d = contactOf(f);
        known.add(f.idc, d);
        contact.insert(f.idc, std::move(d));
    }
    for (PlannedClient &planned : clientes) {
        int idc = known.withSharedContact(planned.contact);
        if (idc < 0)
            idc = known.either(planned.contact);
        if (idc < 0)
            continue;
        planned.existing = true;
        planned.f.idc = idc;
        known.remove(idc, contact[idc]);
    }

    QHash<QString, std::vector<KnownPatient>> patients;
    const auto key = [](int idc, const QString &nom) {
        return QString::number(idc) + u'\n' + folded(nom);
    };
    Recordset p =
        s.clientes->OpenSnapshot("select idc, nom, esp, fecn, Chip from mascotas order by idm");
    for (; !p.EOF_(); p.MoveNext())
        patients[key(p[0].toInt(), p[1].toText())].push_back(
            {p[2].toInt(), p[3].toDate(), p[4].toText(), false});
    for (PlannedPatient &m : mascotas) {
        const PlannedClient &owner = clientes[size_t(m.client)];
        if (!owner.existing)
            continue;
        const auto i = patients.find(key(owner.f.idc, m.f.nom));
        if (i == patients.end())
            continue;
        // No patient can have a species that is still to be added.
        const int esp = m.species < 0              ? 0
                        : allSpecies.Id(m.species) ? allSpecies.Id(m.species)
                                                   : -1;
        for (KnownPatient &candidate : *i) {
            if (candidate.taken || contradicts(esp, candidate.esp, 0)
                || contradicts(m.f.fecn, candidate.fecn, QDate())
                || contradicts(m.f.Chip, candidate.chip, QString()))
                continue;
            candidate.taken = m.existing = true;
            break;
        }
    }

    const auto free = [this](std::string_view counter) {
        return store::Highest16BitId - s.configuracion[counter].toInt();
    };
    int freeClients = free(setting::contadorclientes),
        freePatients = free(setting::contadormascotas);
    bool full = false;
    for (size_t n = 0; n < rows.size(); ++n) {
        const PlannedRow &row = rows[n];
        ReportLine &line = report.lines[n];
        if (line.outcome == Outcome::Rejected)
            continue;
        const bool client = addsClient(row), patient = addsPatient(row);
        PlannedPatient *m = row.patient < 0 ? nullptr : &mascotas[size_t(row.patient)];
        if (!client && !patient) {
            line.outcome = m && m->withoutPlace ? Outcome::WithoutPlace : Outcome::Existing;
            if (m && !row.opensPatient)
                line.text +=
                    (line.text.isEmpty() ? QString() : u"; "_s) + s(text::RepeatsLine).arg(m->line);
            continue;
        }
        // The first line that does not fit ends the import, so that there are no gaps and no animal
        // without its owner.
        full = full || (client && freeClients == 0) || (patient && freePatients == 0);
        if (full) {
            line.outcome = Outcome::WithoutPlace;
            if (m)
                m->withoutPlace = true;
        } else {
            freeClients -= client;
            freePatients -= patient;
        }
    }
    count();
}

bool Plan::addsClient(const PlannedRow &row) const
{
    return row.opensClient && !clientes[size_t(row.client)].existing;
}

bool Plan::addsPatient(const PlannedRow &row) const
{
    return row.opensPatient && !mascotas[size_t(row.patient)].existing;
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
