#include "startup/demo_clinic.h"

#include "startup/checks.h"
#include "startup/daily_automation.h"

#include <QRegularExpression>
#include <filesystem>
#include <fstream>

using namespace Qt::StringLiterals;

namespace
{

struct Demo : Clinica {
    using Clinica::s;
    explicit Demo(Idioma idioma = Idioma::Espanol) : Clinica(idioma) { ask.siempreNo << s(3447); }
    void TestBody() override {} // for clinics made inside a test

    /// The board after the next start.
    std::string Tablero()
    {
        TareasDeInicio(s);
        return Filas(*s.morvane, "select dibujo, codigo1, codigo2, mensaje from pizarra")
            .toStdString();
    }

    QString Todo()
    {
        const QString abiertas = Volcado(*s.morvane) + Volcado(*s.clientes) + Volcado(*s.finanzas);
        return abiertas + Volcado(AbrirAuxiliar(s, u"os"_s));
    }
};

} // namespace

// The boards hold food with and without service; doses missed for the first time, again and with
// service; doses of today; reminders; birthdays; debtors; inpatients; reservations; guests; agenda,
// automatic tasks, yesterday; stock, batches; new clients.
TEST(DemoTablero, ShowsEveryKindOfLineInEveryLanguageOnAnyDay)
{
    // A plain day, a Sunday, the day that most years lack.
    for (const Idioma idioma : {Idioma::Espanol, Idioma::Portugues, Idioma::Ingles})
        for (const QDate dia : {QDate(2026, 3, 11), QDate(2026, 8, 9), QDate(2028, 2, 29)}) {
            const std::string codigo = CodigoDeIdioma(idioma).toStdString();
            SCOPED_TRACE(codigo + " " + dia.toString(Qt::ISODate).toStdString());
            std::ifstream tablero(std::filesystem::path(__FILE__).parent_path()
                                  / ("board_" + codigo + ".txt"));
            Demo c(idioma);
            c.s.reloj.hoy = dia;
            CrearDemo(c.s);
            EXPECT_EQ(c.Tablero(), std::string(std::istreambuf_iterator(tablero), {}));
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
    Base *const morvane = s.morvane.get(), *const clientes = s.clientes.get(),
                *const finanzas = s.finanzas.get();
    // Every row has its client, patient, product or list row; those of a list fit together.
    const struct {
        Base *base;
        std::string tabla, columna, otra, clave, tampoco = "false"; // what else does not fit
    } enlaces[] = {
        {clientes, "Mascotas", "idc", "Clientes", "idc"},
        {clientes, "Mascotas", "raz", "MLRazas", "id", "MLRazas.esp <> Mascotas.esp"},
        {clientes, "Mascotas", "pel", "MLPelajes", "id"},
        {clientes, "Clientes", "loc", "CLLocalidad", "id", "CLLocalidad.dep <> Clientes.dep"},
        {clientes, "ArtPlan", "idm", "Mascotas", "idm", "col < fecn or col > date()"},
        {clientes, "Consumo", "idm", "Mascotas", "idm", "Mascotas.dec <> 0"},
        {clientes, "MHospedaje", "idm", "Mascotas", "idm", "Mascotas.hos <> 1"},
        {finanzas, "VentasDetalle", "ida", "Articulos", "ida"},
        {finanzas, "Compras", "idp", "Proveedores", "idp"},
        {finanzas, "CtaCteC", "idVenta", "Ventas", "idventa",
         "Ventas.idc <> CtaCteC.idc or Ventas.tot <> CtaCteC.total"},
    };
    for (const auto &e : enlaces)
        EXPECT_EQ(Filas(*e.base, "select " + e.tabla + "." + e.columna + " from " + e.tabla
                                     + " left join " + e.otra + " on " + e.tabla + "." + e.columna
                                     + " = " + e.otra + "." + e.clave + " where " + e.otra + "."
                                     + e.clave + " is null or " + e.tampoco),
                  QString())
            << e.tabla << '.' << e.columna;
    EXPECT_EQ(Filas(*finanzas, "select idventa from Ventas where tip in (2, 4) and idventa not in"
                               " (select idVenta from CtaCteC)"),
              QString());

    // Counters stand at the highest number given out.
    const std::tuple<const char *, Base *, const char *> contadores[] = {
        {"contadorclientes", clientes, "idc) from Clientes"},
        {"contadormascotas", clientes, "idm) from Mascotas"},
        {"contadorclinica", clientes, "idclinica) from MClinica"},
        {"contadoreco", clientes, "ideco) from MEco"},
        {"contadorrayosx", clientes, "idray) from MRayos"},
        {"contadorespecie", clientes, "id) from MLEspecies"},
        {"contadorraza", clientes, "id) from MLRazas"},
        {"contadorloc", clientes, "id) from CLLocalidad"},
        {"contadordep", clientes, "id) from CLDepartamento"},
        {"contadorarticulo", finanzas, "ida) from Articulos"},
        {"contadorprovee", finanzas, "idp) from Proveedores"},
        {"contadorcompra", finanzas, "idcompra) from Compras"},
        {"contadorGasto", finanzas, "idgasto) from Gastos"},
        {"idventa", finanzas, "idventa) from Ventas"},
        {"contadorFacB", finanzas, "idv) from Ventas where tfac = '2'"},
        {"contadorR", finanzas, "idv) from Ventas where tfac = '4'"},
        {"contadorTareas", morvane, "id) from TareasAgenda"}};
    for (const auto &[contador, base, maximo] : contadores)
        EXPECT_EQ(s.configuracion[contador].toInt(),
                  base->Leer(std::string("select max(") + maximo).toInt())
            << contador;

    for (Base *base : {morvane, clientes, finanzas})
        EXPECT_EQ(TextosDemasiadoLargos(*base), QString());
}

TEST_F(Demo, AddsUp)
{
    CrearDemo(s);
    for (Recordset r = s.finanzas->OpenSnapshot("select * from CtaCteC"); !r.EOF_(); r.MoveNext()) {
        const Moneda pagado =
            s.finanzas->Leer("select sum(pago) from CtaCtePagosC where idVenta = ?", r["idVenta"])
                .toMoneda();
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
        const Moneda suma =
            s.finanzas->Leer("select sum(sub) from VentasDetalle where idventa = ?", r["idventa"])
                .toMoneda();
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
