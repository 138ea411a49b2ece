#include "makeplayer.h"

#include "archive.h"
#include "furniture.h"
#include "listings.h"
#include "playerdisk.h"

#include <QDir>

namespace {

constexpr int kLargeArchive = 5000;
constexpr int kFramesInSmallArchive = 12;
constexpr int kFramesInLargeArchive = 3;

} // namespace

bool mayBecomeAPlayer(const QString &root)
{
    static const QStringList kHarmless = {QStringLiteral(".windows-label"), QStringLiteral("lost+found"),
                                          QStringLiteral("System Volume Information")};
    const QDir folder(root);
    if (root.isEmpty() || !folder.exists())
        return false;
    const QStringList names = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        if (!kHarmless.contains(name))
            return false;
    }
    return true;
}

MakeResult makePlayer(const QString &root, const MakeOptions &options)
{
    MakeResult result;
    if (options.songs < kFewestSongs || options.songs > kMostSongs) {
        result.error = QStringLiteral("The number of songs goes from %1 to %2.").arg(kFewestSongs).arg(kMostSongs);
        return result;
    }
    if (!mayBecomeAPlayer(root)) {
        result.error = QStringLiteral("Not an empty folder: %1").arg(root);
        return result;
    }
    PlayerDisk disk(root, options.seed, options.songs < kLargeArchive ? kFramesInSmallArchive : kFramesInLargeArchive);
    addSystem(disk);
    addRootFiles(disk);
    addMedia(disk);
    addUnsupported(disk);
    addSpecialSongs(disk);
    addBrokenSongs(disk);
    addBigFolders(disk, options.songs);
    addPlainFolders(disk, options.songs - disk.manifest().songs.size());
    addPlaylists(disk);
    addFastDatabase(disk);
    result.manifest = disk.manifest();
    result.files = disk.fileCount();
    if (!disk.failedAt().isEmpty())
        result.error = QStringLiteral("Cannot write %1").arg(disk.failedAt());
    return result;
}
