#pragma once

#include "job.h"

#include "device/player.h"

#include <QCoreApplication>
#include <QHash>
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
    /// @p player, when given, is the player that is read from or written to: nothing is done under its root once it is
    /// gone, and on it the folders that are its own are found whatever their case.
    FileListCopy(JobView &view, const QStringList &sources, const QString &destinationRoot, const QString &sourceRoot,
                 const Player &player = {});

    /// The outcome is the last file's, save that the copy ends at once after STOP, after a "No" to going on, untold at
    /// the step kPlayerGone where the player is gone, and, told by a box, at the step kMakingFolders where a folder
    /// could not be made.
    JobEnd run();

    /// After run(): whether a file could not be copied. Not counted are those that the user wanted to stay as they
    /// were.
    bool hasMissingFiles() const { return m_filesAreMissing; }

private:
    friend class Steps<FileListCopy>;
    enum class FileOutcome
    {
        Copied,    ///< or left alone because the user wants the existing one
        NotCopied, ///< and the user wants to go on
        GiveUp,    ///< not copied, and the user does not want to go on
        PlayerGone ///< not copied, nor will any other be
    };

    JobEnd prepareBar();
    JobEnd copyFiles();
    JobEnd resetBar();

    QString destinationOf(const QString &source);
    bool makeFolders(const QString &destination) const;
    bool isPlayerGone() const { return m_player.isFound() && !m_player.isThere(); }
    FileOutcome copyOne(const QString &source, const QString &destination);
    bool mayReplace(const QString &destination);
    static QString formerIsAt(const QString &path);
    bool mayGoOnWithout(const QString &destination);

    JobView &m_view;
    QStringList m_sources;
    QString m_destinationRoot;
    QString m_sourceRoot;
    Player m_player;
    QHash<QString, QString> m_ownFolders; ///< of the player, by their names in lower case: where they are
    // What the user has answered for the rest of this copy.
    bool m_replaceAll = false;
    bool m_ignoreAllErrors = false;
    bool m_lastCopied = true;
    bool m_filesAreMissing = false;
};
