// How the agenda's forms show tasks and let the user pick days.
#pragma once

#include "agenda/day_list.h"

#include <QStyledItemDelegate>
#include <functional>

class QTableView;

namespace agenda
{

/// The style sheet that these forms add to the theme: flat buttons, the arrow of a date box.
QString agendaStyle();

/// Widens the columns that are too narrow for their title, leaving room for the sort arrow.
void showTitles(QTableView *table);

/// Draws a cell as a picture, with or without its text after it.
class PicturePainter : public QStyledItemDelegate
{
    Q_OBJECT
public:
    /// @param dibujo gives the name of the picture for an index
    /// @param withText draw the cell's text after the picture
    PicturePainter(std::function<QString(const QModelIndex &)> dibujo, bool withText,
                   QObject *parent);
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    std::function<QString(const QModelIndex &)> m_picture;
    bool m_withText;
};

/// Draws a task in up to three lines: its subject, its note, and how to reach the client.
class TaskPainter : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using Finds = std::function<const DayTask *(const QModelIndex &)>;
    /// @param task finds the task at an index; may return nullptr
    TaskPainter(const Sesion &s, Finds task, QObject *parent);
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    /// Height of a task's row, in pixels.
    static int heightOf(const QFontMetrics &font, const DayTask &task);

private:
    QString m_client, m_telephones;
    Finds m_task;
};

/// A task's subject in a few words: patient and concept, or a user's note.
QString taskSubject(const DayTask &task);

} // namespace agenda
