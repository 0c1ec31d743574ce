// The one state that rules share.
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

struct User {
    int idu = 0;
    int ut = 0; // 1 Common, 2 Supervisor
    QString nom;
    bool isCommon() const { return ut == 1; }
};

/// The clinic's own data, as the message templates print them.
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
    bool attended = false;  // rung, or needs not ring any more
    std::optional<int> ida; // known only for alarms loaded at start-up, on purpose
    int task = 0;           // whose it is
};

/// The client and patient that the screens work on.
struct Selection {
    int idc = 0;
    int idm = 0;
};

/// Tells whoever waits how far a long run has come, or for whom. All may be empty.
struct Progress {
    std::function<void(const QString &text)> stage;
    std::function<void(int done, int total)> bar;
    /// Again and again while another terminal holds what is needed. No statement can be run then.
    std::function<void(const QString &text)> waiting;

    void tellStage(const QString &text) const
    {
        if (stage)
            stage(text);
    }
    void tellBar(int done, int total) const
    {
        if (bar)
            bar(done, total);
    }
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

/// What puts documents on paper.
class Printing
{
public:
    virtual ~Printing() = default;
    /// Prints at once. @throws StoreError when the printer does not take it
    virtual void print(Sesion &s, Documento &document) = 0;
    /// Shows it first.
    virtual void show(Sesion &s, Documento &document) = 0;
};

/// Nobody is there to take the paper.
class NoPrinting : public Printing
{
public:
    void print(Sesion &, Documento &) override {}
    void show(Sesion &, Documento &) override {}
};

/// The recordsets that stay open for look-ups. Rows are read when first needed.
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

/// Built once when the program starts and passed by reference. There are no globals beside it.
struct Sesion {
    explicit Sesion(Dialogos &d, store::Printing &i, store::Language language);
    Sesion(const Sesion &) = delete;
    Sesion &operator=(const Sesion &) = delete;

    Dialogos &dialogos;
    store::Printing &impresion;
    store::Texts texts;
    Reloj reloj;
    store::Progress progress;

    QString programFolder; // with a slash at the end, like the next
    QString dataFolder;
    bool givenFolder = false; // on the command line, whatever ruta.txt says
    bool EnRed = false;       // the data lie on another machine's folder
    QChar separatorDecimal = u'.';

    store::User user;
    store::ClinicData clinic;
    store::Selection IdGlobal;
    std::vector<store::Alarm> Alarmas;

    // The engine goes last of what the databases and locks need, and first of all to be built. All
    // databases are open as long as the session is.
    std::unique_ptr<Motor> motor;
    /// Makes the engine for a place when the store is opened.
    std::function<std::unique_ptr<Motor>(const QString &place)> createEngine =
        store::createFileEngine;
    /// This session's presence in the data folder, see ProbarExclusivo.
    std::unique_ptr<store::Lock> presence;
    std::unique_ptr<Base> clientes;
    std::unique_ptr<Base> finanzas;
    std::unique_ptr<Base> morvane;
    std::unique_ptr<Base> os;
    std::unique_ptr<Base> rep97; // scratch tables, of this process alone
    Recordset configuracion;     // the settings row
    store::Lists lists;

    /// Text of the string table.
    QString operator()(int number) const { return texts(number); }
};
