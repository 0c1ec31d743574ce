// The string table: every message of the system by number, in three languages.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

enum class Idioma { Espanol, Portugues, Ingles };

/// "es", "pt" or "en", also as the first part of a locale's name ("pt_BR"). English otherwise.
Idioma IdiomaDeCodigo(const QString &codigo);
/// "es", "pt", "en".
QString CodigoDeIdioma(Idioma idioma);

/// The texts of one language.
class Textos
{
public:
    /// Reads the table that is built into the program. @throws std::runtime_error when it is
    /// damaged
    explicit Textos(Idioma idioma = Idioma::Ingles);

    Idioma idioma() const { return m_idioma; }
    /// The text with that number; "#" and the number when there is none, so that a gap is seen.
    QString operator()(int numero) const;

    /// Reads a table from text, all languages. Used by the check of the table.
    /// @param errores one line for each fault: number twice, language missing, blanks at the ends
    ///        that differ between languages, what cannot be read
    static QHash<int, QStringList> Leer(const QString &tabla, QStringList *errores);

private:
    Idioma m_idioma;
    QHash<int, QString> m_textos;
};
