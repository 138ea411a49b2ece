#include "publishedlzhuff.h"

#include <algorithm>
#include <map>
#include <memory>
#include <vector>

namespace {

const int kRing = 4096;

struct Node
{
    int weight = 0;
    int symbol = -1;
    Node *parent = nullptr;
    Node *child[2] = {nullptr, nullptr};
};

/// Nodes in a list in ascending order of weight, linked into a tree.
class PointerTree
{
public:
    explicit PointerTree(int symbols)
    {
        for (int symbol = 0; symbol < symbols; ++symbol) {
            m_list.push_back(newNode(1));
            m_list.back()->symbol = symbol;
        }
        m_leaves = m_list;
        joinAll();
    }

    Node *root() const { return m_list.back(); }

    void count(int symbol)
    {
        if (root()->weight == 32768)
            halve();
        for (Node *node = m_leaves[static_cast<std::size_t>(symbol)]; node; node = node->parent) {
            // The last node of the same weight changes places with this one, which then can grow.
            const auto behind = std::upper_bound(m_list.begin(), m_list.end(), node->weight,
                                                 [](int weight, const Node *other) { return weight < other->weight; });
            swapPlaces(node, *(behind - 1));
            ++node->weight;
        }
    }

private:
    Node *newNode(int weight)
    {
        m_all.push_back(std::make_unique<Node>());
        m_all.back()->weight = weight;
        return m_all.back().get();
    }

    void joinAll()
    {
        const std::size_t wanted = 2 * m_list.size() - 1;
        for (std::size_t pair = 0; m_list.size() < wanted; pair += 2) {
            Node *both = newNode(m_list[pair]->weight + m_list[pair + 1]->weight);
            for (int side = 0; side < 2; ++side) {
                both->child[side] = m_list[pair + static_cast<std::size_t>(side)];
                both->child[side]->parent = both;
            }
            m_list.insert(std::upper_bound(m_list.begin(), m_list.end(), both->weight,
                                           [](int weight, const Node *other) { return weight < other->weight; }),
                          both);
        }
        root()->parent = nullptr;
    }

    void halve()
    {
        m_list.erase(std::remove_if(m_list.begin(), m_list.end(), [](const Node *node) { return node->symbol < 0; }),
                     m_list.end());
        for (Node *leaf : m_list)
            leaf->weight = (leaf->weight + 1) / 2;
        joinAll();
    }

    void swapPlaces(Node *a, Node *b)
    {
        if (a == b)
            return;
        std::iter_swap(std::find(m_list.begin(), m_list.end(), a), std::find(m_list.begin(), m_list.end(), b));
        Node *&slotOfA = a->parent->child[a->parent->child[1] == a ? 1 : 0];
        Node *&slotOfB = b->parent->child[b->parent->child[1] == b ? 1 : 0];
        std::swap(slotOfA, slotOfB);
        std::swap(a->parent, b->parent);
    }

    std::vector<std::unique_ptr<Node>> m_all;
    std::vector<Node *> m_list;
    std::vector<Node *> m_leaves;
};

struct Bits
{
    const QByteArray &bytes;
    int next = 0;

    int take()
    {
        const int byte = next / 8 < bytes.size() ? static_cast<quint8>(bytes.at(next / 8)) : 0;
        return (byte >> (7 - next++ % 8)) & 1;
    }
};

/// Reads one of 64 values whose codes count upwards: 1, 3, 8, 12, 24 and 16 of them with 3 to 8 bits.
int takeUpperPosition(Bits &bits)
{
    int code = bits.take() * 2 + bits.take();
    int firstCode = 0;
    int firstValue = 0;
    for (const int count : {1, 3, 8, 12, 24, 16}) {
        code = code * 2 + bits.take();
        firstCode *= 2;
        if (code - firstCode < count)
            return firstValue + code - firstCode;
        firstCode += count;
        firstValue += count;
    }
    return 0;
}

/// The published search, its links kept in maps; node -1 - b is the root of the tree for first byte b.
class MapSearch
{
public:
    MapSearch(std::vector<int> &ring, int lookAhead) : m_ring(ring), m_lookAhead(lookAhead) {}

    int length = 0;
    int position = 0;

    void insert(int r)
    {
        length = 0;
        m_child[0].erase(r);
        m_child[1].erase(r);
        int at = -1 - text(r);
        int side = 1;
        for (;;) {
            const auto next = m_child[side].find(at);
            if (next == m_child[side].end()) {
                hang(r, at, side);
                return;
            }
            at = next->second;
            int same = 0;
            while (same < m_lookAhead && text(r + same) == text(at + same))
                ++same;
            side = same < m_lookAhead && text(r + same) < text(at + same) ? 0 : 1;
            const int distance = ((r - at + kRing) % kRing) - 1;
            if (same >= 3 && (same > length || (same == length && distance < position))) {
                length = same;
                position = distance;
            }
            if (same == m_lookAhead)
                break;
        }
        for (int i = 0; i < 2; ++i) {
            const auto child = m_child[i].find(at);
            if (child != m_child[i].end())
                hang(child->second, r, i);
        }
        const auto where = m_place.at(at);
        forget(at);
        hang(r, where.first, where.second);
    }

    void remove(int p)
    {
        if (m_place.count(p) == 0)
            return;
        const auto where = m_place.at(p);
        const int left = childOf(p, 0);
        const int right = childOf(p, 1);
        forget(p);
        if (left < 0 || right < 0) {
            m_child[where.second].erase(where.first);
            if (left >= 0 || right >= 0)
                hang(qMax(left, right), where.first, where.second);
            return;
        }
        // The largest of the smaller ones takes the place.
        int heir = left;
        while (childOf(heir, 1) >= 0)
            heir = childOf(heir, 1);
        if (heir != left) {
            const auto heirsPlace = m_place.at(heir);
            const int orphan = childOf(heir, 0);
            m_child[heirsPlace.second].erase(heirsPlace.first);
            if (orphan >= 0)
                hang(orphan, heirsPlace.first, heirsPlace.second);
            hang(left, heir, 0);
        }
        hang(right, heir, 1);
        hang(heir, where.first, where.second);
    }

private:
    int text(int at) const { return m_ring[static_cast<std::size_t>(at)]; }

    int childOf(int node, int side) const
    {
        const auto found = m_child[side].find(node);
        return found == m_child[side].end() ? -1 : found->second;
    }

    void hang(int node, int parent, int side)
    {
        m_child[side][parent] = node;
        m_place[node] = std::make_pair(parent, side);
    }

    void forget(int node)
    {
        m_child[0].erase(node);
        m_child[1].erase(node);
        m_place.erase(node);
    }

    std::vector<int> &m_ring;
    int m_lookAhead;
    std::map<int, int> m_child[2];
    std::map<int, std::pair<int, int>> m_place;
};

} // namespace

QVector<PublishedLzHuff::Token> PublishedLzHuff::decode(const QByteArray &bits, int size, int lookAhead,
                                                        QByteArray &data)
{
    PointerTree tree(254 + lookAhead);
    Bits reader{bits};
    // Everything ever written, behind the blanks with which the ring begins.
    data = QByteArray(kRing - lookAhead, ' ');
    const int blanks = data.size();
    QVector<Token> tokens;
    while (data.size() - blanks < size) {
        Token token;
        const Node *node = tree.root();
        for (; node->symbol < 0; ++token.codeBits)
            node = node->child[reader.take()];
        tree.count(node->symbol);
        if (node->symbol < 256) {
            token.byte = node->symbol;
            data.append(static_cast<char>(token.byte));
        } else {
            token.length = node->symbol - 253;
            token.position = takeUpperPosition(reader) * 64;
            for (int bit = 32; bit > 0; bit /= 2)
                token.position += bit * reader.take();
            for (int i = 0; i < token.length; ++i)
                data.append(data.at(qMax(0, data.size() - token.position - 1)));
        }
        tokens.append(token);
    }
    data.remove(0, blanks);
    return tokens;
}

QVector<PublishedLzHuff::Token> PublishedLzHuff::chooseMatches(const QByteArray &data, int lookAhead)
{
    std::vector<int> ring(static_cast<std::size_t>(kRing + lookAhead - 1), 0);
    const auto cell = [&ring](int at) -> int & { return ring[static_cast<std::size_t>(at)]; };
    MapSearch search(ring, lookAhead);
    int r = kRing - lookAhead;
    int s = 0;
    int next = 0;
    int waiting = 0;
    std::fill_n(ring.begin(), r, ' ');
    for (; waiting < lookAhead && next < data.size(); ++waiting)
        cell(r + waiting) = static_cast<quint8>(data.at(next++));
    for (int i = 1; i <= lookAhead; ++i)
        search.insert(r - i);
    search.insert(r);
    QVector<Token> tokens;
    while (waiting > 0) {
        Token token;
        if (qMin(search.length, waiting) >= 3) {
            token.length = qMin(search.length, waiting);
            token.position = search.position;
        } else {
            token.byte = cell(r);
        }
        tokens.append(token);
        for (int i = 0; i < token.length; ++i) {
            search.remove(s);
            if (next < data.size()) {
                cell(s) = static_cast<quint8>(data.at(next++));
                if (s < lookAhead - 1)
                    cell(s + kRing) = cell(s);
            } else {
                --waiting;
            }
            s = (s + 1) % kRing;
            r = (r + 1) % kRing;
            if (waiting > 0)
                search.insert(r);
        }
    }
    return tokens;
}
