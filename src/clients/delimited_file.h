// Reading a file of separated values record by record, whatever program wrote it.
#pragma once

#include <QFile>
#include <QStringDecoder>
#include <QStringList>

/// A text file of records, fields parted by ',', ';' or tabs. Which of them, and whether the
/// characters are UTF-8 or the Windows form of Latin-1, is found out by itself. A field in
/// quotation marks may hold separators, line feeds and, doubled, quotation marks. Empty lines are
/// no records.
///
/// Only the record at hand is kept, so a file may be of any size.
class ArchivoDelimitado
{
public:
    enum class Falla {
        Ninguna,
        NoSeLee,         // it cannot be opened or read; see ErrorDeSistema
        NoEsTexto,       // it holds NUL bytes, as programs, workbooks and UTF-16 do
        ComillasAbiertas // marks opened on Linea() are not closed within reach
    };

    /// Opens the file and looks it through once.
    explicit ArchivoDelimitado(const QString &archivo);

    Falla LaFalla() const { return m_falla; }
    QString ErrorDeSistema() const { return m_archivo.errorString(); }
    QChar Separador() const { return m_separador; }
    bool EsUtf8() const { return m_utf8; }
    qint64 Tamano() const { return m_archivo.size(); }
    /// How much of the file has been read so far, for progress.
    qint64 Leido() const { return m_archivo.pos(); }
    /// The line, from 1, on which the record last read begins.
    int Linea() const { return m_linea; }

    /// The next record. @return false at the end, or when something failed
    bool Leer(QStringList &campos);
    /// Back to the first record.
    void Volver();

private:
    void lookThrough();
    void findSeparator();
    bool fill();
    bool peek(QChar &c);

    QFile m_archivo;
    Falla m_falla = Falla::Ninguna;
    bool m_utf8 = true;
    QChar m_separador = u',';
    QStringDecoder m_decoder;
    QString m_texto; // decoded and not yet taken from m_sitio on
    qsizetype m_sitio = 0;
    int m_linea = 0;
    int m_lineaActual = 1;
};
