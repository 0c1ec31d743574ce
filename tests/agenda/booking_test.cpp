#include "agenda/booking.h"
#include "agenda_clinic.h"
#include "store/settings_row.h"
#include "texts/texts.h"

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

class Appointments : public ClinicWithAgenda
{
protected:
    Appointment appointment(int item, QTime hour, QDate dia = {}, int idm = 1)
    {
        Appointment t;
        t.item = item;
        t.idm = idm;
        t.dia = dia.isValid() ? dia : hoy;
        t.hour = hour;
        return t;
    }
};

} // namespace

TEST_F(Appointments, OffersTheServicesByNameAndThenAnOwnTask)
{
    const auto items = appointmentConcepts(s);
    ASSERT_GT(items.size(), 3u);
    EXPECT_EQ(items[0].nom, u"A check"_s);
    EXPECT_EQ(items[1].nom, u"A check at home"_s);
    EXPECT_EQ(items.back().ida, TaskKind::UserTask);
    EXPECT_EQ(items.back().nom, s(text::UserTask));
}

TEST_F(Appointments, RemindsWhenAskedAndWhoForgetsWhenTheSettingSaysSo)
{
    service(210, u"Of no kind"_s, 30, {});
    s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (211, 2, 'No row')");
    const auto forced = [this](int item) { return carriesReminder(s, appointment(item, {9, 0})); };
    store::saveSetting(s, "AutRecordatorioCitasOlvida", 1);
    EXPECT_FALSE(forced(control)) << "nobody says that she forgets";
    s.clientes->Execute("update clientes set Perfil4 = -1 where idc = 1");
    EXPECT_TRUE(forced(control)); // kind 1
    EXPECT_TRUE(forced(surgery)); // kind 3
    EXPECT_FALSE(forced(visit));  // kind 2
    EXPECT_FALSE(forced(210));    // Null
    EXPECT_FALSE(forced(211));    // no row among the services
    EXPECT_FALSE(forced(TaskKind::UserTask));
    store::saveSetting(s, "AutRecordatorioCitasOlvida", 2);
    EXPECT_FALSE(forced(control));

    Appointment requested = appointment(visit, {9, 0});
    requested.remind = true;
    EXPECT_TRUE(carriesReminder(s, requested));
    requested.idm = 0; // nobody to remind
    EXPECT_FALSE(carriesReminder(s, requested));
}

TEST_F(Appointments, WritesTheTaskAndMarksThePatient)
{
    Appointment t = appointment(control, {9, 30, 20}, hoy.addDays(1));
    t.alarm = {9, 15};
    t.description = u"Ada's dog"_s;
    t.remind = true;
    book(s, t);
    EXPECT_EQ(tasks("tip, ida, dia, hor, ala, est, medio, fcreacion, artaux, des"),
              u"201|1|2026-03-12|09:30:00|09:15:00|0|1|2026-03-11|0|Ada s dog\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select idm, tarea from mascotas order by idm"),
              u"1|-1\n2|0\n"_s);
    // On purpose: nothing prevents two tasks at the same time.
    book(s, t);
    EXPECT_EQ(dayAppointments(s, hoy.addDays(1)).size(), 2u);
}

TEST_F(Appointments, AnOwnTaskIsTheUsersAndAsksNothing)
{
    s.user.idu = 2; // also the number of a patient
    Appointment t = appointment(TaskKind::UserTask, {9, 30});
    t.remind = true;
    book(s, t);
    EXPECT_EQ(tasks("tip, ida, medio"), u"-100|2|0\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select tarea from mascotas where idm = 2"), u"0\n"_s);
}

TEST_F(Appointments, OffersTheSheetForTodayBeforeAQuarterPastTen)
{
    ask.wait(s(text::PrintSummaryQuestion));
    book(s, appointment(control, {9, 30}));
    ask.wait(s(text::UpdateSummaryQuestion), false);
    book(s, appointment(control, {22, 14}));
    EXPECT_EQ(impresion.printed.size(), 1);
    book(s, appointment(control, {22, 15}));
    book(s, appointment(control, {22, 30}));
    book(s, appointment(control, {9, 30}, hoy.addDays(1)));
    // A day with only feeding rounds and users' tasks still counts as empty.
    s.morvane->Execute("delete * from TareasAgenda");
    task(TaskKind::Ration, 0, hoy, {8, 0});
    task(TaskKind::UserTask, 1, hoy, {8, 0});
    ask.wait(s(text::PrintSummaryQuestion), false);
    book(s, appointment(control, {9, 30}));
    EXPECT_EQ(impresion.printed.size(), 1);
}

TEST(AppointmentHour, FindsWhatIsNearAnHour)
{
    std::vector<DayTask> dia(4);
    dia[1].hor = {9, 0};
    dia[2].hor = {9, 20};
    dia[3].hor = {9, 30};
    EXPECT_EQ(nearestRow(dia, {9, 30}), 3) << "exactly at it, though an earlier one is near";
    EXPECT_EQ(nearestRow(dia, {9, 15}), 1) << "the first within a quarter of an hour";
    EXPECT_EQ(nearestRow(dia, {9, 45}), 3);
    EXPECT_EQ(nearestRow(dia, {9, 46}), -1);
    EXPECT_EQ(nearestRow(dia, {8, 44}), -1);
    EXPECT_EQ(nearestRow({}, {9, 0}), -1);
    EXPECT_EQ(rowAbove(1), 1);
    EXPECT_EQ(rowAbove(2), 1);
}

TEST(AppointmentHour, IsTypedAsPeopleDo)
{
    const std::pair<QString, QTime> cases[] = {
        {u"9"_s, {9, 0}},
        {u" 930 "_s, {9, 30}},
        {u"0930"_s, {9, 30}},
        {u"9:30"_s, {9, 30}},
        {u"21.30"_s, {21, 30}},
        {u"9h30"_s, {9, 30}},
        {u"14 h"_s, {14, 0}},
        {u"9:30 pm"_s, {21, 30}},
        {u"12:05 AM"_s, {0, 5}},
        {u"12 p. m."_s, {12, 0}},
        {u"23:59:58"_s, {23, 59}},
        {u"00:00"_s, {0, 0}},
        {u"24:00"_s, {}},
        {u"9:60"_s, {}},
        {u"13 pm"_s, {}},
        {u"nine"_s, {}},
        {u""_s, {}},
        {u"9:3"_s, {}},
        {u"12345678"_s, {}},
        {u"9:30:00\u00a0a. m."_s, {9, 30}},
    };
    for (const auto &[text, hour] : cases)
        EXPECT_EQ(typedHour(text), hour) << text.toStdString();
    // What the box shows can be parsed again, whatever the locale.
    const QLocale before;
    for (const auto &country :
         {QLocale(QLocale::Spanish, QLocale::Mexico), QLocale(QLocale::Portuguese, QLocale::Brazil),
          QLocale(QLocale::English, QLocale::UnitedStates),
          QLocale(QLocale::Spanish, QLocale::Uruguay)}) {
        QLocale::setDefault(country);
        EXPECT_EQ(typedHour(longHour({21, 5})), QTime(21, 5)) << country.name().toStdString();
    }
    QLocale::setDefault(before);
}
