#include "reinstall.h"

#include "backupchoice.h"
#include "diskformat.h"
#include "downloadmanager.h"
#include "extraction.h"
#include "filedownload.h"
#include "jobnotices.h"
#include "keptplaylists.h"
#include "operationtexts.h"
#include "songbackup.h"
#include "songlist.h"
#include "songrestore.h"
#include "systemtransfer.h"
#include "systemupdate.h"
#include "unpackedfolder.h"
#include "updateserver.h"

#include "disk/aside.h"
#include "disk/tree.h"

#include <QDir>
#include <QFileInfo>

namespace {

/// Whether one of the folders lies in the other, or they are the same.
bool overlap(const QString &one, const QString &other)
{
    return holdsFolder(one, other) || holdsFolder(other, one);
}

} // namespace

Reinstall::Reinstall(JobView &view, Songs songs) : m_view(view), m_songs(songs) {}

bool Reinstall::confirm()
{
    if (m_songs != Songs::AreErased)
        return true;
    JobQuestion question = siOrNo(operationText(TEXT_FORMAT_TITLE), operationText(TEXT_FORMAT_QUESTION));
    question.preferred = JobAnswer::No;
    return m_view.ask(question) == JobAnswer::Yes;
}

JobEnd Reinstall::run()
{
    const JobEnd end = runStepsForSongs();
    if (!m_view.isStopped() || m_endTold)
        return end;
    // The user is free to pull the cable now.
    flushNewSystem();
    tellStopped();
    return end;
}

JobEnd Reinstall::runStepsForSongs()
{
    switch (m_songs) {
    case Songs::Stay:
        return runSteps("Reinstall", m_view,
                        {{"findPlayer", &Reinstall::findPlayer},
                         {"download", &Reinstall::download},
                         {"unpack", &Reinstall::unpack},
                         {"keepPlaylists", &Reinstall::keepPlaylists},
                         {"install", &Reinstall::install},
                         {kFinishing.data(), &Reinstall::finish}});
    case Songs::AreErased:
        return runSteps("Reinstall", m_view,
                        {{"findPlayer", &Reinstall::findPlayer},
                         {"download", &Reinstall::download},
                         {"unpack", &Reinstall::unpack},
                         {"format", &Reinstall::format},
                         {"install", &Reinstall::install},
                         {kFinishing.data(), &Reinstall::finish}});
    case Songs::ComeBack:
        return runSteps("Reinstall", m_view,
                        {{"findPlayer", &Reinstall::findPlayer},
                         {"chooseBackupFolder", &Reinstall::chooseBackupFolder},
                         {"saveSongs", &Reinstall::saveSongs},
                         {"download", &Reinstall::download},
                         {"unpack", &Reinstall::unpack},
                         {"keepPlaylists", &Reinstall::keepPlaylists},
                         {"format", &Reinstall::format},
                         {"install", &Reinstall::install},
                         {"bringSongsBack", &Reinstall::bringSongsBack},
                         {kFinishing.data(), &Reinstall::finish}});
    }
    return {};
}

JobEnd Reinstall::findPlayer()
{
    m_player = lookForPlayer(m_view);
    return {m_player.isFound() ? JobEnd::Done : JobEnd::Refused};
}

JobEnd Reinstall::chooseBackupFolder()
{
    m_backup = m_view.chooseFolder(tr("Scegli una cartella per il salvataggio dei files"));
    if (m_backup.isEmpty())
        return {JobEnd::Refused};
    // The download empties its folder: a backup in or around it would be gone before it is needed.
    QDir().mkpath(DownloadManager::downloadFolder());
    if (!overlap(m_backup, DownloadManager::downloadFolder()))
        return {};
    m_view.tell(errorNotice());
    return {JobEnd::Failed};
}

JobEnd Reinstall::saveSongs()
{
    // The folder dialog may have stood open for long: for a player that is gone no old backup is emptied.
    const JobEnd found = findPlayerAgain();
    if (!found.isDone())
        return found;
    const auto goOn = [this] { return !m_view.isStopped(); };
    // The copy's own outcome is that of its last file; nothing is erased unless all of them are on the PC.
    if (SongBackup(m_view).saveEverything(m_player, m_backup).isDone() && isBackupComplete(m_backup, m_player, goOn) &&
        flushFolderAside(m_backup, goOn))
        return {};
    return failed({Notice::Information, operationText(TEXT_BACKUP_ERROR_TITLE), operationText(TEXT_BACKUP_ERROR)});
}

JobEnd Reinstall::download()
{
    const DownloadedArchive downloaded = downloadArchive(m_view, kSystemArchivePath);
    m_archive = downloaded.path;
    return downloaded.end;
}

JobEnd Reinstall::unpack()
{
    m_view.showStatus(operationText(TEXT_COPYING_SYSTEM_TO_PC));
    const QString archiveFolder = QFileInfo(m_archive).absolutePath();
    Extraction job(m_view, m_archive);
    const bool started = job.run().isDone();
    m_unpackedFolder = unpackedFolder(archiveFolder);
    if (started && m_view.isStopped())
        return {JobEnd::Stopped};
    // The player is only touched for a system that is really there, not for a part of one that would never start.
    if (job.hasAllUnpacked() && holdsWholeSystem(m_unpackedFolder) && !holdsRivalProgram(m_unpackedFolder))
        return {};
    m_view.tell(errorNotice());
    return {JobEnd::Failed};
}

JobEnd Reinstall::keepPlaylists()
{
    // Much time has passed since the player was found, and its drive may be another one by now. Of that one nothing was
    // saved.
    const JobEnd found = m_songs == Songs::ComeBack ? samePlayer() : findPlayerAgain();
    if (!found.isDone())
        return found;
    KeptFiles::forgetOldOnes();
    KeptFiles kept(m_player);
    const JobEnd end = ::keepPlaylists(m_view, m_player, kept);
    m_keptPlaylists = kept.folder();
    // A reinstallation that was killed has kept them, and told nobody: the player has had no whole system since.
    if (m_keptPlaylists.isEmpty() && !m_player.hasSystemFiles())
        m_keptPlaylists = KeptFiles::newestHolding(PlayerNames::kPlaylists);
    if (end.isDone() || end.kind == JobEnd::Stopped)
        return end;
    if (!m_player.isThere())
        return playerGone();
    Notice notice = errorNotice();
    notice.informativeText = tr("Non è stato possibile salvare le playlist sul PC.\n"
                                "Il sistema operativo di Corvin non è stato modificato.");
    return failed(notice);
}

JobEnd Reinstall::format()
{
    const JobEnd found = m_songs == Songs::ComeBack ? samePlayer() : findPlayerAgain();
    if (!found.isDone())
        return found;
    std::optional<Notice> missing;
    DiskFormat job(m_view, m_player.root(), [this, &missing] {
        missing = whatIsMissingToFormat();
        return !missing;
    });
    const JobEnd end = job.run();
    if (missing)
        return failed(*missing);
    // What a format that failed has left nobody knows.
    m_songsOnPcAlone = m_songs == Songs::ComeBack && job.hasBegun();
    m_systemReplaced = job.hasBegun();
    m_systemLost = job.hasBegun() && !(m_player.isThere() && m_player.hasSystemFiles());
    if (end.isDone())
        return findPlayerAgain();
    if (end.kind == JobEnd::Failed)
        tell(formatError());
    return end;
}

/// The question about the drive may have stood open for long: a scanner may have taken a file of the new system, and
/// the user the disk with the backup.
std::optional<Notice> Reinstall::whatIsMissingToFormat()
{
    if (!holdsWholeSystem(m_unpackedFolder))
        return errorNotice();
    if (m_songs != Songs::ComeBack)
        return std::nullopt;
    const auto goOn = [this] { return !m_view.isStopped(); };
    m_filesInBackup = SongRestore::countFiles(m_backup, goOn);
    if (isBackupComplete(m_backup, m_player, goOn) && goOn())
        return std::nullopt;
    if (!m_player.isThere())
        return formatError();
    return Notice{Notice::Information, operationText(TEXT_BACKUP_ERROR_TITLE), operationText(TEXT_BACKUP_ERROR)};
}

JobEnd Reinstall::install()
{
    const JobEnd found = m_songs == Songs::Stay ? samePlayer() : findPlayerAgain();
    if (!found.isDone())
        return found;
    // A scanner may have taken a file while the playlists were kept. After a format it is too late to stop for that.
    if (m_songs == Songs::Stay && !holdsWholeSystem(m_unpackedFolder))
        return failed(errorNotice());
    m_view.showStatus(operationText(TEXT_TRANSFERRING_SYSTEM));
    SystemTransfer transfer(m_view, m_player, m_unpackedFolder);
    const JobEnd end = transfer.run();
    // What a scanner has taken from the PC by then is not even listed.
    m_whole = transfer.isWhole() && m_player.hasSystemFiles();
    m_systemReplaced = m_systemReplaced || transfer.hasBegun();
    m_systemLost = (m_systemLost || transfer.hasBegun()) && !(end.isDone() && m_whole);
    if (!end.isDone() && !m_systemLost && !m_player.isThere())
        return playerGone();
    if (!end.isDone()) {
        JobEnd told = failed(errorNotice());
        if (!m_whole)
            told.step = kFinishing;
        return told;
    }
    removeTree(DownloadManager::downloadFolder());
    return {};
}

JobEnd Reinstall::bringSongsBack()
{
    // The transfer could not make a folder: the procedure ends with its own words, the songs wait on the PC.
    if (!m_whole)
        return {};
    m_view.showStatus(operationText(TEXT_RESTORING_BACKUP));
    const JobEnd end = SongRestore(m_view).bringBack(m_backup, m_player, m_filesInBackup);
    if (end.isDone())
        return {};
    m_whole = !end.failedAt(kMakingFolders);
    if (!m_view.isStopped())
        flushNewSystem();
    return failed({Notice::Information, operationText(TEXT_RESTORE_ERROR_TITLE), operationText(TEXT_RESTORE_ERROR)});
}

JobEnd Reinstall::finish()
{
    // What never reached the disk of a player that was pulled out must not be called installed.
    m_systemFlushed = m_player.flush();
    m_whole = m_systemFlushed && m_whole;
    m_systemLost = !m_whole;
    if (!m_whole)
        return failed({Notice::Critical, tr("ERRORE"), unexpectedEnd()});
    const bool stopped = m_view.isStopped();
    // From here on the songs are on the player; only a failed update is a reason to name the backup still.
    // Deliberate: an update that fails is told by its own box, and the closing one, that all is installed, still
    // follows.
    if (stopped || SystemUpdate(m_view, false).run().isDone() || m_view.isStopped())
        m_songsOnPcAlone = false;
    removeTree(DownloadManager::downloadFolder());
    m_player.flush();
    if (stopped || m_view.isStopped())
        return {JobEnd::Stopped};
    tell({Notice::Information, operationText(TEXT_INSTALLED_TITLE), operationText(TEXT_INSTALLED)});
    return {};
}

/// The player as it is now; tells the user when it is gone.
JobEnd Reinstall::findPlayerAgain()
{
    const Player player = Player::find();
    if (!player.isFound())
        return playerGone();
    m_player = player;
    return {};
}

/// That the player is still the one whose files were saved; tells the user when it is not.
JobEnd Reinstall::samePlayer()
{
    return m_player.isThere() ? JobEnd() : playerGone();
}
