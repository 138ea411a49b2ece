#include "systemattributes.h"

#include "disk/waitms.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStringList>

#include <windows.h>

namespace {
constexpr int kStartWaitMs = 200;
constexpr DWORD kLongestRunMs = 30000;
} // namespace

bool runAttributeBatch(const QString &batchPath, const Player &)
{
    qint64 id = 0;
    if (!QProcess::startDetached(QDir::toNativeSeparators(batchPath), QStringList(),
                                 QFileInfo(batchPath).absolutePath(), &id))
        return false;
    // A process that ends during the wait cannot be opened any more: then there is nothing left to wait for.
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(id));
    waitMs(kStartWaitMs);
    if (process) {
        WaitForSingleObject(process, kLongestRunMs);
        CloseHandle(process);
    }
    return true;
}
