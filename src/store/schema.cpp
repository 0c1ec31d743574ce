#include "store/schema.h"

#include "store/batch.h"
#include "store/declared_type.h"
#include "store/engine.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <stdexcept>

using namespace store;
using namespace Qt::StringLiterals;

namespace
{

// A word of a line. A name in brackets or a literal in quotes is one word.
struct Word {
    enum Kind { Loose, Name, Literal } kind = Loose;
    QString text; // without brackets, but with quotes
};

class Reader
{
public:
    Reader(const QString &text, const QString &file) : m_lines(text.split(u'\n')), m_file(file) {}

    std::vector<DeclaredTable> read()
    {
        for (const QString &line : m_lines) {
            ++m_number;
            const QList<Word> words = split(line);
            if (words.isEmpty())
                continue;
            const Word &first = words.front();
            if (first.kind == Word::Loose && first.text == "table"_L1)
                beginTable(words);
            else if (m_tables.empty())
                fail(u"a column or index before the first table"_s);
            else if (first.kind == Word::Loose && first.text == "index"_L1)
                addIndex(words);
            else
                addColumn(words);
        }
        for (const DeclaredTable &t : m_tables)
            if (t.columns.empty())
                fail(u"table %1 has no columns"_s.arg(t.name));
        return std::move(m_tables);
    }

private:
    [[noreturn]] void fail(const QString &what) const
    {
        throw std::runtime_error(u"%1:%2: %3"_s.arg(m_file).arg(m_number).arg(what).toStdString());
    }

    QList<Word> split(const QString &line) const
    {
        static const QRegularExpression word(
            u"\\G\\s*(?:(#.*)|\\[([^\\]]+)\\](?=\\s|$)|('(?:[^']|'')*')(?=\\s|$)|([^\\s#'\\[]+)(?=\\s|$))"_s);
        QList<Word> words;
        qsizetype from = 0;
        const QString useful = line.trimmed();
        while (from < useful.size()) {
            const auto found = word.match(useful, from);
            if (!found.hasMatch())
                fail(u"cannot read \"%1\""_s.arg(useful.sliced(from).trimmed()));
            if (found.hasCaptured(1))
                break;
            if (found.hasCaptured(2))
                words.append({Word::Name, found.captured(2)});
            else if (found.hasCaptured(3))
                words.append({Word::Literal, found.captured(3)});
            else
                words.append({Word::Loose, found.captured(4)});
            from = found.capturedEnd(0);
        }
        return words;
    }

    void beginTable(const QList<Word> &words)
    {
        if (words.size() != 2 || words[1].kind == Word::Literal)
            fail(u"expected: table NAME"_s);
        const QString &name = words[1].text;
        for (const DeclaredTable &t : m_tables)
            if (t.name.compare(name, Qt::CaseInsensitive) == 0)
                fail(u"table %1 twice"_s.arg(name));
        m_tables.push_back({});
        m_tables.back().name = name;
    }

    void addColumn(const QList<Word> &words)
    {
        DeclaredTable &table = m_tables.back();
        const bool withDefault =
            words.size() == 4 && words[2].kind == Word::Loose && words[2].text == "default"_L1;
        if (words[0].kind == Word::Literal || (words.size() != 2 && !withDefault))
            fail(u"expected: COLUMN TYPE [default LITERAL]"_s);
        const QString &name = words[0].text;
        if (findColumn(name))
            fail(u"column %1 twice"_s.arg(name));
        if (!table.indices.empty())
            fail(u"a column behind the indexes"_s);

        jet::NewColumn c = readType(words[1].text);
        c.name = name.toStdString();
        if (withDefault)
            c.byDefault = readLiteral(words[3]);
        if (c.type == ColumnType::YesNo && !withDefault)
            fail(u"Yes/No column %1 without a default: it would hold Null"_s.arg(name));
        table.columns.push_back(std::move(c));
    }

    void addIndex(const QList<Word> &words)
    {
        DeclaredIndex index;
        for (qsizetype i = 1; i < words.size(); ++i) {
            const Word &p = words[i];
            const bool loose = p.kind == Word::Loose;
            if (i == 1 && loose && p.text == "unique"_L1) {
                index.unique = true;
            } else if (loose && p.text == "where"_L1) {
                if (index.columns.size() != 1 || i != words.size() - 2)
                    fail(u"expected: index COLUMN where VALUE"_s);
                index.onlyWhere = readLiteral(words[++i]);
            } else {
                const jet::NewColumn *c = findColumn(p.text);
                if (!c)
                    fail(u"index on %1, which is no column"_s.arg(p.text));
                index.columns.append(QString::fromStdString(c->name));
            }
        }
        if (index.columns.isEmpty())
            fail(u"index without columns"_s);
        m_tables.back().indices.push_back(std::move(index));
    }

    const jet::NewColumn *findColumn(const QString &name) const
    {
        for (const jet::NewColumn &c : m_tables.back().columns)
            if (QString::fromStdString(c.name).compare(name, Qt::CaseInsensitive) == 0)
                return &c;
        return nullptr;
    }

    jet::NewColumn readType(const QString &text) const
    {
        jet::NewColumn c;
        static_cast<jet::Column &>(c) = readDeclaredType({}, text.toStdString());
        if (declaredType(c) != text.toStdString())
            fail(u"no type: %1"_s.arg(text));
        return c;
    }

    Value readLiteral(const Word &p) const
    {
        static const QRegularExpression number(u"^-?\\d+(\\.\\d+)?$"_s);
        if (p.kind == Word::Literal)
            return p.text.sliced(1, p.text.size() - 2).replace("''"_L1, "'"_L1);
        if (p.kind != Word::Loose || !number.match(p.text).hasMatch())
            fail(u"no number and no text in quotes: %1"_s.arg(p.text));
        return p.text.contains(u'.') ? Value(p.text.toDouble()) : Value(p.text.toLongLong());
    }

    QStringList m_lines;
    QString m_file;
    int m_number = 0;
    std::vector<DeclaredTable> m_tables;
};

// --- What a database lacks ---

jet::Definition definitionOf(const DeclaredTable &table)
{
    jet::Definition d;
    d.kind = jet::Definition::CreateTable;
    d.table = table.name.toStdString();
    d.columns = table.columns;
    return d;
}

jet::Definition definitionOf(const std::string &table, const DeclaredIndex &index)
{
    jet::Definition d;
    d.kind = jet::Definition::CreateIndex;
    d.table = table;
    d.index = index.columns.join(u'_').toStdString();
    d.unique = index.unique;
    d.onlyWhere = index.onlyWhere;
    for (const QString &column : index.columns)
        d.columns.emplace_back().name = column.toStdString();
    return d;
}

bool isSame(const std::string &one, const QString &other)
{
    return QString::fromStdString(one).compare(other, Qt::CaseInsensitive) == 0;
}

// What a database lacks of one declared table.
struct Gap {
    std::string table; // its name in the database, "" if it is missing
    bool key = false;  // whether the row key is missing
    std::vector<jet::NewColumn> columns;
    std::vector<jet::NewColumn> narrow; // existing columns, with the width they should have
    std::vector<DeclaredIndex> indexes;

    bool isNone() const
    {
        return !table.empty() && !key && columns.empty() && narrow.empty() && indexes.empty();
    }
};

Gap gapOf(Motor &motor, const std::string &schema, const DeclaredTable &declared)
{
    Gap gap;
    gap.indexes = declared.indices;
    for (const std::string &name : motor.tables(schema))
        if (isSame(name, declared.name))
            gap.table = name;
    if (gap.table.empty())
        return gap;
    const TableDescription there = motor.describe(schema, gap.table);
    gap.key = !there.keyed;
    for (const jet::NewColumn &c : declared.columns) {
        const auto has = std::ranges::find_if(there.columns, [&c](const jet::NewColumn &column) {
            return isSame(column.name, QString::fromStdString(c.name));
        });
        if (has == there.columns.end()) {
            gap.columns.push_back(c);
        } else if (has->type == ColumnType::Text && c.type == ColumnType::Text
                   && has->width < c.width) {
            gap.narrow.push_back(*has);
            gap.narrow.back().width = c.width;
        }
    }
    std::erase_if(gap.indexes, [&](const DeclaredIndex &index) {
        return std::ranges::any_of(there.indexes, [&index](const std::string &has) {
            return isSame(has, index.columns.join(u'_'));
        });
    });
    return gap;
}

void addIndex(Motor &motor, const std::string &schema, const std::string &table,
              DeclaredIndex index)
{
    try {
        Lote step(motor);
        motor.define(schema, definitionOf(table, index));
        step.commit();
    } catch (const StoreError &e) {
        if (e.number != ErrorNumber::Key || !index.unique)
            throw;
        // On purpose: existing duplicates are kept, as the clinic has worked with them so far. The
        // index is then not unique.
        index.unique = false;
        addIndex(motor, schema, table, index);
    }
}

} // namespace

const QStringList &store::databases()
{
    static const QStringList bases{u"morvane"_s, u"clientes"_s, u"finanzas"_s, u"os"_s, u"rep97"_s};
    return bases;
}

QString store::fileOf(const QString &base)
{
    return (base == "rep97"_L1 ? u"reportes/"_s : QString()) + base + ".mdb"_L1;
}

std::vector<DeclaredTable> store::parseSchema(const QString &text, const QString &file)
{
    return Reader(text, file).read();
}

std::vector<DeclaredTable> store::readSchema(const QString &base)
{
    QFile file(u":/schema/%1.txt"_s.arg(base));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(u"no declaration of %1"_s.arg(base).toStdString());
    return parseSchema(QString::fromUtf8(file.readAll()), base + ".txt"_L1);
}

void store::createTables(Motor &motor, const std::string &schema,
                         const std::vector<DeclaredTable> &tables)
{
    for (const DeclaredTable &table : tables) {
        motor.define(schema, definitionOf(table));
        for (const DeclaredIndex &index : table.indices)
            motor.define(schema, definitionOf(table.name.toStdString(), index));
    }
}

bool store::isComplete(Motor &motor, const std::string &schema,
                       const std::vector<DeclaredTable> &tables)
{
    return std::ranges::all_of(
        tables, [&](const DeclaredTable &table) { return gapOf(motor, schema, table).isNone(); });
}

void store::complete(Motor &motor, const std::string &schema,
                     const std::vector<DeclaredTable> &tables)
{
    for (const DeclaredTable &table : tables) {
        Gap gap = gapOf(motor, schema, table);
        if (gap.table.empty()) {
            motor.define(schema, definitionOf(table));
            gap.table = table.name.toStdString();
        }
        for (const auto &[kind, columns] :
             {std::pair(jet::Definition::AddColumn, &gap.columns),
              std::pair(jet::Definition::ChangeColumn, &gap.narrow)}) {
            if (columns->empty())
                continue;
            jet::Definition d;
            d.kind = kind;
            d.table = gap.table;
            d.columns = *columns;
            motor.define(schema, d);
        }
        if (gap.key)
            motor.giveKey(schema, gap.table);
        for (const DeclaredIndex &index : gap.indexes)
            addIndex(motor, schema, gap.table, index);
    }
}
