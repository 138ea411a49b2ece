#include "plainlzhuff.h"

namespace {

/// The prefix code of the upper six bits of a position: its length, and its bits in the upper part of a byte.
struct UpperCode
{
    int length;
    unsigned code;
};

UpperCode upperCode(int upper)
{
    static const int kCodesOfLength[] = {1, 3, 8, 12, 24, 16};
    unsigned code = 0;
    int length = 3;
    for (const int codes : kCodesOfLength) {
        const unsigned step = 1U << (8 - length);
        if (upper < codes)
            return {length, code + static_cast<unsigned>(upper) * step};
        code += static_cast<unsigned>(codes) * step;
        upper -= codes;
        ++length;
    }
    return {8, 0};
}

} // namespace

void PlainLzHuff::startTree()
{
    for (int i = kRing + 1; i <= kRing + 256; ++i)
        m_right[i] = kNone;
    for (int i = 0; i < kRing; ++i)
        m_parent[i] = kNone;
}

void PlainLzHuff::insertNode(int place)
{
    int order = 1;
    const unsigned char *key = &m_text[place];
    int node = kRing + 1 + key[0];
    m_right[place] = m_left[place] = kNone;
    m_matchLength = 0;
    for (;;) {
        int &next = order >= 0 ? m_right[node] : m_left[node];
        if (next == kNone) {
            next = place;
            m_parent[place] = node;
            return;
        }
        node = next;
        int equal = 1;
        for (; equal < kLookAhead; ++equal) {
            order = key[equal] - m_text[node + equal];
            if (order != 0)
                break;
        }
        if (equal > kThreshold) {
            const int distance = ((place - node) & (kRing - 1)) - 1;
            if (equal > m_matchLength) {
                m_matchPosition = distance;
                m_matchLength = equal;
                if (m_matchLength >= kLookAhead)
                    break;
            } else if (equal == m_matchLength && distance < m_matchPosition) {
                m_matchPosition = distance;
            }
        }
    }
    m_parent[place] = m_parent[node];
    m_left[place] = m_left[node];
    m_right[place] = m_right[node];
    m_parent[m_left[node]] = place;
    m_parent[m_right[node]] = place;
    if (m_right[m_parent[node]] == node)
        m_right[m_parent[node]] = place;
    else
        m_left[m_parent[node]] = place;
    m_parent[node] = kNone;
}

void PlainLzHuff::deleteNode(int place)
{
    if (m_parent[place] == kNone)
        return;
    int heir;
    if (m_right[place] == kNone) {
        heir = m_left[place];
    } else if (m_left[place] == kNone) {
        heir = m_right[place];
    } else {
        heir = m_left[place];
        if (m_right[heir] != kNone) {
            do {
                heir = m_right[heir];
            } while (m_right[heir] != kNone);
            m_right[m_parent[heir]] = m_left[heir];
            m_parent[m_left[heir]] = m_parent[heir];
            m_left[heir] = m_left[place];
            m_parent[m_left[place]] = heir;
        }
        m_right[heir] = m_right[place];
        m_parent[m_right[place]] = heir;
    }
    m_parent[heir] = m_parent[place];
    if (m_right[m_parent[place]] == place)
        m_right[m_parent[place]] = heir;
    else
        m_left[m_parent[place]] = heir;
    m_parent[place] = kNone;
}

void PlainLzHuff::startHuffman()
{
    for (int i = 0; i < kSymbols; ++i) {
        m_frequency[i] = 1;
        m_son[i] = i + kTableSize;
        m_up[i + kTableSize] = i;
    }
    for (int i = 0, j = kSymbols; j <= kRoot; i += 2, ++j) {
        m_frequency[j] = m_frequency[i] + m_frequency[i + 1];
        m_son[j] = i;
        m_up[i] = m_up[i + 1] = j;
    }
    m_frequency[kTableSize] = 0xFFFF;
    m_up[kRoot] = 0;
}

void PlainLzHuff::rebuild()
{
    int leaves = 0;
    for (int i = 0; i < kTableSize; ++i) {
        if (m_son[i] >= kTableSize) {
            m_frequency[leaves] = (m_frequency[i] + 1) / 2;
            m_son[leaves] = m_son[i];
            ++leaves;
        }
    }
    for (int i = 0, j = kSymbols; j < kTableSize; i += 2, ++j) {
        const unsigned frequency = m_frequency[i] + m_frequency[i + 1];
        int k = j - 1;
        while (frequency < m_frequency[k])
            --k;
        ++k;
        for (int moved = j; moved > k; --moved) {
            m_frequency[moved] = m_frequency[moved - 1];
            m_son[moved] = m_son[moved - 1];
        }
        m_frequency[k] = frequency;
        m_son[k] = i;
    }
    for (int i = 0; i < kTableSize; ++i) {
        const int son = m_son[i];
        m_up[son] = i;
        if (son < kTableSize)
            m_up[son + 1] = i;
    }
}

void PlainLzHuff::update(int symbol)
{
    if (m_frequency[kRoot] == kMostFrequency)
        rebuild();
    int node = m_up[symbol + kTableSize];
    do {
        const unsigned frequency = ++m_frequency[node];
        int other = node + 1;
        if (frequency > m_frequency[other]) {
            while (frequency > m_frequency[other + 1])
                ++other;
            m_frequency[node] = m_frequency[other];
            m_frequency[other] = frequency;
            const int son = m_son[node];
            m_up[son] = other;
            if (son < kTableSize)
                m_up[son + 1] = other;
            const int otherSon = m_son[other];
            m_son[other] = son;
            m_up[otherSon] = node;
            if (otherSon < kTableSize)
                m_up[otherSon + 1] = node;
            m_son[node] = otherSon;
            node = other;
        }
        node = m_up[node];
    } while (node != 0);
}

void PlainLzHuff::putCode(int length, unsigned code)
{
    // The bits stand at the upper end of 16.
    m_putBuffer |= code >> m_putLength;
    m_putLength += length;
    if (m_putLength >= 8) {
        m_output.append(static_cast<char>(m_putBuffer >> 8));
        m_putLength -= 8;
        if (m_putLength >= 8) {
            m_output.append(static_cast<char>(m_putBuffer));
            m_putLength -= 8;
            m_putBuffer = (code << (length - m_putLength)) & 0xFFFF;
        } else {
            m_putBuffer = (m_putBuffer << 8) & 0xFFFF;
        }
    }
}

void PlainLzHuff::encodeSymbol(int symbol)
{
    unsigned code = 0;
    int length = 0;
    for (int node = m_up[symbol + kTableSize]; node != kRoot; node = m_up[node]) {
        code >>= 1;
        if (node & 1)
            code += 0x8000;
        ++length;
    }
    putCode(length, code);
    update(symbol);
}

void PlainLzHuff::encodePosition(int position)
{
    const UpperCode upper = upperCode(position >> 6);
    putCode(upper.length, upper.code << 8);
    putCode(6, (static_cast<unsigned>(position) & 0x3F) << 10);
}

QByteArray PlainLzHuff::encode(const QByteArray &input)
{
    m_output.clear();
    m_putBuffer = 0;
    m_putLength = 0;
    startHuffman();
    startTree();
    int oldest = 0;
    int place = kRing - kLookAhead;
    for (int i = 0; i < place; ++i)
        m_text[i] = ' ';
    int next = 0;
    int length = 0;
    for (; length < kLookAhead && next < input.size(); ++length)
        m_text[place + length] = static_cast<unsigned char>(input.at(next++));
    for (int i = length; i < kLookAhead; ++i)
        m_text[place + i] = 0;
    for (int i = 1; i <= kLookAhead; ++i)
        insertNode(place - i);
    insertNode(place);
    while (length > 0) {
        if (m_matchLength > length)
            m_matchLength = length;
        if (m_matchLength <= kThreshold) {
            m_matchLength = 1;
            encodeSymbol(m_text[place]);
        } else {
            encodeSymbol(255 - kThreshold + m_matchLength);
            encodePosition(m_matchPosition);
        }
        const int coded = m_matchLength;
        for (int i = 0; i < coded; ++i) {
            deleteNode(oldest);
            if (next < input.size()) {
                const auto byte = static_cast<unsigned char>(input.at(next++));
                m_text[oldest] = byte;
                if (oldest < kLookAhead - 1)
                    m_text[oldest + kRing] = byte;
            } else {
                --length;
            }
            oldest = (oldest + 1) & (kRing - 1);
            place = (place + 1) & (kRing - 1);
            if (length > 0)
                insertNode(place);
        }
    }
    if (m_putLength > 0)
        m_output.append(static_cast<char>(m_putBuffer >> 8));
    return m_output;
}
