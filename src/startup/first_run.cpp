#include "startup/first_run.h"

#include "columns/configuracion.h"
#include "startup/seeds.h"
#include "store/identifiers.h"
#include "store/lookups.h"
#include "texts/texts.h"

#include <algorithm>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

constexpr int HighestUser = 255; // Usuarios.idu is a byte

/// Renames the rows of a table to the names in a seed file.
void rename(Base &base, const std::string &sql, const Seeds &seeds, QStringView id,
            QStringView name)
{
    for (const QStringList &row : seeds.rows)
        base.Execute(sql, seeds.Cell(row, name), seeds.Cell(row, id).toInt());
}

/// Adds the products or services that are missing and renames the others.
/// @return the highest identifier
int Articulos(Base &finanzas, const Seeds &seeds, bool services)
{
    static const QStringList service{u"ida"_s, u"tiempo"_s, u"tipo"_s};
    int highest = 0;
    for (const QStringList &row : seeds.rows) {
        const int ida = seeds.Cell(row, u"ida").toInt();
        const QString &name = seeds.Cell(row, u"nom");
        highest = std::max(highest, ida);
        if (!finanzas.read("select ida from Articulos where ida = ?", ida).isNull()) {
            finanzas.Execute("update Articulos set nom = ? where ida = ?", name, ida);
            continue;
        }
        QStringList columns{u"ida"_s, u"nom"_s, u"cb"_s};
        std::vector<store::Value> values{ida, name, QString::number(ida)};
        const QStringList rest =
            services ? QStringList{} : QStringList{u"idcat"_s, u"uni"_s, u"canuni"_s, u"vto"_s};
        for (const QString &column : rest) {
            columns.append(column);
            values.push_back(seedValue(finanzas, "Articulos", column, seeds.Cell(row, column)));
        }
        if (services) {
            columns += {u"idcat"_s, u"uni"_s};
            values.insert(values.end(), {2, u"u"_s});
            insertRow(finanzas, u"Servicios"_s, service,
                      {ida, seeds.Cell(row, u"tiempo").toInt(), seeds.Cell(row, u"tipo").toInt()});
        }
        insertRow(finanzas, u"Articulos"_s, columns, values);
    }
    return highest;
}

} // namespace

int startup::validateFirstRun(const FirstRunData &data)
{
    if (QuitarApostrofes(data.user).trimmed().isEmpty())
        return text::PleaseEnterName;
    return data.password == data.password2 ? 0 : text::PasswordsDoNotMatch;
}

void startup::registerFirstRun(Sesion &s, const FirstRunData &data)
{
    Base &morvane = *s.morvane;
    const auto taken = [&morvane](const char *table, const char *column, const QString &text) {
        return morvane.trimmed(table, column, QuitarApostrofes(text));
    };
    const QString user = taken("Usuarios", "nom", data.user);
    const QString clinic = taken("Veterinaria", "nom", data.clinic);
    Lote lote(s);
    morvane.Execute("delete * from Veterinaria");
    morvane.Execute("insert into Veterinaria (nom, pro, dir, tel) values (?, ?, ?, ?)",
                    clinic.trimmed().isEmpty() ? user : clinic, user,
                    taken("Veterinaria", "dir", data.address),
                    taken("Veterinaria", "tel", data.telephones));
    morvane.Execute("delete * from Usuarios");
    const int idu = store::takeIdentifier(s, setting::contadorUsuarios, HighestUser);
    morvane.Execute("insert into Usuarios (idu, nom, up, ut) values (?, ?, ?, 2)", idu, user,
                    data.password);
    lote.commit();
}

void startup::seedFirstRun(Sesion &s)
{
    const store::Language language = s.texts.language();
    Base &morvane = *s.morvane;
    Base &finanzas = *s.finanzas;
    Lote lote(s);
    rename(finanzas, "update FLCategorias set nom = ? where idcat = ?",
           readSeeds(u"categories"_s, language), u"idcat", u"nom");
    rename(morvane, "update Regimen set Nom = ? where Idr = ?", readSeeds(u"plans"_s, language),
           u"Idr", u"Nom");

    const int highest = std::max(Articulos(finanzas, readSeeds(u"products"_s, language), false),
                                 Articulos(finanzas, readSeeds(u"services"_s, language), true));
    morvane.Execute("update Configuracion set contadorarticulo = ? where contadorarticulo < ?",
                    highest, highest);

    const Seeds captions = readSeeds(u"labels"_s, language);
    for (const QStringList &row : captions.rows)
        morvane.Execute(u"update Configuracion set [%1] = ?"_s.arg(captions.Cell(row, u"columna"))
                            .toStdString(),
                        captions.Cell(row, u"valor"));
    for (const SeededLetter &letter : readLetters(language))
        for (const QString &column : letter.columns)
            morvane.Execute(u"update Configuracion set [%1] = ?"_s.arg(column).toStdString(),
                            letter.text);
    lote.commit();
}
