#include "store/texts.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Textos, TheTableIsWhole)
{
    QString texto;
    for (const QString &nombre : QDir(u":/strings"_s).entryList()) {
        QFile f(u":/strings/"_s + nombre);
        ASSERT_TRUE(f.open(QIODevice::ReadOnly));
        texto += QString::fromUtf8(f.readAll()) + u'\n';
    }
    QStringList errores;
    const auto tabla = Textos::Leer(texto, &errores);
    EXPECT_TRUE(errores.isEmpty()) << errores.join(u'\n').toStdString();
    EXPECT_GE(tabla.size(), 602);
    // Tags stand in every language, or a letter would lose its client.
    for (auto i = tabla.begin(); i != tabla.end(); ++i)
        for (const QString &t : i.value())
            EXPECT_EQ(t.count(u'<'), i.value().front().count(u'<')) << i.key();
}

TEST(Textos, LanguagesAreToldApartAndAGapIsSeen)
{
    EXPECT_EQ(IdiomaDeCodigo(u"es_UY"_s), Idioma::Espanol);
    EXPECT_EQ(IdiomaDeCodigo(u"pt"_s), Idioma::Portugues);
    EXPECT_EQ(IdiomaDeCodigo(u"de_CH"_s), Idioma::Ingles);
    EXPECT_EQ(Textos(Idioma::Portugues)(2), u"PT"_s);
    EXPECT_EQ(Textos(Idioma::Ingles)(1112), u"Debt reminder "_s); // with its blank
    EXPECT_EQ(Textos(Idioma::Espanol)(8888), u"#8888"_s);
}

TEST(Textos, FaultsOfATableAreFound)
{
    const auto faltas = [](const QString &tabla) {
        QStringList e;
        Textos::Leer(tabla, &e);
        return e.join(u'\n');
    };
    EXPECT_EQ(faltas(u"1\n es \"a\"\n pt \"b\"\n en \"c\\n\\\"\"\n"_s), QString());
    EXPECT_EQ(faltas(u"1\n es \"a\"\n en \"c\"\n"_s), u"1: no text in pt"_s);
    EXPECT_EQ(faltas(u"1\n es \"a \"\n pt \"b \"\n en \"c\"\n"_s),
              u"1: blanks at the ends differ"_s);
    EXPECT_TRUE(faltas(u"1\n es \"a\"\n pt \"b\"\n en \"c\"\n1\n es \"a\"\n"_s)
                    .contains(u"1: number twice"_s));
    EXPECT_TRUE(faltas(u"1\n es \"a\" x\n"_s).contains(u"line 2 cannot be read"_s));
    EXPECT_TRUE(faltas(u"1\n es \"a\\q\"\n"_s).contains(u"line 2 cannot be read"_s));
}
