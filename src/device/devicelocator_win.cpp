#include "listedvolumes.h"
#include "systemvolumes.h"

#include <QDir>

#include <optional>

#include <qt_windows.h>

namespace {

constexpr DWORD kNameSize = 256;

QString nativeRoot(const QString &path)
{
    return QDir::toNativeSeparators(withClosingSlash(path));
}

/// What Windows tells of a volume; an empty label and no number when it cannot be read.
struct Volume
{
    QString label;
    std::optional<quint32> serial;
};

Volume readVolume(const QString &rootPath)
{
    wchar_t name[kNameSize] = {};
    wchar_t fileSystem[kNameSize] = {};
    DWORD serial = 0;
    DWORD longestComponent = 0;
    DWORD flags = 0;
    const QString root = nativeRoot(rootPath);
    if (!::GetVolumeInformationW(reinterpret_cast<const wchar_t *>(root.utf16()), name, kNameSize, &serial,
                                 &longestComponent, &flags, fileSystem, kNameSize))
        return {};
    return {QString::fromWCharArray(name).trimmed(), serial};
}

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
    return readVolume(rootPath).label;
}

QString SystemVolumes::serial(const QString &rootPath)
{
    constexpr int kHexadecimal = 16;
    const std::optional<quint32> serial = readVolume(rootPath).serial;
    return serial ? QString::number(*serial, kHexadecimal) : QString();
}

bool SystemVolumes::isRemovable(const QString &path)
{
    const QString root = nativeRoot(path);
    return ::GetDriveTypeW(reinterpret_cast<const wchar_t *>(root.utf16())) == DRIVE_REMOVABLE;
}
