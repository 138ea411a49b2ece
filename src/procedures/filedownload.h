#pragma once

#include "job.h"

#include <QString>

#include <memory>

class DownloadManager;

/// Downloads one file into the temporary "Corvin" folder and waits for it, driving the bar.
class FileDownload : private Steps<FileDownload>
{
public:
    /// @p makeFolder: that folder is emptied first.
    FileDownload(JobView &view, const QString &url, bool makeFolder);
    ~FileDownload();
    FileDownload(const FileDownload &) = delete;
    FileDownload &operator=(const FileDownload &) = delete;

    /// Done when what arrived is large enough to be a release, whether or not STOP ended the wait for more; else
    /// failed, without a word to the user.
    JobEnd run();

    /// After run(): the saved file's path; empty when it is too small or not there.
    QString path() const { return m_path; }
    /// After run(): whether all of the file has come. The size alone says nothing of what a bad line has cut off, and
    /// of a server that answered with a page of its own.
    bool hasAllArrived() const;

private:
    friend class Steps<FileDownload>;
    JobEnd emptyItsFolder();
    JobEnd start();
    JobEnd waitForEnd();
    JobEnd judgeSize();

    JobView &m_view;
    QString m_url;
    bool m_makeFolder;
    std::unique_ptr<DownloadManager> m_manager;
    QString m_path;
};

/// What downloadArchive() brought.
struct DownloadedArchive
{
    JobEnd end;   ///< of the step
    QString path; ///< of the archive; empty when there is none
};

/// The step of a job that downloads an archive, @p serverPath on the update server, into the emptied folder. Failed,
/// and told by its box, when not all of it has come.
DownloadedArchive downloadArchive(JobView &view, const QString &serverPath);
