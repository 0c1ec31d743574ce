#include "store/schema.h"

#include "store/batch.h"
#include "store/database_internal.h"
#include "store/definition.h"
#include "store/engine.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <stdexcept>

using namespace store;
using namespace Qt::StringLiterals;

namespace
{

/// A word of a line. Names in brackets and literals in quotes are one word.
struct Word {
    enum Kind { Loose, Name, Literal } kind = Loose;
    QString text; // without the brackets, with the quotes
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

        jet::Column c = readType(words[1].text);
        c.name = name.toStdString();
        const QString defaultValue = withDefault ? readLiteral(words[3]) : QString();
        if (c.type == ColumnType::YesNo && !withDefault)
            fail(u"Yes/No column %1 without a default: it would hold Null"_s.arg(name));
        table.columns.push_back(std::move(c));
        table.byDefault.append(defaultValue);
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
                const jet::Column *c = findColumn(p.text);
                if (!c)
                    fail(u"index on %1, which is no column"_s.arg(p.text));
                index.columns.append(QString::fromStdString(c->name));
            }
        }
        if (index.columns.isEmpty())
            fail(u"index without columns"_s);
        m_tables.back().indices.push_back(std::move(index));
    }

    const jet::Column *findColumn(const QString &name) const
    {
        for (const jet::Column &c : m_tables.back().columns)
            if (QString::fromStdString(c.name).compare(name, Qt::CaseInsensitive) == 0)
                return &c;
        return nullptr;
    }

    jet::Column readType(const QString &text) const
    {
        jet::Column c = readDeclaredType({}, text.toStdString());
        if (text == "COUNTER"_L1)
            c.type = ColumnType::Counter;
        else if (declaredType(c) != text.toStdString())
            fail(u"no type: %1"_s.arg(text));
        return c;
    }

    QString readLiteral(const Word &p) const
    {
        static const QRegularExpression number(u"^-?\\d+(\\.\\d+)?$"_s);
        if (p.kind == Word::Literal || (p.kind == Word::Loose && number.match(p.text).hasMatch()))
            return p.text;
        fail(u"no number and no text in quotes: %1"_s.arg(p.text));
    }

    QStringList m_lines;
    QString m_file;
    int m_number = 0;
    std::vector<DeclaredTable> m_tables;
};

QString quote(const QString &name) { return u'"' + QString(name).replace(u'"', "\"\""_L1) + u'"'; }

QString declareColumn(const jet::Column &c, const QString &defaultValue)
{
    const QString name = quote(QString::fromStdString(c.name));
    QString sql = name + u' ' + QString::fromStdString(declaredType(c));
    if (c.type == ColumnType::Counter)
        return sql + " PRIMARY KEY AUTOINCREMENT"_L1;
    if (!defaultValue.isEmpty())
        sql += " DEFAULT "_L1 + defaultValue;
    return sql;
}

QString indexName(const DeclaredTable &table, const DeclaredIndex &index)
{
    return table.name + u'_' + index.columns.join(u'_');
}

QString declareIndex(const std::string &schema, const DeclaredTable &table,
                     const DeclaredIndex &index)
{
    // Text goes in by the engine's own rule for letter case, not by the dialect's: a file with
    // a rule that only this program knows could not be written by any other.
    QStringList columns;
    for (const QString &name : index.columns) {
        const auto c = std::ranges::find(table.columns, name.toStdString(), &jet::Column::name);
        const bool text = c->type == ColumnType::Text || c->type == ColumnType::Memo;
        columns.append(quote(name) + (text ? " COLLATE NOCASE"_L1 : ""_L1));
    }
    const QString name = indexName(table, index);
    QString sql = u"CREATE %1INDEX %2.%3 ON %4 (%5)"_s.arg(
        index.unique ? u"UNIQUE "_s : QString(), quote(QString::fromStdString(schema)), quote(name),
        quote(table.name), columns.join(", "_L1));
    if (!index.onlyWhere.isEmpty())
        sql += u" WHERE %1 = %2"_s.arg(quote(index.columns.front()), index.onlyWhere);
    return sql;
}

void createTable(Motor &motor, const std::string &schema, const DeclaredTable &table)
{
    QStringList columns;
    for (size_t i = 0; i < table.columns.size(); ++i)
        columns.append(declareColumn(table.columns[i], table.byDefault[qsizetype(i)]));
    if (std::ranges::find(table.columns, ColumnType::Counter, &jet::Column::type)
        == table.columns.end())
        columns.append(QString::fromStdString(rowKeyDeclaration()));
    const QString sql = u"CREATE TABLE %1.%2 (%3)"_s.arg(quote(QString::fromStdString(schema)),
                                                         quote(table.name), columns.join(", "_L1));
    motor.run(sql.toStdString());
}

bool isSame(const std::string &one, const QString &other)
{
    return QString::fromStdString(one).compare(other, Qt::CaseInsensitive) == 0;
}

/// What a database lacks of one declared table.
struct Gap {
    bool table = false;
    bool key = false; // of the rows
    std::vector<size_t> columns;
    std::vector<const DeclaredIndex *> indices;

    bool isNone() const { return !table && !key && columns.empty() && indices.empty(); }
};

Gap gapOf(Motor &motor, const std::string &schema, const DeclaredTable &table)
{
    Gap gap;
    for (const DeclaredIndex &index : table.indices)
        gap.indices.push_back(&index);
    // In the file's own letter case, which the engine's look-ups by name go by.
    const auto names = motor.tables(schema);
    const auto name = std::ranges::find_if(
        names, [&table](const std::string &n) { return isSame(n, table.name); });
    gap.table = name == names.end();
    if (gap.table)
        return gap;
    const auto columns = motor.allColumns(schema, *name);
    gap.key = std::ranges::none_of(columns, &DeclaredColumn::identity);
    for (size_t i = 0; i < table.columns.size(); ++i) {
        const QString wanted = QString::fromStdString(table.columns[i].name);
        if (std::ranges::none_of(columns,
                                 [&wanted](const auto &c) { return isSame(c.name, wanted); }))
            gap.columns.push_back(i);
    }
    const auto indices = motor.indices(schema, *name);
    std::erase_if(gap.indices, [&](const DeclaredIndex *index) {
        const QString called = u" INDEX "_s + quote(indexName(table, *index)) + u' ';
        return std::ranges::any_of(indices, [&called](const std::string &sql) {
            return QString::fromStdString(sql).contains(called, Qt::CaseInsensitive);
        });
    });
    return gap;
}

void addColumn(Motor &motor, const std::string &schema, const DeclaredTable &table, size_t column)
{
    const jet::Column &c = table.columns[column];
    // A counter numbers the rows that are there, which the definitions know how to do.
    if (c.type == ColumnType::Counter) {
        const Reloj clock;
        Base(motor, schema, clock)
            .Execute("ALTER TABLE [" + table.name.toStdString() + "] ADD COLUMN [" + c.name
                     + "] COUNTER");
        return;
    }
    const QString sql = u"ALTER TABLE %1.%2 ADD COLUMN %3"_s.arg(
        quote(QString::fromStdString(schema)), quote(table.name),
        declareColumn(c, table.byDefault[qsizetype(column)]));
    motor.run(sql.toStdString());
}

void addIndex(Motor &motor, const std::string &schema, const DeclaredTable &table,
              DeclaredIndex index)
{
    const auto add = [&] {
        Lote step(motor);
        motor.run(declareIndex(schema, table, index).toStdString());
        step.commit();
    };
    try {
        add();
    } catch (const StoreError &e) {
        if (e.number != ErrorNumber::Key)
            throw;
        // Rows that stand twice already stay; the clinic has worked with them until now.
        index.unique = false;
        add();
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
        createTable(motor, schema, table);
        for (const DeclaredIndex &index : table.indices)
            motor.run(declareIndex(schema, table, index).toStdString());
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
        const Gap gap = gapOf(motor, schema, table);
        if (gap.table)
            createTable(motor, schema, table);
        for (const size_t column : gap.columns)
            addColumn(motor, schema, table, column);
        if (gap.key)
            giveRowKey(motor, schema, table.name.toStdString());
        for (const DeclaredIndex *index : gap.indices)
            addIndex(motor, schema, table, *index);
    }
}
