// Measures the store and the daily pass on a full clinic against the bare engine doing the same in
// the same run, and prints one table: ratios and what they are held to.

#include "bare_clinic.h"
#include "compare.h"
#include "full_clinic.h"
#include "table.h"

#include "startup/daily_automation.h"
#include "store/data_folder.h"
#include "store/lookups.h"
#include "store/schema.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <functional>
#include <map>
#include <stdexcept>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

QString Exceso(double ns) { return (ns < 0 ? QString() : u"+"_s) + Numero(ns, 0) + " ns"_L1; }

// The folder of the full clinic and copies of it to work on.
struct Taller {
    QString modelo;
    QDate hoy;
    int corridas;
    QString programas; // where the other programs of the measures are
    QTemporaryDir obra;

    QString Copia(const QString &nombre, int cerrado) const
    {
        const QString carpeta = obra.filePath(nombre);
        QDir(carpeta).removeRecursively();
        QDir().mkpath(carpeta + "/reportes"_L1);
        for (const QString &base : BasesDeDatos())
            if (!QFile::copy(modelo + u'/' + ArchivoDe(base), carpeta + u'/' + ArchivoDe(base)))
                throw std::runtime_error("cannot copy " + modelo.toStdString());
        BaseDesnuda base(carpeta);
        base.valores[":dia"] = hoy.addDays(-cerrado).toString(Qt::ISODate).toStdString();
        base.Correr("UPDATE Configuracion SET FechaUltimoInicio = :dia");
        sync(); // what the copying left to write shall not fall into a measure
        return carpeta;
    }
};

// --- The daily pass --------------------------------------------------------------------------

void MedirPase(const Taller &taller, int cerrado)
{
    const Textos textos(Idioma::Espanol);
    std::vector<double> nuestros, desnudos, razones;
    for (int i = 0; i < taller.corridas; ++i) {
        const QString a = taller.Copia(u"a"_s, cerrado), b = taller.Copia(u"b"_s, cerrado);
        const auto nuestro = [&] {
            SesionDeMedida medida(a, taller.hoy);
            nuestros.push_back(Milisegundos([&] { IniciarTareas(medida.s); }));
        };
        const auto desnudo = [&] {
            PaseDesnudo pase(b, taller.hoy, textos);
            desnudos.push_back(Milisegundos([&] { pase.Correr(); }));
        };
        // In turns, so that neither always finds the machine as the other has left it.
        if (i % 2 == 0) {
            nuestro();
            desnudo();
        } else {
            desnudo();
            nuestro();
        }
        razones.push_back(nuestros.back() / desnudos.back());
        if (const QString d = Diferencia(a, b); !d.isEmpty())
            throw std::runtime_error("the two passes differ: " + d.toStdString());
    }
    Linea(u"daily pass, closed %1 day(s) (ms)"_s.arg(cerrado), Numero(Mediana(nuestros), 1),
          Numero(Mediana(desnudos), 1), Numero(Mediana(razones)), u"at most 1.5"_s);
}

// --- Look-ups and statements -----------------------------------------------------------------

// Keeps the medians and prints nothing by itself.
class Medianas : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context &) override { return true; }
    void ReportRuns(const std::vector<Run> &corridas) override
    {
        for (const Run &r : corridas)
            if (r.aggregate_name == "median")
                ns[r.run_name.function_name] = r.GetAdjustedRealTime();
    }
    std::map<std::string, double> ns;
};

// Patients in an order that no cache foresees.
struct Pacientes {
    quint32 n = 1;
    int Siguiente()
    {
        n = n * 1664525u + 1013904223u;
        return 1 + int((n >> 8) % 32767u);
    }
};

// A prepared statement of the bare engine with one number to bind.
struct Preparada {
    sqlite3_stmt *st;
    Preparada(BaseDesnuda &base, const char *sql) : st(base.Preparar(sql)) {}
    ~Preparada() { sqlite3_finalize(st); }
    Preparada(const Preparada &) = delete;
    Preparada &operator=(const Preparada &) = delete;

    template <typename F>
    void Correr(int valor, F &&celda)
    {
        sqlite3_bind_int(st, 1, valor);
        while (sqlite3_step(st) == SQLITE_ROW)
            celda();
        sqlite3_reset(st);
    }
};

void MedirAlmacen(const Taller &taller)
{
    SesionDeMedida medida(taller.Copia(u"a"_s, 0), taller.hoy);
    Sesion &s = medida.s;
    BaseDesnuda base(taller.Copia(u"b"_s, 0));
    Preparada nombre(base, "SELECT nom FROM clientes.Mascotas WHERE idm = ?");
    Preparada perfil(base, "SELECT buenascompras FROM Perfiles WHERE idc = ?");
    Preparada cambio(base, "UPDATE Perfiles SET buenascompras = 0 WHERE idc = ?");
    Pacientes azar;
    const auto registrar = [&taller](const char *que, std::function<void(benchmark::State &)> f) {
        benchmark::RegisterBenchmark(que, std::move(f))->Repetitions(taller.corridas)->MinTime(0.1);
    };
    registrar("LeerCampo", [&](benchmark::State &st) {
        s.listas.mascotas.RecordCount(); // the list is read
        for (auto _ : st)
            benchmark::DoNotOptimize(LeerCampo(s, "clientes", "mascotas", azar.Siguiente(), "nom"));
    });
    registrar("point", [&](benchmark::State &st) {
        for (auto _ : st)
            nombre.Correr(azar.Siguiente(), [&] {
                benchmark::DoNotOptimize(sqlite3_column_text(nombre.st, 0));
                benchmark::DoNotOptimize(sqlite3_column_bytes(nombre.st, 0));
            });
    });
    // Inside a batch on both sides, so that the statement is measured and not the file's locks.
    const auto enLote = [&](auto f) {
        return [&, f](benchmark::State &st) {
            const Lote lote(s);
            for (auto _ : st)
                f(azar.Siguiente());
        };
    };
    const auto enTransaccion = [&](auto f) {
        return [&, f](benchmark::State &st) {
            base.Correr("BEGIN IMMEDIATE");
            for (auto _ : st)
                f(azar.Siguiente());
            base.Correr("ROLLBACK");
        };
    };
    registrar("point in a batch", enTransaccion([&](int n) {
                  nombre.Correr(n, [&] {
                      benchmark::DoNotOptimize(sqlite3_column_text(nombre.st, 0));
                      benchmark::DoNotOptimize(sqlite3_column_bytes(nombre.st, 0));
                  });
              }));
    registrar("Leer", enLote([&](int n) {
                  benchmark::DoNotOptimize(
                      s.morvane->Leer("select buenascompras from perfiles where idc = ?", n));
              }));
    registrar("Leer bare", enTransaccion([&](int n) {
                  perfil.Correr(
                      n, [&] { benchmark::DoNotOptimize(sqlite3_column_int64(perfil.st, 0)); });
              }));
    // Rows that are not there: what is left is the statement itself.
    registrar("Execute", enLote([&](int n) {
                  s.morvane->Execute("update perfiles set buenascompras = 0 where idc = ?", -n);
              }));
    registrar("Execute bare", enTransaccion([&](int n) { cambio.Correr(-n, [] {}); }));

    std::string programa = "kelvara_bench", mezclar = "--benchmark_enable_random_interleaving=true";
    char *argv[] = {programa.data(), mezclar.data(), nullptr};
    int argc = 2;
    benchmark::Initialize(&argc, argv);
    Medianas m;
    benchmark::RunSpecifiedBenchmarks(&m);
    benchmark::ClearRegisteredBenchmarks();

    const auto razon = [&](const QString &que, const char *nuestro, const char *desnudo) {
        Linea(que, Numero(m.ns[nuestro], 0), Numero(m.ns[desnudo], 0),
              Numero(m.ns[nuestro] / m.ns[desnudo], 3), u"at most 0.1"_s);
    };
    const auto exceso = [&](const QString &que, const char *nuestro, const char *desnudo) {
        Linea(que, Numero(m.ns[nuestro], 0), Numero(m.ns[desnudo], 0),
              Exceso(m.ns[nuestro] - m.ns[desnudo]), u"under +1000 ns"_s);
    };
    razon(u"LeerCampo : point query (ns)"_s, "LeerCampo", "point");
    razon(u"LeerCampo : point query inside a batch (ns)"_s, "LeerCampo", "point in a batch");
    exceso(u"cached statement that reads (ns)"_s, "Leer", "Leer bare");
    exceso(u"cached statement that writes (ns)"_s, "Execute", "Execute bare");
}

// --- Starting --------------------------------------------------------------------------------

void MedirInicio(const Taller &taller)
{
    const auto correr = [&taller](const QString &carpeta, const QStringList &mas) {
        QProcess p;
        p.start(taller.programas + "/bench_start"_L1,
                QStringList{carpeta, taller.hoy.toString(Qt::ISODate)} + mas);
        if (!p.waitForFinished(-1) || p.exitCode() != 0)
            throw std::runtime_error(p.readAllStandardError().toStdString());
        return QString::fromUtf8(p.readAllStandardOutput()).split(u' ');
    };
    std::vector<double> ms, memoria, memoriaConPase;
    for (int i = 0; i < taller.corridas; ++i) {
        const QString a = taller.Copia(u"a"_s, 1);
        memoriaConPase.push_back(correr(a, {u"--pass"_s}).at(2).toDouble());
        QStringList salida;
        ms.push_back(Milisegundos([&] { salida = correr(a, {}); }));
        memoria.push_back(salida.at(2).toDouble());
    }
    Linea(u"start to board, a process of its own (ms)"_s, Numero(Mediana(ms), 0), u"-"_s, u"-"_s,
          u"under 1000"_s);
    Linea(u"highest memory, start to board (MB)"_s, Numero(Mediana(memoria), 0), u"-"_s, u"-"_s,
          u"under 250"_s);
    Linea(u"highest memory, start with the pass (MB)"_s, Numero(Mediana(memoriaConPase), 0), u"-"_s,
          u"-"_s, u"under 250"_s);
}

// --- The registry ----------------------------------------------------------------------------

// In a program of its own: it has windows, which are painted where nobody sees them.
void MedirRegistro(const Taller &taller)
{
    QProcess p;
    QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
    entorno.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    p.setProcessEnvironment(entorno);
    p.setProcessChannelMode(QProcess::ForwardedOutputChannel);
    p.start(taller.programas + "/bench_registry"_L1,
            {taller.Copia(u"a"_s, 0), taller.hoy.toString(Qt::ISODate),
             QString::number(taller.corridas)});
    if (!p.waitForFinished(-1) || p.exitCode() != 0)
        throw std::runtime_error(p.readAllStandardError().toStdString());
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    QCommandLineParser p;
    p.setApplicationDescription(u"Measures on a folder made by kelvara_full_clinic."_s);
    p.addHelpOption();
    p.addPositionalArgument(u"DIR"_s, u"The full clinic; it is copied, not changed."_s);
    p.addOption({u"day"_s, u"The morning that the clinic waits for."_s, u"YYYY-MM-DD"_s});
    p.addOption({u"runs"_s, u"Repetitions of every measure."_s, u"N"_s, u"7"_s});
    p.addOption({u"only"_s, u"pass, store, start or registry."_s, u"PART"_s});
    p.process(app);
    const QString parte = p.value(u"only"_s);
    const Taller taller{.modelo = p.positionalArguments().value(0),
                        .hoy = QDate::fromString(p.value(u"day"_s), Qt::ISODate),
                        .corridas = std::max(1, p.value(u"runs"_s).toInt()),
                        .programas = QCoreApplication::applicationDirPath(),
                        .obra = QTemporaryDir(p.positionalArguments().value(0) + "-XXXXXX"_L1)};
    if (taller.modelo.isEmpty() || !taller.hoy.isValid()) {
        QTextStream(stderr) << p.helpText();
        return 1;
    }
    try {
        Linea({}, u"Kelvara"_s, u"bare"_s, u"measured"_s, u"target"_s);
        if (parte.isEmpty() || parte == "pass"_L1)
            for (const int cerrado : {1, 3})
                MedirPase(taller, cerrado);
        if (parte.isEmpty() || parte == "store"_L1)
            MedirAlmacen(taller);
        if (parte.isEmpty() || parte == "start"_L1)
            MedirInicio(taller);
        if (parte.isEmpty() || parte == "registry"_L1)
            MedirRegistro(taller);
    } catch (const std::exception &e) {
        QTextStream(stderr) << e.what() << '\n';
        return 1;
    }
    return 0;
}
