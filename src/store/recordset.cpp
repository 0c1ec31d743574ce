#include "store/recordset.h"

#include "store/database_internal.h"
#include "store/jet/text.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

using namespace store;

namespace
{

// A cell as the engine gave it; text lies in the recordset's own store.
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

// Where the first row with a value stands. Whole numbers of a moderate range, which is what
// identifiers are, are looked up by position.
struct Index {
    std::vector<int> dense;
    std::unordered_map<qint64, int> whole;
    std::unordered_map<std::string, int> texts;
    static constexpr qint64 HighestDense = 1 << 20;
};

bool isWholeNumber(ColumnType t)
{
    return t == ColumnType::Counter || t == ColumnType::Byte || t == ColumnType::Smallint
           || t == ColumnType::Long;
}

bool isText(ColumnType t) { return t == ColumnType::Text || t == ColumnType::Memo; }

// Names are nearly always ASCII and given in the file's own letters or in lower case.
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

// Text that the engine would turn into a number in a MEMO column.
bool looksLikeNumber(const QString &s)
{
    const QStringView t = QStringView(s).trimmed();
    return !t.isEmpty() && std::ranges::all_of(t, [](QChar c) {
        return (c >= u'0' && c <= u'9') || QStringView(u"+-.eE").contains(c);
    });
}

Value asColumnType(const Value &v, ColumnType type)
{
    if (v.isNull())
        return type == ColumnType::YesNo ? Value(false) : v;
    switch (type) {
    case ColumnType::Currency:
        return v.toMoneda();
    case ColumnType::YesNo:
        return v.toBool();
    case ColumnType::Counter:
    case ColumnType::Byte:
    case ColumnType::Smallint:
    case ColumnType::Long:
        return v.toLong();
    case ColumnType::Single:
    case ColumnType::Double:
        return v.toDouble();
    case ColumnType::Date:
        if (v.is<QString>())
            return v.toDate();
        return v;
    case ColumnType::Time:
        return v.toTime();
    case ColumnType::Text:
    case ColumnType::Memo:
        return v.toText();
    case ColumnType::None:
        return v;
    }
    return v;
}

std::string quoted(std::string_view n) { return '"' + std::string(n) + '"'; }

} // namespace

struct Recordset::Data {
    Base::Internals *base = nullptr;
    std::string sql;
    std::vector<Value> values;
    bool updatable = false;
    bool list = false; // re-read when its tables were written
    bool open = true;
    bool loaded = false;

    std::vector<jet::OutputColumn> columns;
    std::vector<jet::RowsSource> fuentes;
    std::vector<int *> reads;

    std::vector<Cell> cells; // row by row
    std::string texts;
    std::vector<qint64> keys;      // row by row, one for each source
    std::vector<char> deletedRows; // empty while no row was deleted here
    int rows = 0;
    int liveRows = 0;
    int current = 0;
    bool withoutRow = false; // after Delete
    bool noMatch = false;

    qint64 writesSeen = 0;

    // A list with a key answers its first look-ups by queries for one row, which is then the only
    // row held: reading a full list costs as much as some ten thousand of them.
    int keyColumn = -1;
    std::string oneSql;
    bool singleOne = false;
    int queries = 0;
    static constexpr int QueriesBeforeReading = 5000;

    enum class Mode { Reading, Editing, Addition } mode = Mode::Reading;
    std::vector<std::pair<int, Value>> puts;

    std::unordered_map<int, Index> indices;
    ByText<std::shared_ptr<const jet::Criterion>> criteria;

    int widthOf() const { return int(columns.size()); }

    qint64 writeCount() const
    {
        qint64 n = base->foreign + base->motor.rollbackCount();
        for (const int *e : reads)
            n += *e;
        return n;
    }

    // Whether the rows held, if any, are still those of the tables.
    bool isCurrent()
    {
        if (!open)
            throw StoreError(ErrorNumber::NoCurrentRecord,
                             QStringLiteral("The recordset is closed"));
        if (!list || mode != Mode::Reading)
            return true;
        base->lookForForeignWrites();
        return writesSeen == writeCount();
    }

    void refresh()
    {
        if (!isCurrent() || !loaded)
            readRows();
    }

    void readRows()
    {
        const qint64 key = currentKey();
        load(sql, values, false);
        goBackTo(key);
        queries = 0;
        loaded = true;
    }

    // Puts the one row with this key in the place of all others. @return false when there is none
    bool readOne(const Value &value)
    {
        if (!load(oneSql, std::span(&value, 1), true))
            return false;
        singleOne = true;
        current = 0;
        return true;
    }

    // Takes the rows of a query into memory. @param keep what is held when it has none
    // @return whether there was a row
    bool load(std::string_view query, std::span<const Value> dados, bool keep)
    {
        Compiled &c =
            base->compile(query, updatable ? base->withKeys : base->withoutKeys, updatable);
        base->bind(c, dados);
        Statement &st = *c.statement;
        const int width = widthOf();
        try {
            bool hay = st.step();
            if (!hay && keep) {
                st.reset();
                return false;
            }
            writesSeen = list ? writeCount() : 0;
            loaded = singleOne = false;
            cells.clear();
            texts.clear();
            keys.clear();
            deletedRows.clear();
            indices.clear();
            rows = 0;
            for (; hay; hay = st.step()) {
                const size_t base0 = cells.size();
                cells.resize(base0 + size_t(width));
                for (int i = 0; i < width; ++i) {
                    Cell &cell = cells[base0 + size_t(i)];
                    cell.kind = st.kindOf(i);
                    switch (cell.kind) {
                    case Statement::Kind::Whole:
                        cell.whole = st.whole(i);
                        break;
                    case Statement::Kind::Floating:
                        cell.floating = st.Floating(i);
                        break;
                    case Statement::Kind::Text:
                        save(cell, st.text(i));
                        break;
                    case Statement::Kind::Null:
                        break;
                    }
                }
                // A row that an outer join left empty has no key.
                for (const jet::RowsSource &f : fuentes)
                    keys.push_back(st.kindOf(f.keyColumn) == Statement::Kind::Null
                                       ? -1
                                       : st.whole(f.keyColumn));
                ++rows;
            }
        } catch (...) {
            st.reset();
            throw;
        }
        st.reset();
        liveRows = rows;
        withoutRow = false;
        return rows > 0;
    }

    // Key of the row that the position stands on; -1 when it has none to be found again by.
    qint64 currentKey() const
    {
        return fuentes.size() != 1 || isOutOfRange() || withoutRow ? -1 : keys[size_t(current)];
    }

    // Others may have added or deleted rows above: the position stays on its row, not its number.
    void goBackTo(qint64 key)
    {
        current = std::min(current, rows);
        if (key == -1 || currentKey() == key)
            return;
        const auto i = std::ranges::find(keys, key);
        withoutRow = i == keys.end();
        if (!withoutRow)
            current = int(i - keys.begin());
    }

    void save(Cell &cell, std::string_view text)
    {
        cell.kind = Statement::Kind::Text;
        cell.position = texts.size();
        cell.length = quint32(text.size());
        texts.append(text);
    }

    Value read(int row, int column) const
    {
        const Cell &c = cells[size_t(row) * columns.size() + size_t(column)];
        const bool text = c.kind == Statement::Kind::Text;
        return cellValue(
            c.kind, text ? 0 : c.whole, c.kind == Statement::Kind::Floating ? c.floating : 0.0,
            text ? std::string_view(texts).substr(c.position, c.length) : std::string_view(),
            columns[size_t(column)].type);
    }

    void write(int row, int column, const Value &v)
    {
        Cell &c = cells[size_t(row) * columns.size() + size_t(column)];
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
            save(c, v.toText().toStdString());
        }
        indices.erase(column);
    }

    bool deleted(int row) const { return !deletedRows.empty() && deletedRows[size_t(row)]; }
    bool isOutOfRange() const { return current < 0 || current >= rows; }

    void requireRow()
    {
        if (!singleOne || (!isCurrent() && !readOne(read(0, keyColumn))))
            refresh();
        if (isOutOfRange() || withoutRow)
            throw StoreError(ErrorNumber::NoCurrentRecord, QStringLiteral("No current record"));
    }

    int Column(std::string_view field) const
    {
        for (size_t i = 0; i < columns.size(); ++i)
            if (sameName(columns[i].name, field))
                return int(i);
        // "mascotas.nom", where both sides of a join have the name
        if (const size_t point = field.rfind('.'); point != std::string_view::npos)
            for (size_t i = 0; i < columns.size(); ++i)
                if (sameName(columns[i].name, field.substr(point + 1))
                    && sameName(columns[i].table, field.substr(0, point)))
                    return int(i);
        return -1;
    }

    // --- FindFirst ---

    const Index &indexOf(int column)
    {
        if (const auto i = indices.find(column); i != indices.end())
            return i->second;
        Index &index = indices[column];
        const ColumnType type = columns[size_t(column)].type;
        for (int f = rows - 1; f >= 0; --f) { // the first row with a value wins
            const Cell &c = cells[size_t(f) * columns.size() + size_t(column)];
            if (c.kind == Statement::Kind::Null || deleted(f))
                continue;
            if (isText(type)) {
                index.texts[jet::fold(read(f, column).toText().toStdString())] = f;
                continue;
            }
            const qint64 n = read(f, column).toLong();
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

    std::optional<int> byIndex(int column, const Value &value)
    {
        const ColumnType type = columns[size_t(column)].type;
        if (isWholeNumber(type) && value.is<qint64>()) {
            const Index &index = indexOf(column);
            const qint64 n = *value.is<qint64>();
            if (n >= 0 && n < Index::HighestDense)
                return n < qint64(index.dense.size()) ? index.dense[size_t(n)] : -1;
            const auto i = index.whole.find(n);
            return i == index.whole.end() ? -1 : i->second;
        }
        if (isText(type) && value.is<QString>()) {
            const Index &index = indexOf(column);
            const auto i = index.texts.find(jet::fold(value.toText().toStdString()));
            return i == index.texts.end() ? -1 : i->second;
        }
        return std::nullopt;
    }

    // A look-up by key while the rows were not read: whether there is such a row, or nullopt when
    // the list is to be read.
    std::optional<bool> locateOne(const jet::Criterion &criterion, std::span<const Value> dados)
    {
        if (keyColumn < 0 || mode != Mode::Reading)
            return std::nullopt;
        const auto equal = criterion.asEquality(dados);
        if (!equal || equal->column != keyColumn || !equal->value.is<qint64>())
            return std::nullopt;
        if (singleOne && isCurrent() && read(0, keyColumn) == equal->value)
            return true;
        if (queries == QueriesBeforeReading)
            return std::nullopt;
        ++queries;
        return readOne(equal->value);
    }

    int locate(const jet::Criterion &criterion, std::span<const Value> dados)
    {
        if (const auto equal = criterion.asEquality(dados))
            if (const auto row = byIndex(equal->column, equal->value))
                return *row;
        int f = 0;
        const std::function<Value(int)> cell = [this, &f](int c) { return read(f, c); };
        for (; f < rows; ++f)
            if (!deleted(f) && criterion.meets(cell, dados, base->reloj.hoy))
                return f;
        return -1;
    }

    // --- Writing back ---

    int sourceOf(int column) const
    {
        const jet::OutputColumn &c = columns[size_t(column)];
        for (size_t i = 0; i < fuentes.size(); ++i)
            if (!c.column.empty() && sameName(fuentes[i].alias, c.table))
                return int(i);
        throw StoreError(ErrorNumber::NotInCollection,
                         QStringLiteral("The field cannot be written: ")
                             + QString::fromStdString(c.name));
    }

    // The engine would take such a memo for a number; as bytes it is left alone.
    std::string mark(int column, const Value &v) const
    {
        const auto *s = v.is<QString>();
        return columns[size_t(column)].type == ColumnType::Memo && s && looksLikeNumber(*s)
                   ? "CAST(? AS BLOB)"
                   : "?";
    }

    void writeEdit()
    {
        for (size_t f = 0; f < fuentes.size(); ++f) {
            std::string changes;
            std::vector<const Value *> dados;
            for (const auto &[column, value] : puts) {
                if (sourceOf(column) != int(f) || read(current, column) == value)
                    continue;
                changes += (changes.empty() ? "" : ", ") + quoted(columns[size_t(column)].column)
                           + " = " + mark(column, value);
                dados.push_back(&value);
            }
            if (changes.empty())
                continue;
            Statement &st = base->directStatement("UPDATE " + quoted(base->schema) + '.'
                                                  + quoted(fuentes[f].table) + " SET " + changes
                                                  + " WHERE rowid = ?");
            int n = 0;
            for (const Value *v : dados)
                st.bind(n++, *v);
            st.bind(n, keys[size_t(current) * fuentes.size() + f]);
            st.step();
            st.reset();
            if (base->motor.changedRows() == 0)
                throw StoreError(ErrorNumber::NoCurrentRecord,
                                 QStringLiteral("The record was deleted meanwhile"));
            count(f);
        }
        for (const auto &[column, value] : puts)
            write(current, column, value);
    }

    // Own writes are in the rows already; they are no reason to read everything again.
    void count(size_t source)
    {
        const bool own = list && writesSeen == writeCount();
        ++*reads[source];
        if (own)
            writesSeen = writeCount();
    }

    void writeEntry()
    {
        std::string names, marks;
        for (const auto &[column, value] : puts) {
            sourceOf(column);
            names += (names.empty() ? "" : ", ") + quoted(columns[size_t(column)].column);
            marks += (marks.empty() ? "" : ", ") + mark(column, value);
        }
        Statement &st = base->directStatement(
            "INSERT INTO " + quoted(base->schema) + '.' + quoted(fuentes.front().table)
            + (puts.empty() ? " DEFAULT VALUES" : " (" + names + ") VALUES (" + marks + ')'));
        int n = 0;
        for (const auto &[column, value] : puts)
            st.bind(n++, value);
        st.step();
        st.reset();
        ++*reads.front();
        loaded = false; // defaults and numbers that the engine gave are read with the rows
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
    return d->rows == 0 || d->current < 0;
}

bool Recordset::EOF_() const
{
    d->refresh();
    return d->current >= d->rows;
}

int Recordset::RecordCount() const
{
    d->refresh();
    return d->liveRows;
}

int Recordset::AbsolutePosition() const
{
    d->refresh();
    return d->isOutOfRange() ? -1 : d->current;
}

void Recordset::AbsolutePosition(int row)
{
    d->refresh();
    if (row < 0 || row >= d->rows)
        throw StoreError(ErrorNumber::NoCurrentRecord, QStringLiteral("No current record"));
    CancelUpdate();
    d->current = row;
    d->withoutRow = d->deleted(row);
}

void Recordset::MoveFirst()
{
    CancelUpdate();
    d->refresh();
    d->current = -1;
    MoveNext();
}

void Recordset::MoveLast()
{
    CancelUpdate();
    d->refresh();
    d->current = d->rows;
    MovePrevious();
    if (d->rows == 0)
        d->current = 0;
}

void Recordset::MoveNext()
{
    CancelUpdate();
    d->refresh();
    d->withoutRow = false;
    do
        d->current = std::min(d->current + 1, d->rows);
    while (d->current < d->rows && d->deleted(d->current));
}

void Recordset::MovePrevious()
{
    CancelUpdate();
    d->refresh();
    d->withoutRow = false;
    do
        d->current = std::max(d->current - 1, -1);
    while (d->current >= 0 && d->deleted(d->current));
}

bool Recordset::NoMatch() const { return d->noMatch; }

void Recordset::find(std::string_view criterion, std::span<const Value> values)
{
    auto i = d->criteria.find(criterion);
    if (i == d->criteria.end())
        i = d->criteria
                .emplace(std::string(criterion), jet::Criterion::compile(criterion, d->columns))
                .first;
    if (!d->isCurrent() || !d->loaded) {
        if (const auto hay = d->locateOne(*i->second, values)) {
            d->noMatch = !*hay;
            if (*hay)
                d->withoutRow = false;
            return;
        }
        d->refresh();
    }
    const int row = d->locate(*i->second, values);
    d->noMatch = row < 0;
    if (row >= 0) {
        CancelUpdate();
        d->current = row;
        d->withoutRow = false;
    }
}

int Recordset::Column(std::string_view field) const
{
    const int c = d->Column(field);
    if (c < 0)
        throw StoreError(ErrorNumber::NotInCollection,
                         QStringLiteral("Item not found in this collection: ")
                             + QString::fromUtf8(field.data(), qsizetype(field.size())));
    return c;
}

bool Recordset::hasColumn(std::string_view field) const { return d->Column(field) >= 0; }
int Recordset::allColumns() const { return d->widthOf(); }
QString Recordset::nameOf(int c) const
{
    return QString::fromStdString(d->columns.at(size_t(c)).name);
}
ColumnType Recordset::typeOf(int c) const { return d->columns.at(size_t(c)).type; }

Value Recordset::operator[](std::string_view field) const { return (*this)[Column(field)]; }

Value Recordset::operator[](int column) const
{
    if (d->mode != Data::Mode::Reading) {
        for (auto i = d->puts.rbegin(); i != d->puts.rend(); ++i)
            if (i->first == column)
                return i->second;
        if (d->mode == Data::Mode::Addition)
            return {};
    }
    d->requireRow();
    return d->read(d->current, column);
}

void Recordset::Edit()
{
    if (!d->updatable)
        throw StoreError(ErrorNumber::Internals, QStringLiteral("The recordset is read-only"));
    d->requireRow();
    d->puts.clear();
    d->mode = Data::Mode::Editing;
}

void Recordset::AddNew()
{
    if (!d->updatable || d->fuentes.size() != 1)
        throw StoreError(ErrorNumber::Internals, QStringLiteral("No row can be added here"));
    d->refresh();
    d->puts.clear();
    d->mode = Data::Mode::Addition;
}

void Recordset::Put(std::string_view field, const Value &value) { Put(Column(field), value); }

void Recordset::Put(int column, const Value &value)
{
    if (d->mode == Data::Mode::Reading)
        throw StoreError(ErrorNumber::Internals, QStringLiteral("Put without Edit or AddNew"));
    Value v = asColumnType(value, d->columns.at(size_t(column)).type);
    for (auto &[c, put] : d->puts) {
        if (c == column) {
            put = std::move(v);
            return;
        }
    }
    d->puts.emplace_back(column, std::move(v));
}

void Recordset::Update()
{
    if (d->mode == Data::Mode::Reading)
        throw StoreError(ErrorNumber::Internals, QStringLiteral("Update without Edit or AddNew"));
    if (d->mode == Data::Mode::Editing)
        d->writeEdit();
    else
        d->writeEntry();
    CancelUpdate();
}

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
    Statement &st =
        d->base->directStatement("DELETE FROM " + quoted(d->base->schema) + '.'
                                 + quoted(d->fuentes.front().table) + " WHERE rowid = ?");
    st.bind(0, d->keys[size_t(d->current)]);
    st.step();
    st.reset();
    d->count(0);
    d->deletedRows.resize(size_t(d->rows), 0);
    d->deletedRows[size_t(d->current)] = 1;
    d->indices.clear();
    --d->liveRows;
    d->withoutRow = true;
}

void Recordset::Requery()
{
    CancelUpdate();
    d->loaded = false;
    d->refresh();
}

// --- Opening, which belongs to the database ---

Recordset Base::open(std::string_view sql, std::span<const Value> values, bool updatable)
{
    auto data = std::make_unique<Recordset::Data>();
    data->base = m_i.get();
    data->sql = sql;
    data->values.assign(values.begin(), values.end());
    data->updatable = updatable;
    const Compiled &c = m_i->compile(sql, updatable ? m_i->withKeys : m_i->withoutKeys, updatable);
    if (c.translation.kind != jet::Translation::Query)
        throw StoreError(ErrorNumber::Syntax, QStringLiteral("Not a query"),
                         QString::fromUtf8(sql.data(), qsizetype(sql.size())));
    data->columns = c.translation.columns;
    data->fuentes = c.translation.fuentes;
    data->reads = c.reads;
    data->readRows();
    return Recordset(std::move(data));
}

Recordset Base::OpenList(std::string_view sql, std::string_view key)
{
    auto data = std::make_unique<Recordset::Data>();
    data->base = m_i.get();
    data->sql = sql;
    data->updatable = true;
    data->list = true;
    const Compiled &c = m_i->compile(sql, m_i->withKeys, true);
    data->columns = c.translation.columns;
    data->fuentes = c.translation.fuentes;
    data->reads = c.reads;
    if (!key.empty()) {
        data->keyColumn = data->Column(key);
        data->oneSql = "select * from [" + data->fuentes.front().table + "] where ["
                       + std::string(key) + "] = ?";
    }
    return Recordset(std::move(data));
}
