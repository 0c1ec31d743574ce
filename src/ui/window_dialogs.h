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

    void Mensaje(const QString &text) override;
    bool Pregunta(const QString &text) override;
    bool askBeforeLoss(const QString &text) override;
    store::Answer askOfSeries(const QString &text) override;
    bool decide(const QString &text, const QString &yes, const QString &no) override;
    bool confirm(const QString &text) override;
    std::optional<QString> PedirTexto(const QString &title, const QString &text,
                                      const QString &initial = {}) override;
    std::optional<QString> askPassword(const QString &title, const QString &text) override;
    std::optional<QList<store::Option>> Seleccionar(const QString &title,
                                                    const QStringList &columns,
                                                    const QList<store::Option> &options,
                                                    bool several = false) override;
    std::optional<QString> ElegirArchivo(const QString &title, const QString &filter) override;
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
