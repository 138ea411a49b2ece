#include "fastdatabase.h"

#include "playerpaths.h"

#include <QFile>

QStringList songsListedByPlayer(const QString &root)
{
    static const QByteArray kBeginning = QByteArrayLiteral("\\sdmemory\\");
    QFile file(root + QStringLiteral("System/Corvin/data.fastDB"));
    if (!file.open(QIODevice::ReadOnly))
        return QStringList();
    const QByteArray bytes = file.readAll();
    QStringList songs;
    for (int from = bytes.indexOf(kBeginning); from >= 0; from = bytes.indexOf(kBeginning, from)) {
        const int end = bytes.indexOf('\0', from);
        if (end < 0)
            break;
        songs.append(PlayerPaths::fromDevice(QString::fromUtf8(bytes.mid(from, end - from))));
        from = end;
    }
    songs.removeDuplicates();
    return songs;
}
