// The data folder as a whole: several sessions in it, copies made while they work, folders of other
// versions, and damaged files.

#include "store/lookups.h"
#include "store/schema.h"
#include "store/sqlcipher/connection.h"
#include "store/sqlcipher/files.h"
#include "store/upkeep.h"
#include "support/clinic.h"
#include "texts/texts.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <sys/stat.h>

using namespace store;
using namespace Qt::StringLiterals;

namespace
{

class Folder : public Clinic
{
protected:
    /// Another session on the same folder.
    struct Terminal {
        TestDialogs ask;
        TestPrinting printing;
        Sesion s{ask, printing, Language::English};
        std::optional<OpeningFailure> failure;
        explicit Terminal(const QString &folder)
        {
            setDataFolder(s, folder);
            failure = openStore(s);
        }
        int number() const { return failure ? failure->number : 0; }
    };

    QString file(const QString &base) { return folder.filePath(fileOf(base)); }
    static QByteArray bytesOf(const QString &path)
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
    static void write(const QString &path, const QByteArray &bytes, qint64 at = 0)
    {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::ReadWrite));
        f.seek(at);
        f.write(bytes);
    }
    /// Runs the engine's own SQL on a file while the store is closed.
    void runRaw(const QString &base, const std::string &sql)
    {
        sqlcipher::run(sqlcipher::openFile(file(base), false).get(), sql);
    }
    /// Number of the first page of a table or an index.
    qint64 pageOf(const QString &base, const QString &name)
    {
        const auto db = sqlcipher::openFile(file(base), false);
        const auto st =
            sqlcipher::prepare(db.get(), "SELECT rootpage FROM sqlite_master WHERE name = '"
                                             + name.toStdString() + '\'');
        return sqlite3_step(st.get()) == SQLITE_ROW ? sqlite3_column_int64(st.get(), 0) : 0;
    }
    void damage(const QString &base, qint64 page)
    {
        write(file(base), "not what was written here", (page - 1) * 4096 + 100);
    }
    QStringList beside(const QString &pattern)
    {
        return QDir(folder.path()).entryList({pattern}, QDir::AllEntries | QDir::NoDotAndDotDot);
    }
    void clients(int n)
    {
        Lote batch(s);
        for (int idc = 1; idc <= n; ++idc)
            s.clientes->Execute("insert into Clientes (idc, ayn, dir) values (?, ?, ?)", idc,
                                u"Client %1"_s.arg(idc), QString(40, QChar(u'a' + idc % 26)));
        batch.commit();
    }
    QString names() { return allRows(*s.clientes, "select idc, ayn, dir from Clientes"); }
};

QString copyOf(Sesion &s, const QString &folder, const QString &base)
{
    copyDatabases(s, folder);
    return pathUnder(folder, fileOf(base));
}

} // namespace

// --- Several sessions ---

TEST_F(Folder, ASessionIsAloneWhileNobodyElseIsThere)
{
    EXPECT_TRUE(ProbarExclusivo(s));
    {
        const Terminal other(folder.path());
        ASSERT_FALSE(other.failure);
        EXPECT_FALSE(ProbarExclusivo(s));
        EXPECT_FALSE(Alone(s));
    }
    const auto enters = [this] {
        return s.motor->lock(u"kelvara.sesiones"_s, 0, {}, Lock::Mode::Shared)->isHeld();
    };
    {
        const Alone alone(s);
        EXPECT_TRUE(alone);
        EXPECT_FALSE(enters());
        EXPECT_TRUE(
            s.motor->lockHolder(u"kelvara.sesiones"_s).startsWith(QSysInfo::machineHostName()));
    }
    EXPECT_TRUE(enters());
    closeStore(s);
    EXPECT_FALSE(ProbarExclusivo(s)); // a closed session cannot take the lock
}

TEST_F(Folder, LocksAreForAllAccountsThatHaveTheDatabases)
{
    closeStore(s);
    const QByteArray model = QFile::encodeName(file(u"morvane"_s));
    for (const mode_t mode : {0660, 0666, 0600}) {
        ASSERT_EQ(::chmod(model.constData(), mode), 0);
        const mode_t before = ::umask(077);
        reopen();
        const auto dia = s.motor->lock(u"kelvara.dia"_s, 0);
        ::umask(before);
        for (const QString &lock : {u"kelvara.sesiones"_s, u"kelvara.dia"_s}) {
            struct stat st {
            };
            ::stat(QFile::encodeName(folder.filePath(lock)).constData(), &st);
            EXPECT_EQ(st.st_mode & 0777, mode) << lock.toStdString();
        }
    }
}

TEST_F(Folder, WhoeverWaitsForTheDiskIsToldAndCanRunNothingMeanwhile)
{
    Terminal other(folder.path());
    auto batch = std::make_unique<Lote>(other.s);
    int told = 0, refused = 0;
    s.motor->whileWaiting([&](int ms) {
        ++told;
        EXPECT_GE(ms, 0);
        try {
            s.morvane->read("select Ver from configuracion");
        } catch (const StoreError &e) {
            refused += e.number == ErrorNumber::Locked;
        }
        if (told == 5)
            batch.reset();
    });
    s.morvane->Execute("update configuracion set Ver = Ver");
    EXPECT_EQ(told, 5);
    EXPECT_EQ(refused, 5);

    // It gives up when its patience runs out.
    const Lote again(other.s);
    s.motor->setPatience(200);
    QElapsedTimer clock;
    clock.start();
    EXPECT_THROW(s.morvane->Execute("update configuracion set Ver = Ver"), StoreError);
    EXPECT_GE(clock.elapsed(), 200);
    EXPECT_LT(clock.elapsed(), 20000);
}

TEST_F(Folder, ScratchTablesAreEachSessionsOwn)
{
    Terminal other(folder.path());
    const QByteArray before = bytesOf(file(u"rep97"_s));
    {
        Lote batch(s); // also inside a batch
        s.rep97->Execute("insert into cumple (mascota) values ('Ours')");
        batch.commit();
    }
    other.s.rep97->Execute("insert into cumple (mascota) values ('Theirs')");
    EXPECT_EQ(allRows(*s.rep97, "select mascota from cumple"), u"Ours\n"_s);
    EXPECT_EQ(allRows(*other.s.rep97, "select mascota from cumple"), u"Theirs\n"_s);
    {
        Lote batch(s);
        s.rep97->Execute("delete * from cumple");
    }
    EXPECT_EQ(allRows(*s.rep97, "select mascota from cumple"), u"Ours\n"_s);
    EXPECT_EQ(bytesOf(file(u"rep97"_s)), before);
}

TEST_F(Folder, AStoreIsClosedAndOpenedAgainInOneSession)
{
    clients(3);
    const Recordset kept = s.clientes->OpenSnapshot("select * from Clientes");
    const qint64 version = s.clientes->version("Clientes");
    closeStore(s);
    EXPECT_THROW(kept["ayn"], StoreError);
    logError(s, 1, u"nobody can write this down"_s, {}); // must not fail
    for (const QString &fd : QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System))
        EXPECT_FALSE(QFile::symLinkTarget(u"/proc/self/fd/"_s + fd).endsWith(u".mdb"_s));
    reopen();
    EXPECT_NE(s.clientes->version("Clientes"), version); // rows cached before are stale
    EXPECT_EQ(s.lists.clientes.RecordCount(), 3);
    EXPECT_EQ(s.os->read("select count(*) from planes").toInt(), 0);
}

// --- Copies ---

TEST_F(Folder, EveryCopyIsWholeAndOfOneMoment)
{
    constexpr int Rows = 50;
    // For longer runs by hand, set KELVARA_COPIES="processes copies".
    const QStringList asked = qEnvironmentVariable("KELVARA_COPIES", u"2 4"_s).split(u' ');
    {
        Lote batch(s);
        for (int i = 1; i <= Rows; ++i) {
            s.finanzas->Execute("insert into Articulos (ida, can) values (?, 1000)", 9000 + i);
            s.morvane->Execute("insert into Perfiles (idc) values (?)", i);
        }
        batch.commit();
    }
    std::vector<std::unique_ptr<QProcess>> movers;
    for (int i = 0; i < asked[0].toInt(); ++i) {
        movers.push_back(std::make_unique<QProcess>());
        movers.back()->start(QStringLiteral(AMOUNT_MOVER), {folder.path(), QString::number(i)});
        ASSERT_TRUE(movers.back()->waitForStarted());
    }
    const auto moved = [](const QString &from) {
        const auto motor = createFileEngine(from);
        for (const char *base : {"morvane", "finanzas"})
            motor->open(base);
        const Reloj clock;
        Base morvane(*motor, "morvane", clock), finanzas(*motor, "finanzas", clock);
        const qint64 there = morvane.read("select sum(buenascompras) from Perfiles").toLong();
        EXPECT_EQ(finanzas.read("select sum(can) from Articulos where ida > 9000").toLong() + there,
                  1000 * Rows);
        return there;
    };
    const QString to = folder.filePath(u"copy"_s);
    QElapsedTimer clock;
    qint64 longest = 0, last = 0;
    for (int i = 0; i < asked[1].toInt(); ++i) {
        while (s.morvane->read("select sum(buenascompras) from Perfiles").toLong() <= last)
            QThread::msleep(5); // until the processes have moved something
        clock.start();
        copyDatabases(s, to); // replaces the copy before
        longest = std::max(longest, clock.elapsed());
        for (const QString &base : clinicDatabases())
            EXPECT_EQ(sqlcipher::checkFile(pathUnder(to, fileOf(base))), "ok");
        const qint64 now = moved(to);
        EXPECT_GT(now, last);
        last = now;
    }
    for (const auto &mover : movers) {
        EXPECT_EQ(mover->state(), QProcess::Running) << mover->readAllStandardError().toStdString();
        mover->kill();
        mover->waitForFinished();
    }
    EXPECT_EQ(QDir(to).entryList(QDir::Files).size(), 4);
    RecordProperty("longest_copy_ms", int(longest));
    RecordProperty("moves", int(last));
}

TEST_F(Folder, ACopyThatFailsLeavesTheOneBefore)
{
    const QString to = folder.filePath(u"copy"_s);
    const QString copy = copyOf(s, to, u"clientes"_s);
    const QByteArray before = bytesOf(copy);
    clients(500);
    ASSERT_TRUE(QDir(to).mkdir(u"clientes.mdb.parcial"_s)); // in the way
    EXPECT_THROW(copyDatabases(s, to), StoreError);
    EXPECT_EQ(bytesOf(copy), before);
    Lote batch(s); // a copy inside a batch would not be of one moment
    EXPECT_THROW(copyDatabases(s, to), StoreError);
}

TEST_F(Folder, ADatabaseIsCompacted)
{
    clients(2000);
    s.clientes->Execute("delete * from Clientes where idc > 10");
    const QString before = names();
    closeStore(s);
    const QString compact = folder.filePath(u"clientesComp.mdb"_s);
    sqlcipher::compactFile(file(u"clientes"_s), compact);
    EXPECT_EQ(sqlcipher::checkFile(compact), "ok");
    EXPECT_LT(QFileInfo(compact).size(), QFileInfo(file(u"clientes"_s)).size() / 2);
    EXPECT_THROW(sqlcipher::compactFile(file(u"clientes"_s), compact), StoreError); // it exists
    ASSERT_TRUE(QFile::remove(file(u"clientes"_s)) && QFile::rename(compact, file(u"clientes"_s)));
    reopen();
    EXPECT_EQ(names(), before);
    EXPECT_TRUE(isComplete(*s.motor, "clientes", readSchema(u"clientes"_s)));
}

// --- Damage ---

TEST_F(Folder, ADamagedIndexCostsNothing)
{
    clients(2000);
    const QString before = names();
    closeStore(s);
    damage(u"clientes"_s, pageOf(u"clientes"_s, u"Clientes_ayn"_s));
    const QByteArray harmed = bytesOf(file(u"clientes"_s));
    noteDamage(s);
    ask.wait(u"clientes.mdb was damaged and has been repaired. "_s);
    reopen();
    EXPECT_EQ(names(), before);
    EXPECT_FALSE(isDamageNoted(s));
    const QStringList aside = beside(u"clientes-danada-*.mdb"_s);
    ASSERT_EQ(aside.size(), 1);
    EXPECT_EQ(bytesOf(folder.filePath(aside[0])), harmed);
    EXPECT_EQ(s.motor->check("clientes"), "ok");
    EXPECT_TRUE(isComplete(*s.motor, "clientes", readSchema(u"clientes"_s)));
    // A mark without damage is only removed.
    noteDamage(s);
    reopen();
    EXPECT_FALSE(isDamageNoted(s));
}

TEST_F(Folder, ADamagedPageCostsItsRowsAlone)
{
    clients(2000);
    const QStringList before = names().split(u'\n', Qt::SkipEmptyParts);
    s.clientes->Execute("delete * from Clientes where idc = 2000");
    closeStore(s);
    // The rows were entered last, so most of the last pages are theirs.
    const qint64 pages = QFileInfo(file(u"clientes"_s)).size() / 4096;
    for (qint64 page = pages - 60; page < pages; page += 9)
        damage(u"clientes"_s, page);
    noteDamage(s);
    ask.wait(u"Rows were lost of: Clientes."_s);
    reopen();
    const QStringList after = names().split(u'\n', Qt::SkipEmptyParts);
    EXPECT_LT(after.size(), before.size() - 1);
    EXPECT_GT(after.size(), before.size() * 3 / 4);
    for (const QString &row : after)
        EXPECT_TRUE(before.contains(row)) << row.toStdString();
    // Keys continue after the last one issued.
    s.clientes->Execute("insert into Clientes (idc) values (30000)");
    EXPECT_EQ(s.motor->lastKey(), 2001);
}

TEST_F(Folder, WhatCannotBeRepairedIsLeftAndNobodyIsCutOff)
{
    clients(300);
    closeStore(s);
    const QByteArray whole = bytesOf(file(u"clientes"_s));
    const QByteArray others = bytesOf(file(u"finanzas"_s));
    // The only page of a table, and the first page of the file, without which nothing can be read.
    for (const qint64 page : {pageOf(u"clientes"_s, u"MLEspecies"_s), qint64(1)}) {
        write(file(u"clientes"_s), whole);
        damage(u"clientes"_s, page);
        damage(u"finanzas"_s, pageOf(u"finanzas"_s, u"Articulos_ida"_s)); // repairable by itself
        const QByteArray harmed = bytesOf(file(u"clientes"_s));
        noteDamage(s);
        const Terminal start(folder.path());
        EXPECT_EQ(start.number(), ErrorNumber::DatabaseDamaged) << page;
        EXPECT_TRUE(start.failure->text.contains(file(u"clientes"_s))) << page;
        EXPECT_EQ(bytesOf(file(u"clientes"_s)), harmed);
        EXPECT_EQ(beside(u"*danada*"_s) + beside(u"*reparada*"_s), QStringList());
        write(file(u"finanzas"_s), others);
    }
    write(file(u"clientes"_s), whole);
    reopen();
    noteDamage(s); // another session finds the mark while this one works
    EXPECT_EQ(Terminal(folder.path()).failure->text, s(text::CloseOnTerminals));
}

TEST_F(Folder, AFileOfAnotherFormatIsNamedForWhatItIsAndNotTouched)
{
    closeStore(s);
    const std::pair<QByteArray, int> files[] = {
        {QByteArray(), text::DataFileIsEmpty},
        {QByteArray(9000, 'x'), text::DataFileIsText},
        {"una l\xC3\xADnea de texto\r\n", text::DataFileIsText},
        {"SQLite format 3" + QByteArray(8192, '\0'), text::DataFileIsUnencrypted},
        {QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(8192, '\1'), text::DataFileIsJet},
        {QByteArray(8192, '\x81'), text::DatabaseDamaged},
        {"\x81\xFF", text::DatabaseDamaged},
    };
    for (const QString &base : {u"finanzas"_s, u"os"_s}) {
        const QByteArray whole = bytesOf(file(base));
        for (const auto &[bytes, told] : files) {
            ASSERT_TRUE(QFile::resize(file(base), 0));
            write(file(base), bytes);
            const Terminal start(folder.path());
            EXPECT_EQ(start.number(), ErrorNumber::DatabaseDamaged);
            EXPECT_EQ(start.failure->text, s(told) + u'\n' + file(base));
            EXPECT_EQ(bytesOf(file(base)), bytes);
        }
        write(file(base), whole);
    }
}

// --- Versions ---

TEST_F(Folder, DataOfAnotherVersionAreNotWorkedOn)
{
    const std::pair<int, int> versions[] = {{33, text::DataOfOlderVersion},
                                            {553, text::DataOfOlderVersion},
                                            {555, text::DataOfNewerVersion},
                                            {600, text::DataOfNewerVersion}};
    for (const auto &[version, told] : versions) {
        reopen();
        s.morvane->Execute("update configuracion set Ver = ?", version);
        s.morvane->Execute("ALTER TABLE TareasAgenda DROP COLUMN artaux"); // must not be added
        closeStore(s);
        const Terminal start(folder.path());
        ASSERT_TRUE(start.failure);
        EXPECT_EQ(start.failure->text, s(told).arg(version).arg(SchemaVersion));
        EXPECT_FALSE(start.s.motor);
        runRaw(u"morvane"_s, "UPDATE Configuracion SET Ver = 554;"
                             "ALTER TABLE TareasAgenda ADD COLUMN artaux LONG");
    }
    reopen();
}

TEST_F(Folder, AnOlderFolderIsCompletedOnceWithACopyKept)
{
    clients(30);
    s.clientes->Execute("delete * from Clientes where idc = 30");
    s.clientes->Execute("insert into Mascotas (idm, nom) values (1, 'Toby')");
    s.finanzas->Execute("insert into CtaCtePagosC (idVenta) values (7)");
    s.clientes->Execute("insert into MClinica (idm) values (1)");
    const QString rows = names();
    closeStore(s);
    // Like a file from before rows had keys.
    runRaw(u"clientes"_s,
           "PRAGMA writable_schema = ON; UPDATE sqlite_master SET sql = replace(sql, "
           "', \"row_key\" INTEGER PRIMARY KEY AUTOINCREMENT', ''); PRAGMA writable_schema = OFF");
    runRaw(u"clientes"_s, "DROP TABLE AvisosPlanificadas; DROP INDEX Mascotas_idc;"
                          "DROP INDEX Clientes_idc;"
                          "INSERT INTO Clientes (idc, ayn) VALUES (1, 'stands twice')");
    reopen(); // with the keys
    s.clientes->Execute("ALTER TABLE Mascotas DROP COLUMN dec");
    s.clientes->Execute("ALTER TABLE Clientes DROP COLUMN Perfil5");
    s.finanzas->Execute("ALTER TABLE CtaCtePagosC DROP COLUMN ID");
    s.clientes->Execute("ALTER TABLE CLLocalidad ALTER COLUMN cp TEXT(7)");
    s.os->Execute("DROP TABLE Zonas");
    const auto isWhole = [this](const QString &base) {
        return isComplete(*s.motor, base.toStdString(), readSchema(base));
    };
    EXPECT_FALSE(isWhole(u"clientes"_s));
    const qint64 copies = beside(u"kelvara.copias"_s).size();
    EXPECT_EQ(copies, 1);
    QDir(folder.filePath(u"kelvara.copias"_s)).removeRecursively();

    // Not while another terminal is working.
    EXPECT_EQ(Terminal(folder.path()).failure->text, s(text::CloseTerminalsToUpdate));
    EXPECT_FALSE(isWhole(u"clientes"_s));
    reopen();
    for (const QString &base : clinicDatabases())
        EXPECT_TRUE(isWhole(base)) << base.toStdString();
    EXPECT_EQ(names(), rows + u"1|stands twice|\n"_s);
    EXPECT_EQ(allRows(*s.clientes, "select nom, [dec] from Mascotas"), u"Toby|0\n"_s);
    EXPECT_EQ(allRows(*s.finanzas, "select ID, idVenta from CtaCtePagosC"), u"1|7\n"_s);
    const QDir kept(folder.filePath(u"kelvara.copias/2026-03-11-090000"_s));
    ASSERT_EQ(kept.entryList(QDir::Files).size(), 4);
    EXPECT_EQ(sqlcipher::checkFile(kept.filePath(u"clientes.mdb"_s)), "ok");
    // Nothing is left to do.
    QDir(folder.filePath(u"kelvara.copias"_s)).removeRecursively();
    reopen();
    EXPECT_EQ(beside(u"kelvara.copias"_s), QStringList());
}

TEST_F(Folder, FilesThatMayBeMissingAreMade)
{
    clients(1);
    closeStore(s);
    ASSERT_TRUE(QFile::remove(file(u"rep97"_s)) && QFile::remove(file(u"os"_s)));
    reopen();
    EXPECT_EQ(sqlcipher::checkFile(file(u"rep97"_s)), "ok");
    EXPECT_EQ(s.os->read("select count(*) from Socios").toInt(), 0);
    // If there are members among the clients, an empty file would make them disappear.
    s.clientes->Execute("update Clientes set obra = 1");
    closeStore(s);
    ASSERT_TRUE(QFile::remove(file(u"os"_s)));
    EXPECT_EQ(Terminal(folder.path()).number(), ErrorNumber::DatabaseNotFound);
    EXPECT_FALSE(QFile::exists(file(u"os"_s)));
}
