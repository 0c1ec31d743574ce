// What the parts of the built-in engine share: opening encrypted files, and turning the engine's
// errors into those of the store.
#pragma once

#include "store/errors.h"

#include <QString>
#include <memory>
#include <sqlcipher/sqlite3.h>
#include <string>

namespace sqlcipher
{

/// Deleter of Connection.
struct CloseConnection {
    // If statements are still alive, the connection is closed with the last of them.
    void operator()(sqlite3 *db) const { sqlite3_close_v2(db); }
};
using Connection = std::unique_ptr<sqlite3, CloseConnection>;

/// Deleter of Prepared.
struct FinalizeStatement {
    void operator()(sqlite3_stmt *st) const { sqlite3_finalize(st); }
};
using Prepared = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// The password of every clinic's files; it only keeps other programs from opening them.
inline constexpr const char *Password = "korvi3namuspeltiraxo";
/// Bytes of a page in the files.
inline constexpr int PageSize = 4096;

/// Opens an encrypted file. Nothing is read yet: the first statement finds a wrong password.
/// @param create whether to create the file if it does not exist
/// @throws StoreError 75 when the file cannot be opened
Connection openFile(const QString &file, bool create);

/// Compiles a statement of the engine's SQL. @throws StoreError
Prepared prepare(sqlite3 *db, const std::string &sql);
/// Runs statements of the engine's SQL and ignores their rows. @throws StoreError
void run(sqlite3 *db, const std::string &sql);

/// Reads a whole database.
/// @return "ok", or its first fault in the engine's words
std::string check(sqlite3 *db, const std::string &schema);
/// Copies a whole database over the main database of another connection. @throws StoreError
void copy(sqlite3 *from, const std::string &schema, sqlite3 *to);

/// A name in double quotes, as the engine's SQL needs it.
std::string quotedName(std::string_view name);

/// The store's error number for a result code of the engine; 3000 for those without one.
int errorNumberOf(int code);
/// Throws the StoreError for a result code.
/// @param db  supplies the message; nullptr for the code's general one
/// @param sql the statement that failed
[[noreturn]] void fail(sqlite3 *db, int code, const std::string &sql = {});

} // namespace sqlcipher
