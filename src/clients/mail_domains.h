// Completion of mail addresses by the domains that the clinic has met.
#pragma once

#include "store/session.h"

namespace clients
{

/// The part behind the last "@", "" when there is none.
QString domainOf(const QString &addresses);
/// Known domains by name.
QStringList knownDomains(Sesion &s);
/// The first known domain that begins with what stands behind the last "@" of the text; "" when
/// there is no "@" or none fits.
QString completeDomain(Sesion &s, const QString &text);
/// What ENTER in the box does: a new domain is learnt, and a client that is being changed and has
/// an address now counts as reachable. @param idc 0 when no change is under way
/// @return whether the client did not count as reachable before
bool settleMail(Sesion &s, const QString &addresses, int idc);

} // namespace clients
