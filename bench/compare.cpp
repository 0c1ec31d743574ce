#include "compare.h"

#include "bare_clinic.h"

#include <QRegularExpression>
#include <algorithm>

namespace
{

struct Tabla {
    const char *nombre;
    const char *sql;
    bool enOrden;
};
constexpr Tabla Tablas[] = {
    {"Consumo", "SELECT rowid, * FROM clientes.Consumo", true},
    {"TareasAgenda",
     "SELECT tip, ida, dia, hor, ala, est, medio, fcreacion, fmedio, frealizacion, artaux, des "
     "FROM TareasAgenda",
     false},
    {"task ids", "SELECT count(DISTINCT id), max(id) FROM TareasAgenda", true},
    {"CtaCteC", "SELECT rowid, * FROM finanzas.CtaCteC", true},
    {"Perfiles", "SELECT rowid, * FROM Perfiles", true},
    {"Mascotas", "SELECT rowid, * FROM clientes.Mascotas", true},
    {"MHospedaje", "SELECT * FROM clientes.MHospedaje", true},
    {"FichasVisitadas", "SELECT * FROM clientes.FichasVisitadas", true},
    {"auxrevacunacion", "SELECT mas, vac, pro, dir, tel, dos FROM rep97.auxrevacunacion", false},
    {"Configuracion",
     "SELECT contadorTareas, FechaUltimoInicio, FechaInicioAnterior FROM Configuracion", true},
    {"Pizarra", "SELECT dibujo, Codigo1, Codigo2 FROM Pizarra", true},
};

QStringList Filas(BaseDesnuda &base, const char *sql)
{
    QStringList filas;
    sqlite3_stmt *st = base.Preparar(sql);
    while (sqlite3_step(st) == SQLITE_ROW) {
        QString fila;
        for (int c = 0; c < sqlite3_column_count(st); ++c) {
            const auto *t = reinterpret_cast<const char *>(sqlite3_column_text(st, c));
            fila += (t ? QString::fromUtf8(t) : QStringLiteral("NULL")) + u'|';
        }
        filas << fila;
    }
    sqlite3_finalize(st);
    return filas;
}

// The numbers in a text, one behind the other.
QStringList Numeros(const QString &t)
{
    static const QRegularExpression numero(QStringLiteral("\\d+"));
    QStringList numeros;
    for (auto i = numero.globalMatch(t); i.hasNext();)
        numeros << i.next().captured();
    return numeros;
}

} // namespace

QString Diferencia(const QString &unaCarpeta, const QString &otraCarpeta)
{
    BaseDesnuda una(unaCarpeta), otra(otraCarpeta);
    una.Adjuntar(unaCarpeta + QStringLiteral("/reportes/rep97.mdb"), "rep97", 4096);
    otra.Adjuntar(otraCarpeta + QStringLiteral("/reportes/rep97.mdb"), "rep97", 4096);
    for (const Tabla &t : Tablas) {
        QStringList a = Filas(una, t.sql), b = Filas(otra, t.sql);
        if (!t.enOrden) {
            a.sort();
            b.sort();
        }
        const auto [i, j] = std::ranges::mismatch(a, b);
        if (i != a.end() || j != b.end())
            return QStringLiteral("%1 (%2 and %3 rows): %4 but %5")
                .arg(QLatin1StringView(t.nombre))
                .arg(a.size())
                .arg(b.size())
                .arg(i == a.end() ? QStringLiteral("no row") : *i,
                     j == b.end() ? QStringLiteral("no row") : *j);
    }
    const char *const textos = "SELECT mensaje FROM Pizarra";
    const QStringList a = Filas(una, textos), b = Filas(otra, textos);
    for (qsizetype i = 0; i < a.size(); ++i) {
        const QStringList n = Numeros(b[i]);
        if (Numeros(a[i]).mid(0, n.size()) != n)
            return QStringLiteral("Pizarra: %1 but %2").arg(a[i], b[i]);
    }
    return {};
}
