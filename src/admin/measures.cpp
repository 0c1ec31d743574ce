#include "admin/measures.h"

#include "store/settings_row.h"

bool RecuerdaDeudas(const Sesion &s)
{
    const int n = s.configuracion["MedidasDeudores"].toInt();
    return n == 1 || n == 3;
}

void GuardarRecuerdaDeudas(Sesion &s, bool recuerda)
{
    GuardarAjuste(s, "MedidasDeudores", recuerda ? 1 : 0);
}

bool RecuerdaSegundoVencimiento(const Sesion &s)
{
    const int n = s.configuracion["MedidasRevacDescont"].toInt();
    return n == 1 || n == -1;
}

void GuardarRecuerdaSegundoVencimiento(Sesion &s, bool recuerda)
{
    GuardarAjuste(s, "MedidasRevacDescont", recuerda ? 1 : 0);
}
