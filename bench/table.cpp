#include "table.h"

#include <QElapsedTimer>
#include <QTextStream>
#include <algorithm>

namespace
{
QTextStream &Exit()
{
    static QTextStream exit(stdout);
    return exit;
}
} // namespace

void line(const QString &what, const QString &our, const QString &bare, const QString &measure,
          const QString &goal)
{
    Exit() << what.leftJustified(46) << our.rightJustified(12) << bare.rightJustified(12)
           << measure.rightJustified(12) << "   " << goal << Qt::endl;
}

QString numberOf(double n, int decimals) { return QString::number(n, 'f', decimals); }

double median(std::vector<double> v)
{
    std::ranges::sort(v);
    return v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2;
}

double milliseconds(const std::function<void()> &f)
{
    QElapsedTimer reloj;
    reloj.start();
    f();
    return double(reloj.nsecsElapsed()) / 1e6;
}
