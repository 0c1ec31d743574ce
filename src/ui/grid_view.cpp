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

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Copiar = 9304,
    ComoCsv = 9305,
    ComoXlsx = 9306,
    TituloDeGuardar = 9307,
    NombrePropio = 9308,
    NoSeGuardo = 9309,
    SeGuardo = 9310,
    TipoCsv = 9311,
    TipoXlsx = 9312,
};

/// Draws a cell with the sign of its row: a triangle for an alert, a dot for a notice, a cross for
/// what is past.
class PintorDeCeldas : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        // The style sheet knows one ground for all cells, so a cell's own one is painted here.
        const bool selected = option.state & QStyle::State_Selected;
        if (const QVariant ground = index.data(Qt::BackgroundRole); ground.isValid() && !selected)
            painter->fillRect(option.rect, ground.value<QBrush>());
        const QVariant sign = index.data(ModeloDeGrilla::RolDeSigno);
        if (!sign.isValid())
            return QStyledItemDelegate::paint(painter, option, index);

        if (selected)
            painter->fillRect(option.rect, option.palette.highlight());
        const int side = option.fontMetrics.ascent() * 3 / 4;
        const QRect place(option.rect.left() + Espacio::S, option.rect.center().y() - side / 2 + 1,
                          side, side);
        drawSign(painter, place, Realce(sign.toInt()),
                 option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
        QStyleOptionViewItem rest = option;
        rest.rect.setLeft(place.right() + 1);
        QStyledItemDelegate::paint(painter, rest, index);
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QSize text = QStyledItemDelegate::sizeHint(option, index);
        return index.data(ModeloDeGrilla::RolDeSigno).isValid()
                   ? text + QSize(option.fontMetrics.ascent() + Espacio::S, 0)
                   : text;
    }

private:
    static void drawSign(QPainter *painter, const QRectF &r, Realce sign, const QColor &colour)
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(colour);
        if (sign == Realce::Alerta) {
            painter->drawPolygon(
                QPolygonF{{QPointF(r.center().x(), r.top()), r.bottomRight(), r.bottomLeft()}});
        } else if (sign == Realce::Aviso) {
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

int firstVisible(const ModeloDeGrilla &model)
{
    for (int c = 0; c < model.columnCount(); ++c)
        if (!model.Columnas()[c].oculta)
            return c;
    return 0;
}

} // namespace

Grilla::Grilla(Sesion &s, ModeloDeGrilla *modelo, QWidget *parent) : QTableView(parent), m_s(s)
{
    // Before the view's own slots: while a row goes, the current one is told when it is gone.
    connect(modelo, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this] { m_quitando = true; });
    setModel(modelo);
    setItemDelegate(new PintorDeCeldas(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);

    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + Espacio::M);

    QHeaderView *titles = horizontalHeader();
    titles->setSectionsMovable(true);
    titles->setHighlightSections(false);
    titles->setMinimumSectionSize(36);
    titles->setStretchLastSection(true);
    titles->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    for (int c = 0; c < modelo->columnCount(); ++c) {
        setColumnWidth(c, modelo->Columnas()[c].ancho);
        setColumnHidden(c, modelo->Columnas()[c].oculta);
    }

    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        // Arriving with TAB makes a row the current one without marking it.
        if (const QModelIndex now = currentIndex(); now.isValid()
                                                    && selectionMode() == SingleSelection
                                                    && !selectionModel()->isSelected(now))
            selectionModel()->select(now, QItemSelectionModel::ClearAndSelect
                                              | QItemSelectionModel::Rows);
        if (!m_quitando)
            tellRow();
    });
    connect(modelo, &QAbstractItemModel::rowsRemoved, this, [this] {
        m_quitando = false;
        m_dicha = notTold;
        tellRow();
    });
    connect(modelo, &QAbstractItemModel::modelReset, this, &Grilla::tellRow);
    connect(this, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex &index) { Q_EMIT filaElegida(index.row()); });
}

void Grilla::tellRow()
{
    const int row = FilaActual();
    if (row < 0 && m_dicha == -1)
        return;
    m_dicha = row;
    Q_EMIT filaCambiada(row);
}

ModeloDeGrilla *Grilla::Modelo() const { return static_cast<ModeloDeGrilla *>(model()); }

void Grilla::PonerVacio(const QString &texto)
{
    m_vacio = texto;
    setAccessibleDescription(texto);
    viewport()->update();
}

void Grilla::PermitirVarias() { setSelectionMode(ExtendedSelection); }

int Grilla::FilaActual() const { return currentIndex().row(); }

void Grilla::Seleccionar(int fila)
{
    if (fila < 0 || fila >= Modelo()->Filas()) {
        selectionModel()->clear();
        return;
    }
    // A hidden cell as the current one would make the arrow keys useless.
    const QModelIndex cell = Modelo()->index(fila, firstVisible(*Modelo()));
    selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect
                                                | QItemSelectionModel::Rows);
    scrollTo(cell);
}

QList<int> Grilla::FilasSeleccionadas() const
{
    QList<int> rows;
    for (const QModelIndex &index : selectionModel()->selectedRows())
        rows << index.row();
    std::ranges::sort(rows);
    return rows;
}

// In the order in which the user has put them.
QList<int> Grilla::shownColumns() const
{
    QList<int> columns;
    for (int visual = 0; visual < Modelo()->columnCount(); ++visual)
        if (const int c = horizontalHeader()->logicalIndex(visual); !isColumnHidden(c))
            columns << c;
    return columns;
}

QString Grilla::ComoTexto() const
{
    const QList<int> rows = FilasSeleccionadas();
    if (rows.isEmpty())
        return {};
    const ModeloDeGrilla &m = *Modelo();
    const QList<int> columns = shownColumns();
    QString text;
    const auto line = [&](const auto &cell) {
        QStringList cells;
        for (const int c : columns)
            cells << flat(cell(c));
        text += cells.join(u'\t') + u'\n';
    };
    line([&](int c) { return m.Columnas()[c].titulo; });
    for (const int row : rows)
        line([&](int c) { return m.TextoDeCelda(row, c); });
    return text;
}

bool Grilla::Recorrer(QKeyEvent *tecla)
{
    switch (tecla->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        keyPressEvent(tecla);
        return true;
    default:
        return false;
    }
}

QModelIndex Grilla::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    // Rows are what is chosen here, so HOME and END go to the first and the last of them.
    const int column = firstVisible(*Modelo());
    if (action == MoveHome)
        return Modelo()->index(0, column);
    if (action == MoveEnd)
        return Modelo()->index(Modelo()->Filas() - 1, column);
    return QTableView::moveCursor(action, modifiers);
}

void Grilla::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (m_vacio.isEmpty() || Modelo()->Filas() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(PaletaEnUso().textoSuave);
    painter.drawText(viewport()->rect().adjusted(Espacio::L, Espacio::L, -Espacio::L, -Espacio::L),
                     int(Qt::AlignCenter) | Qt::TextWordWrap, m_vacio);
}

void Grilla::keyPressEvent(QKeyEvent *event)
{
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        if (FilaActual() >= 0)
            Q_EMIT filaElegida(FilaActual());
        event->accept();
        return;
    }
    if (event->matches(QKeySequence::Copy)) {
        if (const QString text = ComoTexto(); !text.isEmpty())
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

QPoint Grilla::menuPlace() const
{
    const QRect row = visualRect(currentIndex());
    return viewport()->mapToGlobal(row.isValid() ? row.bottomLeft() : viewport()->rect().center());
}

void Grilla::contextMenuEvent(QContextMenuEvent *event)
{
    openMenu(event->reason() == QContextMenuEvent::Keyboard ? menuPlace() : event->globalPos());
    event->accept();
}

void Grilla::openMenu(QPoint place)
{
    auto *menu = new QMenu(this);
    menu->setObjectName(u"menuGrilla"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(actions());
    if (!actions().isEmpty())
        menu->addSeparator();
    QAction *copy = menu->addAction(m_s(Copiar), this,
                                    [this] { QGuiApplication::clipboard()->setText(ComoTexto()); });
    copy->setShortcut(QKeySequence::Copy);
    copy->setEnabled(selectionModel()->hasSelection());
    menu->addSeparator();
    QAction *csv = menu->addAction(m_s(ComoCsv), this, [this] { exportAs(u"csv"_s); });
    QAction *xlsx = menu->addAction(m_s(ComoXlsx), this, [this] { exportAs(u"xlsx"_s); });
    csv->setEnabled(Modelo()->Filas() > 0);
    xlsx->setEnabled(Modelo()->Filas() > 0);
    menu->popup(place);
}

void Grilla::exportAs(const QString &suffix)
{
    const bool csv = suffix == u"csv";
    const QString name = accessibleName().isEmpty() ? m_s(NombrePropio) : accessibleName();
    QString offered;
    for (const QChar c : name)
        offered += c.isLetterOrNumber() ? c : QChar(u' ');
    const auto chosen = m_s.dialogos.GuardarArchivo(
        m_s(TituloDeGuardar), offered.simplified() + u'.' + suffix, m_s(csv ? TipoCsv : TipoXlsx));
    if (!chosen)
        return;
    QString file = *chosen;
    if (!file.endsWith(u'.' + suffix, Qt::CaseInsensitive))
        file += u'.' + suffix;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    QString failure;
    try {
        if (csv)
            ExportarCsv(*Modelo(), shownColumns(), file);
        else
            ExportarXlsx(*Modelo(), shownColumns(), file);
    } catch (const ErrorDeAlmacen &e) {
        failure = e.descripcion;
    } catch (const std::exception &e) {
        failure = QString::fromUtf8(e.what());
    }
    QGuiApplication::restoreOverrideCursor();
    if (!failure.isEmpty()) {
        m_s.dialogos.Mensaje(m_s(NoSeGuardo) + u'\n' + failure);
        return;
    }
    QToolTip::showText(viewport()->mapToGlobal(viewport()->rect().center()),
                       m_s(SeGuardo) + u' ' + file.toHtmlEscaped(), this);
    Q_EMIT exportada(file);
}
