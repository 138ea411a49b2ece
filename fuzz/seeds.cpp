// fuzz_seeds FOLDER: makes small songs, playlists, exports and names, in one folder a fuzzing entry.
#include "songfactory/songfactory.h"

#include "songfiles/lzhuff.h"

#include <QDir>
#include <QFile>

namespace {

/// The folder of one entry, and its seeds, numbered.
class Seeds
{
public:
    explicit Seeds(const QString &folder) : m_folder(folder)
    {
        if (!m_folder.mkpath(QStringLiteral(".")))
            qFatal("Cannot make %s", qPrintable(folder));
    }

    void add(const QByteArray &bytes)
    {
        QFile file(m_folder.filePath(QStringLiteral("seed-%1").arg(m_count++)));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("Cannot write %s", qPrintable(file.fileName()));
    }
    void add(const QList<QByteArray> &all)
    {
        for (const QByteArray &bytes : all)
            add(bytes);
    }

private:
    QDir m_folder;
    int m_count = 0;
};

SongInfo fullInfo()
{
    SongInfo info;
    info.title = QStringLiteral("Title");
    info.artist = QStringLiteral("Artist");
    info.genre = QStringLiteral("Genre");
    info.author = QStringLiteral("Author");
    info.length = 61;
    info.userBpm = 120;
    info.key = QStringLiteral("Bb");
    info.isQArte = true;
    info.markers = {{1, QStringLiteral("A")}, {3, QStringLiteral("B")}};
    info.MfxLongName = QStringLiteral("Long name");
    return info;
}

QList<QByteArray> midiSongs()
{
    const SongInfo info = fullInfo();
    return {SongFactory::midi(info, 0, SongFactory::Markers::WithBars, 1),
            SongFactory::midi(info, 1, SongFactory::Markers::Standard, 1), SongFactory::midi(SongInfo(), 0),
            SongFactory::karaoke({QStringLiteral("@TTitle")}, {QStringLiteral("la")})};
}

QList<QByteArray> mfxSongs()
{
    QList<QByteArray> songs;
    for (const int version : {3, 4, 5})
        songs.append(SongFactory::mfx(version, fullInfo(), 1));
    return songs;
}

QList<QByteArray> mp3Songs()
{
    QList<QByteArray> songs;
    for (const int version : {0, 2, 3, 4})
        songs.append(SongFactory::mp3(version, fullInfo(), 0, 1));
    songs.append(SongFactory::mp3(3, fullInfo(), 1, 1));
    songs.append(SongFactory::mp3(4, fullInfo(), 3, 1));
    songs.append(SongFactory::id3v2Tag(4, fullInfo(), 2, 20));
    return songs;
}

/// Texts that match themselves near, far, across the ring's end, and hardly at all.
QList<QByteArray> plainStreams()
{
    constexpr int kRing = 4096;
    const QByteArray song = midiSongs().first();
    QByteArray everyByte;
    for (int i = 0; i < 256; ++i)
        everyByte.append(static_cast<char>(i));
    return {QByteArray(1, 'a'),
            QByteArray(100, ' '),
            song,
            everyByte,
            song + song,
            song + QByteArray(kRing - song.size(), '\0') + song,
            QByteArray("abc\0", 4)};
}

QList<QByteArray> packedStreams()
{
    LzHuff codec;
    QList<QByteArray> all;
    for (const QByteArray &plain : plainStreams()) {
        QByteArray packed;
        codec.compress(plain, packed);
        all.append(packed);
    }
    return all;
}

QList<QByteArray> playlists()
{
    return {QByteArrayLiteral("\\sdmemory\\My Songs\\a.mid^1^0\r\n\\SDMemory\\My Songs\\b\xC3\xA8.mp3^12345^2\r\n"),
            QByteArrayLiteral("\\sdmemory\\My Songs\\a.mid^1^0\n\n\\sdmemory\\My Songs\\A.MID^2^0"),
            QByteArrayLiteral("\xEF\xBB\xBF\\sdmemory\\a^b.mf3^1\n\\sdmemory\\a.mf3^1^123456\n"),
            QByteArrayLiteral("no song\n\0\n\\sdmemory\\\n\xC3\n")};
}

QList<QByteArray> databaseExports()
{
    return {QByteArrayLiteral("FDB\1\\sdmemory\\My Songs\\a.mid\0\2\3\\sdmemory\\My Songs\\\xC3\xA8.mp3\0end"),
            QByteArrayLiteral("\\sdmemory\\\\sdmemory\\a\0\0\\sdmemory\\b/c\0\\sdmemory\\cut"),
            QByteArrayLiteral("\\SDMEMORY\\a\0\\sdmem\0ory\\\0")};
}

QList<QByteArray> entryNames()
{
    return {QByteArrayLiteral("System/Corvin/Corvin.exe"),
            QByteArrayLiteral("a\\b\\..\\..\\c"),
            QByteArrayLiteral("C:\\x"),
            QByteArrayLiteral("./a//b/./c"),
            QByteArrayLiteral("com\xC2\xB9.txt"),
            QByteArrayLiteral("nul .txt"),
            QByteArrayLiteral("../x"),
            QByteArrayLiteral("a. /b\x7F|")};
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2)
        qFatal("usage: fuzz_seeds FOLDER");
    const QDir root(QFile::decodeName(argv[1]));
    const auto make = [&root](const char *entry, const QList<QByteArray> &all) {
        Seeds(root.filePath(QLatin1String(entry))).add(all);
    };
    const QList<QByteArray> songs = midiSongs() + mfxSongs() + mp3Songs();
    make("expand", packedStreams());
    make("compress", plainStreams());
    make("rawmidifile", midiSongs());
    make("mfxheader", {SongFactory::mfxHeader(3, fullInfo(), 600, 700), SongFactory::mfxHeader(4, SongInfo(), 0, 0),
                       SongFactory::mfxHeader(5, fullInfo(), 0, 0)});
    make("mfxsong", mfxSongs());
    make("id3tag", mp3Songs());
    make("metasong", songs);
    make("titles", songs);
    make("playlist", playlists());
    make("databaseexport", databaseExports());
    make("entrypath", entryNames());
    return 0;
}
