// Locks on the data folder, between processes and machines.
#pragma once

#include <QString>
#include <functional>

namespace store
{

/// A lock on a file of the data folder, such as the one on the day's run. It is free again when its
/// holder dies. The file has the mode and the group of the databases beside it, so that every
/// account that works on them can take it.
class FolderLock
{
public:
    enum class Mode {
        Alone,  // one holder; its machine and process are written into the file
        Shared, // any number of them, while nobody has it alone
    };
    /// Waits until it is taken or @p seconds have passed.
    /// @param name of the file
    /// @param meanwhile called while another one holds it, some twenty times a second, with its
    ///        machine and process, "" where that is not known
    /// @throws StoreError 70 or 75 when the folder does not allow it
    FolderLock(const QString &folder, const QString &name, int seconds,
               const std::function<void(const QString &holder)> &meanwhile = {},
               Mode mode = Mode::Alone);
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    bool isHeld() const { return m_file >= 0; }
    /// Makes a shared lock one that is held alone, at once or not at all.
    /// @return false when others hold it too; it stays shared then
    bool takeAlone();
    /// The other way.
    void share();

    /// Machine and process that hold a lock alone, "" when nobody does or it is not known.
    static QString holder(const QString &folder, const QString &name);

private:
    bool lock(Mode mode) const;
    void sign(bool held) const;

    int m_file = -1;
    Mode m_mode = Mode::Alone;
};

} // namespace store
