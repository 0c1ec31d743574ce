#include "clients/frmpropietarios.h"

#include "clients/client_rows.h"
#include "clients/frmpropietarios_client.h"
#include "clients/frmpropietarios_patient.h"
#include "clients/owner_search.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"

#include <QCoreApplication>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    BusquedaExitoCliente = 2243,
    AyudaDeBusqueda = 2244,
    BusquedaNoExitoCliente = 2245,
    AyudaDeMenu = 2248,
    AyudaDeDobleClic = 2251,
    SinPacientes = 9456,
    SinCliente = 9457,
    BusquedaClienteEnBlanco = 9458,
    BusquedaExitosaMascotas = 9459,
    BusquedaNoExitosaMascotas = 9460,
    NingunPaciente = 9461,
    ElijaPaciente = 9462,
    CambioDeIdGlobal = 9544,
    NoEstaElCliente = 9545,
    Propietario = 9809,
    Mascota = 9834,
    MotivoRojo = 9465,
    MotivoAmarillo = 9466,
    Fallecido = 9467,
};

constexpr int restMs = 120;
constexpr int draftMs = 1000;

FilaDeGrilla gridRow(const Sesion &s, const FilaDeCliente &c)
{
    FilaDeGrilla row{{c.idc, c.ayn, c.tel2, c.idc}, Realce::Ninguno, ColumnaDeCliente::Nombre, {}};
    if (c.sena == SenaDeCliente::Alerta) {
        row.realce = Realce::Alerta;
        row.motivo = s(MotivoRojo);
    } else if (c.sena == SenaDeCliente::Aviso) {
        row.realce = Realce::Aviso;
        row.motivo = s(MotivoAmarillo);
    }
    return row;
}

FilaDeGrilla gridRow(const Sesion &s, const FilaDePaciente &p)
{
    FilaDeGrilla row{{p.nom, p.especie, p.raza, p.idm}, Realce::Ninguno, -1, {}};
    if (p.dec) {
        row.celdas[ColumnaDePaciente::Nombre] = p.nom + u" · "_s + s(Fallecido);
        row.realce = Realce::Apagado;
        row.motivo = s(Fallecido);
    }
    return row;
}

} // namespace

frmPropietarios::frmPropietarios(Sesion &s, Formularios &formularios, AbrirEnlace abrir,
                                 QWidget *parent)
    : FormBase(s, u"frmPropietarios"_s, parent),
      m_formularios(formularios),
      m_abrir(std::move(abrir)),
      m_borrador(s, u"frmPropietarios"_s)
{
    setWindowFlags(Qt::Window);
    build();
    wire();
    arrange();
}

void frmPropietarios::wire()
{
    m_reposo = new QTimer(this);
    m_reposo->setSingleShot(true);
    connect(m_reposo, &QTimer::timeout, this, &frmPropietarios::inform);
    m_pausa = new QTimer(this);
    m_pausa->setSingleShot(true);
    m_pausa->setInterval(draftMs);
    connect(m_pausa, &QTimer::timeout, this, &frmPropietarios::keepDraft);

    connect(GClientes, &Grilla::filaCambiada, this, &frmPropietarios::clientRowChanged);
    connect(GMascotas, &Grilla::filaCambiada, this, &frmPropietarios::patientRowChanged);
    connect(GClientes, &Grilla::filaElegida, this, &frmPropietarios::openMenu);
    connect(GMascotas, &Grilla::filaElegida, this, [this] { m_barra->Ficha()->click(); });
    connect(Txtapellidob, &QLineEdit::textEdited, this, &frmPropietarios::searchClient);
    connect(txtmascotab, &QLineEdit::textEdited, this, &frmPropietarios::searchPatient);

    const auto opens = [this](QPushButton *b, const QString &form) {
        connect(b, &QPushButton::clicked, this,
                [this, form] { guarded([this, &form] { m_formularios.Abrir(form); }); });
    };
    opens(cmdBuscarCliente, u"frmBusquedaClientes"_s);
    opens(cmdBuscarPaciente, u"frmBusquedaMascotas"_s);

    const auto does = [this](QPushButton *b, auto what) {
        connect(b, &QPushButton::clicked, this, what);
    };
    does(cmdNuevo, [this] { toggleClient(Modo::Nuevo); });
    does(cmdmodificar, [this] { toggleClient(Modo::Modificar); });
    does(cmdagregar, [this] { saveClient(); });
    does(cmdEliminar, [this] { deleteClient(); });
    does(cmdnuevomas, [this] { togglePatient(Modo::Nuevo); });
    does(cmdmodificarmas, [this] { togglePatient(Modo::Modificar); });
    does(cmdagregarmas, [this] { savePatient(); });
    does(cmdeliminarmas, [this] { deletePatient(); });
    does(cmdvolver, [this] { reject(); });

    connect(m_cliente, &PanelDeCliente::tocado, this, &frmPropietarios::touched);
    connect(m_mascota, &PanelDePaciente::tocado, this, &frmPropietarios::touched);
    connect(m_cliente, &PanelDeCliente::correoEscrito, this, &frmPropietarios::settleMail);
    connect(m_cliente, &PanelDeCliente::escribirCorreo, m_barra, &BarraDeAccesos::Correo);
}

void frmPropietarios::opened(const QVariantMap &)
{
    if (entering()) {
        // What is being typed goes first; it is asked about once the busy cursor is gone.
        const Seleccion wanted = std::exchange(m_s.IdGlobal, m_mostrado);
        if (wanted.idc != m_mostrado.idc || wanted.idm != m_mostrado.idm)
            QTimer::singleShot(0, this, [this, wanted] { leaveFor(wanted); });
        return;
    }
    guarded([this] { refresh(); });
    Txtapellidob->setFocus();
    Txtapellidob->selectAll();
    Ayu->Decir(m_s(BusquedaClienteEnBlanco));
    QTimer::singleShot(0, this, &frmPropietarios::offerDraft);
}

void frmPropietarios::activated()
{
    if (m_cargado && !m_ocupado && !entering())
        guarded([this] { refresh(); });
}

// Brings the screen up to what other forms and terminals have written and chosen.
void frmPropietarios::refresh()
{
    if (!m_cargado || stale())
        reload();
    else
        synchronize();
}

bool frmPropietarios::stale() { return m_s.clientes->Version("clientes") != m_version; }

void frmPropietarios::noteVersions()
{
    m_version = m_s.clientes->Version("clientes");
    m_versionDeMascotas = m_s.clientes->Version("mascotas");
}

void frmPropietarios::reload()
{
    noteVersions();
    m_cliente->CargarListas();
    m_mascota->CargarListas();
    std::vector<FilaDeGrilla> rows;
    for (const FilaDeCliente &c : FilasDeClientes(m_s))
        rows.push_back(gridRow(m_s, c));
    {
        const QScopedValueRollback busy(m_ocupado, true);
        m_clientes->Poner(std::move(rows));
    }
    m_cargado = true;
    m_mostrado = {};
    if (m_s.IdGlobal.idc == 0)
        m_s.IdGlobal = {clientAt(0), 0};
    if (m_s.IdGlobal.idc)
        synchronize();
    else
        showClient(0);
}

// Follows a selection that another form has changed.
void frmPropietarios::synchronize()
{
    const Seleccion wanted = m_s.IdGlobal;
    if (wanted.idc == m_mostrado.idc) {
        if (wanted.idm == m_mostrado.idm
            && m_s.clientes->Version("mascotas") == m_versionDeMascotas)
            return;
        showPatients(wanted.idc, wanted.idm);
    } else if (!goToClient(wanted.idc, wanted.idm)) {
        tellLost(true);
        if (!goToClient(clientAt(std::max(GClientes->FilaActual(), 0))))
            showClient(0);
        return;
    }
    if (wanted.idm && m_mostrado.idm != wanted.idm)
        tellLost(false);
}

// Closing the message makes this the active window once more, which must not begin anew.
void frmPropietarios::tellLost(bool cliente)
{
    const QScopedValueRollback busy(m_ocupado, true);
    m_s.dialogos.Mensaje(m_s(CambioDeIdGlobal)
                         + (cliente ? u'\n' + m_s(NoEstaElCliente) : QString()));
}

int frmPropietarios::rowOfClient(int idc) const
{
    return m_clientes->BuscarEnGrilla(idc, ColumnaDeCliente::Idc, 0, m_clientes->Filas() - 1);
}

int frmPropietarios::rowOfPatient(int idm) const
{
    return m_mascotas->BuscarEnGrilla(idm, ColumnaDePaciente::Idm, 0, m_mascotas->Filas() - 1);
}

// 0 where there is no such row.
int frmPropietarios::clientAt(int fila) const
{
    return fila < 0 || fila >= m_clientes->Filas()
               ? 0
               : m_clientes->Fila(fila).celdas[ColumnaDeCliente::Idc].toInt();
}

int frmPropietarios::patientAt(int fila) const
{
    return fila < 0 || fila >= m_mascotas->Filas()
               ? 0
               : m_mascotas->Fila(fila).celdas[ColumnaDePaciente::Idm].toInt();
}

bool frmPropietarios::goToClient(int idc, int idm)
{
    const int row = rowOfClient(idc);
    if (row < 0)
        return false;
    {
        const QScopedValueRollback busy(m_ocupado, true);
        GClientes->Seleccionar(row);
        GClientes->scrollTo(GClientes->currentIndex(), QAbstractItemView::PositionAtCenter);
    }
    showClient(idc, idm);
    return true;
}

void frmPropietarios::clientRowChanged(int fila)
{
    if (!m_ocupado && fila >= 0)
        guarded([this, fila] { showClient(clientAt(fila)); });
}

void frmPropietarios::patientRowChanged(int fila)
{
    if (!m_ocupado && fila >= 0)
        guarded([this, fila] { showPatient(patientAt(fila)); });
}

void frmPropietarios::showClient(int idc, int idm)
{
    m_s.IdGlobal = m_mostrado = {idc, 0};
    if (const auto client = idc ? LeerCliente(m_s, idc) : std::nullopt)
        m_cliente->Mostrar(*client);
    else
        m_cliente->Vaciar();
    GMascotas->PonerVacio(m_s(idc ? SinPacientes : SinCliente));
    showPatients(idc, idm);
}

void frmPropietarios::showPatients(int idc, int idm)
{
    {
        const QScopedValueRollback busy(m_ocupado, true);
        m_versionDeMascotas = m_s.clientes->Version("mascotas");
        std::vector<FilaDeGrilla> rows;
        if (idc)
            for (const FilaDePaciente &p : FilasDePacientes(m_s, idc))
                rows.push_back(gridRow(m_s, p));
        m_mascotas->Poner(std::move(rows));
        if (m_mascotas->Filas())
            GMascotas->Seleccionar(std::max(0, rowOfPatient(idm)));
    }
    showPatient(patientAt(GMascotas->FilaActual()));
}

void frmPropietarios::showPatient(int idm)
{
    m_s.IdGlobal.idm = m_mostrado.idm = idm;
    if (const auto patient = idm ? LeerPaciente(m_s, idm) : std::nullopt)
        m_mascota->Mostrar(*patient);
    else
        m_mascota->Vaciar();
    arrange();
    informSoon();
}

// At once for a single step; not before the cursor rests when somebody walks down the list.
void frmPropietarios::informSoon()
{
    const bool walking = m_ultimoPaso.isValid() && m_ultimoPaso.elapsed() < 2 * restMs;
    m_ultimoPaso.start();
    m_reposo->start(walking ? restMs : 0);
}

void frmPropietarios::inform()
{
    guarded([this] {
        m_cliente->Informar();
        m_mascota->Informar();
        m_barra->PonerHospedaje(m_mostrado.idm ? LeerHospedaje(m_s, m_mostrado.idm).estancia
                                               : Estancia::Hospedar);
    });
}

/// Puts a client's row where its name belongs.
void frmPropietarios::putClientRow(int idc)
{
    dropClientRow(idc);
    const QScopedValueRollback busy(m_ocupado, true);
    if (const auto client = FilaDelCliente(m_s, idc))
        m_clientes->Insertar(gridRow(m_s, *client), ColumnaDeCliente::Nombre);
}

void frmPropietarios::dropClientRow(int idc)
{
    const QScopedValueRollback busy(m_ocupado, true);
    if (const int row = rowOfClient(idc); row >= 0)
        m_clientes->Quitar(row);
}

void frmPropietarios::searchClient(const QString &texto)
{
    if (texto.trimmed().isEmpty())
        return Ayu->Decir(m_s(BusquedaClienteEnBlanco));
    const int row = BuscarPropietario(*m_clientes, texto);
    if (row < 0)
        return Ayu->Fallo((m_s(BusquedaNoExitoCliente) + texto).trimmed());
    GClientes->Seleccionar(row);
    // Namesakes stand below.
    GClientes->scrollTo(GClientes->currentIndex(), QAbstractItemView::PositionAtCenter);
    Ayu->Logro(m_s(BusquedaExitoCliente) + u' '
               + m_clientes->TextoDeCelda(row, ColumnaDeCliente::Nombre) + u' '
               + m_s(AyudaDeBusqueda));
}

void frmPropietarios::searchPatient(const QString &texto)
{
    const QString text = texto.trimmed();
    if (text.isEmpty())
        return Ayu->Limpiar();
    const int row = BuscarMascota(*m_mascotas, text);
    if (row < 0)
        return Ayu->Decir(m_s(BusquedaNoExitosaMascotas) + u' ' + text);
    GMascotas->Seleccionar(row);
    Ayu->Logro(m_s(BusquedaExitosaMascotas) + u' '
               + m_mascotas->TextoDeCelda(row, ColumnaDePaciente::Nombre));
}

void frmPropietarios::searchAllPatients()
{
    const QString text = txtmascotab->text().trimmed();
    if (text.isEmpty())
        return;
    guarded([this, &text] {
        const std::vector<PacienteHallado> found = BuscarPacientes(m_s, text);
        if (found.empty())
            return Ayu->Fallo(m_s(NingunPaciente) + u' ' + text);
        size_t chosen = 0;
        if (found.size() > 1) {
            QList<Opcion> options;
            for (const PacienteHallado &p : found)
                options.append({p.mascota + u'\t' + p.propietario, int(options.size()), false});
            const auto answer = m_s.dialogos.Seleccionar(m_s(ElijaPaciente),
                                                         {m_s(Mascota), m_s(Propietario)}, options);
            if (!answer || answer->isEmpty())
                return;
            chosen = size_t(answer->first().valor);
        }
        const PacienteHallado &p = found[chosen];
        // Another terminal may have entered the owner since the rows were read.
        if (rowOfClient(p.idc) < 0)
            reload();
        if (goToClient(p.idc, p.idm))
            Ayu->Logro(m_s(BusquedaExitoCliente) + u' ' + p.mascota + u" · "_s + p.propietario);
    });
}

// @return whether the key was used up
bool frmPropietarios::searchKey(QLineEdit *caja, QKeyEvent *tecla)
{
    const bool ofClients = caja == Txtapellidob;
    if ((ofClients ? GClientes : GMascotas)->Recorrer(tecla)) {
        if (ofClients)
            Ayu->Decir(m_s(AyudaDeMenu));
        return true;
    }
    if (tecla->key() != Qt::Key_Return && tecla->key() != Qt::Key_Enter)
        return false;
    if (ofClients)
        openMenu();
    else
        searchAllPatients();
    return true;
}

void frmPropietarios::openMenu()
{
    const int row = GClientes->FilaActual();
    if (row < 0 || entering())
        return;
    const QRect cell = GClientes->visualRect(m_clientes->index(row, ColumnaDeCliente::Nombre));
    m_barra->AbrirMenu(GClientes->viewport()->mapToGlobal(cell.bottomLeft()),
                       m_clientes->TextoDeCelda(row, ColumnaDeCliente::Nombre));
}

bool frmPropietarios::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && watched == GClientes)
        Ayu->Decir(m_s(AyudaDeDobleClic));
    if (event->type() == QEvent::KeyPress) {
        auto *key = static_cast<QKeyEvent *>(event);
        const bool plain = !(key->modifiers() & ~Qt::KeypadModifier);
        for (QLineEdit *box : {Txtapellidob, txtmascotab})
            if (watched == box && plain && searchKey(box, key))
                return true;
        if (plain && key->key() == Qt::Key_Delete
            && (watched == GClientes || watched == GMascotas)) {
            (watched == GClientes ? cmdEliminar : cmdeliminarmas)->click();
            return true;
        }
        if (plain && m_modoCliente != Modo::Ver && m_cliente->Tecla(watched, *key))
            return true;
    }
    return FormBase::eventFilter(watched, event);
}
