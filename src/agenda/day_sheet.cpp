#include "agenda/day_sheet.h"

#include "agenda/task_texts.h"
#include "agenda/tasks.h"
#include "printing/sheet.h"
#include "store/lookups.h"
#include "texts/texts.h"

#include <QPainter>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

const QTime FirstSlot(6, 0);
constexpr int SlotMinutes = 15;
constexpr int MostSlots = 65;
constexpr int NameLetters = 12;
constexpr int ColumnRows[] = {22, 22, 21};

// The subject of a task, short enough for the sheet.
QString subject(Sesion &s, int tip, int ida, const QString &des)
{
    if (taskSubject(tip) == Subject::Patient)
        return LeerCampo(s, "clientes", "mascotas", ida, "nom");
    return tip == TaskKind::UserTask && !des.isEmpty() ? des : taskConcept(s, tip, 0);
}

class DayDocument : public Documento
{
public:
    DayDocument(QString title, QString dia, QString hour, std::vector<Slot> slots)
        : m_title(std::move(title)),
          m_day(std::move(dia)),
          m_hour(std::move(hour)),
          m_checkboxes(std::move(slots))
    {
    }

    QString titleOf() const override { return m_title + u" "_s + m_day; }

    int compose(QPaintDevice &, QSizeF area) override
    {
        m_area = area;
        // The rows of the detail, in three columns; those that do not fit go on further pages.
        m_lines.clear();
        for (const Slot &c : m_checkboxes)
            if (c.detail.size() > 1)
                m_lines.insert(m_lines.end(), c.detail.begin(), c.detail.end());
        const int byColumn = detailRows(detailStart());
        const int onFirst = 3 * byColumn;
        const int remaining = qMax(0, int(m_lines.size()) - onFirst);
        const int byPage = 3 * detailRows(OtherHead);
        return m_checkboxes.empty() ? 0 : 1 + (remaining + byPage - 1) / byPage;
    }

    void draw(QPainter &painter, int page) override
    {
        printing::Sheet sheet(painter);
        if (page > 0) {
            const int before =
                3 * detailRows(detailStart()) + (page - 1) * 3 * detailRows(OtherHead);
            sheet.Line({0, 0, m_area.width(), 6}, titleOf(), 11, Qt::AlignLeft, true);
            drawDetail(sheet, OtherHead, before);
            return;
        }
        sheet.Line({0, 0, m_area.width(), 9}, m_title, 18, Qt::AlignLeft, true);
        sheet.Line({0, 9, m_area.width(), 6}, m_day, 11, Qt::AlignLeft);
        sheet.Line({0, 9, m_area.width(), 6}, m_hour, 11, Qt::AlignRight);
        drawSlots(sheet);
        drawDetail(sheet, detailStart(), 0);
    }

private:
    static constexpr double head = 18;
    static constexpr double OtherHead = 9; // of the pages after the first
    static constexpr double rowHeight = 7.4;
    static constexpr double DetailHeight = 4.6;
    static constexpr double streetOf = 4;

    double columnWidth() const { return (m_area.width() - 2 * streetOf) / 3; }
    double detailStart() const { return head + ColumnRows[0] * rowHeight + 5; }
    int detailRows(double from) const
    {
        return qMax(1, int((m_area.height() - from) / DetailHeight));
    }

    void drawSlots(printing::Sheet &sheet) const
    {
        const double width = columnWidth();
        size_t i = 0;
        for (int column = 0; column < 3; ++column)
            for (int row = 0; row < ColumnRows[column] && i < m_checkboxes.size(); ++row, ++i) {
                const Slot &c = m_checkboxes[i];
                const QRectF box(column * (width + streetOf), head + row * rowHeight, width,
                                 rowHeight);
                if (c.hour.minute() == 0)
                    sheet.padding(box, QColor(0xf0, 0xf0, 0xf0));
                sheet.frame(box, 0.1);
                sheet.Line(box.adjusted(1.5, 0, 0, 0), c.hour.toString(u"HH:mm"), 10,
                           Qt::AlignLeft | Qt::AlignVCenter, c.hour.minute() == 0);
                if (!c.icon.isEmpty())
                    sheet.pictureOf({box.left() + 13.5, box.top() + 1.2, 5, 5}, c.icon);
                sheet.Line(box.adjusted(20, 0, -1, 0), c.text, 10, Qt::AlignLeft | Qt::AlignVCenter,
                           c.detail.size() > 1);
            }
    }

    void drawDetail(printing::Sheet &sheet, double above, int first) const
    {
        const double width = columnWidth();
        const int rows = detailRows(above);
        for (int i = 0; i < 3 * rows && first + i < int(m_lines.size()); ++i) {
            const auto &[hour, name] = m_lines[size_t(first) + size_t(i)];
            const int column = i / rows, row = i % rows;
            const QRectF box(column * (width + streetOf), above + row * DetailHeight, width,
                             DetailHeight);
            sheet.Line(box, hour.toString(u"HH:mm") + u"  "_s + name, 9,
                       Qt::AlignLeft | Qt::AlignVCenter);
        }
    }

    QString m_title, m_day, m_hour;
    std::vector<Slot> m_checkboxes;
    std::vector<std::pair<QTime, QString>> m_lines;
    QSizeF m_area;
};

} // namespace

std::vector<Slot> agenda::daySlots(Sesion &s, bool complete, QDate dia, QTime from)
{
    QTime hour = FirstSlot;
    if (!complete && from.isValid())
        hour = QTime(from.hour(), from.minute() / SlotMinutes * SlotMinutes);
    std::vector<Slot> slots;
    const QTime last = FirstSlot.addSecs((MostSlots - 1) * SlotMinutes * 60);
    for (; hour <= last && slots.size() < size_t(MostSlots);
         hour = hour.addSecs(SlotMinutes * 60)) {
        Slot c;
        c.hour = hour;
        Recordset r = s.morvane->OpenSnapshot(
            "select * from TareasAgenda where dia = ? and hor between ? and ? order by hor", dia,
            hour, hour.addSecs((SlotMinutes - 1) * 60));
        QString item;
        for (; !r.EOF_(); r.MoveNext()) {
            const int tip = r["tip"].toInt();
            item = taskConcept(s, tip, r["artaux"].toLong());
            c.detail.push_back(
                {r["hor"].toTime(), subject(s, tip, r["ida"].toInt(), r["des"].toText())});
        }
        if (c.detail.size() == 1) {
            c.icon = sheetIcon(s, item);
            c.text = c.detail.front().second.left(NameLetters);
        } else if (c.detail.size() > 1) {
            c.text = s(text::SeveralTasks);
        }
        slots.push_back(std::move(c));
    }
    return slots;
}

std::unique_ptr<Documento> agenda::daySheet(Sesion &s, bool complete, QDate dia, QTime from)
{
    const QLocale local;
    return std::make_unique<DayDocument>(
        s(text::DayAgenda), local.toString(dia, QLocale::LongFormat),
        complete ? QString() : longHour(s.reloj.hourOf()), daySlots(s, complete, dia, from));
}

namespace
{

void takeOut(Sesion &s, void (store::Printing::*como)(Sesion &, Documento &), bool complete,
             QDate dia, QTime from)
{
    try {
        // The sheet ends at 22:15; an update from then on has nothing to show.
        if (daySlots(s, complete, dia, from).empty())
            return;
        const auto sheet = daySheet(s, complete, dia, from);
        (s.impresion.*como)(s, *sheet);
    } catch (const store::StoreError &e) {
        s.dialogos.Mensaje(e.description);
    }
}

} // namespace

void ImprimirAgendaDia(Sesion &s, bool complete, QDate dia, QTime from)
{
    takeOut(s, &store::Printing::print, complete, dia, from);
}

void agenda::showAgendaDay(Sesion &s, bool complete, QDate dia, QTime from)
{
    takeOut(s, &store::Printing::show, complete, dia, from);
}
