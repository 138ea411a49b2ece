#include "lzhuff.h"

#include "bitstream.h"
#include "huffmantree.h"
#include "matchtree.h"
#include "positioncodes.h"

#include <QDebug>

#include <algorithm>
#include <cstring>

namespace {

constexpr int kRingSize = MatchTree::kRingSize;
constexpr int kRingMask = kRingSize - 1;
constexpr quint8 kBlank = 0x20;

constexpr int kLookAhead = 29;
constexpr int kThreshold = MatchTree::kThreshold;
constexpr int kByteSymbols = ByteView::kByteValues;
constexpr int kLengthSymbolBase = kByteSymbols - kThreshold - 1; ///< symbol of a match less its length
constexpr int kPositionLowBits = 6;
constexpr unsigned kPositionLowMask = (1U << kPositionLowBits) - 1;

constexpr int kWordBytes = MatchTree::kWordBytes;
constexpr int kSpareBytes = MatchTree::kSpareBytes; ///< behind a text: matches are copied a word at a time
constexpr int kSizeBytes = 4;
constexpr unsigned kMissingByte = 0xFF;
constexpr int kRulerLength = 69;

int symbolsFor(int lookAhead)
{
    return kByteSymbols + lookAhead - kThreshold;
}

/// Copies @p length bytes to @p to from @p distance before it. Up to kSpareBytes behind them may be overwritten.
void copyMatch(quint8 *to, int distance, int length)
{
    const quint8 *from = to - distance;
    if (distance < kWordBytes) {
        // Byte by byte: the match reaches into itself.
        for (int i = 0; i < length; ++i)
            to[i] = from[i];
        return;
    }
    for (int i = 0; i < length; i += kWordBytes)
        std::memcpy(to + i, from + i, kWordBytes);
}

quint32 statedSize(const QByteArray &input)
{
    quint32 size = 0;
    for (int i = 0; i < kSizeBytes; ++i) {
        // Deliberate: a size that is cut off is read as huge, and so refused.
        const quint32 byte = i < input.size() ? ByteView::byteAt(input, i) : kMissingByte;
        size |= byte << (i * ByteView::kByteBits);
    }
    return size;
}

void logWrongSize(quint32 size)
{
    const QByteArray ruler(kRulerLength, '=');
    qDebug() << ruler.constData();
    qDebug() << "WARNING: skipping file, compressed stream corrupted/wrong size !!!";
    qDebug() << "Text size: " << size;
    qDebug() << ruler.constData();
    qDebug() << "Expand: ERROR";
}

} // namespace

struct LzHuff::Storage
{
    // Behind its end the ring's start is repeated, so that a text can be compared across it.
    std::vector<quint8> ring = std::vector<quint8>(kRingSize + kMostLookAhead - 1 + MatchTree::kSpareBytes);
    std::vector<quint8> text; ///< what is being expanded, behind what the ring begins with
    HuffmanTree symbols = HuffmanTree(symbolsFor(kMostLookAhead));
    MatchTree matches = MatchTree(ring);
    PositionCodes positions;

    quint8 &at(int position) { return ring[static_cast<std::size_t>(position)]; }
};

LzHuff::LzHuff() : m_storage(std::make_unique<Storage>()) {}

LzHuff::~LzHuff() = default;

bool LzHuff::expand(const QByteArray &input, QByteArray &output)
{
    output.clear();
    const quint32 size = statedSize(input);
    if (size > quint32(kMostBytes)) {
        logWrongSize(size);
        return false;
    }
    if (size == 0)
        return false; // Deliberate: a song without content is a failure, and nobody is told.
    decode(input, kSizeBytes, static_cast<int>(size), kLookAhead, output);
    return true;
}

void LzHuff::compress(const QByteArray &input, QByteArray &output)
{
    output.clear();
    for (int i = 0; i < kSizeBytes; ++i)
        output.append(static_cast<char>(static_cast<quint32>(input.size()) >> (i * ByteView::kByteBits)));
    if (!input.isEmpty())
        encode(input, kLookAhead, output);
    qDebug() << "Compress: " << input.size() << " --> " << output.size();
}

void LzHuff::start(int lookAhead)
{
    m_storage->symbols.start(symbolsFor(lookAhead));
    std::fill(m_storage->ring.begin(), m_storage->ring.end(), quint8(0));
    std::fill_n(m_storage->ring.begin(), kRingSize - lookAhead, kBlank);
}

void LzHuff::encode(const QByteArray &input, int lookAhead, QByteArray &output)
{
    start(lookAhead);
    Storage &storage = *m_storage;
    storage.matches.start(lookAhead);
    BitWriter writer(output);

    int oldest = 0;                                // place in the ring of the byte that goes next
    int current = kRingSize - lookAhead;           // place of the next byte to code
    int remaining = qMin(lookAhead, input.size()); // bytes of the input that wait in the ring
    int taken = remaining;
    std::copy_n(input.cbegin(), remaining, storage.ring.begin() + current);
    for (int back = 1; back <= lookAhead; ++back)
        storage.matches.insert(current - back);
    storage.matches.insert(current);

    while (remaining > 0) {
        int matchLength = 0;
        encodeStep(matchLength, current, remaining, writer);
        for (int i = 0; i < matchLength; ++i) {
            storage.matches.remove(oldest);
            if (taken < input.size()) {
                const auto byte = static_cast<quint8>(input.at(taken++));
                storage.at(oldest) = byte;
                if (oldest < lookAhead - 1)
                    storage.at(oldest + kRingSize) = byte;
            } else {
                --remaining;
            }
            oldest = (oldest + 1) & kRingMask;
            current = (current + 1) & kRingMask;
            if (remaining > 0)
                storage.matches.insert(current);
        }
    }
    writer.flush();
}

void LzHuff::encodeStep(int &matchLength, int position, int remaining, BitWriter &writer)
{
    // Behind the last byte of the input the ring holds old text: a match may not reach into it.
    matchLength = qMin(m_storage->matches.matchLength(), remaining);
    if (matchLength <= kThreshold) {
        // Deliberate: the match counts as one byte long even where two bytes were found.
        matchLength = 1;
        m_storage->symbols.encode(m_storage->at(position), writer);
        return;
    }
    m_storage->symbols.encode(kLengthSymbolBase + matchLength, writer);
    encodePosition(m_storage->matches.matchPosition(), writer);
}

void LzHuff::encodePosition(int position, BitWriter &writer)
{
    const auto upper = static_cast<std::size_t>(position >> kPositionLowBits);
    const int length = m_storage->positions.length.at(upper);
    writer.putBits(unsigned(m_storage->positions.code.at(upper)) >> (ByteView::kByteBits - length), length);
    writer.putBits(static_cast<unsigned>(position) & kPositionLowMask, kPositionLowBits);
}

void LzHuff::decode(const QByteArray &input, int offset, int size, int lookAhead, QByteArray &output)
{
    Storage &storage = *m_storage;
    storage.symbols.start(symbolsFor(lookAhead));
    // A match never reaches further back than the ring is long: with the ring's first content in front of it the text
    // is its own ring.
    storage.text.resize(static_cast<std::size_t>(size) + kRingSize + kSpareBytes);
    std::fill_n(storage.text.begin(), lookAhead, quint8(0));
    std::fill_n(storage.text.begin() + lookAhead, kRingSize - lookAhead, kBlank);
    quint8 *next = storage.text.data() + kRingSize;
    const quint8 *const end = next + size;
    BitReader reader(input, offset);
    while (next < end) {
        const int symbol = storage.symbols.decode(reader);
        if (symbol < kByteSymbols) {
            *next++ = static_cast<quint8>(symbol);
            continue;
        }
        const int distance = decodePosition(reader) + 1;
        const int length = qMin(symbol - kLengthSymbolBase, static_cast<int>(end - next));
        copyMatch(next, distance, length);
        next += length;
    }
    output.append(reinterpret_cast<const char *>(end - size), size);
}

int LzHuff::decodePosition(BitReader &reader) const
{
    // A code is at most a byte long: what of that byte lies behind the code already belongs to the lower bits.
    const unsigned first = reader.bits(ByteView::kByteBits);
    const int length = m_storage->positions.decodedLength.at(first);
    const int missing = kPositionLowBits - (ByteView::kByteBits - length);
    const unsigned low = ((first << missing) | reader.bits(missing)) & kPositionLowMask;
    return (m_storage->positions.decodedUpper.at(first) << kPositionLowBits) | static_cast<int>(low);
}
