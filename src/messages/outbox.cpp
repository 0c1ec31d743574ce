#include "messages/outbox.h"

#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "board/board_lines.h"
#include "clients/contact.h"
#include "messages/mail.h"
#include "messages/templates.h"
#include "printing/letter.h"
#include "printing/report.h"
#include "store/lookups.h"
#include "store/opening.h"

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
};

constexpr int DibujoSinCorreo = 116; // the line is written once, and known by its picture
constexpr int VerVideos = 34;        // click code of the page with the videos
constexpr int DibujoComunicacion = 109;
constexpr int VerAgendaDeHoy = 8;
constexpr int EmailOCarta = 3; // value of the three measures

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

bool LlenarReparto(Sesion &s, QDate hoy, const ListaDeReparto &lista)
{
    bool alguno = false;
    Lote lote(s);
    s.auxiliar->Execute(std::string("delete * from ") + lista.tabla);
    std::vector<Valor> valores = ServiciosDe(s, lista.suministro);
    if (!valores.empty()) {
        std::string condicion;
        for (size_t i = 0; i < valores.size(); ++i)
            condicion += i ? " OR tip = ?" : " tip = ?";
        valores.push_back(hoy);
        Recordset r = s.morvane->Abrir("select * from TareasAgenda where (" + condicion
                                           + ") and medio = 4 and fmedio is null and dia = ? "
                                             "order by ida",
                                       valores, true);
        for (; !r.EOF_(); r.MoveNext()) {
            const Valor producto = r["ArtAux"];
            if (!EsDeReparto(s, lista.suministro, producto))
                continue;
            AnotarReparto(s, lista, r["ida"].toInt(), producto.toInt());
            r.Edit();
            r.Put("fmedio", hoy);
            r.Update();
            alguno = true;
        }
    }
    lote.Confirmar();
    return alguno;
}

// Printing that fails is told; the run goes on.
void Imprimir(Sesion &s, const std::function<std::unique_ptr<DocumentoHtml>()> &componer)
{
    try {
        const auto documento = componer();
        s.impresion.Imprimir(s, *documento);
    } catch (const ErrorDeAlmacen &e) {
        s.dialogos.Mensaje(e.descripcion);
    }
}

// A scratch file of no use costs the list, which stays to be written, and not the messages.
bool LlenarEnAuxiliar(Sesion &s, QDate hoy, const ListaDeReparto &lista)
{
    bool alguno = false;
    try {
        AbrirAuxiliar(s, u"rep97"_s);
        alguno = LlenarReparto(s, hoy, lista);
    } catch (const ErrorDeAlmacen &e) {
        s.dialogos.Mensaje(TextoDeError(s, e));
    }
    CerrarAuxiliar(s);
    return alguno;
}

void Repartir(Sesion &s, QDate hoy, const ListaDeReparto &lista)
{
    if (LlenarEnAuxiliar(s, hoy, lista) && s.dialogos.Pregunta(s(lista.pregunta)))
        Imprimir(s, [&] { return CorrerInforme(s, lista.informe); });
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
        return tip > 0 && medio == 1;
    }
}

bool PasaACarta(Sesion &s, int tip)
{
    switch (tip) {
    case TipoTarea::RecordatorioDeuda:
        return true; // whatever the measure says, on purpose
    case TipoTarea::Cumpleanos:
        return s.configuracion["MedidasCumple"].toInt() == EmailOCarta;
    case TipoTarea::RecordatorioDosis:
        return s.configuracion["MedidasRevac"].toInt() == EmailOCarta;
    default:
        return false;
    }
}

void Fallar(Sesion &s, QDate hoy)
{
    struct Medida {
        const char *columna;
        int tip;
    };
    Lote lote(s);
    for (const Medida m : {Medida{"MedidasCumple", TipoTarea::Cumpleanos},
                           Medida{"MedidasRevac", TipoTarea::RecordatorioDosis},
                           Medida{"MedidasDeudores", TipoTarea::RecordatorioDeuda}})
        if (s.configuracion[m.columna].toInt() == EmailOCarta)
            s.morvane->Execute("update TareasAgenda set medio = 2 where (medio = 1 or medio = 3) "
                               "and est = 0 and fmedio is null and (fcreacion = ? or dia = ?) and "
                               "(tip = ?)",
                               hoy, hoy, m.tip);
    if (s.morvane->Leer("SELECT Dibujo FROM Pizarra WHERE Dibujo = ?", DibujoSinCorreo).EsNulo())
        AgregarPizarra(s, s(SinCorreo), DibujoSinCorreo, VerVideos, 0);
    lote.Confirmar();
}

// The deceased, and who was deleted since the task was made, get nothing.
bool NoRecibe(Sesion &s, int idm, int idc)
{
    if (idm != 0 && s.clientes->Leer("select dec from mascotas where idm = ?", idm).toBool())
        return true;
    return s.clientes->Leer("select idc from clientes where idc = ?", idc).EsNulo();
}

void Poner(Recordset &tarea, const char *columna, const Valor &valor)
{
    tarea.Edit();
    tarea.Put(columna, valor);
    tarea.Update();
}

// Notes that the message of the current task has gone out; a dose reminder also on its dose.
void MarcarEnviada(Sesion &s, Recordset &tarea, QDate hoy)
{
    Poner(tarea, "fmedio", hoy);
    if (tarea["tip"].toInt() == TipoTarea::RecordatorioDosis)
        s.clientes->Execute("update ArtPlan set Ana = -1 where Idm = ? and Ida = ? and Dos = ?",
                            tarea["ida"].toInt(), tarea["ArtAux"].toInt(),
                            tarea["des"].toText().toInt());
}

// Moves on. @return whether the task reached has the same reason and addressee
bool PasarAIgual(Recordset &r)
{
    const int tip = r["tip"].toInt(), ida = r["ida"].toInt();
    r.MoveNext();
    return !r.EOF_() && r["tip"].toInt() == tip && r["ida"].toInt() == ida;
}

bool SigueUnaIgual(Recordset &r)
{
    const int aqui = r.AbsolutePosition();
    const bool sigue = PasarAIgual(r);
    r.AbsolutePosition(aqui);
    return sigue;
}

// One message per reason and addressee: the tasks that follow with the same ones count as sent,
// whatever became of the first, on purpose. Leaves the recordset behind them.
void MarcarIguales(Recordset &r, QDate hoy)
{
    while (PasarAIgual(r))
        Poner(r, "fmedio", hoy);
}

void EnviarCorreos(Sesion &s, QDate hoy)
{
    Recordset r = s.morvane->OpenRecordset(
        "select * from TareasAgenda where (medio = 1 or medio = 3) and est = 0 and fmedio is null "
        "and (fcreacion = ? or dia = ?) order by tip, ida",
        hoy, hoy);
    if (r.EOF_())
        return;
    const int total = r.RecordCount();
    int hechas = 0, turnos = 0;
    const auto avanzar = [&] { s.avance.Barra(hechas, total); };
    s.avance.Etapa(s(EnviandoCorreo));
    std::unique_ptr<SesionDeCorreo> correo = AbrirSesionCorreo(s, nullptr, avanzar);
    if (!correo)
        return Fallar(s, hoy);
    while (!r.EOF_()) {
        hechas = r.AbsolutePosition();
        avanzar();
        const int tip = r["tip"].toInt(), ida = r["ida"].toInt();
        const int idm = PacienteDe(tip, ida);
        const int idc = DestinatarioDeTarea(s, tip, ida);
        if (!Sale(tip, r["medio"].toInt()) || NoRecibe(s, idm, idc)) {
            r.MoveNext();
            continue;
        }
        const QString texto =
            ComponerMensaje(s, PlantillaDe(tip), idc, idm, r["ArtAux"].toInt(), 1);
        const bool enviado = EnviarCorreo(s, *correo, AsuntoDe(s, tip), idc, texto);
        // What one message settles is settled at once and as a whole: a program that dies here
        // sends nothing again. Most are one statement, which costs the disk half of what a batch
        // over all files does.
        std::optional<Lote> lote;
        if (tip == TipoTarea::RecordatorioDosis || SigueUnaIgual(r))
            lote.emplace(s);
        if (enviado)
            MarcarEnviada(s, r, hoy);
        else if (PasaACarta(s, tip))
            Poner(r, "medio", 2);
        MarcarIguales(r, hoy);
        if (lote)
            lote->Confirmar();
        turnos += enviado && tip > 0;
    }
    s.avance.Barra(total, total);
    CerrarSesionCorreo(correo);
    if (turnos > 0)
        AgregarPizarra(
            s, s(DebemosEnviar) + u' ' + QString::number(turnos) + u' ' + s(RecordatoriosDeTurno),
            DibujoComunicacion, VerAgendaDeHoy, 0);
}

// --- Letters ---

void EnviarCartas(Sesion &s, QDate hoy)
{
    Recordset r = s.morvane->OpenRecordset("select * from TareasAgenda where medio = 2 and fmedio "
                                           "is null and fcreacion = ? order by tip,ida",
                                           hoy);
    s.avance.Etapa(s(RealizandoTareas));
    while (!r.EOF_()) {
        const int tip = r["tip"].toInt(), ida = r["ida"].toInt();
        const int idm = PacienteDe(tip, ida);
        const int idc = DestinatarioDeTarea(s, tip, ida);
        const bool deCarta = tip == TipoTarea::Cumpleanos || tip == TipoTarea::RecordatorioDosis
                             || tip == TipoTarea::RecordatorioDeuda;
        if (!deCarta || NoRecibe(s, idm, idc)) {
            r.MoveNext();
            continue;
        }
        const QString texto = ComponerMensaje(s, tip, idc, idm, r["ArtAux"].toInt(), 2);
        // Noted as sent before the question: answering No drops it, on purpose.
        Lote lote(s);
        MarcarEnviada(s, r, hoy);
        MarcarIguales(r, hoy);
        lote.Confirmar();
        const QString nombre = idm != 0 ? LeerCampo(s, "clientes", "mascotas", idm, "nom")
                                        : LeerCampo(s, "clientes", "clientes", idc, "ayn");
        if (s.dialogos.Pregunta(s(ImprimirCarta) + u' ' + nombre + u'?'))
            Imprimir(s, [&] { return ComponerCarta(s, MotivoDeTarea(s, tip), texto); });
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

void EnviarMensajes(Sesion &s, QDate hoy)
{
    // Lists and letters wait for somebody who can take the paper.
    const bool conPapel = s.impresion.Disponible();
    if (conPapel) {
        Repartir(s, hoy, {u"p", "auxrevacunacion", "vac", u"revac"_s, ImprimirVacunacion});
        Repartir(s, hoy, {u"c", "auxrealimentacion", "ali", u"ali2"_s, ImprimirAlimento});
    }
    EnviarCorreos(s, hoy);
    if (conPapel)
        EnviarCartas(s, hoy);
}
