// A terminal that repeatedly takes one unit of a random product from stock:
// stock_writer FOLDER PRODUCTS TIMES SEED. Prints how often another terminal was quicker.

#include "store/database.h"

#include <QString>
#include <cstdio>
#include <random>

using namespace store;

int main(int argc, char **argv)
try {
    if (argc != 5)
        return 2;
    const auto engine = createFileEngine(QString::fromLocal8Bit(argv[1]));
    engine->open("finanzas");
    const Reloj clock;
    Base base(*engine, "finanzas", clock);
    std::mt19937 random(unsigned(std::stoi(argv[4])));
    Recordset r = base.OpenRecordset("select ida, can from Articulos order by ida");
    int conflicts = 0;
    for (int i = 0; i < std::stoi(argv[3]); ++i) {
        r.AbsolutePosition(int(random() % unsigned(std::stoi(argv[2]))));
        for (bool written = false; !written;) {
            r.Edit();
            r.Put("can", r["can"].toMoneda() - Moneda::whole(1));
            try {
                r.Update();
                written = true;
            } catch (const StoreError &e) {
                if (e.number != ErrorNumber::Conflict)
                    throw;
                ++conflicts;
            }
        }
    }
    std::printf("%d\n", conflicts);
    return 0;
} catch (const std::exception &e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 1;
}
