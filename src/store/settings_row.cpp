#include "store/settings_row.h"

#include <QSettings>

namespace
{

QString Archivo(const Sesion &s)
{
    // Without a program folder nothing is kept: an unnamed file is never written.
    return s.carpetaDePrograma.isEmpty() ? QString()
                                         : s.carpetaDePrograma + QStringLiteral("kelvara.ini");
}

} // namespace

void GuardarAjuste(Sesion &s, std::string_view columna, const Valor &valor)
{
    if (s.configuracion.AbsolutePosition() < 0)
        s.configuracion.MoveFirst();
    s.configuracion.Edit();
    try {
        s.configuracion.Put(columna, valor);
        s.configuracion.Update();
    } catch (...) {
        s.configuracion.CancelUpdate();
        throw;
    }
}

QString LeerAjusteDeMaquina(const Sesion &s, const QString &clave, const QString &porDefecto)
{
    return QSettings(Archivo(s), QSettings::IniFormat).value(clave, porDefecto).toString();
}

void GuardarAjusteDeMaquina(const Sesion &s, const QString &clave, const QString &valor)
{
    QSettings(Archivo(s), QSettings::IniFormat).setValue(clave, valor);
}
