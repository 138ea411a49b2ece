#include "titleinitial.h"

namespace {

constexpr QLatin1Char kOther('#');
constexpr ushort kLastAscii = 0x7F;

bool isAsciiLetterOrDigit(QChar c)
{
    return (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) || (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
           (c >= QLatin1Char('0') && c <= QLatin1Char('9'));
}

bool canBeInitial(QChar c)
{
    return c.unicode() <= kLastAscii ? isAsciiLetterOrDigit(c) : c.isLetterOrNumber();
}

bool isPassedOver(QChar c)
{
    return c == QLatin1Char('\'') || c == QLatin1Char('(') || c == QLatin1Char('"');
}

/// @p c without accents and other decoration.
QChar plain(QChar c)
{
    const QChar first = QString(c).normalized(QString::NormalizationForm_KD).at(0);
    // A few ideographs decompose into a character of two units; half of it names no folder, and no song could be
    // moved there.
    return first.isSurrogate() ? QChar(kOther) : first;
}

} // namespace

QChar titleInitial(const QString &title)
{
    const QChar first = title.isEmpty() ? QChar() : title.at(0).toUpper();
    if (canBeInitial(first))
        return plain(first);
    if (title.size() < 2 || !isPassedOver(first))
        return kOther;
    const QChar second = title.at(1).toUpper();
    return canBeInitial(second) ? plain(second) : QChar(kOther);
}

QString foldedTitle(const QString &title)
{
    return title.toUpper();
}
