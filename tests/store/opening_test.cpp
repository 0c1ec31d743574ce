// Finding and opening a data folder, and the messages when it cannot be opened.

#include "store/lookups.h"
#include "store/schema.h"
#include "support/clinic.h"
#include "texts/texts.h"

#include <QDir>
#include <QFile>

using namespace store;
using namespace Qt::StringLiterals;

namespace
{

class Opening : public Clinic
{
protected:
    // Opens the folder in another session, like a program starting now.
    std::optional<OpeningFailure> open()
    {
        Sesion other(ask, impresion, Language::English);
        setDataFolder(other, folder.path());
        return openStore(other);
    }
    static QByteArray read(const QString &file)
    {
        QFile f(file);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    static void write(const QString &file, const QByteArray &bytes)
    {
        QFile f(file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(bytes);
    }
    void path(const QByteArray &content) { write(folder.filePath(u"ruta.txt"_s), content); }
};

} // namespace

TEST_F(Opening, FilesAreEncryptedAndHoldNoName)
{
    s.clientes->Execute("insert into Clientes (idc, ayn) values (1, ?)", u"Zzyzxclient"_s);
    for (const QString &base : databases()) {
        const QByteArray bytes = read(folder.filePath(fileOf(base)));
        EXPECT_GT(bytes.size(), 4096);
        EXPECT_FALSE(bytes.startsWith("SQLite format"));
        EXPECT_FALSE(bytes.contains("Zzyzxclient"));
    }
}

TEST_F(Opening, MissingAndDamagedFilesAreToldAndLeftAsTheyAre)
{
    closeStore(s);
    for (const QString &base : {u"morvane"_s, u"clientes"_s, u"finanzas"_s}) {
        const QString file = folder.filePath(fileOf(base));
        const QByteArray bytes = read(file);
        ASSERT_TRUE(QFile::rename(file, file + u'x'));
        const auto sin = open();
        ASSERT_TRUE(sin);
        EXPECT_EQ(sin->number, ErrorNumber::DatabaseNotFound);
        EXPECT_TRUE(sin->text.startsWith(u"Can not open the database."_s));
        ASSERT_TRUE(QFile::rename(file + u'x', file));
        for (const QByteArray &broken : {"this is a text"_ba, QByteArray(8192, 'x'), QByteArray(),
                                         bytes.left(bytes.size() / 2 / 4096 * 4096)}) {
            write(file, broken);
            const auto failure = open();
            ASSERT_TRUE(failure) << broken.size();
            EXPECT_EQ(failure->number, ErrorNumber::DatabaseDamaged) << broken.size();
            EXPECT_TRUE(failure->text.contains(fileOf(base)));
            EXPECT_EQ(read(file), broken);
        }
        write(file, bytes);
        EXPECT_FALSE(open());
    }
    reopen();
    s.morvane->Execute("delete * from configuracion");
    ASSERT_TRUE(open());
    EXPECT_EQ(open()->text, s(text::SettingsRowMissing));
}

TEST_F(Opening, NamesOfFilesAndFoldersAreFoundInAnyLetterCase)
{
    QDir d(folder.path());
    ASSERT_TRUE(d.rename(u"clientes.mdb"_s, u"CLIENTES.MDB"_s));
    ASSERT_TRUE(d.rename(u"reportes"_s, u"Reportes"_s));
    EXPECT_FALSE(open());
    EXPECT_TRUE(s.rep97->catalogue().find("cumple"));
    EXPECT_EQ(pathUnder(folder.path(), u"REPORTES\\REP97.MDB"_s),
              folder.filePath(u"Reportes/rep97.mdb"_s));
}

TEST_F(Opening, ThePathFileIsReadWhateverEditorWroteIt)
{
    const QString p = folder.path() + u'/';
    EXPECT_EQ(readPath(p), p); // no file: the program folder
    const std::pair<const char *, QString> files[] = {
        {"/srv/clinica\n", u"/srv/clinica/"_s},
        {"datos/clinica\n", p + u"datos/clinica/"_s},
        {"\xEF\xBB\xBF/srv/cl\xC3\xADnica/ \r\nsecond line", u"/srv/clínica/"_s},
        {"  /srv/dos  casas \t\r\n", u"/srv/dos  casas/"_s},
        {"", p},
        {"\r\n", p},
        {"   \n/srv/x", p}};
    for (const auto &[content, loaded] : files) {
        path(content);
        EXPECT_EQ(readPath(p), loaded);
    }

    // Neither the program folder in other letter case nor a given folder makes a terminal.
    qputenv("KELVARA_HOME", folder.path().toUtf8());
    path(folder.path().toUpper().toUtf8());
    Sesion other(ask, impresion, Language::English);
    setDataFolder(other, {});
    EXPECT_FALSE(other.EnRed);
    path("/srv/clinica");
    setDataFolder(other, {});
    EXPECT_TRUE(other.EnRed);
    setDataFolder(other, u"/srv/clinica"_s);
    EXPECT_FALSE(other.EnRed);
    path("../clinica"); // relative to the program, not to the working directory
    setDataFolder(other, {});
    EXPECT_TRUE(other.EnRed);
    EXPECT_EQ(other.dataFolder, QDir::cleanPath(p + u"../clinica"_s) + u'/');
    qunsetenv("KELVARA_HOME");
}

TEST_F(Opening, ErrorsAreLoggedAndTold)
{
    ask.wait(u"An error occurred."_s);
    RegistrarError(s, 3061, u"x"_s.repeated(600), u"Tareas de Inicio. "_s);
    EXPECT_EQ(allRows(*s.morvane, "select num, len(des), fec, fuente from errores"),
              u"3061|255|2026-03-11|Tareas de Inicio. \n"_s);
    s.morvane->Execute("DROP TABLE errores");
    ask.wait(u"An error occurred."_s);
    RegistrarError(s, 1, u"nowhere to write"_s, u"x"_s); // the log itself is missing
}

TEST_F(Opening, TheScriptedPromptsFailOnWhatWasNotExpected)
{
    QStringList faults;
    {
        TestDialogs d;
        d.faults = &faults;
        d.wait(u"One"_s, false);
        d.wait(u"Two"_s);
        EXPECT_FALSE(d.Pregunta(u"Number One?"_s));
        d.Mensaje(u"Three"_s);
        d.Mensaje(u"Four"_s);
        d.wait(u"Five"_s);
    }
    EXPECT_EQ(faults, (QStringList{u"expected 'Two', got 'Three'"_s, u"not expected: Four"_s,
                                   u"never asked: Five"_s}));
}
