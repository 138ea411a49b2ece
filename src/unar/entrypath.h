#pragma once

#include <optional>
#include <string>

/// The place of an archive entry below the folder it is unpacked into, or nothing when it must not be unpacked.
///
/// @p name is the entry's path as it stands in the archive, UTF-8. Forward and back slashes both part folders, so that
/// an archive made on Windows means the same everywhere and a name cannot mean one thing here and another there.
/// The result has forward slashes, no empty and no "." parts; it is empty for the folder itself ("." or "./").
/// Refused are: absolute names, names with a ".." part, drive letters and anything else with a colon, control
/// characters, and names that Windows keeps for devices ("CON", "nul .txt", "COM¹", …) or would shorten (closing blank
/// or dot).
std::optional<std::string> safeEntryPath(const std::string &name);
