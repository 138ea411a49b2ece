// The extraction tool that lies in the program's folder on Windows.
// Usage: unar ARCHIVE -o FOLDER [-no-directory]
// Unpacks ARCHIVE straight into FOLDER, without a folder named after the archive, with or without the last word.
// Exit codes: 0 everything was unpacked, 1 something was not, 2 the command line is wrong.

#include "extract.h"

#include <clocale>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

int run(const std::vector<std::filesystem::path> &arguments)
{
    std::filesystem::path archive;
    std::filesystem::path folder;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "-o" && i + 1 < arguments.size())
            folder = arguments[++i];
        else if (arguments[i] == "-no-directory")
            continue;
        else if (archive.empty())
            archive = arguments[i];
        else
            return kExitUsage;
    }
    if (archive.empty() || folder.empty()) {
        std::fputs("usage: unar ARCHIVE -o FOLDER [-no-directory]\n", stderr);
        return kExitUsage;
    }
    return extractArchive(archive, folder) ? 0 : kExitFailed;
}

} // namespace

#ifdef _WIN32
int wmain(int argc, wchar_t **argv)
#else
int main(int argc, char **argv)
#endif
{
    // Names in archives are converted through the locale; the plain C locale knows no accents.
    if (!std::setlocale(LC_ALL, ""))
        std::setlocale(LC_ALL, "C.UTF-8");
    try {
        return run(std::vector<std::filesystem::path>(argv + 1, argv + argc));
    } catch (const std::exception &problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return kExitFailed;
    }
}
