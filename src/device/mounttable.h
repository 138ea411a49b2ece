#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <functional>

/// One line of the kernel's mount table that concerns a block device.
struct Mount
{
    QString device; ///< as the table names it, always below "/dev/"
    QString point;  ///< absolute path, without a closing slash (the root: "/")
};

/// A mounted block device that bears a label.
struct LabelledMount
{
    QString point; ///< as in Mount
    QString label; ///< as it stands on the volume, not trimmed
};

/// Labels by the device file that bears them ("/dev/sdb1").
using LabelsByDevice = QHash<QString, QString>;
/// Gives the device file behind another name of it ("/dev/mapper/x" -> "/dev/dm-0"), or an empty string.
using DeviceResolver = std::function<QString(const QString &)>;

/// Reads the text of /proc/self/mountinfo. What comes out, in the order of the table, are the whole volumes of block
/// devices: neither network nor pseudo file systems, no mount that shows only a folder of a volume, none that a later
/// one on the same point hides. Lines that are not understood are passed over. Touches no file.
QList<Mount> parseMountTable(const QByteArray &mountInfo);

/// The mounts of @p mountInfo whose device has an entry in @p labels, under its own name or under the one that
/// @p resolve gives, in the order of the table.
QList<LabelledMount> labelledMounts(const QByteArray &mountInfo, const LabelsByDevice &labels,
                                    const DeviceResolver &resolve);

/// The device on which @p path lies: the one with the longest mount point above it. Empty when a file system without
/// a block device, or a part of a volume, lies nearer.
QString deviceOfPath(const QByteArray &mountInfo, const QString &path);

/// Undoes the escapes with which the mount table writes blanks and the like: a backslash and three octal digits.
QString decodeMountField(const QByteArray &field);

/// Undoes the escapes with which udev writes a label as a file name: "\x" and two hexadecimal digits for a byte.
QString decodeUdevName(const QByteArray &name);

/// Reads a folder of links that are named after labels and point to devices (/dev/disk/by-label). The links are read,
/// what they point to is not touched. A folder that is not there gives an empty result.
LabelsByDevice readLabelFolder(const QString &folder);

/// Whether the kernel's folder of a block device (/sys/class/block/sdb1, links resolved) says that its medium can be
/// taken out. A partition's folder says nothing of it; the disk's, in which it lies, does.
bool isRemovableBlockDevice(const QString &kernelFolder);
