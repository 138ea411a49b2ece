#include "volumeflush.h"

#include "longpath_win.h"
#include "tree.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QMutex>

#include <qt_windows.h>

namespace {

/// Opens a file or a volume so that it can be flushed. A virus scanner or a viewer may keep a new file to itself for a
/// moment: that is waited for.
HANDLE openToFlush(const QString &nativePath)
{
    constexpr int kMostAttempts = 20;
    constexpr DWORD kPauseMs = 100;
    for (int attempt = 1;; ++attempt) {
        const HANDLE file = ::CreateFileW(wide(nativePath), GENERIC_READ | GENERIC_WRITE,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_SHARING_VIOLATION || attempt == kMostAttempts)
            return file;
        ::Sleep(kPauseMs);
    }
}

/// Flushes a volume, or a file that can be written.
bool flushOpened(const QString &nativePath)
{
    const HANDLE file = openToFlush(nativePath);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    const bool flushed = ::FlushFileBuffers(file) != 0;
    const DWORD error = ::GetLastError();
    ::CloseHandle(file);
    ::SetLastError(error);
    return flushed;
}

bool flushFile(const QString &path)
{
    const QString native = longPath(path);
    const DWORD attributes = ::GetFileAttributesW(wide(native));
    // A read-only file cannot be opened for that: the mark goes for as long.
    const bool marked = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) &&
                        ::SetFileAttributesW(wide(native), attributes & ~DWORD(FILE_ATTRIBUTE_READONLY));
    const bool flushed = flushOpened(native);
    const DWORD error = ::GetLastError();
    if (marked)
        ::SetFileAttributesW(wide(native), attributes);
    // What this user may not write this program has not written either.
    return flushed || error == ERROR_ACCESS_DENIED;
}

QDateTime programStart()
{
    constexpr quint64 kTicksPerMs = 10000;
    constexpr qint64 kUnixEpochMs = 11644473600000; // counted from the year 1601
    FILETIME start = {};
    FILETIME unused = {};
    ::GetProcessTimes(::GetCurrentProcess(), &start, &unused, &unused, &unused);
    const quint64 ticks = quint64(start.dwHighDateTime) << 32 | start.dwLowDateTime;
    return QDateTime::fromMSecsSinceEpoch(qint64(ticks / kTicksPerMs) - kUnixEpochMs);
}

/// When the files of a place were last flushed, all of them, by its path.
struct FlushTimes
{
    QMutex mutex;
    QHash<QString, QDateTime> begun;
};

FlushTimes &flushTimes()
{
    static FlushTimes times;
    return times;
}

/// From when on a file below @p path was written that has not been flushed yet.
QDateTime unflushedSince(const QString &path)
{
    constexpr int kCoarsenessS = 2; // the step in which FAT keeps times
    const QMutexLocker lock(&flushTimes().mutex);
    return flushTimes().begun.value(path, programStart()).addSecs(-kCoarsenessS);
}

bool isSystems(const QFileInfo &file, const QString &root)
{
    const QString top = file.filePath().mid(root.size()).section(QLatin1Char('/'), 0, 0, QString::SectionSkipEmpty);
    return isWindowsOwn(top);
}

/// What this run of the program has written there. A copy keeps the time at which its original was written, but not
/// the one at which the original was made.
bool flushOwnFiles(const QFileInfo &place, const BetweenFlushes &goOn)
{
    const QString path = place.absoluteFilePath();
    if (place.isFile())
        return flushFile(path);
    const QDateTime begun = QDateTime::currentDateTime();
    const QDateTime since = unflushedSince(path);
    bool flushed = true;
    // Aside of the window's thread: there no events are processed.
    const bool ended = walkTree({path, QDir::Files | QDir::Hidden | QDir::System | QDir::NoSymLinks, {}, true, 0},
                                [&](const QFileInfo &info) {
                                    if (goOn && !goOn())
                                        return false;
                                    if (!isSystems(info, path) && qMax(info.lastModified(), info.birthTime()) >= since)
                                        flushed = flushFile(info.filePath()) && flushed;
                                    return true;
                                });
    // A drive that went away meanwhile ended the loop early.
    flushed = flushed && ended && place.exists();
    if (flushed) {
        const QMutexLocker lock(&flushTimes().mutex);
        flushTimes().begun.insert(path, begun);
    }
    return flushed;
}

} // namespace

bool flushVolume(const QString &path, const BetweenFlushes &goOn)
{
    QFileInfo place(path);
    if (!place.exists())
        return false;
    place.setCaching(false);
    // A volume is opened by its drive letter alone: "\\.\E:", without the closing backslash.
    const QString drive = QDir::toNativeSeparators(place.absoluteFilePath()).left(2);
    // Only administrators may flush a whole volume.
    return flushOpened(QLatin1String("\\\\.\\") + drive) || flushOwnFiles(place, goOn);
}

bool flushFolder(const QString &path, const BetweenFlushes &goOn)
{
    QFileInfo place(path);
    place.setCaching(false);
    return place.exists() && flushOwnFiles(place, goOn);
}
