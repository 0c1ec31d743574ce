// A start of the program up to the board, without its window: opens the folder and reads the
// board's lines, or runs the day before. Prints the milliseconds since main() began, the lines and
// the highest memory use in megabytes.

#include "full_clinic.h"

#include "board/board_lines.h"
#include "startup/daily_automation.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>

namespace
{

double MayorMemoria()
{
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray estado = f.readAll();
    const qsizetype i = estado.indexOf("VmHWM:");
    return i < 0 ? 0 : estado.mid(i + 6, 20).trimmed().split(' ').front().toDouble() / 1024;
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
        SesionDeMedida medida(args[1], QDate::fromString(args[2], Qt::ISODate));
        if (args.size() > 3)
            IniciarTareas(medida.s);
        const auto lineas = LeerPizarra(medida.s).size();
        QTextStream(stdout) << reloj.nsecsElapsed() / 1e6 << ' ' << lineas << ' ' << MayorMemoria()
                            << '\n';
    } catch (const std::exception &e) {
        QTextStream(stderr) << e.what() << '\n';
        return 1;
    }
    return 0;
}
