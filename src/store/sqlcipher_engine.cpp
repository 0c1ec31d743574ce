// The built-in engine: encrypted SQLite files behind the Motor interface.
//
// The first database opened is the connection's main one and the others are attached to it, so one
// transaction spans them all and is atomic over all files.

#include "store/engine.h"
#include "store/jet/engine_functions.h"

#include <QFile>
#include <QFileInfo>
#include <sqlcipher/sqlite3.h>

#include <charconv>
#include <cstring>

namespace
{

// All files of a clinic carry this password; it keeps them closed to other programs.
constexpr const char *Clave = "korvi3namuspeltiraxo";
constexpr int TamanoDePagina = 4096;
// A terminal waits this long for another one that is writing before it gives up.
constexpr int EsperaMs = 30000;

int PonerClave(sqlite3 *db) { return sqlite3_key(db, Clave, int(std::strlen(Clave))); }

QString Citado(const std::string &nombre)
{
    return u'"' + QString::fromStdString(nombre).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

std::string CitadoUtf8(const std::string &nombre) { return Citado(nombre).toStdString(); }

int NumeroDe(int codigo)
{
    switch (codigo & 0xff) {
    case SQLITE_NOMEM:
        return ErrorNum::SinMemoria;
    case SQLITE_FULL:
        return ErrorNum::DiscoLleno;
    case SQLITE_READONLY:
        return ErrorNum::SoloLectura;
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        return ErrorNum::RutaODisco;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return ErrorNum::BaseDanada;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return ErrorNum::Bloqueada;
    case SQLITE_CONSTRAINT:
        return ErrorNum::Clave;
    default:
        return ErrorNum::Interno;
    }
}

[[noreturn]] void Fallar(sqlite3 *db, int codigo, const std::string &sql = {})
{
    const QString texto =
        db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(codigo));
    throw ErrorDeAlmacen(NumeroDe(codigo), texto, QString::fromStdString(sql));
}

int Cifras(const char *p, int n)
{
    int x = 0;
    for (int i = 0; i < n; ++i) {
        if (p[i] < '0' || p[i] > '9')
            return -1;
        x = x * 10 + (p[i] - '0');
    }
    return x;
}

QDate LeerDia(std::string_view t)
{
    if (t.size() < 10 || t[4] != '-' || t[7] != '-')
        return {};
    const int a = Cifras(t.data(), 4), m = Cifras(t.data() + 5, 2), d = Cifras(t.data() + 8, 2);
    return a < 0 || m < 0 || d < 0 ? QDate() : QDate(a, m, d);
}

QTime LeerHora(std::string_view t)
{
    if (t.size() < 5 || t[2] != ':')
        return {};
    const int h = Cifras(t.data(), 2), m = Cifras(t.data() + 3, 2);
    const int s = t.size() >= 8 && t[5] == ':' ? Cifras(t.data() + 6, 2) : 0;
    return h < 0 || m < 0 || s < 0 ? QTime() : QTime(h, m, s);
}

void Dos(char *p, int n)
{
    p[0] = char('0' + n / 10 % 10);
    p[1] = char('0' + n % 10);
}

void EscribirDia(char *p, QDate d)
{
    int a = 0, m = 0, dia = 0;
    d.getDate(&a, &m, &dia);
    Dos(p, a / 100);
    Dos(p + 2, a % 100);
    p[4] = p[7] = '-';
    Dos(p + 5, m);
    Dos(p + 8, dia);
}

void EscribirHora(char *p, QTime t)
{
    Dos(p, t.hour());
    p[2] = p[5] = ':';
    Dos(p + 3, t.minute());
    Dos(p + 6, t.second());
}

} // namespace

Valor ValorDeCelda(Sentencia::Clase clase, qint64 entero, double doble, std::string_view texto,
                   Tipo tipo)
{
    using Clase = Sentencia::Clase;
    if (clase == Clase::Nulo)
        return {};
    if (clase == Clase::Texto) {
        switch (tipo) {
        case Tipo::Date:
            if (const QDate d = LeerDia(texto); d.isValid()) {
                if (texto.size() <= 10)
                    return d;
                const QTime t = LeerHora(texto.substr(11));
                return t.isValid() ? Valor(QDateTime(d, t)) : Valor(d);
            }
            break; // what another program wrote and is no day stays visible as text
        case Tipo::Time:
            if (const QTime t = LeerHora(texto.size() > 10 ? texto.substr(11) : texto); t.isValid())
                return t;
            break;
        case Tipo::Text:
        case Tipo::Memo:
        case Tipo::Ninguno:
            break;
        default: {
            const Valor v(QString::fromUtf8(texto.data(), qsizetype(texto.size())));
            if (tipo == Tipo::Currency)
                return v.toMoneda();
            if (tipo == Tipo::YesNo)
                return v.toBool();
            if (tipo == Tipo::Single || tipo == Tipo::Double)
                return v.toDouble();
            return v.toLong();
        }
        }
        return QString::fromUtf8(texto.data(), qsizetype(texto.size()));
    }
    const bool es_entero = clase == Clase::Entero;
    switch (tipo) {
    case Tipo::Currency:
        return es_entero ? Moneda::DeEntero(entero) : Moneda::Redondear(doble);
    case Tipo::YesNo:
        return es_entero ? entero != 0 : doble != 0.0;
    case Tipo::Single:
    case Tipo::Double:
        return es_entero ? double(entero) : doble;
    case Tipo::Text:
    case Tipo::Memo:
        return es_entero ? Valor(entero).toText() : Valor(doble).toText();
    case Tipo::Ninguno:
        return es_entero ? Valor(entero) : Valor(doble);
    default:
        return es_entero ? Valor(entero) : Valor(Valor(doble).toLong());
    }
}

namespace
{

class SentenciaDeArchivo final : public Sentencia
{
public:
    SentenciaDeArchivo(sqlite3 *db, const std::string &sql) : m_db(db), m_sql(sql)
    {
        const char *resto = nullptr;
        const int r = sqlite3_prepare_v2(db, sql.data(), int(sql.size()), &m_st, &resto);
        if (r != SQLITE_OK)
            Fallar(db, r, sql);
    }
    ~SentenciaDeArchivo() override { sqlite3_finalize(m_st); }
    SentenciaDeArchivo(const SentenciaDeArchivo &) = delete;
    SentenciaDeArchivo &operator=(const SentenciaDeArchivo &) = delete;

    void Ligar(int parametro, const Valor &valor) override
    {
        const int i = parametro + 1;
        const int r = std::visit(
            [this, i](const auto &v) {
                using T = std::decay_t<decltype(v)>;
                if constexpr (std::is_same_v<T, std::monostate>)
                    return sqlite3_bind_null(m_st, i);
                else if constexpr (std::is_same_v<T, bool>)
                    return sqlite3_bind_int(m_st, i, v ? -1 : 0);
                else if constexpr (std::is_same_v<T, qint64>)
                    return sqlite3_bind_int64(m_st, i, v);
                else if constexpr (std::is_same_v<T, double>)
                    return sqlite3_bind_double(m_st, i, v);
                else if constexpr (std::is_same_v<T, Moneda>)
                    return sqlite3_bind_double(m_st, i, v.ADoble());
                else if constexpr (std::is_same_v<T, QString>) {
                    const QByteArray b = v.toUtf8();
                    return sqlite3_bind_text(m_st, i, b.constData(), int(b.size()),
                                             SQLITE_TRANSIENT);
                } else {
                    char t[19];
                    int n = 0;
                    if constexpr (std::is_same_v<T, QDate>) {
                        // The files have no form for other years.
                        if (v.year() < 0 || v.year() > 9999)
                            return sqlite3_bind_null(m_st, i);
                        EscribirDia(t, v);
                        n = 10;
                    } else if constexpr (std::is_same_v<T, QTime>) {
                        EscribirHora(t, v);
                        n = 8;
                    } else {
                        EscribirDia(t, v.date());
                        t[10] = ' ';
                        EscribirHora(t + 11, v.time());
                        n = 19;
                    }
                    return sqlite3_bind_text(m_st, i, t, n, SQLITE_TRANSIENT);
                }
            },
            valor.Contenido());
        if (r != SQLITE_OK)
            Fallar(m_db, r, m_sql);
    }

    bool Paso() override
    {
        const int r = sqlite3_step(m_st);
        if (r == SQLITE_ROW)
            return true;
        if (r == SQLITE_DONE)
            return false;
        // The message is lost by the reset, so it is taken first.
        try {
            Fallar(m_db, r, m_sql);
        } catch (...) {
            sqlite3_reset(m_st);
            throw;
        }
    }
    void Reiniciar() noexcept override { sqlite3_reset(m_st); }
    int Columnas() const override { return sqlite3_column_count(m_st); }

    Clase ClaseDe(int c) const override
    {
        switch (sqlite3_column_type(m_st, c)) {
        case SQLITE_NULL:
            return Clase::Nulo;
        case SQLITE_INTEGER:
            return Clase::Entero;
        case SQLITE_FLOAT:
            return Clase::Doble;
        default:
            return Clase::Texto; // a BLOB is a memo that would be taken for a number
        }
    }
    qint64 Entero(int c) const override { return sqlite3_column_int64(m_st, c); }
    double Doble(int c) const override { return sqlite3_column_double(m_st, c); }
    std::string_view Texto(int c) const override
    {
        const auto *p = static_cast<const char *>(sqlite3_column_blob(m_st, c));
        return p ? std::string_view(p, size_t(sqlite3_column_bytes(m_st, c))) : std::string_view();
    }
    Valor Leer(int c, Tipo tipo) const override
    {
        const Clase clase = ClaseDe(c);
        return ValorDeCelda(clase, clase == Clase::Entero ? Entero(c) : 0,
                            clase == Clase::Doble ? Doble(c) : 0.0,
                            clase == Clase::Texto ? Texto(c) : std::string_view(), tipo);
    }

private:
    sqlite3 *m_db;
    sqlite3_stmt *m_st = nullptr;
    std::string m_sql;
};

class MotorDeArchivos final : public Motor
{
public:
    ~MotorDeArchivos() override { sqlite3_close_v2(m_db); }

    void Abrir(const QString &archivo, const std::string &esquema) override
    {
        if (!QFileInfo(archivo).isFile())
            throw ErrorDeAlmacen(ErrorNum::BaseNoEncontrada, archivo);
        // The engine would take an empty file for a new database.
        if (QFileInfo(archivo).size() < TamanoDePagina)
            throw ErrorDeAlmacen(ErrorNum::BaseDanada, archivo);
        const bool principal = m_db == nullptr;
        try {
            if (principal) {
                AbrirPrincipal(archivo, esquema);
            } else {
                auto st = Preparar("ATTACH DATABASE ?1 AS " + CitadoUtf8(esquema) + " KEY ?2");
                st->Ligar(0, archivo);
                st->Ligar(1, QString::fromLatin1(Clave));
                st->Paso();
            }
            Ejecutar("PRAGMA " + CitadoUtf8(esquema) + ".cache_size = " + Cache(esquema));
            Ejecutar("PRAGMA " + CitadoUtf8(esquema) + ".secure_delete = OFF");
            Preparar("SELECT count(*) FROM " + CitadoUtf8(esquema) + ".sqlite_master")->Paso();
        } catch (const ErrorDeAlmacen &e) {
            if (principal) {
                sqlite3_close_v2(m_db);
                m_db = nullptr;
            }
            throw ErrorDeAlmacen(e.numero, archivo + QStringLiteral(": ") + e.descripcion);
        }
    }

    void Cerrar(const std::string &esquema) override
    {
        m_versiones.erase(esquema);
        Ejecutar("DETACH DATABASE " + CitadoUtf8(esquema));
    }

    std::unique_ptr<Sentencia> Preparar(const std::string &sql) override
    {
        return std::make_unique<SentenciaDeArchivo>(m_db, sql);
    }

    void Ejecutar(const std::string &sql) override
    {
        char *error = nullptr;
        const int r = sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, &error);
        sqlite3_free(error);
        if (r != SQLITE_OK)
            Fallar(m_db, r, sql);
    }

    int FilasCambiadas() const override { return sqlite3_changes(m_db); }
    qint64 UltimaClave() const override { return sqlite3_last_insert_rowid(m_db); }

    void Empezar() override { Ejecutar("BEGIN IMMEDIATE"); }
    void Confirmar() override { Ejecutar("COMMIT"); }
    void Deshacer() noexcept override
    {
        ++m_deshechos;
        if (EnTransaccion())
            sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    qint64 Deshechos() const override { return m_deshechos; }
    bool EnTransaccion() const override { return m_db && sqlite3_get_autocommit(m_db) == 0; }

    std::vector<std::string> Tablas(const std::string &esquema) override
    {
        auto st = Preparar("SELECT name FROM " + CitadoUtf8(esquema)
                           + ".sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' "
                             "ESCAPE '\\' ORDER BY rowid");
        std::vector<std::string> t;
        while (st->Paso())
            t.emplace_back(st->Texto(0));
        return t;
    }

    std::vector<ColumnaDeclarada> Columnas(const std::string &esquema,
                                           const std::string &tabla) override
    {
        auto st =
            Preparar("PRAGMA " + CitadoUtf8(esquema) + ".table_info(" + CitadoUtf8(tabla) + ")");
        std::vector<ColumnaDeclarada> cols;
        while (st->Paso())
            cols.push_back({std::string(st->Texto(1)), std::string(st->Texto(2)),
                            std::string(st->Texto(4)), st->Entero(5) != 0});
        return cols;
    }

    std::vector<std::string> Indices(const std::string &esquema, const std::string &tabla) override
    {
        auto st = Preparar("SELECT sql FROM " + CitadoUtf8(esquema)
                           + ".sqlite_master WHERE type = 'index' AND sql IS NOT NULL AND tbl_name "
                             "= ?1 ORDER BY rowid");
        st->Ligar(0, QString::fromStdString(tabla));
        std::vector<std::string> t;
        while (st->Paso())
            t.emplace_back(st->Texto(0));
        return t;
    }

    qint64 Version(const std::string &esquema) override
    {
        auto &st = m_versiones[esquema];
        if (!st)
            st = Preparar("PRAGMA " + CitadoUtf8(esquema) + ".data_version");
        const qint64 v = st->Paso() ? st->Entero(0) : 0;
        st->Reiniciar();
        return v;
    }

private:
    void AbrirPrincipal(const QString &archivo, const std::string &esquema)
    {
        const int r = sqlite3_open_v2(QFile::encodeName(archivo).constData(), &m_db,
                                      SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        if (r != SQLITE_OK)
            Fallar(m_db, r);
        m_nombre = esquema;
        sqlite3_db_config(m_db, SQLITE_DBCONFIG_MAINDBNAME, m_nombre.c_str());
        sqlite3_busy_timeout(m_db, EsperaMs);
        if (const int k = PonerClave(m_db); k != SQLITE_OK)
            Fallar(m_db, k);
        if (VersionDeCifrado() >= 4)
            Ejecutar("PRAGMA cipher_default_compatibility = 3");
        Ejecutar("PRAGMA cipher_page_size = " + std::to_string(TamanoDePagina));
        Ejecutar("PRAGMA cipher_default_page_size = " + std::to_string(TamanoDePagina));
        Ejecutar("PRAGMA temp_store = MEMORY");
        jet::RegistrarFunciones(m_db);
    }

    int VersionDeCifrado()
    {
        auto st = Preparar("PRAGMA cipher_version");
        return st->Paso() ? std::atoi(std::string(st->Texto(0)).c_str()) : 0;
    }

    // Kilobytes of page cache, as a negative number. The whole of a clinic's daily data stays in
    // memory; the scratch files need little.
    static std::string Cache(const std::string &esquema)
    {
        if (esquema == "clientes")
            return "-65536";
        if (esquema == "morvane" || esquema == "finanzas")
            return "-32768";
        return "-4096";
    }

    sqlite3 *m_db = nullptr;
    qint64 m_deshechos = 0;
    std::string m_nombre; // the connection keeps a pointer to it
    std::unordered_map<std::string, std::unique_ptr<Sentencia>> m_versiones;
};

} // namespace

std::unique_ptr<Motor> CrearMotorDeArchivos() { return std::make_unique<MotorDeArchivos>(); }

void CrearArchivoVacio(const QString &archivo)
{
    const QByteArray ruta = QFile::encodeName(archivo);
    if (QFileInfo::exists(archivo))
        throw ErrorDeAlmacen(ErrorNum::RutaODisco, archivo);
    sqlite3 *db = nullptr;
    int r =
        sqlite3_open_v2(ruta.constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    const std::string sql = "PRAGMA cipher_page_size = "
                            + std::to_string(TamanoDePagina)
                            // Something must be written for the file to get its first page.
                            + "; CREATE TABLE nada (x); DROP TABLE nada;";
    if (r == SQLITE_OK)
        r = PonerClave(db);
    if (r == SQLITE_OK)
        r = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr);
    sqlite3_close_v2(db);
    if (r != SQLITE_OK) {
        QFile::remove(archivo);
        throw ErrorDeAlmacen(NumeroDe(r), archivo);
    }
}
