#include "store/database.h"

#include "store/database_internal.h"
#include "store/jet/text.h"

#include <algorithm>

Base::Interno::Interno(Motor &m, std::string e, const Reloj &r)
    : motor(m), esquema(std::move(e)), reloj(r), catalogo(m, esquema)
{
}

// --- Definitions -----------------------------------------------------------------------------

CatalogoDeArchivo::CatalogoDeArchivo(Motor &motor, std::string esquema)
    : m_motor(motor), m_esquema(std::move(esquema))
{
}

const jet::Tabla *CatalogoDeArchivo::Buscar(std::string_view nombre) const
{
    if (!m_leido) {
        for (const std::string &t : m_motor.Tablas(m_esquema))
            m_nombres.emplace(jet::Plegar(t), t);
        m_leido = true;
    }
    const std::string plegado = jet::Plegar(nombre);
    if (const auto i = m_tablas.find(plegado); i != m_tablas.end())
        return i->second.get();
    const auto n = m_nombres.find(plegado);
    if (n == m_nombres.end())
        return nullptr;
    auto tabla = std::make_unique<jet::Tabla>();
    tabla->nombre = n->second;
    for (const ColumnaDeclarada &c : m_motor.Columnas(m_esquema, n->second)) {
        jet::Columna columna = LeerTipoDeclarado(c.nombre, c.tipo);
        if (c.identidad)
            columna.tipo = Tipo::Counter;
        tabla->columnas.push_back(std::move(columna));
    }
    return m_tablas.emplace(plegado, std::move(tabla)).first->second.get();
}

void CatalogoDeArchivo::Olvidar()
{
    m_leido = false;
    m_nombres.clear();
    m_tablas.clear();
}

// --- Compiled statements ---------------------------------------------------------------------

Compilada &Base::Interno::Compilar(std::string_view sql,
                                   PorTexto<std::unique_ptr<Compilada>> &cache, bool claves)
{
    if (const auto i = cache.find(sql); i != cache.end())
        return *i->second;
    auto c = std::make_unique<Compilada>();
    c->traduccion = jet::Traducir(sql, catalogo, esquema, claves);
    if (!c->traduccion.sql.empty())
        c->sentencia = motor.Preparar(c->traduccion.sql);
    if (!c->traduccion.tablaEscrita.empty())
        c->escrituras = EscriturasDe(c->traduccion.tablaEscrita);
    for (const jet::FuenteDeFilas &f : c->traduccion.fuentes)
        c->lecturas.push_back(EscriturasDe(f.tabla));
    if (c->traduccion.clase == jet::Traduccion::Define) {
        // Nothing is kept: it runs once, and forgets what the cache holds.
        return *(cache.insert_or_assign(std::string(), std::move(c)).first->second);
    }
    return *cache.emplace(std::string(sql), std::move(c)).first->second;
}

void Base::Interno::Ligar(Compilada &c, std::span<const Valor> valores) const
{
    if (int(valores.size()) != c.traduccion.valoresDados)
        throw ErrorDeAlmacen(ErrorNum::Parametros,
                             QStringLiteral("%1 values given, %2 expected")
                                 .arg(valores.size())
                                 .arg(c.traduccion.valoresDados),
                             QString::fromStdString(c.traduccion.sql));
    int n = 0;
    for (const jet::Parametro &p : c.traduccion.parametros) {
        switch (p.origen) {
        case jet::Parametro::Dado:
            c.sentencia->Ligar(n, valores[size_t(p.indice)]);
            break;
        case jet::Parametro::Hoy:
            c.sentencia->Ligar(n, reloj.hoy);
            break;
        case jet::Parametro::Hora:
            c.sentencia->Ligar(n, reloj.Hora());
            break;
        case jet::Parametro::Ahora:
            c.sentencia->Ligar(n, QDateTime(reloj.hoy, reloj.Hora()));
            break;
        }
        ++n;
    }
}

int *Base::Interno::EscriturasDe(std::string_view tabla)
{
    return &escrituras.try_emplace(jet::Plegar(tabla), 0).first->second;
}

Sentencia &Base::Interno::Directa(const std::string &sql)
{
    auto &st = directas[sql];
    if (!st)
        st = motor.Preparar(sql);
    return *st;
}

void Base::Interno::MirarAjenas()
{
    if (ultimaMirada.isValid() && ultimaMirada.elapsed() < IntervaloMs)
        return;
    ultimaMirada.start();
    const qint64 v = motor.Version(esquema);
    if (v != versionVista && versionVista != -1)
        ++ajenas;
    versionVista = v;
}

// --- Base ------------------------------------------------------------------------------------

Base::Base(Motor &motor, std::string esquema, const Reloj &reloj)
    : m_i(std::make_unique<Interno>(motor, std::move(esquema), reloj))
{
}

Base::~Base() = default;

int Base::Ejecutar(std::string_view sql, std::span<const Valor> valores)
{
    Compilada &c = m_i->Compilar(sql, m_i->cambios, false);
    if (c.traduccion.clase == jet::Traduccion::Define) {
        const jet::Definicion d = c.traduccion.definicion;
        m_i->Definir(d);
        return 0;
    }
    if (c.traduccion.clase == jet::Traduccion::Consulta)
        throw ErrorDeAlmacen(ErrorNum::Sintaxis, QStringLiteral("A query cannot be executed"),
                             QString::fromUtf8(sql.data(), qsizetype(sql.size())));
    m_i->Ligar(c, valores);
    c.sentencia->Paso();
    c.sentencia->Reiniciar();
    if (c.escrituras)
        ++*c.escrituras;
    return m_i->motor.FilasCambiadas();
}

Valor Base::LeerPrimero(std::string_view sql, std::span<const Valor> valores)
{
    Compilada &c = m_i->Compilar(sql, m_i->sinClaves, false);
    if (c.traduccion.clase != jet::Traduccion::Consulta)
        throw ErrorDeAlmacen(ErrorNum::Sintaxis, QStringLiteral("Not a query"),
                             QString::fromUtf8(sql.data(), qsizetype(sql.size())));
    m_i->Ligar(c, valores);
    Valor v;
    if (c.sentencia->Paso())
        v = c.sentencia->Leer(0, c.traduccion.columnas.front().tipo);
    c.sentencia->Reiniciar();
    return v;
}

qint64 Base::Version(std::string_view tabla)
{
    m_i->MirarAjenas();
    return m_i->ajenas + m_i->motor.Deshechos() + *m_i->EscriturasDe(tabla);
}

bool Base::ExisteTabla(std::string_view tabla) const
{
    return m_i->catalogo.Buscar(tabla) != nullptr;
}

bool Base::ExisteColumna(std::string_view tabla, std::string_view columna) const
{
    const jet::Tabla *t = m_i->catalogo.Buscar(tabla);
    return t && std::ranges::any_of(t->columnas, [plegada = jet::Plegar(columna)](const auto &c) {
               return jet::Plegar(c.nombre) == plegada;
           });
}

int Base::Ancho(std::string_view tabla, std::string_view columna) const
{
    const jet::Tabla *t = m_i->catalogo.Buscar(tabla);
    if (!t)
        return 0;
    for (const jet::Columna &c : t->columnas)
        if (jet::Comparar(c.nombre, columna) == 0)
            return c.ancho;
    return 0;
}

QString Base::Recortado(std::string_view tabla, std::string_view columna,
                        const QString &texto) const
{
    const int ancho = Ancho(tabla, columna);
    return ancho > 0 ? texto.left(ancho) : texto;
}

const jet::Catalogo &Base::Catalogo() const { return m_i->catalogo; }
const std::string &Base::Esquema() const { return m_i->esquema; }
Motor &Base::ElMotor() const { return m_i->motor; }

void Base::Olvidar()
{
    m_i->cambios.clear();
    m_i->conClaves.clear();
    m_i->sinClaves.clear();
    m_i->directas.clear();
    m_i->catalogo.Olvidar();
}
