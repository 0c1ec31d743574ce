// What the parts of the built-in engine share: opening an encrypted file, and the engine's failures
// under the store's numbers.
#pragma once

#include "store/errors.h"

#include <QString>
#include <memory>
#include <sqlcipher/sqlite3.h>
#include <string>

namespace sqlcipher
{

struct CloseConnection {
    // The last statement closes it where one is still alive.
    void operator()(sqlite3 *db) const { sqlite3_close_v2(db); }
};
using Connection = std::unique_ptr<sqlite3, CloseConnection>;

struct FinalizeStatement {
    void operator()(sqlite3_stmt *st) const { sqlite3_finalize(st); }
};
using Prepared = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// All files of a clinic carry this password; it keeps them closed to other programs.
inline constexpr const char *Password = "korvi3namuspeltiraxo";
inline constexpr int PageSize = 4096;

/// Opens an encrypted file, or makes it. Nothing is read: a wrong password is found by the first
/// statement. @param create whether it is made when it is not there
/// @throws StoreError 75
Connection openFile(const QString &file, bool create);

/// @throws StoreError
Prepared prepare(sqlite3 *db, const std::string &sql);
void run(sqlite3 *db, const std::string &sql);

/// @return "ok" when the database is whole, else the first fault in the engine's words
std::string check(sqlite3 *db, const std::string &schema);
/// Copies a whole database over another connection's main one. @throws StoreError
void copy(sqlite3 *from, const std::string &schema, sqlite3 *to);

/// A name as the engine's SQL takes it.
std::string quotedName(std::string_view name);

/// The store's number for a code of the engine.
int errorNumberOf(int code);
[[noreturn]] void fail(sqlite3 *db, int code, const std::string &sql = {});

} // namespace sqlcipher
