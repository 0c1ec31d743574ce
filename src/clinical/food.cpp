#include "clinical/food.h"

#include "columns/configuracion.h"
#include "store/lookups.h"
#include "store/settings_row.h"
#include "texts/clients.h"

#include <QLocale>

using namespace clinical;
using namespace Qt::StringLiterals;

namespace
{

// Columns of the settings row: the levels for dogs, from the lightest to the heaviest.
constexpr std::string_view Levels[] = {setting::detali1, setting::detali2, setting::detali3};

QString numberOf(Moneda m)
{
    return QLocale().toString(m.toDouble(), 'f', QLocale::FloatingPointShortest);
}

// Stocks are in grams, or in pounds if the product is sold in pounds.
bool inLibras(Sesion &s, int ida)
{
    const QString uni = LeerCampo(s, "finanzas", "articulos", ida, "uni").toLower();
    return uni == u"lb" || uni == u"u/lb";
}

} // namespace

double UmbralAlimento(Sesion &s, int species, double peso, int categoria)
{
    if (categoria != FoodCategory)
        return 0;
    if (hasThreeLevels(species))
        return s.configuracion[Levels[peso <= 10 ? 0 : peso <= 25 ? 1 : 2]].toDouble();
    return s.lists.mlespecies.lookUp("id = ?", species, "ali").value_or(0).toDouble();
}

store::Value clinical::foodLevel(Sesion &s, int species, int section)
{
    if (hasThreeLevels(species))
        return s.configuracion[Levels[section]];
    return s.clientes->read("select ali from mlespecies where id = ?", species);
}

void clinical::saveFoodLevel(Sesion &s, int species, int section, const store::Value &level)
{
    if (hasThreeLevels(species))
        store::saveSetting(s, Levels[section], level);
    else
        s.clientes->Execute("update mlespecies set ali = ? where id = ?", level, species);
}

QString clinical::foodText(Sesion &s, int idm)
{
    const Recordset r = s.clientes->OpenSnapshot(
        "select top 1 can, Con, ida from consumo where idm = ? and idcat = ? and can is not null",
        idm, FoodCategory);
    if (r.EOF_())
        return {};
    const Moneda can = r["can"].toMoneda(), con = r["Con"].toMoneda();
    const bool libras = inLibras(s, r["ida"].toInt());
    const QString remains = libras ? numberOf(can) + u"lb. "_s
                                   : numberOf(Moneda::round(can.toDouble() / 1000)) + u"kg. "_s;
    if (con <= Moneda())
        return s(text::FoodLeft) + remains.trimmed(); // no daily intake, so no days left
    const qint64 days = std::max<qint64>(can.tenThousandths() / con.tenThousandths(), 0);
    QString text = s(text::FoodLeft) + remains + numberOf(con) + (libras ? u"lb/"_s : u"g/"_s)
                   + s(text::OneDay) + s(text::FoodApprox) + QLocale().toString(days) + u' '
                   + s(days == 1 ? text::OneDay : text::Days);
    const QDate restocking = s.reloj.hoy.addDays(days);
    if (restocking.isValid())
        text += u". "_s + s(text::FoodRestocking) + store::dayText(restocking);
    return text;
}
