// Locks on the data folder, between processes and machines.
#pragma once

#include "store/engine.h"

namespace sqlcipher
{

/// A lock on a file in the data folder. The file gets the mode and the group of the databases next
/// to it, so that every account working on them can take the lock. Whoever holds it alone writes
/// its machine and process into the file.
class FolderLock final : public store::Lock
{
public:
    /// Opens or creates the file and takes the lock, see Motor::lock.
    FolderLock(const QString &folder, const QString &name, int seconds,
               const std::function<void(const QString &holder)> &meanwhile, Mode mode);
    ~FolderLock() override;
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    bool isHeld() const override { return m_file >= 0; }
    bool takeAlone() override;
    void share() override;

    /// See Motor::lockHolder.
    static QString holder(const QString &folder, const QString &name);

private:
    bool lock(Mode mode) const;
    void sign(bool held) const;

    int m_file = -1;
    Mode m_mode = Mode::Alone;
};

} // namespace sqlcipher
