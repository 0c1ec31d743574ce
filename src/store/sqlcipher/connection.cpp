#include "store/sqlcipher/connection.h"

#include <QFile>
#include <cstring>

using namespace store;

int sqlcipher::errorNumberOf(int code)
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
    // Refused by the gate of a column, see sqlcipher/functions.cpp.
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

void sqlcipher::fail(sqlite3 *db, int code, const std::string &sql)
{
    const QString text =
        db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(code));
    // The message reads "NOT NULL constraint failed: Table.Column".
    if (db && sqlite3_extended_errcode(db) == SQLITE_CONSTRAINT_NOTNULL)
        throw StoreError(ErrorNumber::NullNotTaken,
                         QStringLiteral("\"%1\": a value is needed").arg(text.section(u'.', -1)),
                         QString::fromStdString(sql));
    throw StoreError(errorNumberOf(code), text, QString::fromStdString(sql));
}

std::string sqlcipher::quotedName(std::string_view name)
{
    std::string s = "\"";
    for (const char c : name) {
        if (c == '"')
            s += '"';
        s += c;
    }
    return s + '"';
}

sqlcipher::Connection sqlcipher::openFile(const QString &file, bool create)
{
    sqlite3 *db = nullptr;
    const int flags =
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (create ? SQLITE_OPEN_CREATE : 0);
    const int opened = sqlite3_open_v2(QFile::encodeName(file).constData(), &db, flags, nullptr);
    Connection connection(db);
    if (opened != SQLITE_OK)
        fail(db, opened);
    // The file format must be chosen before the key is set, as that applies it. A library that
    // supports only this format ignores the first pragma.
    run(db, "PRAGMA cipher_default_compatibility = 3");
    run(db, "PRAGMA cipher_default_page_size = " + std::to_string(PageSize));
    if (const int r = sqlite3_key(db, Password, int(std::strlen(Password))); r != SQLITE_OK)
        fail(db, r);
    run(db, "PRAGMA temp_store = MEMORY"); // temporary files would be unencrypted
    return connection;
}

sqlcipher::Prepared sqlcipher::prepare(sqlite3 *db, const std::string &sql)
{
    sqlite3_stmt *st = nullptr;
    if (const int r = sqlite3_prepare_v2(db, sql.data(), int(sql.size()), &st, nullptr);
        r != SQLITE_OK)
        fail(db, r, sql);
    return Prepared(st);
}

void sqlcipher::run(sqlite3 *db, const std::string &sql)
{
    if (const int r = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr); r != SQLITE_OK)
        fail(db, r, sql);
}

std::string sqlcipher::check(sqlite3 *db, const std::string &schema)
{
    const Prepared st = prepare(db, "PRAGMA " + quotedName(schema) + ".integrity_check(1)");
    if (const int r = sqlite3_step(st.get()); r != SQLITE_ROW)
        return sqlite3_errstr(r);
    return reinterpret_cast<const char *>(sqlite3_column_text(st.get(), 0));
}

void sqlcipher::copy(sqlite3 *from, const std::string &schema, sqlite3 *to)
{
    sqlite3_backup *backup = sqlite3_backup_init(to, "main", from, schema.c_str());
    if (!backup)
        fail(to, sqlite3_errcode(to));
    sqlite3_backup_step(backup, -1);
    if (const int r = sqlite3_backup_finish(backup); r != SQLITE_OK)
        fail(nullptr, r);
}
