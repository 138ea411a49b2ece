#include "devicecase.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

namespace {

constexpr QDir::Filters kEverything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

/// @p folder ends in a slash.
QString spelledAsFound(const QString &folder, const QString &name)
{
    if (QFileInfo::exists(folder + name))
        return name;
    const QStringList names = QDir(folder).entryList(kEverything, QDir::Name);
    // A link to nowhere does not exist, and is there all the same.
    if (names.contains(name))
        return name;
    for (const QString &candidate : names) {
        if (candidate.compare(name, Qt::CaseInsensitive) == 0)
            return candidate;
    }
    return name;
}

} // namespace

QString resolveDevicePath(const QString &root, const QString &relative)
{
    // An empty folder name would mean the current folder.
    if (root.isEmpty())
        return relative;
    QString path = root;
    const QStringList parts = relative.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        if (!path.endsWith(QLatin1Char('/')))
            path += QLatin1Char('/');
        path += spelledAsFound(path, part);
    }
    return path;
}
