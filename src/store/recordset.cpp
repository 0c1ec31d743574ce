#include "store/recordset.h"

#include "store/database_internal.h"
#include "store/jet/text.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

namespace
{

// A cell as the engine gave it; text lies in the recordset's own store.
struct Celda {
    union {
        qint64 entero;
        double doble;
        size_t posicion;
    };
    quint32 largo = 0;
    Sentencia::Clase clase = Sentencia::Clase::Nulo;

    Celda() : entero(0) {}
};

// Where the first row with a value stands. Whole numbers of a moderate range, which is what
// identifiers are, are looked up by position.
struct Indice {
    std::vector<int> denso;
    std::unordered_map<qint64, int> enteros;
    std::unordered_map<std::string, int> textos;
    static constexpr qint64 MayorDenso = 1 << 20;
};

bool EsEntera(Tipo t)
{
    return t == Tipo::Counter || t == Tipo::Byte || t == Tipo::Smallint || t == Tipo::Long;
}

bool EsTexto(Tipo t) { return t == Tipo::Text || t == Tipo::Memo; }

// Names are nearly always ASCII and given in the file's own letters or in lower case.
bool MismoNombre(std::string_view a, std::string_view b)
{
    if (a.size() == b.size()) {
        size_t i = 0;
        for (; i < a.size(); ++i) {
            const auto x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
            if (x == y)
                continue;
            if (x >= 0x80 || y >= 0x80)
                break;
            if ((x | 0x20) != (y | 0x20) || (x | 0x20) < 'a' || (x | 0x20) > 'z')
                return false;
        }
        if (i == a.size())
            return true;
    } else if (std::ranges::none_of(a, [](char c) { return c & 0x80; })) {
        return false;
    }
    return jet::Comparar(a, b) == 0;
}

// Text that the engine would turn into a number in a MEMO column.
bool PareceNumero(const QString &s)
{
    const QStringView t = QStringView(s).trimmed();
    return !t.isEmpty() && std::ranges::all_of(t, [](QChar c) {
        return (c >= u'0' && c <= u'9') || QStringView(u"+-.eE").contains(c);
    });
}

Valor AlTipo(const Valor &v, Tipo tipo)
{
    if (v.EsNulo())
        return tipo == Tipo::YesNo ? Valor(false) : v;
    switch (tipo) {
    case Tipo::Currency:
        return v.toMoneda();
    case Tipo::YesNo:
        return v.toBool();
    case Tipo::Counter:
    case Tipo::Byte:
    case Tipo::Smallint:
    case Tipo::Long:
        return v.toLong();
    case Tipo::Single:
    case Tipo::Double:
        return v.toDouble();
    case Tipo::Date:
        if (v.Es<QString>())
            return v.toDate();
        return v;
    case Tipo::Time:
        return v.toTime();
    case Tipo::Text:
    case Tipo::Memo:
        return v.toText();
    case Tipo::Ninguno:
        return v;
    }
    return v;
}

std::string Citado(std::string_view n) { return '"' + std::string(n) + '"'; }

} // namespace

struct Recordset::Datos {
    Base::Interno *base = nullptr;
    std::string sql;
    std::vector<Valor> valores;
    bool actualizable = false;
    bool lista = false; // re-read when its tables were written
    bool abierto = true;
    bool leido = false;

    std::vector<jet::ColumnaDeSalida> columnas;
    std::vector<jet::FuenteDeFilas> fuentes;
    std::vector<int *> lecturas;

    std::vector<Celda> celdas; // row by row
    std::string textos;
    std::vector<qint64> claves; // row by row, one for each source
    std::vector<char> borradas; // empty while no row was deleted here
    int filas = 0;
    int vivas = 0;
    int actual = 0;
    bool sinFila = false; // after Delete
    bool noMatch = false;

    qint64 escriturasVistas = 0;

    // A list with a key answers its first look-ups by queries for one row, which is then the only
    // row held: reading a full list costs as much as some ten thousand of them.
    int columnaDeClave = -1;
    std::string sqlDeUna;
    bool unaSola = false;
    int consultas = 0;
    static constexpr int ConsultasAntesDeLeer = 5000;

    enum class Modo { Lectura, Edicion, Alta } modo = Modo::Lectura;
    std::vector<std::pair<int, Valor>> puestos;

    std::unordered_map<int, Indice> indices;
    PorTexto<std::shared_ptr<const jet::Criterio>> criterios;

    int Ancho() const { return int(columnas.size()); }

    qint64 Escrituras() const
    {
        qint64 n = base->ajenas + base->motor.Deshechos();
        for (const int *e : lecturas)
            n += *e;
        return n;
    }

    // Whether the rows held, if any, are still those of the tables.
    bool AlCorriente()
    {
        if (!abierto)
            throw ErrorDeAlmacen(ErrorNum::SinRegistroActual,
                                 QStringLiteral("The recordset is closed"));
        if (!lista || modo != Modo::Lectura)
            return true;
        base->MirarAjenas();
        return escriturasVistas == Escrituras();
    }

    void AlDia()
    {
        if (!AlCorriente() || !leido)
            LeerFilas();
    }

    void LeerFilas()
    {
        const qint64 clave = ClaveActual();
        Cargar(sql, valores, false);
        VolverA(clave);
        consultas = 0;
        leido = true;
    }

    // Puts the one row with this key in the place of all others. @return false when there is none
    bool LeerUna(const Valor &valor)
    {
        if (!Cargar(sqlDeUna, std::span(&valor, 1), true))
            return false;
        unaSola = true;
        actual = 0;
        return true;
    }

    // Takes the rows of a query into memory. @param conservar what is held when it has none
    // @return whether there was a row
    bool Cargar(std::string_view consulta, std::span<const Valor> dados, bool conservar)
    {
        Compilada &c = base->Compilar(consulta, actualizable ? base->conClaves : base->sinClaves,
                                      actualizable);
        base->Ligar(c, dados);
        Sentencia &st = *c.sentencia;
        const int ancho = Ancho();
        try {
            bool hay = st.Paso();
            if (!hay && conservar) {
                st.Reiniciar();
                return false;
            }
            escriturasVistas = lista ? Escrituras() : 0;
            leido = unaSola = false;
            celdas.clear();
            textos.clear();
            claves.clear();
            borradas.clear();
            indices.clear();
            filas = 0;
            for (; hay; hay = st.Paso()) {
                const size_t base0 = celdas.size();
                celdas.resize(base0 + size_t(ancho));
                for (int i = 0; i < ancho; ++i) {
                    Celda &celda = celdas[base0 + size_t(i)];
                    celda.clase = st.ClaseDe(i);
                    switch (celda.clase) {
                    case Sentencia::Clase::Entero:
                        celda.entero = st.Entero(i);
                        break;
                    case Sentencia::Clase::Doble:
                        celda.doble = st.Doble(i);
                        break;
                    case Sentencia::Clase::Texto:
                        Guardar(celda, st.Texto(i));
                        break;
                    case Sentencia::Clase::Nulo:
                        break;
                    }
                }
                // A row that an outer join left empty has no key.
                for (const jet::FuenteDeFilas &f : fuentes)
                    claves.push_back(st.ClaseDe(f.columnaDeClave) == Sentencia::Clase::Nulo
                                         ? -1
                                         : st.Entero(f.columnaDeClave));
                ++filas;
            }
        } catch (...) {
            st.Reiniciar();
            throw;
        }
        st.Reiniciar();
        vivas = filas;
        sinFila = false;
        return filas > 0;
    }

    // Key of the row that the position stands on; -1 when it has none to be found again by.
    qint64 ClaveActual() const
    {
        return fuentes.size() != 1 || FueraDeRango() || sinFila ? -1 : claves[size_t(actual)];
    }

    // Others may have added or deleted rows above: the position stays on its row, not its number.
    void VolverA(qint64 clave)
    {
        actual = std::min(actual, filas);
        if (clave == -1 || ClaveActual() == clave)
            return;
        const auto i = std::ranges::find(claves, clave);
        sinFila = i == claves.end();
        if (!sinFila)
            actual = int(i - claves.begin());
    }

    void Guardar(Celda &celda, std::string_view texto)
    {
        celda.clase = Sentencia::Clase::Texto;
        celda.posicion = textos.size();
        celda.largo = quint32(texto.size());
        textos.append(texto);
    }

    Valor Leer(int fila, int columna) const
    {
        const Celda &c = celdas[size_t(fila) * columnas.size() + size_t(columna)];
        const bool texto = c.clase == Sentencia::Clase::Texto;
        return ValorDeCelda(
            c.clase, texto ? 0 : c.entero, c.clase == Sentencia::Clase::Doble ? c.doble : 0.0,
            texto ? std::string_view(textos).substr(c.posicion, c.largo) : std::string_view(),
            columnas[size_t(columna)].tipo);
    }

    void Escribir(int fila, int columna, const Valor &v)
    {
        Celda &c = celdas[size_t(fila) * columnas.size() + size_t(columna)];
        if (v.EsNulo()) {
            c.clase = Sentencia::Clase::Nulo;
        } else if (const auto *n = v.Es<qint64>()) {
            c.clase = Sentencia::Clase::Entero;
            c.entero = *n;
        } else if (const auto *b = v.Es<bool>()) {
            c.clase = Sentencia::Clase::Entero;
            c.entero = *b ? -1 : 0;
        } else if (v.Es<double>() || v.Es<Moneda>()) {
            c.clase = Sentencia::Clase::Doble;
            c.doble = v.toDouble();
        } else {
            Guardar(c, v.toText().toStdString());
        }
        indices.erase(columna);
    }

    bool Borrada(int fila) const { return !borradas.empty() && borradas[size_t(fila)]; }
    bool FueraDeRango() const { return actual < 0 || actual >= filas; }

    void ExigirFila()
    {
        if (!unaSola || (!AlCorriente() && !LeerUna(Leer(0, columnaDeClave))))
            AlDia();
        if (FueraDeRango() || sinFila)
            throw ErrorDeAlmacen(ErrorNum::SinRegistroActual, QStringLiteral("No current record"));
    }

    int Columna(std::string_view campo) const
    {
        for (size_t i = 0; i < columnas.size(); ++i)
            if (MismoNombre(columnas[i].nombre, campo))
                return int(i);
        // "mascotas.nom", where both sides of a join have the name
        if (const size_t punto = campo.rfind('.'); punto != std::string_view::npos)
            for (size_t i = 0; i < columnas.size(); ++i)
                if (MismoNombre(columnas[i].nombre, campo.substr(punto + 1))
                    && MismoNombre(columnas[i].tabla, campo.substr(0, punto)))
                    return int(i);
        return -1;
    }

    // --- FindFirst ---

    const Indice &IndiceDe(int columna)
    {
        if (const auto i = indices.find(columna); i != indices.end())
            return i->second;
        Indice &indice = indices[columna];
        const Tipo tipo = columnas[size_t(columna)].tipo;
        for (int f = filas - 1; f >= 0; --f) { // the first row with a value wins
            const Celda &c = celdas[size_t(f) * columnas.size() + size_t(columna)];
            if (c.clase == Sentencia::Clase::Nulo || Borrada(f))
                continue;
            if (EsTexto(tipo)) {
                indice.textos[jet::Plegar(Leer(f, columna).toText().toStdString())] = f;
                continue;
            }
            const qint64 n = Leer(f, columna).toLong();
            if (n >= 0 && n < Indice::MayorDenso) {
                if (indice.denso.size() <= size_t(n))
                    indice.denso.resize(size_t(n) + 1, -1);
                indice.denso[size_t(n)] = f;
            } else {
                indice.enteros[n] = f;
            }
        }
        return indice;
    }

    std::optional<int> PorIndice(int columna, const Valor &valor)
    {
        const Tipo tipo = columnas[size_t(columna)].tipo;
        if (EsEntera(tipo) && valor.Es<qint64>()) {
            const Indice &indice = IndiceDe(columna);
            const qint64 n = *valor.Es<qint64>();
            if (n >= 0 && n < Indice::MayorDenso)
                return n < qint64(indice.denso.size()) ? indice.denso[size_t(n)] : -1;
            const auto i = indice.enteros.find(n);
            return i == indice.enteros.end() ? -1 : i->second;
        }
        if (EsTexto(tipo) && valor.Es<QString>()) {
            const Indice &indice = IndiceDe(columna);
            const auto i = indice.textos.find(jet::Plegar(valor.toText().toStdString()));
            return i == indice.textos.end() ? -1 : i->second;
        }
        return std::nullopt;
    }

    // A look-up by key while the rows were not read: whether there is such a row, or nullopt when
    // the list is to be read.
    std::optional<bool> HallarUna(const jet::Criterio &criterio, std::span<const Valor> dados)
    {
        if (columnaDeClave < 0 || modo != Modo::Lectura)
            return std::nullopt;
        const auto igual = criterio.ComoIgualdad(dados);
        if (!igual || igual->columna != columnaDeClave || !igual->valor.Es<qint64>())
            return std::nullopt;
        if (unaSola && AlCorriente() && Leer(0, columnaDeClave) == igual->valor)
            return true;
        if (consultas == ConsultasAntesDeLeer)
            return std::nullopt;
        ++consultas;
        return LeerUna(igual->valor);
    }

    int Hallar(const jet::Criterio &criterio, std::span<const Valor> dados)
    {
        if (const auto igual = criterio.ComoIgualdad(dados))
            if (const auto fila = PorIndice(igual->columna, igual->valor))
                return *fila;
        int f = 0;
        const std::function<Valor(int)> celda = [this, &f](int c) { return Leer(f, c); };
        for (; f < filas; ++f)
            if (!Borrada(f) && criterio.Cumple(celda, dados, base->reloj.hoy))
                return f;
        return -1;
    }

    // --- Writing back ---

    int FuenteDe(int columna) const
    {
        const jet::ColumnaDeSalida &c = columnas[size_t(columna)];
        for (size_t i = 0; i < fuentes.size(); ++i)
            if (!c.columna.empty() && MismoNombre(fuentes[i].alias, c.tabla))
                return int(i);
        throw ErrorDeAlmacen(ErrorNum::NoEnLaColeccion,
                             QStringLiteral("The field cannot be written: ")
                                 + QString::fromStdString(c.nombre));
    }

    // The engine would take such a memo for a number; as bytes it is left alone.
    std::string Marca(int columna, const Valor &v) const
    {
        const auto *s = v.Es<QString>();
        return columnas[size_t(columna)].tipo == Tipo::Memo && s && PareceNumero(*s)
                   ? "CAST(? AS BLOB)"
                   : "?";
    }

    void EscribirEdicion()
    {
        for (size_t f = 0; f < fuentes.size(); ++f) {
            std::string cambios;
            std::vector<const Valor *> dados;
            for (const auto &[columna, valor] : puestos) {
                if (FuenteDe(columna) != int(f) || Leer(actual, columna) == valor)
                    continue;
                cambios += (cambios.empty() ? "" : ", ") + Citado(columnas[size_t(columna)].columna)
                           + " = " + Marca(columna, valor);
                dados.push_back(&valor);
            }
            if (cambios.empty())
                continue;
            Sentencia &st =
                base->Directa("UPDATE " + Citado(base->esquema) + '.' + Citado(fuentes[f].tabla)
                              + " SET " + cambios + " WHERE rowid = ?");
            int n = 0;
            for (const Valor *v : dados)
                st.Ligar(n++, *v);
            st.Ligar(n, claves[size_t(actual) * fuentes.size() + f]);
            st.Paso();
            st.Reiniciar();
            if (base->motor.FilasCambiadas() == 0)
                throw ErrorDeAlmacen(ErrorNum::SinRegistroActual,
                                     QStringLiteral("The record was deleted meanwhile"));
            Contar(f);
        }
        for (const auto &[columna, valor] : puestos)
            Escribir(actual, columna, valor);
    }

    // Own writes are in the rows already; they are no reason to read everything again.
    void Contar(size_t fuente)
    {
        const bool propias = lista && escriturasVistas == Escrituras();
        ++*lecturas[fuente];
        if (propias)
            escriturasVistas = Escrituras();
    }

    void EscribirAlta()
    {
        std::string nombres, marcas;
        for (const auto &[columna, valor] : puestos) {
            FuenteDe(columna);
            nombres += (nombres.empty() ? "" : ", ") + Citado(columnas[size_t(columna)].columna);
            marcas += (marcas.empty() ? "" : ", ") + Marca(columna, valor);
        }
        Sentencia &st = base->Directa(
            "INSERT INTO " + Citado(base->esquema) + '.' + Citado(fuentes.front().tabla)
            + (puestos.empty() ? " DEFAULT VALUES" : " (" + nombres + ") VALUES (" + marcas + ')'));
        int n = 0;
        for (const auto &[columna, valor] : puestos)
            st.Ligar(n++, valor);
        st.Paso();
        st.Reiniciar();
        ++*lecturas.front();
        leido = false; // defaults and numbers that the engine gave are read with the rows
    }
};

Recordset::Recordset() = default;
Recordset::Recordset(Recordset &&) noexcept = default;
Recordset &Recordset::operator=(Recordset &&) noexcept = default;
Recordset::~Recordset() = default;
Recordset::Recordset(std::unique_ptr<Datos> datos) : d(std::move(datos)) {}

bool Recordset::Abierto() const { return d && d->abierto; }

void Recordset::Close()
{
    d = std::make_unique<Datos>();
    d->abierto = false;
}

bool Recordset::BOF() const
{
    d->AlDia();
    return d->filas == 0 || d->actual < 0;
}

bool Recordset::EOF_() const
{
    d->AlDia();
    return d->actual >= d->filas;
}

int Recordset::RecordCount() const
{
    d->AlDia();
    return d->vivas;
}

int Recordset::AbsolutePosition() const
{
    d->AlDia();
    return d->FueraDeRango() ? -1 : d->actual;
}

void Recordset::AbsolutePosition(int fila)
{
    d->AlDia();
    if (fila < 0 || fila >= d->filas)
        throw ErrorDeAlmacen(ErrorNum::SinRegistroActual, QStringLiteral("No current record"));
    CancelUpdate();
    d->actual = fila;
    d->sinFila = d->Borrada(fila);
}

void Recordset::MoveFirst()
{
    CancelUpdate();
    d->AlDia();
    d->actual = -1;
    MoveNext();
}

void Recordset::MoveLast()
{
    CancelUpdate();
    d->AlDia();
    d->actual = d->filas;
    MovePrevious();
    if (d->filas == 0)
        d->actual = 0;
}

void Recordset::MoveNext()
{
    CancelUpdate();
    d->AlDia();
    d->sinFila = false;
    do
        d->actual = std::min(d->actual + 1, d->filas);
    while (d->actual < d->filas && d->Borrada(d->actual));
}

void Recordset::MovePrevious()
{
    CancelUpdate();
    d->AlDia();
    d->sinFila = false;
    do
        d->actual = std::max(d->actual - 1, -1);
    while (d->actual >= 0 && d->Borrada(d->actual));
}

bool Recordset::NoMatch() const { return d->noMatch; }

void Recordset::Buscar(std::string_view criterio, std::span<const Valor> valores)
{
    auto i = d->criterios.find(criterio);
    if (i == d->criterios.end())
        i = d->criterios
                .emplace(std::string(criterio), jet::Criterio::Compilar(criterio, d->columnas))
                .first;
    if (!d->AlCorriente() || !d->leido) {
        if (const auto hay = d->HallarUna(*i->second, valores)) {
            d->noMatch = !*hay;
            if (*hay)
                d->sinFila = false;
            return;
        }
        d->AlDia();
    }
    const int fila = d->Hallar(*i->second, valores);
    d->noMatch = fila < 0;
    if (fila >= 0) {
        CancelUpdate();
        d->actual = fila;
        d->sinFila = false;
    }
}

int Recordset::Columna(std::string_view campo) const
{
    const int c = d->Columna(campo);
    if (c < 0)
        throw ErrorDeAlmacen(ErrorNum::NoEnLaColeccion,
                             QStringLiteral("Item not found in this collection: ")
                                 + QString::fromUtf8(campo.data(), qsizetype(campo.size())));
    return c;
}

bool Recordset::TieneColumna(std::string_view campo) const { return d->Columna(campo) >= 0; }
int Recordset::Columnas() const { return d->Ancho(); }
QString Recordset::Nombre(int c) const
{
    return QString::fromStdString(d->columnas.at(size_t(c)).nombre);
}
Tipo Recordset::TipoDe(int c) const { return d->columnas.at(size_t(c)).tipo; }

Valor Recordset::operator[](std::string_view campo) const { return (*this)[Columna(campo)]; }

Valor Recordset::operator[](int columna) const
{
    if (d->modo != Datos::Modo::Lectura) {
        for (auto i = d->puestos.rbegin(); i != d->puestos.rend(); ++i)
            if (i->first == columna)
                return i->second;
        if (d->modo == Datos::Modo::Alta)
            return {};
    }
    d->ExigirFila();
    return d->Leer(d->actual, columna);
}

void Recordset::Edit()
{
    if (!d->actualizable)
        throw ErrorDeAlmacen(ErrorNum::Interno, QStringLiteral("The recordset is read-only"));
    d->ExigirFila();
    d->puestos.clear();
    d->modo = Datos::Modo::Edicion;
}

void Recordset::AddNew()
{
    if (!d->actualizable || d->fuentes.size() != 1)
        throw ErrorDeAlmacen(ErrorNum::Interno, QStringLiteral("No row can be added here"));
    d->AlDia();
    d->puestos.clear();
    d->modo = Datos::Modo::Alta;
}

void Recordset::Put(std::string_view campo, const Valor &valor) { Put(Columna(campo), valor); }

void Recordset::Put(int columna, const Valor &valor)
{
    if (d->modo == Datos::Modo::Lectura)
        throw ErrorDeAlmacen(ErrorNum::Interno, QStringLiteral("Put without Edit or AddNew"));
    Valor v = AlTipo(valor, d->columnas.at(size_t(columna)).tipo);
    for (auto &[c, puesto] : d->puestos) {
        if (c == columna) {
            puesto = std::move(v);
            return;
        }
    }
    d->puestos.emplace_back(columna, std::move(v));
}

void Recordset::Update()
{
    if (d->modo == Datos::Modo::Lectura)
        throw ErrorDeAlmacen(ErrorNum::Interno, QStringLiteral("Update without Edit or AddNew"));
    if (d->modo == Datos::Modo::Edicion)
        d->EscribirEdicion();
    else
        d->EscribirAlta();
    CancelUpdate();
}

void Recordset::CancelUpdate()
{
    d->puestos.clear();
    d->modo = Datos::Modo::Lectura;
}

void Recordset::Delete()
{
    if (!d->actualizable || d->fuentes.size() != 1)
        throw ErrorDeAlmacen(ErrorNum::Interno, QStringLiteral("No row can be deleted here"));
    d->AlDia();
    d->ExigirFila();
    Sentencia &st = d->base->Directa("DELETE FROM " + Citado(d->base->esquema) + '.'
                                     + Citado(d->fuentes.front().tabla) + " WHERE rowid = ?");
    st.Ligar(0, d->claves[size_t(d->actual)]);
    st.Paso();
    st.Reiniciar();
    d->Contar(0);
    d->borradas.resize(size_t(d->filas), 0);
    d->borradas[size_t(d->actual)] = 1;
    d->indices.clear();
    --d->vivas;
    d->sinFila = true;
}

void Recordset::Requery()
{
    CancelUpdate();
    d->leido = false;
    d->AlDia();
}

// --- Opening, which belongs to the database ---

Recordset Base::Abrir(std::string_view sql, std::span<const Valor> valores, bool actualizable)
{
    auto datos = std::make_unique<Recordset::Datos>();
    datos->base = m_i.get();
    datos->sql = sql;
    datos->valores.assign(valores.begin(), valores.end());
    datos->actualizable = actualizable;
    const Compilada &c =
        m_i->Compilar(sql, actualizable ? m_i->conClaves : m_i->sinClaves, actualizable);
    if (c.traduccion.clase != jet::Traduccion::Consulta)
        throw ErrorDeAlmacen(ErrorNum::Sintaxis, QStringLiteral("Not a query"),
                             QString::fromUtf8(sql.data(), qsizetype(sql.size())));
    datos->columnas = c.traduccion.columnas;
    datos->fuentes = c.traduccion.fuentes;
    datos->lecturas = c.lecturas;
    datos->LeerFilas();
    return Recordset(std::move(datos));
}

Recordset Base::OpenList(std::string_view sql, std::string_view clave)
{
    auto datos = std::make_unique<Recordset::Datos>();
    datos->base = m_i.get();
    datos->sql = sql;
    datos->actualizable = true;
    datos->lista = true;
    const Compilada &c = m_i->Compilar(sql, m_i->conClaves, true);
    datos->columnas = c.traduccion.columnas;
    datos->fuentes = c.traduccion.fuentes;
    datos->lecturas = c.lecturas;
    if (!clave.empty()) {
        datos->columnaDeClave = datos->Columna(clave);
        datos->sqlDeUna = "select * from [" + datos->fuentes.front().tabla + "] where ["
                          + std::string(clave) + "] = ?";
    }
    return Recordset(std::move(datos));
}
