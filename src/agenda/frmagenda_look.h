// How the agenda's screens show tasks and pick days.
#pragma once

#include "agenda/day_list.h"

#include <QStyledItemDelegate>
#include <functional>

class QTableView;

namespace agenda
{

/// What the theme leaves open for these forms: flat buttons, the arrow of a day's box.
QString agendaStyle();

/// Widens the columns whose title is longer than they are, with room for the arrow of a sort.
void showTitles(QTableView *table);

/// Draws a cell as a picture, with its text behind it or alone.
class PicturePainter : public QStyledItemDelegate
{
    Q_OBJECT
public:
    /// @param dibujo name of a row's picture
    PicturePainter(std::function<QString(const QModelIndex &)> dibujo, bool withText,
                   QObject *parent);
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    std::function<QString(const QModelIndex &)> m_picture;
    bool m_withText;
};

/// Draws a task in up to three lines: whom or what it is about, what was noted, and how to reach
/// the client.
class TaskPainter : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using Finds = std::function<const DayTask *(const QModelIndex &)>;
    TaskPainter(const Sesion &s, Finds task, QObject *parent);
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    /// Height of the row of a task.
    static int heightOf(const QFontMetrics &font, const DayTask &task);

private:
    QString m_client, m_telephones;
    Finds m_task;
};

/// What a task is about in a few words: patient and concept; a user's note.
QString taskSubject(const DayTask &task);

} // namespace agenda
