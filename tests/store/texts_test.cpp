#include "store/texts.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace store;
using namespace Qt::StringLiterals;

TEST(Texts, TheTableIsWhole)
{
    QString text;
    for (const QString &name : QDir(u":/strings"_s).entryList()) {
        QFile f(u":/strings/"_s + name);
        ASSERT_TRUE(f.open(QIODevice::ReadOnly));
        text += QString::fromUtf8(f.readAll()) + u'\n';
    }
    QStringList errores;
    const auto table = Texts::read(text, &errores);
    EXPECT_TRUE(errores.isEmpty()) << errores.join(u'\n').toStdString();
    EXPECT_GE(table.size(), 602);
    // Tags must be in every language, or a letter would lack its client.
    for (auto i = table.begin(); i != table.end(); ++i)
        for (const QString &t : i.value())
            EXPECT_EQ(t.count(u'<'), i.value().front().count(u'<')) << i.key();
}

TEST(Texts, LanguagesAreToldApartAndAGapIsSeen)
{
    EXPECT_EQ(codeLanguage(u"es_UY"_s), Language::Spanish);
    EXPECT_EQ(codeLanguage(u"pt"_s), Language::Portuguese);
    EXPECT_EQ(codeLanguage(u"de_CH"_s), Language::English);
    EXPECT_EQ(Texts(Language::Portuguese)(2), u"PT"_s);
    EXPECT_EQ(Texts(Language::English)(1112), u"Debt reminder "_s); // keeps its trailing blank
    EXPECT_EQ(Texts(Language::Spanish)(8888), u"#8888"_s);
}

TEST(Texts, FaultsOfATableAreFound)
{
    const auto faults = [](const QString &table) {
        QStringList e;
        Texts::read(table, &e);
        return e.join(u'\n');
    };
    EXPECT_EQ(faults(u"1\n es \"a\"\n pt \"b\"\n en \"c\\n\\\"\"\n"_s), QString());
    EXPECT_EQ(faults(u"1\n es \"a\"\n en \"c\"\n"_s), u"1: no text in pt"_s);
    EXPECT_EQ(faults(u"1\n es \"a \"\n pt \"b \"\n en \"c\"\n"_s),
              u"1: blanks at the ends differ"_s);
    EXPECT_TRUE(faults(u"1\n es \"a\"\n pt \"b\"\n en \"c\"\n1\n es \"a\"\n"_s)
                    .contains(u"1: number twice"_s));
    EXPECT_TRUE(faults(u"1\n es \"a\" x\n"_s).contains(u"line 2 cannot be read"_s));
    EXPECT_TRUE(faults(u"1\n es \"a\\q\"\n"_s).contains(u"line 2 cannot be read"_s));
}
