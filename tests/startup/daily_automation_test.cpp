#include "startup/daily_automation.h"

#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "store/schema.h"
#include "support/clinic.h"
#include "texts/texts.h"

#include <QDir>
#include <QFile>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace startup;
using namespace Qt::StringLiterals;
using namespace std::string_literals;

namespace
{

constexpr int Rabies = 4, Puppies = 1, Meal = 21; // products
/// The values of a reminder setting, each with the channel that it uses; 0 sends nothing.
const std::pair<store::Value, int> measures[] = {{nullptr, 0}, {1, 1}, {2, 2},
                                                 {3, 3},       {4, 0}, {0, 0}};
constexpr int Vaccines = 3, Food = 1; // categories of a new folder

class Day : public Clinic
{
protected:
    Day()
    {
        qputenv("XDG_DATA_HOME", folder.path().toUtf8());
        s.clinic.nom = u"Patitas"_s;
        ask.alwaysNo << u"Print summary?"_s << u"imprimir el resumen"_s << u"imprimir o resumo"_s;
        product(Rabies, Vaccines, u"Rabies");
        product(Puppies, Vaccines, u"Puppies");
        product(Meal, Food, u"Dry food");
        s.clientes->Execute("update mlespecies set ali = 4 where id = 2");
        setting("FechaUltimoInicioMes", hoy);
        closed(1);
        Client(1);
    }

    QDate inside(int days) const { return s.reloj.hoy.addDays(days); }
    void setting(const char *column, const store::Value &v)
    {
        s.morvane->Execute("update configuracion set "s + column + " = ?", v);
    }
    /// Sets the last start to this many days ago.
    void closed(int days) { setting("FechaUltimoInicio", inside(-days)); }
    void product(int ida, int idcat, const char16_t *nom)
    {
        s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (?, ?, ?)", ida, idcat,
                            nom);
    }
    void Client(int idc)
    {
        s.clientes->Execute("insert into clientes (idc, ayn) values (?, ?)", idc,
                            u"Client %1"_s.arg(idc));
        s.morvane->Execute("insert into perfiles (idc) values (?)", idc);
    }
    struct Patient {
        int idm, ser = 0, idc = 1;
        bool dec = false;
    };
    void patientsOf(std::initializer_list<Patient> patients)
    {
        for (const Patient &p : patients)
            s.clientes->Execute("insert into mascotas (idm, idc, nom, esp, ser, dec) values "
                                "(?, ?, ?, 2, ?, ?)",
                                p.idm, p.idc, u"Pet %1"_s.arg(p.idm), p.ser, p.dec);
    }
    void stock(int idm, double can, double con)
    {
        s.clientes->Execute(
            "insert into consumo (idm, idcat, ida, can, con) values (?, 1, ?, ?, ?)", idm, Meal,
            can, con);
    }
    /// A patient that eats one unit a day from a stock of a hundred.
    void eater()
    {
        patientsOf({{1}});
        stock(1, 100, 1);
    }
    struct Takes {
        int idm, inDays, dos = 1, si = 0, ida = Rabies;
    };
    void doses(std::initializer_list<Takes> doses)
    {
        for (const Takes &d : doses)
            s.clientes->Execute(
                "insert into artplan (idm, ida, dos, rep, si, idcat) values (?, ?, ?, ?, ?, 3)",
                d.idm, d.ida, d.dos, inside(d.inDays), d.si);
    }
    void Appointment(int tip, int ida, QDate dia, bool done = false, QTime alarm = {})
    {
        agenda::Task t;
        t.tip = tip;
        t.ida = ida;
        t.dia = t.fcreacion = dia;
        t.ala = alarm;
        const int id = AgregarTarea(s, t);
        s.morvane->Execute("update TareasAgenda set est = ? where id = ?", done, id);
    }
    void Stay(int idm, const char16_t *tip, int enters, int sale)
    {
        s.clientes->Execute("insert into mhospedaje (idm, idcanil, fent, fsal, tip) values (?, 1, "
                            "?, ?, ?)",
                            idm, inside(enters), inside(sale), tip);
        s.clientes->Execute("update mascotas set hos = 1 where idm = ?", idm);
    }
    void clear(std::initializer_list<const char *> tables)
    {
        for (const char *t : tables)
            (s.morvane->catalogue().find(t) ? s.morvane : s.clientes)
                ->Execute("delete * from "s + t);
    }

    std::string Ver(Base &b, std::string_view sql) { return allRows(b, sql).toStdString(); }
    /// The tasks, ordered by subject, since the order of a query's rows is not specified.
    std::string Tasks()
    {
        return Ver(*s.morvane, "select tip, ida, dia, hor, medio, artaux, des from TareasAgenda "
                               "order by ida, hor");
    }
    std::string Pizarra(const std::string &where = {})
    {
        return Ver(*s.morvane, "select dibujo, codigo1, codigo2, mensaje from pizarra" + where);
    }
    /// The same without the text.
    std::string codes(const std::string &where)
    {
        return Ver(*s.morvane, "select dibujo, codigo1, codigo2 from pizarra" + where);
    }
    std::string profiles()
    {
        return Ver(*s.morvane, "select idc, deudasdemoradas, TurnosCumplidos, TurnosNoCumplidos "
                               "from perfiles order by idc");
    }
    int count(int tip)
    {
        return s.morvane->read("select count(*) from TareasAgenda where tip = ?", tip).toInt();
    }
    bool inBoard(const QString &part)
    {
        for (const board::BoardLine &l : board::readBoard(s))
            if (l.message.contains(part))
                return true;
        return false;
    }
};

} // namespace

TEST_F(Day, FoodIsConsumedForEveryClosedDayAndWarnedOfOnce)
{
    const struct {
        int days;
        const char *consumo; // can, men, FaltaHoy
        int notices;
    } cases[] = {{1, "8|0|0\n", 0}, {2, "6|0|0\n", 0}, {3, "4|-1|-1\n", 1}, {40, "0|-1|-1\n", 1}};
    patientsOf({{1, 5}});
    for (const auto &c : cases) {
        SCOPED_TRACE(c.days);
        clear({"consumo", "TareasAgenda"});
        stock(1, 10, 2);
        closed(c.days);
        TareasDeInicio(s);
        EXPECT_EQ(Ver(*s.clientes, "select can, men, FaltaHoy from consumo"), c.consumo);
        EXPECT_EQ(count(71), c.notices);
    }
    // The stock stops at 0, and once it is empty there is no further warning.
    TareasDeInicio(s);
    EXPECT_EQ(Ver(*s.clientes, "select can, men, FaltaHoy from consumo"), "0|-1|0\n");
    EXPECT_EQ(count(71), 1);
}

TEST_F(Day, LowFoodBooksTheServiceOrOffersByMailAsTheSettingsSay)
{
    const std::string offer = "-41|1|2026-03-11||1|21|\n";
    const std::string deliveries = "71|2|2026-03-11|08:30:00|4|21|Alimentos - Dry food\n"
                                   "71|3|2026-03-11|09:00:00|4|21|Alimentos - Dry food\n";
    const struct {
        store::Value measures;
        bool offers;
        std::string tasks, pizarra;
    } cases[] = {
        {1, true, offer + deliveries, "107|2|8\n109|1|5\n"},
        {2, false, deliveries, "107|2|8\n107|1|0\n"},
        {0, true, "", ""},
        {nullptr, true, "", ""},
    };
    patientsOf({{1}, {2, 1}, {3, 9}, {4, 0, 1, true}});
    for (const auto &c : cases) {
        SCOPED_TRACE(c.measures.toInt());
        clear({"consumo", "TareasAgenda"});
        for (int idm = 1; idm <= 4; ++idm)
            stock(idm, 5, 1);
        setting("medidasalimento", c.measures);
        setting("alimentomail", c.offers);
        TareasDeInicio(s);
        EXPECT_EQ(Tasks(), c.tasks);
        EXPECT_EQ(codes(" where codigo1 = 1 or codigo1 = 2"), c.pizarra);
        // The "warned" flag is set whatever the setting says; deceased patients eat nothing.
        const char *mark = c.tasks.empty() ? "-1|0" : "-1|-1";
        EXPECT_EQ(Ver(*s.clientes, "select idm, can, men, FaltaHoy from consumo order by idm"),
                  "1|4|"s + mark + "\n2|4|" + mark + "\n3|4|" + mark + "\n4|5|0|0\n");
    }
}

TEST_F(Day, MissedDosesAreCaughtUpForTenDays)
{
    const struct {
        int days;
        int counted; // out of the doses 1, 3, 4, 10, 11 and 40 days ago
    } cases[] = {{1, 1}, {3, 2}, {10, 4}, {11, 4}, {40, 4}};
    const int back[] = {0, 1, 3, 4, 10, 11, 40};
    for (int i = 0; i < 7; ++i) {
        patientsOf({{i + 1}});
        doses({{i + 1, -back[i], 1, i % 2 ? 2 : 0}});
    }
    patientsOf({{8}, {9, 0, 1, true}});
    doses({{8, -1, 1, 1}, {9, -1}}); // one given, one of a deceased patient
    for (const auto &c : cases) {
        closed(c.days);
        TareasDeInicio(s);
        EXPECT_EQ(Pizarra(" where dibujo = 103"),
                  "103|6|18|It should have provided "s + std::to_string(c.counted)
                      + " scheduled products to clients 'without service'.\n");
    }
}

TEST_F(Day, MissedDosesAreToldByHowManyWereOverdueBefore)
{
    s.clientes->Execute("update clientes set dir = 'Street 5', tel2 = '22', telc2 = '33'");
    closed(3);
    patientsOf({{1}, {2, 5}});
    // The first and second of their category; a third of another product, which does not count; one
    // with service.
    doses({{1, -3}, {1, -2, 2}, {1, -1, 3, 0, Puppies}, {2, -1}});
    setting("LVMascotas", true);
    TareasDeInicio(s);
    EXPECT_EQ(codes(" where dibujo = 103"), "103|6|18\n103|14|18\n103|7|19\n");
    EXPECT_EQ(impresion.printed, QStringList{u"Scheduled products not supplied"_s});
    const char *list = "select mas, vac, pro, dir, tel, dos from auxrevacunacion order by mas, dos";
    EXPECT_EQ(Ver(*s.rep97, list), "Pet 1|Rabies|Client 1|Street 5|22 / 33|1\n"
                                   "Pet 1|Rabies|Client 1|Street 5|22 / 33|2\n"
                                   "Pet 1|Puppies|Client 1|Street 5|22 / 33|3\n"
                                   "Pet 2|Rabies|Client 1|Street 5|22 / 33|1\n");

    // The list is rebuilt each day; without a first missed dose nothing is printed.
    clear({"artplan"});
    doses({{2, -1, 7}});
    TareasDeInicio(s);
    EXPECT_EQ(impresion.printed.size(), 1);
    EXPECT_EQ(Ver(*s.rep97, "select mas, dos from auxrevacunacion"), "Pet 2|7\n");
    setting("LVMascotas", false);
    doses({{1, -1}});
    TareasDeInicio(s);
    EXPECT_EQ(impresion.printed.size(), 1);
}

TEST_F(Day, TodaysDosesTakeTheLineOfTheirVariant)
{
    const std::string sin = " scheduled products to clients 'without service'";
    const std::string discontinued = sin + " (discont).", one = "Today should be provided 1",
                      y = ". and 1";
    const std::string none = " No product is 1º discont.\n";
    const std::string message = " 1 products are 1º discont. Communication with owners.\n";
    // Patients with no, one or two overdue doses before today's, and patients with service.
    const struct {
        int toDay, second, third, withService;
        store::Value discontinued;
        std::string pizarra;
        int messages;
    } cases[] = {
        {0, 0, 0, 1, 1, "104|4|21|" + one + " scheduled products to clients 'with service'\n", 0},
        {1, 1, 0, 0, 1, "102|3|5|" + one + sin + y + discontinued + message, 1},
        {1, 0, 1, 0, 1, "102|3|20|" + one + sin + y + discontinued + none, 0},
        {1, 1, 0, 0, 0, "102|3|20|" + one + sin + y + discontinued + "\n", 0},
        {1, 0, 0, 0, 1, "102|3|20|" + one + sin + ".\n", 0},
        {0, 1, 0, 0, -1, "109|14|5|" + one + discontinued + message, 1},
        {0, 0, 1, 0, 1, "103|3|20|" + one + discontinued + none, 0},
        {0, 1, 0, 0, nullptr, "103|14|0|" + one + discontinued + "\n", 0},
        {0, 1, 0, 0, 2, "103|14|0|" + one + discontinued + "\n", 0},
        // Different counts, so that none can be in another's place.
        {3, 1, 1, 0, 1,
         "102|3|5|Today should be provided 3" + sin + ". and 2" + discontinued + message, 1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.pizarra);
        clear({"mascotas", "artplan", "TareasAgenda"});
        int idm = 0;
        const auto patients = [&](int count, int late, int ser) {
            for (int i = 0; i < count; ++i) {
                patientsOf({{++idm, ser}});
                for (int d = 1; d <= late; ++d)
                    doses({{idm, -60 * d, 10 - d}});
                doses({{idm, -200, 1, 3}, {idm, 0, 10}}); // one given long ago, one due today
            }
        };
        patients(c.toDay, 0, 0);
        patients(c.second, 1, 0);
        patients(c.third, 2, 0);
        patients(c.withService, 0, 5);
        setting("MedidasRevacDescont", c.discontinued);
        TareasDeInicio(s);
        EXPECT_EQ(Pizarra(" where dibujo < 105 or dibujo = 109"), c.pizarra);
        EXPECT_EQ(count(-50), c.messages);
        EXPECT_EQ(count(83), c.withService);
    }
}

TEST_F(Day, WhatTheLastStartHasBookedIsNotBookedAgain)
{
    patientsOf({{1, 5}});
    doses({{1, -10}});
    for (const int days : {10, 11}) {
        closed(days);
        TareasDeInicio(s);
        EXPECT_EQ(Tasks().empty(), days == 10) << "a dose of the last start's own day";
    }
}

TEST_F(Day, DosesOfClosedDaysAreBookedForTodayWhereThereIsAService)
{
    setting("MedidasRevacDescont", 1);
    closed(40);
    patientsOf({{1, 5}});
    for (int back : {11, 10, 1, 0})
        doses({{1, -back, 20 - back}});
    patientsOf({{2}, {3}, {4, 5, 1, true}});
    doses({{2, -30, 1}, {2, -1, 2}}); // due on a closed day: gives no task
    doses({{3, -1, 1}, {3, 0, 2}});   // second overdue
    doses({{4, 0}});
    TareasDeInicio(s);
    EXPECT_EQ(Tasks(), "83|1|2026-03-11|08:30:00|4|4|Vacunas - Rabies\n"
                       "83|1|2026-03-11|09:00:00|4|4|Vacunas - Rabies\n"
                       "83|1|2026-03-11|09:30:00|4|4|Vacunas - Rabies\n"
                       "-50|3|||1|4|Vaccination discontinued\n");
}

TEST_F(Day, DoseRemindersGoOutAheadOfTheDay)
{
    setting("tiempovencimiento", 3);
    closed(2);
    patientsOf({{1}, {2}, {3}, {4}, {5, 5}, {6}, {7}, {8, 0, 1, true}});
    doses({{1, 1, 1}, {2, 2, 2}, {3, 3, 300, 2}, {4, 4, 4}}); // reminders on days -2, -1, 0 and 1
    doses({{5, 3}});                                          // given by the clinic
    doses({{6, -50, 1}, {6, 3, 2}});                          // an older one is still open
    doses({{7, 3}, {8, 3}});
    s.clientes->Execute("update artplan set ana = -1 where idm = 7"); // already reminded
    for (const auto &[measure, medio] : measures) {
        SCOPED_TRACE(measure.toInt());
        clear({"TareasAgenda"});
        setting("MedidasRevac", measure);
        TareasDeInicio(s);
        const auto m = std::to_string(medio);
        EXPECT_EQ(Tasks(), medio ? "-42|2|||" + m + "|4|2\n-42|3|||" + m + "|4|300\n" : "");
        EXPECT_EQ(codes(" where codigo1 = 13"), medio ? "109|13|5\n" : "");
    }
    clear({"TareasAgenda"});
    setting("MedidasRevac", 1);
    setting("tiempovencimiento", nullptr); // no days ahead
    doses({{4, 0, 9}});
    TareasDeInicio(s);
    EXPECT_EQ(Tasks(), "-42|4|||1|4|9\n");
}

TEST_F(Day, BirthdaysAreGreetedByTheMeasureAndFeaturedClientsByTheirOwn)
{
    for (int idc : {2, 3})
        Client(idc);
    s.clientes->Execute("update clientes set perfil1 = -1, perfil3 = -1 where idc > 1");
    s.clientes->Execute("update clientes set perfil2 = -1 where idc = 3"); // pays late
    for (int idm = 1; idm <= 6; ++idm) {
        patientsOf({{idm, 0, idm <= 3 ? idm : 1, idm == 4}});
        const QDate born = idm == 5 ? QDate(2020, 3, 12) : QDate(2015 + idm, 3, 11);
        s.clientes->Execute("update mascotas set fecn = ? where idm = ?", born, idm);
    }
    s.clientes->Execute("update mascotas set fecn = null where idm = 6");
    for (const auto &[measure, medio] : measures) {
        SCOPED_TRACE(measure.toInt());
        clear({"TareasAgenda"});
        setting("MedidasCumple", measure);
        TareasDeInicio(s);
        const auto m = std::to_string(medio);
        EXPECT_EQ(Tasks(),
                  medio ? "-46|1|||" + m + "|0|\n-51|2|||1|0|\n-46|3|||" + m + "|0|\n" : "");
        EXPECT_EQ(Pizarra(" where codigo1 = 12"),
                  medio ? "109|12|5|3 patients birthday today. Communication with owners.\n"
                        : "109|12|0|3 patients birthday today.\n");
    }
}

TEST_F(Day, ADebtMovesOneStepWhenItsDaysHavePassed)
{
    const struct {
        int men, days;
    } debts[] = {{0, 29}, {0, 30}, {0, 95}, {1, 39}, {1, 40}, {2, 49}, {2, 50}, {3, 30}, {4, 99}};
    const std::pair<store::Value, bool> measures[] = {{1, true},        {3, true},  {0, false},
                                                      {nullptr, false}, {2, false}, {-1, false}};
    setting("diasdeudores", 30);
    for (int idc = 2; idc <= 10; ++idc)
        Client(idc);
    int runs = 0;
    for (const auto &[measure, avisa] : measures) {
        SCOPED_TRACE(measure.toInt());
        s.finanzas->Execute("delete * from ctactec");
        clear({"TareasAgenda"});
        int idc = 0;
        for (const auto &d : debts)
            s.finanzas->Execute("insert into ctactec (idc, fecultpago, men) values (?, ?, ?)",
                                ++idc, inside(-d.days), d.men);
        s.finanzas->Execute("insert into ctactec (idventa, idc, fecultpago, cancelado) values (99, "
                            "10, ?, -1)",
                            inside(-60));
        setting("MedidasDeudores", measure);
        TareasDeInicio(s);
        ++runs;
        EXPECT_EQ(Ver(*s.finanzas, "select idc, men from ctactec order by idc"),
                  "1|0\n2|1\n3|1\n4|1\n5|2\n6|2\n7|3\n8|4\n9|4\n10|0\n");
        EXPECT_EQ(Tasks(), avisa ? "-43|2|2026-03-11||3|0|Notification of Debt\n"
                                   "-43|3|2026-03-11||3|0|Notification of Debt\n"
                                   "-43|5|2026-03-11||3|0|Notification of Debt\n"
                                   "-43|7|2026-03-11||2|0|Notification of Debt\n"
                                 : "");
        EXPECT_EQ(Pizarra(" where codigo1 = 15")
                      .find(avisa ? "110|15|5|Detected 4 debtors" : "110|15|0|Detected 4 debtors"),
                  0u);
        // One late payment for each debt at its first step, whatever is sent.
        EXPECT_EQ(s.morvane->read("select sum(deudasdemoradas) from perfiles").toInt(), 2 * runs);
    }
}

TEST_F(Day, LapsedReservationsGoAndGuestsAreCountedUpToTheirLastDay)
{
    Client(2);
    for (int idm = 1; idm <= 6; ++idm)
        patientsOf({{idm, 0, idm <= 2 ? idm : 1}});
    Stay(1, u"r", -1, 3);
    Stay(2, u"r", -9, -5);
    Stay(3, u"r", 0, 3);  // guest has not arrived: lapses tomorrow
    Stay(4, u"h", -3, 0); // the last day
    Stay(5, u"h", -3, 2);
    s.clientes->Execute("update mascotas set int = -1 where idm = 6");
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(),
              "0|0|0|There are: 1 patients in care. (Listings for more information)\n"
              "108|0|0|Removed 2 accommodation reserves for non-compliance by the customer.\n"
              "108|9|0|Currently there 2 hosted pets\n");
    EXPECT_EQ(Ver(*s.clientes, "select idm from mhospedaje order by idm"), "3\n4\n5\n");
    EXPECT_EQ(Ver(*s.clientes, "select idm, hos from mascotas order by idm"),
              "1|0\n2|0\n3|1\n4|1\n5|1\n6|0\n");
    EXPECT_EQ(profiles(), "1|0|0|1\n2|0|0|1\n");

    Stay(6, u"h", -3, -1); // its stay is over
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(" where codigo1 = 9"),
              "108|9|0|Currently there 3 hosted pets 1 completed their registration period.\n");
}

TEST_F(Day, FeedingRoundsAreMadeAnewForASingleGuest)
{
    Appointment(agenda::TaskKind::Ration, 0, inside(-1)); // of yesterday
    patientsOf({{1}, {2}});
    Stay(1, u"h", -1, 2);
    setting("horaracion2", QTime(13, 0));
    TareasDeInicio(s);
    EXPECT_EQ(Tasks(), ""); // no rounds without a first hour

    setting("horaracion1", QTime(8, 0));
    for (int time = 0; time < 2; ++time) {
        TareasDeInicio(s);
        EXPECT_EQ(Tasks(), "-47|0|2026-03-11|08:00:00|0|0|\n-47|0|2026-03-11|13:00:00|0|0|\n");
        ASSERT_EQ(s.Alarmas.size(), 1u); // 8:00 is past
        EXPECT_EQ(s.Alarmas[0].hour, QTime(13, 0));
        EXPECT_EQ(s.Alarmas[0].ida, 0); // only loading sets it
    }
    Stay(2, u"h", -1, 2);
    TareasDeInicio(s);
    EXPECT_EQ(Tasks(), ""); // On purpose: two guests have no rounds.
}

TEST_F(Day, TheTaskFlagFallsWithTheLastOpenAppointment)
{
    for (int idm = 1; idm <= 4; ++idm)
        patientsOf({{idm}});
    s.clientes->Execute("update mascotas set tarea = -1 where idm < 4");
    Appointment(41, 1, inside(-30)); // open, however old
    Appointment(41, 2, hoy, true);
    Appointment(-42, 2, hoy);
    TareasDeInicio(s);
    EXPECT_EQ(Ver(*s.clientes, "select idm, tarea from mascotas order by idm"),
              "1|-1\n2|0\n3|0\n4|0\n");
}

TEST_F(Day, TheSummaryCountsOpenTasksAndOffersThePrint)
{
    patientsOf({{1}});
    Appointment(41, 1, hoy);
    Appointment(42, 1, hoy);
    Appointment(42, 1, hoy, true);
    Appointment(41, 1, inside(1));
    Appointment(-43, 1, hoy);
    Appointment(-100, 1, hoy); // a user's note counts as automatic because of its code
    Appointment(-43, 1, hoy, true);
    Appointment(-43, 1, inside(-1));
    const char *summary = "115|8|0|Were counted, at login, 2 Task / s or appointments / s for "
                          "today.\n"
                          "106|10|0|There are 2 task/s of Kelvara for today.\n";
    ask.alwaysNo.clear();
    for (bool si : {false, true}) {
        ask.wait(u"Print summary?"_s, si);
        TareasDeInicio(s);
        EXPECT_EQ(Pizarra(), summary);
        EXPECT_EQ(impresion.printed,
                  si ? QStringList{u"Day's agenda Wednesday, 11 March 2026"_s} : QStringList{});
    }
    clear({"TareasAgenda"});
    TareasDeInicio(s); // nothing to print, so no question
    EXPECT_EQ(Pizarra(), "");
}

TEST_F(Day, AppointmentsSinceTheLastStartCountAsKeptOrNot)
{
    Client(2);
    patientsOf({{1, 0, 1}, {2, 5, 2}});
    closed(2);
    Appointment(41, 1, inside(-2)); // counted by the last pass
    Appointment(41, 1, inside(-1), true);
    Appointment(41, 2, inside(-1));
    Appointment(-43, 1, inside(-1)); // not an appointment
    Appointment(41, 1, inside(1));
    Appointment(41, 1, hoy); // On purpose: open this morning counts as not kept.
    stock(2, 5, 1);          // On purpose: so does what this very pass books.
    TareasDeInicio(s);
    EXPECT_EQ(profiles(), "1|0|1|1\n2|0|0|2\n");
    EXPECT_EQ(Pizarra(" where codigo1 = 32"), "115|32|0|Some yesterday tasks were not done\n");
    s.morvane->Execute("update TareasAgenda set est = -1 where dia = ?", inside(-1));
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(" where codigo1 = 32"), "");
}

TEST_F(Day, VisitsOlderThanThirtyDaysAreForgotten)
{
    for (int back : {29, 30, 31})
        s.clientes->Execute("insert into FichasVisitadas (idm, fec) values (?, ?)", back,
                            inside(-back));
    TareasDeInicio(s);
    EXPECT_EQ(Ver(*s.clientes, "select idm from FichasVisitadas order by idm"), "29\n30\n");
}

TEST_F(Day, DaysOfTheCalendar)
{
    const std::string newOne = "106|0|0|Happy new year.\n";
    const std::pair<QDate, std::string> days[] = {
        {{2026, 12, 30}, ""},
        {{2026, 12, 31}, newOne},
        {{2027, 1, 1}, newOne},
        {{2027, 1, 2}, ""},
        {{2027, 8, 1}, ""},
        {{2027, 8, 6}, "106|0|0|Happy day of the veterinarian.\n"},
        // On purpose: a birthday on 29 February counts in leap years only.
        {{2027, 2, 28}, ""},
        {{2027, 3, 1}, ""},
        {{2028, 2, 29}, "109|12|0|1 patients birthday today.\n"},
        {{2028, 3, 1}, ""}, // no birthdays of closed days either
    };
    patientsOf({{1}});
    s.clientes->Execute("update mascotas set fecn = ?", QDate(2020, 2, 29));
    for (const auto &[dia, board] : days) {
        s.reloj.hoy = dia;
        closed(3);
        TareasDeInicio(s);
        EXPECT_EQ(Pizarra(), board) << dia.toString().toStdString();
    }
}

TEST_F(Day, StockBelowItsMinimumAndBatchesAboutToExpire)
{
    const char *under = "113|17|0|Some products are below the established minimum\n";
    const char *expires = "113|31|0|Some products are about to expire.\n";
    s.finanzas->Execute("update articulos set can = 5, min = 5 where ida = 4");
    s.finanzas->Execute("insert into artvenc (ida, can, ven) values (4, 5, ?)", inside(31));
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(), "");
    s.finanzas->Execute("update articulos set can = 4.9 where ida = 4");
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(), under);
    s.finanzas->Execute("update artvenc set ven = ?", inside(30));
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(), std::string(under) + expires);
}

TEST_F(Day, NewClientsWithAnAddressAreGreetedOnce)
{
    const std::pair<int, const char16_t *> newOnes[] = {
        {0, u"a@b.c"}, {-2, u"d@e.f"}, {-3, u"g@h.i"}, {0, u""}, {1, u"j@k.l"}};
    int idc = 1;
    for (const auto &[entered, email] : newOnes) {
        Client(++idc);
        s.clientes->Execute("update clientes set feci = ?, email = ? where idc = ?",
                            inside(entered), email, idc);
    }
    s.clientes->Execute("update clientes set feci = ? where idc = 1", hoy); // its address is Null
    for (const store::Value &off : {store::Value(2), store::Value(0), store::Value()}) {
        setting("AutNuevoCliente", off);
        TareasDeInicio(s);
        EXPECT_EQ(Tasks(), "");
    }
    setting("AutNuevoCliente", 1);
    const char *greetings = "-71|2|2026-03-11||1|0|Greetings from Patitas\n"
                            "-71|3|2026-03-11||1|0|Greetings from Patitas\n";
    TareasDeInicio(s);
    EXPECT_EQ(Tasks(), greetings);
    EXPECT_EQ(Pizarra(" where codigo2 = 5"),
              "109|10|5|We must send 2 messages to for new clients\n");
    s.reloj.hoy = inside(1);
    TareasDeInicio(s);
    EXPECT_EQ(Tasks(), greetings + "-71|6|2026-03-12||1|0|Greetings from Patitas\n"s);
}

TEST_F(Day, NewsStandOnTheBoardUntilTheirLastDay)
{
    const QString local = CarpetaLocalDeDatos();
    ASSERT_TRUE(local.startsWith(folder.path()));
    ASSERT_TRUE(QDir().mkpath(local));
    const auto file = [&](const char *text) {
        QFile f(local + u"notificacionesKelvara.txt"_s);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(text);
    };
    file("#2026-03-11#,\"Version 5, now for dogs\"\r\n");
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(), "106|0|0|Version 5, now for dogs\n");
    setting("RecibirNotificaciones", false);
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(), "");
    setting("RecibirNotificaciones", true);
    for (const char *old : {"2026-03-10,Old", "what is this", ""}) {
        file(old); // garbage gives no message
        TareasDeInicio(s);
        EXPECT_EQ(Pizarra(), "");
    }
}

TEST_F(Day, AFailingStatementIsLoggedAndShownAndTheOthersRun)
{
    patientsOf({{1}});
    s.clientes->Execute("update mascotas set fecn = ?", QDate(2020, 3, 11));
    Stay(1, u"r", -1, 3);
    Appointment(41, 1, hoy);
    s.finanzas->Execute("insert into ctactec (idventa, idc, fecultpago) values (1, 1, ?)",
                        inside(-60));
    s.morvane->Execute("drop table perfiles");
    s.finanzas->Execute("alter table artvenc drop column ven");
    for (const char16_t *que : {u"\"perfiles\"", u"\"Perfiles\"", u"\"perfiles\"", u"\"Ven\""})
        ask.wait(QString::fromUtf16(que));
    TareasDeInicio(s);
    EXPECT_EQ(Ver(*s.morvane, "select num, fec, fuente from errores"),
              "3078|2026-03-11|Tareas de Inicio. \n3078|2026-03-11|Tareas de Inicio. \n"
              "3078|2026-03-11|Tareas de Inicio. \n3061|2026-03-11|Tareas de Inicio. \n");
    // The other statements still take effect: the debt has moved on, the kennel is free.
    EXPECT_EQ(Ver(*s.finanzas, "select men from ctactec"), "1\n");
    EXPECT_EQ(Ver(*s.clientes, "select hos from mascotas"), "0\n");
    EXPECT_EQ(Ver(*s.clientes, "select idm from mhospedaje"), "");
    EXPECT_EQ(Pizarra(" where dibujo <> 110"),
              "109|12|0|1 patients birthday today.\n"
              "108|0|0|Removed 1 accommodation reserves for non-compliance by the customer.\n"
              "115|8|0|Were counted, at login, 1 Task / s or appointments / s for today.\n");
}

TEST_F(Day, TasksThatCannotBeWrittenAreToldOnceAndLoggedEachAndTheFoodIsConsumed)
{
    patientsOf({{1, 5}, {2, 5}, {3, 5}});
    for (int idm = 1; idm <= 3; ++idm)
        stock(idm, idm < 3 ? 5 : 50, 1);
    s.morvane->Execute("alter table TareasAgenda drop column artaux");
    ask.wait(u"artaux"_s);
    TareasDeInicio(s);
    EXPECT_EQ(Ver(*s.clientes, "select can, men, FaltaHoy from consumo order by idm"),
              "4|-1|-1\n4|-1|-1\n49|0|0\n");
    EXPECT_TRUE(inBoard(u"Detected 2 clients"_s));
    EXPECT_EQ(s.morvane->read("select count(*) from errores").toInt(), 2);
}

TEST_F(Day, ARunThatDiesLeavesNothingAndIsRunAgain)
{
    eater();
    s.progress.stage = [this](const QString &t) {
        if (t == s(text::CheckingDebts))
            throw std::runtime_error("power cut");
    };
    EXPECT_THROW(IniciarTareas(s), std::runtime_error);
    s.progress = {};
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "100\n");
    EXPECT_TRUE(IniciarTareas(s));
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "99\n"); // consumed only once
}

namespace
{

class Door : public Day
{
protected:
    QStringList done;
    LaterSteps steps{[this](Sesion &, QDate d) {
                         done << u"outbox %1, last start %2"_s.arg(
                             d.toString(Qt::ISODate),
                             s.configuracion["FechaUltimoInicio"].toText());
                         return true;
                     },
                     [this](Sesion &) { done << u"month"_s; }};

    /// An appointment of today, as booked at another terminal.
    void appointmentWithAlarm()
    {
        Appointment(41, 0, hoy, false, QTime(9, 30));
        s.Alarmas.clear();
    }
    std::string dates()
    {
        return Ver(*s.morvane, "select FechaInicioAnterior, FechaUltimoInicio, "
                               "FechaUltimoInicioMes from configuracion");
    }
};

} // namespace

TEST_F(Door, TheFirstStartOfADayRunsThePassThenTheOutboxThenTheMonth)
{
    closed(3);
    setting("FechaUltimoInicioMes", QDate(2026, 2, 27));
    QStringList stages;
    s.progress.stage = [&](const QString &t) { stages << t; };
    const QString box = u"outbox 2026-03-11, last start 2026-03-11"_s;
    EXPECT_TRUE(IniciarTareas(s, steps));
    EXPECT_EQ(done, QStringList({box, u"month"_s, box}));
    EXPECT_EQ(dates(), "2026-03-08|2026-03-11|2026-03-11\n");
    EXPECT_EQ(stages.join(u'\n').toStdString(),
              "Categories for consumption\nScheduled categories expirations\nChecking customers "
              "with debt\nBoarding\nUpdating alarm vector\nPerforming tasks\nMonthly tasks");

    // A second start only loads today's alarms.
    appointmentWithAlarm();
    AgregarPizarra(s, u"kept"_s, 0, 0, 0);
    EXPECT_FALSE(IniciarTareas(s, steps));
    EXPECT_EQ(done.size(), 3);
    EXPECT_EQ(dates(), "2026-03-08|2026-03-11|2026-03-11\n");
    EXPECT_TRUE(inBoard(u"kept"_s));
    EXPECT_EQ(s.Alarmas.size(), 1u);
}

TEST_F(Door, TheMonthIsKnownByItsNumberAlone)
{
    const std::pair<store::Value, bool> cases[] = {
        {QDate(2026, 3, 1), false},  {QDate(2026, 2, 28), true},
        {QDate(2025, 3, 11), false}, // On purpose: nothing runs exactly twelve months later.
        {QDate(2026, 4, 1), true},   {nullptr, true},
    };
    for (const auto &[last, corre] : cases) {
        SCOPED_TRACE(last.toText().toStdString());
        done.clear();
        setting("FechaUltimoInicio", hoy); // the monthly step does not need a new day
        setting("FechaUltimoInicioMes", last);
        EXPECT_FALSE(IniciarTareas(s, steps));
        EXPECT_EQ(done.size(), corre ? 2 : 0);
        EXPECT_EQ(s.configuracion["FechaUltimoInicioMes"], corre ? store::Value(hoy) : last);
    }
}

TEST_F(Door, ALastStartInTheFutureRunsNothingAndALostOneRunsOneDay)
{
    eater();
    closed(-2);
    EXPECT_FALSE(IniciarTareas(s, steps));
    EXPECT_EQ(done, QStringList());
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "100\n");
    setting("FechaUltimoInicio", nullptr);
    EXPECT_TRUE(IniciarTareas(s));
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "99\n");
}

TEST_F(Door, TwoTerminalsRunTheDayAndTheMonthOnce)
{
    eater();
    setting("FechaUltimoInicioMes", QDate(2026, 2, 1));
    Sesion other(ask, impresion, store::Language::English);
    other.reloj = s.reloj;
    store::setDataFolder(other, folder.path());
    ASSERT_FALSE(store::openStore(other));
    ASSERT_LT(other.configuracion["FechaUltimoInicio"].toDate(), hoy); // read too early
    EXPECT_TRUE(IniciarTareas(s, steps));
    EXPECT_FALSE(IniciarTareas(other, steps));
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "99\n");
    EXPECT_EQ(done.count(u"month"_s), 1);
}

TEST_F(Door, ATerminalWaitsForTheOneThatRunsTheDay)
{
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const QString mark = folder.path() + u"/over"_s;
    const QByteArray file = QFile::encodeName(mark);
    const pid_t child = fork();
    if (child == 0) {
        const auto dia = s.motor->lock(u"kelvara.dia"_s, 1);
        [[maybe_unused]] auto n = write(ready[1], dia->isHeld() ? "y" : "n", 1);
        usleep(300000);
        close(creat(file.constData(), 0600));
        _exit(0); // dies holding the lock, without having run
    }
    char taken = 0;
    ASSERT_EQ(read(ready[0], &taken, 1), 1);
    ASSERT_EQ(taken, 'y');
    QStringList stages; // those shown before the other one ended
    s.progress.stage = [&](const QString &t) {
        if (!QFile::exists(mark))
            stages << t;
    };
    EXPECT_TRUE(IniciarTareas(s));
    // While waiting, the user sees why and for whom.
    EXPECT_EQ(
        stages,
        QStringList{s(text::AnotherTerminalRunsTheDay) + u' '
                    + s(text::HeldBy).arg(QSysInfo::machineHostName() + u" (%1)"_s.arg(child))});
    waitpid(child, nullptr, 0);
    close(ready[0]);
    close(ready[1]);
}

TEST_F(Door, ADayThatCannotBeLockedIsToldAndTheAlarmsRingAllTheSame)
{
    eater();
    appointmentWithAlarm();
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"kelvara.dia"_s));
    EXPECT_THROW(IniciarTareas(s), store::StoreError);
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "100\n");
    EXPECT_EQ(s.Alarmas.size(), 1u);
    EXPECT_TRUE(QDir(folder.path()).rmdir(u"kelvara.dia"_s));
    EXPECT_TRUE(IniciarTareas(s));
}
