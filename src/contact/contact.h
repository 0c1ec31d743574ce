// How to reach a client: by post, telephone and e-mail. A folder of its own because the agenda
// needs it too.
#pragma once

#include "store/session.h"

/// The client's address: street, sub-region, region and postal code, separated by ", "; missing
/// parts are left out.
QString DomicilioCliente(Sesion &s, int idc);

/// The client's landline and mobile numbers, joined by " / "; a missing one is left out, "" for
/// none.
QString TelefonosCliente(Sesion &s, int idc);

/// The client's e-mail field, which may hold several addresses; "" when it has no at sign.
QString DireccionCliente(Sesion &s, int idc);

namespace contact
{

/// A scratch table that lists patients, what they are to get and how to reach their owners. Its
/// columns are mas, pro, dir, tel, one for the product's name and, in some tables, dos.
struct DeliveryTable {
    std::string_view table;
    std::string_view product; // column of the product's name
};

/// Adds a row for a patient and a product; the only writer of these tables. Texts are cut to the
/// width of their columns.
/// @param dos ordinal of the dose, for a table that has the column
void addToList(Sesion &s, const DeliveryTable &list, int idm, int ida, std::optional<int> dos = {});

} // namespace contact
