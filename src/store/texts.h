// The string table: every message of the system by number, in three languages.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace store
{

enum class Language { Spanish, Portuguese, English };

/// "es", "pt" or "en", also as the first part of a locale's name ("pt_BR"). English otherwise.
Language codeLanguage(const QString &code);
/// "es", "pt", "en".
QString languageCode(Language language);

/// The texts of one language.
class Texts
{
public:
    /// Reads the table that is built into the program. @throws std::runtime_error when it is
    /// damaged
    explicit Texts(Language language = Language::English);

    Language language() const { return m_language; }
    /// The text with that number; "#" and the number when there is none, so that a gap is seen.
    QString operator()(int number) const;

    /// Reads a table from text, all languages. Used by the check of the table.
    /// @param errores one line for each fault: number twice, language missing, blanks at the ends
    ///        that differ between languages, what cannot be read
    static QHash<int, QStringList> read(const QString &table, QStringList *errores);

private:
    Language m_language;
    QHash<int, QString> m_texts;
};

} // namespace store
