#include "keptplaylists.h"

#include "device/devicecase.h"
#include "disk/tree.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

/// The folders in @p folder named @p name in any case, no links.
QStringList foldersNamed(const QString &folder, const QString &name)
{
    QStringList found = entriesNamed(folder, name);
    const auto isNoFolder = [](const QString &path) { return !QFileInfo(path).isDir() || isLink(QFileInfo(path)); };
    found.erase(std::remove_if(found.begin(), found.end(), isNoFolder), found.end());
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
        for (const QString &folder : playlists) {
            // What cannot be listed would be removed unseen.
            if (!isTreeListable(folder))
                return {JobEnd::Failed};
            files += listTree({folder, QDir::Files | QDir::Hidden | QDir::System});
        }
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
