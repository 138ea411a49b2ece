#include "longpath.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace fs = std::filesystem;

#ifdef _WIN32

fs::path anyLength(const fs::path &path)
{
    constexpr std::size_t kLongestPlain = 247; // what Windows takes for a folder
    if (path.native().size() <= kLongestPlain)
        return path;
    fs::path plain = path;
    return fs::path(L"\\\\?\\" + plain.make_preferred().native());
}

// By the system's own calls: the library asks for the state of a path in a way that takes the mark for a wildcard.
bool makeFolders(const fs::path &folder)
{
    const fs::path taken = anyLength(folder);
    const DWORD attributes = ::GetFileAttributesW(taken.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES)
        return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const fs::path above = folder.parent_path();
    return !above.empty() && above != folder && makeFolders(above) && ::CreateDirectoryW(taken.c_str(), nullptr) != 0;
}

#else

fs::path anyLength(const fs::path &path)
{
    return path;
}

bool makeFolders(const fs::path &folder)
{
    std::error_code error;
    fs::create_directories(folder, error);
    return !error;
}

#endif
