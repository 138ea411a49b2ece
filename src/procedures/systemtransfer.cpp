// The main window's chapter that replaces the system parts of the player.
#include "app/mainwindow.h"

#include "disk/tree.h"
#include "systemattributes.h"
#include "ui_mainwindow.h"

#include <QDir>
#include <QFile>

namespace {

constexpr QDir::Filters kEverything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

/// The entries at the player's root named @p name, however the volume spells it: more than one only where case counts.
QStringList rootEntries(const QString &deviceRoot, const QString &name)
{
    QStringList found;
    const QStringList entries = QDir(deviceRoot).entryList(kEverything, QDir::Name);
    for (const QString &entry : entries) {
        if (entry.compare(name, Qt::CaseInsensitive) == 0)
            found.append(deviceRoot + entry);
    }
    return found;
}

bool removeSystemParts(const QString &deviceRoot)
{
    for (const auto &name : {QStringLiteral("system"), QStringLiteral("bridges"), QStringLiteral("effects")}) {
        const QStringList folders = rootEntries(deviceRoot, name);
        for (const QString &folder : folders) {
            if (!removeFolder(folder))
                return false;
        }
    }
    const QStringList startFiles = rootEntries(deviceRoot, QStringLiteral("AUTOEXEC.BAT"));
    for (const QString &file : startFiles)
        QFile::remove(file);
    return true;
}

bool writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush();
}

} // namespace

bool MainWindow::transferSystem(const QString &deviceRoot, const QString &unpackedFolder)
{
    if (!removeSystemParts(deviceRoot))
        return false;

    QStringList files =
        listTree(unpackedFolder, QDir::Dirs | QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                 {QStringLiteral("*.*")});
    files.sort(Qt::CaseSensitive);
    // The root ends in a slash, so the one between the unpacked folder and its content is cut off too.
    const bool copied = copyFileList(files, deviceRoot, unpackedFolder + QLatin1Char('/'), ui->progressBar);
    // A folder that could not be made is no failure here: procedureOk tells of it, and the procedure ends with its own
    // words. Whatever else went wrong ends the procedure now.
    if (!copied && procedureOk)
        return false;

    const QString batch = unpackedFolder + QStringLiteral("/MATTRB.BAT");
    return writeFile(batch, attributeBatch(deviceRoot)) && runAttributeBatch(batch, deviceRoot);
}
