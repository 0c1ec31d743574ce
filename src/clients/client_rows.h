// The rows of the registry's two grids.
#pragma once

#include "store/session.h"

namespace clients
{

/// Why a client is highlighted. Alert: owes money or is behind with prepaid medicine. Notice:
/// letters or mails do not arrive, or the prepaid state is 5.
enum class ClientSign { None, Alert, Notice };

/// One row of the client grid.
struct ClientRow {
    int idc = 0;
    QString ayn;
    QString tel2;
    ClientSign sign = ClientSign::None;
};

/// All clients, sorted by name.
/// @throws StoreError
std::vector<ClientRow> clientsRows(Sesion &s);
/// The row of one client, nullopt when it no longer exists.
/// @throws StoreError
std::optional<ClientRow> clientRow(Sesion &s, int idc);

/// One row of the patient grid.
struct PatientRow {
    int idm = 0;
    QString nom;
    QString species;
    QString breed;
    bool dec = false;
};

/// The patients of a client, sorted by name.
/// @throws StoreError
std::vector<PatientRow> patientsRows(Sesion &s, int idc);

/// The column that the client search box searches.
enum class ClientSearch { Nothing, Name, Id, Telephone };
/// What a typed text searches: the name, unless it reads as a number; then the id if it has fewer
/// than five characters, else the telephone. Nothing for a blank text.
ClientSearch searchType(const QString &text);

/// A patient with its owner.
struct FoundPatient {
    int idm = 0;
    int idc = 0;
    QString patient;
    QString owner;
};
/// Patients of any client whose name begins with the text, sorted by owner. A typed `*` matches
/// anything.
/// @throws StoreError
std::vector<FoundPatient> findPatients(Sesion &s, const QString &text);

} // namespace clients
