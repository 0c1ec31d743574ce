// Measures the store and the daily pass on a full clinic against the bare engine doing the same
// work, and prints one table of ratios and their targets.

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

QString excessOf(double ns) { return (ns < 0 ? QString() : u"+"_s) + numberOf(ns, 0) + " ns"_L1; }

// The folder of the full clinic, and copies of it to work on.
struct Workshop {
    QString model;
    QDate hoy;
    int runs;
    QString programs; // folder of the other benchmark programs
    QTemporaryDir obra;

    QString copyOf(const QString &name, int closed) const
    {
        const QString folder = obra.filePath(name);
        QDir(folder).removeRecursively();
        QDir().mkpath(folder + "/reportes"_L1);
        for (const QString &base : store::databases())
            if (!QFile::copy(model + u'/' + store::fileOf(base),
                             folder + u'/' + store::fileOf(base)))
                throw std::runtime_error("cannot copy " + model.toStdString());
        BareBase base(folder);
        base.values[":dia"] = hoy.addDays(-closed).toString(Qt::ISODate).toStdString();
        base.run("UPDATE Configuracion SET FechaUltimoInicio = :dia");
        sync(); // pending writes of the copy must not distort a measurement
        return folder;
    }
};

// --- The daily pass --------------------------------------------------------------------------

void measurePass(const Workshop &workshop, int closed)
{
    const store::Texts texts(store::Language::Spanish);
    std::vector<double> ourTimes, bareTimes, ratios;
    for (int i = 0; i < workshop.runs; ++i) {
        const QString a = workshop.copyOf(u"a"_s, closed), b = workshop.copyOf(u"b"_s, closed);
        QStringList ourMissed, bareMissed;
        const auto our = [&] {
            MeasureSession measure(a, workshop.hoy);
            ourTimes.push_back(milliseconds([&] { IniciarTareas(measure.s); }));
            for (Recordset r = measure.s.rep97->OpenSnapshot("select * from auxrevacunacion");
                 !r.EOF_(); r.MoveNext()) {
                QString row;
                for (const char *column : {"mas", "vac", "pro", "dir", "tel", "dos"})
                    row += r[column].toText() + u'|';
                ourMissed << row;
            }
        };
        const auto bare = [&] {
            BarePass pass(b, workshop.hoy, texts);
            bareTimes.push_back(milliseconds([&] { pass.run(); }));
            bareMissed = pass.missed();
        };
        // In alternation, so that neither always finds the machine as the other left it.
        if (i % 2 == 0) {
            our();
            bare();
        } else {
            bare();
            our();
        }
        ratios.push_back(ourTimes.back() / bareTimes.back());
        ourMissed.sort();
        bareMissed.sort();
        if (ourMissed != bareMissed)
            throw std::runtime_error("the lists of missed doses differ");
        if (const QString d = difference(a, b); !d.isEmpty())
            throw std::runtime_error("the two passes differ: " + d.toStdString());
    }
    line(u"daily pass, closed %1 day(s) (ms)"_s.arg(closed), numberOf(median(ourTimes), 1),
         numberOf(median(bareTimes), 1), numberOf(median(ratios)), u"at most 1.5"_s);
}

// --- Look-ups and statements -----------------------------------------------------------------

// Collects the medians and prints nothing.
class Medians : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context &) override { return true; }
    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &r : runs)
            if (r.aggregate_name == "median")
                ns[r.run_name.function_name] = r.GetAdjustedRealTime();
    }
    std::map<std::string, double> ns;
};

// Patients in an order that defeats caches.
struct Patients {
    quint32 n = 1;
    int nextOne()
    {
        n = n * 1664525u + 1013904223u;
        return 1 + int((n >> 8) % 32767u);
    }
};

// A prepared statement of the bare engine with one number to bind.
struct Prepared {
    sqlite3_stmt *st;
    Prepared(BareBase &base, const char *sql) : st(base.prepare(sql)) {}
    ~Prepared() { sqlite3_finalize(st); }
    Prepared(const Prepared &) = delete;
    Prepared &operator=(const Prepared &) = delete;

    template <typename F>
    void run(int value, F &&cell)
    {
        sqlite3_bind_int(st, 1, value);
        while (sqlite3_step(st) == SQLITE_ROW)
            cell();
        sqlite3_reset(st);
    }
};

void measureStore(const Workshop &workshop)
{
    MeasureSession measure(workshop.copyOf(u"a"_s, 0), workshop.hoy);
    Sesion &s = measure.s;
    BareBase base(workshop.copyOf(u"b"_s, 0));
    Prepared name(base, "SELECT nom FROM clientes.Mascotas WHERE idm = ?");
    Prepared profile(base, "SELECT buenascompras FROM Perfiles WHERE idc = ?");
    Prepared change(base, "UPDATE Perfiles SET buenascompras = 0 WHERE idc = ?");
    Patients chance;
    const auto enrol = [&workshop](const char *what, std::function<void(benchmark::State &)> f) {
        benchmark::RegisterBenchmark(what, std::move(f))->Repetitions(workshop.runs)->MinTime(0.1);
    };
    enrol("LeerCampo", [&](benchmark::State &st) {
        s.lists.mascotas.RecordCount(); // loads the list
        for (auto _ : st)
            benchmark::DoNotOptimize(LeerCampo(s, "clientes", "mascotas", chance.nextOne(), "nom"));
    });
    enrol("point", [&](benchmark::State &st) {
        for (auto _ : st)
            name.run(chance.nextOne(), [&] {
                benchmark::DoNotOptimize(sqlite3_column_text(name.st, 0));
                benchmark::DoNotOptimize(sqlite3_column_bytes(name.st, 0));
            });
    });
    // Inside a batch on both sides, to measure the statement and not the file locks.
    const auto inBatch = [&](auto f) {
        return [&, f](benchmark::State &st) {
            const Lote lote(s);
            for (auto _ : st)
                f(chance.nextOne());
        };
    };
    const auto inTransaction = [&](auto f) {
        return [&, f](benchmark::State &st) {
            base.run("BEGIN IMMEDIATE");
            for (auto _ : st)
                f(chance.nextOne());
            base.run("ROLLBACK");
        };
    };
    enrol("point in a batch", inTransaction([&](int n) {
              name.run(n, [&] {
                  benchmark::DoNotOptimize(sqlite3_column_text(name.st, 0));
                  benchmark::DoNotOptimize(sqlite3_column_bytes(name.st, 0));
              });
          }));
    enrol("Leer", inBatch([&](int n) {
              benchmark::DoNotOptimize(
                  s.morvane->read("select buenascompras from perfiles where idc = ?", n));
          }));
    enrol("Leer bare", inTransaction([&](int n) {
              profile.run(n,
                          [&] { benchmark::DoNotOptimize(sqlite3_column_int64(profile.st, 0)); });
          }));
    // Rows that do not exist, which leaves only the statement itself.
    enrol("Execute", inBatch([&](int n) {
              s.morvane->Execute("update perfiles set buenascompras = 0 where idc = ?", -n);
          }));
    enrol("Execute bare", inTransaction([&](int n) { change.run(-n, [] {}); }));

    // A thousand rows at a time through a recordset, in one batch.
    constexpr int altas = 1000;
    enrol("AddNew", [&](benchmark::State &st) {
        for (auto _ : st) {
            const Lote lote(s);
            Recordset r = s.morvane->OpenRecordset("select * from perfiles where idc < 0");
            for (int i = 0; i < altas; ++i) {
                r.AddNew();
                r.Put("idc", -1 - i);
                r.Put("buenascompras", i);
                r.Update();
            }
        }
    });
    Prepared addition(base, "INSERT INTO Perfiles (idc, buenascompras) VALUES (?, 7)");
    enrol("AddNew bare", [&](benchmark::State &st) {
        for (auto _ : st) {
            base.run("BEGIN IMMEDIATE");
            for (int i = 0; i < altas; ++i)
                addition.run(-1 - i, [] {});
            base.run("ROLLBACK");
        }
    });

    std::string program = "kelvara_bench", mix = "--benchmark_enable_random_interleaving=true";
    char *argv[] = {program.data(), mix.data(), nullptr};
    int argc = 2;
    benchmark::Initialize(&argc, argv);
    Medians m;
    benchmark::RunSpecifiedBenchmarks(&m);
    benchmark::ClearRegisteredBenchmarks();

    const auto reason = [&](const QString &what, const char *our, const char *bare) {
        line(what, numberOf(m.ns[our], 0), numberOf(m.ns[bare], 0),
             numberOf(m.ns[our] / m.ns[bare], 3), u"at most 0.1"_s);
    };
    const auto excess = [&](const QString &what, const char *our, const char *bare) {
        line(what, numberOf(m.ns[our], 0), numberOf(m.ns[bare], 0),
             excessOf(m.ns[our] - m.ns[bare]), u"under +1000 ns"_s);
    };
    reason(u"LeerCampo : point query (ns)"_s, "LeerCampo", "point");
    reason(u"LeerCampo : point query inside a batch (ns)"_s, "LeerCampo", "point in a batch");
    excess(u"cached statement that reads (ns)"_s, "Leer", "Leer bare");
    excess(u"cached statement that writes (ns)"_s, "Execute", "Execute bare");
    line(u"1,000 rows added by AddNew (us)"_s, numberOf(m.ns["AddNew"] / 1000, 0),
         numberOf(m.ns["AddNew bare"] / 1000, 0), numberOf(m.ns["AddNew"] / m.ns["AddNew bare"]),
         u"at most 3"_s);
}

// --- Starting --------------------------------------------------------------------------------

void measureStart(const Workshop &workshop)
{
    const auto run = [&workshop](const QString &folder, const QStringList &mas) {
        QProcess p;
        p.start(workshop.programs + "/bench_start"_L1,
                QStringList{folder, workshop.hoy.toString(Qt::ISODate)} + mas);
        if (!p.waitForFinished(-1) || p.exitCode() != 0)
            throw std::runtime_error(p.readAllStandardError().toStdString());
        return QString::fromUtf8(p.readAllStandardOutput()).split(u' ');
    };
    std::vector<double> ms, memory, memoryWithPass;
    for (int i = 0; i < workshop.runs; ++i) {
        const QString a = workshop.copyOf(u"a"_s, 1);
        memoryWithPass.push_back(run(a, {u"--pass"_s}).at(2).toDouble());
        QStringList exit;
        ms.push_back(milliseconds([&] { exit = run(a, {}); }));
        memory.push_back(exit.at(2).toDouble());
    }
    line(u"start to board, a process of its own (ms)"_s, numberOf(median(ms), 0), u"-"_s, u"-"_s,
         u"under 1000"_s);
    line(u"highest memory, start to board (MB)"_s, numberOf(median(memory), 0), u"-"_s, u"-"_s,
         u"under 250"_s);
    const QStringList walk = run(workshop.copyOf(u"a"_s, 0), {u"--walk"_s});
    line(u"walk over %1 lines of sales (ms)"_s.arg(walk.at(1)), walk.at(0), u"-"_s, u"-"_s, u"-"_s);
    line(u"highest memory, that walk (MB)"_s, numberOf(walk.at(2).toDouble(), 0), u"-"_s, u"-"_s,
         u"under 60"_s);
    line(u"highest memory, start with the pass (MB)"_s, numberOf(median(memoryWithPass), 0), u"-"_s,
         u"-"_s, u"under 250"_s);
}

// --- The registry ----------------------------------------------------------------------------

// In a program of its own, because it has windows, which are rendered off screen.
void measureRegistry(const Workshop &workshop)
{
    QProcess p;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    p.setProcessEnvironment(environment);
    p.setProcessChannelMode(QProcess::ForwardedOutputChannel);
    p.start(workshop.programs + "/bench_registry"_L1,
            {workshop.copyOf(u"a"_s, 0), workshop.hoy.toString(Qt::ISODate),
             QString::number(workshop.runs)});
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
    const QString part = p.value(u"only"_s);
    const Workshop workshop{.model = p.positionalArguments().value(0),
                            .hoy = QDate::fromString(p.value(u"day"_s), Qt::ISODate),
                            .runs = std::max(1, p.value(u"runs"_s).toInt()),
                            .programs = QCoreApplication::applicationDirPath(),
                            .obra = QTemporaryDir(p.positionalArguments().value(0) + "-XXXXXX"_L1)};
    if (workshop.model.isEmpty() || !workshop.hoy.isValid()) {
        QTextStream(stderr) << p.helpText();
        return 1;
    }
    try {
        line({}, u"Kelvara"_s, u"bare"_s, u"measured"_s, u"target"_s);
        if (part.isEmpty() || part == "pass"_L1)
            for (const int closed : {1, 3})
                measurePass(workshop, closed);
        if (part.isEmpty() || part == "store"_L1)
            measureStore(workshop);
        if (part.isEmpty() || part == "start"_L1)
            measureStart(workshop);
        if (part.isEmpty() || part == "registry"_L1)
            measureRegistry(workshop);
    } catch (const std::exception &e) {
        QTextStream(stderr) << e.what() << '\n';
        return 1;
    }
    return 0;
}
