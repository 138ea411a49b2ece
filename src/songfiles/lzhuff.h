#pragma once

#include <QByteArray>
#include <memory>

class BitReader;
class BitWriter;

/// Compresses and expands the MIDI stream inside the player's own song files: string matches in a ring buffer, then
/// adaptive Huffman coding. The player reads the same stream, so every bit of it matters.
///
/// | bytes | content                                                               |
/// |-------|-----------------------------------------------------------------------|
/// | 4     | length of the uncompressed data, unsigned, low byte first             |
/// | rest  | bits, most significant first, the last byte filled up with zero bits  |
///
/// The bits hold symbols of the adaptive code (HuffmanTree). One below 256 is a byte of the data; 256 and above is a
/// match 3 to 29 bytes long, followed by its position: the upper 6 bits in a fixed code (PositionCodes), then the lower
/// 6 bits as they are. A match at position p is copied from p + 1 bytes before the place it goes to in the ring buffer
/// of 4096 bytes, which begins filled with blanks.
///
/// An object keeps its working storage between calls and serves both directions, one call at a time.
class LzHuff
{
public:
    static constexpr int kMostBytes = 500000; ///< uncompressed bytes that can be expanded at most

    /// Takes the working storage of both directions; it is given back with the object.
    LzHuff();
    ~LzHuff();
    LzHuff(const LzHuff &) = delete;
    LzHuff &operator=(const LzHuff &) = delete;

    /// Expands @p input into @p output (another array, emptied first). Returns true when the size that the input states
    /// was 1 to 500,000; the output then has exactly that size, whatever the rest of the input holds: bits that are
    /// missing count as 0. Otherwise the output is empty and the result false, with log lines unless the size is 0.
    bool expand(const QByteArray &input, QByteArray &output);

    /// Compresses @p input into @p output (another array, emptied first) and logs both lengths. Never fails; only
    /// inputs of 1 to 500,000 bytes can be expanded again.
    void compress(const QByteArray &input, QByteArray &output);

protected:
    static constexpr int kMostLookAhead = 1024; ///< longest match for which storage is held

    /// Appends the bits for @p input (not empty) to @p output; @p lookAhead, 3 to kMostLookAhead, is the longest match.
    void encode(const QByteArray &input, int lookAhead, QByteArray &output);
    /// Appends @p size bytes to @p output, expanded from the bits of @p input from the byte at @p offset on.
    void decode(const QByteArray &input, int offset, int size, int lookAhead, QByteArray &output);

private:
    struct Storage;

    void start(int lookAhead);
    void encodeStep(int &matchLength, int position, int remaining, BitWriter &writer);
    void encodePosition(int position, BitWriter &writer);
    int decodePosition(BitReader &reader) const;

    std::unique_ptr<Storage> m_storage;
};
