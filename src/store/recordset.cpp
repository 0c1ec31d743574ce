#include "store/recordset.h"

#include "store/batch.h"
#include "store/column_value.h"
#include "store/database_internal.h"
#include "store/jet/text.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

using namespace store;

namespace
{

// A cell as the engine returned it. Text is stored outside, at a position with a length in bytes.
struct Cell {
    union {
        qint64 whole;
        double floating;
        size_t position;
    };
    quint32 length = 0;
    Statement::Kind kind = Statement::Kind::Null;

    Cell() : whole(0) {}
};

// Maps the values of a column to the first row with each. Small integers, which most ids are, index
// a vector.
struct Index {
    std::vector<int> dense;
    std::unordered_map<qint64, int> whole;
    std::unordered_map<std::string, int> texts;
    static constexpr qint64 HighestDense = 1 << 20;
};

// Compares names regardless of letter case; fast for ASCII, which they nearly always are.
bool sameName(std::string_view a, std::string_view b)
{
    if (a.size() == b.size()) {
        size_t i = 0;
        for (; i < a.size(); ++i) {
            const auto x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
            if (x == y)
                continue;
            if (x >= 0x80 || y >= 0x80)
                break;
            if ((x | 0x20) != (y | 0x20) || (x | 0x20) < 'a' || (x | 0x20) > 'z')
                return false;
        }
        if (i == a.size())
            return true;
    } else if (std::ranges::none_of(a, [](char c) { return c & 0x80; })) {
        return false;
    }
    return jet::compareText(a, b) == 0;
}

// Rows in memory, cell by cell, with the row keys of the tables they come from.
struct HeldRows {
    std::vector<Cell> cells;
    std::string texts;
    std::vector<qint64> keys;
    int rows = 0;
    size_t width = 0;
    size_t fuentes = 0;
    qint64 seen = -1;       // writeCount() when they were read
    qint64 transaction = 0; // the one in which they were read

    void clear()
    {
        cells.clear();
        texts.clear();
        keys.clear();
        rows = 0;
    }

    void take(const Statement &st, std::span<const jet::RowsSource> sources)
    {
        const size_t first = cells.size();
        cells.resize(first + width);
        for (size_t i = 0; i < width; ++i)
            set(cells[first + i], st, int(i));
        // A row that an outer join left empty has no key.
        for (const jet::RowsSource &f : sources)
            keys.push_back(st.kindOf(f.keyColumn) == Statement::Kind::Null ? -1
                                                                           : st.whole(f.keyColumn));
        ++rows;
    }

    void set(Cell &cell, const Statement &st, int i)
    {
        cell.kind = st.kindOf(i);
        switch (cell.kind) {
        case Statement::Kind::Whole:
            cell.whole = st.whole(i);
            break;
        case Statement::Kind::Floating:
            cell.floating = st.floating(i);
            break;
        case Statement::Kind::Text:
            keep(cell, st.text(i));
            break;
        case Statement::Kind::Null:
            break;
        }
    }

    bool holds(const Cell &cell, const Statement &st, int i) const
    {
        if (cell.kind != st.kindOf(i))
            return false;
        switch (cell.kind) {
        case Statement::Kind::Whole:
            return cell.whole == st.whole(i);
        case Statement::Kind::Floating:
            return cell.floating == st.floating(i);
        case Statement::Kind::Text:
            return text(cell) == st.text(i);
        case Statement::Kind::Null:
            break;
        }
        return true;
    }

    void keep(Cell &cell, std::string_view textual)
    {
        cell.kind = Statement::Kind::Text;
        cell.position = texts.size();
        cell.length = quint32(textual.size());
        texts.append(textual);
    }

    std::string_view text(const Cell &c) const
    {
        return std::string_view(texts).substr(c.position, c.length);
    }

    const Cell &at(int row, int column) const
    {
        return cells[size_t(row) * width + size_t(column)];
    }
    Cell &at(int row, int column) { return cells[size_t(row) * width + size_t(column)]; }

    qint64 keyName(int row, size_t source) const { return keys[size_t(row) * fuentes + source]; }

    // ColumnType::None gives the cell as the table holds it.
    Value read(int row, int column, ColumnType type) const
    {
        const Cell &c = at(row, column);
        const bool textual = c.kind == Statement::Kind::Text;
        return cellValue(c.kind, textual ? 0 : c.whole,
                         c.kind == Statement::Kind::Floating ? c.floating : 0.0,
                         textual ? text(c) : std::string_view(), type);
    }

    void write(int row, int column, const Value &v)
    {
        Cell &c = at(row, column);
        if (v.isNull()) {
            c.kind = Statement::Kind::Null;
        } else if (const auto *n = v.is<qint64>()) {
            c.kind = Statement::Kind::Whole;
            c.whole = *n;
        } else if (const auto *b = v.is<bool>()) {
            c.kind = Statement::Kind::Whole;
            c.whole = *b ? -1 : 0;
        } else if (v.is<double>() || v.is<Moneda>()) {
            c.kind = Statement::Kind::Floating;
            c.floating = v.toDouble();
        } else {
            keep(c, v.toText().toStdString());
        }
    }
};

// Resets a statement at the end of the scope.
struct Resetting {
    Statement &statement;
    ~Resetting() { statement.reset(); }
};

[[noreturn]] void noRow(const QString &why = QStringLiteral("No current record"))
{
    throw StoreError(ErrorNumber::NoCurrentRecord, why);
}

} // namespace

struct Recordset::Data {
    std::shared_ptr<Base::Internals> base;
    std::string sql;
    std::vector<Value> bound;
    int maxRows = 0;
    bool updatable = false;
    bool list = false; // reread after its tables were written
    bool open = true;
    bool loaded = false;

    std::vector<jet::OutputColumn> outputs;
    std::vector<jet::RowsSource> fuentes;
    std::vector<TableMarks *> marks; // of the sources
    std::vector<TableMarks *> reads; // of all tables read
    qint64 definitionsSeen = 0;

    // How to access the row of a source by its key, and which output columns come from it.
    struct SourceRows {
        std::string table;
        std::string key;
        std::string find; // SQL that reads those columns
        std::vector<int> columns;

        RowStatement statement(RowStatement::Kind kind) const
        {
            return {.kind = kind, .table = table, .key = key};
        }
    };
    std::vector<SourceRows> sourceRows;

    HeldRows rows;
    std::vector<char> deletedRows; // flag per row; may be shorter than the rows
    int liveRows = 0;
    int position = 0;
    bool withoutRow = false; // after Delete, or when the row is gone
    bool between = false;    // the row is gone: the place is after `position`, before the next row
    bool noMatch = false;
    qint64 added = 0;
    int unread = 0; // number of rows added here at the end and not read yet
    // Rows written here, with rollbackCount() at that time: after a rollback they are read again.
    std::unordered_map<int, qint64> written;

    // The row read last for an edit, and the transaction in which it was read.
    int freshRow = -1;
    qint64 freshIn = 0;

    // A list with a key answers its first look-ups by queries for single rows, as reading a full
    // list costs as much as about ten thousand of them. The current row is then held in
    // `lookedUpRow` (singleOne is set), and the result of lookUp in `found`.
    std::string keyName;
    int keyColumn = -1;
    std::string oneSql;
    HeldRows lookedUpRow;
    HeldRows found;
    bool singleOne = false;
    int queries = 0;
    static constexpr int QueriesBeforeReading = 5000;

    // A forward-only recordset has its own statement and holds its row in `lookedUpRow`.
    Statement *walk = nullptr;
    bool ended = false;

    enum class Mode { Reading, Editing, Addition } mode = Mode::Reading;
    struct PutValue {
        int column = 0;
        Value value;
        Value before; // in the table when Edit read the row
    };
    std::vector<PutValue> puts;

    // The statement of the last write, as a walk usually changes the same columns of each row.
    struct LastWrite {
        Statement *statement = nullptr;
        int generation = 0;
        size_t source = 0;
        std::vector<int> changed;
        std::vector<int> put;
    };
    LastWrite lastWrite;

    std::unordered_map<int, Index> indices;
    ByText<std::shared_ptr<const jet::Criterion>> criteria;

    ~Data() { endWalk(); }

    void endWalk()
    {
        if (walk && !base->closed)
            base->walks.remove_if([this](const auto &w) { return w.get() == walk; });
        walk = nullptr;
    }

    // --- Columns and tables of the statement ---

    void compile()
    {
        const Compiled &c = base->query(sql, updatable);
        std::vector<std::string> names;
        for (const PutValue &p : puts)
            names.push_back(outputs[size_t(p.column)].name);
        outputs = c.translation.columns;
        fuentes = c.translation.fuentes;
        reads = c.reads;
        definitionsSeen = definitions();
        criteria.clear();
        indices.clear();
        lookedUpRow = found = HeldRows();
        marks.clear();
        sourceRows.clear();
        for (const jet::RowsSource &f : fuentes)
            addSource(f);
        if (!keyName.empty()) {
            keyColumn = existing(keyName);
            oneSql =
                "select top 1 * from [" + fuentes.front().table + "] where [" + keyName + "] = ?";
        }
        loaded = singleOne = false;
        try {
            for (size_t i = 0; i < names.size(); ++i)
                puts[i].column = existing(names[i]);
        } catch (...) {
            puts.clear();
            mode = Mode::Reading;
            throw;
        }
    }

    void addSource(const jet::RowsSource &f)
    {
        marks.push_back(base->writesOf(f.table));
        const jet::Table *table = base->catalogue.find(f.table);
        SourceRows &rowsOf = sourceRows.emplace_back(SourceRows{table->name, table->key, {}, {}});
        RowStatement find = rowsOf.statement(RowStatement::Find);
        for (size_t i = 0; i < outputs.size(); ++i) {
            if (outputs[i].column.empty() || !sameName(outputs[i].table, f.alias))
                continue;
            rowsOf.columns.push_back(int(i));
            find.columns.push_back(columnOf(int(i)));
        }
        rowsOf.find = base->motor.rowText(base->schema, find);
    }

    RowColumn columnOf(int output) const
    {
        const jet::OutputColumn &c = outputs[size_t(output)];
        return {c.column, c.type};
    }

    qint64 definitions() const
    {
        qint64 n = base->foreignDefinitions;
        for (const TableMarks *m : reads)
            n += m->definitions;
        return n;
    }

    void requireOpen() const
    {
        if (!open)
            noRow(QStringLiteral("The recordset is closed"));
        if (base->closed)
            noRow(QStringLiteral("The database was closed"));
    }

    // Compiles again and rereads the rows if one of the tables was redefined.
    void checkDefinition()
    {
        requireOpen();
        if (definitions() == definitionsSeen || walk)
            return;
        const qint64 keyBefore = currentKey();
        const bool wasHeld = loaded || singleOne;
        compile();
        if (wasHeld)
            readRows(keyBefore);
    }

    // --- Rows ---

    qint64 writeCount() const
    {
        qint64 n = base->foreign + base->motor.rollbackCount();
        for (const TableMarks *m : reads)
            n += m->writes;
        return n;
    }

    const HeldRows &held() const { return singleOne || walk ? lookedUpRow : rows; }
    HeldRows &held() { return singleOne || walk ? lookedUpRow : rows; }
    int rowCount() const { return held().rows; }

    // Whether rows in memory are still those of the tables. During an edit they are kept as they
    // are.
    bool isCurrent(const HeldRows &which)
    {
        requireOpen();
        if (!list || mode != Mode::Reading)
            return true;
        base->lookForForeignWrites();
        return which.seen == writeCount();
    }

    bool isUpToDate() { return loaded && isCurrent(rows); }

    void refresh()
    {
        checkDefinition();
        if (walk)
            throw StoreError(ErrorNumber::Internals,
                             QStringLiteral("The recordset only goes forward"));
        if (!isUpToDate())
            readRows(currentKey());
        else if (unread > 0)
            readAdded();
    }

    void readRows(qint64 key)
    {
        const std::vector<qint64> before = held().keys;
        HeldRows fresh;
        fresh.cells.reserve(rows.cells.size());
        fresh.texts.reserve(rows.texts.size());
        load(fresh, sql, bound);
        rows = std::move(fresh);
        singleOne = false;
        loaded = true;
        queries = 0;
        deletedRows.clear();
        indices.clear();
        written.clear();
        unread = 0;
        freshRow = -1;
        liveRows = rows.rows;
        goBackTo(key, before);
    }

    // Reads the rows of a query into memory.
    void load(HeldRows &into, std::string_view query, std::span<const Value> dados)
    {
        Compiled &c = base->query(query, updatable);
        base->bind(c.translation, *c.statement, dados);
        const Resetting statement{*c.statement};
        into.width = outputs.size();
        into.fuentes = fuentes.size();
        bool any = c.statement->step();
        into.seen = writeCount();
        into.transaction = base->motor.transaction();
        for (; any; any = c.statement->step()) {
            if (maxRows > 0 && into.rows == maxRows)
                throw StoreError(ErrorNumber::OutOfMemory,
                                 QStringLiteral("The query gives more than %1 rows").arg(maxRows));
            into.take(*c.statement, fuentes);
        }
    }

    // Key by which to find the current row again, -1 if there is none.
    qint64 currentKey() const
    {
        const HeldRows &r = held();
        return r.fuentes != 1 || isOutOfRange() || withoutRow ? -1 : r.keys[size_t(position)];
    }

    // Moves the position to its row's place among the new rows. If the row is gone, the position is
    // before the next of the old rows that still exists.
    void goBackTo(qint64 key, const std::vector<qint64> &before)
    {
        const size_t was = size_t(std::max(position, 0));
        position = std::min(position, rows.rows);
        withoutRow = between = false;
        if (key == -1 || currentKey() == key)
            return;
        std::unordered_map<qint64, int> places;
        for (int i = rows.rows - 1; i >= 0; --i)
            places[rows.keys[size_t(i)]] = i;
        if (const auto i = places.find(key); i != places.end()) {
            position = i->second;
            return;
        }
        int next = rows.rows;
        for (size_t i = was + 1; i < before.size() && next == rows.rows; ++i)
            if (const auto place = places.find(before[i]); place != places.end())
                next = place->second;
        position = next - 1;
        withoutRow = between = true;
    }

    // Reads the cells of a row again by its keys. @return false when the row is gone
    bool refresh(HeldRows &r, int row)
    {
        for (size_t f = 0; f < fuentes.size(); ++f) {
            if (r.keyName(row, f) == -1)
                continue;
            Statement &st = base->directStatement(sourceRows[f].find);
            const Resetting statement{st};
            st.bind(0, r.keyName(row, f));
            if (!st.step())
                return false;
            const std::vector<int> &columns = sourceRows[f].columns;
            for (size_t i = 0; i < columns.size(); ++i) {
                Cell &cell = r.at(row, columns[i]);
                if (r.holds(cell, st, int(i)))
                    continue;
                r.set(cell, st, int(i));
                indices.erase(columns[i]);
            }
        }
        return true;
    }

    // Reads the current row again, except if that was done in this transaction: under the write
    // lock it cannot have changed.
    void readForEdit()
    {
        const qint64 now = base->motor.transaction();
        const bool known =
            now != 0 && held().seen == writeCount()
            && (held().transaction == now || (freshIn == now && freshRow == position));
        if (known)
            return;
        if (!refresh(held(), position))
            noRow(QStringLiteral("The record was deleted meanwhile"));
        freshIn = now;
        freshRow = position;
    }

    Value read(int row, int index) const
    {
        return held().read(row, index, outputs[size_t(index)].type);
    }

    bool deleted(int row) const
    {
        return !deletedRows.empty() && size_t(row) < deletedRows.size() && deletedRows[size_t(row)];
    }
    bool isOutOfRange() const { return position < 0 || position >= rowCount(); }

    void requireRow()
    {
        checkDefinition();
        if (walk) {
            if (lookedUpRow.rows == 0)
                noRow();
            return;
        }
        if (!singleOne)
            refresh();
        else if (!isCurrent(lookedUpRow) && !refreshOne())
            readRows(currentKey());
        if (isOutOfRange() || withoutRow)
            noRow();
        if (written.empty())
            return;
        const auto w = written.find(position);
        if (w == written.end() || w->second == base->motor.rollbackCount())
            return;
        written.erase(w);
        if (!refresh(rows, position))
            noRow();
    }

    bool refreshOne()
    {
        const qint64 now = writeCount();
        if (!refresh(lookedUpRow, 0))
            return false;
        lookedUpRow.seen = now;
        return true;
    }

    void step()
    {
        lookedUpRow.clear();
        if (walk->step()) {
            lookedUpRow.take(*walk, {});
        } else {
            walk->reset(); // releases the read lock
            ended = true;
        }
    }
    // Position of a column, -1 when there is none.
    int Column(std::string_view field) const
    {
        for (size_t i = 0; i < outputs.size(); ++i)
            if (sameName(outputs[i].name, field))
                return int(i);
        // "mascotas.nom", if both sides of a join have the name
        if (const size_t point = field.rfind('.'); point != std::string_view::npos)
            for (size_t i = 0; i < outputs.size(); ++i)
                if (sameName(outputs[i].name, field.substr(point + 1))
                    && sameName(outputs[i].table, field.substr(0, point)))
                    return int(i);
        return -1;
    }

    int existing(std::string_view field) const
    {
        const int c = Column(field);
        if (c < 0)
            throw StoreError(ErrorNumber::NotInCollection,
                             QStringLiteral("Item not found in this collection: ")
                                 + QString::fromUtf8(field.data(), qsizetype(field.size())));
        return c;
    }

    int existing(int index) const
    {
        if (index < 0 || index >= int(outputs.size()))
            throw StoreError(ErrorNumber::NotInCollection,
                             QStringLiteral("No column number %1").arg(index));
        return index;
    }

    // --- FindFirst ---

    const jet::Criterion &criterion(std::string_view text)
    {
        auto i = criteria.find(text);
        if (i == criteria.end())
            i = criteria.emplace(std::string(text), jet::Criterion::compile(text, outputs)).first;
        return *i->second;
    }

    const Index &indexOf(int field)
    {
        if (const auto i = indices.find(field); i != indices.end())
            return i->second;
        Index &index = indices[field];
        const ColumnType type = outputs[size_t(field)].type;
        for (int f = rows.rows - 1; f >= 0; --f) { // backwards, so that the first row wins
            const Cell &c = rows.at(f, field);
            if (c.kind == Statement::Kind::Null || deleted(f))
                continue;
            if (isTextual(type)) {
                index.texts[jet::fold(rows.read(f, field, type).toText().toStdString())] = f;
                continue;
            }
            const qint64 n = rows.read(f, field, type).toLong();
            if (n >= 0 && n < Index::HighestDense) {
                if (index.dense.size() <= size_t(n))
                    index.dense.resize(size_t(n) + 1, -1);
                index.dense[size_t(n)] = f;
            } else {
                index.whole[n] = f;
            }
        }
        return index;
    }

    std::optional<int> byIndex(int field, const Value &value)
    {
        const ColumnType type = outputs[size_t(field)].type;
        if (isWhole(type) && type != ColumnType::YesNo && value.is<qint64>()) {
            const Index &index = indexOf(field);
            const qint64 n = *value.is<qint64>();
            if (n >= 0 && n < Index::HighestDense)
                return n < qint64(index.dense.size()) ? index.dense[size_t(n)] : -1;
            const auto i = index.whole.find(n);
            return i == index.whole.end() ? -1 : i->second;
        }
        if (isTextual(type) && value.is<QString>()) {
            const Index &index = indexOf(field);
            const auto i = index.texts.find(jet::fold(value.toText().toStdString()));
            return i == index.texts.end() ? -1 : i->second;
        }
        return std::nullopt;
    }

    // The key that a criterion looks for, nullopt if it looks for anything else.
    std::optional<Value> askedKey(const jet::Criterion &criterion,
                                  std::span<const Value> dados) const
    {
        if (keyColumn < 0 || mode != Mode::Reading)
            return std::nullopt;
        const auto equal = criterion.asEquality(dados);
        if (!equal || equal->column != keyColumn || !equal->value.is<qint64>())
            return std::nullopt;
        return equal->value;
    }

    bool isKeyOf(const HeldRows &r, const Value &key)
    {
        return r.rows > 0 && isCurrent(r)
               && r.read(0, keyColumn, outputs[size_t(keyColumn)].type) == key;
    }

    // Finds a row by its key without reading the list, and makes it the current one.
    // @return whether there is such a row; nullopt when the list must be read
    std::optional<bool> locateOne(const jet::Criterion &criterion, std::span<const Value> dados)
    {
        const auto key = askedKey(criterion, dados);
        if (!key)
            return std::nullopt;
        if (singleOne && isKeyOf(lookedUpRow, *key))
            return true;
        if (queries == QueriesBeforeReading)
            return std::nullopt;
        ++queries;
        HeldRows fresh;
        load(fresh, oneSql, std::span(&*key, 1));
        if (fresh.rows == 0)
            return false;
        lookedUpRow = std::move(fresh);
        singleOne = true;
        loaded = false;
        freshRow = -1;
        written.clear();
        position = 0;
        return true;
    }

    // The same for lookUp, which does not move.
    // @return the row, nullptr when there is none; nullopt when the list must be read
    std::optional<const HeldRows *> foundOne(const jet::Criterion &criterion, const Value &value)
    {
        const auto key = askedKey(criterion, std::span(&value, 1));
        if (!key)
            return std::nullopt;
        for (const HeldRows *r : {&found, &lookedUpRow})
            if ((r == &found || singleOne) && isKeyOf(*r, *key))
                return r;
        if (queries == QueriesBeforeReading)
            return std::nullopt;
        ++queries;
        found.clear();
        load(found, oneSql, std::span(&*key, 1));
        return found.rows > 0 ? &found : nullptr;
    }

    int locate(const jet::Criterion &criterion, std::span<const Value> given)
    {
        std::vector<Value> room;
        const std::span<const Value> dados = criterion.prepare(given, room);
        if (const auto equal = criterion.asEquality(dados))
            if (const auto row = byIndex(equal->column, equal->value))
                return *row;
        int f = 0;
        const std::function<Value(int)> cell = [this, &f](int c) { return read(f, c); };
        for (; f < rows.rows; ++f)
            if (!deleted(f) && criterion.meets(cell, dados, base->reloj.hoy))
                return f;
        return -1;
    }

    // --- Writing back ---

    size_t sourceOf(int index) const
    {
        const jet::OutputColumn &c = outputs[size_t(index)];
        for (size_t i = 0; i < fuentes.size(); ++i)
            if (!c.column.empty() && sameName(fuentes[i].alias, c.table))
                return i;
        throw StoreError(ErrorNumber::NotInCollection,
                         QStringLiteral("The field cannot be written: ")
                             + QString::fromStdString(c.name));
    }

    Statement &rowStatement(const RowStatement &s)
    {
        return base->directStatement(base->motor.rowText(base->schema, s));
    }

    void writeEdit()
    {
        std::vector<std::vector<const PutValue *>> bySource(fuentes.size());
        for (const PutValue &p : puts)
            bySource[sourceOf(p.column)].push_back(&p);
        std::optional<Lote> all;
        if (std::ranges::count_if(bySource, [](const auto &p) { return !p.empty(); }) > 1)
            all.emplace(base->motor);
        for (size_t f = 0; f < bySource.size(); ++f)
            if (!bySource[f].empty())
                writeSource(f, bySource[f]);
        if (all)
            all->commit();
        for (const PutValue &p : puts) {
            held().write(position, p.column, p.value);
            indices.erase(p.column);
        }
        if (!list)
            written[position] = base->motor.rollbackCount();
    }

    void writeSource(size_t f, const std::vector<const PutValue *> &put)
    {
        std::vector<const PutValue *> changed;
        for (const PutValue *p : put)
            if (read(position, p->column) != p->value)
                changed.push_back(p);
        const bool changes = !changed.empty();
        bool done = false;
        {
            Statement &st = writeStatement(f, changed, put);
            const Resetting statement{st};
            int n = 0;
            for (const PutValue *p : changed)
                st.bind(n++, p->value);
            st.bind(n++, held().keyName(position, f));
            for (const PutValue *p : put)
                st.bind(n++, p->before);
            done = st.step() || (changes && base->motor.changedRows() > 0);
        }
        if (!done)
            failChanged(f, put);
        if (changes)
            count(f);
    }

    // The statement that writes the changed columns, or checks that the row is unchanged if there
    // are none.
    Statement &writeStatement(size_t f, const std::vector<const PutValue *> &changed,
                              const std::vector<const PutValue *> &put)
    {
        LastWrite &w = lastWrite;
        const auto same = [](const std::vector<int> &columns,
                             const std::vector<const PutValue *> &values) {
            return std::ranges::equal(columns, values, {}, {}, &PutValue::column);
        };
        if (w.statement && w.generation == base->generation && w.source == f
            && same(w.changed, changed) && same(w.put, put))
            return *w.statement;
        RowStatement s =
            sourceRows[f].statement(changed.empty() ? RowStatement::Find : RowStatement::Change);
        w = {.statement = nullptr,
             .generation = base->generation,
             .source = f,
             .changed = {},
             .put = {}};
        for (const PutValue *p : changed) {
            s.columns.push_back(columnOf(p->column));
            w.changed.push_back(p->column);
        }
        for (const PutValue *p : put) {
            s.unchanged.push_back(columnOf(p->column));
            w.put.push_back(p->column);
        }
        w.statement = &rowStatement(s);
        return *w.statement;
    }

    // Whether the row still exists and, if given, the column still holds what Edit read.
    bool isThere(size_t f, const PutValue *put)
    {
        RowStatement s = sourceRows[f].statement(RowStatement::Find);
        if (put)
            s.unchanged.push_back(columnOf(put->column));
        Statement &st = rowStatement(s);
        const Resetting statement{st};
        st.bind(0, held().keyName(position, f));
        if (put)
            st.bind(1, put->before);
        return st.step();
    }

    [[noreturn]] void failChanged(size_t f, const std::vector<const PutValue *> &put)
    {
        if (!isThere(f, nullptr))
            noRow(QStringLiteral("The record was deleted meanwhile"));
        const auto changed =
            std::ranges::find_if(put, [&](const PutValue *p) { return !isThere(f, p); });
        const PutValue *which = changed == put.end() ? put.back() : *changed;
        throw StoreError(ErrorNumber::Conflict,
                         QStringLiteral("\"%1\" was changed by another terminal meanwhile")
                             .arg(QString::fromStdString(outputs[size_t(which->column)].name)));
    }

    // Counts a write. The rows in memory already have it, so they stay current if they were.
    void count(size_t source)
    {
        const bool own = held().seen == writeCount();
        ++marks[source]->writes;
        if (own)
            held().seen = writeCount();
    }

    void writeEntry()
    {
        RowStatement s = sourceRows.front().statement(RowStatement::Add);
        for (const PutValue &p : puts) {
            sourceOf(p.column);
            s.columns.push_back(columnOf(p.column));
        }
        Statement &st = rowStatement(s);
        {
            const Resetting statement{st};
            int n = 0;
            for (const PutValue &p : puts)
                st.bind(n++, p.value);
            st.step();
        }
        added = base->motor.lastKey();
        ++marks.front()->writes;
        // A list is read again on its next use, which puts the row in its place.
        if (!list && loaded)
            append(added);
    }

    // Appends a row, which is read with its defaults when needed.
    void append(qint64 key)
    {
        if (sourceRows.front().columns.size() != outputs.size()) {
            loaded = false; // computed columns need the whole query
            return;
        }
        rows.cells.resize(rows.cells.size() + rows.width);
        rows.keys.push_back(key);
        ++rows.rows;
        ++liveRows;
        ++unread;
    }

    // Reads the added rows; one that was rolled back meanwhile counts as deleted.
    void readAdded()
    {
        for (int row = rows.rows - unread; row < rows.rows; ++row) {
            if (refresh(rows, row)) {
                written[row] = base->motor.rollbackCount();
                continue;
            }
            deletedRows.resize(size_t(rows.rows), 0);
            deletedRows[size_t(row)] = 1;
            --liveRows;
        }
        unread = 0;
        indices.clear();
    }
};

Recordset::Recordset() = default;
Recordset::Recordset(Recordset &&) noexcept = default;
Recordset &Recordset::operator=(Recordset &&) noexcept = default;
Recordset::~Recordset() = default;
Recordset::Recordset(std::unique_ptr<Data> data) : d(std::move(data)) {}

bool Recordset::isOpen() const { return d && d->open; }

void Recordset::Close()
{
    d = std::make_unique<Data>();
    d->open = false;
}

bool Recordset::BOF() const
{
    d->refresh();
    return d->rowCount() == 0 || (d->position < 0 && !d->between);
}

bool Recordset::EOF_() const
{
    if (d->walk) {
        d->requireOpen();
        return d->ended;
    }
    d->refresh();
    return d->position >= d->rowCount();
}

int Recordset::RecordCount() const
{
    d->refresh();
    return d->liveRows;
}

int Recordset::AbsolutePosition() const
{
    d->refresh();
    return d->isOutOfRange() || d->between ? -1 : d->position;
}

void Recordset::AbsolutePosition(int row)
{
    d->refresh();
    if (row < 0 || row >= d->rowCount())
        noRow();
    CancelUpdate();
    d->position = row;
    d->between = false;
    d->withoutRow = d->deleted(row);
}

void Recordset::MoveFirst()
{
    CancelUpdate();
    d->refresh();
    d->between = false;
    d->position = -1;
    MoveNext();
}

void Recordset::MoveLast()
{
    CancelUpdate();
    d->refresh();
    d->between = false;
    d->position = d->rowCount();
    MovePrevious();
    if (d->rowCount() == 0)
        d->position = 0;
}

void Recordset::MoveNext()
{
    if (d->walk) {
        d->requireOpen();
        if (!d->ended)
            d->step();
        return;
    }
    CancelUpdate();
    d->refresh();
    d->withoutRow = d->between = false;
    do
        d->position = std::min(d->position + 1, d->rowCount());
    while (d->position < d->rowCount() && d->deleted(d->position));
}

void Recordset::MovePrevious()
{
    CancelUpdate();
    d->refresh();
    d->position += d->between ? 1 : 0;
    d->withoutRow = d->between = false;
    do
        d->position = std::max(d->position - 1, -1);
    while (d->position >= 0 && d->deleted(d->position));
}

bool Recordset::NoMatch() const { return d->noMatch; }

void Recordset::find(std::string_view criterion, std::span<const Value> bound)
{
    d->checkDefinition();
    const jet::Criterion &c = d->criterion(criterion);
    if (!d->isUpToDate() || d->unread > 0) {
        if (const auto found = d->locateOne(c, bound)) {
            d->noMatch = !*found;
            if (*found)
                d->withoutRow = d->between = false;
            return;
        }
        d->refresh();
    }
    const int row = d->locate(c, bound);
    d->noMatch = row < 0;
    if (row >= 0) {
        CancelUpdate();
        d->position = row;
        d->withoutRow = d->between = false;
    }
}

std::optional<Value> Recordset::lookUp(std::string_view criterion, const Value &value,
                                       std::string_view field) const
{
    d->checkDefinition();
    const jet::Criterion &c = d->criterion(criterion);
    const int column = d->existing(field);
    const ColumnType type = d->outputs[size_t(column)].type;
    if (!d->isUpToDate() || d->unread > 0) {
        if (const auto found = d->foundOne(c, value))
            return *found ? std::optional((*found)->read(0, column, type)) : std::nullopt;
        d->refresh();
    }
    const int row = d->locate(c, std::span(&value, 1));
    return row < 0 ? std::nullopt : std::optional(d->rows.read(row, column, type));
}

int Recordset::Column(std::string_view field) const { return d->existing(field); }
int Recordset::allColumns() const { return int(d->outputs.size()); }
QString Recordset::nameOf(int c) const
{
    return QString::fromStdString(d->outputs[size_t(d->existing(c))].name);
}
ColumnType Recordset::typeOf(int c) const { return d->outputs[size_t(d->existing(c))].type; }

Value Recordset::operator[](std::string_view field) const
{
    if (d->open)
        d->checkDefinition();
    return (*this)[Column(field)];
}

Value Recordset::operator[](int index) const
{
    d->existing(index);
    if (d->mode != Data::Mode::Reading) {
        for (const Data::PutValue &p : d->puts)
            if (p.column == index)
                return p.value;
        if (d->mode == Data::Mode::Addition)
            return {};
    }
    d->requireRow();
    return d->read(d->position, index);
}

void Recordset::Edit()
{
    if (!d->updatable)
        throw StoreError(ErrorNumber::Internals, QStringLiteral("The recordset is read-only"));
    CancelUpdate();
    d->requireRow();
    d->readForEdit();
    d->mode = Data::Mode::Editing;
}

void Recordset::AddNew()
{
    d->requireOpen();
    if (!d->updatable || d->fuentes.size() != 1)
        throw StoreError(ErrorNumber::Internals, QStringLiteral("No row can be added here"));
    CancelUpdate();
    d->checkDefinition();
    d->mode = Data::Mode::Addition;
}

void Recordset::Put(std::string_view field, const Value &value) { Put(Column(field), value); }

void Recordset::Put(int index, const Value &value)
{
    if (d->mode == Data::Mode::Reading)
        throw StoreError(ErrorNumber::Internals, QStringLiteral("Put without Edit or AddNew"));
    const jet::OutputColumn &column = d->outputs[size_t(d->existing(index))];
    Value v = toColumn(value, {column.name, column.type, column.width});
    for (Data::PutValue &p : d->puts) {
        if (p.column == index) {
            p.value = std::move(v);
            return;
        }
    }
    Value before = d->mode == Data::Mode::Editing
                       ? d->held().read(d->position, index, ColumnType::None)
                       : Value();
    d->puts.push_back({index, std::move(v), std::move(before)});
}

void Recordset::Update()
{
    if (d->mode == Data::Mode::Reading)
        throw StoreError(ErrorNumber::Internals, QStringLiteral("Update without Edit or AddNew"));
    d->checkDefinition();
    if (d->mode == Data::Mode::Editing)
        d->writeEdit();
    else
        d->writeEntry();
    CancelUpdate();
}

qint64 Recordset::addedKey() const { return d->added; }

void Recordset::CancelUpdate()
{
    d->puts.clear();
    d->mode = Data::Mode::Reading;
}

void Recordset::Delete()
{
    if (!d->updatable || d->fuentes.size() != 1)
        throw StoreError(ErrorNumber::Internals, QStringLiteral("No row can be deleted here"));
    d->refresh();
    d->requireRow();
    {
        Statement &st = d->rowStatement(d->sourceRows.front().statement(RowStatement::Erase));
        const Resetting statement{st};
        st.bind(0, d->rows.keyName(d->position, 0));
        st.step();
    }
    d->count(0);
    d->deletedRows.resize(size_t(d->rows.rows), 0);
    d->deletedRows[size_t(d->position)] = 1;
    d->indices.clear();
    --d->liveRows;
    d->withoutRow = true;
}

void Recordset::Requery()
{
    CancelUpdate();
    d->checkDefinition();
    d->loaded = false;
    d->refresh();
}

// --- Opening ---

Recordset Base::open(std::string_view sql, std::span<const Value> bound, bool updatable,
                     RowLimit limit)
{
    auto data = std::make_unique<Recordset::Data>();
    data->base = m_i;
    data->sql = sql;
    data->bound.assign(bound.begin(), bound.end());
    data->maxRows = limit.rows;
    data->updatable = updatable;
    data->compile();
    data->readRows(-1);
    return Recordset(std::move(data));
}

Recordset Base::OpenList(std::string_view sql, std::string_view keyName)
{
    auto data = std::make_unique<Recordset::Data>();
    data->base = m_i;
    data->sql = sql;
    data->updatable = true;
    data->list = true;
    data->keyName = keyName;
    data->compile();
    return Recordset(std::move(data));
}

Recordset Base::openForwardOnly(std::string_view sql, std::span<const Value> values)
{
    auto data = std::make_unique<Recordset::Data>();
    data->base = m_i;
    data->sql = sql;
    data->compile();
    const jet::Translation &t = m_i->query(sql, false).translation;
    m_i->walks.push_back(m_i->motor.prepare(t.sql));
    data->walk = m_i->walks.back().get();
    m_i->bind(t, *data->walk, values);
    data->lookedUpRow.width = data->outputs.size();
    data->step();
    return Recordset(std::move(data));
}
