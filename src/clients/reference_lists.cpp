#include "clients/reference_lists.h"

#include "store/identifiers.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

// The six tables under the columns of Entrada.
struct Tabla {
    std::string_view columnas;
    std::string_view tabla;
};

constexpr Tabla DeLista(Lista lista)
{
    switch (lista) {
    case Lista::Region:
        return {"id, nom, ctel as codigo, 0 as padre", "cldepartamento"};
    case Lista::Subregion:
        return {"id, nom, cp as codigo, dep as padre", "cllocalidad"};
    case Lista::Marketing:
        return {"id, nom, '' as codigo, 0 as padre", "clmarketing"};
    case Lista::Especie:
        return {"id, nom, '' as codigo, 0 as padre", "mlespecies"};
    case Lista::Raza:
        return {"id, nom, '' as codigo, esp as padre", "mlrazas"};
    case Lista::Pelaje:
        break;
    }
    return {"id, nom, '' as codigo, 0 as padre", "mlpelajes"};
}

std::string Consulta(Lista lista, std::string_view resto)
{
    const Tabla t = DeLista(lista);
    std::string sql = "select ";
    for (const std::string_view parte : {t.columnas, std::string_view(" from "), t.tabla, resto})
        sql += parte;
    return sql;
}

Entrada Leida(const Recordset &r)
{
    return {r[0].toInt(), r[1].toText(), r[2].toText(), r[3].toInt()};
}

template <typename V>
std::optional<Entrada> Primera(Sesion &s, Lista lista, std::string_view resto, const V &valor)
{
    const Recordset r = s.clientes->OpenSnapshot(Consulta(lista, resto), valor);
    return r.EOF_() ? std::nullopt : std::optional(Leida(r));
}

// What a found entry brings along; "" when that is nothing.
QString LoQueTrae(Sesion &s, Lista lista, const Entrada &e)
{
    if (lista == Lista::Region)
        return e.codigo;
    const auto padre = PadreDe(s, lista, e);
    return padre ? padre->nom : QString();
}

// The text with each of these characters standing for itself.
QString Literal(const QString &texto, QStringView comodines)
{
    QString patron;
    for (const QChar c : texto)
        if (comodines.contains(c))
            patron += u'[' + QString(c) + u']';
        else
            patron += c;
    return patron;
}

// A hint is one line: more names than this say nothing.
constexpr qsizetype NombresEnElAviso = 12;

} // namespace

std::vector<Entrada> CargarLista(Sesion &s, Lista lista)
{
    std::vector<Entrada> entradas;
    Recordset r = s.clientes->OpenSnapshot(Consulta(lista, " order by nom"));
    entradas.reserve(size_t(r.RecordCount()));
    for (; !r.EOF_(); r.MoveNext())
        entradas.push_back(Leida(r));
    return entradas;
}

std::optional<Entrada> EntradaPorId(Sesion &s, Lista lista, int id)
{
    return Primera(s, lista, " where id = ?", id);
}

std::optional<Entrada> EntradaPorNombre(Sesion &s, Lista lista, const QString &nom)
{
    return Primera(s, lista, " where nom = ?", nom.trimmed());
}

std::optional<Entrada> PadreDe(Sesion &s, Lista lista, const Entrada &entrada)
{
    const bool region = lista == Lista::Subregion;
    Recordset &padres = region ? s.listas.cldepartamento : s.listas.mlespecies;
    padres.FindFirst("id = ?", entrada.padre);
    if (padres.NoMatch())
        return std::nullopt;
    return Entrada{entrada.padre, padres["nom"].toText(),
                   region ? padres["ctel"].toText() : QString(), 0};
}

Completado Completar(Sesion &s, Lista lista, const QString &texto)
{
    Completado c;
    if (texto.isEmpty())
        return c;
    Recordset r = s.clientes->OpenSnapshot(Consulta(lista, " where nom like ? order by ran desc"),
                                           PatronDePrefijo(texto));
    for (; !r.EOF_(); r.MoveNext())
        if (c.hallada)
            c.otras << r[1].toText();
        else
            c.hallada = Leida(r);
    return c;
}

QString AvisoDeCompletado(Sesion &s, Lista lista, const Completado &c)
{
    if (!c.hallada)
        return s(lista == Lista::Raza ? 2255 : lista == Lista::Subregion ? 2254 : 9402);
    const QString trae = LoQueTrae(s, lista, *c.hallada);
    QString aviso = trae.isEmpty() ? QString() : c.hallada->nom + u" +-> "_s + trae + u". "_s;
    if (c.otras.isEmpty())
        return aviso + s(2253);
    aviso += s(lista == Lista::Raza ? 9401 : 9400) + c.otras.mid(0, NombresEnElAviso).join(u", "_s);
    return c.otras.size() > NombresEnElAviso ? aviso + u"..."_s : aviso;
}

bool EsNumerico(const QString &texto)
{
    QStringView t = QStringView(texto).trimmed();
    if (t.startsWith(u'+') || t.startsWith(u'-'))
        t = t.sliced(1);
    bool cifras = false;
    for (const QChar c : t) {
        if (c.isDigit())
            cifras = true;
        else if (c != u'.' && c != u',')
            return false;
    }
    return cifras;
}

bool SinLetras(const QString &texto)
{
    const QList<uint> letras = texto.trimmed().toUcs4();
    return !letras.isEmpty()
           && std::ranges::none_of(letras, [](uint c) { return QChar::isLetter(c); });
}

QString PatronDePrefijo(const QString &texto) { return Literal(texto, u"*?#[") + u'*'; }

QString PatronConAsteriscos(const QString &texto) { return Literal(texto, u"?#[") + u'*'; }

void SubirRanking(Sesion &s, std::string_view tabla, int id)
{
    s.clientes->Execute(
        "update " + std::string(tabla) + " set ran = ran + 1 where ran < 32000 and id = ?", id);
}

int AsegurarRegion(Sesion &s, const QString &nom, const QString &ctel)
{
    const QString nombre = nom.trimmed(), codigo = ctel.trimmed();
    if (nombre.isEmpty())
        return 0;
    Lote lote(s);
    const auto conocida = EntradaPorNombre(s, Lista::Region, nombre);
    int id = conocida ? conocida->id : 0;
    if (!conocida) {
        id = TomarIdentificador(s, "contadordep", MayorIdDe16Bits);
        s.clientes->Execute("insert into cldepartamento (id, nom, ctel) values (?, ?, ?)", id,
                            s.clientes->Recortado("cldepartamento", "nom", nombre),
                            s.clientes->Recortado("cldepartamento", "ctel", codigo));
    } else if (!codigo.isEmpty() && codigo != conocida->codigo) {
        s.clientes->Execute("update cldepartamento set Ctel = ? where id = ?",
                            s.clientes->Recortado("cldepartamento", "ctel", codigo), id);
    }
    lote.Confirmar();
    return id;
}

int AsegurarSubregion(Sesion &s, const QString &nom, const QString &cp, int dep)
{
    const QString nombre = nom.trimmed(), codigo = cp.trimmed();
    if (nombre.isEmpty())
        return 0;
    Lote lote(s);
    const auto conocida = EntradaPorNombre(s, Lista::Subregion, nombre);
    int id = conocida ? conocida->id : 0;
    if (!conocida) {
        id = TomarIdentificador(s, "contadorloc", MayorIdDe16Bits);
        s.clientes->Execute("insert into cllocalidad (id, nom, cp, dep) values (?, ?, ?, ?)", id,
                            s.clientes->Recortado("cllocalidad", "nom", nombre),
                            s.clientes->Recortado("cllocalidad", "cp", codigo), dep);
    } else if (!codigo.isEmpty() && codigo != conocida->codigo) {
        s.clientes->Execute("update cllocalidad set Cp = ? where id = ?",
                            s.clientes->Recortado("cllocalidad", "cp", codigo), id);
    }
    lote.Confirmar();
    return id;
}

int AsegurarRaza(Sesion &s, const QString &nom, int esp)
{
    const QString nombre = nom.trimmed();
    if (nombre.isEmpty())
        return 0;
    Lote lote(s);
    const auto conocida = EntradaPorNombre(s, Lista::Raza, nombre);
    int id = conocida ? conocida->id : 0;
    if (!conocida) {
        id = TomarIdentificador(s, "contadorRaza", MayorIdDe16Bits);
        s.clientes->Execute("insert into mlrazas (id, nom, esp) values (?, ?, ?)", id,
                            s.clientes->Recortado("mlrazas", "nom", nombre), esp);
    }
    lote.Confirmar();
    return id;
}

void CambiarEspecieDeRaza(Sesion &s, int raza, int esp)
{
    s.clientes->Execute("update mlrazas set esp = ? where id = ?", esp, raza);
}
