// Entry point: reads the command line, builds the session and starts the window or an unattended
// run.

#include "admin/admin_forms.h"
#include "agenda/agenda_forms.h"
#include "app/options.h"
#include "app/unattended.h"
#include "board/frmacerca.h"
#include "board/frmprincipal.h"
#include "clients/client_forms.h"
#include "columns/configuracion.h"
#include "importing/frmimportar.h"
#include "messages/message_forms.h"
#include "messages/outbox.h"
#include "printing/printer.h"
#include "startup/choose_clinic.h"
#include "startup/daily_automation.h"
#include "startup/frminicio.h"
#include "store/data_folder.h"
#include "texts/texts.h"
#include "ui/form_registry.h"
#include "ui/pictures.h"
#include "ui/quick_key.h"
#include "ui/text_size.h"
#include "ui/theme.h"
#include "ui/wait_notice.h"
#include "ui/window_dialogs.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QLockFile>
#include <QTranslator>

#include <cstdio>

using namespace app;

namespace
{

// Dates and numbers on screen follow the program's language, and the system's country if its
// language is the same.
void setLocale(store::Language language)
{
    const QLocale system = QLocale::system();
    if (store::codeLanguage(system.name()) == language && system.language() != QLocale::C) {
        QLocale::setDefault(system);
        return;
    }
    switch (language) {
    case store::Language::Spanish:
        QLocale::setDefault({QLocale::Spanish, QLocale::Uruguay});
        break;
    case store::Language::Portuguese:
        QLocale::setDefault({QLocale::Portuguese, QLocale::Brazil});
        break;
    case store::Language::English:
        QLocale::setDefault({QLocale::English, QLocale::UnitedStates});
        break;
    }
}

int window(int &argc, char **argv, const Options &options, store::Language language)
{
    {
        // Where the program lies can only be asked of an application.
        const QCoreApplication probe(argc, argv);
        ui::applyTextSize(store::programFolder());
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kelvara"));
    QApplication::setApplicationVersion(QStringLiteral(KELVARA_VERSION));
    QApplication::setWindowIcon(ui::namedIcon(QStringLiteral("kelvara")));
    QApplication::setQuitOnLastWindowClosed(false); // the board decides when the program ends
    ui::applyTheme(app, 1);
    // Translates the toolkit's own dialogs and context menus.
    QTranslator delToolkit;
    if (delToolkit.load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&delToolkit);

    ui::WindowDialogs dialogos{store::Texts(language)};
    printing::DeskPrinting impresion;
    Sesion s(dialogos, impresion, language);
    const ui::WaitNotice notice(s);
    store::setDataFolder(s, options.data);

    // One instance per program folder and machine. The folder may be shared, so the lock is in the
    // machine's temporary folder. The lock of a crashed instance does not count.
    const QByteArray fingerprint =
        QCryptographicHash::hash(s.programFolder.toUtf8(), QCryptographicHash::Sha1);
    QLockFile lock(QDir::tempPath() + QStringLiteral("/kelvara-")
                   + QString::fromLatin1(fingerprint.toHex().left(16)) + QStringLiteral(".lock"));
    lock.setStaleLockTime(0);
    const bool other = !lock.tryLock() && lock.error() == QLockFile::LockFailedError;

    ui::FormRegistry forms;
    board::registerBoardForms(s, forms);
    clients::registerClientForms(s, forms);
    importing::registerImportForms(s, forms);
    agenda::registerAgendaForms(s, forms);
    messages::registerMessageForms(s, forms);
    admin::registerAdminForms(s, forms);
    ui::installQuickSearch(app, forms);
    std::unique_ptr<frmprincipal> board;

    startup::StartSteps steps;
    steps.otherInstance = [other] { return other; };
    steps.prepareFolder = [&] { return !startup::knowsNoClinic(s) || startup::chooseClinic(s); };
    steps.openStore = [&] {
        ui::applyTheme(app, s.configuracion[setting::PrincipalColor].toInt());
    };
    steps.loadBoard = [&] { board = std::make_unique<frmprincipal>(s, forms); };
    steps.startTasks = [&] {
        IniciarTareas(s, {.sendMessages = EnviarMensajes, .monthlyStep = {}});
    };
    steps.loadOwners = [&] {
        forms.load(QStringLiteral("frmPropietarios"));
        board->CargarPizarra();
    };
    steps.loadSales = [&] { forms.load(QStringLiteral("frmventas")); };
    steps.showBoard = [&] { board->showBoard(); };
    steps.finish = [] { QCoreApplication::quit(); };

    frminicio start(s, steps);
    start.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    QString error;
    const auto options = readOptions(arguments, &error);
    if (!options) {
        std::fprintf(stderr, "kelvara: %s\n%s", error.toUtf8().constData(),
                     helpText().toUtf8().constData());
        return 2;
    }

    const store::Language language =
        options->language.value_or(store::codeLanguage(QLocale::system().name()));
    setLocale(language);
    if (options->mode == Options::Mode::Window)
        return window(argc, argv, *options, language);

    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kelvara"));
    switch (options->mode) {
    case Options::Mode::Help:
        std::printf("%s", helpText().toUtf8().constData());
        return 0;
    case Options::Mode::Version:
        std::printf("Kelvara %s\n", KELVARA_VERSION);
        return 0;
    case Options::Mode::Create:
        return createData(*options, language);
    case Options::Mode::Import:
        return importData(*options, language);
    default:
        return runUnattended(*options, language);
    }
}
