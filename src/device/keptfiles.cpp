#include "keptfiles.h"

#include "devicecase.h"
#include "disk/datafolder.h"
#include "disk/tree.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStorageInfo>

namespace {

constexpr int kDaysKept = 30;

QString allRuns()
{
    return dataFolder() + QLatin1String("/removed");
}

/// No colons: Windows allows none in a name.
QString nameFormat()
{
    return QStringLiteral("yyyy-MM-dd HH.mm.ss");
}

/// The name of a run's folder without the number that it got when two runs began in one second.
QString withoutNumber(QString name)
{
    static const QRegularExpression number(QStringLiteral(" \\(\\d+\\)$"));
    return name.remove(number);
}

/// @p path, or the same with the first number before its suffix under which nothing lies yet.
QString freePath(const QString &path)
{
    const QFileInfo info(path);
    QString free = path;
    for (int number = 2; QFileInfo::exists(free); ++number) {
        const QString suffix = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
        free = info.path() + QLatin1Char('/') + info.completeBaseName() + QStringLiteral(" (%1)").arg(number) + suffix;
    }
    return free;
}

} // namespace

KeptFiles::KeptFiles(const Player &player) : KeptFiles(player, Limits()) {}

KeptFiles::KeptFiles(const Player &player, const Limits &limits) : m_player(player), m_limits(limits) {}

bool KeptFiles::keep(const QString &path, Kind kind, const BetweenBlocks &betweenBlocks)
{
    const qint64 size = QFileInfo(path).size();
    if (kind == Kind::Unsupported && (size > m_limits.mostOfUnsupportedFile || m_kept + size > m_limits.mostOfRun))
        return false;
    QDir().mkpath(dataFolder());
    if (QStorageInfo(dataFolder()).bytesAvailable() - size < m_limits.leastRoomLeft)
        return false;
    if (m_folder.isEmpty() && !makeFolder())
        return false;
    const QString target = freePath(m_folder + QLatin1Char('/') + m_player.relativePath(path));
    if (!QDir().mkpath(QFileInfo(target).path()) || copyFile(path, target, betweenBlocks) != CopyResult::Copied) {
        forgetEmptyFolder();
        return false;
    }
    m_kept += size;
    m_holdsFiles = true;
    return true;
}

bool KeptFiles::makeFolder()
{
    const QString name = allRuns() + QLatin1Char('/') + QDateTime::currentDateTime().toString(nameFormat());
    QString folder = name;
    for (int number = 2; QFileInfo::exists(folder); ++number)
        folder = name + QStringLiteral(" (%1)").arg(number);
    if (!QDir().mkpath(folder))
        return false;
    m_folder = folder;
    return true;
}

/// Nobody is to be shown a folder in which nothing is.
void KeptFiles::forgetEmptyFolder()
{
    if (m_holdsFiles)
        return;
    removeTree(m_folder);
    m_folder.clear();
}

QString KeptFiles::newestHolding(const QString &relative)
{
    // Dates written so have the order of their names.
    const QStringList runs = QDir(allRuns()).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    for (const QString &run : runs) {
        QString folder = allRuns() + QLatin1Char('/') + run;
        const bool isRun = QDateTime::fromString(withoutNumber(run), nameFormat()).isValid();
        if (isRun && QFileInfo::exists(resolveDevicePath(folder + QLatin1Char('/'), relative)))
            return folder;
    }
    return {};
}

void KeptFiles::forgetOldOnes()
{
    const QDateTime now = QDateTime::currentDateTime();
    const QFileInfoList runs = QDir(allRuns()).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    for (const QFileInfo &run : runs) {
        // A folder of another name is somebody else's, or was given that name so that it is kept.
        const QDateTime made = QDateTime::fromString(withoutNumber(run.fileName()), nameFormat());
        if (made.isValid() && made.daysTo(now) > kDaysKept)
            removeTree(run.filePath());
    }
}
