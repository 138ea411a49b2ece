// The chapter of Id3Tag that reads the texts of a tag without its pictures, which are most of it.
#include "id3tag.h"

#include "byteview.h"

#include <QFile>

namespace {

constexpr int kNextRead = 1024;
constexpr int kLeastSkipped = 1024; ///< a smaller frame costs less to read than to pass over
constexpr int kMajorVersionOffset = 3;
constexpr int kFlagsOffset = 5;
constexpr quint8 kShiftingFlags = 0xC0; ///< bytes were put in, or something stands before the frames
constexpr quint8 kVersionOfShortFrames = 2;
constexpr quint8 kVersionOfShortSizeBytes = 4;
constexpr int kShortSizeByte = 7; ///< bits
constexpr int kSizeByte = 8;      ///< bits

/// Reads a tag frame by frame. Whatever does not look as it should ends the walk, and the tag is read whole.
class TextReader
{
public:
    TextReader(QFile &song, const QByteArray &start, int end)
        : m_song(song), m_bytes(start), m_end(end), m_version(ByteView::byteAt(start, kMajorVersionOffset))
    {
    }

    /// Whether tags like this one have their frames one behind the other, in a way that is known.
    static bool knows(const QByteArray &start)
    {
        const quint8 version = ByteView::byteAt(start, kMajorVersionOffset);
        const bool isShifted = (ByteView::byteAt(start, kFlagsOffset) & kShiftingFlags) != 0;
        return version >= kVersionOfShortFrames && version <= kVersionOfShortSizeBytes && !isShifted;
    }

    /// Returns whether the walk came to the end of the frames.
    bool read()
    {
        while (m_at < end()) {
            if (!has(m_at + headerBytes()))
                return false;
            // A frame may stand behind the padding all the same.
            if (ByteView::byteAt(m_bytes, m_at) == 0)
                return has(end());
            if (!isFrameName(m_bytes, m_at) || !readFrame())
                return false;
        }
        return true;
    }

    /// What was read, without what was passed over.
    QByteArray bytes() const { return m_bytes.left(end()); }

private:
    bool hasShortFrames() const { return m_version == kVersionOfShortFrames; }
    int nameBytes() const { return hasShortFrames() ? 3 : 4; }
    int headerBytes() const { return hasShortFrames() ? 2 * nameBytes() : Id3Tag::kFrameHeaderSize; }

    /// Where the tag ends, were it without what was passed over.
    int end() const { return m_end - m_skipped; }

    /// Reads on until there are @p count bytes.
    bool has(int count)
    {
        if (count > m_bytes.size())
            m_bytes += m_song.read(qMin(qMax(count - m_bytes.size(), kNextRead), end() - m_bytes.size()));
        return count <= m_bytes.size();
    }

    bool isFrameName(const QByteArray &bytes, int at) const
    {
        for (int i = 0; i < nameBytes(); ++i) {
            const quint8 letter = ByteView::byteAt(bytes, at + i);
            if ((letter < 'A' || letter > 'Z') && (letter < '0' || letter > '9'))
                return false;
        }
        return true;
    }

    qint64 frameSize(int bitsOfByte) const
    {
        qint64 size = 0;
        for (int i = nameBytes(); i < 2 * nameBytes(); ++i)
            size = (size << bitsOfByte) | ByteView::byteAt(m_bytes, m_at + i);
        return size;
    }

    /// Reads the frame at hand, or passes it over, and goes on behind it.
    bool readFrame()
    {
        const int payload = m_at + headerBytes();
        const bool isAsked = m_bytes.at(m_at) == 'T' || ByteView::bytesAt(m_bytes, m_at, nameBytes()) == "MEDT";
        const qint64 size = frameSize(m_version == kVersionOfShortSizeBytes ? kShortSizeByte : kSizeByte);
        if (isAsked || size <= kLeastSkipped) {
            m_at = payload + int(qMin(size, qint64(end())));
            return m_at <= end() && has(m_at);
        }
        // Not all programs write a size in the way of the tag's version. The shorter reading goes before the longer
        // one, which could pass over texts.
        const qint64 longer = frameSize(kSizeByte);
        const qint64 shorter = hasShortSize() ? frameSize(kShortSizeByte) : longer;
        m_at = payload;
        if (isEndOfFrame(payload + shorter))
            return passOver(int(shorter));
        return isEndOfFrame(payload + longer) && passOver(int(longer));
    }

    /// Whether the size of the frame at hand can have 7 bits a byte.
    bool hasShortSize() const
    {
        for (int i = nameBytes(); i < 2 * nameBytes(); ++i) {
            if (ByteView::byteAt(m_bytes, m_at + i) >> kShortSizeByte)
                return false;
        }
        return true;
    }

    /// Whether a frame can end at @p at: another one follows, or padding, or nothing.
    bool isEndOfFrame(qint64 at)
    {
        if (at >= end())
            return at == end();
        QByteArray name = ByteView::bytesAt(m_bytes, at, nameBytes());
        if (name.size() < nameBytes()) {
            const qint64 here = m_song.pos();
            m_song.seek(here + at - m_bytes.size());
            name = m_song.read(nameBytes());
            m_song.seek(here);
        }
        return name.startsWith('\0') || isFrameName(name, 0);
    }

    /// Leaves out the @p size bytes that follow.
    bool passOver(int size)
    {
        const int already = qMin(size, m_bytes.size() - m_at);
        m_bytes.remove(m_at, already);
        m_skipped += size;
        return already == size || m_song.seek(m_song.pos() + size - already);
    }

    QFile &m_song;
    QByteArray m_bytes;
    int m_end;
    quint8 m_version;
    int m_at = Id3Tag::kHeaderSize;
    int m_skipped = 0;
};

} // namespace

bool Id3Tag::loadTexts(QFile &song, const QByteArray &start)
{
    const int end = bytesNeeded(start.left(kHeaderSize));
    if (end <= start.size())
        return load(start);
    const qint64 size = song.size();
    if (size >= end && TextReader::knows(start)) {
        TextReader reader(song, start, end);
        if (reader.read()) {
            take(reader.bytes(), static_cast<quint32>(end - kHeaderSize));
            return true;
        }
        song.seek(start.size());
    }
    return load(start + song.read(qMin(qint64(end), size) - start.size()));
}
