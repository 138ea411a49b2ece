#pragma once

#include <QString>

#include <functional>

/// How the copy of a file ended.
enum class CopyResult
{
    Copied,
    DestinationExists, ///< something stands under the destination's name; it was not touched
    SourceUnreadable,  ///< the source is missing, no regular file, or could not be read to its end
    NotCreated,        ///< the destination could not be made: refused name, missing folder, write protection
    NotWritten,        ///< the destination could not be written to its end: no room, or the disk is gone
    Stopped            ///< the caller did not want to go on
};

/// Called between two blocks of a large file, never for a small one; returns whether to go on.
using BetweenBlocks = std::function<bool()>;

/// Called with where a file of the disk lies on the PC now, when it could not be put back.
using FormerKept = std::function<void(const QString &path)>;

/// Copies the regular file @p source to the new file @p destination (both absolute, forward slashes) in large writes,
/// with its permissions where the disk knows any, and on Windows with its date. An existing destination is never
/// touched. The content is written beside it ("corvin4-copy0.tmp"; what a killed run has left under that name is
/// overwritten) and gets its name when it is complete: half a file never bears it, be the copy failed, stopped or
/// killed.
CopyResult copyFile(const QString &source, const QString &destination, const BetweenBlocks &betweenBlocks = nullptr);

/// Copies @p source over the existing file @p destination, be it read-only. The new content is written beside the old
/// file as by copyFile() and takes its place when it is complete, so that a copy that fails or is stopped keeps the old
/// file. Only where the disk has no room for both, would have it for the new one, and the source lies on another
/// volume, the old file goes first: it is kept on the PC meanwhile, in the program's data folder, comes back when the
/// copy fails, and from then on the copy cannot be stopped. Where the PC cannot keep it, it stays where it is. Where it
/// cannot come back, the disk being gone, it stays on the PC, and @p formerKept is told; after a kill it stays there
/// untold. A folder is never replaced, nor is a file by itself: the result is then DestinationExists.
CopyResult replaceFile(const QString &source, const QString &destination, const BetweenBlocks &betweenBlocks = nullptr,
                       const FormerKept &formerKept = nullptr);

/// Whether @p name is one under which copyFile() writes what is not complete yet: a file that bears it later is what a
/// killed run has left, and nobody's.
bool isUnfinishedCopy(const QString &name);

/// Whether both paths lead to the same existing file, through links or not.
bool isSameFile(const QString &first, const QString &second);
