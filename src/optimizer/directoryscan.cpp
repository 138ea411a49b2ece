// Chapter of Ottimizza: the step that reads the playlists, clears the root folder and takes stock of the disk.
#include "freename.h"
#include "moveentry.h"
#include "ottimizzarun.h"
#include "playlist.h"
#include "splitnote.h"

#include "disk/tree.h"

#include <QCoreApplication>
#include <QDebug>
#include <QHash>

#include <algorithm>

namespace {

constexpr QDir::Filters kVisibleFiles = QDir::Files | QDir::NoSymLinks | QDir::NoDotAndDotDot;
constexpr int kFilesPerLabel = 250;
constexpr int kCountWidth = 6;
constexpr int kFullBar = 100;

} // namespace

/// Where a folder lies, found out once for all its files.
struct Ottimizza::FolderPlace
{
    QString path; ///< canonical
    bool isSystem = false;
    bool isEffect = false; ///< "Bridges" or "Effects"
    bool isImages = false;
    bool isVideos = false;
    int *count = nullptr; ///< of its songs and companions, once it has any
};

void Ottimizza::scan_directories()
{
    if (abortRequested)
        return;
    emit updateLabelAction(tr("Scansione cartelle in corso..."));
    qInfo() << "scan_directories :"
            << "START";
    emit setProgressBarMinVal(0);
    emit setProgressBarMaxVal(kBusyBar);
    playlistIndex.clear();
    imageFiles.clear();
    videoFiles.clear();
    unsupportedFiles.clear();
    bigFolders.clear();

    if (!isPlayerThere())
        return;
    mapPlaylists();
    if (!isPlayerThere() || !moveRootFiles())
        return;
    QMap<QString, int> folderFileCount;
    // A walk over a disk that is gone ends early, and finds that nothing is there.
    if (!classifyFiles(folderFileCount) || !isPlayerThere())
        return;
    findBigFolders(folderFileCount);
    emit setProgressBarMaxVal(kFullBar);
}

void Ottimizza::mapPlaylists()
{
    const Player &player = run().player;
    restorePlaylists(player.path(PlayerNames::kPlaylists));
    workDir.setPath(player.path(PlayerNames::kPlaylists));
    workDir.setNameFilters({QStringLiteral("*.pls")});
    workDir.setFilter(QDir::Files);
    qInfo() << "scan_directories :"
            << "Mappatura dei files presenti nelle playlist";
    const QFileInfoList playlists = workDir.entryInfoList();
    for (const QFileInfo &playlist : playlists) {
        QCoreApplication::processEvents();
        const QString path = playlist.absoluteFilePath();
        qInfo() << "scan_directories :"
                << "Playlist :" << path;
        const QStringList keys = playlistKeys(path, player);
        for (const QString &key : keys)
            playlistIndex.insert(key, path);
    }
    qInfo() << "scan_directories :"
            << "N. FileInPlayList :" << playlistIndex.size();
}

/// Returns false after a stop.
bool Ottimizza::moveRootFiles()
{
    const QString mySongs = run().player.path(PlayerNames::kMySongs);
    QDir().mkdir(mySongs);
    qInfo() << "scan_directories :"
            << "Scan Root Dir : move to "
            << "My Songs";
    int moved = 0;
    // Without the folder no file could be moved, and the playlists would name songs that are not there.
    if (QFileInfo(mySongs).isDir()) {
        const std::optional<QStringList> paths = listRootFiles();
        if (!paths)
            return false;
        for (const QString &path : *paths) {
            if (abortRequested)
                return false;
            QCoreApplication::processEvents();
            if (belongsInRoot(path))
                continue;
            if (!isPlayerThere())
                return false;
            const QString target = freeRootFileTarget(mySongs, path.mid(rootPath.size()));
            if (!rewritePlaylists(path, path, target)) {
                qWarning() << "scan_directories :"
                           << "Playlist non aggiornata, il file resta :" << path;
                continue;
            }
            if (!moveEntry(path, target)) {
                qWarning() << "scan_directories :"
                           << "Impossibile spostare, il file resta :" << path;
                rewritePlaylists(path, target, path);
            }
            ++moved;
        }
    }
    qInfo() << "scan_directories :"
            << "Scan Root Dir : file count " << moved;
    return true;
}

/// Nothing after a stop. The list is whole before the first file moves: an iterator over a folder that changes may
/// leave files out.
std::optional<QStringList> Ottimizza::listRootFiles() const
{
    QStringList paths;
    const bool finished =
        walkTree({rootPath, kVisibleFiles, {}, false, kListingRound}, [this, &paths](const QFileInfo &file) {
            paths.append(rootPath + file.fileName());
            return !abortRequested;
        });
    return finished ? std::make_optional(paths) : std::nullopt;
}

/// The player's own files in the root, which stay there.
bool Ottimizza::belongsInRoot(const QString &path) const
{
    for (const QLatin1String name : {QLatin1String("q-artedev"), PlayerNames::kImportFile, PlayerNames::kStartScript}) {
        if (path.compare(rootPath + name, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

/// Returns false after a stop.
bool Ottimizza::classifyFiles(QMap<QString, int> &folderFileCount)
{
    qInfo() << "scan_directories :"
            << "Scan All Corvin Dirs : START";
    QHash<QString, FolderPlace> places;
    int counter = 0;
    return walkTree({rootPath, kVisibleFiles}, [&](const QFileInfo &file) {
        if (abortRequested)
            return false;
        const QString folder = file.path();
        auto place = places.find(folder);
        if (place == places.end())
            place = places.insert(folder, placeOf(folder));
        if (classifyFile(file, *place, folderFileCount) && ++counter % kFilesPerLabel == 0) {
            emit updateLabelAction(tr("Scansione cartelle in corso...") +
                                   QStringLiteral(" [%1]").arg(QString::number(counter)));
        }
        return true;
    });
}

/// Deliberate: beginnings of names, without a closing slash. A folder "SystemOld" is left alone like "System" itself.
Ottimizza::FolderPlace Ottimizza::placeOf(const QString &folder) const
{
    FolderPlace place;
    place.path = QFileInfo(folder).canonicalFilePath();
    const auto startsWith = [this, &place](QLatin1String name) {
        return place.path.startsWith(rootPath + name, Qt::CaseInsensitive);
    };
    place.isSystem = startsWith(PlayerNames::kSystem) || startsWith(PlayerNames::kUpdate);
    place.isEffect = startsWith(PlayerNames::kBridges) || startsWith(PlayerNames::kEffects);
    place.isImages = startsWith(PlayerNames::kImages);
    place.isVideos = startsWith(PlayerNames::kVideos);
    return place;
}

/// Returns false for a file that is passed over and not counted for the status line.
bool Ottimizza::classifyFile(const QFileInfo &file, FolderPlace &place, QMap<QString, int> &folderFileCount)
{
    if (place.isSystem)
        return false;
    const auto count = [&place, &folderFileCount] {
        if (!place.count)
            place.count = &folderFileCount[place.path];
        ++*place.count;
    };
    const QString suffix = file.suffix();
    if (songSuffixes.contains(suffix, Qt::CaseInsensitive)) {
        if (!place.isEffect)
            count();
    } else if (imageSuffixes.contains(suffix, Qt::CaseInsensitive)) {
        if (!place.isImages)
            imageFiles.append(file);
    } else if (videoSuffixes.contains(suffix, Qt::CaseInsensitive)) {
        if (!place.isVideos)
            videoFiles.append(file);
    } else if (companionSuffixes.contains(suffix, Qt::CaseInsensitive)) {
        // Deliberate: unlike songs, companions count in "Bridges" and "Effects" as well.
        count();
    } else {
        // The walk follows no links: the folder's canonical path and the name make the file's canonical path. That of
        // a root folder such as E:/ already ends in a slash.
        const QString folder = place.path.endsWith(QLatin1Char('/')) ? place.path : place.path + QLatin1Char('/');
        if (belongsInRoot(folder + file.fileName()))
            return false;
        unsupportedFiles.append(file);
    }
    return true;
}

void Ottimizza::findBigFolders(const QMap<QString, int> &folderFileCount)
{
    int listed = 0;
    for (auto folder = folderFileCount.cbegin(); folder != folderFileCount.cend(); ++folder) {
        qInfo() << QStringLiteral("[%1]").arg(folder.value(), kCountWidth) << folder.key();
        // The root itself is never split, however full it is: to be renamed it would have to leave the volume.
        const bool isRoot = folder.key() == rootPath || folder.key() + QLatin1Char('/') == rootPath;
        // What a killed run has begun to split is split to its end, however little is left to do.
        if ((folder.value() > bigFolderThreshold || run().killedFolders.contains(folder.key())) && !isRoot)
            bigFolders.append(QFileInfo(folder.key()));
        if (++listed % kListingRound == 0)
            QCoreApplication::processEvents();
    }
    for (const QString &folder : qAsConst(run().killedFolders)) {
        if (!folderFileCount.contains(folder))
            removeSplitNote(run().player, folder);
    }
    // Deeper folders come first: a big folder inside another one is split before it moves with its parent.
    std::sort(bigFolders.begin(), bigFolders.end(), [](const QFileInfo &a, const QFileInfo &b) {
        return a.absoluteFilePath().size() > b.absoluteFilePath().size();
    });
    qInfo() << "scan_directories :"
            << "Scan All Corvin Dirs : Big Folder :" << bigFolders.size();
}

/// Lets all playlists that named the song @p song before the run name @p newPath instead of @p oldPath, or none when
/// one of them cannot be written: the song then stays where they name it.
bool Ottimizza::rewritePlaylists(const QString &song, const QString &oldPath, const QString &newPath) const
{
    QStringList rewritten;
    QStringList playlists = playlistIndex.values(song);
    // One that names the song a thousand times is rewritten once.
    playlists.removeDuplicates();
    for (const QString &playlist : qAsConst(playlists)) {
        QCoreApplication::processEvents();
        if (!rewritePlaylist(playlist, oldPath, newPath)) {
            for (const QString &other : qAsConst(rewritten))
                rewritePlaylist(other, newPath, oldPath);
            return false;
        }
        rewritten.append(playlist);
    }
    return true;
}

bool Ottimizza::rewritePlaylist(const QString &playlistPath, const QString &oldPath, const QString &newPath) const
{
    const Player player(rootPath);
    return rewritePlaylistFile(playlistPath, player.devicePath(oldPath), player.devicePath(newPath));
}
