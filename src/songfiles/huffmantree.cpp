#include "huffmantree.h"

#include "bitstream.h"

#include <algorithm>

namespace {

const unsigned kMostFrequency = 0x8000; ///< at the root; then all frequencies are halved
const unsigned kSentinelFrequency = 0xFFFF;

std::size_t treeSize(std::size_t symbols)
{
    return 2 * symbols - 1;
}

} // namespace

HuffmanTree::HuffmanTree(int mostSymbols)
    : m_frequency(treeSize(static_cast<std::size_t>(mostSymbols)) + 1),
      m_parent(treeSize(static_cast<std::size_t>(mostSymbols)) + static_cast<std::size_t>(mostSymbols)),
      m_son(treeSize(static_cast<std::size_t>(mostSymbols)))
{
    m_code.reserve(static_cast<std::size_t>(mostSymbols));
}

void HuffmanTree::start(int symbols)
{
    m_symbols = static_cast<std::size_t>(symbols);
    m_size = treeSize(m_symbols);
    m_root = m_size - 1;
    for (std::size_t symbol = 0; symbol < m_symbols; ++symbol) {
        m_frequency[symbol] = 1;
        m_son[symbol] = symbol + m_size;
        m_parent[symbol + m_size] = symbol;
    }
    for (std::size_t node = m_symbols, child = 0; node <= m_root; ++node, child += 2) {
        m_frequency[node] = m_frequency[child] + m_frequency[child + 1];
        m_son[node] = child;
        m_parent[child] = m_parent[child + 1] = node;
    }
    m_frequency[m_size] = kSentinelFrequency;
    m_parent[m_root] = 0;
}

void HuffmanTree::encode(int symbol, BitWriter &writer)
{
    // On very uneven input a code grows past 16 bits, hence one entry a bit. They are met from the leaf upwards.
    m_code.clear();
    for (std::size_t node = m_parent[static_cast<std::size_t>(symbol) + m_size]; node != m_root; node = m_parent[node])
        m_code.push_back(node & 1U);
    std::for_each(m_code.crbegin(), m_code.crend(), [&writer](unsigned bit) { writer.putBit(bit); });
    update(symbol);
}

int HuffmanTree::decode(BitReader &reader)
{
    std::size_t node = m_son[m_root];
    while (node < m_size)
        node = m_son[node + reader.bit()];
    const int symbol = static_cast<int>(node - m_size);
    update(symbol);
    return symbol;
}

void HuffmanTree::update(int symbol)
{
    if (m_frequency[m_root] == kMostFrequency)
        rebuild();
    std::size_t node = m_parent[static_cast<std::size_t>(symbol) + m_size];
    do {
        const unsigned frequency = ++m_frequency[node];
        if (frequency > m_frequency[node + 1]) {
            // The order is broken: change places with the last node that is less frequent. The sentinel ends the walk.
            std::size_t other = node + 1;
            while (frequency > m_frequency[other + 1])
                ++other;
            exchange(node, other);
            node = other;
        }
        node = m_parent[node];
    } while (node != 0); // only the root's parent is node 0
}

void HuffmanTree::exchange(std::size_t lower, std::size_t upper)
{
    std::swap(m_frequency[lower], m_frequency[upper]);
    std::swap(m_son[lower], m_son[upper]);
    for (const std::size_t node : {lower, upper}) {
        const std::size_t son = m_son[node];
        m_parent[son] = node;
        if (son < m_size)
            m_parent[son + 1] = node;
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
        m_frequency[leaves] = (m_frequency[node] + 1) / 2;
        m_son[leaves] = m_son[node];
        ++leaves;
    }
}

void HuffmanTree::joinPairs()
{
    for (std::size_t node = m_symbols, child = 0; node < m_size; ++node, child += 2) {
        const unsigned frequency = m_frequency[child] + m_frequency[child + 1];
        // The new node goes behind all that are not more frequent; the pair itself is, so the walk ends there.
        std::size_t place = node;
        while (frequency < m_frequency[place - 1])
            --place;
        for (std::size_t moved = node; moved > place; --moved) {
            m_frequency[moved] = m_frequency[moved - 1];
            m_son[moved] = m_son[moved - 1];
        }
        m_frequency[place] = frequency;
        m_son[place] = child;
    }
}

void HuffmanTree::linkParents()
{
    for (std::size_t node = 0; node < m_size; ++node) {
        const std::size_t son = m_son[node];
        m_parent[son] = node;
        if (son < m_size)
            m_parent[son + 1] = node;
    }
}
