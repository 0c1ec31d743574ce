#include "admin/measures.h"

#include "columns/configuracion.h"
#include "store/settings_row.h"

using namespace admin;

bool admin::remembersDebts(const Sesion &s)
{
    const int n = s.configuracion[setting::MedidasDeudores].toInt();
    return n == 1 || n == 3;
}

void admin::saveRemembersDebts(Sesion &s, bool remembers)
{
    store::saveSetting(s, setting::MedidasDeudores, remembers ? 1 : 0);
}

bool admin::remembersSecondExpiry(const Sesion &s)
{
    const int n = s.configuracion[setting::MedidasRevacDescont].toInt();
    return n == 1 || n == -1;
}

void admin::saveRemembersSecondExpiry(Sesion &s, bool remembers)
{
    store::saveSetting(s, setting::MedidasRevacDescont, remembers ? 1 : 0);
}
