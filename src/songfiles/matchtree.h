#pragma once

#include <QtGlobal>
#include <vector>

/// Finds earlier occurrences of the text at a place of the ring buffer: 256 binary search trees, one for each first
/// byte, whose nodes are ring positions ordered by the text that starts there.
class MatchTree
{
public:
    static constexpr int kRingSize = 4096; ///< bytes, and the number of places a text can begin at

    static constexpr int kThreshold = 2; ///< a match must be longer to count

    static constexpr int kWordBytes = 8;               ///< texts are compared so many bytes at a time
    static constexpr int kSpareBytes = kWordBytes - 1; ///< behind the ring, of any value: a comparison may reach there

    /// Searches in @p ring, which must outlive the tree and holds kRingSize bytes, as many behind them, a copy of the
    /// first, as the longest match takes less one, and kSpareBytes.
    explicit MatchTree(const std::vector<quint8> &ring);

    /// Empties the trees; from now on matches are at most @p longestMatch bytes long.
    void start(int longestMatch);

    /// Enters the text at @p position into its tree. matchLength and matchPosition then tell the longest match met on
    /// the way: which one is met depends on the shape of the tree, so the walk must stay exactly as it is.
    void insert(int position);

    /// Takes the text at @p position out of its tree; nothing happens when it is in none.
    void remove(int position);

    /// Length in bytes of the match found by the last insert; 0 when none was longer than the threshold.
    int matchLength() const { return m_matchLength; }
    /// How far the match starts before the inserted position, less one.
    int matchPosition() const { return m_matchPosition; }

private:
    using Links = std::vector<quint16>;

    int commonLength(const quint8 *key, const quint8 *old) const;
    void hang(quint16 &place, int parent, int position);
    void noteMatch(int position, int other, int common);
    void replace(int old, int position);
    void putInPlaceOf(int old, int position);
    quint16 &link(Links &links, int node) { return links[static_cast<std::size_t>(node)]; }

    const std::vector<quint8> &m_ring;
    int m_longestMatch = 0;
    int m_matchLength = 0;
    int m_matchPosition = 0;
    Links m_left;
    Links m_right; ///< behind the positions: the roots of the 256 trees
    Links m_parent;
};
