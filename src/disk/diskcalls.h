#pragma once

#include <QString>
#include <QtGlobal>

class QFile;

/// Lets a call that finds no medium in its drive fail at once, in this process and those that it starts, where the
/// system would ask the user for one in a box of its own.
void neverAskForMedium();

/// A number that tells the volume that holds @p path (absolute, forward slashes) from the others while it is mounted;
/// 0 when the path is empty or does not exist.
quint64 volumeId(const QString &path);

/// Whether the folder @p path (absolute, forward slashes) can be listed to its end. A walk takes one that cannot be for
/// one that ends earlier, as on a disk with a fault: where nothing may be left out that makes a difference.
bool isListable(const QString &path);

/// For how long it is worth trying to remove, rename or make a folder: where another program that has it open forbids
/// that, a scanner or a viewer may let go of it. 0 where none can.
int patienceMs();

/// Whether @p path still leads to the open file @p file, which was opened by it.
bool leadsTo(const QString &path, const QFile &file);

/// What is free on a volume, and in which portions it is given out.
struct VolumeRoom
{
    qint64 freeBytes = 0;    ///< for this user
    qint64 clusterBytes = 0; ///< the least that a file or folder takes; 0 when the system does not tell
};

/// The room on the volume that holds @p path (absolute, forward slashes); nothing free when the system does not answer.
VolumeRoom volumeRoom(const QString &path);

/// Whether anything bears the name @p path (absolute, forward slashes), a link that leads nowhere too.
bool isNameTaken(const QString &path);

/// Gives the file or folder @p from the name @p to in one step, a file in place of a file that bears it. Both are
/// absolute paths on the same volume. False when the system refuses; both files are then as they were.
bool moveOver(const QString &from, const QString &to);

/// Makes the file that @p file names and opens it for unbuffered writing, with the permissions that the open file
/// @p model has, where the disk knows any. False when the name is taken or refused.
bool createLike(const QFile &model, QFile &file);

/// Gives the file @p file, open for writing, the date of the open file @p model where copies keep it, as they do on
/// Windows. Does nothing elsewhere, and nothing when the disk refuses.
void dateLike(const QFile &model, QFile &file);
