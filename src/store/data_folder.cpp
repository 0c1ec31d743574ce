#include "store/data_folder.h"

#include "store/lookups.h"
#include "store/schema.h"
#include "store/session.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QThread>

#include <fcntl.h>
#include <unistd.h>

namespace
{

QString ConBarra(QString carpeta)
{
    if (!carpeta.isEmpty() && !carpeta.endsWith(u'/'))
        carpeta += u'/';
    return carpeta;
}

// The mark's row in the agenda, which no real owner can have: ids are positive.
constexpr int IdaDeMarca = -32000;

} // namespace

QString CarpetaDePrograma()
{
    const QString dada = qEnvironmentVariable("KELVARA_HOME");
    if (!dada.isEmpty())
        return ConBarra(QDir(dada).absolutePath());
    const QString propia = QCoreApplication::applicationDirPath();
    if (QFileInfo(propia).isWritable())
        return ConBarra(propia);
    const QString deUsuario = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(deUsuario);
    return ConBarra(deUsuario);
}

QString CarpetaLocalDeDatos()
{
    // A system version with a name keeps its files beside the program.
    return SistemaOperativo().isEmpty()
               ? ConBarra(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation))
               : CarpetaDePrograma();
}

QString LeerRuta(const QString &carpetaDePrograma)
{
    QFile f(RutaBajo(carpetaDePrograma, QStringLiteral("ruta.txt")));
    if (!f.open(QIODevice::ReadOnly))
        return ConBarra(carpetaDePrograma);
    // A path is far shorter; what follows the first line is of no interest.
    QByteArray linea = f.readLine(64 * 1024);
    if (linea.startsWith("\xEF\xBB\xBF"))
        linea.remove(0, 3);
    const QString ruta = QDir::fromNativeSeparators(QString::fromUtf8(linea).trimmed());
    return ConBarra(ruta.isEmpty() ? carpetaDePrograma : ruta);
}

bool TieneRuta(const QString &carpetaDePrograma)
{
    return QFileInfo::exists(RutaBajo(carpetaDePrograma, QStringLiteral("ruta.txt")));
}

bool EscribirRuta(const QString &carpetaDePrograma, const QString &carpetaDeDatos)
{
    QSaveFile f(RutaBajo(carpetaDePrograma, QStringLiteral("ruta.txt")));
    return f.open(QIODevice::WriteOnly) && f.write(carpetaDeDatos.toUtf8() + '\n') > 0 && f.flush()
           && f.commit();
}

QString RutaBajo(const QString &carpeta, const QString &relativa)
{
    QString ruta = ConBarra(carpeta);
    QString r = relativa;
    const QStringList partes = r.replace(u'\\', u'/').split(u'/', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < partes.size(); ++i) {
        QString parte = partes[i];
        if (!QFileInfo::exists(ruta + parte)) {
            const QStringList nombres =
                QDir(ruta).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
            for (const QString &n : nombres)
                if (n.compare(parte, Qt::CaseInsensitive) == 0) {
                    parte = n;
                    break;
                }
        }
        ruta += parte;
        if (i + 1 < partes.size())
            ruta += u'/';
    }
    return ruta;
}

void FijarCarpetaDeDatos(Sesion &s, const QString &carpeta)
{
    s.carpetaDePrograma = CarpetaDePrograma();
    s.carpetaDeDatos =
        carpeta.isEmpty() ? LeerRuta(s.carpetaDePrograma) : ConBarra(QDir(carpeta).absolutePath());
    s.carpetaDada = !carpeta.isEmpty();
    s.EnRed = s.carpetaDeDatos.toLower() != s.carpetaDePrograma.toLower();
}

QString RutaRealDeDatos(Sesion &s)
{
    if (!s.carpetaDada && TieneRuta(s.carpetaDePrograma))
        return LeerRuta(s.carpetaDePrograma);

    const auto quitar = [&s] {
        s.morvane->Execute("DELETE * FROM TareasAgenda WHERE Ida = ?", IdaDeMarca);
    };
    quitar();
    // The next task id, without taking it.
    s.morvane->Execute("INSERT INTO TareasAgenda (Ida, ID) VALUES (?, ?)", IdaDeMarca,
                       s.configuracion["contadorTareas"].toLong() + 1);

    const QString local =
        ConBarra(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    const QString candidatas[] = {
        RutaBajo(local, QStringLiteral("VirtualStore/Program Files/Kelvara")),
        RutaBajo(local, QStringLiteral("VirtualStore/Program Files (x86)/Kelvara")),
        s.carpetaDePrograma,
        s.carpetaDeDatos,
    };
    QString hallada;
    for (const QString &c : candidatas) {
        const QString archivo = RutaBajo(c, ArchivoDe(QStringLiteral("morvane")));
        if (!QFileInfo(archivo).isFile())
            continue;
        try {
            const auto motor = CrearMotorDeArchivos();
            motor->Abrir(archivo, "morvane");
            Base base(*motor, "morvane", s.reloj);
            if (!base.Leer("SELECT Ida FROM TareasAgenda WHERE Ida = ?", IdaDeMarca).EsNulo())
                hallada = ConBarra(c);
        } catch (const ErrorDeAlmacen &) {
            continue; // a file that does not open is not the one
        }
        if (!hallada.isEmpty())
            break;
    }
    quitar();
    return hallada;
}

BloqueoDeCarpeta::BloqueoDeCarpeta(const QString &carpeta, const QString &nombre, int segundos,
                                   const std::function<void()> &mientras)
{
    const QString ruta = ConBarra(carpeta) + nombre;
    const int archivo =
        ::open(QFile::encodeName(ruta).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (archivo < 0)
        throw ErrorDeAlmacen(ErrorNum::RutaODisco, ruta);
    // A record lock, like the engine's own: it works on shared folders and ends with its process.
    struct flock l {
    };
    l.l_type = F_WRLCK;
    l.l_whence = SEEK_SET;
    QDeadlineTimer plazo(segundos * 1000);
    for (;;) {
        if (::fcntl(archivo, F_SETLK, &l) == 0) {
            m_archivo = archivo;
            return;
        }
        if (plazo.hasExpired())
            break;
        if (mientras)
            mientras();
        QThread::msleep(50);
    }
    ::close(archivo);
}

BloqueoDeCarpeta::~BloqueoDeCarpeta()
{
    if (m_archivo >= 0)
        ::close(m_archivo);
}
