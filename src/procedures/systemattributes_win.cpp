#include "systemattributes.h"

#include "disk/waitms.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <windows.h>

namespace {

constexpr int kStartWaitMs = 200;
constexpr DWORD kLongestRunMs = 30000;
constexpr DWORD kBoth = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

/// The system's own command interpreter: one of that name may lie anywhere.
QString commandInterpreter()
{
    wchar_t folder[MAX_PATH] = {};
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    return QString::fromWCharArray(folder, int(length < MAX_PATH ? length : 0)) + QStringLiteral("\\cmd.exe");
}

/// Returns whether the batch file could be started; it has then ended, or had its time.
bool runBatch(const QFileInfo &file)
{
    if (!file.isFile())
        return false;
    // The unpacked folder, which comes from the network, is where the interpreter would look for "attrib" first.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("NoDefaultCurrentDirectoryInExePath"), QStringLiteral("1"));
    QProcess batch;
    batch.setProcessEnvironment(environment);
    batch.setWorkingDirectory(file.absolutePath());
    batch.setProgram(commandInterpreter());
    // Named without its folder, whose own name may have characters that mean something to the interpreter, such as "&".
    batch.setNativeArguments(QStringLiteral("/D /C \".\\%1\"").arg(file.fileName()));
    qint64 id = 0;
    if (!batch.startDetached(&id))
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

/// Sets what the batch file has not set. Returns whether the entry is there and carries both attributes.
bool hide(const QString &path)
{
    const QString native = QDir::toNativeSeparators(path);
    const auto *name = reinterpret_cast<const wchar_t *>(native.utf16());
    const DWORD attributes = GetFileAttributesW(name);
    return attributes != INVALID_FILE_ATTRIBUTES &&
           ((attributes & kBoth) == kBoth || SetFileAttributesW(name, attributes | kBoth));
}

} // namespace

bool runAttributeBatch(const QString &batchPath, const Player &player)
{
    const bool ran = runBatch(QFileInfo(batchPath));
    // Where rules of the PC keep batch files from running, it ends like one that has done its work.
    const bool systemIsHidden = hide(player.path(PlayerNames::kSystem));
    const bool scriptIsHidden = hide(player.path(PlayerNames::kStartScript));
    return ran || (systemIsHidden && scriptIsHidden);
}
