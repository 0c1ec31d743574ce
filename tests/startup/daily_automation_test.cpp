#include "startup/daily_automation.h"

#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "store/schema.h"
#include "support/clinic.h"

#include <QDir>
#include <QFile>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::string_literals;

namespace
{

constexpr int Rabia = 4, Cachorros = 1, Comida = 21; // products
/// The measures of the settings, each with the medium that it sends by; 0 sends nothing.
const std::pair<Valor, int> Medidas[] = {{nullptr, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 0}, {0, 0}};
constexpr int Vacunas = 3, Alimento = 1; // categories of a new folder

class Dia : public Clinica
{
protected:
    Dia()
    {
        qputenv("XDG_DATA_HOME", carpeta.path().toUtf8());
        s.clinica.nom = u"Patitas"_s;
        ask.siempreNo << u"Print summary?"_s << u"imprimir el resumen"_s << u"imprimir o resumo"_s;
        Articulo(Rabia, Vacunas, u"Rabies");
        Articulo(Cachorros, Vacunas, u"Puppies");
        Articulo(Comida, Alimento, u"Dry food");
        s.clientes->Execute("update mlespecies set ali = 4 where id = 2");
        Ajuste("FechaUltimoInicioMes", hoy);
        Cerrado(1);
        Cliente(1);
    }

    QDate Dentro(int dias) const { return s.reloj.hoy.addDays(dias); }
    void Ajuste(const char *columna, const Valor &v)
    {
        s.morvane->Execute("update configuracion set "s + columna + " = ?", v);
    }
    /// The last start was so many days ago.
    void Cerrado(int dias) { Ajuste("FechaUltimoInicio", Dentro(-dias)); }
    void Articulo(int ida, int idcat, const char16_t *nom)
    {
        s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (?, ?, ?)", ida, idcat,
                            nom);
    }
    void Cliente(int idc)
    {
        s.clientes->Execute("insert into clientes (idc, ayn) values (?, ?)", idc,
                            u"Client %1"_s.arg(idc));
        s.morvane->Execute("insert into perfiles (idc) values (?)", idc);
    }
    struct Paciente {
        int idm, ser = 0, idc = 1;
        bool dec = false;
    };
    void Mascotas(std::initializer_list<Paciente> pacientes)
    {
        for (const Paciente &p : pacientes)
            s.clientes->Execute("insert into mascotas (idm, idc, nom, esp, ser, dec) values "
                                "(?, ?, ?, 2, ?, ?)",
                                p.idm, p.idc, u"Pet %1"_s.arg(p.idm), p.ser, p.dec);
    }
    void Stock(int idm, double can, double con)
    {
        s.clientes->Execute(
            "insert into consumo (idm, idcat, ida, can, con) values (?, 1, ?, ?, ?)", idm, Comida,
            can, con);
    }
    /// A patient that eats one a day, of a stock of a hundred.
    void Comensal()
    {
        Mascotas({{1}});
        Stock(1, 100, 1);
    }
    struct Toma {
        int idm, enDias, dos = 1, si = 0, ida = Rabia;
    };
    void Dosis(std::initializer_list<Toma> dosis)
    {
        for (const Toma &d : dosis)
            s.clientes->Execute(
                "insert into artplan (idm, ida, dos, rep, si, idcat) values (?, ?, ?, ?, ?, 3)",
                d.idm, d.ida, d.dos, Dentro(d.enDias), d.si);
    }
    void Turno(int tip, int ida, QDate dia, bool hecho = false, QTime alarma = {})
    {
        Tarea t;
        t.tip = tip;
        t.ida = ida;
        t.dia = t.fcreacion = dia;
        t.ala = alarma;
        const int id = AgregarTarea(s, t);
        s.morvane->Execute("update TareasAgenda set est = ? where id = ?", hecho, id);
    }
    void Estadia(int idm, const char16_t *tip, int entra, int sale)
    {
        s.clientes->Execute("insert into mhospedaje (idm, idcanil, fent, fsal, tip) values (?, 1, "
                            "?, ?, ?)",
                            idm, Dentro(entra), Dentro(sale), tip);
        s.clientes->Execute("update mascotas set hos = 1 where idm = ?", idm);
    }
    void Borrar(std::initializer_list<const char *> tablas)
    {
        for (const char *t : tablas)
            (s.morvane->ExisteTabla(t) ? s.morvane : s.clientes)->Execute("delete * from "s + t);
    }

    std::string Ver(Base &b, std::string_view sql) { return Filas(b, sql).toStdString(); }
    /// In the order of the subjects: the one in which rows of a query come is nobody's business.
    std::string Tareas()
    {
        return Ver(*s.morvane, "select tip, ida, dia, hor, medio, artaux, des from TareasAgenda "
                               "order by ida, hor");
    }
    std::string Pizarra(const std::string &donde = {})
    {
        return Ver(*s.morvane, "select dibujo, codigo1, codigo2, mensaje from pizarra" + donde);
    }
    /// The same without the text.
    std::string Codigos(const std::string &donde)
    {
        return Ver(*s.morvane, "select dibujo, codigo1, codigo2 from pizarra" + donde);
    }
    std::string Perfiles()
    {
        return Ver(*s.morvane, "select idc, deudasdemoradas, TurnosCumplidos, TurnosNoCumplidos "
                               "from perfiles order by idc");
    }
    int Contar(int tip)
    {
        return s.morvane->Leer("select count(*) from TareasAgenda where tip = ?", tip).toInt();
    }
    bool EnPizarra(const QString &parte)
    {
        for (const LineaDePizarra &l : LeerPizarra(s))
            if (l.mensaje.contains(parte))
                return true;
        return false;
    }
};

} // namespace

TEST_F(Dia, FoodIsConsumedForEveryClosedDayAndWarnedOfOnce)
{
    const struct {
        int dias;
        const char *consumo; // can, men, FaltaHoy
        int avisos;
    } casos[] = {{1, "8|0|0\n", 0}, {2, "6|0|0\n", 0}, {3, "4|-1|-1\n", 1}, {40, "0|-1|-1\n", 1}};
    Mascotas({{1, 5}});
    for (const auto &c : casos) {
        SCOPED_TRACE(c.dias);
        Borrar({"consumo", "TareasAgenda"});
        Stock(1, 10, 2);
        Cerrado(c.dias);
        TareasDeInicio(s);
        EXPECT_EQ(Ver(*s.clientes, "select can, men, FaltaHoy from consumo"), c.consumo);
        EXPECT_EQ(Contar(71), c.avisos);
    }
    // Below 0 it stopped at 0, and out of stock it is not looked at again.
    TareasDeInicio(s);
    EXPECT_EQ(Ver(*s.clientes, "select can, men, FaltaHoy from consumo"), "0|-1|0\n");
    EXPECT_EQ(Contar(71), 1);
}

TEST_F(Dia, LowFoodBooksTheServiceOrOffersByMailAsTheSettingsSay)
{
    const std::string oferta = "-41|1|2026-03-11||1|21|\n";
    const std::string entregas = "71|2|2026-03-11|08:30:00|4|21|Alimentos - Dry food\n"
                                 "71|3|2026-03-11|09:00:00|4|21|Alimentos - Dry food\n";
    const struct {
        Valor medidas;
        bool ofertas;
        std::string tareas, pizarra;
    } casos[] = {
        {1, true, oferta + entregas, "107|2|8\n109|1|5\n"},
        {2, false, entregas, "107|2|8\n107|1|0\n"},
        {0, true, "", ""},
        {nullptr, true, "", ""},
    };
    Mascotas({{1}, {2, 1}, {3, 9}, {4, 0, 1, true}});
    for (const auto &c : casos) {
        SCOPED_TRACE(c.medidas.toInt());
        Borrar({"consumo", "TareasAgenda"});
        for (int idm = 1; idm <= 4; ++idm)
            Stock(idm, 5, 1);
        Ajuste("medidasalimento", c.medidas);
        Ajuste("alimentomail", c.ofertas);
        TareasDeInicio(s);
        EXPECT_EQ(Tareas(), c.tareas);
        EXPECT_EQ(Codigos(" where codigo1 = 1 or codigo1 = 2"), c.pizarra);
        // The mark "warned" is set whatever the setting says; the dead eat nothing.
        const char *marca = c.tareas.empty() ? "-1|0" : "-1|-1";
        EXPECT_EQ(Ver(*s.clientes, "select idm, can, men, FaltaHoy from consumo order by idm"),
                  "1|4|"s + marca + "\n2|4|" + marca + "\n3|4|" + marca + "\n4|5|0|0\n");
    }
}

TEST_F(Dia, MissedDosesAreCaughtUpForTenDays)
{
    const struct {
        int dias;
        int contadas; // of the doses 1, 3, 4, 10, 11 and 40 days ago
    } casos[] = {{1, 1}, {3, 2}, {10, 4}, {11, 4}, {40, 4}};
    const int atras[] = {0, 1, 3, 4, 10, 11, 40};
    for (int i = 0; i < 7; ++i) {
        Mascotas({{i + 1}});
        Dosis({{i + 1, -atras[i], 1, i % 2 ? 2 : 0}});
    }
    Mascotas({{8}, {9, 0, 1, true}});
    Dosis({{8, -1, 1, 1}, {9, -1}}); // given, and of a dead one
    for (const auto &c : casos) {
        Cerrado(c.dias);
        TareasDeInicio(s);
        EXPECT_EQ(Pizarra(" where dibujo = 103"),
                  "103|6|18|It should have provided "s + std::to_string(c.contadas)
                      + " scheduled products to clients 'without service'.\n");
    }
}

TEST_F(Dia, MissedDosesAreToldByHowManyWereOverdueBefore)
{
    s.clientes->Execute("update clientes set dir = 'Street 5', tel2 = '22', telc2 = '33'");
    Cerrado(3);
    Mascotas({{1}, {2, 5}});
    // First and second of their category, the third with another product: no count; with service.
    Dosis({{1, -3}, {1, -2, 2}, {1, -1, 3, 0, Cachorros}, {2, -1}});
    Ajuste("LVMascotas", true);
    TareasDeInicio(s);
    EXPECT_EQ(Codigos(" where dibujo = 103"), "103|6|18\n103|14|18\n103|7|19\n");
    EXPECT_EQ(impresion.impresos, QStringList{u"Scheduled products not supplied"_s});
    EXPECT_EQ(s.auxiliar, nullptr); // free for the report
    const char *lista =
        "select mas, vac, pro, dir, tel, dos from auxrevacunacion order by mas, dos";
    EXPECT_EQ(Ver(AbrirAuxiliar(s, u"rep97"_s), lista),
              "Pet 1|Rabies|Client 1|Street 5|22 / 33|1\n"
              "Pet 1|Rabies|Client 1|Street 5|22 / 33|2\n"
              "Pet 1|Puppies|Client 1|Street 5|22 / 33|3\n"
              "Pet 2|Rabies|Client 1|Street 5|22 / 33|1\n");

    // The list is made anew each day; without a first missed dose nothing is printed.
    Borrar({"artplan"});
    Dosis({{2, -1, 7}});
    TareasDeInicio(s);
    EXPECT_EQ(impresion.impresos.size(), 1);
    EXPECT_EQ(Ver(AbrirAuxiliar(s, u"rep97"_s), "select mas, dos from auxrevacunacion"),
              "Pet 2|7\n");
    Ajuste("LVMascotas", false);
    Dosis({{1, -1}});
    TareasDeInicio(s);
    EXPECT_EQ(impresion.impresos.size(), 1);
}

TEST_F(Dia, TodaysDosesTakeTheLineOfTheirVariant)
{
    const std::string sin = " scheduled products to clients 'without service'";
    const std::string discont = sin + " (discont).", uno = "Today should be provided 1",
                      y = ". and 1";
    const std::string ninguno = " No product is 1º discont.\n";
    const std::string mensaje = " 1 products are 1º discont. Communication with owners.\n";
    // Patients whose dose of today has none, one or two overdue before it, and those with service.
    const struct {
        int alDia, segundas, terceras, conServicio;
        Valor descont;
        std::string pizarra;
        int mensajes;
    } casos[] = {
        {0, 0, 0, 1, 1, "104|4|21|" + uno + " scheduled products to clients 'with service'\n", 0},
        {1, 1, 0, 0, 1, "102|3|5|" + uno + sin + y + discont + mensaje, 1},
        {1, 0, 1, 0, 1, "102|3|20|" + uno + sin + y + discont + ninguno, 0},
        {1, 1, 0, 0, 0, "102|3|20|" + uno + sin + y + discont + "\n", 0},
        {1, 0, 0, 0, 1, "102|3|20|" + uno + sin + ".\n", 0},
        {0, 1, 0, 0, -1, "109|14|5|" + uno + discont + mensaje, 1},
        {0, 0, 1, 0, 1, "103|3|20|" + uno + discont + ninguno, 0},
        {0, 1, 0, 0, nullptr, "103|14|0|" + uno + discont + "\n", 0},
        {0, 1, 0, 0, 2, "103|14|0|" + uno + discont + "\n", 0},
        // Counts that differ stand in their own places.
        {3, 1, 1, 0, 1, "102|3|5|Today should be provided 3" + sin + ". and 2" + discont + mensaje,
         1},
    };
    for (const auto &c : casos) {
        SCOPED_TRACE(c.pizarra);
        Borrar({"mascotas", "artplan", "TareasAgenda"});
        int idm = 0;
        const auto pacientes = [&](int cuantos, int atrasadas, int ser) {
            for (int i = 0; i < cuantos; ++i) {
                Mascotas({{++idm, ser}});
                for (int d = 1; d <= atrasadas; ++d)
                    Dosis({{idm, -60 * d, 10 - d}});
                Dosis({{idm, -200, 1, 3}, {idm, 0, 10}}); // given long ago, and today
            }
        };
        pacientes(c.alDia, 0, 0);
        pacientes(c.segundas, 1, 0);
        pacientes(c.terceras, 2, 0);
        pacientes(c.conServicio, 0, 5);
        Ajuste("MedidasRevacDescont", c.descont);
        TareasDeInicio(s);
        EXPECT_EQ(Pizarra(" where dibujo < 105 or dibujo = 109"), c.pizarra);
        EXPECT_EQ(Contar(-50), c.mensajes);
        EXPECT_EQ(Contar(83), c.conServicio);
    }
}

TEST_F(Dia, DosesOfClosedDaysAreBookedForTodayWhereThereIsAService)
{
    Ajuste("MedidasRevacDescont", 1);
    Cerrado(40);
    Mascotas({{1, 5}});
    for (int atras : {11, 10, 1, 0})
        Dosis({{1, -atras, 20 - atras}});
    Mascotas({{2}, {3}, {4, 5, 1, true}});
    Dosis({{2, -30, 1}, {2, -1, 2}}); // of a closed day: nobody's task
    Dosis({{3, -1, 1}, {3, 0, 2}});   // second overdue
    Dosis({{4, 0}});
    TareasDeInicio(s);
    EXPECT_EQ(Tareas(), "83|1|2026-03-11|08:30:00|4|4|Vacunas - Rabies\n"
                        "83|1|2026-03-11|09:00:00|4|4|Vacunas - Rabies\n"
                        "83|1|2026-03-11|09:30:00|4|4|Vacunas - Rabies\n"
                        "-50|3|||1|4|Vaccination discontinued\n");
}

TEST_F(Dia, DoseRemindersGoOutAheadOfTheDay)
{
    Ajuste("tiempovencimiento", 3);
    Cerrado(2);
    Mascotas({{1}, {2}, {3}, {4}, {5, 5}, {6}, {7}, {8, 0, 1, true}});
    Dosis({{1, 1, 1}, {2, 2, 2}, {3, 3, 300, 2}, {4, 4, 4}}); // told on the days -2, -1, 0 and 1
    Dosis({{5, 3}});                                          // the clinic comes by itself
    Dosis({{6, -50, 1}, {6, 3, 2}});                          // an older one is still open
    Dosis({{7, 3}, {8, 3}});
    s.clientes->Execute("update artplan set ana = -1 where idm = 7"); // told before
    for (const auto &[medida, medio] : Medidas) {
        SCOPED_TRACE(medida.toInt());
        Borrar({"TareasAgenda"});
        Ajuste("MedidasRevac", medida);
        TareasDeInicio(s);
        const auto m = std::to_string(medio);
        EXPECT_EQ(Tareas(), medio ? "-42|2|||" + m + "|4|2\n-42|3|||" + m + "|4|300\n" : "");
        EXPECT_EQ(Codigos(" where codigo1 = 13"), medio ? "109|13|5\n" : "");
    }
    Borrar({"TareasAgenda"});
    Ajuste("MedidasRevac", 1);
    Ajuste("tiempovencimiento", nullptr); // no days ahead
    Dosis({{4, 0, 9}});
    TareasDeInicio(s);
    EXPECT_EQ(Tareas(), "-42|4|||1|4|9\n");
}

TEST_F(Dia, BirthdaysAreGreetedByTheMeasureAndFeaturedClientsByTheirOwn)
{
    for (int idc : {2, 3})
        Cliente(idc);
    s.clientes->Execute("update clientes set perfil1 = -1, perfil3 = -1 where idc > 1");
    s.clientes->Execute("update clientes set perfil2 = -1 where idc = 3"); // pays late
    for (int idm = 1; idm <= 6; ++idm) {
        Mascotas({{idm, 0, idm <= 3 ? idm : 1, idm == 4}});
        const QDate nacio = idm == 5 ? QDate(2020, 3, 12) : QDate(2015 + idm, 3, 11);
        s.clientes->Execute("update mascotas set fecn = ? where idm = ?", nacio, idm);
    }
    s.clientes->Execute("update mascotas set fecn = null where idm = 6");
    for (const auto &[medida, medio] : Medidas) {
        SCOPED_TRACE(medida.toInt());
        Borrar({"TareasAgenda"});
        Ajuste("MedidasCumple", medida);
        TareasDeInicio(s);
        const auto m = std::to_string(medio);
        EXPECT_EQ(Tareas(),
                  medio ? "-46|1|||" + m + "|0|\n-51|2|||1|0|\n-46|3|||" + m + "|0|\n" : "");
        EXPECT_EQ(Pizarra(" where codigo1 = 12"),
                  medio ? "109|12|5|3 patients birthday today. Communication with owners.\n"
                        : "109|12|0|3 patients birthday today.\n");
    }
}

TEST_F(Dia, ADebtMovesOneStepWhenItsDaysHavePassed)
{
    const struct {
        int men, dias;
    } deudas[] = {{0, 29}, {0, 30}, {0, 95}, {1, 39}, {1, 40}, {2, 49}, {2, 50}, {3, 30}, {4, 99}};
    const std::pair<Valor, bool> medidas[] = {{1, true},        {3, true},  {0, false},
                                              {nullptr, false}, {2, false}, {-1, false}};
    Ajuste("diasdeudores", 30);
    for (int idc = 2; idc <= 10; ++idc)
        Cliente(idc);
    int corridas = 0;
    for (const auto &[medida, avisa] : medidas) {
        SCOPED_TRACE(medida.toInt());
        s.finanzas->Execute("delete * from ctactec");
        Borrar({"TareasAgenda"});
        int idc = 0;
        for (const auto &d : deudas)
            s.finanzas->Execute("insert into ctactec (idc, fecultpago, men) values (?, ?, ?)",
                                ++idc, Dentro(-d.dias), d.men);
        s.finanzas->Execute("insert into ctactec (idventa, idc, fecultpago, cancelado) values (99, "
                            "10, ?, -1)",
                            Dentro(-60));
        Ajuste("MedidasDeudores", medida);
        TareasDeInicio(s);
        ++corridas;
        EXPECT_EQ(Ver(*s.finanzas, "select idc, men from ctactec order by idc"),
                  "1|0\n2|1\n3|1\n4|1\n5|2\n6|2\n7|3\n8|4\n9|4\n10|0\n");
        EXPECT_EQ(Tareas(), avisa ? "-43|2|2026-03-11||3|0|Notification of Debt\n"
                                    "-43|3|2026-03-11||3|0|Notification of Debt\n"
                                    "-43|5|2026-03-11||3|0|Notification of Debt\n"
                                    "-43|7|2026-03-11||2|0|Notification of Debt\n"
                                  : "");
        EXPECT_EQ(Pizarra(" where codigo1 = 15")
                      .find(avisa ? "110|15|5|Detected 4 debtors" : "110|15|0|Detected 4 debtors"),
                  0u);
        // Late once for each debt that begins to be told, whatever is sent.
        EXPECT_EQ(s.morvane->Leer("select sum(deudasdemoradas) from perfiles").toInt(),
                  2 * corridas);
    }
}

TEST_F(Dia, LapsedReservationsGoAndGuestsAreCountedUpToTheirLastDay)
{
    Cliente(2);
    for (int idm = 1; idm <= 6; ++idm)
        Mascotas({{idm, 0, idm <= 2 ? idm : 1}});
    Estadia(1, u"r", -1, 3);
    Estadia(2, u"r", -9, -5);
    Estadia(3, u"r", 0, 3);  // not taken in yet: it lapses tomorrow
    Estadia(4, u"h", -3, 0); // the last day
    Estadia(5, u"h", -3, 2);
    s.clientes->Execute("update mascotas set int = -1 where idm = 6");
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(),
              "0|0|0|There are: 1 patients in care. (Listings for more information)\n"
              "108|0|0|Removed 2 accommodation reserves for non-compliance by the customer.\n"
              "108|9|0|Currently there 2 hosted pets\n");
    EXPECT_EQ(Ver(*s.clientes, "select idm from mhospedaje order by idm"), "3\n4\n5\n");
    EXPECT_EQ(Ver(*s.clientes, "select idm, hos from mascotas order by idm"),
              "1|0\n2|0\n3|1\n4|1\n5|1\n6|0\n");
    EXPECT_EQ(Perfiles(), "1|0|0|1\n2|0|0|1\n");

    Estadia(6, u"h", -3, -1); // its stay is over
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(" where codigo1 = 9"),
              "108|9|0|Currently there 3 hosted pets 1 completed their registration period.\n");
}

TEST_F(Dia, FeedingRoundsAreMadeAnewForASingleGuest)
{
    Turno(TipoTarea::Racion, 0, Dentro(-1)); // yesterday's
    Mascotas({{1}, {2}});
    Estadia(1, u"h", -1, 2);
    Ajuste("horaracion2", QTime(13, 0));
    TareasDeInicio(s);
    EXPECT_EQ(Tareas(), ""); // without a first hour there are no rounds

    Ajuste("horaracion1", QTime(8, 0));
    for (int vez = 0; vez < 2; ++vez) {
        TareasDeInicio(s);
        EXPECT_EQ(Tareas(), "-47|0|2026-03-11|08:00:00|0|0|\n-47|0|2026-03-11|13:00:00|0|0|\n");
        ASSERT_EQ(s.Alarmas.size(), 1u); // 8:00 is past
        EXPECT_EQ(s.Alarmas[0].hora, QTime(13, 0));
        EXPECT_EQ(s.Alarmas[0].ida, 0); // loaded, not appended
    }
    Estadia(2, u"h", -1, 2);
    TareasDeInicio(s);
    EXPECT_EQ(Tareas(), ""); // intended: two guests have no rounds
}

TEST_F(Dia, TheTaskFlagFallsWithTheLastOpenAppointment)
{
    for (int idm = 1; idm <= 4; ++idm)
        Mascotas({{idm}});
    s.clientes->Execute("update mascotas set tarea = -1 where idm < 4");
    Turno(41, 1, Dentro(-30)); // open, however old
    Turno(41, 2, hoy, true);
    Turno(-42, 2, hoy);
    TareasDeInicio(s);
    EXPECT_EQ(Ver(*s.clientes, "select idm, tarea from mascotas order by idm"),
              "1|-1\n2|0\n3|0\n4|0\n");
}

TEST_F(Dia, TheSummaryCountsOpenTasksAndOffersThePrint)
{
    Mascotas({{1}});
    Turno(41, 1, hoy);
    Turno(42, 1, hoy);
    Turno(42, 1, hoy, true);
    Turno(41, 1, Dentro(1));
    Turno(-43, 1, hoy);
    Turno(-100, 1, hoy); // a user's note is automatic by its code only
    Turno(-43, 1, hoy, true);
    Turno(-43, 1, Dentro(-1));
    const char *resumen = "115|8|0|Were counted, at login, 2 Task / s or appointments / s for "
                          "today.\n"
                          "106|10|0|There are 2 task/s of Kelvara for today.\n";
    ask.siempreNo.clear();
    for (bool si : {false, true}) {
        ask.Espera(u"Print summary?"_s, si);
        TareasDeInicio(s);
        EXPECT_EQ(Pizarra(), resumen);
        EXPECT_EQ(impresion.impresos,
                  si ? QStringList{u"Day's agenda Wednesday, 11 March 2026"_s} : QStringList{});
    }
    Borrar({"TareasAgenda"});
    TareasDeInicio(s); // nothing to print: not asked
    EXPECT_EQ(Pizarra(), "");
}

TEST_F(Dia, AppointmentsSinceTheLastStartCountAsKeptOrNot)
{
    Cliente(2);
    Mascotas({{1, 0, 1}, {2, 5, 2}});
    Cerrado(2);
    Turno(41, 1, Dentro(-2)); // counted by the last pass
    Turno(41, 1, Dentro(-1), true);
    Turno(41, 2, Dentro(-1));
    Turno(-43, 1, Dentro(-1)); // no appointment
    Turno(41, 1, Dentro(1));
    Turno(41, 1, hoy); // intended: open this morning is not kept
    Stock(2, 5, 1);    // intended: so is what this very pass books
    TareasDeInicio(s);
    EXPECT_EQ(Perfiles(), "1|0|1|1\n2|0|0|2\n");
    EXPECT_EQ(Pizarra(" where codigo1 = 32"), "115|32|0|Some yesterday tasks were not done\n");
    s.morvane->Execute("update TareasAgenda set est = -1 where dia = ?", Dentro(-1));
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(" where codigo1 = 32"), "");
}

TEST_F(Dia, VisitsOlderThanThirtyDaysAreForgotten)
{
    for (int atras : {29, 30, 31})
        s.clientes->Execute("insert into FichasVisitadas (idm, fec) values (?, ?)", atras,
                            Dentro(-atras));
    TareasDeInicio(s);
    EXPECT_EQ(Ver(*s.clientes, "select idm from FichasVisitadas order by idm"), "29\n30\n");
}

TEST_F(Dia, DaysOfTheCalendar)
{
    const std::string nuevo = "106|0|0|Happy new year.\n";
    const std::pair<QDate, std::string> dias[] = {
        {{2026, 12, 30}, ""},
        {{2026, 12, 31}, nuevo},
        {{2027, 1, 1}, nuevo},
        {{2027, 1, 2}, ""},
        {{2027, 8, 1}, ""},
        {{2027, 8, 6}, "106|0|0|Happy day of the veterinarian.\n"},
        // Intended: a birthday on 29 February rings in leap years only.
        {{2027, 2, 28}, ""},
        {{2027, 3, 1}, ""},
        {{2028, 2, 29}, "109|12|0|1 patients birthday today.\n"},
        {{2028, 3, 1}, ""}, // and none of a closed day
    };
    Mascotas({{1}});
    s.clientes->Execute("update mascotas set fecn = ?", QDate(2020, 2, 29));
    for (const auto &[dia, tablero] : dias) {
        s.reloj.hoy = dia;
        Cerrado(3);
        TareasDeInicio(s);
        EXPECT_EQ(Pizarra(), tablero) << dia.toString().toStdString();
    }
}

TEST_F(Dia, StockBelowItsMinimumAndBatchesAboutToExpire)
{
    const char *bajo = "113|17|0|Some products are below the established minimum\n";
    const char *vence = "113|31|0|Some products are about to expire.\n";
    s.finanzas->Execute("update articulos set can = 5, min = 5 where ida = 4");
    s.finanzas->Execute("insert into artvenc (ida, can, ven) values (4, 5, ?)", Dentro(31));
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(), "");
    s.finanzas->Execute("update articulos set can = 4.9 where ida = 4");
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(), bajo);
    s.finanzas->Execute("update artvenc set ven = ?", Dentro(30));
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(), std::string(bajo) + vence);
}

TEST_F(Dia, NewClientsWithAnAddressAreGreetedOnce)
{
    const std::pair<int, const char16_t *> nuevos[] = {
        {0, u"a@b.c"}, {-2, u"d@e.f"}, {-3, u"g@h.i"}, {0, u""}, {1, u"j@k.l"}};
    int idc = 1;
    for (const auto &[entro, email] : nuevos) {
        Cliente(++idc);
        s.clientes->Execute("update clientes set feci = ?, email = ? where idc = ?", Dentro(entro),
                            email, idc);
    }
    s.clientes->Execute("update clientes set feci = ? where idc = 1", hoy); // address Null
    for (const Valor &apagado : {Valor(2), Valor(0), Valor()}) {
        Ajuste("AutNuevoCliente", apagado);
        TareasDeInicio(s);
        EXPECT_EQ(Tareas(), "");
    }
    Ajuste("AutNuevoCliente", 1);
    const char *saludos = "-71|2|2026-03-11||1|0|Greetings from Patitas\n"
                          "-71|3|2026-03-11||1|0|Greetings from Patitas\n";
    TareasDeInicio(s);
    EXPECT_EQ(Tareas(), saludos);
    EXPECT_EQ(Pizarra(" where codigo2 = 5"),
              "109|10|5|We must send 2 messages to for new clients\n");
    s.reloj.hoy = Dentro(1);
    TareasDeInicio(s);
    EXPECT_EQ(Tareas(), saludos + "-71|6|2026-03-12||1|0|Greetings from Patitas\n"s);
}

TEST_F(Dia, NewsStandOnTheBoardUntilTheirLastDay)
{
    const QString local = CarpetaLocalDeDatos();
    ASSERT_TRUE(local.startsWith(carpeta.path()));
    ASSERT_TRUE(QDir().mkpath(local));
    const auto archivo = [&](const char *texto) {
        QFile f(local + u"notificacionesKelvara.txt"_s);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(texto);
    };
    archivo("#2026-03-11#,\"Version 5, now for dogs\"\r\n");
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(), "106|0|0|Version 5, now for dogs\n");
    Ajuste("RecibirNotificaciones", false);
    TareasDeInicio(s);
    EXPECT_EQ(Pizarra(), "");
    Ajuste("RecibirNotificaciones", true);
    for (const char *vieja : {"2026-03-10,Old", "what is this", ""}) {
        archivo(vieja); // garbage is worth no message
        TareasDeInicio(s);
        EXPECT_EQ(Pizarra(), "");
    }
}

TEST_F(Dia, AFailingStatementIsLoggedAndShownAndTheOthersRun)
{
    Mascotas({{1}});
    s.clientes->Execute("update mascotas set fecn = ?", QDate(2020, 3, 11));
    Estadia(1, u"r", -1, 3);
    Turno(41, 1, hoy);
    s.finanzas->Execute("insert into ctactec (idventa, idc, fecultpago) values (1, 1, ?)",
                        Dentro(-60));
    s.morvane->Execute("drop table perfiles");
    s.finanzas->Execute("alter table artvenc drop column ven");
    for (const char16_t *que : {u"\"perfiles\"", u"\"Perfiles\"", u"\"perfiles\"", u"\"Ven\""})
        ask.Espera(QString::fromUtf16(que));
    TareasDeInicio(s);
    EXPECT_EQ(Ver(*s.morvane, "select num, fec, fuente from errores"),
              "3078|2026-03-11|Tareas de Inicio. \n3078|2026-03-11|Tareas de Inicio. \n"
              "3078|2026-03-11|Tareas de Inicio. \n3061|2026-03-11|Tareas de Inicio. \n");
    // What stands beside the failing statement is done: the debt has moved, the kennel is free.
    EXPECT_EQ(Ver(*s.finanzas, "select men from ctactec"), "1\n");
    EXPECT_EQ(Ver(*s.clientes, "select hos from mascotas"), "0\n");
    EXPECT_EQ(Ver(*s.clientes, "select idm from mhospedaje"), "");
    EXPECT_EQ(Pizarra(" where dibujo <> 110"),
              "109|12|0|1 patients birthday today.\n"
              "108|0|0|Removed 1 accommodation reserves for non-compliance by the customer.\n"
              "115|8|0|Were counted, at login, 1 Task / s or appointments / s for today.\n");
}

TEST_F(Dia, TasksThatCannotBeWrittenAreToldOnceAndLoggedEachAndTheFoodIsConsumed)
{
    Mascotas({{1, 5}, {2, 5}, {3, 5}});
    for (int idm = 1; idm <= 3; ++idm)
        Stock(idm, idm < 3 ? 5 : 50, 1);
    s.morvane->Execute("alter table TareasAgenda drop column artaux");
    ask.Espera(u"artaux"_s);
    TareasDeInicio(s);
    EXPECT_EQ(Ver(*s.clientes, "select can, men, FaltaHoy from consumo order by idm"),
              "4|-1|-1\n4|-1|-1\n49|0|0\n");
    EXPECT_TRUE(EnPizarra(u"Detected 2 clients"_s));
    EXPECT_EQ(s.morvane->Leer("select count(*) from errores").toInt(), 2);
}

TEST_F(Dia, AScratchFileOfNoUseCostsThePrintedListAlone)
{
    Comensal();
    Dosis({{1, -1}});
    Ajuste("LVMascotas", true);
    QFile roto(RutaBajo(carpeta.path(), ArchivoDe(u"rep97"_s)));
    ASSERT_TRUE(roto.open(QIODevice::WriteOnly));
    roto.write(QByteArray(3 * 4096, 'x'));
    roto.close();
    ask.Espera(u"rep97.mdb"_s);
    TareasDeInicio(s);
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "99\n");
    EXPECT_TRUE(EnPizarra(u"It should have provided 1"_s));
    EXPECT_EQ(impresion.impresos, QStringList());
}

TEST_F(Dia, ARunThatDiesLeavesNothingAndIsRunAgain)
{
    Comensal();
    s.avance.etapa = [this](const QString &t) {
        if (t == s(3434))
            throw std::runtime_error("power cut");
    };
    EXPECT_THROW(IniciarTareas(s), std::runtime_error);
    s.avance = {};
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "100\n");
    EXPECT_TRUE(IniciarTareas(s));
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "99\n"); // a stock is eaten once
}

namespace
{

class Puerta : public Dia
{
protected:
    QStringList hechos;
    PasosPosteriores pasos{[this](Sesion &, QDate d) {
                               hechos << u"outbox %1, last start %2"_s.arg(
                                   d.toString(Qt::ISODate),
                                   s.configuracion["FechaUltimoInicio"].toText());
                               return true;
                           },
                           [this](Sesion &) { hechos << u"month"_s; }};

    /// Of today, as another terminal books it.
    void TurnoConAlarma()
    {
        Turno(41, 0, hoy, false, QTime(9, 30));
        s.Alarmas.clear();
    }
    std::string Fechas()
    {
        return Ver(*s.morvane, "select FechaInicioAnterior, FechaUltimoInicio, "
                               "FechaUltimoInicioMes from configuracion");
    }
};

} // namespace

TEST_F(Puerta, TheFirstStartOfADayRunsThePassThenTheOutboxThenTheMonth)
{
    Cerrado(3);
    Ajuste("FechaUltimoInicioMes", QDate(2026, 2, 27));
    QStringList etapas;
    s.avance.etapa = [&](const QString &t) { etapas << t; };
    const QString caja = u"outbox 2026-03-11, last start 2026-03-11"_s;
    EXPECT_TRUE(IniciarTareas(s, pasos));
    EXPECT_EQ(hechos, QStringList({caja, u"month"_s, caja}));
    EXPECT_EQ(Fechas(), "2026-03-08|2026-03-11|2026-03-11\n");
    EXPECT_EQ(etapas.join(u'\n').toStdString(),
              "Categories for consumption\nScheduled categories expirations\nChecking customers "
              "with debt\nBoarding\nUpdating alarm vector\nPerforming tasks\nMonthly tasks");

    // A second start does nothing but ring today's alarms.
    TurnoConAlarma();
    AgregarPizarra(s, u"kept"_s, 0, 0, 0);
    EXPECT_FALSE(IniciarTareas(s, pasos));
    EXPECT_EQ(hechos.size(), 3);
    EXPECT_EQ(Fechas(), "2026-03-08|2026-03-11|2026-03-11\n");
    EXPECT_TRUE(EnPizarra(u"kept"_s));
    EXPECT_EQ(s.Alarmas.size(), 1u);
}

TEST_F(Puerta, TheMonthIsKnownByItsNumberAlone)
{
    const std::pair<Valor, bool> casos[] = {
        {QDate(2026, 3, 1), false},  {QDate(2026, 2, 28), true},
        {QDate(2025, 3, 11), false}, // intended: exactly twelve months later nothing runs
        {QDate(2026, 4, 1), true},   {nullptr, true},
    };
    for (const auto &[ultimo, corre] : casos) {
        SCOPED_TRACE(ultimo.toText().toStdString());
        hechos.clear();
        Ajuste("FechaUltimoInicio", hoy); // the month does not wait for a new day
        Ajuste("FechaUltimoInicioMes", ultimo);
        EXPECT_FALSE(IniciarTareas(s, pasos));
        EXPECT_EQ(hechos.size(), corre ? 2 : 0);
        EXPECT_EQ(s.configuracion["FechaUltimoInicioMes"], corre ? Valor(hoy) : ultimo);
    }
}

TEST_F(Puerta, ALastStartInTheFutureRunsNothingAndALostOneRunsOneDay)
{
    Comensal();
    Cerrado(-2);
    EXPECT_FALSE(IniciarTareas(s, pasos));
    EXPECT_EQ(hechos, QStringList());
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "100\n");
    Ajuste("FechaUltimoInicio", nullptr);
    EXPECT_TRUE(IniciarTareas(s));
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "99\n");
}

TEST_F(Puerta, TwoTerminalsRunTheDayAndTheMonthOnce)
{
    Comensal();
    Ajuste("FechaUltimoInicioMes", QDate(2026, 2, 1));
    Sesion otra(ask, impresion, Idioma::Ingles);
    otra.reloj = s.reloj;
    FijarCarpetaDeDatos(otra, carpeta.path());
    ASSERT_FALSE(AbrirAlmacen(otra));
    ASSERT_LT(otra.configuracion["FechaUltimoInicio"].toDate(), hoy); // read before the first runs
    EXPECT_TRUE(IniciarTareas(s, pasos));
    EXPECT_FALSE(IniciarTareas(otra, pasos));
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "99\n");
    EXPECT_EQ(hechos.count(u"month"_s), 1);
}

TEST_F(Puerta, ATerminalWaitsForTheOneThatRunsTheDay)
{
    int listo[2];
    ASSERT_EQ(pipe(listo), 0);
    const QString marca = carpeta.path() + u"/over"_s;
    const QByteArray archivo = QFile::encodeName(marca);
    const pid_t hijo = fork();
    if (hijo == 0) {
        const BloqueoDeCarpeta dia(carpeta.path(), u"kelvara.dia"_s, 1);
        [[maybe_unused]] auto n = write(listo[1], dia.Tomado() ? "y" : "n", 1);
        usleep(300000);
        close(creat(archivo.constData(), 0600));
        _exit(0); // it dies with the lock and without having run
    }
    char tomado = 0;
    ASSERT_EQ(read(listo[0], &tomado, 1), 1);
    ASSERT_EQ(tomado, 'y');
    QStringList etapas; // those before the other one was over
    s.avance.etapa = [&](const QString &t) {
        if (!QFile::exists(marca))
            etapas << t;
    };
    EXPECT_TRUE(IniciarTareas(s));
    EXPECT_EQ(etapas, QStringList{s(9008)}); // whoever waits is told why
    waitpid(hijo, nullptr, 0);
    close(listo[0]);
    close(listo[1]);
}

TEST_F(Puerta, ADayThatCannotBeLockedIsToldAndTheAlarmsRingAllTheSame)
{
    Comensal();
    TurnoConAlarma();
    ASSERT_TRUE(QDir(carpeta.path()).mkdir(u"kelvara.dia"_s));
    EXPECT_THROW(IniciarTareas(s), ErrorDeAlmacen);
    EXPECT_EQ(Ver(*s.clientes, "select can from consumo"), "100\n");
    EXPECT_EQ(s.Alarmas.size(), 1u);
    EXPECT_TRUE(QDir(carpeta.path()).rmdir(u"kelvara.dia"_s));
    EXPECT_TRUE(IniciarTareas(s));
}
