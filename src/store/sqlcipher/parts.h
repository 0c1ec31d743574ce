// The parts of a transaction.
#pragma once

struct sqlite3;
struct sqlite3_stmt;

namespace sqlcipher
{

/// A rule may try tens of thousands of steps of which few write anything, so a savepoint is set
/// only when something is written in a part. See Motor::beginPart and Motor::countParts.
class Parts
{
public:
    Parts() = default;
    ~Parts() { close(); }
    Parts(const Parts &) = delete;
    Parts &operator=(const Parts &) = delete;

    /// Prepares for a connection; call it once the connection is open.
    void open(sqlite3 *db);
    /// Frees the statements; call it before the connection is closed.
    void close();

    /// Begins a part.
    void ask() { ++m_asked; }
    /// Sets no savepoints until the end of the transaction.
    void onlyCount() { m_counted = true; }
    /// Whether a part without a savepoint had to be undone.
    bool lost() const { return m_lost; }
    /// Forgets all parts, as the transaction is over.
    void end();

    /// Sets the missing savepoints; call it before every write.
    /// @throws StoreError 3000 when the engine has ended the transaction by itself
    void begin();
    /// Notes a write; call it after every one that succeeded.
    void written();
    /// Ends the innermost part and keeps what it wrote. @throws StoreError
    void commit();
    /// Ends the innermost part and undoes what it wrote.
    /// @return whether there was anything to undo
    bool undo() noexcept;

private:
    sqlite3 *m_db = nullptr;
    sqlite3_stmt *m_save = nullptr;
    sqlite3_stmt *m_release = nullptr;
    sqlite3_stmt *m_undo = nullptr;
    int m_asked = 0;
    int m_begun = 0;        // of those, the outermost ones in which something was written
    bool m_counted = false; // parts have no savepoints
    bool m_lost = false;
};

} // namespace sqlcipher
