#pragma once

#include <QtGlobal>
#include <vector>

class BitReader;
class BitWriter;

/// The adaptive Huffman code of the LzHuff stream: a tree that grows with every symbol coded, in the same way on the
/// writing and on the reading side.
///
/// Nodes stand in an array in ascending order of frequency, the root last, the two children of a node side by side.
/// `m_son` of an inner node is its first child, of a leaf the symbol plus the size of the tree; `m_parent` goes back,
/// for a symbol through the same sum.
class HuffmanTree
{
public:
    /// Takes storage for up to @p mostSymbols different symbols.
    explicit HuffmanTree(int mostSymbols);

    /// Starts anew with @p symbols symbols (2 to the number given to the constructor), all equally frequent.
    void start(int symbols);

    /// Writes the code of @p symbol (0 to symbols - 1) and adapts the tree.
    void encode(int symbol, BitWriter &writer);

    /// Reads one symbol and adapts the tree. Any bits lead to some symbol below the number of symbols.
    int decode(BitReader &reader);

private:
    void countUp(int symbol);
    void countUpFrom(std::size_t node);
    void exchange(std::size_t lower, std::size_t upper);
    void rebuild();
    void collectHalvedLeaves();
    void joinPairs();
    void linkParents();

    std::size_t m_symbols = 0;
    std::size_t m_size = 0; ///< nodes of the tree
    std::size_t m_root = 0;
    // Small numbers: the whole tree stays in the processor's nearest cache.
    std::vector<quint16> m_frequency; ///< one more than nodes: a sentinel above every frequency
    std::vector<quint16> m_parent;
    std::vector<quint16> m_son;
    std::vector<quint16> m_path; ///< the nodes between the root and a symbol: no code has more bits than symbols
};
