#include "diskcalls.h"

#include "longpath_win.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <windows.h>

namespace {

/// A new file under a name that has just become free takes over the day at which the former one was made. By that day
/// the files are known that have not been flushed yet.
void makeNew(const QString &nativePath)
{
    const HANDLE file = CreateFileW(wide(nativePath), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    SetFileTime(file, &now, nullptr, nullptr);
    CloseHandle(file);
}

bool moveFileOver(const QString &nativeFrom, const QString &nativeTo)
{
    if (!MoveFileExW(wide(nativeFrom), wide(nativeTo), MOVEFILE_REPLACE_EXISTING))
        return false;
    makeNew(nativeTo);
    return true;
}

} // namespace

void neverAskForMedium()
{
    SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS);
}

quint64 volumeId(const QString &path)
{
    DWORD serial = 0;
    const QString root = path.isEmpty() ? QString() : QDir::toNativeSeparators(path.left(3));
    if (root.isEmpty() || !GetVolumeInformationW(wide(root), nullptr, 0, &serial, nullptr, nullptr, nullptr, 0))
        return 0;
    // A serial number of 0 is a number like any other.
    return quint64(serial) + 1;
}

bool isListable(const QString &path)
{
    WIN32_FIND_DATAW entry = {};
    const HANDLE search = FindFirstFileW(wide(longPath(path) + QLatin1String("\\*")), &entry);
    if (search == INVALID_HANDLE_VALUE)
        // The root of an empty disk has not even the entries that stand for itself.
        return GetLastError() == ERROR_FILE_NOT_FOUND;
    while (FindNextFileW(search, &entry)) {
    }
    const bool toItsEnd = GetLastError() == ERROR_NO_MORE_FILES;
    FindClose(search);
    return toItsEnd;
}

int patienceMs()
{
    return 2000;
}

bool leadsTo(const QString &, const QFile &)
{
    // A drive that is pulled takes its letter with it: no folder of the PC stands in its place.
    return true;
}

VolumeRoom volumeRoom(const QString &path)
{
    DWORD sectorsInCluster = 0;
    DWORD bytesInSector = 0;
    DWORD freeClusters = 0;
    DWORD clusters = 0;
    const QString root = path.isEmpty() ? QString() : QDir::toNativeSeparators(path.left(3));
    if (root.isEmpty() || !GetDiskFreeSpaceW(wide(root), &sectorsInCluster, &bytesInSector, &freeClusters, &clusters))
        return {};
    const qint64 cluster = qint64(sectorsInCluster) * qint64(bytesInSector);
    return {qint64(freeClusters) * cluster, cluster};
}

bool isNameTaken(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

bool moveOver(const QString &from, const QString &to)
{
    const QString source = longPath(from);
    const QString target = longPath(to);
    if (moveFileOver(source, target))
        return true;
    // Elsewhere a file that is marked read-only is replaced like any other; here the mark has to go first.
    const DWORD attributes = GetFileAttributesW(wide(target));
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_READONLY) ||
        !SetFileAttributesW(wide(target), attributes & ~DWORD(FILE_ATTRIBUTE_READONLY)))
        return false;
    if (moveFileOver(source, target))
        return true;
    SetFileAttributesW(wide(target), attributes);
    return false;
}

bool createLike(const QFile &model, QFile &file)
{
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return false;
    file.setPermissions(model.permissions());
    return true;
}

void dateLike(const QFile &model, QFile &file)
{
    file.setFileTime(model.fileTime(QFileDevice::FileModificationTime), QFileDevice::FileModificationTime);
    // The former file of this name, removed a moment ago, would leave it its own.
    file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileBirthTime);
}
