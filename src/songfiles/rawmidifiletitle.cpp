// The chapter of RawMidiFile that finds the title by which a song is filed.
#include "rawmidifile.h"

#include "byteview.h"
#include "midievents.h"

using namespace MidiEvents;

namespace {

constexpr char kKaraokeTitleMark[] = "@T";
constexpr int kKaraokeMarkSize = 2;
constexpr int kKaraokeTitleLimit = 128;
constexpr int kLongestLengthField = 4;
constexpr int kBitsOfLengthByte = 7;
constexpr int kLengthByteMask = 0x7F;

/// The content of the meta event whose FF stands at @p event, as far as it exists in @p bytes.
/// Deliberate: unlike the readers of a whole file, which take one signed byte, this one takes a length of several
/// bytes, as the format has it: karaoke files begin with long texts.
QByteArray metaContent(const QByteArray &bytes, int event)
{
    int position = event + kLengthOffset;
    int length = 0;
    for (int i = 0; i < kLongestLengthField && position < bytes.size(); ++i) {
        const quint8 byte = ByteView::byteAt(bytes, position++);
        length = (length << kBitsOfLengthByte) | (byte & kLengthByteMask);
        if (byte <= kLengthByteMask)
            break;
    }
    return ByteView::bytesAt(bytes, position, length);
}

QString textOf(const QByteArray &content)
{
    return ByteView::textAt(content, 0, content.size());
}

} // namespace

QString RawMidiFile::titleIn(const QByteArray &start)
{
    const char meta = static_cast<char>(kMeta);
    bool hasTrackName = false;
    QString trackName;
    for (int event = start.indexOf(meta); event >= 0; event = start.indexOf(meta, event + 1)) {
        const quint8 type = ByteView::byteAt(start, event + kTypeOffset);
        if (type == kTrackName && !hasTrackName) {
            // An empty first name stays: the names of the tracks behind it are those of instruments.
            hasTrackName = true;
            trackName = textOf(metaContent(start, event));
        } else if (type == kText) {
            const QByteArray text = metaContent(start, event);
            QString title =
                text.startsWith(kKaraokeTitleMark) ? textOf(text.mid(kKaraokeMarkSize, kKaraokeTitleLimit)) : QString();
            if (!title.isEmpty())
                return title;
        }
    }
    return trackName;
}
