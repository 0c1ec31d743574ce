#include "ui/grid.h"

#include "store/jet/text.h"
#include "store/opening.h"
#include "ui/boxes.h"
#include "ui/grid_export.h"
#include "ui/theme.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLocale>
#include <QMenu>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    Si = 27,
    No = 28,
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

/// The sign of a cell, for the delegate: a Realce.
constexpr int SignRole = Qt::UserRole + 1;

bool isNumeric(Clase c)
{
    return c == Clase::Entero || c == Clase::Codigo || c == Clase::Numero || c == Clase::Importe;
}

/// A row may have fewer cells than there are columns.
const Valor &celda(const FilaDeGrilla &fila, int columna)
{
    static const Valor none;
    return columna < fila.celdas.size() ? fila.celdas[columna] : none;
}

/// A key whose plain order is the order of jet::Comparar: the letters without accents and, for a
/// text that has some, the letters with them behind a mark that sorts before all letters.
std::string orderKey(const QString &text)
{
    const std::string utf8 = text.toStdString();
    const std::string folded = jet::Plegar(utf8);
    std::string key = jet::Llano(utf8);
    if (key != folded)
        key +=
            '\0'
            + QString::fromStdString(folded).normalized(QString::NormalizationForm_D).toStdString();
    return key;
}

/// Value by which a cell of any class but Texto is sorted; empty cells before all others.
double orderNumber(const Valor &v, Clase clase)
{
    constexpr double first = -std::numeric_limits<double>::infinity();
    if (v.EsNulo())
        return first;
    switch (clase) {
    case Clase::Dia: {
        const QDate day = v.toDate();
        return day.isValid() ? double(day.toJulianDay()) : first;
    }
    case Clase::Hora: {
        const QTime time = v.toTime();
        return time.isValid() ? time.msecsSinceStartOfDay() : first;
    }
    case Clase::SiNo:
        return v.toBool() ? 1 : 0;
    default:
        return v.toDouble();
    }
}

/// With the decimals that the number has, four at most.
QString numberText(const Valor &v)
{
    const QString plain = v.toMoneda().ATexto();
    const qsizetype point = plain.indexOf(u'.');
    const int decimals = point < 0 ? 0 : int(plain.size() - point - 1);
    return QLocale().toString(v.toDouble(), 'f', decimals);
}

} // namespace

// The rows stay where they were put; `orden` says which of them stands where on screen, so that a
// sort moves numbers and leaves its keys valid.
struct ModeloDeGrilla::Interno {
    QString si, no;
    QList<ColumnaDeGrilla> columnas;
    std::vector<FilaDeGrilla> filas;
    std::vector<int> orden;
    /// Of each column of texts, one for each of `filas`; empty until it is sorted by.
    std::vector<std::vector<std::string>> claves;
    int columnaDeOrden = -1;
    Qt::SortOrder sentido = Qt::AscendingOrder;

    const Valor &Celda(int i, int columna) const { return celda(filas[size_t(i)], columna); }
    QString Texto(int i, int columna) const;
    void Ordenar();
    bool Antes(const FilaDeGrilla &a, const FilaDeGrilla &b, int columna) const;
    void Agregar(FilaDeGrilla fila);
    void OlvidarClaves() { claves.assign(size_t(columnas.size()), {}); }
};

QString ModeloDeGrilla::Interno::Texto(int i, int columna) const
{
    const Valor &v = Celda(i, columna);
    if (v.EsNulo())
        return {};
    switch (columnas[columna].clase) {
    case Clase::Texto:
        return v.toText();
    case Clase::Entero:
        return QLocale().toString(v.toLong());
    case Clase::Codigo:
        return QString::number(v.toLong()).rightJustified(5, u'0');
    case Clase::Numero:
        return numberText(v);
    case Clase::Importe:
        return QLocale().toString(v.toDouble(), 'f', 2);
    case Clase::Dia:
        return TextoDeDia(v.toDate());
    case Clase::Hora:
        return v.toTime().toString(u"HH:mm");
    case Clase::SiNo:
        return v.toBool() ? si : no;
    }
    return {};
}

void ModeloDeGrilla::Interno::Ordenar()
{
    if (columnaDeOrden < 0)
        return;
    const auto by = [this](const auto &keys) {
        if (sentido == Qt::AscendingOrder)
            std::ranges::stable_sort(
                orden, [&](int a, int b) { return keys[size_t(a)] < keys[size_t(b)]; });
        else
            std::ranges::stable_sort(
                orden, [&](int a, int b) { return keys[size_t(b)] < keys[size_t(a)]; });
    };
    const Clase clase = columnas[columnaDeOrden].clase;
    if (clase == Clase::Texto) {
        auto &keys = claves[size_t(columnaDeOrden)];
        if (keys.empty()) {
            keys.reserve(filas.size());
            for (int i = 0; i < int(filas.size()); ++i)
                keys.push_back(orderKey(Texto(i, columnaDeOrden)));
        }
        by(keys);
        return;
    }
    std::vector<double> keys;
    keys.reserve(filas.size());
    for (int i = 0; i < int(filas.size()); ++i)
        keys.push_back(orderNumber(Celda(i, columnaDeOrden), clase));
    by(keys);
}

bool ModeloDeGrilla::Interno::Antes(const FilaDeGrilla &a, const FilaDeGrilla &b, int columna) const
{
    const Valor &x = celda(a, columna);
    const Valor &y = celda(b, columna);
    const Clase clase = columnas[columna].clase;
    if (clase == Clase::Texto)
        return jet::Comparar(x.toText().toStdString(), y.toText().toStdString()) < 0;
    return orderNumber(x, clase) < orderNumber(y, clase);
}

/// Behind the others; the caller gives it its place in `orden`.
void ModeloDeGrilla::Interno::Agregar(FilaDeGrilla fila)
{
    filas.push_back(std::move(fila));
    const int i = int(filas.size()) - 1;
    for (int c = 0; c < columnas.size(); ++c)
        if (auto &keys = claves[size_t(c)]; !keys.empty())
            keys.push_back(orderKey(Texto(i, c)));
}

ModeloDeGrilla::ModeloDeGrilla(const Sesion &s, QList<ColumnaDeGrilla> columnas, QObject *parent)
    : QAbstractTableModel(parent), d(std::make_shared<Interno>())
{
    d->si = s(Si);
    d->no = s(No);
    d->columnas = std::move(columnas);
    d->OlvidarClaves();
}

void ModeloDeGrilla::Poner(std::vector<FilaDeGrilla> filas)
{
    beginResetModel();
    d->filas = std::move(filas);
    d->orden.resize(d->filas.size());
    std::iota(d->orden.begin(), d->orden.end(), 0);
    d->OlvidarClaves();
    d->Ordenar();
    endResetModel();
}

int ModeloDeGrilla::Insertar(FilaDeGrilla fila, int columna)
{
    const auto row = [this](int i) -> const FilaDeGrilla & { return d->filas[size_t(i)]; };
    auto place = d->orden.end();
    if (const int c = d->columnaDeOrden; c >= 0) {
        const bool up = d->sentido == Qt::AscendingOrder;
        place = std::upper_bound(
            d->orden.begin(), d->orden.end(), fila, [&](const FilaDeGrilla &nueva, int i) {
                return up ? d->Antes(nueva, row(i), c) : d->Antes(row(i), nueva, c);
            });
    } else if (columna >= 0 && columna < d->columnas.size()) {
        place =
            std::ranges::find_if(d->orden, [&](int i) { return d->Antes(fila, row(i), columna); });
    }
    const int at = int(place - d->orden.begin());
    beginInsertRows({}, at, at);
    d->Agregar(std::move(fila));
    d->orden.insert(place, int(d->filas.size()) - 1);
    endInsertRows();
    return at;
}

void ModeloDeGrilla::Cambiar(int fila, FilaDeGrilla datos)
{
    if (fila < 0 || fila >= Filas())
        return;
    const int i = d->orden[size_t(fila)];
    d->filas[size_t(i)] = std::move(datos);
    for (int c = 0; c < d->columnas.size(); ++c)
        if (auto &keys = d->claves[size_t(c)]; !keys.empty())
            keys[size_t(i)] = orderKey(d->Texto(i, c));
    Q_EMIT dataChanged(index(fila, 0), index(fila, columnCount() - 1));
}

void ModeloDeGrilla::Quitar(int fila)
{
    if (fila < 0 || fila >= Filas())
        return;
    beginRemoveRows({}, fila, fila);
    const int gone = d->orden[size_t(fila)];
    d->orden.erase(d->orden.begin() + fila);
    for (int &i : d->orden)
        i -= i > gone;
    d->filas.erase(d->filas.begin() + gone);
    for (auto &keys : d->claves)
        if (!keys.empty())
            keys.erase(keys.begin() + gone);
    endRemoveRows();
}

const FilaDeGrilla &ModeloDeGrilla::Fila(int fila) const
{
    static const FilaDeGrilla none;
    return fila < 0 || fila >= Filas() ? none : d->filas[size_t(d->orden[size_t(fila)])];
}

int ModeloDeGrilla::Filas() const { return int(d->orden.size()); }

const QList<ColumnaDeGrilla> &ModeloDeGrilla::Columnas() const { return d->columnas; }

QString ModeloDeGrilla::TextoDeCelda(int fila, int columna) const
{
    if (fila < 0 || fila >= Filas() || columna < 0 || columna >= d->columnas.size())
        return {};
    return d->Texto(d->orden[size_t(fila)], columna);
}

int ModeloDeGrilla::BuscarEnGrilla(const Valor &valor, int columna, int desde, int hasta) const
{
    if (columna < 0 || columna >= d->columnas.size() || valor.EsNulo())
        return -1;
    const QString *wanted = valor.Es<QString>();
    const bool number = isNumeric(d->columnas[columna].clase);
    const auto matches = [&](int i) {
        const Valor &cell = d->Celda(i, columna);
        const QString *text = cell.Es<QString>();
        if (wanted)
            return text ? text->startsWith(*wanted, Qt::CaseInsensitive)
                        : d->Texto(i, columna).startsWith(*wanted, Qt::CaseInsensitive);
        // A text that is no number equals none, not even 0; so does an empty cell.
        if (text || cell.EsNulo())
            return text && *text == valor.toText();
        return cell == valor || (number && cell.toDouble() == valor.toDouble());
    };
    for (int f = std::max(desde, 0); f <= std::min(hasta, Filas() - 1); ++f)
        if (matches(d->orden[size_t(f)]))
            return f;
    return -1;
}

int ModeloDeGrilla::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Filas();
}

int ModeloDeGrilla::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(d->columnas.size());
}

QVariant ModeloDeGrilla::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= Filas() || index.column() >= d->columnas.size())
        return {};
    const FilaDeGrilla &row = Fila(index.row());
    const bool stands = row.realce != Realce::Ninguno
                        && (row.celdaRealzada < 0 || row.celdaRealzada == index.column());
    switch (role) {
    case Qt::DisplayRole:
        return TextoDeCelda(index.row(), index.column());
    case Qt::AccessibleTextRole: {
        const QString text = TextoDeCelda(index.row(), index.column());
        return stands && !row.motivo.isEmpty() ? text + u", "_s + row.motivo : text;
    }
    case Qt::ToolTipRole:
        return stands && !row.motivo.isEmpty() ? row.motivo.toHtmlEscaped() : QVariant();
    case Qt::TextAlignmentRole:
        return int((isNumeric(d->columnas[index.column()].clase) ? Qt::AlignRight : Qt::AlignLeft)
                   | Qt::AlignVCenter);
    case Qt::BackgroundRole:
        if (stands && row.realce != Realce::Apagado)
            return QBrush(row.realce == Realce::Alerta ? PaletaEnUso().alerta
                                                       : PaletaEnUso().aviso);
        return {};
    case Qt::ForegroundRole:
        if (stands && row.realce == Realce::Apagado)
            return QBrush(PaletaEnUso().textoSuave);
        return {};
    case SignRole: {
        if (!stands)
            return {};
        const auto shown =
            std::ranges::find_if(d->columnas, [](const auto &c) { return !c.oculta; });
        const bool here = row.celdaRealzada >= 0 || index.column() == shown - d->columnas.begin();
        return here ? QVariant(int(row.realce)) : QVariant();
    }
    default:
        return {};
    }
}

QVariant ModeloDeGrilla::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= d->columnas.size())
        return QAbstractTableModel::headerData(section, orientation, role);
    const ColumnaDeGrilla &column = d->columnas[section];
    if (role == Qt::DisplayRole)
        return column.titulo;
    if (role == Qt::TextAlignmentRole)
        return int((isNumeric(column.clase) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

void ModeloDeGrilla::sort(int columna, Qt::SortOrder orden)
{
    if (columna >= d->columnas.size())
        return;
    d->columnaDeOrden = std::max(columna, -1);
    d->sentido = orden;
    if (columna < 0)
        return;
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    const std::vector<int> before = d->orden;
    d->Ordenar();
    const QModelIndexList kept = persistentIndexList();
    if (!kept.isEmpty()) {
        std::vector<int> place(before.size());
        for (size_t f = 0; f < d->orden.size(); ++f)
            place[size_t(d->orden[f])] = int(f);
        QModelIndexList moved;
        for (const QModelIndex &i : kept)
            moved << index(place[size_t(before[size_t(i.row())])], i.column());
        changePersistentIndexList(kept, moved);
    }
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

namespace
{

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
        const QVariant sign = index.data(SignRole);
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
        return index.data(SignRole).isValid()
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

QString Grilla::ComoTexto() const
{
    const QList<int> rows = FilasSeleccionadas();
    if (rows.isEmpty())
        return {};
    const ModeloDeGrilla &m = *Modelo();
    QString text;
    const auto line = [&](const auto &cell) {
        QStringList cells;
        for (int visual = 0; visual < m.columnCount(); ++visual)
            if (const int c = horizontalHeader()->logicalIndex(visual); !isColumnHidden(c))
                cells << flat(cell(c));
        text += cells.join(u'\t') + u'\n';
    };
    line([&](int c) { return m.Columnas()[c].titulo; });
    for (const int row : rows)
        line([&](int c) { return m.TextoDeCelda(row, c); });
    return text;
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
        csv ? ExportarCsv(*Modelo(), file) : ExportarXlsx(*Modelo(), file);
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
