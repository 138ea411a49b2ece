#include "standin.h"

#include <csignal>
#include <unistd.h>

void dieAtOnce() {
    ::kill(::getpid(), SIGKILL);
    ::_exit(kStandInFailed);
}

int main(int argc, char **argv) {
    // The first argument is only what the caller typed.
    return standIn(std::filesystem::read_symlink("/proc/self/exe"),
                   std::vector<std::filesystem::path>(argv + 1, argv + argc));
}
