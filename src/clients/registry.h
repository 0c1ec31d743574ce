// Reads, checks and writes owners and their animals.
#pragma once

#include "store/session.h"

namespace clients
{

/// A client as the panel shows it. Region and sub-region are names.
struct ClientRecord {
    int idc = 0;
    QString ayn;
    QString dir;
    QString subregion;
    QString codp2; // postal code
    QString region;
    QString codt2; // telephone area code
    QString tel2;  // several are separated by commas
    QString telc2;
    QString email;
    int mark = 0; // CLMarketing.id
    QString obs;
    QDate feci; // day of entry
    QDate fecu; // last visit
    bool deuda = false;
};

/// A patient as the panel shows it. The breed is a name.
struct PatientRecord {
    int idm = 0;
    int idc = 0;
    QString nom;
    int esp = 0;
    QString breed;
    int pel = 0;
    QString car; // distinguishing marks
    QString Chip;
    QDate fecn;
    double pes = 0; // in the clinic's unit
    int sex = 0;    // 0 male, 1 female, 2 castrated male, 3 castrated female
    bool ped = false;
    bool rep = false;
    bool dec = false;
    bool service = false; // `ser` above 0
    QString obs;
    bool fot = false;
};

/// A client by id, nullopt when there is none.
/// @throws StoreError
std::optional<ClientRecord> readClient(Sesion &s, int idc);
/// A patient by id, nullopt when there is none.
/// @throws StoreError
std::optional<PatientRecord> readPatient(Sesion &s, int idm);

/// The box that a message is about.
enum class Field { None, Name, Region, Subregion, Birth, Client };

/// Why something was not written. The user has been told; the form moves the focus to the box.
struct Rejection {
    Field field = Field::None;
};

/// The id that the next new client will get, to be shown while it is entered.
int nextClient(Sesion &s);
/// The id that the next new patient will get.
int nextPatient(Sesion &s);

/// Inserts a client under a new id, along with its row of events; no other function does. Nothing
/// is checked, texts that are too long are cut, and the day of entry is today.
/// @param dep id of the region @param loc id of the sub-region
/// @return the new id
/// @throws StoreError 6 when the ids are used up
int insertClient(Sesion &s, const ClientRecord &f, int dep, int loc);
/// The same for a patient of the client `f.idc`.
/// @param breed id of the breed
int insertPatient(Sesion &s, const PatientRecord &f, int breed);

/// The result of adding an entry.
struct Addition {
    int id = 0;                         // the new id; 0 when nothing was written
    std::optional<Rejection> rejection; // a check failed; the entry stays open
    int existing = 0; // client with the same telephone that the user chose instead
};

/// Checks a client, asks if its telephone is already known, and writes it with its row of events,
/// region and sub-region. Entry and last visit are set to today.
/// @throws StoreError; nothing has been written then
Addition addClient(Sesion &s, const ClientRecord &record);
/// Checks and writes the changes to a client.
/// @return why they were refused, if they were
/// @throws StoreError; nothing has been written then
std::optional<Rejection> modifyClient(Sesion &s, const ClientRecord &record);

/// Checks and writes a patient of the client `record.idc`, along with its breed.
/// @param validBirth whether the birth date as typed is empty or a date, namely `record.fecn`
/// @throws StoreError; nothing has been written then
Addition addPatient(Sesion &s, const PatientRecord &record, bool validBirth);
/// Checks and writes the changes to a patient. On purpose: only "Canino", "Felino" and "Equino"
/// change the species here; any other name leaves it as it was.
/// @param species the name in the species box
/// @return why the changes were refused, if they were
/// @throws StoreError; nothing has been written then
std::optional<Rejection> modifyPatient(Sesion &s, const PatientRecord &record,
                                       const QString &species, bool validBirth);

} // namespace clients
