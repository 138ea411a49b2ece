#include "titlereader.h"

#include "songfiles/id3tag.h"

#include <QByteArray>
#include <QFile>
#include <array>

namespace {

enum class TitleKind
{
    Id3,
    Midi,
    Mfx
};

/// How the title is stored, by format index: mp3, midi, mid, mf3, mf4, mf5, kar, xmp3, xmid.
constexpr std::array<TitleKind, 9> kTitleKinds = {TitleKind::Id3,  TitleKind::Midi, TitleKind::Midi,
                                                  TitleKind::Mfx,  TitleKind::Mfx,  TitleKind::Mfx,
                                                  TitleKind::Midi, TitleKind::Id3,  TitleKind::Midi};

constexpr int kMfxHeaderSize = 512;
constexpr int kMfxTitleOffset = 122;
constexpr int kMfxTitleSize = 32;

constexpr int kMidiReadLimit = 4096;
constexpr char kMetaEvent = '\xFF';
constexpr char kTextEvent = '\x01';
constexpr char kTrackNameEvent = '\x03';
constexpr int kMetaHeadSize = 2; // FF and the event's type; the length follows
constexpr char kKaraokeTitleMark[] = "@T";
constexpr int kKaraokeMarkSize = 2;
constexpr int kKaraokeTitleLimit = 128;
constexpr int kLongestLengthField = 4;

constexpr int kTagSizeOffset = 6;
constexpr int kTagFirstRead = 4096;
constexpr int kTagNextRead = 65536;
constexpr char kTitleFrame[] = "TIT2";
constexpr int kFrameIdSize = 4;
constexpr int kFrameHeaderSize = 10;
constexpr int kSizeBytes = 4;
constexpr int kBitsOfSizeByte = 7;
constexpr int kSizeByteMask = 0x7F;

/// Text of one byte a character, up to the first zero byte, without white space at its ends.
QString latin1Text(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.constData(), static_cast<int>(qstrnlen(bytes.constData(), bytes.size())))
        .trimmed();
}

QString mfxTitle(QFile &song)
{
    const QByteArray header = song.read(kMfxHeaderSize);
    return header.size() < kMfxHeaderSize ? QString() : latin1Text(header.mid(kMfxTitleOffset, kMfxTitleSize));
}

/// The content of the meta event whose FF stands at @p event, as far as it exists in @p bytes.
QByteArray metaContent(const QByteArray &bytes, int event)
{
    int position = event + kMetaHeadSize;
    int length = 0;
    for (int i = 0; i < kLongestLengthField && position < bytes.size(); ++i) {
        const auto byte = static_cast<uchar>(bytes.at(position++));
        length = (length << kBitsOfSizeByte) | (byte & kSizeByteMask);
        if (byte <= kSizeByteMask)
            break;
    }
    return bytes.mid(position, length);
}

QString midiTitle(QFile &song)
{
    const QByteArray head = song.read(kMidiReadLimit);
    bool hasTrackName = false;
    QString trackName;
    for (int event = head.indexOf(kMetaEvent); event >= 0; event = head.indexOf(kMetaEvent, event + 1)) {
        const char type = event + 1 < head.size() ? head.at(event + 1) : '\0';
        if (type == kTrackNameEvent && !hasTrackName) {
            // An empty first name stays: the names of the tracks behind it are those of instruments.
            hasTrackName = true;
            trackName = latin1Text(metaContent(head, event));
        } else if (type == kTextEvent) {
            const QByteArray text = metaContent(head, event);
            QString title = text.startsWith(kKaraokeTitleMark)
                                ? latin1Text(text.mid(kKaraokeMarkSize, kKaraokeTitleLimit))
                                : QString();
            if (!title.isEmpty())
                return title;
        }
    }
    return trackName;
}

/// The size that the frame at @p frame claims for its content; missing bytes count as zero.
int frameSize(const QByteArray &tag, int frame)
{
    int size = 0;
    for (int i = frame + kFrameIdSize; i < frame + kFrameIdSize + kSizeBytes; ++i)
        size = (size << kBitsOfSizeByte) | (i < tag.size() ? tag.at(i) & kSizeByteMask : 0);
    return size;
}

/// Reads on until @p bytes has @p wanted bytes or the file ends.
void readUpTo(QFile &song, QByteArray &bytes, int wanted)
{
    if (wanted > bytes.size())
        bytes += song.read(wanted - bytes.size());
}

/// Reads on, a piece at a time, until the title frame shows up, at most until the tag has @p tagEnd bytes.
/// Returns the frame's offset, or -1.
int findTitleFrame(QFile &song, QByteArray &tag, int tagEnd)
{
    int searched = Id3Tag::kHeaderSize;
    int piece = kTagFirstRead;
    for (;;) {
        const int frame = tag.indexOf(kTitleFrame, searched);
        if (frame >= 0 || tag.size() >= tagEnd)
            return frame;
        searched = qMax(Id3Tag::kHeaderSize, tag.size() - kFrameIdSize + 1);
        const int before = tag.size();
        readUpTo(song, tag, qMin(tagEnd, before + piece));
        if (tag.size() == before)
            return -1;
        piece = kTagNextRead;
    }
}

/// A tag that holds nothing but @p frame, under the first bytes of @p header.
QByteArray tagOfOneFrame(const QByteArray &header, const QByteArray &frame)
{
    QByteArray tag = header.left(kTagSizeOffset);
    for (int i = kSizeBytes - 1; i >= 0; --i)
        tag += static_cast<char>((frame.size() >> (i * kBitsOfSizeByte)) & kSizeByteMask);
    return tag + frame;
}

/// The title in @p tag, empty when it is refused.
QString titleOfTag(const QByteArray &tag)
{
    Id3Tag loaded;
    return loaded.load(tag) ? loaded.title() : QString();
}

// The tag may hold pictures of hundreds of kilobytes: only what stands before the end of the title is read, and handed
// on as a tag of its own.
QString id3Title(QFile &song)
{
    QByteArray tag = song.read(Id3Tag::kHeaderSize);
    const int tagEnd = Id3Tag::bytesNeeded(tag);
    if (song.size() < tagEnd) {
        // A cut tag may still count as one: how much may be missing is for the tag to say.
        readUpTo(song, tag, tagEnd);
        return titleOfTag(tag);
    }
    const int frame = findTitleFrame(song, tag, tagEnd);
    if (frame < 0)
        return QString();
    readUpTo(song, tag, qMin(tagEnd, frame + kFrameHeaderSize));
    readUpTo(song, tag, qMin(tagEnd, frame + kFrameHeaderSize + frameSize(tag, frame)));
    return titleOfTag(tagOfOneFrame(tag, tag.mid(frame)));
}

QString storedTitle(TitleKind kind, QFile &song)
{
    switch (kind) {
    case TitleKind::Id3:
        return id3Title(song);
    case TitleKind::Midi:
        return midiTitle(song);
    case TitleKind::Mfx:
        return mfxTitle(song);
    }
    return QString();
}

} // namespace

QString readSongTitle(int formatIndex, const QFileInfo &file)
{
    QString title;
    if (formatIndex >= 0 && formatIndex < static_cast<int>(kTitleKinds.size())) {
        QFile song(file.filePath());
        // Unbuffered: Qt would read 16 KiB for the first byte.
        if (song.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            title = storedTitle(kTitleKinds.at(static_cast<size_t>(formatIndex)), song);
    }
    return title.isEmpty() ? file.completeBaseName() : title;
}
