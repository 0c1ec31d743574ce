#include "startup/demo_clinic.h"

#include "startup/checks.h"
#include "startup/daily_automation.h"
#include "texts/texts.h"

#include <QRegularExpression>
#include <filesystem>
#include <fstream>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

struct Demo : Clinic {
    using Clinic::s;
    explicit Demo(store::Language language = store::Language::Spanish) : Clinic(language)
    {
        ask.alwaysNo << s(text::PrintDayQuestion);
    }
    void TestBody() override {} // for clinics made inside a test

    /// The board after the next start.
    std::string boardOf()
    {
        TareasDeInicio(s);
        return allRows(*s.morvane, "select dibujo, codigo1, codigo2, mensaje from pizarra")
            .toStdString();
    }

    QString all()
    {
        const QString open = dump(*s.morvane) + dump(*s.clientes) + dump(*s.finanzas);
        return open + dump(*s.os);
    }
};

} // namespace

// The expected boards have lines for food with and without service; doses missed for the first
// time, again and with service; doses of today; reminders; birthdays; debtors; inpatients;
// reservations; guests; agenda, automatic tasks, yesterday; stock, batches; new clients.
TEST(DemoBoard, ShowsEveryKindOfLineInEveryLanguageOnAnyDay)
{
    // An ordinary day, a Sunday, and 29 February.
    for (const store::Language language :
         {store::Language::Spanish, store::Language::Portuguese, store::Language::English})
        for (const QDate dia : {QDate(2026, 3, 11), QDate(2026, 8, 9), QDate(2028, 2, 29)}) {
            const std::string code = store::languageCode(language).toStdString();
            SCOPED_TRACE(code + " " + dia.toString(Qt::ISODate).toStdString());
            std::ifstream board(std::filesystem::path(__FILE__).parent_path()
                                / ("board_" + code + ".txt"));
            Demo c(language);
            c.s.reloj.hoy = dia;
            createDemo(c.s);
            EXPECT_EQ(c.boardOf(), std::string(std::istreambuf_iterator(board), {}));
            // Featured clients get their own greeting; there is one guest, so there are rounds.
            EXPECT_EQ(allRows(*c.s.morvane,
                              "select tip, count(*) from TareasAgenda where fcreacion ="
                              " date() and tip in (-46, -47, -51) group by tip"
                              " order by tip"),
                      u"-51|2\n-47|2\n-46|2\n");
        }
}

TEST_F(Demo, IsTheSameForTheSameDay)
{
    createDemo(s);
    Demo other;
    createDemo(other.s);
    EXPECT_EQ(other.all(), all());
}

TEST_F(Demo, StartsWithoutAskingWhoWorksHere)
{
    createDemo(s);
    EXPECT_EQ(
        allRows(*s.morvane, "select count(*), max(ut) from Usuarios where up is null or up = ''"),
        u"1|2\n");
    EXPECT_FALSE(s.configuracion["PrimeraVez"].toBool());
    EXPECT_EQ(s.configuracion["FechaUltimoInicio"].toDate(), hoy.addDays(-3));
    EXPECT_FALSE(s.clinic.nom.isEmpty());
}

TEST_F(Demo, HangsTogether)
{
    createDemo(s);
    Base *const morvane = s.morvane.get(), *const clientes = s.clientes.get(),
                *const finanzas = s.finanzas.get();
    // Every row refers to an existing client, patient, product or list row, and linked list rows
    // match.
    const struct {
        Base *base;
        std::string table, column, other, key, neither = "false"; // a further mismatch
    } links[] = {
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
    for (const auto &e : links)
        EXPECT_EQ(allRows(*e.base, "select " + e.table + "." + e.column + " from " + e.table
                                       + " left join " + e.other + " on " + e.table + "." + e.column
                                       + " = " + e.other + "." + e.key + " where " + e.other + "."
                                       + e.key + " is null or " + e.neither),
                  QString())
            << e.table << '.' << e.column;
    EXPECT_EQ(allRows(*finanzas, "select idventa from Ventas where tip in (2, 4) and idventa not in"
                                 " (select idVenta from CtaCteC)"),
              QString());

    // Every counter is at the highest number in use.
    const std::tuple<const char *, Base *, const char *> counters[] = {
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
    for (const auto &[counter, base, maximum] : counters)
        EXPECT_EQ(s.configuracion[counter].toInt(),
                  base->read(std::string("select max(") + maximum).toInt())
            << counter;

    for (Base *base : {morvane, clientes, finanzas})
        EXPECT_EQ(overlongTexts(*base), QString());
}

TEST_F(Demo, AddsUp)
{
    createDemo(s);
    for (Recordset r = s.finanzas->OpenSnapshot("select * from CtaCteC"); !r.EOF_(); r.MoveNext()) {
        const Moneda paid =
            s.finanzas->read("select sum(pago) from CtaCtePagosC where idVenta = ?", r["idVenta"])
                .toMoneda();
        EXPECT_EQ(paid + r["saldo"].toMoneda(), r["total"].toMoneda());
        EXPECT_EQ(r["Cancelado"].toBool(), r["saldo"].toMoneda() == Moneda());
        EXPECT_EQ(
            s.finanzas->read("select tip from Ventas where idventa = ?", r["idVenta"]).toInt(),
            r["Cancelado"].toBool() ? 4 : 2);
    }
    EXPECT_EQ(allRows(*s.finanzas,
                      "select men from CtaCteC where Cancelado = 0 group by men order by men"),
              u"0\n1\n2\n3\n4\n");
    EXPECT_EQ(allRows(*s.clientes, "select idc from Clientes where deuda = -1 order by idc"),
              allRows(*s.finanzas, "select idc from CtaCteC where Cancelado = 0 order by idc"));
    for (Recordset r =
             s.finanzas->OpenSnapshot("select * from Ventas where tip <> 3 and tfac <> '4'");
         !r.EOF_(); r.MoveNext()) {
        const Moneda sum =
            s.finanzas->read("select sum(sub) from VentasDetalle where idventa = ?", r["idventa"])
                .toMoneda();
        const double total = sum.toDouble() * (100 - r["recargo"].toDouble()) / 100;
        EXPECT_NEAR(r["tot"].toDouble(), total, 0.0001);
    }
}

TEST_F(Demo, HasMembersInEveryStateAsTheirPaymentsSay)
{
    createDemo(s);
    Base &os = *s.os;
    QList<int> states;
    for (Recordset r = s.clientes->OpenSnapshot("select idc, obra from Clientes where obra > 0");
         !r.EOF_(); r.MoveNext()) {
        const store::Value idc = r["idc"];
        const int obra = r["obra"].toInt();
        states.append(obra);
        const QDate last = os.read("select max(fec) from Pagos where idc = ?", idc).toDate();
        const int months = (hoy.year() - last.year()) * 12 + hoy.month() - last.month();
        const bool expired =
            os.read("select fechavsol from Socios where idc = ?", idc).toDate() < hoy;
        EXPECT_EQ(expired, obra == 4);
        if (obra != 3 && obra != 4) {
            EXPECT_EQ(obra, months < 1 ? 1 : months == 1 ? 5 : 2);
        }
    }
    for (const int obra : {1, 2, 3, 4, 5})
        EXPECT_TRUE(states.contains(obra)) << obra;
    EXPECT_EQ(overlongTexts(os), QString());
}

TEST_F(Demo, WritesToNobodyWhoExists)
{
    createDemo(s);
    static const QRegularExpression fake(u"^[a-z.]+@example\\.(com|net|org)$"_s);
    for (Recordset r = s.clientes->OpenSnapshot("select email from Clientes where email <> ''");
         !r.EOF_(); r.MoveNext())
        EXPECT_TRUE(fake.match(r["email"].toText()).hasMatch())
            << r["email"].toText().toStdString();
    EXPECT_EQ(allRows(*s.clientes, "select idc from Clientes where (tel2 <> '' and tel2 not like"
                                   " '555-01##') or (telc2 <> '' and telc2 not like '555-01##')"),
              QString());
}
