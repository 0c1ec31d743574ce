#include "store/opening.h"

#include "store/data_folder.h"
#include "store/schema.h"

namespace
{

QString TextoDe(const Sesion &s, const ErrorDeAlmacen &e)
{
    return e.numero == ErrorNum::BaseNoEncontrada ? s(3410) : TextoDeError(s, e);
}

void AbrirListas(Sesion &s)
{
    s.configuracion = s.morvane->OpenList("select * from configuracion");
    Listas &l = s.listas;
    l.flcategorias = s.finanzas->OpenList("select * from flcategorias order by nom");
    l.mlrazas = s.clientes->OpenList("select * from mlrazas order by nom");
    l.mlespecies = s.clientes->OpenList("select * from mlespecies order by nom");
    l.proveedores = s.finanzas->OpenList("select * from proveedores");
    l.artvenc = s.finanzas->OpenList("select * from ArtVenc");
    l.cllocalidad = s.clientes->OpenList("select * from CLlocalidad order by nom");
    l.cldepartamento = s.clientes->OpenList("select * from CLDepartamento order by nom");
    l.clientes = s.clientes->OpenList("select * from Clientes order by idc", "idc");
    l.mascotas = s.clientes->OpenList("select * from Mascotas order by idm", "idm");
    l.artplan = s.clientes->OpenList("select * from artplan");
}

std::unique_ptr<Base> AbrirBase(Sesion &s, const QString &base)
{
    s.motor->Abrir(RutaBajo(s.carpetaDeDatos, ArchivoDe(base)), base.toStdString());
    return std::make_unique<Base>(*s.motor, base.toStdString(), s.reloj);
}

} // namespace

QString TextoDeError(const Sesion &s, const ErrorDeAlmacen &e)
{
    switch (e.numero) {
    case ErrorNum::DiscoLleno:
        return s(9002);
    case ErrorNum::SoloLectura:
        return s(9003);
    case ErrorNum::Bloqueada:
        return s(9004);
    case ErrorNum::RutaODisco:
        return s(9005) + u'\n' + e.descripcion;
    case ErrorNum::BaseDanada:
        return s(9001) + u'\n' + e.descripcion;
    default:
        return e.descripcion;
    }
}

std::optional<FallaDeApertura> AbrirAlmacen(Sesion &s)
{
    try {
        s.motor = CrearMotorDeArchivos();
        s.morvane = AbrirBase(s, QStringLiteral("morvane"));
        s.clientes = AbrirBase(s, QStringLiteral("clientes"));
        s.finanzas = AbrirBase(s, QStringLiteral("finanzas"));
        AbrirListas(s);
        if (s.configuracion.RecordCount() == 0)
            return FallaDeApertura{ErrorNum::SinRegistroActual, s(9006)};
        // Tried now and taken back: a start that cannot write is no start.
        Lote prueba(s);
        s.morvane->Execute("update configuracion set Ver = Ver");
    } catch (const ErrorDeAlmacen &e) {
        return FallaDeApertura{e.numero, TextoDe(s, e)};
    }
    return std::nullopt;
}

Base &AbrirAuxiliar(Sesion &s, const QString &base)
{
    CerrarAuxiliar(s);
    s.auxiliar = AbrirBase(s, base);
    return *s.auxiliar;
}

void CerrarAuxiliar(Sesion &s)
{
    if (!s.auxiliar)
        return;
    const std::string esquema = s.auxiliar->Esquema();
    s.auxiliar.reset();
    s.motor->Cerrar(esquema);
}

void LeerClinica(Sesion &s)
{
    const Recordset r = s.morvane->OpenSnapshot("select * from veterinaria");
    s.clinica = r.EOF_() ? DatosDeClinica{}
                         : DatosDeClinica{r["nom"].toText(), r["pro"].toText(), r["dir"].toText(),
                                          r["tel"].toText()};
}
