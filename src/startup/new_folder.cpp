#include "startup/new_folder.h"

#include "startup/seeds.h"
#include "store/batch.h"
#include "store/data_folder.h"
#include "store/schema.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

void SembrarFilasFijas(Motor &motor, Idioma idioma)
{
    const Reloj reloj;
    Base morvane(motor, "morvane", reloj);
    Base clientes(motor, "clientes", reloj);
    Base finanzas(motor, "finanzas", reloj);

    QStringList columnas;
    std::vector<Valor> valores;
    for (const Semillas &s :
         {LeerSemillas(u"settings"_s, Idioma::Espanol), LeerSemillas(u"labels"_s, Idioma::Espanol)})
        for (const QStringList &fila : s.filas) {
            const QString &columna = s.Celda(fila, u"columna");
            columnas.append(columna);
            valores.push_back(
                ValorDeSemilla(morvane, "Configuracion", columna, s.Celda(fila, u"valor")));
        }
    InsertarFila(morvane, u"Configuracion"_s, columnas, valores);

    const std::tuple<Base &, const char16_t *, const char16_t *> tablas[] = {
        {morvane, u"Regimen", u"plans"},
        {finanzas, u"FLCategorias", u"categories"},
        {clientes, u"MLEspecies", u"species"},
        {clientes, u"EnciclopediaCategorias", u"encyclopedia_categories"},
        {clientes, u"EnciclopediaSubCategorias", u"encyclopedia_topics"},
    };
    for (const auto &[base, tabla, archivo] : tablas)
        InsertarSemillas(base, QString::fromUtf16(tabla),
                         LeerSemillas(QString::fromUtf16(archivo), Idioma::Espanol));
    InsertarSemillas(finanzas, u"TiposFiscal"_s, LeerSemillas(u"fiscal_types"_s, idioma));

    const Semillas temas = LeerSemillas(u"encyclopedia_topics"_s, Idioma::Espanol);
    for (const QStringList &fila : temas.filas)
        InsertarFila(clientes, u"Enciclopedia"_s, {u"IDCategoria"_s, u"IDSubCategoria"_s},
                     {temas.Celda(fila, u"IDCategoria").toInt(), temas.Celda(fila, u"ID").toInt()});
}

/// Makes the five files below a folder in which none of them exists.
void CrearArchivos(const QString &carpeta, Idioma idioma)
{
    const std::unique_ptr<Motor> motor = CrearMotorDeArchivos();
    for (const QString &base : BasesDeDatos()) {
        const QString archivo = carpeta + u'/' + ArchivoDe(base);
        QDir().mkpath(QFileInfo(archivo).path());
        CrearArchivoVacio(archivo);
        motor->Abrir(archivo, base.toStdString());
    }
    Lote lote(*motor);
    for (const QString &base : BasesDeDatos())
        CrearTablas(*motor, base.toStdString(), LeerEsquema(base));
    SembrarFilasFijas(*motor, idioma);
    lote.Confirmar();
}

/// Moves the finished files to where they belong: all of them or none.
bool Trasladar(const QString &desde, const QString &carpeta)
{
    QStringList puestos;
    for (const QString &base : BasesDeDatos()) {
        const QString destino = RutaBajo(carpeta, ArchivoDe(base));
        if (!QDir().mkpath(QFileInfo(destino).path())
            || !QFile::rename(desde + u'/' + ArchivoDe(base), destino)) {
            for (const QString &puesto : std::as_const(puestos))
                QFile::remove(puesto);
            return false;
        }
        puestos.append(destino);
    }
    return true;
}

/// The files come into being beside their place and move there when all of them are whole, so that
/// neither a failure nor a power cut leaves a folder that looks like a clinic's.
void Levantar(const QString &carpeta, Idioma idioma)
{
    QDir().mkpath(carpeta);
    const QTemporaryDir obra(carpeta + "/.nueva-XXXXXX"_L1);
    if (!obra.isValid())
        throw ErrorDeAlmacen(ErrorNum::RutaODisco, obra.errorString());
    CrearArchivos(obra.path(), idioma);
    if (!Trasladar(obra.path(), carpeta))
        throw ErrorDeAlmacen(ErrorNum::RutaODisco, carpeta);
}

} // namespace

void CrearCarpeta(const QString &carpeta, Idioma idioma)
{
    const Textos textos(idioma);
    for (const QString &base : BasesDeDatos())
        if (QFileInfo::exists(RutaBajo(carpeta, ArchivoDe(base))))
            throw ErrorDeAlmacen(ErrorNum::RutaODisco, textos(9200) + u' ' + carpeta);

    const bool existia = QFileInfo::exists(carpeta);
    try {
        Levantar(carpeta, idioma);
    } catch (const ErrorDeAlmacen &e) {
        if (!existia)
            QDir(carpeta).removeRecursively(); // all of it is ours
        if (e.EsDelMedio())
            throw ErrorDeAlmacen(ErrorNum::RutaODisco, textos(9201) + u' ' + carpeta);
        throw;
    }
}
