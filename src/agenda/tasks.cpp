#include "agenda/tasks.h"

#include "store/identifiers.h"

#include <QLocale>
#include <QRegularExpression>

namespace
{

const QTime PrimerTurno(8, 30);
const QTime UltimoTurno(22, 0);
constexpr int PasoEnMinutos = 30;    // of a service that has no length of its own
constexpr int CercaniaEnMinutos = 5; // a task this near takes the slot
constexpr int MinutosDelDia = 24 * 60;

// Alarms and hours are kept to the minute.
QTime AlMinuto(QTime t) { return t.isValid() ? QTime(t.hour(), t.minute()) : t; }

int DuracionDe(Sesion &s, int idServicio)
{
    const Valor tiempo = s.finanzas->Leer("SELECT tiempo FROM Servicios WHERE Ida = ?", idServicio);
    return tiempo.EsNulo() ? PasoEnMinutos : std::min(tiempo.toInt(), MinutosDelDia);
}

int Minutos(QTime t) { return t.msecsSinceStartOfDay() / 60000; }
QTime Hora(int minutos) { return QTime(minutos / 60, minutos % 60); }

// No condition on the day, on purpose: a task of any day pushes an hour on.
bool HayTareaCerca(Sesion &s, int minutos)
{
    return !s.morvane
                ->Leer("SELECT TOP 1 hor FROM TareasAgenda WHERE hor BETWEEN ? AND ?",
                       Hora(minutos - CercaniaEnMinutos), Hora(minutos + CercaniaEnMinutos))
                .EsNulo();
}

int TareasDeHoy(Sesion &s)
{
    return s.morvane->Leer("SELECT COUNT(*) FROM TareasAgenda WHERE dia = ?", s.reloj.hoy).toInt();
}

} // namespace

int AgregarTarea(Sesion &s, const Tarea &t)
{
    Lote lote(s);
    const int id = TomarIdDeTarea(s);
    const QString des = s.morvane->Recortado("TareasAgenda", "des", t.des);
    // Without a day neither hour nor alarm is kept; with an alarm the hour goes along.
    const Valor dia(t.dia);
    const Valor hor = t.dia.isValid() ? Valor(AlMinuto(t.hor)) : Valor();
    const Valor ala = t.dia.isValid() ? Valor(AlMinuto(t.ala)) : Valor();
    s.morvane->Execute("insert into TareasAgenda (tip, ida, dia, hor, ala, medio, fcreacion, "
                       "artaux, des, id) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                       t.tip, t.ida, dia, hor, ala, t.medio, t.fcreacion, t.artaux, des, id);
    lote.Confirmar();
    if (!ala.EsNulo() && t.dia == s.reloj.hoy)
        s.Alarmas.push_back({ala.toTime(), t.tip, false, std::nullopt, id});
    return id;
}

QTime BuscarHorarioLibre(Sesion &s, int idServicio)
{
    const int paso = DuracionDe(s, idServicio);
    const int primero = Minutos(PrimerTurno), ultimo = Minutos(UltimoTurno);
    int candidato = primero, pasos = 0;
    while (paso > 0 && candidato <= ultimo && HayTareaCerca(s, candidato)) {
        candidato += paso;
        ++pasos;
    }
    // One step at most for each task of today.
    if (pasos > 0)
        candidato = primero + std::min(pasos, TareasDeHoy(s)) * paso;
    return candidato > ultimo ? PrimerTurno : Hora(candidato);
}

QTime HoraTurnoDelDia(Sesion &s, int idm, QDate dia)
{
    return s.morvane
        ->Leer("select hor from TareasAgenda where dia = ? and est = 0 and fmedio is null and "
               "ida = ? and tip > 0 order by hor",
               dia, idm)
        .toTime();
}

QString HoraLarga(QTime hora)
{
    // A day of tasks asks for hundreds: the format is worked out once for each locale.
    thread_local QLocale local = QLocale::c();
    thread_local QString formato;
    if (formato.isEmpty() || local != QLocale()) {
        // Without the time zone that a long time ends with.
        static const QRegularExpression zona(QStringLiteral("\\s*\\(?t+\\)?\\s*"));
        local = QLocale();
        formato = local.timeFormat(QLocale::LongFormat).remove(zona);
    }
    return local.toString(hora, formato);
}

void MarcarTareaRealizada(Sesion &s, int tip, qint64 artaux, int ida)
{
    const bool conocido =
        !s.finanzas->OpenSnapshot("SELECT Nom FROM Articulos WHERE Ida = ?", tip).EOF_();
    Recordset tareas =
        conocido ? s.morvane->OpenRecordset(
            "select * from TareasAgenda where tip = ? and ida = ? and ArtAux = ? and "
            "est = 0 and fcreacion <= date() order by fcreacion asc",
            tip, ida, artaux)
                 : s.morvane->OpenRecordset(
                     "select * from TareasAgenda where ida = ? and ArtAux = ? and est = 0 and "
                     "fcreacion <= date() order by fcreacion asc",
                     ida, artaux);
    if (conocido && tareas.EOF_())
        tareas = s.morvane->OpenRecordset(
            "select * from TareasAgenda where tip = ? and ida = ? and est = 0 and "
            "fcreacion <= date() order by fcreacion asc",
            tip, ida);
    if (tareas.EOF_())
        return;
    tareas.Edit();
    tareas.Put("est", true);
    tareas.Put("frealizacion", s.reloj.hoy);
    tareas.Update();
}
