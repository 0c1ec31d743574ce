#include "app/options.h"

std::optional<Opciones> LeerOpciones(const QStringList &argumentos, QString *error)
{
    Opciones o;
    const auto fallar = [error](const QString &que) {
        *error = que;
        return std::nullopt;
    };
    bool deImportar = false; // an argument that goes with --importar alone
    for (qsizetype i = 0; i < argumentos.size(); ++i) {
        const QString &a = argumentos[i];
        const auto valor = [&]() -> QString { return argumentos.value(++i); };
        if (a == u"--datos") {
            o.datos = valor();
            if (o.datos.isEmpty())
                return fallar(QStringLiteral("--datos needs a folder"));
        } else if (a == u"--crear") {
            o.modo = Opciones::Modo::Crear;
            o.crear = valor();
            if (o.crear.isEmpty())
                return fallar(QStringLiteral("--crear needs a folder"));
        } else if (a == u"--demo") {
            o.demo = true;
        } else if (a == u"--desatendido") {
            o.modo = Opciones::Modo::Desatendido;
        } else if (a == u"--importar") {
            o.modo = Opciones::Modo::Importar;
            o.importar = valor();
            if (o.importar.isEmpty())
                return fallar(QStringLiteral("--importar needs a file"));
        } else if (a == u"--confirmar") {
            o.confirmar = deImportar = true;
        } else if (a == u"--columnas") {
            o.columnas = valor();
            deImportar = true;
            if (o.columnas.isEmpty())
                return fallar(QStringLiteral("--columnas needs title=datum,..."));
        } else if (a == u"--fechas") {
            o.fechas = valor();
            deImportar = true;
            if (o.fechas != u"dma" && o.fechas != u"mda")
                return fallar(QStringLiteral("--fechas takes dma or mda"));
        } else if (a == u"--propietario") {
            o.propietario = valor();
            deImportar = true;
            if (o.propietario.isEmpty())
                return fallar(QStringLiteral("--propietario needs a name"));
        } else if (a == u"--idioma") {
            const QString codigo = valor();
            if (codigo != u"es" && codigo != u"pt" && codigo != u"en")
                return fallar(QStringLiteral("--idioma takes es, pt or en"));
            o.idioma = IdiomaDeCodigo(codigo);
        } else if (a == u"--version") {
            o.modo = Opciones::Modo::Version;
        } else if (a == u"--help") {
            o.modo = Opciones::Modo::Ayuda;
        } else {
            return fallar(QStringLiteral("unknown argument: ") + a);
        }
    }
    if (o.demo && o.modo != Opciones::Modo::Crear)
        return fallar(QStringLiteral("--demo goes with --crear"));
    if (deImportar && o.modo != Opciones::Modo::Importar)
        return fallar(QStringLiteral(
            "--confirmar, --columnas, --fechas and --propietario go with --importar"));
    return o;
}

QString TextoDeAyuda()
{
    return QStringLiteral(
        "kelvara                                  the window\n"
        "kelvara --datos DIR                      this data folder, whatever ruta.txt says\n"
        "kelvara --crear DIR [--idioma es|pt|en] [--demo]\n"
        "                                         a new data folder: empty with its seeds, or a\n"
        "                                         demo clinic\n"
        "kelvara --datos DIR --desatendido        a start without a window, for cron: runs the\n"
        "                                         day, prints the board\n"
        "kelvara --importar FILE --datos DIR [--confirmar] [--columnas TITLE=DATUM,...]\n"
        "        [--fechas dma|mda] [--propietario NAME]\n"
        "                                         what importing clients and patients from a CSV\n"
        "                                         file would do; with --confirmar, does it\n"
        "kelvara --idioma es|pt|en                instead of the system's language\n"
        "kelvara --version, --help\n");
}
