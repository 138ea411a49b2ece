#include "systemupdate.h"

#include "downloadmanager.h"
#include "extraction.h"
#include "filedownload.h"
#include "filelistcopy.h"
#include "jobnotices.h"
#include "operationtexts.h"
#include "unpackedfolder.h"
#include "updateserver.h"

#include "device/devicecase.h"
#include "disk/aside.h"
#include "disk/tree.h"

#include <QDir>
#include <QFileInfo>

namespace {

/// Gives the folder @p path the name @p name, which is a path as well.
bool giveName(const QString &path, const QString &name)
{
    return doAsidePatiently([&path, &name] { return QDir().rename(path, name); });
}

} // namespace

SystemUpdate::SystemUpdate(JobView &view, bool showFinalMessage) : m_view(view), m_showFinalMessage(showFinalMessage) {}

JobEnd SystemUpdate::run()
{
    m_view.forgetStop();
    return runSteps("SystemUpdate", m_view,
                    {{"findPlayer", &SystemUpdate::findPlayer},
                     {"download", &SystemUpdate::download},
                     {"unpack", &SystemUpdate::unpack},
                     {"copy", &SystemUpdate::copy},
                     {"finish", &SystemUpdate::finish}});
}

JobEnd SystemUpdate::findPlayer()
{
    m_player = lookForPlayer(m_view);
    return {m_player.isFound() ? JobEnd::Done : JobEnd::Refused};
}

JobEnd SystemUpdate::download()
{
    const DownloadedArchive downloaded = downloadArchive(m_view, kUpdateArchivePath);
    m_archive = downloaded.path;
    return downloaded.end;
}

JobEnd SystemUpdate::unpack()
{
    const QString folder = QFileInfo(m_archive).absolutePath();
    Extraction job(m_view, m_archive);
    const bool started = job.run().isDone();
    if (started && m_view.isStopped())
        return {JobEnd::Stopped};
    m_unpacked = resolveDevicePath(folder, PlayerNames::kUpdate);
    if (job.hasAllUnpacked() && !holdsRivalProgram(folder) && holdsSystemFiles(m_unpacked))
        return {};
    tellDownloadError(m_view, DownloadFault::Unpacking);
    return {JobEnd::Failed};
}

JobEnd SystemUpdate::copy()
{
    m_view.showStatus(operationText(TEXT_COPYING_UPDATE));
    const bool copied = copyToPlayer();
    if (!copied)
        removeUnfinished();
    // Off the player before the box: whoever reads it may pull the cable at once.
    const bool flushed = copied ? m_player.flush() : flushUntilStopped();
    if (copied && flushed)
        return {};
    tellDownloadError(m_view, DownloadFault::Copy);
    removeTree(DownloadManager::downloadFolder());
    return {JobEnd::Failed};
}

/// Replaces the player's "CorvinUpdate" by the unpacked one. Returns whether the new one is there, and whole; else the
/// old one still is, or none.
bool SystemUpdate::copyToPlayer()
{
    if (!removeOldUpdate())
        return false;
    const QStringList files = systemEntries(m_unpacked);
    const QString unfinished = m_player.root() + PlayerNames::kUnfinishedUpdate;
    const bool copied = FileListCopy(m_view, files, unfinished, m_unpacked, m_player).run().isDone();
    if (!copied || m_view.isStopped() || !areWholeAt(unfinished, files, m_unpacked))
        return false;
    // The player takes up whatever bears the name: what it stands for has to be on the disk before it does.
    return flushUntilStopped() && giveName(unfinished, m_player.root() + PlayerNames::kUpdate);
}

bool SystemUpdate::flushUntilStopped() const
{
    return m_player.flush([this] { return !m_view.isStopped(); });
}

/// Takes the update away that the player has not taken up yet. Returns whether none is there any more.
bool SystemUpdate::removeOldUpdate()
{
    // The path of a player that was pulled meanwhile may by now be a folder of the PC.
    if (!m_player.isThere())
        return false;
    const QString old = m_player.path(PlayerNames::kUpdate);
    const QString unfinished = m_player.root() + PlayerNames::kUnfinishedUpdate;
    // Nothing but this program gives a folder that name: it is from a run that was ended from outside.
    bool removed = removeTree(unfinished);
    // Under the other name before the first of its files goes, so that never a part of it bears its own.
    if (removed && (QFileInfo::exists(old) || QFileInfo(old).isSymLink()))
        removed = QFileInfo(old).isDir() && giveName(old, unfinished) && removeTree(unfinished);
    if (!removed)
        m_view.tell(errorNotice());
    return removed;
}

void SystemUpdate::removeUnfinished()
{
    if (m_player.isThere())
        removeTree(m_player.root() + PlayerNames::kUnfinishedUpdate);
}

JobEnd SystemUpdate::finish()
{
    // Alone STOP would fill the whole line, and there is nothing left to stop.
    m_view.hideProgress();
    if (m_showFinalMessage)
        m_view.tell({Notice::Information, operationText(TEXT_UPDATED_TITLE), operationText(TEXT_UPDATED)});
    removeTree(DownloadManager::downloadFolder());
    return {};
}
