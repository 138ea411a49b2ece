// Chapter of Ottimizza: the step that spreads the songs of big folders over sub-folders by the initial of their titles.
#include "ottimizza.h"

#include "freename.h"
#include "titleinitial.h"
#include "titlereader.h"

#include "disk/tree.h"

#include <QCoreApplication>
#include <QDebug>
#include <QVector>

#include <algorithm>

namespace {

constexpr int kBusyBar = 0;
/// After how many entries of a mere listing events are processed.
constexpr int kListingRound = 64;

/// A song or sub-folder with its title.
struct TitledEntry
{
    QString sortKey; ///< the title in upper case, made once and not at every comparison
    QString title;
    QFileInfo entry;
};

/// The number of files directly in @p folder, counted no further than @p limit.
int countFiles(const QString &folder, int limit)
{
    int count = 0;
    if (limit > 0)
        walkTree({folder, QDir::Files, {}, false, 0}, [&count, limit](const QFileInfo &) { return ++count < limit; });
    return count;
}

} // namespace

/// What is known of the folder that is being split.
struct Ottimizza::SplitRun
{
    QString folder;    ///< full path of the folder
    QString oldFolder; ///< full path under which its former content waits
    QString header;    ///< first words of the status texts
    QFileInfoList entries;
    QVector<TitledEntry> titled;
    QChar initial = QChar(u'\0'); ///< of the song moved last
    QString subfolder;            ///< full path of the sub-folder that is being filled
    int count = 0;                ///< files counted for it; 0 forces a new choice
};

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
        abortRequested = false;
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
    setAside(run);
    listEntries(run);
    qInfo() << "corvin_optimizer : End Open Dir N. Entry " << run.entries.size();
    readTitles(run);
    qInfo() << "corvin_optimizer : Start Ordinamento";
    std::sort(run.titled.begin(), run.titled.end(),
              [](const TitledEntry &a, const TitledEntry &b) { return a.sortKey < b.sortKey; });
    moveIntoSubfolders(run);
    keepHiddenFolders(run);
    // Deliberate: whatever is still there goes with it: files that are no songs, and what could not be moved.
    removeTree(run.oldFolder);
    emit updateProgressBarVal(run.entries.size());
}

void Ottimizza::setAside(SplitRun &run)
{
    const QFileInfo folder(run.folder);
    workDir.setPath(folder.absolutePath());
    workDir.rename(folder.fileName(), QFileInfo(run.oldFolder).fileName());
    workDir.mkdir(folder.fileName());
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
    for (int i = 0; i < total; ++i) {
        QCoreApplication::processEvents();
        const QFileInfo &entry = run.entries.at(i);
        // Folders sort before every song.
        const QString title = entry.isDir() ? QString(QChar(u'\0'))
                                            : readSongTitle(suffixFormatIndex.value(entry.suffix().toLower()), entry);
        run.titled.append({foldedTitle(title), title, entry});
        emit updateProgressBarVal(i + 1);
    }
}

void Ottimizza::moveIntoSubfolders(SplitRun &run)
{
    const int total = run.titled.size();
    emit updateLabelAction(run.header + QStringLiteral(" : ") + tr("Organizzazione in sottocartelle") +
                           QStringLiteral("\n[") + QString::number(total) + QStringLiteral("] ") + run.folder);
    emit setProgressBarMaxVal(total);
    qInfo() << "corvin_optimizer : Start Move in sottocartelle";
    for (int i = 0; i < total; ++i) {
        QCoreApplication::processEvents();
        emit updateProgressBarVal(i + 1);
        const TitledEntry &titled = run.titled.at(i);
        if (titled.entry.isDir()) {
            QDir().rename(titled.entry.absoluteFilePath(), run.folder + QLatin1Char('/') + titled.entry.fileName());
        } else {
            moveSong(run, titled.title, titled.entry);
        }
    }
}

/// The listing shows no hidden folders; what lies in them is the folder's own all the same and goes back where it was.
void Ottimizza::keepHiddenFolders(const SplitRun &run) const
{
    const QDir old(run.oldFolder);
    const QStringList names = old.entryList(QDir::AllDirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QString &name : names) {
        if (QFileInfo(old.filePath(name)).isHidden())
            QDir().rename(old.filePath(name), run.folder + QLatin1Char('/') + name);
    }
}

void Ottimizza::moveSong(SplitRun &run, const QString &title, const QFileInfo &song) const
{
    const QChar initial = titleInitial(title);
    if (initial != run.initial || run.count == 0)
        chooseSubfolder(run, initial);
    const QString suffix = song.suffix();
    const QString target = freeSplitBase(run.subfolder, song.completeBaseName(), suffix);
    QFile::rename(song.absoluteFilePath(), target + QLatin1Char('.') + suffix);
    ++run.count;
    const QString base = run.oldFolder + QLatin1Char('/') + song.completeBaseName();
    for (const QLatin1String companion : {QLatin1String(".dat"), QLatin1String(".cdg"), QLatin1String(".bak")}) {
        if (!QFile::exists(base + companion))
            continue;
        QFile::rename(base + companion, target + companion);
        ++run.count;
    }
    if (run.count >= maxFilesPerSubfolder)
        run.count = 0;
}

/// A full folder's count stays when a new folder is made after it: its first song then reaches the limit, and the choice
/// that this forces settles on the new folder with its true count.
void Ottimizza::chooseSubfolder(SplitRun &run, QChar initial) const
{
    run.count = 0;
    for (int number = 0;; ++number) {
        run.subfolder = run.folder + QLatin1Char('/') + initial + QString::number(number);
        const QFileInfo found(run.subfolder);
        if (!found.exists())
            break;
        if (!found.isDir())
            continue;
        run.count = countFiles(run.subfolder, maxFilesPerSubfolder);
        if (run.count < maxFilesPerSubfolder)
            break;
    }
    if (QDir().mkdir(run.subfolder))
        qInfo() << "corvin_optimizer : SubDir " << run.subfolder;
    run.initial = initial;
}
