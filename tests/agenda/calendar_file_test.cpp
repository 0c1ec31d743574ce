#include "agenda/calendar_file.h"
#include "agenda_clinic.h"

#include <QFile>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

class Calendar : public ClinicWithAgenda
{
protected:
    /// The lines of a calendar, with folded ones joined.
    static QStringList lines(QByteArray text)
    {
        return QString::fromUtf8(text.replace("\r\n ", "")).split(u"\r\n"_s);
    }
};

} // namespace

TEST_F(Calendar, TellsWhatAndWhenWithoutATimeZone)
{
    s.clinic.dir = u"Rambla 1; Montevideo"_s;
    task(control, 1, hoy, {23, 30}, u"limps, left\\right"_s, {23, 0});
    task(TaskKind::UserTask, 1, hoy, {}, u"call; the lab"_s);
    auto dia = dayTasks(s, hoy);
    const QStringList l = lines(asCalendar(s, dia));
    for (const QString &line :
         {u"BEGIN:VCALENDAR"_s, u"VERSION:2.0"_s, u"DTSTART:20260311T233000"_s,
          u"DTEND:20260312T001500"_s, // 45 minutes, past midnight
          u"SUMMARY:A check - Toby"_s, u"TRIGGER:-PT30M"_s, u"DTSTART;VALUE=DATE:20260311"_s,
          u"SUMMARY:User task - call\\; the lab"_s, u"END:VCALENDAR"_s})
        EXPECT_EQ(l.count(line), 1) << line.toStdString();
    EXPECT_TRUE(l.contains(u"DESCRIPTION:"_s + longHour({23, 30}).replace(u","_s, u"\\,"_s)
                           + u"\\nlimps\\, left\\\\right\\nToby\\nClient: Moss\\, Ada\\n"_s
                           + u"Phones: 555-0101 / 099-1"_s));
    EXPECT_EQ(l.count(u"LOCATION:Rambla 1\\; Montevideo"_s), 2);
    EXPECT_EQ(l.filter(u"VALARM"_s).size(), 2) << "only what has an alarm";

    // A moved task keeps its UID, so importing it again moves it.
    const QString uid = l.filter(u"UID:1-"_s).value(0);
    ASSERT_FALSE(uid.isEmpty());
    moveTasks(s, {{1, hoy.addDays(3), {8, 0}}});
    EXPECT_TRUE(lines(asCalendar(s, dayTasks(s, hoy.addDays(3)))).contains(uid));
}

TEST_F(Calendar, FoldsLongLinesBetweenLetters)
{
    task(control, 1, hoy, {9, 0}, QString(200, u'ñ'));
    const QByteArray text = asCalendar(s, dayTasks(s, hoy));
    for (const QByteArray &line : text.split('\n')) {
        EXPECT_LE(line.size(), 76) << "75 and the return";
        EXPECT_FALSE(QString::fromUtf8(line).contains(QChar::ReplacementCharacter));
    }
    EXPECT_EQ(lines(text).filter(QString(200, u'ñ')).size(), 1);
}

TEST_F(Calendar, IsWrittenWholeOrNotAtAll)
{
    task(control, 1, hoy, {9, 0});
    const QString file = folder.path() + u"/day.ics"_s;
    saveCalendar(s, dayTasks(s, hoy), file);
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll().count("BEGIN:VEVENT"), 1);
    EXPECT_THROW(saveCalendar(s, {}, folder.path() + u"/none/day.ics"_s), store::StoreError);
}
