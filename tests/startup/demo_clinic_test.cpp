#include "startup/demo_clinic.h"

#include "board/board_lines.h"
#include "startup/checks.h"
#include "startup/daily_automation.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{

struct Demo : Clinica {
    using Clinica::s;
    explicit Demo(Idioma idioma = Idioma::Espanol) : Clinica(idioma) {}
    void TestBody() override {} // for clinics made inside a test

    /// The board after the next start, as pictures and click codes.
    QString Tablero()
    {
        TareasDeInicio(s);
        QString t;
        for (const LineaDePizarra &l : LeerPizarra(s))
            t += u"%1 %2 %3\n"_s.arg(l.dibujo).arg(l.codigo1).arg(l.codigo2);
        return t;
    }

    QString Todo()
    {
        const QString abiertas = Volcado(*s.morvane) + Volcado(*s.clientes) + Volcado(*s.finanzas);
        return abiertas + Volcado(AbrirAuxiliar(s, u"os"_s));
    }
};

/// Food with and without service; doses missed for the first time, again and with service; doses
/// of today; reminders; birthdays; debtors; inpatients; reservations; guests; agenda, automatic
/// tasks, yesterday; stock, batches; new clients.
const QString LineasDelDia = u"107 2 8\n109 1 5\n103 6 18\n103 14 18\n103 7 19\n104 4 21\n102 3 5\n"
                             "109 13 5\n109 12 5\n110 15 5\n0 0 0\n108 0 0\n108 9 0\n115 8 0\n"
                             "106 10 0\n115 32 0\n113 17 0\n113 31 0\n109 10 5\n"_s;

} // namespace

TEST(DemoTablero, ShowsEveryKindOfLineInEveryLanguageOnAnyDay)
{
    // A plain day, a Sunday, the day that most years lack.
    for (const Idioma idioma : {Idioma::Espanol, Idioma::Portugues, Idioma::Ingles})
        for (const QDate dia : {QDate(2026, 3, 11), QDate(2026, 8, 9), QDate(2028, 2, 29)}) {
            SCOPED_TRACE(CodigoDeIdioma(idioma).toStdString() + " "
                         + dia.toString(Qt::ISODate).toStdString());
            Demo c(idioma);
            c.s.reloj.hoy = dia;
            CrearDemo(c.s);
            EXPECT_EQ(c.Tablero(), LineasDelDia);
            // Featured clients are greeted apart; one guest, so the feeding rounds are made.
            EXPECT_EQ(Filas(*c.s.morvane, "select tip, count(*) from TareasAgenda where fcreacion ="
                                          " date() and tip in (-46, -47, -51) group by tip"
                                          " order by tip"),
                      u"-51|2\n-47|2\n-46|2\n");
        }
}

TEST_F(Demo, IsTheSameForTheSameDay)
{
    CrearDemo(s);
    Demo otra;
    CrearDemo(otra.s);
    EXPECT_EQ(otra.Todo(), Todo());
}

TEST_F(Demo, StartsWithoutAskingWhoWorksHere)
{
    CrearDemo(s);
    EXPECT_EQ(
        Filas(*s.morvane, "select count(*), max(ut) from Usuarios where up is null or up = ''"),
        u"1|2\n");
    EXPECT_FALSE(s.configuracion["PrimeraVez"].toBool());
    EXPECT_EQ(s.configuracion["FechaUltimoInicio"].toDate(), hoy.addDays(-3));
    EXPECT_FALSE(s.clinica.nom.isEmpty());
}

TEST_F(Demo, HangsTogether)
{
    CrearDemo(s);
    // Rows whose client, patient, product or list row does not exist: none.
    const std::pair<Base *, const char *> huerfanos[] = {
        {s.clientes.get(), "select idm from Mascotas left join Clientes on Mascotas.idc ="
                           " Clientes.idc where Clientes.idc is null"},
        {s.clientes.get(), "select idm from Mascotas left join MLRazas on Mascotas.raz ="
                           " MLRazas.id where MLRazas.id is null or MLRazas.esp <> Mascotas.esp"},
        {s.clientes.get(), "select idm from Mascotas left join MLPelajes on Mascotas.pel ="
                           " MLPelajes.id where MLPelajes.id is null"},
        {s.clientes.get(), "select idc from Clientes left join CLLocalidad on Clientes.loc ="
                           " CLLocalidad.id where CLLocalidad.id is null or CLLocalidad.dep <>"
                           " Clientes.dep"},
        {s.clientes.get(), "select ArtPlan.idm from ArtPlan left join Mascotas on ArtPlan.idm ="
                           " Mascotas.idm where Mascotas.idm is null"},
        {s.clientes.get(), "select Consumo.idm from Consumo left join Mascotas on Consumo.idm ="
                           " Mascotas.idm where Mascotas.idm is null or Mascotas.dec <> 0"},
        {s.clientes.get(),
         "select ArtPlan.idm from ArtPlan inner join Mascotas on ArtPlan.idm ="
         " Mascotas.idm where ArtPlan.col < Mascotas.fecn or ArtPlan.col > date()"},
        {s.clientes.get(),
         "select MHospedaje.idm from MHospedaje left join Mascotas on"
         " MHospedaje.idm = Mascotas.idm where Mascotas.idm is null or Mascotas.hos <> 1"},
        {s.finanzas.get(), "select VentasDetalle.idventa from VentasDetalle left join Articulos on"
                           " VentasDetalle.ida = Articulos.ida where Articulos.ida is null"},
        {s.finanzas.get(), "select Compras.idcompra from Compras left join Proveedores on"
                           " Compras.idp = Proveedores.idp where Proveedores.idp is null"},
        {s.finanzas.get(), "select CtaCteC.idVenta from CtaCteC left join Ventas on CtaCteC.idVenta"
                           " = Ventas.idventa where Ventas.idc <> CtaCteC.idc or Ventas.tot <>"
                           " CtaCteC.total or Ventas.idventa is null"},
        {s.finanzas.get(), "select idventa from Ventas where tip in (2, 4) and idventa not in"
                           " (select idVenta from CtaCteC)"},
    };
    for (const auto &[base, sql] : huerfanos)
        EXPECT_EQ(Filas(*base, sql), QString()) << sql;

    // Counters stand at the highest number given out.
    const std::tuple<const char *, Base *, const char *> contadores[] = {
        {"contadorclientes", s.clientes.get(), "select max(idc) from Clientes"},
        {"contadormascotas", s.clientes.get(), "select max(idm) from Mascotas"},
        {"contadorclinica", s.clientes.get(), "select max(idclinica) from MClinica"},
        {"contadoreco", s.clientes.get(), "select max(ideco) from MEco"},
        {"contadorrayosx", s.clientes.get(), "select max(idray) from MRayos"},
        {"contadorespecie", s.clientes.get(), "select max(id) from MLEspecies"},
        {"contadorraza", s.clientes.get(), "select max(id) from MLRazas"},
        {"contadorloc", s.clientes.get(), "select max(id) from CLLocalidad"},
        {"contadordep", s.clientes.get(), "select max(id) from CLDepartamento"},
        {"contadorarticulo", s.finanzas.get(), "select max(ida) from Articulos"},
        {"contadorprovee", s.finanzas.get(), "select max(idp) from Proveedores"},
        {"contadorcompra", s.finanzas.get(), "select max(idcompra) from Compras"},
        {"contadorGasto", s.finanzas.get(), "select max(idgasto) from Gastos"},
        {"idventa", s.finanzas.get(), "select max(idventa) from Ventas"},
        {"contadorFacB", s.finanzas.get(), "select max(idv) from Ventas where tfac = '2'"},
        {"contadorR", s.finanzas.get(), "select max(idv) from Ventas where tfac = '4'"},
        {"contadorTareas", s.morvane.get(), "select max(id) from TareasAgenda"},
    };
    for (const auto &[contador, base, sql] : contadores)
        EXPECT_EQ(s.configuracion[contador].toInt(), base->Leer(sql).toInt()) << contador;

    for (Base *base : {s.morvane.get(), s.clientes.get(), s.finanzas.get()})
        EXPECT_EQ(TextosDemasiadoLargos(*base), QString());
}

TEST_F(Demo, AddsUp)
{
    CrearDemo(s);
    for (Recordset r = s.finanzas->OpenSnapshot("select * from CtaCteC"); !r.EOF_(); r.MoveNext()) {
        Moneda pagado;
        for (Recordset p = s.finanzas->OpenSnapshot(
                 "select pago from CtaCtePagosC where idVenta = ?", r["idVenta"]);
             !p.EOF_(); p.MoveNext())
            pagado = pagado + p["pago"].toMoneda();
        EXPECT_EQ(pagado + r["saldo"].toMoneda(), r["total"].toMoneda());
        EXPECT_EQ(r["Cancelado"].toBool(), r["saldo"].toMoneda() == Moneda());
        EXPECT_EQ(
            s.finanzas->Leer("select tip from Ventas where idventa = ?", r["idVenta"]).toInt(),
            r["Cancelado"].toBool() ? 4 : 2);
    }
    EXPECT_EQ(Filas(*s.finanzas, "select men from CtaCteC where Cancelado = 0 group by men"),
              u"0\n1\n2\n3\n4\n");
    EXPECT_EQ(Filas(*s.clientes, "select idc from Clientes where deuda = -1 order by idc"),
              Filas(*s.finanzas, "select idc from CtaCteC where Cancelado = 0 order by idc"));
    for (Recordset r =
             s.finanzas->OpenSnapshot("select * from Ventas where tip <> 3 and tfac <> '4'");
         !r.EOF_(); r.MoveNext()) {
        Moneda suma;
        for (Recordset l = s.finanzas->OpenSnapshot("select * from VentasDetalle where idventa = ?",
                                                    r["idventa"]);
             !l.EOF_(); l.MoveNext())
            suma = suma + l["sub"].toMoneda();
        const double total = suma.ADoble() * (100 - r["recargo"].toDouble()) / 100;
        EXPECT_NEAR(r["tot"].toDouble(), total, 0.0001);
    }
}

TEST_F(Demo, HasMembersInEveryStateAsTheirPaymentsSay)
{
    CrearDemo(s);
    Base &os = AbrirAuxiliar(s, u"os"_s);
    QList<int> estados;
    for (Recordset r = s.clientes->OpenSnapshot("select idc, obra from Clientes where obra > 0");
         !r.EOF_(); r.MoveNext()) {
        const Valor idc = r["idc"];
        const int obra = r["obra"].toInt();
        estados.append(obra);
        const QDate ultimo = os.Leer("select max(fec) from Pagos where idc = ?", idc).toDate();
        const int meses = (hoy.year() - ultimo.year()) * 12 + hoy.month() - ultimo.month();
        const bool vencida =
            os.Leer("select fechavsol from Socios where idc = ?", idc).toDate() < hoy;
        EXPECT_EQ(vencida, obra == 4);
        if (obra != 3 && obra != 4) {
            EXPECT_EQ(obra, meses < 1 ? 1 : meses == 1 ? 5 : 2);
        }
    }
    for (const int obra : {1, 2, 3, 4, 5})
        EXPECT_TRUE(estados.contains(obra)) << obra;
    EXPECT_EQ(TextosDemasiadoLargos(os), QString());
}

TEST_F(Demo, WritesToNobodyWhoExists)
{
    CrearDemo(s);
    static const QRegularExpression ficticio(u"^[a-z.]+@example\\.(com|net|org)$"_s);
    for (Recordset r = s.clientes->OpenSnapshot("select email from Clientes where email <> ''");
         !r.EOF_(); r.MoveNext())
        EXPECT_TRUE(ficticio.match(r["email"].toText()).hasMatch())
            << r["email"].toText().toStdString();
    EXPECT_EQ(Filas(*s.clientes, "select idc from Clientes where (tel2 <> '' and tel2 not like"
                                 " '555-01##') or (telc2 <> '' and telc2 not like '555-01##')"),
              QString());
}
