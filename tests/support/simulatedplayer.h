#pragma once

#include "testing.h"

/// A temporary folder that plays the player: while it is connected, the program's device look-up finds it as a volume
/// with the given label; under Wine it is the removable drive E:. Paths given to the calls are relative to the player's
/// root, with forward slashes.
class SimulatedPlayer
{
public:
    /// Makes the folder and connects it. @p label is written as the volume label as it stands.
    explicit SimulatedPlayer(const QString &label = "CORVIN4"_s);
    ~SimulatedPlayer();
    SimulatedPlayer(const SimulatedPlayer &) = delete;
    SimulatedPlayer &operator=(const SimulatedPlayer &) = delete;

    /// Plugs the player in, as the only volume of the PC.
    void connect();
    /// Pulls the cable: the volume is no longer listed (its folder stays on the PC's disk, and its content can still be
    /// looked at).
    static void disconnect();

    /// Canonical path of the root with a closing slash, as the device look-up gives it.
    QString root() const { return m_root; }
    QString path(const QString &relative) const { return m_root + relative; }

    /// Writes a file, making its folders; fails the running test when that is not possible. Returns its full path.
    QString addFile(const QString &relative, const QByteArray &content = QByteArrayLiteral("x"));
    /// Makes a folder with its parents and returns its full path.
    QString addFolder(const QString &relative);
    /// The three system files that the check looks for.
    void addSystemFiles();

    bool exists(const QString &relative) const { return QFileInfo::exists(m_folder + relative); }
    QByteArray content(const QString &relative) const;
    /// All files below @p folder (relative), sorted, relative to the root; hidden ones too, the label file not.
    QStringList files(const QString &folder = QString()) const;
    /// Names of the folders directly in @p folder, sorted; hidden ones too.
    QStringList folders(const QString &folder = QString()) const;

private:
    QTemporaryDir m_dir;
    QString m_root;
    QString m_folder; ///< where the content lies while the player is not connected, with a closing slash
};
