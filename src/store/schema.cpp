#include "store/schema.h"

#include "store/database_internal.h"
#include "store/engine.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{

/// A word of a line. Names in brackets and literals in quotes are one word.
struct Palabra {
    enum Clase { Suelta, Nombre, Literal } clase = Suelta;
    QString texto; // without the brackets, with the quotes
};

class Lector
{
public:
    Lector(const QString &texto, const QString &archivo)
        : m_lineas(texto.split(u'\n')), m_archivo(archivo)
    {
    }

    std::vector<TablaDeclarada> Leer()
    {
        for (const QString &linea : m_lineas) {
            ++m_numero;
            const QList<Palabra> palabras = Partir(linea);
            if (palabras.isEmpty())
                continue;
            const Palabra &primera = palabras.front();
            if (primera.clase == Palabra::Suelta && primera.texto == "table"_L1)
                EmpezarTabla(palabras);
            else if (m_tablas.empty())
                Fallar(u"a column or index before the first table"_s);
            else if (primera.clase == Palabra::Suelta && primera.texto == "index"_L1)
                AgregarIndice(palabras);
            else
                AgregarColumna(palabras);
        }
        for (const TablaDeclarada &t : m_tablas)
            if (t.columnas.empty())
                Fallar(u"table %1 has no columns"_s.arg(t.nombre));
        return std::move(m_tablas);
    }

private:
    [[noreturn]] void Fallar(const QString &que) const
    {
        throw std::runtime_error(
            u"%1:%2: %3"_s.arg(m_archivo).arg(m_numero).arg(que).toStdString());
    }

    QList<Palabra> Partir(const QString &linea) const
    {
        static const QRegularExpression palabra(
            u"\\G\\s*(?:(#.*)|\\[([^\\]]+)\\](?=\\s|$)|('(?:[^']|'')*')(?=\\s|$)|([^\\s#'\\[]+)(?=\\s|$))"_s);
        QList<Palabra> palabras;
        qsizetype desde = 0;
        const QString util = linea.trimmed();
        while (desde < util.size()) {
            const auto hallada = palabra.match(util, desde);
            if (!hallada.hasMatch())
                Fallar(u"cannot read \"%1\""_s.arg(util.sliced(desde).trimmed()));
            if (hallada.hasCaptured(1))
                break;
            if (hallada.hasCaptured(2))
                palabras.append({Palabra::Nombre, hallada.captured(2)});
            else if (hallada.hasCaptured(3))
                palabras.append({Palabra::Literal, hallada.captured(3)});
            else
                palabras.append({Palabra::Suelta, hallada.captured(4)});
            desde = hallada.capturedEnd(0);
        }
        return palabras;
    }

    void EmpezarTabla(const QList<Palabra> &palabras)
    {
        if (palabras.size() != 2 || palabras[1].clase == Palabra::Literal)
            Fallar(u"expected: table NAME"_s);
        const QString &nombre = palabras[1].texto;
        for (const TablaDeclarada &t : m_tablas)
            if (t.nombre.compare(nombre, Qt::CaseInsensitive) == 0)
                Fallar(u"table %1 twice"_s.arg(nombre));
        m_tablas.push_back({});
        m_tablas.back().nombre = nombre;
    }

    void AgregarColumna(const QList<Palabra> &palabras)
    {
        TablaDeclarada &tabla = m_tablas.back();
        const bool conDefecto = palabras.size() == 4 && palabras[2].clase == Palabra::Suelta
                                && palabras[2].texto == "default"_L1;
        if (palabras[0].clase == Palabra::Literal || (palabras.size() != 2 && !conDefecto))
            Fallar(u"expected: COLUMN TYPE [default LITERAL]"_s);
        const QString &nombre = palabras[0].texto;
        if (BuscarColumna(nombre))
            Fallar(u"column %1 twice"_s.arg(nombre));
        if (!tabla.indices.empty())
            Fallar(u"a column behind the indexes"_s);

        jet::Columna c = LeerTipo(palabras[1].texto);
        c.nombre = nombre.toStdString();
        const QString defecto = conDefecto ? LeerLiteral(palabras[3]) : QString();
        if (c.tipo == Tipo::YesNo && !conDefecto)
            Fallar(u"Yes/No column %1 without a default: it would hold Null"_s.arg(nombre));
        tabla.columnas.push_back(std::move(c));
        tabla.porDefecto.append(defecto);
    }

    void AgregarIndice(const QList<Palabra> &palabras)
    {
        IndiceDeclarado indice;
        for (qsizetype i = 1; i < palabras.size(); ++i) {
            const Palabra &p = palabras[i];
            const bool suelta = p.clase == Palabra::Suelta;
            if (i == 1 && suelta && p.texto == "unique"_L1) {
                indice.unico = true;
            } else if (suelta && p.texto == "where"_L1) {
                if (indice.columnas.size() != 1 || i != palabras.size() - 2)
                    Fallar(u"expected: index COLUMN where VALUE"_s);
                indice.soloDonde = LeerLiteral(palabras[++i]);
            } else {
                const jet::Columna *c = BuscarColumna(p.texto);
                if (!c)
                    Fallar(u"index on %1, which is no column"_s.arg(p.texto));
                indice.columnas.append(QString::fromStdString(c->nombre));
            }
        }
        if (indice.columnas.isEmpty())
            Fallar(u"index without columns"_s);
        m_tablas.back().indices.push_back(std::move(indice));
    }

    const jet::Columna *BuscarColumna(const QString &nombre) const
    {
        for (const jet::Columna &c : m_tablas.back().columnas)
            if (QString::fromStdString(c.nombre).compare(nombre, Qt::CaseInsensitive) == 0)
                return &c;
        return nullptr;
    }

    jet::Columna LeerTipo(const QString &texto) const
    {
        jet::Columna c = LeerTipoDeclarado({}, texto.toStdString());
        if (texto == "COUNTER"_L1)
            c.tipo = Tipo::Counter;
        else if (TipoDeclarado(c) != texto.toStdString())
            Fallar(u"no type: %1"_s.arg(texto));
        return c;
    }

    QString LeerLiteral(const Palabra &p) const
    {
        static const QRegularExpression numero(u"^-?\\d+(\\.\\d+)?$"_s);
        if (p.clase == Palabra::Literal
            || (p.clase == Palabra::Suelta && numero.match(p.texto).hasMatch()))
            return p.texto;
        Fallar(u"no number and no text in quotes: %1"_s.arg(p.texto));
    }

    QStringList m_lineas;
    QString m_archivo;
    int m_numero = 0;
    std::vector<TablaDeclarada> m_tablas;
};

QString Entrecomillar(const QString &nombre)
{
    return u'"' + QString(nombre).replace(u'"', "\"\""_L1) + u'"';
}

QString DeclararColumna(const jet::Columna &c, const QString &defecto)
{
    const QString nombre = Entrecomillar(QString::fromStdString(c.nombre));
    QString sql = nombre + u' ' + QString::fromStdString(TipoDeclarado(c));
    if (c.tipo == Tipo::Counter)
        return sql + " PRIMARY KEY AUTOINCREMENT"_L1;
    if (!defecto.isEmpty())
        sql += " DEFAULT "_L1 + defecto;
    return sql;
}

QString DeclararIndice(const std::string &esquema, const TablaDeclarada &tabla,
                       const IndiceDeclarado &indice)
{
    // Text goes in by the engine's own rule for letter case, not by the dialect's: a file with
    // a rule that only this program knows could not be written by any other.
    QStringList columnas;
    for (const QString &nombre : indice.columnas) {
        const auto c =
            std::ranges::find(tabla.columnas, nombre.toStdString(), &jet::Columna::nombre);
        const bool texto = c->tipo == Tipo::Text || c->tipo == Tipo::Memo;
        columnas.append(Entrecomillar(nombre) + (texto ? " COLLATE NOCASE"_L1 : ""_L1));
    }
    const QString nombre = tabla.nombre + u'_' + indice.columnas.join(u'_');
    QString sql = u"CREATE %1INDEX %2.%3 ON %4 (%5)"_s.arg(
        indice.unico ? u"UNIQUE "_s : QString(), Entrecomillar(QString::fromStdString(esquema)),
        Entrecomillar(nombre), Entrecomillar(tabla.nombre), columnas.join(", "_L1));
    if (!indice.soloDonde.isEmpty())
        sql += u" WHERE %1 = %2"_s.arg(Entrecomillar(indice.columnas.front()), indice.soloDonde);
    return sql;
}

} // namespace

const QStringList &BasesDeDatos()
{
    static const QStringList bases{u"morvane"_s, u"clientes"_s, u"finanzas"_s, u"os"_s, u"rep97"_s};
    return bases;
}

QString ArchivoDe(const QString &base)
{
    return (base == "rep97"_L1 ? u"reportes/"_s : QString()) + base + ".mdb"_L1;
}

std::vector<TablaDeclarada> AnalizarEsquema(const QString &texto, const QString &archivo)
{
    return Lector(texto, archivo).Leer();
}

std::vector<TablaDeclarada> LeerEsquema(const QString &base)
{
    QFile archivo(u":/schema/%1.txt"_s.arg(base));
    if (!archivo.open(QIODevice::ReadOnly))
        throw std::runtime_error(u"no declaration of %1"_s.arg(base).toStdString());
    return AnalizarEsquema(QString::fromUtf8(archivo.readAll()), base + ".txt"_L1);
}

void CrearTablas(Motor &motor, const std::string &esquema,
                 const std::vector<TablaDeclarada> &tablas)
{
    for (const TablaDeclarada &tabla : tablas) {
        QStringList columnas;
        for (size_t i = 0; i < tabla.columnas.size(); ++i)
            columnas.append(DeclararColumna(tabla.columnas[i], tabla.porDefecto[qsizetype(i)]));
        const QString sql =
            u"CREATE TABLE %1.%2 (%3)"_s.arg(Entrecomillar(QString::fromStdString(esquema)),
                                             Entrecomillar(tabla.nombre), columnas.join(", "_L1));
        motor.Ejecutar(sql.toStdString());
        for (const IndiceDeclarado &indice : tabla.indices)
            motor.Ejecutar(DeclararIndice(esquema, tabla, indice).toStdString());
    }
}
