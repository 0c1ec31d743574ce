// How rules talk to the user without depending on any window.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace store
{

/// One row of a pick list.
struct Option {
    QString text; // columns separated by tabs
    int value = 0;
    bool marked = false;
};

/// The answer to one of a series of questions. All and None also answer those that follow.
enum class Answer { Yes, No, All, None };

} // namespace store

/// Everything a rule may ask or say. Cancelling a prompt returns nullopt.
class Dialogos
{
public:
    virtual ~Dialogos() = default;
    /// Shows a message and waits until it is dismissed.
    virtual void Mensaje(const QString &text) = 0;
    /// Asks a Yes/No question. @return true for Yes
    virtual bool Pregunta(const QString &text) = 0;
    /// The same before something that cannot be undone: ENTER alone means No.
    virtual bool askBeforeLoss(const QString &text) { return Pregunta(text); }
    /// The same for one question of a series, with answers for all the rest.
    virtual store::Answer askOfSeries(const QString &text)
    {
        return Pregunta(text) ? store::Answer::Yes : store::Answer::No;
    }
    /// The same as a choice between two actions, whose names are the second and third argument. The
    /// first one loses nothing.
    /// @return true for the first
    virtual bool decide(const QString &text, const QString &, const QString &)
    {
        return Pregunta(text);
    }
    /// The same with the buttons OK and Cancel, for texts that mention them.
    virtual bool confirm(const QString &text) = 0;
    /// Asks for a line of text, @p initial being offered. @return nullopt when cancelled
    virtual std::optional<QString> PedirTexto(const QString &title, const QString &text,
                                              const QString &initial = {}) = 0;
    /// The same with the typed text hidden; shown like any other text where that is not offered.
    virtual std::optional<QString> askPassword(const QString &title, const QString &text);
    /// Shows a pick list under its column titles.
    /// @param several whether more than one option can be chosen
    /// @return the chosen options, nullopt when cancelled
    virtual std::optional<QList<store::Option>> Seleccionar(const QString &title,
                                                            const QStringList &columns,
                                                            const QList<store::Option> &options,
                                                            bool several = false) = 0;
    /// Asks for an existing file. @param filter as in "Pictures (*.bmp *.jpg)"
    /// @return its path, nullopt when cancelled
    virtual std::optional<QString> ElegirArchivo(const QString &title, const QString &filter) = 0;
    /// Asks for a file to be written. @param proposed name offered; its ending decides the kind
    /// @return its path, nullopt when cancelled
    virtual std::optional<QString> saveFile(const QString &title, const QString &proposed,
                                            const QString &filter) = 0;
};

namespace store
{

/// For runs without a user: questions are answered No, prompts are cancelled, and every text goes
/// to standard error.
class UnattendedDialogs : public Dialogos
{
public:
    void Mensaje(const QString &text) override;
    bool Pregunta(const QString &text) override;
    bool confirm(const QString &text) override;
    std::optional<QString> PedirTexto(const QString &title, const QString &text,
                                      const QString &initial) override;
    std::optional<QList<Option>> Seleccionar(const QString &title, const QStringList &columns,
                                             const QList<Option> &options, bool several) override;
    std::optional<QString> ElegirArchivo(const QString &title, const QString &filter) override;
    std::optional<QString> saveFile(const QString &title, const QString &proposed,
                                    const QString &filter) override;
};

} // namespace store
