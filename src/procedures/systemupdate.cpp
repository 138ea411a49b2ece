#include "systemupdate.h"

#include "downloadmanager.h"
#include "extraction.h"
#include "filedownload.h"
#include "filelistcopy.h"
#include "jobnotices.h"
#include "operationtexts.h"
#include "updateserver.h"

#include "disk/tree.h"

#include <QFileInfo>

namespace {

constexpr int kCodeDownload = 1;
constexpr int kCodeUnpack = 2;
constexpr int kCodeCopy = 3;

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
    m_view.showStatus(operationText(TEXT_DOWNLOADING_RELEASE));
    FileDownload job(m_view, updateServerUrl(kUpdateArchivePath), true);
    const JobEnd end = job.run();
    m_archive = job.path();
    // Deliberate: after a STOP nothing is said, whatever has arrived.
    if (m_view.isStopped())
        return {JobEnd::Stopped};
    if (!end.isDone())
        tellDownloadError(m_view, kCodeDownload);
    return end;
}

JobEnd SystemUpdate::unpack()
{
    const JobEnd end = Extraction(m_view, m_archive).run();
    if (!end.isDone())
        tellDownloadError(m_view, kCodeUnpack);
    return end;
}

JobEnd SystemUpdate::copy()
{
    m_view.showStatus(operationText(TEXT_COPYING_UPDATE));
    if (copyToPlayer() && m_player.flush() && !m_view.isStopped())
        return {};
    // Off the player before the box: whoever reads it may pull the cable at once.
    removeTree(m_player.path(PlayerNames::kUpdate));
    m_player.flush();
    tellDownloadError(m_view, kCodeCopy);
    removeTree(DownloadManager::downloadFolder());
    return {JobEnd::Failed};
}

/// Replaces the player's "CorvinUpdate" by the unpacked one. Returns whether it was copied.
bool SystemUpdate::copyToPlayer()
{
    // The path of a player that was pulled meanwhile may by now be a folder of the PC.
    if (!m_player.isThere())
        return false;
    if (!removeTree(m_player.path(PlayerNames::kUpdate))) {
        tellError(m_view);
        return false;
    }
    const QString source = QFileInfo(m_archive).absolutePath() + QLatin1Char('/') + PlayerNames::kUpdate;
    QStringList files = listTree({source,
                                  QDir::Dirs | QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  {QStringLiteral("*.*")}});
    // An archive that brought no update must not end with the words that one was copied.
    if (files.isEmpty())
        return false;
    files.sort(Qt::CaseSensitive);
    return FileListCopy(m_view, files, m_player.root() + PlayerNames::kUpdate, source).run().isDone();
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
