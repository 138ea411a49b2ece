#include "diskcalls.h"

#include <QFile>

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {
constexpr mode_t kPermissionBits = S_IRWXU | S_IRWXG | S_IRWXO;
} // namespace

void neverAskForMedium() {}

quint64 volumeId(const QString &path)
{
    struct stat status = {};
    if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &status) != 0)
        return 0;
    // A device number of 0 is a number like any other.
    return quint64(status.st_dev) + 1;
}

bool isListable(const QString &path)
{
    std::error_code error;
    std::filesystem::directory_iterator entries(QFile::encodeName(path).constData(), error);
    while (!error && entries != std::filesystem::directory_iterator())
        entries.increment(error);
    return !error;
}

int patienceMs()
{
    return 0;
}

bool leadsTo(const QString &path, const QFile &file)
{
    struct stat named = {};
    struct stat opened = {};
    return ::stat(QFile::encodeName(path).constData(), &named) == 0 && ::fstat(file.handle(), &opened) == 0 &&
           named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

VolumeRoom volumeRoom(const QString &path)
{
    struct statvfs volume = {};
    if (path.isEmpty() || ::statvfs(QFile::encodeName(path).constData(), &volume) != 0)
        return {};
    return {qint64(volume.f_bavail) * qint64(volume.f_frsize), qint64(volume.f_frsize)};
}

bool isNameTaken(const QString &path)
{
    // One request to the disk; Qt makes two for a name that is free, the usual case.
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0;
}

bool moveOver(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

bool createLike(const QFile &model, QFile &file)
{
    // Given at once: a disk without permissions would be asked in vain, once a file, to change them afterwards.
    struct stat status = {};
    const mode_t mode = ::fstat(model.handle(), &status) == 0 ? status.st_mode & kPermissionBits : S_IRUSR | S_IWUSR;
    const int handle =
        ::open(QFile::encodeName(file.fileName()).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (handle < 0)
        return false;
    if (file.open(handle, QIODevice::WriteOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        return true;
    ::close(handle);
    return false;
}

void dateLike(const QFile &, QFile &) {}
