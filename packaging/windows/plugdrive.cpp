// plugdrive LETTER FOLDER: under Wine, the folder of the underlying system becomes a removable drive at once, as when
// its cable is plugged in; its file .windows-label holds the label. "-" as FOLDER pulls the cable.
// Wine reads labels only when a drive appears, and knows drives that appear only from its mount manager, which takes
// them through this call of its own. On Windows itself it fails.
#include <windows.h>
#include <winioctl.h>

#include <cstdio>
#include <cwchar>
#include <string>

namespace {

// The call's number and what it takes: this head, then the zero-terminated paths that the offsets name.
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

std::string utf8(const wchar_t *text)
{
    std::string bytes(static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr)), 0);
    WideCharToMultiByte(CP_UTF8, 0, text, -1, &bytes[0], static_cast<int>(bytes.size()), nullptr, nullptr);
    return bytes; // with its closing zero
}

bool defineDrive(wchar_t letter, const std::string &folder)
{
    const bool plugged = folder.front() != '-';
    UnixDrive head = {};
    head.size = static_cast<ULONG>(sizeof(head) + folder.size());
    head.type = plugged ? DRIVE_REMOVABLE : DRIVE_NO_ROOT_DIR;
    head.letter = letter;
    head.mountPointOffset = plugged ? sizeof(head) : 0;
    const std::string request = std::string(reinterpret_cast<const char *>(&head), sizeof(head)) + folder;

    const HANDLE manager = CreateFileW(L"\\\\.\\MountPointManager", GENERIC_READ | GENERIC_WRITE,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (manager == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const bool done = DeviceIoControl(manager, kDefineUnixDrive, const_cast<char *>(request.data()),
                                      static_cast<DWORD>(request.size()), nullptr, 0, &written, nullptr) != 0;
    CloseHandle(manager);
    return done;
}

} // namespace

int wmain(int argc, wchar_t **argv)
{
    if (argc != 3 || std::wcslen(argv[1]) != 1 || !*argv[2]) {
        std::fputs("plugdrive LETTER FOLDER|-\n", stderr);
        return 2;
    }
    return defineDrive(static_cast<wchar_t>(towlower(argv[1][0])), utf8(argv[2])) ? 0 : 1;
}
