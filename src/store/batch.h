// Batches: writes to any of the databases grouped into one commit, and steps within a batch that
// may fail on their own.
#pragma once

#include "store/errors.h"

#include <optional>

class Motor;
struct Sesion;

/// Groups writes into one commit; leaving the scope without commit() rolls them back.
/// A nested Lote is a part of the outer one: it can be rolled back alone, but reaches the disk only
/// when the outermost Lote commits.
/// End a batch before asking the user anything: other terminals wait while it holds the write lock.
class Lote
{
public:
    /// Begins a transaction, or a part of the one already open.
    /// @throws StoreError 3260 when another terminal keeps the write lock for too long
    explicit Lote(Sesion &s);
    /// The same, straight on an engine.
    explicit Lote(Motor &motor);
    /// Rolls back what was not committed.
    ~Lote();
    Lote(const Lote &) = delete;
    Lote &operator=(const Lote &) = delete;

    /// Keeps the writes; they are on disk once the outermost batch has committed.
    /// @throws StoreError when they cannot be written; the batch is then rolled back as a whole
    /// @throws BatchMustRepeat when a part that was only counted had to be undone, see runBatch()
    void commit();

    /// Only counts the parts of this batch instead of keeping them apart, see runBatch(). Does
    /// nothing in a nested batch.
    void countParts();

private:
    Motor &m_motor;
    bool m_own;
    bool m_committed = false;
};

namespace store
{

/// A step of a batch that can be undone alone, see attempt(). Outside a batch it does nothing.
class PartOfBatch
{
public:
    /// Begins the part.
    explicit PartOfBatch(Sesion &s);
    /// Undoes the part if it was not committed.
    ~PartOfBatch();
    PartOfBatch(const PartOfBatch &) = delete;
    PartOfBatch &operator=(const PartOfBatch &) = delete;
    /// Makes the part's writes belong to the batch.
    /// @throws StoreError when the engine refuses
    void commit();
    /// Checks that the batch can still be committed.
    /// @throws BatchMustRepeat when a part had to be undone that was only counted
    static void requireWhole(Sesion &s);

private:
    Motor *m_motor; // nullptr outside a batch
};

/// Runs a step that is skipped when it fails: inside a batch everything it wrote is undone, and the
/// batch goes on as if the step had never been tried.
/// @return the error of a step that failed, nullopt on success
/// @throws StoreError when the medium fails rather than the step, see StoreError::isMediumFailure
/// @throws BatchMustRepeat when the step's writes cannot be undone alone, see runBatch()
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

/// Runs and commits a long batch of many parts that hardly ever fail. Keeping the parts apart costs
/// the engine several times as much as writing them, so the first run only counts them. If a part
/// that has written something must then be undone, the whole batch is rolled back and run again
/// with its parts kept apart.
/// @param run may be called twice; the first call leaves no trace in the databases
/// @throws StoreError; nothing of the batch was written then
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

/// Holds the write lock while a value is read and then written by a single statement, so that no
/// other terminal can change it in between. Inside a batch the lock is already held.
class WriteLock
{
public:
    /// Takes the lock. @throws StoreError 3260 when another terminal keeps it for too long
    explicit WriteLock(Sesion &s);
    /// Commits the write and releases the lock; inside a batch both are left to the batch.
    /// @throws StoreError when the value cannot be written
    void commit();

private:
    std::optional<Lote> m_batch;
};

} // namespace store
