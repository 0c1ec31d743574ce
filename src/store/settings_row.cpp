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

namespace
{

QString ArchivoDeClinica(const Sesion &s)
{
    return s.carpetaDeDatos.isEmpty() ? QString()
                                      : s.carpetaDeDatos + QStringLiteral("kelvara.ini");
}

QString Leer(const QString &archivo, const QString &clave, const QString &porDefecto)
{
    return QSettings(archivo, QSettings::IniFormat).value(clave, porDefecto).toString();
}

void Guardar(const QString &archivo, const QString &clave, const QString &valor)
{
    if (archivo.isEmpty())
        return;
    QSettings ini(archivo, QSettings::IniFormat);
    ini.setValue(clave, valor);
    ini.sync();
    if (ini.status() != QSettings::NoError)
        throw ErrorDeAlmacen(ErrorNum::RutaODisco, QDir::toNativeSeparators(archivo));
}

} // namespace

QString LeerAjusteDeMaquina(const Sesion &s, const QString &clave, const QString &porDefecto)
{
    return Leer(ArchivoDeMaquina(s), clave, porDefecto);
}

void GuardarAjusteDeMaquina(const Sesion &s, const QString &clave, const QString &valor)
{
    Guardar(ArchivoDeMaquina(s), clave, valor);
}

QString LeerAjusteDeClinica(const Sesion &s, const QString &clave, const QString &porDefecto)
{
    return Leer(ArchivoDeClinica(s), clave, porDefecto);
}

void GuardarAjusteDeClinica(const Sesion &s, const QString &clave, const QString &valor)
{
    Guardar(ArchivoDeClinica(s), clave, valor);
}
