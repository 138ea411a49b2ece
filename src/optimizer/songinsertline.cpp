#include "sqlline.h"

#include "songfiles/metasong.h"

QString insertLineForSong(const QString &path, const QString &rootPath)
{
    MetaSong song;
    if (!song.importFile(path))
        return QString();
    SongInfo info;
    song.getSongInfo(info);
    return insertLine(info, path, rootPath);
}
