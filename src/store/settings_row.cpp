#include "store/settings_row.h"

#include <QDir>
#include <QSettings>

QString ArchivoDeMaquina(const Sesion &s)
{
    return s.carpetaDePrograma.isEmpty() ? QString()
                                         : s.carpetaDePrograma + QStringLiteral("kelvara.ini");
}

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
    return QSettings(ArchivoDeMaquina(s), QSettings::IniFormat).value(clave, porDefecto).toString();
}

void GuardarAjusteDeMaquina(const Sesion &s, const QString &clave, const QString &valor)
{
    const QString archivo = ArchivoDeMaquina(s);
    if (archivo.isEmpty())
        return;
    QSettings ini(archivo, QSettings::IniFormat);
    ini.setValue(clave, valor);
    ini.sync();
    if (ini.status() != QSettings::NoError)
        throw ErrorDeAlmacen(ErrorNum::RutaODisco, QDir::toNativeSeparators(archivo));
}
