#pragma once

#include "support/testing.h"

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

inline bool operator==(const Token &a, const Token &b)
{
    return a.length == b.length && a.position == b.position && a.byte == b.byte;
}

/// The tokens in @p bits that stand for @p size bytes, and these bytes in @p data.
QVector<Token> decode(const QByteArray &bits, int size, int lookAhead, QByteArray &data);

/// The tokens that the published encoder writes for @p data.
QVector<Token> chooseMatches(const QByteArray &data, int lookAhead);

} // namespace PublishedLzHuff
