// What the parts of the demonstration clinic share: chance that repeats itself, words, and the
// people, animals and products while they are being made up.
#pragma once

#include "startup/seeds.h"
#include "store/session.h"

#include <QHash>
#include <iterator>
#include <vector>

/// Chance that gives the same numbers on every machine and with every library.
class Azar
{
public:
    explicit Azar(quint64 semilla) : m_estado(semilla) {}
    /// A whole number from @p desde to @p hasta, both included.
    int Entre(int desde, int hasta);
    /// True @p porcentaje times in a hundred.
    bool Sale(int porcentaje) { return Entre(1, 100) <= porcentaje; }
    template <typename C>
    const auto &De(const C &lista)
    {
        return lista[Entre(0, int(std::size(lista)) - 1)];
    }

private:
    quint64 m_estado;
};

/// The lists of demo.txt in one language.
class Palabras
{
public:
    explicit Palabras(Idioma idioma);
    const QStringList &operator[](const QString &lista) const;
    /// The words of a list with their fields.
    QList<QStringList> Campos(const QString &lista) const;

private:
    QHash<QString, QStringList> m_listas;
};

struct ClienteDemo {
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
    bool perfil[6] = {}; // 1 to 5
};

struct MascotaDemo {
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
    bool internada = false;
    bool hospedada = false;
    bool tarea = false;
    bool apartada = false; // its doses, food or stay show something on the board: leave it alone
    QDate feci;
    QDate fult;
};

struct ArticuloDemo {
    int ida = 0;
    int idcat = 0;
    Moneda canuni;
    Moneda precio;
    Moneda costo;
};

/// The clinic in the making.
struct Demo {
    Sesion &s;
    Base &clientes;
    Base &finanzas;
    Base &morvane;
    Base &os;
    const QDate hoy;
    Palabras palabras;
    Azar azar{20240229};

    std::vector<ClienteDemo> gente{};
    std::vector<MascotaDemo> animales{};
    std::vector<ArticuloDemo> articulos{};
    QHash<QString, int> contadores{}; // of the settings row, by column

    int Siguiente(const QString &contador) { return ++contadores[contador]; }
    ClienteDemo &Cliente(int idc) { return gente[size_t(idc - 1)]; }
    const ArticuloDemo &Articulo(int ida) const { return articulos[size_t(ida - 1)]; }
};

/// Regions, species, breeds, clients, patients; made up, not yet written.
void InventarGente(Demo &d);
/// Doses, food, consultations, studies, stays and tasks. Marks the patients that they show on the
/// board.
void InventarFichas(Demo &d);
/// Products with prices and stock, suppliers, sales, purchases, expenses and their accounts.
void InventarComercio(Demo &d);
/// Plans, members and their payments.
void InventarSocios(Demo &d);
/// Writes clients and patients, when nothing more will be changed in them.
void EscribirGente(Demo &d);
