#include "diskcalls.h"

#include <QFile>

#include <cstdio>
#include <sys/stat.h>

quint64 volumeId(const QString &path)
{
    struct stat status = {};
    if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &status) != 0)
        return 0;
    // A device number of 0 is a number like any other.
    return quint64(status.st_dev) + 1;
}

bool moveOver(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}
