#include "pathset.h"

#include <QHash>

bool operator==(const PathSet::Path &a, const PathSet::Path &b)
{
    return a.text.compare(b.text, Qt::CaseInsensitive) == 0;
}

/// Of the path folded as Qt's case-insensitive comparison folds it: code point by code point, each to a single one.
/// QString::toCaseFolded() would not do: it makes "ß" equal "ss", and two songs would count as one.
uint qHash(const PathSet::Path &path, uint seed)
{
    constexpr uint kFactor = 0x9E3779B1; // odd, its bits without a pattern: near paths get far numbers
    uint hash = seed;
    const QChar *unit = path.text.constData();
    const QChar *const end = unit + path.text.size();
    for (; unit != end; ++unit) {
        uint character = unit->unicode();
        if (unit->isHighSurrogate() && unit + 1 != end && (unit + 1)->isLowSurrogate()) {
            ++unit;
            character = QChar::surrogateToUcs4(*(unit - 1), *unit);
        }
        hash = (hash ^ QChar::toCaseFolded(character)) * kFactor;
        hash ^= hash >> 15;
    }
    return hash;
}

bool PathSet::drop(int most)
{
    auto path = m_paths.begin();
    while (path != m_paths.end() && most-- > 0)
        path = m_paths.erase(path);
    return !m_paths.isEmpty();
}
