#include "messages/templates.h"

#include "agenda/tasks.h"
#include "contact/contact.h"
#include "store/lookups.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    ClientesNuevos = 9630,
    ClientesFrecuentes = 9631,
};

// What goes to featured clients is read from a column that no screen edits, on purpose.
constexpr const char *ColumnaEnviadaADestacados = "MensajeriaSoloADestacados";

// The column of a kind and medium; nullptr for a kind without a template.
const char *ColumnaDe(int tip, int medio)
{
    if (tip == TipoTarea::CumpleanosDestacado)
        return ColumnaEnviadaADestacados;
    const char *columna = nullptr;
    for (const Plantilla &p : Plantillas()) {
        if (p.tip == tip && (p.medio == Medio::Correo) == (medio == Medio::Correo))
            return p.columna;
        if (p.tip == tip)
            columna = p.columna; // a kind with one text sends it by whatever medium
    }
    return columna;
}

int Duenio(Sesion &s, int idc, int idm)
{
    return idc != 0 ? idc : LeerCampo(s, "clientes", "mascotas", idm, "idc").toInt();
}

} // namespace

const std::vector<Plantilla> &Plantillas()
{
    static const std::vector<Plantilla> todas = {
        {2640, 2653, "mensajeriadeudorescarta", TipoTarea::RecordatorioDeuda, Medio::Carta},
        {2641, 2654, "mensajeriadeudoresmail", TipoTarea::RecordatorioDeuda, Medio::Correo},
        {2643, 2655, "MensajeriaMedicinaPrepaga", TipoTarea::MorosoPrepaga, Medio::Correo},
        {2644, 2656, "mensajeriacumplecarta", TipoTarea::Cumpleanos, Medio::Carta},
        {2645, 2657, "mensajeriacumplemail", TipoTarea::Cumpleanos, Medio::Correo},
        {2646, 2658, "MensajeriaCumpleMailDestacados", TipoTarea::CumpleanosDestacado,
         Medio::Correo},
        {2647, 2659, "mensajeriaalimento", TipoTarea::FaltaAlimento, Medio::Correo},
        {2649, 2660, "mensajeriadescont", TipoTarea::DosisDiscontinuada, Medio::Correo},
        {2650, 2661, "mensajeriaturno", TipoTarea::RecordatorioTurno, Medio::Correo},
        {2651, 2662, "mensajeriavencimientoscarta", TipoTarea::RecordatorioDosis, Medio::Carta},
        {2652, 2663, "mensajeriavencimientosmail", TipoTarea::RecordatorioDosis, Medio::Correo},
        {ClientesNuevos, 2664, "MensajeriaNuevoCliente", TipoTarea::NuevoCliente, Medio::Correo},
        {ClientesFrecuentes, 2665, "MensajeriaFrecuente", TipoTarea::Frecuente, Medio::Correo},
    };
    return todas;
}

const QStringList &Tags()
{
    static const QStringList todos{u"NomCli"_s, u"DirCli"_s, u"NomMas"_s, u"TraMas"_s, u"ProVet"_s,
                                   u"DirVet"_s, u"TelVet"_s, u"RazVet"_s, u"FecDia"_s, u"HorTur"_s};
    return todos;
}

QString ResolverTag(Sesion &s, const QString &tag, int idc, int idm, int ida)
{
    const QString t = tag.toUpper();
    if (t == u"NOMCLI")
        return LeerCampo(s, "clientes", "clientes", Duenio(s, idc, idm), "ayn");
    if (t == u"DIRCLI")
        return DomicilioCliente(s, Duenio(s, idc, idm));
    if (t == u"NOMMAS")
        return LeerCampo(s, "clientes", "mascotas", idm, "nom");
    if (t == u"TRAMAS")
        return LeerCampo(s, "finanzas", "articulos", ida, "nom");
    if (t == u"PROVET")
        return s.clinica.pro;
    if (t == u"DIRVET")
        return s.clinica.dir;
    if (t == u"TELVET")
        return s.clinica.tel;
    if (t == u"RAZVET")
        return s.clinica.nom;
    if (t == u"FECDIA")
        return QLocale().toString(s.reloj.hoy, QLocale::LongFormat);
    if (t == u"HORTUR") {
        // Tasks of no patient, the feeding rounds, are nobody's appointment.
        const QTime hora = idm != 0 ? HoraTurnoDelDia(s, idm, s.reloj.hoy) : QTime();
        return hora.isValid() ? HoraLarga(hora) : QString();
    }
    return {};
}

QString RellenarTags(Sesion &s, const QString &plantilla, int idc, int idm, int ida)
{
    // One walk: what a tag brings is data and is not looked at again.
    QString texto;
    for (qsizetype i = 0; i < plantilla.size();) {
        const qsizetype abre = plantilla.indexOf(u'<', i);
        if (abre < 0)
            return texto + plantilla.mid(i);
        texto += plantilla.mid(i, abre - i);
        const qsizetype cierra = plantilla.indexOf(u'>', abre);
        if (cierra < 0)
            return texto; // the rest is consumed, on purpose
        texto += ResolverTag(s, plantilla.mid(abre + 1, cierra - abre - 1), idc, idm, ida);
        i = cierra + 1;
    }
    return texto;
}

QString ComponerMensaje(Sesion &s, int tip, int idc, int idm, int ida, int medio)
{
    const char *columna = ColumnaDe(tip, medio);
    if (!columna)
        return {};
    return RellenarTags(s, s.configuracion[columna].toText(), idc, idm, ida);
}

std::optional<Ejemplo> EjemploDeMensaje(Sesion &s, int idc)
{
    Ejemplo e;
    const auto existe = [&s](int cual) {
        s.listas.clientes.FindFirst("idc = ?", cual);
        return cual != 0 && !s.listas.clientes.NoMatch();
    };
    e.idc = idc != 0 ? idc : s.IdGlobal.idc;
    if (!existe(e.idc))
        e.idc = s.clientes->Leer("select min(idc) from clientes").toInt();
    if (e.idc == 0)
        return std::nullopt;
    e.idm = LeerCampo(s, "clientes", "mascotas", s.IdGlobal.idm, "idc").toInt() == e.idc
                ? s.IdGlobal.idm
                : s.clientes->Leer("select min(idm) from mascotas where idc = ?", e.idc).toInt();
    e.ida = s.clientes->Leer("select max(ida) from artplan where idm = ?", e.idm).toInt();
    if (e.ida == 0)
        e.ida = s.finanzas
                    ->Leer("SELECT MIN(Articulos.Ida) FROM Articulos INNER JOIN FLCategorias ON "
                           "Articulos.IDCat = FLCategorias.IDCat WHERE FLCategorias.suministro = "
                           "'p'")
                    .toInt();
    return e;
}
