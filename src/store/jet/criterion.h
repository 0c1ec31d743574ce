// Search criteria of FindFirst, tried against rows in memory.
#pragma once

#include "store/jet/translation.h"

#include <functional>
#include <optional>
#include <span>

namespace jet
{

/// A parsed criterion such as "idc = 57", "nom like 'cen*'" or "ida = ? and (ven <= date() + 30)".
class Criterio
{
public:
    /// @throws ErrorDeAlmacen 3075 for what the dialect does not take, 3061 for a name that
    ///         @p columnas does not hold
    static std::shared_ptr<const Criterio> Compilar(std::string_view texto,
                                                    std::span<const ColumnaDeSalida> columnas);
    virtual ~Criterio() = default;

    /// A criterion of the form "column = value": the position of the column and the value to look
    /// for, so that the caller can use a hash instead of a walk.
    struct Igualdad {
        int columna = 0;
        Valor valor;
    };
    virtual std::optional<Igualdad> ComoIgualdad(std::span<const Valor> dados) const = 0;

    /// Whether a row meets it. Null comparisons are not met.
    /// @param celda gives the row's value of a column by position
    /// @param hoy   what Date() means
    virtual bool Cumple(const std::function<Valor(int)> &celda, std::span<const Valor> dados,
                        QDate hoy) const = 0;
};

} // namespace jet
