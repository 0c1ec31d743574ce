// What columns accept and refuse from Put, bound values, literals and computed values.

#include "store/column_value.h"
#include "support/clinic.h"

using namespace store;
using namespace Qt::StringLiterals;

namespace
{

class Gate : public Clinic
{
protected:
    Gate()
    {
        s.clientes->Execute("create table Taken (b BYTE, n SMALLINT, l LONG, x DOUBLE, m CURRENCY, "
                            "d DATE, h TIME, y YESNO, t TEXT(5), o MEMO)");
        s.clientes->Execute("create table Given (x DOUBLE, t TEXT(50), o MEMO, d DATE, l LONG)");
    }

    /// The text of the column after a write, or the number of the error.
    QString after(const std::function<void()> &write, const QString &column)
    {
        s.clientes->Execute("delete * from Taken");
        try {
            write();
        } catch (const StoreError &e) {
            EXPECT_TRUE(e.description.contains(u"\"%1\""_s.arg(column))
                        || e.number == ErrorNumber::Parameters)
                << e.what();
            EXPECT_EQ(s.clientes->read("select count(*) from Taken").toInt(), 0);
            return QString::number(e.number);
        }
        const Value v = s.clientes->read("select " + column.toStdString() + " from Taken");
        return v.isNull() ? u"Null"_s : v.toText();
    }
};

struct Situation {
    const char *column;
    Value value;
    QString result;
};

} // namespace

TEST_F(Gate, PutAndBoundValuesPassTheSameGate)
{
    const Situation situations[] = {
        {"b", 0, u"0"_s},
        {"b", 255, u"255"_s},
        {"b", 256, u"6"_s},
        {"b", -1, u"6"_s},
        {"n", 32767, u"32767"_s},
        {"n", 32768, u"6"_s},
        {"n", -32768, u"-32768"_s},
        {"n", 32767.4, u"32767"_s},
        {"n", 32767.5, u"6"_s},
        {"n", 2.5, u"2"_s},
        {"n", 3.5, u"4"_s},
        {"n", Moneda::fromTenThousandths(-25000), u"-2"_s},
        {"n", u" 12 "_s, u"12"_s},
        {"n", u"abc"_s, u"3421"_s},
        {"n", u""_s, u"3421"_s},
        {"n", hoy, u"3421"_s},
        {"n", true, u"-1"_s},
        {"l", 2147483647, u"2147483647"_s},
        {"l", 2147483648, u"6"_s},
        {"x", std::numeric_limits<double>::infinity(), u"6"_s},
        {"x", u"1e3"_s, u"1000"_s},
        {"m", 0.00005, u"0"_s},
        {"m", 0.00015, u"0.0002"_s},
        {"m", 1e15, u"6"_s},
        {"m", u"12,5"_s, u"3421"_s},
        {"d", hoy, u"2026-03-11"_s},
        {"d", QDateTime(hoy, QTime(9, 5)), u"2026-03-11 09:05:00"_s},
        {"d", dayText(hoy), u"2026-03-11"_s}, // as the screens show it
        {"d", u"2026-02-30"_s, u"3421"_s},
        {"d", u"mañana"_s, u"3421"_s},
        {"d", 45000, u"3421"_s},
        {"d", QTime(9, 5), u"3421"_s},
        {"d", QDate(10000, 1, 1), u"6"_s},
        {"h", QTime(9, 5), u"09:05:00"_s},
        {"h", QDateTime(hoy, QTime(9, 5)), u"09:05:00"_s},
        {"h", u"9:05"_s, u"09:05:00"_s},
        {"h", hoy, u"3421"_s},
        {"y", 7, u"-1"_s},
        {"y", Value(), u"0"_s},
        {"y", u"yes"_s, u"3421"_s},
        {"t", u"ñandú"_s, u"ñandú"_s},
        {"t", u"ñandúe"_s, u"3163"_s},
        {"t", 12345, u"12345"_s},
        {"t", hoy, u"3163"_s},
        {"o", u"0341"_s, u"0341"_s},
    };
    for (const Situation &i : situations) {
        const std::string column = i.column;
        const QString name = QString::fromStdString(column);
        SCOPED_TRACE(column + " <- " + i.value.toText().toStdString());
        EXPECT_EQ(after(
                      [&] {
                          s.clientes->Execute("insert into Taken (" + column + ") values (?)",
                                              i.value);
                      },
                      name),
                  i.result);
        EXPECT_EQ(after(
                      [&] {
                          Recordset r = s.clientes->OpenRecordset("select * from Taken");
                          r.AddNew();
                          r.Put(column, i.value);
                          r.Update();
                      },
                      name),
                  i.result);
    }
}

TEST_F(Gate, LiteralsAndWhatIsComputedPassItToo)
{
    s.clientes->Execute(
        "insert into Given (x, t, o, d, l) values (70000.5, 'ñandúes', '2026-03-11', "
        "#3/11/2026#, 255)");
    const std::pair<const char *, Situation> situations[] = {
        {"insert into Taken (n) values (70000)", {"n", {}, u"6"_s}},
        {"insert into Taken (n) values (-32768)", {"n", {}, u"-32768"_s}},
        {"insert into Taken (n) values (2.5)", {"n", {}, u"2"_s}},
        {"insert into Taken (n) values ('x')", {"n", {}, u"3421"_s}},
        {"insert into Taken (t) values ('abcdef')", {"t", {}, u"3163"_s}},
        {"insert into Taken (d) values ('2026-03-11')", {"d", {}, u"2026-03-11"_s}},
        {"insert into Taken (d) values (5)", {"d", {}, u"3421"_s}},
        {"insert into Taken (y) values (null)", {"y", {}, u"0"_s}},
        {"insert into Taken (n) select x from Given", {"n", {}, u"6"_s}},
        {"insert into Taken (n) select x - 70000 from Given", {"n", {}, u"0"_s}},
        {"insert into Taken (b) select l + 1 from Given", {"b", {}, u"6"_s}},
        {"insert into Taken (b) select l from Given", {"b", {}, u"255"_s}},
        {"insert into Taken (t) select t from Given", {"t", {}, u"3163"_s}},
        {"insert into Taken (t) select left(t, 5) from Given", {"t", {}, u"ñandú"_s}},
        {"insert into Taken (m) select o from Given", {"m", {}, u"3421"_s}},
        {"insert into Taken (d) select o from Given", {"d", {}, u"2026-03-11"_s}},
        {"insert into Taken (d) select t from Given", {"d", {}, u"3421"_s}},
        {"insert into Taken (d) select d + 1 from Given", {"d", {}, u"2026-03-12"_s}},
        {"insert into Taken (y) select l from Given", {"y", {}, u"-1"_s}},
    };
    for (const auto &[sql, i] : situations)
        EXPECT_EQ(after([&] { s.clientes->Execute(sql); }, QString::fromLatin1(i.column)), i.result)
            << sql;
}

TEST_F(Gate, DaysAreComparedWithDays)
{
    s.clientes->Execute("insert into Given (d) values (?)", hoy);
    const auto count = [this](const char *where, const Value &given) -> QString {
        try {
            return s.clientes->read(std::string("select count(*) from Given where ") + where, given)
                .toText();
        } catch (const StoreError &e) {
            return QString::number(e.number);
        }
    };
    EXPECT_EQ(count("d = ?", hoy), u"1"_s);
    EXPECT_EQ(count("d = ?", dayText(hoy)), u"1"_s);
    EXPECT_EQ(count("d between ? and '2026-12-31'", u"2026-01-01"_s), u"1"_s);
    EXPECT_EQ(count("d in (?, '2026-01-01')", u"2026-03-11"_s), u"1"_s);
    EXPECT_EQ(count("d = ?", 46092), u"3421"_s);
    EXPECT_EQ(count("d > ?", u"enero"_s), u"3421"_s);
    EXPECT_EQ(count("d = ?", QTime(9, 0)), u"3421"_s);
    EXPECT_EQ(count("d > 0 and l = ?", 1), u"3421"_s);
    EXPECT_EQ(count("d < t and l = ?", 1), u"3421"_s);
    EXPECT_EQ(count("d in (select t from Given) and l = ?", 1), u"3421"_s);
    EXPECT_EQ(count("d <> ?", Value()), u"0"_s);
}
