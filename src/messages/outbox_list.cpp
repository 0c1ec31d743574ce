#include "messages/outbox_list.h"

#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "contact/contact.h"
#include "messages/outbox.h"
#include "messages/templates.h"
#include "store/lookups.h"

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Email = 16,
    Carta = 37,
    Discontinuado = 1116,
    BandejaDeSalida = 3602,
    EnEspera = 3613,
    RegularizarMorosidad = 9903,
    ReabastecerVeterinaria = 9904,
    TurnoPorInternet = 9905,
};

// The outbox has words of its own for some of the kinds.
QString MotivoEnBandeja(const Sesion &s, int tip)
{
    switch (tip) {
    case TipoTarea::RecordatorioDosis:
        return s(Discontinuado);
    case TipoTarea::RegularizarMorosidad:
        return s(RegularizarMorosidad);
    case TipoTarea::Reabastecer:
        return s(ReabastecerVeterinaria);
    case TipoTarea::RecordatorioTurno:
        return s(TurnoPorInternet);
    default:
        return MotivoDeTarea(s, tip);
    }
}

QString IconoEnBandeja(int tip)
{
    switch (tip) {
    case TipoTarea::FaltaAlimento:
        return u"AgendaCom"_s;
    case TipoTarea::RecordatorioDosis:
        return u"AgendaVac"_s;
    case TipoTarea::RecordatorioDeuda:
        return u"CtaCteChico"_s;
    default:
        return {};
    }
}

QString NombreDelDestinatario(Sesion &s, int tip, int ida)
{
    if (SujetoDeTarea(tip) == Sujeto::Proveedor)
        return LeerCampo(s, "finanzas", "proveedores", ida, "nom");
    return LeerCampo(s, "clientes", "clientes", DestinatarioDeTarea(s, tip, ida), "ayn");
}

} // namespace

std::vector<MensajeDelDia> MensajesDelDia(Sesion &s)
{
    std::vector<MensajeDelDia> mensajes;
    Recordset r = s.morvane->OpenSnapshot(
        "select * from TareasAgenda where (dia = date() and (tip = -49)) or (fcreacion = date() "
        "and (tip < 0 and tip <> -47)) order by id");
    for (; !r.EOF_(); r.MoveNext()) {
        MensajeDelDia m;
        m.id = r["id"].toInt();
        m.tip = r["tip"].toInt();
        if (SujetoDeTarea(m.tip) == Sujeto::Usuario)
            continue; // a user's note to himself goes to nobody
        m.medio = r["medio"].toInt();
        m.ida = r["ida"].toInt();
        m.artaux = r["artaux"].toInt();
        m.destinatario = NombreDelDestinatario(s, m.tip, m.ida);
        m.motivo = MotivoEnBandeja(s, m.tip);
        m.icono = IconoEnBandeja(m.tip);
        m.porMedio = m.medio == Medio::Correo  ? s(Email)
                     : m.medio == Medio::Carta ? s(Carta)
                                               : s(Email) + u'/' + s(Carta);
        m.salio = !r["fmedio"].EsNulo();
        m.estado = m.salio ? s(BandejaDeSalida) : s(EnEspera);
        mensajes.push_back(std::move(m));
    }
    return mensajes;
}

QString TextoDeMensaje(Sesion &s, const MensajeDelDia &m)
{
    const int idc = DestinatarioDeTarea(s, m.tip, m.ida);
    const int idm = SujetoDeTarea(m.tip) == Sujeto::Paciente ? m.ida : 0;
    const bool porMail = m.medio == Medio::CorreoOCarta && !DireccionCliente(s, idc).isEmpty();
    return ComponerMensaje(s, m.tip, idc, idm, m.artaux, porMail ? Medio::Correo : m.medio);
}
