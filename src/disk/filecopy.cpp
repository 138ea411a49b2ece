#include "filecopy.h"

#include "datafolder.h"
#include "diskcalls.h"
#include "tree.h"

#include <QByteArray>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

constexpr qint64 kBlockSize = 1048576;
constexpr qint64 kUnknownCluster = 131072; // of a large exFAT volume
constexpr int kMostTemporaryNames = 100;
// Before and behind a number. A short name: one made from the destination's could be too long for the disk.
constexpr QLatin1String kTemporaryStart("corvin4-copy", 12);
constexpr QLatin1String kTemporaryEnd(".tmp", 4);

/// Writes everything that @p from still holds to @p to.
CopyResult copyContent(QFile &from, QFile &to, const BetweenBlocks &betweenBlocks)
{
    // A size of 0 may only mean that the size is not known.
    const qint64 size = from.size();
    QByteArray block(int(size > 0 ? qMin(size, kBlockSize) : kBlockSize), Qt::Uninitialized);
    for (bool first = true;; first = false) {
        const qint64 got = from.read(block.data(), block.size());
        if (got < 0)
            return CopyResult::SourceUnreadable;
        if (got == 0)
            return CopyResult::Copied;
        if (!first && betweenBlocks && !betweenBlocks())
            return CopyResult::Stopped;
        if (to.write(block.constData(), got) != got)
            return CopyResult::NotWritten;
    }
}

/// A copy of a read-only file is read-only as well, and Windows removes none of those.
void removeCopy(const QString &path)
{
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    QFile::remove(path);
}

CopyResult existsOr(const QString &destination, CopyResult other)
{
    return QFileInfo::exists(destination) ? CopyResult::DestinationExists : other;
}

/// Copies @p source to the new file @p destination, which may stay behind when the program is killed.
CopyResult copyContentTo(const QString &source, const QString &destination, const BetweenBlocks &betweenBlocks)
{
    QFile from(source);
    // Opening a pipe would wait for its other end for ever.
    if (!QFileInfo(from).isFile() || !from.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return existsOr(destination, CopyResult::SourceUnreadable);
    QFile to(destination);
    if (!createLike(from, to))
        return existsOr(destination, CopyResult::NotCreated);

    CopyResult result = copyContent(from, to, betweenBlocks);
    if (result == CopyResult::Copied)
        dateLike(from, to);
    // After a pull the same path may lead to a file of the PC's own.
    const bool mayRemove = result == CopyResult::Copied || leadsTo(destination, to);
    to.close();
    if (result == CopyResult::Copied && to.error() != QFileDevice::NoError)
        result = CopyResult::NotWritten;
    if (result != CopyResult::Copied && mayRemove)
        removeCopy(destination);
    return result;
}

bool isNameOf(const QString &path, const QString &file)
{
    return path.compare(QFileInfo(file).absoluteFilePath(), Qt::CaseInsensitive) == 0;
}

/// A copy that does not have its name yet.
struct CopyBeside
{
    CopyResult result = CopyResult::NotCreated;
    QString path = {}; ///< where it lies, once it is copied
};

/// Copies @p source to a name of its own in the folder of @p destination.
CopyBeside copyBeside(const QString &source, const QString &destination, const BetweenBlocks &betweenBlocks)
{
    const QString folder = QFileInfo(destination).absolutePath() + QLatin1Char('/');
    for (int number = 0; number < kMostTemporaryNames; ++number) {
        const QString temporary = folder + kTemporaryStart + QString::number(number) + kTemporaryEnd;
        // A backup may hold what a run left that was killed.
        if (isNameOf(temporary, source) || isNameOf(temporary, destination))
            continue;
        CopyResult result = copyContentTo(source, temporary, betweenBlocks);
        // What such a run has left is in the way of nobody else: its original is still where it was copied from.
        if (result == CopyResult::DestinationExists && QFileInfo(temporary).isFile()) {
            removeCopy(temporary);
            result = copyContentTo(source, temporary, betweenBlocks);
        }
        if (result != CopyResult::DestinationExists)
            return {result, temporary};
    }
    return {};
}

/// Whether @p source has room in the folder of @p destination once that file is gone. A disk gives room in clusters.
bool fitsInPlaceOf(const QString &source, const QString &destination)
{
    const QString folder = QFileInfo(destination).absolutePath();
    const VolumeRoom volume = volumeRoom(folder);
    const qint64 cluster = volume.clusterBytes > 0 ? volume.clusterBytes : kUnknownCluster;
    const auto clusters = [cluster](const QString &file) { return (QFileInfo(file).size() + cluster - 1) / cluster; };
    return volume.freeBytes / cluster + clusters(destination) >= clusters(source);
}

/// Copies @p source over @p destination where there is no room for both, the volume being @p volume. The old file waits
/// on the PC until the new one is whole: the room that was counted may be somebody else's by now.
CopyResult replaceInItsRoom(const QString &source, const QString &destination, quint64 volume,
                            const BetweenBlocks &betweenBlocks, const FormerKept &formerKept)
{
    QDir().mkpath(dataFolder());
    QTemporaryDir pc(dataFolder() + QLatin1String("/replaced-XXXXXX"));
    const QString kept = pc.filePath(QFileInfo(destination).fileName());
    const CopyResult keeping = pc.isValid() ? copyFile(destination, kept, betweenBlocks) : CopyResult::NotCreated;
    if (keeping != CopyResult::Copied)
        return keeping == CopyResult::Stopped ? keeping : CopyResult::NotWritten;
    if (volumeId(QFileInfo(destination).absolutePath()) != volume || !removeFile(destination))
        return CopyResult::NotWritten;
    // Too late to be stopped: the old file is gone.
    const CopyResult result = copyFile(source, destination, [&betweenBlocks] {
        if (betweenBlocks)
            betweenBlocks();
        return true;
    });
    if (result == CopyResult::Copied)
        return result;
    const bool samePlace = volumeId(QFileInfo(destination).absolutePath()) == volume;
    if (!samePlace || copyFile(kept, destination) != CopyResult::Copied) {
        pc.setAutoRemove(false);
        qWarning().noquote() << "[replaceFile] The former" << destination << "is kept as" << kept;
        if (formerKept)
            formerKept(kept);
    }
    return result;
}

} // namespace

bool isUnfinishedCopy(const QString &name)
{
    const int digits = name.size() - kTemporaryStart.size() - kTemporaryEnd.size();
    bool isNumber = false;
    return digits > 0 && name.startsWith(kTemporaryStart) && name.endsWith(kTemporaryEnd) &&
           name.midRef(kTemporaryStart.size(), digits).toUInt(&isNumber) < kMostTemporaryNames && isNumber;
}

bool isSameFile(const QString &first, const QString &second)
{
    const QString path = QFileInfo(first).canonicalFilePath();
    return !path.isEmpty() && path == QFileInfo(second).canonicalFilePath();
}

CopyResult copyFile(const QString &source, const QString &destination, const BetweenBlocks &betweenBlocks)
{
    if (isNameTaken(destination))
        return CopyResult::DestinationExists;
    const QString folder = QFileInfo(destination).absolutePath();
    const quint64 volume = volumeId(folder);
    const CopyBeside copy = copyBeside(source, destination, betweenBlocks);
    if (copy.result != CopyResult::Copied)
        return copy.result;
    if (!isNameTaken(destination) && moveOver(copy.path, destination))
        return CopyResult::Copied;
    if (volumeId(folder) == volume)
        removeCopy(copy.path);
    return existsOr(destination, CopyResult::NotCreated);
}

CopyResult replaceFile(const QString &source, const QString &destination, const BetweenBlocks &betweenBlocks,
                       const FormerKept &formerKept)
{
    if (QFileInfo(destination).isDir() || isSameFile(source, destination))
        return CopyResult::DestinationExists;
    const QString folder = QFileInfo(destination).absolutePath();
    const quint64 volume = volumeId(folder);
    const CopyBeside copy = copyBeside(source, destination, betweenBlocks);
    if (copy.result == CopyResult::Copied) {
        if (moveOver(copy.path, destination))
            return CopyResult::Copied;
        if (volumeId(folder) == volume)
            removeCopy(copy.path);
        return CopyResult::NotWritten;
    }
    // On a full disk the folder itself may have no room for one name more.
    const bool noRoom = copy.result == CopyResult::NotWritten || copy.result == CopyResult::NotCreated;
    // On one volume both paths may lead to one file, by names that differ in case or by another way to the same disk.
    if (!noRoom || volumeId(folder) != volume || volumeId(source) == volume || !fitsInPlaceOf(source, destination))
        return copy.result;
    return replaceInItsRoom(source, destination, volume, betweenBlocks, formerKept);
}
