#pragma once

#include <QString>

/// The first @p characters characters (UTF-16 units) of @p text, one fewer where the cut would leave half a surrogate
/// pair; none when the number is negative. A text that is not longer comes back as it is.
inline QString cutText(const QString &text, int characters)
{
    if (text.size() <= characters)
        return text;
    const bool splitsPair = characters > 0 && text.at(characters - 1).isHighSurrogate();
    return text.left(qMax(0, splitsPair ? characters - 1 : characters));
}
