#include "importing/import.h"

#include "importing/plan.h"
#include "texts/import.h"

#include <QLocale>
#include <QRegularExpression>

using namespace clients;
using namespace importing;
using namespace Qt::StringLiterals;

FileView importing::inspectFile(Sesion &s, const QString &file, int rows)
{
    FileView v;
    DelimitedFile reader(file);
    const bool hasTitles = reader.read(v.titles);
    QStringList fields;
    for (int i = 0; i < rows && reader.read(fields); ++i)
        v.rows << fields;
    v.utf8 = reader.isUtf8();
    v.separator = reader.separatorSign();
    v.failure = fileFailure(s, reader);
    if (v.failure.isEmpty() && !hasTitles)
        v.failure = s(text::FileIsEmpty);
    for (QString &title : v.titles)
        title = title.simplified();
    v.columns = recogniseTitles(v.titles);
    return v;
}

QString importing::viewText(const Sesion &s, const FileView &view)
{
    const int which = view.separator == u';' ? 1 : view.separator == u'\t' ? 2 : 0;
    return s(text::ImportFileForm)
        .arg(view.utf8 ? u"UTF-8"_s : u"Latin-1"_s,
             s(text::SeparatorNames).section(u'|', which, which));
}

ImportReport importing::testImport(Sesion &s, const ImportOptions &o, const KeepGoing &keepGoing)
{
    Plan plan(s, o);
    plan.make(keepGoing);
    return std::move(plan.report);
}

ImportReport importing::importFile(Sesion &s, const ImportOptions &o, const KeepGoing &keepGoing)
{
    Plan plan(s, o);
    if (plan.make(keepGoing))
        plan.write(keepGoing);
    return std::move(plan.report);
}

QString importing::importSummary(const Sesion &s, const ImportReport &i)
{
    const auto n = [](int count) { return QLocale().toString(count); };
    QStringList lines = i.notes;
    lines << s(text::ImportedClients).arg(n(i.newClients), n(i.existingClients))
          << s(text::ImportedPatients).arg(n(i.newPatients), n(i.existingPatients))
          << s(text::ImportedLines).arg(n(i.rejected), n(i.notices));
    if (i.withoutPlace)
        lines << s(text::ImportedDoNotFit).arg(n(i.withoutPlace), n(i.firstWithoutPlace));
    return lines.join(u'\n');
}

QString importing::importEnd(const Sesion &s, const ImportReport &i)
{
    const QString last = QLocale().toString(i.lines.empty() ? 1 : i.lines.back().line);
    if (!i.failure.isEmpty())
        return s(text::ImportBrokeOff).arg(last, i.failure);
    if (i.interrupted)
        return i.written ? s(text::ImportWasStopped).arg(last) : s(text::StoppedNothingWritten);
    return s(i.written ? text::ImportIsDone : text::DryRunIsDone);
}

QString importing::outcomeText(const Sesion &s, Outcome outcome)
{
    return s(text::ImportOutcomeNames).section(u'|', int(outcome), int(outcome));
}

QString importing::applyColumns(const Sesion &s, const QString &text, const QStringList &titles,
                                QList<Datum> &columns)
{
    for (const QString &part : text.split(u',', Qt::SkipEmptyParts)) {
        const qsizetype equal = part.lastIndexOf(u'=');
        const QString title = part.left(std::max<qsizetype>(equal, 0)).trimmed();
        qsizetype column = -1;
        for (qsizetype i = 0; i < titles.size() && column < 0; ++i)
            if (inKey(titles[i]) == inKey(title) && !title.isEmpty())
                column = i;
        bool isNumber = false;
        if (const int number = title.toInt(&isNumber); column < 0 && isNumber)
            column = number - 1;
        if (column < 0 || column >= columns.size())
            return s(text::NoSuchColumn).arg(equal < 0 ? part : title);
        const QString name = part.mid(equal + 1).trimmed();
        const auto datum = datumByName(name);
        if (!datum) {
            QStringList names;
            for (int d = 0; d < DatumCount; ++d)
                names << datumName(Datum(d));
            return s(text::NoSuchTarget).arg(name, names.join(u", "_s));
        }
        if (*datum != Datum::Nothing)
            std::replace(columns.begin(), columns.end(), *datum, Datum::Nothing);
        columns[column] = *datum;
    }
    return {};
}
