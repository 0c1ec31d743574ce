// Clients and patients: the registry, and the selection that the whole session works on.
#pragma once

#include "clients/frmpropietarios_shortcuts.h"
#include "ui/draft.h"
#include "ui/form_base.h"

#include <QElapsedTimer>

namespace ui
{

class Grid;
class HelpLine;
class GridModel;

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

protected:
    void activated() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// A panel shows, takes a new entry or changes the one that it shows.
    enum class Mode { Ver, New, Modify };
    /// The buttons below a panel; two of them hold its mode in their captions.
    struct ButtonRow {
        QPushButton *add, *newOne, *modify, *erase;
        int newText, textModify;
    };

    // frmpropietarios_layout.cpp
    void build();
    void buildClients(QGridLayout *place);
    void buildPatients(QGridLayout *place);
    QLayout *buildSearch(int text, QLineEdit *box, QPushButton *advanced);
    QLayout *buildButtons(const ButtonRow &buttons);
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
    int rowOfClient(int idc) const;
    int rowOfPatient(int idm) const;
    int clientAt(int row) const;
    int patientAt(int row) const;
    void putClientRow(int idc);
    void dropClientRow(int idc);

    // Searching
    void searchClient(const QString &text);
    void searchPatient(const QString &text);
    void searchAllPatients();
    bool searchKey(QLineEdit *box, QKeyEvent *key);
    void openMenu();

    // Modes
    bool entering() const { return m_modeClient != Mode::Ver || m_modePatient != Mode::Ver; }
    void arrange();
    void arrange(const ButtonRow &buttons, Mode mode, bool hasRow);
    void startClient(Mode mode);
    void startPatient(Mode mode);
    void started();
    void leaveMode();
    bool cancelMode();
    void leaveFor(store::Selection wanted);
    void settleMail(const QString &addresses);
    void toggleClient(Mode mode);
    void togglePatient(Mode mode);
    void saveClient();
    void savePatient();
    void deleteClient();
    void deletePatient();

    void touched();
    QVariantMap typed() const;
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
    QVariantMap m_toBegin; // what stood in the boxes when the mode began
    store::Selection m_shown;
    Mode m_modeClient = Mode::Ver, m_modePatient = Mode::Ver;
    qint64 m_version = 0, m_patientsVersion = 0; // of the tables when they were read
    bool m_loaded = false;
    bool m_busy = false; // rows change by this form's own doing
    ButtonRow m_clientButtons{}, m_patientButtons{};

    ui::Grid *GClientes = nullptr, *GMascotas = nullptr;
    QLineEdit *Txtapellidob = nullptr, *txtmascotab = nullptr;
    QPushButton *cmdBuscarCliente = nullptr, *cmdBuscarPaciente = nullptr;
    QPushButton *cmdNuevo = nullptr, *cmdagregar = nullptr, *cmdmodificar = nullptr,
                *cmdEliminar = nullptr;
    QPushButton *cmdnuevomas = nullptr, *cmdagregarmas = nullptr, *cmdmodificarmas = nullptr,
                *cmdeliminarmas = nullptr;
    QPushButton *cmdvolver = nullptr;
    ui::HelpLine *Ayu = nullptr;
};
