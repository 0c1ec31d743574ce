#include "store/sqlcipher/parts.h"

#include "store/sqlcipher/connection.h"

using namespace store;
using sqlcipher::Parts;

namespace
{

int runOnce(sqlite3_stmt *statement) noexcept
{
    sqlite3_step(statement);
    return sqlite3_reset(statement);
}

} // namespace

void Parts::open(sqlite3 *db)
{
    m_db = db;
    for (const auto &[statement, sql] :
         {std::pair(&m_save, "SAVEPOINT part"), std::pair(&m_release, "RELEASE part"),
          std::pair(&m_undo, "ROLLBACK TO part")})
        sqlite3_prepare_v2(db, sql, -1, statement, nullptr);
}

void Parts::close()
{
    for (sqlite3_stmt **statement : {&m_save, &m_release, &m_undo}) {
        sqlite3_finalize(*statement);
        *statement = nullptr;
    }
}

void Parts::end()
{
    m_asked = m_begun = 0;
    m_counted = m_lost = false;
}

void Parts::begin()
{
    if (m_counted)
        return;
    // If the engine has ended the transaction by itself, a savepoint would begin a new one.
    if (m_begun < m_asked && sqlite3_get_autocommit(m_db) != 0)
        throw StoreError(ErrorNumber::Internals, QStringLiteral("The batch was broken off"));
    for (; m_begun < m_asked; ++m_begun)
        if (const int r = runOnce(m_save); r != SQLITE_OK)
            fail(m_db, r);
}

void Parts::written()
{
    if (m_counted)
        m_begun = m_asked;
}

void Parts::commit()
{
    if (m_begun == m_asked) {
        if (const int r = m_counted ? SQLITE_OK : runOnce(m_release); r != SQLITE_OK)
            fail(m_db, r);
        --m_begun;
    }
    --m_asked;
}

bool Parts::undo() noexcept
{
    const bool any = m_asked > 0 && m_begun == m_asked;
    if (any) {
        if (m_counted) {
            m_lost = true;
        } else if (sqlite3_get_autocommit(m_db) == 0) { // unless the engine has ended it by itself
            runOnce(m_undo);
            runOnce(m_release);
        }
        --m_begun;
    }
    --m_asked;
    return any;
}
