#include "clients/frmpropietarios.h"
#include "clients/frmpropietarios_client.h"
#include "clients/frmpropietarios_patient.h"
#include "clients/owner_search.h"
#include "texts/clients.h"
#include "texts/texts.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/pictures.h"
#include "ui/record_buttons.h"
#include "ui/record_fields.h"
#include "ui/theme.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QPushButton>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

constexpr QSize FirstSize{1320, 720};

} // namespace

void frmPropietarios::build()
{
    setWindowTitle(m_s(text::RegistryLayoutTitle));
    setStyleSheet(ui::denseStyle());
    const ui::bind::Guard guard = [this](const std::function<void()> &task) {
        return guarded(task);
    };

    Ayu = named(new ui::HelpLine, u"Ayu"_s, {});
    m_client = new ClientPanel(m_s, guard, Ayu);
    m_patient = new PatientPanel(m_s, guard, Ayu);
    m_bar = new AccessesBar(m_s, m_forms, guard, m_open, Ayu);
    cmdvolver = button(u"cmdvolver"_s, text::BackButton, u"volver"_s);
    cmdvolver->setToolTip(ui::spoken(m_s(text::BackButton)) + u" (Esc)"_s);
    cmdvolver->setProperty("clase", u"barra"_s);

    auto *head = new QHBoxLayout;
    head->setSpacing(ui::space::S);
    head->addWidget(m_bar);
    head->addStretch();
    head->addWidget(cmdvolver);
    // One grid for both halves, so that what stands side by side stands on one line.
    auto *halves = new QGridLayout;
    halves->setHorizontalSpacing(ui::space::L);
    halves->setVerticalSpacing(ui::space::S);
    for (const int row : {1, 2})
        halves->setRowStretch(row, 1);
    buildClients(halves);
    buildPatients(halves);
    for (int column = 0; column < 2; ++column)
        halves->setColumnStretch(column, 1);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(ui::space::L, ui::space::S, ui::space::L, ui::space::S);
    all->setSpacing(ui::space::S);
    all->addLayout(head);
    all->addLayout(halves, 1);
    all->addWidget(Ayu);

    orderKeys();
    rememberSize(FirstSize);
    rememberColumns(GClientes->horizontalHeader());
    rememberColumns(GMascotas->horizontalHeader());
}

QPushButton *frmPropietarios::button(const QString &name, int text, const QString &dibujo)
{
    auto *b = new QPushButton;
    b->setObjectName(name);
    ui::setTitle(b, m_s(text));
    b->setAutoDefault(false);
    if (!dibujo.isEmpty())
        b->setIcon(ui::namedIcon(dibujo));
    return b;
}

void frmPropietarios::buildClients(QGridLayout *place)
{
    m_clients = new ui::GridModel(m_s,
                                  {{u"ID"_s, ui::Kind::Code, 72},
                                   {m_s(text::Name), ui::Kind::Text, 300},
                                   {m_s(text::RegistryClientTelephone), ui::Kind::Text, 140},
                                   {u"Idc"_s, ui::Kind::Whole, 0, true}},
                                  this);
    GClientes =
        named(new ui::Grid(m_s, m_clients), u"GClientes"_s, m_s(text::RegistryLayoutClients));
    GClientes->setEmptyText(m_s(text::NoClientsYet));
    Txtapellidob = named(new QLineEdit, u"Txtapellidob"_s, m_s(text::AdvancedClientSearch));
    Txtapellidob->setAccessibleName(ui::spoken(m_s(text::RegistryLayoutClients)) + u": "_s
                                    + m_s(text::FindClientHint));
    Txtapellidob->setPlaceholderText(m_s(text::FindClientHint));
    cmdBuscarCliente = button(u"cmdBuscarCliente"_s, text::AdvancedClientSearch);

    m_clientButtons = new ui::RecordButtons(m_s, {u"cmdagregar"_s, u"cmdNuevo"_s, u"cmdmodificar"_s,
                                                  u"cmdEliminar"_s, text::NewClientButton,
                                                  text::EditClientButton});

    place->addLayout(buildSearch(text::RegistryLayoutClients, Txtapellidob, cmdBuscarCliente), 0,
                     0);
    place->addWidget(GClientes, 1, 0);
    place->addWidget(m_client, 2, 0);
    place->addWidget(m_clientButtons, 3, 0);
}

void frmPropietarios::buildPatients(QGridLayout *place)
{
    m_patients = new ui::GridModel(m_s,
                                   {{m_s(text::Name), ui::Kind::Text, 240},
                                    {m_s(text::Species), ui::Kind::Text, 110},
                                    {m_s(text::Breed), ui::Kind::Text, 160},
                                    {u"Idm"_s, ui::Kind::Whole, 0, true}},
                                   this);
    GMascotas =
        named(new ui::Grid(m_s, m_patients), u"GMascotas"_s, m_s(text::RegistryLayoutPatients));
    GMascotas->setEmptyText(m_s(text::ChooseClientToSeePatients));
    txtmascotab = named(new QLineEdit, u"txtmascotab"_s,
                        m_s(text::RegistryLayoutPatients) + u": "_s + m_s(text::FindPatientHint));
    txtmascotab->setPlaceholderText(m_s(text::FindPatientHint));
    cmdBuscarPaciente = button(u"cmdBuscarPaciente"_s, text::AdvancedPatientSearch);

    m_patientButtons = new ui::RecordButtons(
        m_s, {u"cmdagregarmas"_s, u"cmdnuevomas"_s, u"cmdmodificarmas"_s, u"cmdeliminarmas"_s,
              text::NewPatientButton, text::EditPatientButton});

    place->addLayout(buildSearch(text::RegistryLayoutPatients, txtmascotab, cmdBuscarPaciente), 0,
                     1);
    place->addWidget(GMascotas, 1, 1);
    place->addWidget(m_patient, 2, 1);
    place->addWidget(m_patientButtons, 3, 1);
}

QLayout *frmPropietarios::buildSearch(int text, QLineEdit *box, QPushButton *advanced)
{
    auto *title = new QLabel(m_s(text));
    title->setProperty("clase", u"subtitulo"_s);
    title->setBuddy(box);
    advanced->setToolTip(advanced->text());
    advanced->setText({});
    advanced->setIcon(ui::namedIcon(u"buscar"_s));
    advanced->setProperty("clase", u"barra"_s);
    auto *row = new QHBoxLayout;
    row->setSpacing(ui::space::S);
    row->addWidget(title);
    row->addWidget(box, 1);
    row->addWidget(advanced);
    return row;
}

void frmPropietarios::orderKeys()
{
    const QList<QWidget *> client = m_client->chainOf(), patient = m_patient->chainOf();
    // ENTER passes by the notes, where it begins a line; TAB does not.
    const auto chain = [this](const QList<QWidget *> &boxes, QWidget *save) {
        enterChain(boxes.first(boxes.size() - 1) + QList<QWidget *>{save});
        enterChain({boxes.last(), save});
    };
    chain(client, m_clientButtons->save);
    chain(patient, m_patientButtons->save);
    refuseApostropheIn(client + patient);
    refuseApostrophe({Txtapellidob, txtmascotab});

    QList<QWidget *> order{Txtapellidob, cmdBuscarCliente, GClientes};
    order += client;
    order += {m_clientButtons->save,
              m_clientButtons->newOne,
              m_clientButtons->modify,
              m_clientButtons->erase,
              txtmascotab,
              cmdBuscarPaciente,
              GMascotas};
    order += patient;
    order += {findChild<QWidget *>(u"PicMascota"_s), m_patientButtons->save,
              m_patientButtons->newOne, m_patientButtons->modify, m_patientButtons->erase};
    for (QPushButton *b : m_bar->findChildren<QPushButton *>())
        order.append(b);
    order.append(cmdvolver);
    for (int i = 0; i + 1 < order.size(); ++i)
        setTabOrder(order[i], order[i + 1]);

    for (QWidget *w : std::initializer_list<QWidget *>{GClientes, GMascotas})
        w->installEventFilter(this);
}
