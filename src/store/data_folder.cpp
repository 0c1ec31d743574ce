#include "store/data_folder.h"

#include "columns/configuracion.h"
#include "store/lookups.h"
#include "store/schema.h"
#include "store/session.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

using namespace store;

namespace
{

QString withSlash(QString folder)
{
    if (!folder.isEmpty() && !folder.endsWith(u'/'))
        folder += u'/';
    return folder;
}

// Id of the marker row in the agenda; real ids are positive.
constexpr int MarkId = -32000;

} // namespace

QString store::programFolder()
{
    const QString given = qEnvironmentVariable("KELVARA_HOME");
    if (!given.isEmpty())
        return withSlash(QDir(given).absolutePath());
    const QString own = QCoreApplication::applicationDirPath();
    if (QFileInfo(own).isWritable())
        return withSlash(own);
    const QString user = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(user);
    return withSlash(user);
}

QString CarpetaLocalDeDatos()
{
    // System versions that have a name keep the file next to the program.
    return SistemaOperativo().isEmpty()
               ? withSlash(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation))
               : programFolder();
}

QString store::readPath(const QString &programFolder)
{
    QFile f(pathUnder(programFolder, QStringLiteral("ruta.txt")));
    if (!f.open(QIODevice::ReadOnly))
        return withSlash(programFolder);
    // Far longer than any path, so a huge file is not read whole.
    QByteArray line = f.readLine(64 * 1024);
    if (line.startsWith("\xEF\xBB\xBF"))
        line.remove(0, 3);
    const QString ruta = QDir::fromNativeSeparators(QString::fromUtf8(line).trimmed());
    if (ruta.isEmpty())
        return withSlash(programFolder);
    return withSlash(QDir::cleanPath(QDir(programFolder).absoluteFilePath(ruta)));
}

bool store::hasPath(const QString &programFolder)
{
    return QFileInfo::exists(pathUnder(programFolder, QStringLiteral("ruta.txt")));
}

bool store::writePath(const QString &programFolder, const QString &dataFolder)
{
    QSaveFile f(pathUnder(programFolder, QStringLiteral("ruta.txt")));
    return f.open(QIODevice::WriteOnly) && f.write(dataFolder.toUtf8() + '\n') > 0 && f.flush()
           && f.commit();
}

QString store::pathUnder(const QString &folder, const QString &relative)
{
    QString ruta = withSlash(folder);
    QString r = relative;
    const QStringList parts = r.replace(u'\\', u'/').split(u'/', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < parts.size(); ++i) {
        QString part = parts[i];
        if (!QFileInfo::exists(ruta + part)) {
            const QStringList names =
                QDir(ruta).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
            for (const QString &n : names)
                if (n.compare(part, Qt::CaseInsensitive) == 0) {
                    part = n;
                    break;
                }
        }
        ruta += part;
        if (i + 1 < parts.size())
            ruta += u'/';
    }
    return ruta;
}

QString store::demoFolder(const Sesion &s) { return s.programFolder + QStringLiteral("demo/"); }

void store::setDataFolder(Sesion &s, const QString &folder)
{
    s.programFolder = programFolder();
    s.dataFolder =
        folder.isEmpty() ? readPath(s.programFolder) : withSlash(QDir(folder).absolutePath());
    s.givenFolder = !folder.isEmpty();
    s.EnRed = folder.isEmpty() && s.dataFolder.toLower() != s.programFolder.toLower();
}

QString RutaRealDeDatos(Sesion &s)
{
    if (!s.givenFolder && hasPath(s.programFolder))
        return readPath(s.programFolder);

    const auto remove = [&s] {
        s.morvane->Execute("DELETE * FROM TareasAgenda WHERE Ida = ?", MarkId);
    };
    remove();
    // Uses the next task id without taking it.
    s.morvane->Execute("INSERT INTO TareasAgenda (Ida, ID) VALUES (?, ?)", MarkId,
                       s.configuracion[setting::contadorTareas].toLong() + 1);

    const QString local =
        withSlash(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    const QString candidates[] = {
        pathUnder(local, QStringLiteral("VirtualStore/Program Files/Kelvara")),
        pathUnder(local, QStringLiteral("VirtualStore/Program Files (x86)/Kelvara")),
        s.programFolder,
        s.dataFolder,
    };
    QString found;
    for (const QString &c : candidates) {
        const QString file = pathUnder(c, fileOf(QStringLiteral("morvane")));
        if (!QFileInfo(file).isFile())
            continue;
        try {
            const auto motor = createFileEngine(c);
            motor->open("morvane");
            Base base(*motor, "morvane", s.reloj);
            if (!base.read("SELECT Ida FROM TareasAgenda WHERE Ida = ?", MarkId).isNull())
                found = withSlash(c);
        } catch (const StoreError &) {
            continue; // a file that does not open is not the one in use
        }
        if (!found.isEmpty())
            break;
    }
    remove();
    return found;
}
