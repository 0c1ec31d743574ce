// The board's lines as a table: the model, and how its rows are painted.
#pragma once

#include "board/navigation.h"

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

/// Row 0 is the head with the day; one row a line follows, or one that says that there is none.
class ModeloDePizarra : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Columna { Dibujo, Mensaje, Icono1, Icono2, Columnas };
    enum class Clase { Encabezado, Linea, Vacia };
    enum Papel { PapelClase = Qt::UserRole, PapelEnlace, PapelActivo };

    /// Whether this program can open a destination; what it cannot is shown pale.
    using Disponible = std::function<bool(const Destino &)>;

    ModeloDePizarra(Sesion &s, Disponible disponible, QObject *parent);

    /// Reads the lines again. @throws ErrorDeAlmacen
    void Cargar();
    /// What a click on the cell opens.
    Destino DestinoDe(const QModelIndex &celda) const;
    /// What ENTER opens there: the cell's own, else the first that the line has.
    Destino DestinoDeFila(const QModelIndex &celda) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    Clase ClaseDe(int fila) const;
    QVariant textoDe(const QModelIndex &celda) const;
    QVariant dibujoDe(const QModelIndex &celda) const;
    QString queAbre(const QModelIndex &celda) const;

    Sesion &m_s;
    Disponible m_disponible;
    QList<LineaDePizarra> m_lineas;
};

/// Paints the rows: two lines of text at most, icons that look as if they could be clicked.
class DelegadoDePizarra : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    static int AltoDe(ModeloDePizarra::Clase clase, const QFontMetrics &letra);
};
