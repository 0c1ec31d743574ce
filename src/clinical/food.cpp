#include "clinical/food.h"

#include "store/lookups.h"
#include "store/settings_row.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace
{

// Of the settings row, for dogs from the lightest to the heaviest.
constexpr const char *Niveles[] = {"detali1", "detali2", "detali3"};

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
    if (TieneTresNiveles(especie))
        return s.configuracion[Niveles[peso <= 10 ? 0 : peso <= 25 ? 1 : 2]].toDouble();
    Recordset &especies = s.listas.mlespecies;
    especies.FindFirst("id = ?", especie);
    return especies.NoMatch() ? 0 : especies["ali"].toDouble();
}

Valor NivelDeAlimento(Sesion &s, int especie, int tramo)
{
    if (TieneTresNiveles(especie))
        return s.configuracion[Niveles[tramo]];
    return s.clientes->Leer("select ali from mlespecies where id = ?", especie);
}

void GuardarNivelDeAlimento(Sesion &s, int especie, int tramo, const Valor &nivel)
{
    if (TieneTresNiveles(especie))
        GuardarAjuste(s, Niveles[tramo], nivel);
    else
        s.clientes->Execute("update mlespecies set ali = ? where id = ?", nivel, especie);
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
