// How a client is reached: by post, telephone and mail. Below the agenda, which must know it too.
#pragma once

#include "store/session.h"

/// Street, sub-region, region and postal code, parted by ", "; what is missing is left out.
QString DomicilioCliente(Sesion &s, int idc);

/// Landline and mobile joined by " / "; the one there is, or "".
QString TelefonosCliente(Sesion &s, int idc);

/// The client's mail addresses, "" unless there is an at sign among them.
QString DireccionCliente(Sesion &s, int idc);

namespace contact
{

/// A list of patients with what they are to get and how their owners are reached, in a scratch
/// table with the columns mas, pro, dir, tel, one for the product, and perhaps dos.
struct DeliveryTable {
    std::string_view table;
    std::string_view product; // column of its name
};

/// Adds a line: the only one who does. Texts that are too long are cut. @param dos ordinal of the
/// dose, for a table that has it
void addToList(Sesion &s, const DeliveryTable &list, int idm, int ida, std::optional<int> dos = {});

} // namespace contact
