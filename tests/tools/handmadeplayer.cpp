#include "handmadeplayer.h"

#include "songfactory/songfactory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {

constexpr int kBigSongs = 255; ///< with three companions each more files than a folder may hold
const char *const kCompanions[] = {"cdg", "dat", "bak"};

QString bigSong(int number)
{
    return QStringLiteral("My Songs/Big/Song %1").arg(number);
}

/// Two halves under two initials; an accent does not matter.
QString bigTitle(int number)
{
    return number % 2 == 0 ? QStringLiteral("\u00C9cho %1").arg(number) : QStringLiteral("'tis %1").arg(number);
}

QString bigPlace(int number)
{
    const bool second = number % 2 == 0 ? number / 2 >= 2 : false;
    const QString folder = number % 2 != 0 ? QStringLiteral("T0")
                           : second        ? QStringLiteral("E1")
                                           : QStringLiteral("E0");
    return QStringLiteral("My Songs/Big/%1/Song %2").arg(folder).arg(number);
}

QString folderOf(const QString &path)
{
    return path.left(qMax(0, path.lastIndexOf(QLatin1Char('/'))));
}

QString overlongName()
{
    return QString(116, QLatin1Char('l'));
}

QByteArray insertLine(const QString &path, const QString &title, const QString &artist)
{
    const QString name = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    const QString device = QStringLiteral("\\sdmemory\\") + QString(path).replace(QLatin1Char('/'), QLatin1Char('\\'));
    const auto quoted = [](QString text) { return text.replace(QLatin1Char('\''), QLatin1String("''")); };
    return QStringLiteral("INSERT INTO songs (filename,onlyFilename,title,artist,genre,DriveName,format,author,bpm,"
                          "[key],marker) VALUES ('%1','%2','%3','%4','<unknown>','','0','<unknown>','120','C','1')\n")
        .arg(quoted(device), quoted(name), quoted(title),
             quoted(artist.isEmpty() ? QStringLiteral("<unknown>") : artist))
        .toUtf8();
}

} // namespace

HandmadePlayer::HandmadePlayer(State state) : m_root(m_dir.path() + QLatin1Char('/'))
{
    writeBefore();
    m_before = Snapshot::take(m_root);
    if (state == State::Optimised)
        optimise();
    m_made = Snapshot::take(m_root);
    for (auto it = m_made.files.cbegin(); it != m_made.files.cend(); ++it)
        m_contents.insert(it.key(), read(it.key()));
    m_touched.clear();
}

void HandmadePlayer::restore() const
{
    const QSet<QString> touched = m_touched;
    for (const QString &path : touched) {
        if (m_contents.contains(path))
            write(path, m_contents.value(path));
        else if (QFileInfo::exists(m_root + path))
            remove(path);
    }
    for (const QString &path : touched) {
        for (QString folder = folderOf(path); !folder.isEmpty() && !m_made.folders.contains(folder);
             folder = folderOf(folder))
            QDir(m_root).rmdir(folder);
    }
    m_touched.clear();
}

void HandmadePlayer::write(const QString &path, const QByteArray &bytes) const
{
    m_touched.insert(path);
    QDir().mkpath(QFileInfo(m_root + path).absolutePath());
    QFile file(m_root + path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        QTest::qFail(qPrintable(QStringLiteral("Cannot write ") + path), __FILE__, __LINE__);
}

QByteArray HandmadePlayer::read(const QString &path) const
{
    QFile file(m_root + path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void HandmadePlayer::remove(const QString &path) const
{
    m_touched.insert(path);
    if (!QFile::remove(m_root + path))
        QTest::qFail(qPrintable(QStringLiteral("Cannot remove ") + path), __FILE__, __LINE__);
}

void HandmadePlayer::move(const QString &from, const QString &to) const
{
    m_touched.insert(from);
    m_touched.insert(to);
    QDir().mkpath(QFileInfo(m_root + to).absolutePath());
    if (!QFile::rename(m_root + from, m_root + to))
        QTest::qFail(qPrintable(QStringLiteral("Cannot move ") + from), __FILE__, __LINE__);
}

void HandmadePlayer::replace(const QString &path, const QByteArray &from, const QByteArray &to) const
{
    QByteArray bytes = read(path);
    const int at = bytes.indexOf(from);
    if (at < 0)
        QTest::qFail(from.constData(), __FILE__, __LINE__);
    else
        write(path, bytes.replace(at, from.size(), to));
}

void HandmadePlayer::addSong(const QString &path, const QString &title, const QString &artist)
{
    SongInfo info;
    info.title = title;
    info.artist = artist;
    info.userBpm = 120;
    info.key = QStringLiteral("C");
    info.markers.append({1, QStringLiteral("A")});
    write(path, SongFactory::midi(info));
    ExpectedSong expected;
    expected.title = title;
    expected.artist = artist;
    expected.bpm = info.userBpm;
    expected.key = info.key;
    expected.hasMarkers = true;
    expected.filedUnder.append(title);
    manifest.songs.insert(path, expected);
}

void HandmadePlayer::writeBefore()
{
    write(QStringLiteral(".windows-label"), "CORVIN4\n");
    write(QStringLiteral("AUTOEXEC.BAT"), "auto");
    write(QStringLiteral("note.txt"), "note");
    write(QStringLiteral("System/Corvin/Corvin.exe"), "MZ");
    write(QStringLiteral("System/Corvin/readme.txt"), "kept");
    write(QStringLiteral("System/Corvin/data.fastDB"), QByteArrayLiteral("noise\0\x01\\sdmemory\\My Songs\\KNOWN.mid\0"
                                                                         "..\\sdmemory\\My Songs\\Gone.mid\0x"
                                                                         "\\sdmemory\\My Songs\\Big\\Song 3.mid\0"));
    write(QStringLiteral("System/Playlist/p.pls"),
          "\\sdmemory\\loose.mid^1^2\r\n\\sdmemory\\My Songs\\Known.mid^3^4\r\nno song\r\n");
    addSong(QStringLiteral("loose.mid"), QStringLiteral("Loose"));
    addSong(QStringLiteral("My Songs/loose.mid"), QStringLiteral("Other"));
    addSong(QStringLiteral("My Songs/Known.mid"), QStringLiteral("Known"));
    addSong(QStringLiteral("My Songs/New.MIDI"), QStringLiteral("Rock 'n' Roll"), QStringLiteral("D'Amico"));
    write(QStringLiteral("My Songs/New.cdg"), "companion of New");
    addSong(QStringLiteral("My Songs/%1.mid").arg(overlongName()), QStringLiteral("Long"));
    addSong(QStringLiteral("Bridges/Bridge.midi"), QStringLiteral("Bridge"));
    write(QStringLiteral("My Songs/bad.mid"), "no song");
    manifest.songs[QStringLiteral("My Songs/bad.mid")].broken = true;
    write(QStringLiteral("My Songs/cover.jpg"), "cover one");
    write(QStringLiteral("Images/cover.jpg"), "cover two");
    write(QStringLiteral("My Songs/clip.avi"), "clip");
    write(QStringLiteral("My Songs/.hidden.txt"), "hidden");
    for (int i = 0; i < kBigSongs; ++i) {
        addSong(bigSong(i) + QStringLiteral(".mid"), bigTitle(i));
        for (const char *suffix : kCompanions)
            write(bigSong(i) + QLatin1Char('.') + QLatin1String(suffix), bigSong(i).toUtf8() + suffix);
    }
}

void HandmadePlayer::splitBigFolder()
{
    for (int i = 0; i < kBigSongs; ++i) {
        move(bigSong(i) + QStringLiteral(".mid"), bigPlace(i) + QStringLiteral(".mid"));
        for (const char *suffix : kCompanions)
            move(bigSong(i) + QLatin1Char('.') + QLatin1String(suffix),
                 bigPlace(i) + QLatin1Char('.') + QLatin1String(suffix));
        m_inserts += insertLine(bigPlace(i) + QStringLiteral(".mid"), bigTitle(i), QString());
    }
}

void HandmadePlayer::optimise()
{
    remove(QStringLiteral("note.txt"));
    move(QStringLiteral("loose.mid"), QStringLiteral("My Songs/loose_1.mid"));
    replace(QStringLiteral("System/Playlist/p.pls"), "\\sdmemory\\loose.mid", "\\sdmemory\\My Songs\\loose_1.mid");
    move(QStringLiteral("My Songs/cover.jpg"), QStringLiteral("Images/cover_1.jpg"));
    move(QStringLiteral("My Songs/clip.avi"), QStringLiteral("Videos/clip.avi"));
    move(QStringLiteral("My Songs/New.MIDI"), QStringLiteral("My Songs/New.MID"));
    const QString shortened = QStringLiteral("My Songs/%1(0).mid").arg(overlongName().left(86));
    move(QStringLiteral("My Songs/%1.mid").arg(overlongName()), shortened);
    remove(QStringLiteral("My Songs/bad.mid"));
    splitBigFolder();
    m_inserts += insertLine(QStringLiteral("My Songs/loose_1.mid"), QStringLiteral("Loose"), QString());
    m_inserts += insertLine(QStringLiteral("My Songs/loose.mid"), QStringLiteral("Other"), QString());
    m_inserts +=
        insertLine(QStringLiteral("My Songs/New.MID"), QStringLiteral("Rock 'n' Roll"), QStringLiteral("D'Amico"));
    m_inserts += insertLine(shortened, QStringLiteral("Long"), QString());
    write(QStringLiteral("CorvinImportDB.sql"),
          m_inserts + "DELETE FROM songs WHERE filename='\\sdmemory\\My Songs\\Gone.mid'\n"
                      "DELETE FROM songs WHERE filename='\\sdmemory\\My Songs\\Big\\Song 3.mid'\n");
}
