// Completes mail addresses with the domains that the clinic has used before.
#pragma once

#include "store/session.h"

namespace clients
{

/// The domain after the last "@", up to a blank, comma or semicolon; "" without an "@".
QString domainOf(const QString &addresses);
/// All known domains, sorted.
/// @throws StoreError
QStringList knownDomains(Sesion &s);
/// The first known domain that begins with what follows the last "@" of the text; "" when there is
/// no "@" or no match.
/// @throws StoreError
QString completeDomain(Sesion &s, const QString &text);
/// Called when the mail box is entered: learns a new domain and, for an address with "@", marks the
/// client as reachable by mail again.
/// @param idc the client being changed, 0 if none
/// @return whether the client was marked as unreachable before
/// @throws StoreError
bool settleMail(Sesion &s, const QString &addresses, int idc);

} // namespace clients
