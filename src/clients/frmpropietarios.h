// Clients and patients: the registry, and the selection that the whole session works on.
#pragma once

#include "clients/frmpropietarios_shortcuts.h"
#include "clients/registry_draft.h"
#include "ui/draft.h"
#include "ui/form_base.h"

#include <QElapsedTimer>

namespace ui
{

class Grid;
class HelpLine;
class GridModel;
class RecordButtons;

} // namespace ui

namespace clients
{

class ClientPanel;
class PatientPanel;

} // namespace clients

class QGridLayout;

class frmPropietarios : public ui::FormBase
{
    Q_OBJECT
public:
    frmPropietarios(Sesion &s, ui::FormRegistry &forms, clients::OpenLink open = {},
                    QWidget *parent = nullptr);

    void opened(const QVariantMap &parameters) override;
    void reject() override;
    bool mayLeave() override { return !m_entering.underWay() || cancelMode(); }

protected:
    void activated() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // frmpropietarios_layout.cpp
    void build();
    void buildClients(QGridLayout *place);
    void buildPatients(QGridLayout *place);
    QLayout *buildSearch(int text, QLineEdit *box, QPushButton *advanced);
    QPushButton *button(const QString &name, int text, const QString &dibujo = {});
    void orderKeys();

    void wire();

    // Rows and the selection
    void reload();
    void refresh();
    void synchronize();
    void tellLost(bool client);
    bool stale();
    void noteVersions();
    bool goToClient(int idc, int idm = 0);
    void showClient(int idc, int idm = 0);
    void showPatients(int idc, int idm);
    void showPatient(int idm);
    void clientRowChanged(int row);
    void patientRowChanged(int row);
    void informSoon();
    void inform();
    void putClientRow(int idc);
    void dropClientRow(int idc);

    // Searching
    void searchClient(const QString &text);
    void searchPatient(const QString &text);
    void searchAllPatients();
    bool searchKey(QLineEdit *box, QKeyEvent *key);
    void openMenu();

    // Entering, in frmpropietarios_editing.cpp
    void arrange();
    void toggle(clients::RegistryPanel panel, ui::Mode mode);
    void start(clients::RegistryPanel panel, ui::Mode mode);
    bool showForClient(ui::Mode mode);
    bool showForPatient(ui::Mode mode);
    void leaveMode();
    bool cancelMode();
    void leaveFor(store::Selection wanted);
    void settleMail(const QString &addresses);
    void saveClient();
    void savePatient();
    void deleteClient();
    void deletePatient();

    void touched();
    QVariantMap boxesOf(int panel) const;
    void keepDraft();
    void offerDraft();

    ui::FormRegistry &m_forms;
    clients::OpenLink m_open;
    ui::Draft m_draft;
    ui::GridModel *m_clients = nullptr;
    ui::GridModel *m_patients = nullptr;
    clients::ClientPanel *m_client = nullptr;
    clients::PatientPanel *m_patient = nullptr;
    clients::AccessesBar *m_bar = nullptr;
    QTimer *m_rest = nullptr;  // the cursor has come to rest
    QTimer *m_pause = nullptr; // nobody has typed for a while
    QElapsedTimer m_lastStep;
    ui::Entering m_entering;
    store::Selection m_shown;
    qint64 m_version = 0, m_patientsVersion = 0; // of the tables when they were read
    bool m_loaded = false;
    bool m_busy = false; // rows change by this form's own doing

    ui::Grid *GClientes = nullptr, *GMascotas = nullptr;
    QLineEdit *Txtapellidob = nullptr, *txtmascotab = nullptr;
    QPushButton *cmdBuscarCliente = nullptr, *cmdBuscarPaciente = nullptr;
    ui::RecordButtons *m_clientButtons = nullptr, *m_patientButtons = nullptr;
    QPushButton *cmdvolver = nullptr;
    ui::HelpLine *Ayu = nullptr;
};
