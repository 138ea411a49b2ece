#include "winedrive.h"

#include <windows.h>
#include <winioctl.h>

namespace {

// The call's number and what it takes: this head, then the zero-terminated path that the first offset names.
constexpr DWORD kDefineUnixDrive = CTL_CODE('m', 32, METHOD_BUFFERED, FILE_READ_ACCESS | FILE_WRITE_ACCESS);

struct UnixDrive
{
    ULONG size;
    ULONG type;
    ULONG fileSystem;
    DWORD serial;
    ULONGLONG unixDevice;
    WCHAR letter;
    USHORT mountPointOffset;
    USHORT deviceOffset;
    USHORT labelOffset;
};

bool define(UnixDrive head, const std::string &folder) {
    head.size = static_cast<ULONG>(sizeof(head) + folder.size() + 1);
    std::string request = std::string(reinterpret_cast<const char *>(&head), sizeof(head)) + folder + '\0';
    const HANDLE manager = CreateFileW(L"\\\\.\\MountPointManager", GENERIC_READ | GENERIC_WRITE,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (manager == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const bool done = DeviceIoControl(manager, kDefineUnixDrive, &request[0], static_cast<DWORD>(request.size()),
                                      nullptr, 0, &written, nullptr) != 0;
    CloseHandle(manager);
    return done;
}

} // namespace

bool WineDrive::plug(wchar_t letter, const std::string &unixFolder) {
    UnixDrive head = {};
    head.type = DRIVE_REMOVABLE;
    head.letter = letter;
    head.mountPointOffset = sizeof(head);
    return define(head, unixFolder);
}

bool WineDrive::unplug(wchar_t letter) {
    UnixDrive head = {};
    head.type = DRIVE_NO_ROOT_DIR;
    head.letter = letter;
    return define(head, std::string());
}

std::string WineDrive::unixPath(const std::wstring &windowsPath) {
    using Translate = char *(__cdecl *)(const wchar_t *);
    const auto translate = reinterpret_cast<Translate>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
    char *path = translate ? translate(windowsPath.c_str()) : nullptr;
    if (!path)
        return {};
    std::string result = path;
    HeapFree(GetProcessHeap(), 0, path);
    return result;
}
