#include "boarding/rations.h"

#include "support/clinic.h"

using namespace Qt::StringLiterals;

namespace
{

class Raciones : public Clinica
{
protected:
    Raciones() { ask.siempreNo << s(4605); }

    void Huesped(int idm, int sale, const char16_t *tip = u"h")
    {
        s.clientes->Execute("insert into mhospedaje (idm, idcanil, fent, fsal, tip) values (?, 1, "
                            "?, ?, ?)",
                            idm, hoy.addDays(-5), hoy.addDays(sale), tip);
    }
    /// Hours of the day for the four settings; -1 leaves one empty.
    void Horas(std::initializer_list<int> horas)
    {
        int n = 0;
        for (int h : horas)
            s.morvane->Execute("update configuracion set horaracion" + std::to_string(++n) + " = ?",
                               h < 0 ? Valor() : Valor(QTime(h, 0)));
    }
    std::string Rondas()
    {
        return Filas(*s.morvane, "select tip, ida, dia, hor, ala, medio from TareasAgenda order by "
                                 "id")
            .toStdString();
    }
};

} // namespace

TEST_F(Raciones, FollowTheHighestHourDownwards)
{
    Huesped(1, 0);
    const struct {
        std::initializer_list<int> horas;
        const char *rondas;
    } casos[] = {
        {{-1, -1, -1, -1}, ""},
        {{8, -1, -1, -1}, "-47|0|2026-03-11|08:00:00|08:00:00|0\n"},
        // Intended: a gap below the highest hour is a round without an hour.
        {{8, -1, 20, -1},
         "-47|0|2026-03-11|20:00:00|20:00:00|0\n-47|0|2026-03-11|||0\n"
         "-47|0|2026-03-11|08:00:00|08:00:00|0\n"},
        {{-1, -1, -1, 22},
         "-47|0|2026-03-11|22:00:00|22:00:00|0\n-47|0|2026-03-11|||0\n"
         "-47|0|2026-03-11|||0\n-47|0|2026-03-11|||0\n"},
    };
    for (const auto &c : casos) {
        s.morvane->Execute("delete * from TareasAgenda");
        Horas(c.horas);
        ActualizarRaciones(s, true); // no printer: nobody is asked
        EXPECT_EQ(Rondas(), c.rondas);
    }
}

TEST_F(Raciones, AreMadeForExactlyOneGuestWhoIsStillToStay)
{
    Horas({8});
    Huesped(1, -1);      // over
    Huesped(2, 3, u"r"); // not here yet
    ActualizarRaciones(s, false);
    EXPECT_EQ(Rondas(), "");
    Huesped(3, 0);
    ActualizarRaciones(s, false);
    EXPECT_EQ(Rondas(), "-47|0|2026-03-11|08:00:00|08:00:00|0\n");
    Huesped(4, 1);
    ActualizarRaciones(s, false); // intended: the second guest adds nothing
    EXPECT_EQ(Rondas(), "-47|0|2026-03-11|08:00:00|08:00:00|0\n");
}

TEST_F(Raciones, OfferThePrintOfEachHour)
{
    ActualizarRaciones(s, true); // nothing written, nothing asked
    Huesped(1, 2);
    Horas({8, 20});
    ActualizarRaciones(s, false);
    ask.siempreNo.clear();
    ask.Espera(s(4605), false);
    ActualizarRaciones(s, true);
    EXPECT_EQ(impresion.impresos, QStringList());
    ask.Espera(s(4605), true);
    ActualizarRaciones(s, true);
    EXPECT_EQ(impresion.impresos, // a sheet for each round
              QStringList(2, u"Day's agenda Wednesday, 11 March 2026"_s));
}
