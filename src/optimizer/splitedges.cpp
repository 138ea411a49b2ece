// Chapter of Ottimizza: what comes before a folder is split, so that it can be split, and what comes after it, so that
// nothing is lost that found no place in a sub-folder.
#include "moveentry.h"
#include "ottimizzarun.h"
#include "splitnote.h"
#include "splitrun.h"
#include "titleinitial.h"

#include "disk/aside.h"
#include "disk/diskcalls.h"
#include "disk/tree.h"

#include <QCoreApplication>
#include <QDebug>
#include <QSet>

namespace {

/// Letters, digits and the sharp: titles of other alphabets are counted once they are known.
constexpr int kUsualInitials = 37;

bool isRoomFor(const SplitRoom &room, int folders, const QString &path)
{
    const VolumeRoom volume = volumeRoom(path);
    return volume.clusterBytes > 0 && volume.freeBytes >= room.bytesNeeded(folders, volume.clusterBytes);
}

} // namespace

/// A folder that cannot be split is better left alone than set aside and brought back.
bool Ottimizza::canBeSplit(SplitRun &run)
{
    const QDir::Filters files = QDir::Files | QDir::Hidden | QDir::System;
    walkTree({run.folder, files, {}, false, kListingRound}, [this, &run](const QFileInfo &file) {
        const QString name = file.fileName();
        if (matchesSongFilter(name))
            run.room.addSong(name);
        else if (companionSuffixes.contains(file.suffix(), Qt::CaseInsensitive))
            run.addCompanion(name);
        return true;
    });
    if (!isRoomFor(run.room, run.room.mostFolders(kUsualInitials, maxFilesPerSubfolder), run.folder)) {
        qWarning() << "corvin_optimizer : Spazio insufficiente, cartella non suddivisa " << run.folder;
        return false;
    }
    if (!isPlayerThere())
        return false;
    // Only an attempt tells whether the folder may be written to. A run that was killed may have left its own.
    const QString attempt = run.folder + QLatin1String("/corvin4-split.tmp");
    QDir().rmdir(attempt);
    if (QDir().mkdir(attempt) && QDir().rmdir(attempt))
        return true;
    qWarning() << "corvin_optimizer : Cartella protetta, non suddivisa " << run.folder;
    return false;
}

/// Returns false when the folder has to stay as it is; it then is as it was.
bool Ottimizza::setAside(const SplitRun &run)
{
    if (!isPlayerThere())
        return false;
    // A run that is killed from here on is made good by the next. Without a note nothing is lost either: the songs then
    // stay where they are.
    if (!writeSplitNote(this->run().player, {run.folder, run.oldFolder}))
        qWarning() << "corvin_optimizer : no note for " << run.folder;
    // A scanner may have one of its songs open.
    if (doAsidePatiently([&run] { return moveEntry(run.folder, run.oldFolder); })) {
        if (QDir().mkdir(run.folder))
            return true;
        moveEntry(run.oldFolder, run.folder);
    }
    qWarning() << "corvin_optimizer : Cartella non suddivisa " << run.folder;
    if (isPlayerThere() && !QFileInfo::exists(run.oldFolder))
        removeSplitNote(this->run().player, run.folder);
    return false;
}

/// Asked when the titles are known and nothing has moved yet.
bool Ottimizza::hasRoomForTitles(const SplitRun &run) const
{
    QSet<QChar> initials;
    for (const SplitRun::TitledEntry &titled : run.titled) {
        if (!titled.entry.isDir())
            initials.insert(titleInitial(titled.title));
    }
    if (initials.size() <= kUsualInitials ||
        isRoomFor(run.room, run.room.mostFolders(initials.size(), maxFilesPerSubfolder), run.folder))
        return true;
    qWarning() << "corvin_optimizer : Spazio insufficiente, cartella non suddivisa " << run.folder;
    return false;
}

/// What is still under the other name goes back to the folder's own. Returns whether all of it did.
bool Ottimizza::bringBack(const SplitRun &run)
{
    if (!isPlayerThere())
        return false;
    const bool whole = putBack(run.oldFolder, run.folder);
    if (!isPlayerThere())
        return false;
    if (!whole)
        qWarning() << "corvin_optimizer : Ripristino incompleto " << run.oldFolder;
    return whole;
}

/// What lies in the old folder and is neither song, companion of a song, picture, video nor folder, by name.
QStringList Ottimizza::listRest(const SplitRun &run) const
{
    QFileInfoList files;
    QSet<QString> songs;
    walkTree({run.oldFolder, kAllEntries, {}, false, kListingRound}, [this, &files, &songs](const QFileInfo &entry) {
        if (entry.isDir() && !isLink(entry))
            return true;
        if (matchesSongFilter(entry.fileName()) && !entry.isHidden())
            songs.insert(entry.completeBaseName());
        else
            files.append(entry);
        return true;
    });
    QStringList rest;
    for (const QFileInfo &file : qAsConst(files)) {
        const QString suffix = file.suffix();
        const bool isMedia =
            imageSuffixes.contains(suffix, Qt::CaseInsensitive) || videoSuffixes.contains(suffix, Qt::CaseInsensitive);
        const bool isOfSong =
            companionSuffixes.contains(suffix, Qt::CaseInsensitive) && songs.contains(file.completeBaseName());
        // One whose name is taken gets another: it is not the file of its name.
        const bool isTaken = QFileInfo::exists(run.folder + QLatin1Char('/') + file.fileName());
        if (!(isMedia && !file.isHidden()) && !isOfSong && !isTaken)
            rest.append(file.fileName());
    }
    return rest;
}

/// Deliberate: what the split leaves over goes, now that it is back in its folder. What cannot be copied to the PC
/// stays.
void Ottimizza::takeAwayRest(const SplitRun &run, const QStringList &rest)
{
    for (const QString &name : rest) {
        QCoreApplication::processEvents();
        if (abortRequested || !isPlayerThere())
            return;
        const QString path = run.folder + QLatin1Char('/') + name;
        // A link is nothing of its own.
        if (isLink(QFileInfo(path)) || keepOnPc(path, true))
            removeFile(path);
    }
}
