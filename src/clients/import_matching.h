// Telling whether a client in a file is one that is known already.
#pragma once

#include "clients/registry.h"

#include <QHash>
#include <set>

/// What a client is known by: the name, and each telephone, address for mail and street address.
/// Letter case, blanks and the signs in telephones do not count.
struct SenasDeCliente {
    QString nombre;
    QStringList senas; // a letter for the kind in front of each
    int clases = 0;    // a bit for each kind that is there
};
SenasDeCliente SenasDe(const FichaDeCliente &ficha);

/// Clients by what they are known by. Every look-up is a few hash look-ups, however many clients
/// bear the same name.
class DirectorioDeClientes
{
public:
    void Agregar(int quien, const SenasDeCliente &c);
    void Quitar(int quien, const SenasDeCliente &c);

    /// The first who has the name and a telephone, mail or street address in common; -1 for nobody.
    int ConSenaComun(const SenasDeCliente &c) const;
    /// The first who has the name and whom nothing tells apart: no kind is known on both sides.
    int Indistinto(const SenasDeCliente &c) const;

private:
    QHash<QString, std::set<int>> m_porSena;
    QHash<QString, std::set<int>> m_porClases;
};
