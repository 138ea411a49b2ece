#pragma once

#include <QString>

/// Finds the player among the mounted volumes, by its volume label and nothing else.
/// A value without state: every call reads the system's volumes afresh, so that a player that was plugged in again
/// somewhere else is found again. A look-up reads the label of every volume: once per action, not once per file.
///
/// When the environment variable CORVIN_VOLUMES is set (even to nothing) the folders it lists, separated by the
/// platform's list separator, stand in for the mounted volumes, in that order. The first line of the file
/// ".windows-label" in such a folder is its label; without that file the label is empty.
class DeviceLocator
{
public:
    /// The root of the first volume whose label, trimmed and in lower case, equals "corvin4": canonical, with forward
    /// slashes and a closing slash ("E:/", "/media/anna/CORVIN4/"), so that relative paths are appended as they are.
    /// Empty when there is none. Shows no message.
    QString findDeviceRoot() const;

    /// The trimmed label of the volume whose root is @p rootPath (the form that findDeviceRoot() gives; a missing
    /// closing slash is forgiven). Empty when the label cannot be read or the path is not the root of a volume.
    QString volumeLabel(const QString &rootPath) const;

    /// What tells the volume whose root is @p rootPath (as above) from others of its label and size, for good: the
    /// serial number that it got when it was formatted, as the system writes it. Empty where that cannot be told, and
    /// for the folders of CORVIN_VOLUMES.
    QString volumeSerial(const QString &rootPath) const;

    /// For outsiders; the program itself goes by the label alone.
    /// Whether the volume that holds @p path is a medium that can be taken out, by what the system says of its drive.
    /// False when that cannot be told.
    bool isRemovableDrive(const QString &path) const;
};
