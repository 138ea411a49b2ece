#include "archivetool.h"

#include <QDirIterator>
#include <QFile>
#include <QStandardPaths>

QString archiveTool(const QString &programFolder)
{
    QString own = programFolder + QStringLiteral("/unar.exe");
    if (QFile::exists(own))
        return own;
    const QString systems = QStandardPaths::findExecutable(QStringLiteral("unar"));
    return systems.isEmpty() ? own : systems;
}

void removeUnpackedLinks(const QString &folder)
{
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        if (entries.fileInfo().isSymLink())
            QFile::remove(path);
    }
}
