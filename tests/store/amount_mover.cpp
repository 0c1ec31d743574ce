// A terminal that moves amounts between two databases until it is killed. Each move is one batch,
// which keeps their sum: amount_mover FOLDER SEED.

#include "store/batch.h"
#include "store/database.h"

#include <cstdio>
#include <random>

using namespace store;

int main(int argc, char **argv)
try {
    if (argc != 3)
        return 2;
    const auto engine = createFileEngine(QString::fromLocal8Bit(argv[1]));
    for (const char *base : {"morvane", "clientes", "finanzas", "os"})
        engine->open(base);
    const Reloj clock;
    Base finanzas(*engine, "finanzas", clock);
    Base morvane(*engine, "morvane", clock);
    std::mt19937 random(unsigned(std::stoi(argv[2])));
    for (;;) {
        const int row = int(random() % 50) + 1, amount = int(random() % 9) + 1;
        Lote batch(*engine);
        finanzas.Execute("update Articulos set can = can - ? where ida = ?", amount, 9000 + row);
        morvane.Execute("update Perfiles set buenascompras = buenascompras + ? where idc = ?",
                        amount, row);
        batch.commit();
    }
} catch (const std::exception &e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 1;
}
