#include "clients/quick_search.h"

#include "store/jet/text.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

using namespace clients;

namespace
{

// Where a word was found.
enum Degree : quint8 { Begins, Contains, Nothing };

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return c < 0 || isDigit(c) || (c >= 'a' && c <= 'z'); }

// The digits alone; numbers separated by ',', ';' or '/' are separated by one blank each.
std::string digitsOf(std::string_view text)
{
    std::string digits;
    for (const char c : text) {
        if (isDigit(c))
            digits += c;
        else if ((c == ',' || c == ';' || c == '/') && !digits.empty() && digits.back() != ' ')
            digits += ' ';
    }
    return digits;
}

// One word of the search text.
struct Word {
    std::string letters;
    std::string digits; // empty if it is no number
    int id = 0;         // 0 if it is no id
};

std::vector<Word> wordsOf(const QString &text)
{
    std::vector<Word> words;
    const QStringList parts = text.split(u' ', Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        Word p;
        p.letters = jet::plainOf(part.toStdString());
        // Telephones as people write them: 099-123, (02) 4812.
        if (p.letters.find_first_not_of("0123456789-.()+/") == std::string::npos)
            for (const char c : p.letters)
                if (isDigit(c))
                    p.digits += c;
        if (p.digits.size() == p.letters.size() && p.digits.size() < 5)
            p.id = part.toInt();
        if (!p.letters.empty())
            words.push_back(std::move(p));
    }
    return words;
}

// Whether the text has the word at the beginning of one of its words, inside one, or not at all.
Degree degreeIn(std::string_view text, std::string_view sought)
{
    Degree degree = Nothing;
    for (size_t i = text.find(sought); i != text.npos; i = text.find(sought, i + 1)) {
        if (i == 0 || !isLetter(text[i - 1]))
            return Begins;
        degree = Contains;
    }
    return degree;
}

Degree digitsDegree(std::string_view text, const Word &p)
{
    return p.digits.empty() ? Nothing : degreeIn(text, p.digits);
}

// An owner's part of a match; id 0 if it no longer exists.
FoundQuick Owner(Sesion &s, int idc)
{
    FoundQuick h;
    const Recordset c =
        s.clientes->OpenSnapshot("select ayn, tel2, telc2 from clientes where idc = ?", idc);
    if (c.EOF_())
        return h;
    h.idc = idc;
    h.owner = c[0].toText();
    h.telephones = c[1].toText();
    if (const QString mobile = c[2].toText(); !mobile.isEmpty())
        h.telephones += (h.telephones.isEmpty() ? QString() : QStringLiteral(" / ")) + mobile;
    return h;
}

} // namespace

struct QuickIndex::Hit {
    int degree = 0; // words found only inside others
    const Client *client = nullptr;
    const Patient *patient = nullptr; // nullptr for an owner without animals

    bool Dec() const { return patient && patient->dec; }
};

QuickIndex::Piece QuickIndex::save(const std::string &text)
{
    const auto length = std::min<size_t>(text.size(), std::numeric_limits<quint16>::max());
    const Piece t{quint32(m_text.size()), quint16(length)};
    m_text.append(text, 0, length);
    return t;
}

void QuickIndex::bringUpToDate(Sesion &s)
{
    const qint64 version = s.clientes->version("clientes") + s.clientes->version("mascotas");
    if (version == m_version)
        return;
    m_version = -1;
    m_text.clear();
    m_clients.clear();
    m_patients.clear();

    const auto text = [](const Recordset &r, int column) {
        return r[column].toText().toStdString();
    };
    std::unordered_map<int, quint32> places;
    Recordset r = s.clientes->OpenSnapshot("select idc, ayn, tel2, telc2 from clientes");
    m_clients.reserve(size_t(r.RecordCount()));
    for (; !r.EOF_(); r.MoveNext()) {
        Client &c = m_clients.emplace_back();
        c.idc = r[0].toInt();
        c.name = save(jet::plainOf(text(r, 1)));
        c.telephones = save(digitsOf(text(r, 2) + ',' + text(r, 3)));
        places.emplace(c.idc, quint32(m_clients.size() - 1));
    }

    std::vector<std::pair<quint32, Patient>> mascotas; // with the index of the owner
    r = s.clientes->OpenSnapshot("select idm, idc, nom, chip, dec from mascotas");
    mascotas.reserve(size_t(r.RecordCount()));
    for (; !r.EOF_(); r.MoveNext()) {
        const auto place = places.find(r[1].toInt());
        if (place == places.end())
            continue; // no owner to open
        Patient m;
        m.idm = r[0].toInt();
        m.name = save(jet::plainOf(text(r, 2)));
        m.chip = save(jet::plainOf(text(r, 3)));
        m.dec = r[4].toBool();
        mascotas.emplace_back(place->second, m);
    }
    std::ranges::stable_sort(mascotas, {}, &std::pair<quint32, Patient>::first);
    m_patients.reserve(mascotas.size());
    for (const auto &[place, patient] : mascotas) {
        Client &c = m_clients[place];
        if (c.end == 0)
            c.first = quint32(m_patients.size());
        m_patients.push_back(patient);
        c.end = quint32(m_patients.size());
    }
    m_text.shrink_to_fit();
    m_version = version;
}

std::vector<QuickIndex::Hit> QuickIndex::findHits(const QString &typed) const
{
    const std::vector<Word> words = wordsOf(typed);
    std::vector<Hit> hits;
    if (words.empty())
        return hits;
    std::vector<Degree> owner(words.size());
    const auto test = [&](const Client &c, const Patient *m) {
        int degree = 0;
        for (size_t i = 0; i < words.size(); ++i) {
            const Word &p = words[i];
            Degree g = owner[i];
            if (m && g != Begins) {
                if (p.id == m->idm && p.id > 0)
                    g = Begins;
                else
                    g = std::min({g, degreeIn(text(m->name), p.letters),
                                  degreeIn(text(m->chip), p.letters),
                                  digitsDegree(text(m->chip), p)});
            }
            if (g == Nothing)
                return;
            degree += g;
        }
        hits.push_back({degree, &c, m});
    };
    for (const Client &c : m_clients) {
        for (size_t i = 0; i < words.size(); ++i) {
            const Word &p = words[i];
            owner[i] = p.id == c.idc && p.id > 0 ? Begins
                                                 : std::min(degreeIn(text(c.name), p.letters),
                                                            digitsDegree(text(c.telephones), p));
        }
        for (quint32 m = c.first; m < c.end; ++m)
            test(c, &m_patients[m]);
        if (c.first == c.end)
            test(c, nullptr);
    }
    return hits;
}

QuickAnswer QuickIndex::find(Sesion &s, const QString &typed, int count) const
{
    std::vector<Hit> hits = findHits(typed);
    QuickAnswer answer;
    answer.total = int(hits.size());
    const auto before = [this](const Hit &a, const Hit &b) {
        if (a.degree != b.degree)
            return a.degree < b.degree;
        if (a.Dec() != b.Dec())
            return b.Dec();
        if (a.client != b.client) {
            const int names = text(a.client->name).compare(text(b.client->name));
            return names != 0 ? names < 0 : a.client->idc < b.client->idc;
        }
        // Both have an animal, since an owner without one occurs only once.
        const int names = text(a.patient->name).compare(text(b.patient->name));
        return names != 0 ? names < 0 : a.patient->idm < b.patient->idm;
    };
    const auto end = hits.begin() + std::min<ptrdiff_t>(count, answer.total);
    std::partial_sort(hits.begin(), end, hits.end(), before);

    // Group the animals by owner, owners in the order of their best match.
    std::unordered_map<const Client *, int> order;
    for (auto a = hits.begin(); a != end; ++a)
        order.emplace(a->client, int(order.size()));
    std::stable_sort(hits.begin(), end, [&order](const Hit &a, const Hit &b) {
        return order.at(a.client) < order.at(b.client);
    });

    const Client *loaded = nullptr;
    FoundQuick owner;
    for (auto a = hits.begin(); a != end; ++a) {
        if (a->client != loaded)
            owner = Owner(s, a->client->idc);
        loaded = a->client;
        if (owner.idc == 0)
            continue; // deleted since the index was built
        FoundQuick &h = answer.rows.emplace_back(owner);
        if (a->patient) {
            h.idm = a->patient->idm;
            h.patient = s.clientes->read("select nom from mascotas where idm = ?", h.idm).toText();
            h.dec = a->patient->dec;
        }
    }
    return answer;
}

size_t QuickIndex::bytes() const
{
    return m_text.capacity() + m_clients.capacity() * sizeof(Client)
           + m_patients.capacity() * sizeof(Patient);
}
