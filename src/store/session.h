// The state shared by all rules.
#pragma once

#include "store/batch.h"
#include "store/clock.h"
#include "store/database.h"
#include "store/dialogs.h"
#include "store/engine.h"
#include "store/texts.h"

#include <QString>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

struct Sesion;

namespace store
{

/// The user who is logged in.
struct User {
    int idu = 0;
    int ut = 0; // 1 Common, 2 Supervisor
    QString nom;
    /// Whether the user is not a supervisor.
    bool isCommon() const { return ut == 1; }
};

/// The clinic's own data, as message templates use them.
struct ClinicData {
    QString nom; // name of the clinic
    QString pro; // owner
    QString dir;
    QString tel;
};

/// One alarm of today's agenda.
struct Alarm {
    QTime hour;
    int tip = 0;
    bool attended = false;  // has rung, or need not ring any more
    std::optional<int> ida; // On purpose: known only for alarms loaded at start-up
    int task = 0;           // id of the task it belongs to
};

/// The client and patient that the screens are working on; 0 for none.
struct Selection {
    int idc = 0;
    int idm = 0;
};

/// Reports how far a long operation has come, or what it is waiting for. Any function may be empty.
struct Progress {
    std::function<void(const QString &text)> stage;
    std::function<void(int done, int total)> bar;
    /// Called repeatedly while another terminal holds a lock. It must not run any statement.
    std::function<void(const QString &text)> waiting;

    /// Calls stage, if set.
    void tellStage(const QString &text) const
    {
        if (stage)
            stage(text);
    }
    /// Calls bar, if set.
    void tellBar(int done, int total) const
    {
        if (bar)
            bar(done, total);
    }
    /// Calls waiting, if set.
    void tellWaiting(const QString &text) const
    {
        if (waiting)
            waiting(text);
    }
};

} // namespace store

class Documento;

namespace store
{

/// Prints documents.
class Printing
{
public:
    virtual ~Printing() = default;
    /// Prints at once. @throws StoreError 482 when the printer rejects the document
    virtual void print(Sesion &s, Documento &document) = 0;
    /// Shows a preview first.
    virtual void show(Sesion &s, Documento &document) = 0;
};

/// Prints nothing, for runs without a user.
class NoPrinting : public Printing
{
public:
    void print(Sesion &, Documento &) override {}
    void show(Sesion &, Documento &) override {}
};

/// The recordsets kept open for look-ups. Their rows are read when first needed.
struct Lists {
    Recordset flcategorias;
    Recordset mlrazas;
    Recordset mlespecies;
    Recordset proveedores;
    Recordset artvenc;
    Recordset cllocalidad;
    Recordset cldepartamento;
    Recordset clientes;
    Recordset mascotas;
    Recordset artplan;
};

} // namespace store

/// Created once when the program starts and passed by reference. There are no other globals.
struct Sesion {
    /// A session without folders, user or open databases; see setDataFolder() and openStore().
    /// @param d, i must outlive the session
    explicit Sesion(Dialogos &d, store::Printing &i, store::Language language);
    Sesion(const Sesion &) = delete;
    Sesion &operator=(const Sesion &) = delete;

    Dialogos &dialogos;
    store::Printing &impresion;
    store::Texts texts;
    Reloj reloj;
    store::Progress progress;

    QString programFolder; // both folders end in a slash
    QString dataFolder;
    bool givenFolder = false; // dataFolder was given on the command line, overriding ruta.txt
    bool EnRed = false;       // the data are in another folder than the program's own
    QChar separatorDecimal = u'.';

    store::User user;
    store::ClinicData clinic;
    store::Selection IdGlobal;
    std::vector<store::Alarm> Alarmas;

    // Declared before the lock and the databases, so that it is destroyed after them. All databases
    // stay open for the whole session.
    std::unique_ptr<Motor> motor;
    /// Creates the engine for a place when the store is opened.
    std::function<std::unique_ptr<Motor>(const QString &place)> createEngine =
        store::createFileEngine;
    /// Shared lock that marks this session as present in the data folder, see ProbarExclusivo().
    std::unique_ptr<store::Lock> presence;
    std::unique_ptr<Base> clientes;
    std::unique_ptr<Base> finanzas;
    std::unique_ptr<Base> morvane;
    std::unique_ptr<Base> os;
    std::unique_ptr<Base> rep97; // scratch tables in memory, private to this process
    Recordset configuracion;     // the settings row
    store::Lists lists;

    /// The text with that number in the string table, see Texts.
    QString operator()(int number) const { return texts(number); }
};
