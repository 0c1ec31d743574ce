// Questions and messages of the rules, as dialogs on screen.
#pragma once

#include "store/dialogs.h"
#include "store/texts.h"

namespace ui
{

/// Modal dialogs over the active window. Text is shown literally, never as markup; long text
/// scrolls. Everything can be answered from the keyboard.
class WindowDialogs : public Dialogos
{
public:
    /// @param texts captions of the buttons, in the session's language
    explicit WindowDialogs(store::Texts texts) : m_texts(std::move(texts)) {}

    /// Shows a message with an OK button.
    void Mensaje(const QString &text) override;
    /// Asks Yes or No; ENTER is Yes, ESC is No.
    bool Pregunta(const QString &text) override;
    /// Asks Yes or No about something irreversible; both ENTER and ESC are No.
    bool askBeforeLoss(const QString &text) override;
    /// Asks one of a series, with Yes, No, All and None.
    store::Answer askOfSeries(const QString &text) override;
    /// Asks between two captions; ESC counts as @p yes, which loses nothing.
    bool decide(const QString &text, const QString &yes, const QString &no) override;
    /// Asks with OK and Cancel.
    bool confirm(const QString &text) override;
    /// Asks for a text; nullopt on Cancel.
    std::optional<QString> PedirTexto(const QString &title, const QString &text,
                                      const QString &initial = {}) override;
    /// Asks for a text that is not shown; nullopt on Cancel.
    std::optional<QString> askPassword(const QString &title, const QString &text) override;
    /// Offers a list, with a filter if it is long.
    /// @return the options chosen, exactly one unless @p several; nullopt on Cancel
    std::optional<QList<store::Option>> Seleccionar(const QString &title,
                                                    const QStringList &columns,
                                                    const QList<store::Option> &options,
                                                    bool several = false) override;
    /// Asks for an existing file; nullopt on Cancel.
    std::optional<QString> ElegirArchivo(const QString &title, const QString &filter) override;
    /// Asks for a file to write; nullopt on Cancel.
    std::optional<QString> saveFile(const QString &title, const QString &proposed,
                                    const QString &filter) override;

    /// Sets for how long (milliseconds) a new dialog ignores keys, which may have been meant for
    /// the window behind it.
    /// @return the previous value
    static int setPause(int ms);
    /// Whether a dialog is waiting for an answer.
    static bool isOneOpen();

private:
    store::Texts m_texts;
};

} // namespace ui
