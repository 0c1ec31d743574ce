// Creates a full clinic to try the program on or to measure it with.

#include "full_clinic.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    QCommandLineParser p;
    p.setApplicationDescription(u"Makes a full clinic in a new data folder. Its user is Ana, "
                                "without a password."_s);
    p.addHelpOption();
    p.addPositionalArgument(u"DIR"_s, u"The folder to make."_s);
    p.addOption({u"names"_s, u"Take the animals' names from this CSV file."_s, u"FILE.csv"_s});
    p.addOption({u"column"_s, u"Header or number of the column with the names."_s, u"COLUMN"_s});
    p.addOption(
        {u"day"_s, u"The morning that the clinic waits for, instead of today."_s, u"YYYY-MM-DD"_s});
    p.addOption({u"seed"_s, u"Another clinic of the same size."_s, u"N"_s, u"1"_s});
    p.process(app);

    QTextStream err(stderr);
    ClinicPlan plan;
    plan.seed = p.value(u"seed"_s).toULongLong();
    plan.hoy = p.isSet(u"day"_s) ? QDate::fromString(p.value(u"day"_s), Qt::ISODate)
                                 : QDate::currentDate();
    if (p.positionalArguments().size() != 1 || !plan.hoy.isValid()) {
        err << p.helpText();
        return 1;
    }
    try {
        if (p.isSet(u"names"_s))
            plan.names = readNames(p.value(u"names"_s), p.value(u"column"_s));
        createFullClinic(p.positionalArguments().front(), plan);
    } catch (const std::exception &e) {
        err << e.what() << '\n';
        return 1;
    }
    return 0;
}
