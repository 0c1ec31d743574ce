#include "table.h"

#include <QElapsedTimer>
#include <QTextStream>
#include <algorithm>

namespace
{
QTextStream &Salida()
{
    static QTextStream salida(stdout);
    return salida;
}
} // namespace

void Linea(const QString &que, const QString &nuestro, const QString &desnudo,
           const QString &medida, const QString &meta)
{
    Salida() << que.leftJustified(46) << nuestro.rightJustified(12) << desnudo.rightJustified(12)
             << medida.rightJustified(12) << "   " << meta << Qt::endl;
}

QString Numero(double n, int decimales) { return QString::number(n, 'f', decimales); }

double Mediana(std::vector<double> v)
{
    std::ranges::sort(v);
    return v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2;
}

double Milisegundos(const std::function<void()> &f)
{
    QElapsedTimer reloj;
    reloj.start();
    f();
    return double(reloj.nsecsElapsed()) / 1e6;
}
