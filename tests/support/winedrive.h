#pragma once

#include <string>

/// Under Wine, a folder becomes a removable drive at once, as when its cable is plugged in; the first line of its file
/// .windows-label is the volume's label. Wine reads labels only when a drive appears, and hears of drives that appear
/// only from its mount manager, which takes them through a call of its own. On Windows itself all of this fails.
namespace WineDrive {

/// @p letter in lower case; @p unixFolder is the folder as the underlying system names it, UTF-8.
/// Returns false when the call was refused.
bool plug(wchar_t letter, const std::string &unixFolder);

/// Pulls the cable. Returns false when the call was refused.
bool unplug(wchar_t letter);

/// How the underlying system names @p windowsPath (absolute, with a drive letter); empty where there is none.
std::string unixPath(const std::wstring &windowsPath);

} // namespace WineDrive
