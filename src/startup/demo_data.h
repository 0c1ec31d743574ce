// What the parts of the demonstration clinic share: chance that repeats itself, words, and the
// people, animals and products while they are being made up.
#pragma once

#include "startup/seeds.h"
#include "store/session.h"

#include <QHash>
#include <iterator>
#include <vector>

namespace startup
{

/// Chance that gives the same numbers on every machine and with every library.
class Chance
{
public:
    explicit Chance(quint64 seed) : m_state(seed) {}
    /// A whole number from @p from to @p until, both included.
    int between(int from, int until);
    /// True @p percentage times in a hundred.
    bool isDue(int percentage) { return between(1, 100) <= percentage; }
    template <typename C>
    const auto &pick(const C &list)
    {
        return list[between(0, int(std::size(list)) - 1)];
    }

private:
    quint64 m_state;
};

/// The lists of demo.txt in one language.
class Words
{
public:
    explicit Words(store::Language language);
    const QStringList &operator[](const QString &list) const;
    /// The words of a list with their fields.
    QList<QStringList> fieldsOf(const QString &list) const;

private:
    QHash<QString, QStringList> m_lists;
};

struct DemoClient {
    int idc = 0;
    QString ayn;
    QString dir;
    int loc = 0; // from 1, as localidades has them
    QString tel2;
    QString telc2;
    QString email;
    QDate feci;
    QDate fecu;
    int obra = 0;
    bool deuda = false;
    bool profile[6] = {}; // 1 to 5
};

struct DemoPatient {
    int idm = 0;
    int idc = 0;
    QString nom;
    int esp = 0;
    int raz = 0;
    QDate fecn;
    double pes = 0;
    int sex = 0;
    int ser = 0;
    bool dec = false;
    bool inpatient = false;
    bool boarded = false;
    bool task = false;
    bool setAside = false; // its doses, food or stay show something on the board: leave it alone
    QDate feci;
    QDate fult;
};

struct DemoProduct {
    int ida = 0;
    int idcat = 0;
    Moneda canuni;
    Moneda price;
    Moneda cost;
};

/// The clinic in the making.
struct Demo {
    Sesion &s;
    Base &clientes;
    Base &finanzas;
    Base &morvane;
    Base &os;
    const QDate hoy;
    Words words;
    Chance chance{20240229};

    std::vector<DemoClient> people{};
    std::vector<DemoPatient> animals{};
    std::vector<DemoProduct> articulos{};
    QHash<QString, int> counters{}; // of the settings row, by column

    int nextOne(const QString &counter) { return ++counters[counter]; }
    DemoClient &Client(int idc) { return people[size_t(idc - 1)]; }
    const DemoProduct &product(int ida) const { return articulos[size_t(ida - 1)]; }
};

/// Regions, species, breeds, clients, patients; made up, not yet written.
void inventPeople(Demo &d);
/// Doses, food, consultations, studies, stays and tasks. Marks the patients that they show on the
/// board.
void inventRecords(Demo &d);
/// Products with prices and stock, suppliers, sales, purchases, expenses and their accounts.
void inventCommerce(Demo &d);
/// Plans, members and their payments.
void inventMembers(Demo &d);
/// Writes clients and patients, when nothing more will be changed in them.
void writePeople(Demo &d);

} // namespace startup
