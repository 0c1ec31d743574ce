#include "clients/reference_lists.h"

#include "store/identifiers.h"
#include "texts/clients.h"
#include "texts/texts.h"

#include <algorithm>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

// The six tables under the columns of Entrada.
struct Table {
    std::string_view columns;
    std::string_view table;
};

constexpr Table tableOf(List list)
{
    switch (list) {
    case List::Region:
        return {"id, nom, ctel as codigo, 0 as padre", "cldepartamento"};
    case List::Subregion:
        return {"id, nom, cp as codigo, dep as padre", "cllocalidad"};
    case List::Marketing:
        return {"id, nom, '' as codigo, 0 as padre", "clmarketing"};
    case List::Species:
        return {"id, nom, '' as codigo, 0 as padre", "mlespecies"};
    case List::Breed:
        return {"id, nom, '' as codigo, esp as padre", "mlrazas"};
    case List::Coat:
        break;
    }
    return {"id, nom, '' as codigo, 0 as padre", "mlpelajes"};
}

std::string queryOf(List list, std::string_view rest)
{
    const Table t = tableOf(list);
    std::string sql = "select ";
    for (const std::string_view part : {t.columns, std::string_view(" from "), t.table, rest})
        sql += part;
    return sql;
}

Entry readEntry(const Recordset &r)
{
    return {r[0].toInt(), r[1].toText(), r[2].toText(), r[3].toInt()};
}

template <typename V>
std::optional<Entry> firstOne(Sesion &s, List list, std::string_view rest, const V &value)
{
    const Recordset r = s.clientes->OpenSnapshot(queryOf(list, rest), value);
    return r.EOF_() ? std::nullopt : std::optional(readEntry(r));
}

// What a found entry brings along; "" when that is nothing.
QString whatItBrings(Sesion &s, List list, const Entry &e)
{
    if (list == List::Region)
        return e.code;
    const auto parent = parentOf(s, list, e);
    return parent ? parent->nom : QString();
}

// The text with each of these characters standing for itself.
QString literal(const QString &text, QStringView wildcards)
{
    QString patron;
    for (const QChar c : text)
        if (wildcards.contains(c))
            patron += u'[' + QString(c) + u']';
        else
            patron += c;
    return patron;
}

// A hint is one line: more names than this say nothing.
constexpr qsizetype NamesInNotice = 12;

} // namespace

std::vector<Entry> clients::loadList(Sesion &s, List list)
{
    std::vector<Entry> entries;
    Recordset r = s.clientes->OpenSnapshot(queryOf(list, " order by nom"));
    entries.reserve(size_t(r.RecordCount()));
    for (; !r.EOF_(); r.MoveNext())
        entries.push_back(readEntry(r));
    return entries;
}

std::optional<Entry> clients::entryById(Sesion &s, List list, int id)
{
    return firstOne(s, list, " where id = ?", id);
}

std::optional<Entry> clients::entryByName(Sesion &s, List list, const QString &nom)
{
    return firstOne(s, list, " where nom = ?", nom.trimmed());
}

std::optional<Entry> clients::parentOf(Sesion &s, List list, const Entry &entry)
{
    const bool region = list == List::Subregion;
    const Recordset &parents = region ? s.lists.cldepartamento : s.lists.mlespecies;
    const auto name = parents.lookUp("id = ?", entry.parent, "nom");
    if (!name)
        return std::nullopt;
    const auto telephone = region ? parents.lookUp("id = ?", entry.parent, "ctel") : store::Value();
    return Entry{entry.parent, name->toText(), telephone.value_or(store::Value()).toText(), 0};
}

Completed clients::complete(Sesion &s, List list, const QString &text)
{
    Completed c;
    if (text.isEmpty())
        return c;
    Recordset r = s.clientes->OpenSnapshot(queryOf(list, " where nom like ? order by ran desc"),
                                           prefixPattern(text));
    for (; !r.EOF_(); r.MoveNext())
        if (c.found)
            c.other << r[1].toText();
        else
            c.found = readEntry(r);
    return c;
}

QString clients::completedNotice(Sesion &s, List list, const Completed &c)
{
    if (!c.found)
        return s(list == List::Breed       ? text::BreedNotFound
                 : list == List::Subregion ? text::SubregionNotFound
                                           : text::RegionNotFound);
    const QString brings = whatItBrings(s, list, *c.found);
    QString notice = brings.isEmpty() ? QString() : c.found->nom + u" +-> "_s + brings + u". "_s;
    if (c.other.isEmpty())
        return notice + s(text::EntryFound);
    notice += s(list == List::Breed ? text::BreedFoundOthers : text::EntryFoundOthers)
              + c.other.mid(0, NamesInNotice).join(u", "_s);
    return c.other.size() > NamesInNotice ? notice + u"..."_s : notice;
}

bool clients::isNumeric(const QString &text)
{
    QStringView t = QStringView(text).trimmed();
    if (t.startsWith(u'+') || t.startsWith(u'-'))
        t = t.sliced(1);
    bool figures = false;
    for (const QChar c : t) {
        if (c.isDigit())
            figures = true;
        else if (c != u'.' && c != u',')
            return false;
    }
    return figures;
}

bool clients::withoutLetters(const QString &text)
{
    const QList<uint> letters = text.trimmed().toUcs4();
    return !letters.isEmpty()
           && std::ranges::none_of(letters, [](uint c) { return QChar::isLetter(c); });
}

QString clients::prefixPattern(const QString &text) { return literal(text, u"*?#[") + u'*'; }

QString clients::patternWithStars(const QString &text) { return literal(text, u"?#[") + u'*'; }

void SubirRanking(Sesion &s, std::string_view table, int id)
{
    s.clientes->Execute(
        "update " + std::string(table) + " set ran = ran + 1 where ran < 32000 and id = ?", id);
}

int clients::ensureRegion(Sesion &s, const QString &nom, const QString &ctel)
{
    const QString name = nom.trimmed(), code = ctel.trimmed();
    if (name.isEmpty())
        return 0;
    Lote lote(s);
    const auto known = entryByName(s, List::Region, name);
    int id = known ? known->id : 0;
    if (!known) {
        id = store::takeIdentifier(s, "contadordep", store::Highest16BitId);
        s.clientes->Execute("insert into cldepartamento (id, nom, ctel) values (?, ?, ?)", id,
                            s.clientes->trimmed("cldepartamento", "nom", name),
                            s.clientes->trimmed("cldepartamento", "ctel", code));
    } else if (!code.isEmpty() && code != known->code) {
        s.clientes->Execute("update cldepartamento set Ctel = ? where id = ?",
                            s.clientes->trimmed("cldepartamento", "ctel", code), id);
    }
    lote.commit();
    return id;
}

int clients::ensureSubregion(Sesion &s, const QString &nom, const QString &cp, int dep)
{
    const QString name = nom.trimmed(), code = cp.trimmed();
    if (name.isEmpty())
        return 0;
    Lote lote(s);
    const auto known = entryByName(s, List::Subregion, name);
    int id = known ? known->id : 0;
    if (!known) {
        id = store::takeIdentifier(s, "contadorloc", store::Highest16BitId);
        s.clientes->Execute("insert into cllocalidad (id, nom, cp, dep) values (?, ?, ?, ?)", id,
                            s.clientes->trimmed("cllocalidad", "nom", name),
                            s.clientes->trimmed("cllocalidad", "cp", code), dep);
    } else if (!code.isEmpty() && code != known->code) {
        s.clientes->Execute("update cllocalidad set Cp = ? where id = ?",
                            s.clientes->trimmed("cllocalidad", "cp", code), id);
    }
    lote.commit();
    return id;
}

int clients::ensureBreed(Sesion &s, const QString &nom, int esp)
{
    const QString name = nom.trimmed();
    if (name.isEmpty())
        return 0;
    Lote lote(s);
    const auto known = entryByName(s, List::Breed, name);
    int id = known ? known->id : 0;
    if (!known) {
        id = store::takeIdentifier(s, "contadorRaza", store::Highest16BitId);
        s.clientes->Execute("insert into mlrazas (id, nom, esp) values (?, ?, ?)", id,
                            s.clientes->trimmed("mlrazas", "nom", name), esp);
    }
    lote.commit();
    return id;
}

void clients::changeBreedSpecies(Sesion &s, int breed, int esp)
{
    s.clientes->Execute("update mlrazas set esp = ? where id = ?", esp, breed);
}
