#pragma once

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <csignal>
#include <fstream>
#include <sys/resource.h>
#include <unistd.h>

/// No file can grow beyond a size in bytes while this lives: a disk that fills up.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit now = {size, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &now);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_before = {};
    void (*m_handler)(int);
};

/// No thread can be started while this lives, for want of room for its stack; small things still get their memory.
/// Where a thread has ended, its stack serves the next.
class NoThreads
{
public:
    NoThreads() {
        constexpr rlim_t kForSmallThings = rlim_t(1) << 20;
        std::ifstream sizes("/proc/self/statm");
        rlim_t pages = 0;
        sizes >> pages;
        getrlimit(RLIMIT_AS, &m_before);
        const rlimit now = {pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + kForSmallThings, m_before.rlim_max};
        setrlimit(RLIMIT_AS, &now);
    }
    ~NoThreads() { setrlimit(RLIMIT_AS, &m_before); }
    NoThreads(const NoThreads &) = delete;
    NoThreads &operator=(const NoThreads &) = delete;

private:
    rlimit m_before = {};
};

/// Root may read and delete everything; while this lives, root is nobody.
class NoRoot
{
public:
    static constexpr uid_t kNobody = 65534;

    NoRoot() {
        if (m_wasRoot && seteuid(kNobody) != 0)
            qFatal("cannot lay down root's rights");
    }
    ~NoRoot() {
        if (m_wasRoot && seteuid(0) != 0)
            qFatal("cannot take up root's rights again");
    }
    NoRoot(const NoRoot &) = delete;
    NoRoot &operator=(const NoRoot &) = delete;

private:
    const bool m_wasRoot = geteuid() == 0;
};
#endif
