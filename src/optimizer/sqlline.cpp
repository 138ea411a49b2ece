#include "sqlline.h"

#include "songfiles/cuttext.h"

#include <algorithm>

namespace {

// Widths of the columns in the player's database, in characters.
constexpr int kPathLimit = 250;
constexpr int kTextLimit = 100;
constexpr int kKeyLimit = 50;

constexpr int kUsualLine = 512; ///< characters; a longer line grows

/// Most texts have nothing to be escaped: one look costs less than four replacements.
bool needsEscaping(const QString &text)
{
    return std::any_of(text.cbegin(), text.cend(),
                       [](QChar unit) { return unit == u'\'' || unit == u'\r' || unit == u'\n'; });
}

/// Adds @p value to the values of @p line, after a comma when it is not the first.
void appendValue(QString &line, const QString &value)
{
    line += line.endsWith(QLatin1Char('(')) ? QLatin1String("'") : QLatin1String(",'");
    line += value;
    line += QLatin1Char('\'');
}

void appendFlag(QString &line, bool set)
{
    appendValue(line, set ? QStringLiteral("1") : QStringLiteral("0"));
}

/// A text column, @p fallback standing in for an empty text.
void appendText(QString &line, const QString &text, const QString &fallback)
{
    appendValue(line, sqlEscaped(text.isEmpty() ? fallback : text, kTextLimit));
}

QString pathValue(const QString &path, const Player &player)
{
    return sqlEscaped(player.devicePath(path), kPathLimit);
}

} // namespace

QString sqlEscaped(QString text, int limit)
{
    if (!needsEscaping(text))
        return cutText(text, limit);
    const QLatin1Char blank(' ');
    text.replace(QLatin1String("\r\n"), QLatin1String(" "));
    text.replace(QLatin1Char('\r'), blank);
    text.replace(QLatin1Char('\n'), blank);
    // Deliberate: cut first, so that the doubled quotes may make the value longer than the limit.
    return cutText(text, limit).replace(QLatin1String("'"), QLatin1String("''"));
}

QString insertLine(const SongInfo &info, const QString &path, const Player &player)
{
    const QString fileName = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    const QString unknown = QStringLiteral("<unknown>");
    QString line;
    line.reserve(kUsualLine);
    line +=
        QLatin1String("INSERT INTO songs "
                      "(filename,onlyFilename,title,artist,genre,DriveName,format,author,bpm,[key],marker) VALUES (");
    appendValue(line, pathValue(path, player));
    appendText(line, fileName, QString());
    appendText(line, info.title, fileName);
    appendText(line, info.artist, unknown);
    appendText(line, info.genre, unknown);
    appendValue(line, QString()); // DriveName
    appendFlag(line, info.format == QLatin1String("MP3"));
    appendText(line, info.author, unknown);
    appendValue(line, QString::number(info.userBpm));
    appendValue(line, sqlEscaped(info.key, kKeyLimit));
    appendFlag(line, !info.markers.isEmpty());
    line += QLatin1String(")\n");
    return line;
}

QString deleteLine(const QString &path, const Player &player)
{
    return QLatin1String("DELETE FROM songs WHERE filename='") + pathValue(path, player) + QLatin1String("'\n");
}
