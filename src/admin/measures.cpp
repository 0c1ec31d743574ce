#include "admin/measures.h"

#include "store/settings_row.h"

using namespace admin;

bool admin::remembersDebts(const Sesion &s)
{
    const int n = s.configuracion["MedidasDeudores"].toInt();
    return n == 1 || n == 3;
}

void admin::saveRemembersDebts(Sesion &s, bool remembers)
{
    store::saveSetting(s, "MedidasDeudores", remembers ? 1 : 0);
}

bool admin::remembersSecondExpiry(const Sesion &s)
{
    const int n = s.configuracion["MedidasRevacDescont"].toInt();
    return n == 1 || n == -1;
}

void admin::saveRemembersSecondExpiry(Sesion &s, bool remembers)
{
    store::saveSetting(s, "MedidasRevacDescont", remembers ? 1 : 0);
}
