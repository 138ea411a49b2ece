#include "devicecase.h"

#include "disk/tree.h"

#include <algorithm>

namespace {

/// The names of the entries of @p folder that are @p name in any case, sorted.
QStringList spellingsOf(const QString &name, const QString &folder)
{
    QStringList names = QDir(folder).entryList(kAllEntries, QDir::Name);
    const auto isOther = [&name](const QString &entry) { return entry.compare(name, Qt::CaseInsensitive) != 0; };
    names.erase(std::remove_if(names.begin(), names.end(), isOther), names.end());
    return names;
}

/// @p folder ends in a slash.
QString spelledAsFound(const QString &folder, const QString &name)
{
    if (QFileInfo::exists(folder + name))
        return name;
    const QStringList names = spellingsOf(name, folder);
    // A link to nowhere does not exist, and is there all the same.
    return names.isEmpty() || names.contains(name) ? name : names.first();
}

} // namespace

QStringList entriesNamed(const QString &folder, const QString &name)
{
    QStringList paths;
    const QStringList names = spellingsOf(name, folder);
    for (const QString &spelling : names)
        paths.append(QDir(folder).filePath(spelling));
    return paths;
}

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
