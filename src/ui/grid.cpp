#include "ui/grid.h"

#include "store/jet/text.h"
#include "ui/boxes.h"
#include "ui/theme.h"

#include <QLocale>
#include <algorithm>
#include <limits>
#include <numeric>

using namespace Qt::StringLiterals;

namespace
{

enum Texto { Si = 27, No = 28 };

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
    const bool muted = row.realce == Realce::Apagado || row.realce == Realce::Hecho;
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
        if (stands && !muted)
            return QBrush(row.realce == Realce::Alerta ? PaletaEnUso().alerta
                                                       : PaletaEnUso().aviso);
        return {};
    case Qt::ForegroundRole:
        if (stands && muted)
            return QBrush(PaletaEnUso().textoSuave);
        return {};
    case RolDeSigno: {
        if (!stands || row.realce == Realce::Hecho)
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
