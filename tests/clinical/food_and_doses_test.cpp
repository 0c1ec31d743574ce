#include "clinical/doses.h"
#include "clinical/food.h"
#include "support/clinic.h"

class Clinical : public Clinic
{
};

TEST_F(Clinical, FoodLevelGoesByWeightForDogsAndBySpeciesForOthers)
{
    s.morvane->Execute("update configuracion set detali1 = 1.5, detali2 = 2.5, detali3 = 3.5");
    s.clientes->Execute("update mlespecies set ali = 0.7 where id = 2");
    const struct {
        int species;
        double peso;
        int categoria;
        double level;
    } cases[] = {
        {1, 0, 1, 1.5},
        {1, 10, 1, 1.5},
        {1, 10.1, 1, 2.5},
        {1, 25, 1, 2.5},
        {1, 25.1, 1, 3.5},
        {2, 10, 1, 0.7},
        {3, 10, 1, 0 /* none set */},
        {99, 10, 1, 0},
        {0, 10, 1, 0},
        {1, 10, 3, 0},
        {2, 10, 11, 0},
    };
    for (const auto &c : cases)
        EXPECT_EQ(UmbralAlimento(s, c.species, c.peso, c.categoria), c.level)
            << c.species << ' ' << c.peso << ' ' << c.categoria;
}

TEST_F(Clinical, OverdueDosesAreTheOpenOnesOfTheCategoryBeforeThisOne)
{
    const struct {
        int idm, ida, dos, idcat, days, si;
    } doses[] = {
        {1, 4, 1, 3, -9, 0}, {1, 4, 2, 3, -8, 1},  {1, 7, 2, 3, -7, 2}, {1, 4, 3, 3, -6, 3},
        {1, 4, 4, 3, -5, 4}, {1, 4, 5, 3, -4, 0},  {1, 4, 6, 3, 0, 0},  {1, 4, 7, 3, 5, 0},
        {2, 4, 1, 3, -9, 0}, {1, 12, 1, 4, -9, 0},
    };
    for (const auto &d : doses)
        s.clientes->Execute("insert into artplan (idm, ida, dos, idcat, rep, si) values "
                            "(?, ?, ?, ?, ?, ?)",
                            d.idm, d.ida, d.dos, d.idcat, hoy.addDays(d.days), d.si);
    EXPECT_EQ(ContarDosisAtrasadas(s, 1, 4, 1, 3), 0); // the oldest
    EXPECT_EQ(ContarDosisAtrasadas(s, 1, 7, 2, 3), 1); // given ones do not count
    EXPECT_EQ(ContarDosisAtrasadas(s, 1, 4, 5, 3), 2);
    EXPECT_EQ(ContarDosisAtrasadas(s, 1, 4, 6, 3), 3); // all those before today
    EXPECT_EQ(ContarDosisAtrasadas(s, 1, 4, 7, 3), 3); // but not the one of today
    EXPECT_EQ(ContarDosisAtrasadas(s, 1, 12, 1, 4), 0);
    EXPECT_EQ(ContarDosisAtrasadas(s, 3, 4, 1, 3), 0);
}
