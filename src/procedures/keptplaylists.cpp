#include "keptplaylists.h"

#include "disk/tree.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

/// The folders in @p folder named @p name in any case: more than one only where case counts.
QStringList foldersNamed(const QString &folder, const QString &name)
{
    QStringList found;
    const QFileInfoList entries = QDir(folder).entryInfoList(kAllEntries, QDir::Name);
    for (const QFileInfo &entry : entries) {
        if (entry.fileName().compare(name, Qt::CaseInsensitive) == 0 && entry.isDir() && !isLink(entry))
            found.append(entry.filePath());
    }
    return found;
}

} // namespace

JobEnd keepPlaylists(const JobView &view, const Player &player, KeptFiles &kept)
{
    const auto keepWindowAlive = [&view] {
        QCoreApplication::processEvents();
        return !view.isStopped();
    };
    const QStringList parts = QString(PlayerNames::kPlaylists).split(QLatin1Char('/'));
    QStringList files;
    const QStringList systems = foldersNamed(player.root(), parts.first());
    for (const QString &system : systems) {
        const QStringList playlists = foldersNamed(system, parts.last());
        for (const QString &folder : playlists)
            files += listTree({folder, QDir::Files | QDir::Hidden | QDir::System});
    }
    for (const QString &file : qAsConst(files)) {
        if (!keepWindowAlive())
            return {JobEnd::Stopped};
        if (!kept.keep(file, KeptFiles::Kind::Songs, keepWindowAlive))
            return {view.isStopped() ? JobEnd::Stopped : JobEnd::Failed};
    }
    // The listing of a player that was pulled out just ends early, and would pass for all there is.
    return {player.isThere() ? JobEnd::Done : JobEnd::Failed};
}
