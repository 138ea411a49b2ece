#include "judgerules.h"

#include "playerpaths.h"

#include <QHash>
#include <QRegularExpression>

namespace {

const QString kMySongs = QStringLiteral("My Songs");

QString numbered(const QString &name, int number)
{
    return QStringLiteral("%1_%2.%3").arg(PlayerPaths::stemOf(name)).arg(number).arg(PlayerPaths::suffixOf(name));
}

/// Where each loose file of the root goes first: to My Songs, under the next free number when its name is taken there.
QHash<QString, QString> newPlaces(const Snapshot &before)
{
    QSet<QString> taken;
    QStringList loose;
    for (auto it = before.files.cbegin(); it != before.files.cend(); ++it) {
        const QString folder = PlayerPaths::folderOf(it.key());
        if (folder == kMySongs)
            taken.insert(PlayerPaths::nameOf(it.key()));
        else if (folder.isEmpty() && !PlayerPaths::staysInRoot(it.key()) && !PlayerPaths::isHidden(it.key()))
            loose.append(it.key());
    }
    QHash<QString, QString> places;
    for (const QString &name : loose) {
        QString free = name;
        for (int number = 1; taken.contains(free); ++number)
            free = numbered(name, number);
        taken.insert(free);
        places.insert(name, PlayerPaths::join(kMySongs, free));
    }
    return places;
}

/// The line as it must stand afterwards, its end included.
QByteArray expectedLine(const QByteArray &line, const QHash<QString, QString> &places)
{
    static const QRegularExpression kEntry(QStringLiteral("^([^\\^]+)(\\^\\d{1,5}\\^\\d{1,5}\\b.*)$"),
                                           QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = kEntry.match(QString::fromUtf8(line));
    if (!match.hasMatch())
        return line;
    const QString path = PlayerPaths::fromDevice(match.captured(1));
    if (!places.contains(path))
        return line;
    return (PlayerPaths::toDevice(places.value(path)) + match.captured(2)).toUtf8();
}

/// Lines with their ends, the last perhaps without one.
QList<QByteArray> linesOf(const QByteArray &text)
{
    QList<QByteArray> lines;
    for (int from = 0; from < text.size();) {
        const int end = text.indexOf('\n', from);
        const int next = end < 0 ? text.size() : end + 1;
        lines.append(text.mid(from, next - from));
        from = next;
    }
    return lines;
}

} // namespace

void judgePlaylists(const Outcome &outcome, Verdict &verdict)
{
    const QHash<QString, QString> places = newPlaces(outcome.before);
    for (auto it = outcome.before.playlists.cbegin(); it != outcome.before.playlists.cend(); ++it) {
        const QList<QByteArray> before = linesOf(it.value());
        const QList<QByteArray> after = linesOf(outcome.after.playlists.value(it.key()));
        if (before.size() != after.size()) {
            verdict.fail(Rules::kPlaylists,
                         QStringLiteral("%1 : %2 lines, now %3").arg(it.key()).arg(before.size()).arg(after.size()));
            continue;
        }
        for (int i = 0; i < before.size(); ++i) {
            if (after.at(i) != expectedLine(before.at(i), places))
                verdict.fail(Rules::kPlaylists, QStringLiteral("%1, line %2 : \"%3\" -> \"%4\"")
                                                    .arg(it.key())
                                                    .arg(i + 1)
                                                    .arg(QString::fromUtf8(before.at(i)).trimmed(),
                                                         QString::fromUtf8(after.at(i)).trimmed()));
        }
    }
}
