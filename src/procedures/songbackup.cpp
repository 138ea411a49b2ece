#include "songbackup.h"

#include "backupchoice.h"
#include "filelistcopy.h"
#include "jobnotices.h"
#include "operationtexts.h"
#include "songlist.h"

#include "disk/aside.h"
#include "disk/tree.h"

#include <QDir>

namespace {

/// Deliberate: up to here a backup starts without a question about the number of files.
constexpr int kFilesWithoutQuestion = 1000;

bool holdsAnything(const QString &folder)
{
    // More than the copy itself ever looks at: nothing may be deleted unasked.
    return !QDir(folder).entryList(kAllEntries, QDir::NoSort).isEmpty();
}

} // namespace

SongBackup::SongBackup(JobView &view) : m_view(view) {}

JobEnd SongBackup::run()
{
    const JobEnd chosen = runSteps("SongBackup", m_view,
                                   {{"findPlayer", &SongBackup::findPlayer},
                                    {"chooseFolder", &SongBackup::chooseFolder},
                                    {"findPlayerAgain", &SongBackup::findPlayerAgain}},
                                   Stop::IsLeftToTheSteps);
    if (!chosen.isDone())
        return chosen;
    const JobEnd end = runSteps(
        "SongBackup", m_view, {{"copyToFolder", &SongBackup::copyToFolder}, {"flushFolder", &SongBackup::flushFolder}},
        Stop::IsLeftToTheSteps);
    tellEndOfSongCopy(m_view, end);
    return end;
}

JobEnd SongBackup::save(const Player &player, const QString &destination)
{
    m_player = player;
    m_destination = destination;
    return copyToFolder();
}

JobEnd SongBackup::saveEverything(const Player &player, const QString &destination)
{
    m_everything = true;
    return save(player, destination);
}

JobEnd SongBackup::findPlayer()
{
    m_player = lookForPlayer(m_view);
    return {m_player.isFound() ? JobEnd::Done : JobEnd::Refused};
}

JobEnd SongBackup::chooseFolder()
{
    m_destination = m_view.chooseFolder(tr("Scegli una cartella per il salvataggio dei files"));
    return {m_destination.isEmpty() ? JobEnd::Refused : JobEnd::Done};
}

/// The folder dialog may have stood open for long: for a player that is gone no old backup is emptied.
JobEnd SongBackup::findPlayerAgain()
{
    m_player = lookForPlayerAgain(m_view);
    return {m_player.isFound() ? JobEnd::Done : JobEnd::Refused};
}

JobEnd SongBackup::copyToFolder()
{
    const JobEnd end = runSteps("SongBackup", m_view,
                                {{"beginCopy", &SongBackup::beginCopy},
                                 {"setDestinationAside", &SongBackup::setDestinationAside},
                                 {"listSongs", &SongBackup::listSongs},
                                 {"confirmManyFiles", &SongBackup::confirmManyFiles},
                                 {"dropOldContent", &SongBackup::dropOldContent},
                                 {"copySongs", &SongBackup::copySongs},
                                 {"copyOtherFiles", &SongBackup::copyOtherFiles}});
    m_old.reset();
    return end;
}

JobEnd SongBackup::flushFolder()
{
    if (flushFolderAside(m_destination, [this] { return !m_view.isStopped(); }))
        return {};
    return {m_view.isStopped() ? JobEnd::Stopped : JobEnd::Failed};
}

JobEnd SongBackup::beginCopy()
{
    m_view.showStatus(operationText(TEXT_LOOKING_FOR_DEVICE));
    m_view.setBarFormat(QStringLiteral("%v"));
    return {};
}

JobEnd SongBackup::setDestinationAside()
{
    const DestinationFault fault = destinationFault(m_destination, m_player, foldersToKeep());
    if (fault != DestinationFault::None)
        return refuseFolder(reasonAgainst(fault));
    JobQuestion question = {tr("Trovati alcuni files"),
                            tr("ATTENZIONE! Il contenuto della cartella di destinazione verrà cancellato.\n\n"
                               "Vuoi continuare ?"),
                            {{JobAnswer::Yes}, {JobAnswer::No}},
                            JobAnswer::No};
    question.informativeText = QDir::toNativeSeparators(QDir::cleanPath(m_destination));
    if (holdsAnything(m_destination) && m_view.ask(question) != JobAnswer::Yes)
        return {JobEnd::Refused};
    // The root of a volume can be neither removed nor renamed.
    if (isVolumeRoot(m_destination))
        return refuseFolder(tr("La cartella è un intero disco. Scegliere o creare una cartella al suo interno."));
    m_old = std::make_unique<SetAsideFolder>(m_destination);
    if (m_old->isGood())
        return {};
    m_old.reset();
    return refuseFolder(reasonNotEmptied());
}

JobEnd SongBackup::listSongs()
{
    m_view.showStatus(operationText(TEXT_READING_DEVICE));
    m_view.setBarRange(0, 0);
    m_view.setBarValue(0);
    const bool complete = visitSongs(
        m_player, [this] { return !m_view.isStopped(); },
        [this](const QFileInfo &entry) {
            m_files.append(entry.filePath());
            m_view.paintBar();
            return true;
        });
    // The listing of a player that was pulled out just ends early, and would pass for all there is.
    return {complete && m_player.isThere() ? JobEnd::Done : JobEnd::Failed};
}

JobEnd SongBackup::confirmManyFiles()
{
    const JobQuestion question = {tr("BackUp"),
                                  tr("Saranno copiati %1 files\n\nVuoi continuare ?").arg(m_files.size()),
                                  {{JobAnswer::Yes}, {JobAnswer::No}}};
    const bool go = m_files.size() <= kFilesWithoutQuestion || m_view.ask(question) == JobAnswer::Yes;
    return {go ? JobEnd::Done : JobEnd::Refused};
}

JobEnd SongBackup::dropOldContent()
{
    // The question may have stood open for long.
    if (!m_player.isThere())
        return {JobEnd::Failed, kPlayerGone};
    // An old backup of thousands of songs takes its time to go.
    m_view.showStatus(operationText(TEXT_BACKING_UP));
    const bool dropped = m_old->drop([this] { return !m_view.isStopped() && m_player.isThere(); });
    m_old.reset();
    if (dropped)
        return {};
    if (m_view.isStopped())
        return {JobEnd::Stopped};
    if (!m_player.isThere())
        return {JobEnd::Failed, kPlayerGone};
    return refuseFolder(reasonNotEmptied());
}

JobEnd SongBackup::copySongs()
{
    return copyToDestination(m_files);
}

JobEnd SongBackup::copyOtherFiles()
{
    if (!m_everything)
        return {};
    QStringList files;
    const bool complete = visitOtherFiles(
        m_player, [this] { return !m_view.isStopped(); },
        [&files](const QFileInfo &entry) {
            files.append(entry.filePath());
            return true;
        });
    if (!complete || !m_player.isThere())
        return {JobEnd::Failed};
    return copyToDestination(files);
}

JobEnd SongBackup::copyToDestination(const QStringList &files)
{
    return FileListCopy(m_view, files, m_destination + QDir::separator(), m_player.root(), m_player).run();
}

/// The box for a folder that cannot take the backup.
JobEnd SongBackup::refuseFolder(const QString &why)
{
    JobQuestion box = {tr("ERRORE"), tr("ERRORE"), {{JobAnswer::Yes}}, JobAnswer::Yes, JobAnswer::Yes};
    box.informativeText = why;
    m_view.ask(box);
    return {JobEnd::Failed};
}

QString SongBackup::reasonAgainst(DestinationFault fault)
{
    if (fault == DestinationFault::IsOnPlayer)
        return tr("La cartella si trova sul disco di Corvin4. Scegliere una cartella del PC.");
    return tr("La cartella è del sistema, dell' utente o del programma e non può essere svuotata.\n"
              "Scegliere o creare una cartella al suo interno.");
}

QString SongBackup::reasonNotEmptied()
{
    return tr("La cartella non può essere svuotata: è protetta, oppure un altro programma la sta usando.");
}
