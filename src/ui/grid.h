// Tables of all forms: rows in memory, sorted by what their columns mean.
#pragma once

#include "store/session.h"

#include <QAbstractTableModel>
#include <QTableView>
#include <vector>

namespace ui
{

/// What a column holds: how its cells are shown, aligned and sorted.
enum class Kind {
    Text,
    Whole,
    Code,   // a whole number shown with five digits, 00042
    Number, // with the decimals that it has
    Amount, // with two decimals
    Day,
    Hour,
    YesNo,
};

struct GridColumn {
    QString title = {};
    Kind kind = Kind::Text;
    int width = 120; // pixels at 100 %; the last visible column takes what is left
    bool hidden = false;
};

/// Why a row stands out. Each has a colour of the theme and a sign beside it, so that nobody needs
/// to see colours.
enum class Highlight { None, Alert, Notice, Off, Done };

/// One row, with a value for each column, hidden ones too.
struct GridRow {
    QList<store::Value> cells = {};
    Highlight highlight = Highlight::None;
    int highlightedCell = -1; // column that takes colour and sign; -1 is all of them
    QString reason = {};      // what the colour means, as tool tip and for screen readers
};

/// The rows of a grid. What a row is known by is its id: the number in the first hidden column of
/// whole numbers, else in the first column of codes. A click on a title sorts by the type of the
/// column, texts as the store orders them (an accented letter beside its plain one), empty cells
/// first; a second click turns it round. Row numbers are those on screen.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    /// Role of a cell's sign: its Realce, where one is to be drawn.
    static constexpr int SignRole = Qt::UserRole + 1;

    GridModel(const Sesion &s, QList<GridColumn> columns, QObject *parent = nullptr);

    /// Takes the place of all rows, sorted if a sort is on.
    void set(std::vector<GridRow> rows);
    /// Puts one row where the sort says, or before the first row whose text of @p column is
    /// greater when no sort is on. @return where it stands now
    int insert(GridRow row, int column);
    /// Changes a row where it stands.
    void change(int row, GridRow data);
    void remove(int row);

    const GridRow &Row(int row) const;
    int allRows() const;
    /// The id of a row, 0 where there is no such row.
    int idOf(int row) const;
    /// Where the row with an id stands, -1 when there is none.
    int rowOf(int id) const;
    const QList<GridColumn> &allColumns() const;
    /// The cell as it is shown.
    QString cellText(int row, int column) const;

    /// Linear search from row @p from to row @p until: a text matches when the cell begins with
    /// it, letter case aside, a number when the cell equals it. @return the row, or -1
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

/// The view of a GridModel. Sorts on click, copies the selected rows as text (CTRL+C), exports
/// everything shown as CSV or XLSX (context menu, where the actions of the widget come first),
/// selects whole rows. ENTER and double click take the current row.
class Grid : public QTableView
{
    Q_OBJECT
public:
    Grid(Sesion &s, GridModel *model, QWidget *parent = nullptr);

    GridModel *gridModel() const;
    /// What to do next, shown in the middle while there is no row.
    void setEmptyText(const QString &text);
    /// Lets several rows be selected, from the first to the last click as well.
    void allowSeveral();
    /// The current row, -1 without one.
    int currentRow() const;
    /// Makes a row the current and only selected one and scrolls to it.
    void Seleccionar(int row);
    /// The id of the current row, 0 without one.
    int IdActual() const;
    /// Makes the row with that id the current one, in the middle where it has to be scrolled to.
    /// @return false, and nothing is changed, when there is none
    bool IrA(int id);
    /// Selected rows from first to last on screen.
    QList<int> selectedRows() const;
    /// Selected rows with their titles, cells parted by tabs.
    QString asText() const;
    /// Walks the rows by a key pressed in the box that filters them. @return whether it was one
    /// that walks
    bool walk(QKeyEvent *key);

Q_SIGNALS:
    /// The current row changed; -1 when there is none.
    void changedRow(int row);
    /// Taken by ENTER or a double click.
    void chosenRow(int row);
    /// Everything shown was written to a file.
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
    int m_told = -1; // row told last
    bool m_removing = false;
};

} // namespace ui
