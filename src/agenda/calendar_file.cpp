#include "agenda/calendar_file.h"

#include "agenda/tasks.h"
#include "store/lookups.h"

#include <QSaveFile>

using namespace agenda;
using namespace Qt::StringLiterals;

namespace
{

QByteArray escaped(QString text)
{
    text.replace(u'\\', u"\\\\"_s).replace(u';', u"\\;"_s).replace(u',', u"\\,"_s);
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u'\n', u"\\n"_s);
    text.removeIf([](QChar c) { return c < u' '; });
    return text.toUtf8();
}

// RFC 5545 limits lines to 75 bytes; a continuation line starts with a space. Characters are never
// split.
void setLine(QByteArray &exit, QByteArray line)
{
    constexpr qsizetype widthOf = 73;
    while (line.size() > widthOf) {
        qsizetype cut = widthOf;
        while (cut > 0 && (uchar(line[cut]) & 0xc0) == 0x80)
            --cut;
        exit += line.first(cut) + "\r\n";
        line = ' ' + line.sliced(cut);
    }
    exit += line + "\r\n";
}

QByteArray moment(QDate dia, QTime hour)
{
    return (dia.toString(u"yyyyMMdd") + u'T' + hour.toString(u"HHmmss")).toLatin1();
}

/// Adds a reminder as long before the hour as the alarm.
void setAlarm(QByteArray &exit, const DayTask &t, const QByteArray &title)
{
    if (!t.ala.isValid() || !t.hor.isValid())
        return;
    const int minutes = t.hor.secsTo(t.ala) / 60;
    setLine(exit, "BEGIN:VALARM");
    setLine(exit, "ACTION:DISPLAY");
    setLine(exit, "DESCRIPTION:" + title);
    setLine(exit, QByteArray(minutes < 0 ? "TRIGGER:-PT" : "TRIGGER:PT")
                      + QByteArray::number(qAbs(minutes)) + 'M');
    setLine(exit, "END:VALARM");
}

} // namespace

QByteArray agenda::asCalendar(Sesion &s, const std::vector<DayTask> &tasks)
{
    QByteArray exit;
    setLine(exit, "BEGIN:VCALENDAR");
    setLine(exit, "VERSION:2.0");
    setLine(exit,
            "PRODID:-//Kelvara//Agenda//" + store::languageCode(s.texts.language()).toLatin1());
    const QByteArray now = moment(s.reloj.now().toUTC().date(), s.reloj.now().toUTC().time());
    for (const DayTask &t : tasks) {
        setLine(exit, "BEGIN:VEVENT");
        setLine(exit, "UID:" + QByteArray::number(t.id) + '-'
                          + t.created.toString(u"yyyyMMdd").toLatin1() + "@kelvara");
        setLine(exit, "DTSTAMP:" + now + 'Z');
        if (t.hor.isValid()) {
            // UTC, because a local day may have hours that are missing or come twice.
            const QDateTime end = QDateTime(t.dia, t.hor, Qt::UTC).addSecs(t.minutes * 60);
            setLine(exit, "DTSTART:" + moment(t.dia, t.hor));
            setLine(exit, "DTEND:" + moment(end.date(), end.time()));
        } else {
            setLine(exit, "DTSTART;VALUE=DATE:" + t.dia.toString(u"yyyyMMdd").toLatin1());
        }
        // A user's note says more than "User task".
        const QString subject = t.tip == TaskKind::UserTask ? t.des : t.patient;
        const QByteArray title = escaped(subject.isEmpty() ? t.item : t.item + u" - "_s + subject);
        setLine(exit, "SUMMARY:" + title);
        setLine(exit, "DESCRIPTION:" + escaped(t.detail));
        if (!s.clinic.dir.isEmpty())
            setLine(exit, "LOCATION:" + escaped(s.clinic.dir));
        setAlarm(exit, t, title);
        setLine(exit, "END:VEVENT");
    }
    setLine(exit, "END:VCALENDAR");
    return exit;
}

void agenda::saveCalendar(Sesion &s, const std::vector<DayTask> &tasks, const QString &file)
{
    QSaveFile target(file);
    const QByteArray text = asCalendar(s, tasks);
    if (!target.open(QIODevice::WriteOnly) || target.write(text) != text.size() || !target.flush()
        || !target.commit())
        throw store::StoreError(store::ErrorNumber::PathOrDisk, target.errorString());
}
