#pragma once

#include <filesystem>

/// @p path in the form in which the system takes it however long it is. Windows cuts a path off at 260 characters
/// unless it bears a mark; a short one stays without, for behind the mark the dot at the end of a name would count.
std::filesystem::path anyLength(const std::filesystem::path &path);

/// Makes the folder @p folder and those above it that are missing, however long their paths are. Returns whether it is
/// there.
bool makeFolders(const std::filesystem::path &folder);
