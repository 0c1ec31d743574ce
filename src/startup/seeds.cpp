#include "startup/seeds.h"

#include <QFile>
#include <algorithm>
#include <stdexcept>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

QStringList linesOf(const QString &file)
{
    QFile f(u":/seeds/%1.txt"_s.arg(file));
    if (!f.open(QIODevice::ReadOnly))
        throw std::runtime_error(u"no seed file %1"_s.arg(file).toStdString());
    return QString::fromUtf8(f.readAll()).split(u'\n');
}

[[noreturn]] void fail(const QString &file, qsizetype line, const QString &what)
{
    throw std::runtime_error(u"%1.txt:%2: %3"_s.arg(file).arg(line + 1).arg(what).toStdString());
}

bool isComment(const QString &line) { return line.isEmpty() || line.startsWith(u'#'); }

QStringList cellsOf(const QString &line)
{
    QStringList cells = line.split(u'|');
    for (QString &c : cells)
        c = c.trimmed();
    return cells;
}

/// The position of a column's cell in one language, and that in Spanish, used when the row is too
/// short.
struct Place {
    qsizetype own = 0;
    qsizetype inSpanish = 0;
    bool language = false;
};

} // namespace

const QString &Seeds::Cell(const QStringList &row, QStringView column) const
{
    const qsizetype i = columns.indexOf(column);
    if (i < 0)
        throw std::runtime_error(u"no seed column %1"_s.arg(column).toStdString());
    return row[i];
}

Seeds startup::readSeeds(const QString &file, store::Language language)
{
    const QString suffix = u'.' + store::languageCode(language);
    Seeds s;
    std::vector<Place> places;
    const QStringList lines = linesOf(file);
    for (qsizetype n = 0; n < lines.size(); ++n) {
        if (isComment(lines[n]))
            continue;
        const QStringList cells = cellsOf(lines[n]);
        if (s.columns.isEmpty()) {
            for (qsizetype i = 0; i < cells.size(); ++i) {
                const bool translated = cells[i].contains(u'.');
                if (translated && !cells[i].endsWith(suffix))
                    continue;
                const QString name = cells[i].section(u'.', 0, 0);
                s.columns.append(name);
                places.push_back({i, translated ? cells.indexOf(name + ".es"_L1) : i, translated});
            }
            continue;
        }
        QStringList row;
        bool inThisLanguage = true;
        for (const Place &l : places) {
            const qsizetype i = l.own < cells.size() ? l.own : l.inSpanish;
            if (i < 0 || i >= cells.size())
                fail(file, n, u"too few cells"_s);
            row.append(cells[i]);
            inThisLanguage = inThisLanguage && !(l.language && cells[i].isEmpty());
        }
        if (inThisLanguage)
            s.rows.append(row);
    }
    return s;
}

QList<SeededLetter> startup::readLetters(store::Language language)
{
    const QString file = u"letters"_s;
    const QString code = store::languageCode(language);
    QList<SeededLetter> letters;
    bool our = false;
    const QStringList lines = linesOf(file);
    for (qsizetype n = 0; n < lines.size(); ++n) {
        const QString &line = lines[n];
        if (isComment(line))
            continue;
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            letters.append({line.sliced(1, line.size() - 2).split(u' ', Qt::SkipEmptyParts), {}});
            our = false;
        } else if (line.startsWith(u'|') && !letters.isEmpty()) {
            if (!our)
                continue;
            QString &text = letters.back().text;
            if (!text.isNull())
                text += u'\n';
            text += line.sliced(line.startsWith("| "_L1) ? 2 : 1);
        } else if (line == "es"_L1 || line == "pt"_L1 || line == "en"_L1) {
            our = line == code;
        } else {
            fail(file, n, u"cannot read \"%1\""_s.arg(line));
        }
    }
    return letters;
}

store::Value startup::seedValue(const Base &base, std::string_view table, const QString &column,
                                const QString &cell)
{
    const jet::Table *t = base.catalogue().find(table);
    if (!t)
        throw store::StoreError(store::ErrorNumber::TableNotFound,
                                QString::fromUtf8(table.data(), qsizetype(table.size())));
    const auto c = std::ranges::find_if(t->columns, [&](const jet::Column &declared) {
        return QString::fromStdString(declared.name).compare(column, Qt::CaseInsensitive) == 0;
    });
    if (c == t->columns.end())
        throw store::StoreError(store::ErrorNumber::NotInCollection, column);
    if (cell.isEmpty())
        return {};
    switch (c->type) {
    case store::ColumnType::Text:
    case store::ColumnType::Memo:
    case store::ColumnType::None:
        return cell;
    case store::ColumnType::YesNo:
        return cell != "0"_L1;
    case store::ColumnType::Single:
    case store::ColumnType::Double:
        return cell.toDouble();
    case store::ColumnType::Currency:
        return Moneda::fromText(cell).value_or(Moneda());
    case store::ColumnType::Date:
        return QDate::fromString(cell, Qt::ISODate);
    case store::ColumnType::Time:
        return QTime::fromString(cell, Qt::ISODate);
    default:
        return cell.toInt();
    }
}

void startup::insertRow(Base &base, const QString &table, const QStringList &columns,
                        const std::vector<store::Value> &values)
{
    const QString sql = u"insert into %1 ([%2]) values (%3)"_s.arg(
        table, columns.join("], ["_L1), QStringList(columns.size(), u"?"_s).join(u','));
    base.run(sql.toStdString(), values);
}

void startup::insertSeeds(Base &base, const QString &table, const Seeds &seeds)
{
    const std::string name = table.toStdString();
    for (const QStringList &row : seeds.rows) {
        std::vector<store::Value> values;
        for (qsizetype i = 0; i < row.size(); ++i)
            values.push_back(seedValue(base, name, seeds.columns[i], row[i]));
        insertRow(base, table, seeds.columns, values);
    }
}
