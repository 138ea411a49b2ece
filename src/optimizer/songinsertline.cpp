#include "sqlline.h"

#include "songfiles/metasong.h"

QString insertLineForSong(const QString &path, const Player &player, ImportResult *result)
{
    MetaSong song;
    const bool imported = song.importFile(path);
    if (result)
        *result = song.importResult();
    if (!imported)
        return QString();
    SongInfo info;
    song.getSongInfo(info);
    return insertLine(info, path, player);
}
