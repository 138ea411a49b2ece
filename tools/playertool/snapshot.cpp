#include "snapshot.h"

#include "playerpaths.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString kPath = QStringLiteral("path");
const QString kFolder = QStringLiteral("folder");
const QString kSize = QStringLiteral("size");
const QString kSha1 = QStringLiteral("sha1");
const QString kBroken = QStringLiteral("broken");
const QString kContent = QStringLiteral("content");
const QString kPlaylistFolder = QStringLiteral("System/Playlist");

constexpr qint64 kHeadBytes = 1000000; // what decides whether a song is broken
constexpr auto kEverything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoSymLinks | QDir::NoDotAndDotDot;

Snapshot::File readFile(const QString &root, const QString &path)
{
    Snapshot::File found;
    QFile file(root + path);
    if (!file.open(QIODevice::ReadOnly))
        return found;
    found.size = file.size();
    const QByteArray head = file.read(qMin(found.size, kHeadBytes));
    if (PlayerPaths::kindOf(path) == PlayerPaths::Kind::Song)
        found.looksBroken = looksLikeABrokenSong(path, head);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(head);
    hash.addData(&file);
    found.sha1 = hash.result();
    return found;
}

bool isPlaylist(const QString &path)
{
    return PlayerPaths::folderOf(path).compare(kPlaylistFolder, Qt::CaseInsensitive) == 0 &&
           PlayerPaths::suffixOf(path).compare(QLatin1String("pls"), Qt::CaseInsensitive) == 0;
}

QByteArray contentOf(const QString &fullPath)
{
    QFile file(fullPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeLine(QFile &out, const QJsonObject &entry)
{
    const QByteArray line = QJsonDocument(entry).toJson(QJsonDocument::Compact) + '\n';
    return out.write(line) == line.size();
}

} // namespace

Snapshot Snapshot::take(const QString &root)
{
    Snapshot snapshot;
    const QString base = root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/');
    QDirIterator entries(base, kEverything, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next().mid(base.size());
        if (entries.fileInfo().isDir()) {
            snapshot.folders.insert(path);
            continue;
        }
        snapshot.files.insert(path, readFile(base, path));
        if (isPlaylist(path))
            snapshot.playlists.insert(path, contentOf(base + path));
    }
    return snapshot;
}

bool Snapshot::save(const QString &file) const
{
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    for (const QString &folder : folders) {
        if (!writeLine(out, {{kFolder, folder}}))
            return false;
    }
    for (auto it = files.cbegin(); it != files.cend(); ++it) {
        QJsonObject entry{{kPath, it.key()}, {kSize, it->size}, {kSha1, QLatin1String(it->sha1.toHex())}};
        if (it->looksBroken)
            entry.insert(kBroken, true);
        if (playlists.contains(it.key()))
            entry.insert(kContent, QLatin1String(playlists.value(it.key()).toBase64()));
        if (!writeLine(out, entry))
            return false;
    }
    return out.flush();
}

bool Snapshot::load(const QString &file, Snapshot &snapshot)
{
    snapshot = Snapshot();
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    while (!in.atEnd()) {
        const QJsonObject entry = QJsonDocument::fromJson(in.readLine()).object();
        const QString path = entry.value(kPath).toString();
        if (entry.contains(kFolder)) {
            snapshot.folders.insert(entry.value(kFolder).toString());
            continue;
        }
        if (path.isEmpty())
            return false;
        File found;
        found.size = qint64(entry.value(kSize).toDouble());
        found.sha1 = QByteArray::fromHex(entry.value(kSha1).toString().toLatin1());
        found.looksBroken = entry.value(kBroken).toBool();
        snapshot.files.insert(path, found);
        if (entry.contains(kContent))
            snapshot.playlists.insert(path, QByteArray::fromBase64(entry.value(kContent).toString().toLatin1()));
    }
    return true;
}
