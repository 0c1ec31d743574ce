#include "store/database.h"

#include "store/database_internal.h"
#include "store/jet/text.h"

#include <algorithm>

using namespace store;

Base::Internals::Internals(Motor &m, std::string e, const Reloj &r)
    : motor(m), schema(std::move(e)), reloj(r), catalogue(m, schema)
{
}

// --- Definitions -----------------------------------------------------------------------------

FileCatalogue::FileCatalogue(Motor &motor, std::string schema)
    : m_motor(motor), m_schema(std::move(schema))
{
}

const jet::Table *FileCatalogue::find(std::string_view name) const
{
    if (!m_read) {
        for (const std::string &t : m_motor.tables(m_schema))
            m_names.emplace(jet::fold(t), t);
        m_read = true;
    }
    const std::string folded = jet::fold(name);
    if (const auto i = m_tables.find(folded); i != m_tables.end())
        return i->second.get();
    const auto n = m_names.find(folded);
    if (n == m_names.end())
        return nullptr;
    auto table = std::make_unique<jet::Table>();
    table->name = n->second;
    for (const DeclaredColumn &c : m_motor.allColumns(m_schema, n->second)) {
        jet::Column column = readDeclaredType(c.name, c.type);
        if (c.identity)
            column.type = ColumnType::Counter;
        table->columns.push_back(std::move(column));
    }
    return m_tables.emplace(folded, std::move(table)).first->second.get();
}

void FileCatalogue::forget()
{
    m_read = false;
    m_names.clear();
    m_tables.clear();
}

// --- Compiled statements ---------------------------------------------------------------------

Compiled &Base::Internals::compile(std::string_view sql, ByText<std::unique_ptr<Compiled>> &cache,
                                   bool keys)
{
    if (const auto i = cache.find(sql); i != cache.end())
        return *i->second;
    auto c = std::make_unique<Compiled>();
    c->translation = jet::translate(sql, catalogue, schema, keys);
    if (!c->translation.sql.empty())
        c->statement = motor.prepare(c->translation.sql);
    if (!c->translation.writtenTable.empty())
        c->writes = writesOf(c->translation.writtenTable);
    for (const jet::RowsSource &f : c->translation.fuentes)
        c->reads.push_back(writesOf(f.table));
    if (c->translation.kind == jet::Translation::Define) {
        // Nothing is kept: it runs once, and forgets what the cache holds.
        return *(cache.insert_or_assign(std::string(), std::move(c)).first->second);
    }
    return *cache.emplace(std::string(sql), std::move(c)).first->second;
}

void Base::Internals::bind(Compiled &c, std::span<const Value> values) const
{
    if (int(values.size()) != c.translation.valueCount)
        throw StoreError(ErrorNumber::Parameters,
                         QStringLiteral("%1 values given, %2 expected")
                             .arg(values.size())
                             .arg(c.translation.valueCount),
                         QString::fromStdString(c.translation.sql));
    int n = 0;
    for (const jet::Parameter &p : c.translation.parameters) {
        switch (p.origin) {
        case jet::Parameter::Given:
            c.statement->bind(n, values[size_t(p.index)]);
            break;
        case jet::Parameter::Today:
            c.statement->bind(n, reloj.hoy);
            break;
        case jet::Parameter::Hour:
            c.statement->bind(n, reloj.hourOf());
            break;
        case jet::Parameter::Now:
            c.statement->bind(n, QDateTime(reloj.hoy, reloj.hourOf()));
            break;
        }
        ++n;
    }
}

int *Base::Internals::writesOf(std::string_view table)
{
    return &writes.try_emplace(jet::fold(table), 0).first->second;
}

Statement &Base::Internals::directStatement(const std::string &sql)
{
    auto &st = direct[sql];
    if (!st)
        st = motor.prepare(sql);
    return *st;
}

void Base::Internals::lookForForeignWrites()
{
    if (lastLook.isValid() && lastLook.elapsed() < IntervalMs)
        return;
    lastLook.start();
    const qint64 v = motor.version(schema);
    if (v != versionVista && versionVista != -1)
        ++foreign;
    versionVista = v;
}

// --- Base ------------------------------------------------------------------------------------

Base::Base(Motor &motor, std::string schema, const Reloj &reloj)
    : m_i(std::make_unique<Internals>(motor, std::move(schema), reloj))
{
}

Base::~Base() = default;

int Base::run(std::string_view sql, std::span<const Value> values)
{
    Compiled &c = m_i->compile(sql, m_i->changes, false);
    if (c.translation.kind == jet::Translation::Define) {
        const jet::Definition d = c.translation.definition;
        m_i->define(d);
        return 0;
    }
    if (c.translation.kind == jet::Translation::Query)
        throw StoreError(ErrorNumber::Syntax, QStringLiteral("A query cannot be executed"),
                         QString::fromUtf8(sql.data(), qsizetype(sql.size())));
    m_i->bind(c, values);
    c.statement->step();
    c.statement->reset();
    if (c.writes)
        ++*c.writes;
    return m_i->motor.changedRows();
}

Value Base::readFirst(std::string_view sql, std::span<const Value> values)
{
    Compiled &c = m_i->compile(sql, m_i->withoutKeys, false);
    if (c.translation.kind != jet::Translation::Query)
        throw StoreError(ErrorNumber::Syntax, QStringLiteral("Not a query"),
                         QString::fromUtf8(sql.data(), qsizetype(sql.size())));
    m_i->bind(c, values);
    Value v;
    if (c.statement->step())
        v = c.statement->read(0, c.translation.columns.front().type);
    c.statement->reset();
    return v;
}

qint64 Base::version(std::string_view table)
{
    m_i->lookForForeignWrites();
    return m_i->foreign + m_i->motor.rollbackCount() + *m_i->writesOf(table);
}

bool Base::tableExists(std::string_view table) const
{
    return m_i->catalogue.find(table) != nullptr;
}

bool Base::columnExists(std::string_view table, std::string_view column) const
{
    const jet::Table *t = m_i->catalogue.find(table);
    return t && std::ranges::any_of(t->columns, [folded = jet::fold(column)](const auto &c) {
               return jet::fold(c.name) == folded;
           });
}

int Base::widthOf(std::string_view table, std::string_view column) const
{
    const jet::Table *t = m_i->catalogue.find(table);
    if (!t)
        return 0;
    for (const jet::Column &c : t->columns)
        if (jet::compareText(c.name, column) == 0)
            return c.width;
    return 0;
}

QString Base::trimmed(std::string_view table, std::string_view column, const QString &text) const
{
    const int width = widthOf(table, column);
    return width > 0 ? text.left(width) : text;
}

const jet::Catalogue &Base::catalogue() const { return m_i->catalogue; }
const std::string &Base::Schema() const { return m_i->schema; }
Motor &Base::engine() const { return m_i->motor; }

void Base::forget()
{
    m_i->changes.clear();
    m_i->withKeys.clear();
    m_i->withoutKeys.clear();
    m_i->direct.clear();
    m_i->catalogue.forget();
}
