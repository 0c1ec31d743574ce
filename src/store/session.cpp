#include "store/session.h"

Sesion::Sesion(Dialogos &d, Impresion &i, Idioma idioma) : dialogos(d), impresion(i), textos(idioma)
{
}
