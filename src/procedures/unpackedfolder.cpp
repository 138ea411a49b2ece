#include "unpackedfolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QStringList>

namespace {

constexpr QDir::Filters kEverything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

bool isPlayersOwn(const QString &name)
{
    const QStringList own = {QStringLiteral("System"),  QStringLiteral("CorvinUpdate"), QStringLiteral("Bridges"),
                             QStringLiteral("Effects"), QStringLiteral("My Songs"),     QStringLiteral("Images"),
                             QStringLiteral("Videos")};
    return own.contains(name, Qt::CaseInsensitive);
}

} // namespace

QString unpackedFolder(const QString &archiveFolder)
{
    const QFileInfoList entries = QDir(archiveFolder).entryInfoList(kEverything);
    if (entries.size() != 1)
        return archiveFolder;
    const QFileInfo &only = entries.first();
    if (!only.isDir() || only.isSymLink() || isPlayersOwn(only.fileName()))
        return archiveFolder;
    return only.filePath();
}

bool holdsSystemFiles(const QString &folder)
{
    return QDirIterator(folder, {QStringLiteral("*.*")}, QDir::Files | QDir::Hidden | QDir::System,
                        QDirIterator::Subdirectories)
        .hasNext();
}
