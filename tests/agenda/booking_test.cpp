#include "agenda/booking.h"
#include "agenda_clinic.h"
#include "store/settings_row.h"

using namespace Qt::StringLiterals;

namespace
{

class Turnos : public ClinicaConAgenda
{
protected:
    Turno turno(int concepto, QTime hora, QDate dia = {}, int idm = 1)
    {
        Turno t;
        t.concepto = concepto;
        t.idm = idm;
        t.dia = dia.isValid() ? dia : hoy;
        t.hora = hora;
        return t;
    }
};

} // namespace

TEST_F(Turnos, OffersTheServicesByNameAndThenAnOwnTask)
{
    const auto conceptos = ConceptosDeTurno(s);
    ASSERT_GT(conceptos.size(), 3u);
    EXPECT_EQ(conceptos[0].nom, u"A check"_s);
    EXPECT_EQ(conceptos[1].nom, u"A check at home"_s);
    EXPECT_EQ(conceptos.back().ida, TipoTarea::TareaDeUsuario);
    EXPECT_EQ(conceptos.back().nom, s(1109));
}

TEST_F(Turnos, RemindsWhenAskedAndWhoForgetsWhenTheSettingSaysSo)
{
    servicio(210, u"Of no kind"_s, 30, {});
    s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (211, 2, 'No row')");
    const auto forzado = [this](int concepto) {
        return LlevaRecordatorio(s, turno(concepto, {9, 0}));
    };
    GuardarAjuste(s, "AutRecordatorioCitasOlvida", 1);
    EXPECT_FALSE(forzado(control)) << "nobody says that she forgets";
    s.clientes->Execute("update clientes set Perfil4 = -1 where idc = 1");
    EXPECT_TRUE(forzado(control)); // kind 1
    EXPECT_TRUE(forzado(cirugia)); // kind 3
    EXPECT_FALSE(forzado(visita)); // kind 2
    EXPECT_FALSE(forzado(210));    // Null
    EXPECT_FALSE(forzado(211));    // no row among the services
    EXPECT_FALSE(forzado(TipoTarea::TareaDeUsuario));
    GuardarAjuste(s, "AutRecordatorioCitasOlvida", 2);
    EXPECT_FALSE(forzado(control));

    Turno pedido = turno(visita, {9, 0});
    pedido.recordar = true;
    EXPECT_TRUE(LlevaRecordatorio(s, pedido));
    pedido.idm = 0; // there is nobody to remind
    EXPECT_FALSE(LlevaRecordatorio(s, pedido));
}

TEST_F(Turnos, WritesTheTaskAndMarksThePatient)
{
    Turno t = turno(control, {9, 30, 20}, hoy.addDays(1));
    t.alarma = {9, 15};
    t.descripcion = u"Ada's dog"_s;
    t.recordar = true;
    Agendar(s, t);
    EXPECT_EQ(tareas("tip, ida, dia, hor, ala, est, medio, fcreacion, artaux, des"),
              u"201|1|2026-03-12|09:30:00|09:15:00|0|1|2026-03-11|0|Ada s dog\n"_s);
    EXPECT_EQ(Filas(*s.clientes, "select idm, tarea from mascotas order by idm"), u"1|-1\n2|0\n"_s);
    // Two at one time are two: nothing prevents it, on purpose.
    Agendar(s, t);
    EXPECT_EQ(TurnosDelDia(s, hoy.addDays(1)).size(), 2u);
}

TEST_F(Turnos, AnOwnTaskIsTheUsersAndAsksNothing)
{
    s.usuario.idu = 2; // the same number as a patient's
    Turno t = turno(TipoTarea::TareaDeUsuario, {9, 30});
    t.recordar = true;
    Agendar(s, t);
    EXPECT_EQ(tareas("tip, ida, medio"), u"-100|2|0\n"_s);
    EXPECT_EQ(Filas(*s.clientes, "select tarea from mascotas where idm = 2"), u"0\n"_s);
}

TEST_F(Turnos, OffersTheSheetForTodayBeforeAQuarterPastTen)
{
    ask.Espera(s(1309));
    Agendar(s, turno(control, {9, 30}));
    ask.Espera(s(1310), false);
    Agendar(s, turno(control, {22, 14}));
    EXPECT_EQ(impresion.impresos.size(), 1);
    Agendar(s, turno(control, {22, 15}));
    Agendar(s, turno(control, {22, 30}));
    Agendar(s, turno(control, {9, 30}, hoy.addDays(1)));
    // Feeding rounds and own tasks do not count as a day that has begun.
    s.morvane->Execute("delete * from TareasAgenda");
    tarea(TipoTarea::Racion, 0, hoy, {8, 0});
    tarea(TipoTarea::TareaDeUsuario, 1, hoy, {8, 0});
    ask.Espera(s(1309), false);
    Agendar(s, turno(control, {9, 30}));
    EXPECT_EQ(impresion.impresos.size(), 1);
}

TEST(HoraDeTurno, FindsWhatIsNearAnHour)
{
    std::vector<TareaDelDia> dia(4);
    dia[1].hor = {9, 0};
    dia[2].hor = {9, 20};
    dia[3].hor = {9, 30};
    EXPECT_EQ(FilaCercana(dia, {9, 30}), 3) << "exactly at it, though an earlier one is near";
    EXPECT_EQ(FilaCercana(dia, {9, 15}), 1) << "the first within a quarter of an hour";
    EXPECT_EQ(FilaCercana(dia, {9, 45}), 3);
    EXPECT_EQ(FilaCercana(dia, {9, 46}), -1);
    EXPECT_EQ(FilaCercana(dia, {8, 44}), -1);
    EXPECT_EQ(FilaCercana({}, {9, 0}), -1);
    EXPECT_EQ(FilaDeArriba(1), 1);
    EXPECT_EQ(FilaDeArriba(2), 1);
}

TEST(HoraDeTurno, IsTypedAsPeopleDo)
{
    const std::pair<QString, QTime> casos[] = {
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
    for (const auto &[texto, hora] : casos)
        EXPECT_EQ(HoraEscrita(texto), hora) << texto.toStdString();
    // What the box shows can be read back, whatever the country.
    const QLocale antes;
    for (const auto &pais :
         {QLocale(QLocale::Spanish, QLocale::Mexico), QLocale(QLocale::Portuguese, QLocale::Brazil),
          QLocale(QLocale::English, QLocale::UnitedStates),
          QLocale(QLocale::Spanish, QLocale::Uruguay)}) {
        QLocale::setDefault(pais);
        EXPECT_EQ(HoraEscrita(HoraLarga({21, 5})), QTime(21, 5)) << pais.name().toStdString();
    }
    QLocale::setDefault(antes);
}
