#include "clients/import.h"

#include "clients/import_plan.h"

#include <QLocale>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace importacion;

VistaDeArchivo MirarArchivo(Sesion &s, const QString &archivo, int filas)
{
    VistaDeArchivo v;
    ArchivoDelimitado lector(archivo);
    const bool hay = lector.Leer(v.titulos);
    QStringList campos;
    for (int i = 0; i < filas && lector.Leer(campos); ++i)
        v.filas << campos;
    v.utf8 = lector.EsUtf8();
    v.separador = lector.Separador();
    v.falla = FallaDeArchivo(s, lector);
    if (v.falla.isEmpty() && !hay)
        v.falla = s(ArchivoVacio);
    for (QString &titulo : v.titulos)
        titulo = titulo.simplified();
    v.columnas = ReconocerTitulos(v.titulos);
    return v;
}

QString TextoDeVista(const Sesion &s, const VistaDeArchivo &vista)
{
    const int cual = vista.separador == u';' ? 1 : vista.separador == u'\t' ? 2 : 0;
    return s(Forma).arg(vista.utf8 ? u"UTF-8"_s : u"Latin-1"_s,
                        s(NombresDeSeparador).section(u'|', cual, cual));
}

InformeDeImportacion ProbarImportacion(Sesion &s, const OpcionesDeImportacion &o,
                                       const Seguir &seguir)
{
    Plan plan(s, o);
    plan.Hacer(seguir);
    return std::move(plan.informe);
}

InformeDeImportacion Importar(Sesion &s, const OpcionesDeImportacion &o, const Seguir &seguir)
{
    Plan plan(s, o);
    if (plan.Hacer(seguir))
        plan.Escribir(seguir);
    return std::move(plan.informe);
}

QString ResumenDeImportacion(const Sesion &s, const InformeDeImportacion &i)
{
    const auto n = [](int cuantos) { return QLocale().toString(cuantos); };
    QStringList lineas = i.notas;
    lineas << s(ResumenClientes).arg(n(i.clientesNuevos), n(i.clientesExistentes))
           << s(ResumenPacientes).arg(n(i.mascotasNuevas), n(i.mascotasExistentes))
           << s(ResumenLineas).arg(n(i.rechazadas), n(i.avisos));
    if (i.sinLugar)
        lineas << s(ResumenSinLugar).arg(n(i.sinLugar), n(i.primeraSinLugar));
    return lineas.join(u'\n');
}

QString FinalDeImportacion(const Sesion &s, const InformeDeImportacion &i)
{
    const QString ultima = QLocale().toString(i.lineas.empty() ? 1 : i.lineas.back().linea);
    if (!i.falla.isEmpty())
        return s(FuePorError).arg(ultima, i.falla);
    if (i.interrumpido)
        return i.escrito ? s(FueInterrumpido).arg(ultima) : s(SinEscribir);
    return s(i.escrito ? FueEscrito : FueEnSeco);
}

QString TextoDeSuerte(const Sesion &s, Suerte suerte)
{
    return s(NombresDeSuerte).section(u'|', int(suerte), int(suerte));
}

QString AplicarColumnas(const Sesion &s, const QString &texto, const QStringList &titulos,
                        QList<Dato> &columnas)
{
    for (const QString &parte : texto.split(u',', Qt::SkipEmptyParts)) {
        const qsizetype igual = parte.lastIndexOf(u'=');
        const QString titulo = parte.left(std::max<qsizetype>(igual, 0)).trimmed();
        qsizetype columna = -1;
        for (qsizetype i = 0; i < titulos.size() && columna < 0; ++i)
            if (EnClave(titulos[i]) == EnClave(titulo) && !titulo.isEmpty())
                columna = i;
        bool esNumero = false;
        if (const int numero = titulo.toInt(&esNumero); columna < 0 && esNumero)
            columna = numero - 1;
        if (columna < 0 || columna >= columnas.size())
            return s(ColumnaDesconocida).arg(igual < 0 ? parte : titulo);
        const QString nombre = parte.mid(igual + 1).trimmed();
        const auto dato = DatoPorNombre(nombre);
        if (!dato) {
            QStringList nombres;
            for (int d = 0; d < CuantosDatos; ++d)
                nombres << NombreDeDato(Dato(d));
            return s(DatoDesconocido).arg(nombre, nombres.join(u", "_s));
        }
        if (*dato != Dato::Nada)
            std::replace(columnas.begin(), columnas.end(), *dato, Dato::Nada);
        columnas[columna] = *dato;
    }
    return {};
}
