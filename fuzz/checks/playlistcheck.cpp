#include "checks.h"
#include "scratchfolder.h"

#include "optimizer/playlist.h"

#include <QFile>
#include <QFileInfo>

namespace {

using FuzzChecks::Verdict;

QList<QByteArray> linesOf(const QByteArray &bytes)
{
    QList<QByteArray> lines;
    for (int start = 0; start < bytes.size();) {
        const int end = bytes.indexOf('\n', start);
        lines.append(bytes.mid(start, end < 0 ? -1 : end + 1 - start));
        start += lines.last().size();
    }
    return lines;
}

QString textOf(const QByteArray &line)
{
    const int end = line.indexOf('\0');
    return QString::fromUtf8(end < 0 ? line : line.left(end));
}

/// The playlist as it must be with every @p before replaced.
QByteArray rewritten(const QByteArray &bytes, const QString &before, const QString &after)
{
    QByteArray lines;
    for (const QByteArray &line : linesOf(bytes)) {
        QString text = textOf(line);
        lines += (before.isEmpty() ? text : text.replace(before, after, Qt::CaseInsensitive)).toUtf8();
    }
    return lines;
}

/// The first song that the playlist names, in device form.
QString firstSong(const QStringList &keys, const Player &player)
{
    return keys.isEmpty() ? QString() : player.devicePath(keys.first());
}

Verdict namesTheSameSongs(const QStringList &keys, const QByteArray &bytes, const Player &player)
{
    QStringList expected;
    for (const QByteArray &line : linesOf(bytes))
        expected.append(playlistKey(line, player));
    return keys == expected ? QString() : QStringLiteral("the keys are not those of the lines");
}

/// A playlist that was set aside comes back where it is the whole one.
Verdict comesBack(const ScratchFolder &folder, const QString &path, const QByteArray &bytes)
{
    const QByteArray present = ScratchFolder::read(path);
    ScratchFolder::write(path + QStringLiteral(".old"), bytes);
    restorePlaylists(folder.path());
    const bool isRight = ScratchFolder::read(path) == (bytes.size() > present.size() ? bytes : present);
    return isRight ? QString() : QStringLiteral("another playlist than the whole one came back");
}

/// A playlist that was written beside a former one, which has gone, takes its place.
Verdict takesItsPlace(const ScratchFolder &folder, const QString &path, const QByteArray &bytes)
{
    QFile::remove(path);
    ScratchFolder::write(path + QStringLiteral(".new"), bytes);
    restorePlaylists(folder.path());
    return ScratchFolder::read(path) == bytes ? QString() : QStringLiteral("a new playlist did not take its place");
}

} // namespace

Verdict FuzzChecks::playlist(const QByteArray &bytes)
{
    static const ScratchFolder folder;
    static const QString path = folder.path(QStringLiteral("list.pls"));
    static const Player player(QStringLiteral("/media/CORVIN4/"));
    const QString moved = QStringLiteral("\\sdmemory\\My Songs\\A-C\\moved.mid");
    QFile::remove(path + QStringLiteral(".old"));
    ScratchFolder::write(path, bytes);
    const QStringList keys = playlistKeys(path, player);
    Verdict wrong = namesTheSameSongs(keys, bytes, player);
    if (!wrong.isEmpty())
        return wrong;
    const QString song = firstSong(keys, player);
    if (!rewritePlaylistFile(path, song, moved))
        return QStringLiteral("a playlist could not be rewritten");
    if (ScratchFolder::read(path) != rewritten(bytes, song, moved))
        return QStringLiteral("more was rewritten than the path of one song");
    if (QFileInfo::exists(path + QStringLiteral(".new")))
        return QStringLiteral("a rewritten playlist lies beside the playlist");
    // These take as long as all the rest, and what the bytes are is nothing to them.
    switch (bytes.size() % 8) {
    case 0:
        return comesBack(folder, path, bytes);
    case 1:
        return takesItsPlace(folder, path, bytes);
    default:
        return QString();
    }
}
