// Reading a file of separated values record by record, whatever program wrote it.
#pragma once

#include <QFile>
#include <QStringDecoder>
#include <QStringList>

namespace importing
{

/// A text file of records, fields parted by ',', ';' or tabs. Which of them, and whether the
/// characters are UTF-8 or the Windows form of Latin-1, is found out by itself. A field in
/// quotation marks may hold separators, line feeds and, doubled, quotation marks. Empty lines are
/// no records.
///
/// Only the record at hand is kept, so a file may be of any size.
class DelimitedFile
{
public:
    enum class Failure {
        None,
        NoSeLee,   // it cannot be opened or read; see systemError
        NotIsText, // it holds NUL bytes, as programs, workbooks and UTF-16 do
        OpenQuotes // marks opened on Linea() are not closed within reach
    };

    /// Opens the file and looks it through once.
    explicit DelimitedFile(const QString &file);

    Failure failure() const { return m_failure; }
    QString systemError() const { return m_file.errorString(); }
    QChar separatorSign() const { return m_separator; }
    bool isUtf8() const { return m_utf8; }
    qint64 extent() const { return m_file.size(); }
    /// How much of the file has been read so far, for progress.
    qint64 hasBeenRead() const { return m_file.pos(); }
    /// The line, from 1, on which the record last read begins.
    int Line() const { return m_line; }

    /// The next record. @return false at the end, or when something failed
    bool read(QStringList &fields);
    /// Back to the first record.
    void goBack();

private:
    void lookThrough();
    void findSeparator();
    bool fill();
    bool peek(QChar &c);

    QFile m_file;
    Failure m_failure = Failure::None;
    bool m_utf8 = true;
    QChar m_separator = u',';
    QStringDecoder m_decoder;
    QString m_text; // decoded and not yet taken from m_sitio on
    qsizetype m_spot = 0;
    int m_line = 0;
    int m_currentLine = 1;
};

} // namespace importing
