#pragma once

#include <QByteArray>

/// The published encoder of LZHUF streams as it was printed: trees of plain ints, compared byte by byte, a bit at a
/// time. What the program's own encoder is measured by; it gives the same bits.
class PlainLzHuff
{
public:
    static constexpr int kLookAhead = 29; ///< longest match of the player's songs

    /// The stream of @p input without the length in front of it.
    QByteArray encode(const QByteArray &input);

private:
    static constexpr int kRing = 4096;
    static constexpr int kThreshold = 2;
    static constexpr int kNone = kRing;
    static constexpr int kSymbols = 256 - kThreshold + kLookAhead;
    static constexpr int kTableSize = 2 * kSymbols - 1;
    static constexpr int kRoot = kTableSize - 1;
    static constexpr unsigned kMostFrequency = 0x8000;

    void startTree();
    void insertNode(int place);
    void deleteNode(int place);
    void startHuffman();
    void rebuild();
    void update(int symbol);
    void putCode(int length, unsigned code);
    void encodeSymbol(int symbol);
    void encodePosition(int position);

    unsigned char m_text[kRing + kLookAhead - 1];
    int m_matchPosition = 0;
    int m_matchLength = 0;
    int m_left[kRing + 1];
    int m_right[kRing + 257];
    int m_parent[kRing + 1];

    unsigned m_frequency[kTableSize + 1];
    int m_up[kTableSize + kSymbols];
    int m_son[kTableSize];
    unsigned m_putBuffer = 0;
    int m_putLength = 0;
    QByteArray m_output;
};
