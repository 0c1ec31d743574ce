#include "agenda/agenda_look.h"

#include "agenda/tasks.h"
#include "ui/boxes.h"
#include "ui/pictures.h"
#include "ui/theme.h"

#include <QCalendarWidget>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace
{

enum Texto { Cliente = 14, Telefonos = 15 };

constexpr int pictureSide = 22;
const QString between = u"  ·  "_s;

QString joined(QStringList parts)
{
    parts.removeAll(QString());
    return parts.join(between);
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
QLineEdit, QComboBox, QDateEdit { padding: 4px 8px; }
QLineEdit:focus, QComboBox:focus, QDateEdit:focus { padding: 3px 7px; }
QDateEdit { padding-right: 26px; }
QDateEdit:focus { padding-right: 25px; }
QDateEdit::drop-down {
    subcontrol-origin: border; subcontrol-position: center right; width: 26px; border: 0;
}
QDateEdit::down-arrow { image: url(%1); width: 12px; height: 12px; }
)"_s.arg(arrow);
}

CajaDeDia::CajaDeDia(QWidget *parent) : QDateEdit(parent)
{
    setDisplayFormat(MesPrimero() ? u"MM/dd/yyyy"_s : u"dd/MM/yyyy"_s);
    setCalendarPopup(true);
    setKeyboardTracking(false);
    calendarWidget()->setFirstDayOfWeek(QLocale().firstDayOfWeek());
    calendarWidget()->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
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

int PintorDeTarea::Alto(const QFontMetrics &letra)
{
    return 2 * letra.lineSpacing() + 2 * Espacio::XS + Espacio::XS;
}

void PintorDeTarea::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    const TareaDelDia *task = m_tarea(index);
    if (!task)
        return QStyledItemDelegate::paint(painter, option, index);
    drawGround(painter, option);
    const bool selected = option.state & QStyle::State_Selected;
    const QColor ink = inkOf(option);
    const QRect place = option.rect.adjusted(Espacio::S, Espacio::XS, -Espacio::S, -Espacio::XS);
    const int line = option.fontMetrics.lineSpacing();
    const auto draw = [&](int row, const QString &text, const QFont &font, const QColor &colour) {
        painter->setFont(font);
        painter->setPen(colour);
        painter->drawText(QRect(place.left(), place.top() + row * (line + 2), place.width(), line),
                          int(Qt::AlignLeft) | Qt::AlignVCenter,
                          QFontMetrics(font).elidedText(text, Qt::ElideRight, place.width()));
    };
    painter->save();
    QFont strong = option.font;
    strong.setWeight(QFont::DemiBold);
    const QColor soft = selected ? ink : PaletaEnUso().textoSuave;
    draw(0, AsuntoDeTarea(*task), task->est ? option.font : strong, task->est ? soft : ink);
    const QString client =
        task->cliente.isEmpty() ? QString() : m_cliente + u": "_s + task->cliente;
    const QString phones =
        task->telefonos.isEmpty() ? QString() : m_telefonos + u": "_s + task->telefonos;
    const QString note = task->tip == TipoTarea::TareaDeUsuario ? task->concepto : task->des;
    draw(1, joined({note, client, phones}).simplified(), option.font, soft);
    painter->restore();
}

QString AsuntoDeTarea(const TareaDelDia &t)
{
    if (t.tip == TipoTarea::TareaDeUsuario)
        return t.des.isEmpty() ? t.concepto : t.des.simplified();
    return joined({t.paciente, t.concepto});
}
