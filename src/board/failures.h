// The failures that the program has noted, in the table `errores`.
#pragma once

#include "store/session.h"

namespace board
{

struct Failure {
    QDate day;
    int number = 0;
    QString description;
    QString source; // the routine that failed
};

/// All of them, the latest first. @throws StoreError
std::vector<Failure> readFailures(Sesion &s);

/// How many there are, and the day of the last one; invalid where there is none.
struct FailureCount {
    int count = 0;
    QDate last;
};
/// @throws StoreError
FailureCount countFailures(Sesion &s);

/// Deletes them all. @throws StoreError
void clearFailures(Sesion &s);

} // namespace board
