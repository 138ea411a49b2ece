#include "devicelocator.h"

#include "listedvolumes.h"
#include "systemvolumes.h"

#include <QDir>

QString DeviceLocator::findDeviceRoot() const
{
    if (!ListedVolumes::areInForce())
        return SystemVolumes::findPlayerRoot();
    // Deliberate: of two volumes with the player's label the first one wins, without a warning.
    const QStringList roots = ListedVolumes::roots();
    for (const QString &root : roots) {
        if (isPlayerLabel(ListedVolumes::label(root)))
            return root;
    }
    return {};
}

QString DeviceLocator::volumeLabel(const QString &rootPath) const
{
    if (rootPath.isEmpty())
        return {};
    const QString root = withClosingSlash(QDir::cleanPath(rootPath));
    return ListedVolumes::areInForce() ? ListedVolumes::label(root) : SystemVolumes::label(root);
}

QString DeviceLocator::volumeSerial(const QString &rootPath) const
{
    if (rootPath.isEmpty() || ListedVolumes::areInForce())
        return {};
    return SystemVolumes::serial(withClosingSlash(QDir::cleanPath(rootPath)));
}

bool DeviceLocator::isRemovableDrive(const QString &path) const
{
    return !path.isEmpty() && SystemVolumes::isRemovable(path);
}
