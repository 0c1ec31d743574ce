#include "agenda/alarms.h"
#include "agenda/tasks.h"
#include "support/clinic.h"

using namespace agenda;

namespace
{

class Tasks : public Clinic
{
protected:
    Task base(int tip, QDate dia = {}, QTime hor = {}, QTime ala = {})
    {
        Task t;
        t.tip = tip;
        t.ida = 7;
        t.dia = dia;
        t.hor = hor;
        t.ala = ala;
        t.fcreacion = hoy;
        return t;
    }
    QString open() { return allRows(*s.morvane, "select id, est from TareasAgenda order by id"); }
};

} // namespace

TEST_F(Tasks, KeepsHourAndAlarmOnlyWithADay)
{
    const int withoutDay = AgregarTarea(s, base(-42, {}, QTime(9, 30), QTime(9, 15)));
    const int withAll = AgregarTarea(s, base(41, hoy.addDays(1), QTime(9, 30, 59), QTime(9, 15)));
    EXPECT_EQ(withAll, withoutDay + 1);
    EXPECT_EQ(allRows(*s.morvane, "select dia, hor, ala, est from TareasAgenda order by id"),
              QStringLiteral("|||0\n2026-03-12|09:30:00|09:15:00|0\n"));
    EXPECT_TRUE(s.Alarmas.empty()); // the alarm is for tomorrow
}

TEST_F(Tasks, AnAlarmOfTodayJoinsTheSessionWithoutASubject)
{
    AgregarTarea(s, base(41, hoy, QTime(10, 0), QTime(9, 45)));
    ASSERT_EQ(s.Alarmas.size(), 1u);
    EXPECT_EQ(s.Alarmas[0].hour, QTime(9, 45));
    EXPECT_FALSE(s.Alarmas[0].ida.has_value()); // On purpose: only loading sets it.
    loadAlarms(s);
    ASSERT_EQ(s.Alarmas.size(), 1u);
    EXPECT_EQ(s.Alarmas[0].ida, 7);
}

TEST_F(Tasks, PastAlarmsAndDoneTasksAreNotLoaded)
{
    AgregarTarea(s, base(41, hoy, QTime(9, 0), QTime(8, 59)));
    AgregarTarea(s, base(41, hoy, QTime(9, 0), QTime(9, 0)));
    AgregarTarea(s, base(42, hoy, QTime(11, 0), QTime(11, 0)));
    s.morvane->Execute("update TareasAgenda set est = -1 where tip = 42");
    loadAlarms(s);
    ASSERT_EQ(s.Alarmas.size(), 1u);
    EXPECT_EQ(s.Alarmas[0].hour, QTime(9, 0));
}

TEST_F(Tasks, TheCounterStartsAgainBeforeItsEndAndOldTasksGo)
{
    AgregarTarea(s, base(41, hoy));
    s.morvane->Execute("update TareasAgenda set fcreacion = ?", hoy.addDays(-1));
    AgregarTarea(s, base(42, hoy));
    s.morvane->Execute("update configuracion set contadorTareas = ?", 2147483644);
    EXPECT_EQ(AgregarTarea(s, base(43, hoy)), 2147483645);
    EXPECT_EQ(AgregarTarea(s, base(44, hoy)), 1);
    EXPECT_EQ(allRows(*s.morvane, "select tip from TareasAgenda order by tip"),
              QStringLiteral("42\n43\n44\n"));
}

TEST_F(Tasks, FreeSlotIsPushedByTasksOfAnyDayButOnlyOncePerTaskOfToday)
{
    const int service = 30000; // not in Servicios, so 30 minutes
    AgregarTarea(s, base(41, hoy.addDays(5), QTime(8, 30)));
    EXPECT_EQ(BuscarHorarioLibre(s, service), QTime(8, 30)); // no tasks today, so no step

    AgregarTarea(s, base(41, hoy, QTime(18, 0)));
    // One task today allows one step. On purpose: the task at 8:30 on another day is in the way.
    EXPECT_EQ(BuscarHorarioLibre(s, service), QTime(9, 0));

    AgregarTarea(s, base(41, hoy.addDays(5), QTime(9, 5)));
    EXPECT_EQ(BuscarHorarioLibre(s, service), QTime(9, 0)); // still one step
    AgregarTarea(s, base(41, hoy, QTime(19, 0)));
    EXPECT_EQ(BuscarHorarioLibre(s, service), QTime(9, 30)); // 9:05 is within five minutes

    s.finanzas->Execute("insert into Servicios (ida, tiempo, tipo) values (?, 45, 1)", service);
    EXPECT_EQ(BuscarHorarioLibre(s, service), QTime(9, 15));
}

TEST_F(Tasks, AFullDayGivesTheFirstHourAgain)
{
    for (int m = 8 * 60 + 30; m <= 22 * 60; m += 30)
        AgregarTarea(s, base(41, hoy, QTime(m / 60, m % 60)));
    EXPECT_EQ(BuscarHorarioLibre(s, 30000), QTime(8, 30));
    s.morvane->Execute("delete * from TareasAgenda where hor = ?", QTime(22, 0));
    EXPECT_EQ(BuscarHorarioLibre(s, 30000), QTime(22, 0)); // not yet later than 22:00
}

TEST_F(Tasks, OneSaleClosesTheOldestTaskOnly)
{
    s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (90, 2, ?)",
                        QStringLiteral("Vacuna a domicilio"));
    auto t = base(90, hoy);
    t.artaux = 4;
    t.fcreacion = hoy.addDays(-2);
    AgregarTarea(s, t); // 1
    t.fcreacion = hoy.addDays(-5);
    AgregarTarea(s, t); // 2, the oldest
    t.artaux = 9;
    t.fcreacion = hoy.addDays(-9);
    AgregarTarea(s, t); // 3, another product

    MarcarTareaRealizada(s, 90, 4, 7);
    EXPECT_EQ(open(), QStringLiteral("1|0\n2|-1\n3|0\n"));
    EXPECT_EQ(allRows(*s.morvane, "select frealizacion from TareasAgenda where id = 2"),
              QStringLiteral("2026-03-11\n"));
    // No task of that product: any of the same service.
    MarcarTareaRealizada(s, 90, 77, 7);
    EXPECT_EQ(open(), QStringLiteral("1|0\n2|-1\n3|-1\n"));
    // An unknown article: by the auxiliary product alone.
    MarcarTareaRealizada(s, 12345, 4, 7);
    EXPECT_EQ(open(), QStringLiteral("1|-1\n2|-1\n3|-1\n"));
}
