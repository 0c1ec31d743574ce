// The board's lines as a table: the model, and how its rows are painted.
#pragma once

#include "board/navigation.h"

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

namespace board
{

/// Row 0 is the head with the day; one row a line follows, or one that says that there is none.
class BoardModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Picture, Message, Icon1, Icon2, ColumnCount };
    enum class Kind { Header, Line, Empty };
    enum Paper { KindRole = Qt::UserRole, LinkRole, ActiveRole };

    /// Whether this program can open a destination; what it cannot is shown pale.
    using Available = std::function<bool(const Target &)>;

    BoardModel(Sesion &s, Available available, QObject *parent);

    /// Reads the lines again. @throws StoreError
    void load();
    /// What a click on the cell opens.
    Target targetOf(const QModelIndex &cell) const;
    /// What ENTER opens there: the cell's own, else the first that the line has.
    Target rowTarget(const QModelIndex &cell) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    Kind kindOf(int row) const;
    QVariant text(const QModelIndex &cell) const;
    QVariant picture(const QModelIndex &cell) const;
    QString thatOpens(const QModelIndex &cell) const;

    Sesion &m_s;
    Available m_available;
    QList<BoardLine> m_lines;
};

/// Paints the rows: two lines of text at most, icons that look as if they could be clicked.
class BoardDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    static int heightOf(BoardModel::Kind kind, const QFontMetrics &font);
};

} // namespace board
