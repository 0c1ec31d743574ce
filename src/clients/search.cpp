#include "clients/search.h"

#include "clients/reference_lists.h"
#include "store/jet/text.h"
#include "store/lookups.h"
#include "store/opening.h"
#include "texts/clients.h"
#include "texts/search.h"
#include "texts/texts.h"

#include <algorithm>

using namespace clients;

namespace
{

constexpr std::string_view BySubregion =
    "Clientes.Loc IN (SELECT ID FROM CLLocalidad WHERE Nom LIKE ?)";

constexpr SearchCriterion Patients[] = {
    {.name = text::Name, .clause = "Mascotas.Nom LIKE ?"},
    {.name = text::Breed,
     .clause = "MLRazas.Nom LIKE ?",
     .shortcut = "Mascotas.Raz IN (SELECT ID FROM MLRazas WHERE Nom LIKE ?)"},
    {.name = text::SearchSpecies,
     .clause = "MLEspecies.Nom LIKE ?",
     .shortcut = "Mascotas.Esp IN (SELECT ID FROM MLEspecies WHERE Nom LIKE ?)"},
    {.name = text::SearchCoat,
     .clause = "MLPelajes.Nom LIKE ?",
     .shortcut = "Mascotas.Pel IN (SELECT ID FROM MLPelajes WHERE Nom LIKE ?)"},
    {.name = text::SearchMarks, .clause = "Mascotas.Car LIKE ?"},
    {.name = text::SearchChip, .clause = "Mascotas.Chip LIKE ?"},
    {.name = text::Owner, .clause = "Clientes.ayn LIKE ?", .owner = true},
    {.name = text::Address, .clause = "Clientes.Dir LIKE ?", .owner = true},
    {.name = text::SearchSubregion,
     .clause = "CLLocalidad.Nom LIKE ?",
     .shortcut = BySubregion,
     .owner = true},
    {.name = text::QuickSearchTelephone, .clause = "Clientes.Tel2 LIKE ?", .owner = true},
    {.name = text::SearchMobile, .clause = "Clientes.TelC2 LIKE ?", .owner = true},
    {.name = text::Notes, .clause = "Mascotas.Obs LIKE ?"},
    {.name = text::Pedigree, .clause = "Mascotas.Ped", .siNo = true},
    {.name = text::SearchBreeding, .clause = "Mascotas.Rep", .siNo = true},
    {.name = text::SearchDeath, .clause = "Mascotas.Dec", .siNo = true},
};

constexpr SearchCriterion Clients[] = {
    {.name = text::Name, .clause = "Clientes.Ayn LIKE ?"},
    {.name = text::Address, .clause = "Clientes.Dir LIKE ?"},
    {.name = text::SearchSubregion, .clause = "CLLocalidad.Nom LIKE ?", .shortcut = BySubregion},
    // On purpose: the table has no such column, and the user sees the store's error.
    {.name = text::Region, .clause = "CLDepartamento.Nombre LIKE ?"},
    {.name = text::SearchPostCode, .clause = "Clientes.codp2 LIKE ?"},
    {.name = text::SearchAreaCode, .clause = "Clientes.Codt2 LIKE ?"},
    {.name = text::QuickSearchTelephone, .clause = "Clientes.Tel2 LIKE ?"},
    {.name = text::SearchMobile, .clause = "Clientes.Telc2 LIKE ?"},
    {.name = text::Email, .clause = "Clientes.Email LIKE ?"},
    {.name = text::SearchMarketing,
     .clause = "CLMarketing.Nom LIKE ?",
     .shortcut = "Clientes.Mark IN (SELECT ID FROM CLMarketing WHERE Nom LIKE ?)"},
    {.name = text::Notes, .clause = "Clientes.Obs LIKE ?"},
};

constexpr int PatientsTitles[] = {text::SearchId,        text::Name,
                                  text::Owner,           text::Breed,
                                  text::SearchSpecies,   text::SearchCoat,
                                  text::SearchMarks,     text::SearchChip,
                                  text::Pedigree,        text::SearchBreeding,
                                  text::SearchDeath,     text::Address,
                                  text::SearchSubregion, text::QuickSearchTelephone,
                                  text::SearchMobile,    text::Notes};
constexpr int ClientsTitles[] = {
    text::SearchId,     text::Name,           text::Address,         text::SearchSubregion,
    text::Region,       text::SearchPostCode, text::SearchAreaCode,  text::QuickSearchTelephone,
    text::SearchMobile, text::Email,          text::SearchMarketing, text::Notes};

// The cells of a row and their tables. Patients are read from their own table, or starting from
// that of the owners when every criterion is about the owner.
constexpr std::string_view PatientsCells =
    "Mascotas.idm, Mascotas.nom, Clientes.ayn, MLRazas.nom, MLEspecies.nom, MLPelajes.nom, "
    "Mascotas.car, Mascotas.Chip, Mascotas.ped, Mascotas.rep, Mascotas.dec, Clientes.dir, "
    "CLLocalidad.nom, Clientes.tel2, Clientes.telc2, Mascotas.obs";
constexpr std::string_view FromPatients = "Mascotas LEFT JOIN Clientes";
constexpr std::string_view FromOwners = "Clientes LEFT JOIN Mascotas";
constexpr std::string_view PatientsLists =
    " ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN "
    "MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = "
    "MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID)";
constexpr std::string_view ClientsCells =
    "Clientes.idc, Clientes.ayn, Clientes.dir, CLLocalidad.nom, CLDepartamento.nom, "
    "Clientes.codp2, Clientes.codt2, Clientes.tel2, Clientes.telc2, Clientes.email, "
    "CLMarketing.nom, Clientes.obs";
constexpr std::string_view FromClients =
    "(((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento "
    "ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = "
    "CLMarketing.ID)";

// The clauses of a search and their values.
struct Filter {
    std::string clauses;
    std::vector<store::Value> values;
    bool owners = true;    // all clauses are about the owner
    bool rejected = false; // a Yes/No criterion has a value other than 1 or 2
};

Filter filterOf(Search search, const Conditions &conditions)
{
    Filter f;
    const auto addUp = [&f](std::string_view clause) {
        f.clauses += f.clauses.empty() ? "" : " AND ";
        f.clauses += clause;
    };
    for (const auto &[which, given] : conditions) {
        const QString text = QuitarApostrofes(given);
        if (text.isEmpty())
            continue;
        const SearchCriterion &criterion = criteriaOf(search)[size_t(which)];
        f.owners = f.owners && criterion.owner;
        addUp(criterion.clause);
        if (criterion.siNo) {
            f.clauses += text == u"1" ? " = -1" : " = 0";
            f.rejected = f.rejected || (text != u"1" && text != u"2");
            continue;
        }
        f.values.emplace_back(u'*' + patternWithStars(text));
        if (!criterion.shortcut.empty()) {
            addUp(criterion.shortcut);
            f.values.push_back(f.values.back());
        }
    }
    return f;
}

// @param limit maximum number of rows, 0 for all
std::string queryOf(Search search, const Filter &filter, size_t limit)
{
    std::string sql = "SELECT ";
    if (limit > 0) // one extra row tells whether there are more
        sql += "TOP " + std::to_string(limit + 1) + ' ';
    if (search == Search::Clientes) {
        sql += ClientsCells;
        sql += " FROM ";
        sql += FromClients;
        sql += " WHERE " + filter.clauses;
    } else {
        sql += PatientsCells;
        sql += " FROM (((((";
        sql += filter.owners ? FromOwners : FromPatients;
        sql += PatientsLists;
        sql += " WHERE " + filter.clauses;
        if (filter.owners)
            sql += " AND Mascotas.idm IS NOT NULL";
    }
    // Sorting would need all rows, so limited searches sort afterwards.
    if (limit == 0)
        sql += search == Search::Clientes ? " ORDER BY Clientes.Ayn"
                                          : " ORDER BY Mascotas.Nom, Clientes.Ayn";
    return sql;
}

void sort(Search search, std::vector<QList<store::Value>> &rows)
{
    const auto compare = [](const QList<store::Value> &a, const QList<store::Value> &b, int cell) {
        return jet::compareText(a[cell].toText().toStdString(), b[cell].toText().toStdString());
    };
    std::ranges::stable_sort(rows, [&](const QList<store::Value> &a, const QList<store::Value> &b) {
        const int name = compare(a, b, 1);
        if (name != 0 || search == Search::Clientes)
            return name < 0;
        return compare(a, b, 2) < 0;
    });
}

Finding findUntil(Sesion &s, Search search, const Conditions &conditions, size_t limit)
{
    Finding h;
    const Filter filter = filterOf(search, conditions);
    if (filter.rejected)
        h.impediment = s(text::YesNoCriterionAlone);
    if (filter.rejected || filter.clauses.empty())
        return h;

    Recordset r = s.clientes->open(queryOf(search, filter, limit), filter.values, false);
    h.more = limit > 0 && size_t(r.RecordCount()) > limit;
    for (; !r.EOF_(); r.MoveNext()) {
        if (limit > 0 && h.rows.size() == limit)
            break;
        QList<store::Value> &cells = h.rows.emplace_back();
        cells.reserve(r.allColumns());
        for (int c = 0; c < r.allColumns(); ++c)
            cells << r[c];
    }
    if (limit > 0)
        sort(search, h.rows);
    h.sought = true;
    return h;
}

} // namespace

std::span<const SearchCriterion> clients::criteriaOf(Search b)
{
    if (b == Search::Patients)
        return Patients;
    return Clients;
}

std::span<const int> clients::titlesOf(Search b)
{
    if (b == Search::Patients)
        return PatientsTitles;
    return ClientsTitles;
}

Finding clients::find(Sesion &s, Search search, const Conditions &conditions)
{
    return findUntil(s, search, conditions, 0);
}

Finding clients::findWhileTyping(Sesion &s, Search search, const Conditions &conditions)
{
    try {
        return findUntil(s, search, conditions, RowsWhileTyping);
    } catch (const store::StoreError &e) {
        Finding h;
        h.impediment = store::errorText(s, e);
        return h;
    }
}

bool clients::takeFound(Sesion &s, Search search, int id)
{
    if (search == Search::Patients) {
        const store::Value idc = s.clientes->read("select idc from mascotas where idm = ?", id);
        if (idc.isNull())
            return false;
        s.IdGlobal = {idc.toInt(), id};
        return true;
    }
    if (s.clientes->read("select idc from clientes where idc = ?", id).isNull())
        return false;
    if (s.IdGlobal.idc != id)
        s.IdGlobal = {
            id, s.clientes->read("select top 1 idm from mascotas where idc = ? order by nom", id)
                    .toInt()};
    return true;
}
