#pragma once

#include <QString>
#include <QStringList>

/// What the name of a file says about it. Paths are relative to the player's root, with forward slashes.
///
/// Written apart from the program on purpose: what judges the program must not share its mistakes.
namespace PlayerPaths {

enum class Kind
{
    Song,
    Companion,
    Image,
    Video,
    Unsupported,
};

/// By the part behind the last dot, whatever its case.
Kind kindOf(const QString &path);
/// Name of the file with its suffix.
QString nameOf(const QString &path);
/// Folder of the file without a closing slash; empty for a file in the root.
QString folderOf(const QString &path);
/// Name of the file up to its last dot.
QString stemOf(const QString &path);
/// What stands behind the last dot of the name; empty without a dot.
QString suffixOf(const QString &path);
/// Folder and name joined; the root has an empty folder.
QString join(const QString &folder, const QString &name);

/// Whether the file or one of its folders begins with a dot.
bool isHidden(const QString &path);
/// Whether the folder begins, in any case, with one of @p beginnings ("System" also means "System Old").
bool beginsWithAny(const QString &folder, const QStringList &beginnings);
/// Whether the file lies under System or CorvinUpdate, which belong to the player's own software.
bool isPlayersOwn(const QString &path);
/// Whether the import file never speaks of the song, because it is no song of the user's.
bool isOutsideDatabase(const QString &path);
/// Whether the file is one of the three that stay in the root.
bool staysInRoot(const QString &path);

/// The path as the player's own software writes it, beginning with "\sdmemory\".
QString toDevice(const QString &path);
/// The other way round; empty when the text does not begin like a path of the player.
QString fromDevice(const QString &devicePath);

} // namespace PlayerPaths
