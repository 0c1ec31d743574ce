// The demonstration clinic's products, suppliers, sales, purchases and accounts.

#include "startup/demo_data.h"

#include <algorithm>
#include <map>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

constexpr int Days = 90; // how far sales and purchases go back
constexpr int DeliveryNote = 4;

struct Line {
    int ida = 0;
    int can = 0;
};

/// A sale on account: days since the last payment, and the reminder step it is at.
struct Debt {
    int days = 0;
    int men = 0;
    bool cancelled = false;
};

struct Sale {
    QDate fec;
    QTime hor;
    int idc = 0;
    int idm = 0;
    int tip = 1;
    int tfac = 3;
    int discount = 0;
    std::vector<Line> lines;
    const Debt *deuda = nullptr;
};

// Debts at every reminder step, then debts of this month, then paid ones.
constexpr Debt Debts[] = {{30, 0},       {32, 0},       {36, 0},       {39, 0},       {33, 1},
                          {41, 1},       {44, 1},       {52, 2},       {55, 2},       {62, 3},
                          {66, 3},       {75, 4},       {78, 4},       {2, 0},        {5, 0},
                          {8, 0},        {11, 0},       {15, 0},       {19, 0},       {24, 0},
                          {10, 0, true}, {14, 0, true}, {20, 0, true}, {27, 0, true}, {35, 0, true},
                          {48, 0, true}, {60, 0, true}, {70, 0, true}};

// Products to sell; one that is listed several times sells more often.
constexpr int Sold[] = {75, 75, 75, 75, 82, 82, 78, 79, 81, 80, 86, 88, 73, 4,  4,  1,
                        2,  3,  12, 12, 14, 15, 17, 19, 20, 21, 21, 22, 23, 25, 25, 27,
                        31, 32, 38, 39, 41, 45, 47, 49, 51, 52, 53, 54, 58, 58, 60, 61};

Moneda percentageOf(Moneda m, int percentage)
{
    return m * Moneda::fromTenThousandths(qint64(percentage) * 100);
}

void setPrices(Demo &d)
{
    const store::Language language = d.s.texts.language();
    const int factor = language == store::Language::Spanish      ? 40
                       : language == store::Language::Portuguese ? 5
                                                                 : 1;
    const int tax = language == store::Language::Spanish      ? 22
                    : language == store::Language::Portuguese ? 18
                                                              : 10;
    for (Recordset r = d.finanzas.OpenSnapshot("select * from Articulos order by ida"); !r.EOF_();
         r.MoveNext())
        d.articulos.push_back(
            {r["ida"].toInt(), r["idcat"].toInt(), r["canuni"].toMoneda(), {}, {}});

    const Seeds prices = readSeeds(u"demo_prices"_s, language);
    for (const QStringList &row : prices.rows) {
        DemoProduct &a = d.articulos[size_t(prices.Cell(row, u"ida").toInt() - 1)];
        a.price = Moneda::fromText(prices.Cell(row, u"precio")).value_or(Moneda()) * factor;
        a.cost = a.idcat == 2 ? Moneda() : percentageOf(a.price, 60);
        const int pieces = prices.Cell(row, u"stock").toInt();
        const int minimum = prices.Cell(row, u"minimo").toInt();
        // Stock and minimum are in the unit of a piece's contents if it has any, else in pieces.
        const Moneda measure = a.canuni == Moneda() ? Moneda::whole(1) : a.canuni;
        d.finanzas.Execute(
            "update Articulos set can = ?, [min] = ?, canamb = ?, p1 = ?, p2 = ?, p3 = ?, p4 = ?,"
            " CostoNeto = ?, CostoImp = ?, VentaImp = ? where ida = ?",
            measure * pieces, (measure * minimum).toDouble(),
            a.ida == 4 || a.ida == 12 ? measure * 5 : Moneda(), a.price, percentageOf(a.price, 95),
            percentageOf(a.price, 90), percentageOf(a.price, 85), a.cost, percentageOf(a.cost, tax),
            Moneda::whole(tax), a.ida);
    }
    d.finanzas.Execute("update FLCategorias set PorcentajeGanancia = 40 where idcat <> 2");

    // Two batches for each product that has batches; three of them are near expiry or expired.
    const std::map<int, int> ready{{8, -5}, {41, 12}, {46, 25}};
    for (Recordset r =
             d.finanzas.OpenSnapshot("select * from Articulos where vto = 1 order by ida");
         !r.EOF_(); r.MoveNext()) {
        const int ida = r["ida"].toInt();
        const auto soon = ready.find(ida);
        const int first = soon == ready.end() ? d.chance.between(90, 240) : soon->second;
        for (const int days : {first, first + 300})
            d.finanzas.Execute("insert into ArtVenc (ida, can, ven) values (?, ?, ?)", ida,
                               d.chance.between(2, 12), d.hoy.addDays(days));
    }
}

/// The total of the lines, before the discount.
Moneda sumOf(const Demo &d, const Sale &v)
{
    Moneda sum;
    for (const Line &l : v.lines)
        sum = sum + d.product(l.ida).price * l.can;
    return sum;
}

void addLines(Demo &d, Sale &v)
{
    const int count = d.chance.between(1, 3);
    while (int(v.lines.size()) < count) {
        const int ida = d.chance.pick(Sold);
        const bool repeated = std::ranges::find(v.lines, ida, &Line::ida) != v.lines.end();
        if (!repeated)
            v.lines.push_back({ida, d.product(ida).idcat == 2 ? 1 : d.chance.between(1, 3)});
    }
}

/// A patient of the client, or 0.
int patientOf(const Demo &d, int idc)
{
    const auto i = std::ranges::find_if(
        d.animals, [&](const DemoPatient &m) { return m.idc == idc && !m.dec; });
    return i == d.animals.end() ? 0 : i->idm;
}

std::vector<Sale> inventSales(Demo &d)
{
    Chance &chance = d.chance;
    std::vector<Sale> ventas;
    for (int back = Days; back >= 0; --back) {
        const QDate fec = d.hoy.addDays(-back);
        if (fec.dayOfWeek() == Qt::Sunday)
            continue;
        for (int n = back == 0 ? 3 : chance.between(5, 12); n > 0; --n) {
            Sale v;
            v.fec = fec;
            v.hor = QTime(back == 0 ? 8 : chance.between(9, 18), chance.between(0, 59));
            const int idc = chance.between(1, int(d.people.size()));
            if (chance.isDue(75) && d.Client(idc).feci <= fec) {
                v.idc = idc;
                v.idm = patientOf(d, idc);
            }
            const int given = chance.between(1, 100);
            v.tip = given <= 2 ? 3 : given <= 40 ? 5 : 1;
            const int kind = chance.between(1, 100);
            v.tfac = kind <= 8    ? 1
                     : kind <= 35 ? 2
                     : kind <= 65 ? 3
                     : kind <= 69 ? DeliveryNote
                                  : 5;
            v.discount = chance.isDue(8) ? 10 : 0;
            addLines(d, v);
            ventas.push_back(std::move(v));
        }
    }
    int idc = -3;
    for (const Debt &deuda : Debts) {
        Sale v;
        v.idc = idc += 8;
        v.idm = patientOf(d, v.idc);
        v.fec = d.hoy.addDays(-deuda.days - (deuda.days % 3 ? 0 : 7));
        v.hor = QTime(chance.between(9, 18), chance.between(0, 59));
        v.tip = deuda.cancelled ? 4 : 2;
        v.deuda = &deuda;
        addLines(d, v);
        v.lines.push_back({74, 1}); // makes the debt large enough
        ventas.push_back(std::move(v));
    }
    std::ranges::stable_sort(ventas, [](const Sale &a, const Sale &b) {
        return std::tie(a.fec, a.hor) < std::tie(b.fec, b.hor);
    });
    return ventas;
}

void writeDebt(Demo &d, const Sale &v, int idventa, Moneda total)
{
    const Debt &deuda = *v.deuda;
    const QDate last = d.hoy.addDays(-deuda.days);
    const auto pay = [&](Moneda payment, QDate fec) {
        d.finanzas.Execute("insert into CtaCtePagosC (idVenta, pago, fec, idu)"
                           " values (?, ?, ?, 1)",
                           idventa, payment, fec);
    };
    Moneda saldo = total - percentageOf(total, 30);
    pay(percentageOf(total, 30), v.fec);
    if (deuda.cancelled) {
        pay(saldo, last);
        saldo = {};
    } else if (last > v.fec) {
        pay(percentageOf(total, 20), last);
        saldo = saldo - percentageOf(total, 20);
    }
    d.finanzas.Execute("insert into CtaCteC (idVenta, idc, fecUltPago, total, saldo, Cancelado,"
                       " men) values (?, ?, ?, ?, ?, ?, ?)",
                       idventa, v.idc, last, total, saldo, deuda.cancelled, deuda.men);
    if (!deuda.cancelled) {
        d.Client(v.idc).deuda = true;
        d.Client(v.idc).profile[5] = deuda.days >= 60;
    }
}

void sales(Demo &d)
{
    static const QStringList counters{u"contadorFacA"_s, u"contadorFacB"_s, u"contadorventa"_s,
                                      u"contadorR"_s, u"contadorT"_s};
    for (const Sale &v : inventSales(d)) {
        const int idventa = d.nextOne(u"idventa"_s);
        const Moneda sum = sumOf(d, v);
        const Moneda total =
            v.tip == 3 || v.tfac == DeliveryNote ? Moneda() : percentageOf(sum, 100 - v.discount);
        const bool invoiced = v.tfac == DeliveryNote && v.fec < d.hoy.addDays(-20);
        d.finanzas.Execute(
            "insert into Ventas (tfac, idv, idvSerie, idc, idm, fec, hor, tot, idu, tip, amb,"
            " recargo, idventa, Facturado) values (?, ?, 1, ?, ?, ?, ?, ?, 1, ?, 0, ?, ?, ?)",
            QString::number(v.tfac), d.nextOne(counters[v.tfac - 1]), v.idc, v.idm, v.fec, v.hor,
            total, v.tip, v.discount, idventa, invoiced);
        for (const Line &l : v.lines) {
            const Moneda price = d.product(l.ida).price;
            d.finanzas.Execute("insert into VentasDetalle (idventa, ida, can, uni, pu, [sub],"
                               " Impuesto) values (?, ?, ?, 'u', ?, ?, 0)",
                               idventa, l.ida, l.can, price, price * l.can);
        }
        if (v.deuda)
            writeDebt(d, v, idventa, total);
        if (v.idc) {
            DemoClient &c = d.Client(v.idc);
            c.fecu = std::max(c.fecu, v.fec);
        }
    }
}

void purchases(Demo &d)
{
    Chance &chance = d.chance;
    const int enrolled =
        d.s.texts.language() == store::Language::Spanish ? 4 : 1; // row of TiposFiscal
    for (const QStringList &p : d.words.fieldsOf(u"proveedores"_s))
        d.finanzas.Execute("insert into Proveedores (idp, nom, dir, tel, mail, iva, cuit, ped)"
                           " values (?, ?, ?, ?, 'info@example.com', ?, ?, 0)",
                           d.nextOne(u"contadorprovee"_s), p[0], p[1], p[2], enrolled,
                           u"00-%1-0"_s.arg(chance.between(10000000, 99999999)));
    for (int back = Days - 2; back > 0; back -= 4) {
        const int idcompra = d.nextOne(u"contadorcompra"_s);
        const QDate fec = d.hoy.addDays(-back);
        const int idp = chance.between(1, d.counters[u"contadorprovee"_s]);
        const QString invoice = u"0001-%1"_s.arg(chance.between(1, 99999), 8, 10, QChar(u'0'));
        Moneda total;
        for (int n = chance.between(2, 4); n > 0; --n) {
            const DemoProduct &a = d.product(chance.between(1, 69));
            const int can = chance.between(4, 20);
            total = total + a.cost * can;
            d.finanzas.Execute("insert into ComprasDetalle (idCompra, ida, cos, can, [sub], uni)"
                               " values (?, ?, ?, ?, ?, 'u')",
                               idcompra, a.ida, a.cost, can, a.cost * can);
        }
        // Every third one is on account; half of those are paid off by now.
        const bool toAccount = idcompra % 3 == 0;
        const bool cancelled = idcompra % 6 == 0;
        d.finanzas.Execute(
            "insert into Compras (tfac, idcompra, fac, remito, idp, tot, fec, hor, idu, tip,"
            " recargo) values ('1', ?, ?, '', ?, ?, ?, ?, 1, ?, 0)",
            idcompra, invoice, idp, total, fec, QTime(chance.between(9, 17), chance.between(0, 59)),
            !toAccount  ? 1
            : cancelled ? 4
                        : 2);
        if (!toAccount)
            continue;
        const Moneda delivery = percentageOf(total, 25);
        const QDate last = cancelled ? fec.addDays(back / 2) : fec;
        d.finanzas.Execute("insert into CtaCteP (idcompra, fac, idp, fecUltPago, total, saldo,"
                           " Cancelado) values (?, ?, ?, ?, ?, ?, ?)",
                           idcompra, invoice, idp, last, total,
                           cancelled ? Moneda() : total - delivery, cancelled);
        d.finanzas.Execute("insert into CtaCtePagosP (idcompra, pago, fec, idu)"
                           " values (?, ?, ?, 1)",
                           idcompra, delivery, fec);
        if (cancelled)
            d.finanzas.Execute("insert into CtaCtePagosP (idcompra, pago, fec, idu)"
                               " values (?, ?, ?, 1)",
                               idcompra, total - delivery, last);
    }
}

void expenses(Demo &d)
{
    Chance &chance = d.chance;
    const QStringList &items = d.words[u"gastos"_s];
    for (int back = Days; back >= 0; back -= 4) {
        const int idgasto = d.nextOne(u"contadorGasto"_s);
        const QString &item = items[idgasto % items.size()];
        d.finanzas.Execute("insert into Gastos (idgasto, hor, fac, con, tot, fec, idu, tip)"
                           " values (?, ?, ?, ?, ?, ?, 1, ?)",
                           idgasto, QTime(chance.between(9, 18), chance.between(0, 59)),
                           QString::number(4000 + idgasto), item,
                           d.product(75).price * chance.between(2, 12), d.hoy.addDays(-back),
                           chance.isDue(5) ? 3 : 1);
    }
    for (int i = 0; i < 12; ++i)
        d.finanzas.Execute("insert into UsoInterno (ida, can, fec) values (?, ?, ?)",
                           chance.between(62, 67), chance.between(1, 10), d.hoy.addDays(-i * 6));
}

} // namespace

void startup::inventCommerce(Demo &d)
{
    setPrices(d);
    purchases(d);
    sales(d);
    expenses(d);
}
