#include "clients/mail_domains.h"
#include "clients/reference_lists.h"
#include "support/clinic.h"
#include "texts/clients.h"
#include "texts/texts.h"

using namespace clients;
using namespace Qt::StringLiterals;

class ReferenceLists : public Clinic
{
protected:
    void breedOf(int id, const QString &nom, int esp = 1, int ran = 0)
    {
        s.clientes->Execute("insert into mlrazas (id, nom, esp, ran) values (?, ?, ?, ?)", id, nom,
                            esp, ran);
    }
    QString foundEntry(List list, const QString &text)
    {
        const Completed c = complete(s, list, text);
        QStringList names{c.found ? c.found->nom : u"-"_s};
        return (names << c.other).join(u'|');
    }
};

TEST_F(ReferenceLists, TheNameUsedMostCompletesWhateverTheAlphabetSays)
{
    breedOf(10, u"Boxer"_s, 1, 3);
    breedOf(11, u"bOyero"_s, 1, 9);
    breedOf(12, u"Bobtail"_s);
    breedOf(13, u"Caniche"_s, 1, 50);
    EXPECT_EQ(foundEntry(List::Breed, u"BO"_s), u"bOyero|Boxer|Bobtail"_s);
    EXPECT_EQ(foundEntry(List::Breed, u"boxe"_s), u"Boxer"_s);
    EXPECT_EQ(foundEntry(List::Breed, QString()), u"-"_s);
    EXPECT_EQ(complete(s, List::Breed, u"boy"_s).found->parent, 1);

    for (int i = 0; i < 7; ++i)
        SubirRanking(s, "mlrazas", 10);
    EXPECT_EQ(foundEntry(List::Breed, u"bo"_s), u"Boxer|bOyero|Bobtail"_s);

    breedOf(14, u"Dogo"_s, 1, 31999);
    SubirRanking(s, "mlrazas", 14);
    SubirRanking(s, "mlrazas", 14);
    EXPECT_EQ(allRows(*s.clientes, "select ran from mlrazas where id = 14"), u"32000\n"_s)
        << "where the column ends";
}

TEST_F(ReferenceLists, TypedSignsAreNoWildcardsAndAccentsCount)
{
    const QString signs = u"#1 [a] d'or?"_s;
    for (const QString &nom : {u"Mestizo"_s, u"*raro"_s, signs, u"Águila"_s})
        breedOf(10, nom);
    EXPECT_EQ(foundEntry(List::Breed, u"*"_s), u"*raro"_s);
    EXPECT_EQ(foundEntry(List::Breed, signs), signs);
    EXPECT_EQ(foundEntry(List::Breed, u"ág"_s), u"Águila"_s);
    for (const QString &nothing : {u"?"_s, u"[m]"_s, u"ag"_s})
        EXPECT_EQ(foundEntry(List::Breed, nothing), u"-"_s) << nothing.toStdString();
}

TEST_F(ReferenceLists, TheHintTellsWhatComesAlongOrHowToEnterANewName)
{
    breedOf(10, u"Boxer"_s, 1, 3);
    breedOf(11, u"Boyero"_s, 99, 1);
    const int canelones = ensureRegion(s, u"Canelones"_s, u"0433"_s);
    ensureSubregion(s, u"Pando"_s, u"91000"_s, canelones);
    const auto notice = [&](List list, const QString &text) {
        return completedNotice(s, list, complete(s, list, text));
    };
    EXPECT_EQ(notice(List::Breed, u"bo"_s), u"Boxer +-> Canino. Breed found. Others: Boyero"_s);
    EXPECT_EQ(notice(List::Breed, u"boy"_s), u"Item found."_s); // its species is gone
    EXPECT_EQ(notice(List::Subregion, u"pa"_s), u"Pando +-> Canelones. Item found."_s);
    EXPECT_EQ(notice(List::Region, u"can"_s), u"Canelones +-> 0433. Item found."_s);
    EXPECT_EQ(notice(List::Region, u"x"_s), s(text::RegionNotFound));
    EXPECT_EQ(notice(List::Subregion, u"x"_s), s(text::SubregionNotFound));
    EXPECT_EQ(notice(List::Breed, u"x"_s), s(text::BreedNotFound));

    Lote lote(s);
    for (int i = 0; i < 300; ++i)
        breedOf(100 + i, u"Zeta %1"_s.arg(i), 0, 0);
    EXPECT_LT(notice(List::Breed, u"z"_s).size(), 200); // one line, not a page
}

TEST_F(ReferenceLists, KnownNamesTakeTheCodeTypedAndKeepTheRest)
{
    const int north = ensureRegion(s, u" Norte "_s, u"041"_s);
    const int south = ensureRegion(s, u"Sur"_s, QString());
    EXPECT_EQ(ensureRegion(s, u"NORTE"_s, u"042"_s), north);
    EXPECT_EQ(ensureRegion(s, u"norte"_s, QString()), north); // an empty code clears nothing
    EXPECT_EQ(ensureRegion(s, u"  "_s, u"9"_s), 0);
    EXPECT_EQ(allRows(*s.clientes, "select id, nom, ctel, ran from cldepartamento"),
              u"%1|Norte|042|0\n%2|Sur||0\n"_s.arg(north).arg(south));

    const int zone = ensureSubregion(s, u"Zona 6"_s, u"100"_s, north);
    EXPECT_EQ(ensureSubregion(s, u"zona 6"_s, u"101"_s, south), zone); // its region stays
    EXPECT_EQ(allRows(*s.clientes, "select id, nom, cp, dep from cllocalidad"),
              u"%1|Zona 6|101|%2\n"_s.arg(zone).arg(north));

    const int boxer = ensureBreed(s, u"Boxer"_s, 1);
    EXPECT_EQ(ensureBreed(s, u"bóxer"_s, 2), boxer + 1); // an accent makes a different name
    EXPECT_EQ(ensureBreed(s, u"BOXER"_s, 2), boxer);
    EXPECT_EQ(entryById(s, List::Breed, boxer)->parent, 1);
    changeBreedSpecies(s, boxer, 3);
    EXPECT_EQ(entryByName(s, List::Breed, u"boxer"_s)->parent, 3);
}

TEST_F(ReferenceLists, ListsStandByNameWithAccentsAmongTheirLetters)
{
    for (const char16_t *nom : {u"Zorro", u"negro", u"Árbol", u"blanco"})
        s.clientes->Execute("insert into mlpelajes (id, nom) values (1, ?)", nom);
    QStringList names;
    for (const Entry &e : loadList(s, List::Coat))
        names << e.nom;
    EXPECT_EQ(names.join(u'|'), u"Árbol|blanco|negro|Zorro"_s);
}

TEST_F(ReferenceLists, ANumberHasNoLetter)
{
    for (const QString &t : {u"6"_s, u" 1.500,20 "_s, u"-3"_s, u"+598"_s, u"0341"_s, u".5"_s})
        EXPECT_TRUE(isNumeric(t)) << t.toStdString();
    for (const QString &t :
         {QString(), u" "_s, u"-"_s, u"."_s, u"z6"_s, u"25 de Mayo"_s, u"1-2"_s, u"1e5"_s})
        EXPECT_FALSE(isNumeric(t)) << t.toStdString();
    // Digits and punctuation alone are no name, whether they read as a number or not.
    for (const QString &t : {u"6"_s, u" 1-2 "_s, u"(-)"_s, u"#"_s})
        EXPECT_TRUE(withoutLetters(t)) << t.toStdString();
    for (const QString &t : {QString(), u" "_s, u"z6"_s, u"6 ñ"_s, u"中"_s})
        EXPECT_FALSE(withoutLetters(t)) << t.toStdString();
}

TEST_F(ReferenceLists, MailDomainsAreLearntAndOfferedBehindTheSign)
{
    s.clientes->Execute("delete * from email");
    s.clientes->Execute("insert into clientes (idc, faltamail) values (5, -1)");
    EXPECT_FALSE(settleMail(s, u"sin direccion"_s, 5));
    settleMail(s, u"ana@Vet.example, eva@granja.example "_s, 0); // from a new client
    EXPECT_EQ(allRows(*s.clientes, "select faltamail from clientes"), u"-1\n"_s);
    EXPECT_TRUE(settleMail(s, u"ana@vet.example"_s, 5));
    const qint64 written = s.clientes->version("clientes");
    EXPECT_FALSE(settleMail(s, u"ana@VET.example"_s, 5));
    EXPECT_EQ(s.clientes->version("clientes"), written) << "no list need be read again";
    EXPECT_EQ(allRows(*s.clientes, "select faltamail from clientes"), u"0\n"_s);
    EXPECT_EQ(knownDomains(s).join(u'|'), u"granja.example|vet.example"_s);

    EXPECT_EQ(completeDomain(s, u"eva@GR"_s), u"granja.example"_s);
    EXPECT_EQ(completeDomain(s, u"ana@vet.example,eva@v"_s), u"vet.example"_s);
    for (const QString &t : {u"vet"_s, u"ana@"_s, u"ana@x"_s, u"ana@*"_s, u"ana@vet.example, "_s})
        EXPECT_EQ(completeDomain(s, t), QString()) << t.toStdString();
}
