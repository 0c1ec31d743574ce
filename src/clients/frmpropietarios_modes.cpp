#include "clients/client_rows.h"
#include "clients/deletion.h"
#include "clients/frmpropietarios.h"
#include "clients/frmpropietarios_client.h"
#include "clients/frmpropietarios_fields.h"
#include "clients/frmpropietarios_patient.h"
#include "clients/mail_domains.h"
#include "clients/owner_search.h"
#include "ui/form_registry.h"
#include "ui/grid.h"
#include "ui/help_line.h"

#include <QPushButton>
#include <QScopedValueRollback>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Cancelar = 9484,
    SigueEscribiendo = 9515,
    HayBorrador = 9516,
    ClienteGuardado = 9517,
    PacienteGuardado = 9518,
    YaEstaba = 9519,
    EmpezarCliente = 9529,
    EmpezarPaciente = 9530,
    EmpezarCambio = 9531,
    ClienteYaNoEsta = 9418,
    PacienteYaNoEsta = 9419,
};

// Names of what a draft holds.
const QString ofPanel = u"panel"_s, ofMode = u"modo"_s, ofClient = u"idc"_s, ofPatient = u"idm"_s,
              ofBoxes = u"campos"_s;

/// Tells on the help line how far a long run has come, for as long as this lives.
class AvanceEnLinea
{
public:
    AvanceEnLinea(Sesion &s, LineaDeAyuda *linea) : m_s(s), m_antes(s.avance)
    {
        s.avance = {[linea](const QString &text) {
                        linea->Decir(text);
                        linea->repaint();
                    },
                    {}};
    }
    ~AvanceEnLinea() { m_s.avance = m_antes; }
    AvanceEnLinea(const AvanceEnLinea &) = delete;
    AvanceEnLinea &operator=(const AvanceEnLinea &) = delete;

private:
    Sesion &m_s;
    Avance m_antes;
};

} // namespace

void frmPropietarios::arrange()
{
    const bool free = !entering();
    for (QWidget *w :
         std::initializer_list<QWidget *>{GClientes, GMascotas, Txtapellidob, txtmascotab})
        w->setEnabled(free);
    cmdBuscarCliente->setEnabled(free && m_formularios.Existe(u"frmBusquedaClientes"_s));
    cmdBuscarPaciente->setEnabled(free && m_formularios.Existe(u"frmBusquedaMascotas"_s));
    arrange(m_deCliente, m_modoCliente, m_mostrado.idc != 0);
    arrange(m_dePaciente, m_modoMascota, m_mostrado.idm != 0);
    m_dePaciente.nuevo->setEnabled(m_dePaciente.nuevo->isEnabled() && m_mostrado.idc != 0);
    m_mascota->PermitirFoto(free && m_mostrado.idm != 0);
    m_barra->Actualizar(free);
}

void frmPropietarios::arrange(const Botonera &botones, Modo modo, bool hayFila)
{
    const bool mine = modo != Modo::Ver, free = !entering();
    PonerTitulo(botones.nuevo, m_s(modo == Modo::Nuevo ? Cancelar : botones.textoNuevo));
    PonerTitulo(botones.modificar,
                m_s(modo == Modo::Modificar ? Cancelar : botones.textoModificar));
    botones.agregar->setVisible(mine);
    botones.nuevo->setVisible(modo != Modo::Modificar);
    botones.modificar->setVisible(modo != Modo::Nuevo);
    botones.eliminar->setVisible(!mine);
    botones.nuevo->setEnabled(free || mine);
    botones.modificar->setEnabled(mine || (free && hayFila));
    botones.eliminar->setEnabled(free && hayFila);
    botones.agregar->setDefault(mine);
}

void frmPropietarios::toggleClient(Modo modo)
{
    if (m_modoCliente != Modo::Ver)
        cancelMode();
    else
        guarded([this, modo] { startClient(modo); });
}

void frmPropietarios::togglePatient(Modo modo)
{
    if (m_modoMascota != Modo::Ver)
        cancelMode();
    else
        guarded([this, modo] { startPatient(modo); });
}

void frmPropietarios::startClient(Modo modo)
{
    m_cliente->CargarListas();
    if (modo == Modo::Nuevo) {
        m_cliente->Vaciar(ProximoCliente(m_s));
    } else {
        const auto client = LeerCliente(m_s, m_mostrado.idc);
        if (!client)
            return m_s.dialogos.Mensaje(m_s(ClienteYaNoEsta));
        m_cliente->Mostrar(*client);
    }
    m_modoCliente = modo;
    m_cliente->Abrir(true);
    started();
    m_cliente->Enfocar(Campo::Nombre);
    Ayu->Decir(m_s(modo == Modo::Nuevo ? EmpezarCliente : EmpezarCambio));
}

void frmPropietarios::startPatient(Modo modo)
{
    m_mascota->CargarListas();
    if (modo == Modo::Nuevo) {
        m_mascota->Vaciar(ProximoPaciente(m_s));
    } else {
        const auto patient = LeerPaciente(m_s, m_mostrado.idm);
        if (!patient)
            return m_s.dialogos.Mensaje(m_s(PacienteYaNoEsta));
        m_mascota->Mostrar(*patient);
    }
    m_modoMascota = modo;
    m_mascota->Abrir(true);
    started();
    m_mascota->Enfocar(Campo::Nombre);
    Ayu->Decir(m_s(modo == Modo::Nuevo ? EmpezarPaciente : EmpezarCambio));
}

void frmPropietarios::started()
{
    m_alEmpezar = typed();
    arrange();
    m_reposo->start(0);
}

QVariantMap frmPropietarios::typed() const
{
    return m_modoCliente != Modo::Ver ? m_cliente->Campos() : m_mascota->Campos();
}

void frmPropietarios::leaveMode()
{
    m_pausa->stop();
    m_borrador.Borrar();
    m_modoCliente = m_modoMascota = Modo::Ver;
    m_cliente->Abrir(false);
    m_mascota->Abrir(false);
    arrange();
}

bool frmPropietarios::cancelMode()
{
    // Asked so that ENTER, pressed without reading, loses nothing.
    if (typed() != m_alEmpezar && m_s.dialogos.Pregunta(m_s(SigueEscribiendo)))
        return false;
    const bool wasClient = m_modoCliente != Modo::Ver;
    leaveMode();
    Ayu->Limpiar();
    guarded([this] { showClient(m_mostrado.idc, m_mostrado.idm); });
    (wasClient ? Txtapellidob : txtmascotab)->setFocus();
    return true;
}

// Another form wants this client and patient shown.
void frmPropietarios::leaveFor(Seleccion deseada)
{
    if (entering() && !cancelMode())
        return;
    m_s.IdGlobal = deseada;
    opened({});
}

// The addresses of a client that is being changed count at once.
void frmPropietarios::settleMail(const QString &direcciones)
{
    guarded([this, &direcciones] {
        const int idc = m_modoCliente == Modo::Modificar ? m_mostrado.idc : 0;
        const bool wasFresh = !stale();
        if (!AsentarCorreo(m_s, direcciones, idc))
            return;
        putClientRow(idc);
        const QScopedValueRollback busy(m_ocupado, true);
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
        FormBase::reject();
}

void frmPropietarios::saveClient()
{
    guarded([this] {
        const FichaDeCliente client = m_cliente->Ficha();
        const bool wasFresh = !stale();
        int idc = client.idc;
        if (m_modoCliente == Modo::Nuevo) {
            const Alta added = AgregarCliente(m_s, client);
            if (added.rechazo)
                return m_cliente->Enfocar(added.rechazo->campo);
            if (added.existente) {
                leaveMode();
                if (rowOfClient(added.existente) < 0)
                    putClientRow(added.existente);
                goToClient(added.existente);
                GClientes->setFocus();
                return Ayu->Decir(
                    m_s(YaEstaba) + u' '
                    + m_clientes->TextoDeCelda(GClientes->FilaActual(), ColumnaDeCliente::Nombre));
            }
            idc = added.id;
        } else if (const auto refused = ModificarCliente(m_s, client)) {
            return m_cliente->Enfocar(refused->campo);
        }
        const bool isNew = m_modoCliente == Modo::Nuevo;
        const int idm = isNew ? 0 : m_mostrado.idm;
        leaveMode();
        putClientRow(idc);
        if (wasFresh)
            noteVersions();
        goToClient(idc, idm);
        Ayu->Logro(m_s(ClienteGuardado) + u' ' + client.ayn.trimmed());
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
        FichaDePaciente patient = m_mascota->Ficha();
        const bool isNew = m_modoMascota == Modo::Nuevo;
        if (isNew) {
            patient.idc = m_mostrado.idc;
            const Alta added = AgregarPaciente(m_s, patient, m_mascota->NacimientoValido());
            if (added.rechazo)
                return m_mascota->Enfocar(added.rechazo->campo);
            patient.idm = added.id;
        } else if (const auto refused = ModificarPaciente(m_s, patient, m_mascota->Especie(),
                                                          m_mascota->NacimientoValido())) {
            return m_mascota->Enfocar(refused->campo);
        }
        leaveMode();
        showPatients(m_mostrado.idc, patient.idm);
        Ayu->Logro(m_s(PacienteGuardado) + u' ' + patient.nom.trimmed());
        if (isNew)
            cmdnuevomas->setFocus();
        else
            GMascotas->setFocus();
    });
}

void frmPropietarios::deleteClient()
{
    guarded([this] {
        const AvanceEnLinea progress(m_s, Ayu);
        const int idc = m_mostrado.idc, row = rowOfClient(idc);
        const bool wasFresh = !stale();
        if (!EliminarCliente(m_s, idc))
            return;
        Ayu->Limpiar();
        dropClientRow(idc);
        if (!goToClient(clientAt(std::min(row, m_clientes->Filas() - 1))))
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
        const AvanceEnLinea progress(m_s, Ayu);
        const int row = GMascotas->FilaActual(), below = patientAt(row + 1);
        if (!EliminarPaciente(m_s, m_mostrado.idm))
            return;
        Ayu->Limpiar();
        showPatients(m_mostrado.idc, below ? below : patientAt(row - 1));
        txtmascotab->setFocus();
    });
}

void frmPropietarios::touched()
{
    if (entering())
        m_pausa->start();
}

void frmPropietarios::keepDraft()
{
    const QVariantMap boxes = typed();
    if (!entering() || boxes == m_alEmpezar)
        return m_borrador.Borrar();
    const bool client = m_modoCliente != Modo::Ver;
    m_borrador.Guardar({{ofPanel, client ? u"cliente"_s : u"paciente"_s},
                        {ofMode, int(client ? m_modoCliente : m_modoMascota)},
                        {ofClient, m_mostrado.idc},
                        {ofPatient, m_mostrado.idm},
                        {ofBoxes, boxes}});
}

void frmPropietarios::offerDraft()
{
    const QVariantMap draft = m_borrador.Leer();
    if (entering() || draft.isEmpty())
        return;
    const bool client = draft.value(ofPanel) == u"cliente"_s;
    const QVariantMap boxes = draft.value(ofBoxes).toMap();
    const QString name = boxes.value(client ? u"txtayn"_s : u"txtnom"_s).toString();
    if (!m_s.dialogos.Pregunta((m_s(HayBorrador) + u"\n\n"_s + name).trimmed()))
        return m_borrador.Borrar();
    guarded([&] {
        auto mode =
            draft.value(ofMode).toInt() == int(Modo::Modificar) ? Modo::Modificar : Modo::Nuevo;
        const int idm = draft.value(ofPatient).toInt();
        const bool ownerThere = goToClient(draft.value(ofClient).toInt(), idm);
        if (!client && !ownerThere) {
            m_s.dialogos.Mensaje(m_s(ClienteYaNoEsta));
            return m_borrador.Borrar();
        }
        // What was to change is gone: what was typed is still good for a new one.
        if (mode == Modo::Modificar && (client ? !ownerThere : m_mostrado.idm != idm))
            mode = Modo::Nuevo;
        if (client) {
            startClient(mode);
            m_cliente->PonerCampos(boxes);
        } else {
            startPatient(mode);
            m_mascota->PonerCampos(boxes);
        }
    });
}
