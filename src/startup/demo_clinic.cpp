#include "startup/demo_clinic.h"

#include "startup/demo_data.h"
#include "startup/first_run.h"
#include "store/data_folder.h"
#include "store/opening.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace
{

/// Switches on what the board can tell of. Letters stay off: they would ask about each one.
void AjustarConfiguracion(Demo &d)
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
    for (auto i = d.contadores.cbegin(); i != d.contadores.cend(); ++i)
        d.morvane.Execute(u"update Configuracion set [%1] = ?"_s.arg(i.key()).toStdString(),
                          i.value());
}

} // namespace

void CrearDemo(Sesion &s)
{
    // Opened before the batch: a database cannot join a transaction that has begun.
    Base &os = AbrirAuxiliar(s, u"os"_s);
    Demo d{s, *s.clientes, *s.finanzas, *s.morvane, os, s.reloj.hoy, Palabras(s.textos.idioma())};
    const QStringList clinica = d.palabras.Campos(u"clinica"_s).front();
    {
        Lote lote(s);
        RegistrarPrimeraVez(s, {clinica[0], clinica[2], clinica[3], clinica[1], {}, {}});
        SembrarPrimeraVez(s);
        InventarGente(d);
        InventarFichas(d);
        InventarComercio(d);
        InventarSocios(d);
        EscribirGente(d);
        AjustarConfiguracion(d);
        lote.Confirmar();
    }
    CerrarAuxiliar(s);
    LeerClinica(s);
    for (const QString &carpeta : {u"cli"_s, u"ray"_s, u"eco"_s, u"fot"_s})
        QDir().mkpath(RutaBajo(s.carpetaDeDatos, u"mascotas/"_s + carpeta));
}
