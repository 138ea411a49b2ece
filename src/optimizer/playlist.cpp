#include "playlist.h"

#include "disk/diskcalls.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegExp>
#include <QTextStream>

namespace {

constexpr QLatin1String kNew(".new", 4); ///< behind the name of a playlist: the one that will take its place
constexpr QLatin1String kOld(".old", 4); ///< the one that it had before, as earlier versions left it

/// @p rawLine as text, up to its first NUL byte.
QString decodedLine(const QByteArray &rawLine)
{
    return QString::fromUtf8(rawLine.constData(), static_cast<int>(qstrnlen(rawLine.constData(), rawLine.size())));
}

} // namespace

QString playlistKey(const QByteArray &rawLine, const Player &player)
{
    const QString line = player.pcPath(decodedLine(rawLine));
    static const QRegExp numbers(QStringLiteral("(\\^\\d{1,5}){2,2}\\b"));
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

bool rewritePlaylistFile(const QString &playlistPath, const QString &oldDevicePath, const QString &newDevicePath)
{
    // Deliberate: a playlist that is not there becomes an empty one.
    QFile former(playlistPath);
    if (QFileInfo::exists(playlistPath) && !former.open(QIODevice::ReadOnly))
        return false;
    QFile playlist(playlistPath + kNew);
    bool whole = playlist.open(QIODevice::WriteOnly);
    QTextStream text(&playlist);
    text.setCodec("UTF-8");
    while (whole && former.isOpen() && !former.atEnd()) {
        const QByteArray rawLine = former.readLine();
        whole = !rawLine.isEmpty();
        QString line = decodedLine(rawLine);
        if (!oldDevicePath.isEmpty())
            line.replace(oldDevicePath, newDevicePath, Qt::CaseInsensitive);
        text << line;
    }
    text.flush();
    whole = whole && former.error() == QFileDevice::NoError && text.status() == QTextStream::Ok && playlist.flush();
    former.close();
    playlist.close();
    // On a full disk the playlist stays as it was: half of it is worth less than one outdated line.
    if (!whole || !moveOver(playlist.fileName(), playlistPath)) {
        playlist.remove();
        return false;
    }
    QFile::remove(playlistPath + kOld);
    return true;
}

void restorePlaylists(const QString &folder)
{
    const QDir dir(folder);
    // What was written to its end by a run that could not put it in its place any more comes first.
    for (const QLatin1String end : {kNew, kOld}) {
        const QStringList names = dir.entryList({QLatin1String("*.pls") + end}, QDir::Files);
        for (const QString &name : names) {
            const QFileInfo left(dir.filePath(name));
            const QFileInfo playlist(dir.filePath(name.chopped(end.size())));
            const bool isLonger = end == kOld && playlist.isFile() && playlist.size() < left.size();
            if (!playlist.exists() || isLonger)
                moveOver(left.absoluteFilePath(), playlist.absoluteFilePath());
            else if (end == kNew)
                QFile::remove(left.absoluteFilePath());
        }
    }
}
