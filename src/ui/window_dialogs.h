// What rules ask and tell, as boxes on the screen.
#pragma once

#include "store/dialogs.h"
#include "store/texts.h"

namespace ui
{

/// Modal boxes over the window in use. Texts are shown as they are, never as mark-up; long ones
/// scroll. Everything can be answered from the keyboard.
class WindowDialogs : public Dialogos
{
public:
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

    /// How long a box that has come up takes no key: it may have been meant for what lies behind.
    /// @return how long it was before
    static int setPause(int ms);
    /// Whether a box waits for an answer now.
    static bool isOneOpen();

private:
    store::Texts m_texts;
};

} // namespace ui
