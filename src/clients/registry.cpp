#include "clients/registry.h"

#include "clients/reference_lists.h"
#include "store/identifiers.h"

using namespace Qt::StringLiterals;

namespace
{

Rechazo Rechazar(Sesion &s, int texto, Campo campo)
{
    s.dialogos.Mensaje(s(texto));
    return {campo};
}

QString Nombre(Sesion &s, Lista lista, int id)
{
    const auto e = EntradaPorId(s, lista, id);
    return e ? e->nom : QString();
}

std::optional<Rechazo> Revisar(Sesion &s, const FichaDeCliente &f)
{
    if (f.ayn.trimmed().isEmpty())
        return Rechazar(s, 2259, Campo::Nombre);
    if (SinLetras(f.ayn))
        return Rechazar(s, 31, Campo::Nombre);
    if (SinLetras(f.region))
        return Rechazar(s, 31, Campo::Region);
    if (SinLetras(f.subregion))
        return Rechazar(s, 31, Campo::Subregion);
    return std::nullopt;
}

std::optional<Rechazo> Revisar(Sesion &s, const FichaDePaciente &f, bool nacimientoValido)
{
    if (f.nom.trimmed().isEmpty())
        return Rechazar(s, 2259, Campo::Nombre);
    if (SinLetras(f.nom))
        return Rechazar(s, 31, Campo::Nombre);
    if (!nacimientoValido || (f.fecn.isValid() && f.fecn > s.reloj.hoy))
        return Rechazar(s, 5057, Campo::Nacimiento);
    return std::nullopt;
}

// Writes what the panel takes into a row that is there. @return false when it is gone
bool Guardar(Sesion &s, const FichaDeCliente &f, int idc)
{
    const int dep = AsegurarRegion(s, f.region, f.codt2);
    const int loc = AsegurarSubregion(s, f.subregion, f.codp2, dep);
    const auto corto = [&](std::string_view columna, const QString &texto) {
        return s.clientes->Recortado("clientes", columna, texto.trimmed());
    };
    const int filas = s.clientes->Execute(
        "update clientes set ayn = ?, dir = ?, loc = ?, dep = ?, codp2 = ?, codt2 = ?, tel2 = ?, "
        "telc2 = ?, email = ?, mark = ?, obs = ? where idc = ?",
        corto("ayn", f.ayn), corto("dir", f.dir), loc, dep, corto("codp2", f.codp2),
        corto("codt2", f.codt2), corto("tel2", f.tel2), corto("telc2", f.telc2),
        corto("email", f.email), f.mark, f.obs, idc);
    if (filas == 0)
        return false;
    // Letters failed for want of the postal code alone.
    if (!f.codp2.trimmed().isEmpty())
        s.clientes->Execute("update clientes set faltadir = 0 where idc = ? and faltadir <> 0",
                            idc);
    SubirRanking(s, "cldepartamento", dep);
    SubirRanking(s, "cllocalidad", loc);
    return true;
}

bool Guardar(Sesion &s, const FichaDePaciente &f, int idm)
{
    const int raz = AsegurarRaza(s, f.raza, f.esp);
    const auto corto = [&](std::string_view columna, const QString &texto) {
        return s.clientes->Recortado("mascotas", columna, texto.trimmed());
    };
    const int filas = s.clientes->Execute(
        "update mascotas set nom = ?, raz = ?, pel = ?, car = ?, Chip = ?, fecn = ?, pes = ?, "
        "sex = ?, ped = ?, rep = ?, dec = ?, ser = ?, obs = ? where idm = ?",
        corto("nom", f.nom), raz, f.pel, corto("car", f.car), corto("Chip", f.Chip), f.fecn, f.pes,
        f.sex, f.ped, f.rep, f.dec, int(f.servicio), f.obs, idm);
    if (filas == 0)
        return false;
    SubirRanking(s, "mlrazas", raz);
    return true;
}

// Intended: a change writes these three species only, for any other it leaves what was there.
int EspecieConocida(const QString &nombre)
{
    const QString conocidas[] = {u"Canino"_s, u"Felino"_s, u"Equino"_s};
    for (int i = 0; i < 3; ++i)
        if (nombre.compare(conocidas[i], Qt::CaseInsensitive) == 0)
            return i + 1;
    return 0;
}

// The client that has a new one's telephone already.
struct Repetido {
    int idc = 0;
    QString ayn;
    QString tel2;
};

std::optional<Repetido> ConElTelefono(Sesion &s, const QString &tel2)
{
    if (tel2.isEmpty())
        return std::nullopt;
    const Recordset r = s.clientes->OpenSnapshot(
        "select top 1 idc, ayn, tel2 from clientes where tel2 = ? order by idc", tel2);
    return r.EOF_() ? std::nullopt
                    : std::optional(Repetido{r[0].toInt(), r[1].toText(), r[2].toText()});
}

} // namespace

std::optional<FichaDeCliente> LeerCliente(Sesion &s, int idc)
{
    const Recordset r = s.clientes->OpenSnapshot("select * from clientes where idc = ?", idc);
    if (r.EOF_())
        return std::nullopt;
    FichaDeCliente f;
    f.idc = idc;
    f.ayn = r["ayn"].toText();
    f.dir = r["dir"].toText();
    f.subregion = Nombre(s, Lista::Subregion, r["loc"].toInt());
    f.codp2 = r["codp2"].toText();
    f.region = Nombre(s, Lista::Region, r["dep"].toInt());
    f.codt2 = r["codt2"].toText();
    f.tel2 = r["tel2"].toText();
    f.telc2 = r["telc2"].toText();
    f.email = r["email"].toText();
    f.mark = r["mark"].toInt();
    f.obs = r["obs"].toText();
    f.feci = r["feci"].toDate();
    f.fecu = r["fecu"].toDate();
    f.deuda = r["deuda"].toBool();
    return f;
}

std::optional<FichaDePaciente> LeerPaciente(Sesion &s, int idm)
{
    const Recordset r = s.clientes->OpenSnapshot("select * from mascotas where idm = ?", idm);
    if (r.EOF_())
        return std::nullopt;
    FichaDePaciente f;
    f.idm = idm;
    f.idc = r["idc"].toInt();
    f.nom = r["nom"].toText();
    f.esp = r["esp"].toInt();
    f.raza = Nombre(s, Lista::Raza, r["raz"].toInt());
    f.pel = r["pel"].toInt();
    f.car = r["car"].toText();
    f.Chip = r["Chip"].toText();
    f.fecn = r["fecn"].toDate();
    f.pes = r["pes"].toDouble();
    f.sex = r["sex"].toInt();
    f.ped = r["ped"].toBool();
    f.rep = r["rep"].toBool();
    f.dec = r["dec"].toBool();
    f.servicio = r["ser"].toInt() > 0;
    f.obs = r["obs"].toText();
    f.fot = r["fot"].toBool();
    return f;
}

int ProximoCliente(Sesion &s) { return s.configuracion["contadorclientes"].toInt() + 1; }
int ProximoPaciente(Sesion &s) { return s.configuracion["contadormascotas"].toInt() + 1; }

Alta AgregarCliente(Sesion &s, const FichaDeCliente &ficha)
{
    Alta alta;
    if ((alta.rechazo = Revisar(s, ficha)))
        return alta;
    const auto repetido = ConElTelefono(s, ficha.tel2.trimmed());
    if (repetido
        && !s.dialogos.Confirmar(s(2256) + u' ' + repetido->ayn + s(2257) + u' ' + repetido->tel2
                                 + u". "_s + s(2258))) {
        alta.existente = repetido->idc;
        return alta;
    }
    Lote lote(s);
    const int idc = TomarIdentificador(s, "contadorclientes", MayorIdDe16Bits);
    s.clientes->Execute("insert into clientes (idc, feci, fecu, deuda) values (?, ?, ?, 0)", idc,
                        s.reloj.hoy, s.reloj.hoy);
    Guardar(s, ficha, idc);
    s.morvane->Execute("insert into perfiles (idc) values (?)", idc);
    lote.Confirmar();
    alta.id = idc;
    return alta;
}

std::optional<Rechazo> ModificarCliente(Sesion &s, const FichaDeCliente &ficha)
{
    if (const auto rechazo = Revisar(s, ficha))
        return rechazo;
    {
        Lote lote(s);
        if (Guardar(s, ficha, ficha.idc)) {
            lote.Confirmar();
            return std::nullopt;
        }
    }
    return Rechazar(s, 9418, Campo::Ninguno);
}

Alta AgregarPaciente(Sesion &s, const FichaDePaciente &ficha, bool nacimientoValido)
{
    Alta alta;
    if ((alta.rechazo = Revisar(s, ficha, nacimientoValido)))
        return alta;
    if (s.clientes->Leer("select idc from clientes where idc = ?", ficha.idc).EsNulo()) {
        alta.rechazo = Rechazar(s, 9420, Campo::Cliente);
        return alta;
    }
    Lote lote(s);
    const int idm = TomarIdentificador(s, "contadormascotas", MayorIdDe16Bits);
    s.clientes->Execute("insert into mascotas (idm, idc, esp, feci, fot) values (?, ?, ?, ?, 0)",
                        idm, ficha.idc, ficha.esp, s.reloj.hoy);
    Guardar(s, ficha, idm);
    lote.Confirmar();
    alta.id = idm;
    return alta;
}

std::optional<Rechazo> ModificarPaciente(Sesion &s, const FichaDePaciente &ficha,
                                         const QString &especie, bool nacimientoValido)
{
    if (const auto rechazo = Revisar(s, ficha, nacimientoValido))
        return rechazo;
    {
        Lote lote(s);
        if (Guardar(s, ficha, ficha.idm)) {
            if (const int esp = EspecieConocida(especie))
                s.clientes->Execute("update mascotas set esp = ? where idm = ?", esp, ficha.idm);
            lote.Confirmar();
            return std::nullopt;
        }
    }
    return Rechazar(s, 9419, Campo::Ninguno);
}
