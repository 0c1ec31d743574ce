#include "store/sqlcipher/files.h"

#include "store/file_permissions.h"
#include "store/sqlcipher/connection.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <algorithm>
#include <deque>
#include <limits>
#include <optional>

using namespace store;
using namespace sqlcipher;
using namespace Qt::StringLiterals;

namespace
{

// A file that is removed again unless keep() is called.
class NewFile
{
public:
    explicit NewFile(const QString &file) : m_file(file)
    {
        if (QFileInfo::exists(file))
            throw StoreError(ErrorNumber::PathOrDisk, file);
    }
    ~NewFile()
    {
        if (!m_file.isEmpty())
            QFile::remove(m_file);
    }
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;
    void keep() { m_file.clear(); }

private:
    QString m_file;
};

// --- Repair ---

// Row numbers from first to last, inclusive.
struct Range {
    qint64 first = 0;
    qint64 last = 0;
};

// Copies the readable rows of a damaged table. An unreadable page loses its own rows and, in the
// upper levels of the table, the way to others. So a range of row numbers is read upwards to the
// fault and downwards to it, and what lies between is halved and tried again. As every gap costs
// further tries, their number is limited.
class TableRepair
{
public:
    TableRepair(sqlite3 *from, sqlite3 *to, const std::string &table) : m_from(from), m_to(to)
    {
        std::string columns = "rowid";
        bool keyed = false;
        int n = 1;
        const Prepared info = prepare(to, "PRAGMA table_info(" + quotedName(table) + ")");
        std::string names;
        while (sqlite3_step(info.get()) == SQLITE_ROW) {
            names +=
                ", "
                + quotedName(reinterpret_cast<const char *>(sqlite3_column_text(info.get(), 1)));
            keyed |= sqlite3_column_int(info.get(), 5) != 0;
            ++n;
        }
        std::string values = "?1";
        for (int i = 2; i <= n; ++i)
            values += ", ?" + std::to_string(i);
        const std::string select = "SELECT rowid" + names + " FROM " + quotedName(table)
                                   + " NOT INDEXED WHERE rowid BETWEEN ?1 AND ?2 ORDER BY rowid";
        m_up = prepare(from, select);
        m_down = prepare(from, select + " DESC");
        // A declared key is the row number itself, so only one of the two is inserted.
        m_insert = prepare(to, "INSERT INTO " + quotedName(table) + " ("
                                   + (keyed ? names.substr(2) : columns + names) + ") VALUES ("
                                   + (keyed ? values.substr(4) : values) + ")");
        m_columns = n;
        m_keyed = keyed;
    }

    void run()
    {
        constexpr int Tries = 20'000;
        std::deque<Range> open{
            {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()}};
        for (int tried = 0; !open.empty() && tried < Tries; ++tried) {
            const Range range = open.front();
            open.pop_front();
            const auto first = read(m_up.get(), range);
            if (!first)
                continue;
            m_harmed = true;
            const auto last = read(m_down.get(), {*first, range.last});
            if (!last)
                continue;
            split({*first, *last}, open);
        }
    }

    qint64 rows() const { return m_rows; }
    bool harmed() const { return m_harmed; }

private:
    // Copies the rows of a range up to the first fault.
    // @return the row number after the last one read (before it when going down), where the fault
    //         may be; nullopt when all rows were read
    std::optional<qint64> read(sqlite3_stmt *st, Range range)
    {
        if (range.first > range.last)
            return std::nullopt;
        const bool down = st == m_down.get();
        qint64 next = down ? range.last : range.first;
        sqlite3_bind_int64(st, 1, range.first);
        sqlite3_bind_int64(st, 2, range.last);
        int r = SQLITE_ROW;
        while ((r = sqlite3_step(st)) == SQLITE_ROW) {
            const qint64 row = sqlite3_column_int64(st, 0);
            insert(st);
            // Stop here: the next number might overflow.
            if (row == (down ? range.first : range.last)) {
                r = SQLITE_DONE;
                break;
            }
            next = down ? row - 1 : row + 1;
        }
        sqlite3_reset(st);
        return r == SQLITE_DONE ? std::nullopt : std::optional(next);
    }

    static void split(Range gap, std::deque<Range> &open)
    {
        // The end of the table is unknown, so each range is as wide as all before it together.
        constexpr qint64 End = std::numeric_limits<qint64>::max();
        if (gap.last == End && gap.first < End / 2) {
            const qint64 begin = std::max<qint64>(gap.first, 0);
            if (gap.first < begin)
                open.push_back({gap.first, begin - 1});
            for (qint64 width = 1; width < End / 4; width *= 2)
                open.push_back({begin + width - 1, begin + width * 2 - 2});
            return;
        }
        if (gap.first >= gap.last)
            return;
        const qint64 middle = gap.first + qint64((quint64(gap.last) - quint64(gap.first)) / 2);
        open.push_back({gap.first, middle});
        open.push_back({middle + 1, gap.last});
    }

    void insert(sqlite3_stmt *row)
    {
        for (int i = m_keyed ? 1 : 0; i < m_columns; ++i)
            sqlite3_bind_value(m_insert.get(), i + 1, sqlite3_column_value(row, i));
        const int r = sqlite3_step(m_insert.get());
        sqlite3_reset(m_insert.get());
        if (r != SQLITE_DONE)
            fail(m_to, r);
        ++m_rows;
    }

    sqlite3 *m_from;
    sqlite3 *m_to;
    Prepared m_up;
    Prepared m_down;
    Prepared m_insert;
    int m_columns = 0;
    bool m_keyed = false;
    qint64 m_rows = 0;
    bool m_harmed = false;
};

struct Definition {
    std::string type;
    std::string name;
    std::string sql;
};

std::vector<Definition> definitions(sqlite3 *db)
{
    std::vector<Definition> all;
    const Prepared st =
        prepare(db, "SELECT type, name, sql FROM sqlite_master WHERE sql IS NOT NULL"
                    " AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY rowid");
    int r = SQLITE_ROW;
    while ((r = sqlite3_step(st.get())) == SQLITE_ROW) {
        const auto text = [&st](int column) {
            return std::string(
                reinterpret_cast<const char *>(sqlite3_column_text(st.get(), column)));
        };
        all.push_back({text(0), text(1), text(2)});
    }
    if (r != SQLITE_DONE)
        fail(db, r);
    return all;
}

// Copies the highest keys ever issued, so that keys of deleted rows are not reused. If they cannot
// be read, each table goes on from its highest row.
void takeSequences(sqlite3 *from, sqlite3 *to)
{
    try {
        const Prepared read = prepare(from, "SELECT name, seq FROM sqlite_sequence");
        const Prepared clear = prepare(to, "DELETE FROM sqlite_sequence WHERE name = ?1");
        const Prepared write =
            prepare(to, "INSERT INTO sqlite_sequence (name, seq) VALUES (?1, ?2)");
        while (sqlite3_step(read.get()) == SQLITE_ROW) {
            sqlite3_bind_value(clear.get(), 1, sqlite3_column_value(read.get(), 0));
            sqlite3_step(clear.get());
            sqlite3_reset(clear.get());
            for (const int i : {0, 1})
                sqlite3_bind_value(write.get(), i + 1, sqlite3_column_value(read.get(), i));
            sqlite3_step(write.get());
            sqlite3_reset(write.get());
        }
    } catch (const StoreError &) {
        return; // no table has a counter
    }
}

// Copies what can be read of a damaged file to a new one, which is removed on failure.
Salvage readDamaged(const QString &from, const QString &to)
{
    NewFile made(to);
    const Connection source = openFile(from, false);
    // Without this, a file shorter than its header says cannot be read.
    run(source.get(), "PRAGMA writable_schema = ON");
    const Connection target = openFile(to, true);
    const auto defined = definitions(source.get());
    run(target.get(), "BEGIN");
    Salvage salvage;
    salvage.place = from;
    for (const Definition &d : defined) {
        if (d.type != "table")
            continue;
        run(target.get(), d.sql);
        TableRepair table(source.get(), target.get(), d.name);
        table.run();
        if (table.harmed() && table.rows() == 0)
            throw StoreError(ErrorNumber::DatabaseDamaged, from);
        salvage.rows += table.rows();
        if (table.harmed())
            salvage.tablesHarmed << QString::fromStdString(d.name);
    }
    takeSequences(source.get(), target.get());
    for (const Definition &d : defined)
        if (d.type != "table")
            run(target.get(), d.sql);
    run(target.get(), "COMMIT");
    if (check(target.get(), "main") != "ok")
        throw StoreError(ErrorNumber::DatabaseDamaged, from);
    made.keep();
    return salvage;
}

// readDamaged(), but a 3343 always names the file that cannot be repaired.
Salvage salvageInto(const QString &from, const QString &to)
{
    try {
        return readDamaged(from, to);
    } catch (const StoreError &e) {
        if (e.number != ErrorNumber::DatabaseDamaged)
            throw;
        throw StoreError(ErrorNumber::DatabaseDamaged, from);
    }
}

} // namespace

void sqlcipher::createEmptyFile(const QString &file)
{
    NewFile made(file);
    try {
        const Connection db = openFile(file, true);
        // The file gets its first page only once something is written.
        run(db.get(), "CREATE TABLE nada (x); DROP TABLE nada;");
    } catch (const StoreError &e) {
        throw StoreError(e.number, file);
    }
    made.keep();
}

void sqlcipher::compactFile(const QString &from, const QString &to)
{
    NewFile made(to);
    const Connection source = openFile(from, false);
    const Connection target = openFile(to, true);
    copy(source.get(), "main", target.get());
    run(target.get(), "VACUUM");
    made.keep();
}

std::string sqlcipher::checkFile(const QString &file)
{
    try {
        return check(openFile(file, false).get(), "main");
    } catch (const StoreError &e) {
        return e.description.toStdString();
    }
}

std::vector<Salvage> sqlcipher::repairFiles(const QStringList &files, const QString &mark)
{
    const auto fresh = [](const QString &file) { return file.chopped(4) + "-reparada.mdb"_L1; };
    std::vector<Salvage> damaged;
    try {
        for (const QString &file : files) {
            if (!QFileInfo(file).isFile() || checkFile(file) == "ok")
                continue;
            QFile::remove(fresh(file)); // left by an interrupted repair
            Salvage s = salvageInto(file, fresh(file));
            s.aside = file.chopped(4) + "-danada-"_L1 + mark + ".mdb"_L1;
            shareLike(fresh(file), file);
            damaged.push_back(std::move(s));
        }
    } catch (...) {
        for (const Salvage &s : damaged)
            QFile::remove(fresh(s.place));
        throw;
    }
    for (const Salvage &s : damaged) {
        replaceFile(s.place, s.aside);
        try {
            replaceFile(fresh(s.place), s.place);
        } catch (...) {
            replaceFile(s.aside, s.place);
            throw;
        }
    }
    return damaged;
}

FileFormat sqlcipher::formatOf(const QString &file)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return FileFormat::Unknown;
    const QByteArray head = f.read(PageSize);
    if (head.isEmpty())
        return FileFormat::Empty;
    if (head.startsWith("SQLite format 3"))
        return FileFormat::Unencrypted;
    const QByteArray signature = head.mid(4, 15);
    if (signature == "Standard Jet DB" || signature == "Standard ACE DB")
        return FileFormat::Jet;
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(head);
    const bool printable = std::all_of(text.cbegin(), text.cend(), [](QChar c) {
        return c >= u' ' || c == u'\n' || c == u'\r' || c == u'\t';
    });
    return printable && !utf8.hasError() ? FileFormat::PlainText : FileFormat::Unknown;
}
