#include "admin/list_maintenance.h"

#include "columns/configuracion.h"
#include "store/identifiers.h"
#include "store/lookups.h"
#include "texts/admin.h"
#include "texts/texts.h"

#include <algorithm>
#include <string>

using namespace admin;
using namespace Qt::StringLiterals;
using namespace std::string_literals;

namespace
{

// How a list is maintained. Without `uso` any entry can be deleted.
struct Data {
    clients::List list;
    int asksName; // text of the prompt
    int title;
    const char *uso; // must return no row before an entry is deleted
    bool useByName;
};

constexpr Data All[] = {
    {clients::List::Region, text::NameOfRegion, text::Regions, nullptr, false},
    {clients::List::Subregion, text::NameOfSubregion, text::Subregions,
     "SELECT TOP 1 CLLocalidad.ID FROM Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = "
     "CLLocalidad.ID WHERE CLLocalidad.ID = ?",
     false},
    {clients::List::Marketing, text::HowClientHeard, text::MarketingList, nullptr, false},
    {clients::List::Species, text::NameOfSpecies, text::SpeciesList,
     "SELECT TOP 1 MLRazas.Id FROM MLRazas LEFT JOIN MLEspecies ON MLRazas.Esp = MLEspecies.ID "
     "WHERE MLEspecies.Nom LIKE ?",
     true},
    {clients::List::Breed, text::NameOfBreed, text::Breeds,
     "SELECT TOP 1 Mascotas.Idm FROM Mascotas LEFT JOIN MLRazas ON Mascotas.raz = MLRazas.Id "
     "WHERE MLRazas.Nom LIKE ?",
     true},
    {clients::List::Coat, text::NameOfCoat, text::Coats,
     "SELECT TOP 1 Mascotas.Idm FROM Mascotas LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.Id "
     "WHERE MLPelajes.Nom LIKE ?",
     true},
};

std::string tableOf(const Data &d) { return std::string(clients::tableOf(d.list).table); }

const Data &pick(clients::List list) { return *std::ranges::find(All, list, &Data::list); }

// A LIKE pattern for exactly this name: that of its beginning without the star.
QString exactPattern(const QString &nom) { return clients::prefixPattern(nom).chopped(1); }

// Asks until the answer is usable or the user cancels. The box keeps what was typed.
std::optional<QString> ask(Sesion &s, const Data &d, int text, QString initial,
                           std::string_view column,
                           const std::function<int(const QString &)> &missing)
{
    const int width = s.clientes->widthOf(tableOf(d), column);
    for (;;) {
        const auto written = s.dialogos.PedirTexto(s(d.title), s(text), initial);
        if (!written)
            return std::nullopt;
        initial = written->trimmed();
        if (initial.contains(u'\''))
            s.dialogos.Mensaje(s(text::ApostropheRefused));
        else if (width > 0 && initial.size() > width)
            s.dialogos.Mensaje(s(text::TextTooLong) + u' ' + QString::number(width));
        else if (const int what = missing(initial))
            s.dialogos.Mensaje(s(what));
        else
            return initial;
    }
}

// nullopt for an empty name too, which counts as cancelling.
std::optional<QString> askName(Sesion &s, const Data &d, const clients::Entry &current = {})
{
    const auto missing = [&](const QString &nom) -> int {
        if (clients::withoutLetters(nom) && d.list == clients::List::Subregion)
            return text::SubregionIsNumber;
        if (clients::withoutLetters(nom) && d.list == clients::List::Region)
            return text::InvalidValue;
        const auto other = clients::entryByName(s, d.list, nom);
        return !nom.isEmpty() && other && other->id != current.id ? text::NameAlreadyListed : 0;
    };
    auto nom = ask(s, d, d.asksName, current.nom, "nom", missing);
    return nom && nom->isEmpty() ? std::nullopt : nom;
}

std::optional<QString> askCode(Sesion &s, const Data &d, const clients::Entry &current = {})
{
    const bool region = d.list == clients::List::Region;
    return ask(s, d, region ? text::SubregionAreaCode : text::SubregionPostalCode, current.code,
               region ? "ctel" : "cp", [](const QString &) { return 0; });
}

// Asks for a region or species by name, which may be abbreviated with `*`. Ends with a message if
// there is none.
std::optional<int> askParent(Sesion &s, const Data &d, const clients::Entry &current = {})
{
    const bool region = d.list == clients::List::Subregion;
    const QString initial = parentName(s, d.list, current);
    const auto nom = s.dialogos.PedirTexto(
        s(d.title), s(region ? text::AskRegionName : text::AskSpeciesOfBreed), initial);
    if (!nom)
        return std::nullopt;
    const QString clean = nom->trimmed();
    if (current.id != 0 && clean == initial)
        return current.parent;
    // An exact match first, since the name itself may contain wildcards.
    if (const auto equal =
            clients::entryByName(s, region ? clients::List::Region : clients::List::Species, clean);
        equal && !clean.isEmpty())
        return equal->id;
    const int id = clean.isEmpty()
                       ? 0
                       : BuscarIdPorTexto(s, "clientes", region ? "CLDepartamento" : "MLEspecies",
                                          "Nom", clean, "id");
    if (id == 0) {
        s.dialogos.Mensaje(s(region ? text::NoSuchRegion : text::NoSuchSpecies));
        return std::nullopt;
    }
    return id;
}

} // namespace

QString admin::parentName(Sesion &s, clients::List list, const clients::Entry &entry)
{
    if (list == clients::List::Subregion)
        return LeerCampo(s, "clientes", "cldepartamento", entry.parent, "nom");
    if (list == clients::List::Breed)
        return LeerCampo(s, "clientes", "mlespecies", entry.parent, "nom");
    return {};
}

std::optional<int> admin::addEntry(Sesion &s, clients::List list)
{
    const Data &d = pick(list);
    clients::Entry e;
    const auto nom = askName(s, d);
    if (!nom)
        return std::nullopt;
    e.nom = *nom;
    if (list == clients::List::Region || list == clients::List::Subregion) {
        const auto code = askCode(s, d);
        if (!code)
            return std::nullopt;
        e.code = *code;
    }
    if (list == clients::List::Subregion || list == clients::List::Breed) {
        const auto parent = askParent(s, d);
        if (!parent)
            return std::nullopt;
        e.parent = *parent;
    }
    Lote lote(s);
    e.id = clients::addEntry(s, list, e);
    lote.commit();
    return e.id;
}

bool admin::modifyEntry(Sesion &s, clients::List list, int id)
{
    const Data &d = pick(list);
    const auto current = clients::entryById(s, list, id);
    if (!current)
        return false;
    const auto nom = askName(s, d, *current);
    if (!nom)
        return false;
    if (list == clients::List::Region) {
        const auto ctel = askCode(s, d, *current);
        if (!ctel)
            return false;
        // On purpose: the code is treated as a number here, so that one with a letter fails in the
        // store.
        if (std::ranges::any_of(*ctel, [](QChar c) { return c.isLetter(); }))
            throw store::StoreError(store::ErrorNumber::Parameters, s(text::InvalidValue));
        s.clientes->Execute("update cldepartamento set nom = ?, ctel = ? where id = ?", *nom, *ctel,
                            id);
    } else if (list == clients::List::Subregion) {
        const auto cp = askCode(s, d, *current);
        if (!cp)
            return false;
        const auto dep = askParent(s, d, *current);
        if (!dep)
            return false;
        s.clientes->Execute("update cllocalidad set nom = ?, cp = ?, dep = ? where id = ?", *nom,
                            *cp, *dep, id);
    } else {
        s.clientes->Execute("update " + tableOf(d) + " set nom = ? where id = ?", *nom, id);
    }
    return true;
}

bool admin::deleteEntry(Sesion &s, clients::List list, int id)
{
    const Data &d = pick(list);
    const auto current = clients::entryById(s, list, id);
    if (list == clients::List::Region || !current)
        return false;
    if (d.uso) {
        const store::Value which =
            d.useByName ? store::Value(exactPattern(current->nom)) : store::Value(id);
        if (!s.clientes->OpenSnapshot(d.uso, which).EOF_()) {
            s.dialogos.Mensaje(s(text::InUse));
            return false;
        }
    }
    if (!s.dialogos.askBeforeLoss(s(text::DeleteQuestion) + u"\n\n"_s + current->nom))
        return false;
    s.clientes->Execute("delete * from " + tableOf(d) + " where id = ?", id);
    return true;
}
