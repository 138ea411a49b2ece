#include "id3tag.h"

#include "byteview.h"
#include "songinfo.h"

namespace {

constexpr int kTagSizeOffset = 6;
constexpr int kSizeBytes = 4;
constexpr int kFrameSizeOffset = 4;
constexpr int kFrameFlagBytes = 2;
constexpr int kBitsOfSizeByte = 7;
constexpr quint32 kSizeByteMask = 0x7F;
// Deliberate: one more than a byte of 7 bits can hold passes.
constexpr quint8 kLargestTagSizeByte = 0x80;

enum TextEncoding : quint8
{
    Latin1 = 0,
    Utf16 = 1,
    Utf16BigEndian = 2,
    Utf8 = 3,
};

constexpr ushort kByteOrderMark = 0xFEFF;

QString utf16Text(const QByteArray &bytes)
{
    constexpr int kUnitBytes = 2;
    const int units = bytes.size() / kUnitBytes;
    const auto unit = [&bytes](int index, bool bigEndian) {
        const qint64 at = qint64(kUnitBytes) * index;
        const ushort first = ByteView::byteAt(bytes, at);
        const ushort second = ByteView::byteAt(bytes, at + 1);
        return static_cast<ushort>(bigEndian ? (first << 8) | second : (second << 8) | first);
    };
    const bool bigEndian = units > 0 && unit(0, true) == kByteOrderMark;
    const int start = units > 0 && unit(0, bigEndian) == kByteOrderMark ? 1 : 0;
    QString text;
    text.reserve(units);
    for (int i = start; i < units; ++i)
        text.append(QChar(unit(i, bigEndian)));
    return text;
}

/// @p payload is the encoding byte and the text.
QString decodedText(const QByteArray &payload)
{
    if (payload.isEmpty())
        return QString();
    const QByteArray stored = payload.mid(1);
    switch (ByteView::byteAt(payload, 0)) {
    case Latin1:
        return QString::fromLatin1(stored.constData(),
                                   static_cast<int>(qstrnlen(stored.constData(), uint(stored.size()))));
    case Utf16:
    // Deliberate: text marked as big-endian is read like any other UTF-16, little-endian unless it has a mark.
    case Utf16BigEndian:
        return utf16Text(stored);
    case Utf8:
        return QString::fromUtf8(stored.constData(), stored.size());
    default:
        return QString();
    }
}

QByteArray plainSize(quint32 value)
{
    using ByteView::kByteBits;
    QByteArray out;
    for (int shift = kByteBits * (kSizeBytes - 1); shift >= 0; shift -= kByteBits)
        out.append(static_cast<char>((value >> shift) & 0xFF));
    return out;
}

} // namespace

quint32 Id3Tag::headerSizeField(const QByteArray &bytes)
{
    quint32 size = 0;
    for (int i = 0; i < kSizeBytes; ++i) {
        const quint8 byte = ByteView::byteAt(bytes, kTagSizeOffset + i);
        if (byte > kLargestTagSizeByte)
            return 0;
        size = (size << kBitsOfSizeByte) + byte;
    }
    return size;
}

int Id3Tag::bytesNeeded(const QByteArray &header)
{
    if (!header.startsWith("ID3"))
        return kHeaderSize;
    const quint32 size = headerSizeField(header);
    // A tag that long is refused anyway: it need not be read for that.
    if (size > quint32(kMostBytes))
        return kHeaderSize;
    return static_cast<int>(size) + kHeaderSize;
}

qint64 Id3Tag::statedSize(const QByteArray &header)
{
    return header.startsWith("ID3") ? headerSizeField(header) : 0;
}

bool Id3Tag::load(const QByteArray &bytes)
{
    m_bytes.clear();
    m_tagSize = 0;
    m_audioOffset = 0;
    m_isWhole = true;
    if (bytes.size() < kHeaderSize)
        return false;
    if (!bytes.startsWith("ID3")) {
        m_bytes = QByteArrayLiteral("ID3\x03").leftJustified(kHeaderSize, '\0');
        return true;
    }
    const quint32 size = headerSizeField(bytes);
    if (static_cast<quint32>(bytes.size()) < size)
        return false;
    m_bytes = bytes.left(static_cast<int>(qMin(qint64(size) + kHeaderSize, qint64(bytes.size()))));
    m_tagSize = size;
    m_audioOffset = m_bytes.size();
    return true;
}

/// Takes @p bytes for a tag of @p size bytes behind its header, of which some may have been left out.
void Id3Tag::take(const QByteArray &bytes, quint32 size)
{
    m_bytes = bytes;
    m_tagSize = size;
    m_audioOffset = qint64(size) + kHeaderSize;
    m_isWhole = bytes.size() == m_audioOffset;
}

int Id3Tag::formatCode() const
{
    return Mp3Format;
}

int Id3Tag::find(const QByteArray &id) const
{
    return m_bytes.indexOf(id, kHeaderSize);
}

quint32 Id3Tag::payloadSize(const QByteArray &bytes, int frame)
{
    quint32 size = 0;
    for (int i = 0; i < kSizeBytes; ++i)
        size = (size << kBitsOfSizeByte) | (ByteView::byteAt(bytes, frame + kFrameSizeOffset + i) & kSizeByteMask);
    return size;
}

int Id3Tag::frameText(const QByteArray &id, QString &text) const
{
    text.clear();
    const int frame = find(id);
    if (frame < 0)
        return -1;
    text = decodedText(ByteView::bytesAt(m_bytes, frame + kFrameHeaderSize, payloadSize(m_bytes, frame))).trimmed();
    const int end = text.indexOf(QChar(u'\0'));
    if (end >= 0)
        text.truncate(end);
    return frame;
}

bool Id3Tag::hasFrame(const QByteArray &id) const
{
    return find(id) >= 0;
}

int Id3Tag::removeFrame(const QByteArray &id)
{
    const int frame = find(id);
    if (frame < 0 || frame >= qint64(m_tagSize) + kHeaderSize)
        return 0;
    const qint64 claimed = qint64(payloadSize(m_bytes, frame)) + kFrameHeaderSize;
    const int count = static_cast<int>(qMin(claimed, qint64(m_bytes.size() - frame)));
    m_bytes.remove(frame, count);
    m_tagSize -= qMin(m_tagSize, static_cast<quint32>(count));
    writeTagSize();
    return count;
}

int Id3Tag::addFrame(const QByteArray &id, const QByteArray &payload, int offset)
{
    if (offset < 0 || offset > m_bytes.size() || payload.isEmpty())
        return 0;
    // Deliberate: the size is a plain number although it is read as 7 bits a byte; both agree below 128. The encoding
    // byte says Latin-1 although texts come in UTF-8.
    const QByteArray frame = id + plainSize(static_cast<quint32>(payload.size()) + 1) +
                             QByteArray(kFrameFlagBytes, '\0') + QByteArray(1, char(Latin1)) + payload;
    m_bytes.insert(offset, frame);
    m_tagSize += static_cast<quint32>(frame.size());
    writeTagSize();
    return frame.size();
}

void Id3Tag::writeTagSize()
{
    for (int i = 0; i < kSizeBytes && kTagSizeOffset + i < m_bytes.size(); ++i) {
        const int shift = kBitsOfSizeByte * (kSizeBytes - 1 - i);
        m_bytes[kTagSizeOffset + i] = static_cast<char>((m_tagSize >> shift) & kSizeByteMask);
    }
}
