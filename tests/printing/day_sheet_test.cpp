#include "agenda/day_sheet.h"
#include "agenda/tasks.h"
#include "printing/pdf.h"
#include "support/clinic.h"
#include "texts/texts.h"

using namespace Qt::StringLiterals;

namespace
{

class AgendaSheet : public Clinic
{
protected:
    void SetUp() override
    {
        s.clientes->Execute("insert into clientes (idc, ayn) values (1, 'Client')");
        s.clientes->Execute(
            "insert into mascotas (idm, idc, nom) values (1, 1, 'Maximilian the Great')");
        s.clientes->Execute("insert into mascotas (idm, idc, nom) values (2, 1, 'Toby')");
        s.finanzas->Execute("insert into articulos (ida, idcat, nom) values (?, 2, 'Check')",
                            query);
    }

    void task(int tip, int ida, QTime hour, const QString &des = {})
    {
        agenda::Task t;
        t.tip = tip;
        t.ida = ida;
        t.dia = hoy;
        t.hor = hour;
        t.fcreacion = hoy;
        t.des = des;
        AgregarTarea(s, t);
    }

    const int query = 75;
};

} // namespace

TEST_F(AgendaSheet, SlotsHoldOneTaskOrTellThatThereAreSeveral)
{
    task(query, 1, {6, 0});
    task(query, 2, {9, 29});
    task(query, 1, {9, 15});
    task(agenda::TaskKind::UserTask, 2, {22, 5}, u"Close the till"_s); // user 2, not patient 2
    task(query, 2, {5, 59});                                           // before the sheet begins
    const auto slots = agenda::daySlots(s, true, hoy, {});
    ASSERT_EQ(slots.size(), 65u);
    EXPECT_EQ(slots.front().hour, QTime(6, 0));
    EXPECT_EQ(slots.front().text, u"Maximilian t"_s);
    EXPECT_EQ(slots.back().hour, QTime(22, 0));
    EXPECT_EQ(slots.back().text, u"Close the ti"_s);
    EXPECT_EQ(slots[13].text, s(text::SeveralTasks));
    ASSERT_EQ(slots[13].detail.size(), 2u);
    EXPECT_EQ(slots[13].detail.front().first, QTime(9, 15)) << "by the hour";
    EXPECT_EQ(slots[14].text, QString());

    EXPECT_EQ(slots.front().icon, u"AgendaCon"_s);
    EXPECT_EQ(slots[13].icon, QString()) << "several have none";
    EXPECT_EQ(slots.back().icon, QString()) << "the sheet knows no picture of a user's task";

    // An update begins at the quarter of an hour that contains its time.
    const auto rest = agenda::daySlots(s, false, hoy, {9, 44});
    EXPECT_EQ(rest.front().hour, QTime(9, 30));
    EXPECT_EQ(rest.back().hour, QTime(22, 0));
    EXPECT_EQ(agenda::daySlots(s, false, hoy, {22, 40}).size(), 0u);
}

TEST_F(AgendaSheet, PrintsOnA4AndLetter)
{
    task(query, 1, {9, 15});
    task(query, 2, {9, 20});
    for (const auto sheet : {QPageSize::A4, QPageSize::Letter}) {
        const auto document = agenda::daySheet(s, true, hoy, {});
        const QString text = textInPaper(*document, QPageSize(sheet));
        EXPECT_TRUE(text.startsWith(u"Day's agenda\nWednesday, 11 March 2026"_s))
            << text.left(100).toStdString();
        for (const QString &part : {u"06:00"_s, u"22:00"_s, s(text::SeveralTasks),
                                    u"09:15 Maximilian the Great"_s, u"09:20 Toby"_s})
            EXPECT_TRUE(text.contains(part)) << part.toStdString();
    }
    // A day with more detail than fits one page continues on a second one.
    Lote lote(s);
    for (int i = 0; i < 200; ++i)
        task(query, 2, QTime(10, 0).addSecs(i % 4 * 60));
    lote.commit();
    const QStringList length = pagesInPaper(*agenda::daySheet(s, true, hoy, {}));
    EXPECT_EQ(length.size(), 2);
    EXPECT_EQ(length.join(QString()).count(u"Toby"_s), 201);
    EXPECT_TRUE(length[1].startsWith(u"Day's agenda Wednesday, 11 March 2026\n"_s));
}

TEST_F(AgendaSheet, AnUpdateTellsItsHourAndAFailureIsTold)
{
    task(query, 2, {9, 50});
    const QString text = textInPaper(*agenda::daySheet(s, false, hoy, {9, 44}));
    EXPECT_TRUE(text.contains(agenda::longHour({9, 0}))) << "the present time";
    EXPECT_FALSE(text.contains(u"09:15"_s));
    EXPECT_TRUE(text.contains(u"Toby"_s));
    ImprimirAgendaDia(s, false, hoy, {9, 44});
    EXPECT_EQ(impresion.printed.size(), 1);

    s.morvane->Execute("drop table TareasAgenda");
    ask.wait(u"TareasAgenda"_s);
    ImprimirAgendaDia(s, true, hoy, {});
    EXPECT_EQ(impresion.printed.size(), 1);
}
