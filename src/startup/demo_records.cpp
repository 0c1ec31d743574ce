// The demonstration clinic's doses, food, consultations, studies, kennels and agenda.

#include "startup/demo_data.h"

#include "agenda/tasks.h"

#include <algorithm>
#include <map>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

constexpr int Food = 1;
constexpr int Vaccines = 3;
constexpr int Antiparasitics = 4;
constexpr int Contraceptives = 5;

void addDose(Demo &d, int idm, int ida, int cat, int dos, QDate col, QDate rep, int si)
{
    d.clientes.Execute("insert into ArtPlan (idm, ida, dos, col, rep, si, IdCat, Ana)"
                       " values (?, ?, ?, ?, ?, ?, ?, 0)",
                       idm, ida, dos, col, rep, si, cat);
}

/// Doses of one product, @p interval days apart: @p given that were given, then an open one on
/// @p next.
void history(Demo &d, const DemoPatient &m, int ida, int cat, int interval, int given, QDate next)
{
    for (int i = given; i > 0; --i) {
        const QDate dia = next.addDays(-qint64(interval) * i);
        addDose(d, m.idm, ida, cat, given - i + 1, dia, dia, 1);
    }
    addDose(d, m.idm, ida, cat, given + 1, {}, next, 0);
}

/// Picks a patient that is not in use yet, a living adult dog or cat, and marks it as used.
DemoPatient &setAside(Demo &d, int ser)
{
    const auto free = [&](const DemoPatient &m) {
        return !m.setAside && !m.dec && m.esp <= 2 && m.ser == ser && m.fecn.isValid()
               && m.fecn.daysTo(d.hoy) > 850;
    };
    // Each search starts at a random place, so that the patients are not all neighbours.
    const auto from = d.animals.begin() + d.chance.between(0, int(d.animals.size()) - 1);
    auto i = std::find_if(from, d.animals.end(), free);
    if (i == d.animals.end())
        i = std::find_if(d.animals.begin(), d.animals.end(), free);
    i->setAside = true;
    return *i;
}

/// Doses for the next start to find: the number of patients, who gives the dose, when it is due
/// (days from today) and how many older doses of the category are still open.
struct DoseCase {
    int patients;
    int ser;
    int expires;
    int late;
};

constexpr DoseCase Cases[] = {
    {3, 0, -1, 0}, {2, 0, -3, 0},               // the first one missed
    {3, 0, -2, 1},                              // the second one missed
    {3, 1, -2, 0},                              // missed, given by the clinic
    {5, 0, 0, 0},                               // today
    {2, 0, 0, 1},                               // today, after a missed one
    {1, 0, 0, 2},                               // today, after two missed ones
    {3, 1, 0, 0},  {1, 1, -1, 0},               // given by the clinic
    {2, 0, 1, 0},  {2, 0, 2, 0},  {3, 0, 3, 0}, // reminders due
};

void boardDose(Demo &d)
{
    for (const DoseCase &sample : Cases)
        for (int n = 0; n < sample.patients; ++n) {
            const DemoPatient &m = setAside(d, sample.ser);
            for (int a = 0; a < sample.late; ++a)
                history(d, m, 1 + a, Vaccines, 365, 1, d.hoy.addDays(-45 - 30 * a));
            history(d, m, 4, Vaccines, 365, d.chance.between(1, 2), d.hoy.addDays(sample.expires));
            history(d, m, 12, Antiparasitics, 90, 3, d.hoy.addDays(d.chance.between(12, 80)));
        }
}

/// Attaches a plan on a day: one dose for each product of its chain; those due in the past are
/// given.
void Plan(Demo &d, const DemoPatient &m, int idr, QDate from)
{
    const Recordset r = d.morvane.OpenSnapshot("select * from Regimen where Idr = ?", idr);
    const int cat = r["Tip"].toInt();
    const QStringList chain = r["Reg"].toText().split(u',', Qt::SkipEmptyParts);
    std::map<int, int> doses;
    QDate dia = from;
    for (qsizetype i = 0; i + 1 < chain.size(); i += 2) {
        const int ida = chain[i].toInt();
        const bool given = dia < d.hoy;
        addDose(d, m.idm, ida, cat, ++doses[ida], given ? dia : QDate(), dia, given ? 3 : 2);
        dia = dia.addDays(chain[i + 1].toInt());
    }
    d.clientes.Execute("insert into PlanMascota (idm, idplan, idcat) values (?, ?, ?)", m.idm, idr,
                       cat);
}

void allDoses(Demo &d)
{
    Chance &chance = d.chance;
    for (const DemoPatient &m : d.animals) {
        if (m.setAside || m.esp > 3)
            continue;
        const qint64 age = m.fecn.isValid() ? m.fecn.daysTo(d.hoy) : 1500;
        if (m.esp < 3 && age < 200) {
            Plan(d, m, m.esp == 1 ? 16 : 17, m.fecn.addDays(60));
            Plan(d, m, m.esp == 1 ? 18 : 19, m.fecn.addDays(45));
            continue;
        }
        const int ida = m.esp == 1 ? 2 : m.esp == 2 ? 3 : 9;
        const int years = int(std::clamp<qint64>(age / 365, 1, 4));
        if (chance.isDue(10)) // given once, no further dose planned
            addDose(d, m.idm, ida, Vaccines, 1, d.hoy.addDays(-chance.between(20, 120)), {}, 4);
        else if (chance.isDue(10) && years > 2) // long overdue
            history(d, m, ida, Vaccines, 365, years - 1, d.hoy.addDays(-chance.between(20, 300)));
        else if (age < 365)
            history(d, m, ida, Vaccines, 365, 1, d.hoy.addDays(chance.between(230, 350)));
        else
            history(d, m, ida, Vaccines, 365, years, d.hoy.addDays(chance.between(15, 350)));
        if (m.esp < 3)
            history(d, m, 12, Antiparasitics, 90, chance.between(1, age > 600 ? 5 : 2),
                    d.hoy.addDays(age > 600 && chance.isDue(8) ? -chance.between(15, 60)
                                                               : chance.between(10, 88)));
        if (m.esp < 3 && m.sex == 1 && age > 400 && chance.isDue(12))
            history(d, m, 35, Contraceptives, 150, 2, d.hoy.addDays(chance.between(10, 140)));
    }
}

void consumption(Demo &d)
{
    Chance &chance = d.chance;
    const auto log = [&](const DemoPatient &m, double remaining, bool warned) {
        const int ida = m.esp == 1 ? (m.pes <= 10 ? 23 : 21) : 25;
        const int total = ida == 23 ? 3000 : ida == 21 ? 15000 : 7500;
        const int daily = m.esp == 2 ? 60 : std::max(80, int(m.pes) * 14);
        const int limit = m.esp == 2 ? 300 : m.pes <= 10 ? 600 : m.pes <= 25 ? 1200 : 2000;
        // remaining: days until the level is reached; negative if it has been already
        const int can = remaining < 0 ? limit / 3 : limit + int(remaining * daily);
        d.clientes.Execute(
            "insert into Consumo (idm, IdCat, ida, can, CanTotal, Con, men, FaltaHoy)"
            " values (?, ?, ?, ?, ?, ?, ?, 0)",
            m.idm, Food, ida, Moneda::whole(std::min(can, total)), Moneda::whole(total),
            Moneda::whole(daily), warned);
    };
    for (int i = 0; i < 5; ++i)
        log(setAside(d, 0), 1.5, false);
    for (int i = 0; i < 4; ++i)
        log(setAside(d, 1), 2.5, false);
    for (const DemoPatient &m : d.animals)
        if (!m.setAside && !m.dec && m.esp <= 2 && chance.isDue(35)) {
            const bool warned = chance.isDue(6);
            log(m, warned ? -1 : chance.between(6, 60), warned);
        }
}

void sessions(Demo &d)
{
    struct Session {
        QDate fec;
        size_t animal;
    };
    Chance &chance = d.chance;
    std::vector<Session> all;
    for (size_t i = 0; i < d.animals.size(); ++i) {
        const DemoPatient &m = d.animals[i];
        const int sinceAddition = int(m.feci.daysTo(d.hoy));
        for (int n = chance.between(0, m.esp <= 3 ? 5 : 1); n > 0 && sinceAddition > 1; --n)
            all.push_back({d.hoy.addDays(-chance.between(1, std::min(sinceAddition, 700))), i});
    }
    // A stable sort, so that the order is the same with every standard library.
    std::ranges::stable_sort(all, {}, &Session::fec);
    for (const auto &[fec, animal] : all) {
        DemoPatient &m = d.animals[animal];
        m.fult = fec;
        DemoClient &c = d.Client(m.idc);
        c.fecu = std::max(c.fecu, fec);
        d.clientes.Execute("insert into MClinica (idclinica, idm, fec, cli, tmp, pes, idu)"
                           " values (?, ?, ?, ?, ?, ?, 1)",
                           d.nextOne(u"contadorclinica"_s), m.idm, fec,
                           chance.pick(d.words[u"consultas"_s]), chance.between(380, 394) / 10.0,
                           m.pes);
    }
    for (int i = 0; i < 40; ++i)
        d.clientes.Execute("insert into FichasVisitadas (idm, fec, hor, tip, idu)"
                           " values (?, ?, ?, ?, 1)",
                           chance.pick(d.animals).idm, d.hoy.addDays(-5 + i / 8),
                           QTime(9 + i % 8, chance.between(0, 59)),
                           i % 4 == 0   ? u"v"_s
                           : i % 4 == 1 ? u"b"_s
                                        : u"f"_s);
}

void results(Demo &d, const char *table, int idm, QDate fec, int count)
{
    QStringList columns{u"idm"_s, u"fec"_s};
    std::vector<store::Value> values{idm, fec};
    for (int i = 1; i <= count; ++i) {
        columns.append(u"r%1"_s.arg(i));
        values.push_back(d.chance.between(10, 900) / 10.0);
    }
    insertRow(d.clientes, QLatin1StringView(table), columns, values);
}

/// A study, whose table has two generations of columns; a new row has each value after one space.
void texts2(Demo &d, const char *table, const QStringList &columns, const QString &list, int idm,
            QDate date)
{
    QStringList all{u"idm"_s, u"fecha"_s};
    std::vector<store::Value> values{idm, date};
    const QStringList texts = d.words.fieldsOf(list).front();
    for (qsizetype i = 0; i < columns.size(); ++i) {
        all.append(columns[i]);
        values.push_back(u' ' + texts[i]);
    }
    insertRow(d.clientes, QLatin1StringView(table), all, values);
}

void studies(Demo &d)
{
    Chance &chance = d.chance;
    for (const DemoPatient &m : d.animals) {
        if (m.esp > 2 || m.idm % 11 != 0)
            continue;
        const QDate fec = d.hoy.addDays(-chance.between(2, 200));
        const bool dog = m.esp == 1;
        results(d, "MAhemograma", m.idm, fec, dog ? 22 : 21);
        results(d, "MAbio", m.idm, fec, dog ? 25 : 19);
        switch (m.idm / 11 % 5) {
        case 0:
            texts2(d, "MAuri",
                   {u"Metodo2"_s, u"Color2"_s, u"Aspecto2"_s, u"Densidad2"_s, u"Proteinas2"_s,
                    u"Glucosa2"_s, u"Sangre2"_s},
                   u"orina"_s, m.idm, fec);
            break;
        case 1:
            texts2(d, "MAcopro", {u"Tecnica2"_s, u"IdentBio2"_s, u"AntipSen2"_s}, u"coprologico"_s,
                   m.idm, fec);
            break;
        case 2:
            texts2(d, "MAcultivo", {u"TMuetra2"_s, u"TCol2"_s, u"IDentMues2"_s, u"TantSen2"_s},
                   u"cultivo"_s, m.idm, fec);
            break;
        case 3: {
            const QStringList eco = chance.pick(d.words.fieldsOf(u"ecografias"_s));
            d.clientes.Execute("insert into MEco (ideco, idm, fec, est, [desc])"
                               " values (?, ?, ?, ?, ?)",
                               d.nextOne(u"contadoreco"_s), m.idm, fec, eco[0], eco[1]);
            break;
        }
        default: {
            const QStringList ray = chance.pick(d.words.fieldsOf(u"radiografias"_s));
            d.clientes.Execute("insert into MRayos (idray, idm, fec, est, [desc])"
                               " values (?, ?, ?, ?, ?)",
                               d.nextOne(u"contadorrayosx"_s), m.idm, fec, ray[0], ray[1]);
        }
        }
    }
}

void kennels(Demo &d)
{
    struct Stay {
        const char16_t *tip;
        int enters;
        int sale;
    };
    // Only one current guest, so that the feeding rounds are written; two overdue ones; and a
    // reservation that was not kept.
    static constexpr Stay Stays[] = {{u"h", -4, 3}, {u"h", -9, -1}, {u"h", -12, -3}, {u"r", -2, 4},
                                     {u"r", 1, 6},  {u"r", 5, 12},  {u"r", 9, 15}};
    int kennel = 0;
    for (const Stay &e : Stays) {
        DemoPatient &m = setAside(d, kennel % 2);
        m.boarded = true;
        d.clientes.Execute("insert into MHospedaje (idm, idcanil, fent, fsal, tip)"
                           " values (?, ?, ?, ?, ?)",
                           m.idm, ++kennel, d.hoy.addDays(e.enters), d.hoy.addDays(e.sale), e.tip);
    }
    for (int i = 0; i < 2; ++i)
        setAside(d, 0).inpatient = true;
}

void Agenda(Demo &d)
{
    static constexpr int Services[] = {75, 82, 78, 73, 80, 75, 81, 76, 79, 77};
    Chance &chance = d.chance;
    int which = 0;
    // From two weeks ago to one week ahead; two of yesterday's stay open.
    for (int dia = -14; dia <= 7; ++dia) {
        const QDate date = d.hoy.addDays(dia);
        const int appointments = date.dayOfWeek() == Qt::Sunday && dia != 0 && dia != -1 ? 0
                                 : dia == 0                                              ? 9
                                            : chance.between(4, 7);
        for (int i = 0; i < appointments; ++i) {
            size_t animal = size_t(chance.between(0, int(d.animals.size()) - 1));
            while (d.animals[animal].dec)
                animal = (animal + 1) % d.animals.size();
            DemoPatient &m = d.animals[animal];
            agenda::Task t;
            t.tip = Services[size_t(which++ % int(std::size(Services)))];
            t.ida = m.idm;
            t.dia = date;
            t.hor = QTime(9, 0).addSecs(60 * (i * 65 + 5 * chance.between(0, 4)));
            if (dia == 0 && i % 4 == 2)
                t.ala = t.hor.addSecs(-15 * 60);
            t.medio = dia >= 0 && i % 5 == 0 ? 1 : 0;
            t.fcreacion = date.addDays(-chance.between(dia > 2 ? dia : 4, 12));
            t.des = chance.pick(d.words[u"turnos"_s]);
            const int id = AgregarTarea(d.s, t);
            const bool done = dia < -1 || (dia == -1 && i >= 2) || (dia == 0 && i == 0);
            if (done)
                d.morvane.Execute("update TareasAgenda set est = -1, frealizacion = ? where id = ?",
                                  date, id);
            else
                m.task = true;
        }
    }
    int hour = 13;
    for (const QString &note : d.words[u"pendientes"_s]) {
        agenda::Task t;
        t.tip = agenda::TaskKind::UserTask;
        t.ida = 1;
        t.dia = d.hoy.addDays(hour - 13 > 1 ? 1 : 0);
        t.hor = QTime(hour++, 30);
        t.fcreacion = d.hoy.addDays(-1);
        t.des = note;
        AgregarTarea(d.s, t);
    }
}

} // namespace

void startup::inventRecords(Demo &d)
{
    boardDose(d);
    consumption(d);
    kennels(d);
    allDoses(d);
    sessions(d);
    studies(d);
    Agenda(d);
}
