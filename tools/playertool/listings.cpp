#include "listings.h"

#include "playerdisk.h"
#include "playerpaths.h"

namespace {

constexpr int kHundred = 100;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

QByteArray playlistLine(PlayerDisk &disk, const QString &path)
{
    const int position = disk.random().bounded(1000);
    const int transpose = disk.random().bounded(12);
    return text("%1^%2^%3\r\n").arg(PlayerPaths::toDevice(path)).arg(position).arg(transpose).toUtf8();
}

QStringList songsIn(const PlayerDisk &disk, bool inRoot)
{
    QStringList found;
    const auto &songs = disk.manifest().songs;
    for (auto it = songs.cbegin(); it != songs.cend(); ++it) {
        if (!it->broken && !PlayerPaths::isOutsideDatabase(it.key()) &&
            PlayerPaths::folderOf(it.key()).isEmpty() == inRoot)
            found.append(it.key());
    }
    return found;
}

QByteArray noise(PlayerDisk &disk)
{
    constexpr int kShortest = 8;
    constexpr int kLongest = 48;
    constexpr char kBackslash = '\\';
    QByteArray bytes;
    for (int left = disk.random().bounded(kShortest, kLongest); left > 0; --left) {
        const char byte = char(disk.random().bounded(256));
        bytes.append(byte == kBackslash ? '/' : byte); // without a backslash no noise can look like a path
    }
    return bytes;
}

/// The disk ignores the case of names, and the player may have written one otherwise.
QString inOtherCase(const QString &path)
{
    return PlayerPaths::folderOf(path).toUpper() + path.mid(PlayerPaths::folderOf(path).size());
}

} // namespace

void addPlaylists(PlayerDisk &disk)
{
    const QString folder = text("System/Playlist/");
    const QStringList loose = songsIn(disk, true);
    const QStringList filed = songsIn(disk, false);
    QByteArray evening;
    QByteArray party = "# Festa d'estate\r\n";
    QByteArray untouched;
    for (const QString &path : loose) {
        const QString &other = filed.at(disk.random().bounded(filed.size()));
        evening += playlistLine(disk, path) + playlistLine(disk, other);
        untouched += playlistLine(disk, other);
        if (disk.random().bounded(2) == 0)
            party += playlistLine(disk, path) + playlistLine(disk, path);
    }
    evening += playlistLine(disk, text("Sparita dalla radice.mid")) + playlistLine(disk, text("My Songs/Sparita.mid"));
    party += "\r\n" + playlistLine(disk, loose.first()).replace("\\sdmemory\\", "\\SDMemory\\");
    party += PlayerPaths::toDevice(loose.last()).toUtf8() + "^1^0"; // a last line without an end
    disk.write(folder + text("Serata.pls"), evening);
    disk.write(folder + text("Festa dell'estate è qui.pls"), party);
    disk.write(folder + text("Solo cartelle.pls"), untouched);
    disk.write(folder + text("Vuota.pls"), QByteArray());
    disk.write(folder + text("Serata.txt"), evening);
}

void addFastDatabase(PlayerDisk &disk)
{
    constexpr int kNamedOfHundred = 45;
    constexpr int kOtherCaseOfHundred = 3;
    constexpr int kSongsForOneGone = 60;
    QByteArray bytes = "FDB1" + noise(disk);
    const auto name = [&](const QString &path) { bytes += PlayerPaths::toDevice(path).toUtf8() + '\0' + noise(disk); };
    const QStringList filed = songsIn(disk, false);
    for (const QString &path : filed) {
        if (disk.random().bounded(kHundred) >= kNamedOfHundred)
            continue;
        name(disk.random().bounded(kHundred) < kOtherCaseOfHundred ? inOtherCase(path) : path);
    }
    name(songsIn(disk, true).first());
    for (int gone = 0; gone <= filed.size() / kSongsForOneGone; ++gone)
        name(text("My Songs/Andata via/L'ultima è sparita %1.mid").arg(gone));
    disk.write(text("System/Corvin/data.fastDB"), bytes);
}
