// Reading a file of separated values record by record, whichever program wrote it.
#pragma once

#include <QFile>
#include <QStringDecoder>
#include <QStringList>

namespace importing
{

/// A text file of records whose fields are separated by ',', ';' or tabs. The separator and the
/// encoding, UTF-8 or Windows-1252, are detected. A quoted field may contain separators, line feeds
/// and doubled quotation marks. Empty lines are skipped.
///
/// Only the current record is kept in memory, so a file may be of any size.
class DelimitedFile
{
public:
    enum class Failure {
        None,
        NoSeLee,   // it cannot be opened or read; see systemError
        NotIsText, // it contains NUL bytes, as programs, workbooks and UTF-16 do
        OpenQuotes // the quotation mark opened on Line() is not closed within the longest field
    };

    /// Opens the file and scans it once to detect the separator and the encoding.
    explicit DelimitedFile(const QString &file);

    /// What went wrong so far.
    Failure failure() const { return m_failure; }
    /// The system's description of the last error on the file.
    QString systemError() const { return m_file.errorString(); }
    /// The separator that was detected.
    QChar separatorSign() const { return m_separator; }
    /// Whether the file is UTF-8; if not, it is read as Windows-1252.
    bool isUtf8() const { return m_utf8; }
    /// Size of the file in bytes.
    qint64 extent() const { return m_file.size(); }
    /// Bytes read so far, for the progress bar.
    qint64 hasBeenRead() const { return m_file.pos(); }
    /// The line, counted from 1, on which the last record begins.
    int Line() const { return m_line; }

    /// Reads the next record. @return false at the end of the file and on failure
    bool read(QStringList &fields);
    /// Goes back to the first record.
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
    QString m_text; // decoded text, still unread from m_spot on
    qsizetype m_spot = 0;
    int m_line = 0;
    int m_currentLine = 1;
};

} // namespace importing
