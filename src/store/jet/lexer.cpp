#include "store/jet/lexer.h"

#include "store/jet/moment.h"

#include <algorithm>

using namespace store;

namespace jet
{
namespace
{
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
// Every character outside ASCII is allowed in a name.
bool beginsName(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'
           || static_cast<unsigned char>(c) >= 0x80;
}
bool continuesName(char c) { return beginsName(c) || isDigit(c); }

class Lexer
{
public:
    explicit Lexer(std::string_view sql) : m_sql(sql) {}

    std::vector<Token> all()
    {
        if (m_sql.size() > MaxStatement)
            refuse(m_sql, 0, QStringLiteral("The statement is too long"));
        if (const size_t zero = m_sql.find('\0'); zero != m_sql.npos)
            refuse(m_sql, int(zero), QStringLiteral("A zero byte"));
        std::vector<Token> tokens;
        do
            tokens.push_back(next());
        while (tokens.back().kind != Token::End);
        return tokens;
    }

private:
    char at(size_t i) const { return i < m_sql.size() ? m_sql[i] : '\0'; }

    Token next()
    {
        while (isBlank(at(m_at)))
            ++m_at;
        Token token;
        token.place = int(m_at);
        const char c = at(m_at);
        if (c == '\0')
            return token;
        if (beginsName(c))
            token.kind = Token::Name, token.text = takeWhile(continuesName);
        else if (isDigit(c) || (c == '.' && isDigit(at(m_at + 1))))
            takeNumber(token);
        else if (c == '\'' || c == '"')
            token.kind = Token::Text, token.text = takeText(c);
        else if (c == '[')
            token.kind = Token::Bracketed, token.text = takeBracketed();
        else if (c == '#')
            token.kind = Token::Moment, token.text = takeMoment();
        else if (c == '?')
            token.kind = Token::Given, ++m_at;
        else if (c == ';')
            takeEnd();
        else
            token.kind = Token::Symbol, token.text = takeSymbol();
        return token;
    }

    std::string takeWhile(bool (*wanted)(char))
    {
        const size_t begin = m_at;
        while (wanted(at(m_at)))
            ++m_at;
        return std::string(m_sql.substr(begin, m_at - begin));
    }

    void takeNumber(Token &token)
    {
        const size_t begin = m_at;
        token.kind = Token::Integer;
        takeWhile(isDigit);
        if (at(m_at) == '.') {
            token.kind = Token::Decimal;
            ++m_at;
            takeWhile(isDigit);
        }
        if (at(m_at) == 'e' || at(m_at) == 'E') {
            token.kind = Token::Decimal;
            ++m_at;
            if (at(m_at) == '+' || at(m_at) == '-')
                ++m_at;
            if (takeWhile(isDigit).empty())
                refuse(m_sql, int(begin), QStringLiteral("No number"));
        }
        if (continuesName(at(m_at)) || at(m_at) == '.')
            refuse(m_sql, int(begin), QStringLiteral("No number"));
        token.text = m_sql.substr(begin, m_at - begin);
    }

    // A quote inside the text is doubled.
    std::string takeText(char quote)
    {
        const size_t begin = m_at++;
        std::string text;
        for (;; ++m_at) {
            if (m_at >= m_sql.size())
                refuse(m_sql, int(begin), QStringLiteral("The text is not closed"));
            if (m_sql[m_at] == quote && at(++m_at) != quote)
                return text;
            text += m_sql[m_at];
        }
    }

    std::string takeBracketed()
    {
        const size_t end = m_sql.find(']', m_at);
        const std::string_view name = m_sql.substr(m_at + 1, end - m_at - 1);
        if (end == m_sql.npos || name.empty() || name.find_first_of("[\n") != name.npos)
            refuse(m_sql, int(m_at), QStringLiteral("No name in brackets"));
        m_at = end + 1;
        return std::string(name);
    }

    std::string takeMoment()
    {
        const size_t end = m_sql.find('#', m_at + 1);
        if (end == m_sql.npos)
            refuse(m_sql, int(m_at), QStringLiteral("The date is not closed"));
        const auto moment = momentFromLiteral(m_sql.substr(m_at + 1, end - m_at - 1));
        if (!moment)
            refuse(m_sql, int(m_at), QStringLiteral("No date or time"));
        m_at = end + 1;
        return toStorage(*moment);
    }

    void takeEnd()
    {
        const size_t begin = m_at++;
        while (isBlank(at(m_at)))
            ++m_at;
        if (m_at < m_sql.size())
            refuse(m_sql, int(begin), QStringLiteral("One statement at a time"));
    }

    std::string takeSymbol()
    {
        const std::string two(m_sql.substr(m_at, 2));
        if (two == "/*")
            refuse(m_sql, int(m_at), QStringLiteral("Comments are not taken"));
        const bool isTwo = two == "<>" || two == "<=" || two == ">=";
        if (!isTwo && std::string_view("(),.*+-/\\&=<>").find(two[0]) == std::string_view::npos)
            refuse(m_sql, int(m_at), QStringLiteral("Not a character of the dialect"));
        m_at += isTwo ? 2 : 1;
        return two.substr(0, isTwo ? 2 : 1);
    }

    std::string_view m_sql;
    size_t m_at = 0;
};
} // namespace

std::vector<Token> tokens(std::string_view sql) { return Lexer(sql).all(); }

void refuse(std::string_view sql, int place, const QString &reason, int number)
{
    // Cut a long line to what fits in a message box.
    constexpr qsizetype Before = 40;
    constexpr qsizetype After = 30;
    const size_t at = std::min(size_t(place), sql.size());
    const auto text = [](std::string_view s) {
        return QString::fromUtf8(s.data(), qsizetype(s.size()));
    };
    const std::string_view head = sql.substr(0, at);
    const size_t lineBegin = head.rfind('\n') + 1; // npos + 1 is 0
    const size_t lineEnd = std::min(sql.find('\n', at), sql.size());
    const QString before = text(sql.substr(lineBegin, at - lineBegin));
    const QString after = text(sql.substr(at, std::min(lineEnd - at, size_t(After) * 4)));

    QString shown = before.right(Before) + after.left(After);
    for (QChar &c : shown)
        if (c.unicode() < u' ')
            c = u' ';
    const QString blanks(qMin(before.size(), Before), u' ');
    const auto line = std::ranges::count(head, '\n') + 1;
    throw StoreError(
        number,
        QStringLiteral("%1, line %2, column %3:\n%4\n%5^")
            .arg(reason, QString::number(line), QString::number(before.size() + 1), shown, blanks),
        text(sql));
}

} // namespace jet
