#include "clients/owner_search.h"

#include "clients/client_rows.h"
#include "clients/reference_lists.h"
#include "store/jet/text.h"
#include "ui/grid.h"

namespace
{

int findPlainName(const ModeloDeGrilla &grid, int column, const QString &text)
{
    const std::string wanted = jet::Llano(text.toStdString());
    if (wanted.empty())
        return -1;
    // Most names are told apart by their first letter, which costs nothing to see.
    const auto beginsOtherwise = [first = wanted.front()](QChar c) {
        return c.unicode() < 0x80 && uchar(first) < 0x80 && c.toLower() != QLatin1Char(first);
    };
    for (int row = 0; row < grid.Filas(); ++row) {
        const QString name = grid.Fila(row).celdas[column].toText();
        if (name.isEmpty() || beginsOtherwise(name.front()))
            continue;
        if (jet::Llano(name.left(text.size()).toStdString()) == wanted)
            return row;
    }
    return -1;
}

QString digitsOf(const QString &text)
{
    QString digits;
    for (const QChar c : text)
        if (c.isDigit())
            digits += c;
    return digits;
}

// Telephones are written with blanks and dashes, and asked for without them, or the other way.
int findDigits(const ModeloDeGrilla &grid, int column, const QString &text)
{
    const QString wanted = digitsOf(text);
    for (int row = 0; row < grid.Filas(); ++row)
        if (digitsOf(grid.Fila(row).celdas[column].toText()).startsWith(wanted))
            return row;
    return -1;
}

bool looksLikePhone(const QString &text)
{
    constexpr int fewestDigits = 5; // fewer are an id
    return digitsOf(text).size() >= fewestDigits
           && std::none_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

} // namespace

int BuscarPropietario(const ModeloDeGrilla &clientes, const QString &texto)
{
    const QString text = texto.trimmed();
    const int last = clientes.Filas() - 1;
    switch (TipoDeBusqueda(text)) {
    case BusquedaDeCliente::Id:
        return clientes.BuscarEnGrilla(text.toInt(), ColumnaDeCliente::Idc, 0, last);
    case BusquedaDeCliente::Telefono: {
        const int row = clientes.BuscarEnGrilla(text, ColumnaDeCliente::Telefono, 0, last);
        return row >= 0 ? row : findDigits(clientes, ColumnaDeCliente::Telefono, text);
    }
    case BusquedaDeCliente::Nombre: {
        const int row = clientes.BuscarEnGrilla(text, ColumnaDeCliente::Nombre, 0, last);
        if (row < 0 && looksLikePhone(text))
            return findDigits(clientes, ColumnaDeCliente::Telefono, text);
        return row >= 0 ? row : findPlainName(clientes, ColumnaDeCliente::Nombre, text);
    }
    case BusquedaDeCliente::Nada:
        break;
    }
    return -1;
}

int BuscarMascota(const ModeloDeGrilla &mascotas, const QString &texto)
{
    constexpr int name = ColumnaDePaciente::Nombre;
    const QString text = texto.trimmed();
    int row = mascotas.BuscarEnGrilla(text, name, 0, mascotas.Filas() - 1);
    if (row < 0)
        row = findPlainName(mascotas, name, text);
    if (row >= 0 || !text.contains(u'*'))
        return row;
    const jet::Patron pattern(PatronConAsteriscos(text).toStdString());
    for (row = 0; row < mascotas.Filas(); ++row)
        if (pattern.Cumple(mascotas.Fila(row).celdas[name].toText().toStdString()))
            return row;
    return -1;
}
