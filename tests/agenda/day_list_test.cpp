#include "agenda/day_list.h"
#include "agenda/hours_layout.h"
#include "agenda_clinic.h"

using namespace Qt::StringLiterals;

namespace
{

class DiaDeAgenda : public ClinicaConAgenda
{
protected:
    QString alarmas()
    {
        QString t;
        for (const Alarma &a : s.Alarmas)
            t += a.hora.toString(u"HH:mm") + (a.atendida ? u" silent"_s : u" rings"_s) + u'\n';
        return t;
    }
};

} // namespace

TEST_F(DiaDeAgenda, ListsAppointmentsUsersTasksAndFeedingByTheHour)
{
    tarea(control, 1, hoy, {10, 30}, u"limps"_s);
    tarea(TipoTarea::TareaDeUsuario, 2, hoy, {8, 0}, u"call the lab"_s); // 2 is a user here
    tarea(TipoTarea::Racion, 0, hoy, {9, 0});
    tarea(TipoTarea::RecordatorioDosis, 1, hoy, {7, 0}); // a communication: not on the list
    tarea(control, 1, hoy.addDays(1), {7, 0});
    const auto dia = TareasDelDia(s, hoy);
    ASSERT_EQ(dia.size(), 3u);
    EXPECT_EQ(dia[0].concepto, s(1109));
    EXPECT_EQ(dia[0].detalle, HoraLarga({8, 0}) + u"\ncall the lab"_s);
    EXPECT_EQ(dia[0].paciente, QString()) << "the user's id is no patient's";
    EXPECT_EQ(dia[1].detalle, HoraLarga({9, 0}));
    EXPECT_EQ(dia[1].icono, u"alimentarhos"_s);
    EXPECT_EQ(dia[2].detalle,
              HoraLarga({10, 30})
                  + u"\nlimps\nToby\nClient: Moss, Ada\nPhones: 555-0101 / 099-1"_s);
    EXPECT_EQ(dia[2].icono, u"TurnoCon"_s);
    EXPECT_EQ(dia[2].minutos, 45);

    const auto turnos = TurnosDelDia(s, hoy);
    ASSERT_EQ(turnos.size(), 1u);
    // A patient who is gone leaves a row that can still be read.
    tarea(30000, 99, hoy, {});
    EXPECT_EQ(TareasDelDia(s, hoy).front().detalle, QString()) << "without an hour it comes first";
}

TEST_F(DiaDeAgenda, TellsWhatTheSystemDecidedOnToday)
{
    tarea(TipoTarea::RecordatorioDosis, 2, {}, {}, {}, {}, 1);
    tarea(TipoTarea::RecordatorioDeuda, 1, {}, {}, {}, {}, 2);
    tarea(TipoTarea::FaltaAlimento, 1, {}, {}, {}, {}, 4); // a delivery round, no message
    tarea(control, 1, hoy, {9, 0}, {}, {}, 1);             // booked by hand
    s.morvane->Execute("update TareasAgenda set fmedio = ? where tip = -43", hoy);
    tarea(TipoTarea::Cumpleanos, 1, {}, {}, {}, {}, 3);
    s.morvane->Execute("update TareasAgenda set fcreacion = ? where tip = -46", hoy.addDays(-1));
    QString t;
    for (const TareaDeKelvara &k : TareasDeKelvara(s))
        t += k.motivo + u'|' + k.destinatario + u'|' + k.medio
             + (k.realizada ? u"|out\n"_s : u"|\n"_s);
    EXPECT_EQ(t, s(1111) + u"|Patient: Mia|"_s + s(1118) + u"|\n"_s + s(1112)
                     + u"|Client: Moss, Ada|"_s + s(1119) + u"|out\n"_s);
}

TEST_F(DiaDeAgenda, DelaysAndDeletesOnlyForWhoMayAndWhoSaysYes)
{
    const int uno = tarea(control, 1, hoy, {9, 30}), dos = tarea(control, 2, hoy, {10, 0});
    s.usuario.ut = 1;
    for (int i = 0; i < 3; ++i)
        ask.Espera(s(1));
    EXPECT_FALSE(PasarTareas(s, {uno}, hoy.addDays(1)));
    EXPECT_FALSE(EliminarTareas(s, {uno}));
    EXPECT_TRUE(MoverTareas(s, {{uno, hoy, {11, 0}}}).empty());
    s.usuario.ut = 2;
    ask.Espera(s(1124), false);
    ask.Espera(s(3), false);
    EXPECT_FALSE(PasarTareas(s, {uno, dos}, hoy.addDays(1)));
    EXPECT_FALSE(EliminarTareas(s, {uno}));
    EXPECT_FALSE(PasarTareas(s, {}, hoy)) << "nothing is asked about nothing";
    EXPECT_EQ(tareas(), u"1|2026-03-11|09:30:00|0\n2|2026-03-11|10:00:00|0\n"_s);

    ask.Espera(s(1124) + u"\n\n2 tasks\n→ "_s
               + QLocale().toString(hoy.addDays(2), QLocale::LongFormat));
    EXPECT_EQ(PasarTareas(s, {dos, uno}, hoy.addDays(2))->size(), 2u);
    EXPECT_EQ(MoverTareas(s, {{uno, hoy.addDays(1), {11, 15}}}).size(), 1u);
    EXPECT_EQ(tareas(), u"1|2026-03-12|11:15:00|0\n2|2026-03-13|10:00:00|0\n"_s);
    ask.Espera(s(3) + u"\n\n11:15  A check, Toby"_s);
    EXPECT_TRUE(EliminarTareas(s, {uno}));
    EXPECT_TRUE(MoverTareas(s, {{uno, hoy, {11, 0}}}).empty()) << "it is gone";
    EXPECT_FALSE(DevolverTareas(s, {{uno, hoy, {}, {}}}));
    EXPECT_FALSE(AlternarRealizada(s, uno));
    EXPECT_EQ(tareas("id"), u"2\n"_s);
}

TEST_F(DiaDeAgenda, DoneSilencesTheFirstAlarmOfThatTimeAndKindForAnyUser)
{
    s.usuario.ut = 1;
    tarea(cirugia, 1, hoy, {11, 0}, {}, {10, 45});
    const int id = tarea(control, 1, hoy, {11, 0}, {}, {10, 45});
    tarea(control, 2, hoy, {11, 0}, {}, {10, 45});
    EXPECT_TRUE(AlternarRealizada(s, id));
    EXPECT_EQ(alarmas(), u"10:45 rings\n10:45 silent\n10:45 rings\n"_s);
    EXPECT_EQ(tareas("est"), u"0\n-1\n0\n"_s);
    EXPECT_FALSE(AlternarRealizada(s, id));
    EXPECT_EQ(alarmas(), u"10:45 rings\n10:45 rings\n10:45 rings\n"_s);
    // A task of another day has no alarm here, though one of today looks just like it.
    const int otro = tarea(control, 1, hoy.addDays(1), {11, 0}, {}, {10, 45});
    EXPECT_TRUE(AlternarRealizada(s, otro));
    EXPECT_EQ(alarmas(), u"10:45 rings\n10:45 rings\n10:45 rings\n"_s);
}

TEST_F(DiaDeAgenda, AnAlarmFollowsItsTaskAndNoOther)
{
    const int id = tarea(control, 1, hoy, {11, 0}, {}, {10, 45});
    tarea(control, 2, hoy, {11, 0}, {}, {10, 45}); // looks just like it
    MoverTareas(s, {{id, hoy, {12, 30}}});
    EXPECT_EQ(alarmas(), u"12:15 rings\n10:45 rings\n"_s);
    MoverTareas(s, {{id, hoy.addDays(1), {0, 10}}});
    EXPECT_EQ(alarmas(), u"10:45 rings\n"_s);
    EXPECT_EQ(tareas("dia, hor, ala"),
              u"2026-03-12|00:10:00|00:00:00\n2026-03-11|11:00:00|10:45:00\n"_s)
        << "an alarm stays within its day";
    ask.Espera(s(1124));
    PasarTareas(s, {id}, hoy);
    EXPECT_EQ(alarmas(), u"10:45 rings\n00:00 rings\n"_s);
    ask.Espera(s(3));
    EliminarTareas(s, {id});
    EXPECT_EQ(alarmas(), u"10:45 rings\n"_s);

    // What is done or was booked at another terminal has no alarm here that could follow it.
    const int hecha = tarea(control, 1, hoy, {11, 0}, {}, {10, 45});
    s.morvane->Execute("update TareasAgenda set est = -1 where id = ?", hecha);
    const int ajena = tarea(control, 1, hoy, {11, 0}, {}, {10, 45});
    s.Alarmas.resize(1);
    ask.Espera(s(1124));
    PasarTareas(s, {hecha, ajena}, hoy.addDays(1));
    ask.Espera(s(3));
    EliminarTareas(s, {hecha, ajena});
    EXPECT_EQ(alarmas(), u"10:45 rings\n"_s);
}

TEST_F(DiaDeAgenda, WhatIsTakenBackStandsAsItDidAndDoesNotRingTwice)
{
    const int id = tarea(control, 1, hoy, {11, 0}, {}, {10, 45});
    const int nota = tarea(TipoTarea::TareaDeUsuario, 1, hoy, {}, {}, {10, 45});
    s.Alarmas[0].atendida = true; // it has rung
    const QString antes = tareas("id, dia, hor, ala");
    const auto sitios = MoverTareas(s, {{id, hoy, {11, 15}}, {nota, hoy.addDays(1), {14, 30}}});
    EXPECT_EQ(alarmas(), u"10:45 silent\n11:00 rings\n"_s);
    EXPECT_TRUE(DevolverTareas(s, sitios));
    EXPECT_EQ(tareas("id, dia, hor, ala"), antes) << "the note without an hour";
    EXPECT_EQ(alarmas(), u"10:45 silent\n10:45 rings\n"_s);
}

TEST(Sentido, RowsAreTakenAsTheSelectionRan)
{
    EXPECT_EQ(EnSuSentido({2, 3, 4}, 4), QList({2, 3, 4}));
    EXPECT_EQ(EnSuSentido({2, 3, 4}, 2), QList({4, 3, 2}));
    EXPECT_EQ(EnSuSentido({7}, 7), QList({7}));
    EXPECT_EQ(EnSuSentido({}, -1), QList<int>{});
}

namespace
{
std::string lanes(const std::vector<Tramo> &tramos)
{
    std::string t;
    for (const Carril &c : PonerLadoALado(tramos))
        t += std::to_string(c.indice) + '/' + std::to_string(c.total) + ' ';
    return t;
}
} // namespace

TEST(HorasDelDia, WhatOverlapsStandsSideBySide)
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

TEST(HorasDelDia, AHandDropsOnTheNearestQuarterWithinTheDay)
{
    EXPECT_EQ(AlCuarto(-40), QTime(0, 0));
    EXPECT_EQ(AlCuarto(9 * 60 + 7), QTime(9, 0));
    EXPECT_EQ(AlCuarto(9 * 60 + 8), QTime(9, 15));
    EXPECT_EQ(AlCuarto(24 * 60), QTime(23, 45));
}
