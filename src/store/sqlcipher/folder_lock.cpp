#include "store/sqlcipher/folder_lock.h"

#include "store/data_folder.h"
#include "store/errors.h"
#include "store/file_permissions.h"
#include "store/schema.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QSysInfo>
#include <QThread>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

using namespace store;
using sqlcipher::FolderLock;

namespace
{

constexpr int LongestSignature = 200;

QByteArray lockFile(const QString &folder, const QString &name)
{
    return QFile::encodeName(pathUnder(folder, name));
}

// A record lock, which works on shared folders like the engine's own locks. It belongs to the open
// file and not to the process, so that two sessions of one process exclude each other as well, and
// closing another handle of the file does not release it.
struct flock request(short type)
{
    struct flock l {
    };
    l.l_type = type;
    l.l_whence = SEEK_SET;
    return l;
}

QString signature(int file)
{
    char text[LongestSignature];
    const ssize_t n = ::pread(file, text, sizeof text, 0);
    return n > 0 ? QString::fromUtf8(text, n).trimmed() : QString();
}

} // namespace

FolderLock::FolderLock(const QString &folder, const QString &name, int seconds,
                       const std::function<void(const QString &)> &meanwhile, Mode mode)
    : m_mode(mode)
{
    const QString path = pathUnder(folder, name);
    m_file = ::open(lockFile(folder, name).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (m_file < 0)
        throw StoreError(errno == EACCES || errno == EROFS ? ErrorNumber::ReadOnly
                                                           : ErrorNumber::PathOrDisk,
                         path);
    shareLike(path, pathUnder(folder, fileOf(QStringLiteral("morvane"))));
    const QDeadlineTimer term(qint64(seconds) * 1000);
    while (!lock(mode)) {
        if (term.hasExpired()) {
            ::close(m_file);
            m_file = -1;
            return;
        }
        if (meanwhile)
            meanwhile(signature(m_file));
        QThread::msleep(50);
    }
    sign(mode == Mode::Alone);
}

FolderLock::~FolderLock()
{
    if (m_file < 0)
        return;
    if (m_mode == Mode::Alone)
        sign(false);
    ::close(m_file);
}

bool FolderLock::takeAlone()
{
    if (!isHeld() || !lock(Mode::Alone))
        return false;
    m_mode = Mode::Alone;
    sign(true);
    return true;
}

void FolderLock::share()
{
    sign(false);
    if (lock(Mode::Shared))
        m_mode = Mode::Shared;
}

QString FolderLock::holder(const QString &folder, const QString &name)
{
    const int file = ::open(lockFile(folder, name).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return {};
    struct flock l = request(F_RDLCK);
    const bool taken = ::fcntl(file, F_OFD_GETLK, &l) == 0 && l.l_type != F_UNLCK;
    const QString who = taken ? signature(file) : QString();
    ::close(file);
    return who;
}

bool FolderLock::lock(Mode mode) const
{
    struct flock l = request(mode == Mode::Alone ? F_WRLCK : F_RDLCK);
    return ::fcntl(m_file, F_OFD_SETLK, &l) == 0;
}

// The name only informs those who wait, so failing to write it does not matter.
void FolderLock::sign(bool held) const
{
    QByteArray text;
    if (held)
        text =
            (QSysInfo::machineHostName() + QStringLiteral(" (%1)").arg(::getpid())).toUtf8() + '\n';
    if (::ftruncate(m_file, 0) == 0
        && ::pwrite(m_file, text.constData(), size_t(text.size()), 0) < 0)
        errno = 0;
}
