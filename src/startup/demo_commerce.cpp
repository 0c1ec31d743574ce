// The demonstration clinic's products, suppliers, sales, purchases and accounts.

#include "startup/demo_data.h"

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace
{

constexpr int Dias = 90; // sales and purchases go back this far
constexpr int Remito = 4;

struct Linea {
    int ida = 0;
    int can = 0;
};

/// A sale on account: days since its last payment, step of its reminders.
struct Deuda {
    int dias = 0;
    int men = 0;
    bool cancelada = false;
};

struct Venta {
    QDate fec;
    QTime hor;
    int idc = 0;
    int idm = 0;
    int tip = 1;
    int tfac = 3;
    int descuento = 0;
    std::vector<Linea> lineas;
    const Deuda *deuda = nullptr;
};

// Every step that the reminders of a debt can stand on, then debts of this month and paid ones.
constexpr Deuda Deudas[] = {
    {30, 0},       {32, 0},       {36, 0},       {39, 0},       {33, 1},       {41, 1},
    {44, 1},       {52, 2},       {55, 2},       {62, 3},       {66, 3},       {75, 4},
    {78, 4},       {2, 0},        {5, 0},        {8, 0},        {11, 0},       {15, 0},
    {19, 0},       {24, 0},       {10, 0, true}, {14, 0, true}, {20, 0, true}, {27, 0, true},
    {35, 0, true}, {48, 0, true}, {60, 0, true}, {70, 0, true}};

// What is sold, as often as it stands here.
constexpr int Vendidos[] = {75, 75, 75, 75, 82, 82, 78, 79, 81, 80, 86, 88, 73, 4,  4,  1,
                            2,  3,  12, 12, 14, 15, 17, 19, 20, 21, 21, 22, 23, 25, 25, 27,
                            31, 32, 38, 39, 41, 45, 47, 49, 51, 52, 53, 54, 58, 58, 60, 61};

Moneda Porcentaje(Moneda m, int porcentaje)
{
    return m * Moneda::DeDiezmilesimos(qint64(porcentaje) * 100);
}

void PonerPrecios(Demo &d)
{
    const Idioma idioma = d.s.textos.idioma();
    const int factor = idioma == Idioma::Espanol ? 40 : idioma == Idioma::Portugues ? 5 : 1;
    const int impuesto = idioma == Idioma::Espanol ? 22 : idioma == Idioma::Portugues ? 18 : 10;
    for (Recordset r = d.finanzas.OpenSnapshot("select * from Articulos order by ida"); !r.EOF_();
         r.MoveNext())
        d.articulos.push_back(
            {r["ida"].toInt(), r["idcat"].toInt(), r["canuni"].toMoneda(), {}, {}});

    const Semillas precios = LeerSemillas(u"demo_prices"_s, idioma);
    for (const QStringList &fila : precios.filas) {
        ArticuloDemo &a = d.articulos[size_t(precios.Celda(fila, u"ida").toInt() - 1)];
        a.precio = Moneda::DeTexto(precios.Celda(fila, u"precio")).value_or(Moneda()) * factor;
        a.costo = a.idcat == 2 ? Moneda() : Porcentaje(a.precio, 60);
        const int piezas = precios.Celda(fila, u"stock").toInt();
        const int minimo = precios.Celda(fila, u"minimo").toInt();
        // Stock and minimum count what a piece holds, where it holds something.
        const Moneda medida = a.canuni == Moneda() ? Moneda::DeEntero(1) : a.canuni;
        d.finanzas.Execute(
            "update Articulos set can = ?, [min] = ?, canamb = ?, p1 = ?, p2 = ?, p3 = ?, p4 = ?,"
            " CostoNeto = ?, CostoImp = ?, VentaImp = ? where ida = ?",
            medida * piezas, (medida * minimo).ADoble(),
            a.ida == 4 || a.ida == 12 ? medida * 5 : Moneda(), a.precio, Porcentaje(a.precio, 95),
            Porcentaje(a.precio, 90), Porcentaje(a.precio, 85), a.costo,
            Porcentaje(a.costo, impuesto), Moneda::DeEntero(impuesto), a.ida);
    }
    d.finanzas.Execute("update FLCategorias set PorcentajeGanancia = 40 where idcat <> 2");

    // Batches: two for each product that has them, three of them about to expire or expired.
    const std::map<int, int> prontos{{8, -5}, {41, 12}, {46, 25}};
    for (Recordset r =
             d.finanzas.OpenSnapshot("select * from Articulos where vto = 1 order by ida");
         !r.EOF_(); r.MoveNext()) {
        const int ida = r["ida"].toInt();
        const auto pronto = prontos.find(ida);
        const int primero = pronto == prontos.end() ? d.azar.Entre(90, 240) : pronto->second;
        for (const int dias : {primero, primero + 300})
            d.finanzas.Execute("insert into ArtVenc (ida, can, ven) values (?, ?, ?)", ida,
                               d.azar.Entre(2, 12), d.hoy.addDays(dias));
    }
}

/// The price of the lines, before and after the discount.
Moneda Suma(const Demo &d, const Venta &v)
{
    Moneda suma;
    for (const Linea &l : v.lineas)
        suma = suma + d.Articulo(l.ida).precio * l.can;
    return suma;
}

void AgregarLineas(Demo &d, Venta &v)
{
    const int cuantas = d.azar.Entre(1, 3);
    while (int(v.lineas.size()) < cuantas) {
        const int ida = d.azar.De(Vendidos);
        const bool repetida = std::ranges::find(v.lineas, ida, &Linea::ida) != v.lineas.end();
        if (!repetida)
            v.lineas.push_back({ida, d.Articulo(ida).idcat == 2 ? 1 : d.azar.Entre(1, 3)});
    }
}

/// A patient of the client, or 0.
int MascotaDe(const Demo &d, int idc)
{
    const auto i = std::ranges::find_if(
        d.animales, [&](const MascotaDemo &m) { return m.idc == idc && !m.dec; });
    return i == d.animales.end() ? 0 : i->idm;
}

std::vector<Venta> InventarVentas(Demo &d)
{
    Azar &azar = d.azar;
    std::vector<Venta> ventas;
    for (int atras = Dias; atras >= 0; --atras) {
        const QDate fec = d.hoy.addDays(-atras);
        if (fec.dayOfWeek() == Qt::Sunday)
            continue;
        for (int n = atras == 0 ? 3 : azar.Entre(5, 12); n > 0; --n) {
            Venta v;
            v.fec = fec;
            v.hor = QTime(atras == 0 ? 8 : azar.Entre(9, 18), azar.Entre(0, 59));
            const int idc = azar.Entre(1, int(d.gente.size()));
            if (azar.Sale(75) && d.Cliente(idc).feci <= fec) {
                v.idc = idc;
                v.idm = MascotaDe(d, idc);
            }
            const int dado = azar.Entre(1, 100);
            v.tip = dado <= 2 ? 3 : dado <= 40 ? 5 : 1;
            const int clase = azar.Entre(1, 100);
            v.tfac = clase <= 8 ? 1 : clase <= 35 ? 2 : clase <= 65 ? 3 : clase <= 69 ? Remito : 5;
            v.descuento = azar.Sale(8) ? 10 : 0;
            AgregarLineas(d, v);
            ventas.push_back(std::move(v));
        }
    }
    int idc = -3;
    for (const Deuda &deuda : Deudas) {
        Venta v;
        v.idc = idc += 8;
        v.idm = MascotaDe(d, v.idc);
        v.fec = d.hoy.addDays(-deuda.dias - (deuda.dias % 3 ? 0 : 7));
        v.hor = QTime(azar.Entre(9, 18), azar.Entre(0, 59));
        v.tip = deuda.cancelada ? 4 : 2;
        v.deuda = &deuda;
        AgregarLineas(d, v);
        v.lineas.push_back({74, 1}); // worth owing
        ventas.push_back(std::move(v));
    }
    std::ranges::stable_sort(ventas, [](const Venta &a, const Venta &b) {
        return std::tie(a.fec, a.hor) < std::tie(b.fec, b.hor);
    });
    return ventas;
}

void EscribirDeuda(Demo &d, const Venta &v, int idventa, Moneda total)
{
    const Deuda &deuda = *v.deuda;
    const QDate ultimo = d.hoy.addDays(-deuda.dias);
    const auto pagar = [&](Moneda pago, QDate fec) {
        d.finanzas.Execute("insert into CtaCtePagosC (idVenta, pago, fec, idu)"
                           " values (?, ?, ?, 1)",
                           idventa, pago, fec);
    };
    Moneda saldo = total - Porcentaje(total, 30);
    pagar(Porcentaje(total, 30), v.fec);
    if (deuda.cancelada) {
        pagar(saldo, ultimo);
        saldo = {};
    } else if (ultimo > v.fec) {
        pagar(Porcentaje(total, 20), ultimo);
        saldo = saldo - Porcentaje(total, 20);
    }
    d.finanzas.Execute("insert into CtaCteC (idVenta, idc, fecUltPago, total, saldo, Cancelado,"
                       " men) values (?, ?, ?, ?, ?, ?, ?)",
                       idventa, v.idc, ultimo, total, saldo, deuda.cancelada, deuda.men);
    if (!deuda.cancelada) {
        d.Cliente(v.idc).deuda = true;
        d.Cliente(v.idc).perfil[5] = deuda.dias >= 60;
    }
}

void Ventas(Demo &d)
{
    static const QStringList contadores{u"contadorFacA"_s, u"contadorFacB"_s, u"contadorventa"_s,
                                        u"contadorR"_s, u"contadorT"_s};
    for (const Venta &v : InventarVentas(d)) {
        const int idventa = d.Siguiente(u"idventa"_s);
        const Moneda suma = Suma(d, v);
        const Moneda total =
            v.tip == 3 || v.tfac == Remito ? Moneda() : Porcentaje(suma, 100 - v.descuento);
        const bool facturado = v.tfac == Remito && v.fec < d.hoy.addDays(-20);
        d.finanzas.Execute(
            "insert into Ventas (tfac, idv, idvSerie, idc, idm, fec, hor, tot, idu, tip, amb,"
            " recargo, idventa, Facturado) values (?, ?, 1, ?, ?, ?, ?, ?, 1, ?, 0, ?, ?, ?)",
            QString::number(v.tfac), d.Siguiente(contadores[v.tfac - 1]), v.idc, v.idm, v.fec,
            v.hor, total, v.tip, v.descuento, idventa, facturado);
        for (const Linea &l : v.lineas) {
            const Moneda precio = d.Articulo(l.ida).precio;
            d.finanzas.Execute("insert into VentasDetalle (idventa, ida, can, uni, pu, [sub],"
                               " Impuesto) values (?, ?, ?, 'u', ?, ?, 0)",
                               idventa, l.ida, l.can, precio, precio * l.can);
        }
        if (v.deuda)
            EscribirDeuda(d, v, idventa, total);
        if (v.idc) {
            ClienteDemo &c = d.Cliente(v.idc);
            c.fecu = std::max(c.fecu, v.fec);
        }
    }
}

void Compras(Demo &d)
{
    Azar &azar = d.azar;
    const int inscripto = d.s.textos.idioma() == Idioma::Espanol ? 4 : 1; // row of TiposFiscal
    for (const QStringList &p : d.palabras.Campos(u"proveedores"_s))
        d.finanzas.Execute("insert into Proveedores (idp, nom, dir, tel, mail, iva, cuit, ped)"
                           " values (?, ?, ?, ?, 'info@example.com', ?, ?, 0)",
                           d.Siguiente(u"contadorprovee"_s), p[0], p[1], p[2], inscripto,
                           u"00-%1-0"_s.arg(azar.Entre(10000000, 99999999)));
    for (int atras = Dias - 2; atras > 0; atras -= 4) {
        const int idcompra = d.Siguiente(u"contadorcompra"_s);
        const QDate fec = d.hoy.addDays(-atras);
        const int idp = azar.Entre(1, d.contadores[u"contadorprovee"_s]);
        const QString factura = u"0001-%1"_s.arg(azar.Entre(1, 99999), 8, 10, QChar(u'0'));
        Moneda total;
        for (int n = azar.Entre(2, 4); n > 0; --n) {
            const ArticuloDemo &a = d.Articulo(azar.Entre(1, 69));
            const int can = azar.Entre(4, 20);
            total = total + a.costo * can;
            d.finanzas.Execute("insert into ComprasDetalle (idCompra, ida, cos, can, [sub], uni)"
                               " values (?, ?, ?, ?, ?, 'u')",
                               idcompra, a.ida, a.costo, can, a.costo * can);
        }
        // Every third one on account, half of those paid off by now.
        const bool aCuenta = idcompra % 3 == 0;
        const bool cancelada = idcompra % 6 == 0;
        d.finanzas.Execute(
            "insert into Compras (tfac, idcompra, fac, remito, idp, tot, fec, hor, idu, tip,"
            " recargo) values ('1', ?, ?, '', ?, ?, ?, ?, 1, ?, 0)",
            idcompra, factura, idp, total, fec, QTime(azar.Entre(9, 17), azar.Entre(0, 59)),
            !aCuenta    ? 1
            : cancelada ? 4
                        : 2);
        if (!aCuenta)
            continue;
        const Moneda entrega = Porcentaje(total, 25);
        const QDate ultimo = cancelada ? fec.addDays(atras / 2) : fec;
        d.finanzas.Execute("insert into CtaCteP (idcompra, fac, idp, fecUltPago, total, saldo,"
                           " Cancelado) values (?, ?, ?, ?, ?, ?, ?)",
                           idcompra, factura, idp, ultimo, total,
                           cancelada ? Moneda() : total - entrega, cancelada);
        d.finanzas.Execute("insert into CtaCtePagosP (idcompra, pago, fec, idu)"
                           " values (?, ?, ?, 1)",
                           idcompra, entrega, fec);
        if (cancelada)
            d.finanzas.Execute("insert into CtaCtePagosP (idcompra, pago, fec, idu)"
                               " values (?, ?, ?, 1)",
                               idcompra, total - entrega, ultimo);
    }
}

void Gastos(Demo &d)
{
    Azar &azar = d.azar;
    const QStringList &conceptos = d.palabras[u"gastos"_s];
    for (int atras = Dias; atras >= 0; atras -= 4) {
        const int idgasto = d.Siguiente(u"contadorGasto"_s);
        const QString &concepto = conceptos[idgasto % conceptos.size()];
        d.finanzas.Execute("insert into Gastos (idgasto, hor, fac, con, tot, fec, idu, tip)"
                           " values (?, ?, ?, ?, ?, ?, 1, ?)",
                           idgasto, QTime(azar.Entre(9, 18), azar.Entre(0, 59)),
                           QString::number(4000 + idgasto), concepto,
                           d.Articulo(75).precio * azar.Entre(2, 12), d.hoy.addDays(-atras),
                           azar.Sale(5) ? 3 : 1);
    }
    for (int i = 0; i < 12; ++i)
        d.finanzas.Execute("insert into UsoInterno (ida, can, fec) values (?, ?, ?)",
                           azar.Entre(62, 67), azar.Entre(1, 10), d.hoy.addDays(-i * 6));
}

} // namespace

void InventarComercio(Demo &d)
{
    PonerPrecios(d);
    Compras(d);
    Ventas(d);
    Gastos(d);
}
