#include "store/upkeep.h"

#include "store/data_folder.h"
#include "store/file_permissions.h"
#include "store/schema.h"
#include "texts/texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace store;
using namespace Qt::StringLiterals;

namespace
{

QString damageMark(const Sesion &s) { return pathUnder(s.dataFolder, u"kelvara.revisar"_s); }

QString formatText(const Sesion &s, FileFormat format)
{
    switch (format) {
    case FileFormat::Empty:
        return s(text::DataFileIsEmpty);
    case FileFormat::PlainText:
        return s(text::DataFileIsText);
    case FileFormat::Unencrypted:
        return s(text::DataFileIsUnencrypted);
    case FileFormat::Jet:
        return s(text::DataFileIsJet);
    case FileFormat::Unknown:
        break;
    }
    return s(text::DatabaseDamaged);
}

[[noreturn]] void refuse(const Sesion &s, const QString &file, FileFormat format)
{
    throw StoreError(ErrorNumber::DatabaseDamaged, formatText(s, format) + u'\n' + file);
}

QString report(const Sesion &s, const Salvage &r)
{
    QString t = s(text::FileRepaired)
                    .arg(QFileInfo(r.place).fileName())
                    .arg(r.rows)
                    .arg(QFileInfo(r.aside).fileName());
    if (!r.tablesHarmed.isEmpty())
        t += u'\n' + s(text::RowsWereLost).arg(r.tablesHarmed.join(u", "_s));
    return t;
}

std::vector<std::string> clinicSchemas()
{
    std::vector<std::string> names;
    for (const QString &base : clinicDatabases())
        names.push_back(base.toStdString());
    return names;
}

} // namespace

const QStringList &store::clinicDatabases()
{
    static const QStringList four = databases().first(4);
    return four;
}

Alone::Alone(Sesion &s)
{
    if (s.presence && s.presence->takeAlone())
        m_presence = s.presence.get();
}

Alone::~Alone()
{
    if (m_presence)
        m_presence->share();
}

bool ProbarExclusivo(Sesion &s) { return bool(Alone(s)); }

void store::copyDatabases(Sesion &s, const QString &folder)
{
    if (!QDir().mkpath(folder))
        throw StoreError(ErrorNumber::PathOrDisk, folder);
    s.motor->copy(clinicSchemas(), folder);
}

void store::noteDamage(const Sesion &s)
{
    QFile mark(damageMark(s));
    // If not even this can be written, the next start will notice on its own.
    if (mark.open(QIODevice::WriteOnly))
        shareLike(mark.fileName(), pathUnder(s.dataFolder, fileOf(u"morvane"_s)));
}

bool store::isDamageNoted(const Sesion &s) { return QFileInfo::exists(damageMark(s)); }

void store::refuseForeignFiles(const Sesion &s)
{
    for (const QString &base : clinicDatabases()) {
        const std::string schema = base.toStdString();
        if (!s.motor->exists(schema))
            continue;
        if (const FileFormat format = s.motor->formatOf(schema); format != FileFormat::Unknown)
            refuse(s, pathUnder(s.dataFolder, fileOf(base)), format);
    }
}

QString store::repairDatabases(const Sesion &s)
{
    QStringList told;
    try {
        for (const Salvage &r :
             s.motor->repair(clinicSchemas(), s.reloj.now().toString(u"yyyyMMdd-HHmmss"_s)))
            told << report(s, r);
    } catch (const StoreError &e) {
        if (e.number != ErrorNumber::DatabaseDamaged)
            throw;
        refuse(s, e.description, FileFormat::Unknown);
    }
    QFile::remove(damageMark(s));
    return told.join(u"\n\n"_s);
}
