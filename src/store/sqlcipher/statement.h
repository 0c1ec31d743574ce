// A compiled statement of the built-in engine.
#pragma once

#include "store/engine.h"
#include "store/sqlcipher/connection.h"
#include "store/sqlcipher/parts.h"

namespace sqlcipher
{

/// See store::Statement. Blobs read as text.
class FileStatement final : public store::Statement
{
public:
    /// Compiles a statement.
    /// @param parts   told of every write
    /// @param waiting true while the engine waits for a lock and cannot run statements; it must
    ///        outlive the statement, like @p parts
    /// @throws StoreError
    FileStatement(sqlite3 *db, Parts &parts, const bool &waiting, const std::string &sql);

    void bind(int parameter, const store::Value &value) override;
    bool step() override;
    void reset() noexcept override { sqlite3_reset(m_st.get()); }
    int allColumns() const override { return sqlite3_column_count(m_st.get()); }

    Kind kindOf(int column) const override;
    qint64 whole(int column) const override { return sqlite3_column_int64(m_st.get(), column); }
    double floating(int column) const override { return sqlite3_column_double(m_st.get(), column); }
    std::string_view text(int column) const override;

private:
    sqlite3 *m_db;
    Parts &m_parts;
    const bool &m_waiting;
    Prepared m_st;
    std::string m_sql;
    bool m_writes = false;
};

} // namespace sqlcipher
