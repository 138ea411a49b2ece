#include "matchtree.h"

namespace {

const int kNone = MatchTree::kRingSize; ///< "no node"; its links may be written and are never followed
const int kRoots = MatchTree::kRingSize + 1;
const int kByteValues = 256;
const int kThreshold = 2; ///< a match must be longer to count

} // namespace

MatchTree::MatchTree(const std::vector<quint8> &ring)
    : m_ring(ring), m_left(kRingSize + 1), m_right(kRoots + kByteValues), m_parent(kRingSize + 1)
{
}

void MatchTree::start(int longestMatch)
{
    m_longestMatch = longestMatch;
    m_matchLength = 0;
    m_matchPosition = 0;
    m_left.assign(m_left.size(), kNone);
    m_right.assign(m_right.size(), kNone);
    m_parent.assign(m_parent.size(), kNone);
}

void MatchTree::insert(int position)
{
    int node = kRoots + m_ring[static_cast<std::size_t>(position)];
    int order = 1; // below a root everything hangs on the right
    link(m_left, position) = link(m_right, position) = kNone;
    m_matchLength = 0;
    for (;;) {
        int &next = link(order >= 0 ? m_right : m_left, node);
        if (next == kNone) {
            next = position;
            link(m_parent, position) = node;
            return;
        }
        node = next;
        int common = 0;
        compare(position, node, common, order);
        if (noteMatch(position, node, common))
            break;
    }
    // The same text again: the newer position takes the place of the older.
    replace(node, position);
}

void MatchTree::compare(int position, int other, int &common, int &order) const
{
    const auto key = static_cast<std::size_t>(position);
    const auto old = static_cast<std::size_t>(other);
    std::size_t i = 1; // the first bytes are equal, else the node would stand in another tree
    for (order = 0; order == 0 && i < static_cast<std::size_t>(m_longestMatch); ++i)
        order = m_ring[key + i] - m_ring[old + i];
    common = static_cast<int>(order == 0 ? i : i - 1);
}

bool MatchTree::noteMatch(int position, int other, int common)
{
    if (common <= kThreshold || common < m_matchLength)
        return false;
    const int distance = ((position - other) & (kRingSize - 1)) - 1;
    if (common > m_matchLength || distance < m_matchPosition)
        m_matchPosition = distance;
    m_matchLength = common;
    return common >= m_longestMatch;
}

void MatchTree::replace(int old, int position)
{
    link(m_left, position) = link(m_left, old);
    link(m_right, position) = link(m_right, old);
    link(m_parent, link(m_left, old)) = position;
    link(m_parent, link(m_right, old)) = position;
    putInPlaceOf(old, position);
}

void MatchTree::remove(int position)
{
    if (link(m_parent, position) == kNone)
        return;
    const int left = link(m_left, position);
    const int right = link(m_right, position);
    int heir = left;
    if (right == kNone) {
        heir = left;
    } else if (left == kNone) {
        heir = right;
    } else {
        if (link(m_right, heir) != kNone) {
            while (link(m_right, heir) != kNone)
                heir = link(m_right, heir);
            link(m_right, link(m_parent, heir)) = link(m_left, heir);
            link(m_parent, link(m_left, heir)) = link(m_parent, heir);
            link(m_left, heir) = left;
            link(m_parent, left) = heir;
        }
        link(m_right, heir) = right;
        link(m_parent, right) = heir;
    }
    putInPlaceOf(position, heir);
}

void MatchTree::putInPlaceOf(int old, int position)
{
    const int parent = link(m_parent, old);
    link(m_parent, position) = parent;
    int &fromRight = link(m_right, parent);
    (fromRight == old ? fromRight : link(m_left, parent)) = position;
    link(m_parent, old) = kNone;
}
