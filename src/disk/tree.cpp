#include "tree.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr QDir::Filters kEverything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

bool isLink(const QFileInfo &info)
{
    return info.isSymLink() || info.isJunction();
}

bool removeLink(const QString &path)
{
    // Where links to folders are folders themselves, only rmdir takes them away; it leaves their target alone too.
    return QFile::remove(path) || QDir().rmdir(path);
}

bool removeFile(const QString &path)
{
    if (QFile::remove(path))
        return true;
    // Windows refuses to delete what is write-protected, as system files are.
    QFile::setPermissions(path, QFile::permissions(path) | QFile::WriteOwner | QFile::WriteUser);
    return QFile::remove(path);
}

bool removeContent(const QString &path)
{
    bool good = true;
    // Listed before anything is deleted: a listing that goes on while its folder shrinks may skip entries.
    const QFileInfoList entries = QDir(path).entryInfoList(kEverything, QDir::NoSort);
    for (const QFileInfo &entry : entries) {
        const QString entryPath = entry.filePath();
        if (isLink(entry))
            good &= removeLink(entryPath);
        else if (entry.isDir())
            good &= removeContent(entryPath) && QDir().rmdir(entryPath);
        else
            good &= removeFile(entryPath);
        QCoreApplication::processEvents();
    }
    return good;
}

} // namespace

bool removeFolder(const QString &path)
{
    if (path.isEmpty())
        return false;
    // A link whose name ends in a slash would be taken for the folder it points to.
    const QString clean = QDir::cleanPath(path);
    const QFileInfo info(clean);
    if (isLink(info))
        return removeLink(clean);
    if (!info.exists())
        return true;
    return info.isDir() && removeContent(clean) && QDir().rmdir(clean);
}

bool emptyFolder(const QString &path)
{
    return removeFolder(path) && QDir().mkdir(QDir::cleanPath(path));
}

bool visitTree(const QString &root, QDir::Filters filters, const QStringList &nameFilters,
               const std::function<bool(const QString &path)> &visit)
{
    // An empty path would mean the current folder.
    if (root.isEmpty())
        return true;
    QDirIterator entries(root, nameFilters, filters, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        if (!visit(entries.next()))
            return false;
        QCoreApplication::processEvents();
    }
    return true;
}

QStringList listTree(const QString &root, QDir::Filters filters, const QStringList &nameFilters, const bool *abort)
{
    QStringList found;
    visitTree(root, filters, nameFilters, [&found, abort](const QString &path) {
        if (abort && *abort)
            return false;
        found.append(path);
        return true;
    });
    return found;
}
