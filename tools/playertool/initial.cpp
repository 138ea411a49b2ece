#include "initial.h"

namespace {

const QChar kOther = QLatin1Char('#');

bool isAsciiWord(ushort code)
{
    return (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
}

bool canLead(QChar c)
{
    constexpr ushort kLastAscii = 0x7F;
    return c.unicode() > kLastAscii ? c.isLetterOrNumber() : isAsciiWord(c.unicode());
}

bool mayOpenATitle(QChar c)
{
    return c == QLatin1Char('\'') || c == QLatin1Char('(') || c == QLatin1Char('"');
}

} // namespace

QChar initialOfTitle(const QString &title)
{
    if (title.isEmpty())
        return kOther;
    QChar c = title.at(0).toUpper();
    if (!canLead(c)) {
        if (title.size() < 2 || !mayOpenATitle(c))
            return kOther;
        c = title.at(1).toUpper();
        if (!canLead(c))
            return kOther;
    }
    return QString(c).normalized(QString::NormalizationForm_KD).at(0);
}
