#include "clients/frmpropietarios.h"
#include "clients/frmpropietarios_client.h"
#include "clients/frmpropietarios_fields.h"
#include "clients/frmpropietarios_patient.h"
#include "clients/owner_search.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Nombre = 2201,
    Titulo = 9450,
    Clientes = 9451,
    Pacientes = 9452,
    BuscarCliente = 9453,
    BuscarPaciente = 9454,
    SinClientes = 9455,
    SinCliente = 9457,
    BusquedaDeClientes = 9463,
    BusquedaDePacientes = 9464,
    NuevoCliente = 9478,
    CambiarCliente = 9479,
    Eliminar = 9480,
    NuevoPaciente = 9481,
    CambiarPaciente = 9482,
    Guardar = 9483,
    Volver = 9485,
    Telefono = 9491,
    Raza = 9500,
    Especie = 9501,
};

constexpr QSize firstSize{1320, 720};
constexpr QSize smallest{1020, 600};

} // namespace

void frmPropietarios::build()
{
    setWindowTitle(m_s(Titulo));
    setStyleSheet(EstiloDeFicha());
    const Atar::Guardia guard = [this](const std::function<void()> &task) { return guarded(task); };

    Ayu = named(new LineaDeAyuda, u"Ayu"_s, {});
    m_cliente = new PanelDeCliente(m_s, guard, Ayu);
    m_mascota = new PanelDePaciente(m_s, guard, Ayu);
    m_barra = new BarraDeAccesos(m_s, m_formularios, guard, m_abrir, Ayu);
    cmdvolver = button(u"cmdvolver"_s, Volver, u"volver"_s);
    cmdvolver->setToolTip(spoken(m_s(Volver)) + u" (Esc)"_s);
    cmdvolver->setProperty("clase", u"barra"_s);

    auto *head = new QHBoxLayout;
    head->setSpacing(Espacio::S);
    head->addWidget(m_barra);
    head->addStretch();
    head->addWidget(cmdvolver);
    // One grid for both halves, so that what stands side by side stands on one line.
    auto *halves = new QGridLayout;
    halves->setHorizontalSpacing(Espacio::L);
    halves->setVerticalSpacing(Espacio::S);
    for (const int row : {1, 2})
        halves->setRowStretch(row, 1);
    buildClients(halves);
    buildPatients(halves);
    for (int column = 0; column < 2; ++column)
        halves->setColumnStretch(column, 1);

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(Espacio::L, Espacio::S, Espacio::L, Espacio::S);
    all->setSpacing(Espacio::S);
    all->addLayout(head);
    all->addLayout(halves, 1);
    all->addWidget(Ayu);

    orderKeys();
    setMinimumSize(smallest);
    rememberSize(firstSize);
    rememberColumns(GClientes->horizontalHeader());
    rememberColumns(GMascotas->horizontalHeader());
}

QPushButton *frmPropietarios::button(const QString &nombre, int texto, const QString &dibujo)
{
    auto *b = new QPushButton;
    b->setObjectName(nombre);
    PonerTitulo(b, m_s(texto));
    b->setAutoDefault(false);
    if (!dibujo.isEmpty())
        b->setIcon(Icono(dibujo));
    return b;
}

void frmPropietarios::buildClients(QGridLayout *lugar)
{
    m_clientes = new ModeloDeGrilla(m_s,
                                    {{u"ID"_s, Clase::Codigo, 72},
                                     {m_s(Nombre), Clase::Texto, 300},
                                     {m_s(Telefono), Clase::Texto, 140},
                                     {u"Idc"_s, Clase::Entero, 0, true}},
                                    this);
    GClientes = named(new Grilla(m_s, m_clientes), u"GClientes"_s, m_s(Clientes));
    GClientes->PonerVacio(m_s(SinClientes));
    Txtapellidob = named(new QLineEdit, u"Txtapellidob"_s, m_s(BusquedaDeClientes));
    Txtapellidob->setAccessibleName(spoken(m_s(Clientes)) + u": "_s + m_s(BuscarCliente));
    Txtapellidob->setPlaceholderText(m_s(BuscarCliente));
    cmdBuscarCliente = button(u"cmdBuscarCliente"_s, BusquedaDeClientes);

    cmdagregar = button(u"cmdagregar"_s, Guardar);
    cmdNuevo = button(u"cmdNuevo"_s, NuevoCliente);
    cmdmodificar = button(u"cmdmodificar"_s, CambiarCliente);
    cmdEliminar = button(u"cmdEliminar"_s, Eliminar);
    m_deCliente = {cmdagregar, cmdNuevo, cmdmodificar, cmdEliminar, NuevoCliente, CambiarCliente};

    lugar->addLayout(buildSearch(Clientes, Txtapellidob, cmdBuscarCliente), 0, 0);
    lugar->addWidget(GClientes, 1, 0);
    lugar->addWidget(m_cliente, 2, 0);
    lugar->addLayout(buildButtons(m_deCliente), 3, 0);
}

void frmPropietarios::buildPatients(QGridLayout *lugar)
{
    m_mascotas = new ModeloDeGrilla(m_s,
                                    {{m_s(Nombre), Clase::Texto, 240},
                                     {m_s(Especie), Clase::Texto, 110},
                                     {m_s(Raza), Clase::Texto, 160},
                                     {u"Idm"_s, Clase::Entero, 0, true}},
                                    this);
    GMascotas = named(new Grilla(m_s, m_mascotas), u"GMascotas"_s, m_s(Pacientes));
    GMascotas->PonerVacio(m_s(SinCliente));
    txtmascotab =
        named(new QLineEdit, u"txtmascotab"_s, m_s(Pacientes) + u": "_s + m_s(BuscarPaciente));
    txtmascotab->setPlaceholderText(m_s(BuscarPaciente));
    cmdBuscarPaciente = button(u"cmdBuscarPaciente"_s, BusquedaDePacientes);

    cmdagregarmas = button(u"cmdagregarmas"_s, Guardar);
    cmdnuevomas = button(u"cmdnuevomas"_s, NuevoPaciente);
    cmdmodificarmas = button(u"cmdmodificarmas"_s, CambiarPaciente);
    cmdeliminarmas = button(u"cmdeliminarmas"_s, Eliminar);
    m_dePaciente = {cmdagregarmas,  cmdnuevomas,   cmdmodificarmas,
                    cmdeliminarmas, NuevoPaciente, CambiarPaciente};

    lugar->addLayout(buildSearch(Pacientes, txtmascotab, cmdBuscarPaciente), 0, 1);
    lugar->addWidget(GMascotas, 1, 1);
    lugar->addWidget(m_mascota, 2, 1);
    lugar->addLayout(buildButtons(m_dePaciente), 3, 1);
}

QLayout *frmPropietarios::buildSearch(int texto, QLineEdit *caja, QPushButton *avanzada)
{
    auto *title = new QLabel(m_s(texto));
    title->setProperty("clase", u"subtitulo"_s);
    title->setBuddy(caja);
    avanzada->setToolTip(avanzada->text());
    avanzada->setText({});
    avanzada->setIcon(Icono(u"buscar"_s));
    avanzada->setProperty("clase", u"barra"_s);
    auto *row = new QHBoxLayout;
    row->setSpacing(Espacio::S);
    row->addWidget(title);
    row->addWidget(caja, 1);
    row->addWidget(avanzada);
    return row;
}

QLayout *frmPropietarios::buildButtons(const Botonera &botones)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(Espacio::S);
    for (QPushButton *b : {botones.agregar, botones.nuevo, botones.modificar, botones.eliminar})
        row->addWidget(b);
    row->addStretch();
    return row;
}

void frmPropietarios::orderKeys()
{
    const QList<QWidget *> client = m_cliente->Cadena(), patient = m_mascota->Cadena();
    // ENTER passes by the notes, where it begins a line; TAB does not.
    const auto chain = [this](const QList<QWidget *> &boxes, QWidget *save) {
        enterChain(boxes.first(boxes.size() - 1) + QList<QWidget *>{save});
        enterChain({boxes.last(), save});
    };
    chain(client, cmdagregar);
    chain(patient, cmdagregarmas);
    refuseApostropheIn(client + patient);
    refuseApostrophe({Txtapellidob, txtmascotab});

    QList<QWidget *> order{Txtapellidob, cmdBuscarCliente, GClientes};
    order += client;
    order += {cmdagregar,  cmdNuevo,          cmdmodificar, cmdEliminar,
              txtmascotab, cmdBuscarPaciente, GMascotas};
    order += patient;
    order += {findChild<QWidget *>(u"PicMascota"_s), cmdagregarmas, cmdnuevomas, cmdmodificarmas,
              cmdeliminarmas};
    for (QPushButton *b : m_barra->findChildren<QPushButton *>())
        order.append(b);
    order.append(cmdvolver);
    for (int i = 0; i + 1 < order.size(); ++i)
        setTabOrder(order[i], order[i + 1]);

    for (QWidget *w : std::initializer_list<QWidget *>{GClientes, GMascotas})
        w->installEventFilter(this);
}
