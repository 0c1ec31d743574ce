#include "store/jet/text.h"
#include "support/clinic.h"
#include "texts/ui.h"
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

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

enum Column { Name, Id, Weight, Balance, Born, Hour, Active, Key };

const QList<GridColumn> columns{{u"Name"_s, Kind::Text},     {u"ID"_s, Kind::Code},
                                {u"Weight"_s, Kind::Number}, {u"Balance"_s, Kind::Amount},
                                {u"Born"_s, Kind::Day},      {u"Time"_s, Kind::Hour},
                                {u"Active"_s, Kind::YesNo},  {u"Key"_s, Kind::Whole, 80, true}};

const QList<int> exported{Name, Id, Weight, Balance, Born, Hour, Active};

GridRow row(const QString &name, int id)
{
    return {.cells = {name, id, double(12.35F), Moneda::fromTenThousandths(1234'5000),
                      QDate(2020, 1, 31), QTime(9, 5), id % 2 == 1, id}};
}

/// A grid with three unsorted patients, in a fixed locale.
class Grids : public Clinic
{
protected:
    Grids()
    {
        QLocale::setDefault({QLocale::Spanish, QLocale::Uruguay});
        s.programFolder = folder.path() + u'/';
        model.set({row(u"Milo"_s, 7), row(u"Ángel"_s, 42), row(u"andrea"_s, 5)});
    }
    ~Grids() override { QLocale::setDefault(QLocale::c()); }

    QString shown(int column) const
    {
        QStringList cells;
        for (int r = 0; r < model.allRows(); ++r)
            cells << model.cellText(r, column);
        return cells.join(u'|');
    }
    std::string read(const QString &name) const
    {
        QFile f(folder.filePath(name));
        EXPECT_TRUE(f.open(QIODevice::ReadOnly));
        return f.readAll().toStdString();
    }

    GridModel model{s, columns};
};

} // namespace

TEST_F(Grids, CellsAreShownAsTheirColumnsMean)
{
    model.set({row(u"Milo"_s, 7), {.cells = {u"Nobody"_s}}});
    QStringList cells;
    for (int c = 0; c < columns.size(); ++c)
        cells << model.cellText(0, c) + u'/' + model.cellText(1, c);
    EXPECT_EQ(cells.join(u' '),
              u"Milo/Nobody 00007/ 12,35/ 1.234,50/ 31/01/2020/ 09:05/ Yes/ 7/"_s);
    EXPECT_EQ(model.cellText(2, 0), QString());
    EXPECT_EQ(model.cellText(0, 99), QString());
}

TEST_F(Grids, SortsByWhatTheColumnHoldsEmptyCellsFirst)
{
    model.set({{.cells = {u"b"_s, 10, Moneda::whole(2), {}, QDate(2026, 2, 1)}},
               {.cells = {u"a"_s, 9, Moneda::whole(-10), {}, QDate(2025, 12, 31)}},
               {.cells = {{}, {}, {}, {}, {}}},
               {.cells = {u"B"_s, 9, Moneda::whole(10), {}, QDate(2025, 3, 1)}}});
    const QAbstractItemModelTester checked(&model);
    const QPersistentModelIndex ten = model.index(0, Id);
    const auto sorted = [this](int column, Qt::SortOrder order = Qt::AscendingOrder) {
        model.sort(column, order);
        return shown(Name);
    };
    EXPECT_EQ(sorted(Id), u"|a|B|b"_s);
    EXPECT_EQ(ten.row(), 3) << "what is selected stays with its row";
    EXPECT_EQ(sorted(Weight), u"|a|b|B"_s);
    EXPECT_EQ(sorted(Born), u"|B|a|b"_s);
    EXPECT_EQ(sorted(Name), u"|a|B|b"_s) << "equal names keep the order that they had";
    EXPECT_EQ(sorted(Name, Qt::DescendingOrder), u"B|b|a|"_s);
    model.set({row(u"z"_s, 1), row(u"y"_s, 2)});
    EXPECT_EQ(shown(Name), u"z|y"_s) << "new rows come sorted as well";
}

TEST_F(Grids, TextsAreInTheOrderOfTheStore)
{
    const QStringList names{u"Ñandú"_s, u"nube"_s, u"Nandu"_s, u"ñandu"_s,  u"Álvarez"_s,
                            u"alba"_s,  u"Zoë"_s,  u"zoe"_s,   u"Straße"_s, u"STRASSE"_s,
                            u"Łata"_s,  u"élan"_s, u"Elan"_s,  u"andrea"_s, u"10"_s,
                            u"9"_s,     u" b"_s,   u"犬"_s};
    std::vector<GridRow> rows;
    for (const QString &name : names)
        rows.push_back(row(name, 1));
    model.set(std::move(rows));
    model.sort(Name, Qt::AscendingOrder);
    const auto name = [this](int r) { return model.cellText(r, Name).toStdString(); };
    for (int r = 0; r + 1 < model.allRows(); ++r)
        EXPECT_LE(jet::compareText(name(r), name(r + 1)), 0) << name(r);
}

TEST_F(Grids, FindsTheBeginningOfATextAndAnEqualNumber)
{
    const auto find = [this](const store::Value &v, int column) {
        return model.BuscarEnGrilla(v, column, 0, model.allRows() - 1);
    };
    EXPECT_EQ(find(u"áNG"_s, Name), 1);
    EXPECT_EQ(find(u"ngel"_s, Name), -1) << "only the beginning counts";
    EXPECT_EQ(find(42, Id), 1);
    EXPECT_EQ(find(4, Id), -1);
    EXPECT_EQ(find(0, Name), -1) << "a text is no number";
    EXPECT_EQ(find(QDate(2020, 1, 31), Born), 0);
    EXPECT_EQ(model.BuscarEnGrilla(u"a"_s, Name, -5, 99), 2);
    EXPECT_EQ(model.BuscarEnGrilla(u"a"_s, Name, 0, 1), -1);

    model.sort(Name, Qt::AscendingOrder);
    EXPECT_EQ(shown(Name), u"andrea|Ángel|Milo"_s);
    EXPECT_EQ(find(u"mi"_s, Name), 2);
    model.change(2, row(u"Oso"_s, 7));
    EXPECT_EQ(find(u"mi"_s, Name), -1);
    EXPECT_EQ(find(u"oso"_s, Name), 2);
    model.remove(0);
    EXPECT_EQ(find(u"oso"_s, Name), 1);
    model.insert(row(u"Bobi"_s, 3), Name);
    EXPECT_EQ(find(u"oso"_s, Name), 2);
    model.set({});
    EXPECT_EQ(find(u"oso"_s, Name), -1);
    EXPECT_EQ(model.Row(0).cells.size(), 0);
}

TEST_F(Grids, ARowIsKnownByItsIdHoweverTheRowsAreSorted)
{
    Grid grid(s, &model);
    EXPECT_EQ(grid.IdActual(), 0);
    EXPECT_TRUE(grid.IrA(42));
    EXPECT_EQ(grid.currentRow(), 1);
    model.sort(Name, Qt::DescendingOrder);
    EXPECT_EQ(grid.IdActual(), 42) << "the row moved with the sort";
    EXPECT_EQ(model.rowOf(7), 0);
    EXPECT_FALSE(grid.IrA(8));
    EXPECT_EQ(grid.IdActual(), 42);
    EXPECT_EQ(model.rowOf(0), -1);
    EXPECT_EQ(model.idOf(3), 0);
}

TEST_F(Grids, ARowIsInsertedInItsPlace)
{
    const QAbstractItemModelTester checked(&model);
    model.set({row(u"alba"_s, 3), row(u"Milo"_s, 2), row(u"Zoe"_s, 1)});
    EXPECT_EQ(model.insert(row(u"Ángel"_s, 9), Name), 1);
    EXPECT_EQ(model.insert(row(u"zz"_s, 4), Name), 4);
    model.sort(Id, Qt::DescendingOrder);
    EXPECT_EQ(model.insert(row(u"last"_s, 3), Name), 3) << "behind its equals";
    EXPECT_EQ(shown(Id), u"00009|00004|00003|00003|00002|00001"_s);
}

TEST_F(Grids, AColourIsAlsoToldInWords)
{
    GridRow debtor = row(u"Rex"_s, 1);
    debtor.highlight = Highlight::Alert;
    debtor.highlightedCell = Name;
    debtor.reason = u"owes"_s;
    model.set({debtor});
    const auto of = [this](int column, int role) { return model.index(0, column).data(role); };
    EXPECT_EQ(of(Name, Qt::AccessibleTextRole), u"Rex, owes"_s);
    EXPECT_EQ(of(Name, Qt::ToolTipRole), u"owes"_s);
    EXPECT_EQ(of(Id, Qt::AccessibleTextRole), u"00001"_s);
    EXPECT_FALSE(of(Id, Qt::BackgroundRole).isValid());
}

TEST_F(Grids, TellsTheCurrentRowWheneverItChanges)
{
    Grid grid(s, &model);
    QSignalSpy told(&grid, &Grid::changedRow);
    const auto last = [&told] { return told.isEmpty() ? -99 : told.last().at(0).toInt(); };
    grid.Seleccionar(1);
    EXPECT_EQ(last(), 1);
    int atSignal = -99;
    QObject::connect(&grid, &Grid::changedRow,
                     [&](int r) { atSignal = model.Row(r).cells.value(Id).toInt(); });
    model.remove(1);
    EXPECT_EQ(last(), 1) << "the row that came up";
    EXPECT_EQ(atSignal, 5) << "told when the old one is gone";
    model.set({row(u"x"_s, 1)});
    EXPECT_EQ(last(), -1);
    grid.Seleccionar(0);
    EXPECT_EQ(last(), 0);
    grid.Seleccionar(99);
    EXPECT_EQ(last(), -1);
}

TEST_F(Grids, KeysTakeARowAndCopySeveral)
{
    Grid grid(s, &model);
    grid.allowSeveral();
    grid.show();
    QSignalSpy taken(&grid, &Grid::chosenRow);
    QTest::keyClick(&grid, Qt::Key_Return);
    EXPECT_EQ(taken.size(), 0) << "no row, nothing to take";
    grid.Seleccionar(1);
    QTest::keyClick(&grid, Qt::Key_Enter, Qt::KeypadModifier);
    ASSERT_EQ(taken.size(), 1);
    EXPECT_EQ(taken[0][0].toInt(), 1);

    QTest::keyClick(&grid, Qt::Key_End);
    EXPECT_EQ(grid.selectedRows(), QList<int>{2});
    QTest::keyClick(&grid, Qt::Key_Up);
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(grid.selectedRows(), (QList<int>{1, 2}));
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              u"Name\tID\tWeight\tBalance\tBorn\tTime\tActive\n"
              "Ángel\t00042\t12,35\t1.234,50\t31/01/2020\t09:05\tNo\n"
              "andrea\t00005\t12,35\t1.234,50\t31/01/2020\t09:05\tYes\n"_s);
}

TEST_F(Grids, TheCsvIsWhatASpreadsheetOfTheCountryReads)
{
    GridRow odd = row(u"=HYPERLINK(\"x\");\nRex"_s, 7);
    odd.cells[Weight] = -0.5;
    odd.cells[Born] = {};
    model.set({odd, row(u"+598 99"_s, 8)});
    exportCsv(model, exported, folder.filePath(u"a.csv"_s));
    EXPECT_EQ(read(u"a.csv"_s), "\xEF\xBB\xBFName;ID;Weight;Balance;Born;Time;Active\r\n"
                                "\"'=HYPERLINK(\"\"x\"\");\nRex\";00007;-0,5;1234,50;;09:05;Yes\r\n"
                                "'+598 99;00008;12,35;1234,50;31/01/2020;09:05;No\r\n");
    QLocale::setDefault({QLocale::English, QLocale::UnitedStates});
    exportCsv(model, exported, folder.filePath(u"a.csv"_s));
    EXPECT_TRUE(read(u"a.csv"_s).ends_with("'+598 99,00008,12.35,1234.50,01/31/2020,09:05,No\r\n"));
}

TEST_F(Grids, TheWorkbookHoldsValuesAndNotTexts)
{
    const QString unzip = QStandardPaths::findExecutable(u"unzip"_s);
    if (unzip.isEmpty())
        GTEST_SKIP() << "no unzip to look into the file with";
    model.set({row(u"=1+1 <Rex> \u0001"_s, 7)});
    const QString file = folder.filePath(u"á.xlsx"_s);
    exportXlsx(model, exported, file);
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

TEST_F(Grids, AnExportIsWhatIsShownAndOneThatFailsLosesNothing)
{
    Grid grid(s, &model);
    grid.setAccessibleName(u"Owners / 2026"_s);
    grid.horizontalHeader()->moveSection(Weight, 0);
    grid.show();
    const auto choose = [&grid](int entry) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(&grid, &event);
        auto *menu = grid.findChild<QMenu *>(u"menuGrilla"_s);
        ASSERT_NE(menu, nullptr);
        menu->actions().at(entry)->trigger();
        delete menu;
    };
    const QString title = s(text::SaveTableTitle);
    ask.expectText(title, std::nullopt);
    choose(2);

    ask.expectText(title, folder.filePath(u"owners"_s));
    choose(2);
    const std::string before = read(u"owners.csv"_s);
    EXPECT_TRUE(before.starts_with("\xEF\xBB\xBFWeight;Name;ID;Balance;Born;Time;Active\r\n"))
        << "what is shown, in the order in which it stands";
    EXPECT_NE(before.find("Milo"), before.npos);

    ask.expectText(title, folder.filePath(u"nowhere/owners.xlsx"_s));
    ask.wait(u"nowhere"_s);
    choose(3);

    const QString file = folder.filePath(u"full.csv"_s);
    ASSERT_TRUE(QDir().mkdir(file)); // in the way of the file
    EXPECT_THROW(exportCsv(model, exported, file), store::StoreError);
    EXPECT_EQ(read(u"owners.csv"_s), before);
}
