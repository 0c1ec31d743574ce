#include "agenda/day_list.h"

#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "clients/contact.h"
#include "store/lookups.h"

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

// An hour or an alarm moved here belongs to the alarms of today, or does not any more.
void RehacerAlarma(Sesion &s, int tip, QTime antes, bool eraHoy, QTime ahora, bool esHoy)
{
    for (Alarma &a : s.Alarmas)
        if (eraHoy && a.tip == tip && a.hora == antes && !a.atendida) {
            if (!esHoy)
                a.atendida = true;
            return;
        }
    if (esHoy && ahora.isValid())
        s.Alarmas.push_back({ahora, tip, false, std::nullopt});
}

void PonerDetalle(Sesion &s, TareaDelDia &t, const QString &des)
{
    QStringList lineas{t.hor.isValid() ? HoraLarga(t.hor) : QString()};
    if (t.tip == TipoTarea::Racion || t.tip == TipoTarea::TareaDeUsuario) {
        lineas << des;
    } else {
        lineas << des;
        t.paciente = LeerCampo(s, "clientes", "mascotas", t.ida, "nom");
        const int idc = LeerCampo(s, "clientes", "mascotas", t.ida, "idc").toInt();
        const QString ayn = LeerCampo(s, "clientes", "clientes", idc, "ayn");
        const QString telefonos = TelefonosCliente(s, idc);
        lineas << t.paciente;
        if (!ayn.isEmpty())
            lineas << s(Cliente) + u": "_s + ayn;
        if (!telefonos.isEmpty())
            lineas << s(Telefonos) + u": "_s + telefonos;
    }
    lineas.removeAll(QString());
    t.detalle = lineas.join(u'\n');
}

std::vector<TareaDelDia> LeerTareas(Sesion &s, Recordset r, bool paraHoja)
{
    std::vector<TareaDelDia> tareas;
    for (; !r.EOF_(); r.MoveNext()) {
        TareaDelDia t;
        t.id = r["id"].toInt();
        t.tip = r["tip"].toInt();
        t.ida = r["ida"].toInt();
        t.dia = r["dia"].toDate();
        t.hor = r["hor"].toTime();
        t.ala = r["ala"].toTime();
        t.est = r["est"].toBool();
        t.concepto = ConceptoDeTarea(s, t.tip, r["artaux"].toLong());
        t.icono = paraHoja ? IconoDeHoja(s, t.concepto) : IconoDeAgenda(s, t.concepto);
        PonerDetalle(s, t, r["des"].toText());
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
        t.motivo = MotivoDeTarea(s, tip);
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

bool PasarTareas(Sesion &s, const QList<int> &ids, QDate dia)
{
    if (ids.isEmpty() || !PuedeMoverTareas(s) || !s.dialogos.Pregunta(s(DeseaPostergar)))
        return false;
    Lote lote(s);
    for (const int id : ids)
        s.morvane->Execute("UPDATE TareasAgenda SET Dia = ? WHERE id = ?", dia, id);
    lote.Confirmar();
    return true;
}

bool MoverTarea(Sesion &s, int id, QDate dia, QTime hora)
{
    if (!PuedeMoverTareas(s))
        return false;
    Recordset r = s.morvane->OpenRecordset("select * from TareasAgenda where id = ?", id);
    if (r.EOF_())
        return false;
    const QTime alarma = r["ala"].toTime();
    const bool eraHoy = r["dia"].toDate() == s.reloj.hoy;
    r.Edit();
    r.Put("dia", dia);
    r.Put("hor", hora);
    r.Update();
    RehacerAlarma(s, r["tip"].toInt(), alarma, eraHoy, alarma, dia == s.reloj.hoy);
    return true;
}

bool EliminarTareas(Sesion &s, const QList<int> &ids)
{
    if (ids.isEmpty() || !PuedeMoverTareas(s) || !s.dialogos.Pregunta(s(Eliminar)))
        return false;
    Lote lote(s);
    for (const int id : ids)
        s.morvane->Execute("delete * from TareasAgenda where id = ?", id);
    lote.Confirmar();
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
