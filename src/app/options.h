// The command line.
#pragma once

#include "store/texts.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace app
{

struct Options {
    enum class Mode { Window, Unattended, Create, Import, Version, Help };
    Mode mode = Mode::Window;
    QString data;   // data folder, whatever ruta.txt says; "" for ruta.txt
    QString create; // folder to make
    bool demo = false;
    QString importing;    // file of clients and patients
    bool confirm = false; // write it, rather than tell what would be written
    QString columns;      // "title=datum,..." over what the titles say
    QString dates;        // "dma", "mda", or "" to find it in the file
    QString owner;        // client of animals whose row names no owner
    std::optional<store::Language> language;
};

/// Reads the arguments behind the program's name.
/// @param error what is wrong with them, in English, for the terminal
std::optional<Options> readOptions(const QStringList &arguments, QString *error);

/// What --help prints.
QString helpText();

} // namespace app
