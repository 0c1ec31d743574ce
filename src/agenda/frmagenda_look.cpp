#include "agenda/frmagenda_look.h"

#include "agenda/tasks.h"
#include "texts/texts.h"
#include "ui/boxes.h"
#include "ui/pictures.h"
#include "ui/record_fields.h"
#include "ui/theme.h"

#include <QHeaderView>
#include <QPainter>
#include <QTableView>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

constexpr int PictureSide = 22;
const QString between = u"  ·  "_s;

QString joined(QStringList parts)
{
    parts.removeAll(QString());
    return parts.join(between);
}

/// The text of the second line.
QString noteOf(const DayTask &t)
{
    return t.tip == TaskKind::UserTask && !t.des.isEmpty() ? t.item : t.des.simplified();
}

/// Draws the background of a cell as the style does, without its text.
void drawGround(QPainter *painter, const QStyleOptionViewItem &option)
{
    if (option.state & QStyle::State_Selected)
        painter->fillRect(option.rect, option.palette.highlight());
}

QColor inkOf(const QStyleOptionViewItem &option)
{
    return option.palette.color(option.state & QStyle::State_Selected ? QPalette::HighlightedText
                                                                      : QPalette::Text);
}

} // namespace

QString agenda::agendaStyle()
{
    return ui::denseStyle() + uR"(
QPushButton:checked { background: palette(highlight); color: palette(highlighted-text); }
QPushButton::menu-indicator { width: 0; image: none; }
agenda--HoursView { border: 1px solid palette(mid); border-radius: 8px; background: palette(base); }
agenda--HoursView:focus { border-color: palette(highlight); }
QSplitter::handle:horizontal { background: palette(mid); border-radius: 2px; margin: 2px 4px; }
QSplitter::handle:horizontal:hover { background: palette(highlight); }
QCalendarWidget QWidget#qt_calendar_navigationbar {
    background: palette(base); border: 1px solid palette(mid); border-bottom: 0;
}
QCalendarWidget QToolButton {
    background: transparent; color: palette(text); border: 0; border-radius: 6px;
    padding: 4px 10px; font-weight: 600; qproperty-iconSize: 0px;
}
QCalendarWidget QToolButton:hover { background: palette(alternate-base); }
QCalendarWidget QToolButton::menu-indicator { image: none; width: 0; }
QCalendarWidget QAbstractItemView {
    border: 1px solid palette(mid); border-top: 0; border-radius: 0;
}
)"_s;
}

void agenda::showTitles(QTableView *table)
{
    const QHeaderView *titles = table->horizontalHeader();
    titles->ensurePolished();
    for (int c = 0; c < titles->count(); ++c)
        if (!table->isColumnHidden(c))
            table->setColumnWidth(c, std::max(table->columnWidth(c), titles->sectionSizeHint(c)));
}

PicturePainter::PicturePainter(std::function<QString(const QModelIndex &)> dibujo, bool withText,
                               QObject *parent)
    : QStyledItemDelegate(parent), m_picture(std::move(dibujo)), m_withText(withText)
{
}

void PicturePainter::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    drawGround(painter, option);
    const QString name = m_picture(index);
    QRect place = option.rect.adjusted(ui::space::S, 0, -ui::space::S, 0);
    QRect picture(place.left(), place.center().y() - PictureSide / 2, PictureSide, PictureSide);
    if (!m_withText)
        picture.moveLeft(option.rect.center().x() - PictureSide / 2);
    const bool onDark = option.state & QStyle::State_Selected && !ui::paletteInUse().dark;
    if (!name.isEmpty())
        ui::namedIcon(name, onDark ? ui::Tone::OnFrame : ui::Tone::Normal).paint(painter, picture);
    if (!m_withText && !name.isEmpty())
        return;
    // A concept without a picture shows its name, so that no row is left blank.
    if (!name.isEmpty())
        place.setLeft(picture.right() + ui::space::S);
    painter->setPen(inkOf(option));
    painter->drawText(
        place, int(Qt::AlignLeft) | Qt::AlignVCenter,
        option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, place.width()));
}

QSize PicturePainter::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QStyledItemDelegate::sizeHint(option, index) + QSize(PictureSide + ui::space::S, 0);
}

TaskPainter::TaskPainter(const Sesion &s, Finds task, QObject *parent)
    : QStyledItemDelegate(parent),
      m_client(s(text::Client)),
      m_telephones(s(text::Phones)),
      m_task(std::move(task))
{
}

int TaskPainter::heightOf(const QFontMetrics &font, const DayTask &task)
{
    const int lines = 1 + !noteOf(task).isEmpty() + !task.client.isEmpty();
    return lines * font.lineSpacing() + ui::space::M;
}

void TaskPainter::paint(QPainter *painter, const QStyleOptionViewItem &option,
                        const QModelIndex &index) const
{
    const DayTask *task = m_task(index);
    if (!task)
        return QStyledItemDelegate::paint(painter, option, index);
    drawGround(painter, option);
    const QString client = task->client.isEmpty() ? QString() : m_client + u": "_s + task->client;
    const QString phones =
        task->telephones.isEmpty() ? QString() : m_telephones + u": "_s + task->telephones;
    QStringList lines{taskSubject(*task), noteOf(*task), joined({client, phones})};
    lines.removeAll(QString());

    painter->save();
    QFont strong = option.font;
    strong.setWeight(QFont::DemiBold);
    const QColor ink = inkOf(option);
    const bool selected = option.state & QStyle::State_Selected;
    const QColor soft = selected ? ink : ui::paletteInUse().softText;
    const int height = option.fontMetrics.lineSpacing();
    QRect place = option.rect.adjusted(ui::space::S, 0, -ui::space::S, 0);
    place.setTop(place.center().y() - int(lines.size()) * height / 2 + 1);
    place.setHeight(height);
    for (int i = 0; i < lines.size(); ++i) {
        const QFont &font = i == 0 && !task->est ? strong : option.font;
        painter->setFont(font);
        painter->setPen(i == 0 && !task->est ? ink : soft);
        painter->drawText(place, int(Qt::AlignLeft) | Qt::AlignVCenter,
                          QFontMetrics(font).elidedText(lines[i], Qt::ElideRight, place.width()));
        place.translate(0, height);
    }
    painter->restore();
}

QString agenda::taskSubject(const DayTask &t)
{
    if (t.tip == TaskKind::UserTask)
        return t.des.isEmpty() ? t.item : t.des.simplified();
    return joined({t.patient, t.item});
}
