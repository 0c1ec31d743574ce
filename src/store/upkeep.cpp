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

/// A damaged file with the one that is to take its place.
struct Repaired {
    QString file;
    QString fresh;
    QString aside; // where the damaged one stays
    Salvage salvage;
};

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

Repaired repair(const Sesion &s, const QString &file)
{
    const QString base = file.chopped(4); // without ".mdb"
    Repaired r{file,
               base + u"-reparada.mdb"_s,
               base + u"-danada-"_s + s.reloj.now().toString(u"yyyyMMdd-HHmmss"_s) + u".mdb"_s,
               {}};
    QFile::remove(r.fresh); // of a repair that was broken off
    try {
        r.salvage = repairFile(file, r.fresh);
    } catch (const StoreError &e) {
        if (e.number != ErrorNumber::DatabaseDamaged)
            throw;
        refuse(s, file, FileFormat::Unknown);
    }
    shareLike(r.fresh, file);
    return r;
}

QString report(const Sesion &s, const Repaired &r)
{
    QString t = s(text::FileRepaired)
                    .arg(QFileInfo(r.file).fileName())
                    .arg(r.salvage.rows)
                    .arg(QFileInfo(r.aside).fileName());
    if (!r.salvage.tablesHarmed.isEmpty())
        t += u'\n' + s(text::RowsWereLost).arg(r.salvage.tablesHarmed.join(u", "_s));
    return t;
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
    std::vector<DatabaseCopy> copies;
    for (const QString &base : clinicDatabases())
        copies.push_back({base.toStdString(), pathUnder(folder, fileOf(base))});
    s.motor->copy(copies);
}

void store::noteDamage(const Sesion &s)
{
    QFile mark(damageMark(s));
    // Where not even this can be written, the next start finds out by itself.
    if (mark.open(QIODevice::WriteOnly))
        shareLike(mark.fileName(), pathUnder(s.dataFolder, fileOf(u"morvane"_s)));
}

bool store::isDamageNoted(const Sesion &s) { return QFileInfo::exists(damageMark(s)); }

void store::refuseForeignFiles(const Sesion &s)
{
    for (const QString &base : clinicDatabases()) {
        const QString file = pathUnder(s.dataFolder, fileOf(base));
        if (!QFileInfo(file).isFile())
            continue;
        if (const FileFormat format = formatOf(file); format != FileFormat::Unknown)
            refuse(s, file, format);
    }
}

QString store::repairDatabases(const Sesion &s)
{
    std::vector<Repaired> repaired;
    try {
        for (const QString &base : clinicDatabases()) {
            const QString file = pathUnder(s.dataFolder, fileOf(base));
            if (QFileInfo(file).isFile() && checkFile(file) != "ok")
                repaired.push_back(repair(s, file));
        }
    } catch (...) {
        for (const Repaired &r : repaired)
            QFile::remove(r.fresh);
        throw;
    }
    QStringList told;
    for (const Repaired &r : repaired) {
        replaceFile(r.file, r.aside);
        try {
            replaceFile(r.fresh, r.file);
        } catch (...) {
            replaceFile(r.aside, r.file);
            throw;
        }
        told << report(s, r);
    }
    QFile::remove(damageMark(s));
    return told.join(u"\n\n"_s);
}
