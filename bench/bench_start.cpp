// A start of the program up to the board, without its window: opens the folder and reads the
// board's lines, after running the day if asked to, or reads all lines of sales instead. Prints the
// milliseconds since main() began, the number of lines and the peak memory in megabytes.

#include "full_clinic.h"

#include "board/board_lines.h"
#include "startup/daily_automation.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>

namespace
{

double highestMemory()
{
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray state = f.readAll();
    const qsizetype i = state.indexOf("VmHWM:");
    return i < 0 ? 0 : state.mid(i + 6, 20).trimmed().split(' ').front().toDouble() / 1024;
}

} // namespace

int main(int argc, char *argv[])
{
    QElapsedTimer reloj;
    reloj.start();
    const QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() < 3)
        return 1;
    try {
        MeasureSession measure(args[1], QDate::fromString(args[2], Qt::ISODate));
        qsizetype lines = 0;
        if (args.value(3) == QLatin1StringView("--walk")) {
            Recordset r = measure.s.finanzas->OpenForwardOnly("select * from VentasDetalle");
            for (; !r.EOF_(); r.MoveNext())
                ++lines;
        } else {
            if (args.size() > 3)
                IniciarTareas(measure.s);
            lines = board::readBoard(measure.s).size();
        }
        QTextStream(stdout) << reloj.nsecsElapsed() / 1e6 << ' ' << lines << ' ' << highestMemory()
                            << '\n';
    } catch (const std::exception &e) {
        QTextStream(stderr) << e.what() << '\n';
        return 1;
    }
    return 0;
}
