#include "startup/demo_data.h"

#include <QFile>
#include <stdexcept>

using namespace startup;
using namespace Qt::StringLiterals;

int Chance::between(int from, int until)
{
    // A counter scrambled by multiplications and shifts (SplitMix64): short, and good enough here.
    m_state += 0x9e3779b97f4a7c15u;
    quint64 z = m_state;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
    z ^= z >> 31;
    return from + int(z % quint64(until - from + 1));
}

Words::Words(store::Language language)
{
    const QString code = store::languageCode(language);
    QFile f(u":/seeds/demo.txt"_s);
    if (!f.open(QIODevice::ReadOnly))
        throw std::runtime_error("no seed file demo");
    QString list;
    for (const QString &line : QString::fromUtf8(f.readAll()).split(u'\n')) {
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        if (line.startsWith(u'[')) {
            list = line.sliced(1, line.size() - 2);
            continue;
        }
        QStringList words = line.split(u'|');
        if (words.takeFirst().trimmed() != code)
            continue;
        for (const QString &p : std::as_const(words))
            m_lists[list].append(p.trimmed());
    }
}

const QStringList &Words::operator[](const QString &list) const
{
    const auto i = m_lists.constFind(list);
    if (i == m_lists.cend())
        throw std::runtime_error(u"no list %1"_s.arg(list).toStdString());
    return *i;
}

QList<QStringList> Words::fieldsOf(const QString &list) const
{
    QList<QStringList> fields;
    for (const QString &word : (*this)[list])
        fields.append(word.split(u';'));
    return fields;
}
