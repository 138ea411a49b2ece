#include "unpackedfolder.h"

#include "device/player.h"
#include "disk/tree.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

QString unpackedFolder(const QString &archiveFolder)
{
    const QFileInfoList entries = QDir(archiveFolder).entryInfoList(kAllEntries);
    if (entries.size() != 1)
        return archiveFolder;
    const QFileInfo &only = entries.first();
    if (!only.isDir() || only.isSymLink() || Player::isOwnFolder(only.fileName()))
        return archiveFolder;
    return only.filePath();
}

bool holdsWholeSystem(const QString &folder)
{
    QStringList missing;
    for (const QLatin1String file :
         {PlayerNames::kStartScript, PlayerNames::kMainProgram, PlayerNames::kInterfaceProcess})
        missing.append(QString(file).toLower());
    walkTree({folder, QDir::Files | QDir::Hidden | QDir::System}, [&](const QFileInfo &entry) {
        missing.removeOne(entry.filePath().mid(folder.size() + 1).toLower());
        return !missing.isEmpty();
    });
    return missing.isEmpty();
}

bool holdsRivalProgram(const QString &folder)
{
    // Also those endings that this user's Windows does not start by itself: the next one's may.
    QStringList endings =
        QStringLiteral(".com;.exe;.bat;.cmd;.vbs;.vbe;.js;.jse;.wsf;.wsh;.msc").split(QLatin1Char(';'));
    endings += qEnvironmentVariable("PATHEXT").toLower().split(QLatin1Char(';'), Qt::SkipEmptyParts);
    const QStringList own = {QStringLiteral("attrib"), QStringLiteral("cmd"), QStringLiteral("format")};
    const QStringList names = QDir(folder).entryList(kAllEntries, QDir::NoSort);
    return std::any_of(names.begin(), names.end(), [&](const QString &name) {
        const QFileInfo info(name.toLower());
        return own.contains(info.completeBaseName()) && endings.contains(QLatin1Char('.') + info.suffix());
    });
}

QStringList systemEntries(const QString &folder)
{
    QStringList entries = listTree({folder,
                                    QDir::Dirs | QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                    {QStringLiteral("*.*")}});
    entries.sort(Qt::CaseSensitive);
    return entries;
}

bool holdsSystemFiles(const QString &folder)
{
    // The walk ends at the first one.
    return !walkTree({folder, QDir::Files | QDir::Hidden | QDir::System, {QStringLiteral("*.*")}},
                     [](const QFileInfo &) { return false; });
}

bool areWholeAt(const QString &target, const QStringList &entries, const QString &source)
{
    return std::all_of(entries.begin(), entries.end(), [&](const QString &path) {
        const QFileInfo entry(path);
        const QFileInfo copy(target + path.mid(source.size()));
        return entry.isDir() || (copy.isFile() && copy.size() == entry.size());
    });
}
