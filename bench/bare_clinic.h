// The same clinic on the bare engine, as a baseline for the store's own work.
#pragma once

#include <QDate>
#include <QString>
#include <map>
#include <sqlcipher/sqlite3.h>
#include <string>
#include <variant>
#include <vector>

namespace store
{
class Texts;
}

/// The databases of a folder through the engine's own interface, opened as the store opens them:
/// same key, page size, caches and pragmas. All functions throw std::runtime_error when the engine
/// fails.
class BareBase
{
public:
    /// A parameter.
    using Datum = std::variant<qint64, std::string>;

    /// Opens the three databases that the daily pass uses.
    explicit BareBase(const QString &folder);
    /// Closes the connection.
    ~BareBase();
    BareBase(const BareBase &) = delete;
    BareBase &operator=(const BareBase &) = delete;

    /// Attaches another database under a schema name.
    /// @param kilobytes size of its page cache
    void attach(const QString &file, const char *schema, int kilobytes);
    /// The rows as text, with a '|' after each cell and NULL for nulls.
    QStringList allRows(const char *sql);
    /// Runs one statement with named parameters from `values`.
    /// @return the first cell of its first row, 0 without one
    qint64 run(const std::string &sql);
    /// Compiles a statement, which the caller finalizes.
    sqlite3_stmt *prepare(const std::string &sql);
    /// The connection itself.
    sqlite3 *connection() const { return m_db; }

    std::map<std::string, Datum> values; // by name, colon included

private:
    sqlite3 *m_db = nullptr;
};

/// The daily pass in as few set-based statements as possible and in one commit too, for the
/// settings that the generator writes. Leaves the same rows as the store's pass, except that the
/// board's texts consist of the counts only.
class BarePass
{
public:
    /// @param hoy the day to run
    BarePass(const QString &folder, QDate hoy, const store::Texts &texts);
    /// Runs the pass.
    /// @throws std::runtime_error
    void run();
    /// Rows of the list of missed doses, in no particular order.
    QStringList missed();

private:
    void Pizarra(const std::string &numbers, int dibujo, int codigo1, int codigo2);
    void foods();
    void missedDoses();
    void dosesOfTheDay();
    void reminders();
    void birthday();
    void debtors();
    void Boarding();
    void summary();
    void Appointments();
    void stock();
    void newClients();
    void insert(const std::string &task);
    void readHours();
    int freeHour(int service);
    static void functionHour(sqlite3_context *c, int, sqlite3_value **v);
    static void functionNumber(sqlite3_context *c, int, sqlite3_value **);

    QString m_folder;
    BareBase m_base;
    QDate m_today;
    qint64 m_lastTask = 0;
    /// For each minute of the day, whether a task starts then; and how many tasks today has.
    std::vector<char> m_busy;
    int m_todayTasks = 0;
    std::map<int, int> m_duration;
};
