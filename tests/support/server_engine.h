// An engine that behaves as a database server does, over the one that is built in.
#pragma once

#include "store/engine.h"

/// Records the texts that it gives out and forwards them, and is stricter where a server is: it
/// takes no other text, a statement that fails inside of a transaction breaks it until the part or
/// the whole is taken back, what was asked for in no order comes in another one each time, and
/// parts of a batch are always kept apart.
std::unique_ptr<Motor> createServerEngine(const QString &place);

/// Whether this run of the tests works on it: KELVARA_TEST_SERVER is set.
bool onServer();
