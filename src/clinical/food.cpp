#include "clinical/food.h"

#include "store/lookups.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace
{

QString Numero(Moneda m)
{
    return QLocale().toString(m.ADoble(), 'f', QLocale::FloatingPointShortest);
}

// Stocks count grams, or pounds where the product comes in pounds.
bool EnLibras(Sesion &s, int ida)
{
    const QString uni = LeerCampo(s, "finanzas", "articulos", ida, "uni").toLower();
    return uni == u"lb" || uni == u"u/lb";
}

} // namespace

double UmbralAlimento(Sesion &s, int especie, double peso, int categoria)
{
    if (categoria != CategoriaAlimento)
        return 0;
    if (especie == 1) {
        const Recordset &c = s.configuracion;
        return (peso <= 10 ? c["detali1"] : peso <= 25 ? c["detali2"] : c["detali3"]).toDouble();
    }
    Recordset &especies = s.listas.mlespecies;
    especies.FindFirst("id = ?", especie);
    return especies.NoMatch() ? 0 : especies["ali"].toDouble();
}

QString TextoDeAlimento(Sesion &s, int idm)
{
    const Recordset r = s.clientes->OpenSnapshot(
        "select top 1 can, Con, ida from consumo where idm = ? and idcat = ? and can is not null",
        idm, CategoriaAlimento);
    if (r.EOF_())
        return {};
    const Moneda can = r["can"].toMoneda(), con = r["Con"].toMoneda();
    const bool libras = EnLibras(s, r["ida"].toInt());
    const QString queda = libras ? Numero(can) + u"lb. "_s
                                 : Numero(Moneda::Redondear(can.ADoble() / 1000)) + u"kg. "_s;
    if (con <= Moneda())
        return s(9409) + queda.trimmed(); // how long it lasts is not known
    const qint64 dias = std::max<qint64>(can.Diezmilesimos() / con.Diezmilesimos(), 0);
    QString texto = s(9409) + queda + Numero(con) + (libras ? u"lb/"_s : u"g/"_s) + s(9416)
                    + s(9410) + QLocale().toString(dias) + u' ' + s(dias == 1 ? 9416 : 9417);
    const QDate reposicion = s.reloj.hoy.addDays(dias);
    if (reposicion.isValid())
        texto += u". "_s + s(9411) + TextoDeDia(reposicion);
    return texto;
}
