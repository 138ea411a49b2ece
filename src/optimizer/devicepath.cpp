#include "devicepath.h"

namespace {
constexpr QLatin1Char kPcSeparator('/');
constexpr QLatin1Char kDeviceSeparator('\\');
} // namespace

QString devicePathToPc(QString text, const QString &rootPath)
{
    text.replace(kDevicePathStart, rootPath, Qt::CaseInsensitive);
    return text.replace(kDeviceSeparator, kPcSeparator);
}

QString pcPathToDevicePath(QString path, const QString &rootPath)
{
    // Replacing an empty text would put the player's root between any two characters.
    if (!rootPath.isEmpty())
        path.replace(rootPath, kDevicePathStart);
    return path.replace(kPcSeparator, kDeviceSeparator);
}
