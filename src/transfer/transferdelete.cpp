// The transfer page's chapter of the deletion.
#include "transfer.h"

#include "app/shared/questionbox.h"
#include "disk/awake.h"
#include "disk/tree.h"
#include "disk/waitms.h"
#include "disk/worklock.h"
#include "filteredvolume.h"
#include "ui_transfer.h"

#include <QCoreApplication>
#include <QDebug>
#include <QItemSelectionModel>

namespace {

constexpr int kFolderAttempts = 3;
constexpr int kPauseBetweenAttemptsMs = 250;

void removeFolder(const QString &path, const std::function<bool()> &goOn)
{
    for (int attempt = 1; goOn() && !removeTree(path, goOn) && attempt < kFolderAttempts; ++attempt)
        waitMs(kPauseBetweenAttemptsMs);
}

} // namespace

QStringList Transfer::selectedPaths() const
{
    QStringList paths;
    if (!m_entries)
        return paths;
    const QModelIndexList rows = ui->tableView->selectionModel()->selectedRows();
    for (const QModelIndex &row : rows) {
        const QString path = m_entries->path(row);
        // When the shown folder has vanished the table shows the player itself, which must not be deleted whole.
        if (path.startsWith(deviceRoot) && path != deviceRoot)
            paths.append(path);
    }
    return paths;
}

void Transfer::on_actionDeleteSelectedItems_triggered()
{
    if (busy)
        return;
    const QStringList paths = selectedPaths();
    // What is deleted does not come back: Enter must not do it.
    if (!askYesOrNo(this, tr("Cancella file"), tr("Cancellare gli elementi selezionati ?"), QMessageBox::No))
        return;
    enterBusy();
    const WorkLock lock;
    if (lock.isTaken())
        deleteAll(paths);
    else
        tellOtherWindowWorks(window());
    leaveBusy();
}

void Transfer::deleteAll(const QStringList &paths)
{
    const StayAwake awake;
    aborted = false;
    emit setProgressBarMinVal(0);
    emit setProgressBarMaxVal(0);
    emit updateProgressBarVal(0);
    emit setProgressBarVisible(true);
    emit updateLabelAction(tr("Cancellazione in corso ..."));
    qInfo() << "Transfer : Start Cancellazione";
    // A bar from 0 to 0 would move for ever.
    emit setProgressBarMaxVal(qMax(paths.size(), 1));
    for (const QString &path : paths) {
        QCoreApplication::processEvents();
        if (aborted)
            break;
        deleteEntry(path);
        emit increaseProgressBarVal();
    }
    qInfo() << "Transfer : Fine Cancellazione";
    m_player.flush();
    endWork();
}

/// Deliberate: what cannot be deleted is passed over without a word; it is still to be seen in the table.
void Transfer::deleteEntry(const QString &path)
{
    if (!isPlayerThere())
        return;
    const QFileInfo info(path);
    // Of a link only the link goes, never what it points to.
    if (info.isDir() && !isLink(info))
        removeFolder(path, [this] { return isPlayerThere(); });
    else
        QFile::remove(path);
}
