#include "agenda/day_list.h"
#include "agenda/hours_layout.h"
#include "agenda_clinic.h"
#include "texts/texts.h"

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

class AgendaDay : public ClinicWithAgenda
{
protected:
    QString alarms()
    {
        QString t;
        for (const store::Alarm &a : s.Alarmas)
            t += a.hour.toString(u"HH:mm") + (a.attended ? u" silent"_s : u" rings"_s) + u'\n';
        return t;
    }
};

} // namespace

TEST_F(AgendaDay, ListsAppointmentsUsersTasksAndFeedingByTheHour)
{
    task(control, 1, hoy, {10, 30}, u"limps"_s);
    task(TaskKind::UserTask, 2, hoy, {8, 0}, u"call the lab"_s); // user 2, not patient 2
    task(TaskKind::Ration, 0, hoy, {9, 0});
    task(TaskKind::DoseReminder, 1, hoy, {7, 0}); // a communication, not on the list
    task(control, 1, hoy.addDays(1), {7, 0});
    const auto dia = dayTasks(s, hoy);
    ASSERT_EQ(dia.size(), 3u);
    EXPECT_EQ(dia[0].item, s(text::UserTask));
    EXPECT_EQ(dia[0].detail, longHour({8, 0}) + u"\ncall the lab"_s);
    EXPECT_EQ(dia[0].patient, QString()) << "the user's id is no patient's";
    EXPECT_EQ(dia[1].detail, longHour({9, 0}));
    EXPECT_EQ(dia[1].icon, u"alimentarhos"_s);
    EXPECT_EQ(dia[2].detail,
              longHour({10, 30}) + u"\nlimps\nToby\nClient: Moss, Ada\nPhones: 555-0101 / 099-1"_s);
    EXPECT_EQ(dia[2].icon, u"TurnoCon"_s);
    EXPECT_EQ(dia[2].minutes, 45);

    const auto appointments = dayAppointments(s, hoy);
    ASSERT_EQ(appointments.size(), 1u);
    // The task of a deleted patient can still be read.
    task(30000, 99, hoy, {});
    EXPECT_EQ(dayTasks(s, hoy).front().detail, QString()) << "without an hour it comes first";
}

TEST_F(AgendaDay, TellsWhatTheSystemDecidedOnToday)
{
    task(TaskKind::DoseReminder, 2, {}, {}, {}, {}, 1);
    task(TaskKind::DebtReminder, 1, {}, {}, {}, {}, 2);
    task(TaskKind::FoodShortage, 1, {}, {}, {}, {}, 4); // a delivery round, no message
    task(control, 1, hoy, {9, 0}, {}, {}, 1);           // booked by hand
    s.morvane->Execute("update TareasAgenda set fmedio = ? where tip = -43", hoy);
    task(TaskKind::Birthday, 1, {}, {}, {}, {}, 3);
    s.morvane->Execute("update TareasAgenda set fcreacion = ? where tip = -46", hoy.addDays(-1));
    QString t;
    for (const KelvaraTask &k : kelvaraTasks(s))
        t += k.reason + u'|' + k.addressee + u'|' + k.medio + (k.done ? u"|out\n"_s : u"|\n"_s);
    EXPECT_EQ(t, s(text::PlannedProductReminder) + u"|Patient: Mia|"_s + s(text::ByMail) + u"|\n"_s
                     + s(text::DebtReminder) + u"|Client: Moss, Ada|"_s + s(text::ByLetter)
                     + u"|out\n"_s);
}

TEST_F(AgendaDay, DelaysAndDeletesOnlyForWhoMayAndWhoSaysYes)
{
    const int one = task(control, 1, hoy, {9, 30}), dos = task(control, 2, hoy, {10, 0});
    s.user.ut = 1;
    for (int i = 0; i < 3; ++i)
        ask.wait(s(text::FeatureNotAvailable));
    EXPECT_FALSE(passTasks(s, {one}, hoy.addDays(1)));
    EXPECT_FALSE(deleteTasks(s, {one}));
    EXPECT_TRUE(moveTasks(s, {{one, hoy, {11, 0}}}).empty());
    s.user.ut = 2;
    ask.wait(s(text::DelayTasksQuestion), false);
    ask.wait(s(text::DeleteQuestion), false);
    EXPECT_FALSE(passTasks(s, {one, dos}, hoy.addDays(1)));
    EXPECT_FALSE(deleteTasks(s, {one}));
    EXPECT_FALSE(passTasks(s, {}, hoy)) << "nothing is asked about nothing";
    EXPECT_EQ(tasks(), u"1|2026-03-11|09:30:00|0\n2|2026-03-11|10:00:00|0\n"_s);

    ask.wait(s(text::DelayTasksQuestion) + u"\n\n2 tasks\n→ "_s
             + QLocale().toString(hoy.addDays(2), QLocale::LongFormat));
    EXPECT_EQ(passTasks(s, {dos, one}, hoy.addDays(2))->size(), 2u);
    EXPECT_EQ(moveTasks(s, {{one, hoy.addDays(1), {11, 15}}}).size(), 1u);
    EXPECT_EQ(tasks(), u"1|2026-03-12|11:15:00|0\n2|2026-03-13|10:00:00|0\n"_s);
    ask.wait(s(text::DeleteQuestion) + u"\n\n11:15  A check, Toby"_s);
    EXPECT_TRUE(deleteTasks(s, {one}));
    EXPECT_TRUE(moveTasks(s, {{one, hoy, {11, 0}}}).empty()) << "it is gone";
    EXPECT_FALSE(giveBackTasks(s, {{one, hoy, {}, {}}}));
    EXPECT_FALSE(toggleDone(s, one));
    EXPECT_EQ(tasks("id"), u"2\n"_s);
}

TEST_F(AgendaDay, DoneSilencesTheFirstAlarmOfThatTimeAndKindForAnyUser)
{
    s.user.ut = 1;
    task(surgery, 1, hoy, {11, 0}, {}, {10, 45});
    const int id = task(control, 1, hoy, {11, 0}, {}, {10, 45});
    task(control, 2, hoy, {11, 0}, {}, {10, 45});
    EXPECT_TRUE(toggleDone(s, id));
    EXPECT_EQ(alarms(), u"10:45 rings\n10:45 silent\n10:45 rings\n"_s);
    EXPECT_EQ(tasks("est"), u"0\n-1\n0\n"_s);
    EXPECT_FALSE(toggleDone(s, id));
    EXPECT_EQ(alarms(), u"10:45 rings\n10:45 rings\n10:45 rings\n"_s);
    // A task of another day has no alarm here, even if a task of today is otherwise the same.
    const int other = task(control, 1, hoy.addDays(1), {11, 0}, {}, {10, 45});
    EXPECT_TRUE(toggleDone(s, other));
    EXPECT_EQ(alarms(), u"10:45 rings\n10:45 rings\n10:45 rings\n"_s);
}

TEST_F(AgendaDay, AnAlarmFollowsItsTaskAndNoOther)
{
    const int id = task(control, 1, hoy, {11, 0}, {}, {10, 45});
    task(control, 2, hoy, {11, 0}, {}, {10, 45}); // same time and kind
    moveTasks(s, {{id, hoy, {12, 30}}});
    EXPECT_EQ(alarms(), u"12:15 rings\n10:45 rings\n"_s);
    moveTasks(s, {{id, hoy.addDays(1), {0, 10}}});
    EXPECT_EQ(alarms(), u"10:45 rings\n"_s);
    EXPECT_EQ(tasks("dia, hor, ala"),
              u"2026-03-12|00:10:00|00:00:00\n2026-03-11|11:00:00|10:45:00\n"_s)
        << "an alarm stays within its day";
    ask.wait(s(text::DelayTasksQuestion));
    passTasks(s, {id}, hoy);
    EXPECT_EQ(alarms(), u"10:45 rings\n00:00 rings\n"_s);
    ask.wait(s(text::DeleteQuestion));
    deleteTasks(s, {id});
    EXPECT_EQ(alarms(), u"10:45 rings\n"_s);

    // Tasks that are done, or were booked at another terminal, have no alarm here to move.
    const int done = task(control, 1, hoy, {11, 0}, {}, {10, 45});
    s.morvane->Execute("update TareasAgenda set est = -1 where id = ?", done);
    const int foreign = task(control, 1, hoy, {11, 0}, {}, {10, 45});
    s.Alarmas.resize(1);
    ask.wait(s(text::DelayTasksQuestion));
    passTasks(s, {done, foreign}, hoy.addDays(1));
    ask.wait(s(text::DeleteQuestion));
    deleteTasks(s, {done, foreign});
    EXPECT_EQ(alarms(), u"10:45 rings\n"_s);
}

TEST_F(AgendaDay, WhatIsTakenBackStandsAsItDidAndDoesNotRingTwice)
{
    const int id = task(control, 1, hoy, {11, 0}, {}, {10, 45});
    const int note = task(TaskKind::UserTask, 1, hoy, {}, {}, {10, 45});
    s.Alarmas[0].attended = true; // it has rung
    const QString before = tasks("id, dia, hor, ala");
    const auto spots = moveTasks(s, {{id, hoy, {11, 15}}, {note, hoy.addDays(1), {14, 30}}});
    EXPECT_EQ(alarms(), u"10:45 silent\n11:00 rings\n"_s);
    EXPECT_TRUE(giveBackTasks(s, spots));
    EXPECT_EQ(tasks("id, dia, hor, ala"), before) << "the note without an hour";
    EXPECT_EQ(alarms(), u"10:45 silent\n10:45 rings\n"_s);
}

TEST(Direction, RowsAreTakenAsTheSelectionRan)
{
    EXPECT_EQ(inItsDirection({2, 3, 4}, 4), QList({2, 3, 4}));
    EXPECT_EQ(inItsDirection({2, 3, 4}, 2), QList({4, 3, 2}));
    EXPECT_EQ(inItsDirection({7}, 7), QList({7}));
    EXPECT_EQ(inItsDirection({}, -1), QList<int>{});
}

namespace
{
std::string lanes(const std::vector<Section> &sections)
{
    std::string t;
    for (const Lane &c : setSideBySide(sections))
        t += std::to_string(c.index) + '/' + std::to_string(c.total) + ' ';
    return t;
}
} // namespace

TEST(DayHours, WhatOverlapsStandsSideBySide)
{
    EXPECT_EQ(lanes({}), "");
    EXPECT_EQ(lanes({{540, 570}, {570, 600}}), "0/1 0/1 ") << "one ends where the next begins";
    EXPECT_EQ(lanes({{540, 600}, {550, 560}, {560, 590}}), "0/2 1/2 1/2 ")
        << "a lane is used again";
    EXPECT_EQ(lanes({{560, 580}, {540, 570}}), "1/2 0/2 ") << "the order given does not matter";
    EXPECT_EQ(lanes({{540, 540}, {540, 540}, {700, 710}}), "0/1 0/1 0/1 ")
        << "what takes no time overlaps nothing";
    EXPECT_EQ(lanes({{540, 600}, {540, 600}, {540, 600}, {600, 610}}), "0/3 1/3 2/3 0/1 ");
}

TEST(DayHours, AHandDropsOnTheNearestQuarterWithinTheDay)
{
    EXPECT_EQ(toQuarter(-40), QTime(0, 0));
    EXPECT_EQ(toQuarter(9 * 60 + 7), QTime(9, 0));
    EXPECT_EQ(toQuarter(9 * 60 + 8), QTime(9, 15));
    EXPECT_EQ(toQuarter(24 * 60), QTime(23, 45));
}
