#include "songkind.h"

QStringList songSuffixList()
{
    QStringList suffixes;
    for (const SongSuffix &song : kSongSuffixes)
        suffixes.append(QLatin1String(song.suffix));
    return suffixes;
}

QStringList songNameFilterList()
{
    QStringList filters;
    for (const SongSuffix &song : kSongSuffixes)
        filters.append(QLatin1String("*.") + QLatin1String(song.suffix));
    return filters;
}
