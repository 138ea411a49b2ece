#pragma once

#include "byteview.h"

#include <QByteArray>

/// Reads bits from bytes, most significant bit first. Past the end of the bytes every bit is 0.
class BitReader
{
public:
    /// Reads @p bytes, which must outlive the reader, from the byte at @p offset on.
    BitReader(const QByteArray &bytes, int offset) : m_bytes(&bytes), m_offset(offset) {}

    /// The next bit, 0 or 1.
    unsigned bit()
    {
        if (m_left == 0)
            fill();
        --m_left;
        return static_cast<unsigned>(m_waiting >> m_left) & 1U;
    }

    /// The next @p count bits (up to 32) as a number.
    unsigned bits(int count)
    {
        if (m_left >= count) {
            m_left -= count;
            return static_cast<unsigned>((m_waiting >> m_left) & ((quint64(1) << count) - 1));
        }
        unsigned value = 0;
        for (int i = 0; i < count; ++i)
            value = (value << 1) | bit();
        return value;
    }

private:
    static constexpr int kByteBits = 8;
    static constexpr int kWaitingBits = 64;

    void fill()
    {
        for (int byte = 0; byte < kWaitingBits / kByteBits; ++byte)
            m_waiting = (m_waiting << kByteBits) | ByteView::byteAt(*m_bytes, m_offset++);
        m_left = kWaitingBits;
    }

    const QByteArray *m_bytes;
    qint64 m_offset;
    quint64 m_waiting = 0;
    int m_left = 0;
};

/// Appends bits to bytes, most significant bit first.
class BitWriter
{
public:
    /// Appends to @p bytes, which must outlive the writer.
    explicit BitWriter(QByteArray &bytes) : m_bytes(bytes) {}

    /// Appends the lowest bit of @p bit.
    void putBit(unsigned bit)
    {
        m_current = (m_current << 1) | (bit & 1U);
        if (++m_used == kByteBits)
            appendCurrent();
    }

    /// Appends the lowest @p count bits (up to 32) of @p value.
    void putBits(unsigned value, int count)
    {
        for (int i = count - 1; i >= 0; --i)
            putBit(value >> i);
    }

    /// Appends what is left of a last byte, filled up with zero bits.
    void flush()
    {
        if (m_used == 0)
            return;
        m_current <<= kByteBits - m_used;
        appendCurrent();
    }

private:
    static constexpr int kByteBits = 8;

    void appendCurrent()
    {
        m_bytes.append(static_cast<char>(m_current));
        m_current = 0;
        m_used = 0;
    }

    QByteArray &m_bytes;
    unsigned m_current = 0;
    int m_used = 0;
};
