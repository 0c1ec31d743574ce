// The board as a table: its model and its painting.
#pragma once

#include "board/board_notices.h"

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

namespace board
{

/// Row 0 is the header with the date. Below it there is one row per line, or one saying that there
/// are none.
class BoardModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    /// The columns of a line.
    enum Column { Picture, Message, Icon1, Icon2, ColumnCount };
    /// What a row shows.
    enum class Kind { Header, Notice, Line, Empty };
    /// Roles beyond Qt's own: KindRole is the row's Kind, ActiveRole whether a click on the cell
    /// opens something.
    enum Paper { KindRole = Qt::UserRole, LinkRole, ActiveRole };

    /// Whether this program can open a target; icons of others are shown faded.
    using Available = std::function<bool(const Target &)>;

    /// Starts out empty; see load().
    BoardModel(Sesion &s, Available available, QObject *parent);

    /// Reads the lines again.
    /// @throws StoreError
    void load();
    /// What a click on the cell opens.
    Target targetOf(const QModelIndex &cell) const;
    /// What ENTER on the cell opens: its own target, else the first one of its line.
    Target rowTarget(const QModelIndex &cell) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    Kind kindOf(int row) const;
    const BoardNotice &noticeAt(int row) const { return m_notices[row - 1]; }
    const BoardLine &lineAt(int row) const { return m_lines[row - 1 - m_notices.size()]; }
    QVariant text(const QModelIndex &cell) const;
    QVariant picture(const QModelIndex &cell) const;
    QString thatOpens(const QModelIndex &cell) const;

    Sesion &m_s;
    Available m_available;
    QList<BoardNotice> m_notices; // before the lines
    QList<BoardLine> m_lines;
};

/// Paints the rows: at most two lines of text, and icons that look clickable.
class BoardDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    /// Height of a row in pixels.
    static int heightOf(BoardModel::Kind kind, const QFontMetrics &font);
};

} // namespace board
