#include "board/failures.h"

using namespace board;

std::vector<Failure> board::readFailures(Sesion &s)
{
    std::vector<Failure> failures;
    Recordset r = s.morvane->OpenSnapshot("select fec, num, des, fuente from errores");
    for (; !r.EOF_(); r.MoveNext())
        failures.push_back({r[0].toDate(), r[1].toInt(), r[2].toText(), r[3].toText()});
    // They are written one behind the other; those of one day have no other order.
    std::ranges::reverse(failures);
    std::ranges::stable_sort(failures, std::ranges::greater(), &Failure::day);
    return failures;
}

FailureCount board::countFailures(Sesion &s)
{
    const Recordset r = s.morvane->OpenSnapshot("select count(*), max(fec) from errores");
    return {r[0].toInt(), r[1].toDate()};
}

void board::clearFailures(Sesion &s) { s.morvane->Execute("delete * from errores"); }
