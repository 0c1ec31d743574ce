#include "store/file_permissions.h"

#include "store/errors.h"

#include <QFile>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

void store::shareLike(const QString &file, const QString &model)
{
    const QByteArray name = QFile::encodeName(file);
    struct stat own {
    }, wanted{};
    if (::stat(QFile::encodeName(model).constData(), &wanted) != 0
        || ::stat(name.constData(), &own) != 0)
        return;
    constexpr mode_t Permissions = 0777;
    // Only members of the group can set it; the mode is useful even without.
    if (own.st_gid != wanted.st_gid && ::chown(name.constData(), uid_t(-1), wanted.st_gid) != 0)
        errno = 0;
    if ((own.st_mode & Permissions) != (wanted.st_mode & Permissions))
        ::chmod(name.constData(), wanted.st_mode & Permissions);
}

void store::replaceFile(const QString &finished, const QString &place)
{
    if (std::rename(QFile::encodeName(finished).constData(), QFile::encodeName(place).constData())
        != 0)
        throw StoreError(ErrorNumber::PathOrDisk, place);
}
