#include "board/board_view.h"

#include "ui/pictures.h"
#include "ui/theme.h"

#include <QAbstractItemView>
#include <QLocale>
#include <QPainter>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    ResumenDelDia = 4007,
    SinNovedades = 4008,
    Analisis = 9102,
    Mensajeria = 9103,
    Listados = 9104,
    Agenda = 9105,
    QueSigue = 9114,
    NoDisponible = 9115,
    Telefonos = 9124,
};

constexpr int linePicture = 28;
constexpr int headPicture = 36;
constexpr int emptyPicture = 72;
constexpr int clickablePicture = 24;
constexpr int clickableField = 38;

bool isIcon(int column)
{
    return column == ModeloDePizarra::Icono1 || column == ModeloDePizarra::Icono2;
}

CualIcono iconOf(int column)
{
    return column == ModeloDePizarra::Icono1 ? CualIcono::Primero : CualIcono::Segundo;
}

void paintPicture(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index,
                  QRect field, int size, QIcon::Mode mode = QIcon::Normal)
{
    const auto icon = index.data(Qt::DecorationRole).value<QIcon>();
    if (icon.isNull())
        return;
    QRect place(0, 0, size, size);
    place.moveCenter(field.center());
    const qreal scale = option.widget ? option.widget->devicePixelRatioF() : 1.0;
    painter.drawPixmap(place, icon.pixmap(place.size(), scale, mode));
}

/// Two lines at most, the second one cut with an ellipsis, in the middle of the height.
void paintMessage(QPainter &painter, const QRect &field, const QString &text, const QFont &font)
{
    const QFontMetrics metrics(font);
    QTextLayout layout(text, font);
    layout.beginLayout();
    QStringList lines;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(field.width());
        if (lines.size() == 1) {
            lines.append(metrics.elidedText(text.mid(line.textStart()).simplified(), Qt::ElideRight,
                                            field.width()));
            break;
        }
        lines.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    int y =
        field.center().y() - metrics.lineSpacing() * int(lines.size()) / 2 + metrics.ascent() + 1;
    painter.setFont(font);
    for (const QString &line : lines) {
        painter.drawText(field.left(), y, line);
        y += metrics.lineSpacing();
    }
}

void paintHead(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index,
               const Paleta &p)
{
    painter.setPen(p.borde);
    painter.drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    if (index.column() == ModeloDePizarra::Dibujo)
        return paintPicture(painter, option, index, option.rect, headPicture);
    if (index.column() != ModeloDePizarra::Mensaje)
        return;
    const QString title = index.data().toString().section(u'\t', 0, 0);
    const QString day = index.data().toString().section(u'\t', 1).trimmed();
    QFont large = option.font;
    large.setPointSizeF(option.font.pointSizeF() * 1.4);
    large.setWeight(QFont::DemiBold);
    QRect field = option.rect.adjusted(Espacio::XS, 0, -Espacio::S, 0);
    painter.setFont(large);
    painter.setPen(p.texto);
    QRect used;
    painter.drawText(field, Qt::AlignVCenter | Qt::TextSingleLine, title, &used);
    field.setLeft(used.right() + Espacio::M);
    QFont medium = option.font;
    medium.setPointSizeF(option.font.pointSizeF() * 1.15);
    painter.setFont(medium);
    painter.setPen(p.textoSuave);
    painter.drawText(field, Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(medium).elidedText(day, Qt::ElideRight, field.width()));
}

void paintEmpty(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index,
                const Paleta &p)
{
    QRect field = option.rect.adjusted(Espacio::XL, 0, -Espacio::XL, 0);
    const int middle = field.center().y();
    paintPicture(painter, option, index, QRect(field.left(), middle - 110, field.width(), 100),
                 emptyPicture);
    QFont large = option.font;
    large.setPointSizeF(option.font.pointSizeF() * 1.3);
    large.setWeight(QFont::DemiBold);
    painter.setFont(large);
    painter.setPen(p.texto);
    painter.drawText(QRect(field.left(), middle, field.width(), 32), Qt::AlignHCenter,
                     index.data().toString());
    painter.setFont(option.font);
    painter.setPen(p.textoSuave);
    painter.drawText(QRect(field.left(), middle + 36, field.width(), 60),
                     Qt::AlignHCenter | Qt::TextWordWrap, index.data(Qt::ToolTipRole).toString());
}

void paintLine(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index,
               const Paleta &p)
{
    const bool current = option.state & QStyle::State_Selected;
    const bool focused = current && (option.state & QStyle::State_HasFocus);
    const bool hovered = option.state & QStyle::State_MouseOver;
    const bool active = index.data(ModeloDePizarra::PapelActivo).toBool();
    painter.fillRect(option.rect, current                ? p.acentoSuave
                                  : index.row() % 2 == 0 ? p.superficieAlterna
                                                         : p.superficie);
    if (index.column() == ModeloDePizarra::Dibujo) {
        if (current)
            painter.fillRect(QRect(option.rect.topLeft(), QSize(3, option.rect.height())),
                             p.acento);
        return paintPicture(painter, option, index, option.rect, linePicture);
    }
    if (index.column() == ModeloDePizarra::Mensaje) {
        QFont font = option.font;
        font.setUnderline(active && (hovered || focused));
        painter.setPen(active ? p.acento : p.texto);
        return paintMessage(painter, option.rect.adjusted(Espacio::XS, 0, -Espacio::M, 0),
                            index.data().toString(), font);
    }
    if (index.data(Qt::DecorationRole).value<QIcon>().isNull())
        return;
    QRectF field(0, 0, clickableField, clickableField);
    field.moveCenter(QRectF(option.rect).center());
    painter.setPen(active ? QPen(hovered || focused ? p.acento : p.borde, focused ? 2 : 1)
                          : QPen(Qt::NoPen));
    painter.setBrush(active && hovered ? p.acentoSuave
                     : active          ? p.superficie
                                       : QColor(Qt::transparent));
    painter.drawRoundedRect(field, 8, 8);
    paintPicture(painter, option, index, option.rect, clickablePicture,
                 active ? QIcon::Normal : QIcon::Disabled);
}

} // namespace

ModeloDePizarra::ModeloDePizarra(Sesion &s, Disponible disponible, QObject *parent)
    : QAbstractTableModel(parent), m_s(s), m_disponible(std::move(disponible))
{
}

void ModeloDePizarra::Cargar()
{
    QList<LineaDePizarra> lines = LeerPizarra(m_s);
    beginResetModel();
    m_lineas = std::move(lines);
    endResetModel();
}

ModeloDePizarra::Clase ModeloDePizarra::ClaseDe(int fila) const
{
    if (fila == 0)
        return Clase::Encabezado;
    return m_lineas.isEmpty() ? Clase::Vacia : Clase::Linea;
}

Destino ModeloDePizarra::DestinoDe(const QModelIndex &celda) const
{
    if (!celda.isValid() || ClaseDe(celda.row()) != Clase::Linea)
        return {};
    const LineaDePizarra &line = m_lineas[celda.row() - 1];
    Destino target;
    if (celda.column() == Mensaje)
        target = DestinoDeTexto(m_s, line);
    else if (isIcon(celda.column()))
        target = DestinoDeIcono(m_s, line, iconOf(celda.column()));
    return m_disponible(target) ? target : Destino{};
}

Destino ModeloDePizarra::DestinoDeFila(const QModelIndex &celda) const
{
    for (const int column : {celda.column(), int(Mensaje), int(Icono1), int(Icono2)})
        if (Destino target = DestinoDe(celda.siblingAtColumn(column)); !target.Ninguno())
            return target;
    return {};
}

int ModeloDePizarra::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 1 + std::max(1, int(m_lineas.size()));
}

int ModeloDePizarra::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(Columnas);
}

Qt::ItemFlags ModeloDePizarra::flags(const QModelIndex &index) const
{
    if (!index.isValid() || ClaseDe(index.row()) != Clase::Linea)
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

QVariant ModeloDePizarra::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case PapelClase:
        return int(ClaseDe(index.row()));
    case PapelActivo:
        return !DestinoDe(index).Ninguno();
    case Qt::DisplayRole:
        return textoDe(index);
    case Qt::DecorationRole:
        return dibujoDe(index);
    case Qt::ToolTipRole:
        if (ClaseDe(index.row()) == Clase::Vacia)
            return m_s(QueSigue);
        return isIcon(index.column()) ? queAbre(index) : textoDe(index);
    case Qt::AccessibleTextRole:
        return isIcon(index.column()) ? queAbre(index) : textoDe(index);
    default:
        return {};
    }
}

QVariant ModeloDePizarra::textoDe(const QModelIndex &celda) const
{
    if (celda.column() != Mensaje)
        return {};
    switch (ClaseDe(celda.row())) {
    case Clase::Encabezado:
        return QString(m_s(ResumenDelDia) + u"\t "_s
                       + QLocale().toString(m_s.reloj.hoy, QLocale::LongFormat) + u'.');
    case Clase::Vacia:
        return m_s(SinNovedades);
    case Clase::Linea:
        return m_lineas[celda.row() - 1].mensaje;
    }
    return {};
}

QVariant ModeloDePizarra::dibujoDe(const QModelIndex &celda) const
{
    const Clase kind = ClaseDe(celda.row());
    if (kind == Clase::Encabezado)
        return celda.column() == Dibujo ? Icono(u"PizarraKelvara"_s) : QIcon();
    if (kind == Clase::Vacia)
        return celda.column() == Mensaje ? Icono(u"vacia"_s) : QIcon();
    const LineaDePizarra &line = m_lineas[celda.row() - 1];
    if (celda.column() == Dibujo)
        return line.dibujo ? Icono(QString::number(line.dibujo)) : QIcon();
    if (celda.column() == Icono1)
        return Icono(DibujoDeCodigo(line.codigo1, CualIcono::Primero));
    if (celda.column() == Icono2)
        return Icono(DibujoDeCodigo(line.codigo2, CualIcono::Segundo));
    return {};
}

QString ModeloDePizarra::queAbre(const QModelIndex &celda) const
{
    if (ClaseDe(celda.row()) != Clase::Linea)
        return {};
    const LineaDePizarra &line = m_lineas[celda.row() - 1];
    const QString form = DestinoDeIcono(m_s, line, iconOf(celda.column())).formulario;
    if (form.isEmpty())
        return {};
    const QString name = form == u"frmlistados"     ? m_s(Listados)
                         : form == u"frmmensajeria" ? m_s(Mensajeria)
                         : form == u"frmagenda"     ? m_s(Agenda)
                         : form == u"frmAnalisis"   ? m_s(Analisis)
                                                    : m_s(Telefonos);
    return DestinoDe(celda).Ninguno() ? name + u" - "_s + m_s(NoDisponible) : name;
}

void DelegadoDePizarra::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    const Paleta p = PaletaEnUso();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    switch (ModeloDePizarra::Clase(index.data(ModeloDePizarra::PapelClase).toInt())) {
    case ModeloDePizarra::Clase::Encabezado:
        paintHead(*painter, option, index, p);
        break;
    case ModeloDePizarra::Clase::Vacia:
        if (index.column() == ModeloDePizarra::Dibujo) // spans the row
            paintEmpty(*painter, option, index.siblingAtColumn(ModeloDePizarra::Mensaje), p);
        break;
    case ModeloDePizarra::Clase::Linea:
        paintLine(*painter, option, index, p);
        break;
    }
    painter->restore();
}

int DelegadoDePizarra::AltoDe(ModeloDePizarra::Clase clase, const QFontMetrics &letra)
{
    switch (clase) {
    case ModeloDePizarra::Clase::Encabezado:
        return 68;
    case ModeloDePizarra::Clase::Vacia:
        return 320;
    case ModeloDePizarra::Clase::Linea:
        break;
    }
    return std::max(clickableField + Espacio::M, 2 * letra.lineSpacing() + Espacio::L);
}
