#include "startup/news.h"
#include "support/clinic.h"

#include <QFile>

using namespace Qt::StringLiterals;

TEST(Novedad, ReadsADayAndATextInTheFormsInWhichTheyAreWritten)
{
    const struct {
        QByteArray archivo;
        Idioma idioma;
        const char *leido; // "" for nothing
    } casos[] = {
        {"2026-11-30,Hello", Idioma::Ingles, "2026-11-30 Hello"},
        {"#2026-11-30#,\"Hello, friends\"\r\n", Idioma::Ingles, "2026-11-30 Hello, friends"},
        {"\"2026-11-30\" , \"Hello\" \nmore", Idioma::Ingles, "2026-11-30 Hello"},
        {"2026-11-30\r\n\"Hello, friends\"\r\n", Idioma::Ingles, "2026-11-30 Hello, friends"},
        {"#2026-11-30 00:00:00#,Hello", Idioma::Ingles, "2026-11-30 Hello"},
        {"\xEF\xBB\xBF\"2/3/2026\",A\xC3\xB1o", Idioma::Ingles, "2026-02-03 Año"},
        {"2/3/2026,Hola", Idioma::Espanol, "2026-03-02 Hola"},
        {"2/3/2026,Oi", Idioma::Portugues, "2026-03-02 Oi"},
        {"13/3/2026,Hello", Idioma::Ingles, ""},
        {"2026-02-30,Hello", Idioma::Ingles, ""},
        {"2026-11-30", Idioma::Ingles, ""},
        {"2026-11-30,\"\"", Idioma::Ingles, ""},
        {",Hello", Idioma::Ingles, ""},
        {"", Idioma::Ingles, ""},
        {QByteArray("\0\xff,\0", 4), Idioma::Ingles, ""},
    };
    DialogosDePrueba ask;
    SinImpresion impresion;
    const QTemporaryDir carpeta;
    const QString ruta = carpeta.path() + u"/news.txt"_s;
    for (const auto &c : casos) {
        QFile f(ruta);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(c.archivo);
        f.close();
        const auto n = LeerNovedad(Sesion(ask, impresion, c.idioma), ruta);
        const QString leido = n ? n->hasta.toString(Qt::ISODate) + u' ' + n->texto : QString();
        EXPECT_EQ(leido.toStdString(), c.leido) << c.archivo.constData();
    }
    EXPECT_FALSE(LeerNovedad(Sesion(ask, impresion, Idioma::Ingles), ruta + u'x'));
}
