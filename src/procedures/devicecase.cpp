#include "devicecase.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

namespace {

constexpr QDir::Filters kEverything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

QString spelledAsOnDisk(const QString &folder, const QString &name)
{
    const QStringList names = QDir(folder).entryList(kEverything, QDir::Name);
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
        path += spelledAsOnDisk(path, part);
    }
    return path;
}
