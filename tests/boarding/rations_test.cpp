#include "boarding/rations.h"

#include "support/clinic.h"
#include "texts/texts.h"

using namespace Qt::StringLiterals;

namespace
{

class Rations : public Clinic
{
protected:
    Rations() { ask.alwaysNo << s(text::UpdateAgendaQuestion); }

    void guest(int idm, int sale, const char16_t *tip = u"h")
    {
        s.clientes->Execute("insert into mhospedaje (idm, idcanil, fent, fsal, tip) values (?, 1, "
                            "?, ?, ?)",
                            idm, hoy.addDays(-5), hoy.addDays(sale), tip);
    }
    /// Sets the hours of the four rounds; -1 leaves one empty.
    void hoursOf(std::initializer_list<int> hours)
    {
        int n = 0;
        for (int h : hours)
            s.morvane->Execute("update configuracion set horaracion" + std::to_string(++n) + " = ?",
                               h < 0 ? store::Value() : store::Value(QTime(h, 0)));
    }
    std::string roundsOf()
    {
        return allRows(*s.morvane,
                       "select tip, ida, dia, hor, ala, medio from TareasAgenda order by "
                       "id")
            .toStdString();
    }
};

} // namespace

TEST_F(Rations, FollowTheHighestHourDownwards)
{
    guest(1, 0);
    const struct {
        std::initializer_list<int> hours;
        const char *rounds;
    } cases[] = {
        {{-1, -1, -1, -1}, ""},
        {{8, -1, -1, -1}, "-47|0|2026-03-11|08:00:00|08:00:00|0\n"},
        // On purpose: a gap below the highest hour gives a round without an hour.
        {{8, -1, 20, -1},
         "-47|0|2026-03-11|20:00:00|20:00:00|0\n-47|0|2026-03-11|||0\n"
         "-47|0|2026-03-11|08:00:00|08:00:00|0\n"},
        {{-1, -1, -1, 22},
         "-47|0|2026-03-11|22:00:00|22:00:00|0\n-47|0|2026-03-11|||0\n"
         "-47|0|2026-03-11|||0\n-47|0|2026-03-11|||0\n"},
    };
    for (const auto &c : cases) {
        s.morvane->Execute("delete * from TareasAgenda");
        hoursOf(c.hours);
        ActualizarRaciones(s, true); // without a printer there is no question
        EXPECT_EQ(roundsOf(), c.rounds);
    }
}

TEST_F(Rations, AreMadeForExactlyOneGuestWhoIsStillToStay)
{
    hoursOf({8});
    guest(1, -1);      // stay is over
    guest(2, 3, u"r"); // not arrived yet
    ActualizarRaciones(s, false);
    EXPECT_EQ(roundsOf(), "");
    guest(3, 0);
    ActualizarRaciones(s, false);
    EXPECT_EQ(roundsOf(), "-47|0|2026-03-11|08:00:00|08:00:00|0\n");
    guest(4, 1);
    ActualizarRaciones(s, false); // On purpose: the second guest adds nothing.
    EXPECT_EQ(roundsOf(), "-47|0|2026-03-11|08:00:00|08:00:00|0\n");
}

TEST_F(Rations, OfferThePrintOfEachHour)
{
    ActualizarRaciones(s, true); // nothing written, nothing asked
    guest(1, 2);
    hoursOf({8, 20});
    ActualizarRaciones(s, false);
    ask.alwaysNo.clear();
    ask.wait(s(text::UpdateAgendaQuestion), false);
    ActualizarRaciones(s, true);
    EXPECT_EQ(impresion.printed, QStringList());
    ask.wait(s(text::UpdateAgendaQuestion), true);
    ActualizarRaciones(s, true);
    EXPECT_EQ(impresion.printed, // one sheet for each round
              QStringList(2, u"Day's agenda Wednesday, 11 March 2026"_s));
}
