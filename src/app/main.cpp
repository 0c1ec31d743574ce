// Entry of the program: reads the command line, builds the session and starts the window or a run
// without one.

#include "admin/admin_forms.h"
#include "agenda/agenda_forms.h"
#include "app/options.h"
#include "app/unattended.h"
#include "board/frmacerca.h"
#include "board/frmprincipal.h"
#include "clients/client_forms.h"
#include "messages/message_forms.h"
#include "messages/outbox.h"
#include "printing/printer.h"
#include "startup/daily_automation.h"
#include "startup/frminicio.h"
#include "startup/new_folder.h"
#include "store/data_folder.h"
#include "store/schema.h"
#include "ui/form_registry.h"
#include "ui/pictures.h"
#include "ui/quick_key.h"
#include "ui/theme.h"
#include "ui/window_dialogs.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QLockFile>
#include <QTranslator>

#include <cstdio>

namespace
{

// Days and numbers on screen follow the language worked in; the country stays the system's where
// both agree.
void FijarLocal(Idioma idioma)
{
    const QLocale sistema = QLocale::system();
    if (IdiomaDeCodigo(sistema.name()) == idioma && sistema.language() != QLocale::C) {
        QLocale::setDefault(sistema);
        return;
    }
    switch (idioma) {
    case Idioma::Espanol:
        QLocale::setDefault({QLocale::Spanish, QLocale::Uruguay});
        break;
    case Idioma::Portugues:
        QLocale::setDefault({QLocale::Portuguese, QLocale::Brazil});
        break;
    case Idioma::Ingles:
        QLocale::setDefault({QLocale::English, QLocale::UnitedStates});
        break;
    }
}

// On a machine where nothing was ever set up: a clinic of its own can be made here and now.
void OfrecerCarpetaNueva(Sesion &s, Idioma idioma)
{
    if (s.carpetaDada || TieneRuta(s.carpetaDePrograma))
        return;
    for (const QString &base : BasesDeDatos())
        if (QFileInfo::exists(RutaBajo(s.carpetaDeDatos, ArchivoDe(base))))
            return;
    if (s.dialogos.Pregunta(s(9009) + QStringLiteral("\n\n") + s.carpetaDeDatos))
        CrearCarpeta(s.carpetaDeDatos, idioma);
}

int Ventana(int &argc, char **argv, const Opciones &opciones, Idioma idioma)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kelvara"));
    QApplication::setApplicationVersion(QStringLiteral(KELVARA_VERSION));
    QApplication::setWindowIcon(Icono(QStringLiteral("kelvara")));
    QApplication::setQuitOnLastWindowClosed(false); // the board decides when the program ends
    AplicarTema(app, 1);
    // The toolkit's own boxes: files, colours, context menus of text boxes.
    QTranslator delToolkit;
    if (delToolkit.load(QLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&delToolkit);

    DialogosDeVentana dialogos{Textos(idioma)};
    ImpresionDeEscritorio impresion;
    Sesion s(dialogos, impresion, idioma);
    FijarCarpetaDeDatos(s, opciones.datos);

    // One instance on this machine for each program folder, which may be shared: so the lock lies
    // in the machine's own folder. One whose program died counts for nothing.
    const QByteArray huella =
        QCryptographicHash::hash(s.carpetaDePrograma.toUtf8(), QCryptographicHash::Sha1);
    QLockFile candado(QDir::tempPath() + QStringLiteral("/kelvara-")
                      + QString::fromLatin1(huella.toHex().left(16)) + QStringLiteral(".lock"));
    candado.setStaleLockTime(0);
    const bool otra = !candado.tryLock() && candado.error() == QLockFile::LockFailedError;

    Formularios formularios;
    RegistrarFormulariosDeTablero(s, formularios);
    RegistrarFormulariosDeClientes(s, formularios);
    RegistrarFormulariosDeAgenda(s, formularios);
    RegistrarFormulariosDeMensajes(s, formularios);
    RegistrarFormulariosDeAdministracion(s, formularios);
    InstalarBusquedaRapida(app, formularios);
    std::unique_ptr<frmprincipal> tablero;

    PasosDeInicio pasos;
    pasos.otraInstancia = [otra] { return otra; };
    pasos.prepararCarpeta = [&] { OfrecerCarpetaNueva(s, idioma); };
    pasos.almacenAbierto = [&] { AplicarTema(app, s.configuracion["PrincipalColor"].toInt()); };
    pasos.cargarTablero = [&] { tablero = std::make_unique<frmprincipal>(s, formularios); };
    pasos.iniciarTareas = [&] {
        IniciarTareas(s, {.enviarMensajes = EnviarMensajes, .pasoMensual = {}});
    };
    pasos.cargarPropietarios = [&] {
        formularios.Cargar(QStringLiteral("frmPropietarios"));
        tablero->CargarPizarra();
    };
    pasos.cargarVentas = [&] { formularios.Cargar(QStringLiteral("frmventas")); };
    pasos.mostrarTablero = [&] { tablero->Mostrar(); };
    pasos.terminar = [] { QCoreApplication::quit(); };

    frminicio inicio(s, pasos);
    inicio.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QStringList argumentos;
    for (int i = 1; i < argc; ++i)
        argumentos << QString::fromLocal8Bit(argv[i]);
    QString error;
    const auto opciones = LeerOpciones(argumentos, &error);
    if (!opciones) {
        std::fprintf(stderr, "kelvara: %s\n%s", error.toUtf8().constData(),
                     TextoDeAyuda().toUtf8().constData());
        return 2;
    }

    const Idioma idioma = opciones->idioma.value_or(IdiomaDeCodigo(QLocale::system().name()));
    FijarLocal(idioma);
    if (opciones->modo == Opciones::Modo::Ventana)
        return Ventana(argc, argv, *opciones, idioma);

    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kelvara"));
    switch (opciones->modo) {
    case Opciones::Modo::Ayuda:
        std::printf("%s", TextoDeAyuda().toUtf8().constData());
        return 0;
    case Opciones::Modo::Version:
        std::printf("Kelvara %s\n", KELVARA_VERSION);
        return 0;
    case Opciones::Modo::Crear:
        return CrearDatos(*opciones, idioma);
    case Opciones::Modo::Importar:
        return ImportarDatos(*opciones, idioma);
    default:
        return CorrerDesatendido(*opciones, idioma);
    }
}
