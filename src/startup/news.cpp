#include "startup/news.h"

#include <QFile>
#include <QRegularExpression>

using namespace startup;

namespace
{

QString withoutMarks(QString t, QChar mark)
{
    t = t.trimmed();
    if (t.size() >= 2 && t.startsWith(mark) && t.endsWith(mark))
        t = t.sliced(1, t.size() - 2);
    return t;
}

QDate Day(const Sesion &s, const QString &text)
{
    const QString t = withoutMarks(withoutMarks(text, u'"'), u'#').trimmed();
    if (const QDate d = QDate::fromString(t.left(10), Qt::ISODate); d.isValid())
        return d;
    return QDate::fromString(t, s.texts.language() == store::Language::English
                                    ? QStringLiteral("M/d/yyyy")
                                    : QStringLiteral("d/M/yyyy"));
}

} // namespace

std::optional<NewsItem> startup::readNewsItem(const Sesion &s, const QString &file)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = f.read(64 * 1024);
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    const QString registry = QString::fromUtf8(bytes).trimmed();
    static const QRegularExpression separator(QStringLiteral("[,\n]"));
    const qsizetype end = registry.indexOf(separator);
    if (end < 0)
        return std::nullopt;
    const NewsItem n{Day(s, registry.left(end)),
                     withoutMarks(registry.mid(end + 1).section(u'\n', 0, 0), u'"')};
    if (!n.until.isValid() || n.text.isEmpty())
        return std::nullopt;
    return n;
}
