#include "store/session.h"

using namespace store;

Sesion::Sesion(Dialogos &d, Printing &i, Language language)
    : dialogos(d), impresion(i), texts(language)
{
}
