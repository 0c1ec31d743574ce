// The same clinic on the bare engine: what the store's own work is measured against.
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
/// same key, page size, caches and pragmas.
class BareBase
{
public:
    using Datum = std::variant<qint64, std::string>;

    explicit BareBase(const QString &folder);
    ~BareBase();
    BareBase(const BareBase &) = delete;
    BareBase &operator=(const BareBase &) = delete;

    void attach(const QString &file, const char *schema, int kilobytes);
    /// The texts of all rows, cell behind cell with a bar.
    QStringList allRows(const char *sql);
    /// Runs one statement. @return its first cell, 0 if none
    /// @throws std::runtime_error
    qint64 run(const std::string &sql);
    sqlite3_stmt *prepare(const std::string &sql);
    sqlite3 *connection() const { return m_db; }

    std::map<std::string, Datum> values; // by name with its colon

private:
    sqlite3 *m_db = nullptr;
};

/// The daily pass in as few set-based statements as it takes, in one commit as well, with the
/// clinic's settings as the generator makes them. Leaves the same rows as the store's pass; of the
/// board's texts only the counts.
class BarePass
{
public:
    BarePass(const QString &folder, QDate hoy, const store::Texts &texts);
    void run();
    /// Rows of the list of missed doses, in no order.
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
    // Minutes of the day that have a task within reach, and how many tasks today has.
    std::vector<char> m_busy;
    int m_todayTasks = 0;
    std::map<int, int> m_duration;
};
