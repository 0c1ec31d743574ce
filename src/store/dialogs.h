// How rules talk to the user without knowing of any window.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace store
{

/// One row of the pick list.
struct Option {
    QString text; // columns parted by tabs
    int value = 0;
    bool marked = false;
};

/// An answer to one of a series of questions; the last two are for those that follow as well.
enum class Answer { Yes, No, All, None };

} // namespace store

/// Everything that a rule may ask or tell. Backing out of an answer is nullopt.
class Dialogos
{
public:
    virtual ~Dialogos() = default;
    virtual void Mensaje(const QString &text) = 0;
    /// Yes or No.
    virtual bool Pregunta(const QString &text) = 0;
    /// The same about what cannot be taken back: ENTER alone is a No.
    virtual bool askBeforeLoss(const QString &text) { return Pregunta(text); }
    /// One of a series: all and none can be said at once.
    virtual store::Answer askOfSeries(const QString &text)
    {
        return Pregunta(text) ? store::Answer::Yes : store::Answer::No;
    }
    /// The same between two things that can be done, the first of which loses nothing.
    virtual bool decide(const QString &text, const QString &, const QString &)
    {
        return Pregunta(text);
    }
    /// The same with the buttons OK and Cancel, for texts that name them.
    virtual bool confirm(const QString &text) = 0;
    virtual std::optional<QString> PedirTexto(const QString &title, const QString &text,
                                              const QString &initial = {}) = 0;
    /// A text that nobody should read over a shoulder.
    virtual std::optional<QString> askPassword(const QString &title, const QString &text);
    /// A pick list under its column titles. @return the options marked, one unless @p several
    virtual std::optional<QList<store::Option>> Seleccionar(const QString &title,
                                                            const QStringList &columns,
                                                            const QList<store::Option> &options,
                                                            bool several = false) = 0;
    /// @param filter "Pictures (*.bmp *.jpg)"
    virtual std::optional<QString> ElegirArchivo(const QString &title, const QString &filter) = 0;
    /// A file to be written. @param proposed name offered; its ending decides the kind
    virtual std::optional<QString> saveFile(const QString &title, const QString &proposed,
                                            const QString &filter) = 0;
};

namespace store
{

/// Nobody is there: questions are answered No, messages go to standard error.
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
