#include "agenda/tasks.h"
#include "board/ringing.h"
#include "support/clinic.h"
#include "texts/texts.h"

using namespace board;
using namespace Qt::StringLiterals;

namespace
{

class Ringing : public Clinic
{
protected:
    Ringing()
    {
        at(10, 0, 0);
        s.finanzas->Execute("delete * from Servicios");
        s.finanzas->Execute("insert into Articulos (ida, idcat, nom) values (900, 2, 'Bath')");
        s.finanzas->Execute("insert into Servicios (ida, tiempo) values (900, 30)");
        s.clientes->Execute("insert into Clientes (idc, ayn, tel2, telc2) values "
                            "(4, 'Ruiz, Eva', '555 1', '555 2')");
        s.clientes->Execute("insert into Mascotas (idm, idc, nom) values (11, 4, 'Rex')");
    }
    void at(int hour, int minute, int second)
    {
        s.reloj.now = [=, this] { return QDateTime(hoy, QTime(hour, minute, second)); };
    }
    static store::Alarm alarm(QTime time, int tip = 900, std::optional<int> ida = {})
    {
        return {.hour = time, .tip = tip, .attended = false, .ida = ida};
    }
    bool rings(QTime time)
    {
        s.Alarmas = {alarm(time)};
        return !ringingAlarms(s).isEmpty();
    }
    QString said(int tip, std::optional<int> ida = {})
    {
        s.Alarmas = {alarm(QTime(10, 1), tip, ida)};
        return ringingAlarms(s).join(u'|');
    }
};

} // namespace

TEST_F(Ringing, FromTwoMinutesBeforeUntilTheMinuteIsOver)
{
    at(10, 0, 59);
    EXPECT_FALSE(rings(QTime(9, 59)));
    EXPECT_TRUE(rings(QTime(10, 0)));
    EXPECT_TRUE(rings(QTime(10, 2)));
    EXPECT_FALSE(rings(QTime(10, 3)));
    EXPECT_FALSE(rings(QTime()));
}

TEST_F(Ringing, OnceEach)
{
    s.Alarmas = {alarm(QTime(10, 1)), alarm(QTime(10, 2), -47), alarm(QTime(10, 1)),
                 alarm(QTime(11, 0))};
    s.Alarmas[2].attended = true;
    EXPECT_EQ(ringingAlarms(s),
              QStringList({u"Agenda: Bath"_s, u"Agenda: "_s + s(text::AccommodationAndFood)}));
    EXPECT_TRUE(ringingAlarms(s).isEmpty());
    at(10, 59, 0);
    EXPECT_EQ(ringingAlarms(s).size(), 1);
}

TEST_F(Ringing, SaysTheServiceAndThePatientWhereItIsKnown)
{
    EXPECT_EQ(said(900), u"Agenda: Bath"_s);
    EXPECT_EQ(said(900, 11), u"Agenda: Bath\n\nRex\n"_s + s(text::Client) + u": Ruiz, Eva\n"_s
                                 + s(text::Phones) + u": 555 1 / 555 2"_s);
    EXPECT_EQ(said(900, 12), u"Agenda: Bath"_s) << "the patient has been deleted";
    EXPECT_EQ(said(-100, 11), u"Agenda: "_s + s(text::UserTask)) << "the number is a user's there";
    EXPECT_EQ(said(901), u"Agenda: "_s) << "not a service";
}

TEST_F(Ringing, SaysWhatAUsersTaskIsAbout)
{
    const auto task = [this](QTime hour, const QString &note) {
        return AgregarTarea(s, {.tip = agenda::TaskKind::UserTask,
                                .dia = hoy,
                                .hor = hour,
                                .ala = QTime(10, 1),
                                .fcreacion = hoy,
                                .des = note});
    };
    s.Alarmas.clear();
    task({10, 30}, u"Call the supplier"_s);
    task({}, {});
    const int gone = task({10, 30}, u"Deleted at another terminal"_s);
    s.morvane->Execute("delete * from TareasAgenda where id = ?", gone);
    const QString kind = u"Agenda: "_s + s(text::UserTask);
    EXPECT_EQ(ringingAlarms(s),
              QStringList({kind + u"\n\n10:30\nCall the supplier"_s, kind, kind}));
}

TEST_F(Ringing, AnAlarmWhoseNameCannotBeReadStillRings)
{
    s.finanzas->Execute("drop table Servicios");
    s.Alarmas = {alarm(QTime(10, 1)), alarm(QTime(10, 1), -47)};
    EXPECT_EQ(ringingAlarms(s),
              QStringList({u"Agenda: "_s, u"Agenda: "_s + s(text::AccommodationAndFood)}));
}

TEST_F(Ringing, TheDayChangesAtMidnightAndNotWhenTheClockIsSetBack)
{
    const std::pair<QDateTime, bool> moments[] = {{{hoy, QTime(23, 59, 59)}, false},
                                                  {{hoy.addDays(1), QTime(0, 0)}, true},
                                                  {{hoy.addDays(-1), QTime(12, 0)}, false}};
    for (const auto &[moment, changed] : moments) {
        s.reloj.now = [=] { return moment; };
        EXPECT_EQ(dayChanged(s), changed);
    }
}
