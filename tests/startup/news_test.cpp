#include "startup/news.h"
#include "support/clinic.h"

#include <QFile>

using namespace startup;
using namespace Qt::StringLiterals;

TEST(NewsItem, ReadsADayAndATextInTheFormsInWhichTheyAreWritten)
{
    const struct {
        QByteArray file;
        store::Language language;
        const char *loaded; // "" for nothing
    } cases[] = {
        {"2026-11-30,Hello", store::Language::English, "2026-11-30 Hello"},
        {"#2026-11-30#,\"Hello, friends\"\r\n", store::Language::English,
         "2026-11-30 Hello, friends"},
        {"\"2026-11-30\" , \"Hello\" \nmore", store::Language::English, "2026-11-30 Hello"},
        {"2026-11-30\r\n\"Hello, friends\"\r\n", store::Language::English,
         "2026-11-30 Hello, friends"},
        {"#2026-11-30 00:00:00#,Hello", store::Language::English, "2026-11-30 Hello"},
        {"\xEF\xBB\xBF\"2/3/2026\",A\xC3\xB1o", store::Language::English, "2026-02-03 Año"},
        {"2/3/2026,Hola", store::Language::Spanish, "2026-03-02 Hola"},
        {"2/3/2026,Oi", store::Language::Portuguese, "2026-03-02 Oi"},
        {"13/3/2026,Hello", store::Language::English, ""},
        {"2026-02-30,Hello", store::Language::English, ""},
        {"2026-11-30", store::Language::English, ""},
        {"2026-11-30,\"\"", store::Language::English, ""},
        {",Hello", store::Language::English, ""},
        {"", store::Language::English, ""},
        {QByteArray("\0\xff,\0", 4), store::Language::English, ""},
    };
    TestDialogs ask;
    store::NoPrinting impresion;
    const QTemporaryDir folder;
    const QString ruta = folder.path() + u"/news.txt"_s;
    for (const auto &c : cases) {
        QFile f(ruta);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(c.file);
        f.close();
        const auto n = readNewsItem(Sesion(ask, impresion, c.language), ruta);
        const QString loaded = n ? n->until.toString(Qt::ISODate) + u' ' + n->text : QString();
        EXPECT_EQ(loaded.toStdString(), c.loaded) << c.file.constData();
    }
    EXPECT_FALSE(readNewsItem(Sesion(ask, impresion, store::Language::English), ruta + u'x'));
}
