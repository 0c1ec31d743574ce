// The command line.
#pragma once

#include "store/texts.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace app
{

/// The parsed command line.
struct Options {
    enum class Mode { Window, Unattended, Create, Import, Version, Help };
    Mode mode = Mode::Window;
    QString data;   // data folder; "" for the one in ruta.txt
    QString create; // data folder to create
    bool demo = false;
    QString clinic; // of the folder to create: its name, and its first user, whose password is the
    QString user;   // first line of standard input; "" leaves both to the first start
    QString importing;    // file with clients and patients
    bool confirm = false; // write the import rather than only report on it
    QString columns;      // "title=datum,...", overriding what the titles suggest
    QString dates;        // "dma", "mda", or "" to detect the order from the file
    QString owner;        // client for animals whose row names no owner
    std::optional<store::Language> language;
};

/// Parses the arguments after the program's name.
/// @param error set to what is wrong with them, in English
/// @return nullopt when they are invalid
std::optional<Options> readOptions(const QStringList &arguments, QString *error);

/// The output of --help.
QString helpText();

} // namespace app
