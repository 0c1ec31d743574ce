// Importing clients and patients from a file of another program: first a dry run that tells what
// would happen to every line, then the writing.
#pragma once

#include "clients/import_words.h"
#include "store/session.h"

/// A file as it is before anybody has said what its columns hold.
struct VistaDeArchivo {
    QString falla; // why it cannot be read, for the user; "" when it can
    bool utf8 = true;
    QChar separador; // ',', ';' or a tab
    QStringList titulos;
    QList<QStringList> filas; // the first ones
    QList<Dato> columnas;     // what each column seems to hold
};
/// Reads titles and the first rows of a file.
VistaDeArchivo MirarArchivo(Sesion &s, const QString &archivo, int filas);
/// Its characters and separator in words.
QString TextoDeVista(const Sesion &s, const VistaDeArchivo &vista);

/// What the user decides.
struct OpcionesDeImportacion {
    QString archivo;
    QList<Dato> columnas;              // one for each column of the file
    std::optional<OrdenDeFecha> orden; // of days in figures; nullopt to find it in the file
    QString propietario;               // client of animals whose row names no owner
};

/// What becomes of a line of the file.
enum class Suerte {
    Nueva,     // a client, a patient or both are added
    Existente, // all that it tells of is there already, or stands earlier in the file
    Rechazada,
    SinLugar, // the identifiers are used up
};

struct LineaDeInforme {
    int linea = 0; // in the file, the titles being on the first
    Suerte suerte = Suerte::Nueva;
    bool aviso = false; // it was taken, but not all as it stood
    QString cliente;
    QString mascota;
    QString texto; // why, and what was changed
};

/// What an import does or did.
struct InformeDeImportacion {
    /// What is missing before anything can be told.
    enum class Falta { Nada, Archivo, Columnas, Propietario, Orden };
    Falta falta = Falta::Nada;
    QString falla; // the text for it, or for what stopped the writing; "" when all went well

    int clientesNuevos = 0;
    int clientesExistentes = 0;
    int mascotasNuevas = 0;
    int mascotasExistentes = 0;
    int rechazadas = 0; // lines, like the next ones
    int avisos = 0;
    int sinLugar = 0;
    int primeraSinLugar = 0;

    bool escrito = false;      // it was no dry run
    bool interrumpido = false; // by the user or by `falla`; what was `escrito` is told and stays
    QStringList notas;         // what holds for the whole file
    std::vector<LineaDeInforme> lineas;
};

/// Asked now and then, outside of any transaction: false stops the work.
using Seguir = std::function<bool()>;

/// The dry run. Writes nothing.
InformeDeImportacion ProbarImportacion(Sesion &s, const OpcionesDeImportacion &o,
                                       const Seguir &seguir = {});

/// Plans anew, so that what other terminals have added meanwhile counts, and writes. Every few
/// hundred lines are one commit. Doing it again adds nothing.
InformeDeImportacion Importar(Sesion &s, const OpcionesDeImportacion &o, const Seguir &seguir = {});

/// What holds for the whole file and the counts, in words, one line each.
QString ResumenDeImportacion(const Sesion &s, const InformeDeImportacion &informe);
/// How it ended: as a dry run, complete, or stopped and where, or before anything was written.
QString FinalDeImportacion(const Sesion &s, const InformeDeImportacion &informe);
/// "New", "Already there", ...
QString TextoDeSuerte(const Sesion &s, Suerte suerte);

/// Changes what the columns hold by a text such as "Animal's Name=mascota,3=especie,ZIP=nada":
/// title or number of a column, name of a datum.
/// @return what is wrong with it, for the user; "" when nothing is
QString AplicarColumnas(const Sesion &s, const QString &texto, const QStringList &titulos,
                        QList<Dato> &columnas);
