#include "agenda/day_list.h"

#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "clients/contact.h"
#include "store/lookups.h"

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

/// What the alarms need to know of a stored task.
struct Anotada {
    int tip = 0, ida = 0;
    QDate dia;
    QTime ala;
    bool est = false;
};

std::optional<Anotada> Leer(Sesion &s, int id)
{
    const Recordset r =
        s.morvane->OpenSnapshot("select tip,ida,dia,ala,est from TareasAgenda where id = ?", id);
    if (r.EOF_())
        return std::nullopt;
    return Anotada{r["tip"].toInt(), r["ida"].toInt(), r["dia"].toDate(), r["ala"].toTime(),
                   r["est"].toBool()};
}

/// Follows a task that goes to another day; to none when it is deleted.
void SeguirAlarma(Sesion &s, const Anotada &t, QDate dia)
{
    const bool era = t.dia == s.reloj.hoy, es = dia == s.reloj.hoy;
    if (!t.ala.isValid() || era == es)
        return;
    if (es) {
        if (!t.est)
            s.Alarmas.push_back({t.ala, t.tip, false, std::nullopt});
        return;
    }
    for (Alarma &a : s.Alarmas)
        if (!a.atendida && a.hora == t.ala && a.tip == t.tip && a.ida.value_or(t.ida) == t.ida) {
            a.atendida = true;
            return;
        }
}

void PonerDetalle(Sesion &s, TareaDelDia &t)
{
    const QString hora = t.hor.isValid() ? HoraLarga(t.hor) : QString();
    // A user's note is what his task is about, so it stands below the hour.
    QStringList lineas{hora, t.des};
    if (t.tip == TipoTarea::Racion)
        lineas = {(hora + u' ' + t.des).trimmed()};
    if (SujetoDeTarea(t.tip) == Sujeto::Paciente) {
        t.paciente = LeerCampo(s, "clientes", "mascotas", t.ida, "nom");
        const int idc = LeerCampo(s, "clientes", "mascotas", t.ida, "idc").toInt();
        t.cliente = LeerCampo(s, "clientes", "clientes", idc, "ayn");
        t.telefonos = TelefonosCliente(s, idc);
        lineas << t.paciente;
        if (!t.cliente.isEmpty())
            lineas << s(Cliente) + u": "_s + t.cliente;
        if (!t.telefonos.isEmpty())
            lineas << s(Telefonos) + u": "_s + t.telefonos;
    }
    lineas.removeAll(QString());
    t.detalle = lineas.join(u'\n');
}

/// What tasks of the same kind share, looked up once for a day.
struct ClaseDeTarea {
    QString concepto, icono;
    int minutos = 0;
};

std::vector<TareaDelDia> LeerTareas(Sesion &s, Recordset r, bool paraHoja)
{
    QHash<std::pair<int, qint64>, ClaseDeTarea> clases;
    const auto claseDe = [&](int tip, qint64 artaux) -> const ClaseDeTarea & {
        const auto clave = std::pair(tip, artaux);
        if (const auto conocida = clases.constFind(clave); conocida != clases.constEnd())
            return *conocida;
        const QString concepto = ConceptoDeTarea(s, tip, artaux);
        return *clases.insert(
            clave, {concepto, paraHoja ? IconoDeHoja(s, concepto) : IconoDeAgenda(s, concepto),
                    MinutosDe(s, tip)});
    };
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
        const ClaseDeTarea &clase = claseDe(t.tip, r["artaux"].toLong());
        t.concepto = clase.concepto;
        t.icono = clase.icono;
        t.minutos = clase.minutos;
        PonerDetalle(s, t);
        tareas.push_back(std::move(t));
    }
    return tareas;
}

} // namespace

std::vector<TareaDelDia> TareasDelDia(Sesion &s, QDate dia)
{
    return LeerTareas(s,
                      s.morvane->OpenSnapshot("select * from TareasAgenda where dia = ? and ((tip "
                                              "> 0 OR tip = -100) OR (tip = -47)) order by hor",
                                              dia),
                      false);
}

std::vector<TareaDelDia> TurnosDelDia(Sesion &s, QDate dia)
{
    return LeerTareas(
        s,
        s.morvane->OpenSnapshot(
            "select * from TareasAgenda where dia = ? and (tip > 0) order by hor", dia),
        true);
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

bool PasarTareas(Sesion &s, const QList<int> &ids, QDate dia)
{
    if (!PuedeMoverTareas(s) || ids.isEmpty() || !dia.isValid()
        || !s.dialogos.Pregunta(s(DeseaPostergar)))
        return false;
    std::vector<Anotada> antes;
    Lote lote(s);
    for (const int id : ids) {
        if (const auto tarea = Leer(s, id))
            antes.push_back(*tarea);
        s.morvane->Execute("UPDATE TareasAgenda SET Dia = ? WHERE id = ?", dia, id);
    }
    lote.Confirmar();
    for (const Anotada &tarea : antes)
        SeguirAlarma(s, tarea, dia);
    return true;
}

bool MoverTarea(Sesion &s, int id, QDate dia, QTime hora)
{
    if (!PuedeMoverTareas(s) || !dia.isValid())
        return false;
    const auto antes = Leer(s, id);
    if (!antes)
        return false;
    if (hora.isValid())
        s.morvane->Execute("UPDATE TareasAgenda SET Dia = ?, hor = ? WHERE id = ?", dia, hora, id);
    else
        s.morvane->Execute("UPDATE TareasAgenda SET Dia = ? WHERE id = ?", dia, id);
    SeguirAlarma(s, *antes, dia);
    return true;
}

bool EliminarTareas(Sesion &s, const QList<int> &ids)
{
    if (!PuedeMoverTareas(s) || ids.isEmpty() || !s.dialogos.Pregunta(s(Eliminar)))
        return false;
    std::vector<Anotada> antes;
    Lote lote(s);
    for (const int id : ids) {
        if (const auto tarea = Leer(s, id))
            antes.push_back(*tarea);
        s.morvane->Execute("delete * from TareasAgenda where id = ?", id);
    }
    lote.Confirmar();
    for (const Anotada &tarea : antes)
        SeguirAlarma(s, tarea, {});
    return true;
}

bool AlternarRealizada(Sesion &s, int id)
{
    Recordset r = s.morvane->OpenRecordset("select * from TareasAgenda where id = ?", id);
    if (r.EOF_())
        return false;
    const bool hecha = !r["est"].toBool();
    r.Edit();
    r.Put("est", hecha);
    r.Update();
    const QTime ala = r["ala"].toTime();
    if (r["dia"].toDate() == s.reloj.hoy && ala.isValid())
        for (Alarma &a : s.Alarmas)
            if (a.hora == ala && a.tip == r["tip"].toInt()) {
                a.atendida = hecha;
                break;
            }
    return hecha;
}
