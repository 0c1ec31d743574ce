// The built-in engine: encrypted SQLite files behind the Motor interface.
//
// The first database opened becomes the connection's main one and the others are attached to it, so
// that a transaction spans all files atomically.

#include "store/engine.h"

#include "store/batch.h"
#include "store/data_folder.h"
#include "store/file_permissions.h"
#include "store/schema.h"
#include "store/sqlcipher/connection.h"
#include "store/sqlcipher/definitions.h"
#include "store/sqlcipher/emitter.h"
#include "store/sqlcipher/files.h"
#include "store/sqlcipher/folder_lock.h"
#include "store/sqlcipher/functions.h"
#include "store/sqlcipher/rows.h"
#include "store/sqlcipher/statement.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <utility>

using namespace store;
using namespace sqlcipher;

namespace
{

class FileEngine final : public Motor
{
public:
    // The count starts in a different range for each engine of the process, or rows kept from an
    // earlier one would look current after the store is opened again.
    explicit FileEngine(QString folder) : m_folder(std::move(folder))
    {
        static qint64 made = 0;
        m_rolledBack = ++made << 32;
    }
    ~FileEngine() override { closeAll(); }

    bool exists(const std::string &schema) const override
    {
        return QFileInfo(file(schema)).isFile();
    }

    void create(const std::string &schema) override
    {
        const QString path = file(schema);
        QDir().mkpath(QFileInfo(path).path());
        createEmptyFile(path);
    }

    void open(const std::string &schema) override
    {
        const QString path = file(schema);
        if (!QFileInfo(path).isFile())
            throw StoreError(ErrorNumber::DatabaseNotFound, path);
        // The engine would accept an empty file as a new database.
        if (QFileInfo(path).size() < PageSize)
            throw StoreError(ErrorNumber::DatabaseDamaged, path);
        const bool main = m_db == nullptr;
        try {
            if (main)
                openMain(path, schema);
            else
                attach(path, schema);
            run("PRAGMA " + quotedName(schema) + ".cache_size = " + cache(schema));
            run("PRAGMA " + quotedName(schema) + ".secure_delete = OFF");
            touch(schema);
        } catch (const StoreError &e) {
            if (main)
                closeAll();
            throw StoreError(e.number, path + QStringLiteral(": ") + e.description);
        }
    }

    void openInMemory(const std::string &schema) override
    {
        run("ATTACH DATABASE ':memory:' AS " + quotedName(schema) + " KEY ''");
    }

    void closeAll() override
    {
        m_versions.clear();
        m_schemaVersions.clear();
        m_parts.close();
        m_connection.reset();
        m_db = nullptr;
    }

    jet::Translation translate(std::string_view sql, const jet::Catalogue &catalogue,
                               const std::string &schema, bool withKeys) override
    {
        return sqlcipher::translate(sql, catalogue, schema, withKeys);
    }
    std::string rowText(const std::string &schema, const RowStatement &s) const override
    {
        return sqlcipher::rowText(schema, s);
    }

    std::unique_ptr<Statement> prepare(const std::string &sql) override
    {
        refuseWhileWaiting();
        return std::make_unique<FileStatement>(m_db, m_parts, m_waiting, sql);
    }

    int changedRows() const override { return sqlite3_changes(m_db); }
    qint64 lastKey() const override { return sqlite3_last_insert_rowid(m_db); }

    void begin() override
    {
        run("BEGIN IMMEDIATE");
        ++m_transactions;
    }
    qint64 transaction() const override { return inTransaction() ? m_transactions : 0; }
    void commit() override
    {
        if (m_parts.lost())
            throw BatchMustRepeat();
        run("COMMIT");
        m_parts.end();
    }
    void rollBack() noexcept override
    {
        ++m_rolledBack;
        m_parts.end();
        if (inTransaction())
            sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    qint64 rollbackCount() const override { return m_rolledBack; }
    bool inTransaction() const override { return m_db && sqlite3_get_autocommit(m_db) == 0; }

    void beginPart() override { m_parts.ask(); }
    void commitPart() override { m_parts.commit(); }
    void countParts() override { m_parts.onlyCount(); }
    bool isLost() const override { return m_parts.lost(); }
    void undoPart() noexcept override
    {
        if (m_parts.undo())
            ++m_rolledBack;
    }

    void setPatience(int ms) override { m_patienceMs = ms; }
    void whileWaiting(std::function<void(int)> tell) override { m_whileWaiting = std::move(tell); }

    qint64 version(const std::string &schema) override
    {
        return pragma(m_versions, schema, "data_version");
    }
    qint64 schemaVersion(const std::string &schema) override
    {
        return pragma(m_schemaVersions, schema, "schema_version");
    }

    std::unique_ptr<Lock> lock(const QString &name, int seconds,
                               const std::function<void(const QString &)> &meanwhile,
                               Lock::Mode mode) override
    {
        return std::make_unique<FolderLock>(m_folder, name, seconds, meanwhile, mode);
    }
    QString lockHolder(const QString &name) const override
    {
        return FolderLock::holder(m_folder, name);
    }

    std::vector<std::string> tables(const std::string &schema) override
    {
        refuseWhileWaiting();
        return sqlcipher::tables(m_db, schema);
    }
    TableDescription describe(const std::string &schema, const std::string &table) override
    {
        refuseWhileWaiting();
        return sqlcipher::describe(m_db, schema, table);
    }
    void define(const std::string &schema, const jet::Definition &d) override
    {
        runAll([&] { return statementsOf(m_db, schema, d); });
    }
    void giveKey(const std::string &schema, const std::string &table) override
    {
        runAll([&] { return keyStatements(m_db, schema, table); });
    }

    void copy(const std::vector<std::string> &schemas, const QString &folder) override
    {
        if (inTransaction())
            throw StoreError(ErrorNumber::Internals, QStringLiteral("A copy inside of a batch"));
        // Once this has a read lock on all of them, no transaction that touches one can commit
        // until the last is copied. One that is already committing finishes all its files first.
        run("BEGIN");
        try {
            for (const std::string &schema : schemas)
                touch(schema);
            for (const std::string &schema : schemas)
                copyOne(schema, pathUnder(folder, fileOf(QString::fromStdString(schema))));
            run("COMMIT");
        } catch (...) {
            sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
            throw;
        }
    }
    std::string check(const std::string &schema) override { return sqlcipher::check(m_db, schema); }
    FileFormat formatOf(const std::string &schema) const override
    {
        return sqlcipher::formatOf(file(schema));
    }
    std::vector<Salvage> repair(const std::vector<std::string> &schemas,
                                const QString &mark) override
    {
        QStringList files;
        for (const std::string &schema : schemas)
            files << file(schema);
        return repairFiles(files, mark);
    }

private:
    QString file(const std::string &schema) const
    {
        return pathUnder(m_folder, fileOf(QString::fromStdString(schema)));
    }

    void run(const std::string &sql)
    {
        refuseWhileWaiting();
        if (inTransaction())
            m_parts.begin();
        sqlcipher::run(m_db, sql);
        m_parts.written();
    }

    // The statements depend on the tables as they are now, so they are made under the write lock.
    template <typename Statements>
    void runAll(Statements &&statements)
    {
        Lote batch(*this);
        for (const std::string &sql : statements())
            run(sql);
        batch.commit();
    }

    // Takes the read lock; also fails if the file cannot be read.
    void touch(const std::string &schema)
    {
        prepare("SELECT count(*) FROM " + quotedName(schema) + ".sqlite_master")->step();
    }

    void attach(const QString &path, const std::string &schema)
    {
        const auto st = prepare("ATTACH DATABASE ?1 AS " + quotedName(schema) + " KEY ?2");
        st->bind(0, path);
        st->bind(1, QString::fromLatin1(Password));
        st->step();
    }

    // Writes to another name until the copy is complete.
    void copyOne(const std::string &schema, const QString &place)
    {
        const QString partial = place + QStringLiteral(".parcial");
        QFile::remove(partial);
        try {
            const auto to = openFile(partial, true);
            sqlcipher::copy(m_db, schema, to.get());
        } catch (...) {
            QFile::remove(partial);
            throw;
        }
        shareLike(partial, file(schema));
        replaceFile(partial, place);
    }

    using PerSchema = std::unordered_map<std::string, std::unique_ptr<Statement>>;

    qint64 pragma(PerSchema &statements, const std::string &schema, const char *name)
    {
        auto &st = statements[schema];
        if (!st)
            st = prepare("PRAGMA " + quotedName(schema) + '.' + name);
        const qint64 v = st->step() ? st->whole(0) : 0;
        st->reset();
        return v;
    }

    void openMain(const QString &path, const std::string &schema)
    {
        m_connection = openFile(path, false);
        m_db = m_connection.get();
        m_name = schema;
        sqlite3_db_config(m_db, SQLITE_DBCONFIG_MAINDBNAME, m_name.c_str());
        sqlite3_busy_handler(m_db, waitOnce, this);
        registerFunctions(m_db);
        m_parts.open(m_db);
    }

    // Called by the engine, so it must not throw.
    static int waitOnce(void *engine, int times)
    {
        auto &e = *static_cast<FileEngine *>(engine);
        if (times == 0)
            e.m_waited.start();
        const qint64 ms = e.m_waited.elapsed();
        if (ms >= e.m_patienceMs)
            return 0;
        if (e.m_whileWaiting && !std::exchange(e.m_waiting, true)) {
            try {
                e.m_whileWaiting(int(ms));
            } catch (...) { // keep waiting even if that cannot be shown
            }
            e.m_waiting = false;
        }
        constexpr int FirstMs = 1, LongestMs = 50;
        QThread::msleep(ulong(std::min(FirstMs << std::min(times, 10), LongestMs)));
        return 1;
    }

    // The engine is not reentrant while it waits.
    void refuseWhileWaiting() const
    {
        if (m_waiting)
            throw StoreError(ErrorNumber::Locked, {});
    }

    // Size of the page cache; a negative number means kilobytes. Large enough to keep a clinic's
    // daily data in memory; the other databases need little.
    static std::string cache(const std::string &schema)
    {
        if (schema == "clientes")
            return "-65536";
        if (schema == "morvane" || schema == "finanzas")
            return "-32768";
        return "-4096";
    }

    QString m_folder;
    std::string m_name; // the connection keeps a pointer to it
    Connection m_connection;
    sqlite3 *m_db = nullptr;
    qint64 m_rolledBack = 0;
    qint64 m_transactions = 0;
    int m_patienceMs = WorkingPatienceMs;
    std::function<void(int)> m_whileWaiting;
    QElapsedTimer m_waited;
    bool m_waiting = false;
    Parts m_parts;
    PerSchema m_versions;
    PerSchema m_schemaVersions;
};

} // namespace

std::unique_ptr<Motor> store::createFileEngine(const QString &folder)
{
    return std::make_unique<FileEngine>(folder);
}
