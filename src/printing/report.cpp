#include "printing/report.h"

#include "store/data_folder.h"
#include "texts/printing.h"
#include "texts/texts.h"

#include <QFile>
#include <kainjow/mustache.hpp>

using namespace printing;
using namespace Qt::StringLiterals;
using Datum = kainjow::mustache::data;

namespace
{

// A value as it is printed. Storage does not depend on locales, so formatting happens here.
QString inSheet(const store::Value &v, store::ColumnType type)
{
    const QLocale local;
    if (v.isNull())
        return {};
    switch (type) {
    case store::ColumnType::Currency:
        return local.toString(v.toMoneda().toDouble(), 'f', 2);
    case store::ColumnType::Single:
    case store::ColumnType::Double:
        return local.toString(v.toDouble(), 'g', QLocale::FloatingPointShortest);
    case store::ColumnType::Date:
        return local.toString(v.toDate(), QLocale::ShortFormat);
    case store::ColumnType::Time:
        return local.toString(v.toTime(), QLocale::ShortFormat);
    default:
        return v.toText();
    }
}

std::string utf8(const QString &t) { return t.toStdString(); }

// The head of a report definition.
struct ReportHead {
    QString title;
    QString query; // over the scratch database
    QString group; // column by which rows are grouped; "" for none
    QStringList sums;
    QHash<QString, QString> texts; // by name, in the language of the session
    bool landscape = false;
};

// Picks a language from a text such as "uno | um | one", which may also be one text for all.
QString inLanguage(const QString &text, store::Language language)
{
    const QStringList each = text.split(u" | "_s);
    if (each.size() == 1)
        return text;
    if (each.size() != 3)
        throw store::StoreError(store::ErrorNumber::Syntax, text);
    return each[language == store::Language::Spanish      ? 0
                : language == store::Language::Portuguese ? 1
                                                          : 2];
}

struct Group {
    QString name;
    kainjow::mustache::list rows;
    std::vector<Moneda> sums;
};

void setSums(Datum &target, const QStringList &columns, const std::vector<Moneda> &sums)
{
    for (qsizetype i = 0; i < columns.size(); ++i)
        target.set(utf8(u"suma_"_s + columns[i]),
                   utf8(QLocale().toString(sums[size_t(i)].toDouble(), 'f', 2)));
}

// The rows as the template sees them: `filas`, or `grupos` with `filas` in each of them.
Datum fillData(Recordset &r, const ReportHead &head)
{
    std::vector<Group> groups;
    const size_t n = size_t(head.sums.size());
    std::vector<Moneda> totals(n);
    int rows = 0;
    for (; !r.EOF_(); r.MoveNext(), ++rows) {
        const QString name =
            head.group.isEmpty() ? QString() : r[head.group.toStdString()].toText();
        if (groups.empty() || groups.back().name != name)
            groups.push_back({name, {}, std::vector<Moneda>(n)});
        Datum row;
        for (int c = 0; c < r.allColumns(); ++c)
            row.set(utf8(r.nameOf(c).toLower()), utf8(inSheet(r[c], r.typeOf(c))));
        groups.back().rows.push_back(row);
        for (size_t i = 0; i < n; ++i) {
            const Moneda m = r[head.sums[qsizetype(i)].toStdString()].toMoneda();
            groups.back().sums[i] = groups.back().sums[i] + m;
            totals[i] = totals[i] + m;
        }
    }
    Datum data;
    kainjow::mustache::list all, list;
    for (const Group &g : groups) {
        for (const Datum &f : g.rows)
            all.push_back(f);
        Datum group;
        group.set("nombre", utf8(g.name));
        group.set("cantidad", std::to_string(g.rows.size()));
        group.set("filas", Datum(g.rows));
        setSums(group, head.sums, g.sums);
        list.push_back(group);
    }
    data.set("filas", Datum(all));
    data.set("grupos", Datum(list));
    data.set("cantidad", std::to_string(rows));
    setSums(data, head.sums, totals);
    return data;
}

ReportHead readHead(const QString &definition, store::Language language, QString *body)
{
    const qsizetype opens = definition.indexOf(u"<!--"_s);
    const qsizetype closes = definition.indexOf(u"-->"_s);
    if (opens != 0 || closes < 0)
        throw store::StoreError(store::ErrorNumber::Syntax, u"<!-- ... -->"_s);
    ReportHead head;
    QString *last = nullptr;
    const auto lines = definition.mid(4, closes - 4).split(u'\n');
    for (const QString &line : lines) {
        const QString t = line.trimmed();
        if (t.isEmpty())
            continue;
        // A line that begins with a space continues the one before.
        if (line.startsWith(u' ') && last) {
            *last += u' ' + t;
            continue;
        }
        const QString key = t.section(u':', 0, 0).trimmed().toLower();
        const QString value = t.section(u':', 1).trimmed();
        last = nullptr;
        if (key == u"titulo")
            head.title = inLanguage(value, language);
        else if (key.startsWith(u"texto "))
            head.texts[key.sliced(6).trimmed()] = inLanguage(value, language);
        else if (key == u"consulta")
            *(last = &head.query) = value;
        else if (key == u"grupo")
            head.group = value;
        else if (key == u"sumas")
            head.sums = value.split(u',', Qt::SkipEmptyParts);
        else if (key == u"hoja")
            head.landscape = value.contains(u"apaisada");
        else
            throw store::StoreError(store::ErrorNumber::Syntax, t);
    }
    for (QString &sum : head.sums)
        sum = sum.trimmed();
    *body = definition.mid(closes + 3);
    return head;
}

struct DefinitionFile {
    QString name;
    QString text;
};

// Looks for the clinic's own definition for the language, then for its own one for all languages,
// then for the one that ships with the program.
DefinitionFile readDefinition(const Sesion &s, const QString &name)
{
    const QString forAll = name + u".html"_s;
    const QString forLanguage = name + s(text::LanguageCodeInFiles) + u".html"_s;
    for (const QString &path :
         {store::pathUnder(s.dataFolder, u"reportes/"_s + forLanguage),
          store::pathUnder(s.dataFolder, u"reportes/"_s + forAll), u":/reportes/"_s + forAll}) {
        QFile f(path);
        if (f.open(QIODevice::ReadOnly))
            return {path.section(u'/', -1),
                    QString::fromUtf8(f.readAll()).remove(QChar::ByteOrderMark)};
    }
    throw store::StoreError(store::ErrorNumber::FileNotFound, forLanguage);
}

Datum readRows(Sesion &s, const ReportHead &head)
{
    Recordset r = s.rep97->OpenSnapshot(head.query.toStdString());
    return fillData(r, head);
}

std::unique_ptr<DocumentHtml> run(Sesion &s, const QString &definition)
{
    QString body;
    const ReportHead head = readHead(definition, s.texts.language(), &body);
    Datum data = readRows(s, head);

    Datum clinic;
    clinic.set("nom", utf8(s.clinic.nom));
    clinic.set("pro", utf8(s.clinic.pro));
    clinic.set("dir", utf8(s.clinic.dir));
    clinic.set("tel", utf8(s.clinic.tel));
    data.set("clinica", clinic);
    data.set("hoy", utf8(QLocale().toString(s.reloj.hoy, QLocale::LongFormat)));
    data.set("titulo", utf8(head.title));
    Datum texts;
    for (const auto &[name, text] : head.texts.asKeyValueRange())
        texts.set(utf8(name), utf8(text));
    data.set("texto", texts);

    kainjow::mustache::mustache templateText(body.toStdString());
    if (!templateText.is_valid())
        throw store::StoreError(store::ErrorNumber::Syntax,
                                QString::fromStdString(templateText.error_message()));
    return std::make_unique<DocumentHtml>(
        head.title, QString::fromStdString(templateText.render(data)), s(text::PageOfTotal),
        head.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
}

} // namespace

std::unique_ptr<DocumentHtml> printing::runReport(Sesion &s, const QString &name)
{
    const DefinitionFile file = readDefinition(s, name);
    try {
        return run(s, file.text);
    } catch (const store::StoreError &e) {
        // The clinic may have edited the file, so the message starts with its name.
        throw store::StoreError(e.number, (file.name + u"\n"_s + e.description).trimmed(),
                                e.statement);
    }
}
