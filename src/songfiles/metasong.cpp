#include "metasong.h"

#include "lzhuff.h"

#include <QDebug>
#include <QFile>
#include <QLatin1Char>

namespace {

/// A larger file is left alone instead of being taken into memory.
constexpr qint64 kMostMidiBytes = qint64(256) * 1024 * 1024;
// More than a stream of the largest song can need: what lies behind it is never decoded.
constexpr qint64 kMostCompressedBytes = qint64(16) * 1024 * 1024;
constexpr qint64 kMostAtOnce = qint64(16) * 1024 * 1024;

constexpr int kTrackHeadBytes = 8;

bool startsLikeMp3(const QByteArray &bytes)
{
    // Deliberate: the byte is compared with its sign, so that 0x00 to 0x7F pass as well as 0xF3 to 0xFF.
    constexpr signed char kLeastSecondByte = -13;
    if (bytes.startsWith("ID3") || bytes.startsWith(QByteArray(2, '\0')))
        return true;
    return bytes.at(0) == '\xFF' && static_cast<signed char>(bytes.at(1)) >= kLeastSecondByte;
}

const char *yesNo(bool value)
{
    return value ? "true" : "false";
}

} // namespace

/// A song while it is read. The system is asked for its size once: to ask takes as long as to read a small song.
struct MetaSong::OpenSong
{
    QFile &file;
    qint64 size;
    QByteArray start; ///< what has been read so far
};

int mf4ExtraBytesOffset(const QByteArray &stream)
{
    const int track = stream.indexOf("MTrk");
    return track < 0 ? -1 : track + kTrackHeadBytes;
}

QString MetaSong::formatName(int code)
{
    switch (code) {
    case Midi0Format:
    case Midi1Format:
        return QStringLiteral("MIDI");
    case Mf3Format:
        return QStringLiteral("MF3");
    case Mf4Format:
        return QStringLiteral("MF4");
    case Mf5Format:
        return QStringLiteral("MF5");
    case Mp3Format:
        return QStringLiteral("MP3");
    default:
        return QStringLiteral("UNKNOWN");
    }
}

bool MetaSong::importFile(const QString &path)
{
    m_path = path;
    QFile file(path);
    m_result = ImportResult::NotRead;
    // Unbuffered: what is read is read in one piece, and Qt would ask for 16 KiB when a tag's header is wanted.
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    m_result = ImportResult::NotASong;
    if (importOpen(file)) {
        m_result = ImportResult::Imported;
        return true;
    }
    // A disk that was pulled, or is worn out, gives fewer bytes than it should: they say nothing of the song.
    if (file.error() != QFileDevice::NoError)
        m_result = ImportResult::NotRead;
    return false;
}

bool MetaSong::importOpen(QFile &file)
{
    constexpr int kMagicBytes = 4;
    const bool hasMp3Name = file.fileName().endsWith(QLatin1String("MP3"), Qt::CaseInsensitive);
    OpenSong song{file, file.size(), {}};
    const bool isReadWhole = !hasMp3Name && song.size > 0 && song.size <= kMostAtOnce;
    // Every request to the player's disk counts: a song is read by one, but of an MP3 hardly anything is needed.
    // Without a size it is asked all the same: a disk with a fault answers with an error, an empty song with nothing.
    song.start = file.read(isReadWhole ? song.size : Id3Tag::kFirstRead);
    if (song.start.size() < (isReadWhole ? song.size : qMin(song.size, qint64(kMagicBytes))))
        m_result = ImportResult::NotRead;
    if (song.start.size() < kMagicBytes)
        return false;
    const int version = MfxHeader::versionOf(song.start.left(kMagicBytes));
    if (version != 0)
        return importMfx(song, version);
    if (song.start.startsWith("MThd"))
        return importMidi(song);
    if (hasMp3Name && startsLikeMp3(song.start))
        return importMp3(song);
    return false;
}

/// The first @p most bytes of a song, or as many as it has.
QByteArray MetaSong::firstBytes(OpenSong &song, qint64 most)
{
    const qint64 wanted = qMin(song.size, most);
    // QFile alone would take memory for all that is asked for, be it there or not.
    if (song.start.size() < wanted)
        song.start += song.file.read(wanted - song.start.size());
    if (song.start.size() < wanted)
        m_result = ImportResult::NotRead;
    return song.start.size() > most ? song.start.left(static_cast<int>(most)) : song.start;
}

bool MetaSong::importMfx(OpenSong &song, int version)
{
    const int headerBytes = MfxHeader::sizeOfVersion(version);
    if (!m_header.setHeader(song.start.left(headerBytes)))
        return false;
    const QByteArray bytes = firstBytes(song, headerBytes + kMostCompressedBytes);
    QByteArray stream;
    LzHuff codec;
    if (!codec.expand(bytes.mid(headerBytes), stream)) {
        qDebug() << "[MetaSong::importFile] LzHuff Expand filed, skipping file";
        return false;
    }
    const int extra = mf4ExtraBytesOffset(stream);
    // Deliberate: the track's length field never counts these bytes, neither here nor when they are put back.
    if (version == Mf4Format && extra >= 0)
        stream.remove(extra, kMf4ExtraBytes);
    if (!m_midi.load(stream)) {
        qDebug() << "[MetaSong::importFile] MidiStream corrupted, skipping file";
        return false;
    }
    m_format = version;
    return true;
}

bool MetaSong::importMidi(OpenSong &song)
{
    if (song.size > kMostMidiBytes) {
        qDebug() << "[MetaSong::importFile] File too large, skipping file";
        m_result = ImportResult::TooLarge;
        return false;
    }
    if (!m_midi.load(firstBytes(song, kMostMidiBytes))) {
        qDebug() << "[MetaSong::importFile] MidiStream corrupted, skipping file";
        return false;
    }
    m_format = m_midi.formatCode();
    return true;
}

bool MetaSong::importMp3(OpenSong &song)
{
    const qint64 stated = Id3Tag::statedSize(song.start.left(Id3Tag::kHeaderSize));
    // A tag that claims more than the file has is no tag.
    if (stated > Id3Tag::kMostBytes && stated <= song.size) {
        qDebug() << "[MetaSong::importFile] Tag too large, skipping file";
        m_result = ImportResult::TooLarge;
        return false;
    }
    if (!m_tag.loadTexts(song.file, song.start)) {
        // A tag that the file has room for is refused only when less came than should.
        if (song.size >= Id3Tag::kHeaderSize && stated <= song.size)
            m_result = ImportResult::NotRead;
        return false;
    }
    m_format = m_tag.formatCode();
    return true;
}

/// Of an MP3 only the texts were read; what changes or writes the tag needs all of it. Returns whether it is there.
bool MetaSong::completeTag()
{
    if (m_tag.isWhole())
        return true;
    QFile file(m_path);
    const int bytes = static_cast<int>(m_tag.audioOffset());
    Id3Tag whole;
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !whole.load(file.read(bytes)) ||
        whole.audioOffset() != bytes)
        return false;
    m_tag = whole;
    return true;
}

void MetaSong::getSongInfo(SongInfo &info) const
{
    info.clear();
    info.format = formatName(m_format);
    if (isMidi())
        getMidiInfo(info);
    else if (isMfx())
        getMfxInfo(info);
    else if (m_format == Mp3Format)
        getMp3Info(info);
}

void MetaSong::getMidiInfo(SongInfo &info) const
{
    info.title = m_midi.title();
    info.artist = m_midi.artist();
    info.author = m_midi.author();
    info.genre = m_midi.genre();
    info.key = m_midi.key();
    m_midi.markers(info.markers, false);
    info.isQArte = m_midi.isQArte();
    info.length = m_midi.length();
    info.userBpm = m_midi.bpm();
}

void MetaSong::getMfxInfo(SongInfo &info) const
{
    info.title = m_header.title();
    info.artist = m_header.artist();
    info.author = m_header.author();
    info.genre = m_header.genre();
    info.key = m_midi.key();
    m_midi.markers(info.markers, false);
    info.isQArte = true;
    info.length = m_midi.length();
    info.userBpm = m_header.bpm();
    info.MfxLongName = m_header.longName();
    info.MfxFlags = m_header.flags();
}

void MetaSong::getMp3Info(SongInfo &info) const
{
    info.title = m_tag.title();
    info.artist = m_tag.artist();
    info.author = m_tag.author();
    info.genre = m_tag.genre();
    info.key = m_tag.key();
    info.isQArte = m_tag.isQArte();
    info.length = m_tag.length();
    info.userBpm = m_tag.bpm();
}

void MetaSong::dumpInfo(const SongInfo &info) const
{
    constexpr int kHex = 16;
    qDebug() << "Dump Info song ----------------------------------------------";
    qDebug() << "Format     :" << info.format;
    qDebug() << "Filename   :" << info.filename;
    qDebug() << "Is Q-Arte  :" << yesNo(info.isQArte);
    qDebug() << "Title      :" << info.title;
    qDebug() << "Artist     :" << info.artist;
    qDebug() << "Genre      :" << info.genre;
    qDebug() << "Author     :" << info.author;
    qDebug() << "Length     :" << info.length;
    qDebug() << "userBpm    :" << info.userBpm;
    qDebug() << "Key        :" << info.key;
    qDebug() << "Markers:";
    for (const SongMarker &marker : info.markers)
        qDebug() << "  bar:" << marker.bar << "  text:" << marker.text;
    if (info.markers.isEmpty())
        qDebug() << "NO Markers";
    qDebug() << "MfxLongName:" << info.MfxLongName;
    qDebug().noquote() << "MfxFlags   :" << QStringLiteral("0x%1").arg(int(info.MfxFlags), 2, kHex, QLatin1Char('0'));
    qDebug() << "Dump END ----------------------------------------------------";
}
