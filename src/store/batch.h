// Lote: the writes of one pass or one registration as one commit, over all databases; and steps
// that may fail by themselves.
#pragma once

#include "store/errors.h"

#include <optional>

class Motor;
struct Sesion;

/// Groups writes into one commit. Without commit they are rolled back at the end of the scope.
/// A Lote inside another is a part of it: taken back alone, and committed with the outermost one.
/// End it before asking the user anything, so that no other terminal waits on a person.
class Lote
{
public:
    explicit Lote(Sesion &s);
    explicit Lote(Motor &motor);
    ~Lote();
    Lote(const Lote &) = delete;
    Lote &operator=(const Lote &) = delete;

    /// @throws StoreError when the disk refuses; then nothing of the batch was written
    void commit();

    /// See runBatch().
    void countParts();

private:
    Motor &m_motor;
    bool m_own;
    bool m_committed = false;
};

namespace store
{

/// A step of a batch, see attempt().
class PartOfBatch
{
public:
    explicit PartOfBatch(Sesion &s);
    ~PartOfBatch();
    PartOfBatch(const PartOfBatch &) = delete;
    PartOfBatch &operator=(const PartOfBatch &) = delete;
    void commit();
    /// @throws BatchMustRepeat when a part was to be taken back that runBatch only counts
    static void requireWhole(Sesion &s);

private:
    Motor *m_motor; // nullptr outside of a batch
};

/// Runs a step that is passed over when it fails: inside a batch all that it wrote is taken back
/// then, and the batch goes on as if it had not been tried.
/// @return what went wrong, nullopt when nothing did
/// @throws StoreError when the disk fails, and not the step
template <typename Step>
std::optional<StoreError> attempt(Sesion &s, Step &&step)
{
    try {
        PartOfBatch part(s);
        step();
        part.commit();
        return std::nullopt;
    } catch (const StoreError &e) {
        if (e.isMediumFailure())
            throw;
        PartOfBatch::requireWhole(s);
        return e;
    }
}

/// Runs a long batch of many parts that hardly ever fail, and commits it. To keep its parts apart
/// costs the engine several times what is written in them, so it does not at first: when one that
/// has written something must be taken back, all is taken back and run again, the parts kept.
/// @param run may be called twice, the second time as if the first had never been
/// @throws StoreError; then nothing of the batch was written
template <typename Run>
void runBatch(Sesion &s, Run &&run)
{
    try {
        Lote batch(s);
        batch.countParts();
        run();
        batch.commit();
        return;
    } catch (const BatchMustRepeat &) {
    }
    Lote batch(s);
    run();
    batch.commit();
}

/// The write lock for a value that is read and then written by one statement, so that nobody comes
/// in between; inside a batch it is held already.
class WriteLock
{
public:
    explicit WriteLock(Sesion &s);
    void commit();

private:
    std::optional<Lote> m_batch;
};

} // namespace store
