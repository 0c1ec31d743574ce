#include "store/settings_row.h"

#include <QDir>
#include <QSettings>

using namespace store;

QString store::machineFile(const Sesion &s) { return machineFileIn(s.programFolder); }

QString store::machineFileIn(const QString &programFolder)
{
    return programFolder.isEmpty() ? QString() : programFolder + QStringLiteral("kelvara.ini");
}

void store::saveSetting(Sesion &s, std::string_view column, const Value &value)
{
    if (s.configuracion.AbsolutePosition() < 0)
        s.configuracion.MoveFirst();
    s.configuracion.Edit();
    try {
        s.configuracion.Put(column, value);
        s.configuracion.Update();
    } catch (...) {
        s.configuracion.CancelUpdate();
        throw;
    }
}

namespace
{

QString clinicFile(const Sesion &s)
{
    return s.dataFolder.isEmpty() ? QString() : s.dataFolder + QStringLiteral("kelvara.ini");
}

QString read(const QString &file, const QString &key, const QString &byDefault)
{
    return QSettings(file, QSettings::IniFormat).value(key, byDefault).toString();
}

void save(const QString &file, const QString &key, const QString &value)
{
    if (file.isEmpty())
        return;
    QSettings ini(file, QSettings::IniFormat);
    ini.setValue(key, value);
    ini.sync();
    if (ini.status() != QSettings::NoError)
        throw StoreError(ErrorNumber::PathOrDisk, QDir::toNativeSeparators(file));
}

} // namespace

QString store::readMachineSetting(const Sesion &s, const QString &key, const QString &byDefault)
{
    return read(machineFile(s), key, byDefault);
}

void store::saveMachineSetting(const Sesion &s, const QString &key, const QString &value)
{
    save(machineFile(s), key, value);
}

QString store::readClinicSetting(const Sesion &s, const QString &key, const QString &byDefault)
{
    return read(clinicFile(s), key, byDefault);
}

void store::saveClinicSetting(const Sesion &s, const QString &key, const QString &value)
{
    save(clinicFile(s), key, value);
}
