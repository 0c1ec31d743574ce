#include "startup/demo_data.h"

#include <QFile>
#include <stdexcept>

using namespace Qt::StringLiterals;

int Azar::Entre(int desde, int hasta)
{
    // A counter scrambled by multiplications and shifts: short, and good enough for names.
    m_estado += 0x9e3779b97f4a7c15u;
    quint64 z = m_estado;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
    z ^= z >> 31;
    return desde + int(z % quint64(hasta - desde + 1));
}

Palabras::Palabras(Idioma idioma)
{
    const QString codigo = CodigoDeIdioma(idioma);
    QFile f(u":/seeds/demo.txt"_s);
    if (!f.open(QIODevice::ReadOnly))
        throw std::runtime_error("no seed file demo");
    QString lista;
    for (const QString &linea : QString::fromUtf8(f.readAll()).split(u'\n')) {
        if (linea.isEmpty() || linea.startsWith(u'#'))
            continue;
        if (linea.startsWith(u'[')) {
            lista = linea.sliced(1, linea.size() - 2);
            continue;
        }
        QStringList palabras = linea.split(u'|');
        if (palabras.takeFirst().trimmed() != codigo)
            continue;
        for (const QString &p : std::as_const(palabras))
            m_listas[lista].append(p.trimmed());
    }
}

const QStringList &Palabras::operator[](const QString &lista) const
{
    const auto i = m_listas.constFind(lista);
    if (i == m_listas.cend())
        throw std::runtime_error(u"no list %1"_s.arg(lista).toStdString());
    return *i;
}

QList<QStringList> Palabras::Campos(const QString &lista) const
{
    QList<QStringList> campos;
    for (const QString &palabra : (*this)[lista])
        campos.append(palabra.split(u';'));
    return campos;
}
