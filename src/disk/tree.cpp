#include "tree.h"

#include "aside.h"
#include "breath.h"
#include "diskcalls.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>

namespace {

bool removeContent(const QString &path, const std::function<bool()> &goOn)
{
    bool good = true;
    // Listed before anything is deleted: a listing that goes on while its folder shrinks may skip entries.
    QFileInfoList entries;
    walkTree({path, kAllEntries, {}, false, 0}, [&entries](const QFileInfo &entry) {
        entries.append(entry);
        return true;
    });
    for (const QFileInfo &entry : qAsConst(entries)) {
        if (goOn && !goOn())
            return false;
        const bool folder = entry.isDir() && !isLink(entry);
        good &= folder ? removeTree(entry.filePath(), goOn) : removeFile(entry.filePath());
        QCoreApplication::processEvents();
    }
    return good;
}

/// Some file systems take long to give back a folder that was big, even when it is empty.
bool removeEmptyFolder(const QString &path)
{
    return doAsidePatiently([path] {
        if (QDir().rmdir(path) || !QFileInfo::exists(path))
            return true;
        // Windows marks folders with a picture of their own so, and refuses to remove them.
        QFile::setPermissions(path, QFile::permissions(path) | QFile::WriteOwner | QFile::WriteUser);
        return QDir().rmdir(path);
    });
}

} // namespace

bool isLink(const QFileInfo &entry)
{
    return entry.isSymLink() || entry.isJunction();
}

bool isWindowsOwn(const QString &name)
{
    return name.compare(QLatin1String("System Volume Information"), Qt::CaseInsensitive) == 0 ||
           name.compare(QLatin1String("$RECYCLE.BIN"), Qt::CaseInsensitive) == 0;
}

bool walkTree(const Walk &walk, const std::function<bool(const QFileInfo &entry)> &visit)
{
    // An empty path would mean the current folder.
    if (walk.root.isEmpty())
        return true;
    const auto depth = walk.below ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags;
    QDirIterator entries(walk.root, walk.names, walk.filters, depth);
    int visited = 0;
    Breath breath;
    while (entries.hasNext()) {
        entries.next();
        if (!visit(entries.fileInfo()))
            return false;
        if (walk.breath > 0 && ++visited % walk.breath == 0)
            breath.take();
    }
    return true;
}

QStringList listTree(const Walk &walk, const std::function<bool()> &goOn)
{
    QStringList found;
    walkTree(walk, [&found, &goOn](const QFileInfo &entry) {
        if (goOn && !goOn())
            return false;
        found.append(entry.filePath());
        return true;
    });
    return found;
}

bool isTreeListable(const QString &root, QDir::Filters filters)
{
    const QDir::Filters folders = (filters & ~QDir::Filters(QDir::Files)) | QDir::Dirs;
    return isListable(root) && walkTree({root, folders}, [](const QFileInfo &entry) {
               return !entry.isDir() || isLink(entry) || isListable(entry.filePath());
           });
}

bool removeFile(const QString &path)
{
    if (QFile::remove(path))
        return true;
    // Where links to folders are folders themselves, only rmdir takes them away; it leaves their target alone too.
    if (isLink(QFileInfo(path)))
        return QDir().rmdir(path);
    // Windows refuses to delete what is write-protected, as system files are.
    QFile::setPermissions(path, QFile::permissions(path) | QFile::WriteOwner | QFile::WriteUser);
    return QFile::remove(path);
}

bool removeTree(const QString &path, const std::function<bool()> &goOn)
{
    if (path.isEmpty())
        return false;
    // A link whose name ends in a slash would be taken for the folder it points to.
    const QString clean = QDir::cleanPath(path);
    const QFileInfo info(clean);
    if (isLink(info))
        return removeFile(clean);
    if (!info.exists())
        return true;
    return info.isDir() && removeContent(clean, goOn) && removeEmptyFolder(clean);
}

bool emptyFolder(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    // The name of a folder that was removed is only free when the last program has let go of it.
    return removeTree(path) && doAsidePatiently([clean] { return QDir().mkdir(clean); });
}
