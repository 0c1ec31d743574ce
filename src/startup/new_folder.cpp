#include "startup/new_folder.h"

#include "startup/seeds.h"
#include "store/batch.h"
#include "store/data_folder.h"
#include "store/schema.h"
#include "texts/texts.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <utility>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

void seedFixedRows(Motor &motor, store::Language language)
{
    const Reloj reloj;
    Base morvane(motor, "morvane", reloj);
    Base clientes(motor, "clientes", reloj);
    Base finanzas(motor, "finanzas", reloj);

    QStringList columns;
    std::vector<store::Value> values;
    for (const Seeds &s : {readSeeds(u"settings"_s, store::Language::Spanish),
                           readSeeds(u"labels"_s, store::Language::Spanish)})
        for (const QStringList &row : s.rows) {
            const QString &column = s.Cell(row, u"columna");
            columns.append(column);
            values.push_back(seedValue(morvane, "Configuracion", column, s.Cell(row, u"valor")));
        }
    insertRow(morvane, u"Configuracion"_s, columns, values);

    const std::tuple<Base &, const char16_t *, const char16_t *> tables[] = {
        {morvane, u"Regimen", u"plans"},
        {finanzas, u"FLCategorias", u"categories"},
        {clientes, u"MLEspecies", u"species"},
        {clientes, u"EnciclopediaCategorias", u"encyclopedia_categories"},
        {clientes, u"EnciclopediaSubCategorias", u"encyclopedia_topics"},
    };
    for (const auto &[base, table, file] : tables)
        insertSeeds(base, QString::fromUtf16(table),
                    readSeeds(QString::fromUtf16(file), store::Language::Spanish));
    insertSeeds(finanzas, u"TiposFiscal"_s, readSeeds(u"fiscal_types"_s, language));

    const Seeds themes = readSeeds(u"encyclopedia_topics"_s, store::Language::Spanish);
    for (const QStringList &row : themes.rows)
        insertRow(clientes, u"Enciclopedia"_s, {u"IDCategoria"_s, u"IDSubCategoria"_s},
                  {themes.Cell(row, u"IDCategoria").toInt(), themes.Cell(row, u"ID").toInt()});
}

/// Creates the five files in a folder that has none of them.
void createFiles(const QString &folder, store::Language language)
{
    const std::unique_ptr<Motor> motor = store::createFileEngine(folder);
    for (const QString &base : store::databases()) {
        motor->create(base.toStdString());
        motor->open(base.toStdString());
    }
    Lote lote(*motor);
    for (const QString &base : store::databases())
        store::createTables(*motor, base.toStdString(), store::readSchema(base));
    seedFixedRows(*motor, language);
    lote.commit();
}

/// Moves the finished files to their place: all of them or none.
bool shift(const QString &from, const QString &folder)
{
    QStringList puts;
    for (const QString &base : store::databases()) {
        const QString target = store::pathUnder(folder, store::fileOf(base));
        if (!QDir().mkpath(QFileInfo(target).path())
            || !QFile::rename(from + u'/' + store::fileOf(base), target)) {
            for (const QString &put : std::as_const(puts))
                QFile::remove(put);
            return false;
        }
        puts.append(target);
    }
    return true;
}

/// Creates the files next to their place and moves them when all are complete, so that neither a
/// failure nor a power cut leaves a folder that looks like a clinic's.
void raise(const QString &folder, store::Language language)
{
    QDir().mkpath(folder);
    const QTemporaryDir obra(folder + "/.nueva-XXXXXX"_L1);
    if (!obra.isValid())
        throw store::StoreError(store::ErrorNumber::PathOrDisk, obra.errorString());
    createFiles(obra.path(), language);
    if (!shift(obra.path(), folder))
        throw store::StoreError(store::ErrorNumber::PathOrDisk, folder);
}

} // namespace

void startup::createFolder(const QString &folder, store::Language language)
{
    const store::Texts texts(language);
    for (const QString &base : store::databases())
        if (QFileInfo::exists(store::pathUnder(folder, store::fileOf(base))))
            throw store::StoreError(store::ErrorNumber::PathOrDisk,
                                    texts(text::FolderHasClinic) + u' ' + folder);

    const bool existed = QFileInfo::exists(folder);
    try {
        raise(folder, language);
    } catch (const store::StoreError &e) {
        if (!existed)
            QDir(folder).removeRecursively(); // created here, so nothing else is in it
        if (e.isMediumFailure())
            throw store::StoreError(store::ErrorNumber::PathOrDisk,
                                    texts(text::FolderCannotBeMade) + u' ' + folder);
        throw;
    }
}
