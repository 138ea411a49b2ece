#include "longname.h"

#include "songfiles/cuttext.h"

#include <QFileInfo>

#include <algorithm>

namespace {

// What the player can open, in bytes, and what an over-long name is cut to: a little less, so that a number fits in.
constexpr int kLongestPath = 245;
constexpr int kLongestName = 95;
constexpr int kCutPath = 240;
constexpr int kCutName = 90;
// A path that is this much longer than its name is cut by its own length, any other by the length of the name.
constexpr int kPathMargin = 250;
constexpr int kNameMargin = 100;

/// Every local encoding writes a character of ASCII as one byte: there is nothing to convert then.
int localBytes(const QString &text)
{
    const bool ascii = std::all_of(text.cbegin(), text.cend(), [](QChar unit) { return unit < u'\x80'; });
    return ascii ? text.size() : text.toLocal8Bit().size();
}

/// Where the file name begins in a full path.
int nameStart(const QString &path)
{
    return path.lastIndexOf(QLatin1Char('/')) + 1;
}

} // namespace

QString withoutMidiSuffixEnd(const QString &path)
{
    return path.endsWith(QLatin1String(".midi"), Qt::CaseInsensitive) ? path.left(path.size() - 1) : path;
}

bool isPathTooLong(int pathBytes, int nameBytes)
{
    return pathBytes > kLongestPath || nameBytes > kLongestName;
}

bool isPathTooLong(const QString &path)
{
    return isPathTooLong(localBytes(path), localBytes(path.mid(nameStart(path))));
}

int charactersToCut(int pathBytes, int nameBytes)
{
    return pathBytes - kPathMargin <= nameBytes - kNameMargin ? nameBytes - kCutName : pathBytes - kCutPath;
}

std::optional<QString> shortenedPath(const QString &path)
{
    const int start = nameStart(path);
    const QFileInfo name(path.mid(start));
    const int nameBytes = localBytes(name.fileName());
    // Deliberate: the lengths are counted in bytes, and as many characters are cut.
    const int cut = charactersToCut(localBytes(path), nameBytes);
    if (cut >= nameBytes)
        return std::nullopt;

    const QString base = name.completeBaseName();
    const QString front = path.left(start) + cutText(base, qMax(0, base.size() - cut)) + QLatin1Char('(');
    const QString back = QLatin1String(").") + name.suffix();
    for (int number = 0;; ++number) {
        const QString candidate = front + QString::number(number) + back;
        if (!QFileInfo::exists(candidate))
            return candidate;
    }
}

QString pathWithoutSuffix(const QString &path)
{
    const int start = nameStart(path);
    return path.left(start) + QFileInfo(path.mid(start)).completeBaseName();
}
