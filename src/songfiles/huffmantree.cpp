#include "huffmantree.h"

#include "bitstream.h"

#include <algorithm>

namespace {

const unsigned kMostFrequency = 0x8000; ///< at the root; then all frequencies are halved
const quint16 kSentinelFrequency = 0xFFFF;

std::size_t treeSize(std::size_t symbols)
{
    return 2 * symbols - 1;
}

/// What the tables hold: no node and no frequency is larger.
quint16 small(std::size_t value)
{
    return static_cast<quint16>(value);
}

} // namespace

HuffmanTree::HuffmanTree(int mostSymbols)
    : m_frequency(treeSize(static_cast<std::size_t>(mostSymbols)) + 1),
      m_parent(treeSize(static_cast<std::size_t>(mostSymbols)) + static_cast<std::size_t>(mostSymbols)),
      m_son(treeSize(static_cast<std::size_t>(mostSymbols))),
      m_path(static_cast<std::size_t>(mostSymbols))
{
}

void HuffmanTree::start(int symbols)
{
    m_symbols = static_cast<std::size_t>(symbols);
    m_size = treeSize(m_symbols);
    m_root = m_size - 1;
    for (std::size_t symbol = 0; symbol < m_symbols; ++symbol) {
        m_frequency[symbol] = 1;
        m_son[symbol] = small(symbol + m_size);
        m_parent[symbol + m_size] = small(symbol);
    }
    for (std::size_t node = m_symbols, child = 0; node <= m_root; ++node, child += 2) {
        m_frequency[node] = small(std::size_t(m_frequency[child]) + m_frequency[child + 1]);
        m_son[node] = small(child);
        m_parent[child] = m_parent[child + 1] = small(node);
    }
    m_frequency[m_size] = kSentinelFrequency;
    m_parent[m_root] = 0;
}

void HuffmanTree::encode(int symbol, BitWriter &writer)
{
    // On very uneven input a code grows past 16 bits, hence one entry a bit. They are met from the leaf upwards.
    quint16 *start = m_path.data() + m_path.size();
    quint16 *const end = start;
    for (std::size_t node = m_parent[static_cast<std::size_t>(symbol) + m_size]; node != m_root; node = m_parent[node])
        *--start = small(node);
    std::for_each(start, end, [&writer](quint16 node) { writer.putBit(node); });
    countUp(symbol);
}

int HuffmanTree::decode(BitReader &reader)
{
    const quint16 *const sons = m_son.data();
    BitReader bits = reader; // as a copy its fields stay in registers
    // No code is that long: the frequencies of a deep tree grow like Fibonacci's numbers, and the root's ends at 2^15.
    bits.prepare();
    std::size_t node = sons[m_root];
    while (node < m_size)
        node = sons[node + bits.preparedBit()];
    reader = bits;
    const int symbol = static_cast<int>(node - m_size);
    countUp(symbol);
    return symbol;
}

void HuffmanTree::countUp(int symbol)
{
    if (m_frequency[m_root] == kMostFrequency)
        rebuild();
    countUpFrom(m_parent[static_cast<std::size_t>(symbol) + m_size]);
}

/// Counts the node and all above it, each of which moves to where its frequency belongs.
void HuffmanTree::countUpFrom(std::size_t node)
{
    quint16 *const frequencies = m_frequency.data();
    const quint16 *const parents = m_parent.data();
    do {
        const quint16 frequency = ++frequencies[node];
        if (frequency > frequencies[node + 1]) {
            // The order is broken: change places with the last node that is less frequent. The sentinel ends the walk.
            std::size_t other = node + 1;
            while (frequency > frequencies[other + 1])
                ++other;
            exchange(node, other);
            node = other;
        }
        node = parents[node];
    } while (node != 0); // only the root's parent is node 0
}

void HuffmanTree::exchange(std::size_t lower, std::size_t upper)
{
    std::swap(m_frequency[lower], m_frequency[upper]);
    std::swap(m_son[lower], m_son[upper]);
    for (const std::size_t node : {lower, upper}) {
        const std::size_t son = m_son[node];
        // A leaf's symbol has one entry, an inner node's children have two; the second is then the first again.
        m_parent[son] = small(node);
        m_parent[son + (son < m_size ? 1 : 0)] = small(node);
    }
}

void HuffmanTree::rebuild()
{
    collectHalvedLeaves();
    joinPairs();
    linkParents();
}

void HuffmanTree::collectHalvedLeaves()
{
    std::size_t leaves = 0;
    for (std::size_t node = 0; node < m_size; ++node) {
        if (m_son[node] < m_size)
            continue;
        m_frequency[leaves] = small((std::size_t(m_frequency[node]) + 1) / 2);
        m_son[leaves] = m_son[node];
        ++leaves;
    }
}

void HuffmanTree::joinPairs()
{
    for (std::size_t node = m_symbols, child = 0; node < m_size; ++node, child += 2) {
        const quint16 frequency = small(std::size_t(m_frequency[child]) + m_frequency[child + 1]);
        // The new node goes behind all that are not more frequent; the pair itself is, so the walk ends there.
        std::size_t place = node;
        while (frequency < m_frequency[place - 1])
            --place;
        for (std::size_t moved = node; moved > place; --moved) {
            m_frequency[moved] = m_frequency[moved - 1];
            m_son[moved] = m_son[moved - 1];
        }
        m_frequency[place] = frequency;
        m_son[place] = small(child);
    }
}

void HuffmanTree::linkParents()
{
    for (std::size_t node = 0; node < m_size; ++node) {
        const std::size_t son = m_son[node];
        m_parent[son] = small(node);
        if (son < m_size)
            m_parent[son + 1] = small(node);
    }
}
