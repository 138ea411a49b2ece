#pragma once

#include <QString>

/// What each system answers in its own way; one file a system defines these.
namespace SystemVolumes {

/// As DeviceLocator::findDeviceRoot(), over the volumes that the system has mounted.
QString findPlayerRoot();
/// As DeviceLocator::volumeLabel(); @p rootPath ends with a slash.
QString label(const QString &rootPath);
/// As DeviceLocator::volumeSerial(); @p rootPath ends with a slash.
QString serial(const QString &rootPath);
/// As DeviceLocator::isRemovableDrive().
bool isRemovable(const QString &path);

} // namespace SystemVolumes
