#include "judgerules.h"

#include "playerpaths.h"

#include <QRegularExpression>

using PlayerPaths::Kind;

namespace {

const QString kArrow = QStringLiteral(" -> ");
const QString kImportFile = QStringLiteral("CorvinImportDB.sql");

bool isUsersFile(const QString &path)
{
    return !PlayerPaths::isHidden(path) && !PlayerPaths::isPlayersOwn(path);
}

/// Songs that could be played and share the companion's folder and name.
QStringList songsOf(const Outcome &outcome, const QString &companion)
{
    static const char *const kSuffixes[] = {"mp3", "midi", "mid", "mf3", "mf4", "mf5", "kar", "xmp3", "xmid"};
    QStringList songs;
    const QString beginning =
        PlayerPaths::join(PlayerPaths::folderOf(companion), PlayerPaths::stemOf(companion)) + QLatin1Char('.');
    for (auto it = outcome.before.files.lowerBound(beginning);
         it != outcome.before.files.cend() && it.key().startsWith(beginning); ++it) {
        for (const char *suffix : kSuffixes) {
            if (it.key().mid(beginning.size()).compare(QLatin1String(suffix), Qt::CaseInsensitive) == 0)
                songs.append(it.key());
        }
    }
    return songs;
}

bool liesBesideOneOf(const Outcome &outcome, const QString &now, const QStringList &songs)
{
    bool anyPlayable = false;
    for (const QString &song : songs) {
        if (outcome.wasBroken(song) && !PlayerPaths::isOutsideDatabase(song))
            continue;
        const QString songNow = outcome.whereNow(song);
        anyPlayable = anyPlayable || !songNow.isEmpty();
        if (PlayerPaths::folderOf(songNow) == PlayerPaths::folderOf(now) &&
            PlayerPaths::stemOf(songNow) == PlayerPaths::stemOf(now))
            return true;
    }
    return !anyPlayable;
}

void judgeSystemFile(const Outcome &outcome, const QString &path, Verdict &verdict)
{
    if (outcome.before.playlists.contains(path)) {
        if (!outcome.after.files.contains(path))
            verdict.fail(Rules::kSystemUntouched, path + QStringLiteral(" : is gone"));
    } else if (outcome.after.files.value(path).sha1 != outcome.before.files.value(path).sha1 ||
               !outcome.after.files.contains(path)) {
        verdict.fail(Rules::kSystemUntouched, path);
    }
}

/// A name that was taken gets a number before its first dot; one from the root may already have got one there.
bool isNameAfterMove(const QString &before, const QString &now)
{
    const QString name = PlayerPaths::nameOf(before);
    const int dot = name.indexOf(QLatin1Char('.'));
    const QRegularExpression numbered(QLatin1Char('^') + QRegularExpression::escape(name.left(dot)) +
                                      QLatin1String("(_\\d+)*") + QRegularExpression::escape(name.mid(dot)) +
                                      QLatin1Char('$'));
    return numbered.match(PlayerPaths::nameOf(now)).hasMatch();
}

void judgeMedium(const Outcome &outcome, const QString &path, const QString &home, Verdict &verdict)
{
    if (outcome.copiesNow(path) != outcome.copiesBefore(path)) {
        verdict.fail(Rules::kMediaKept, QStringLiteral("%1 : %2 times").arg(path).arg(outcome.copiesNow(path)));
        return;
    }
    const QString now = outcome.whereNow(path);
    if (now.isEmpty())
        return;
    const bool wasHome = PlayerPaths::beginsWithAny(PlayerPaths::folderOf(path), {home});
    const bool right = wasHome ? now == path : PlayerPaths::folderOf(now) == home && isNameAfterMove(path, now);
    if (!right)
        verdict.fail(Rules::kMediaPlace, path + kArrow + now);
}

void judgeFileBefore(const Outcome &outcome, const QString &path, Verdict &verdict)
{
    if (PlayerPaths::isPlayersOwn(path)) {
        judgeSystemFile(outcome, path, verdict);
    } else if (PlayerPaths::isHidden(path)) {
        const bool same = outcome.after.files.value(path).sha1 == outcome.before.files.value(path).sha1;
        if (!same && !outcome.layInBigFolder(path))
            verdict.fail(Rules::kHiddenUntouched, path);
    } else if (PlayerPaths::staysInRoot(path) && path.compare(kImportFile, Qt::CaseInsensitive) != 0) {
        if (outcome.after.files.value(path).sha1 != outcome.before.files.value(path).sha1)
            verdict.fail(Rules::kSystemUntouched, path);
    } else if (PlayerPaths::kindOf(path) == Kind::Image) {
        judgeMedium(outcome, path, QStringLiteral("Images"), verdict);
    } else if (PlayerPaths::kindOf(path) == Kind::Video) {
        judgeMedium(outcome, path, QStringLiteral("Videos"), verdict);
    }
}

void judgeFileAfter(const Outcome &outcome, const QString &path, Verdict &verdict)
{
    if (PlayerPaths::isPlayersOwn(path)) {
        if (!outcome.before.files.contains(path))
            verdict.fail(Rules::kSystemUntouched, path + QStringLiteral(" : is new"));
        return;
    }
    if (PlayerPaths::isHidden(path)) {
        if (!outcome.before.files.contains(path))
            verdict.fail(Rules::kHiddenUntouched, path + QStringLiteral(" : is new"));
        return;
    }
    if (PlayerPaths::staysInRoot(path))
        return;
    if (PlayerPaths::folderOf(path).isEmpty())
        verdict.fail(Rules::kRootTidy, path);
    if (PlayerPaths::kindOf(path) == Kind::Unsupported)
        verdict.fail(Rules::kUnsupportedGone, path);
    if (!outcome.wasThere(path))
        verdict.fail(Rules::kNothingNew, path);
}

} // namespace

void judgeCompanions(const Outcome &outcome, Verdict &verdict)
{
    for (auto it = outcome.before.files.cbegin(); it != outcome.before.files.cend(); ++it) {
        const QString &path = it.key();
        if (PlayerPaths::kindOf(path) != Kind::Companion || !isUsersFile(path))
            continue;
        const QStringList songs = songsOf(outcome, path);
        // Deliberate: what belongs to no song goes with the old folder when a big folder is split.
        if (songs.isEmpty() && outcome.layInBigFolder(path))
            continue;
        const QString now = outcome.whereNow(path);
        const bool fromRoot = PlayerPaths::folderOf(path).isEmpty();
        if (outcome.copiesNow(path) != outcome.copiesBefore(path))
            verdict.fail(Rules::kCompanionKept, QStringLiteral("%1 : %2 times").arg(path).arg(outcome.copiesNow(path)));
        else if (!now.isEmpty() && !fromRoot && !liesBesideOneOf(outcome, now, songs))
            verdict.fail(Rules::kCompanionBeside, path + kArrow + now);
    }
}

void judgeOtherFiles(const Outcome &outcome, Verdict &verdict)
{
    for (auto it = outcome.before.files.cbegin(); it != outcome.before.files.cend(); ++it)
        judgeFileBefore(outcome, it.key(), verdict);
    for (auto it = outcome.after.files.cbegin(); it != outcome.after.files.cend(); ++it)
        judgeFileAfter(outcome, it.key(), verdict);
}
