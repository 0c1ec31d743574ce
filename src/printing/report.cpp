#include "printing/report.h"

#include "store/data_folder.h"
#include "store/opening.h"

#include <QFile>
#include <kainjow/mustache.hpp>

using namespace Qt::StringLiterals;
using Dato = kainjow::mustache::data;

namespace
{

enum Texto { CodigoDeIdiomaEnArchivos = 2, PaginaDeTotal = 9850 };

// As the sheet shows it; storage knows nothing of locales.
QString EnHoja(const Valor &v, Tipo tipo)
{
    const QLocale local;
    if (v.EsNulo())
        return {};
    switch (tipo) {
    case Tipo::Currency:
        return local.toString(v.toMoneda().ADoble(), 'f', 2);
    case Tipo::Single:
    case Tipo::Double:
        return local.toString(v.toDouble(), 'g', QLocale::FloatingPointShortest);
    case Tipo::Date:
        return local.toString(v.toDate(), QLocale::ShortFormat);
    case Tipo::Time:
        return local.toString(v.toTime(), QLocale::ShortFormat);
    default:
        return v.toText();
    }
}

std::string Utf8(const QString &t) { return t.toStdString(); }

// What stands in the head of a definition.
struct CabezaDeInforme {
    QString titulo;
    QString consulta; // over the scratch database
    QString grupo;    // column that parts the rows; "" for none
    QStringList sumas;
    bool apaisado = false;
};

struct Grupo {
    QString nombre;
    kainjow::mustache::list filas;
    std::vector<Moneda> sumas;
};

void PonerSumas(Dato &destino, const QStringList &columnas, const std::vector<Moneda> &sumas)
{
    for (qsizetype i = 0; i < columnas.size(); ++i)
        destino.set(Utf8(u"suma_"_s + columnas[i]),
                    Utf8(QLocale().toString(sumas[size_t(i)].ADoble(), 'f', 2)));
}

// The rows as the template sees them: `filas`, or `grupos` with `filas` in each.
Dato LlenarDatos(Recordset &r, const CabezaDeInforme &cabeza)
{
    std::vector<Grupo> grupos;
    const size_t n = size_t(cabeza.sumas.size());
    std::vector<Moneda> totales(n);
    int filas = 0;
    for (; !r.EOF_(); r.MoveNext(), ++filas) {
        const QString nombre =
            cabeza.grupo.isEmpty() ? QString() : r[cabeza.grupo.toStdString()].toText();
        if (grupos.empty() || grupos.back().nombre != nombre)
            grupos.push_back({nombre, {}, std::vector<Moneda>(n)});
        Dato fila;
        for (int c = 0; c < r.Columnas(); ++c)
            fila.set(Utf8(r.Nombre(c).toLower()), Utf8(EnHoja(r[c], r.TipoDe(c))));
        grupos.back().filas.push_back(fila);
        for (size_t i = 0; i < n; ++i) {
            const Moneda m = r[cabeza.sumas[qsizetype(i)].toStdString()].toMoneda();
            grupos.back().sumas[i] = grupos.back().sumas[i] + m;
            totales[i] = totales[i] + m;
        }
    }
    Dato datos;
    kainjow::mustache::list todas, lista;
    for (const Grupo &g : grupos) {
        for (const Dato &f : g.filas)
            todas.push_back(f);
        Dato grupo;
        grupo.set("nombre", Utf8(g.nombre));
        grupo.set("cantidad", std::to_string(g.filas.size()));
        grupo.set("filas", Dato(g.filas));
        PonerSumas(grupo, cabeza.sumas, g.sumas);
        lista.push_back(grupo);
    }
    datos.set("filas", Dato(todas));
    datos.set("grupos", Dato(lista));
    datos.set("cantidad", std::to_string(filas));
    PonerSumas(datos, cabeza.sumas, totales);
    return datos;
}

CabezaDeInforme LeerCabeza(const QString &definicion, QString *cuerpo)
{
    const qsizetype abre = definicion.indexOf(u"<!--"_s);
    const qsizetype cierra = definicion.indexOf(u"-->"_s);
    if (abre != 0 || cierra < 0)
        throw ErrorDeAlmacen(ErrorNum::Sintaxis, u"<!-- ... -->"_s);
    CabezaDeInforme cabeza;
    QString *ultima = nullptr;
    const auto lineas = definicion.mid(4, cierra - 4).split(u'\n');
    for (const QString &linea : lineas) {
        const QString t = linea.trimmed();
        if (t.isEmpty())
            continue;
        // A line that begins with a blank goes on with the one before.
        if (linea.startsWith(u' ') && ultima) {
            *ultima += u' ' + t;
            continue;
        }
        const QString clave = t.section(u':', 0, 0).trimmed().toLower();
        const QString valor = t.section(u':', 1).trimmed();
        ultima = nullptr;
        if (clave == u"titulo")
            cabeza.titulo = valor;
        else if (clave == u"consulta")
            *(ultima = &cabeza.consulta) = valor;
        else if (clave == u"grupo")
            cabeza.grupo = valor;
        else if (clave == u"sumas")
            cabeza.sumas = valor.split(u',', Qt::SkipEmptyParts);
        else if (clave == u"hoja")
            cabeza.apaisado = valor.contains(u"apaisada");
        else
            throw ErrorDeAlmacen(ErrorNum::Sintaxis, t);
    }
    for (QString &suma : cabeza.sumas)
        suma = suma.trimmed();
    *cuerpo = definicion.mid(cierra + 3);
    return cabeza;
}

QString ArchivoDeInforme(const Sesion &s, const QString &nombre)
{
    return nombre + s(CodigoDeIdiomaEnArchivos) + u".html"_s;
}

QString LeerDefinicion(const Sesion &s, const QString &archivo)
{
    for (const QString &ruta :
         {RutaBajo(s.carpetaDeDatos, u"reportes/"_s + archivo), u":/reportes/"_s + archivo}) {
        QFile f(ruta);
        if (f.open(QIODevice::ReadOnly))
            return QString::fromUtf8(f.readAll()).remove(QChar::ByteOrderMark);
    }
    throw ErrorDeAlmacen(ErrorNum::ArchivoNoEncontrado, {});
}

Dato LeerFilas(Sesion &s, const CabezaDeInforme &cabeza)
{
    AbrirAuxiliar(s, u"rep97"_s);
    try {
        Dato datos;
        {
            Recordset r = s.auxiliar->OpenSnapshot(cabeza.consulta.toStdString());
            datos = LlenarDatos(r, cabeza);
        }
        CerrarAuxiliar(s);
        return datos;
    } catch (...) {
        CerrarAuxiliar(s);
        throw;
    }
}

std::unique_ptr<DocumentoHtml> Correr(Sesion &s, const QString &archivo)
{
    QString cuerpo;
    const CabezaDeInforme cabeza = LeerCabeza(LeerDefinicion(s, archivo), &cuerpo);
    Dato datos = LeerFilas(s, cabeza);

    Dato clinica;
    clinica.set("nom", Utf8(s.clinica.nom));
    clinica.set("pro", Utf8(s.clinica.pro));
    clinica.set("dir", Utf8(s.clinica.dir));
    clinica.set("tel", Utf8(s.clinica.tel));
    datos.set("clinica", clinica);
    datos.set("hoy", Utf8(QLocale().toString(s.reloj.hoy, QLocale::LongFormat)));
    datos.set("titulo", Utf8(cabeza.titulo));

    kainjow::mustache::mustache plantilla(cuerpo.toStdString());
    if (!plantilla.is_valid())
        throw ErrorDeAlmacen(ErrorNum::Sintaxis, QString::fromStdString(plantilla.error_message()));
    return std::make_unique<DocumentoHtml>(
        cabeza.titulo, QString::fromStdString(plantilla.render(datos)), s(PaginaDeTotal),
        cabeza.apaisado ? QPageLayout::Landscape : QPageLayout::Portrait);
}

} // namespace

std::unique_ptr<DocumentoHtml> CorrerInforme(Sesion &s, const QString &nombre)
{
    const QString archivo = ArchivoDeInforme(s, nombre);
    try {
        return Correr(s, archivo);
    } catch (const ErrorDeAlmacen &e) {
        // A clinic may have changed the file: which one it is comes first.
        throw ErrorDeAlmacen(e.numero, (archivo + u"\n"_s + e.descripcion).trimmed(), e.sentencia);
    }
}
