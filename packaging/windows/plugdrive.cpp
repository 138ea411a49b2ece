// plugdrive LETTER FOLDER: under Wine, the folder of the underlying system becomes a removable drive, as when its cable
// is plugged in. "-" as FOLDER pulls the cable.
#include "support/winedrive.h"

#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <cwctype>

namespace {

std::string utf8(const wchar_t *text)
{
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), 0);
    WideCharToMultiByte(CP_UTF8, 0, text, -1, &bytes[0], size, nullptr, nullptr);
    bytes.pop_back(); // the closing zero
    return bytes;
}

} // namespace

int wmain(int argc, wchar_t **argv)
{
    if (argc != 3 || std::wcslen(argv[1]) != 1 || !*argv[2]) {
        std::fputs("plugdrive LETTER FOLDER|-\n", stderr);
        return 2;
    }
    const auto letter = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(argv[1][0])));
    const std::string folder = utf8(argv[2]);
    return (folder == "-" ? WineDrive::unplug(letter) : WineDrive::plug(letter, folder)) ? 0 : 1;
}
