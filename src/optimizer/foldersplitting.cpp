// Chapter of Ottimizza: the step that spreads the songs of big folders over sub-folders by the initial of their titles.
#include "freename.h"
#include "moveentry.h"
#include "ottimizzarun.h"
#include "splitnote.h"
#include "splitrun.h"
#include "titleinitial.h"
#include "titlereader.h"

#include "disk/breath.h"
#include "disk/diskcalls.h"
#include "disk/tree.h"

#include <QCoreApplication>
#include <QDebug>

#include <algorithm>

namespace {

/// The number of files directly in @p folder, counted no further than @p limit.
int countFiles(const QString &folder, int limit)
{
    int count = 0;
    if (limit > 0)
        walkTree({folder, QDir::Files, {}, false, 0}, [&count, limit](const QFileInfo &) { return ++count < limit; });
    return count;
}

} // namespace

void Ottimizza::corvin_optimizer()
{
    emit updateLabelAction(tr("Caricamento risorse..."));
    if (bigFolders.isEmpty()) {
        emit updateLabelAction(tr("Operazione completata"));
        return;
    }
    qInfo() << "corvin_optimizer : START";
    const int total = bigFolders.size();
    for (int i = 0; i < total && !abortRequested; ++i) {
        splitFolder(bigFolders.at(i).absoluteFilePath(),
                    QStringLiteral("(%1/%2) ").arg(i + 1).arg(total) + tr("Ottimizzazione cartelle "));
    }
    if (abortRequested) {
        // Deliberate: the stop is used up here, so the steps that follow still run.
        abortRequested = m_closing || !run().player.isThere();
        return;
    }
    qInfo() << "corvin_optimizer : END";
    emit updateLabelAction(tr("Operazione completata"));
}

void Ottimizza::splitFolder(const QString &folder, const QString &header)
{
    emit setProgressBarMinVal(0);
    emit setProgressBarMaxVal(kBusyBar);
    SplitRun run;
    run.folder = folder;
    run.oldFolder = freeOldFolderName(folder);
    run.header = header;
    emit updateLabelAction(header + QLatin1Char('\n') + folder);
    qInfo() << "corvin_optimizer : Start Open Dir " << folder;
    if (!isPlayerThere() || !canBeSplit(run) || !setAside(run))
        return;
    const QStringList rest = splitEntries(run) ? listRest(run) : QStringList();
    if (bringBack(run)) {
        takeAwayRest(run, rest);
        if (isPlayerThere())
            removeSplitNote(this->run().player, run.folder);
    }
    emit updateProgressBarVal(run.entries.size());
}

/// Returns false when nothing has moved or the player has gone. What is still under the folder's other name afterwards
/// must be brought back in any case.
bool Ottimizza::splitEntries(SplitRun &run)
{
    listEntries(run);
    qInfo() << "corvin_optimizer : End Open Dir N. Entry " << run.entries.size();
    readTitles(run);
    qInfo() << "corvin_optimizer : Start Ordinamento";
    std::sort(run.titled.begin(), run.titled.end(), [](const auto &a, const auto &b) { return a.sortKey < b.sortKey; });
    return hasRoomForTitles(run) && moveIntoSubfolders(run);
}

void Ottimizza::listEntries(SplitRun &run) const
{
    const Walk walk = {run.oldFolder, QDir::NoDotAndDotDot | QDir::AllDirs | QDir::Files, {}, false, kListingRound};
    walkTree(walk, [this, &run](const QFileInfo &entry) {
        if (entry.isDir() || matchesSongFilter(entry.fileName()))
            run.entries.append(entry);
        return true;
    });
}

void Ottimizza::readTitles(SplitRun &run)
{
    const int total = run.entries.size();
    emit updateLabelAction(run.header + QStringLiteral(" : ") + tr("Ricerca dei titoli nei brani") +
                           QStringLiteral("\n[") + QString::number(total) + QStringLiteral("] ") + run.folder);
    emit setProgressBarMaxVal(total);
    qInfo() << "corvin_optimizer : Start Ricerca Titoli";
    run.titled.reserve(total);
    Breath breath;
    for (int i = 0; i < total; ++i) {
        breath.take();
        const QFileInfo &entry = run.entries.at(i);
        // Folders sort before every song.
        const QString title = entry.isDir() ? QString(QChar(u'\0'))
                                            : readSongTitle(suffixFormatIndex.value(entry.suffix().toLower()), entry);
        run.titled.append({foldedTitle(title), title, entry});
        emit updateProgressBarVal(i + 1);
    }
}

/// Returns false when the player has gone.
bool Ottimizza::moveIntoSubfolders(SplitRun &run)
{
    const int total = run.titled.size();
    emit updateLabelAction(run.header + QStringLiteral(" : ") + tr("Organizzazione in sottocartelle") +
                           QStringLiteral("\n[") + QString::number(total) + QStringLiteral("] ") + run.folder);
    emit setProgressBarMaxVal(total);
    qInfo() << "corvin_optimizer : Start Move in sottocartelle";
    Breath breath;
    for (int i = 0; i < total; ++i) {
        breath.take();
        emit updateProgressBarVal(i + 1);
        if (!isPlayerThere())
            return false;
        const SplitRun::TitledEntry &titled = run.titled.at(i);
        // What does not find its place is brought back in the end.
        if (titled.entry.isDir())
            moveEntry(titled.entry.absoluteFilePath(), run.folder + QLatin1Char('/') + titled.entry.fileName());
        else if (!moveSong(run, titled.title, titled.entry))
            qInfo() << "corvin_optimizer : Impossibile spostare " << titled.entry.absoluteFilePath();
    }
    return true;
}

/// Returns whether song and companions have moved; otherwise all of them are where they were. A companion goes before
/// its song: a run that is killed between the two leaves the song to be moved again, and it finds its companion there.
bool Ottimizza::moveSong(SplitRun &run, const QString &title, const QFileInfo &song) const
{
    const QChar initial = titleInitial(title);
    if (initial != run.initial || run.count == 0)
        chooseSubfolder(run, initial);
    const QString suffix = song.suffix();
    const QString target = freeSplitBase(run.subfolder, song.completeBaseName(), suffix);
    const QString base = run.oldFolder + QLatin1Char('/') + song.completeBaseName();
    QVector<QLatin1String> moved;
    bool good = true;
    for (const QLatin1String companion : {QLatin1String(".dat"), QLatin1String(".cdg"), QLatin1String(".bak")}) {
        if (!good || !run.companions.contains(song.completeBaseName() + companion) || !QFile::exists(base + companion))
            continue;
        good = moveEntry(base + companion, target + companion);
        if (good)
            moved.append(companion);
    }
    // That nothing bears the target's name has just been found out.
    if (!good || !moveOver(song.absoluteFilePath(), target + QLatin1Char('.') + suffix)) {
        for (const QLatin1String companion : qAsConst(moved))
            moveEntry(target + companion, base + companion);
        return false;
    }
    run.count += 1 + moved.size();
    if (run.count >= maxFilesPerSubfolder)
        run.count = 0;
    return true;
}

/// A full folder's count stays when a new folder is made after it: its first song then reaches the limit, and the
/// choice that this forces settles on the new folder with its true count.
void Ottimizza::chooseSubfolder(SplitRun &run, QChar initial) const
{
    run.count = 0;
    // Those before the last full one need not be counted again: nothing leaves a sub-folder.
    for (int number = run.lastFull.value(initial);; ++number) {
        run.subfolder = run.folder + QLatin1Char('/') + initial + QString::number(number);
        const QFileInfo found(run.subfolder);
        if (!found.exists())
            break;
        if (!found.isDir())
            continue;
        run.count = countFiles(run.subfolder, maxFilesPerSubfolder);
        if (run.count < maxFilesPerSubfolder)
            break;
        run.lastFull.insert(initial, number);
    }
    if (QDir().mkdir(run.subfolder))
        qInfo() << "corvin_optimizer : SubDir " << run.subfolder;
    run.initial = initial;
}
