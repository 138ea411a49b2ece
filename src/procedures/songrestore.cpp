#include "songrestore.h"

#include "filelistcopy.h"
#include "jobnotices.h"
#include "operationtexts.h"
#include "songlist.h"

#include "disk/tree.h"

#include <QSet>

#include <algorithm>

SongRestore::SongRestore(JobView &view) : m_view(view) {}

JobEnd SongRestore::run()
{
    const JobEnd chosen = runSteps("SongRestore", m_view,
                                   {{"findPlayer", &SongRestore::findPlayer},
                                    {"chooseFolder", &SongRestore::chooseFolder},
                                    {"findPlayerAgain", &SongRestore::findPlayerAgain}},
                                   Stop::IsLeftToTheSteps);
    if (!chosen.isDone())
        return chosen;
    const JobEnd end = copyFromFolder();
    tellEndOfSongCopy(m_view, end);
    return end;
}

JobEnd SongRestore::bringBack(const QString &source, const Player &player)
{
    m_source = source;
    m_player = player;
    m_everything = true;
    return copyFromFolder();
}

JobEnd SongRestore::findPlayer()
{
    m_player = lookForPlayer(m_view);
    return {m_player.isFound() ? JobEnd::Done : JobEnd::Refused};
}

JobEnd SongRestore::chooseFolder()
{
    if (!m_view.isStopped())
        m_view.showStatus(operationText(TEXT_RESTORING_BACKUP));
    m_source = m_view.chooseFolder(tr("Scegli cartella da cui prendere i files salvati"));
    return {m_source.isEmpty() ? JobEnd::Refused : JobEnd::Done};
}

/// The folder dialog may have stood open for long.
JobEnd SongRestore::findPlayerAgain()
{
    m_player = lookForPlayerAgain(m_view);
    return {m_player.isFound() ? JobEnd::Done : JobEnd::Refused};
}

JobEnd SongRestore::copyFromFolder()
{
    return runSteps("SongRestore", m_view,
                    {{"listSongs", &SongRestore::listSongs},
                     {"copySongs", &SongRestore::copySongs},
                     {"copyOtherFiles", &SongRestore::copyOtherFiles},
                     {"flushPlayer", &SongRestore::flushPlayer}});
}

JobEnd SongRestore::listSongs()
{
    const auto goOn = [this] { return !m_view.isStopped(); };
    m_files = listTree({m_source, kSongEntries, songNames()}, goOn);
    if (m_everything)
        m_files = withoutWhatStays(m_files);
    return {};
}

JobEnd SongRestore::copySongs()
{
    FileListCopy copy(m_view, m_files, m_player.root(), m_source, m_player);
    const JobEnd end = copy.run();
    m_filesAreMissing = copy.hasMissingFiles();
    return end;
}

JobEnd SongRestore::copyOtherFiles()
{
    if (!m_everything)
        return {};
    QStringList others =
        listTree({m_source, QDir::Files | QDir::Hidden | QDir::System}, [this] { return !m_view.isStopped(); });
    const QSet<QString> songs(m_files.cbegin(), m_files.cend());
    others.erase(
        std::remove_if(others.begin(), others.end(), [&songs](const QString &path) { return songs.contains(path); }),
        others.end());
    FileListCopy copy(m_view, withoutWhatStays(others), m_player.root(), m_source, m_player);
    const JobEnd end = copy.run();
    // The user has seen a box for each, but not where the only copy of the file is now.
    const bool whole = !m_filesAreMissing && !copy.hasMissingFiles();
    return end.isDone() && !whole ? JobEnd{JobEnd::Failed} : end;
}

/// The paths of those that are brought back.
QStringList SongRestore::withoutWhatStays(QStringList paths) const
{
    const int below = m_source.size() + 1;
    const auto stays = [below](const QString &path) { return staysInBackup(path.mid(below)); };
    paths.erase(std::remove_if(paths.begin(), paths.end(), stays), paths.end());
    return paths;
}

JobEnd SongRestore::flushPlayer()
{
    if (m_player.flush([this] { return !m_view.isStopped(); }))
        return {};
    return {m_view.isStopped() ? JobEnd::Stopped : JobEnd::Failed};
}
