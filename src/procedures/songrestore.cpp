#include "songrestore.h"

#include "filelistcopy.h"
#include "jobnotices.h"
#include "operationtexts.h"
#include "songlist.h"

#include "disk/diskcalls.h"
#include "disk/tree.h"

#include <QSet>

#include <algorithm>

namespace {
constexpr QLatin1String kFlushing("flushPlayer", 11);
constexpr QDir::Filters kEveryFile = QDir::Files | QDir::Hidden | QDir::System;
} // namespace

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
    // A user who is told pulls the cable, and songs whose names are there would have no content. A flush that was
    // stopped is not begun again.
    if (!end.isDone() && end.step != kFlushing)
        m_player.flush();
    tellEndOfSongCopy(m_view, end);
    return end;
}

JobEnd SongRestore::bringBack(const QString &source, const Player &player, int files)
{
    m_source = source;
    m_player = player;
    m_everything = true;
    m_filesExpected = files;
    return copyFromFolder();
}

int SongRestore::countFiles(const QString &source, const std::function<bool()> &goOn)
{
    return listTree({source, kEveryFile}, goOn).size();
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
                     {kFlushing.data(), &SongRestore::flushPlayer}});
}

JobEnd SongRestore::listSongs()
{
    const auto goOn = [this] { return !m_view.isStopped(); };
    // A folder that has gone, or cannot be listed, would pass for an empty one.
    if (!isListable(m_source))
        return {JobEnd::Failed};
    m_isListed = canListAll(goOn);
    m_files = listTree({m_source, kSongEntries, songNames()}, goOn);
    if (m_everything)
        m_files = withoutWhatStays(m_files);
    return {};
}

/// What a disk or a network drive keeps at its root for itself alone is none of the backup's.
bool SongRestore::canListAll(const std::function<bool()> &goOn) const
{
    const QDir::Filters folders =
        QDir::Dirs | QDir::NoDotAndDotDot | (m_everything ? QDir::Hidden | QDir::System : QDir::Filters());
    return walkTree({m_source, folders}, [this, &goOn](const QFileInfo &entry) {
        const QString path = entry.filePath();
        const QString top = path.mid(m_source.size() + (m_source.endsWith(QLatin1Char('/')) ? 0 : 1));
        return goOn() && (isLink(entry) || isWindowsOwn(top) || top == QLatin1String("lost+found") ||
                          top == QLatin1String("#recycle") || isListable(path));
    });
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
    QStringList others = listTree({m_source, kEveryFile}, [this] { return !m_view.isStopped(); });
    m_isListed = m_isListed && others.size() >= m_filesExpected;
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
        return {m_isListed ? JobEnd::Done : JobEnd::Failed};
    return {m_view.isStopped() ? JobEnd::Stopped : JobEnd::Failed};
}
