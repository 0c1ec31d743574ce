// The rows of the registry's two grids.
#pragma once

#include "store/session.h"

namespace clients
{

/// Why a client stands out: it owes or is in arrears with prepaid medicine (red); letters or mails
/// do not reach it, or its prepaid state is 5 (yellow).
enum class ClientSign { None, Alert, Notice };

struct ClientRow {
    int idc = 0;
    QString ayn;
    QString tel2;
    ClientSign sign = ClientSign::None;
};

/// All clients by name.
std::vector<ClientRow> clientsRows(Sesion &s);
/// One of them, nullopt when it is gone.
std::optional<ClientRow> clientRow(Sesion &s, int idc);

struct PatientRow {
    int idm = 0;
    QString nom;
    QString species;
    QString breed;
    bool dec = false;
};

/// The patients of a client by name.
std::vector<PatientRow> patientsRows(Sesion &s, int idc);

/// Which column the text of the client search box is looked for in.
enum class ClientSearch { Nothing, Name, Id, Telephone };
/// Text without digits alone: the name; a number of fewer than five characters: the id; else the
/// telephone.
ClientSearch searchType(const QString &text);

/// Patients of any client whose name begins with the text, with their owners, by owner. A typed
/// `*` stands for anything.
struct FoundPatient {
    int idm = 0;
    int idc = 0;
    QString patient;
    QString owner;
};
std::vector<FoundPatient> findPatients(Sesion &s, const QString &text);

} // namespace clients
