// A disk as slow as one on a USB cable: a FUSE file system that hands everything on to a folder, after a pause a
// request. slowdisk FOLDER MILLISECONDS MOUNTPOINT [options of FUSE]. How many requests came is written at its end to
// the file that the environment variable SLOWDISK_COUNT names.
#define FUSE_USE_VERSION 31
#include <fuse.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <thread>
#include <unistd.h>

namespace {

std::string folder;
std::chrono::microseconds pause_(0);
std::atomic<long> requests{0};

/// Every request waits as for a disk.
std::string slowly(const char *path)
{
    ++requests;
    std::this_thread::sleep_for(pause_);
    return folder + path;
}

int result(int value)
{
    return value < 0 ? -errno : value;
}

int getAttributes(const char *path, struct stat *entry, struct fuse_file_info *)
{
    return result(::lstat(slowly(path).c_str(), entry));
}

int listFolder(const char *path, void *buffer, fuse_fill_dir_t fill, off_t, struct fuse_file_info *,
               enum fuse_readdir_flags)
{
    DIR *entries = ::opendir(slowly(path).c_str());
    if (!entries)
        return -errno;
    while (const dirent *entry = ::readdir(entries)) {
        struct stat known = {};
        known.st_ino = entry->d_ino;
        known.st_mode = static_cast<mode_t>(entry->d_type << 12);
        fill(buffer, entry->d_name, &known, 0, static_cast<fuse_fill_dir_flags>(0));
    }
    ::closedir(entries);
    return 0;
}

int openFile(const char *path, struct fuse_file_info *info)
{
    const int file = ::open(slowly(path).c_str(), info->flags);
    info->fh = static_cast<uint64_t>(file);
    return file < 0 ? -errno : 0;
}

int createFile(const char *path, mode_t mode, struct fuse_file_info *info)
{
    const int file = ::open(slowly(path).c_str(), info->flags | O_CREAT, mode);
    info->fh = static_cast<uint64_t>(file);
    return file < 0 ? -errno : 0;
}

int readFile(const char *path, char *buffer, size_t size, off_t offset, struct fuse_file_info *info)
{
    slowly(path);
    return result(static_cast<int>(::pread(static_cast<int>(info->fh), buffer, size, offset)));
}

int writeFile(const char *path, const char *buffer, size_t size, off_t offset, struct fuse_file_info *info)
{
    slowly(path);
    return result(static_cast<int>(::pwrite(static_cast<int>(info->fh), buffer, size, offset)));
}

int closeFile(const char *, struct fuse_file_info *info)
{
    return result(::close(static_cast<int>(info->fh)));
}

int makeFolder(const char *path, mode_t mode)
{
    return result(::mkdir(slowly(path).c_str(), mode));
}

int removeFile(const char *path)
{
    return result(::unlink(slowly(path).c_str()));
}

int removeFolder(const char *path)
{
    return result(::rmdir(slowly(path).c_str()));
}

int renameEntry(const char *from, const char *to, unsigned)
{
    return result(::rename(slowly(from).c_str(), (folder + to).c_str()));
}

int cutFile(const char *path, off_t size, struct fuse_file_info *)
{
    return result(::truncate(slowly(path).c_str(), size));
}

int volumeRoom(const char *path, struct statvfs *room)
{
    return result(::statvfs(slowly(path).c_str(), room));
}

void end(void *)
{
    if (const char *name = std::getenv("SLOWDISK_COUNT")) {
        if (FILE *file = std::fopen(name, "w")) {
            std::fprintf(file, "%ld\n", requests.load());
            std::fclose(file);
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 4)
        return 2;
    folder = argv[1];
    pause_ = std::chrono::microseconds(static_cast<long>(std::atof(argv[2]) * 1000));
    fuse_operations operations = {};
    operations.getattr = getAttributes;
    operations.readdir = listFolder;
    operations.open = openFile;
    operations.create = createFile;
    operations.read = readFile;
    operations.write = writeFile;
    operations.release = closeFile;
    operations.mkdir = makeFolder;
    operations.unlink = removeFile;
    operations.rmdir = removeFolder;
    operations.rename = renameEntry;
    operations.truncate = cutFile;
    operations.statfs = volumeRoom;
    operations.destroy = end;
    argv[2] = argv[0];
    return fuse_main(argc - 2, argv + 2, &operations, nullptr);
}
