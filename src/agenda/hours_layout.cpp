#include "agenda/hours_layout.h"

#include <algorithm>
#include <numeric>

std::vector<Carril> PonerLadoALado(const std::vector<Tramo> &tramos)
{
    std::vector<size_t> orden(tramos.size());
    std::iota(orden.begin(), orden.end(), size_t(0));
    std::ranges::stable_sort(orden,
                             [&](size_t a, size_t b) { return tramos[a].desde < tramos[b].desde; });

    std::vector<Carril> carriles(tramos.size());
    std::vector<int> ocupado; // until when, of each lane of the group
    size_t grupo = 0;         // where in `orden` the group begins
    int fin = 0;              // of the whole group
    const auto cerrar = [&](size_t hasta) {
        for (; grupo < hasta; ++grupo)
            carriles[orden[grupo]].total = int(ocupado.size());
        ocupado.clear();
    };
    for (size_t i = 0; i < orden.size(); ++i) {
        const Tramo &t = tramos[orden[i]];
        if (t.desde >= fin)
            cerrar(i);
        auto libre = std::ranges::find_if(ocupado, [&](int hasta) { return hasta <= t.desde; });
        if (libre == ocupado.end())
            libre = ocupado.insert(libre, 0);
        *libre = t.hasta;
        carriles[orden[i]].indice = int(libre - ocupado.begin());
        fin = std::max(fin, t.hasta);
    }
    cerrar(orden.size());
    return carriles;
}

int MinutoDelDia(QTime hora) { return hora.msecsSinceStartOfDay() / 60'000; }

QTime AlCuarto(int minutos)
{
    constexpr int cuarto = 15, ultimo = 24 * 60 - cuarto;
    const int m = std::clamp((minutos + cuarto / 2) / cuarto * cuarto, 0, ultimo);
    return {m / 60, m % 60};
}
