// The built-in engine: encrypted SQLite files behind the Motor interface.
//
// The first database opened is the connection's main one and the others are attached to it, so one
// transaction spans them all and is atomic over all files.

#include "store/engine.h"
#include "store/file_permissions.h"
#include "store/jet/engine_functions.h"
#include "store/sqlcipher_file.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <charconv>
#include <cstdio>
#include <cstring>
#include <utility>

using namespace store;
using sqlcipher::fail;
using sqlcipher::quotedName;

namespace
{

int Figures(const char *p, int n)
{
    int x = 0;
    for (int i = 0; i < n; ++i) {
        if (p[i] < '0' || p[i] > '9')
            return -1;
        x = x * 10 + (p[i] - '0');
    }
    return x;
}

QDate readDay(std::string_view t)
{
    if (t.size() < 10 || t[4] != '-' || t[7] != '-')
        return {};
    const int a = Figures(t.data(), 4), m = Figures(t.data() + 5, 2), d = Figures(t.data() + 8, 2);
    return a < 0 || m < 0 || d < 0 ? QDate() : QDate(a, m, d);
}

QTime readHour(std::string_view t)
{
    if (t.size() < 5 || t[2] != ':')
        return {};
    const int h = Figures(t.data(), 2), m = Figures(t.data() + 3, 2);
    const int s = t.size() >= 8 && t[5] == ':' ? Figures(t.data() + 6, 2) : 0;
    return h < 0 || m < 0 || s < 0 ? QTime() : QTime(h, m, s);
}

void twoDigits(char *p, int n)
{
    p[0] = char('0' + n / 10 % 10);
    p[1] = char('0' + n % 10);
}

void writeDay(char *p, QDate d)
{
    int a = 0, m = 0, dia = 0;
    d.getDate(&a, &m, &dia);
    twoDigits(p, a / 100);
    twoDigits(p + 2, a % 100);
    p[4] = p[7] = '-';
    twoDigits(p + 5, m);
    twoDigits(p + 8, dia);
}

void writeHour(char *p, QTime t)
{
    twoDigits(p, t.hour());
    p[2] = p[5] = ':';
    twoDigits(p + 3, t.minute());
    twoDigits(p + 6, t.second());
}

} // namespace

Value store::cellValue(Statement::Kind kind, qint64 whole, double floating, std::string_view text,
                       ColumnType type)
{
    using Kind = Statement::Kind;
    if (kind == Kind::Null)
        return {};
    if (kind == Kind::Text) {
        switch (type) {
        case ColumnType::Date:
            if (const QDate d = readDay(text); d.isValid()) {
                if (text.size() <= 10)
                    return d;
                const QTime t = readHour(text.substr(11));
                return t.isValid() ? Value(QDateTime(d, t)) : Value(d);
            }
            break; // what another program wrote and is no day stays visible as text
        case ColumnType::Time:
            if (const QTime t = readHour(text.size() > 10 ? text.substr(11) : text); t.isValid())
                return t;
            break;
        case ColumnType::Text:
        case ColumnType::Memo:
        case ColumnType::None:
            break;
        default: {
            const Value v(QString::fromUtf8(text.data(), qsizetype(text.size())));
            if (type == ColumnType::Currency)
                return v.toMoneda();
            if (type == ColumnType::YesNo)
                return v.toBool();
            if (type == ColumnType::Single || type == ColumnType::Double)
                return v.toDouble();
            return v.toLong();
        }
        }
        return QString::fromUtf8(text.data(), qsizetype(text.size()));
    }
    const bool isWhole = kind == Kind::Whole;
    switch (type) {
    case ColumnType::Currency:
        return isWhole ? Moneda::whole(whole) : Moneda::round(floating);
    case ColumnType::YesNo:
        return isWhole ? whole != 0 : floating != 0.0;
    case ColumnType::Single:
    case ColumnType::Double:
        return isWhole ? double(whole) : floating;
    case ColumnType::Text:
    case ColumnType::Memo:
        return isWhole ? Value(whole).toText() : Value(floating).toText();
    case ColumnType::None:
        return isWhole ? Value(whole) : Value(floating);
    default:
        return isWhole ? Value(whole) : Value(Value(floating).toLong());
    }
}

namespace
{

// The parts of a transaction. A rule tries tens of thousands of steps of which few write, so the
// engine hears of a part only when something is written in it.
class Parts
{
public:
    ~Parts() { close(); }

    void open(sqlite3 *db)
    {
        m_db = db;
        for (const auto &[statement, sql] :
             {std::pair(&m_save, "SAVEPOINT part"), std::pair(&m_release, "RELEASE part"),
              std::pair(&m_undo, "ROLLBACK TO part")})
            sqlite3_prepare_v2(db, sql, -1, statement, nullptr);
    }
    void close()
    {
        for (sqlite3_stmt **statement : {&m_save, &m_release, &m_undo}) {
            sqlite3_finalize(*statement);
            *statement = nullptr;
        }
    }

    void ask() { ++m_asked; }
    void onlyCount() { m_counted = true; }
    bool lost() const { return m_lost; }
    void end()
    {
        m_asked = m_begun = 0;
        m_counted = m_lost = false;
    }

    /// Before every write.
    void begin()
    {
        if (m_counted)
            return;
        // Where the engine has ended the transaction by itself, a part would begin a new one.
        if (m_begun < m_asked && sqlite3_get_autocommit(m_db) != 0)
            throw StoreError(ErrorNumber::Internals, QStringLiteral("The batch was broken off"));
        for (; m_begun < m_asked; ++m_begun)
            if (const int r = run(m_save); r != SQLITE_OK)
                fail(m_db, r);
    }
    /// Behind every write that was carried out.
    void written()
    {
        if (m_counted)
            m_begun = m_asked;
    }
    void commit()
    {
        if (m_begun == m_asked && m_counted) {
            --m_begun;
        } else if (m_begun == m_asked) {
            if (const int r = run(m_release); r != SQLITE_OK)
                fail(m_db, r);
            --m_begun;
        }
        --m_asked;
    }
    /// @return whether there was something to be taken back
    bool undo() noexcept
    {
        const bool written = m_asked > 0 && m_begun == m_asked;
        if (written) {
            // The engine may have ended the whole transaction already.
            if (m_counted) {
                m_lost = true;
            } else if (sqlite3_get_autocommit(m_db) == 0) {
                run(m_undo);
                run(m_release);
            }
            --m_begun;
        }
        --m_asked;
        return written;
    }

private:
    static int run(sqlite3_stmt *statement) noexcept
    {
        sqlite3_step(statement);
        return sqlite3_reset(statement);
    }

    sqlite3 *m_db = nullptr;
    sqlite3_stmt *m_save = nullptr;
    sqlite3_stmt *m_release = nullptr;
    sqlite3_stmt *m_undo = nullptr;
    int m_asked = 0;
    int m_begun = 0;        // of those, the ones in which something was written
    bool m_counted = false; // without the engine
    bool m_lost = false;
};

class FileStatement final : public Statement
{
public:
    /// @param waiting whether the engine waits for a lock just now, when no statement can be run
    FileStatement(sqlite3 *db, Parts &parts, const bool &waiting, const std::string &sql)
        : m_db(db), m_parts(parts), m_waiting(waiting), m_sql(sql)
    {
        const char *rest = nullptr;
        const int r = sqlite3_prepare_v2(db, sql.data(), int(sql.size()), &m_st, &rest);
        if (r != SQLITE_OK)
            fail(db, r, sql);
        m_writes = sqlite3_stmt_readonly(m_st) == 0;
    }
    ~FileStatement() override { sqlite3_finalize(m_st); }
    FileStatement(const FileStatement &) = delete;
    FileStatement &operator=(const FileStatement &) = delete;

    void bind(int parameter, const Value &value) override
    {
        const int i = parameter + 1;
        const int r = std::visit(
            [this, i](const auto &v) {
                using T = std::decay_t<decltype(v)>;
                if constexpr (std::is_same_v<T, std::monostate>)
                    return sqlite3_bind_null(m_st, i);
                else if constexpr (std::is_same_v<T, bool>)
                    return sqlite3_bind_int(m_st, i, v ? -1 : 0);
                else if constexpr (std::is_same_v<T, qint64>)
                    return sqlite3_bind_int64(m_st, i, v);
                else if constexpr (std::is_same_v<T, double>)
                    return sqlite3_bind_double(m_st, i, v);
                else if constexpr (std::is_same_v<T, Moneda>)
                    return sqlite3_bind_double(m_st, i, v.toDouble());
                else if constexpr (std::is_same_v<T, QString>) {
                    const QByteArray b = v.toUtf8();
                    return sqlite3_bind_text(m_st, i, b.constData(), int(b.size()),
                                             SQLITE_TRANSIENT);
                } else {
                    char t[19];
                    int n = 0;
                    if constexpr (std::is_same_v<T, QDate>) {
                        // The files have no form for other years.
                        if (v.year() < 0 || v.year() > 9999)
                            return sqlite3_bind_null(m_st, i);
                        writeDay(t, v);
                        n = 10;
                    } else if constexpr (std::is_same_v<T, QTime>) {
                        writeHour(t, v);
                        n = 8;
                    } else {
                        writeDay(t, v.date());
                        t[10] = ' ';
                        writeHour(t + 11, v.time());
                        n = 19;
                    }
                    return sqlite3_bind_text(m_st, i, t, n, SQLITE_TRANSIENT);
                }
            },
            value.contentOf());
        if (r != SQLITE_OK)
            fail(m_db, r, m_sql);
    }

    bool step() override
    {
        if (m_waiting)
            throw StoreError(ErrorNumber::Locked, {});
        if (m_writes)
            m_parts.begin();
        const int r = sqlite3_step(m_st);
        if (m_writes && (r == SQLITE_ROW || r == SQLITE_DONE))
            m_parts.written();
        if (r == SQLITE_ROW)
            return true;
        if (r == SQLITE_DONE)
            return false;
        // The message is lost by the reset, so it is taken first.
        try {
            fail(m_db, r, m_sql);
        } catch (...) {
            sqlite3_reset(m_st);
            throw;
        }
    }
    void reset() noexcept override { sqlite3_reset(m_st); }
    int allColumns() const override { return sqlite3_column_count(m_st); }

    Kind kindOf(int c) const override
    {
        switch (sqlite3_column_type(m_st, c)) {
        case SQLITE_NULL:
            return Kind::Null;
        case SQLITE_INTEGER:
            return Kind::Whole;
        case SQLITE_FLOAT:
            return Kind::Floating;
        default:
            return Kind::Text; // a BLOB is a memo that would be taken for a number
        }
    }
    qint64 whole(int c) const override { return sqlite3_column_int64(m_st, c); }
    double Floating(int c) const override { return sqlite3_column_double(m_st, c); }
    std::string_view text(int c) const override
    {
        const auto *p = static_cast<const char *>(sqlite3_column_blob(m_st, c));
        return p ? std::string_view(p, size_t(sqlite3_column_bytes(m_st, c))) : std::string_view();
    }
    Value read(int c, ColumnType type) const override
    {
        const Kind kind = kindOf(c);
        return cellValue(kind, kind == Kind::Whole ? whole(c) : 0,
                         kind == Kind::Floating ? Floating(c) : 0.0,
                         kind == Kind::Text ? text(c) : std::string_view(), type);
    }

private:
    sqlite3 *m_db;
    Parts &m_parts;
    const bool &m_waiting;
    sqlite3_stmt *m_st = nullptr;
    std::string m_sql;
    bool m_writes = false;
};

class FileEngine final : public Motor
{
public:
    // Numbers that a store opened again counts from must not be those of the one before, or what
    // was kept of its rows would look fresh.
    FileEngine()
    {
        static qint64 made = 0;
        m_rolledBack = ++made << 32;
    }
    ~FileEngine() override { m_parts.close(); }

    void open(const QString &file, const std::string &schema) override
    {
        if (!QFileInfo(file).isFile())
            throw StoreError(ErrorNumber::DatabaseNotFound, file);
        // The engine would take an empty file for a new database.
        if (QFileInfo(file).size() < sqlcipher::PageSize)
            throw StoreError(ErrorNumber::DatabaseDamaged, file);
        const bool main = m_db == nullptr;
        try {
            if (main) {
                openMain(file, schema);
            } else {
                auto st = prepare("ATTACH DATABASE ?1 AS " + quotedName(schema) + " KEY ?2");
                st->bind(0, file);
                st->bind(1, QString::fromLatin1(sqlcipher::Password));
                st->step();
            }
            run("PRAGMA " + quotedName(schema) + ".cache_size = " + cache(schema));
            run("PRAGMA " + quotedName(schema) + ".secure_delete = OFF");
            prepare("SELECT count(*) FROM " + quotedName(schema) + ".sqlite_master")->step();
        } catch (const StoreError &e) {
            if (main) {
                m_parts.close();
                m_connection.reset();
                m_db = nullptr;
            }
            throw StoreError(e.number, file + QStringLiteral(": ") + e.description);
        }
    }

    void openInMemory(const std::string &schema) override
    {
        run("ATTACH DATABASE ':memory:' AS " + quotedName(schema) + " KEY ''");
    }

    void close(const std::string &schema) override
    {
        m_versions.erase(schema);
        m_schemaVersions.erase(schema);
        run("DETACH DATABASE " + quotedName(schema));
    }

    std::unique_ptr<Statement> prepare(const std::string &sql) override
    {
        refuseWhileWaiting();
        return std::make_unique<FileStatement>(m_db, m_parts, m_waiting, sql);
    }

    void run(const std::string &sql) override
    {
        refuseWhileWaiting();
        if (inTransaction())
            m_parts.begin();
        char *error = nullptr;
        const int r = sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, &error);
        sqlite3_free(error);
        if (r != SQLITE_OK)
            fail(m_db, r, sql);
        m_parts.written();
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

    void copy(const std::vector<DatabaseCopy> &copies) override
    {
        if (inTransaction())
            throw StoreError(ErrorNumber::Internals, QStringLiteral("A copy inside of a batch"));
        // Once all of them are read, no transaction that touches one of them can be committed until
        // the last is copied; one that is being committed has all its files before this gets them.
        run("BEGIN");
        try {
            for (const DatabaseCopy &c : copies)
                prepare("SELECT count(*) FROM " + quotedName(c.schema) + ".sqlite_master")->step();
            for (const DatabaseCopy &c : copies)
                copyOne(c);
            run("COMMIT");
        } catch (...) {
            sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
            throw;
        }
    }

    std::string check(const std::string &schema) override { return sqlcipher::check(m_db, schema); }

    std::vector<std::string> tables(const std::string &schema) override
    {
        auto st = prepare("SELECT name FROM " + quotedName(schema)
                          + ".sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' "
                            "ESCAPE '\\' ORDER BY rowid");
        std::vector<std::string> t;
        while (st->step())
            t.emplace_back(st->text(0));
        return t;
    }

    std::vector<DeclaredColumn> allColumns(const std::string &schema,
                                           const std::string &table) override
    {
        auto st =
            prepare("PRAGMA " + quotedName(schema) + ".table_info(" + quotedName(table) + ")");
        std::vector<DeclaredColumn> cols;
        while (st->step())
            cols.push_back({.name = std::string(st->text(1)),
                            .type = std::string(st->text(2)),
                            .byDefault = std::string(st->text(4)),
                            .identity = st->whole(5) != 0,
                            .notNull = st->whole(3) != 0});
        return cols;
    }

    std::vector<std::string> indices(const std::string &schema, const std::string &table) override
    {
        auto st = prepare("SELECT sql FROM " + quotedName(schema)
                          + ".sqlite_master WHERE type = 'index' AND sql IS NOT NULL AND tbl_name "
                            "= ?1 ORDER BY rowid");
        st->bind(0, QString::fromStdString(table));
        std::vector<std::string> t;
        while (st->step())
            t.emplace_back(st->text(0));
        return t;
    }

    qint64 version(const std::string &schema) override
    {
        return pragma(m_versions, schema, "data_version");
    }
    qint64 schemaVersion(const std::string &schema) override
    {
        return pragma(m_schemaVersions, schema, "schema_version");
    }
    std::string undeclaredKey() const override { return "rowid"; }

private:
    // Under another name until it is whole.
    void copyOne(const DatabaseCopy &c)
    {
        const QString partial = c.file + QStringLiteral(".parcial");
        QFile::remove(partial);
        try {
            const auto to = sqlcipher::openFile(partial, true);
            sqlcipher::copy(m_db, c.schema, to.get());
        } catch (...) {
            QFile::remove(partial);
            throw;
        }
        const char *original = sqlite3_db_filename(m_db, c.schema.c_str());
        if (original && *original)
            shareLike(partial, QFile::decodeName(original));
        replaceFile(partial, c.file);
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

    void openMain(const QString &file, const std::string &schema)
    {
        m_connection = sqlcipher::openFile(file, false);
        m_db = m_connection.get();
        m_name = schema;
        sqlite3_db_config(m_db, SQLITE_DBCONFIG_MAINDBNAME, m_name.c_str());
        sqlite3_busy_handler(m_db, waitOnce, this);
        jet::registerFunctions(m_db);
        m_parts.open(m_db);
    }

    // The engine's own call: nothing may be thrown through it.
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
            } catch (...) { // what could not be shown is no reason to stop waiting
            }
            e.m_waiting = false;
        }
        constexpr int FirstMs = 1, LongestMs = 50;
        QThread::msleep(ulong(std::min(FirstMs << std::min(times, 10), LongestMs)));
        return 1;
    }

    // The engine cannot be entered again while it waits.
    void refuseWhileWaiting() const
    {
        if (m_waiting)
            throw StoreError(ErrorNumber::Locked, {});
    }

    // Kilobytes of page cache, as a negative number. The whole of a clinic's daily data stays in
    // memory; the scratch files need little.
    static std::string cache(const std::string &schema)
    {
        if (schema == "clientes")
            return "-65536";
        if (schema == "morvane" || schema == "finanzas")
            return "-32768";
        return "-4096";
    }

    std::string m_name; // the connection keeps a pointer to it
    sqlcipher::Connection m_connection;
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

std::unique_ptr<Motor> store::createFileEngine() { return std::make_unique<FileEngine>(); }
