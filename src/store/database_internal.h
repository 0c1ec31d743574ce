// What Base and Recordset share: compiled statements and the marks of what has been written.
#pragma once

#include "store/database.h"
#include "store/jet/translation.h"

#include <QElapsedTimer>
#include <string>
#include <unordered_map>

/// Looks strings up by view, so that a statement's text is never copied to find it.
struct HashDeTexto {
    using is_transparent = void;
    size_t operator()(std::string_view t) const noexcept
    {
        return std::hash<std::string_view>{}(t);
    }
};
template <typename T>
using PorTexto = std::unordered_map<std::string, T, HashDeTexto, std::equal_to<>>;

struct Compilada {
    jet::Traduccion traduccion;
    std::unique_ptr<Sentencia> sentencia;
    int *escrituras = nullptr;   // the count of the table that it writes
    std::vector<int *> lecturas; // the counts of the tables that it reads rows of
};

/// Value of a raw cell as the column's type says.
Valor ValorDeCelda(Sentencia::Clase clase, qint64 entero, double doble, std::string_view texto,
                   Tipo tipo);

class CatalogoDeArchivo final : public jet::Catalogo
{
public:
    CatalogoDeArchivo(Motor &motor, std::string esquema);
    const jet::Tabla *Buscar(std::string_view nombre) const override;
    void Olvidar();

private:
    Motor &m_motor;
    std::string m_esquema;
    mutable bool m_leido = false;
    mutable PorTexto<std::string> m_nombres; // folded name to the file's own
    mutable PorTexto<std::unique_ptr<jet::Tabla>> m_tablas;
};

struct Base::Interno {
    Motor &motor;
    std::string esquema;
    const Reloj &reloj;
    CatalogoDeArchivo catalogo;
    PorTexto<std::unique_ptr<Compilada>> cambios;
    PorTexto<std::unique_ptr<Compilada>> conClaves;
    PorTexto<std::unique_ptr<Compilada>> sinClaves;
    PorTexto<std::unique_ptr<Sentencia>> directas; // write-backs of recordsets, engine SQL
    PorTexto<int> escrituras;                      // by folded table name

    // Writes of other processes, noticed at most this often: a look costs a visit to the file.
    static constexpr qint64 IntervaloMs = 200;
    QElapsedTimer ultimaMirada;
    qint64 versionVista = -1;
    int ajenas = 0; // counts changes of the engine's data version

    Interno(Motor &m, std::string e, const Reloj &r);
    Compilada &Compilar(std::string_view sql, PorTexto<std::unique_ptr<Compilada>> &cache,
                        bool claves);
    void Ligar(Compilada &c, std::span<const Valor> valores) const;
    int *EscriturasDe(std::string_view tabla);
    Sentencia &Directa(const std::string &sql);
    void MirarAjenas();
    void Definir(const jet::Definicion &d);
};

/// Type as the files declare it: "TEXT(50)", "CURRENCY".
std::string TipoDeclarado(const jet::Columna &columna);
/// The other way; Tipo::Ninguno for what this system does not declare.
jet::Columna LeerTipoDeclarado(const std::string &nombre, const std::string &tipo);
