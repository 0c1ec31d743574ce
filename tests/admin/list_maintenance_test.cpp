#include "admin/list_maintenance.h"
#include "store/settings_row.h"
#include "support/clinic.h"
#include "texts/texts.h"

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

class ListMaintenance : public Clinic
{
protected:
    ListMaintenance()
    {
        insert("cldepartamento (id, nom, ctel) values (1, 'Norte', '011')");
        insert("cldepartamento (id, nom, ctel) values (2, 'Sur #2', '')");
        insert("cllocalidad (id, nom, cp, dep) values (1, 'Alba', '100', 1)");
        for (const char *counter : {"contadordep", "contadorloc"})
            store::saveSetting(s, counter, 2);
    }
    void insert(const std::string &row) { s.clientes->Execute("insert into " + row); }
    /// Expects prompts in this order and answers them.
    void types(const QList<std::pair<int, QString>> &answers)
    {
        for (const auto &[prompt, answer] : answers)
            ask.expectText(s(prompt), answer);
    }
    QString rows(std::string_view sql) { return allRows(*s.clientes, sql); }
    QString regions() { return rows("select id, nom, ctel, ran from cldepartamento order by id"); }
    QString places() { return rows("select id, nom, cp, dep, ran from cllocalidad order by id"); }
    int counter(const char *column) { return s.configuracion[column].toInt(); }

    static constexpr int WhichSpecies = 2668, Region = 9638, Place = 9639, Source = 9640,
                         Species = 9641, Breed = 9642, Coat = 9643, AreaCode = 9644,
                         PostCode = 9645, WhichRegion = 9646, NoRegion = 9647, NoSpecies = 9648,
                         Known = 9649, TooLong = 9650;
};

} // namespace

TEST_F(ListMaintenance, AddingAsksWhatBelongsToTheEntryAndTakesTheCounter)
{
    types({{Region, u" Este "_s}, {AreaCode, u"04b"_s}});
    EXPECT_EQ(addEntry(s, clients::List::Region), 3);
    types({{Place, u"Bahía"_s}, {PostCode, u""_s}, {WhichRegion, u"*ST*"_s}});
    EXPECT_EQ(addEntry(s, clients::List::Subregion), 3);
    types({{Place, u"z6"_s}, {PostCode, u"5"_s}, {WhichRegion, u"sur #2"_s}});
    EXPECT_EQ(addEntry(s, clients::List::Subregion), 4) << "the very name holds a wildcard";
    EXPECT_EQ(regions(), u"1|Norte|011|0\n2|Sur #2||0\n3|Este|04b|0\n"_s);
    EXPECT_EQ(places(), u"1|Alba|100|1|0\n3|Bahía||3|0\n4|z6|5|2|0\n"_s);
    EXPECT_EQ(counter("contadorloc"), 4);

    types({{Source, u"Radio"_s}, {Coat, u"Atigrado"_s}, {Species, u"Ovino"_s}});
    EXPECT_EQ(addEntry(s, clients::List::Marketing), 1);
    EXPECT_EQ(addEntry(s, clients::List::Coat), 1);
    EXPECT_EQ(addEntry(s, clients::List::Species), 4);
    types({{Breed, u"Criollo"_s}, {WhichSpecies, u"ovi*"_s}});
    EXPECT_EQ(addEntry(s, clients::List::Breed), 1);
    EXPECT_EQ(rows("select id, nom, esp, ran from mlrazas"), u"1|Criollo|4|0\n"_s);
    s.lists.mlespecies.FindFirst("id = ?", 4);
    EXPECT_FALSE(s.lists.mlespecies.NoMatch()) << "the session's list knows it at once";
}

TEST_F(ListMaintenance, WhatCannotBeANameIsAskedAgain)
{
    const std::pair<QString, QString> refused[] = {{u"O'Higgins"_s, s(text::ApostropheRefused)},
                                                   {u" 1-2 "_s, s(text::SubregionIsNumber)},
                                                   {u"ALBA"_s, s(Known)},
                                                   {QString(51, u'x'), s(TooLong) + u" 50"_s}};
    for (const auto &[name, why] : refused) {
        types({{Place, name}});
        ask.wait(why);
    }
    types({{Place, u"Inf 25"_s}, {PostCode, u"12345678901"_s}});
    ask.wait(s(TooLong) + u" 10"_s);
    types({{PostCode, u"1234567890"_s}, {WhichRegion, u"norte"_s}});
    EXPECT_TRUE(addEntry(s, clients::List::Subregion));
    EXPECT_EQ(places(), u"1|Alba|100|1|0\n3|Inf 25|1234567890|1|0\n"_s);
}

TEST_F(ListMaintenance, BackingOutOrAnUnknownParentAddsNothing)
{
    for (const QString &unknown : {u"Oeste"_s, u" "_s}) {
        types({{Place, u"Boca"_s}, {PostCode, u"1"_s}, {WhichRegion, unknown}});
        ask.wait(s(NoRegion));
        EXPECT_FALSE(addEntry(s, clients::List::Subregion));
    }
    types({{Breed, u"Boxer"_s}, {WhichSpecies, u"["_s}});
    ask.wait(s(NoSpecies));
    EXPECT_FALSE(addEntry(s, clients::List::Breed));
    types({{Coat, u"  "_s}});
    EXPECT_FALSE(addEntry(s, clients::List::Coat));
    types({{Region, u"(5)"_s}});
    ask.wait(s(text::InvalidValue));
    types({{Region, u"Oeste"_s}});
    ask.expectText(s(AreaCode), std::nullopt);
    EXPECT_FALSE(addEntry(s, clients::List::Region));
    EXPECT_EQ(counter("contadorloc") + counter("contadordep"), 2 + 2) << "none is used up";
}

TEST_F(ListMaintenance, IdentifiersEndWithTheirColumn)
{
    store::saveSetting(s, "contadorespecie", 255);
    store::saveSetting(s, "contadorpelaje", 32767);
    types({{Species, u"Ave"_s}, {Coat, u"Bayo"_s}});
    EXPECT_THROW(addEntry(s, clients::List::Species), store::StoreError);
    EXPECT_THROW(addEntry(s, clients::List::Coat), store::StoreError);
    EXPECT_EQ(rows("select nom from mlpelajes") + rows("select nom from mlespecies where id > 3"),
              QString());
}

TEST_F(ListMaintenance, ChangingWritesAllThatBelongsToTheEntry)
{
    s.clientes->Execute("update cllocalidad set ran = 5");
    types({{Place, u"ALBA"_s}, {PostCode, u"200"_s}, {WhichRegion, u"sur*"_s}});
    EXPECT_TRUE(modifyEntry(s, clients::List::Subregion, 1));
    EXPECT_EQ(places(), u"1|ALBA|200|2|5\n"_s);
    types({{Place, u"Alba"_s}, {PostCode, u"200"_s}, {WhichRegion, u"Oeste"_s}});
    ask.wait(s(NoRegion));
    EXPECT_FALSE(modifyEntry(s, clients::List::Subregion, 1));
    EXPECT_EQ(places(), u"1|ALBA|200|2|5\n"_s);
    // A sub-region whose region has been deleted keeps its reference.
    s.clientes->Execute("update cllocalidad set dep = 77");
    types({{Place, u"Alba"_s}, {PostCode, u""_s}, {WhichRegion, u""_s}});
    EXPECT_TRUE(modifyEntry(s, clients::List::Subregion, 1));
    EXPECT_EQ(places(), u"1|Alba||77|5\n"_s);

    types({{Region, u"Sur"_s}, {AreaCode, u"0341"_s}});
    EXPECT_TRUE(modifyEntry(s, clients::List::Region, 2));
    types({{Region, u"norte"_s}});
    ask.wait(s(Known));
    ask.expectText(s(Region), std::nullopt);
    EXPECT_FALSE(modifyEntry(s, clients::List::Region, 2));
    EXPECT_FALSE(modifyEntry(s, clients::List::Region, 50)) << "gone on another terminal";
    EXPECT_EQ(regions(), u"1|Norte|011|0\n2|Sur|0341|0\n"_s);
    types({{Species, u"Cánidos"_s}});
    EXPECT_TRUE(modifyEntry(s, clients::List::Species, 1));
    EXPECT_EQ(rows("select nom from mlespecies where id = 1"), u"Cánidos\n"_s);
}

TEST_F(ListMaintenance, WhatIsUsedStays)
{
    for (const char *row :
         {"clientes (idc, ayn, loc) values (1, 'Ana', 1)",
          "mlrazas (id, nom, esp) values (1, 'Boxer', 1)",
          "mlrazas (id, nom, esp) values (2, 'Bo*', 2)", "mlpelajes (id, nom) values (1, 'Gris')",
          "mlpelajes (id, nom) values (2, '[G]#?')",
          "mascotas (idm, idc, raz, pel) values (1, 1, 1, 1)",
          "clmarketing (id, nom) values (1, 'Radio')"})
        insert(row);
    const auto used = [this](clients::List list, int id) {
        ask.wait(s(text::InUse));
        EXPECT_FALSE(deleteEntry(s, list, id));
    };
    for (const clients::List list : {clients::List::Subregion, clients::List::Species,
                                     clients::List::Breed, clients::List::Coat})
        used(list, 1);
    used(clients::List::Species, 2);
    EXPECT_FALSE(deleteEntry(s, clients::List::Region, 1)) << "regions are never deleted";
    // Names that would match others if their wildcards were not escaped.
    const auto goes = [this](clients::List list, int id) {
        ask.wait(s(text::DeleteQuestion), false);
        EXPECT_FALSE(deleteEntry(s, list, id));
        ask.wait(s(text::DeleteQuestion), true);
        EXPECT_TRUE(deleteEntry(s, list, id));
    };
    for (const clients::List list :
         {clients::List::Breed, clients::List::Coat, clients::List::Species})
        goes(list, 2);
    goes(clients::List::Marketing, 1);
    s.clientes->Execute("update clientes set loc = 0");
    goes(clients::List::Subregion, 1);
    EXPECT_EQ(rows("select nom from mlrazas") + rows("select nom from mlpelajes") + places(),
              u"Boxer\nGris\n"_s);
    // In use under a name with wildcards.
    s.clientes->Execute("update mlpelajes set nom = '[G]#?'");
    used(clients::List::Coat, 1);
}
