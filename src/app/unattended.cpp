#include "app/unattended.h"

#include "board/board_lines.h"
#include "importing/import.h"
#include "messages/outbox.h"
#include "startup/daily_automation.h"
#include "startup/demo_clinic.h"
#include "startup/first_run.h"
#include "startup/new_folder.h"
#include "startup/start_steps.h"
#include "store/data_folder.h"
#include "store/opening.h"
#include "store/upkeep.h"
#include "texts/texts.h"

#include <QDir>
#include <QLocale>
#include <QTextStream>

#include <cstdio>
#include <functional>
#include <termios.h>
#include <unistd.h>

using namespace app;

namespace
{

void print(std::FILE *where, const QString &line)
{
    std::fprintf(where, "%s\n", line.toUtf8().constData());
}

int fail(const QString &because)
{
    print(stderr, because);
    return 1;
}

// Keeps a board line on one line of output, whatever its text contains.
QString inOneLine(QString t)
{
    for (QChar &c : t)
        if (c == u'\t' || c == u'\n' || c == u'\r')
            c = u' ';
    return t;
}

/// The first line of standard input. On a terminal it is asked for and does not show.
QString readPassword()
{
    const bool asks = ::isatty(STDIN_FILENO);
    termios before{};
    if (asks) {
        std::fputs("Password: ", stderr);
        ::tcgetattr(STDIN_FILENO, &before);
        termios hidden = before;
        hidden.c_lflag &= ~tcflag_t(ECHO);
        ::tcsetattr(STDIN_FILENO, TCSANOW, &hidden);
    }
    const QString line = QTextStream(stdin).readLine();
    if (asks) {
        ::tcsetattr(STDIN_FILENO, TCSANOW, &before);
        std::fputs("\n", stderr);
    }
    return line;
}

/// All that the first start would ask for and do.
void setUpClinic(Sesion &s, const startup::FirstRunData &data)
{
    startup::beginFirstRun(s);
    startup::registerFirstRun(s, data);
    startup::finishFirstRun(s);
}

void printBoard(Sesion &s)
{
    for (const board::BoardLine &l : board::readBoard(s))
        print(stdout, QStringLiteral("%1\t%2\t%3\t").arg(l.dibujo).arg(l.codigo1).arg(l.codigo2)
                          + inOneLine(l.message));
}

// Opens a clinic that has been started before and runs the work with no one to ask.
// @return the exit status
int inClinic(const Options &options, store::Language language,
             const std::function<int(Sesion &)> &work)
{
    store::UnattendedDialogs dialogos;
    store::NoPrinting impresion;
    Sesion s(dialogos, impresion, language);
    try {
        store::setDataFolder(s, options.data);
        if (const auto failure = store::openStore(s))
            return fail(failure->text);
        if (startup::isFirstRun(s))
            return fail(s(text::FirstRunIsDue));
        return work(s);
    } catch (const store::StoreError &e) {
        if (e.number == store::ErrorNumber::DatabaseDamaged)
            store::noteDamage(s);
        return fail(store::errorText(s, e));
    }
}

} // namespace

int app::runUnattended(const Options &options, store::Language language)
{
    return inClinic(options, language, [](Sesion &s) {
        // Its question goes to standard error and is answered with No.
        if (!startup::checkStart(s, QLocale::system()))
            return 1;
        IniciarTareas(s, {.sendMessages = EnviarMensajes, .monthlyStep = {}});
        printBoard(s);
        return 0;
    });
}

int app::importData(const Options &options, store::Language language)
{
    return inClinic(options, language, [&options](Sesion &s) {
        const importing::FileView view = importing::inspectFile(s, options.importing, 0);
        if (!view.failure.isEmpty())
            return fail(view.failure);
        importing::ImportOptions o;
        o.file = options.importing;
        o.columns = view.columns;
        o.owner = options.owner;
        if (!options.dates.isEmpty())
            o.order = options.dates == u"mda" ? importing::DateOrder::MonthDay
                                              : importing::DateOrder::DayMonth;
        const QString badly = importing::applyColumns(s, options.columns, view.titles, o.columns);
        if (!badly.isEmpty())
            return fail(badly);
        print(stdout, importing::viewText(s, view));
        for (qsizetype i = 0; i < view.titles.size(); ++i)
            print(stdout, QStringLiteral("%1\t").arg(i + 1) + view.titles[i] + u'\t'
                              + importing::datumName(o.columns[i]));
        const importing::ImportReport report =
            options.confirm ? importing::importFile(s, o) : importing::testImport(s, o);
        if (report.missing != importing::ImportReport::Missing::Nothing)
            return fail(report.failure);
        print(stdout, importing::importSummary(s, report));
        print(stdout, importing::importEnd(s, report));
        for (const importing::ReportLine &l : report.lines)
            if (l.notice || l.outcome == importing::Outcome::Rejected)
                print(stdout, QStringLiteral("%1\t").arg(l.line)
                                  + importing::outcomeText(s, l.outcome) + u'\t'
                                  + inOneLine(l.client) + u'\t' + inOneLine(l.patient) + u'\t'
                                  + inOneLine(l.text));
        return report.failure.isEmpty() ? 0 : 1;
    });
}

int app::createData(const Options &options, store::Language language)
{
    store::UnattendedDialogs dialogos;
    store::NoPrinting impresion;
    Sesion s(dialogos, impresion, language);
    startup::FirstRunData first;
    if (!options.user.isEmpty()) {
        const QString password = readPassword();
        first = {options.clinic, {}, {}, options.user, password, password};
        if (const int fault = startup::validateFirstRun(first))
            return fail(s(fault));
    }
    try {
        startup::createFolder(options.create, language);
    } catch (const store::StoreError &e) {
        return fail(e.description); // names the folder and the reason
    }
    try {
        if (options.demo || !options.user.isEmpty()) {
            store::setDataFolder(s, options.create);
            if (const auto failure = store::openStore(s))
                return fail(failure->text);
        }
        if (options.demo)
            startup::createDemo(s);
        else if (!options.user.isEmpty())
            setUpClinic(s, first);
    } catch (const store::StoreError &e) {
        return fail(store::errorText(s, e));
    }
    print(stdout, QDir(options.create).absolutePath());
    return 0;
}
