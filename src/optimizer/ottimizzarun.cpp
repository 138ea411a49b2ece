// Chapter of Ottimizza: what its steps share about the player that the run began with.
#include "ottimizzarun.h"

#include "moveentry.h"
#include "splitnote.h"

#include <QCoreApplication>
#include <QDebug>

namespace {
constexpr int kBusyBar = 0;
}

/// A step that is called by itself works on the player that rootPath names.
Ottimizza::Run &Ottimizza::run()
{
    if (!m_run || m_run->player.root() != rootPath)
        m_run = std::make_unique<Run>(rootPath);
    return *m_run;
}

/// Asked before anything is renamed, deleted or written: under the same path may by now lie a folder of the PC's own. When
/// the player has gone the run is over, as one that has found none.
bool Ottimizza::isPlayerThere()
{
    if (run().player.isThere())
        return true;
    if (failCode != DeviceNotFound)
        qWarning() << "Ottimizza : player gone :" << rootPath;
    failCode = DeviceNotFound;
    abortRequested = true;
    return false;
}

/// Copies a file of the player to the PC, with the window alive and STOP at work. Returns whether it may go.
bool Ottimizza::keepOnPc(const QString &path, bool isSong)
{
    const auto kind = isSong ? KeptFiles::Kind::Songs : KeptFiles::Kind::Unsupported;
    return run().kept.keep(path, kind, [this] {
        QCoreApplication::processEvents();
        return !abortRequested && isPlayerThere();
    });
}

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
