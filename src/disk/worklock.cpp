#include "worklock.h"

#include "datafolder.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QSysInfo>

namespace {

/// From its making until its owner stands in it, and until the system's own lock is on it, a lock file has this long.
constexpr int kBeingMadeS = 10;

/// Whether a lock file says nothing by which its owner could be looked for: it is empty after a power cut, and names
/// another PC after this one was given a new name.
bool hasUnknownOwner(const QLockFile &file, const QString &path)
{
    qint64 process = 0;
    QString host;
    QString program;
    const QFileInfo info(path);
    return info.exists() && info.lastModified().secsTo(QDateTime::currentDateTime()) > kBeingMadeS &&
           (!file.getLockInfo(&process, &host, &program) || host != QSysInfo::machineHostName());
}

bool take(QLockFile &file, const QString &path)
{
    if (file.tryLock())
        return true;
    // An owner that lives keeps its file, by the system's own lock on it.
    if (hasUnknownOwner(file, path) && file.removeStaleLockFile() && file.tryLock())
        return true;
    return file.error() != QLockFile::LockFailedError;
}

} // namespace

WorkLock::WorkLock()
{
    const QString folder = dataFolder();
    const QString path = folder + QLatin1String("/work.lock");
    QDir().mkpath(folder);
    m_file = std::make_unique<QLockFile>(path);
    // A job may take hours: age says nothing, whether the owner still runs says all.
    m_file->setStaleLockTime(0);
    m_taken = take(*m_file, path) || !QFileInfo(folder).isWritable();
}

WorkLock::~WorkLock() = default;
