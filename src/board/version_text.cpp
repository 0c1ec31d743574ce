#include "board/version_text.h"

#include "columns/configuracion.h"

#include <QLocale>

using namespace board;
using namespace Qt::StringLiterals;

QString board::versionText(int ver)
{
    if (ver == 33)
        return u"4.3.0"_s;
    const int full = ver < 100 ? ver / 10 * 100 + ver % 10 : ver;
    return u"%1.%2.%3"_s.arg(full / 100).arg(full / 10 % 10).arg(full % 10);
}

QString board::boardTitle(Sesion &s)
{
    return s.clinic.nom + u". Kelvara v"_s + versionText(s.configuracion[setting::Ver].toInt())
           + u" - "_s + QLocale().toString(s.reloj.hoy, QLocale::LongFormat) + u" - Usr: "_s
           + s.user.nom + u'.';
}
