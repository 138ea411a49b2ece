#include "filecopy.h"

#include "diskcalls.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

namespace {

constexpr qint64 kBlockSize = 1048576;
constexpr int kMostTemporaryNames = 100;

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

/// Copies @p source to a name of its own in the folder of @p destination, and gives that name.
CopyResult copyBeside(const QString &source, const QString &destination, QString &temporary,
                      const BetweenBlocks &betweenBlocks)
{
    // A short name: one made from the destination's could be too long for the disk.
    const QString stem = QFileInfo(destination).absolutePath() + QStringLiteral("/corvin4-copy%1.tmp");
    CopyResult result = CopyResult::NotCreated;
    for (int number = 0; number < kMostTemporaryNames; ++number) {
        temporary = stem.arg(number);
        if (QFileInfo::exists(temporary))
            continue;
        result = copyFile(source, temporary, betweenBlocks);
        if (result != CopyResult::DestinationExists)
            return result;
    }
    return CopyResult::NotCreated;
}

bool fitsInPlaceOf(const QString &source, const QString &destination)
{
    const qint64 room = QStorageInfo(QFileInfo(destination).absolutePath()).bytesAvailable();
    return room >= 0 && room + QFileInfo(destination).size() >= QFileInfo(source).size();
}

/// The player's disk ignores case: two paths that differ in it may be one file.
bool mayBeSameFile(const QString &first, const QString &second)
{
    return QFileInfo(first).canonicalFilePath().compare(QFileInfo(second).canonicalFilePath(), Qt::CaseInsensitive) ==
           0;
}

} // namespace

bool isSameFile(const QString &first, const QString &second)
{
    const QString path = QFileInfo(first).canonicalFilePath();
    return !path.isEmpty() && path == QFileInfo(second).canonicalFilePath();
}

CopyResult copyFile(const QString &source, const QString &destination, const BetweenBlocks &betweenBlocks)
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
    to.close();
    if (result == CopyResult::Copied && to.error() != QFileDevice::NoError)
        result = CopyResult::NotWritten;
    if (result != CopyResult::Copied)
        removeCopy(destination);
    return result;
}

CopyResult replaceFile(const QString &source, const QString &destination, const BetweenBlocks &betweenBlocks)
{
    if (QFileInfo(destination).isDir() || isSameFile(source, destination))
        return CopyResult::DestinationExists;
    QString temporary;
    const CopyResult result = copyBeside(source, destination, temporary, betweenBlocks);
    if (result == CopyResult::Copied) {
        if (moveOver(temporary, destination))
            return CopyResult::Copied;
        removeCopy(temporary);
        return CopyResult::NotWritten;
    }
    if (result != CopyResult::NotWritten || !fitsInPlaceOf(source, destination) || mayBeSameFile(source, destination) ||
        !QFile::remove(destination))
        return result;
    return copyFile(source, destination, betweenBlocks);
}
