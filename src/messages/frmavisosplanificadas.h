// Doses that clients have to be told of by telephone, with a note on each call.
#pragma once

#include "messages/chat_opener.h"
#include "messages/planned_notices.h"
#include "ui/form_base.h"

#include <QTimer>

class Formularios;
class Grilla;
class QPlainTextEdit;
class QPushButton;
class QTabBar;

/// Opened with `grupo`, 18 to 21, it shows that list.
class frmAvisosPlanificadas : public FormBase
{
    Q_OBJECT
public:
    frmAvisosPlanificadas(Sesion &s, Formularios &formularios, AbridorDeEnlaces abrir = Navegador(),
                          QWidget *parent = nullptr);

    void opened(const QVariantMap &parametros) override;

protected:
    void activated() override;
    void hideEvent(QHideEvent *event) override;

private:
    void build();
    QLayout *buildNote();
    QLayout *buildButtons();
    void wire();
    void load();
    void showNotice();
    void keepNote();
    void goToClient();
    AvisoPlanificado *current();

    Formularios &m_forms;
    AbridorDeEnlaces m_abrir;
    std::vector<AvisoPlanificado> m_avisos;
    QString m_claveEnCaja; // of the note in the box
    QTimer m_pause;
    QTabBar *tabGrupo = nullptr;
    Grilla *grd = nullptr;
    QPlainTextEdit *txtNota = nullptr;
    QPushButton *cmdChat = nullptr;
    QPushButton *cmdFicha = nullptr;
    LineaDeAyuda *Ayu = nullptr;
};
