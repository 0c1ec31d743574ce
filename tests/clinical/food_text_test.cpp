#include "clinical/food.h"
#include "support/clinic.h"

#include <QLocale>

using namespace clinical;
using namespace Qt::StringLiterals;

class FoodText : public Clinic
{
protected:
    FoodText() { QLocale::setDefault({QLocale::English, QLocale::UnitedStates}); }
    ~FoodText() override { QLocale::setDefault(QLocale::c()); }
};

TEST_F(FoodText, TellsWhatIsLeftInTheProductsMeasure)
{
    s.finanzas->Execute("insert into articulos (ida, uni) values (900, 'U/Lb')");
    s.finanzas->Execute("insert into articulos (ida, uni) values (901, 'u/kg')");
    const struct {
        int ida;
        double can, con;
        const char16_t *text;
    } cases[] = {
        {901, 12345, 250, u"Left: 12.345kg. 250g/day - Approx. 49 days. R. 04/29/2026"},
        {0, 499.5, 250, u"Left: 0.4995kg. 250g/day - Approx. 1 day. R. 03/12/2026"},
        {900, 5.5, 0.5, u"Left: 5.5lb. 0.5lb/day - Approx. 11 days. R. 03/22/2026"},
        {901, 0, 250, u"Left: 0kg. 250g/day - Approx. 0 days. R. 03/11/2026"},
        {901, 500, 0, u"Left: 0.5kg."},
    };
    for (const auto &c : cases) {
        s.clientes->Execute("delete * from consumo");
        s.clientes->Execute(
            "insert into consumo (idm, idcat, ida, can, con) values (5, 1, ?, ?, ?)", c.ida,
            Moneda::round(c.can), Moneda::round(c.con));
        EXPECT_EQ(foodText(s, 5), QString::fromUtf16(c.text)) << c.can;
    }
}

TEST_F(FoodText, TellsNothingWithoutAKnownStockOfFood)
{
    EXPECT_EQ(foodText(s, 5), QString());
    s.clientes->Execute("insert into consumo (idm, idcat, con) values (5, 1, 100)");
    s.clientes->Execute("insert into consumo (idm, idcat, can, con) values (5, 3, 100, 1)");
    EXPECT_EQ(foodText(s, 5), QString());
}
