// How the agenda's screens show tasks and pick days.
#pragma once

#include "agenda/day_list.h"

#include <QDateEdit>
#include <QStyledItemDelegate>
#include <functional>

class QTableView;

/// What the theme leaves open for these forms: flat buttons, the arrow of a day's box.
QString EstiloDeAgenda();

/// Widens the columns whose title is longer than they are, with room for the arrow of a sort.
void MostrarTitulos(QTableView *tabla);

/// A day that is typed, walked by UP and DOWN, or picked from a calendar. Tells of it once it is
/// whole.
class CajaDeDia : public QDateEdit
{
    Q_OBJECT
public:
    explicit CajaDeDia(QWidget *parent = nullptr);
    /// The day shown, also while it is still being typed: an ALT key leaves the focus where it is.
    QDate Dia();
};

/// Draws a cell as a picture, with its text behind it or alone.
class PintorDeDibujo : public QStyledItemDelegate
{
    Q_OBJECT
public:
    /// @param dibujo name of a row's picture
    PintorDeDibujo(std::function<QString(const QModelIndex &)> dibujo, bool conTexto,
                   QObject *parent);
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    std::function<QString(const QModelIndex &)> m_dibujo;
    bool m_conTexto;
};

/// Draws a task in up to three lines: whom or what it is about, what was noted, and how to reach
/// the client.
class PintorDeTarea : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using Busca = std::function<const TareaDelDia *(const QModelIndex &)>;
    PintorDeTarea(const Sesion &s, Busca tarea, QObject *parent);
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    /// Height of the row of a task.
    static int Alto(const QFontMetrics &letra, const TareaDelDia &tarea);

private:
    QString m_cliente, m_telefonos;
    Busca m_tarea;
};

/// What a task is about in a few words: patient and concept; a user's note.
QString AsuntoDeTarea(const TareaDelDia &tarea);
