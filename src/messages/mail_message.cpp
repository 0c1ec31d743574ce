#include "messages/mail_message.h"

#include <QLocale>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{

QString SinControles(QString texto)
{
    for (QChar &c : texto)
        if (c.unicode() < 0x20 || c.unicode() == 0x7f || c.category() == QChar::Other_Control
            || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    return texto.simplified();
}

bool EsAscii(const QString &texto)
{
    for (const QChar c : texto)
        if (c.unicode() >= 0x7f)
            return false;
    return true;
}

// A line that holds an encoded word may take 76 characters with the name of the header before it,
// "Subject: " at the longest, and the word's frame of 12; base64 makes 4 of 3 bytes.
constexpr int BytesPorPalabra = 39;

QByteArray EnPalabras(const QString &texto)
{
    QByteArray salida, trozo;
    const auto cerrar = [&] {
        if (!salida.isEmpty())
            salida += "\r\n ";
        salida += "=?UTF-8?B?" + trozo.toBase64() + "?=";
        trozo.clear();
    };
    // A letter is never parted between two words.
    for (qsizetype i = 0; i < texto.size();) {
        const qsizetype n = texto[i].isHighSurrogate() && i + 1 < texto.size() ? 2 : 1;
        const QByteArray letra = texto.mid(i, n).toUtf8();
        if (trozo.size() + letra.size() > BytesPorPalabra)
            cerrar();
        trozo += letra;
        i += n;
    }
    cerrar();
    return salida;
}

constexpr qsizetype LargoDeLinea = 76; // with the sign that it goes on

bool VaTalCual(char c) { return (c >= '!' && c <= '~' && c != '=') || c == ' ' || c == '\t'; }

QByteArray LineaDeTexto(const QByteArray &linea)
{
    QByteArray salida;
    qsizetype inicio = 0; // of the line under way
    for (qsizetype i = 0; i < linea.size(); ++i) {
        const char c = linea[i];
        // A blank at the end could be lost on the way.
        const bool talCual = VaTalCual(c) && (c > ' ' || i + 1 < linea.size());
        const QByteArray letra =
            talCual ? QByteArray(1, c) : '=' + QByteArray(1, c).toHex().toUpper();
        if (salida.size() - inicio + letra.size() >= LargoDeLinea) {
            salida += "=\r\n";
            inicio = salida.size();
        }
        salida += letra;
    }
    return salida + "\r\n";
}

} // namespace

QByteArray ValorDeCabecera(const QString &texto)
{
    const QString limpio = SinControles(texto);
    // A long plain text is folded too: a line of a mail ends at 998 bytes at the latest.
    if (EsAscii(limpio) && limpio.size() <= 60 && !limpio.contains(u"=?"_s))
        return limpio.toLatin1();
    return EnPalabras(limpio);
}

QStringList DireccionesValidas(const QString &texto)
{
    static const QRegularExpression partes(u"[,;]"_s);
    // Letters of other alphabets are for servers that few clinics have; before the at sign they are
    // slips of the hand nearly always.
    static const QRegularExpression direccion(
        uR"(^[^@<>()\[\]\\"',;:\x00-\x20\x7f-\x{10ffff}]+@[^\s@<>()\\"',;\x00-\x20\x7f]+$)"_s);
    QStringList validas;
    for (const QString &parte : texto.split(partes, Qt::SkipEmptyParts)) {
        const QString una = parte.trimmed();
        if (una.size() <= 254 && direccion.match(una).hasMatch() && !validas.contains(una))
            validas << una;
    }
    return validas;
}

QByteArray DireccionConNombre(const QString &nombre, const QString &direccion)
{
    const QString limpio = SinControles(nombre);
    if (limpio.isEmpty())
        return direccion.toUtf8();
    // Encoded words need no quotes, and within quotes a name could break out of them.
    const QByteArray antes = EnPalabras(limpio);
    return antes + "\r\n <" + direccion.toUtf8() + ">";
}

QByteArray FechaDeCorreo(const QDateTime &momento)
{
    const int minutos = momento.offsetFromUtc() / 60;
    const QString zona = u"%1%2%3"_s.arg(QChar(minutos < 0 ? u'-' : u'+'))
                             .arg(qAbs(minutos) / 60, 2, 10, QChar(u'0'))
                             .arg(qAbs(minutos) % 60, 2, 10, QChar(u'0'));
    return (QLocale::c().toString(momento, u"ddd, d MMM yyyy HH:mm:ss "_s) + zona).toLatin1();
}

QByteArray TextoDeCorreo(const QString &texto)
{
    QString t = texto;
    t.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    QByteArray salida;
    for (const QByteArray &linea : t.toUtf8().split('\n'))
        salida += LineaDeTexto(linea);
    return salida;
}
