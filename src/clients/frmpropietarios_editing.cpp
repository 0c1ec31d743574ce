#include "clients/client_rows.h"
#include "clients/deletion.h"
#include "clients/frmpropietarios.h"
#include "clients/frmpropietarios_client.h"
#include "clients/frmpropietarios_patient.h"
#include "clients/mail_domains.h"
#include "clients/owner_search.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "texts/ui.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/record_buttons.h"

#include <QPushButton>
#include <QScopedValueRollback>

using namespace clients;
using namespace Qt::StringLiterals;

void frmPropietarios::arrange()
{
    const bool free = !m_entering.underWay();
    for (QWidget *w :
         std::initializer_list<QWidget *>{GClientes, GMascotas, Txtapellidob, txtmascotab})
        w->setEnabled(free);
    cmdBuscarCliente->setEnabled(free && m_forms.exists(u"frmBusquedaClientes"_s));
    cmdBuscarPaciente->setEnabled(free && m_forms.exists(u"frmBusquedaMascotas"_s));
    m_clientButtons->arrange(m_entering.modeOf(ClientSide), free, m_shown.idc != 0);
    m_patientButtons->arrange(m_entering.modeOf(PatientSide), free, m_shown.idm != 0,
                              m_shown.idc != 0);
    m_patient->allowPhoto(free && m_shown.idm != 0);
    m_bar->update(free);
}

/// A button of a panel: begins to enter there, or gives up what is entered.
void frmPropietarios::toggle(RegistryPanel panel, ui::Mode mode)
{
    if (m_entering.modeOf(panel) != ui::Mode::View)
        cancelMode();
    else
        guarded([this, panel, mode] { start(panel, mode); });
}

void frmPropietarios::start(RegistryPanel panel, ui::Mode mode)
{
    if (!(panel == ClientSide ? showForClient(mode) : showForPatient(mode)))
        return;
    if (panel == ClientSide) {
        m_client->open(true);
        m_client->focus(Field::Name);
    } else {
        m_patient->open(true);
        m_patient->focus(Field::Name);
    }
    m_entering.begin(panel, mode, boxesOf(panel));
    arrange();
    m_rest->start(0);
    const int hint = panel == ClientSide ? text::NewClientHint : text::NewPatientHint;
    Ayu->tell(m_s(mode == ui::Mode::New ? hint : text::EditingHint));
}

// @return false when the client is gone; the user has been told
bool frmPropietarios::showForClient(ui::Mode mode)
{
    m_client->loadLists();
    if (mode == ui::Mode::New) {
        m_client->empty(nextClient(m_s));
        // Whose animals they would be is not there yet.
        const QScopedValueRollback busy(m_busy, true);
        m_patients->set({});
        m_patient->empty();
    } else if (const auto client = readClient(m_s, m_shown.idc)) {
        m_client->show(*client);
    } else {
        m_s.dialogos.Mensaje(m_s(text::ClientIsGone));
        return false;
    }
    return true;
}

// @return false when the patient is gone; the user has been told
bool frmPropietarios::showForPatient(ui::Mode mode)
{
    m_patient->loadLists();
    if (mode == ui::Mode::New) {
        m_patient->empty(nextPatient(m_s));
    } else if (const auto patient = readPatient(m_s, m_shown.idm)) {
        m_patient->show(*patient);
    } else {
        m_s.dialogos.Mensaje(m_s(text::PatientIsGone));
        return false;
    }
    return true;
}

QVariantMap frmPropietarios::boxesOf(int panel) const
{
    return panel == ClientSide ? m_client->fieldsOf() : m_patient->fieldsOf();
}

void frmPropietarios::leaveMode()
{
    m_pause->stop();
    m_draft.clear();
    m_entering.end();
    m_client->open(false);
    m_patient->open(false);
    arrange();
}

bool frmPropietarios::cancelMode()
{
    const int panel = m_entering.panel();
    if (m_entering.hasChanged(boxesOf(panel))
        && m_s.dialogos.decide(m_s(text::LeaveUnsavedQuestion), m_s(text::KeepTyping),
                               m_s(text::DiscardTyped)))
        return false;
    leaveMode();
    Ayu->clean();
    guarded([this] { showClient(m_shown.idc, m_shown.idm); });
    (panel == ClientSide ? Txtapellidob : txtmascotab)->setFocus();
    return true;
}

// Another form wants this client and patient shown.
void frmPropietarios::leaveFor(store::Selection wanted)
{
    if (m_entering.underWay() && !cancelMode())
        return;
    m_s.IdGlobal = wanted;
    opened({});
}

// The addresses of a client that is being changed count at once.
void frmPropietarios::settleMail(const QString &addresses)
{
    guarded([this, &addresses] {
        const bool modifies = m_entering.modeOf(ClientSide) == ui::Mode::Modify;
        const int idc = modifies ? m_shown.idc : 0;
        const bool wasFresh = !stale();
        if (!clients::settleMail(m_s, addresses, idc))
            return;
        putClientRow(idc);
        const QScopedValueRollback busy(m_busy, true);
        GClientes->IrA(idc);
        if (wasFresh)
            noteVersions();
    });
}

void frmPropietarios::reject()
{
    if (m_entering.underWay())
        cancelMode();
    else
        ui::FormBase::reject();
}

void frmPropietarios::saveClient()
{
    guarded([this] {
        const ClientRecord client = m_client->recordOf();
        const bool wasFresh = !stale();
        int idc = client.idc;
        const bool isNew = m_entering.modeOf(ClientSide) == ui::Mode::New;
        if (isNew) {
            const Addition added = addClient(m_s, client);
            if (added.rejection)
                return m_client->focus(added.rejection->field);
            if (added.existing) {
                leaveMode();
                if (m_clients->rowOf(added.existing) < 0)
                    putClientRow(added.existing);
                goToClient(added.existing);
                GClientes->setFocus();
                return Ayu->tell(
                    m_s(text::ClientWasThere) + u' '
                    + m_clients->cellText(GClientes->currentRow(), ClientColumn::Name));
            }
            idc = added.id;
        } else if (const auto refused = modifyClient(m_s, client)) {
            return m_client->focus(refused->field);
        }
        const int idm = isNew ? 0 : m_shown.idm;
        leaveMode();
        putClientRow(idc);
        if (wasFresh)
            noteVersions();
        goToClient(idc, idm);
        Ayu->success(m_s(text::ClientSaved) + u' ' + client.ayn.trimmed());
        // After an owner comes the animal.
        if (isNew)
            m_patientButtons->newOne->setFocus();
        else
            Txtapellidob->setFocus();
    });
}

void frmPropietarios::savePatient()
{
    guarded([this] {
        PatientRecord patient = m_patient->recordOf();
        const bool isNew = m_entering.modeOf(PatientSide) == ui::Mode::New;
        if (isNew) {
            patient.idc = m_shown.idc;
            const Addition added = addPatient(m_s, patient, m_patient->validBirth());
            if (added.rejection)
                return m_patient->focus(added.rejection->field);
            patient.idm = added.id;
        } else if (const auto refused = modifyPatient(m_s, patient, m_patient->speciesOf(),
                                                      m_patient->validBirth())) {
            return m_patient->focus(refused->field);
        }
        if (const auto changed = m_patient->breedSpecies())
            changeBreedSpecies(m_s, changed->breed, changed->esp);
        leaveMode();
        showPatients(m_shown.idc, patient.idm);
        const auto saved = readPatient(m_s, patient.idm);
        const bool kept = saved && saved->esp != patient.esp;
        Ayu->success(m_s(text::PatientSaved) + u' ' + patient.nom.trimmed()
                     + (kept ? u". "_s + m_s(text::SpeciesKept) : QString()));
        if (isNew)
            m_patientButtons->newOne->setFocus();
        else
            GMascotas->setFocus();
    });
}

void frmPropietarios::deleteClient()
{
    guarded([this] {
        const ui::LineProgress progress(m_s, Ayu);
        const int idc = m_shown.idc, row = GClientes->currentRow();
        const bool wasFresh = !stale();
        if (!clients::deleteClient(m_s, idc))
            return;
        Ayu->clean();
        dropClientRow(idc);
        if (!goToClient(m_clients->idOf(std::min(row, m_clients->allRows() - 1))))
            showClient(0);
        if (wasFresh)
            noteVersions();
        else
            reload();
        Txtapellidob->setFocus();
    });
}

void frmPropietarios::deletePatient()
{
    guarded([this] {
        const ui::LineProgress progress(m_s, Ayu);
        const int row = GMascotas->currentRow(), below = m_patients->idOf(row + 1);
        if (!clients::deletePatient(m_s, m_shown.idm))
            return;
        Ayu->clean();
        showPatients(m_shown.idc, below ? below : m_patients->idOf(row - 1));
        txtmascotab->setFocus();
    });
}

void frmPropietarios::touched()
{
    if (m_entering.underWay())
        m_pause->start();
}

void frmPropietarios::keepDraft()
{
    const int panel = m_entering.panel();
    const QVariantMap boxes = boxesOf(panel);
    if (!m_entering.hasChanged(boxes))
        return m_draft.clear();
    const RegistryDraft draft{RegistryPanel(panel), m_entering.modeOf(panel), m_shown, boxes};
    m_draft.save(draft.toMap());
}

void frmPropietarios::offerDraft()
{
    const auto draft = RegistryDraft::fromMap(m_draft.read());
    if (m_entering.underWay() || !draft)
        return;
    const QString question = m_s(text::RestoreDraftQuestion) + u"\n\n"_s + draft->name();
    if (!m_s.dialogos.Pregunta(question.trimmed()))
        return m_draft.clear();
    guarded([&] {
        const bool clientThere = goToClient(draft->shown.idc, draft->shown.idm);
        const auto mode = draft->modeToResume(clientThere, m_shown.idm == draft->shown.idm);
        if (!mode) {
            m_s.dialogos.Mensaje(m_s(text::ClientIsGone));
            return m_draft.clear();
        }
        start(draft->panel, *mode);
        if (draft->panel == ClientSide)
            m_client->setFields(draft->boxes);
        else
            m_patient->setFields(draft->boxes);
    });
}
