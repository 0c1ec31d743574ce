// The demonstration clinic's clients, patients and prepaid members.

#include "columns/configuracion.h"
#include "startup/demo_data.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

constexpr int Clientes = 300;
constexpr int Patients = 450;
constexpr int NewOnes = 3;           // clients added yesterday
constexpr int FeaturedBirthdays = 2; // birthdays of featured clients' patients
constexpr int Birthdays = 4;         // all of today's birthdays

/// Lower-case letters without accents, for e-mail addresses.
QString plainOf(const QString &text)
{
    QString plain;
    for (const QChar c : text.normalized(QString::NormalizationForm_D).toLower())
        if (c.isLetter() && c.unicode() < 128)
            plain += c;
    return plain;
}

QString streetOf(Demo &d)
{
    const QString &street = d.chance.pick(d.words[u"calles"_s]);
    const int number = d.chance.between(101, 4990);
    switch (d.s.texts.language()) {
    case store::Language::Portuguese:
        return u"%1, %2"_s.arg(street).arg(number);
    case store::Language::English:
        return u"%1 %2"_s.arg(number).arg(street);
    default:
        return u"%1 %2"_s.arg(street).arg(number);
    }
}

QString telephone(Demo &d)
{
    return u"555-01%1"_s.arg(d.chance.between(0, 99), 2, 10, QChar(u'0'));
}

void inventLists(Demo &d)
{
    // Usage ranks decrease along each list.
    for (const QStringList &r : d.words.fieldsOf(u"regiones"_s)) {
        const int id = d.nextOne(u"contadordep"_s);
        d.clientes.Execute("insert into CLDepartamento (id, nom, ctel, ran) values (?, ?, ?, ?)",
                           id, r[0], r[1], 300 / id);
    }
    for (const QStringList &l : d.words.fieldsOf(u"localidades"_s)) {
        const int id = d.nextOne(u"contadorloc"_s);
        d.clientes.Execute("insert into CLLocalidad (id, nom, cp, dep, ran) values (?, ?, ?, ?, ?)",
                           id, l[0], l[1], l[2].toInt(), 80 / id);
    }
    for (const QStringList &r : d.words.fieldsOf(u"razas"_s)) {
        const int id = d.nextOne(u"contadorraza"_s);
        d.clientes.Execute("insert into MLRazas (id, nom, esp, ran) values (?, ?, ?, ?)", id, r[0],
                           r[1].toInt(), 60 / id);
    }
    for (const QString &m : d.words[u"origenes"_s])
        d.clientes.Execute("insert into CLMarketing (id, nom) values (?, ?)",
                           d.nextOne(u"contadormark"_s), m);
    for (const QString &p : d.words[u"pelajes"_s])
        d.clientes.Execute("insert into MLPelajes (id, nom) values (?, ?)",
                           d.nextOne(u"contadorpelaje"_s), p);
    d.counters[u"contadorespecie"_s] = 3;
    for (const QString &e : d.words[u"especies"_s])
        d.clientes.Execute("insert into MLEspecies (id, nom) values (?, ?)",
                           d.nextOne(u"contadorespecie"_s), e);
    for (const QString &domain : {u"example.com"_s, u"example.net"_s, u"example.org"_s})
        d.clientes.Execute("insert into Email (nom) values (?)", domain);
}

DemoClient inventClient(Demo &d, int idc)
{
    static constexpr std::array Domains{"com", "net", "org"};
    Chance &chance = d.chance;
    DemoClient c;
    c.idc = idc;
    const QString &name = chance.pick(d.words[u"nombres"_s]);
    const QString &surname = chance.pick(d.words[u"apellidos"_s]);
    c.ayn = surname + u' ' + name;
    c.dir = streetOf(d);
    c.loc = chance.between(1, d.counters[u"contadorloc"_s]);
    if (chance.isDue(55))
        c.tel2 = telephone(d);
    if (c.tel2.isEmpty() || chance.isDue(70))
        c.telc2 = telephone(d);
    const bool newOne = idc > Clientes - NewOnes;
    if (newOne || chance.isDue(65))
        c.email = u"%1.%2@example.%3"_s.arg(plainOf(name), plainOf(surname),
                                            QLatin1StringView(chance.pick(Domains)));
    // Clients are numbered as they come, so their dates of entry rise with their numbers.
    c.feci = newOne ? d.hoy.addDays(-1) : d.hoy.addDays(-5 - (Clientes - idc) * 4);
    c.fecu = c.feci;
    c.profile[1] = chance.isDue(25);
    c.profile[2] = chance.isDue(6);
    c.profile[3] = !newOne && chance.isDue(18);
    c.profile[4] = chance.isDue(6);
    return c;
}

DemoPatient inventPatient(Demo &d, int idm, int idc)
{
    Chance &chance = d.chance;
    DemoPatient m;
    m.idm = idm;
    m.idc = idc;
    m.nom = chance.pick(d.words[u"mascotas"_s]);
    const int given = chance.between(1, 100);
    m.esp = given <= 60 ? 1 : given <= 90 ? 2 : given <= 93 ? 3 : given <= 97 ? 4 : 5;
    const QList<QStringList> all = d.words.fieldsOf(u"razas"_s);
    QList<int> breeds;
    for (int r = 0; r < all.size(); ++r)
        if (all[r][1].toInt() == m.esp)
            breeds.append(r + 1);
    m.raz = chance.pick(breeds);
    m.sex = chance.between(0, 3);
    m.ser = chance.isDue(22) ? 1 : 0;
    m.dec = chance.isDue(3);
    m.feci = d.Client(idc).feci;
    if (chance.isDue(92)) {
        // Born before its first visit; today's birthdays are assigned separately.
        const int before = chance.isDue(30) ? chance.between(50, 140) : chance.between(200, 3000);
        m.fecn = m.feci.addDays(-before);
        if (m.fecn.month() == d.hoy.month() && m.fecn.day() == d.hoy.day())
            m.fecn = m.fecn.addDays(-1);
    }
    const bool small = m.fecn.isValid() && m.fecn.daysTo(d.hoy) < 200;
    const int hundredths = small ? chance.between(20, 55) : chance.between(80, 120);
    m.pes = std::round(all[m.raz - 1][2].toDouble() * hundredths) / 100;
    return m;
}

void spreadBirthdays(Demo &d)
{
    int dados = 0;
    for (DemoPatient &m : d.animals) {
        if (m.dec || m.esp > 2 || m.idm % 37 != 0)
            continue;
        DemoClient &c = d.Client(m.idc);
        if (dados < FeaturedBirthdays)
            c.profile[1] = c.profile[3] = true, c.profile[2] = false;
        else
            c.profile[3] = false;
        // Four or eight years old, so that it works on a 29 February too.
        m.fecn = d.hoy.addYears(dados % 2 ? -8 : -4);
        m.feci = std::max(m.feci, m.fecn.addDays(60));
        if (++dados == Birthdays)
            return;
    }
}

struct DemoMember {
    int obra;
    int monthsWithoutPay; // calendar months since the last payment
};

} // namespace

void startup::inventPeople(Demo &d)
{
    inventLists(d);
    for (int idc = 1; idc <= Clientes; ++idc)
        d.people.push_back(inventClient(d, idc));
    // Every client has one patient; the rest are spread at random.
    for (int idm = 1; idm <= Patients; ++idm)
        d.animals.push_back(
            inventPatient(d, idm, idm <= Clientes ? idm : d.chance.between(1, Clientes - NewOnes)));
    spreadBirthdays(d);
    d.counters[u"contadorclientes"_s] = Clientes;
    d.counters[u"contadormascotas"_s] = Patients;
}

void startup::inventMembers(Demo &d)
{
    const int factor = d.s.texts.language() == store::Language::Spanish      ? 1200
                       : d.s.texts.language() == store::Language::Portuguese ? 150
                                                                             : 40;
    std::vector<Moneda> fees;
    for (const QStringList &plan : d.words.fieldsOf(u"planes"_s)) {
        fees.push_back(Moneda::whole(factor * plan[1].toInt() / 100));
        d.os.Execute("insert into Planes (nom, monto) values (?, ?)", plan[0], fees.back());
    }
    for (const char *list : {"cobradores", "promotores"})
        for (const QString &name : d.words[QLatin1StringView(list)])
            d.os.Execute("insert into " + std::string(list)
                             + " (nom, dir, tel, mail, obs) values (?, ?, ?, ?, '')",
                         name, streetOf(d), telephone(d), plainOf(name) + "@example.org"_L1);
    for (const QString &zone : d.words[u"zonas"_s])
        d.os.Execute("insert into Zonas (nom) values (?)", zone);

    std::vector<DemoMember> socios(12, DemoMember{1, 0});
    socios.insert(socios.end(), {{5, 1}, {5, 1}, {5, 1}, {2, 2}, {2, 3}, {3, 5}, {4, 0}});
    const auto documents = std::to_array<const char16_t *>({u"DNI", u"CI"});
    const QString card = d.s.configuracion[setting::EntradaPlastico].toText();
    int request = 1000;
    int idc = 4;
    for (const DemoMember &member : socios) {
        DemoClient &c = d.Client(idc += 13);
        c.obra = member.obra;
        const int plan = d.chance.between(1, int(fees.size()));
        // An expired membership request is more than a year old; all others are newer.
        const QDate from = d.hoy.addDays(member.obra == 4 ? -380 : -d.chance.between(190, 350));
        const QDate mes = QDate(d.hoy.year(), d.hoy.month(), 1).addMonths(-member.monthsWithoutPay);
        const bool withCollector = d.chance.isDue(60);
        d.os.Execute(
            "insert into Socios (idc, plan, grupo, nrosolicitud, fechasolicitud, fechavsol,"
            " fechabsol, ultimopago, fechanac, tipodoc, nrodoc, calle2, localidad2, zona, tel,"
            " formapago, cobrador, promotor, tarjeta, banco, iva)"
            " values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 1, ?, '', 0)",
            c.idc, plan, u"1"_s, double(++request), from, from.addDays(365),
            member.obra == 3 ? store::Value(d.hoy.addDays(-40)) : store::Value(), mes,
            d.hoy.addDays(-d.chance.between(9000, 24000)),
            documents[size_t(d.chance.between(0, 1))],
            QString::number(d.chance.between(1000000, 9999999)), c.dir,
            d.words.fieldsOf(u"localidades"_s)[c.loc - 1][0], d.chance.between(1, 3), c.tel2,
            withCollector ? u"co"_s : u"dt"_s,
            withCollector ? store::Value(d.chance.between(1, 2)) : store::Value(),
            withCollector ? QString() : card);
        for (int back = 5; back >= 0; --back) {
            const QDate paid = mes.addMonths(-back);
            if (paid < from.addDays(-31))
                continue;
            const QDate dia = std::min(paid.addDays(d.chance.between(0, 9)), d.hoy);
            d.os.Execute("insert into Pagos (idc, fec, pago, idu) values (?, ?, ?, 1)", c.idc, dia,
                         fees[size_t(plan - 1)]);
        }
        for (const DemoPatient &m : d.animals)
            if (m.idc == c.idc && !m.dec)
                d.os.Execute("insert into MascotasAsociadas (idm, idc, nom) values (?, ?, ?)",
                             m.idm, c.idc, m.nom);
    }
}

void startup::writePeople(Demo &d)
{
    const QList<QStringList> subregions = d.words.fieldsOf(u"localidades"_s);
    const QList<QStringList> regions = d.words.fieldsOf(u"regiones"_s);
    Chance &chance = d.chance;
    for (const DemoClient &c : d.people) {
        const QStringList &subregion = subregions[c.loc - 1];
        const int dep = subregion[2].toInt();
        d.clientes.Execute(
            "insert into Clientes (idc, ayn, dir, loc, dep, codp2, codt2, tel2, telc2, email, mark,"
            " obs, feci, fecu, deuda, obra, Perfil1, Perfil2, Perfil3, Perfil4, Perfil5)"
            " values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
            c.idc, c.ayn, c.dir, c.loc, dep, subregion[1], regions[dep - 1][1], c.tel2, c.telc2,
            c.email, chance.between(1, d.counters[u"contadormark"_s]),
            chance.isDue(8) ? chance.pick(d.words[u"notasdecliente"_s]) : QString(), c.feci, c.fecu,
            c.deuda, c.obra, c.profile[1], c.profile[2], c.profile[3], c.profile[4], c.profile[5]);
        // The counters must match the flags: enough events, most of them on the flag's side.
        const auto part = [&](bool on) {
            return on ? chance.between(7, 15) : chance.between(0, 2);
        };
        d.morvane.Execute(
            "insert into Perfiles (idc, buenascompras, malascompras, deudasdemoradas,"
            " deudasnodemoradas, TurnosCumplidos, TurnosNoCumplidos) values (?, ?, ?, ?, ?, ?, ?)",
            c.idc, part(c.profile[1]), chance.between(1, 2), part(c.profile[2]),
            chance.between(0, 2), part(c.profile[4]), chance.between(0, 2));
    }
    for (const DemoPatient &m : d.animals)
        d.clientes.Execute(
            "insert into Mascotas (idm, idc, nom, esp, raz, pel, car, Chip, fecn, pes, sex, ped,"
            " rep, dec, ser, obs, feci, fult, int, hos, tarea)"
            " values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
            m.idm, m.idc, m.nom, m.esp, m.raz, chance.between(1, d.counters[u"contadorpelaje"_s]),
            chance.isDue(25) ? chance.pick(d.words[u"marcas"_s]) : QString(),
            m.esp == 1 && chance.isDue(30) ? u"9850000%1"_s.arg(chance.between(10000000, 99999999))
                                           : QString(),
            m.fecn, m.pes, m.sex, chance.isDue(6), m.sex < 2 && chance.isDue(5), m.dec, m.ser,
            chance.isDue(10) ? chance.pick(d.words[u"notasdemascota"_s]) : QString(), m.feci,
            m.fult, m.inpatient, m.boarded ? 1 : 0, m.task);
}
