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

/// Up to here a backup starts without a question about the number of files.
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
    const JobEnd chosen = runSteps(
        "SongBackup", m_view, {{"findPlayer", &SongBackup::findPlayer}, {"chooseFolder", &SongBackup::chooseFolder}},
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

JobEnd SongBackup::copyToFolder()
{
    return runSteps("SongBackup", m_view,
                    {{"beginCopy", &SongBackup::beginCopy},
                     {"emptyDestination", &SongBackup::emptyDestination},
                     {"listSongs", &SongBackup::listSongs},
                     {"confirmManyFiles", &SongBackup::confirmManyFiles},
                     {"copySongs", &SongBackup::copySongs}});
}

JobEnd SongBackup::flushFolder()
{
    return {flushVolumeAside(m_destination) ? JobEnd::Done : JobEnd::Failed};
}

JobEnd SongBackup::beginCopy()
{
    m_view.showStatus(operationText(TEXT_LOOKING_FOR_DEVICE));
    m_view.setBarFormat(QStringLiteral("%v"));
    return {};
}

JobEnd SongBackup::emptyDestination()
{
    const QStringList keep = {QCoreApplication::applicationDirPath(), QDir::homePath()};
    if (mayBeEmptied(m_destination, m_player, keep)) {
        const JobQuestion question = {tr("Trovati alcuni files"),
                                      tr("ATTENZIONE! Il contenuto della cartella di destinazione verrà cancellato.\n\n"
                                         "Vuoi continuare ?"),
                                      {{JobAnswer::Yes}, {JobAnswer::No}},
                                      JobAnswer::No};
        if (holdsAnything(m_destination) && m_view.ask(question) != JobAnswer::Yes)
            return {JobEnd::Refused};
        // The root of a volume cannot be removed, so its content is not sacrificed to the attempt.
        if (!isVolumeRoot(m_destination) && emptyFolder(m_destination))
            return {};
    }
    m_view.ask({tr("ERRORE"), tr("ERRORE"), {{JobAnswer::Yes}}, JobAnswer::Yes, JobAnswer::Yes});
    return {JobEnd::Failed};
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

JobEnd SongBackup::copySongs()
{
    m_view.showStatus(operationText(TEXT_BACKING_UP));
    return FileListCopy(m_view, m_files, m_destination + QDir::separator(), m_player.root()).run();
}
