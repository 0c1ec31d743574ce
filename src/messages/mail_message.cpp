#include "messages/mail_message.h"

#include <QLocale>
#include <QRegularExpression>

using namespace messages;
using namespace Qt::StringLiterals;

namespace
{

QString withoutControls(QString text)
{
    for (QChar &c : text)
        if (c.unicode() < 0x20 || c.unicode() == 0x7f || c.category() == QChar::Other_Control
            || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    return text.simplified();
}

bool isAscii(const QString &text)
{
    for (const QChar c : text)
        if (c.unicode() >= 0x7f)
            return false;
    return true;
}

// A line that holds an encoded word may take 76 characters with the name of the header before it,
// "Subject: " at the longest, and the word's frame of 12; base64 makes 4 of 3 bytes.
constexpr int BytesPerWord = 39;

QByteArray inWords(const QString &text)
{
    QByteArray exit, piece;
    const auto close = [&] {
        if (!exit.isEmpty())
            exit += "\r\n ";
        exit += "=?UTF-8?B?" + piece.toBase64() + "?=";
        piece.clear();
    };
    // A letter is never parted between two words.
    for (qsizetype i = 0; i < text.size();) {
        const qsizetype n = text[i].isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        const QByteArray font = text.mid(i, n).toUtf8();
        if (piece.size() + font.size() > BytesPerWord)
            close();
        piece += font;
        i += n;
    }
    close();
    return exit;
}

constexpr qsizetype LineLength = 76; // with the sign that it goes on

bool goesAsIs(char c) { return (c >= '!' && c <= '~' && c != '=') || c == ' ' || c == '\t'; }

QByteArray textLine(const QByteArray &line)
{
    QByteArray exit;
    qsizetype start = 0; // of the line under way
    for (qsizetype i = 0; i < line.size(); ++i) {
        const char c = line[i];
        // A blank at the end could be lost on the way.
        const bool asIs = goesAsIs(c) && (c > ' ' || i + 1 < line.size());
        const QByteArray font = asIs ? QByteArray(1, c) : '=' + QByteArray(1, c).toHex().toUpper();
        if (exit.size() - start + font.size() >= LineLength) {
            exit += "=\r\n";
            start = exit.size();
        }
        exit += font;
    }
    return exit + "\r\n";
}

} // namespace

QByteArray messages::headerValue(const QString &text)
{
    const QString clean = withoutControls(text);
    // A long plain text is folded too: a line of a mail ends at 998 bytes at the latest.
    if (isAscii(clean) && clean.size() <= 60 && !clean.contains(u"=?"_s))
        return clean.toLatin1();
    return inWords(clean);
}

QStringList messages::validAddresses(const QString &text)
{
    static const QRegularExpression parts(u"[,;]"_s);
    // Letters of other alphabets are for servers that few clinics have; before the at sign they are
    // slips of the hand nearly always.
    static const QRegularExpression address(
        uR"(^[^@<>()\[\]\\"',;:\x00-\x20\x7f-\x{10ffff}]+@[^\s@<>()\\"',;\x00-\x20\x7f]+$)"_s);
    QStringList valid;
    for (const QString &part : text.split(parts, Qt::SkipEmptyParts)) {
        const QString one = part.trimmed();
        if (one.size() <= 254 && address.match(one).hasMatch() && !valid.contains(one))
            valid << one;
    }
    return valid;
}

QByteArray messages::addressWithName(const QString &name, const QString &address)
{
    const QString clean = withoutControls(name);
    if (clean.isEmpty())
        return address.toUtf8();
    // Encoded words need no quotes, and within quotes a name could break out of them.
    const QByteArray before = inWords(clean);
    return before + "\r\n <" + address.toUtf8() + ">";
}

QByteArray messages::mailDate(const QDateTime &moment)
{
    const int minutes = moment.offsetFromUtc() / 60;
    const QString zone = u"%1%2%3"_s.arg(QChar(minutes < 0 ? u'-' : u'+'))
                             .arg(qAbs(minutes) / 60, 2, 10, QChar(u'0'))
                             .arg(qAbs(minutes) % 60, 2, 10, QChar(u'0'));
    return (QLocale::c().toString(moment, u"ddd, d MMM yyyy HH:mm:ss "_s) + zone).toLatin1();
}

QByteArray messages::mailText(const QString &text)
{
    QString t = text;
    t.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    QByteArray exit;
    for (const QByteArray &line : t.toUtf8().split('\n'))
        exit += textLine(line);
    return exit;
}
