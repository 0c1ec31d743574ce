// Look-ups by key on the session's long lists, before and after their rows are read.

#include "store/lookups.h"
#include "support/clinic.h"

using namespace Qt::StringLiterals;

namespace
{

class LongList : public Clinic
{
protected:
    LongList()
    {
        for (const int idc : {4, 2, 8, 6})
            s.clientes->Execute("insert into Clientes (idc, ayn) values (?, ?)", idc,
                                u"C%1"_s.arg(idc));
    }
    Recordset &list = s.lists.clientes;
};

} // namespace

TEST_F(LongList, ARowFoundAloneStandsAmongTheOthers)
{
    list.FindFirst("idc = ?", 4);
    EXPECT_EQ(list.RecordCount(), 4);
    EXPECT_EQ(list.AbsolutePosition(), 1);
    EXPECT_EQ(list["ayn"].toText(), u"C4"_s);

    reopen();
    list.FindFirst("idc = ?", 6);
    list.FindFirst("idc = ?", 5); // not found: the position stays
    EXPECT_TRUE(list.NoMatch());
    EXPECT_EQ(list["ayn"].toText(), u"C6"_s);
    list.MoveNext();
    EXPECT_EQ(list["ayn"].toText(), u"C8"_s);
    list.MoveNext();
    EXPECT_TRUE(list.EOF_());
}

TEST_F(LongList, ARowFoundAloneIsWrittenAndDeletedAsAnyOther)
{
    list.FindFirst("idc = ?", 2);
    list.Edit();
    list.Put("ayn", u"Dos"_s);
    list.Update();
    EXPECT_EQ(list["ayn"].toText(), u"Dos"_s);
    EXPECT_EQ(s.clientes->read("select ayn from clientes where idc = 2").toText(), u"Dos"_s);

    reopen();
    list.FindFirst("idc = ?", 4);
    list.Delete();
    list.MoveNext();
    EXPECT_EQ(list["idc"].toInt(), 6);
    EXPECT_EQ(allRows(*s.clientes, "select idc from clientes order by idc"), u"2\n6\n8\n"_s);
}

TEST_F(LongList, ManyLookUpsSeeTheSameAsFew)
{
    // Enough of them for the list to be read eventually, with writes before and after.
    for (int i = 0; i < 6000; ++i) {
        const int idc = 2 + i % 4 * 2;
        if (i % 1500 == 700)
            s.clientes->Execute("update clientes set dir = ? where idc = 8", QString::number(i));
        ASSERT_EQ(LeerCampo(s, "clientes", "clientes", idc, "ayn"), u"C%1"_s.arg(idc)) << i;
        ASSERT_EQ(LeerCampo(s, "clientes", "clientes", idc + 1, "ayn"), QString()) << i;
        if (idc == 8 && i > 700) {
            ASSERT_EQ(LeerCampo(s, "clientes", "clientes", 8, "dir"),
                      QString::number((i - 700) / 1500 * 1500 + 700));
        }
    }
}
