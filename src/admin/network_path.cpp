#include "admin/network_path.h"

#include "store/data_folder.h"
#include "store/schema.h"
#include "texts/admin.h"
#include "texts/texts.h"

#include <QDir>
#include <QFileInfo>

using namespace admin;
using namespace Qt::StringLiterals;

namespace
{

} // namespace

bool admin::connectTerminal(Sesion &s)
{
    if (!s.dialogos.Pregunta(s(text::CriticalAction)))
        return false;
    const QString given = s.dialogos.PedirTexto(s(text::ServerPath), s(text::ServerPath))
                              .value_or(QString())
                              .trimmed();
    if (given.isEmpty())
        return false;
    // Absolute, because the next start may have another working directory.
    const QString folder = QDir(QDir::fromNativeSeparators(given)).absolutePath();
    if (!QFileInfo(store::pathUnder(folder, store::fileOf(u"morvane"_s))).isFile()) {
        s.dialogos.Mensaje(s(text::NoDatabasesInPath));
        return false;
    }
    if (!store::writePath(s.programFolder, folder)) {
        s.dialogos.Mensaje(s(text::PathNotStored) + u'\n' + s.programFolder);
        return false;
    }
    s.dialogos.Mensaje(s(text::RestartKelvara));
    return true;
}
