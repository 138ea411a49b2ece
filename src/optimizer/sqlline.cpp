#include "sqlline.h"

#include "songfiles/cuttext.h"

#include <QStringList>

namespace {

// Widths of the columns in the player's database, in characters.
constexpr int kPathLimit = 250;
constexpr int kTextLimit = 100;
constexpr int kKeyLimit = 50;

QString quoted(const QString &value)
{
    return QLatin1Char('\'') + value + QLatin1Char('\'');
}

QString flag(bool set)
{
    return quoted(set ? QStringLiteral("1") : QStringLiteral("0"));
}

QString pathValue(const QString &path, const Player &player)
{
    return quoted(sqlEscaped(player.devicePath(path), kPathLimit));
}

/// A text column, @p fallback standing in for an empty text.
QString textValue(const QString &text, const QString &fallback)
{
    return quoted(sqlEscaped(text.isEmpty() ? fallback : text, kTextLimit));
}

} // namespace

QString sqlEscaped(QString text, int limit)
{
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
    const QStringList values = {
        pathValue(path, player),
        textValue(fileName, QString()),
        textValue(info.title, fileName),
        textValue(info.artist, unknown),
        textValue(info.genre, unknown),
        quoted(QString()), // DriveName
        flag(info.format == QLatin1String("MP3")),
        textValue(info.author, unknown),
        quoted(QString::number(info.userBpm)),
        quoted(sqlEscaped(info.key, kKeyLimit)),
        flag(!info.markers.isEmpty()),
    };
    return QLatin1String(
               "INSERT INTO songs "
               "(filename,onlyFilename,title,artist,genre,DriveName,format,author,bpm,[key],marker) VALUES (") +
           values.join(QLatin1Char(',')) + QLatin1String(")\n");
}

QString deleteLine(const QString &path, const Player &player)
{
    return QLatin1String("DELETE FROM songs WHERE filename=") + pathValue(path, player) + QLatin1Char('\n');
}
