#include "store/sqlcipher/statement.h"

using namespace store;
using sqlcipher::FileStatement;

namespace
{

void twoDigits(char *p, int n)
{
    p[0] = char('0' + n / 10 % 10);
    p[1] = char('0' + n % 10);
}

void writeDay(char *p, QDate d)
{
    int a = 0, m = 0, dia = 0;
    d.getDate(&a, &m, &dia);
    twoDigits(p, a / 100);
    twoDigits(p + 2, a % 100);
    p[4] = p[7] = '-';
    twoDigits(p + 5, m);
    twoDigits(p + 8, dia);
}

void writeHour(char *p, QTime t)
{
    twoDigits(p, t.hour());
    p[2] = p[5] = ':';
    twoDigits(p + 3, t.minute());
    twoDigits(p + 6, t.second());
}

} // namespace

FileStatement::FileStatement(sqlite3 *db, Parts &parts, const bool &waiting, const std::string &sql)
    : m_db(db), m_parts(parts), m_waiting(waiting), m_st(sqlcipher::prepare(db, sql)), m_sql(sql)
{
    m_writes = sqlite3_stmt_readonly(m_st.get()) == 0;
}

void FileStatement::bind(int parameter, const Value &value)
{
    const int i = parameter + 1;
    const int r = std::visit(
        [this, i](const auto &v) {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, std::monostate>)
                return sqlite3_bind_null(m_st.get(), i);
            else if constexpr (std::is_same_v<T, bool>)
                return sqlite3_bind_int(m_st.get(), i, v ? -1 : 0);
            else if constexpr (std::is_same_v<T, qint64>)
                return sqlite3_bind_int64(m_st.get(), i, v);
            else if constexpr (std::is_same_v<T, double>)
                return sqlite3_bind_double(m_st.get(), i, v);
            else if constexpr (std::is_same_v<T, Moneda>)
                return sqlite3_bind_double(m_st.get(), i, v.toDouble());
            else if constexpr (std::is_same_v<T, QString>) {
                const QByteArray b = v.toUtf8();
                return sqlite3_bind_text(m_st.get(), i, b.constData(), int(b.size()),
                                         SQLITE_TRANSIENT);
            } else {
                char t[19];
                int n = 0;
                if constexpr (std::is_same_v<T, QDate>) {
                    // Other years have no form in the files.
                    if (v.year() < 0 || v.year() > 9999)
                        return sqlite3_bind_null(m_st.get(), i);
                    writeDay(t, v);
                    n = 10;
                } else if constexpr (std::is_same_v<T, QTime>) {
                    writeHour(t, v);
                    n = 8;
                } else {
                    writeDay(t, v.date());
                    t[10] = ' ';
                    writeHour(t + 11, v.time());
                    n = 19;
                }
                return sqlite3_bind_text(m_st.get(), i, t, n, SQLITE_TRANSIENT);
            }
        },
        value.contentOf());
    if (r != SQLITE_OK)
        fail(m_db, r, m_sql);
}

bool FileStatement::step()
{
    if (m_waiting)
        throw StoreError(ErrorNumber::Locked, {});
    if (m_writes)
        m_parts.begin();
    const int r = sqlite3_step(m_st.get());
    if (m_writes && (r == SQLITE_ROW || r == SQLITE_DONE))
        m_parts.written();
    if (r == SQLITE_ROW)
        return true;
    if (r == SQLITE_DONE)
        return false;
    // The reset would lose the message.
    try {
        fail(m_db, r, m_sql);
    } catch (...) {
        sqlite3_reset(m_st.get());
        throw;
    }
}

Statement::Kind FileStatement::kindOf(int column) const
{
    switch (sqlite3_column_type(m_st.get(), column)) {
    case SQLITE_NULL:
        return Kind::Null;
    case SQLITE_INTEGER:
        return Kind::Whole;
    case SQLITE_FLOAT:
        return Kind::Floating;
    default:
        return Kind::Text; // a blob is a memo that as text would be taken for a number
    }
}

std::string_view FileStatement::text(int column) const
{
    const auto *p = static_cast<const char *>(sqlite3_column_blob(m_st.get(), column));
    return p ? std::string_view(p, size_t(sqlite3_column_bytes(m_st.get(), column)))
             : std::string_view();
}
