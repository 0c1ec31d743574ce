#include "admin/network_path.h"

#include "store/data_folder.h"
#include "store/schema.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace
{

enum Texto {
    RutaDelServidor = 2687,
    Reinicie = 2732,
    AccionCritica = 2763,
    SinBases = 5058,
    NoSePudoGuardar = 9622,
};

} // namespace

bool ConectarTerminal(Sesion &s)
{
    if (!s.dialogos.Pregunta(s(AccionCritica)))
        return false;
    const QString dada =
        s.dialogos.PedirTexto(s(RutaDelServidor), s(RutaDelServidor)).value_or(QString()).trimmed();
    if (dada.isEmpty())
        return false;
    // Whole, because the next start may come from another folder.
    const QString carpeta = QDir(QDir::fromNativeSeparators(dada)).absolutePath();
    if (!QFileInfo(RutaBajo(carpeta, ArchivoDe(u"morvane"_s))).isFile()) {
        s.dialogos.Mensaje(s(SinBases));
        return false;
    }
    if (!EscribirRuta(s.carpetaDePrograma, carpeta)) {
        s.dialogos.Mensaje(s(NoSePudoGuardar) + u'\n' + s.carpetaDePrograma);
        return false;
    }
    s.dialogos.Mensaje(s(Reinicie));
    return true;
}
