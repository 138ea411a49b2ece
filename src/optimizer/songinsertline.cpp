#include "sqlline.h"

#include "songfiles/metasong.h"

QString insertLineForSong(const QString &path, const Player &player)
{
    MetaSong song;
    if (!song.importFile(path))
        return QString();
    SongInfo info;
    song.getSongInfo(info);
    return insertLine(info, path, player);
}
