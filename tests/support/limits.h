#pragma once

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <csignal>
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

/// Root may read and delete everything; while this lives, root is nobody.
class NoRoot
{
public:
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
    static constexpr uid_t kNobody = 65534;
    const bool m_wasRoot = geteuid() == 0;
};
#endif
