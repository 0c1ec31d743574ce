#include "importing/delimited_file.h"

#include <array>
#include <map>

using namespace importing;
using namespace Qt::StringLiterals;

namespace
{

constexpr qint64 Piece = 256 * 1024;

// A longer field means that a quotation mark was never closed, and no list of clients has more
// columns than this.
constexpr qsizetype LongestField = 1'000'000;
constexpr qsizetype MasCampos = 10'000;

// Number of records from which the separator is guessed.
constexpr int Sample = 50;

// Windows-1252 in the range where Latin-1 has control characters: euro sign, curly quotes, dashes.
constexpr std::array<char16_t, 32> DeWindows{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString fromLatin1(const QByteArray &bytes)
{
    QString t = QString::fromLatin1(bytes);
    for (QChar &c : t)
        if (c >= u'\x80' && c < u'\xA0')
            c = QChar(DeWindows[size_t(c.unicode() - 0x80)]);
    return t;
}

} // namespace

DelimitedFile::DelimitedFile(const QString &file) : m_file(file)
{
    if (!m_file.open(QIODevice::ReadOnly)) {
        m_failure = Failure::NoSeLee;
        return;
    }
    lookThrough();
    if (m_failure == Failure::None)
        findSeparator();
}

void DelimitedFile::lookThrough()
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    while (!m_file.atEnd()) {
        const QByteArray bytes = m_file.read(Piece);
        if (bytes.isEmpty()) {
            m_failure = Failure::NoSeLee; // it is a folder, or the disk has gone
            return;
        }
        if (bytes.contains('\0')) {
            m_failure = Failure::NotIsText;
            return;
        }
        if (!utf8.hasError()) {
            const QString unused = utf8(bytes);
        }
    }
    // The line feed reveals a character that is cut off at the very end.
    const QString unused = utf8(QByteArrayView("\n"));
    m_utf8 = !utf8.hasError();
    goBack();
}

void DelimitedFile::findSeparator()
{
    // The best separator is the one with which most records have as many fields as the first one.
    int best = 0;
    QChar chosen = u',';
    for (const QChar candidate : {u',', u';', u'\t'}) {
        m_separator = candidate;
        m_failure = Failure::None; // the file may be readable with the next one
        goBack();
        QStringList fields;
        qsizetype titles = 0;
        int points = 0;
        for (int i = 0; i < Sample && read(fields); ++i) {
            if (i == 0)
                titles = fields.size();
            if (titles > 1 && fields.size() == titles)
                points += 1000 + int(std::min<qsizetype>(titles, 999));
        }
        if (points > best) {
            best = points;
            chosen = candidate;
        }
    }
    m_separator = chosen;
    m_failure = Failure::None;
    goBack();
}

void DelimitedFile::goBack()
{
    m_file.seek(0);
    m_decoder = QStringDecoder(QStringDecoder::Utf8);
    m_text.clear();
    m_spot = 0;
    m_line = 0;
    m_currentLine = 1;
}

bool DelimitedFile::fill()
{
    const QByteArray bytes = m_file.read(Piece);
    if (bytes.isEmpty()) {
        if (!m_file.atEnd())
            m_failure = Failure::NoSeLee;
        return false;
    }
    m_text = m_utf8 ? QString(m_decoder(bytes)) : fromLatin1(bytes);
    m_spot = 0;
    return true;
}

bool DelimitedFile::peek(QChar &c)
{
    while (m_spot >= m_text.size())
        if (!fill())
            return false;
    c = m_text[m_spot];
    return true;
}

bool DelimitedFile::read(QStringList &fields)
{
    fields.clear();
    if (m_failure != Failure::None)
        return false;
    QString field;
    bool inQuotes = false, begun = false, had = false;
    m_line = m_currentLine;
    for (QChar c; peek(c);) {
        ++m_spot;
        if (c == u'\n')
            ++m_currentLine;
        if (inQuotes) {
            QChar other;
            if (c != u'"') {
                field += c;
            } else if (peek(other) && other == u'"') {
                field += other;
                ++m_spot;
            } else {
                inQuotes = false;
            }
        } else if (c == u'"' && !begun) {
            inQuotes = begun = had = true;
        } else if (c == m_separator) {
            fields << field;
            field.clear();
            begun = false;
            had = true;
        } else if (c == u'\n' || c == u'\r') {
            QChar other;
            if (c == u'\r' && peek(other) && other == u'\n')
                continue; // the line feed ends the record
            if (c == u'\r')
                ++m_currentLine; // a carriage return alone, as in old Macintosh files
            if (had) {
                fields << field;
                return true;
            }
            m_line = m_currentLine;
        } else {
            field += c;
            begun = had = true;
        }
        if (field.size() > LongestField || fields.size() > MasCampos) {
            m_failure = inQuotes ? Failure::OpenQuotes : Failure::NotIsText;
            return false;
        }
    }
    if (m_failure == Failure::None && inQuotes)
        m_failure = Failure::OpenQuotes;
    if (m_failure != Failure::None || !had)
        return false;
    fields << field;
    return true;
}
