#include "startup/demo_clinic.h"

#include "startup/demo_data.h"
#include "startup/first_run.h"
#include "store/data_folder.h"
#include "store/opening.h"

#include <QDir>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

/// Switches on everything that shows on the board. Letters stay off, since each would ask a
/// question.
void adjustSettings(Demo &d)
{
    d.morvane.Execute(
        "update Configuracion set PrimeraVez = 0, FechaPrimerInicio = ?, FechaUltimoInicio = ?,"
        " FechaInicioAnterior = ?, FechaUltimoInicioMes = ?, MedidasRevac = 1,"
        " MedidasRevacDescont = 1, MedidasCumple = 1, MedidasDeudores = 1, alimentomail = -1,"
        " AutNuevoCliente = 1, AutFrecuente = 1, OSDuracionSol = 12, horaracion1 = ?,"
        " horaracion2 = ?",
        d.hoy.addDays(-1210), d.hoy.addDays(-3), d.hoy.addDays(-4), d.hoy, QTime(8, 0),
        QTime(18, 0));
    d.clientes.Execute("update MLEspecies set ali = 300 where id = 2");
    for (auto i = d.counters.cbegin(); i != d.counters.cend(); ++i)
        d.morvane.Execute(u"update Configuracion set [%1] = ?"_s.arg(i.key()).toStdString(),
                          i.value());
}

} // namespace

void startup::createDemo(Sesion &s)
{
    Demo d{s, *s.clientes, *s.finanzas, *s.morvane, *s.os, s.reloj.hoy, Words(s.texts.language())};
    const QStringList clinic = d.words.fieldsOf(u"clinica"_s).front();
    {
        Lote lote(s);
        registerFirstRun(s, {clinic[0], clinic[2], clinic[3], clinic[1], {}, {}});
        seedFirstRun(s);
        inventPeople(d);
        inventRecords(d);
        inventCommerce(d);
        inventMembers(d);
        writePeople(d);
        adjustSettings(d);
        lote.commit();
    }
    store::readClinic(s);
    for (const QString &folder : {u"cli"_s, u"ray"_s, u"eco"_s, u"fot"_s})
        QDir().mkpath(store::pathUnder(s.dataFolder, u"mascotas/"_s + folder));
}
