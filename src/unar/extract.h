#pragma once

#include <filesystem>

/// Unpacks an archive, recognised by its content as zip, tar (with its usual compressions), 7-zip, rar or cab, into an
/// existing folder.
///
/// Folders and regular files are unpacked, over files of the same name. Everything that would land outside the folder,
/// and every link, device or encrypted entry, is refused: named on the standard error, passed over, and counted as a
/// failure. A file that cannot be written whole is removed again.
/// Returns true only when the whole archive was read and every entry unpacked.
bool extractArchive(const std::filesystem::path &archivePath, const std::filesystem::path &folder);
