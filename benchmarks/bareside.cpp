// The other side of the comparisons of whole runs: the bare requests to the disk, and nothing else. Prints
// milliseconds.
#include "startprobe.h"

#include <QMainWindow>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kTitleBytes = 4096;

std::vector<std::string> filesBelow(const char *root)
{
    std::vector<std::string> files;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(root)) {
        if (entry.is_regular_file())
            files.push_back(entry.path().string());
    }
    return files;
}

/// The first @p most bytes of a file, all of it when 0.
void readFile(const std::string &path, std::size_t most, std::vector<char> &content)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat entry = {};
    ::fstat(file, &entry);
    content.resize(most > 0 ? most : static_cast<std::size_t>(entry.st_size));
    if (::read(file, content.data(), content.size()) < 0)
        std::exit(2);
    ::close(file);
}

void walkAndRead(const char *root)
{
    std::vector<char> content;
    for (const std::string &file : filesBelow(root))
        readFile(file, 0, content);
}

/// Moves the files of a folder into prepared ones, after a look at each.
void renameAll(const char *folder)
{
    constexpr int kFolders = 27;
    std::vector<char> content;
    for (int i = 0; i < kFolders; ++i)
        fs::create_directory(std::string(folder) + "/sub" + std::to_string(i));
    int number = 0;
    for (const fs::directory_entry &entry : std::vector<fs::directory_entry>(fs::directory_iterator(folder), {})) {
        if (!entry.is_regular_file())
            continue;
        const std::string path = entry.path().string();
        readFile(path, kTitleBytes, content);
        const std::string to =
            std::string(folder) + "/sub" + std::to_string(number++ % kFolders) + '/' + entry.path().filename().string();
        if (::rename(path.c_str(), to.c_str()) != 0)
            std::exit(2);
    }
}

int showEmptyWindow(int argc, char **argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.show();
    quitWhenShown(&application);
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc >= 2 && std::strcmp(argv[1], "window") == 0)
        return showEmptyWindow(argc, argv);
    if (argc != 3)
        return 2;
    const auto begun = std::chrono::steady_clock::now();
    if (std::strcmp(argv[1], "walk") == 0)
        filesBelow(argv[2]);
    else if (std::strcmp(argv[1], "read") == 0)
        walkAndRead(argv[2]);
    else if (std::strcmp(argv[1], "rename") == 0)
        renameAll(argv[2]);
    else
        return 2;
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - begun;
    std::printf("%.3f\n", taken.count());
    return 0;
}
