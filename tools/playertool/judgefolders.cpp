#include "judgerules.h"

#include "playerpaths.h"

#include <QRegularExpression>

namespace {

bool isMadeByTheSplit(const Outcome &outcome, const QString &folder)
{
    static const QRegularExpression kSubFolder(QStringLiteral("^.\\d+$"));
    return outcome.bigFolders().contains(PlayerPaths::folderOf(folder)) &&
           kSubFolder.match(PlayerPaths::nameOf(folder)).hasMatch();
}

/// Sub-folders that songs of the split folder moved into, with all visible files they hold now.
QHash<QString, int> filledSubFolders(const Outcome &outcome)
{
    QHash<QString, int> filled;
    QHash<QString, int> files;
    for (auto it = outcome.after.files.cbegin(); it != outcome.after.files.cend(); ++it) {
        const QString &path = it.key();
        if (PlayerPaths::isHidden(path))
            continue;
        const QString folder = PlayerPaths::folderOf(path);
        ++files[folder];
        if (isMadeByTheSplit(outcome, folder) &&
            PlayerPaths::folderOf(outcome.whereBefore(path)) == PlayerPaths::folderOf(folder))
            filled.insert(folder, 0);
    }
    for (auto it = filled.begin(); it != filled.end(); ++it)
        it.value() = files.value(it.key());
    return filled;
}

} // namespace

void judgeFolders(const Outcome &outcome, Verdict &verdict)
{
    static const QStringList kOfTheProgram = {QStringLiteral("My Songs"), QStringLiteral("Images"),
                                              QStringLiteral("Videos")};
    const auto tooMany = [&](const QHash<QString, int> &counts, int most) {
        for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
            if (it.value() > most)
                verdict.fail(Rules::kFolderSize, QStringLiteral("%1 : %2 files").arg(it.key()).arg(it.value()));
        }
    };
    tooMany(Outcome::countedFiles(outcome.after, false), kMostFilesInAFolder);
    tooMany(filledSubFolders(outcome), kMostFilesInASubFolder);
    for (const QString &folder : outcome.before.folders) {
        if (!outcome.after.folders.contains(folder) && !PlayerPaths::isHidden(folder))
            verdict.fail(Rules::kFolders, folder + QStringLiteral(" : is gone"));
    }
    for (const QString &folder : outcome.after.folders) {
        if (!outcome.before.folders.contains(folder) && !kOfTheProgram.contains(folder) &&
            !isMadeByTheSplit(outcome, folder))
            verdict.fail(Rules::kFolders, folder + QStringLiteral(" : is new"));
    }
}
