#include "agenda/day_sheet.h"
#include "agenda/tasks.h"
#include "printing/pdf.h"
#include "support/clinic.h"

using namespace Qt::StringLiterals;

namespace
{

class HojaDeAgenda : public Clinica
{
protected:
    void SetUp() override
    {
        s.clientes->Execute("insert into clientes (idc, ayn) values (1, 'Client')");
        s.clientes->Execute(
            "insert into mascotas (idm, idc, nom) values (1, 1, 'Maximilian the Great')");
        s.clientes->Execute("insert into mascotas (idm, idc, nom) values (2, 1, 'Toby')");
        s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (?, 2, 'Check')",
                            consulta);
    }

    void Tarea_(int tip, int ida, QTime hora, const QString &des = {})
    {
        Tarea t;
        t.tip = tip;
        t.ida = ida;
        t.dia = hoy;
        t.hor = hora;
        t.fcreacion = hoy;
        t.des = des;
        AgregarTarea(s, t);
    }

    const int consulta = 75;
};

} // namespace

TEST_F(HojaDeAgenda, SlotsHoldOneTaskOrTellThatThereAreSeveral)
{
    Tarea_(consulta, 1, {6, 0});
    Tarea_(consulta, 2, {9, 29});
    Tarea_(consulta, 1, {9, 15});
    Tarea_(TipoTarea::TareaDeUsuario, 2, {22, 5}, u"Close the till"_s); // 2 is a user here
    Tarea_(consulta, 2, {5, 59});                                       // before the sheet begins
    const auto casillas = CasillasDelDia(s, true, hoy, {});
    ASSERT_EQ(casillas.size(), 65u);
    EXPECT_EQ(casillas.front().hora, QTime(6, 0));
    EXPECT_EQ(casillas.front().texto, u"Maximilian t"_s);
    EXPECT_EQ(casillas.back().hora, QTime(22, 0));
    EXPECT_EQ(casillas.back().texto, u"Close the ti"_s);
    EXPECT_EQ(casillas[13].texto, s(1107));
    ASSERT_EQ(casillas[13].detalle.size(), 2u);
    EXPECT_EQ(casillas[13].detalle.front().first, QTime(9, 15)) << "by the hour";
    EXPECT_EQ(casillas[14].texto, QString());

    EXPECT_EQ(casillas.front().icono, u"AgendaCon"_s);
    EXPECT_EQ(casillas[13].icono, QString()) << "several have none";
    EXPECT_EQ(casillas.back().icono, QString()) << "the sheet knows no picture of a user's task";

    // An update begins at the quarter that its hour lies in.
    const auto resto = CasillasDelDia(s, false, hoy, {9, 44});
    EXPECT_EQ(resto.front().hora, QTime(9, 30));
    EXPECT_EQ(resto.back().hora, QTime(22, 0));
    EXPECT_EQ(CasillasDelDia(s, false, hoy, {22, 40}).size(), 0u);
}

TEST_F(HojaDeAgenda, PrintsOnA4AndLetter)
{
    Tarea_(consulta, 1, {9, 15});
    Tarea_(consulta, 2, {9, 20});
    for (const auto hoja : {QPageSize::A4, QPageSize::Letter}) {
        const auto documento = HojaDelDia(s, true, hoy, {});
        const QString texto = TextoEnPapel(*documento, QPageSize(hoja));
        EXPECT_TRUE(texto.startsWith(u"Day's agenda\nWednesday, 11 March 2026"_s))
            << texto.left(100).toStdString();
        for (const QString &parte :
             {u"06:00"_s, u"22:00"_s, s(1107), u"09:15 Maximilian the Great"_s, u"09:20 Toby"_s})
            EXPECT_TRUE(texto.contains(parte)) << parte.toStdString();
    }
    // A day with more in its slots than one sheet holds goes on to a second one.
    Lote lote(s);
    for (int i = 0; i < 200; ++i)
        Tarea_(consulta, 2, QTime(10, 0).addSecs(i % 4 * 60));
    lote.Confirmar();
    const QStringList largo = PaginasEnPapel(*HojaDelDia(s, true, hoy, {}));
    EXPECT_EQ(largo.size(), 2);
    EXPECT_EQ(largo.join(QString()).count(u"Toby"_s), 201);
    EXPECT_TRUE(largo[1].startsWith(u"Day's agenda Wednesday, 11 March 2026\n"_s));
}

TEST_F(HojaDeAgenda, AnUpdateTellsItsHourAndAFailureIsTold)
{
    Tarea_(consulta, 2, {9, 50});
    const QString texto = TextoEnPapel(*HojaDelDia(s, false, hoy, {9, 44}));
    EXPECT_TRUE(texto.contains(HoraLarga({9, 0}))) << "the present time";
    EXPECT_FALSE(texto.contains(u"09:15"_s));
    EXPECT_TRUE(texto.contains(u"Toby"_s));
    ImprimirAgendaDia(s, false, hoy, {9, 44});
    EXPECT_EQ(impresion.impresos.size(), 1);

    s.morvane->Execute("drop table TareasAgenda");
    ask.Espera(u"TareasAgenda"_s);
    ImprimirAgendaDia(s, true, hoy, {});
    EXPECT_EQ(impresion.impresos.size(), 1);
}
