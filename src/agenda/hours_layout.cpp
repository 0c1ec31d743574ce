#include "agenda/hours_layout.h"

#include <algorithm>
#include <numeric>

using namespace agenda;

std::vector<Lane> agenda::setSideBySide(const std::vector<Section> &sections)
{
    std::vector<size_t> order(sections.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::ranges::stable_sort(
        order, [&](size_t a, size_t b) { return sections[a].from < sections[b].from; });

    std::vector<Lane> lanes(sections.size());
    std::vector<int> busy; // the minute until which each lane of the group is taken
    size_t group = 0;      // index in `order` where the group begins
    int end = 0;           // end of the whole group
    const auto close = [&](size_t until) {
        for (; group < until; ++group)
            lanes[order[group]].total = int(busy.size());
        busy.clear();
    };
    for (size_t i = 0; i < order.size(); ++i) {
        const Section &t = sections[order[i]];
        if (t.from >= end)
            close(i);
        auto free = std::ranges::find_if(busy, [&](int until) { return until <= t.from; });
        if (free == busy.end())
            free = busy.insert(free, 0);
        *free = t.until;
        lanes[order[i]].index = int(free - busy.begin());
        end = std::max(end, t.until);
    }
    close(order.size());
    return lanes;
}

int agenda::dayMinute(QTime hour) { return hour.msecsSinceStartOfDay() / 60'000; }

QTime agenda::toQuarter(int minutes)
{
    constexpr int quarter = 15, last = 24 * 60 - quarter;
    const int m = std::clamp((minutes + quarter / 2) / quarter * quarter, 0, last);
    return {m / 60, m % 60};
}
