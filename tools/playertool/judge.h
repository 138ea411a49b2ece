#pragma once

#include "manifest.h"
#include "snapshot.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// One rule that the disk does not keep, and where.
struct Failure
{
    QString rule;   ///< one of the sentences in namespace Rules
    QString detail; ///< paths and values
};

/// What the judge found.
struct Verdict
{
    QVector<Failure> failures;
    QStringList notes; ///< what could not be judged, and why

    bool isRight() const { return failures.isEmpty(); }
    void fail(const QString &rule, const QString &detail) { failures.append({rule, detail}); }
};

/// The rules, as they are printed.
namespace Rules {
extern const QString kSongKept;
extern const QString kSongPlace;
extern const QString kSongInitial;
extern const QString kSongName;
extern const QString kBrokenGone;
extern const QString kCompanionKept;
extern const QString kCompanionBeside;
extern const QString kSystemUntouched;
extern const QString kMediaKept;
extern const QString kMediaPlace;
extern const QString kUnsupportedGone;
extern const QString kRootTidy;
extern const QString kHiddenUntouched;
extern const QString kFolderSize;
extern const QString kFolders;
extern const QString kNothingNew;
extern const QString kPlaylists;
extern const QString kImportForm;
extern const QString kImportRuns;
extern const QString kImportRows;
extern const QString kImportValues;
} // namespace Rules

/// Whether what now lies below @p root is what a complete optimisation must have made of the disk in @p before. The
/// songs' true texts come from @p manifest; without one (empty) they are not judged, and the verdict says so. Needs a
/// QCoreApplication, for the database driver.
Verdict judge(const Snapshot &before, const QString &root, const Manifest &manifest = Manifest());

/// The verdict as lines for a person: each failed rule with its first cases, the notes, and a last line that begins
/// "RIGHT" or "WRONG".
QString verdictText(const Verdict &verdict);
