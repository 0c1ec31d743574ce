// The outbox on the screen: whom the clinic writes to today, and what.
#pragma once

#include "messages/chat_opener.h"
#include "messages/outbox_list.h"
#include "ui/form_base.h"

class Grilla;
class QPlainTextEdit;
class QPushButton;

class frmmensajeria : public FormBase
{
    Q_OBJECT
public:
    explicit frmmensajeria(Sesion &s, AbridorDeEnlaces abrir = Navegador(),
                           QWidget *parent = nullptr);

    void opened(const QVariantMap &parametros) override;

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
    const MensajeDelDia *current() const;

    AbridorDeEnlaces m_abrir;
    std::vector<MensajeDelDia> m_mensajes;
    Grilla *grd = nullptr;
    QPlainTextEdit *txtmensaje = nullptr;
    QPushButton *cmdImprimir = nullptr;
    QPushButton *cmdCopiar = nullptr;
    QPushButton *cmdChat = nullptr;
    QPushButton *cmdActualizar = nullptr;
    LineaDeAyuda *Ayu = nullptr;
};
