#include "archivetool.h"

#include "disk/tree.h"

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
    walkTree({folder}, [](const QFileInfo &entry) {
        if (entry.isSymLink())
            QFile::remove(entry.filePath());
        return true;
    });
}
