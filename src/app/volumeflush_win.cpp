#include "volumeflush.h"

#include <QDir>

#include <qt_windows.h>

bool flushVolume(const QString &path)
{
    // A volume is opened by its drive letter alone: "\\.\E:", without the closing backslash.
    const QString drive = QDir::toNativeSeparators(QDir(path).absolutePath()).left(2);
    const QString device = QLatin1String("\\\\.\\") + drive;
    const HANDLE volume = ::CreateFileW(reinterpret_cast<const wchar_t *>(device.utf16()), GENERIC_READ | GENERIC_WRITE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (volume == INVALID_HANDLE_VALUE)
        return false;
    const bool flushed = ::FlushFileBuffers(volume) != 0;
    ::CloseHandle(volume);
    return flushed;
}
