#include "clients/frmpropietarios.h"

#include "clients/client_rows.h"
#include "clients/frmpropietarios_client.h"
#include "clients/frmpropietarios_patient.h"
#include "clients/owner_search.h"
#include "texts/clients.h"
#include "texts/search.h"
#include "texts/texts.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/record_buttons.h"

#include <QCoreApplication>
#include <QScopedValueRollback>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

constexpr int RestMs = 120;
constexpr int DraftMs = 1000;

ui::GridRow gridRow(const Sesion &s, const ClientRow &c)
{
    ui::GridRow row{{c.idc, c.ayn, c.tel2, c.idc}, ui::Highlight::None, ClientColumn::Name, {}};
    if (c.sign == ClientSign::Alert) {
        row.highlight = ui::Highlight::Alert;
        row.reason = s(text::RedReason);
    } else if (c.sign == ClientSign::Notice) {
        row.highlight = ui::Highlight::Notice;
        row.reason = s(text::YellowReason);
    }
    return row;
}

ui::GridRow gridRow(const Sesion &s, const PatientRow &p)
{
    ui::GridRow row{{p.nom, p.species, p.breed, p.idm}, ui::Highlight::None, -1, {}};
    if (p.dec) {
        row.cells[PatientColumn::Name] = p.nom + u" · "_s + s(text::Deceased);
        row.highlight = ui::Highlight::Off;
        row.reason = s(text::Deceased);
    }
    return row;
}

} // namespace

frmPropietarios::frmPropietarios(Sesion &s, ui::FormRegistry &forms, OpenLink open, QWidget *parent)
    : ui::FormBase(s, u"frmPropietarios"_s, parent),
      m_forms(forms),
      m_open(std::move(open)),
      m_draft(s, u"frmPropietarios"_s)
{
    setWindowFlags(Qt::Window);
    build();
    wire();
    arrange();
}

void frmPropietarios::wire()
{
    m_rest = new QTimer(this);
    m_rest->setObjectName(u"TimerReposo"_s);
    m_rest->setSingleShot(true);
    connect(m_rest, &QTimer::timeout, this, &frmPropietarios::inform);
    m_pause = new QTimer(this);
    m_pause->setSingleShot(true);
    m_pause->setInterval(DraftMs);
    connect(m_pause, &QTimer::timeout, this, &frmPropietarios::keepDraft);

    connect(GClientes, &ui::Grid::changedRow, this, &frmPropietarios::clientRowChanged);
    connect(GMascotas, &ui::Grid::changedRow, this, &frmPropietarios::patientRowChanged);
    connect(GClientes, &ui::Grid::chosenRow, this, &frmPropietarios::openMenu);
    connect(GMascotas, &ui::Grid::chosenRow, this, [this] { m_bar->recordOf()->click(); });
    connect(Txtapellidob, &QLineEdit::textEdited, this, &frmPropietarios::searchClient);
    connect(txtmascotab, &QLineEdit::textEdited, this, &frmPropietarios::searchPatient);

    const auto opens = [this](QPushButton *b, const QString &form) {
        connect(b, &QPushButton::clicked, this,
                [this, form] { guarded([this, &form] { m_forms.open(form); }); });
    };
    opens(cmdBuscarCliente, u"frmBusquedaClientes"_s);
    opens(cmdBuscarPaciente, u"frmBusquedaMascotas"_s);

    const auto answers = [this](const ui::RecordButtons *buttons, RegistryPanel panel, auto save,
                                auto erase) {
        connect(buttons, &ui::RecordButtons::toggled, this,
                [this, panel](ui::Mode mode) { toggle(panel, mode); });
        connect(buttons, &ui::RecordButtons::saved, this, save);
        connect(buttons, &ui::RecordButtons::erased, this, erase);
    };
    answers(m_clientButtons, ClientSide, &frmPropietarios::saveClient,
            &frmPropietarios::deleteClient);
    answers(m_patientButtons, PatientSide, &frmPropietarios::savePatient,
            &frmPropietarios::deletePatient);
    connect(cmdvolver, &QPushButton::clicked, this, &frmPropietarios::reject);

    connect(m_client, &ClientPanel::touched, this, &frmPropietarios::touched);
    connect(m_patient, &PatientPanel::touched, this, &frmPropietarios::touched);
    connect(m_client, &ClientPanel::writtenMail, this, &frmPropietarios::settleMail);
    connect(m_client, &ClientPanel::writeMail, m_bar, &AccessesBar::Mail);
}

void frmPropietarios::opened(const QVariantMap &)
{
    if (m_entering.underWay()) {
        // What is being typed goes first; it is asked about once the busy cursor is gone.
        const store::Selection wanted = std::exchange(m_s.IdGlobal, m_shown);
        if (wanted.idc != m_shown.idc || wanted.idm != m_shown.idm)
            QTimer::singleShot(0, this, [this, wanted] { leaveFor(wanted); });
        return;
    }
    guarded([this] { refresh(); });
    Txtapellidob->setFocus();
    Txtapellidob->selectAll();
    Ayu->tell(m_s(text::ClientSearchIsBlank));
    QTimer::singleShot(0, this, &frmPropietarios::offerDraft);
}

void frmPropietarios::activated()
{
    if (m_loaded && !m_busy && !m_entering.underWay())
        guarded([this] { refresh(); });
}

// Brings the screen up to what other forms and terminals have written and chosen.
void frmPropietarios::refresh()
{
    if (!m_loaded || stale())
        reload();
    else
        synchronize();
}

bool frmPropietarios::stale() { return m_s.clientes->version("clientes") != m_version; }

void frmPropietarios::noteVersions()
{
    m_version = m_s.clientes->version("clientes");
    m_patientsVersion = m_s.clientes->version("mascotas");
}

void frmPropietarios::reload()
{
    noteVersions();
    m_client->loadLists();
    m_patient->loadLists();
    std::vector<ui::GridRow> rows;
    for (const ClientRow &c : clientsRows(m_s))
        rows.push_back(gridRow(m_s, c));
    {
        const QScopedValueRollback busy(m_busy, true);
        m_clients->set(std::move(rows));
    }
    m_loaded = true;
    m_shown = {};
    if (m_s.IdGlobal.idc == 0)
        m_s.IdGlobal = {m_clients->idOf(0), 0};
    if (m_s.IdGlobal.idc)
        synchronize();
    else
        showClient(0);
}

// Follows a selection that another form has changed.
void frmPropietarios::synchronize()
{
    const store::Selection wanted = m_s.IdGlobal;
    if (wanted.idc == m_shown.idc) {
        if (wanted.idm == m_shown.idm && m_s.clientes->version("mascotas") == m_patientsVersion)
            return;
        showPatients(wanted.idc, wanted.idm);
    } else if (!goToClient(wanted.idc, wanted.idm)) {
        tellLost(true);
        if (!goToClient(m_clients->idOf(std::max(GClientes->currentRow(), 0))))
            showClient(0);
        return;
    }
    if (wanted.idm && m_shown.idm != wanted.idm)
        tellLost(false);
}

// Closing the message makes this the active window once more, which must not begin anew.
void frmPropietarios::tellLost(bool client)
{
    const QScopedValueRollback busy(m_busy, true);
    m_s.dialogos.Mensaje(m_s(text::SelectionError)
                         + (client ? u'\n' + m_s(text::ClientNotFound) : QString()));
}

bool frmPropietarios::goToClient(int idc, int idm)
{
    {
        const QScopedValueRollback busy(m_busy, true);
        if (!GClientes->IrA(idc))
            return false;
    }
    showClient(idc, idm);
    return true;
}

void frmPropietarios::clientRowChanged(int row)
{
    if (!m_busy && row >= 0)
        guarded([this, row] { showClient(m_clients->idOf(row)); });
}

void frmPropietarios::patientRowChanged(int row)
{
    if (!m_busy && row >= 0)
        guarded([this, row] { showPatient(m_patients->idOf(row)); });
}

void frmPropietarios::showClient(int idc, int idm)
{
    m_s.IdGlobal = m_shown = {idc, 0};
    if (const auto client = idc ? readClient(m_s, idc) : std::nullopt)
        m_client->show(*client);
    else
        m_client->empty();
    GMascotas->setEmptyText(m_s(idc ? text::NoPatientsYet : text::ChooseClientToSeePatients));
    showPatients(idc, idm);
}

void frmPropietarios::showPatients(int idc, int idm)
{
    {
        const QScopedValueRollback busy(m_busy, true);
        m_patientsVersion = m_s.clientes->version("mascotas");
        std::vector<ui::GridRow> rows;
        if (idc)
            for (const PatientRow &p : patientsRows(m_s, idc))
                rows.push_back(gridRow(m_s, p));
        m_patients->set(std::move(rows));
        if (m_patients->allRows())
            GMascotas->Seleccionar(std::max(0, m_patients->rowOf(idm)));
    }
    showPatient(GMascotas->IdActual());
}

void frmPropietarios::showPatient(int idm)
{
    m_s.IdGlobal.idm = m_shown.idm = idm;
    if (const auto patient = idm ? readPatient(m_s, idm) : std::nullopt)
        m_patient->show(*patient);
    else
        m_patient->empty();
    arrange();
    informSoon();
}

// At once for a single step; not before the cursor rests when somebody walks down the list.
void frmPropietarios::informSoon()
{
    const bool walking = m_lastStep.isValid() && m_lastStep.elapsed() < 2 * RestMs;
    m_lastStep.start();
    m_rest->start(walking ? RestMs : 0);
}

void frmPropietarios::inform()
{
    guarded([this] {
        m_client->report();
        m_patient->report();
        m_bar->setBoarding(m_shown.idm ? boarding::readBoarding(m_s, m_shown.idm).stay
                                       : boarding::Stay::Board);
    });
}

/// Puts a client's row where its name belongs.
void frmPropietarios::putClientRow(int idc)
{
    dropClientRow(idc);
    const QScopedValueRollback busy(m_busy, true);
    if (const auto client = clientRow(m_s, idc))
        m_clients->insert(gridRow(m_s, *client), ClientColumn::Name);
}

void frmPropietarios::dropClientRow(int idc)
{
    const QScopedValueRollback busy(m_busy, true);
    if (const int row = m_clients->rowOf(idc); row >= 0)
        m_clients->remove(row);
}

void frmPropietarios::searchClient(const QString &text)
{
    if (text.trimmed().isEmpty())
        return Ayu->tell(m_s(text::ClientSearchIsBlank));
    const int row = findOwner(*m_clients, text);
    if (row < 0)
        return Ayu->faultOf((m_s(text::ClientSearchNotFound) + text).trimmed());
    GClientes->Seleccionar(row);
    // Namesakes stand below.
    GClientes->scrollTo(GClientes->currentIndex(), QAbstractItemView::PositionAtCenter);
    Ayu->success(m_s(text::ClientSearchFound) + u' ' + m_clients->cellText(row, ClientColumn::Name)
                 + u' ' + m_s(text::ClientSearchHelp));
}

void frmPropietarios::searchPatient(const QString &typed)
{
    const QString text = typed.trimmed();
    if (text.isEmpty())
        return Ayu->clean();
    const int row = findPatient(*m_patients, text);
    if (row < 0)
        return Ayu->tell(m_s(text::PatientNotFoundHere) + u' ' + text);
    GMascotas->Seleccionar(row);
    Ayu->success(m_s(text::PatientFoundHere) + u' '
                 + m_patients->cellText(row, PatientColumn::Name));
}

void frmPropietarios::searchAllPatients()
{
    const QString text = txtmascotab->text().trimmed();
    if (text.isEmpty())
        return;
    guarded([this, &text] {
        const std::vector<FoundPatient> found = findPatients(m_s, text);
        if (found.empty())
            return Ayu->faultOf(m_s(text::NoPatientBeginsWith) + u' ' + text);
        size_t chosen = 0;
        if (found.size() > 1) {
            QList<store::Option> options;
            for (const FoundPatient &p : found)
                options.append({p.patient + u'\t' + p.owner, int(options.size()), false});
            const auto answer = m_s.dialogos.Seleccionar(
                m_s(text::RegistryChoosePatient), {m_s(text::QuickSearchPatient), m_s(text::Owner)},
                options);
            if (!answer || answer->isEmpty())
                return;
            chosen = size_t(answer->first().value);
        }
        const FoundPatient &p = found[chosen];
        // Another terminal may have entered the owner since the rows were read.
        if (m_clients->rowOf(p.idc) < 0)
            reload();
        if (goToClient(p.idc, p.idm))
            Ayu->success(m_s(text::ClientSearchFound) + u' ' + p.patient + u" · "_s + p.owner);
    });
}

// @return whether the key was used up
bool frmPropietarios::searchKey(QLineEdit *box, QKeyEvent *key)
{
    const bool ofClients = box == Txtapellidob;
    if ((ofClients ? GClientes : GMascotas)->walk(key)) {
        if (ofClients)
            Ayu->tell(m_s(text::MenuHelp));
        return true;
    }
    if (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
        return false;
    const QString text = Txtapellidob->text();
    if (!ofClients)
        searchAllPatients();
    else if (!text.trimmed().isEmpty() && findOwner(*m_clients, text) < 0)
        searchClient(text); // nobody is found: the client below is another one
    else
        openMenu();
    return true;
}

void frmPropietarios::openMenu()
{
    const int row = GClientes->currentRow();
    if (row < 0 || m_entering.underWay())
        return;
    const QRect cell = GClientes->visualRect(m_clients->index(row, ClientColumn::Name));
    m_bar->openMenu(GClientes->viewport()->mapToGlobal(cell.bottomLeft()),
                    m_clients->cellText(row, ClientColumn::Name));
}

bool frmPropietarios::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && watched == GClientes)
        Ayu->tell(m_s(text::DoubleClickHelp));
    if (event->type() == QEvent::KeyPress) {
        auto *key = static_cast<QKeyEvent *>(event);
        const bool plain = !(key->modifiers() & ~Qt::KeypadModifier);
        for (QLineEdit *box : {Txtapellidob, txtmascotab})
            if (watched == box && plain && searchKey(box, key))
                return true;
        if (plain && key->key() == Qt::Key_Delete
            && (watched == GClientes || watched == GMascotas)) {
            (watched == GClientes ? m_clientButtons : m_patientButtons)->erase->click();
            return true;
        }
        if (plain && m_entering.modeOf(ClientSide) != ui::Mode::View
            && m_client->Key(watched, *key))
            return true;
    }
    return ui::FormBase::eventFilter(watched, event);
}
