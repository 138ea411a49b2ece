#include "sqlline.h"

#include "songfiles/metasong.h"

SongLine insertLineForSong(const QString &path, const Player &player)
{
    MetaSong song;
    if (!song.importFile(path))
        return {QString(), song.importResult()};
    SongInfo info;
    song.getSongInfo(info);
    return {insertLine(info, path, player), song.importResult()};
}
