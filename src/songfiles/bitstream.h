#pragma once

#include "byteview.h"

#include <QByteArray>
#include <QtEndian>

/// Reads bits from bytes, most significant bit first. Past the end of the bytes every bit is 0.
class BitReader
{
public:
    /// Reads @p bytes, which must outlive the reader, from the byte at @p offset on.
    BitReader(const QByteArray &bytes, int offset) : m_bytes(&bytes), m_offset(offset) {}

    /// Makes sure that kPrepared bits can be taken by preparedBit().
    void prepare()
    {
        if (m_left < kPrepared)
            fill();
    }
    static constexpr int kPrepared = 32; ///< as many as a word has

    /// The next bit, 0 or 1, of those that were prepared.
    unsigned preparedBit()
    {
        --m_left;
        return static_cast<unsigned>(m_waiting >> (m_left & kWindowMask)) & 1U;
    }

    /// The next bit, 0 or 1.
    unsigned bit()
    {
        prepare();
        return preparedBit();
    }

    /// The next @p count bits (up to 32) as a number.
    unsigned bits(int count)
    {
        prepare();
        m_left -= count;
        return static_cast<unsigned>((m_waiting >> m_left) & ((quint64(1) << count) - 1));
    }

private:
    static constexpr int kWindowMask = 63;

    void fill()
    {
        if (m_offset + kPrepared / ByteView::kByteBits <= m_bytes->size()) {
            const quint32 word = qFromBigEndian<quint32>(m_bytes->constData() + m_offset);
            m_waiting = (m_waiting << kPrepared) | word;
        } else {
            for (int byte = 0; byte < kPrepared / ByteView::kByteBits; ++byte)
                m_waiting = (m_waiting << ByteView::kByteBits) | ByteView::byteAt(*m_bytes, m_offset + byte);
        }
        m_offset += kPrepared / ByteView::kByteBits;
        m_left += kPrepared;
    }

    const QByteArray *m_bytes;
    qint64 m_offset;
    quint64 m_waiting = 0;
    int m_left = 0; ///< bits that wait, at most twice a word
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
        if (++m_used == ByteView::kByteBits)
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
        m_current <<= ByteView::kByteBits - m_used;
        appendCurrent();
    }

private:
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
