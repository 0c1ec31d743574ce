// Doses that clients have to be told of by telephone, with a note on each call.
#pragma once

#include "messages/chat_opener.h"
#include "messages/planned_notices.h"
#include "ui/form_base.h"

#include <QTimer>

namespace ui
{

class FormRegistry;
class Grid;

} // namespace ui

class QPlainTextEdit;
class QPushButton;
class QTabBar;

/// Opened with `grupo`, 18 to 21, it shows that list.
class frmAvisosPlanificadas : public ui::FormBase
{
    Q_OBJECT
public:
    frmAvisosPlanificadas(Sesion &s, ui::FormRegistry &forms,
                          messages::LinkOpener open = messages::browser(),
                          QWidget *parent = nullptr);

    void opened(const QVariantMap &parameters) override;

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
    messages::PlannedNotice *current();

    ui::FormRegistry &m_forms;
    messages::LinkOpener m_open;
    std::vector<messages::PlannedNotice> m_notices;
    QString m_keyInBox; // of the note in the box
    QTimer m_pause;
    QTabBar *tabGrupo = nullptr;
    ui::Grid *grd = nullptr;
    QPlainTextEdit *txtNota = nullptr;
    QPushButton *cmdChat = nullptr;
    QPushButton *cmdFicha = nullptr;
    ui::HelpLine *Ayu = nullptr;
};
