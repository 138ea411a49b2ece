#include "backupcheck.h"

#include "backupchoice.h"
#include "device/devicecase.h"
#include "disk/tree.h"

#include <QFileInfo>

namespace {

bool isSaved(const QString &path, const QString &relative, const QString &backup)
{
    const QFileInfo saved(backup + QLatin1Char('/') + relative);
    return saved.isFile() && saved.size() == QFileInfo(path).size();
}

} // namespace

bool isBackupComplete(const QString &backup, const QString &deviceRoot, const bool &abort)
{
    const auto songSaved = [&](const QString &path) {
        const QString relative = path.mid(deviceRoot.size());
        return !abort && (isSystemPart(path, deviceRoot) || isSaved(path, relative, backup));
    };
    const auto playlistSaved = [&](const QString &path) {
        return !abort && isSaved(path, path.mid(deviceRoot.size()), backup);
    };
    return visitTree(deviceRoot, QDir::Files, {QStringLiteral("*.*")}, songSaved) &&
           visitTree(resolveDevicePath(deviceRoot, QStringLiteral("System/playlist")),
                     QDir::Files | QDir::Hidden | QDir::System, {}, playlistSaved);
}
