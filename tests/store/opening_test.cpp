// Finding and opening a data folder, and what is told when it cannot be opened.

#include "store/lookups.h"
#include "store/schema.h"
#include "support/clinic.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace
{

class Apertura : public Clinica
{
protected:
    // Opens the folder with another session, as a program that starts now would.
    std::optional<FallaDeApertura> Abrir()
    {
        Sesion otra(ask, impresion, Idioma::Ingles);
        FijarCarpetaDeDatos(otra, carpeta.path());
        return AbrirAlmacen(otra);
    }
    static QByteArray Leer(const QString &archivo)
    {
        QFile f(archivo);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    static void Escribir(const QString &archivo, const QByteArray &bytes)
    {
        QFile f(archivo);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(bytes);
    }
    void Ruta(const QByteArray &contenido) { Escribir(carpeta.filePath(u"ruta.txt"_s), contenido); }
};

} // namespace

TEST_F(Apertura, FilesAreEncryptedAndHoldNoName)
{
    s.clientes->Execute("insert into Clientes (idc, ayn) values (1, ?)", u"Zzyzxclient"_s);
    for (const QString &base : BasesDeDatos()) {
        const QByteArray bytes = Leer(carpeta.filePath(ArchivoDe(base)));
        EXPECT_GT(bytes.size(), 4096);
        EXPECT_FALSE(bytes.startsWith("SQLite format"));
        EXPECT_FALSE(bytes.contains("Zzyzxclient"));
    }
}

TEST_F(Apertura, MissingAndDamagedFilesAreToldAndLeftAsTheyAre)
{
    for (const QString &base : {u"morvane"_s, u"clientes"_s, u"finanzas"_s}) {
        const QString archivo = carpeta.filePath(ArchivoDe(base));
        const QByteArray bytes = Leer(archivo);
        ASSERT_TRUE(QFile::rename(archivo, archivo + u'x'));
        const auto sin = Abrir();
        ASSERT_TRUE(sin);
        EXPECT_EQ(sin->numero, ErrorNum::BaseNoEncontrada);
        EXPECT_TRUE(sin->texto.startsWith(u"Can not open the database."_s));
        ASSERT_TRUE(QFile::rename(archivo + u'x', archivo));
        for (const QByteArray &roto : {"this is a text"_ba, QByteArray(8192, 'x'), QByteArray(),
                                       bytes.left(bytes.size() / 2 / 4096 * 4096)}) {
            Escribir(archivo, roto);
            const auto falla = Abrir();
            ASSERT_TRUE(falla) << roto.size();
            EXPECT_EQ(falla->numero, ErrorNum::BaseDanada) << roto.size();
            EXPECT_TRUE(falla->texto.contains(ArchivoDe(base)));
            EXPECT_EQ(Leer(archivo), roto);
        }
        Escribir(archivo, bytes);
        EXPECT_FALSE(Abrir());
    }
    s.morvane->Execute("delete * from configuracion");
    ASSERT_TRUE(Abrir());
    EXPECT_EQ(Abrir()->texto, s(9006));
}

TEST_F(Apertura, NamesOfFilesAndFoldersAreFoundInAnyLetterCase)
{
    QDir d(carpeta.path());
    ASSERT_TRUE(d.rename(u"clientes.mdb"_s, u"CLIENTES.MDB"_s));
    ASSERT_TRUE(d.rename(u"reportes"_s, u"Reportes"_s));
    EXPECT_FALSE(Abrir());
    EXPECT_TRUE(AbrirAuxiliar(s, u"rep97"_s).ExisteTabla("cumple"));
    EXPECT_EQ(RutaBajo(carpeta.path(), u"REPORTES\\REP97.MDB"_s),
              carpeta.filePath(u"Reportes/rep97.mdb"_s));
}

TEST_F(Apertura, ThePathFileIsReadWhateverEditorWroteIt)
{
    const QString p = carpeta.path() + u'/';
    EXPECT_EQ(LeerRuta(p), p); // no file: the program folder
    const std::pair<const char *, QString> archivos[] = {
        {"/srv/clinica\n", u"/srv/clinica/"_s},
        {"\xEF\xBB\xBF/srv/cl\xC3\xADnica/ \r\nsecond line", u"/srv/clínica/"_s},
        {"  /srv/dos  casas \t\r\n", u"/srv/dos  casas/"_s},
        {"", p},
        {"\r\n", p},
        {"   \n/srv/x", p}};
    for (const auto &[contenido, leida] : archivos) {
        Ruta(contenido);
        EXPECT_EQ(LeerRuta(p), leida);
    }

    // The program folder itself, in other letters, is no network.
    qputenv("KELVARA_HOME", carpeta.path().toUtf8());
    Ruta(carpeta.path().toUpper().toUtf8());
    Sesion otra(ask, impresion, Idioma::Ingles);
    FijarCarpetaDeDatos(otra, {});
    EXPECT_FALSE(otra.EnRed);
    Ruta("/srv/clinica");
    FijarCarpetaDeDatos(otra, {});
    EXPECT_TRUE(otra.EnRed);
    qunsetenv("KELVARA_HOME");
}

TEST_F(Apertura, ErrorsAreLoggedAndTold)
{
    ask.Espera(u"An error occurred."_s);
    RegistrarError(s, 3061, u"x"_s.repeated(600), u"Tareas de Inicio. "_s);
    EXPECT_EQ(Filas(*s.morvane, "select num, len(des), fec, fuente from errores"),
              u"3061|255|2026-03-11|Tareas de Inicio. \n"_s);
    s.morvane->Execute("DROP TABLE errores");
    ask.Espera(u"An error occurred."_s);
    RegistrarError(s, 1, u"nowhere to write"_s, u"x"_s); // the log itself is gone
}

TEST_F(Apertura, TheScriptedPromptsFailOnWhatWasNotExpected)
{
    QStringList faltas;
    {
        DialogosDePrueba d;
        d.faltas = &faltas;
        d.Espera(u"One"_s, false);
        d.Espera(u"Two"_s);
        EXPECT_FALSE(d.Pregunta(u"Number One?"_s));
        d.Mensaje(u"Three"_s);
        d.Mensaje(u"Four"_s);
        d.Espera(u"Five"_s);
    }
    EXPECT_EQ(faltas, (QStringList{u"expected 'Two', got 'Three'"_s, u"not expected: Four"_s,
                                   u"never asked: Five"_s}));
}
