#include "messages/outbox.h"

#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "contact/contact.h"
#include "messages/mail.h"
#include "messages/templates.h"
#include "printing/letter.h"
#include "printing/report.h"
#include "store/data_folder.h"
#include "store/lookups.h"
#include "store/opening.h"

#include <span>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    RealizandoTareas = 3415,
    DebemosEnviar = 3430,
    MedicinaPrepaga = 3802,
    ImprimirVacunacion = 4602,
    ImprimirCarta = 4603,
    ImprimirAlimento = 4631,
    SinCorreo = 5029,
    FelizCumpleanos = 5040,
    AvisoDe = 5041,
    RecordatoriosDeTurno = 5063,
    EnviandoCorreo = 9902,
    NoSePudoEnviar = 9985,
};

constexpr int DibujoSinCorreo = 116; // the line is written once, and known by its picture
constexpr int VerVideos = 34;        // click code of the page with the videos
constexpr int DibujoComunicacion = 109;
constexpr int VerAgendaDeHoy = 8;

// How long a terminal waits for another one that is sending mails.
constexpr int EsperaDelEnvio = 3;
// What is given to the server must be noted: a store that another terminal holds is tried again
// this often, each time for as long as the engine waits.
constexpr int IntentosDeAnotar = 20;

// --- The day's tasks ---

struct Pendiente {
    int id = 0;
    int tip = 0;
    int ida = 0;
    int medio = 0;
    Valor artaux;
    QString des;
};

// Read at once: what another terminal deletes or changes meanwhile disturbs no run.
std::vector<Pendiente> LeerPendientes(Sesion &s, const std::string &condicion,
                                      const std::vector<Valor> &valores)
{
    std::vector<Pendiente> pendientes;
    Recordset r = s.morvane->Abrir(
        "select id, tip, ida, medio, ArtAux, des from TareasAgenda where " + condicion, valores,
        false);
    for (; !r.EOF_(); r.MoveNext())
        pendientes.push_back({.id = r[0].toInt(),
                              .tip = r[1].toInt(),
                              .ida = r[2].toInt(),
                              .medio = r[3].toInt(),
                              .artaux = r[4],
                              .des = r[5].toText()});
    return pendientes;
}

// Notes a task as gone out. @return false when another terminal has done it, or the task is gone
bool Salio(Sesion &s, QDate hoy, const Pendiente &p)
{
    return s.morvane->Execute("update TareasAgenda set fmedio = ? where id = ? and fmedio is null",
                              hoy, p.id)
           > 0;
}

// Tasks of one reason and addressee, which stand one behind the other. One message tells them all.
using Grupo = std::span<const Pendiente>;

Grupo GrupoDesde(const std::vector<Pendiente> &pendientes, size_t inicio)
{
    size_t fin = inicio + 1;
    while (fin < pendientes.size() && pendientes[fin].tip == pendientes[inicio].tip
           && pendientes[fin].ida == pendientes[inicio].ida)
        ++fin;
    return Grupo(pendientes).subspan(inicio, fin - inicio);
}

// --- Delivery lists ---

struct ListaDeReparto {
    const char16_t *suministro; // of the categories that it is about
    const char *tabla;          // scratch table
    const char *columna;        // of the product in it
    QString informe;
    int pregunta;
};

// The services that bring products of such categories to the client's home.
std::vector<Valor> ServiciosDe(Sesion &s, const char16_t *suministro)
{
    std::vector<Valor> servicios;
    Recordset r = s.finanzas->OpenSnapshot(
        "SELECT DISTINCT idserv FROM FLCategorias WHERE Suministro = ? and idserv is not null",
        suministro);
    for (; !r.EOF_(); r.MoveNext())
        if (r[0].toInt() != 0)
            servicios.push_back(r[0]);
    return servicios;
}

bool EsDeReparto(Sesion &s, const char16_t *suministro, const Valor &producto)
{
    return !producto.EsNulo()
           && !s.finanzas
                   ->Leer("SELECT FLCategorias.IDCat FROM FLCategorias LEFT JOIN Articulos ON "
                          "FLCategorias.IDCat = Articulos.IDCat WHERE FLCategorias.Suministro = ? "
                          "AND Articulos.Ida = ?",
                          suministro, producto)
                   .EsNulo();
}

void AnotarReparto(Sesion &s, const ListaDeReparto &lista, int idm, int producto)
{
    const int idc = LeerCampo(s, "clientes", "mascotas", idm, "idc").toInt();
    const auto cortar = [&](const char *columna, const QString &t) {
        return s.auxiliar->Recortado(lista.tabla, columna, t);
    };
    const std::string sql = std::string("insert into ") + lista.tabla + " (mas, " + lista.columna
                            + ", pro, dir, tel) values (?, ?, ?, ?, ?)";
    s.auxiliar->Execute(
        sql, cortar("mas", LeerCampo(s, "clientes", "mascotas", idm, "nom")),
        cortar(lista.columna, LeerCampo(s, "finanzas", "articulos", producto, "nom")),
        cortar("pro", LeerCampo(s, "clientes", "clientes", idc, "ayn")),
        cortar("dir", DomicilioCliente(s, idc)), cortar("tel", TelefonosCliente(s, idc)));
}

std::vector<Pendiente> PendientesDeReparto(Sesion &s, QDate hoy, const ListaDeReparto &lista)
{
    std::vector<Valor> valores = ServiciosDe(s, lista.suministro);
    if (valores.empty())
        return {};
    std::string condicion;
    for (size_t i = 0; i < valores.size(); ++i)
        condicion += i ? " OR tip = ?" : "(tip = ?";
    valores.push_back(hoy);
    std::vector<Pendiente> pendientes = LeerPendientes(
        s, condicion + ") and medio = 4 and fmedio is null and dia = ? order by ida, id", valores);
    std::erase_if(pendientes,
                  [&](const Pendiente &p) { return !EsDeReparto(s, lista.suministro, p.artaux); });
    return pendientes;
}

void LlenarAuxiliar(Sesion &s, const ListaDeReparto &lista, const std::vector<Pendiente> &enLista)
{
    Lote lote(s);
    s.auxiliar->Execute(std::string("delete * from ") + lista.tabla);
    for (const Pendiente &p : enLista)
        AnotarReparto(s, lista, p.ida, p.artaux.toInt());
    lote.Confirmar();
}

// A list is noted as gone out once it is laid out, and before the question: answering No drops it,
// on purpose. A scratch file or a definition of no use costs the list, not the messages; its tasks
// stay as they were.
void Repartir(Sesion &s, QDate hoy, const ListaDeReparto &lista)
{
    std::unique_ptr<DocumentoHtml> documento;
    bool propia = false;
    try {
        const std::vector<Pendiente> enLista = PendientesDeReparto(s, hoy, lista);
        AbrirAuxiliar(s, u"rep97"_s);
        LlenarAuxiliar(s, lista, enLista);
        CerrarAuxiliar(s);
        if (enLista.empty())
            return;
        // The scratch file is every terminal's: laid out at once, the list is this run's.
        documento = CorrerInforme(s, lista.informe);
        Lote lote(s);
        for (const Pendiente &p : enLista)
            propia |= Salio(s, hoy, p);
        lote.Confirmar();
    } catch (const ErrorDeAlmacen &e) {
        CerrarAuxiliar(s);
        s.dialogos.Mensaje(TextoDeError(s, e));
        return;
    }
    if (propia && s.dialogos.Pregunta(s(lista.pregunta)))
        ImprimirODecir(s, *documento);
}

// --- Mails ---

QString AsuntoDe(const Sesion &s, int tip)
{
    switch (tip) {
    case TipoTarea::Cumpleanos:
    case TipoTarea::CumpleanosDestacado:
        return s.clinica.nom + u' ' + s(FelizCumpleanos);
    case TipoTarea::MorosoPrepaga:
        return s(MedicinaPrepaga);
    default:
        return s(AvisoDe) + u' ' + s.clinica.nom;
    }
}

int PacienteDe(int tip, int ida) { return SujetoDeTarea(tip) == Sujeto::Paciente ? ida : 0; }

// The template of a task: an appointment uses the one of reminders.
int PlantillaDe(int tip) { return tip > 0 ? TipoTarea::RecordatorioTurno : tip; }

bool Sale(int tip, int medio)
{
    switch (tip) {
    case TipoTarea::Cumpleanos:
    case TipoTarea::CumpleanosDestacado:
    case TipoTarea::RecordatorioDeuda:
    case TipoTarea::RecordatorioDosis:
    case TipoTarea::FaltaAlimento:
    case TipoTarea::DosisDiscontinuada:
    case TipoTarea::MorosoPrepaga:
    case TipoTarea::NuevoCliente:
    case TipoTarea::Frecuente:
        return true;
    default:
        return tip > 0 && medio == Medio::Correo;
    }
}

bool PasaACarta(Sesion &s, int tip)
{
    switch (tip) {
    case TipoTarea::RecordatorioDeuda:
        return true; // whatever the measure says, on purpose
    case TipoTarea::Cumpleanos:
        return s.configuracion["MedidasCumple"].toInt() == Medio::CorreoOCarta;
    case TipoTarea::RecordatorioDosis:
        return s.configuracion["MedidasRevac"].toInt() == Medio::CorreoOCarta;
    default:
        return false;
    }
}

void AnotarFalla(Sesion &s, const QString &motivo)
{
    AnotarError(s, ErrorNum::Correo, motivo, u"EnviarMensajes"_s);
}

// The run is given up: the board says so for the day.
void AvisarSinCorreo(Sesion &s)
{
    if (s.morvane->Leer("SELECT Dibujo FROM Pizarra WHERE Dibujo = ?", DibujoSinCorreo).EsNulo())
        AgregarPizarra(s, s(SinCorreo), DibujoSinCorreo, VerVideos, 0);
}

void PasarACartas(Sesion &s, QDate hoy)
{
    struct Medida {
        const char *columna;
        int tip;
    };
    for (const Medida m : {Medida{"MedidasCumple", TipoTarea::Cumpleanos},
                           Medida{"MedidasRevac", TipoTarea::RecordatorioDosis},
                           Medida{"MedidasDeudores", TipoTarea::RecordatorioDeuda}})
        if (s.configuracion[m.columna].toInt() == Medio::CorreoOCarta)
            s.morvane->Execute("update TareasAgenda set medio = 2 where (medio = 1 or medio = 3) "
                               "and est = 0 and fmedio is null and (fcreacion = ? or dia = ?) and "
                               "(tip = ?)",
                               hoy, hoy, m.tip);
}

// The deceased, and who was deleted since the task was made, get nothing.
bool NoRecibe(Sesion &s, int idm, int idc)
{
    if (idm != 0 && s.clientes->Leer("select dec from mascotas where idm = ?", idm).toBool())
        return true;
    return s.clientes->Leer("select idc from clientes where idc = ?", idc).EsNulo();
}

// Notes that the message of a group has gone out; a dose reminder also on the dose of its first
// task. The tasks behind the first count as sent, whatever became of that one, on purpose.
// @return whether the first was still to be noted
bool MarcarGrupo(Sesion &s, QDate hoy, Grupo grupo, bool salioElPrimero)
{
    const Pendiente &p = grupo.front();
    bool habia = true;
    if (salioElPrimero)
        habia = Salio(s, hoy, p);
    else if (PasaACarta(s, p.tip))
        s.morvane->Execute("update TareasAgenda set medio = 2 where id = ?", p.id);
    for (const Pendiente &otro : grupo.subspan(1))
        Salio(s, hoy, otro);
    if (salioElPrimero && p.tip == TipoTarea::RecordatorioDosis)
        s.clientes->Execute("update ArtPlan set Ana = -1 where Idm = ? and Ida = ? and Dos = ?",
                            p.ida, p.artaux.toInt(), p.des.toInt());
    return habia;
}

// What one message settles is settled at once and as a whole: a program that dies behind it sends
// nothing again. Most are one statement, which costs the disk half of what a batch over all files
// does.
bool Anotar(Sesion &s, QDate hoy, Grupo grupo, bool salioElPrimero)
{
    if (grupo.size() == 1 && grupo.front().tip != TipoTarea::RecordatorioDosis)
        return MarcarGrupo(s, hoy, grupo, salioElPrimero);
    Lote lote(s);
    const bool habia = MarcarGrupo(s, hoy, grupo, salioElPrimero);
    lote.Confirmar();
    return habia;
}

void AnotarAunqueEspere(Sesion &s, QDate hoy, Grupo grupo, bool salioElPrimero)
{
    for (int intento = 1;; ++intento) {
        try {
            Anotar(s, hoy, grupo, salioElPrimero);
            return;
        } catch (const ErrorDeAlmacen &e) {
            if (e.numero != ErrorNum::Bloqueada || intento == IntentosDeAnotar)
                throw;
        }
    }
}

struct Mensaje {
    int idc = 0;
    QString asunto;
    QString texto; // "" when nothing is to be sent
};

// What nothing is sent for does not count as sent either, nor does a text that the clinic emptied.
Mensaje MensajeDe(Sesion &s, const Pendiente &p)
{
    const int idm = PacienteDe(p.tip, p.ida);
    const int idc = DestinatarioDeTarea(s, p.tip, p.ida);
    if (!Sale(p.tip, p.medio) || NoRecibe(s, idm, idc))
        return {};
    const QString texto =
        ComponerMensaje(s, PlantillaDe(p.tip), idc, idm, p.artaux.toInt(), Medio::Correo);
    return {idc, AsuntoDe(s, p.tip), texto.trimmed().isEmpty() ? QString() : texto};
}

// Sends one after the other. @return how many appointments were reminded of
int EnviarPorTurno(Sesion &s, QDate hoy, const std::vector<Pendiente> &pendientes,
                   SesionDeCorreo &correo, int &hechas, const std::function<void()> &avanzar)
{
    int turnos = 0;
    QString anotado;
    while (hechas < int(pendientes.size())) {
        avanzar();
        const Grupo grupo = GrupoDesde(pendientes, size_t(hechas));
        const Mensaje m = MensajeDe(s, grupo.front());
        if (m.texto.isEmpty()) {
            ++hechas;
            continue;
        }
        const bool enviado = EnviarCorreo(s, correo, m.asunto, m.idc, m.texto);
        AnotarAunqueEspere(s, hoy, grupo, enviado);
        if (correo.Error() != std::exchange(anotado, correo.Error()))
            AnotarFalla(s, anotado); // once for what befalls many
        turnos += enviado && grupo.front().tip > 0;
        hechas += int(grupo.size());
    }
    avanzar();
    return turnos;
}

// @return why the run was given up, to be told to the user; "" when it was not
QString EnviarCorreos(Sesion &s, QDate hoy)
{
    const std::vector<Pendiente> pendientes = LeerPendientes(
        s,
        "(medio = 1 or medio = 3) and est = 0 and fmedio is null and (fcreacion = ? or dia = ?) "
        "order by tip, ida, id",
        {hoy, hoy});
    if (pendientes.empty())
        return {};
    int hechas = 0;
    const std::function<void()> avanzar = [&] { s.avance.Barra(hechas, int(pendientes.size())); };
    s.avance.Etapa(s(EnviandoCorreo));
    QString motivo;
    std::unique_ptr<SesionDeCorreo> correo = AbrirSesionCorreo(s, &motivo, avanzar);
    if (!correo) {
        Lote lote(s);
        PasarACartas(s, hoy);
        if (!motivo.isEmpty())
            AnotarFalla(s, motivo);
        AvisarSinCorreo(s);
        lote.Confirmar();
        return motivo;
    }
    const int turnos = EnviarPorTurno(s, hoy, pendientes, *correo, hechas, avanzar);
    if (correo->Perdida()) {
        motivo = correo->Error();
        AvisarSinCorreo(s);
    }
    CerrarSesionCorreo(correo);
    if (turnos > 0)
        AgregarPizarra(
            s, s(DebemosEnviar) + u' ' + QString::number(turnos) + u' ' + s(RecordatoriosDeTurno),
            DibujoComunicacion, VerAgendaDeHoy, 0);
    return motivo;
}

// --- Letters ---

void EnviarCartas(Sesion &s, QDate hoy)
{
    const std::vector<Pendiente> pendientes = LeerPendientes(
        s, "medio = 2 and fmedio is null and fcreacion = ? order by tip, ida, id", {hoy});
    s.avance.Etapa(s(RealizandoTareas));
    for (size_t i = 0; i < pendientes.size();) {
        const Grupo grupo = GrupoDesde(pendientes, i);
        const Pendiente &p = grupo.front();
        const int idm = PacienteDe(p.tip, p.ida);
        const int idc = DestinatarioDeTarea(s, p.tip, p.ida);
        const bool deCarta = p.tip == TipoTarea::Cumpleanos || p.tip == TipoTarea::RecordatorioDosis
                             || p.tip == TipoTarea::RecordatorioDeuda;
        i += grupo.size();
        if (!deCarta || NoRecibe(s, idm, idc))
            continue;
        const QString texto = ComponerMensaje(s, p.tip, idc, idm, p.artaux.toInt(), Medio::Carta);
        // Noted as sent before the question: answering No drops it, on purpose. What another
        // terminal has noted since is that one's to ask about.
        if (texto.trimmed().isEmpty() || !Anotar(s, hoy, grupo, true))
            continue;
        const QString nombre = idm != 0 ? LeerCampo(s, "clientes", "mascotas", idm, "nom")
                                        : LeerCampo(s, "clientes", "clientes", idc, "ayn");
        if (s.dialogos.Pregunta(s(ImprimirCarta) + u' ' + nombre + u'?'))
            ImprimirODecir(
                s, *ComponerCarta(s, TituloDeCarta(MotivoDeTarea(s, p.tip), nombre), texto));
    }
}

} // namespace

int DestinatarioDeTarea(Sesion &s, int tip, int ida)
{
    switch (SujetoDeTarea(tip)) {
    case Sujeto::Paciente:
        return LeerCampo(s, "clientes", "mascotas", ida, "idc").toInt();
    case Sujeto::Cliente:
        return ida;
    default:
        return 0;
    }
}

bool EnviarMensajes(Sesion &s, QDate hoy)
{
    Repartir(s, hoy, {u"p", "auxrevacunacion", "vac", u"revac"_s, ImprimirVacunacion});
    Repartir(s, hoy, {u"c", "auxrealimentacion", "ali", u"ali2"_s, ImprimirAlimento});
    bool solo = false;
    QString falla;
    {
        // Not while a question or a message stands open: those may last over midnight, and the next
        // day shall not wait for them. Lists and letters are taken by whoever notes them first.
        const BloqueoDeCarpeta envio(s.carpetaDeDatos, u"kelvara.correo"_s, EsperaDelEnvio,
                                     [&s] { s.avance.Barra(0, 1); });
        solo = envio.Tomado();
        if (solo)
            falla = EnviarCorreos(s, hoy);
    }
    if (!falla.isEmpty())
        s.dialogos.Mensaje(s(NoSePudoEnviar).arg(falla));
    EnviarCartas(s, hoy);
    return solo;
}
