#include "matchtree.h"

#include "byteview.h"

#include <QtAlgorithms>
#include <QtEndian>

namespace {

const quint16 kNone = MatchTree::kRingSize; ///< "no node"; its links may be written and are never followed
constexpr int kRoots = MatchTree::kRingSize + 1;

/// The first bytes of a text as a number: numbers have the order of their texts.
quint64 firstWord(const quint8 *text)
{
    return qFromBigEndian<quint64>(text);
}

/// The least by which the first words of two texts can differ that have no more than @p common bytes in common; where
/// that cannot be told from the first words alone, the least that there is.
quint64 smallestDifference(int common)
{
    constexpr int kLast = MatchTree::kWordBytes - 1;
    return common <= kLast ? quint64(1) << (ByteView::kByteBits * (kLast - common)) : 1;
}

} // namespace

MatchTree::MatchTree(const std::vector<quint8> &ring)
    : m_ring(ring), m_left(kRingSize + 1), m_right(kRoots + ByteView::kByteValues), m_parent(kRingSize + 1)
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
    const quint8 *const ring = m_ring.data();
    const quint8 *const key = ring + position;
    const quint64 start = firstWord(key);
    quint16 *const left = m_left.data();
    quint16 *const right = m_right.data();
    left[position] = right[position] = kNone;
    m_matchLength = 0;
    quint64 notable = smallestDifference(kThreshold);
    int node = kRoots + *key;
    bool goesRight = true; // below a root everything hangs on the right
    for (;;) {
        // Two branches and no choice between two addresses: the processor goes on at a guess, instead of waiting.
        if (goesRight) {
            if (right[node] == kNone)
                return hang(right[node], node, position);
            node = right[node];
        } else {
            if (left[node] == kNone)
                return hang(left[node], node, position);
            node = left[node];
        }
        // Most texts differ within their first bytes, and by so much that no longer match is met: then the order of
        // the first words is that of the texts.
        const quint64 other = firstWord(ring + node);
        goesRight = start > other;
        if ((start ^ other) >= notable)
            continue;
        const int common = commonLength(key, ring + node);
        goesRight = key[common] >= ring[node + common];
        if (common < m_matchLength)
            continue;
        noteMatch(position, node, common);
        if (common >= m_longestMatch)
            return replace(node, position); // the same text again: the newer position takes the place of the older
        notable = smallestDifference(qMax(kThreshold, common - 1));
    }
}

void MatchTree::hang(quint16 &place, int parent, int position)
{
    place = static_cast<quint16>(position);
    link(m_parent, position) = static_cast<quint16>(parent);
}

/// How many bytes of the two texts are equal, up to the longest match. They stand in the same tree: the first ones are.
int MatchTree::commonLength(const quint8 *key, const quint8 *old) const
{
    for (int i = 1; i < m_longestMatch; i += kWordBytes) {
        const quint64 different = qFromLittleEndian<quint64>(key + i) ^ qFromLittleEndian<quint64>(old + i);
        if (different != 0)
            return qMin(i + static_cast<int>(qCountTrailingZeroBits(different)) / ByteView::kByteBits, m_longestMatch);
    }
    return m_longestMatch;
}

/// @p common is longer than the threshold and at least as long as what was found before.
void MatchTree::noteMatch(int position, int other, int common)
{
    const int distance = ((position - other) & (kRingSize - 1)) - 1;
    if (common > m_matchLength || distance < m_matchPosition)
        m_matchPosition = distance;
    m_matchLength = common;
}

void MatchTree::replace(int old, int position)
{
    link(m_left, position) = link(m_left, old);
    link(m_right, position) = link(m_right, old);
    link(m_parent, link(m_left, old)) = static_cast<quint16>(position);
    link(m_parent, link(m_right, old)) = static_cast<quint16>(position);
    putInPlaceOf(old, position);
}

void MatchTree::remove(int position)
{
    if (link(m_parent, position) == kNone)
        return;
    const quint16 left = link(m_left, position);
    const quint16 right = link(m_right, position);
    quint16 heir = left;
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
    const quint16 parent = link(m_parent, old);
    link(m_parent, position) = parent;
    quint16 &fromRight = link(m_right, parent);
    (fromRight == old ? fromRight : link(m_left, parent)) = static_cast<quint16>(position);
    link(m_parent, old) = kNone;
}
