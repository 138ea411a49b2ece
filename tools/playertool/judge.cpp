#include "judge.h"

#include "judgerules.h"

#include <QMap>

namespace Rules {
const QString kSongKept = QStringLiteral("Every playable song is still there once, byte by byte");
const QString kSongPlace =
    QStringLiteral("Every song lies in its folder, or in a sub-folder when the folder was split");
const QString kSongInitial = QStringLiteral("Every song of a split folder lies under the initial of its title");
const QString kSongName = QStringLiteral("Every song keeps its name but for what has to be repaired");
const QString kBrokenGone = QStringLiteral("Broken songs are gone where the database looks, and only there");
const QString kCompanionKept = QStringLiteral("Every companion is still there once, byte by byte");
const QString kCompanionBeside = QStringLiteral("Every companion lies beside its song under the same name");
const QString kSystemUntouched = QStringLiteral("The player's own files are as they were");
const QString kMediaKept = QStringLiteral("Every image and video is still there once, byte by byte");
const QString kMediaPlace = QStringLiteral("Images and videos lie in Images and Videos, each under its name");
const QString kUnsupportedGone = QStringLiteral("No unsupported file is left");
const QString kRootTidy = QStringLiteral("The root holds nothing but what belongs there");
const QString kHiddenUntouched = QStringLiteral("Hidden files are as they were");
const QString kFolderSize = QStringLiteral("No folder holds more than it may");
const QString kFolders = QStringLiteral("No folder came or went but for the splitting");
const QString kNothingNew = QStringLiteral("No file has a content that was not there before");
const QString kPlaylists =
    QStringLiteral("Playlists name moved root files at their new place, else they are as they were");
const QString kImportForm =
    QStringLiteral("The import file is UTF-8 without mark, one known statement a line, LF alone");
const QString kImportRuns = QStringLiteral("A database takes every statement of the import file");
const QString kImportRows = QStringLiteral("With the import file applied, the database names what is on the disk");
const QString kImportValues = QStringLiteral("Every inserted row says what the song says");
} // namespace Rules

Verdict judge(const Snapshot &before, const QString &root, const Manifest &manifest)
{
    const QString base = root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/');
    const Outcome outcome(before, Snapshot::take(base), manifest);
    Verdict verdict;
    if (manifest.isEmpty())
        verdict.notes.append(
            QStringLiteral("No manifest: texts, initials and the way of broken songs are not judged."));
    judgeSongs(outcome, base, verdict);
    judgeCompanions(outcome, verdict);
    judgeOtherFiles(outcome, verdict);
    judgeFolders(outcome, verdict);
    judgePlaylists(outcome, verdict);
    judgeImport(outcome, base, verdict);
    return verdict;
}

QString verdictText(const Verdict &verdict)
{
    constexpr int kShown = 10;
    QMap<QString, QStringList> byRule;
    for (const Failure &failure : verdict.failures)
        byRule[failure.rule].append(failure.detail);
    QString text;
    for (auto it = byRule.cbegin(); it != byRule.cend(); ++it) {
        text += QStringLiteral("FAILED (%1): %2\n").arg(it->size()).arg(it.key());
        for (const QString &detail : it->mid(0, kShown))
            text += QStringLiteral("    %1\n").arg(detail);
        if (it->size() > kShown)
            text += QStringLiteral("    and %1 more\n").arg(it->size() - kShown);
    }
    for (const QString &note : verdict.notes)
        text += QStringLiteral("NOTE: %1\n").arg(note);
    if (verdict.isRight())
        return text + QStringLiteral("RIGHT: what stands on the disk is what an optimisation must leave.\n");
    return text +
           QStringLiteral("WRONG: %1 findings against %2 rules.\n").arg(verdict.failures.size()).arg(byRule.size());
}
