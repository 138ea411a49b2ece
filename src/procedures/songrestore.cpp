#include "songrestore.h"

#include "filelistcopy.h"
#include "jobnotices.h"
#include "operationtexts.h"
#include "songlist.h"

#include "disk/tree.h"

SongRestore::SongRestore(JobView &view) : m_view(view) {}

JobEnd SongRestore::run()
{
    const JobEnd chosen = runSteps(
        "SongRestore", m_view, {{"findPlayer", &SongRestore::findPlayer}, {"chooseFolder", &SongRestore::chooseFolder}},
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

JobEnd SongRestore::copyFromFolder()
{
    return runSteps("SongRestore", m_view,
                    {{"listSongs", &SongRestore::listSongs},
                     {"copySongs", &SongRestore::copySongs},
                     {"flushPlayer", &SongRestore::flushPlayer}});
}

JobEnd SongRestore::listSongs()
{
    m_files = listTree({m_source, kSongEntries, songNames()}, [this] { return !m_view.isStopped(); });
    return {};
}

JobEnd SongRestore::copySongs()
{
    return FileListCopy(m_view, m_files, m_player.root(), m_source).run();
}

JobEnd SongRestore::flushPlayer()
{
    return {m_player.flush() ? JobEnd::Done : JobEnd::Failed};
}
