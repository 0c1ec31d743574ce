#include "app/options.h"

using namespace app;

std::optional<Options> app::readOptions(const QStringList &arguments, QString *error)
{
    Options o;
    const auto fail = [error](const QString &what) {
        *error = what;
        return std::nullopt;
    };
    bool ofImport = false; // an argument that is only valid with --importar
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &a = arguments[i];
        const auto value = [&]() -> QString { return arguments.value(++i); };
        if (a == u"--datos") {
            o.data = value();
            if (o.data.isEmpty())
                return fail(QStringLiteral("--datos needs a folder"));
        } else if (a == u"--crear") {
            o.mode = Options::Mode::Create;
            o.create = value();
            if (o.create.isEmpty())
                return fail(QStringLiteral("--crear needs a folder"));
        } else if (a == u"--demo") {
            o.demo = true;
        } else if (a == u"--veterinaria" || a == u"--usuario") {
            QString &name = a == u"--usuario" ? o.user : o.clinic;
            name = value();
            if (name.trimmed().isEmpty())
                return fail(a + QStringLiteral(" needs a name"));
        } else if (a == u"--desatendido") {
            o.mode = Options::Mode::Unattended;
        } else if (a == u"--importar") {
            o.mode = Options::Mode::Import;
            o.importing = value();
            if (o.importing.isEmpty())
                return fail(QStringLiteral("--importar needs a file"));
        } else if (a == u"--confirmar") {
            o.confirm = ofImport = true;
        } else if (a == u"--columnas") {
            o.columns = value();
            ofImport = true;
            if (o.columns.isEmpty())
                return fail(QStringLiteral("--columnas needs title=datum,..."));
        } else if (a == u"--fechas") {
            o.dates = value();
            ofImport = true;
            if (o.dates != u"dma" && o.dates != u"mda")
                return fail(QStringLiteral("--fechas takes dma or mda"));
        } else if (a == u"--propietario") {
            o.owner = value();
            ofImport = true;
            if (o.owner.isEmpty())
                return fail(QStringLiteral("--propietario needs a name"));
        } else if (a == u"--idioma") {
            const QString code = value();
            if (code != u"es" && code != u"pt" && code != u"en")
                return fail(QStringLiteral("--idioma takes es, pt or en"));
            o.language = store::codeLanguage(code);
        } else if (a == u"--version") {
            o.mode = Options::Mode::Version;
        } else if (a == u"--help") {
            o.mode = Options::Mode::Help;
        } else {
            return fail(QStringLiteral("unknown argument: ") + a);
        }
    }
    if (o.demo && o.mode != Options::Mode::Create)
        return fail(QStringLiteral("--demo goes with --crear"));
    if ((!o.user.isEmpty() || !o.clinic.isEmpty()) && (o.mode != Options::Mode::Create || o.demo))
        return fail(
            QStringLiteral("--veterinaria and --usuario go with --crear, and not with --demo"));
    if (!o.clinic.isEmpty() && o.user.isEmpty())
        return fail(QStringLiteral("--veterinaria needs --usuario, its first user"));
    if (ofImport && o.mode != Options::Mode::Import)
        return fail(QStringLiteral(
            "--confirmar, --columnas, --fechas and --propietario go with --importar"));
    return o;
}

QString app::helpText()
{
    return QStringLiteral(
        "kelvara                                  the window\n"
        "kelvara --datos DIR                      this data folder, whatever ruta.txt says\n"
        "kelvara --crear DIR [--idioma es|pt|en] [--demo]\n"
        "                                         a new data folder: empty with its seeds, or a\n"
        "                                         demo clinic\n"
        "kelvara --crear DIR --usuario NAME [--veterinaria NAME]\n"
        "                                         a clinic ready to be used, with its first user;\n"
        "                                         the password is the first line of standard\n"
        "                                         input, an empty one for none\n"
        "kelvara --datos DIR --desatendido        a start without a window, for cron: runs the\n"
        "                                         day, prints the board\n"
        "kelvara --importar FILE --datos DIR [--confirmar] [--columnas TITLE=DATUM,...]\n"
        "        [--fechas dma|mda] [--propietario NAME]\n"
        "                                         what importing clients and patients from a CSV\n"
        "                                         file would do; with --confirmar, does it\n"
        "kelvara --idioma es|pt|en                instead of the system's language\n"
        "kelvara --version, --help\n");
}
