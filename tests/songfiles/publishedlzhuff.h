#pragma once

#include "support/testing.h"

#include <utility>
#include <vector>

/// A second, plain implementation of the published algorithm, made to check the first: a decoder whose tree is made of
/// nodes and pointers, and the match search with its links in maps. Nothing here is fast, all of it is easy to follow.
namespace PublishedLzHuff {

/// What one symbol of a stream stands for.
struct Token
{
    int length = 1;    ///< 1 for a byte as it is
    int position = -1; ///< of a match
    int byte = -1;     ///< of a byte as it is
};

inline bool operator==(const Token &a, const Token &b) {
    return a.length == b.length && a.position == b.position && a.byte == b.byte;
}

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
    explicit PointerTree(int symbols) {
        for (int symbol = 0; symbol < symbols; ++symbol) {
            m_list.append(newNode(1));
            m_list.last()->symbol = symbol;
        }
        m_leaves = m_list;
        joinAll();
    }

    Node *root() const { return m_list.last(); }

    void count(int symbol) {
        if (root()->weight == 32768)
            halve();
        for (Node *node = m_leaves[symbol]; node; node = node->parent) {
            // The last node of the same weight changes places with this one, which then can grow.
            swapPlaces(node, m_list.at(placeBehind(node->weight) - 1));
            ++node->weight;
        }
    }

private:
    Node *newNode(int weight) {
        m_all.push_back(std::make_unique<Node>());
        m_all.back()->weight = weight;
        return m_all.back().get();
    }

    /// The place behind all nodes of this weight.
    int placeBehind(int weight) const {
        const auto isHeavier = [](int than, const Node *node) { return than < node->weight; };
        return int(std::upper_bound(m_list.begin(), m_list.end(), weight, isHeavier) - m_list.begin());
    }

    void joinAll() {
        const int wanted = 2 * m_list.size() - 1;
        for (int pair = 0; m_list.size() < wanted; pair += 2) {
            Node *both = newNode(m_list.at(pair)->weight + m_list.at(pair + 1)->weight);
            for (int side = 0; side < 2; ++side) {
                both->child[side] = m_list.at(pair + side);
                both->child[side]->parent = both;
            }
            m_list.insert(placeBehind(both->weight), both);
        }
        root()->parent = nullptr;
    }

    void halve() {
        const auto isNoLeaf = [](const Node *node) { return node->symbol < 0; };
        m_list.erase(std::remove_if(m_list.begin(), m_list.end(), isNoLeaf), m_list.end());
        for (Node *leaf : qAsConst(m_list))
            leaf->weight = (leaf->weight + 1) / 2;
        joinAll();
    }

    void swapPlaces(Node *a, Node *b) {
        if (a == b)
            return;
        std::swap(m_list[m_list.indexOf(a)], m_list[m_list.indexOf(b)]);
        std::swap(a->parent->child[a->parent->child[1] == a ? 1 : 0],
                  b->parent->child[b->parent->child[1] == b ? 1 : 0]);
        std::swap(a->parent, b->parent);
    }

    std::vector<std::unique_ptr<Node>> m_all;
    QVector<Node *> m_list;
    QVector<Node *> m_leaves;
};

struct Bits
{
    const QByteArray &bytes;
    int next = 0;

    int take() {
        const int byte = next / 8 < bytes.size() ? static_cast<quint8>(bytes.at(next / 8)) : 0;
        return (byte >> (7 - next++ % 8)) & 1;
    }
};

/// Reads one of 64 values whose codes count upwards: 1, 3, 8, 12, 24 and 16 of them with 3 to 8 bits.
inline int takeUpperPosition(Bits &bits) {
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
    MapSearch(const QVector<int> &ring, int lookAhead) : m_ring(ring), m_lookAhead(lookAhead) {}

    int length = 0;
    int position = 0;

    void insert(int r) {
        length = 0;
        forget(r);
        int at = -1 - m_ring.at(r);
        int side = 1;
        for (;;) {
            const int next = childOf(at, side);
            if (next < 0) {
                hang(r, {at, side});
                return;
            }
            at = next;
            int same = 0;
            while (same < m_lookAhead && m_ring.at(r + same) == m_ring.at(at + same))
                ++same;
            side = same < m_lookAhead && m_ring.at(r + same) < m_ring.at(at + same) ? 0 : 1;
            const int distance = ((r - at + kRing) % kRing) - 1;
            if (same >= 3 && (same > length || (same == length && distance < position))) {
                length = same;
                position = distance;
            }
            if (same == m_lookAhead)
                break;
        }
        for (int i = 0; i < 2; ++i) {
            if (childOf(at, i) >= 0)
                hang(childOf(at, i), {r, i});
        }
        hang(r, forget(at));
    }

    void remove(int p) {
        if (!m_place.contains(p))
            return;
        const int left = childOf(p, 0);
        const int right = childOf(p, 1);
        const Place where = forget(p);
        if (left < 0 || right < 0) {
            m_child[where.second].remove(where.first);
            if (left >= 0 || right >= 0)
                hang(qMax(left, right), where);
            return;
        }
        // The largest of the smaller ones takes the place.
        int heir = left;
        while (childOf(heir, 1) >= 0)
            heir = childOf(heir, 1);
        if (heir != left) {
            const Place heirsPlace = m_place.value(heir);
            const int orphan = childOf(heir, 0);
            m_child[heirsPlace.second].remove(heirsPlace.first);
            if (orphan >= 0)
                hang(orphan, heirsPlace);
            hang(left, {heir, 0});
        }
        hang(right, {heir, 1});
        hang(heir, where);
    }

private:
    using Place = QPair<int, int>; // parent and side

    int childOf(int node, int side) const { return m_child[side].value(node, -1); }

    void hang(int node, const Place &place) {
        m_child[place.second].insert(place.first, node);
        m_place.insert(node, place);
    }

    /// Drops what a node links to, and tells where it was.
    Place forget(int node) {
        m_child[0].remove(node);
        m_child[1].remove(node);
        return m_place.take(node);
    }

    const QVector<int> &m_ring;
    int m_lookAhead;
    QHash<int, int> m_child[2];
    QHash<int, Place> m_place;
};

/// The tokens in @p bits that stand for @p size bytes, and these bytes in @p data.
inline QVector<Token> decode(const QByteArray &bits, int size, int lookAhead, QByteArray &data) {
    PointerTree tree(254 + lookAhead);
    Bits reader{bits};
    // Everything ever written, behind the blanks with which the ring begins.
    data = QByteArray(kRing - lookAhead, ' ');
    const int blanks = data.size();
    QVector<Token> tokens;
    while (data.size() - blanks < size) {
        Token token;
        const Node *node = tree.root();
        while (node->symbol < 0)
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

/// The tokens that the published encoder writes for @p data.
inline QVector<Token> chooseMatches(const QByteArray &data, int lookAhead) {
    QVector<int> ring(kRing + lookAhead - 1);
    MapSearch search(ring, lookAhead);
    int r = kRing - lookAhead;
    int s = 0;
    int next = 0;
    int waiting = 0;
    std::fill_n(ring.begin(), r, ' ');
    for (; waiting < lookAhead && next < data.size(); ++waiting)
        ring[r + waiting] = static_cast<quint8>(data.at(next++));
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
            token.byte = ring.at(r);
        }
        tokens.append(token);
        for (int i = 0; i < token.length; ++i) {
            search.remove(s);
            if (next < data.size()) {
                ring[s] = static_cast<quint8>(data.at(next++));
                if (s < lookAhead - 1)
                    ring[s + kRing] = ring.at(s);
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

} // namespace PublishedLzHuff
