// Doses to tell clients about by telephone, with a note on each call.
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

/// The form of the planned notices.
class frmAvisosPlanificadas : public ui::FormBase
{
    Q_OBJECT
public:
    /// @param forms opens the client's record
    /// @param open opens the link of a chat
    frmAvisosPlanificadas(Sesion &s, ui::FormRegistry &forms,
                          messages::LinkOpener open = messages::browser(),
                          QWidget *parent = nullptr);

    /// @param parameters "grupo": the list to show, 18 to 21 (messages::NoticesGroup)
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
    QString m_keyInBox; // of the note being edited
    QTimer m_pause;
    QTabBar *tabGrupo = nullptr;
    ui::Grid *grd = nullptr;
    QPlainTextEdit *txtNota = nullptr;
    QPushButton *cmdChat = nullptr;
    QPushButton *cmdFicha = nullptr;
    ui::HelpLine *Ayu = nullptr;
};
