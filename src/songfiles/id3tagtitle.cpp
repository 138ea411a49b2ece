// The chapter of Id3Tag that reads a title alone, at little cost.
#include "id3tag.h"

#include <QFile>

namespace {

constexpr int kFirstRead = 4096;
constexpr int kNextRead = 65536;

/// Reads on until @p bytes has @p wanted bytes or the file ends.
void readUpTo(QFile &song, QByteArray &bytes, int wanted)
{
    if (wanted > bytes.size())
        bytes += song.read(wanted - bytes.size());
}

/// Reads on, a piece at a time, until the frame @p id shows up, at most until the tag has @p tagEnd bytes.
/// Returns the frame's offset, or -1.
int findFrame(QFile &song, const QByteArray &id, QByteArray &tag, int tagEnd)
{
    int searched = Id3Tag::kHeaderSize;
    int piece = kFirstRead;
    for (;;) {
        const int frame = tag.indexOf(id, searched);
        if (frame >= 0 || tag.size() >= tagEnd)
            return frame;
        searched = qMax(Id3Tag::kHeaderSize, tag.size() - id.size() + 1);
        const int before = tag.size();
        readUpTo(song, tag, qMin(tagEnd, before + piece));
        if (tag.size() == before)
            return -1;
        piece = kNextRead;
    }
}

/// The title in @p tag, empty when it is refused.
QString titleOf(const QByteArray &tag)
{
    Id3Tag loaded;
    return loaded.load(tag) ? loaded.title() : QString();
}

} // namespace

/// The tag may hold pictures of hundreds of kilobytes: only what stands before the end of the title is read, and handed
/// on as a tag of its own.
QString Id3Tag::readTitle(QFile &song)
{
    QByteArray tag = song.read(kHeaderSize);
    const int tagEnd = bytesNeeded(tag);
    if (song.size() < tagEnd) {
        // A cut tag may still count as one: how much may be missing is for the tag to say.
        readUpTo(song, tag, tagEnd);
        return titleOf(tag);
    }
    const int frame = findFrame(song, titleFrameId(), tag, tagEnd);
    if (frame < 0)
        return QString();
    readUpTo(song, tag, qMin(tagEnd, frame + kFrameHeaderSize));
    const int payload = static_cast<int>(payloadSize(tag, frame));
    readUpTo(song, tag, qMin(tagEnd, frame + kFrameHeaderSize + payload));
    return titleOf(tagAround(tag, tag.mid(frame)));
}
