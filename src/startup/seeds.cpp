#include "startup/seeds.h"

#include <QFile>
#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{

QStringList Lineas(const QString &archivo)
{
    QFile f(u":/seeds/%1.txt"_s.arg(archivo));
    if (!f.open(QIODevice::ReadOnly))
        throw std::runtime_error(u"no seed file %1"_s.arg(archivo).toStdString());
    return QString::fromUtf8(f.readAll()).split(u'\n');
}

[[noreturn]] void Fallar(const QString &archivo, qsizetype linea, const QString &que)
{
    throw std::runtime_error(u"%1.txt:%2: %3"_s.arg(archivo).arg(linea + 1).arg(que).toStdString());
}

bool EsComentario(const QString &linea) { return linea.isEmpty() || linea.startsWith(u'#'); }

QStringList Celdas(const QString &linea)
{
    QStringList celdas = linea.split(u'|');
    for (QString &c : celdas)
        c = c.trimmed();
    return celdas;
}

/// Where a column's cell stands in one language, and where else when the row ends before it.
struct Lugar {
    qsizetype propio = 0;
    qsizetype enEspanol = 0;
    bool deIdioma = false;
};

} // namespace

const QString &Semillas::Celda(const QStringList &fila, QStringView columna) const
{
    const qsizetype i = columnas.indexOf(columna);
    if (i < 0)
        throw std::runtime_error(u"no seed column %1"_s.arg(columna).toStdString());
    return fila[i];
}

Semillas LeerSemillas(const QString &archivo, Idioma idioma)
{
    const QString sufijo = u'.' + CodigoDeIdioma(idioma);
    Semillas s;
    std::vector<Lugar> lugares;
    const QStringList lineas = Lineas(archivo);
    for (qsizetype n = 0; n < lineas.size(); ++n) {
        if (EsComentario(lineas[n]))
            continue;
        const QStringList celdas = Celdas(lineas[n]);
        if (s.columnas.isEmpty()) {
            for (qsizetype i = 0; i < celdas.size(); ++i) {
                const bool deIdioma = celdas[i].contains(u'.');
                if (deIdioma && !celdas[i].endsWith(sufijo))
                    continue;
                const QString nombre = celdas[i].section(u'.', 0, 0);
                s.columnas.append(nombre);
                lugares.push_back({i, deIdioma ? celdas.indexOf(nombre + ".es"_L1) : i, deIdioma});
            }
            continue;
        }
        QStringList fila;
        bool enEsteIdioma = true;
        for (const Lugar &l : lugares) {
            const qsizetype i = l.propio < celdas.size() ? l.propio : l.enEspanol;
            if (i < 0 || i >= celdas.size())
                Fallar(archivo, n, u"too few cells"_s);
            fila.append(celdas[i]);
            enEsteIdioma = enEsteIdioma && !(l.deIdioma && celdas[i].isEmpty());
        }
        if (enEsteIdioma)
            s.filas.append(fila);
    }
    return s;
}

QList<CartaSembrada> LeerCartas(Idioma idioma)
{
    const QString archivo = u"letters"_s;
    const QString codigo = CodigoDeIdioma(idioma);
    QList<CartaSembrada> cartas;
    bool nuestra = false;
    const QStringList lineas = Lineas(archivo);
    for (qsizetype n = 0; n < lineas.size(); ++n) {
        const QString &linea = lineas[n];
        if (EsComentario(linea))
            continue;
        if (linea.startsWith(u'[') && linea.endsWith(u']')) {
            cartas.append({linea.sliced(1, linea.size() - 2).split(u' ', Qt::SkipEmptyParts), {}});
            nuestra = false;
        } else if (linea.startsWith(u'|') && !cartas.isEmpty()) {
            if (!nuestra)
                continue;
            QString &texto = cartas.back().texto;
            if (!texto.isNull())
                texto += u'\n';
            texto += linea.sliced(linea.startsWith("| "_L1) ? 2 : 1);
        } else if (linea == "es"_L1 || linea == "pt"_L1 || linea == "en"_L1) {
            nuestra = linea == codigo;
        } else {
            Fallar(archivo, n, u"cannot read \"%1\""_s.arg(linea));
        }
    }
    return cartas;
}

Valor ValorDeSemilla(const Base &base, std::string_view tabla, const QString &columna,
                     const QString &celda)
{
    const jet::Tabla *t = base.Catalogo().Buscar(tabla);
    if (!t)
        throw ErrorDeAlmacen(ErrorNum::TablaNoEncontrada,
                             QString::fromUtf8(tabla.data(), tabla.size()));
    const auto c = std::ranges::find_if(t->columnas, [&](const jet::Columna &declarada) {
        return QString::fromStdString(declarada.nombre).compare(columna, Qt::CaseInsensitive) == 0;
    });
    if (c == t->columnas.end())
        throw ErrorDeAlmacen(ErrorNum::NoEnLaColeccion, columna);
    if (celda.isEmpty())
        return {};
    switch (c->tipo) {
    case Tipo::Text:
    case Tipo::Memo:
    case Tipo::Ninguno:
        return celda;
    case Tipo::YesNo:
        return celda != "0"_L1;
    case Tipo::Single:
    case Tipo::Double:
        return celda.toDouble();
    case Tipo::Currency:
        return Moneda::DeTexto(celda).value_or(Moneda());
    case Tipo::Date:
        return QDate::fromString(celda, Qt::ISODate);
    case Tipo::Time:
        return QTime::fromString(celda, Qt::ISODate);
    default:
        return celda.toInt();
    }
}

void InsertarFila(Base &base, const QString &tabla, const QStringList &columnas,
                  const std::vector<Valor> &valores)
{
    const QString sql = u"insert into %1 ([%2]) values (%3)"_s.arg(
        tabla, columnas.join("], ["_L1), QStringList(columnas.size(), u"?"_s).join(u','));
    base.Ejecutar(sql.toStdString(), valores);
}

void InsertarSemillas(Base &base, const QString &tabla, const Semillas &semillas)
{
    const std::string nombre = tabla.toStdString();
    for (const QStringList &fila : semillas.filas) {
        std::vector<Valor> valores;
        for (qsizetype i = 0; i < fila.size(); ++i)
            valores.push_back(ValorDeSemilla(base, nombre, semillas.columnas[i], fila[i]));
        InsertarFila(base, tabla, semillas.columnas, valores);
    }
}
