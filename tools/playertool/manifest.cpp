#include "manifest.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString key(const char *name)
{
    return QString::fromLatin1(name);
}

QJsonObject toJson(const QString &path, const ExpectedSong &song)
{
    QJsonObject out{{key("path"), path}, {key("broken"), song.broken}};
    if (song.broken)
        return out;
    out.insert(key("title"), song.title);
    out.insert(key("artist"), song.artist);
    out.insert(key("genre"), song.genre);
    out.insert(key("author"), song.author);
    out.insert(key("bpm"), song.bpm);
    out.insert(key("key"), song.key);
    out.insert(key("mp3"), song.isMp3);
    out.insert(key("markers"), song.hasMarkers);
    out.insert(key("filedUnder"), QJsonArray::fromStringList(song.filedUnder));
    return out;
}

ExpectedSong fromJson(const QJsonObject &in)
{
    ExpectedSong song;
    song.broken = in.value(key("broken")).toBool();
    song.title = in.value(key("title")).toString();
    song.artist = in.value(key("artist")).toString();
    song.genre = in.value(key("genre")).toString();
    song.author = in.value(key("author")).toString();
    song.bpm = in.value(key("bpm")).toInt();
    song.key = in.value(key("key")).toString();
    song.isMp3 = in.value(key("mp3")).toBool();
    song.hasMarkers = in.value(key("markers")).toBool();
    const QJsonArray titles = in.value(key("filedUnder")).toArray();
    for (const QJsonValue &title : titles)
        song.filedUnder.append(title.toString());
    return song;
}

} // namespace

bool Manifest::save(const QString &file) const
{
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    for (auto it = songs.cbegin(); it != songs.cend(); ++it) {
        const QByteArray line = QJsonDocument(toJson(it.key(), it.value())).toJson(QJsonDocument::Compact) + '\n';
        if (out.write(line) != line.size())
            return false;
    }
    return out.flush();
}

bool Manifest::load(const QString &file, Manifest &manifest)
{
    manifest.songs.clear();
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    while (!in.atEnd()) {
        const QJsonObject entry = QJsonDocument::fromJson(in.readLine()).object();
        const QString path = entry.value(key("path")).toString();
        if (path.isEmpty())
            return false;
        manifest.songs.insert(path, fromJson(entry));
    }
    return true;
}
