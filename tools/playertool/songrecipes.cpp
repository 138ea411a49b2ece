#include "songrecipes.h"

#include "songfactory/songfactory.h"

namespace {

constexpr int kMfxFieldWidth = 32;
constexpr int kMidiTextBytes = 120;
constexpr int kBars = 2;

void copyTexts(const SongInfo &info, int width, ExpectedSong &expected)
{
    expected.title = info.title.left(width).trimmed();
    expected.artist = info.artist.left(width).trimmed();
    expected.genre = info.genre.left(width).trimmed();
    expected.author = info.author.left(width).trimmed();
    expected.bpm = qMax(0, info.userBpm);
    expected.key = info.key;
}

/// Text stored with its bytes in one order and read in the other.
QString byteSwapped(const QString &text)
{
    QString out;
    for (const QChar c : text)
        out.append(QChar(ushort((c.unicode() << 8) | (c.unicode() >> 8))));
    return out.trimmed();
}

/// The old tag at a song's end, which no reader here looks at: it tells songs of equal silence apart.
QByteArray oldStyleTag(int serial)
{
    constexpr int kOldTagBytes = 128;
    return ("TAG" + QByteArray::number(serial)).leftJustified(kOldTagBytes, '\0');
}

MadeSong mp3Song(int version, const SongInfo &info, int encoding, int serial, int frames)
{
    MadeSong song;
    song.bytes = SongFactory::mp3(version, info, encoding, frames) + oldStyleTag(serial);
    song.expected.isMp3 = true;
    return song;
}

MadeSong taggedMp3(int version, const SongInfo &info, int encoding, int serial, int frames)
{
    MadeSong song = mp3Song(version, info, encoding, serial, frames);
    copyTexts(info, INT_MAX, song.expected);
    song.expected.filedUnder.append(info.title);
    return song;
}

MadeSong swappedMp3(const SongInfo &info, int serial, int frames)
{
    MadeSong song = mp3Song(4, info, 2, serial, frames);
    song.expected.title = byteSwapped(info.title);
    song.expected.artist = byteSwapped(info.artist);
    song.expected.genre = byteSwapped(info.genre);
    song.expected.author = byteSwapped(info.author);
    song.expected.key = byteSwapped(info.key);
    song.expected.filedUnder = QStringList{info.title, song.expected.title};
    return song;
}

MadeSong midiSong(const SongInfo &info, int headerFormat, SongFactory::Markers markers)
{
    MadeSong song;
    song.bytes = SongFactory::midi(info, headerFormat, markers, kBars);
    copyTexts(info, kMidiTextBytes, song.expected);
    song.expected.hasMarkers = !info.markers.isEmpty();
    song.expected.filedUnder.append(info.title.left(kMidiTextBytes));
    return song;
}

MadeSong mfxSong(int version, const SongInfo &info)
{
    MadeSong song;
    song.bytes = SongFactory::mfx(version, info, kBars);
    copyTexts(info, kMfxFieldWidth, song.expected);
    song.expected.hasMarkers = !info.markers.isEmpty();
    song.expected.filedUnder.append(info.title.left(kMfxFieldWidth));
    return song;
}

/// The first track name of such a song is that of its track of words, and a reader may take it or the "@T" text.
MadeSong karaokeSong(const SongInfo &info, int serial)
{
    const QStringList texts{QStringLiteral("@KMIDI KARAOKE FILE"), QStringLiteral("@LITAL"),
                            QStringLiteral("@T") + info.title, QStringLiteral("@IBrano %1").arg(serial)};
    const QStringList lyrics{QStringLiteral("\\La "), QStringLiteral("se"), QStringLiteral("ra "),
                             QStringLiteral("/che "), QStringLiteral("vi"), QStringLiteral("e"),
                             QStringLiteral("ne")};
    MadeSong song;
    song.bytes = SongFactory::karaoke(texts, lyrics);
    song.expected.title = QStringLiteral("Words");
    song.expected.filedUnder = QStringList{info.title, song.expected.title};
    return song;
}

MadeSong songOf(Recipe recipe, const SongInfo &info, int serial, int frames)
{
    switch (recipe) {
    case Recipe::Midi0:
        return midiSong(info, 0, SongFactory::Markers::WithBars);
    case Recipe::Midi1:
        return midiSong(info, 1, SongFactory::Markers::WithBars);
    case Recipe::MidiStandardMarkers:
        return midiSong(info, 1, SongFactory::Markers::Standard);
    case Recipe::Karaoke:
        return karaokeSong(info, serial);
    case Recipe::Mf3:
        return mfxSong(3, info);
    case Recipe::Mf4:
        return mfxSong(4, info);
    case Recipe::Mf5:
        return mfxSong(5, info);
    case Recipe::Mp3Tag22: {
        MadeSong song = mp3Song(2, info, 0, serial, frames);
        song.expected.filedUnder.append(info.title);
        return song;
    }
    case Recipe::Mp3Tag23Latin1:
        return taggedMp3(3, info, 0, serial, frames);
    case Recipe::Mp3Tag23Utf16:
        return taggedMp3(3, info, 1, serial, frames);
    case Recipe::Mp3Tag24Latin1:
        return taggedMp3(4, info, 0, serial, frames);
    case Recipe::Mp3Tag24Utf16:
        return taggedMp3(4, info, 1, serial, frames);
    case Recipe::Mp3Tag24Utf16BigEndian:
        return swappedMp3(info, serial, frames);
    case Recipe::Mp3Tag24Utf8:
        return taggedMp3(4, info, 3, serial, frames);
    case Recipe::Mp3EmptyTag:
        return mp3Song(3, SongInfo(), 0, serial, frames);
    case Recipe::Mp3NoTag:
        break;
    }
    return mp3Song(0, info, 0, serial, frames);
}

} // namespace

MadeSong makeSong(Recipe recipe, const SongInfo &info, const QString &stem, int serial, int mp3Frames)
{
    MadeSong song = songOf(recipe, info, serial, mp3Frames);
    if (song.expected.title.isEmpty())
        song.expected.filedUnder.append(stem);
    return song;
}

bool isMp3(Recipe recipe)
{
    return recipe >= Recipe::Mp3Tag22;
}

bool holdsAnyAlphabet(Recipe recipe)
{
    return recipe == Recipe::Mp3Tag23Utf16 || recipe == Recipe::Mp3Tag24Utf16 || recipe == Recipe::Mp3Tag24Utf8;
}

QString usualSuffix(Recipe recipe)
{
    switch (recipe) {
    case Recipe::Midi0:
    case Recipe::Midi1:
    case Recipe::MidiStandardMarkers:
        return QStringLiteral("mid");
    case Recipe::Karaoke:
        return QStringLiteral("kar");
    case Recipe::Mf3:
        return QStringLiteral("mf3");
    case Recipe::Mf4:
        return QStringLiteral("mf4");
    case Recipe::Mf5:
        return QStringLiteral("mf5");
    default:
        return QStringLiteral("mp3");
    }
}

QVector<BrokenSong> brokenSongs()
{
    SongInfo info;
    info.title = QStringLiteral("Rotto");
    info.author = QStringLiteral("Nessuno");
    const QByteArray garbage = QByteArray::fromHex("5A13C4E7").repeated(40);
    const auto stream = [](quint32 size) {
        QByteArray out;
        for (int shift = 0; shift < 32; shift += 8)
            out.append(char((size >> shift) & 0xFF));
        return out;
    };
    constexpr quint32 kTooLarge = 600000;
    constexpr quint32 kSmall = 100;
    const auto entry = [](const char *suffix, const char *what, const QByteArray &bytes) {
        return BrokenSong{QString::fromLatin1(suffix), QString::fromLatin1(what), bytes};
    };
    return {
        entry("mid", "vuoto", QByteArray()),
        entry("mid", "tre byte", QByteArrayLiteral("MTh")),
        entry("mid", "troncato", SongFactory::midi(info).left(21)),
        entry("mid", "testo", QByteArrayLiteral("Questo non e' un brano, ma una lettera.")),
        entry("kar", "senza tracce", QByteArrayLiteral("MThd") + QByteArray(60, '\x01')),
        entry("mf3", "intestazione corta", SongFactory::mfx(3, info).left(300)),
        entry("mf5", "intestazione corta", SongFactory::mfx(5, info).left(600)),
        entry("mf4", "misura impossibile", SongFactory::mfxHeader(4, info, 0, 0) + stream(kTooLarge) + garbage),
        entry("mf4", "non midi", SongFactory::mfxHeader(4, info, 1, 1) + stream(kSmall) + garbage),
        entry("mp3", "altro formato", QByteArrayLiteral("RIFF") + garbage),
        entry("mp3", "etichetta troncata", SongFactory::id3v2Tag(3, info, 0, 5000).left(1000)),
    };
}
