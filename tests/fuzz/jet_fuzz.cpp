// Feeds bytes to the dialect. Whatever they are, it answers or refuses; and what it takes, the
// engine must take too.
#include "store/jet/criterion.h"
#include "store/jet_engine.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

using namespace jet_test;

namespace
{
Tables schema()
{
    Tables tables;
    for (const char *database : {"clientes", "morvane"}) {
        std::ifstream lines(std::string(SCHEMAS) + "/" + database + ".txt");
        if (!lines)
            std::abort();
        tables.read(lines);
    }
    return tables;
}

// A row in the tables that the seeds ask most.
Engine &clinic()
{
    static Engine &engine = *[] {
        auto *e = new Engine(schema());
        e->exec("INSERT INTO Clientes (idc, ayn, obs, feci, deuda, obra) VALUES"
                "(57, 'Ruiz Ánã', x'30333431', '2024-02-29', -1, 3);"
                "INSERT INTO Mascotas (idm, idc, nom, fecn, pes, ser) VALUES"
                "(120, 57, 'Luna', '2019-05-10', 3.25, 0);"
                "INSERT INTO TareasAgenda (id, ida, dia, hor, tip, est) VALUES"
                "(4823, 120, '2024-03-05', '09:30:00', 41, 0)");
        return e;
    }();
    return engine;
}

void tryStatement(const std::string &text)
{
    jet::Translation t;
    try {
        t = sqlcipher::translate(text, clinic().catalog(), "main", text.size() % 2 == 0);
    } catch (const store::StoreError &) {
        return;
    }
    if (t.kind == jet::Translation::Define)
        return;
    try {
        clinic().prepare(t.sql);
    } catch (const std::exception &e) {
        std::fprintf(stderr, "taken, but the engine does not compile it: %s\n", e.what());
        std::abort();
    }
    if (t.kind != jet::Translation::Query)
        return;
    try { // the functions of the engine, with whatever they are given
        clinic().rows(text, Given(size_t(t.valueCount), "2024-03-05"));
    } catch (const std::runtime_error &) {
    }
}

void tryCriterion(std::string_view text)
{
    static const std::vector<jet::OutputColumn> columns{
        {"idc", "Clientes", "idc", store::ColumnType::Smallint, 0},
        {"nom", "Mascotas", "nom", store::ColumnType::Text, 50},
        {"fecn", "Mascotas", "fecn", store::ColumnType::Date, 0},
        {"pes", "Mascotas", "pes", store::ColumnType::Currency, 0},
        {"ser", "Mascotas", "ser", store::ColumnType::YesNo, 0},
        {"ida", "Mascotas", "ida", store::ColumnType::Long, 0}};
    static const std::vector<store::Value> row{
        57, QStringLiteral("Ñandú"), QDate(2019, 5, 10), Moneda::round(3.25), true, {}};
    try {
        const auto criterion = jet::Criterion::compile(text, columns);
        const std::vector<store::Value> given{7, QStringLiteral("a*"), QDate(2024, 3, 5)};
        criterion->asEquality(given);
        criterion->meets([](int i) { return row.at(size_t(i)); }, given, QDate(2024, 3, 5));
    } catch (const store::StoreError &) {
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    tryStatement(text);
    tryCriterion(text);
    return 0;
}
