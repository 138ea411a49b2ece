// pressbutton TITLE BUTTON: waits until a window whose title contains TITLE has a button BUTTON that can be pressed,
// and presses it. The exit code is 0 when that came true within two minutes. UTF-8; the marks of access keys do not
// count.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <string>

namespace {

constexpr int kMostAttempts = 1200;
constexpr DWORD kPauseMs = 100;
constexpr int kLongestText = 512;

struct Search
{
    std::wstring title;
    std::wstring button;
    HWND found;
};

std::wstring textOf(HWND window)
{
    wchar_t text[kLongestText] = {};
    GetWindowTextW(window, text, kLongestText);
    std::wstring plain = text;
    plain.erase(std::remove(plain.begin(), plain.end(), L'&'), plain.end());
    return plain;
}

BOOL CALLBACK lookAtChild(HWND child, LPARAM parameter)
{
    auto *search = reinterpret_cast<Search *>(parameter);
    wchar_t kind[kLongestText] = {};
    GetClassNameW(child, kind, kLongestText);
    if (std::wcscmp(kind, L"Button") != 0 || !IsWindowVisible(child) || !IsWindowEnabled(child))
        return TRUE;
    // Some are decorated: "Next >".
    const std::wstring text = textOf(child);
    if (text != search->button && text != search->button + L" >")
        return TRUE;
    search->found = child;
    return FALSE;
}

BOOL CALLBACK lookAtWindow(HWND window, LPARAM parameter)
{
    auto *search = reinterpret_cast<Search *>(parameter);
    if (IsWindowVisible(window) && textOf(window).find(search->title) != std::wstring::npos)
        EnumChildWindows(window, lookAtChild, parameter);
    return search->found ? FALSE : TRUE;
}

} // namespace

int wmain(int argc, wchar_t **argv)
{
    if (argc != 3) {
        std::fputs("pressbutton TITLE BUTTON\n", stderr);
        return 2;
    }
    Search search = {argv[1], argv[2], nullptr};
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        EnumWindows(lookAtWindow, reinterpret_cast<LPARAM>(&search));
        if (search.found) {
            PostMessageW(search.found, BM_CLICK, 0, 0);
            return 0;
        }
        Sleep(kPauseMs);
    }
    return 1;
}
