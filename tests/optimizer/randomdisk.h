#pragma once

#include "optimizerrun.h"
#include "songfactory/songfactory.h"
#include "songfiles/bytes.h"
#include "songfiles/rounds.h"
#include "support/files.h"

/// A player's disk as nobody would fill one on purpose: nested folders, odd names, names and paths that are too long,
/// titles and names that collide, songs that are none, pictures, videos and rubbish everywhere, links, playlists that
/// are broken. Every file has a content of its own, by which it is known again wherever it goes.
class RandomDisk
{
public:
    RandomDisk(OptimizerRun &run, QRandomGenerator &random) : m_run(run), m_player(run.player), m_random(random) {
        m_folders = QStringList(QString());
        for (int i = m_random.bounded(12); i > 0; --i)
            addFolder();
        for (int i = m_random.bounded(120); i > 0; --i)
            addFile(pick(m_folders), baseName(), pick(suffixes()));
        if (m_random.bounded(3) == 0)
            addBigFolder();
        for (int i = m_random.bounded(4); i > 0; --i)
            addPlaylist();
        if (m_random.bounded(4) == 0)
            m_player.addFile("System/Playlist/broken.pls"_s,
                             "no song\n\\sdmemory\\\xFF\xFE^1^2\n\0\\sdmemory\\x.mid^1\n^9^9\n\r\r\n\\sdmemory\\"_b);
        if (m_random.bounded(2) == 0)
            addDatabaseExport();
#ifdef Q_OS_UNIX
        addLinks();
#endif
    }

    /// Songs, pictures and videos that a run may rename and move, but never takes off the player.
    const QSet<QByteArray> &treasures() const {
        return m_treasures;
    }
    /// What may be on the player or on the PC.
    const QSet<QByteArray> &others() const {
        return m_others;
    }

    /// What playlists name, line by line; an empty content where a run may leave a line with a name that is gone: of
    /// files that it gives another name or another folder after the playlists were read.
    QMap<QString, QByteArrayList> namedByPlaylists() const {
        QMap<QString, QByteArrayList> named;
        for (const QString &list : m_playlists)
            named.insert(list, contentsNamedBy(list));
        return named;
    }
    /// The contents of the files that the lines of a playlist name now.
    QByteArrayList contentsNamedBy(const QString &playlist) const {
        QByteArrayList contents;
        for (const QByteArray &line : m_player.content(playlist).split('\n')) {
            const QString path = QString::fromUtf8(line).section(QLatin1Char('^'), 0, 0).mid(10);
            contents.append(m_player.content(QString(path).replace(QLatin1Char('\\'), QLatin1Char('/'))));
        }
        return contents;
    }
    /// Whether a run leaves the name of this file alone but for the move from the root to "My Songs".
    bool isSteady(const QByteArray &content) const {
        return m_steady.contains(content);
    }

private:
    static QByteArray addedBytes(int number) {
        return " no. " + QByteArray::number(number);
    }
    template <typename T> T pick(const QList<T> &list) {
        return list.at(m_random.bounded(list.size()));
    }
    QString pick(const QStringList &list) {
        return list.at(m_random.bounded(list.size()));
    }
    static QStringList suffixes() {
        return words("mp3 MP3 mid mid mid midi MIDI kar xmid xmp3 mf3 MF4 mf5 jpg PNG jpeg bmp mp4 AVI mov txt db pls "
                     "exe cdg dat bak DAT CDG none");
    }
    static QStringList ownFolders() {
        return words("Images Videos System System/Corvin Bridges Effects CorvinUpdate Images/2019 Videos/Clips "
                     "SystemOld BridgesX System/Playlist/old");
    }
    QString baseName() {
        switch (m_random.bounded(14)) {
        case 0:
            return "n"_s.repeated(85 + m_random.bounded(30)) + QString::number(m_random.bounded(3));
        case 1:
            return "\u00E8"_s.repeated(30 + m_random.bounded(60));
        case 2:
            return "l"_s.repeated(200 + m_random.bounded(51));
        case 3:
            return "."_s + randomText(m_random, 4, "ab"_s);
        case 4:
            return "line\nbreak \t"_s.left(3 + m_random.bounded(9));
        case 5:
            return pick(
                QStringList({" blank "_s, "quo\"te's"_s, "semi;colon"_s, "(0)"_s, "a(1)"_s, "a_1"_s, "dots.in.it"_s,
                             "caret^1^2"_s, "100%1"_s, "\u65E5\u672C"_s, "trailing."_s, "back\\slash"_s}));
        default:
            return randomText(m_random, 2, "abc"_s) + "song"_s;
        }
    }
    void addFolder() {
        QString name = m_random.bounded(3) == 0 ? pick(ownFolders()) : baseName().left(1 + m_random.bounded(120));
        name.remove(QLatin1Char('\n'));
        QString folder = pick(m_folders);
        // The player's own folders lie at its root.
        folder = ownFolders().contains(name) || folder.isEmpty() ? name : folder + QLatin1Char('/') + name;
        if (m_random.bounded(10) == 0)
            folder += ".old"_s;
        // Known: in a folder whose path is this long no number helps a name, and each run tries another one.
        const int length = m_player.path(folder).toUtf8().size() + 1;
        const bool isOfNoHelp = length > 230 && length < 240;
        if (isTaken(folder) || name.startsWith(QLatin1Char('.')) || isOfNoHelp || length > 1000)
            return;
        m_player.addFolder(folder);
        m_folders.append(folder);
    }
    /// The player's own disk takes names that differ in case for the same. A song "x.midi" beside an "x.mid" that is no
    /// song is known to take one run more: its name is free only then.
    bool isTaken(const QString &path) {
        QString name = path.toLower();
        if (name.endsWith(".midi"_s))
            name.chop(1);
        const bool taken = m_names.contains(name);
        m_names.insert(name);
        return taken;
    }
    QByteArray contentOf(const QString &suffix, bool isSound) {
        const QByteArray number = addedBytes(++m_count);
        SongInfo info;
        info.author = QString::fromLatin1(number);
        info.title = m_random.bounded(4) == 0 ? QString() : randomText(m_random, 2, "aA'(\u00E9 Z9"_s);
        if (!isSound)
            return "MThd, but no song" + number;
        if (suffix.endsWith("mp3"_s, Qt::CaseInsensitive))
            return SongFactory::mp3(3, info, 0, 1);
        if (suffix.startsWith("mf"_s, Qt::CaseInsensitive) && m_random.bounded(3) == 0)
            return SongFactory::mfx(3, info, 1) + number;
        return SongFactory::midi(info, 0, SongFactory::Markers::WithBars, 1);
    }
    void addFile(const QString &folder, const QString &base, const QString &suffix) {
        const QString name = suffix == "none"_s ? base : base + QLatin1Char('.') + suffix;
        const QString path = folder.isEmpty() ? name : folder + QLatin1Char('/') + name;
        if (name.toUtf8().size() > 255 || base.isEmpty() || name == "."_s || name == ".."_s || isTaken(path))
            return;
        const bool isSong = m_run.page.songSuffixes.contains(suffix, Qt::CaseInsensitive);
        const bool isSound = !isSong || m_random.bounded(8) > 0;
        const QByteArray content =
            isSong ? contentOf(suffix, isSound) : suffix.toUtf8() + addedBytes(++m_count) + QByteArray(10, '\xFF');
        m_player.addFile(path, content);
        const bool isMedia =
            (m_run.page.imageSuffixes + m_run.page.videoSuffixes).contains(suffix, Qt::CaseInsensitive);
        const bool isKept = !name.startsWith(QLatin1Char('.')) && (isMedia || (isSong && isSound));
        (isKept ? m_treasures : m_others).insert(content);
        if (isKept && isSong && !suffix.contains("midi"_s, Qt::CaseInsensitive) && hasRoomForItsName(folder, name))
            m_steady.insert(content);
        if (isSong)
            m_songs.append(path);
    }
    /// Whether neither the name nor the path, before and after it moves, is one that the player cannot open.
    bool hasRoomForItsName(const QString &folder, const QString &name) const {
        constexpr int kNumber = 10;
        const QString path = m_player.path(folder.isEmpty() ? "My Songs"_s : folder) + QLatin1Char('/') + name;
        return name.toLocal8Bit().size() + kNumber <= 95 && path.toLocal8Bit().size() + kNumber <= 245;
    }
    void addBigFolder() {
        const QString folder = m_random.bounded(2) == 0 ? "Big"_s : "Deep/er/Big"_s;
        const int songs = 1001 + m_random.bounded(30);
        for (int i = 0; i < songs; ++i) {
            const QString base = randomText(m_random, 1, "aZ9'\u00C8"_s) + QString::number(i);
            addFile(folder, base, i % 50 == 0 ? "MIDI"_s : "mid"_s);
            if (i % 20 == 0)
                addFile(folder, base, pick(words("cdg dat bak CDG")));
            // Its place is taken already.
            if (i % 40 == 0)
                addFile(folder + QLatin1Char('/') + pick(words("A0 Z0 90 #0")), base, pick(words("cdg dat")));
        }
        for (int i = 0; i < 20; ++i)
            addFile(folder, baseName(), pick(suffixes()));
        addFile(folder + "/A0"_s, "A0"_s, "mid"_s);
        addFile(folder + "/9"_s, "a1"_s, "mid"_s);
        // Playlists do not follow songs into the sub-folders.
        for (const QString &path : m_songs) {
            if (path.startsWith(folder + QLatin1Char('/')))
                m_steady.remove(m_player.content(path));
        }
    }
    void addPlaylist() {
        QByteArray lines;
        for (int i = m_random.bounded(30); i > 0 && !m_songs.isEmpty(); --i) {
            QString song = pick(m_songs);
            if (!song.contains(QLatin1Char('\n')) && !song.contains(QLatin1Char('^')) &&
                !song.contains(QLatin1Char('\\')))
                lines += "\\sdmemory\\" + song.replace(QLatin1Char('/'), QLatin1Char('\\')).toUtf8() + "^12^0";
            lines += pick(QByteArrayList({"\n", "\r\n", "\n\n"}));
        }
        m_playlists.append("System/Playlist/%1.pls"_s.arg(m_playlists.size()));
        m_player.addFile(m_playlists.last(), lines);
    }
    void addDatabaseExport() {
        QByteArray bytes = "\1\2fast";
        for (const QString &song : m_songs) {
            if (m_random.bounded(2) == 0)
                bytes += "\\sdmemory\\" + QString(song).replace(QLatin1Char('/'), QLatin1Char('\\')).toUtf8() + '\0';
        }
        m_player.addFile("System/Corvin/data.fastDB"_s, bytes + "\\sdmemory\\no end");
    }
    void addLinks() {
        for (int i = m_random.bounded(6); i > 0; --i) {
            const QString target =
                pick(QStringList({"."_s, ".."_s, "nothing"_s, "System"_s, m_player.root()}) + m_songs);
            const QString name = pick(words("link.mid link link.jpg link.txt a.mid.lnk"));
            QFile::link(target, m_player.path(pick(m_folders) + QLatin1Char('/') + name));
        }
    }

    OptimizerRun &m_run;
    SimulatedPlayer &m_player;
    QRandomGenerator &m_random;
    QStringList m_folders;
    QStringList m_songs;
    QStringList m_playlists;
    QSet<QString> m_names;
    QSet<QByteArray> m_treasures;
    QSet<QByteArray> m_others;
    QSet<QByteArray> m_steady;
    int m_count = 0;
};
