// The command line.
#pragma once

#include "store/texts.h"

#include <QString>
#include <QStringList>
#include <optional>

struct Opciones {
    enum class Modo { Ventana, Desatendido, Crear, Importar, Version, Ayuda };
    Modo modo = Modo::Ventana;
    QString datos; // data folder, whatever ruta.txt says; "" for ruta.txt
    QString crear; // folder to make
    bool demo = false;
    QString importar;       // file of clients and patients
    bool confirmar = false; // write it, rather than tell what would be written
    QString columnas;       // "title=datum,..." over what the titles say
    QString fechas;         // "dma", "mda", or "" to find it in the file
    QString propietario;    // client of animals whose row names no owner
    std::optional<Idioma> idioma;
};

/// Reads the arguments behind the program's name.
/// @param error what is wrong with them, in English, for the terminal
std::optional<Opciones> LeerOpciones(const QStringList &argumentos, QString *error);

/// What --help prints.
QString TextoDeAyuda();
