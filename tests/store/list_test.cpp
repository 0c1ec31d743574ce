// Look-ups by key on the session's long lists, before and after their rows are read.

#include "store/lookups.h"
#include "support/clinic.h"

using namespace Qt::StringLiterals;

namespace
{

class ListaLarga : public Clinica
{
protected:
    ListaLarga()
    {
        for (const int idc : {4, 2, 8, 6})
            s.clientes->Execute("insert into Clientes (idc, ayn) values (?, ?)", idc,
                                u"C%1"_s.arg(idc));
    }
    Recordset &lista = s.listas.clientes;
};

} // namespace

TEST_F(ListaLarga, ARowFoundAloneStandsAmongTheOthers)
{
    lista.FindFirst("idc = ?", 4);
    EXPECT_EQ(lista.RecordCount(), 4);
    EXPECT_EQ(lista.AbsolutePosition(), 1);
    EXPECT_EQ(lista["ayn"].toText(), u"C4"_s);

    Reabrir();
    lista.FindFirst("idc = ?", 6);
    lista.FindFirst("idc = ?", 5); // nobody: the position stays
    EXPECT_TRUE(lista.NoMatch());
    EXPECT_EQ(lista["ayn"].toText(), u"C6"_s);
    lista.MoveNext();
    EXPECT_EQ(lista["ayn"].toText(), u"C8"_s);
    lista.MoveNext();
    EXPECT_TRUE(lista.EOF_());
}

TEST_F(ListaLarga, ARowFoundAloneIsWrittenAndDeletedAsAnyOther)
{
    lista.FindFirst("idc = ?", 2);
    lista.Edit();
    lista.Put("ayn", u"Dos"_s);
    lista.Update();
    EXPECT_EQ(lista["ayn"].toText(), u"Dos"_s);
    EXPECT_EQ(s.clientes->Leer("select ayn from clientes where idc = 2").toText(), u"Dos"_s);

    Reabrir();
    lista.FindFirst("idc = ?", 4);
    lista.Delete();
    lista.MoveNext();
    EXPECT_EQ(lista["idc"].toInt(), 6);
    EXPECT_EQ(Filas(*s.clientes, "select idc from clientes order by idc"), u"2\n6\n8\n"_s);
}

TEST_F(ListaLarga, ManyLookUpsSeeTheSameAsFew)
{
    // Enough of them for the list to be read on the way, with writes before and after.
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
