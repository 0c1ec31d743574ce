#include "clients/mail_domains.h"
#include "clients/reference_lists.h"
#include "support/clinic.h"

using namespace Qt::StringLiterals;

class ListasDeReferencia : public Clinica
{
protected:
    void Raza(int id, const QString &nom, int esp = 1, int ran = 0)
    {
        s.clientes->Execute("insert into mlrazas (id, nom, esp, ran) values (?, ?, ?, ?)", id, nom,
                            esp, ran);
    }
    QString Hallada(Lista lista, const QString &texto)
    {
        const Completado c = Completar(s, lista, texto);
        QStringList nombres{c.hallada ? c.hallada->nom : u"-"_s};
        return (nombres << c.otras).join(u'|');
    }
};

TEST_F(ListasDeReferencia, TheNameUsedMostCompletesWhateverTheAlphabetSays)
{
    Raza(10, u"Boxer"_s, 1, 3);
    Raza(11, u"bOyero"_s, 1, 9);
    Raza(12, u"Bobtail"_s);
    Raza(13, u"Caniche"_s, 1, 50);
    EXPECT_EQ(Hallada(Lista::Raza, u"BO"_s), u"bOyero|Boxer|Bobtail"_s);
    EXPECT_EQ(Hallada(Lista::Raza, u"boxe"_s), u"Boxer"_s);
    EXPECT_EQ(Hallada(Lista::Raza, QString()), u"-"_s);
    EXPECT_EQ(Completar(s, Lista::Raza, u"boy"_s).hallada->padre, 1);

    for (int i = 0; i < 7; ++i)
        SubirRanking(s, "mlrazas", 10);
    EXPECT_EQ(Hallada(Lista::Raza, u"bo"_s), u"Boxer|bOyero|Bobtail"_s);

    Raza(14, u"Dogo"_s, 1, 31999);
    SubirRanking(s, "mlrazas", 14);
    SubirRanking(s, "mlrazas", 14);
    EXPECT_EQ(Filas(*s.clientes, "select ran from mlrazas where id = 14"), u"32000\n"_s)
        << "where the column ends";
}

TEST_F(ListasDeReferencia, TypedSignsAreNoWildcardsAndAccentsCount)
{
    const QString signos = u"#1 [a] d'or?"_s;
    for (const QString &nom : {u"Mestizo"_s, u"*raro"_s, signos, u"Águila"_s})
        Raza(10, nom);
    EXPECT_EQ(Hallada(Lista::Raza, u"*"_s), u"*raro"_s);
    EXPECT_EQ(Hallada(Lista::Raza, signos), signos);
    EXPECT_EQ(Hallada(Lista::Raza, u"ág"_s), u"Águila"_s);
    for (const QString &nada : {u"?"_s, u"[m]"_s, u"ag"_s})
        EXPECT_EQ(Hallada(Lista::Raza, nada), u"-"_s) << nada.toStdString();
}

TEST_F(ListasDeReferencia, TheHintTellsWhatComesAlongOrHowToEnterANewName)
{
    Raza(10, u"Boxer"_s, 1, 3);
    Raza(11, u"Boyero"_s, 99, 1);
    const int canelones = AsegurarRegion(s, u"Canelones"_s, u"0433"_s);
    AsegurarSubregion(s, u"Pando"_s, u"91000"_s, canelones);
    const auto aviso = [&](Lista lista, const QString &texto) {
        return AvisoDeCompletado(s, lista, Completar(s, lista, texto));
    };
    EXPECT_EQ(aviso(Lista::Raza, u"bo"_s), u"Boxer +-> Canino. Breed found. Others: Boyero"_s);
    EXPECT_EQ(aviso(Lista::Raza, u"boy"_s), u"Item found."_s); // its species is gone
    EXPECT_EQ(aviso(Lista::Subregion, u"pa"_s), u"Pando +-> Canelones. Item found."_s);
    EXPECT_EQ(aviso(Lista::Region, u"can"_s), u"Canelones +-> 0433. Item found."_s);
    EXPECT_EQ(aviso(Lista::Region, u"x"_s), s(9402));
    EXPECT_EQ(aviso(Lista::Subregion, u"x"_s), s(2254));
    EXPECT_EQ(aviso(Lista::Raza, u"x"_s), s(2255));

    Lote lote(s);
    for (int i = 0; i < 300; ++i)
        Raza(100 + i, u"Zeta %1"_s.arg(i), 0, 0);
    EXPECT_LT(aviso(Lista::Raza, u"z"_s).size(), 200); // a line, not a page
}

TEST_F(ListasDeReferencia, KnownNamesTakeTheCodeTypedAndKeepTheRest)
{
    const int norte = AsegurarRegion(s, u" Norte "_s, u"041"_s);
    const int sur = AsegurarRegion(s, u"Sur"_s, QString());
    EXPECT_EQ(AsegurarRegion(s, u"NORTE"_s, u"042"_s), norte);
    EXPECT_EQ(AsegurarRegion(s, u"norte"_s, QString()), norte); // nothing typed clears nothing
    EXPECT_EQ(AsegurarRegion(s, u"  "_s, u"9"_s), 0);
    EXPECT_EQ(Filas(*s.clientes, "select id, nom, ctel, ran from cldepartamento"),
              u"%1|Norte|042|0\n%2|Sur||0\n"_s.arg(norte).arg(sur));

    const int zona = AsegurarSubregion(s, u"Zona 6"_s, u"100"_s, norte);
    EXPECT_EQ(AsegurarSubregion(s, u"zona 6"_s, u"101"_s, sur), zona); // its region stays
    EXPECT_EQ(Filas(*s.clientes, "select id, nom, cp, dep from cllocalidad"),
              u"%1|Zona 6|101|%2\n"_s.arg(zona).arg(norte));

    const int boxer = AsegurarRaza(s, u"Boxer"_s, 1);
    EXPECT_EQ(AsegurarRaza(s, u"bóxer"_s, 2), boxer + 1); // an accent makes another name
    EXPECT_EQ(AsegurarRaza(s, u"BOXER"_s, 2), boxer);
    EXPECT_EQ(EntradaPorId(s, Lista::Raza, boxer)->padre, 1);
    CambiarEspecieDeRaza(s, boxer, 3);
    EXPECT_EQ(EntradaPorNombre(s, Lista::Raza, u"boxer"_s)->padre, 3);
}

TEST_F(ListasDeReferencia, ListsStandByNameWithAccentsAmongTheirLetters)
{
    for (const char16_t *nom : {u"Zorro", u"negro", u"Árbol", u"blanco"})
        s.clientes->Execute("insert into mlpelajes (id, nom) values (1, ?)", nom);
    QStringList nombres;
    for (const Entrada &e : CargarLista(s, Lista::Pelaje))
        nombres << e.nom;
    EXPECT_EQ(nombres.join(u'|'), u"Árbol|blanco|negro|Zorro"_s);
}

TEST_F(ListasDeReferencia, ANumberHasNoLetter)
{
    for (const QString &t : {u"6"_s, u" 1.500,20 "_s, u"-3"_s, u"+598"_s, u"0341"_s, u".5"_s})
        EXPECT_TRUE(EsNumerico(t)) << t.toStdString();
    for (const QString &t :
         {QString(), u" "_s, u"-"_s, u"."_s, u"z6"_s, u"25 de Mayo"_s, u"1-2"_s, u"1e5"_s})
        EXPECT_FALSE(EsNumerico(t)) << t.toStdString();
    // What cannot be a name has no letter either, number or not.
    for (const QString &t : {u"6"_s, u" 1-2 "_s, u"(-)"_s, u"#"_s})
        EXPECT_TRUE(SinLetras(t)) << t.toStdString();
    for (const QString &t : {QString(), u" "_s, u"z6"_s, u"6 ñ"_s, u"中"_s})
        EXPECT_FALSE(SinLetras(t)) << t.toStdString();
}

TEST_F(ListasDeReferencia, MailDomainsAreLearntAndOfferedBehindTheSign)
{
    s.clientes->Execute("delete * from email");
    s.clientes->Execute("insert into clientes (idc, faltamail) values (5, -1)");
    EXPECT_FALSE(AsentarCorreo(s, u"sin direccion"_s, 5));
    AsentarCorreo(s, u"ana@Vet.example, eva@granja.example "_s, 0); // of a new client
    EXPECT_EQ(Filas(*s.clientes, "select faltamail from clientes"), u"-1\n"_s);
    EXPECT_TRUE(AsentarCorreo(s, u"ana@vet.example"_s, 5));
    const qint64 written = s.clientes->Version("clientes");
    EXPECT_FALSE(AsentarCorreo(s, u"ana@VET.example"_s, 5));
    EXPECT_EQ(s.clientes->Version("clientes"), written) << "no list need be read again";
    EXPECT_EQ(Filas(*s.clientes, "select faltamail from clientes"), u"0\n"_s);
    EXPECT_EQ(DominiosConocidos(s).join(u'|'), u"granja.example|vet.example"_s);

    EXPECT_EQ(CompletarDominio(s, u"eva@GR"_s), u"granja.example"_s);
    EXPECT_EQ(CompletarDominio(s, u"ana@vet.example,eva@v"_s), u"vet.example"_s);
    for (const QString &t : {u"vet"_s, u"ana@"_s, u"ana@x"_s, u"ana@*"_s, u"ana@vet.example, "_s})
        EXPECT_EQ(CompletarDominio(s, t), QString()) << t.toStdString();
}
