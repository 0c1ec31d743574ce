// Owners and their animals: reading, checking and writing one of each.
#pragma once

#include "store/session.h"

namespace clients
{

/// A client as the panel shows and takes it. Region, sub-region and marketing source by name.
struct ClientRecord {
    int idc = 0;
    QString ayn;
    QString dir;
    QString subregion;
    QString codp2; // postal code
    QString region;
    QString codt2; // telephone area code
    QString tel2;  // commas part several
    QString telc2;
    QString email;
    int mark = 0; // CLMarketing.id
    QString obs;
    QDate feci; // day of entry
    QDate fecu; // last visit
    bool deuda = false;
};

/// A patient as the panel shows and takes it. Breed by name.
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

std::optional<ClientRecord> readClient(Sesion &s, int idc);
std::optional<PatientRecord> readPatient(Sesion &s, int idm);

/// Which box a message is about.
enum class Field { None, Name, Region, Subregion, Birth, Client };

/// Why something was not written: the message was shown; the form puts the focus on the box.
struct Rejection {
    Field field = Field::None;
};

/// The id that the next client or patient would get, for the id box of a new one.
int nextClient(Sesion &s);
int nextPatient(Sesion &s);

/// Inserts a client under a new id, with its row of events: the only one who does. Nothing is
/// checked, texts that are too long are cut; the day of entry is today.
/// @param dep id of the region @param loc id of the sub-region
/// @throws StoreError 6 when the ids are used up
int insertClient(Sesion &s, const ClientRecord &f, int dep, int loc);
/// The same for a patient of the client `f.idc`. @param breed its id
int insertPatient(Sesion &s, const PatientRecord &f, int breed);

/// What became of a new entry.
struct Addition {
    int id = 0;                         // the new id; 0 when nothing was written
    std::optional<Rejection> rejection; // a check failed, the entry stays open
    int existing = 0; // the user dropped the entry for this client with the same telephone
};

/// Checks, asks about a telephone that is there already, and writes a client with its row of
/// events, region and sub-region. Days of entry and last visit are today.
/// @throws StoreError; nothing is written then
Addition addClient(Sesion &s, const ClientRecord &record);
/// Checks and writes the changes of a client. @return what was refused
std::optional<Rejection> modifyClient(Sesion &s, const ClientRecord &record);

/// Checks and writes a patient of the client `ficha.idc`, with its breed.
/// @param validBirth the birth date as typed is the empty mask or a day, `ficha.fecn`
/// @throws StoreError; nothing is written then
Addition addPatient(Sesion &s, const PatientRecord &record, bool validBirth);
/// As it is kept on purpose: only "Canino", "Felino" and "Equino" change a patient's species here,
/// for any other name it stays as it was. @param species the name in the species box
std::optional<Rejection> modifyPatient(Sesion &s, const PatientRecord &record,
                                       const QString &species, bool validBirth);

} // namespace clients
