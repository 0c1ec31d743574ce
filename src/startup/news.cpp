#include "startup/news.h"

#include <QFile>
#include <QRegularExpression>

namespace
{

QString SinMarcas(QString t, QChar marca)
{
    t = t.trimmed();
    if (t.size() >= 2 && t.startsWith(marca) && t.endsWith(marca))
        t = t.sliced(1, t.size() - 2);
    return t;
}

QDate Dia(const Sesion &s, const QString &texto)
{
    const QString t = SinMarcas(SinMarcas(texto, u'"'), u'#').trimmed();
    if (const QDate d = QDate::fromString(t.left(10), Qt::ISODate); d.isValid())
        return d;
    return QDate::fromString(t, s.textos.idioma() == Idioma::Ingles ? QStringLiteral("M/d/yyyy")
                                                                    : QStringLiteral("d/M/yyyy"));
}

} // namespace

std::optional<Novedad> LeerNovedad(const Sesion &s, const QString &archivo)
{
    QFile f(archivo);
    if (!f.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = f.read(64 * 1024);
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    const QString registro = QString::fromUtf8(bytes).trimmed();
    static const QRegularExpression separador(QStringLiteral("[,\n]"));
    const qsizetype fin = registro.indexOf(separador);
    if (fin < 0)
        return std::nullopt;
    const Novedad n{Dia(s, registro.left(fin)),
                    SinMarcas(registro.mid(fin + 1).section(u'\n', 0, 0), u'"')};
    if (!n.hasta.isValid() || n.texto.isEmpty())
        return std::nullopt;
    return n;
}
