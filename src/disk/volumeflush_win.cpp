#include "volumeflush.h"

#include "tree.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <qt_windows.h>

namespace {

/// Opens a file or a volume so that it can be flushed. A virus scanner or a viewer may keep a new file to itself for a
/// moment: that is waited for.
HANDLE openToFlush(const QString &nativePath)
{
    constexpr int kMostAttempts = 20;
    constexpr DWORD kPauseMs = 100;
    for (int attempt = 1;; ++attempt) {
        const HANDLE file =
            ::CreateFileW(reinterpret_cast<const wchar_t *>(nativePath.utf16()), GENERIC_READ | GENERIC_WRITE,
                          FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_SHARING_VIOLATION || attempt == kMostAttempts)
            return file;
        ::Sleep(kPauseMs);
    }
}

bool flushFile(const QString &nativePath)
{
    const HANDLE file = openToFlush(nativePath);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    const bool flushed = ::FlushFileBuffers(file) != 0;
    ::CloseHandle(file);
    return flushed;
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

/// What this run of the program has written there. A copy keeps the time at which its original was written, but not
/// the one at which the original was made.
bool flushOwnFiles(const QFileInfo &place)
{
    constexpr int kCoarsenessS = 2; // the step in which FAT keeps times
    const QDateTime since = programStart().addSecs(-kCoarsenessS);
    if (place.isFile())
        return flushFile(QDir::toNativeSeparators(place.absoluteFilePath()));
    bool flushed = true;
    // Aside of the window's thread: there no events are processed.
    const Walk walk = {
        place.absoluteFilePath(), QDir::Files | QDir::Hidden | QDir::System | QDir::NoSymLinks, {}, true, 0};
    walkTree(walk, [&flushed, &since](const QFileInfo &info) {
        // A read-only file cannot be opened for that, and nothing of ours is.
        if (info.isWritable() && qMax(info.lastModified(), info.birthTime()) >= since)
            flushed = flushFile(QLatin1String("\\\\?\\") + QDir::toNativeSeparators(info.filePath())) && flushed;
        return true;
    });
    // A drive that went away meanwhile ended the loop early.
    return flushed && place.exists();
}

} // namespace

bool flushVolume(const QString &path)
{
    QFileInfo place(path);
    if (!place.exists())
        return false;
    place.setCaching(false);
    // A volume is opened by its drive letter alone: "\\.\E:", without the closing backslash.
    const QString drive = QDir::toNativeSeparators(place.absoluteFilePath()).left(2);
    // Only administrators may flush a whole volume.
    return flushFile(QLatin1String("\\\\.\\") + drive) || flushOwnFiles(place);
}
