#include "ui/grid.h"

#include "store/jet/text.h"
#include "texts/texts.h"
#include "ui/boxes.h"
#include "ui/theme.h"

#include <QLocale>
#include <algorithm>
#include <limits>
#include <numeric>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

bool isNumeric(Kind c)
{
    return c == Kind::Whole || c == Kind::Code || c == Kind::Number || c == Kind::Amount;
}

/// A row may have fewer cells than there are columns.
const store::Value &cell(const GridRow &row, int column)
{
    static const store::Value none;
    return column < row.cells.size() ? row.cells[column] : none;
}

/// A key whose byte order is the order of jet::Comparar: the letters without accents, followed for
/// an accented text by a mark that sorts before all letters and the original letters.
std::string orderKey(const QString &text)
{
    const std::string utf8 = text.toStdString();
    const std::string folded = jet::fold(utf8);
    std::string key = jet::plainOf(utf8);
    if (key != folded)
        key +=
            '\0'
            + QString::fromStdString(folded).normalized(QString::NormalizationForm_D).toStdString();
    return key;
}

/// The sort value of a cell that is no text; empty cells come first.
double orderNumber(const store::Value &v, Kind kind)
{
    constexpr double first = -std::numeric_limits<double>::infinity();
    if (v.isNull())
        return first;
    switch (kind) {
    case Kind::Day: {
        const QDate day = v.toDate();
        return day.isValid() ? double(day.toJulianDay()) : first;
    }
    case Kind::Hour: {
        const QTime time = v.toTime();
        return time.isValid() ? time.msecsSinceStartOfDay() : first;
    }
    case Kind::YesNo:
        return v.toBool() ? 1 : 0;
    default:
        return v.toDouble();
    }
}

/// With as many decimals as the number has, four at most.
QString numberText(const store::Value &v)
{
    const QString plain = v.toMoneda().toText();
    const qsizetype point = plain.indexOf(u'.');
    const int decimals = point < 0 ? 0 : int(plain.size() - point - 1);
    return QLocale().toString(v.toDouble(), 'f', decimals);
}

int idColumnOf(const QList<GridColumn> &columns)
{
    const auto first = [&](Kind kind, bool hidden) {
        const auto c = std::ranges::find_if(
            columns, [&](const GridColumn &g) { return g.kind == kind && g.hidden == hidden; });
        return c == columns.end() ? -1 : int(c - columns.begin());
    };
    const int hidden = first(Kind::Whole, true);
    return hidden >= 0 ? hidden : first(Kind::Code, false);
}

} // namespace

// Rows stay where they were added; `order` maps places on screen to them, so that sorting moves
// only indexes and the sort keys remain valid.
struct GridModel::Internals {
    QString si, no;
    QList<GridColumn> columns;
    std::vector<GridRow> rows;
    std::vector<int> order;
    /// For each text column one key per entry of `rows`; empty until it is first sorted by.
    std::vector<std::vector<std::string>> orderKeys;
    int orderColumn = -1;
    int idColumn = -1;
    Qt::SortOrder direction = Qt::AscendingOrder;

    const store::Value &Cell(int i, int column) const { return cell(rows[size_t(i)], column); }
    QString text(int i, int column) const;
    void sort();
    bool beforeOf(const GridRow &a, const GridRow &b, int column) const;
    void add(GridRow row);
    void forgetKeys() { orderKeys.assign(size_t(columns.size()), {}); }
};

QString GridModel::Internals::text(int i, int column) const
{
    const store::Value &v = Cell(i, column);
    if (v.isNull())
        return {};
    switch (columns[column].kind) {
    case Kind::Text:
        return v.toText();
    case Kind::Whole:
        return QLocale().toString(v.toLong());
    case Kind::Code:
        return QString::number(v.toLong()).rightJustified(5, u'0');
    case Kind::Number:
        return numberText(v);
    case Kind::Amount:
        return QLocale().toString(v.toDouble(), 'f', 2);
    case Kind::Day:
        return store::dayText(v.toDate());
    case Kind::Hour:
        return v.toTime().toString(u"HH:mm");
    case Kind::YesNo:
        return v.toBool() ? si : no;
    }
    return {};
}

void GridModel::Internals::sort()
{
    if (orderColumn < 0)
        return;
    const auto by = [this](const auto &keys) {
        if (direction == Qt::AscendingOrder)
            std::ranges::stable_sort(
                order, [&](int a, int b) { return keys[size_t(a)] < keys[size_t(b)]; });
        else
            std::ranges::stable_sort(
                order, [&](int a, int b) { return keys[size_t(b)] < keys[size_t(a)]; });
    };
    const Kind kind = columns[orderColumn].kind;
    if (kind == Kind::Text) {
        auto &keys = orderKeys[size_t(orderColumn)];
        if (keys.empty()) {
            keys.reserve(rows.size());
            for (int i = 0; i < int(rows.size()); ++i)
                keys.push_back(orderKey(text(i, orderColumn)));
        }
        by(keys);
        return;
    }
    std::vector<double> keys;
    keys.reserve(rows.size());
    for (int i = 0; i < int(rows.size()); ++i)
        keys.push_back(orderNumber(Cell(i, orderColumn), kind));
    by(keys);
}

bool GridModel::Internals::beforeOf(const GridRow &a, const GridRow &b, int column) const
{
    const store::Value &x = cell(a, column);
    const store::Value &y = cell(b, column);
    const Kind kind = columns[column].kind;
    if (kind == Kind::Text)
        return jet::compareText(x.toText().toStdString(), y.toText().toStdString()) < 0;
    return orderNumber(x, kind) < orderNumber(y, kind);
}

/// Appends a row; the caller assigns its place in `order`.
void GridModel::Internals::add(GridRow row)
{
    rows.push_back(std::move(row));
    const int i = int(rows.size()) - 1;
    for (int c = 0; c < columns.size(); ++c)
        if (auto &keys = orderKeys[size_t(c)]; !keys.empty())
            keys.push_back(orderKey(text(i, c)));
}

GridModel::GridModel(const Sesion &s, QList<GridColumn> columns, QObject *parent)
    : QAbstractTableModel(parent), d(std::make_shared<Internals>())
{
    d->si = s(text::Yes);
    d->no = s(text::No);
    d->columns = std::move(columns);
    d->idColumn = idColumnOf(d->columns);
    d->forgetKeys();
}

void GridModel::set(std::vector<GridRow> rows)
{
    beginResetModel();
    d->rows = std::move(rows);
    d->order.resize(d->rows.size());
    std::iota(d->order.begin(), d->order.end(), 0);
    d->forgetKeys();
    d->sort();
    endResetModel();
}

int GridModel::insert(GridRow added, int column)
{
    const auto row = [this](int i) -> const GridRow & { return d->rows[size_t(i)]; };
    auto place = d->order.end();
    if (const int c = d->orderColumn; c >= 0) {
        const bool up = d->direction == Qt::AscendingOrder;
        place = std::upper_bound(
            d->order.begin(), d->order.end(), added, [&](const GridRow &newOne, int i) {
                return up ? d->beforeOf(newOne, row(i), c) : d->beforeOf(row(i), newOne, c);
            });
    } else if (column >= 0 && column < d->columns.size()) {
        place = std::ranges::find_if(d->order,
                                     [&](int i) { return d->beforeOf(added, row(i), column); });
    }
    const int at = int(place - d->order.begin());
    beginInsertRows({}, at, at);
    d->add(std::move(added));
    d->order.insert(place, int(d->rows.size()) - 1);
    endInsertRows();
    return at;
}

void GridModel::change(int row, GridRow data)
{
    if (row < 0 || row >= allRows())
        return;
    const int i = d->order[size_t(row)];
    d->rows[size_t(i)] = std::move(data);
    for (int c = 0; c < d->columns.size(); ++c)
        if (auto &keys = d->orderKeys[size_t(c)]; !keys.empty())
            keys[size_t(i)] = orderKey(d->text(i, c));
    Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void GridModel::remove(int row)
{
    if (row < 0 || row >= allRows())
        return;
    beginRemoveRows({}, row, row);
    const int gone = d->order[size_t(row)];
    d->order.erase(d->order.begin() + row);
    for (int &i : d->order)
        i -= i > gone;
    d->rows.erase(d->rows.begin() + gone);
    for (auto &keys : d->orderKeys)
        if (!keys.empty())
            keys.erase(keys.begin() + gone);
    endRemoveRows();
}

const GridRow &GridModel::Row(int row) const
{
    static const GridRow none;
    return row < 0 || row >= allRows() ? none : d->rows[size_t(d->order[size_t(row)])];
}

int GridModel::allRows() const { return int(d->order.size()); }

int GridModel::idOf(int row) const { return Row(row).cells.value(d->idColumn).toInt(); }

int GridModel::rowOf(int id) const
{
    return id == 0 ? -1 : BuscarEnGrilla(id, d->idColumn, 0, allRows() - 1);
}

const QList<GridColumn> &GridModel::allColumns() const { return d->columns; }

QString GridModel::cellText(int row, int column) const
{
    if (row < 0 || row >= allRows() || column < 0 || column >= d->columns.size())
        return {};
    return d->text(d->order[size_t(row)], column);
}

int GridModel::BuscarEnGrilla(const store::Value &value, int column, int from, int until) const
{
    if (column < 0 || column >= d->columns.size() || value.isNull())
        return -1;
    const QString *wanted = value.is<QString>();
    const bool number = isNumeric(d->columns[column].kind);
    const auto matches = [&](int i) {
        const store::Value &cell = d->Cell(i, column);
        const QString *text = cell.is<QString>();
        if (wanted)
            return text ? text->startsWith(*wanted, Qt::CaseInsensitive)
                        : d->text(i, column).startsWith(*wanted, Qt::CaseInsensitive);
        // A text that is no number equals none, not even 0; so does an empty cell.
        if (text || cell.isNull())
            return text && *text == value.toText();
        return cell == value || (number && cell.toDouble() == value.toDouble());
    };
    for (int f = std::max(from, 0); f <= std::min(until, allRows() - 1); ++f)
        if (matches(d->order[size_t(f)]))
            return f;
    return -1;
}

int GridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : allRows();
}

int GridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(d->columns.size());
}

QVariant GridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= allRows() || index.column() >= d->columns.size())
        return {};
    const GridRow &row = Row(index.row());
    const bool stands = row.highlight != Highlight::None
                        && (row.highlightedCell < 0 || row.highlightedCell == index.column());
    const bool muted = row.highlight == Highlight::Off || row.highlight == Highlight::Done;
    switch (role) {
    case Qt::DisplayRole:
        return cellText(index.row(), index.column());
    case Qt::AccessibleTextRole: {
        const QString text = cellText(index.row(), index.column());
        return stands && !row.reason.isEmpty() ? text + u", "_s + row.reason : text;
    }
    case Qt::ToolTipRole:
        return stands && !row.reason.isEmpty() ? row.reason.toHtmlEscaped() : QVariant();
    case Qt::TextAlignmentRole:
        return int((isNumeric(d->columns[index.column()].kind) ? Qt::AlignRight : Qt::AlignLeft)
                   | Qt::AlignVCenter);
    case Qt::BackgroundRole:
        if (stands && !muted)
            return QBrush(row.highlight == Highlight::Alert ? paletteInUse().alert
                                                            : paletteInUse().notice);
        return {};
    case Qt::ForegroundRole:
        if (stands && muted)
            return QBrush(paletteInUse().softText);
        return {};
    case SignRole: {
        if (!stands || row.highlight == Highlight::Done)
            return {};
        const auto shown =
            std::ranges::find_if(d->columns, [](const auto &c) { return !c.hidden; });
        const bool here = row.highlightedCell >= 0 || index.column() == shown - d->columns.begin();
        return here ? QVariant(int(row.highlight)) : QVariant();
    }
    default:
        return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= d->columns.size())
        return QAbstractTableModel::headerData(section, orientation, role);
    const GridColumn &column = d->columns[section];
    if (role == Qt::DisplayRole)
        return column.title;
    if (role == Qt::TextAlignmentRole)
        return int((isNumeric(column.kind) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

void GridModel::sort(int column, Qt::SortOrder order)
{
    if (column >= d->columns.size())
        return;
    d->orderColumn = std::max(column, -1);
    d->direction = order;
    if (column < 0)
        return;
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    const std::vector<int> before = d->order;
    d->sort();
    const QModelIndexList kept = persistentIndexList();
    if (!kept.isEmpty()) {
        std::vector<int> place(before.size());
        for (size_t f = 0; f < d->order.size(); ++f)
            place[size_t(d->order[f])] = int(f);
        QModelIndexList moved;
        for (const QModelIndex &i : kept)
            moved << index(place[size_t(before[size_t(i.row())])], i.column());
        changePersistentIndexList(kept, moved);
    }
    Q_EMIT layoutChanged({}, VerticalSortHint);
}
