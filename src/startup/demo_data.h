// What the parts of the demonstration clinic share: repeatable random numbers, words, and the
// people, animals and products while they are being made up.
#pragma once

#include "startup/seeds.h"
#include "store/session.h"

#include <QHash>
#include <iterator>
#include <vector>

namespace startup
{

/// Random numbers that are the same on every machine and with every standard library.
class Chance
{
public:
    /// The same seed always gives the same numbers.
    explicit Chance(quint64 seed) : m_state(seed) {}
    /// A whole number from @p from to @p until, both included.
    int between(int from, int until);
    /// True @p percentage times in a hundred.
    bool isDue(int percentage) { return between(1, 100) <= percentage; }
    /// One of the elements of @p list, which must not be empty.
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
    /// Reads the lists. @throws std::runtime_error when the file is not built in
    explicit Words(store::Language language);
    /// The words of a list. @throws std::runtime_error when there is no such list
    const QStringList &operator[](const QString &list) const;
    /// The words of a list, each split into its fields.
    QList<QStringList> fieldsOf(const QString &list) const;

private:
    QHash<QString, QStringList> m_lists;
};

struct DemoClient {
    int idc = 0;
    QString ayn;
    QString dir;
    int loc = 0; // from 1, in the order of the list `localidades`
    QString tel2;
    QString telc2;
    QString email;
    QDate feci;
    QDate fecu;
    int obra = 0;
    bool deuda = false;
    bool profile[6] = {}; // 1 to 5; 0 is unused
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
    bool setAside = false; // something on the board depends on it: leave it alone
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

/// The clinic while it is being made up.
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

    /// The next number of a counter, from 1.
    int nextOne(const QString &counter) { return ++counters[counter]; }
    /// The client with this number, which must exist.
    DemoClient &Client(int idc) { return people[size_t(idc - 1)]; }
    /// The product with this number, which must exist.
    const DemoProduct &product(int ida) const { return articulos[size_t(ida - 1)]; }
};

/// Makes up regions, species, breeds, clients and patients. Clients and patients are not written
/// yet.
void inventPeople(Demo &d);
/// Writes doses, food, consultations, studies, stays and tasks, and marks the patients that they
/// bring onto the board.
void inventRecords(Demo &d);
/// Writes products with prices and stock, suppliers, sales, purchases, expenses and their accounts.
void inventCommerce(Demo &d);
/// Writes prepaid plans, their members and the payments.
void inventMembers(Demo &d);
/// Writes clients and patients, once nothing changes in them any more.
void writePeople(Demo &d);

} // namespace startup
