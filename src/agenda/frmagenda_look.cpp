#include "agenda/frmagenda_look.h"

#include "agenda/tasks.h"
#include "ui/boxes.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QCalendarWidget>
#include <QHeaderView>
#include <QPainter>
#include <QTableView>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace
{

enum Texto { Cliente = 14, Telefonos = 15 };

constexpr int pictureSide = 22;
constexpr QSize calendarSize{300, 250};
const QString between = u"  ·  "_s;

QString joined(QStringList parts)
{
    parts.removeAll(QString());
    return parts.join(between);
}

/// The month as calm as the rest: no red, no arrows of another style.
void dressCalendar(QCalendarWidget *month)
{
    month->setFirstDayOfWeek(QLocale().firstDayOfWeek());
    month->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    month->setHorizontalHeaderFormat(QCalendarWidget::SingleLetterDayNames);
    month->setMinimumSize(calendarSize);
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        month->setWeekdayTextFormat(day, month->weekdayTextFormat(Qt::Monday));
    const std::pair<QString, QString> arrows[] = {{u"qt_calendar_prevmonth"_s, u"‹"_s},
                                                  {u"qt_calendar_nextmonth"_s, u"›"_s}};
    for (const auto &[name, sign] : arrows)
        if (auto *arrow = month->findChild<QToolButton *>(name)) {
            arrow->setIcon({});
            arrow->setText(sign);
        }
}

/// What stands in the second line.
QString noteOf(const TareaDelDia &t)
{
    return t.tip == TipoTarea::TareaDeUsuario && !t.des.isEmpty() ? t.concepto : t.des.simplified();
}

/// The ground of a cell as the style draws it, without its text.
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

QString EstiloDeAgenda()
{
    const QString arrow =
        PaletaEnUso().oscura ? u":/theme/abajo-noche.svg"_s : u":/theme/abajo.svg"_s;
    return uR"(
QPushButton { padding: 5px 12px; min-width: 0; }
QPushButton:focus { padding: 4px 11px; }
QPushButton[clase="barra"] { background: transparent; border-color: transparent; padding: 5px 9px; }
QPushButton[clase="barra"]:focus { border-color: palette(highlight); padding: 4px 8px; }
QPushButton[clase="barra"]:hover:enabled { border-color: palette(highlight); }
QPushButton:checked { background: palette(highlight); color: palette(highlighted-text); }
QPushButton::menu-indicator { width: 0; image: none; }
VistaDeHoras { border: 1px solid palette(mid); border-radius: 8px; background: palette(base); }
VistaDeHoras:focus { border-color: palette(highlight); }
QSplitter::handle:horizontal { background: palette(mid); border-radius: 2px; margin: 2px 4px; }
QSplitter::handle:horizontal:hover { background: palette(highlight); }
QLineEdit, QComboBox, QDateEdit { padding: 4px 8px; }
QLineEdit:focus, QComboBox:focus, QDateEdit:focus { padding: 3px 7px; }
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
QDateEdit { padding-right: 26px; }
QDateEdit:focus { padding-right: 25px; }
QDateEdit::drop-down {
    subcontrol-origin: border; subcontrol-position: center right; width: 26px; border: 0;
}
QDateEdit::down-arrow { image: url(%1); width: 12px; height: 12px; }
)"_s.arg(arrow);
}

void MostrarTitulos(QTableView *tabla)
{
    const QHeaderView *titles = tabla->horizontalHeader();
    titles->ensurePolished();
    for (int c = 0; c < titles->count(); ++c)
        if (!tabla->isColumnHidden(c))
            tabla->setColumnWidth(c, std::max(tabla->columnWidth(c), titles->sectionSizeHint(c)));
}

CajaDeDia::CajaDeDia(QWidget *parent) : QDateEdit(parent)
{
    setDisplayFormat(MesPrimero() ? u"MM/dd/yyyy"_s : u"dd/MM/yyyy"_s);
    setCalendarPopup(true);
    setKeyboardTracking(false);
    dressCalendar(calendarWidget());
}

QDate CajaDeDia::Dia()
{
    interpretText();
    return date();
}

PintorDeDibujo::PintorDeDibujo(std::function<QString(const QModelIndex &)> dibujo, bool conTexto,
                               QObject *parent)
    : QStyledItemDelegate(parent), m_dibujo(std::move(dibujo)), m_conTexto(conTexto)
{
}

void PintorDeDibujo::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    drawGround(painter, option);
    const QString name = m_dibujo(index);
    QRect place = option.rect.adjusted(Espacio::S, 0, -Espacio::S, 0);
    QRect picture(place.left(), place.center().y() - pictureSide / 2, pictureSide, pictureSide);
    if (!m_conTexto)
        picture.moveLeft(option.rect.center().x() - pictureSide / 2);
    const bool onDark = option.state & QStyle::State_Selected && !PaletaEnUso().oscura;
    if (!name.isEmpty())
        Icono(name, onDark ? Tono::SobreMarco : Tono::Normal).paint(painter, picture);
    if (!m_conTexto && !name.isEmpty())
        return;
    // A concept without a picture is told in words, so that no row stands without a sign.
    if (!name.isEmpty())
        place.setLeft(picture.right() + Espacio::S);
    painter->setPen(inkOf(option));
    painter->drawText(
        place, int(Qt::AlignLeft) | Qt::AlignVCenter,
        option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, place.width()));
}

QSize PintorDeDibujo::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QStyledItemDelegate::sizeHint(option, index) + QSize(pictureSide + Espacio::S, 0);
}

PintorDeTarea::PintorDeTarea(const Sesion &s, Busca tarea, QObject *parent)
    : QStyledItemDelegate(parent),
      m_cliente(s(Cliente)),
      m_telefonos(s(Telefonos)),
      m_tarea(std::move(tarea))
{
}

int PintorDeTarea::Alto(const QFontMetrics &letra, const TareaDelDia &tarea)
{
    const int lines = 1 + !noteOf(tarea).isEmpty() + !tarea.cliente.isEmpty();
    return lines * letra.lineSpacing() + Espacio::M;
}

void PintorDeTarea::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    const TareaDelDia *task = m_tarea(index);
    if (!task)
        return QStyledItemDelegate::paint(painter, option, index);
    drawGround(painter, option);
    const QString client =
        task->cliente.isEmpty() ? QString() : m_cliente + u": "_s + task->cliente;
    const QString phones =
        task->telefonos.isEmpty() ? QString() : m_telefonos + u": "_s + task->telefonos;
    QStringList lines{AsuntoDeTarea(*task), noteOf(*task), joined({client, phones})};
    lines.removeAll(QString());

    painter->save();
    QFont strong = option.font;
    strong.setWeight(QFont::DemiBold);
    const QColor ink = inkOf(option);
    const bool selected = option.state & QStyle::State_Selected;
    const QColor soft = selected ? ink : PaletaEnUso().textoSuave;
    const int height = option.fontMetrics.lineSpacing();
    QRect place = option.rect.adjusted(Espacio::S, 0, -Espacio::S, 0);
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

QString AsuntoDeTarea(const TareaDelDia &t)
{
    if (t.tip == TipoTarea::TareaDeUsuario)
        return t.des.isEmpty() ? t.concepto : t.des.simplified();
    return joined({t.paciente, t.concepto});
}
