#include "clients/reference_lists.h"

#include "columns/configuracion.h"
#include "store/identifiers.h"
#include "texts/clients.h"
#include "texts/texts.h"

#include <algorithm>

using namespace clients;
using namespace Qt::StringLiterals;

namespace
{

constexpr int HighestByte = 255;

constexpr ListTable Tables[] = {
    {List::Region, "cldepartamento", "ctel", "", setting::contadordep, store::Highest16BitId},
    {List::Subregion, "cllocalidad", "cp", "dep", setting::contadorloc, store::Highest16BitId},
    {List::Marketing, "clmarketing", "", "", setting::contadormark, store::Highest16BitId},
    {List::Species, "mlespecies", "", "", setting::contadorespecie, HighestByte},
    {List::Breed, "mlrazas", "", "esp", setting::contadorraza, store::Highest16BitId},
    {List::Coat, "mlpelajes", "", "", setting::contadorpelaje, store::Highest16BitId},
};

std::string joined(std::initializer_list<std::string_view> parts)
{
    std::string s;
    for (const std::string_view part : parts)
        s += part;
    return s;
}

// Selects any list with the columns of Entry.
std::string queryOf(List list, std::string_view rest)
{
    const ListTable &t = tableOf(list);
    return joined({"select id, nom, ", t.codeColumn.empty() ? "''" : t.codeColumn, " as codigo, ",
                   t.parentColumn.empty() ? "0" : t.parentColumn, " as padre from ", t.table,
                   rest});
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

// What an entry brings with it, such as its species; "" for nothing.
QString whatItBrings(Sesion &s, List list, const Entry &e)
{
    if (list == List::Region)
        return e.code;
    const auto parent = parentOf(s, list, e);
    return parent ? parent->nom : QString();
}

// The text with each of these wildcards escaped.
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

// A hint is a single line.
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

const ListTable &clients::tableOf(List list)
{
    return *std::ranges::find(Tables, list, &ListTable::list);
}

int clients::addEntry(Sesion &s, List list, const Entry &entry)
{
    const ListTable &t = tableOf(list);
    const int id = store::takeIdentifier(s, t.counter, t.highestId);
    std::string columns = "id, nom", places = "?, ?";
    std::vector<store::Value> values{id, s.clientes->trimmed(t.table, "nom", entry.nom)};
    const auto add = [&](std::string_view column, const store::Value &value) {
        if (column.empty())
            return;
        columns += joined({", ", column});
        places += ", ?";
        values.push_back(value);
    };
    add(t.codeColumn, s.clientes->trimmed(t.table, t.codeColumn, entry.code));
    add(t.parentColumn, entry.parent);
    s.clientes->run(joined({"insert into ", t.table, " (", columns, ") values (", places, ")"}),
                    values);
    return id;
}

namespace
{

// Adds the entry if it is new; a known one takes over the code, if one was typed.
int ensure(Sesion &s, List list, const Entry &typed)
{
    if (typed.nom.isEmpty())
        return 0;
    Lote lote(s);
    const auto known = entryByName(s, list, typed.nom);
    const int id = known ? known->id : addEntry(s, list, typed);
    if (known && !typed.code.isEmpty() && typed.code != known->code) {
        const ListTable &t = tableOf(list);
        s.clientes->Execute(
            joined({"update ", t.table, " set ", t.codeColumn, " = ? where id = ?"}),
            s.clientes->trimmed(t.table, t.codeColumn, typed.code), id);
    }
    lote.commit();
    return id;
}

} // namespace

int clients::ensureRegion(Sesion &s, const QString &nom, const QString &ctel)
{
    return ensure(s, List::Region, {.nom = nom.trimmed(), .code = ctel.trimmed()});
}

int clients::ensureSubregion(Sesion &s, const QString &nom, const QString &cp, int dep)
{
    return ensure(s, List::Subregion, {.nom = nom.trimmed(), .code = cp.trimmed(), .parent = dep});
}

int clients::ensureBreed(Sesion &s, const QString &nom, int esp)
{
    return ensure(s, List::Breed, {.nom = nom.trimmed(), .parent = esp});
}

void clients::changeBreedSpecies(Sesion &s, int breed, int esp)
{
    s.clientes->Execute("update mlrazas set esp = ? where id = ?", esp, breed);
}
