#include "support/server_engine.h"

#include <algorithm>
#include <random>
#include <stdexcept>
#include <unordered_set>

using namespace store;

namespace
{

// Whether the text orders its rows itself, and not only those of a query within it.
bool isOrdered(const std::string &sql)
{
    int depth = 0;
    for (size_t i = 0; i < sql.size(); ++i) {
        const char c = sql[i];
        if (c == '\'' || c == '"')
            i = std::min(sql.find(c, i + 1), sql.size() - 1);
        else if (c == '(' || c == ')')
            depth += c == '(' ? 1 : -1;
        else if (depth == 0 && sql.compare(i, 9, "ORDER BY ") == 0)
            return true;
    }
    return false;
}

/// What a failure has broken, shared by the engine with its statements.
struct Broken {
    Motor &engine;
    std::mt19937 chance{20260311};
    int parts = 0; // open ones
    int at = -1;   // so many were open when a statement failed; -1 when all is well

    void require() const
    {
        if (at >= 0)
            throw StoreError(ErrorNumber::Internals,
                             QStringLiteral("The transaction is broken; it must be taken back"));
    }
    template <typename Work>
    auto run(Work &&work)
    {
        require();
        try {
            return work();
        } catch (const StoreError &) {
            if (engine.inTransaction())
                at = parts;
            throw;
        }
    }
};

class ServerStatement final : public Statement
{
public:
    ServerStatement(std::shared_ptr<Broken> broken, std::unique_ptr<Statement> st,
                    const std::string &sql)
        : m_broken(std::move(broken)),
          m_st(std::move(st)),
          m_shuffled(sql.starts_with("SELECT") && !isOrdered(sql))
    {
    }

    void bind(int parameter, const Value &value) override { m_st->bind(parameter, value); }
    int allColumns() const override { return m_st->allColumns(); }

    bool step() override
    {
        if (!m_shuffled)
            return m_broken->run([this] { return m_st->step(); });
        if (!m_fetched)
            fetch();
        return ++m_row < int(m_rows.size());
    }

    void reset() noexcept override
    {
        m_st->reset();
        m_fetched = false;
        m_rows.clear();
        m_row = -1;
    }

    Kind kindOf(int column) const override
    {
        return m_shuffled ? cell(column).kind : m_st->kindOf(column);
    }
    qint64 whole(int column) const override
    {
        return m_shuffled ? cell(column).whole : m_st->whole(column);
    }
    double floating(int column) const override
    {
        return m_shuffled ? cell(column).floating : m_st->floating(column);
    }
    std::string_view text(int column) const override
    {
        return m_shuffled ? std::string_view(cell(column).text) : m_st->text(column);
    }

private:
    struct Cell {
        Kind kind = Kind::Null;
        qint64 whole = 0;
        double floating = 0;
        std::string text;
    };

    const Cell &cell(int column) const { return m_rows[size_t(m_row)][size_t(column)]; }

    void fetch()
    {
        while (m_broken->run([this] { return m_st->step(); })) {
            auto &row = m_rows.emplace_back(size_t(m_st->allColumns()));
            for (int i = 0; i < int(row.size()); ++i)
                row[size_t(i)] = {m_st->kindOf(i), m_st->whole(i), m_st->floating(i),
                                  std::string(m_st->text(i))};
        }
        std::ranges::shuffle(m_rows, m_broken->chance);
        m_fetched = true;
    }

    std::shared_ptr<Broken> m_broken;
    std::unique_ptr<Statement> m_st;
    bool m_shuffled;
    bool m_fetched = false;
    std::vector<std::vector<Cell>> m_rows;
    int m_row = -1;
};

class ServerEngine final : public Motor
{
public:
    explicit ServerEngine(const QString &folder)
        : m_engine(createFileEngine(folder)), m_broken(new Broken{.engine = *m_engine})
    {
    }

    bool exists(const std::string &schema) const override { return m_engine->exists(schema); }
    void create(const std::string &schema) override { m_engine->create(schema); }
    void open(const std::string &schema) override { m_engine->open(schema); }
    void openInMemory(const std::string &schema) override { m_engine->openInMemory(schema); }
    void closeAll() override { m_engine->closeAll(); }

    jet::Translation translate(std::string_view sql, const jet::Catalogue &catalogue,
                               const std::string &schema, bool withKeys) override
    {
        jet::Translation t = m_engine->translate(sql, catalogue, schema, withKeys);
        m_texts.insert(t.sql);
        return t;
    }
    std::string rowText(const std::string &schema, const RowStatement &s) const override
    {
        return *m_texts.insert(m_engine->rowText(schema, s)).first;
    }
    std::unique_ptr<Statement> prepare(const std::string &text) override
    {
        if (!m_texts.contains(text))
            throw std::logic_error("A statement of nobody's: " + text);
        return m_broken->run([&]() -> std::unique_ptr<Statement> {
            return std::make_unique<ServerStatement>(m_broken, m_engine->prepare(text), text);
        });
    }
    int changedRows() const override { return m_engine->changedRows(); }
    qint64 lastKey() const override { return m_engine->lastKey(); }

    void begin() override { m_engine->begin(); }
    void commit() override
    {
        m_broken->require();
        m_engine->commit();
    }
    void rollBack() noexcept override
    {
        m_broken->at = -1;
        m_broken->parts = 0;
        m_engine->rollBack();
    }
    bool inTransaction() const override { return m_engine->inTransaction(); }
    qint64 transaction() const override { return m_engine->transaction(); }

    void beginPart() override
    {
        m_broken->require();
        ++m_broken->parts;
        m_engine->beginPart();
    }
    void commitPart() override
    {
        m_broken->require();
        --m_broken->parts;
        m_engine->commitPart();
    }
    void undoPart() noexcept override
    {
        if (m_broken->at >= m_broken->parts)
            m_broken->at = -1;
        --m_broken->parts;
        m_engine->undoPart();
    }
    void countParts() override {}
    bool isLost() const override { return false; }
    qint64 rollbackCount() const override { return m_engine->rollbackCount(); }

    void setPatience(int ms) override { m_engine->setPatience(ms); }
    void whileWaiting(std::function<void(int)> tell) override
    {
        m_engine->whileWaiting(std::move(tell));
    }
    qint64 version(const std::string &schema) override { return m_engine->version(schema); }
    qint64 schemaVersion(const std::string &schema) override
    {
        return m_engine->schemaVersion(schema);
    }
    std::unique_ptr<Lock> lock(const QString &name, int seconds,
                               const std::function<void(const QString &)> &meanwhile,
                               Lock::Mode mode) override
    {
        return m_engine->lock(name, seconds, meanwhile, mode);
    }
    QString lockHolder(const QString &name) const override { return m_engine->lockHolder(name); }

    std::vector<std::string> tables(const std::string &schema) override
    {
        return m_engine->tables(schema);
    }
    TableDescription describe(const std::string &schema, const std::string &table) override
    {
        return m_engine->describe(schema, table);
    }
    void define(const std::string &schema, const jet::Definition &d) override
    {
        m_broken->run([&] { m_engine->define(schema, d); });
    }
    void giveKey(const std::string &schema, const std::string &table) override
    {
        m_broken->run([&] { m_engine->giveKey(schema, table); });
    }

    void copy(const std::vector<std::string> &schemas, const QString &folder) override
    {
        m_engine->copy(schemas, folder);
    }
    std::string check(const std::string &schema) override { return m_engine->check(schema); }
    FileFormat formatOf(const std::string &schema) const override
    {
        return m_engine->formatOf(schema);
    }
    std::vector<Salvage> repair(const std::vector<std::string> &schemas,
                                const QString &mark) override
    {
        return m_engine->repair(schemas, mark);
    }

private:
    std::unique_ptr<Motor> m_engine;
    std::shared_ptr<Broken> m_broken;
    mutable std::unordered_set<std::string> m_texts; // that were given out
};

} // namespace

bool onServer() { return qEnvironmentVariableIsSet("KELVARA_TEST_SERVER"); }

std::unique_ptr<Motor> createServerEngine(const QString &place)
{
    return std::make_unique<ServerEngine>(place);
}
