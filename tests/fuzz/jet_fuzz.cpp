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
Tables Schema()
{
    Tables tables;
    for (const char *database : {"clientes", "morvane"}) {
        std::ifstream lines(std::string(SCHEMAS) + "/" + database + ".txt");
        if (!lines)
            std::abort();
        tables.Read(lines);
    }
    return tables;
}

// A row in the tables that the seeds ask most.
Engine &Clinic()
{
    static Engine &engine = *[] {
        auto *e = new Engine(Schema());
        e->Exec("INSERT INTO Clientes (idc, ayn, obs, feci, deuda, obra) VALUES"
                "(57, 'Ruiz Ánã', x'30333431', '2024-02-29', -1, 3);"
                "INSERT INTO Mascotas (idm, idc, nom, fecn, pes, ser) VALUES"
                "(120, 57, 'Luna', '2019-05-10', 3.25, 0);"
                "INSERT INTO TareasAgenda (id, ida, dia, hor, tip, est) VALUES"
                "(4823, 120, '2024-03-05', '09:30:00', 41, 0)");
        return e;
    }();
    return engine;
}

void TryStatement(const std::string &text)
{
    jet::Traduccion t;
    try {
        t = jet::Traducir(text, Clinic().Catalog(), "main", text.size() % 2 == 0);
    } catch (const ErrorDeAlmacen &) {
        return;
    }
    if (t.clase == jet::Traduccion::Define)
        return;
    try {
        Clinic().Prepare(t.sql);
    } catch (const std::exception &e) {
        std::fprintf(stderr, "taken, but the engine does not compile it: %s\n", e.what());
        std::abort();
    }
    if (t.clase != jet::Traduccion::Consulta)
        return;
    try { // the functions of the engine, with whatever they are given
        Clinic().Rows(text, Given(size_t(t.valoresDados), "2024-03-05"));
    } catch (const std::runtime_error &) {
    }
}

void TryCriterion(std::string_view text)
{
    static const std::vector<jet::ColumnaDeSalida> columns{
        {"idc", "Clientes", "idc", Tipo::Smallint, 0},
        {"nom", "Mascotas", "nom", Tipo::Text, 50},
        {"fecn", "Mascotas", "fecn", Tipo::Date, 0},
        {"pes", "Mascotas", "pes", Tipo::Currency, 0},
        {"ser", "Mascotas", "ser", Tipo::YesNo, 0},
        {"ida", "Mascotas", "ida", Tipo::Long, 0}};
    static const std::vector<Valor> row{
        57, QStringLiteral("Ñandú"), QDate(2019, 5, 10), Moneda::Redondear(3.25), true, {}};
    try {
        const auto criterion = jet::Criterio::Compilar(text, columns);
        const std::vector<Valor> given{7, QStringLiteral("a*"), QDate(2024, 3, 5)};
        criterion->ComoIgualdad(given);
        criterion->Cumple([](int i) { return row.at(size_t(i)); }, given, QDate(2024, 3, 5));
    } catch (const ErrorDeAlmacen &) {
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    TryStatement(text);
    TryCriterion(text);
    return 0;
}
