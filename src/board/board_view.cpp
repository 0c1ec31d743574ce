#include "board/board_view.h"

#include "texts/texts.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QAbstractItemView>
#include <QLocale>
#include <QPainter>
#include <QTextLayout>

using namespace board;
using namespace Qt::StringLiterals;

namespace
{

constexpr int LinePicture = 28;
constexpr int HeadPicture = 36;
constexpr int EmptyPicture = 72;
constexpr int ClickablePicture = 24;
constexpr int ClickableField = 38;

bool isIcon(int column) { return column == BoardModel::Icon1 || column == BoardModel::Icon2; }

WhichIcon iconOf(int column)
{
    return column == BoardModel::Icon1 ? WhichIcon::First : WhichIcon::Second;
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

/// At most two lines, the second elided, centred vertically.
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
               const ui::Palette &p)
{
    painter.setPen(p.border);
    painter.drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    if (index.column() == BoardModel::Picture)
        return paintPicture(painter, option, index, option.rect, HeadPicture);
    if (index.column() != BoardModel::Message)
        return;
    const QString title = index.data().toString().section(u'\t', 0, 0);
    const QString day = index.data().toString().section(u'\t', 1).trimmed();
    QFont large = option.font;
    large.setPointSizeF(option.font.pointSizeF() * 1.4);
    large.setWeight(QFont::DemiBold);
    QRect field = option.rect.adjusted(ui::space::XS, 0, -ui::space::S, 0);
    painter.setFont(large);
    painter.setPen(p.text);
    QRect used;
    painter.drawText(field, Qt::AlignVCenter | Qt::TextSingleLine, title, &used);
    field.setLeft(used.right() + ui::space::M);
    QFont medium = option.font;
    medium.setPointSizeF(option.font.pointSizeF() * 1.15);
    painter.setFont(medium);
    painter.setPen(p.softText);
    painter.drawText(field, Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(medium).elidedText(day, Qt::ElideRight, field.width()));
}

void paintEmpty(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index,
                const ui::Palette &p)
{
    QRect field = option.rect.adjusted(ui::space::XL, 0, -ui::space::XL, 0);
    const int middle = field.center().y();
    paintPicture(painter, option, index, QRect(field.left(), middle - 110, field.width(), 100),
                 EmptyPicture);
    QFont large = option.font;
    large.setPointSizeF(option.font.pointSizeF() * 1.3);
    large.setWeight(QFont::DemiBold);
    painter.setFont(large);
    painter.setPen(p.text);
    painter.drawText(QRect(field.left(), middle, field.width(), 32), Qt::AlignHCenter,
                     index.data().toString());
    painter.setFont(option.font);
    painter.setPen(p.softText);
    painter.drawText(QRect(field.left(), middle + 36, field.width(), 60),
                     Qt::AlignHCenter | Qt::TextWordWrap, index.data(Qt::ToolTipRole).toString());
}

void paintLine(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index,
               const ui::Palette &p)
{
    const bool current = option.state & QStyle::State_Selected;
    const bool focused = current && (option.state & QStyle::State_HasFocus);
    const bool hovered = option.state & QStyle::State_MouseOver;
    const bool active = index.data(BoardModel::ActiveRole).toBool();
    painter.fillRect(option.rect, current                ? p.softAccent
                                  : index.row() % 2 == 0 ? p.alternateSurface
                                                         : p.surface);
    if (index.column() == BoardModel::Picture) {
        if (current)
            painter.fillRect(QRect(option.rect.topLeft(), QSize(3, option.rect.height())),
                             p.accent);
        return paintPicture(painter, option, index, option.rect, LinePicture);
    }
    if (index.column() == BoardModel::Message) {
        QFont font = option.font;
        font.setUnderline(active && (hovered || focused));
        painter.setPen(active ? p.accent : p.text);
        return paintMessage(painter, option.rect.adjusted(ui::space::XS, 0, -ui::space::M, 0),
                            index.data().toString(), font);
    }
    if (index.data(Qt::DecorationRole).value<QIcon>().isNull())
        return;
    QRectF field(0, 0, ClickableField, ClickableField);
    field.moveCenter(QRectF(option.rect).center());
    painter.setPen(active ? QPen(hovered || focused ? p.accent : p.border, focused ? 2 : 1)
                          : QPen(Qt::NoPen));
    painter.setBrush(active && hovered ? p.softAccent
                     : active          ? p.surface
                                       : QColor(Qt::transparent));
    painter.drawRoundedRect(field, 8, 8);
    paintPicture(painter, option, index, option.rect, ClickablePicture,
                 active ? QIcon::Normal : QIcon::Disabled);
}

} // namespace

BoardModel::BoardModel(Sesion &s, Available available, QObject *parent)
    : QAbstractTableModel(parent), m_s(s), m_available(std::move(available))
{
}

void BoardModel::load()
{
    QList<BoardLine> lines = readBoard(m_s);
    QList<BoardNotice> notices = warnings(m_s);
    // The first day of a clinic has a line already, which welcomes it.
    if (lines.isEmpty() || isNewClinic(m_s))
        notices += firstSteps(m_s);
    beginResetModel();
    m_lines = std::move(lines);
    m_notices = std::move(notices);
    endResetModel();
}

BoardModel::Kind BoardModel::kindOf(int row) const
{
    if (row == 0)
        return Kind::Header;
    if (row <= m_notices.size())
        return Kind::Notice;
    return m_lines.isEmpty() ? Kind::Empty : Kind::Line;
}

Target BoardModel::targetOf(const QModelIndex &cell) const
{
    const Kind kind = cell.isValid() ? kindOf(cell.row()) : Kind::Empty;
    if (kind == Kind::Notice && cell.column() == Message) {
        const Target &target = noticeAt(cell.row()).target;
        return m_available(target) ? target : Target{};
    }
    if (kind != Kind::Line)
        return {};
    const BoardLine &line = lineAt(cell.row());
    Target target;
    if (cell.column() == Message)
        target = textTarget(m_s, line);
    else if (isIcon(cell.column()))
        target = iconTarget(m_s, line, iconOf(cell.column()));
    return m_available(target) ? target : Target{};
}

Target BoardModel::rowTarget(const QModelIndex &cell) const
{
    for (const int column : {cell.column(), int(Message), int(Icon1), int(Icon2)})
        if (Target target = targetOf(cell.siblingAtColumn(column)); !target.None())
            return target;
    return {};
}

int BoardModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 1 + int(m_notices.size()) + std::max(1, int(m_lines.size()));
}

int BoardModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

Qt::ItemFlags BoardModel::flags(const QModelIndex &index) const
{
    const Kind kind = index.isValid() ? kindOf(index.row()) : Kind::Empty;
    if (kind != Kind::Line && kind != Kind::Notice)
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

QVariant BoardModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case KindRole:
        return int(kindOf(index.row()));
    case ActiveRole:
        return !targetOf(index).None();
    case Qt::DisplayRole:
        return text(index);
    case Qt::DecorationRole:
        return picture(index);
    case Qt::ToolTipRole:
        if (kindOf(index.row()) == Kind::Empty)
            return m_s(text::EmptyBoardHint);
        return isIcon(index.column()) ? thatOpens(index) : text(index);
    case Qt::AccessibleTextRole:
        return isIcon(index.column()) ? thatOpens(index) : text(index);
    default:
        return {};
    }
}

QVariant BoardModel::text(const QModelIndex &cell) const
{
    if (cell.column() != Message)
        return {};
    switch (kindOf(cell.row())) {
    case Kind::Header:
        return QString(m_s(text::DaySummary) + u"\t "_s
                       + QLocale().toString(m_s.reloj.hoy, QLocale::LongFormat) + u'.');
    case Kind::Empty:
        return m_s(text::NoReportsToday);
    case Kind::Notice:
        return noticeAt(cell.row()).message;
    case Kind::Line:
        return lineAt(cell.row()).message;
    }
    return {};
}

QVariant BoardModel::picture(const QModelIndex &cell) const
{
    const Kind kind = kindOf(cell.row());
    if (kind == Kind::Header)
        return cell.column() == Picture ? ui::namedIcon(u"PizarraKelvara"_s) : QIcon();
    if (kind == Kind::Empty)
        return cell.column() == Message ? ui::namedIcon(u"vacia"_s) : QIcon();
    if (kind == Kind::Notice)
        return cell.column() == Picture ? ui::namedIcon(noticeAt(cell.row()).picture) : QIcon();
    const BoardLine &line = lineAt(cell.row());
    if (cell.column() == Picture)
        return line.dibujo ? ui::namedIcon(QString::number(line.dibujo)) : QIcon();
    if (cell.column() == Icon1)
        return ui::namedIcon(codePicture(line.codigo1, WhichIcon::First));
    if (cell.column() == Icon2)
        return ui::namedIcon(codePicture(line.codigo2, WhichIcon::Second));
    return {};
}

QString BoardModel::thatOpens(const QModelIndex &cell) const
{
    if (kindOf(cell.row()) != Kind::Line)
        return {};
    const BoardLine &line = lineAt(cell.row());
    const QString form = iconTarget(m_s, line, iconOf(cell.column())).form;
    if (form.isEmpty())
        return {};
    const QString name = form == u"frmlistados"     ? m_s(text::ListingsButton)
                         : form == u"frmmensajeria" ? m_s(text::MessagingButton)
                         : form == u"frmagenda"     ? m_s(text::Agenda)
                         : form == u"frmAnalisis"   ? m_s(text::AnalysisButton)
                                                    : m_s(text::TelephoneListButton);
    return targetOf(cell).None() ? name + u" - "_s + m_s(text::NotInThisVersion) : name;
}

void BoardDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    const ui::Palette p = ui::paletteInUse();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    switch (BoardModel::Kind(index.data(BoardModel::KindRole).toInt())) {
    case BoardModel::Kind::Header:
        paintHead(*painter, option, index, p);
        break;
    case BoardModel::Kind::Empty:
        if (index.column() == BoardModel::Picture) // painted once, across the row
            paintEmpty(*painter, option, index.siblingAtColumn(BoardModel::Message), p);
        break;
    case BoardModel::Kind::Notice:
    case BoardModel::Kind::Line:
        paintLine(*painter, option, index, p);
        break;
    }
    painter->restore();
}

int BoardDelegate::heightOf(BoardModel::Kind kind, const QFontMetrics &font)
{
    switch (kind) {
    case BoardModel::Kind::Header:
        return 68;
    case BoardModel::Kind::Empty:
        return 320;
    case BoardModel::Kind::Notice:
    case BoardModel::Kind::Line:
        break;
    }
    return std::max(ClickableField + ui::space::M, 2 * font.lineSpacing() + ui::space::L);
}
