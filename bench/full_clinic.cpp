#include "full_clinic.h"

#include "clinical/food.h"
#include "startup/first_run.h"
#include "startup/new_folder.h"
#include "store/data_folder.h"
#include "store/opening.h"

#include <QFile>
#include <algorithm>
#include <random>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{

const QStringList &animals()
{
    static const QStringList names =
        u"Luna Max Nala Rocco Simba Lola Milo Coco Kira Toby Mora Bruno Olivia Thor Frida Rex "
        "Greta Duke Maya Otto Canela Jack Nina Zeus Pelusa Rocky Mia Tango Uma Firulais Cleo Ringo"_s
            .split(u' ');
    return names;
}

const QStringList &GivenNames()
{
    static const QStringList names =
        u"Ana Bruno Carla Diego Elena Facundo Gabriela Hugo Inés Jorge Karina Luis Marta Nicolás "
        "Olga Pablo Rosa Sergio Teresa Víctor Ángela Óscar"_s.split(u' ');
    return names;
}

const QStringList &surnamesOf()
{
    static const QStringList surnames =
        u"Acosta Álvarez Benítez Cabrera Castro Díaz Escobar Fernández García Herrera Ibáñez "
        "Juárez López Medina Núñez Ortiz Pereyra Quiroga Ríos Sosa Torres Urquiza Vega Zárate"_s
            .split(u' ');
    return surnames;
}

constexpr int Subregions = 60, Regions = 8, Breeds = 80, Coats = 15, Channels = 6;

// A treatment that is repeated: each product with its category and its interval in days.
struct PlanProduct {
    int ida;
    int idcat;
    int interval;
};
constexpr PlanProduct Planes[] = {{4, 3, 365}, {1, 3, 365},  {12, 4, 90}, {19, 4, 90},
                                  {8, 3, 365}, {20, 4, 60},  {7, 3, 180}, {13, 4, 120},
                                  {5, 3, 365}, {18, 4, 150}, {35, 5, 180}};
// Services that are booked, and the hours in which they take place.
constexpr int Services[] = {71, 72, 73, 75, 75, 75, 76, 78, 79, 80, 82, 83, 86, 87};
constexpr int FirstHalfHour = 17, HalfHours = 24; // 08:30 to 20:00

class FullClinic
{
public:
    FullClinic(Sesion &session, const ClinicPlan &wanted)
        : s(session),
          plan(wanted),
          m_chance(wanted.seed),
          m_names(wanted.names.isEmpty() ? animals() : wanted.names)
    {
    }

    void fill()
    {
        Lote lote(s);
        shortLists();
        Clientes();
        Patients();
        doses();
        consumptionsOf();
        debts();
        Tasks();
        sales();
        kennels();
        visits();
        stock();
        settings();
        lote.commit();
    }

private:
    int between(int from, int until) // both ends included
    {
        return from + int(m_chance() % quint64(until - from + 1));
    }
    bool each100(int times) { return between(0, 99) < times; }
    template <typename T>
    const T &one(const QList<T> &list)
    {
        return list[between(0, int(list.size()) - 1)];
    }
    template <typename T, size_t N>
    const T &one(const T (&list)[N])
    {
        return list[between(0, int(N) - 1)];
    }
    QDate Day(int from, int until) { return plan.hoy.addDays(between(from, until)); }
    QString persona() { return one(GivenNames()) + u' ' + one(surnamesOf()); }

    void shortLists()
    {
        const auto fill = [this](const char *sql, const QString &name, int count) {
            for (int id = 1; id <= count; ++id)
                s.clientes->Execute(sql, id, name.arg(id));
        };
        fill("insert into MLRazas (id, nom, esp) values (?, ?, 1)", u"Raza %1"_s, Breeds);
        fill("insert into MLPelajes (id, nom) values (?, ?)", u"Pelaje %1"_s, Coats);
        fill("insert into CLMarketing (id, nom) values (?, ?)", u"Medio %1"_s, Channels);
        fill("insert into CLDepartamento (id, nom) values (?, ?)", u"Distrito %1"_s, Regions);
        for (int id = 1; id <= Subregions; ++id)
            s.clientes->Execute("insert into CLLocalidad (id, nom, cp, dep) values (?, ?, ?, ?)",
                                id, u"Barrio %1"_s.arg(id), QString::number(1000 + id),
                                1 + id % Regions);
        s.finanzas->Execute("update FLCategorias set suministro = 'c', uni = 'g', idserv = 71 "
                            "where idcat = 11");
        s.clientes->Execute("update MLEspecies set ali = ? where id = 2", 300);
        s.clientes->Execute("update MLEspecies set ali = ? where id = 3", 20000);
    }

    void Clientes()
    {
        for (int idc = 1; idc <= plan.clientes; ++idc) {
            const int loc = between(1, Subregions);
            const QString name = persona();
            // Entered day by day over ten years, the last one today.
            const QDate addition =
                plan.hoy.addDays(-qint64(plan.clientes - idc) * 3650 / plan.clientes);
            s.clientes->Execute(
                "insert into Clientes (idc, ayn, dir, loc, dep, codp2, tel2, telc2, email, mark, "
                "feci, fecu, Perfil1, Perfil2, Perfil3, iva) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                "?, ?, ?, ?, ?, 1)",
                idc, name, u"Calle %1 nº %2"_s.arg(between(1, 90)).arg(between(1, 4000)), loc,
                1 + loc % Regions, each100(90) ? QString::number(1000 + loc) : QString(),
                each100(70) ? u"4%1"_s.arg(between(100000, 999999)) : QString(),
                each100(80) ? u"15 %1"_s.arg(between(1000000, 9999999)) : QString(),
                each100(60) ? u"cliente%1@correo.example"_s.arg(idc) : QString(),
                between(1, Channels), addition,
                std::min(plan.hoy.addDays(-1), addition.addDays(between(0, 900))), each100(30),
                each100(10), each100(25));
            if (each100(75))
                s.morvane->Execute(
                    "insert into Perfiles (idc, buenascompras, malascompras, deudasdemoradas, "
                    "deudasnodemoradas, TurnosCumplidos, TurnosNoCumplidos) values (?, ?, ?, ?, ?, "
                    "?, ?)",
                    idc, between(0, 40), between(0, 20), between(0, 3), between(0, 5),
                    between(0, 30), between(0, 5));
        }
    }

    void Patients()
    {
        for (int idm = 1; idm <= plan.patients; ++idm) {
            const int species = each100(60) ? 1 : each100(90) ? 2 : 3;
            const QDate addition =
                plan.hoy.addDays(-qint64(plan.patients - idm) * 3650 / plan.patients);
            const double peso = species == 1   ? between(20, 450) / 10.0
                                : species == 2 ? between(20, 80) / 10.0
                                               : between(300, 550);
            m_level.push_back(UmbralAlimento(s, species, peso, clinical::FoodCategory));
            s.clientes->Execute(
                "insert into Mascotas (idm, idc, nom, esp, raz, pel, car, Chip, fecn, pes, sex, "
                "dec, ser, feci, fult, int) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                "?)",
                idm, each100(80) ? std::min(idm, plan.clientes) : between(1, plan.clientes),
                one(m_names).left(50), species, between(1, Breeds), between(1, Coats),
                each100(20) ? u"mancha en el lomo"_s : QString(),
                each100(40) ? u"9810000%1"_s.arg(idm, 8, 10, QChar(u'0')) : QString(),
                each100(90) ? store::Value(addition.addDays(-between(30, 1500))) : store::Value(),
                peso, between(0, 3), each100(8), each100(15) ? 1 : 0, addition,
                addition.addDays(between(0, 700)), between(0, 2999) == 0);
        }
    }

    // Rows are in order of entry, as years of work leave them, not grouped by patient.
    void doses()
    {
        struct Row {
            QDate addition;
            int idm, ida, dos;
            store::Value given;
            QDate expires;
            int si, idcat;
        };
        std::vector<Row> rows;
        rows.reserve(size_t(plan.doses));
        for (const PlanProduct &p : Planes) {
            for (int idm = 1; idm <= plan.patients && int(rows.size()) < plan.doses; ++idm) {
                if (each100(10))
                    continue;
                const int count = std::min(between(2, 4), plan.doses - int(rows.size()));
                const bool ofPlan = each100(30);
                const QDate last = Day(-20, 199);
                for (int dos = 1; dos <= count; ++dos) {
                    const QDate expires = last.addDays(-qint64(count - dos) * p.interval);
                    const bool open = dos == count ? each100(92) : each100(4);
                    const QDate given = expires.addDays(between(-5, 3));
                    rows.push_back({expires.addDays(-p.interval), idm, p.ida, dos,
                                    open ? store::Value() : store::Value(std::min(given, plan.hoy)),
                                    expires, (open ? 0 : 1) + (ofPlan ? 2 : 0), p.idcat});
                }
            }
        }
        std::ranges::stable_sort(rows, {}, &Row::addition);
        for (const Row &f : rows)
            s.clientes->Execute("insert into ArtPlan (idm, ida, dos, col, rep, si, IdCat, Ana) "
                                "values (?, ?, ?, ?, ?, ?, ?, ?)",
                                f.idm, f.ida, f.dos, f.given, f.expires, f.si, f.idcat,
                                f.expires < plan.hoy.addDays(LeadTime));
    }

    // Food that lasts ten to sixty days from its purchase, part of it used up.
    void consumptionsOf()
    {
        std::vector<std::pair<int, int>> rows; // patient, category
        for (int i = 0; i < plan.consumptions; ++i)
            rows.emplace_back(1 + i % plan.patients, i < plan.patients ? 1 : 11);
        std::shuffle(rows.begin(), rows.end(), m_chance);
        for (const auto &[idm, idcat] : rows) {
            const Moneda daily = Moneda::fromTenThousandths(qint64(between(300, 6000)) * 1000);
            const int lasts = between(10, 60), remaining = each100(20) ? 0 : between(0, lasts);
            // Owners who run low were reminded the day before.
            const double level = idcat == 1 ? m_level[size_t(idm)] : 0;
            s.clientes->Execute("insert into Consumo (idm, IdCat, ida, can, CanTotal, Con, men) "
                                "values (?, ?, ?, ?, ?, ?, ?)",
                                idm, idcat, between(21, 34), daily * remaining, daily * lasts,
                                daily, (daily * remaining).toDouble() <= level);
        }
    }

    void debts()
    {
        for (int i = 1; i <= plan.openDebts * 4; ++i) {
            const bool open = i % 4 == 0;
            const int days = between(0, 120);
            const Moneda total = Moneda::whole(between(5, 400));
            // The step reached by the reminders of previous days.
            const int step = days <= Term        ? 0
                             : days <= Term + 10 ? 1
                             : days <= Term + 20 ? 2
                             : days <= Term + 21 ? 3
                                                 : 4;
            s.finanzas->Execute("insert into CtaCteC (idVenta, idc, fecUltPago, total, saldo, "
                                "Cancelado, men) values (?, ?, ?, ?, ?, ?, ?)",
                                i, between(1, plan.clientes), plan.hoy.addDays(-days), total,
                                open ? total : Moneda(), !open, open ? step : 0);
        }
    }

    void Tasks()
    {
        struct Row {
            QDate addition;
            int tip, ida;
            store::Value dia, hor, ala;
            bool est;
            int medio;
            store::Value sent, done;
        };
        std::vector<Row> rows;
        rows.reserve(size_t(plan.tasks));
        std::vector<char> pending(size_t(plan.patients) + 1);
        for (int i = 0; i < plan.tasks; ++i) {
            const int idm = between(1, plan.patients);
            if (each100(40)) { // sent by the program itself
                const QDate addition = Day(-700, -1);
                rows.push_back({addition,
                                each100(70) ? -42 : -46,
                                idm,
                                {},
                                {},
                                {},
                                true,
                                between(1, 3),
                                addition,
                                addition});
                continue;
            }
            const QDate dia = Day(-700, 30);
            const int half = FirstHalfHour + between(0, HalfHours - 1);
            const QTime hor(half / 2, half % 2 * 30);
            const bool done = dia < plan.hoy && each100(95);
            rows.push_back({std::min(dia, plan.hoy).addDays(-between(1, 14)),
                            one(Services),
                            idm,
                            dia,
                            hor,
                            each100(10) ? store::Value(hor.addSecs(-900)) : store::Value(),
                            done,
                            0,
                            {},
                            done ? store::Value(dia) : store::Value()});
            if (!done)
                pending[size_t(idm)] = 1;
        }
        std::ranges::stable_sort(rows, {}, &Row::addition);
        int id = 0;
        for (const Row &f : rows)
            s.morvane->Execute(
                "insert into TareasAgenda (id, tip, ida, dia, hor, ala, est, medio, fcreacion, "
                "fmedio, frealizacion, artaux, des) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, ?)",
                ++id, f.tip, f.ida, f.dia, f.hor, f.ala, f.est, f.medio, f.addition, f.sent, f.done,
                f.tip > 0 ? u"Turno"_s : u"2"_s);
        for (int idm = 1; idm <= plan.patients; ++idm)
            // Some flags are out of date, their tasks having been closed since.
            if (pending[size_t(idm)] || between(0, 99) == 0)
                s.clientes->Execute("update Mascotas set tarea = -1 where idm = ?", idm);
    }

    void sales()
    {
        int lines = 0, idventa = 0;
        while (lines < plan.saleLines) {
            ++idventa;
            const int count = std::min(between(1, 4), plan.saleLines - lines);
            // Five years, in order of entry.
            const QDate fec = plan.hoy.addDays(
                -1 - qint64(plan.saleLines - lines) * 1825 / std::max(1, plan.saleLines));
            Moneda total;
            for (int i = 0; i < count; ++i) {
                const Moneda price = Moneda::whole(between(2, 90));
                const int can = between(1, 3);
                total = total + price * can;
                s.finanzas->Execute("insert into VentasDetalle (idventa, ida, can, uni, pu, sub) "
                                    "values (?, ?, ?, 'u', ?, ?)",
                                    idventa, between(1, 60), can, price, price * can);
            }
            s.finanzas->Execute(
                "insert into Ventas (idventa, tfac, idv, idvSerie, idc, idm, fec, hor, tot, idu, "
                "tip, recargo) values (?, '3', ?, 1, ?, 0, ?, ?, ?, 1, 1, 0)",
                idventa, idventa, each100(60) ? between(1, plan.clientes) : 0, fec,
                QTime(between(9, 19), between(0, 59)), total);
            lines += count;
        }
        m_sales = idventa;
    }

    void kennels()
    {
        int kennel = 0;
        const auto lodge = [&](int entry, int exit, QString kind) {
            const int idm = std::min(plan.patients, 100 * ++kennel);
            s.clientes->Execute(
                "insert into MHospedaje (idm, idcanil, fent, fsal, tip) values (?, ?, ?, ?, ?)",
                idm, kennel, plan.hoy.addDays(entry), plan.hoy.addDays(exit), kind);
            s.clientes->Execute("update Mascotas set hos = 1 where idm = ?", idm);
        };
        lodge(-3, 4, u"h"_s);
        lodge(-8, -1, u"h"_s); // should have gone home
        lodge(-2, 3, u"r"_s);  // never came
        lodge(2, 9, u"r"_s);
    }

    void visits()
    {
        for (int dia = -45; dia < 0; ++dia)
            for (int i = 0; i < 100; ++i)
                s.clientes->Execute("insert into FichasVisitadas (idm, fec, hor, tip, idu) values "
                                    "(?, ?, ?, 'f', 1)",
                                    between(1, plan.patients), plan.hoy.addDays(dia),
                                    QTime(9 + i / 15, i % 60));
    }

    void stock()
    {
        s.finanzas->Execute("update Articulos set can = 20, min = 5, p1 = 15 where idcat <> 2");
        s.finanzas->Execute("update Articulos set can = 2 where ida = 4");
        for (int ida = 1; ida <= 20; ++ida)
            s.finanzas->Execute("insert into ArtVenc (ida, can, ven) values (?, 10, ?)", ida,
                                Day(20, 600));
    }

    // Everything is switched on, so that a morning has as much work as possible.
    void settings()
    {
        s.morvane->Execute(
            "update Configuracion set PrimeraVez = 0, FechaPrimerInicio = ?, FechaUltimoInicio = "
            "?, FechaInicioAnterior = ?, FechaUltimoInicioMes = ?, contadorclientes = ?, "
            "contadormascotas = ?, contadorTareas = ?, idventa = ?, contadorventa = ?",
            plan.hoy.addDays(-3650), plan.hoy.addDays(-1), plan.hoy.addDays(-2), plan.hoy,
            plan.clientes, plan.patients, plan.tasks, m_sales, m_sales);
        s.morvane->Execute(
            "update Configuracion set contadorraza = ?, contadorpelaje = ?, contadordep = ?, "
            "contadorloc = ?, contadormark = ?",
            Breeds, Coats, Regions, Subregions, Channels);
        s.morvane->Execute(
            "update Configuracion set medidasalimento = 1, alimentomail = -1, LVMascotas = -1, "
            "MedidasRevac = 3, tiempovencimiento = ?, MedidasRevacDescont = 1, MedidasCumple = 3, "
            "diasdeudores = ?, MedidasDeudores = 1, AutNuevoCliente = 1, RecibirNotificaciones = "
            "0, horaracion1 = ?, horaracion2 = ?",
            LeadTime, Term, QTime(8, 0), QTime(18, 0));
    }

    static constexpr int LeadTime = 3; // days before a dose that its reminder is sent
    static constexpr int Term = 30;    // days without a payment after which a client is a debtor

    Sesion &s;
    const ClinicPlan &plan;
    std::mt19937_64 m_chance;
    const QStringList &m_names;
    int m_sales = 0;
    std::vector<double> m_level{0}; // stock of food that has run low, by patient
};

// Splits one CSV record; a quoted cell may contain the separator and doubled quotes.
QStringList cellsOf(const QString &line)
{
    QStringList cells(QString{});
    bool quoted = false;
    for (const QChar c : line) {
        if (c == u'"')
            quoted = !quoted;
        else if (c == u',' && !quoted)
            cells.append(QString());
        else
            cells.back().append(c);
    }
    return cells;
}

} // namespace

void createFullClinic(const QString &folder, const ClinicPlan &plan)
{
    startup::createFolder(folder, store::Language::Spanish);
    MeasureSession measure(folder, plan.hoy);
    startup::registerFirstRun(measure.s, {.clinic = u"Clínica llena"_s,
                                          .address = u"Calle Mayor 1"_s,
                                          .telephones = u"4000000"_s,
                                          .user = u"Ana"_s,
                                          .password = {},
                                          .password2 = {}});
    startup::seedFirstRun(measure.s);
    FullClinic(measure.s, plan).fill();
}

QStringList readNames(const QString &file, const QString &column)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        throw std::runtime_error(u"%1: %2"_s.arg(file, f.errorString()).toStdString());
    QString text = QString::fromUtf8(f.readAll());
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
    const QStringList titles = lines.isEmpty() ? QStringList() : cellsOf(lines.takeFirst());

    qsizetype n = column.toInt() - 1;
    for (qsizetype i = 0; n < 0 && i < titles.size(); ++i) {
        const QString title = titles[i].trimmed();
        const bool es = column.isEmpty() ? title.contains("name"_L1, Qt::CaseInsensitive)
                                               || title.contains("nombre"_L1, Qt::CaseInsensitive)
                                         : title.compare(column, Qt::CaseInsensitive) == 0;
        if (es)
            n = i;
    }
    if (n < 0 || n >= titles.size())
        throw std::runtime_error(u"%1: no column of names"_s.arg(file).toStdString());

    QStringList names;
    for (const QString &line : std::as_const(lines)) {
        const QString name = cellsOf(line).value(n).trimmed();
        if (!name.isEmpty())
            names.append(QString(name).replace(u'\'', u' '));
    }
    if (names.isEmpty())
        throw std::runtime_error(u"%1: no names"_s.arg(file).toStdString());
    return names;
}

MeasureSession::MeasureSession(const QString &folder, QDate hoy)
    : s(dialogos, impresion, store::Language::Spanish)
{
    s.reloj.hoy = hoy;
    s.reloj.now = [hoy] { return QDateTime(hoy, QTime(9, 0)); };
    store::setDataFolder(s, folder);
    if (const auto failure = store::openStore(s))
        throw std::runtime_error(failure->text.toStdString());
    store::readClinic(s);
}
