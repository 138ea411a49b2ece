#include "entrypath.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

namespace {

bool isSeparator(char c)
{
    return c == '/' || c == '\\';
}

bool isForbidden(unsigned char c)
{
    constexpr unsigned char kFirstPrintable = 0x20;
    return c < kFirstPrintable || std::string_view("<>:\"|?*").find(static_cast<char>(c)) != std::string_view::npos;
}

bool isDeviceName(std::string part)
{
    static constexpr std::array<std::string_view, 6> kDevices = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
    // Windows counts the small raised digits as digits too.
    static constexpr std::array<std::string_view, 12> kPorts = {"1", "2", "3", "4",        "5",        "6",
                                                                "7", "8", "9", "\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};
    part.resize(std::min(part.find('.'), part.size()));
    // Blanks ahead of the dot do not count.
    part.resize(part.find_last_not_of(' ') + 1);
    std::transform(part.begin(), part.end(), part.begin(), [](unsigned char c) { return std::toupper(c); });
    if (std::find(kDevices.begin(), kDevices.end(), part) != kDevices.end())
        return true;
    const bool isPort = part.compare(0, 3, "COM") == 0 || part.compare(0, 3, "LPT") == 0;
    return isPort && std::find(kPorts.begin(), kPorts.end(), part.substr(3)) != kPorts.end();
}

bool isSafePart(const std::string &part)
{
    if (part == ".." || part.back() == ' ' || part.back() == '.')
        return false;
    return std::none_of(part.begin(), part.end(), isForbidden) && !isDeviceName(part);
}

} // namespace

std::optional<std::string> safeEntryPath(const std::string &name)
{
    if (name.empty() || isSeparator(name.front()))
        return std::nullopt;
    std::string path;
    for (std::size_t start = 0; start < name.size();) {
        const auto end = std::find_if(name.begin() + static_cast<std::ptrdiff_t>(start), name.end(), isSeparator);
        const std::string part(name.begin() + static_cast<std::ptrdiff_t>(start), end);
        start += part.size() + 1;
        if (part.empty() || part == ".")
            continue;
        if (!isSafePart(part))
            return std::nullopt;
        if (!path.empty())
            path += '/';
        path += part;
    }
    return path;
}
