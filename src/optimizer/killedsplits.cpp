// Chapter of Ottimizza: what a run that was killed while it split a folder has left is made good.
#include "moveentry.h"
#include "ottimizzarun.h"
#include "splitnote.h"

#include "disk/tree.h"

#include <QDebug>
#include <QRegularExpression>
#include <QSet>

namespace {

/// @p base without the number that it got because its name was taken.
QString withoutNumber(const QString &base)
{
    static const QRegularExpression number(QStringLiteral("\\(\\d+\\)$"));
    return QString(base).remove(number);
}

} // namespace

/// A run that was killed while it split a folder has left the folder's content under another name.
void Ottimizza::makeGoodKilledSplits()
{
    const QList<SplitFolder> splits = splitNotes(run().player);
    if (splits.isEmpty())
        return;
    emit updateLabelAction(tr("Scansione cartelle in corso..."));
    emit setProgressBarMinVal(0);
    emit setProgressBarMaxVal(kBusyBar);
    for (const SplitFolder &split : splits) {
        if (abortRequested || !isPlayerThere())
            return;
        const bool wasAside = QFileInfo(split.aside).isDir();
        qInfo() << "corvin_optimizer : Ripristino cartella " << split.folder;
        bringCompanionsBack(split);
        const bool whole = putBack(split.aside, split.folder);
        if (!isPlayerThere())
            return;
        if (!whole)
            qWarning() << "corvin_optimizer : Ripristino incompleto " << split.aside;
        else if (QFileInfo(split.folder).isDir())
            run().killedFolders.append(QFileInfo(split.folder).canonicalFilePath());
        // Without the split the folder is whole: there is nothing to go on with another time.
        if (whole && (!optSplit || !wasAside))
            removeSplitNote(run().player, split.folder);
    }
}

/// A companion goes before its song. Where the song did not follow any more, it may find the sub-folder full by that
/// very companion: so the companion comes back to it.
void Ottimizza::bringCompanionsBack(const SplitFolder &split)
{
    const auto songsIn = [this](const QString &folder) {
        QSet<QString> songs;
        walkTree({folder, QDir::Files | QDir::Hidden, {}, false, kListingRound}, [this, &songs](const QFileInfo &file) {
            if (matchesSongFilter(file.fileName()))
                songs.insert(file.completeBaseName());
            return true;
        });
        return songs;
    };
    const QSet<QString> waiting = songsIn(split.aside);
    const QFileInfoList subfolders = QDir(split.folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QFileInfo &subfolder : subfolders) {
        const QSet<QString> arrived = songsIn(subfolder.filePath());
        const QFileInfoList files = QDir(subfolder.filePath()).entryInfoList(QDir::Files);
        for (const QFileInfo &file : files) {
            const QString base = file.completeBaseName();
            if (!companionSuffixes.contains(file.suffix()) || arrived.contains(base))
                continue;
            for (const QString &song : {base, withoutNumber(base)}) {
                if (waiting.contains(song) && moveEntry(file.filePath(), split.aside + QLatin1Char('/') + song +
                                                                             QLatin1Char('.') + file.suffix()))
                    break;
            }
        }
    }
}
