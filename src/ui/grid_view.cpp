#include "texts/ui.h"
#include "ui/grid.h"
#include "ui/grid_export.h"
#include "ui/theme.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>

using namespace ui;
using namespace Qt::StringLiterals;

namespace
{

/// Draws a cell with its row's sign: a triangle for an alert, a dot for a notice, a cross for what
/// is past.
class CellsPainter : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        // The style sheet has one background for all cells, so a cell's own is painted here.
        const bool selected = option.state & QStyle::State_Selected;
        if (const QVariant ground = index.data(Qt::BackgroundRole); ground.isValid() && !selected)
            painter->fillRect(option.rect, ground.value<QBrush>());
        const QVariant sign = index.data(GridModel::SignRole);
        if (!sign.isValid())
            return QStyledItemDelegate::paint(painter, option, index);

        if (selected)
            painter->fillRect(option.rect, option.palette.highlight());
        const int side = option.fontMetrics.ascent() * 3 / 4;
        const QRect place(option.rect.left() + space::S, option.rect.center().y() - side / 2 + 1,
                          side, side);
        drawSign(painter, place, Highlight(sign.toInt()),
                 option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
        QStyleOptionViewItem rest = option;
        rest.rect.setLeft(place.right() + 1);
        QStyledItemDelegate::paint(painter, rest, index);
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QSize text = QStyledItemDelegate::sizeHint(option, index);
        return index.data(GridModel::SignRole).isValid()
                   ? text + QSize(option.fontMetrics.ascent() + space::S, 0)
                   : text;
    }

private:
    static void drawSign(QPainter *painter, const QRectF &r, Highlight sign, const QColor &colour)
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(colour);
        if (sign == Highlight::Alert) {
            painter->drawPolygon(
                QPolygonF{{QPointF(r.center().x(), r.top()), r.bottomRight(), r.bottomLeft()}});
        } else if (sign == Highlight::Notice) {
            painter->drawEllipse(r.adjusted(1, 1, -1, -1));
        } else {
            painter->setPen(QPen(colour, 1.6, Qt::SolidLine, Qt::RoundCap));
            painter->drawLine(QPointF(r.center().x(), r.top()),
                              QPointF(r.center().x(), r.bottom()));
            const qreal arm = r.top() + r.height() / 3;
            painter->drawLine(QPointF(r.left() + 1, arm), QPointF(r.right() - 1, arm));
        }
        painter->restore();
    }
};

QString flat(QString text)
{
    return text.replace(u'\t', u' ').replace(u'\n', u' ').replace(u'\r', u' ');
}

int firstVisible(const GridModel &model)
{
    for (int c = 0; c < model.columnCount(); ++c)
        if (!model.allColumns()[c].hidden)
            return c;
    return 0;
}

} // namespace

Grid::Grid(Sesion &s, GridModel *model, QWidget *parent) : QTableView(parent), m_s(s)
{
    // Connected before the view's own slots, so that while a row is being removed the new current
    // row is not emitted until it is gone.
    connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this] { m_removing = true; });
    setModel(model);
    setItemDelegate(new CellsPainter(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);

    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + space::M);

    QHeaderView *titles = horizontalHeader();
    titles->setSectionsMovable(true);
    titles->setHighlightSections(false);
    titles->setMinimumSectionSize(36);
    titles->setStretchLastSection(true);
    titles->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    for (int c = 0; c < model->columnCount(); ++c) {
        setColumnWidth(c, model->allColumns()[c].width);
        setColumnHidden(c, model->allColumns()[c].hidden);
    }

    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        // TAB makes a row current without selecting it.
        if (const QModelIndex now = currentIndex(); now.isValid()
                                                    && selectionMode() == SingleSelection
                                                    && !selectionModel()->isSelected(now))
            selectionModel()->select(now, QItemSelectionModel::ClearAndSelect
                                              | QItemSelectionModel::Rows);
        if (!m_removing)
            tellRow();
    });
    connect(model, &QAbstractItemModel::rowsRemoved, this, [this] {
        m_removing = false;
        m_told = notTold;
        tellRow();
    });
    connect(model, &QAbstractItemModel::modelReset, this, &Grid::tellRow);
    connect(this, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex &index) { Q_EMIT chosenRow(index.row()); });
}

void Grid::tellRow()
{
    const int row = currentRow();
    if (row < 0 && m_told == -1)
        return;
    m_told = row;
    Q_EMIT changedRow(row);
}

GridModel *Grid::gridModel() const { return static_cast<GridModel *>(model()); }

void Grid::setEmptyText(const QString &text)
{
    m_empty = text;
    setAccessibleDescription(text);
    viewport()->update();
}

void Grid::allowSeveral() { setSelectionMode(ExtendedSelection); }

int Grid::currentRow() const { return currentIndex().row(); }

void Grid::Seleccionar(int row)
{
    if (row < 0 || row >= gridModel()->allRows()) {
        selectionModel()->clear();
        return;
    }
    // A hidden current cell would make the arrow keys useless.
    const QModelIndex cell = gridModel()->index(row, firstVisible(*gridModel()));
    selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect
                                                | QItemSelectionModel::Rows);
    scrollTo(cell);
}

int Grid::IdActual() const { return gridModel()->idOf(currentRow()); }

bool Grid::IrA(int id)
{
    const int row = gridModel()->rowOf(id);
    if (row < 0)
        return false;
    const bool seen = viewport()->rect().contains(
        visualRect(gridModel()->index(row, firstVisible(*gridModel()))));
    Seleccionar(row);
    if (!seen)
        scrollTo(currentIndex(), QAbstractItemView::PositionAtCenter);
    return true;
}

QList<int> Grid::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex &index : selectionModel()->selectedRows())
        rows << index.row();
    std::ranges::sort(rows);
    return rows;
}

// In the user's own order.
QList<int> Grid::shownColumns() const
{
    QList<int> columns;
    for (int visual = 0; visual < gridModel()->columnCount(); ++visual)
        if (const int c = horizontalHeader()->logicalIndex(visual); !isColumnHidden(c))
            columns << c;
    return columns;
}

QString Grid::asText() const
{
    const QList<int> rows = selectedRows();
    if (rows.isEmpty())
        return {};
    const GridModel &m = *gridModel();
    const QList<int> columns = shownColumns();
    QString text;
    const auto line = [&](const auto &cell) {
        QStringList cells;
        for (const int c : columns)
            cells << flat(cell(c));
        text += cells.join(u'\t') + u'\n';
    };
    line([&](int c) { return m.allColumns()[c].title; });
    for (const int row : rows)
        line([&](int c) { return m.cellText(row, c); });
    return text;
}

bool Grid::walk(QKeyEvent *key)
{
    switch (key->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        keyPressEvent(key);
        return true;
    default:
        return false;
    }
}

QModelIndex Grid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    // Whole rows are selected, so HOME and END go to the first and last row.
    const int column = firstVisible(*gridModel());
    if (action == MoveHome)
        return gridModel()->index(0, column);
    if (action == MoveEnd)
        return gridModel()->index(gridModel()->allRows() - 1, column);
    return QTableView::moveCursor(action, modifiers);
}

void Grid::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (m_empty.isEmpty() || gridModel()->allRows() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(paletteInUse().softText);
    painter.drawText(viewport()->rect().adjusted(space::L, space::L, -space::L, -space::L),
                     int(Qt::AlignCenter) | Qt::TextWordWrap, m_empty);
}

void Grid::keyPressEvent(QKeyEvent *event)
{
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        if (currentRow() >= 0)
            Q_EMIT chosenRow(currentRow());
        event->accept();
        return;
    }
    if (event->matches(QKeySequence::Copy)) {
        if (const QString text = asText(); !text.isEmpty())
            QGuiApplication::clipboard()->setText(text);
        event->accept();
        return;
    }
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        openMenu(menuPlace());
        return;
    }
    QTableView::keyPressEvent(event);
}

QPoint Grid::menuPlace() const
{
    const QRect row = visualRect(currentIndex());
    return viewport()->mapToGlobal(row.isValid() ? row.bottomLeft() : viewport()->rect().center());
}

void Grid::contextMenuEvent(QContextMenuEvent *event)
{
    openMenu(event->reason() == QContextMenuEvent::Keyboard ? menuPlace() : event->globalPos());
    event->accept();
}

void Grid::openMenu(QPoint place)
{
    auto *menu = new QMenu(this);
    menu->setObjectName(u"menuGrilla"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(actions());
    if (!actions().isEmpty())
        menu->addSeparator();
    QAction *copy = menu->addAction(m_s(text::GridViewCopy), this,
                                    [this] { QGuiApplication::clipboard()->setText(asText()); });
    copy->setShortcut(QKeySequence::Copy);
    copy->setEnabled(selectionModel()->hasSelection());
    menu->addSeparator();
    QAction *csv = menu->addAction(m_s(text::SaveAsCsv), this, [this] { exportAs(u"csv"_s); });
    QAction *xlsx = menu->addAction(m_s(text::SaveAsXlsx), this, [this] { exportAs(u"xlsx"_s); });
    csv->setEnabled(gridModel()->allRows() > 0);
    xlsx->setEnabled(gridModel()->allRows() > 0);
    menu->popup(place);
}

void Grid::exportAs(const QString &suffix)
{
    const bool csv = suffix == u"csv";
    const QString name = accessibleName().isEmpty() ? m_s(text::TableFileName) : accessibleName();
    QString offered;
    for (const QChar c : name)
        offered += c.isLetterOrNumber() ? c : QChar(u' ');
    const auto chosen =
        m_s.dialogos.saveFile(m_s(text::SaveTableTitle), offered.simplified() + u'.' + suffix,
                              m_s(csv ? text::CsvFilter : text::XlsxFilter));
    if (!chosen)
        return;
    QString file = *chosen;
    if (!file.endsWith(u'.' + suffix, Qt::CaseInsensitive))
        file += u'.' + suffix;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    QString failure;
    try {
        if (csv)
            exportCsv(*gridModel(), shownColumns(), file);
        else
            exportXlsx(*gridModel(), shownColumns(), file);
    } catch (const store::StoreError &e) {
        failure = e.description;
    } catch (const std::exception &e) {
        failure = QString::fromUtf8(e.what());
    }
    QGuiApplication::restoreOverrideCursor();
    if (!failure.isEmpty()) {
        m_s.dialogos.Mensaje(m_s(text::FileNotSaved) + u'\n' + failure);
        return;
    }
    QToolTip::showText(viewport()->mapToGlobal(viewport()->rect().center()),
                       m_s(text::FileSaved) + u' ' + file.toHtmlEscaped(), this);
    Q_EMIT exported(file);
}
