#include "store/jet/text.h"
#include "support/clinic.h"
#include "ui/grid.h"
#include "ui/grid_export.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLocale>
#include <QMenu>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

enum Columna { Nombre, Id, Peso, Saldo, Nacido, Hora, Activo, Clave };

const QList<ColumnaDeGrilla> columns{
    {u"Name"_s, Clase::Texto},    {u"ID"_s, Clase::Codigo},
    {u"Weight"_s, Clase::Numero}, {u"Balance"_s, Clase::Importe},
    {u"Born"_s, Clase::Dia},      {u"Time"_s, Clase::Hora},
    {u"Active"_s, Clase::SiNo},   {u"Key"_s, Clase::Entero, 80, true}};

const QList<int> exported{Nombre, Id, Peso, Saldo, Nacido, Hora, Activo};

FilaDeGrilla row(const QString &name, int id)
{
    return {.celdas = {name, id, double(12.35F), Moneda::DeDiezmilesimos(1234'5000),
                       QDate(2020, 1, 31), QTime(9, 5), id % 2 == 1, id}};
}

/// A grid in a fixed locale over three patients, put in no order.
class Grid : public Clinica
{
protected:
    Grid()
    {
        QLocale::setDefault({QLocale::Spanish, QLocale::Uruguay});
        s.carpetaDePrograma = carpeta.path() + u'/';
        model.Poner({row(u"Milo"_s, 7), row(u"Ángel"_s, 42), row(u"andrea"_s, 5)});
    }
    ~Grid() override { QLocale::setDefault(QLocale::c()); }

    QString shown(int column) const
    {
        QStringList cells;
        for (int r = 0; r < model.Filas(); ++r)
            cells << model.TextoDeCelda(r, column);
        return cells.join(u'|');
    }
    std::string read(const QString &name) const
    {
        QFile f(carpeta.filePath(name));
        EXPECT_TRUE(f.open(QIODevice::ReadOnly));
        return f.readAll().toStdString();
    }

    ModeloDeGrilla model{s, columns};
};

} // namespace

TEST_F(Grid, CellsAreShownAsTheirColumnsMean)
{
    model.Poner({row(u"Milo"_s, 7), {.celdas = {u"Nobody"_s}}});
    QStringList cells;
    for (int c = 0; c < columns.size(); ++c)
        cells << model.TextoDeCelda(0, c) + u'/' + model.TextoDeCelda(1, c);
    EXPECT_EQ(cells.join(u' '),
              u"Milo/Nobody 00007/ 12,35/ 1.234,50/ 31/01/2020/ 09:05/ Yes/ 7/"_s);
    EXPECT_EQ(model.TextoDeCelda(2, 0), QString());
    EXPECT_EQ(model.TextoDeCelda(0, 99), QString());
}

TEST_F(Grid, SortsByWhatTheColumnHoldsEmptyCellsFirst)
{
    model.Poner({{.celdas = {u"b"_s, 10, Moneda::DeEntero(2), {}, QDate(2026, 2, 1)}},
                 {.celdas = {u"a"_s, 9, Moneda::DeEntero(-10), {}, QDate(2025, 12, 31)}},
                 {.celdas = {{}, {}, {}, {}, {}}},
                 {.celdas = {u"B"_s, 9, Moneda::DeEntero(10), {}, QDate(2025, 3, 1)}}});
    const QAbstractItemModelTester checked(&model);
    const QPersistentModelIndex ten = model.index(0, Id);
    const auto sorted = [this](int column, Qt::SortOrder order = Qt::AscendingOrder) {
        model.sort(column, order);
        return shown(Nombre);
    };
    EXPECT_EQ(sorted(Id), u"|a|B|b"_s);
    EXPECT_EQ(ten.row(), 3) << "what is selected stays with its row";
    EXPECT_EQ(sorted(Peso), u"|a|b|B"_s);
    EXPECT_EQ(sorted(Nacido), u"|B|a|b"_s);
    EXPECT_EQ(sorted(Nombre), u"|a|B|b"_s) << "equal names keep the order that they had";
    EXPECT_EQ(sorted(Nombre, Qt::DescendingOrder), u"B|b|a|"_s);
    model.Poner({row(u"z"_s, 1), row(u"y"_s, 2)});
    EXPECT_EQ(shown(Nombre), u"z|y"_s) << "new rows come sorted as well";
}

TEST_F(Grid, TextsAreInTheOrderOfTheStore)
{
    const QStringList names{u"Ñandú"_s, u"nube"_s, u"Nandu"_s, u"ñandu"_s,  u"Álvarez"_s,
                            u"alba"_s,  u"Zoë"_s,  u"zoe"_s,   u"Straße"_s, u"STRASSE"_s,
                            u"Łata"_s,  u"élan"_s, u"Elan"_s,  u"andrea"_s, u"10"_s,
                            u"9"_s,     u" b"_s,   u"犬"_s};
    std::vector<FilaDeGrilla> rows;
    for (const QString &name : names)
        rows.push_back(row(name, 1));
    model.Poner(std::move(rows));
    model.sort(Nombre, Qt::AscendingOrder);
    const auto name = [this](int r) { return model.TextoDeCelda(r, Nombre).toStdString(); };
    for (int r = 0; r + 1 < model.Filas(); ++r)
        EXPECT_LE(jet::Comparar(name(r), name(r + 1)), 0) << name(r);
}

TEST_F(Grid, FindsTheBeginningOfATextAndAnEqualNumber)
{
    const auto find = [this](const Valor &v, int column) {
        return model.BuscarEnGrilla(v, column, 0, model.Filas() - 1);
    };
    EXPECT_EQ(find(u"áNG"_s, Nombre), 1);
    EXPECT_EQ(find(u"ngel"_s, Nombre), -1) << "only the beginning counts";
    EXPECT_EQ(find(42, Id), 1);
    EXPECT_EQ(find(4, Id), -1);
    EXPECT_EQ(find(0, Nombre), -1) << "a text is no number";
    EXPECT_EQ(find(QDate(2020, 1, 31), Nacido), 0);
    EXPECT_EQ(model.BuscarEnGrilla(u"a"_s, Nombre, -5, 99), 2);
    EXPECT_EQ(model.BuscarEnGrilla(u"a"_s, Nombre, 0, 1), -1);

    model.sort(Nombre, Qt::AscendingOrder);
    EXPECT_EQ(shown(Nombre), u"andrea|Ángel|Milo"_s);
    EXPECT_EQ(find(u"mi"_s, Nombre), 2);
    model.Cambiar(2, row(u"Oso"_s, 7));
    EXPECT_EQ(find(u"mi"_s, Nombre), -1);
    EXPECT_EQ(find(u"oso"_s, Nombre), 2);
    model.Quitar(0);
    EXPECT_EQ(find(u"oso"_s, Nombre), 1);
    model.Insertar(row(u"Bobi"_s, 3), Nombre);
    EXPECT_EQ(find(u"oso"_s, Nombre), 2);
    model.Poner({});
    EXPECT_EQ(find(u"oso"_s, Nombre), -1);
    EXPECT_EQ(model.Fila(0).celdas.size(), 0);
}

TEST_F(Grid, ARowIsInsertedInItsPlace)
{
    const QAbstractItemModelTester checked(&model);
    model.Poner({row(u"alba"_s, 3), row(u"Milo"_s, 2), row(u"Zoe"_s, 1)});
    EXPECT_EQ(model.Insertar(row(u"Ángel"_s, 9), Nombre), 1);
    EXPECT_EQ(model.Insertar(row(u"zz"_s, 4), Nombre), 4);
    model.sort(Id, Qt::DescendingOrder);
    EXPECT_EQ(model.Insertar(row(u"last"_s, 3), Nombre), 3) << "behind its equals";
    EXPECT_EQ(shown(Id), u"00009|00004|00003|00003|00002|00001"_s);
}

TEST_F(Grid, AColourIsAlsoToldInWords)
{
    FilaDeGrilla debtor = row(u"Rex"_s, 1);
    debtor.realce = Realce::Alerta;
    debtor.celdaRealzada = Nombre;
    debtor.motivo = u"owes"_s;
    model.Poner({debtor});
    const auto of = [this](int column, int role) { return model.index(0, column).data(role); };
    EXPECT_EQ(of(Nombre, Qt::AccessibleTextRole), u"Rex, owes"_s);
    EXPECT_EQ(of(Nombre, Qt::ToolTipRole), u"owes"_s);
    EXPECT_EQ(of(Id, Qt::AccessibleTextRole), u"00001"_s);
    EXPECT_FALSE(of(Id, Qt::BackgroundRole).isValid());
}

TEST_F(Grid, TellsTheCurrentRowWheneverItChanges)
{
    Grilla grid(s, &model);
    QSignalSpy told(&grid, &Grilla::filaCambiada);
    const auto last = [&told] { return told.isEmpty() ? -99 : told.last().at(0).toInt(); };
    grid.Seleccionar(1);
    EXPECT_EQ(last(), 1);
    int atSignal = -99;
    QObject::connect(&grid, &Grilla::filaCambiada,
                     [&](int r) { atSignal = model.Fila(r).celdas.value(Id).toInt(); });
    model.Quitar(1);
    EXPECT_EQ(last(), 1) << "the row that came up";
    EXPECT_EQ(atSignal, 5) << "told when the old one is gone";
    model.Poner({row(u"x"_s, 1)});
    EXPECT_EQ(last(), -1);
    grid.Seleccionar(0);
    EXPECT_EQ(last(), 0);
    grid.Seleccionar(99);
    EXPECT_EQ(last(), -1);
}

TEST_F(Grid, KeysTakeARowAndCopySeveral)
{
    Grilla grid(s, &model);
    grid.PermitirVarias();
    grid.show();
    QSignalSpy taken(&grid, &Grilla::filaElegida);
    QTest::keyClick(&grid, Qt::Key_Return);
    EXPECT_EQ(taken.size(), 0) << "no row, nothing to take";
    grid.Seleccionar(1);
    QTest::keyClick(&grid, Qt::Key_Enter, Qt::KeypadModifier);
    ASSERT_EQ(taken.size(), 1);
    EXPECT_EQ(taken[0][0].toInt(), 1);

    QTest::keyClick(&grid, Qt::Key_End);
    EXPECT_EQ(grid.FilasSeleccionadas(), QList<int>{2});
    QTest::keyClick(&grid, Qt::Key_Up);
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(grid.FilasSeleccionadas(), (QList<int>{1, 2}));
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              u"Name\tID\tWeight\tBalance\tBorn\tTime\tActive\n"
              "Ángel\t00042\t12,35\t1.234,50\t31/01/2020\t09:05\tNo\n"
              "andrea\t00005\t12,35\t1.234,50\t31/01/2020\t09:05\tYes\n"_s);
}

TEST_F(Grid, TheCsvIsWhatASpreadsheetOfTheCountryReads)
{
    FilaDeGrilla odd = row(u"=HYPERLINK(\"x\");\nRex"_s, 7);
    odd.celdas[Peso] = -0.5;
    odd.celdas[Nacido] = {};
    model.Poner({odd, row(u"+598 99"_s, 8)});
    ExportarCsv(model, exported, carpeta.filePath(u"a.csv"_s));
    EXPECT_EQ(read(u"a.csv"_s), "\xEF\xBB\xBFName;ID;Weight;Balance;Born;Time;Active\r\n"
                                "\"'=HYPERLINK(\"\"x\"\");\nRex\";00007;-0,5;1234,50;;09:05;Yes\r\n"
                                "'+598 99;00008;12,35;1234,50;31/01/2020;09:05;No\r\n");
    QLocale::setDefault({QLocale::English, QLocale::UnitedStates});
    ExportarCsv(model, exported, carpeta.filePath(u"a.csv"_s));
    EXPECT_TRUE(read(u"a.csv"_s).ends_with("'+598 99,00008,12.35,1234.50,01/31/2020,09:05,No\r\n"));
}

TEST_F(Grid, TheWorkbookHoldsValuesAndNotTexts)
{
    const QString unzip = QStandardPaths::findExecutable(u"unzip"_s);
    if (unzip.isEmpty())
        GTEST_SKIP() << "no unzip to look into the file with";
    model.Poner({row(u"=1+1 <Rex> \u0001"_s, 7)});
    const QString file = carpeta.filePath(u"á.xlsx"_s);
    ExportarXlsx(model, exported, file);
    QProcess p;
    p.start(unzip, {u"-p"_s, file, u"xl/worksheets/sheet1.xml"_s});
    ASSERT_TRUE(p.waitForFinished());
    const QString sheet = QString::fromUtf8(p.readAllStandardOutput());
    const auto has = [&](const QString &part) { return sheet.contains(part); };
    EXPECT_TRUE(has(u"=1+1 &lt;Rex&gt;"_s) && !has(u"<f>"_s)) << "a text stays a text";
    EXPECT_TRUE(has(u"<v>7</v>"_s) && has(u"<v>12.35</v>"_s) && has(u"<v>1234.5</v>"_s));
    EXPECT_TRUE(has(u"<v>43861</v>"_s)) << "31 January 2020 as workbooks count days";
    EXPECT_FALSE(has(u"r=\"H2\""_s)) << "a hidden column stays out";
}

TEST_F(Grid, AnExportIsWhatIsShownAndOneThatFailsLosesNothing)
{
    Grilla grid(s, &model);
    grid.setAccessibleName(u"Owners / 2026"_s);
    grid.horizontalHeader()->moveSection(Peso, 0);
    grid.show();
    const auto choose = [&grid](int entry) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(&grid, &event);
        auto *menu = grid.findChild<QMenu *>(u"menuGrilla"_s);
        ASSERT_NE(menu, nullptr);
        menu->actions().at(entry)->trigger();
        delete menu;
    };
    const QString title = s(9307);
    ask.EsperaTexto(title, std::nullopt);
    choose(2);

    ask.EsperaTexto(title, carpeta.filePath(u"owners"_s));
    choose(2);
    const std::string before = read(u"owners.csv"_s);
    EXPECT_TRUE(before.starts_with("\xEF\xBB\xBFWeight;Name;ID;Balance;Born;Time;Active\r\n"))
        << "what is shown, in the order in which it stands";
    EXPECT_NE(before.find("Milo"), before.npos);

    ask.EsperaTexto(title, carpeta.filePath(u"nowhere/owners.xlsx"_s));
    ask.Espera(u"nowhere"_s);
    choose(3);

    const QString file = carpeta.filePath(u"full.csv"_s);
    ASSERT_TRUE(QDir().mkdir(file)); // stands where the file should go
    EXPECT_THROW(ExportarCsv(model, exported, file), ErrorDeAlmacen);
    EXPECT_EQ(read(u"owners.csv"_s), before);
}
