#include "startup/choose_clinic.h"

#include "startup/demo_clinic.h"
#include "startup/new_folder.h"
#include "store/data_folder.h"
#include "store/lookups.h"
#include "store/opening.h"
#include "store/schema.h"
#include "texts/startup.h"

#include <QFileInfo>

using namespace startup;
using namespace Qt::StringLiterals;

namespace
{

enum Choice { OwnClinic = 1, SharedClinic, DemoClinic };

bool holdsClinic(const QString &folder)
{
    return std::ranges::any_of(store::databases(), [&](const QString &base) {
        return QFileInfo::exists(store::pathUnder(folder, store::fileOf(base)));
    });
}

/// Asks for the folder until it holds a clinic. @return false when the user gave up
bool connect(Sesion &s)
{
    QString folder;
    for (;;) {
        const auto typed =
            s.dialogos.PedirTexto(s(text::SharedFolderTitle), s(text::SharedFolderPrompt), folder);
        if (!typed)
            return false;
        folder = typed->trimmed();
        if (folder.isEmpty() || !holdsClinic(folder)) {
            s.dialogos.Mensaje(s(text::NoClinicInFolder) + u' ' + folder);
        } else if (!store::writePath(s.programFolder, folder)) {
            s.dialogos.Mensaje(s(text::FolderCannotBeNoted) + u' ' + s.programFolder);
        } else {
            store::setDataFolder(s, {});
            return true;
        }
    }
}

/// In a session of its own: the one at hand is not open yet.
void makeDemo(const QString &folder, store::Language language)
{
    createFolder(folder, language);
    store::UnattendedDialogs dialogos;
    store::NoPrinting printing;
    Sesion demo(dialogos, printing, language);
    store::setDataFolder(demo, folder);
    if (const auto failure = store::openStore(demo))
        throw store::StoreError(store::ErrorNumber::PathOrDisk, failure->text);
    createDemo(demo);
}

} // namespace

bool startup::knowsNoClinic(const Sesion &s)
{
    return !s.givenFolder && !store::hasPath(s.programFolder) && !holdsClinic(s.dataFolder);
}

bool startup::chooseClinic(Sesion &s)
{
    for (;;) {
        const auto chosen = s.dialogos.Seleccionar(s(text::StartTitle), {s(text::StartChoice)},
                                                   {{s(text::StartOwnClinic), OwnClinic, true},
                                                    {s(text::StartConnect), SharedClinic},
                                                    {s(text::StartDemo), DemoClinic}});
        if (!chosen || chosen->isEmpty())
            return false;
        switch (chosen->front().value) {
        case OwnClinic:
            createFolder(s.dataFolder, s.texts.language());
            return true;
        case SharedClinic:
            if (connect(s))
                return true;
            break; // back to the choice
        default: {
            const QString folder = store::demoFolder(s);
            if (!holdsClinic(folder))
                makeDemo(folder, s.texts.language());
            store::setDataFolder(s, folder);
            return true;
        }
        }
    }
}
