#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// A real exFAT volume for a test: an image file in a temporary folder, on a loop device, mounted through exfat-fuse.
/// Needs root, loop devices and the exFAT tools: ask isPossible() first and skip the test when it says no.
///
/// Without udev nobody writes /dev/disk/by-label, by which the program finds a volume: linkLabel() does. There can be
/// only one link a label in the whole system, so tests that call it bear CTest's RESOURCE_LOCK "corvin-volume-label".
class ExFatVolume
{
public:
    /// Whether this machine lets such a volume be made. When not, @p why says in a clear word what is missing.
    static bool isPossible(QString *why = nullptr);

    /// Makes, formats, attaches and mounts a volume of @p megabytes with the given label, its clusters as large as the
    /// tool chooses or of so many bytes; isMounted() tells whether all of it went well, and error() what did not.
    explicit ExFatVolume(int megabytes = 64, const QString &label = QStringLiteral("CORVIN4"), int clusterBytes = 0);
    /// The same with a copy of the image file @p model, which nobody has mounted, in place of a new volume.
    static std::unique_ptr<ExFatVolume> copyOf(const QString &model);
    /// Takes the link away, unmounts (lazily if it must), detaches and removes everything.
    ~ExFatVolume();
    ExFatVolume(const ExFatVolume &) = delete;
    ExFatVolume &operator=(const ExFatVolume &) = delete;

    bool isMounted() const { return m_mounted; }
    QString error() const { return m_error; }

    /// Canonical path of the mount point with a closing slash.
    QString root() const { return m_root; }
    QString path(const QString &relative) const { return m_root + relative; }
    /// The file that holds the volume.
    QString image() const { return m_dir.filePath(QStringLiteral("volume.img")); }
    /// The loop device, "/dev/loop3".
    QString device() const { return m_device; }

    /// Makes the link in /dev/disk/by-label, under the label given or, escaped as udev does it by the caller, under
    /// @p linkName. Replaces a dangling link and one to another loop device, never a disk's. False when that fails.
    bool linkLabel(const QString &linkName = QString());
    /// Takes the link away again, and the folders that were made for it.
    void unlinkLabel();

    /// Unmounts properly: everything is written first. False when files are still open.
    bool unmount();
    /// Pulls the cable: the volume disappears from the mount point at once, even while files are open.
    bool pull();
    /// Mounts the volume again, with what is on it.
    bool mount();

private:
    ExFatVolume(const QString &model, const QString &label);
    bool attach();
    bool run(const QString &program, const QStringList &arguments, QString *output = nullptr);

    QTemporaryDir m_dir;
    QString m_label;
    QString m_root;
    QString m_device;
    QString m_link;
    QString m_error;
    QStringList m_madeFolders;
    bool m_mounted = false;
};
