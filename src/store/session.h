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

struct Usuario {
    int idu = 0;
    int ut = 0; // 1 Common, 2 Supervisor
    QString nom;
    bool EsComun() const { return ut == 1; }
};

/// The clinic's own data, as the message templates print them.
struct DatosDeClinica {
    QString nom; // name of the clinic
    QString pro; // owner
    QString dir;
    QString tel;
};

/// One alarm of today's agenda.
struct Alarma {
    QTime hora;
    int tip = 0;
    bool atendida = false;  // rung, or needs not ring any more
    std::optional<int> ida; // known only for alarms loaded at start-up, on purpose
    int tarea = 0;          // whose it is
};

/// The client and patient that the screens work on.
struct Seleccion {
    int idc = 0;
    int idm = 0;
};

/// Tells whoever waits how far a long run has come. Both may be empty.
struct Avance {
    std::function<void(const QString &texto)> etapa;
    std::function<void(int hecho, int total)> barra;

    void Etapa(const QString &texto) const
    {
        if (etapa)
            etapa(texto);
    }
    void Barra(int hecho, int total) const
    {
        if (barra)
            barra(hecho, total);
    }
};

class Documento;

/// What puts documents on paper.
class Impresion
{
public:
    virtual ~Impresion() = default;
    /// Prints at once. @throws ErrorDeAlmacen when the printer does not take it
    virtual void Imprimir(Sesion &s, Documento &documento) = 0;
    /// Shows it first.
    virtual void Mostrar(Sesion &s, Documento &documento) = 0;
};

/// Nobody is there to take the paper.
class SinImpresion : public Impresion
{
public:
    void Imprimir(Sesion &, Documento &) override {}
    void Mostrar(Sesion &, Documento &) override {}
};

/// The recordsets that stay open for look-ups. Rows are read when first needed.
struct Listas {
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

/// Built once when the program starts and passed by reference. There are no globals beside it.
struct Sesion {
    explicit Sesion(Dialogos &d, Impresion &i, Idioma idioma);
    Sesion(const Sesion &) = delete;
    Sesion &operator=(const Sesion &) = delete;

    Dialogos &dialogos;
    Impresion &impresion;
    Textos textos;
    Reloj reloj;
    Avance avance;

    QString carpetaDePrograma; // with a slash at the end, like the next
    QString carpetaDeDatos;
    bool carpetaDada = false; // on the command line, whatever ruta.txt says
    bool EnRed = false;       // the data lie on another machine's folder
    QChar separadorDecimal = u'.';

    Usuario usuario;
    DatosDeClinica clinica;
    Seleccion IdGlobal;
    std::vector<Alarma> Alarmas;

    // The engine goes last of what the databases need, and first of all to be built.
    std::unique_ptr<Motor> motor;
    std::unique_ptr<Base> clientes;
    std::unique_ptr<Base> finanzas;
    std::unique_ptr<Base> morvane;
    std::unique_ptr<Base> auxiliar; // os or rep97, opened by who needs it, closed when done
    Recordset configuracion;        // the settings row
    Listas listas;

    /// Text of the string table.
    QString operator()(int numero) const { return textos(numero); }
};
