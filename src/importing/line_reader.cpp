#include "importing/line_reader.h"

#include "clients/reference_lists.h"
#include "columns/configuracion.h"
#include "store/lookups.h"
#include "store/settings_row.h"
#include "texts/clients.h"
#include "texts/import.h"
#include "texts/texts.h"

#include <QRegularExpression>

using namespace clients;
using namespace importing;
using namespace Qt::StringLiterals;

LineReader::LineReader(Sesion &s, const ImportOptions &o) : m_s(s)
{
    m_column.fill(-1);
    for (int i = int(o.columns.size()) - 1; i >= 0; --i)
        m_column[size_t(o.columns[i])] = i;
    m_owner = o.owner;
}

QString LineReader::defaultOwner(QStringList &notices)
{
    m_notices.clear();
    m_owner = clean(m_owner, "clientes", "ayn");
    notices << m_notices;
    return m_owner;
}

ReadLine LineReader::read(const QStringList &fields)
{
    m_fields = &fields;
    m_notices.clear();
    ReadLine line;
    line.writtenClient = (field(Datum::Surname) + u' ' + field(Datum::Client)).trimmed();
    line.writtenPatient = field(Datum::Patient);
    line.clientNumber = field(Datum::IdClient);
    if (!readPatient(line) || !readClient(line)) {
        line.patient.reset();
        line.client.reset();
    }
    line.notices = std::exchange(m_notices, {});
    return line;
}

QString LineReader::field(Datum d) const
{
    const int column = columnOf(d);
    if (column < 0)
        return {};
    // "---", "???" and the like stand for nothing.
    static const QRegularExpression nothing(u"^[\\s?._*/\\\\–—-]+$"_s);
    const QString text = m_fields->value(column).trimmed();
    return nothing.match(text).hasMatch() ? QString() : text;
}

void LineReader::warn(int text, const QString &value) { m_notices << m_s(text).arg(value); }

// A text of one line as its column takes it; says what was changed.
QString LineReader::clean(const QString &text, std::string_view table, std::string_view column)
{
    QString t = text.simplified();
    if (t.isEmpty())
        return t;
    if (t.contains(u'\'')) {
        warn(text::ApostropheRemoved, t);
        t = QuitarApostrofes(t).simplified();
    }
    const QString fitting = m_s.clientes->trimmed(table, column, t).trimmed();
    if (fitting != t)
        warn(text::ValueCutShort, t);
    return fitting;
}

// A telephone or an address for mail as its column takes it. Of several, as many as fit whole: a
// part of a number reaches nobody.
QString LineReader::allThatFit(const QString &text, std::string_view column)
{
    QString t = text.simplified();
    if (t.contains(u'\'')) {
        warn(text::ApostropheRemoved, t);
        t = QuitarApostrofes(t);
    }
    const int width = m_s.clientes->widthOf("clientes", column);
    if (t.size() <= width)
        return t;
    warn(text::ValueCutShort, t);
    static const QRegularExpression separators(u"\\s*[,;/]\\s*"_s);
    QString together;
    for (const QString &part : t.split(separators, Qt::SkipEmptyParts)) {
        const QString longer = together.isEmpty() ? part : together + u", "_s + part;
        if (longer.size() <= width)
            together = longer;
    }
    return together;
}

bool LineReader::yesNo(Datum d)
{
    const QString text = field(d);
    const auto value = readYesNo(text);
    if (!value && d == Datum::Deceased && readDate(text, m_order).isValid())
        return true; // the day of its death
    if (!value)
        warn(text::NeitherYesNorNo, text);
    return value.value_or(false);
}

QString LineReader::ownUnit() const
{
    const int unit = m_s.configuracion[setting::KgLbs].toInt();
    return unit == store::weightUnit::Libras ? u"lb"_s : u"kg"_s;
}

bool LineReader::isOtherUnit(const QString &text) const
{
    const QString unit = writtenUnit(text);
    return !unit.isEmpty() && unit != ownUnit();
}

// @return false when the line is refused for its owner
bool LineReader::readClient(ReadLine &line)
{
    ClientRecord f;
    f.ayn = field(Datum::Surname) + u' ' + field(Datum::Client);
    const bool withoutName = f.ayn.trimmed().isEmpty();
    if (withoutName && !line.clientNumber.isEmpty()) {
        f.ayn = m_s(text::OwnerByNumber).arg(line.clientNumber);
    } else if (withoutName) {
        if (m_owner.isEmpty()) {
            line.refused = m_s(text::ClientHasNoName);
            return false;
        }
        f.ayn = m_owner; // nothing else in the line tells of this client
        line.client = f;
        return true;
    }
    f.ayn = clean(f.ayn, "clientes", "ayn");
    if (f.ayn.isEmpty() || isNumeric(f.ayn)) {
        line.refused =
            f.ayn.isEmpty() ? m_s(text::ClientHasNoName) : m_s(text::NumberIsNoName).arg(f.ayn);
        return false;
    }
    f.dir = clean(field(Datum::Address), "clientes", "dir");
    f.codp2 = field(Datum::PostalCode).simplified();
    if (f.codp2.size() > m_s.clientes->widthOf("clientes", "codp2")) {
        warn(text::PostalCodeTooLong, f.codp2); // cut, it would be another place's
        f.codp2.clear();
    }
    f.codp2 = clean(f.codp2, "clientes", "codp2");
    f.codt2 = clean(field(Datum::AreaCode), "clientes", "codt2");
    f.tel2 = allThatFit(field(Datum::Telephone), "tel2");
    f.telc2 = allThatFit(field(Datum::Mobile), "telc2");
    f.email = allThatFit(field(Datum::Email), "email");
    f.obs = QuitarApostrofes(field(Datum::ClientNotes));
    f.region = field(Datum::Region);
    f.subregion = field(Datum::Subregion);
    for (QString *place : {&f.region, &f.subregion})
        if (isNumeric(*place)) {
            warn(text::RegionIsNumber, *place);
            place->clear();
        }
    f.region = clean(f.region, tableOf(List::Region).table, "nom");
    f.subregion = clean(f.subregion, tableOf(List::Subregion).table, "nom");
    line.client = f;
    return true;
}

// @return false when the line is refused for its animal
bool LineReader::readPatient(ReadLine &line)
{
    bool any = false;
    for (int d = int(Datum::Patient); d < DatumCount; ++d)
        any = any || !field(Datum(d)).isEmpty();
    if (!any)
        return true;

    ReadPatient m;
    QString &nom = m.record.nom;
    nom = clean(field(Datum::Patient), "mascotas", "nom");
    if (has(Datum::Patient) && (nom.isEmpty() || isNumeric(nom))) {
        line.refused =
            nom.isEmpty() ? m_s(text::PatientHasNoName) : m_s(text::NumberIsNoName).arg(nom);
        return false;
    }
    m.number = field(Datum::IdPatient);
    m.species = clean(field(Datum::Species), tableOf(List::Species).table, "nom");
    m.breed = clean(field(Datum::Breed), tableOf(List::Breed).table, "nom");
    m.coat = clean(field(Datum::Coat), tableOf(List::Coat).table, "nom");
    m.record.car = clean(field(Datum::Marks), "mascotas", "car");
    m.record.Chip = clean(field(Datum::Chip), "mascotas", "Chip");
    m.record.obs = QuitarApostrofes(field(Datum::PatientNotes));
    m.record.ped = yesNo(Datum::Pedigree);
    m.record.dec = yesNo(Datum::Deceased);
    readBody(m);
    line.patient = std::move(m);
    return true;
}

// Age, weight and sex.
void LineReader::readBody(ReadPatient &m)
{
    if (const QString text = field(Datum::Birth); !text.isEmpty()) {
        const QDate day = readDate(text, m_order);
        if (day.isValid() && day.year() >= 1900 && day <= m_s.reloj.hoy)
            m.record.fecn = day;
        else
            warn(text::BirthDateUnreadable, text);
    }
    if (const QString text = field(Datum::Weight); !text.isEmpty()) {
        const auto weight = readWeight(text);
        if (!weight)
            warn(text::WeightUnreadable, text);
        else if (isOtherUnit(text))
            m_notices << m_s(text::WeightUnitNote).arg(ownUnit(), text);
        m.record.pes = weight.value_or(0);
    }
    if (const QString text = field(Datum::Sex); !text.isEmpty()) {
        const auto sex = readSex(text);
        if (!sex)
            warn(text::SexUnreadable, text);
        m.withSex = sex.has_value();
        m.record.sex = sex.value_or(0);
    }
    if (yesNo(Datum::Neutered) && m.record.sex < 2)
        m.record.sex += 2;
}
