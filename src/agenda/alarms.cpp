#include "agenda/alarms.h"

using namespace agenda;

void agenda::loadAlarms(Sesion &s)
{
    s.Alarmas.clear();
    Recordset r = s.morvane->OpenSnapshot(
        "select dia,ala,tip,ida,id from TareasAgenda where dia = ? and est = 0 and ala >= ?",
        s.reloj.hoy, QTime(s.reloj.hourOf().hour(), s.reloj.hourOf().minute()));
    for (; !r.EOF_(); r.MoveNext())
        s.Alarmas.push_back(
            {r["ala"].toTime(), r["tip"].toInt(), false, r["ida"].toInt(), r["id"].toInt()});
}
