#include "messages/planned_notices.h"

#include "agenda/tasks.h"
#include "contact/contact.h"
#include "messages/templates.h"
#include "store/lookups.h"

using namespace Qt::StringLiterals;

std::vector<AvisoPlanificado> AvisosDe(Sesion &s, GrupoDeAvisos grupo)
{
    const bool conServicio =
        grupo == GrupoDeAvisos::PerdidasConServicio || grupo == GrupoDeAvisos::DeHoyConServicio;
    const bool perdidas =
        grupo == GrupoDeAvisos::PerdidasSinServicio || grupo == GrupoDeAvisos::PerdidasConServicio;
    QDate desde = s.configuracion["FechaInicioAnterior"].toDate();
    if (!desde.isValid())
        desde = s.reloj.hoy.addDays(-1);
    const QDate primero = perdidas ? desde : desde.addDays(1);
    const QDate ultimo = perdidas ? s.reloj.hoy.addDays(-1) : s.reloj.hoy;

    std::vector<AvisoPlanificado> avisos;
    if (primero > ultimo)
        return avisos; // swapped bounds would find tomorrow's
    Recordset r = s.clientes->OpenSnapshot(
        std::string("select ArtPlan.idm, ArtPlan.ida, ArtPlan.dos, ArtPlan.IdCat, ArtPlan.rep, "
                    "mascotas.nom, mascotas.idc from ArtPlan inner join mascotas on mascotas.idm = "
                    "ArtPlan.idm where ArtPlan.rep between ? and ? and (ArtPlan.si = 0 or "
                    "ArtPlan.si = 2) and mascotas.dec = 0 and mascotas.ser ")
            + (conServicio ? "> 0" : "= 0") + " order by mascotas.nom, ArtPlan.rep",
        primero, ultimo);
    for (; !r.EOF_(); r.MoveNext()) {
        AvisoPlanificado a;
        a.idm = r[0].toInt();
        a.ida = r[1].toInt();
        a.vence = r[4].toDate();
        a.paciente = r[5].toText();
        a.idc = r[6].toInt();
        // By the day and not by the ordinal, which another dose may have tomorrow.
        a.clave = u"%1-%2-%3-%4"_s.arg(a.idm)
                      .arg(a.ida)
                      .arg(r[3].toInt())
                      .arg(a.vence.toString(u"yyyyMMdd"));
        a.propietario = LeerCampo(s, "clientes", "clientes", a.idc, "ayn");
        a.producto = LeerCampo(s, "finanzas", "articulos", a.ida, "nom");
        a.telefonos = TelefonosCliente(s, a.idc);
        a.nota =
            s.clientes->Leer("select Texto from AvisosPlanificadas where ID = ?", a.clave).toText();
        avisos.push_back(std::move(a));
    }
    return avisos;
}

QString TextoDeAviso(Sesion &s, const AvisoPlanificado &aviso)
{
    return ComponerMensaje(s, TipoTarea::RecordatorioDosis, aviso.idc, aviso.idm, aviso.ida, 1);
}

void GuardarNota(Sesion &s, const QString &clave, const QString &texto)
{
    Lote lote(s);
    s.clientes->Execute("delete * from AvisosPlanificadas where ID = ?", clave);
    if (!texto.trimmed().isEmpty())
        s.clientes->Execute("insert into AvisosPlanificadas (ID, Texto) values (?, ?)", clave,
                            texto);
    lote.Confirmar();
}
