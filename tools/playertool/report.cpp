#include "report.h"

#include "outcome.h"
#include "playerpaths.h"

#include <QFile>

namespace {

constexpr int kShown = 12;

QString listText(const QString &heading, const QStringList &lines)
{
    QString text = QStringLiteral("%1: %2\n").arg(heading).arg(lines.size());
    for (const QString &line : lines.mid(0, kShown))
        text += QStringLiteral("    %1\n").arg(line);
    if (lines.size() > kShown)
        text += QStringLiteral("    and %1 more\n").arg(lines.size() - kShown);
    return text;
}

/// Where the files of one folder went when it was split.
struct SubFolder
{
    int songs = 0;
    int files = 0;
};

struct Changes
{
    QStringList removed;
    QStringList moved;
    QStringList renamed;
    QMap<QString, QMap<QString, SubFolder>> split;
};

Changes changesOf(const Outcome &outcome)
{
    Changes changes;
    for (auto it = outcome.before.files.cbegin(); it != outcome.before.files.cend(); ++it) {
        const QString &path = it.key();
        const QString now = outcome.whereNow(path);
        const QString line = path + QStringLiteral(" -> ") + now;
        if (outcome.after.files.contains(path) && (now == path || now.isEmpty()))
            continue;
        const QString folder = Outcome::folderAfterCleanUp(path);
        if (now.isEmpty() && outcome.copiesNow(path) == 0)
            changes.removed.append(path);
        else if (PlayerPaths::folderOf(now) == PlayerPaths::folderOf(path))
            changes.renamed.append(line);
        else if (PlayerPaths::folderOf(PlayerPaths::folderOf(now)) == folder && outcome.bigFolders().contains(folder)) {
            SubFolder &sub = changes.split[folder][PlayerPaths::nameOf(PlayerPaths::folderOf(now))];
            ++sub.files;
            sub.songs += PlayerPaths::kindOf(now) == PlayerPaths::Kind::Song ? 1 : 0;
            if (PlayerPaths::nameOf(now) != PlayerPaths::nameOf(path))
                changes.renamed.append(line);
        } else
            changes.moved.append(line);
    }
    return changes;
}

QString splitText(const Changes &changes)
{
    QString text = QStringLiteral("Folders split: %1\n").arg(changes.split.size());
    for (auto folder = changes.split.cbegin(); folder != changes.split.cend(); ++folder) {
        QStringList subs;
        for (auto sub = folder->cbegin(); sub != folder->cend(); ++sub)
            subs.append(QStringLiteral("%1 %2 (%3)").arg(sub.key()).arg(sub->songs).arg(sub->files));
        text += QStringLiteral("    %1, into sub-folders with songs (with companions): %2\n")
                    .arg(folder.key(), subs.join(QStringLiteral(", ")));
    }
    return text;
}

QString playlistsText(const Outcome &outcome)
{
    QStringList lines;
    for (auto it = outcome.before.playlists.cbegin(); it != outcome.before.playlists.cend(); ++it) {
        const QList<QByteArray> before = it->split('\n');
        const QList<QByteArray> after = outcome.after.playlists.value(it.key()).split('\n');
        int changed = qAbs(before.size() - after.size());
        for (int i = 0; i < qMin(before.size(), after.size()); ++i)
            changed += before.at(i) != after.at(i) ? 1 : 0;
        if (changed > 0)
            lines.append(QStringLiteral("%1 : %2 of %3 lines").arg(it.key()).arg(changed).arg(before.size()));
    }
    return listText(QStringLiteral("Playlists rewritten"), lines);
}

QString importText(const QString &root)
{
    constexpr int kLines = 5;
    QFile file(root + QStringLiteral("/CorvinImportDB.sql"));
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("CorvinImportDB.sql: none\n");
    int inserts = 0;
    int deletes = 0;
    QString first;
    for (int i = 0; !file.atEnd(); ++i) {
        const QByteArray line = file.readLine();
        inserts += line.startsWith("INSERT INTO ") ? 1 : 0;
        deletes += line.startsWith("DELETE FROM songs WHERE ") ? 1 : 0;
        if (i < kLines)
            first += QStringLiteral("    ") + QString::fromUtf8(line);
    }
    return QStringLiteral("CorvinImportDB.sql: %1 INSERT, %2 DELETE; it begins\n").arg(inserts).arg(deletes) + first;
}

} // namespace

QString changesText(const Snapshot &before, const QString &root)
{
    const Outcome outcome(before, Snapshot::take(root), Manifest());
    const Changes changes = changesOf(outcome);
    return QStringLiteral("Files before: %1, now: %2\n").arg(before.files.size()).arg(outcome.after.files.size()) +
           listText(QStringLiteral("Removed"), changes.removed) + listText(QStringLiteral("Moved"), changes.moved) +
           listText(QStringLiteral("Renamed"), changes.renamed) + splitText(changes) + playlistsText(outcome) +
           importText(root);
}
