// The parts of a transaction.
#pragma once

struct sqlite3;
struct sqlite3_stmt;

namespace sqlcipher
{

/// A rule tries tens of thousands of steps of which few write, so the engine hears of a part only
/// when something is written in it. See Motor::beginPart and Motor::countParts.
class Parts
{
public:
    Parts() = default;
    ~Parts() { close(); }
    Parts(const Parts &) = delete;
    Parts &operator=(const Parts &) = delete;

    /// To be called once the connection is open, and before it is closed.
    void open(sqlite3 *db);
    void close();

    void ask() { ++m_asked; }
    void onlyCount() { m_counted = true; }
    bool lost() const { return m_lost; }
    /// The transaction is over.
    void end();

    /// Before every write. @throws StoreError when the engine has ended the transaction by itself
    void begin();
    /// Behind every write that was carried out.
    void written();
    void commit();
    /// @return whether there was something to be taken back
    bool undo() noexcept;

private:
    sqlite3 *m_db = nullptr;
    sqlite3_stmt *m_save = nullptr;
    sqlite3_stmt *m_release = nullptr;
    sqlite3_stmt *m_undo = nullptr;
    int m_asked = 0;
    int m_begun = 0;        // of those, the ones in which something was written
    bool m_counted = false; // without the engine
    bool m_lost = false;
};

} // namespace sqlcipher
