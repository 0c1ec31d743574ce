// The built-in engine: encrypted SQLite files behind the Motor interface.
//
// The first database opened is the connection's main one and the others are attached to it, so one
// transaction spans them all and is atomic over all files.

#include "store/engine.h"
#include "store/jet/engine_functions.h"

#include <QFile>
#include <QFileInfo>
#include <sqlcipher/sqlite3.h>

#include <charconv>
#include <cstring>

using namespace store;

namespace
{

// All files of a clinic carry this password; it keeps them closed to other programs.
constexpr const char *KeyOf = "korvi3namuspeltiraxo";
constexpr int PageSize = 4096;
// A terminal waits this long for another one that is writing before it gives up.
constexpr int WaitMs = 30000;

int setKey(sqlite3 *db) { return sqlite3_key(db, KeyOf, int(std::strlen(KeyOf))); }

QString quoted(const std::string &name)
{
    return u'"' + QString::fromStdString(name).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

std::string quotedUtf8(const std::string &name) { return quoted(name).toStdString(); }

int numberOf(int code)
{
    switch (code & 0xff) {
    case SQLITE_NOMEM:
        return ErrorNumber::OutOfMemory;
    case SQLITE_FULL:
        return ErrorNumber::FullDisk;
    case SQLITE_READONLY:
        return ErrorNumber::ReadOnly;
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        return ErrorNumber::PathOrDisk;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return ErrorNumber::DatabaseDamaged;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return ErrorNumber::Locked;
    case SQLITE_CONSTRAINT:
        return ErrorNumber::Key;
    // What the gate of a column refuses, see jet/engine_functions.cpp.
    case SQLITE_RANGE:
        return ErrorNumber::Overflow;
    case SQLITE_TOOBIG:
        return ErrorNumber::TextTooLong;
    case SQLITE_MISMATCH:
        return ErrorNumber::TypeMismatch;
    default:
        return ErrorNumber::Internals;
    }
}

[[noreturn]] void fail(sqlite3 *db, int code, const std::string &sql = {})
{
    const QString text =
        db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(code));
    throw StoreError(numberOf(code), text, QString::fromStdString(sql));
}

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
    FileStatement(sqlite3 *db, Parts &parts, const std::string &sql)
        : m_db(db), m_parts(parts), m_sql(sql)
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
    sqlite3_stmt *m_st = nullptr;
    std::string m_sql;
    bool m_writes = false;
};

class FileEngine final : public Motor
{
public:
    ~FileEngine() override
    {
        m_parts.close();
        sqlite3_close_v2(m_db);
    }

    void open(const QString &file, const std::string &schema) override
    {
        if (!QFileInfo(file).isFile())
            throw StoreError(ErrorNumber::DatabaseNotFound, file);
        // The engine would take an empty file for a new database.
        if (QFileInfo(file).size() < PageSize)
            throw StoreError(ErrorNumber::DatabaseDamaged, file);
        const bool main = m_db == nullptr;
        try {
            if (main) {
                openMain(file, schema);
            } else {
                auto st = prepare("ATTACH DATABASE ?1 AS " + quotedUtf8(schema) + " KEY ?2");
                st->bind(0, file);
                st->bind(1, QString::fromLatin1(KeyOf));
                st->step();
            }
            run("PRAGMA " + quotedUtf8(schema) + ".cache_size = " + cache(schema));
            run("PRAGMA " + quotedUtf8(schema) + ".secure_delete = OFF");
            prepare("SELECT count(*) FROM " + quotedUtf8(schema) + ".sqlite_master")->step();
        } catch (const StoreError &e) {
            if (main) {
                m_parts.close();
                sqlite3_close_v2(m_db);
                m_db = nullptr;
            }
            throw StoreError(e.number, file + QStringLiteral(": ") + e.description);
        }
    }

    void close(const std::string &schema) override
    {
        m_versions.erase(schema);
        m_schemaVersions.erase(schema);
        run("DETACH DATABASE " + quotedUtf8(schema));
    }

    std::unique_ptr<Statement> prepare(const std::string &sql) override
    {
        return std::make_unique<FileStatement>(m_db, m_parts, sql);
    }

    void run(const std::string &sql) override
    {
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

    std::vector<std::string> tables(const std::string &schema) override
    {
        auto st = prepare("SELECT name FROM " + quotedUtf8(schema)
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
            prepare("PRAGMA " + quotedUtf8(schema) + ".table_info(" + quotedUtf8(table) + ")");
        std::vector<DeclaredColumn> cols;
        while (st->step())
            cols.push_back({std::string(st->text(1)), std::string(st->text(2)),
                            std::string(st->text(4)), st->whole(5) != 0});
        return cols;
    }

    std::vector<std::string> indices(const std::string &schema, const std::string &table) override
    {
        auto st = prepare("SELECT sql FROM " + quotedUtf8(schema)
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
    using PerSchema = std::unordered_map<std::string, std::unique_ptr<Statement>>;

    qint64 pragma(PerSchema &statements, const std::string &schema, const char *name)
    {
        auto &st = statements[schema];
        if (!st)
            st = prepare("PRAGMA " + quotedUtf8(schema) + '.' + name);
        const qint64 v = st->step() ? st->whole(0) : 0;
        st->reset();
        return v;
    }

    void openMain(const QString &file, const std::string &schema)
    {
        const int r = sqlite3_open_v2(QFile::encodeName(file).constData(), &m_db,
                                      SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        if (r != SQLITE_OK)
            fail(m_db, r);
        m_name = schema;
        sqlite3_db_config(m_db, SQLITE_DBCONFIG_MAINDBNAME, m_name.c_str());
        sqlite3_busy_timeout(m_db, WaitMs);
        if (const int k = setKey(m_db); k != SQLITE_OK)
            fail(m_db, k);
        if (encryptionVersion() >= 4)
            run("PRAGMA cipher_default_compatibility = 3");
        run("PRAGMA cipher_page_size = " + std::to_string(PageSize));
        run("PRAGMA cipher_default_page_size = " + std::to_string(PageSize));
        run("PRAGMA temp_store = MEMORY");
        jet::registerFunctions(m_db);
        m_parts.open(m_db);
    }

    int encryptionVersion()
    {
        auto st = prepare("PRAGMA cipher_version");
        return st->step() ? std::atoi(std::string(st->text(0)).c_str()) : 0;
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

    sqlite3 *m_db = nullptr;
    qint64 m_rolledBack = 0;
    qint64 m_transactions = 0;
    std::string m_name; // the connection keeps a pointer to it
    Parts m_parts;
    PerSchema m_versions;
    PerSchema m_schemaVersions;
};

} // namespace

std::unique_ptr<Motor> store::createFileEngine() { return std::make_unique<FileEngine>(); }

void store::createEmptyFile(const QString &file)
{
    const QByteArray ruta = QFile::encodeName(file);
    if (QFileInfo::exists(file))
        throw StoreError(ErrorNumber::PathOrDisk, file);
    sqlite3 *db = nullptr;
    int r =
        sqlite3_open_v2(ruta.constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    const std::string sql = "PRAGMA cipher_page_size = "
                            + std::to_string(PageSize)
                            // Something must be written for the file to get its first page.
                            + "; CREATE TABLE nada (x); DROP TABLE nada;";
    if (r == SQLITE_OK)
        r = setKey(db);
    if (r == SQLITE_OK)
        r = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr);
    sqlite3_close_v2(db);
    if (r != SQLITE_OK) {
        QFile::remove(file);
        throw StoreError(numberOf(r), file);
    }
}
