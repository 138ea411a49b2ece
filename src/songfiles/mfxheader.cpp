#include "mfxheader.h"

#include "byteview.h"
#include "cuttext.h"

namespace {

constexpr int kFileSizeOffset = 4;
constexpr int kMidiSizeOffset = 12;
constexpr int kBpmOffset = 38;
constexpr int kLongNameOffset = 42;
constexpr int kTitleOffset = 122;
constexpr int kFlagsOffset = 185;
constexpr int kAuthorOffset = 186;
constexpr int kArtistOffset = 218;
constexpr int kGenreOffset = 250;

constexpr int kLongNameWidth = 13;
constexpr int kTextWidth = 32;

constexpr int kSlowestBpm = 1;
constexpr int kFastestBpm = 499;

} // namespace

int MfxHeader::versionOf(const QByteArray &bytes)
{
    if (bytes.startsWith("_MF3"))
        return 3;
    if (bytes.startsWith("_MF4"))
        return 4;
    return bytes.startsWith("_MF5") ? 5 : 0;
}

/// Deliberate: a file that names no version has a title all the same, so that songs are filed by it without being read.
QString MfxHeader::titleIn(const QByteArray &start)
{
    return start.size() < kSmallSize ? QString() : ByteView::textAt(start, kTitleOffset, kTextWidth);
}

int MfxHeader::sizeOfVersion(int version)
{
    switch (version) {
    case 3:
    case 4:
        return kSmallSize;
    case 5:
        return kLargeSize;
    default:
        return 0;
    }
}

bool MfxHeader::setHeader(const QByteArray &block)
{
    m_bytes.clear();
    m_version = 0;
    const int version = versionOf(block);
    if (version == 0 || block.size() < sizeOfVersion(version))
        return false;
    m_bytes = block;
    m_version = version;
    return true;
}

QString MfxHeader::title() const
{
    return ByteView::textAt(m_bytes, kTitleOffset, kTextWidth);
}

QString MfxHeader::author() const
{
    return ByteView::textAt(m_bytes, kAuthorOffset, kTextWidth);
}

QString MfxHeader::artist() const
{
    return ByteView::textAt(m_bytes, kArtistOffset, kTextWidth);
}

QString MfxHeader::genre() const
{
    return ByteView::textAt(m_bytes, kGenreOffset, kTextWidth);
}

QString MfxHeader::longName() const
{
    return ByteView::textAt(m_bytes, kLongNameOffset, kLongNameWidth);
}

quint16 MfxHeader::bpm() const
{
    const int high = ByteView::byteAt(m_bytes, kBpmOffset + 1);
    return static_cast<quint16>((high << ByteView::kByteBits) | ByteView::byteAt(m_bytes, kBpmOffset));
}

quint8 MfxHeader::flags() const
{
    return ByteView::byteAt(m_bytes, kFlagsOffset);
}

bool MfxHeader::isBpmValid() const
{
    return bpm() >= kSlowestBpm && bpm() <= kFastestBpm;
}

void MfxHeader::setTitle(const QString &text)
{
    putText(kTitleOffset, text);
}

void MfxHeader::setAuthor(const QString &text)
{
    putText(kAuthorOffset, text);
}

void MfxHeader::setArtist(const QString &text)
{
    putText(kArtistOffset, text);
}

void MfxHeader::setGenre(const QString &text)
{
    putText(kGenreOffset, text);
}

void MfxHeader::setBpm(int value)
{
    putNumber(kBpmOffset, static_cast<quint32>(value), 2);
}

void MfxHeader::orFlags(quint8 bits)
{
    putNumber(kFlagsOffset, static_cast<quint32>(flags() | bits), 1);
}

void MfxHeader::setFileSize(quint32 value)
{
    putNumber(kFileSizeOffset, value, 4);
}

void MfxHeader::setMidiSize(quint32 value)
{
    putNumber(kMidiSizeOffset, value, 4);
}

void MfxHeader::extendTo(int size)
{
    if (m_bytes.size() < size)
        m_bytes.append(QByteArray(size - m_bytes.size(), '\0'));
}

void MfxHeader::putText(int offset, const QString &text)
{
    const QString field = cutText(text, kTextWidth).leftJustified(kTextWidth, QChar(u'\0'));
    extendTo(offset + kTextWidth);
    // Deliberate: the field is counted in characters but stored as UTF-8, so a text with characters outside ASCII takes
    // more bytes than the field has and moves every later field; such a block has the wrong size and is never saved.
    m_bytes.replace(offset, kTextWidth, field.toUtf8());
}

void MfxHeader::putNumber(int offset, quint32 value, int count)
{
    constexpr quint32 kByteMask = 0xFF;
    extendTo(offset + count);
    for (int i = 0; i < count; ++i)
        m_bytes[offset + i] = static_cast<char>((value >> (i * ByteView::kByteBits)) & kByteMask);
}
