#include "playlist.h"

#include <QFile>
#include <QRegExp>
#include <QTextStream>

namespace {

/// @p rawLine as text, up to its first NUL byte.
QString decodedLine(const QByteArray &rawLine)
{
    return QString::fromUtf8(rawLine.constData(), static_cast<int>(qstrnlen(rawLine.constData(), rawLine.size())));
}

} // namespace

QString playlistKey(const QByteArray &rawLine, const Player &player)
{
    const QString line = player.pcPath(decodedLine(rawLine));
    const QRegExp numbers(QStringLiteral("(\\^\\d{1,5}){2,2}\\b"));
    const int start = numbers.indexIn(line);
    // Deliberate: a line without its numbers is kept whole, line end included.
    return start < 0 ? line : line.left(start);
}

QStringList playlistKeys(const QString &playlistPath, const Player &player)
{
    QStringList keys;
    QFile playlist(playlistPath);
    if (!playlist.open(QIODevice::ReadOnly))
        return keys;
    while (!playlist.atEnd())
        keys.append(playlistKey(playlist.readLine(), player));
    return keys;
}

void rewritePlaylistFile(const QString &playlistPath, const QString &oldDevicePath, const QString &newDevicePath)
{
    const QString backupPath = playlistPath + QLatin1String(".old");
    QFile::remove(backupPath);
    QFile::rename(playlistPath, backupPath);

    // Deliberate: a backup that cannot be opened counts as an empty playlist.
    QFile backup(backupPath);
    const bool hasBackup = backup.open(QIODevice::ReadOnly);
    QFile playlist(playlistPath);
    playlist.open(QIODevice::WriteOnly);
    QTextStream text(&playlist);
    text.setCodec("UTF-8");
    while (!backup.atEnd()) {
        QString line = decodedLine(backup.readLine());
        if (!oldDevicePath.isEmpty())
            line.replace(oldDevicePath, newDevicePath, Qt::CaseInsensitive);
        text << line;
    }
    text.flush();
    const bool written = playlist.isOpen() && text.status() == QTextStream::Ok && playlist.flush();
    playlist.close();
    backup.close();
    if (!written && hasBackup) {
        // On a full disk the playlist stays as it was: half of it is worth less than one outdated line.
        QFile::remove(playlistPath);
        QFile::rename(backupPath, playlistPath);
        return;
    }
    QFile::remove(backupPath);
}
