// The outbox on screen: whom the clinic writes to today, and what.
#pragma once

#include "messages/chat_opener.h"
#include "messages/outbox_list.h"
#include "ui/form_base.h"

namespace ui
{

class Grid;

} // namespace ui

class QPlainTextEdit;
class QPushButton;

/// The form of the outbox.
class frmmensajeria : public ui::FormBase
{
    Q_OBJECT
public:
    /// @param open opens the link of a chat
    explicit frmmensajeria(Sesion &s, messages::LinkOpener open = messages::browser(),
                           QWidget *parent = nullptr);

    /// Reads the day's messages; takes no parameters.
    void opened(const QVariantMap &parameters) override;

protected:
    void activated() override;

private:
    void build();
    QLayout *buildText();
    QLayout *buildButtons();
    void wire();
    void load();
    void showMessage();
    void print();
    void copy();
    const messages::DayMessage *current() const;

    messages::LinkOpener m_open;
    std::vector<messages::DayMessage> m_messages;
    ui::Grid *grd = nullptr;
    QPlainTextEdit *txtmensaje = nullptr;
    QPushButton *cmdImprimir = nullptr;
    QPushButton *cmdCopiar = nullptr;
    QPushButton *cmdChat = nullptr;
    QPushButton *cmdActualizar = nullptr;
    ui::HelpLine *Ayu = nullptr;
};
