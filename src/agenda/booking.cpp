#include "agenda/booking.h"

#include "agenda/day_sheet.h"
#include "agenda/tasks.h"
#include "columns/configuracion.h"
#include "store/lookups.h"
#include "texts/texts.h"

#include <QRegularExpression>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

constexpr int RowNearness = 15; // minutes

constexpr int ServicesCategory = 2;
const QTime LastPrintedHour(22, 15); // end of the sheet's last slot

void offerPrinting(Sesion &s, const Appointment &appointment, bool emptyDay)
{
    if (appointment.dia != s.reloj.hoy || appointment.hour >= LastPrintedHour)
        return;
    if (emptyDay) {
        if (s.dialogos.Pregunta(s(text::PrintSummaryQuestion)))
            ImprimirAgendaDia(s, true, s.reloj.hoy, {});
    } else if (s.dialogos.Pregunta(s(text::UpdateSummaryQuestion))) {
        ImprimirAgendaDia(s, false, s.reloj.hoy, appointment.hour);
    }
}

} // namespace

std::vector<AppointmentConcept> agenda::appointmentConcepts(Sesion &s)
{
    std::vector<AppointmentConcept> items;
    Recordset r = s.finanzas->OpenSnapshot(
        "select Ida, nom from articulos where idcat = ? order by nom", ServicesCategory);
    for (; !r.EOF_(); r.MoveNext())
        items.push_back({r["Ida"].toInt(), r["nom"].toText()});
    items.push_back({TaskKind::UserTask, s(text::UserTask)});
    return items;
}

bool agenda::carriesReminder(Sesion &s, const Appointment &appointment)
{
    if (appointment.item == TaskKind::UserTask || appointment.idm <= 0)
        return false; // nobody to remind
    if (appointment.remind)
        return true;
    if (s.configuracion[setting::AutRecordatorioCitasOlvida].toInt() != 1)
        return false;
    const int type =
        s.finanzas->read("SELECT Tipo FROM Servicios WHERE Ida = ?", appointment.item).toInt();
    if (type != 1 && type != 3)
        return false;
    const int idc = LeerCampo(s, "clientes", "mascotas", appointment.idm, "idc").toInt();
    return s.lists.clientes.lookUp("idc = ?", idc, "Perfil4").value_or(false).toBool();
}

int agenda::book(Sesion &s, const Appointment &appointment)
{
    const bool user = appointment.item == TaskKind::UserTask;
    const bool emptyDay =
        s.morvane
            ->read("select top 1 id from TareasAgenda where dia = ? and (tip > 0)", appointment.dia)
            .isNull();
    Task task;
    task.tip = user ? TaskKind::UserTask : qAbs(appointment.item);
    task.ida = user ? s.user.idu : appointment.idm;
    task.dia = appointment.dia;
    task.hor = appointment.hour;
    task.ala = appointment.alarm;
    task.medio = carriesReminder(s, appointment) ? 1 : 0;
    task.fcreacion = s.reloj.hoy;
    task.des = QuitarApostrofes(appointment.description);

    Lote lote(s);
    const int id = AgregarTarea(s, task);
    if (!user)
        s.clientes->Execute("update mascotas set tarea = -1 where idm = ?", appointment.idm);
    lote.commit();
    if (!user)
        offerPrinting(s, appointment, emptyDay);
    return id;
}

int agenda::nearestRow(const std::vector<DayTask> &appointments, QTime hour)
{
    const auto row = [&](int nearness) {
        for (size_t i = 0; i < appointments.size(); ++i)
            if (appointments[i].hor.isValid()
                && qAbs(appointments[i].hor.secsTo(hour)) <= nearness * 60)
                return int(i);
        return -1;
    };
    const int exact = row(0);
    return exact >= 0 ? exact : row(RowNearness);
}

int agenda::rowAbove(int row) { return row >= 2 ? row - 1 : row; }

QTime agenda::typedHour(const QString &text)
{
    static const QRegularExpression pattern(
        u"^\\s*(\\d{1,2})(?:\\s*[:.,hH]?\\s*(\\d{2})(?:\\s*[:.]\\s*\\d{2})?)?\\s*[hH]?\\s*"
        u"(?:([aApP])\\.?\\s*[mM]\\.?)?\\s*$"_s,
        QRegularExpression::UseUnicodePropertiesOption);
    const QRegularExpressionMatch m = pattern.match(text);
    if (!m.hasMatch())
        return {};
    int hour = m.captured(1).toInt();
    if (const QString half = m.captured(3).toLower(); !half.isEmpty()) {
        if (hour < 1 || hour > 12)
            return {};
        hour = hour % 12 + (half == u"p" ? 12 : 0);
    }
    return {hour, m.captured(2).toInt()};
}
