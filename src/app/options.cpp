#include "app/options.h"

std::optional<Opciones> LeerOpciones(const QStringList &argumentos, QString *error)
{
    Opciones o;
    const auto fallar = [error](const QString &que) {
        *error = que;
        return std::nullopt;
    };
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
        "kelvara --idioma es|pt|en                instead of the system's language\n"
        "kelvara --version, --help\n");
}
