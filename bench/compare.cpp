#include "compare.h"

#include "bare_clinic.h"

#include <QRegularExpression>
#include <algorithm>

namespace
{

struct Table {
    const char *name;
    const char *sql;
    bool inOrder;
};
constexpr Table Tables[] = {
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
    {"Configuracion",
     "SELECT contadorTareas, FechaUltimoInicio, FechaInicioAnterior FROM Configuracion", true},
    {"Pizarra", "SELECT dibujo, Codigo1, Codigo2 FROM Pizarra", true},
};

// The numbers in a text, in order.
QStringList numbersOf(const QString &t)
{
    static const QRegularExpression number(QStringLiteral("\\d+"));
    QStringList numbers;
    for (auto i = number.globalMatch(t); i.hasNext();)
        numbers << i.next().captured();
    return numbers;
}

} // namespace

QString difference(const QString &oneFolder, const QString &otherFolder)
{
    BareBase one(oneFolder), other(otherFolder);
    for (const Table &t : Tables) {
        QStringList a = one.allRows(t.sql), b = other.allRows(t.sql);
        if (!t.inOrder) {
            a.sort();
            b.sort();
        }
        const auto [i, j] = std::ranges::mismatch(a, b);
        if (i != a.end() || j != b.end())
            return QStringLiteral("%1 (%2 and %3 rows): %4 but %5")
                .arg(QLatin1StringView(t.name))
                .arg(a.size())
                .arg(b.size())
                .arg(i == a.end() ? QStringLiteral("no row") : *i,
                     j == b.end() ? QStringLiteral("no row") : *j);
    }
    const char *const texts = "SELECT mensaje FROM Pizarra";
    const QStringList a = one.allRows(texts), b = other.allRows(texts);
    for (qsizetype i = 0; i < a.size(); ++i) {
        const QStringList n = numbersOf(b[i]);
        if (numbersOf(a[i]).mid(0, n.size()) != n)
            return QStringLiteral("Pizarra: %1 but %2").arg(a[i], b[i]);
    }
    return {};
}
