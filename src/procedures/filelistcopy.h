#pragma once

#include "job.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

/// Copies files one by one into another folder tree, asks before replacing and after a failed copy, drives the bar and
/// processes events after every file.
class FileListCopy : private Steps<FileListCopy>
{
    Q_DECLARE_TR_FUNCTIONS(MainWindow)

public:
    /// Each of @p sources (absolute paths, forward slashes) goes to @p destinationRoot followed by what is left of the
    /// source path behind as many characters as @p sourceRoot has. Missing folders are made.
    FileListCopy(JobView &view, const QStringList &sources, const QString &destinationRoot, const QString &sourceRoot);

    /// The outcome is the last file's, save that the copy ends at once after STOP, after a "No" to going on, and, told
    /// by a box, at the step kMakingFolders where a folder could not be made.
    JobEnd run();

private:
    friend class Steps<FileListCopy>;
    enum class FileOutcome
    {
        Copied,    ///< or left alone because the user wants the existing one
        NotCopied, ///< and the user wants to go on
        GiveUp     ///< not copied, and the user does not want to go on
    };

    JobEnd prepareBar();
    JobEnd copyFiles();
    JobEnd resetBar();

    FileOutcome copyOne(const QString &source, const QString &destination);
    bool mayReplace(const QString &destination);
    bool mayGoOnWithout(const QString &destination);

    JobView &m_view;
    QStringList m_sources;
    QString m_destinationRoot;
    QString m_sourceRoot;
    // What the user has answered for the rest of this copy.
    bool m_replaceAll = false;
    bool m_ignoreAllErrors = false;
    bool m_lastCopied = true;
};
