#include "store/database.h"

#include "store/column_value.h"
#include "store/database_internal.h"
#include "store/definition.h"
#include "store/jet/text.h"

#include <algorithm>

using namespace store;

Base::Internals::Internals(Motor &m, std::string e, const Reloj &r)
    : motor(m), schema(std::move(e)), reloj(r), catalogue(m, schema)
{
}

// --- Definitions -----------------------------------------------------------------------------

EngineCatalogue::EngineCatalogue(Motor &motor, std::string schema)
    : m_motor(motor), m_schema(std::move(schema))
{
}

const jet::Table *EngineCatalogue::find(std::string_view name) const
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
    TableDescription d = m_motor.describe(m_schema, n->second);
    auto table = std::make_unique<jet::Table>();
    table->name = std::move(d.name);
    table->key = std::move(d.key);
    table->columns.assign(d.columns.begin(), d.columns.end());
    return m_tables.emplace(folded, std::move(table)).first->second.get();
}

void EngineCatalogue::forget()
{
    m_read = false;
    m_names.clear();
    m_tables.clear();
}

// --- Compiled statements ---------------------------------------------------------------------

std::unique_ptr<Compiled> Base::Internals::translate(std::string_view sql, bool keys)
{
    auto c = std::make_unique<Compiled>();
    c->translation = motor.translate(sql, catalogue, schema, keys);
    if (!c->translation.sql.empty())
        c->statement = motor.prepare(c->translation.sql);
    if (!c->translation.writtenTable.empty())
        c->writes = writesOf(c->translation.writtenTable);
    for (const std::string &table : c->translation.tables)
        c->reads.push_back(writesOf(table));
    return c;
}

Compiled &Base::Internals::compile(std::string_view sql, ByText<std::unique_ptr<Compiled>> &cache,
                                   bool keys)
{
    lookForForeignWrites();
    if (const auto i = cache.find(sql); i != cache.end())
        return *i->second;
    auto c = translate(sql, keys);
    return *cache.emplace(std::string(sql), std::move(c)).first->second;
}

Compiled &Base::Internals::query(std::string_view sql, bool keys)
{
    Compiled &c = compile(sql, keys ? withKeys : withoutKeys, keys);
    if (c.translation.kind != jet::Translation::Query)
        throw StoreError(ErrorNumber::Syntax, QStringLiteral("Not a query"),
                         QString::fromUtf8(sql.data(), qsizetype(sql.size())));
    return c;
}

void Base::Internals::bind(const jet::Translation &t, Statement &statement,
                           std::span<const Value> values) const
{
    if (int(values.size()) != t.valueCount)
        throw StoreError(
            ErrorNumber::Parameters,
            QStringLiteral("%1 values given, %2 expected").arg(values.size()).arg(t.valueCount),
            QString::fromStdString(t.sql));
    int n = 0;
    for (const jet::Parameter &p : t.parameters) {
        switch (p.origin) {
        case jet::Parameter::Given: {
            const Value &v = values[size_t(p.index)];
            if (!p.target.name.empty())
                statement.bind(n, toColumn(v, p.target));
            else if (p.compared != ColumnType::None)
                statement.bind(n, toMoment(v, p.compared));
            else
                statement.bind(n, v);
            break;
        }
        case jet::Parameter::Today:
            statement.bind(n, reloj.hoy);
            break;
        case jet::Parameter::Hour:
            statement.bind(n, reloj.hourOf());
            break;
        case jet::Parameter::Now:
            statement.bind(n, QDateTime(reloj.hoy, reloj.hourOf()));
            break;
        }
        ++n;
    }
}

TableMarks *Base::Internals::writesOf(std::string_view table) { return &writes[jet::fold(table)]; }

Statement &Base::Internals::directStatement(const std::string &sql)
{
    auto &st = direct[sql];
    if (!st)
        st = motor.prepare(sql);
    return *st;
}

void Base::Internals::lookForForeignWrites()
{
    // What was rolled back may have been a definition.
    const qint64 undone = motor.rollbackCount();
    if (undone == undoneSeen && lastLook.isValid() && lastLook.elapsed() < IntervalMs)
        return;
    undoneSeen = undone;
    look();
}

void Base::Internals::look()
{
    lastLook.start();
    const qint64 v = motor.version(schema);
    if (v != versionVista && versionVista != -1)
        ++foreign;
    versionVista = v;
    const qint64 definitions = motor.schemaVersion(schema);
    if (definitions != schemaSeen && schemaSeen != -1) {
        ++foreignDefinitions;
        forgetDefinitions();
    }
    schemaSeen = definitions;
}

void Base::Internals::forgetDefinitions()
{
    changes.clear();
    withKeys.clear();
    withoutKeys.clear();
    direct.clear();
    ++generation;
    catalogue.forget();
}

void Base::Internals::define(const jet::Definition &d)
{
    look(); // count earlier definitions by others separately
    TableMarks &marks = *writesOf(store::define(motor, schema, catalogue, d));
    ++marks.writes;
    ++marks.definitions;
    forgetDefinitions();
    schemaSeen = motor.schemaVersion(schema);
}

void Base::Internals::close()
{
    closed = true;
    forgetDefinitions();
    walks.clear();
}

// --- Base ------------------------------------------------------------------------------------

Base::Base(Motor &motor, std::string schema, const Reloj &reloj)
    : m_i(std::make_shared<Internals>(motor, std::move(schema), reloj))
{
}

Base::~Base() { m_i->close(); }

int Base::run(std::string_view sql, std::span<const Value> values)
{
    m_i->lookForForeignWrites();
    auto known = m_i->changes.find(sql);
    if (known == m_i->changes.end()) {
        auto fresh = m_i->translate(sql, false);
        if (fresh->translation.kind == jet::Translation::Define) {
            m_i->define(fresh->translation.definition);
            return 0;
        }
        if (fresh->translation.kind == jet::Translation::Query)
            throw StoreError(ErrorNumber::Syntax, QStringLiteral("A query cannot be executed"),
                             QString::fromUtf8(sql.data(), qsizetype(sql.size())));
        known = m_i->changes.emplace(std::string(sql), std::move(fresh)).first;
    }
    Compiled &c = *known->second;
    m_i->bind(c.translation, *c.statement, values);
    c.statement->step();
    c.statement->reset();
    ++c.writes->writes;
    return m_i->motor.changedRows();
}

Value Base::readFirst(std::string_view sql, std::span<const Value> values)
{
    Compiled &c = m_i->query(sql, false);
    m_i->bind(c.translation, *c.statement, values);
    Value v;
    if (c.statement->step())
        v = c.statement->read(0, c.translation.columns.front().type);
    c.statement->reset();
    return v;
}

qint64 Base::version(std::string_view table)
{
    m_i->lookForForeignWrites();
    const TableMarks &marks = *m_i->writesOf(table);
    return m_i->foreign + m_i->foreignDefinitions + m_i->motor.rollbackCount() + marks.writes;
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
