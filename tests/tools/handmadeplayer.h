#pragma once

#include "playertool/judge.h"
#include "songfactory/songfactory.h"

#include "support/files.h"
#include "support/testing.h"

/// A small player's disk that was optimised by hand: every path and every line of it is written down here, so that the
/// judge is measured against something that no program made. Paths are relative to the root.
class HandmadePlayer
{
    PcFolder m_dir;

public:
    const QString root = m_dir.path() + "/"_s;
    Snapshot before;
    Manifest manifest;

    /// Writes the disk as it was, notes it, and turns it into what an optimisation must leave, if that is wanted.
    explicit HandmadePlayer(bool optimised = true) {
        writeBefore();
        before = Snapshot::take(root);
        if (optimised)
            optimise();
        m_made = contentBelow(root);
        m_made.insert(".windows-label"_s, read(".windows-label"_s));
        m_folders = Snapshot::take(root).folders;
        m_touched.clear();
    }

    /// Undoes all that was changed since the disk was made.
    void restore() {
        const QSet<QString> touched = m_touched;
        for (const QString &path : touched) {
            if (m_made.contains(path))
                write(path, m_made.value(path));
            else if (QFileInfo::exists(root + path))
                remove(path);
        }
        for (const QString &path : touched) {
            for (QString folder = folderOf(path); !folder.isEmpty() && !m_folders.contains(folder);
                 folder = folderOf(folder))
                QDir(root).rmdir(folder);
        }
        m_touched.clear();
    }

    Verdict judge() const { return ::judge(before, root, manifest); }

    QByteArray read(const QString &path) const { return contentOf(root + path); }
    void write(const QString &path, const QByteArray &bytes) { putFile(root + touched(path), bytes); }
    void remove(const QString &path) { check(QFile::remove(root + touched(path)), "Cannot remove "_s + path); }
    void move(const QString &from, const QString &to) {
        QDir(root).mkpath(folderOf(root + to));
        check(QFile::rename(root + touched(from), root + touched(to)), "Cannot move "_s + from);
    }
    /// In the file, the first occurrence of @p from becomes @p to.
    void replace(const QString &path, const QByteArray &from, const QByteArray &to) {
        QByteArray bytes = read(path);
        const int at = bytes.indexOf(from);
        check(at >= 0, "%1 lacks %2"_s.arg(path, QString::fromUtf8(from)));
        write(path, bytes.replace(qMax(0, at), from.size(), to));
    }

private:
    static constexpr int kBigSongs = 255; ///< with three companions each more files than a folder may hold
    const QStringList kBigSuffixes = words(".mid .cdg .dat .bak");
    const QString kOverlong = QString(116, QLatin1Char('l'));

    static QString folderOf(const QString &path) { return path.left(qMax(0, path.lastIndexOf(QLatin1Char('/')))); }
    static void check(bool good, const QString &why) {
        if (!good)
            failTest(why);
    }
    const QString &touched(const QString &path) { return *m_touched.insert(path); }

    void addSong(const QString &path, const QString &title, const QString &artist = {}) {
        SongInfo info;
        info.title = title;
        info.artist = artist;
        info.userBpm = 120;
        info.key = "C"_s;
        info.markers.append({1, "A"_s});
        write(path, SongFactory::midi(info));
        manifest.songs.insert(path, {false, title, artist, {}, {}, info.userBpm, info.key, false, true, {title}});
    }

    static QString bigSong(int number) { return "My Songs/Big/Song %1"_s.arg(number); }
    /// Two halves under two initials; an accent does not matter.
    static QString bigTitle(int number) { return (number % 2 == 0 ? "\u00C9cho %1"_s : "'tis %1"_s).arg(number); }
    static QString bigPlace(int number) {
        const QString even = number < 4 ? "E0"_s : "E1"_s;
        return "My Songs/Big/%1/Song %2"_s.arg(number % 2 == 0 ? even : "T0"_s).arg(number);
    }

    void writeBefore() {
        write(".windows-label"_s, "CORVIN4\n");
        write("AUTOEXEC.BAT"_s, "auto");
        write("note.txt"_s, "note");
        write("System/Corvin/Corvin.exe"_s, "MZ");
        write("System/Corvin/readme.txt"_s, "kept");
        write("System/Corvin/data.fastDB"_s, QByteArrayLiteral("noise\0\x01\\sdmemory\\My Songs\\KNOWN.mid\0"
                                                               "..\\sdmemory\\My Songs\\Gone.mid\0x"
                                                               "\\sdmemory\\My Songs\\Big\\Song 3.mid\0"));
        write("System/Playlist/p.pls"_s,
              "\\sdmemory\\loose.mid^1^2\r\n\\sdmemory\\My Songs\\Known.mid^3^4\r\nno song\r\n");
        addSong("loose.mid"_s, "Loose"_s);
        addSong("My Songs/loose.mid"_s, "Other"_s);
        addSong("My Songs/Known.mid"_s, "Known"_s);
        addSong("My Songs/New.MIDI"_s, "Rock 'n' Roll"_s, "D'Amico"_s);
        write("My Songs/New.cdg"_s, "companion of New");
        addSong("My Songs/%1.mid"_s.arg(kOverlong), "Long"_s);
        addSong("Bridges/Bridge.midi"_s, "Bridge"_s);
        write("My Songs/bad.mid"_s, "no song");
        manifest.songs["My Songs/bad.mid"_s].broken = true;
        write("My Songs/cover.jpg"_s, "cover one");
        write("Images/cover.jpg"_s, "cover two");
        write("My Songs/clip.avi"_s, "clip");
        write("My Songs/.hidden.txt"_s, "hidden");
        for (int i = 0; i < kBigSongs; ++i) {
            for (const QString &suffix : kBigSuffixes)
                write(bigSong(i) + suffix, (bigSong(i) + suffix).toUtf8());
            addSong(bigSong(i) + ".mid"_s, bigTitle(i));
        }
    }

    static QByteArray insertLine(const QString &path, const QString &title, const QString &artist = "<unknown>"_s) {
        const QString device = "\\sdmemory\\"_s + QString(path).replace(QLatin1Char('/'), QLatin1Char('\\'));
        const auto quoted = [](QString text) { return text.replace("'"_s, "''"_s); };
        return "INSERT INTO songs (filename,onlyFilename,title,artist,genre,DriveName,format,author,bpm,[key],marker) "
               "VALUES ('%1','%2','%3','%4','<unknown>','','0','<unknown>','120','C','1')\n"_s
                   .arg(quoted(device), quoted(QFileInfo(path).fileName()), quoted(title), quoted(artist))
                   .toUtf8();
    }

    void optimise() {
        remove("note.txt"_s);
        move("loose.mid"_s, "My Songs/loose_1.mid"_s);
        replace("System/Playlist/p.pls"_s, "\\sdmemory\\loose.mid", "\\sdmemory\\My Songs\\loose_1.mid");
        move("My Songs/cover.jpg"_s, "Images/cover_1.jpg"_s);
        move("My Songs/clip.avi"_s, "Videos/clip.avi"_s);
        move("My Songs/New.MIDI"_s, "My Songs/New.MID"_s);
        const QString shortened = "My Songs/%1(0).mid"_s.arg(kOverlong.left(86));
        move("My Songs/%1.mid"_s.arg(kOverlong), shortened);
        remove("My Songs/bad.mid"_s);

        QByteArray inserts;
        for (int i = 0; i < kBigSongs; ++i) {
            for (const QString &suffix : kBigSuffixes)
                move(bigSong(i) + suffix, bigPlace(i) + suffix);
            inserts += insertLine(bigPlace(i) + ".mid"_s, bigTitle(i));
        }
        inserts += insertLine("My Songs/loose_1.mid"_s, "Loose"_s);
        inserts += insertLine("My Songs/loose.mid"_s, "Other"_s);
        inserts += insertLine("My Songs/New.MID"_s, "Rock 'n' Roll"_s, "D'Amico"_s);
        inserts += insertLine(shortened, "Long"_s);
        write("CorvinImportDB.sql"_s, inserts +
                                          "DELETE FROM songs WHERE filename='\\sdmemory\\My Songs\\Gone.mid'\n"
                                          "DELETE FROM songs WHERE filename='\\sdmemory\\My Songs\\Big\\Song 3.mid'\n");
    }

    QMap<QString, QByteArray> m_made; ///< the content of each file when the disk was made
    QSet<QString> m_folders;
    QSet<QString> m_touched; ///< paths of files that were changed since then
};
