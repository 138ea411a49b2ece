#include "pathset.h"

namespace {

/// @p path folded as Qt's case-insensitive comparison folds it: code point by code point, each to a single one.
/// QString::toCaseFolded() would not do: it makes "ß" equal "ss", and two songs would count as one.
QString folded(QString path)
{
    QChar *unit = path.data();
    const QChar *const end = unit + path.size();
    for (; unit != end; ++unit) {
        if (!unit->isHighSurrogate() || unit + 1 == end || !(unit + 1)->isLowSurrogate()) {
            *unit = unit->toCaseFolded();
            continue;
        }
        const uint character = QChar::toCaseFolded(QChar::surrogateToUcs4(*unit, *(unit + 1)));
        *unit = QChar(QChar::highSurrogate(character));
        *++unit = QChar(QChar::lowSurrogate(character));
    }
    return path;
}

} // namespace

void PathSet::insert(const QString &path)
{
    m_folded.insert(folded(path));
}

bool PathSet::contains(const QString &path) const
{
    return m_folded.contains(folded(path));
}
