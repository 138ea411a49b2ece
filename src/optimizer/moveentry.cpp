#include "moveentry.h"

#include "disk/aside.h"
#include "disk/diskcalls.h"
#include "disk/tree.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMap>

#include <algorithm>

namespace {

const QLatin1Char kSlash('/');

bool isCompanion(const QFileInfo &file)
{
    const QString suffix = file.suffix();
    return suffix == QLatin1String("dat") || suffix == QLatin1String("cdg") || suffix == QLatin1String("bak");
}

bool isFolder(const QFileInfo &entry)
{
    return entry.isDir() && !isLink(entry);
}

/// The name of @p entry with this number in it; its own for 0.
QString numberedName(const QFileInfo &entry, int number)
{
    if (number == 0)
        return entry.fileName();
    const QString mark = QStringLiteral("(%1)").arg(number);
    if (isFolder(entry) || entry.suffix().isEmpty())
        return entry.fileName() + mark;
    return entry.completeBaseName() + mark + QLatin1Char('.') + entry.suffix();
}

/// Moves entries that belong together.
bool moveGroup(const QFileInfoList &group, const QString &to)
{
    int number = 0;
    while (std::any_of(group.cbegin(), group.cend(), [&to, &number](const QFileInfo &entry) {
        return QFileInfo::exists(to + kSlash + numberedName(entry, number));
    }))
        ++number;
    bool all = true;
    for (const QFileInfo &entry : group)
        all = moveOver(entry.absoluteFilePath(), to + kSlash + numberedName(entry, number)) && all;
    return all;
}

bool removeEmpty(const QString &folder)
{
    // Some file systems take long to give back a folder that was big.
    bool removed = false;
    doAside([&removed, folder] { removed = QDir().rmdir(folder); });
    return removed;
}

} // namespace

bool moveEntry(const QString &from, const QString &to)
{
    return !QFileInfo::exists(to) && moveOver(from, to);
}

bool moveContent(const QString &from, const QString &to)
{
    // A folder is no relative of files that share its name.
    QMap<QPair<bool, QString>, QFileInfoList> groups;
    walkTree({from, kAllEntries, {}, false}, [&groups](const QFileInfo &entry) {
        const bool folder = isFolder(entry);
        const bool named = folder || entry.completeBaseName().isEmpty();
        QFileInfoList &group = groups[{folder, named ? entry.fileName() : entry.completeBaseName()}];
        if (isCompanion(entry))
            group.prepend(entry);
        else
            group.append(entry);
        return true;
    });
    bool all = true;
    for (const QFileInfoList &group : qAsConst(groups)) {
        all = moveGroup(group, to) && all;
        QCoreApplication::processEvents();
    }
    return all;
}

bool putBack(const QString &aside, const QString &folder)
{
    const QFileInfo old(aside);
    if (!old.isDir())
        return true;
    // An empty folder is only in the way; one that holds something is not taken away by this.
    QDir().rmdir(folder);
    const auto giveName = [&aside, &folder] { return moveEntry(aside, folder); };
    if (!QFileInfo::exists(folder) && doAsidePatiently(giveName))
        return true;
    if (moveContent(aside, folder) && removeEmpty(aside))
        return true;
    // The disk is so full that a folder cannot grow by a name. There is room for names in the other one: it was bigger.
    if (moveContent(folder, aside) && removeEmpty(folder) && doAsidePatiently(giveName))
        return true;
    // Another program holds a file, and with it the folder: what it does not hold need not stay under the wrong name.
    if (QFileInfo(aside).isDir() && (QFileInfo(folder).isDir() || QDir().mkdir(folder)))
        moveContent(aside, folder);
    return false;
}
