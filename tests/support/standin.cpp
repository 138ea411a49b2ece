#include "standin.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>

namespace fs = std::filesystem;

namespace {

const char kLabelFile[] = ".windows-label";
constexpr auto kLookInterval = std::chrono::milliseconds(20);
constexpr auto kLongestWait = std::chrono::minutes(10);

/// Whoever waits for the file finds it complete.
void writeFile(const fs::path &path, const std::string &content) {
    fs::path part = path;
    part += ".part";
    std::ofstream file(part, std::ios::binary);
    file << content;
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path.u8string());
    fs::rename(part, path);
}

void writeLine(std::FILE *where, const std::string &text) {
    std::fputs((text + '\n').c_str(), where);
    std::fflush(where);
}

void emptyFolder(fs::path folder) {
    // A bare drive would be the current folder on it.
    folder += '/';
    std::vector<fs::path> entries;
    for (const fs::directory_entry &entry : fs::directory_iterator(folder)) {
        if (entry.path().filename() != kLabelFile)
            entries.push_back(entry.path());
    }
    for (const fs::path &entry : entries)
        fs::remove_all(entry);
}

void waitFor(const fs::path &file) {
    const auto end = std::chrono::steady_clock::now() + kLongestWait;
    while (file.empty() || !fs::exists(file)) {
        if (std::chrono::steady_clock::now() > end)
            throw std::runtime_error("waited long enough");
        std::this_thread::sleep_for(kLookInterval);
    }
}

std::string contentOf(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::string listed(const std::vector<fs::path> &arguments) {
    std::string lines;
    for (const fs::path &argument : arguments)
        lines += argument.u8string() + '\n';
    return lines;
}

/// Does one line. Returns whether to go on; else @p code is the exit code.
bool doLine(const std::string &line, const std::vector<fs::path> &arguments, int &code) {
    const size_t blank = line.find(' ');
    const std::string verb = line.substr(0, blank);
    const std::string object = blank == std::string::npos ? std::string() : line.substr(blank + 1);
    if (verb == "record") {
        writeFile(fs::u8path(object), contentOf(fs::u8path(object)) + listed(arguments));
    } else if (verb == "record-folder") {
        writeFile(fs::u8path(object), fs::current_path().generic_u8string() + '\n');
    } else if (verb == "print") {
        writeLine(stdout, object);
    } else if (verb == "complain") {
        writeLine(stderr, object);
    } else if (verb == "make") {
        writeFile(fs::u8path(object), std::string());
    } else if (verb == "empty") {
        emptyFolder(arguments.at(std::stoul(object) - 1));
    } else if (verb == "wait-for") {
        waitFor(fs::u8path(object));
    } else if (verb == "wait-forever") {
        waitFor(fs::path());
    } else if (verb == "read-input") {
        code = std::getchar() == EOF ? 0 : 1;
        return code == 0;
    } else if (verb == "exit") {
        code = std::stoi(object);
        return false;
    } else if (verb == "die") {
        dieAtOnce();
    } else {
        throw std::runtime_error("does not know how to " + verb);
    }
    return true;
}

} // namespace

int standIn(const fs::path &program, const std::vector<fs::path> &arguments) {
    try {
        fs::path list = program;
        list += ".does";
        std::ifstream lines(list, std::ios::binary);
        if (!lines)
            throw std::runtime_error("has nothing to do");
        int code = 0;
        std::string line;
        while (std::getline(lines, line) && doLine(line, arguments, code)) {
        }
        return code;
    } catch (const std::exception &problem) {
        writeLine(stderr, program.u8string() + ": " + problem.what());
        return kStandInFailed;
    }
}
