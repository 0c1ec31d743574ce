// The string table: every text of the system by number, in three languages.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace store
{

/// A language of the user interface; its value is the index of the language in the string table.
enum class Language { Spanish, Portuguese, English };

/// The language for "es", "pt" or a locale name that begins so ("pt_BR"); English for any other.
Language codeLanguage(const QString &code);
/// The code of a language: "es", "pt" or "en".
QString languageCode(Language language);

/// The texts of one language.
class Texts
{
public:
    /// Reads the string table built into the program.
    /// @throws std::runtime_error when it is missing or faulty
    explicit Texts(Language language = Language::English);

    /// The language of the texts.
    Language language() const { return m_language; }
    /// The text with that number; "#" and the number when there is none, so that the gap shows.
    QString operator()(int number) const;

    /// Parses a table of all languages.
    /// @param errores receives one line per fault: duplicate numbers, missing languages, leading or
    ///        trailing blanks that differ between languages, unreadable lines
    /// @return for each number its texts in the order of Language
    static QHash<int, QStringList> read(const QString &table, QStringList *errores);

private:
    Language m_language;
    QHash<int, QString> m_texts;
};

} // namespace store
