#include "clients/owner_search.h"

#include "clients/client_rows.h"
#include "clients/reference_lists.h"
#include "store/jet/text.h"
#include "ui/grid.h"

using namespace clients;

namespace
{

int findPlainName(const ui::GridModel &grid, int column, const QString &text)
{
    const std::string wanted = jet::plainOf(text.toStdString());
    if (wanted.empty())
        return -1;
    // Cheap rejection: most names differ in their first letter.
    const auto beginsOtherwise = [first = wanted.front()](QChar c) {
        return c.unicode() < 0x80 && uchar(first) < 0x80 && c.toLower() != QLatin1Char(first);
    };
    for (int row = 0; row < grid.allRows(); ++row) {
        const QString name = grid.Row(row).cells[column].toText();
        if (name.isEmpty() || beginsOtherwise(name.front()))
            continue;
        if (jet::plainOf(name.left(text.size()).toStdString()) == wanted)
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

// Telephones may be stored with blanks and dashes and searched without, or vice versa.
int findDigits(const ui::GridModel &grid, int column, const QString &text)
{
    const QString wanted = digitsOf(text);
    for (int row = 0; row < grid.allRows(); ++row)
        if (digitsOf(grid.Row(row).cells[column].toText()).startsWith(wanted))
            return row;
    return -1;
}

bool looksLikePhone(const QString &text)
{
    constexpr int fewestDigits = 5; // fewer would be an id
    return digitsOf(text).size() >= fewestDigits
           && std::none_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

} // namespace

int clients::findOwner(const ui::GridModel &clientes, const QString &typed)
{
    const QString text = typed.trimmed();
    const int last = clientes.allRows() - 1;
    switch (searchType(text)) {
    case ClientSearch::Id:
        return clientes.BuscarEnGrilla(text.toInt(), ClientColumn::Idc, 0, last);
    case ClientSearch::Telephone: {
        const int row = clientes.BuscarEnGrilla(text, ClientColumn::Telephone, 0, last);
        return row >= 0 ? row : findDigits(clientes, ClientColumn::Telephone, text);
    }
    case ClientSearch::Name: {
        const int row = clientes.BuscarEnGrilla(text, ClientColumn::Name, 0, last);
        if (row < 0 && looksLikePhone(text))
            return findDigits(clientes, ClientColumn::Telephone, text);
        return row >= 0 ? row : findPlainName(clientes, ClientColumn::Name, text);
    }
    case ClientSearch::Nothing:
        break;
    }
    return -1;
}

int clients::findPatient(const ui::GridModel &mascotas, const QString &typed)
{
    constexpr int name = PatientColumn::Name;
    const QString text = typed.trimmed();
    int row = mascotas.BuscarEnGrilla(text, name, 0, mascotas.allRows() - 1);
    if (row < 0)
        row = findPlainName(mascotas, name, text);
    if (row >= 0 || !text.contains(u'*'))
        return row;
    const jet::Pattern pattern(patternWithStars(text).toStdString());
    for (row = 0; row < mascotas.allRows(); ++row)
        if (pattern.meets(mascotas.Row(row).cells[name].toText().toStdString()))
            return row;
    return -1;
}
