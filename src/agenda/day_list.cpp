#include "agenda/day_list.h"

#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "contact/contact.h"
#include "store/lookups.h"

#include <QLocale>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    NoDisponible = 1,
    Eliminar = 3,
    Cliente = 14,
    Telefonos = 15,
    DeseaPostergar = 1124,
    DeCliente = 9900,
    DePaciente = 9901,
    VariasTareas = 9990,
};

constexpr int MinutosSinDuracion = 30; // of what has no length of its own
constexpr int MinutosDelDia = 24 * 60;

int MinutosDe(Sesion &s, int tip)
{
    if (tip <= 0)
        return MinutosSinDuracion;
    const int minutos = s.finanzas->Leer("SELECT tiempo FROM Servicios WHERE Ida = ?", tip).toInt();
    return minutos > 0 ? std::min(minutos, MinutosDelDia) : MinutosSinDuracion;
}

/// A stored task: where it stands, and what its alarm needs to know.
struct Anotada {
    Sitio sitio;
    int tip = 0, ida = 0;
    bool est = false;
};

std::optional<Anotada> Leer(Sesion &s, int id)
{
    const Recordset r = s.morvane->OpenSnapshot(
        "select tip,ida,dia,hor,ala,est from TareasAgenda where id = ?", id);
    if (r.EOF_())
        return std::nullopt;
    return Anotada{{id, r["dia"].toDate(), r["hor"].toTime(), r["ala"].toTime()},
                   r["tip"].toInt(),
                   r["ida"].toInt(),
                   r["est"].toBool()};
}

void Escribir(Sesion &s, const Sitio &a)
{
    s.morvane->Execute("UPDATE TareasAgenda SET Dia = ?, hor = ?, ala = ? WHERE id = ?", a.dia,
                       a.hor, a.ala, a.id);
}

/// An alarm as far from the new hour as it was from the old one, within the day.
QTime Corrida(QTime ala, QTime de, QTime a)
{
    if (!ala.isValid() || !de.isValid())
        return ala;
    const int minutos = (ala.msecsSinceStartOfDay() + de.msecsTo(a)) / 60000;
    return QTime(0, 0).addSecs(std::clamp(minutos, 0, MinutosDelDia - 1) * 60);
}

/// Has the session ring for a task where it stands now; a day that is none silences it. What has
/// rung at that time does not ring twice. A task that is done has no alarm to follow it: its own
/// may have been left to another task of the same time and kind.
void SeguirAlarma(Sesion &s, const Anotada &t)
{
    if (t.est)
        return;
    const QTime ala = t.sitio.dia == s.reloj.hoy ? t.sitio.ala : QTime();
    const auto suya = [&t](const Alarma &a) { return a.tarea == t.sitio.id; };
    const bool suena = ala.isValid() && std::ranges::none_of(s.Alarmas, [&](const Alarma &a) {
                           return suya(a) && a.atendida && a.hora == ala;
                       });
    const auto espera =
        std::ranges::find_if(s.Alarmas, [&](const Alarma &a) { return suya(a) && !a.atendida; });
    if (espera == s.Alarmas.end()) {
        if (suena)
            s.Alarmas.push_back({ala, t.tip, false, std::nullopt, t.sitio.id});
    } else if (suena) {
        espera->hora = ala;
    } else {
        s.Alarmas.erase(espera);
    }
}

void PonerDetalle(Sesion &s, TareaDelDia &t, Fichero &fichero)
{
    const QString hora = t.hor.isValid() ? HoraLarga(t.hor) : QString();
    // A user's note is what his task is about, so it stands below the hour.
    QStringList lineas{hora, t.des};
    if (t.tip == TipoTarea::Racion)
        lineas = {(hora + u' ' + t.des).trimmed()};
    if (SujetoDeTarea(t.tip) == Sujeto::Paciente) {
        const Fichero::Paciente &p = fichero.DePaciente(s, t.ida);
        t.paciente = p.nom;
        t.cliente = p.cliente;
        t.telefonos = p.telefonos;
        lineas << p.nom;
        if (!p.cliente.isEmpty())
            lineas << s(Cliente) + u": "_s + p.cliente;
        if (!p.telefonos.isEmpty())
            lineas << s(Telefonos) + u": "_s + p.telefonos;
    }
    lineas.removeAll(QString());
    t.detalle = lineas.join(u'\n');
}

std::vector<TareaDelDia> LeerTareas(Sesion &s, Recordset r, Fichero &fichero)
{
    fichero.PonerAlDia(s);
    std::vector<TareaDelDia> tareas;
    for (; !r.EOF_(); r.MoveNext()) {
        TareaDelDia t;
        t.id = r["id"].toInt();
        t.tip = r["tip"].toInt();
        t.ida = r["ida"].toInt();
        t.dia = r["dia"].toDate();
        t.creada = r["fcreacion"].toDate();
        t.hor = r["hor"].toTime();
        t.ala = r["ala"].toTime();
        t.est = r["est"].toBool();
        t.des = r["des"].toText();
        const Fichero::Concepto &c = fichero.DeConcepto(s, t.tip, r["artaux"].toLong());
        t.concepto = c.nom;
        t.icono = c.icono;
        t.minutos = c.minutos;
        PonerDetalle(s, t, fichero);
        tareas.push_back(std::move(t));
    }
    return tareas;
}

/// What a question is about: the hour, concept and patient or note of one task, the number of
/// several.
QString Nombradas(Sesion &s, const QList<int> &ids)
{
    if (ids.size() > 1)
        return s(VariasTareas).arg(ids.size());
    Fichero fichero;
    const std::vector<TareaDelDia> tareas = LeerTareas(
        s, s.morvane->OpenSnapshot("select * from TareasAgenda where id = ?", ids.first()),
        fichero);
    if (tareas.empty())
        return {};
    const TareaDelDia &t = tareas.front();
    QStringList partes{t.concepto, t.paciente.isEmpty() ? t.des.simplified() : t.paciente};
    partes.removeAll(QString());
    const QString hora = t.hor.isValid() ? t.hor.toString(u"HH:mm") + u"  "_s : QString();
    return hora + partes.join(u", "_s);
}

} // namespace

void Fichero::PonerAlDia(Sesion &s)
{
    const QList<qint64> versiones{s.clientes->Version("clientes"), s.clientes->Version("mascotas"),
                                  s.finanzas->Version("articulos"),
                                  s.finanzas->Version("Servicios"),
                                  s.finanzas->Version("FLCategorias")};
    if (versiones == m_versiones)
        return;
    m_versiones = versiones;
    m_pacientes.clear();
    m_conceptos.clear();
}

const Fichero::Paciente &Fichero::DePaciente(Sesion &s, int idm)
{
    if (const auto conocido = m_pacientes.constFind(idm); conocido != m_pacientes.constEnd())
        return *conocido;
    const int idc = LeerCampo(s, "clientes", "mascotas", idm, "idc").toInt();
    return *m_pacientes.insert(idm, {LeerCampo(s, "clientes", "mascotas", idm, "nom"),
                                     LeerCampo(s, "clientes", "clientes", idc, "ayn"),
                                     TelefonosCliente(s, idc)});
}

const Fichero::Concepto &Fichero::DeConcepto(Sesion &s, int tip, qint64 artaux)
{
    const auto clave = std::pair(tip, artaux);
    if (const auto conocido = m_conceptos.constFind(clave); conocido != m_conceptos.constEnd())
        return *conocido;
    const QString nom = ConceptoDeTarea(s, tip, artaux);
    return *m_conceptos.insert(clave, {nom, IconoDeAgenda(s, nom), MinutosDe(s, tip)});
}

std::vector<TareaDelDia> TareasDelDia(Sesion &s, QDate dia, Fichero &fichero)
{
    return LeerTareas(s,
                      s.morvane->OpenSnapshot("select * from TareasAgenda where dia = ? and ((tip "
                                              "> 0 OR tip = -100) OR (tip = -47)) order by hor",
                                              dia),
                      fichero);
}

std::vector<TareaDelDia> TareasDelDia(Sesion &s, QDate dia)
{
    Fichero fichero;
    return TareasDelDia(s, dia, fichero);
}

std::vector<TareaDelDia> TurnosDelDia(Sesion &s, QDate dia)
{
    Fichero fichero;
    return LeerTareas(
        s,
        s.morvane->OpenSnapshot(
            "select * from TareasAgenda where dia = ? and (tip > 0) order by hor", dia),
        fichero);
}

std::vector<TareaDeKelvara> TareasDeKelvara(Sesion &s)
{
    std::vector<TareaDeKelvara> tareas;
    Recordset r = s.morvane->OpenSnapshot(
        "select * from TareasAgenda where fcreacion = ? and (medio = 1 or medio = 2 or medio = 3) "
        "and (Tip < 0 and Tip <> -47)",
        s.reloj.hoy);
    for (; !r.EOF_(); r.MoveNext()) {
        const int tip = r["tip"].toInt(), ida = r["ida"].toInt();
        TareaDeKelvara t;
        t.motivo = ConceptoDeTarea(s, tip, 0);
        if (SujetoDeTarea(tip) == Sujeto::Paciente)
            t.destinatario = s(DePaciente) + LeerCampo(s, "clientes", "mascotas", ida, "nom");
        else if (SujetoDeTarea(tip) == Sujeto::Cliente)
            t.destinatario = s(DeCliente) + LeerCampo(s, "clientes", "clientes", ida, "ayn");
        t.medio = MedioEnPalabras(s, r["medio"].toInt());
        t.realizada = !r["fmedio"].EsNulo();
        tareas.push_back(std::move(t));
    }
    return tareas;
}

bool PuedeMoverTareas(Sesion &s)
{
    if (s.usuario.EsComun())
        s.dialogos.Mensaje(s(NoDisponible));
    return !s.usuario.EsComun();
}

QList<int> EnSuSentido(QList<int> filas, int actual)
{
    if (filas.size() > 1 && actual == filas.first())
        std::ranges::reverse(filas);
    return filas;
}

std::optional<std::vector<Sitio>> PasarTareas(Sesion &s, const QList<int> &ids, QDate dia)
{
    if (!PuedeMoverTareas(s) || ids.isEmpty() || !dia.isValid()
        || !s.dialogos.Pregunta(s(DeseaPostergar) + u"\n\n"_s + Nombradas(s, ids) + u"\n→ "_s
                                + QLocale().toString(dia, QLocale::LongFormat)))
        return std::nullopt;
    std::vector<Destino> destinos;
    for (const int id : ids)
        destinos.push_back({id, dia, {}});
    return MoverTareas(s, destinos);
}

std::vector<Sitio> MoverTareas(Sesion &s, const std::vector<Destino> &destinos)
{
    std::vector<Sitio> antes;
    if (!PuedeMoverTareas(s))
        return antes;
    std::vector<Anotada> movidas;
    Lote lote(s);
    for (const Destino &d : destinos) {
        auto tarea = Leer(s, d.id);
        if (!tarea || !d.dia.isValid())
            continue;
        Sitio &sitio = tarea->sitio;
        antes.push_back(sitio);
        sitio.dia = d.dia;
        if (d.hora.isValid()) {
            sitio.ala = Corrida(sitio.ala, sitio.hor, d.hora);
            sitio.hor = d.hora;
        }
        Escribir(s, sitio);
        movidas.push_back(*tarea);
    }
    lote.Confirmar();
    for (const Anotada &tarea : movidas)
        SeguirAlarma(s, tarea);
    return antes;
}

bool DevolverTareas(Sesion &s, const std::vector<Sitio> &sitios)
{
    if (!PuedeMoverTareas(s))
        return false;
    std::vector<Anotada> devueltas;
    Lote lote(s);
    for (const Sitio &sitio : sitios)
        if (auto tarea = Leer(s, sitio.id)) {
            tarea->sitio = sitio;
            Escribir(s, sitio);
            devueltas.push_back(*tarea);
        }
    lote.Confirmar();
    for (const Anotada &tarea : devueltas)
        SeguirAlarma(s, tarea);
    return !devueltas.empty();
}

bool EliminarTareas(Sesion &s, const QList<int> &ids)
{
    if (!PuedeMoverTareas(s) || ids.isEmpty()
        || !s.dialogos.Pregunta(s(Eliminar) + u"\n\n"_s + Nombradas(s, ids)))
        return false;
    std::vector<Anotada> idas;
    Lote lote(s);
    for (const int id : ids) {
        if (auto tarea = Leer(s, id)) {
            tarea->sitio.dia = {};
            idas.push_back(*tarea);
        }
        s.morvane->Execute("delete * from TareasAgenda where id = ?", id);
    }
    lote.Confirmar();
    for (const Anotada &tarea : idas)
        SeguirAlarma(s, tarea);
    return true;
}

bool AlternarRealizada(Sesion &s, int id)
{
    auto tarea = Leer(s, id);
    if (!tarea)
        return false;
    tarea->est = !tarea->est;
    s.morvane->Execute("update TareasAgenda set est = ? where id = ?", tarea->est, id);
    if (tarea->sitio.dia != s.reloj.hoy || !tarea->sitio.ala.isValid())
        return tarea->est;
    const auto alarma = std::ranges::find_if(s.Alarmas, [&](const Alarma &a) {
        return a.hora == tarea->sitio.ala && a.tip == tarea->tip;
    });
    if (alarma != s.Alarmas.end())
        alarma->atendida = tarea->est;
    else
        SeguirAlarma(s, *tarea); // open again, and not among those that the start loaded
    return tarea->est;
}
