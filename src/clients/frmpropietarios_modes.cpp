#include "clients/client_rows.h"
#include "clients/deletion.h"
#include "clients/frmpropietarios.h"
#include "clients/frmpropietarios_client.h"
#include "clients/frmpropietarios_fields.h"
#include "clients/frmpropietarios_patient.h"
#include "clients/mail_domains.h"
#include "clients/owner_search.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "texts/ui.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"

#include <QPushButton>
#include <QScopedValueRollback>
#include <QStyle>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

// Names of what a draft holds.
const QString ofPanel = u"panel"_s, ofMode = u"modo"_s, ofClient = u"idc"_s, ofPatient = u"idm"_s,
              ofBoxes = u"campos"_s;

/// Tells on the help line how far a long run has come, for as long as this lives.
class LineProgress
{
public:
    LineProgress(Sesion &s, ui::HelpLine *line) : m_s(s), m_before(s.progress)
    {
        s.progress.stage = [line](const QString &text) {
            line->tell(text);
            line->repaint();
        };
        s.progress.bar = {};
    }
    ~LineProgress() { m_s.progress = m_before; }
    LineProgress(const LineProgress &) = delete;
    LineProgress &operator=(const LineProgress &) = delete;

private:
    Sesion &m_s;
    store::Progress m_before;
};

} // namespace

void frmPropietarios::arrange()
{
    const bool free = !entering();
    for (QWidget *w :
         std::initializer_list<QWidget *>{GClientes, GMascotas, Txtapellidob, txtmascotab})
        w->setEnabled(free);
    cmdBuscarCliente->setEnabled(free && m_forms.exists(u"frmBusquedaClientes"_s));
    cmdBuscarPaciente->setEnabled(free && m_forms.exists(u"frmBusquedaMascotas"_s));
    arrange(m_clientButtons, m_modeClient, m_shown.idc != 0);
    arrange(m_patientButtons, m_modePatient, m_shown.idm != 0);
    m_patientButtons.newOne->setEnabled(m_patientButtons.newOne->isEnabled() && m_shown.idc != 0);
    m_patient->allowPhoto(free && m_shown.idm != 0);
    m_bar->update(free);
}

void frmPropietarios::arrange(const ButtonRow &buttons, Mode mode, bool hasRow)
{
    const bool mine = mode != Mode::Ver, free = !entering();
    setTitle(buttons.newOne, m_s(mode == Mode::New ? text::Cancel : buttons.newText));
    setTitle(buttons.modify, m_s(mode == Mode::Modify ? text::Cancel : buttons.textModify));
    buttons.add->setVisible(mine);
    buttons.newOne->setVisible(mode != Mode::Modify);
    buttons.modify->setVisible(mode != Mode::New);
    buttons.erase->setVisible(!mine);
    buttons.newOne->setEnabled(free || mine);
    buttons.modify->setEnabled(mine || (free && hasRow));
    buttons.erase->setEnabled(free && hasRow);
    buttons.add->setDefault(mine);
}

void frmPropietarios::toggleClient(Mode mode)
{
    if (m_modeClient != Mode::Ver)
        cancelMode();
    else
        guarded([this, mode] { startClient(mode); });
}

void frmPropietarios::togglePatient(Mode mode)
{
    if (m_modePatient != Mode::Ver)
        cancelMode();
    else
        guarded([this, mode] { startPatient(mode); });
}

void frmPropietarios::startClient(Mode mode)
{
    m_client->loadLists();
    if (mode == Mode::New) {
        m_client->empty(nextClient(m_s));
        // Whose animals they would be is not there yet.
        const QScopedValueRollback busy(m_busy, true);
        m_patients->set({});
        m_patient->empty();
    } else {
        const auto client = readClient(m_s, m_shown.idc);
        if (!client)
            return m_s.dialogos.Mensaje(m_s(text::ClientIsGone));
        m_client->show(*client);
    }
    m_modeClient = mode;
    m_client->open(true);
    started();
    m_client->focus(Field::Name);
    Ayu->tell(m_s(mode == Mode::New ? text::NewClientHint : text::EditingHint));
}

void frmPropietarios::startPatient(Mode mode)
{
    m_patient->loadLists();
    if (mode == Mode::New) {
        m_patient->empty(nextPatient(m_s));
    } else {
        const auto patient = readPatient(m_s, m_shown.idm);
        if (!patient)
            return m_s.dialogos.Mensaje(m_s(text::PatientIsGone));
        m_patient->show(*patient);
    }
    m_modePatient = mode;
    m_patient->open(true);
    started();
    m_patient->focus(Field::Name);
    Ayu->tell(m_s(mode == Mode::New ? text::NewPatientHint : text::EditingHint));
}

void frmPropietarios::started()
{
    m_toBegin = typed();
    arrange();
    m_rest->start(0);
}

QVariantMap frmPropietarios::typed() const
{
    return m_modeClient != Mode::Ver ? m_client->fieldsOf() : m_patient->fieldsOf();
}

void frmPropietarios::leaveMode()
{
    m_pause->stop();
    m_draft.clear();
    m_modeClient = m_modePatient = Mode::Ver;
    m_client->open(false);
    m_patient->open(false);
    arrange();
}

bool frmPropietarios::cancelMode()
{
    if (typed() != m_toBegin
        && m_s.dialogos.decide(m_s(text::LeaveUnsavedQuestion), m_s(text::KeepTyping),
                               m_s(text::DiscardTyped)))
        return false;
    const bool wasClient = m_modeClient != Mode::Ver;
    leaveMode();
    Ayu->clean();
    guarded([this] { showClient(m_shown.idc, m_shown.idm); });
    (wasClient ? Txtapellidob : txtmascotab)->setFocus();
    return true;
}

// Another form wants this client and patient shown.
void frmPropietarios::leaveFor(store::Selection wanted)
{
    if (entering() && !cancelMode())
        return;
    m_s.IdGlobal = wanted;
    opened({});
}

// The addresses of a client that is being changed count at once.
void frmPropietarios::settleMail(const QString &addresses)
{
    guarded([this, &addresses] {
        const int idc = m_modeClient == Mode::Modify ? m_shown.idc : 0;
        const bool wasFresh = !stale();
        if (!clients::settleMail(m_s, addresses, idc))
            return;
        putClientRow(idc);
        const QScopedValueRollback busy(m_busy, true);
        GClientes->Seleccionar(rowOfClient(idc));
        if (wasFresh)
            noteVersions();
    });
}

void frmPropietarios::reject()
{
    if (entering())
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
        if (m_modeClient == Mode::New) {
            const Addition added = addClient(m_s, client);
            if (added.rejection)
                return m_client->focus(added.rejection->field);
            if (added.existing) {
                leaveMode();
                if (rowOfClient(added.existing) < 0)
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
        const bool isNew = m_modeClient == Mode::New;
        const int idm = isNew ? 0 : m_shown.idm;
        leaveMode();
        putClientRow(idc);
        if (wasFresh)
            noteVersions();
        goToClient(idc, idm);
        Ayu->success(m_s(text::ClientSaved) + u' ' + client.ayn.trimmed());
        // After an owner comes the animal.
        if (isNew)
            cmdnuevomas->setFocus();
        else
            Txtapellidob->setFocus();
    });
}

void frmPropietarios::savePatient()
{
    guarded([this] {
        PatientRecord patient = m_patient->recordOf();
        const bool isNew = m_modePatient == Mode::New;
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
            cmdnuevomas->setFocus();
        else
            GMascotas->setFocus();
    });
}

void frmPropietarios::deleteClient()
{
    guarded([this] {
        const LineProgress progress(m_s, Ayu);
        const int idc = m_shown.idc, row = rowOfClient(idc);
        const bool wasFresh = !stale();
        if (!clients::deleteClient(m_s, idc))
            return;
        Ayu->clean();
        dropClientRow(idc);
        if (!goToClient(clientAt(std::min(row, m_clients->allRows() - 1))))
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
        const LineProgress progress(m_s, Ayu);
        const int row = GMascotas->currentRow(), below = patientAt(row + 1);
        if (!clients::deletePatient(m_s, m_shown.idm))
            return;
        Ayu->clean();
        showPatients(m_shown.idc, below ? below : patientAt(row - 1));
        txtmascotab->setFocus();
    });
}

void frmPropietarios::touched()
{
    if (entering())
        m_pause->start();
}

void frmPropietarios::keepDraft()
{
    const QVariantMap boxes = typed();
    if (!entering() || boxes == m_toBegin)
        return m_draft.clear();
    const bool client = m_modeClient != Mode::Ver;
    m_draft.save({{ofPanel, client ? u"cliente"_s : u"paciente"_s},
                  {ofMode, int(client ? m_modeClient : m_modePatient)},
                  {ofClient, m_shown.idc},
                  {ofPatient, m_shown.idm},
                  {ofBoxes, boxes}});
}

void frmPropietarios::offerDraft()
{
    const QVariantMap draft = m_draft.read();
    if (entering() || draft.isEmpty())
        return;
    const bool client = draft.value(ofPanel) == u"cliente"_s;
    const QVariantMap boxes = draft.value(ofBoxes).toMap();
    const QString name = boxes.value(client ? u"txtayn"_s : u"txtnom"_s).toString();
    if (!m_s.dialogos.Pregunta((m_s(text::RestoreDraftQuestion) + u"\n\n"_s + name).trimmed()))
        return m_draft.clear();
    guarded([&] {
        auto mode = draft.value(ofMode).toInt() == int(Mode::Modify) ? Mode::Modify : Mode::New;
        const int idm = draft.value(ofPatient).toInt();
        const bool ownerThere = goToClient(draft.value(ofClient).toInt(), idm);
        if (!client && !ownerThere) {
            m_s.dialogos.Mensaje(m_s(text::ClientIsGone));
            return m_draft.clear();
        }
        // What was to change is gone: what was typed is still good for a new one.
        if (mode == Mode::Modify && (client ? !ownerThere : m_shown.idm != idm))
            mode = Mode::New;
        if (client) {
            startClient(mode);
            m_client->setFields(boxes);
        } else {
            startPatient(mode);
            m_patient->setFields(boxes);
        }
    });
}
