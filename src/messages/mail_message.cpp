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

// RFC 2047 allows 76 characters for a line with an encoded word. That includes the header's name,
// at most "Subject: ", and the 12 characters around the word; base64 turns 3 bytes into 4.
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
    // A character is never split between two words.
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

constexpr qsizetype LineLength = 76; // RFC 2045; includes the "=" of a soft line break

bool goesAsIs(char c) { return (c >= '!' && c <= '~' && c != '=') || c == ' ' || c == '\t'; }

QByteArray textLine(const QByteArray &line)
{
    QByteArray exit;
    qsizetype start = 0; // of the current output line
    for (qsizetype i = 0; i < line.size(); ++i) {
        const char c = line[i];
        // Mail servers may strip a space at the end of a line.
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
    // Long plain text is encoded too, which folds it: a mail line may have 998 bytes at most.
    if (isAscii(clean) && clean.size() <= 60 && !clean.contains(u"=?"_s))
        return clean.toLatin1();
    return inWords(clean);
}

QStringList messages::validAddresses(const QString &text)
{
    static const QRegularExpression parts(u"[,;]"_s);
    // Non-ASCII letters before the at sign are nearly always typing errors, and few servers accept
    // them.
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
    // An encoded word needs no quotes; a quoted name could break out of its quotes.
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
