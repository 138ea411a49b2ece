#include "standin.h"

#include <string>
#include <windows.h>

namespace {

constexpr UINT kKilled = 0xC000013A; ///< what Windows itself gives a process that it ends

std::filesystem::path ownPath() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, &path[0], static_cast<DWORD>(path.size()));
    while (length == path.size()) {
        path.resize(2 * path.size());
        length = GetModuleFileNameW(nullptr, &path[0], static_cast<DWORD>(path.size()));
    }
    path.resize(length);
    return path;
}

} // namespace

void dieAtOnce() {
    TerminateProcess(GetCurrentProcess(), kKilled);
    ExitProcess(kStandInFailed);
}

int wmain(int argc, wchar_t **argv) {
    return standIn(ownPath(), std::vector<std::filesystem::path>(argv + 1, argv + argc));
}
