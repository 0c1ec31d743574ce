// The table used by all forms: rows in memory, sorted by the type of their columns.
#pragma once

#include "store/session.h"

#include <QAbstractTableModel>
#include <QTableView>
#include <vector>

namespace ui
{

/// The type of a column: how its cells are shown, aligned and sorted.
enum class Kind {
    Text,
    Whole,
    Code,   // whole number shown with five digits, 00042
    Number, // with as many decimals as it has, four at most
    Amount, // with two decimals
    Day,
    Hour,
    YesNo,
};

/// One column of a grid.
struct GridColumn {
    QString title = {};
    Kind kind = Kind::Text;
    int width = 120; // pixels at 100 %; the last visible column takes the rest
    bool hidden = false;
};

/// Why a row stands out. Each reason has both a colour and a sign, so that colour alone never
/// carries the meaning.
enum class Highlight { None, Alert, Notice, Off, Done };

/// One row. `cells` has a value for every column, hidden ones included.
struct GridRow {
    QList<store::Value> cells = {};
    Highlight highlight = Highlight::None;
    int highlightedCell = -1; // column to highlight; -1 for all of them
    QString reason = {};      // what the highlight means, for tool tip and screen reader
};

/// The rows of a grid. Clicking a title sorts by the column's type, empty cells first and texts in
/// the store's order (an accented letter next to its plain one); clicking again reverses the order.
/// Row numbers are those on screen.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    /// Role of a cell's sign: its Highlight, if one is to be drawn.
    static constexpr int SignRole = Qt::UserRole + 1;

    /// Starts out without rows.
    GridModel(const Sesion &s, QList<GridColumn> columns, QObject *parent = nullptr);

    /// Replaces all rows, sorting them if a sort is active.
    void set(std::vector<GridRow> rows);
    /// Inserts a row where the active sort puts it or, without one, before the first row whose text
    /// in @p column is greater.
    /// @return its row number
    int insert(GridRow row, int column);
    /// Replaces a row's data without moving it.
    void change(int row, GridRow data);
    /// Removes one row.
    void remove(int row);

    /// The row at this place on screen.
    const GridRow &Row(int row) const;
    /// How many rows there are.
    int allRows() const;
    /// The id of a row, 0 where there is no such row.
    int idOf(int row) const;
    /// Where the row with an id stands, -1 when there is none.
    int rowOf(int id) const;
    /// The columns as passed to the constructor.
    const QList<GridColumn> &allColumns() const;
    /// The cell's text as shown.
    QString cellText(int row, int column) const;

    /// Searches rows @p from to @p until in order. A text matches a cell that begins with it,
    /// ignoring case; a number matches a cell equal to it.
    /// @return the row, or -1
    int BuscarEnGrilla(const store::Value &value, int column, int from, int until) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    struct Internals;
    std::shared_ptr<Internals> d;
};

/// The view of a GridModel: selects whole rows, sorts on click, copies the selected rows as text
/// (CTRL+C) and exports everything shown as CSV or XLSX from the context menu, below the widget's
/// own actions. ENTER and double click choose the current row.
class Grid : public QTableView
{
    Q_OBJECT
public:
    /// Does not take ownership of the model.
    Grid(Sesion &s, GridModel *model, QWidget *parent = nullptr);

    /// The model passed to the constructor.
    GridModel *gridModel() const;
    /// Sets the text shown in the middle of an empty grid: what to do next.
    void setEmptyText(const QString &text);
    /// Allows several rows to be selected, ranges included.
    void allowSeveral();
    /// The current row, -1 if there is none.
    int currentRow() const;
    /// Makes a row current and the only one selected, and scrolls to it. An invalid row clears the
    /// selection.
    void Seleccionar(int row);
    /// The id of the current row, 0 without one.
    int IdActual() const;
    /// Makes the row with that id the current one, in the middle where it has to be scrolled to.
    /// @return false, and nothing is changed, when there is none
    bool IrA(int id);
    /// Selected rows from first to last on screen.
    QList<int> selectedRows() const;
    /// The selected rows below their titles: cells separated by tabs, one row a line. "" without a
    /// selection.
    QString asText() const;
    /// Moves through the rows for an arrow or page key pressed in the box that filters the grid.
    /// @return whether the key was one of these
    bool walk(QKeyEvent *key);

Q_SIGNALS:
    /// The current row changed; -1 when there is none.
    void changedRow(int row);
    /// The user chose a row with ENTER or a double click.
    void chosenRow(int row);
    /// Everything shown was written to this file.
    void exported(const QString &file);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void tellRow();
    QList<int> shownColumns() const;
    void exportAs(const QString &suffix);
    void openMenu(QPoint place);
    QPoint menuPlace() const;

    static constexpr int notTold = -2;
    Sesion &m_s;
    QString m_empty;
    int m_told = -1; // row emitted last
    bool m_removing = false;
};

} // namespace ui
