#include "clients/delimited_file.h"

#include <array>
#include <map>

using namespace Qt::StringLiterals;

namespace
{

constexpr qint64 Trozo = 256 * 1024;

// A field longer than this is no field: a mark was opened and never closed. Nor is a record with
// more fields than this one of a clinic.
constexpr qsizetype MayorCampo = 1'000'000;
constexpr qsizetype MasCampos = 10'000;

// Records that the separator is guessed from.
constexpr int Muestra = 50;

// What Windows puts where Latin-1 has control characters: the euro sign, curly marks, dashes.
constexpr std::array<char16_t, 32> DeWindows{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString DeLatin1(const QByteArray &bytes)
{
    QString t = QString::fromLatin1(bytes);
    for (QChar &c : t)
        if (c >= u'\x80' && c < u'\xA0')
            c = QChar(DeWindows[size_t(c.unicode() - 0x80)]);
    return t;
}

} // namespace

ArchivoDelimitado::ArchivoDelimitado(const QString &archivo) : m_archivo(archivo)
{
    if (!m_archivo.open(QIODevice::ReadOnly)) {
        m_falla = Falla::NoSeLee;
        return;
    }
    lookThrough();
    if (m_falla == Falla::Ninguna)
        findSeparator();
}

void ArchivoDelimitado::lookThrough()
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    while (!m_archivo.atEnd()) {
        const QByteArray bytes = m_archivo.read(Trozo);
        if (bytes.isEmpty()) {
            m_falla = Falla::NoSeLee; // a folder, or a disk that is gone
            return;
        }
        if (bytes.contains('\0')) {
            m_falla = Falla::NoEsTexto;
            return;
        }
        if (!utf8.hasError()) {
            const QString unused = utf8(bytes);
        }
    }
    // The line feed tells a character that is cut off at the very end.
    const QString unused = utf8(QByteArrayView("\n"));
    m_utf8 = !utf8.hasError();
    Volver();
}

void ArchivoDelimitado::findSeparator()
{
    // The best separator gives the most records as many fields as their first one has.
    int mejores = 0;
    QChar elegido = u',';
    for (const QChar candidato : {u',', u';', u'\t'}) {
        m_separador = candidato;
        m_falla = Falla::Ninguna; // what this one cannot part, the next one may
        Volver();
        QStringList campos;
        qsizetype titulos = 0;
        int puntos = 0;
        for (int i = 0; i < Muestra && Leer(campos); ++i) {
            if (i == 0)
                titulos = campos.size();
            if (titulos > 1 && campos.size() == titulos)
                puntos += 1000 + int(std::min<qsizetype>(titulos, 999));
        }
        if (puntos > mejores) {
            mejores = puntos;
            elegido = candidato;
        }
    }
    m_separador = elegido;
    m_falla = Falla::Ninguna;
    Volver();
}

void ArchivoDelimitado::Volver()
{
    m_archivo.seek(0);
    m_decoder = QStringDecoder(QStringDecoder::Utf8);
    m_texto.clear();
    m_sitio = 0;
    m_linea = 0;
    m_lineaActual = 1;
}

bool ArchivoDelimitado::fill()
{
    const QByteArray bytes = m_archivo.read(Trozo);
    if (bytes.isEmpty()) {
        if (!m_archivo.atEnd())
            m_falla = Falla::NoSeLee;
        return false;
    }
    m_texto = m_utf8 ? QString(m_decoder(bytes)) : DeLatin1(bytes);
    m_sitio = 0;
    return true;
}

bool ArchivoDelimitado::peek(QChar &c)
{
    while (m_sitio >= m_texto.size())
        if (!fill())
            return false;
    c = m_texto[m_sitio];
    return true;
}

bool ArchivoDelimitado::Leer(QStringList &campos)
{
    campos.clear();
    if (m_falla != Falla::Ninguna)
        return false;
    QString campo;
    bool enComillas = false, empezado = false, habia = false;
    m_linea = m_lineaActual;
    for (QChar c; peek(c);) {
        ++m_sitio;
        if (c == u'\n')
            ++m_lineaActual;
        if (enComillas) {
            QChar otra;
            if (c != u'"') {
                campo += c;
            } else if (peek(otra) && otra == u'"') {
                campo += otra;
                ++m_sitio;
            } else {
                enComillas = false;
            }
        } else if (c == u'"' && !empezado) {
            enComillas = empezado = habia = true;
        } else if (c == m_separador) {
            campos << campo;
            campo.clear();
            empezado = false;
            habia = true;
        } else if (c == u'\n' || c == u'\r') {
            QChar otra;
            if (c == u'\r' && peek(otra) && otra == u'\n')
                continue; // the line feed ends it
            if (c == u'\r')
                ++m_lineaActual; // lines of old Macintosh files
            if (habia) {
                campos << campo;
                return true;
            }
            m_linea = m_lineaActual;
        } else {
            campo += c;
            empezado = habia = true;
        }
        if (campo.size() > MayorCampo || campos.size() > MasCampos) {
            m_falla = enComillas ? Falla::ComillasAbiertas : Falla::NoEsTexto;
            return false;
        }
    }
    if (m_falla == Falla::Ninguna && enComillas)
        m_falla = Falla::ComillasAbiertas;
    if (m_falla != Falla::Ninguna || !habia)
        return false;
    campos << campo;
    return true;
}
