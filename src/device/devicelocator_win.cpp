#include "listedvolumes.h"
#include "systemvolumes.h"

#include <QDir>

#include <qt_windows.h>

namespace {

constexpr DWORD kNameSize = 256;

QString nativeRoot(const QString &path)
{
    return QDir::toNativeSeparators(withClosingSlash(path));
}

/// Keeps Windows from asking the user to insert a disk when a card reader is empty.
class NoDiskQuestions
{
public:
    NoDiskQuestions() { ::SetThreadErrorMode(SEM_FAILCRITICALERRORS, &m_before); }
    ~NoDiskQuestions() { ::SetThreadErrorMode(m_before, nullptr); }
    NoDiskQuestions(const NoDiskQuestions &) = delete;
    NoDiskQuestions &operator=(const NoDiskQuestions &) = delete;

private:
    DWORD m_before = 0;
};

} // namespace

QString SystemVolumes::findPlayerRoot()
{
    // Deliberate: of two drives with the player's label the earlier letter wins, without a warning.
    const QFileInfoList drives = QDir::drives();
    for (const QFileInfo &drive : drives) {
        const QString root = drive.absolutePath();
        if (isPlayerLabel(label(root)))
            return root;
    }
    return {};
}

QString SystemVolumes::label(const QString &rootPath)
{
    const NoDiskQuestions noDiskQuestions;
    wchar_t name[kNameSize] = {};
    wchar_t fileSystem[kNameSize] = {};
    DWORD serial = 0;
    DWORD longestComponent = 0;
    DWORD flags = 0;
    const QString root = nativeRoot(rootPath);
    if (!::GetVolumeInformationW(reinterpret_cast<const wchar_t *>(root.utf16()), name, kNameSize, &serial,
                                 &longestComponent, &flags, fileSystem, kNameSize))
        return {};
    return QString::fromWCharArray(name).trimmed();
}

bool SystemVolumes::isRemovable(const QString &path)
{
    const QString root = nativeRoot(path);
    return ::GetDriveTypeW(reinterpret_cast<const wchar_t *>(root.utf16())) == DRIVE_REMOVABLE;
}
