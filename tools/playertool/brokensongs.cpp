#include "snapshot.h"

namespace {

constexpr int kMagicBytes = 4;
constexpr int kSmallestMidi = 22;
constexpr int kSmallHeader = 512;
constexpr int kLargeHeader = 1024;
constexpr quint32 kLargestStream = 500000;
constexpr int kTagHeaderBytes = 10;

quint32 byteAt(const QByteArray &bytes, int offset)
{
    return offset < bytes.size() ? uchar(bytes.at(offset)) : 0xFF;
}

bool isBrokenContainer(const QByteArray &head)
{
    const int header = head.startsWith("_MF5") ? kLargeHeader : kSmallHeader;
    if (head.size() < header)
        return true;
    quint32 size = 0;
    for (int i = 0; i < 4; ++i)
        size |= byteAt(head, header + i) << (8 * i);
    return size == 0 || size > kLargestStream;
}

bool isBrokenTag(const QByteArray &head)
{
    if (head.size() < kTagHeaderBytes)
        return true;
    quint32 size = 0;
    for (int i = 6; i < kTagHeaderBytes; ++i) {
        constexpr quint32 kLargestSizeByte = 0x80;
        if (byteAt(head, i) > kLargestSizeByte)
            return false; // the player takes such a size as 0
        size = (size << 7) | byteAt(head, i);
    }
    return quint32(head.size()) < size;
}

/// An MP3 without a tag begins with a frame, or with zeros.
bool isBrokenAudio(const QByteArray &head)
{
    constexpr int kLowestSecondByte = -13;
    if (head.startsWith(QByteArray(2, '\0')))
        return false;
    return head.at(0) != '\xFF' || qint8(head.at(1)) < kLowestSecondByte || head.size() < kTagHeaderBytes;
}

} // namespace

bool looksLikeABrokenSong(const QString &name, const QByteArray &head)
{
    if (head.size() < kMagicBytes)
        return true;
    if (head.startsWith("_MF3") || head.startsWith("_MF4") || head.startsWith("_MF5"))
        return isBrokenContainer(head);
    if (head.startsWith("MThd"))
        return head.size() < kSmallestMidi || !head.contains("MTrk");
    if (!name.endsWith(QLatin1String("mp3"), Qt::CaseInsensitive))
        return true;
    return head.startsWith("ID3") ? isBrokenTag(head) : isBrokenAudio(head);
}
