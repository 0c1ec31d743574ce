// Locks on the data folder, between processes and machines.
#pragma once

#include "store/engine.h"

namespace sqlcipher
{

/// A lock on a file of the data folder. The file has the mode and the group of the databases beside
/// it, so that every account that works on them can take it; who holds it alone is written into it.
class FolderLock final : public store::Lock
{
public:
    /// See Motor::lock.
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
