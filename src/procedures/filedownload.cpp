#include "filedownload.h"

#include "downloadmanager.h"
#include "jobnotices.h"
#include "operationtexts.h"
#include "updateserver.h"

#include "disk/tree.h"
#include "disk/waitms.h"

#include <QFileInfo>

namespace {
// Deliberate: the size alone tells a release from the page that a server sends instead of one.
constexpr qint64 kSmallestRelease = 10000;
} // namespace

FileDownload::FileDownload(JobView &view, const QString &url, bool makeFolder)
    : m_view(view), m_url(url), m_makeFolder(makeFolder), m_manager(std::make_unique<DownloadManager>())
{
}

FileDownload::~FileDownload() = default;

JobEnd FileDownload::run()
{
    return runSteps("FileDownload", m_view,
                    {{"emptyItsFolder", &FileDownload::emptyItsFolder},
                     {"start", &FileDownload::start},
                     {"waitForEnd", &FileDownload::waitForEnd},
                     {"judgeSize", &FileDownload::judgeSize}},
                    Stop::IsLeftToTheSteps);
}

bool FileDownload::hasAllArrived() const
{
    return m_manager->done && m_manager->whole;
}

JobEnd FileDownload::emptyItsFolder()
{
    if (m_makeFolder)
        emptyFolder(DownloadManager::downloadFolder());
    return {};
}

JobEnd FileDownload::start()
{
    return {m_manager->download(m_url) ? JobEnd::Done : JobEnd::Failed};
}

JobEnd FileDownload::waitForEnd()
{
    m_view.setBarRange(0, DownloadManager::kFullPercent);
    m_view.setBarValue(0);
    while (!m_manager->done) {
        m_view.setBarValue(m_manager->percent);
        if (m_view.isStopped())
            break;
        waitMs(kLookMs);
    }
    m_view.setBarValue(DownloadManager::kFullPercent);
    m_view.paintBar();
    m_manager->disconnect();
    waitMs(kLookMs);
    return {};
}

JobEnd FileDownload::judgeSize()
{
    const QFileInfo saved(m_manager->savePath);
    if (saved.size() < kSmallestRelease)
        return {JobEnd::Failed};
    m_path = saved.filePath();
    return {};
}

DownloadedArchive downloadArchive(JobView &view, const QString &serverPath)
{
    view.showStatus(operationText(TEXT_DOWNLOADING_RELEASE));
    FileDownload job(view, updateServerUrl(serverPath), true);
    const JobEnd end = job.run();
    // Deliberate: after a STOP nothing is said, whatever has arrived.
    if (view.isStopped())
        return {{JobEnd::Stopped}, job.path()};
    if (end.isDone() && job.hasAllArrived())
        return {{}, job.path()};
    tellDownloadError(view, DownloadFault::Download);
    return {{JobEnd::Failed}, job.path()};
}
