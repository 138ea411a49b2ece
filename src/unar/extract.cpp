#include "extract.h"

#include "entrypath.h"
#include "longpath.h"

#include <archive.h>
#include <archive_entry.h>
#include <cstdio>
#include <fstream>
#include <memory>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kBlockSize = 65536;

struct ReaderFree
{
    void operator()(archive *reader) const { archive_read_free(reader); }
};
using Reader = std::unique_ptr<archive, ReaderFree>;

bool complain(const std::string &what, const char *why)
{
    std::fprintf(stderr, "%s: %s\n", what.c_str(), why ? why : "unknown error");
    return false;
}

std::string entryName(archive_entry *entry)
{
    if (const char *utf8 = archive_entry_pathname_utf8(entry))
        return utf8;
    // Names in an unknown code page stay as the bytes that they are.
    const char *raw = archive_entry_pathname(entry);
    return raw ? raw : "";
}

bool openArchive(archive *reader, const fs::path &path)
{
    // Not all that the library knows: a plain text in "mtree" form would pass for an archive of empty files, an empty
    // file for an archive of none, and some filters run programs of the PC.
    for (const auto support :
         {archive_read_support_filter_gzip, archive_read_support_filter_bzip2, archive_read_support_filter_xz,
          archive_read_support_filter_lzma, archive_read_support_format_zip, archive_read_support_format_tar,
          archive_read_support_format_7zip, archive_read_support_format_rar, archive_read_support_format_rar5,
          archive_read_support_format_cab})
        support(reader);
#ifdef _WIN32
    return archive_read_open_filename_w(reader, path.c_str(), kBlockSize) == ARCHIVE_OK;
#else
    return archive_read_open_filename(reader, path.c_str(), kBlockSize) == ARCHIVE_OK;
#endif
}

bool writeContent(archive *reader, const fs::path &target)
{
    std::ofstream file(anyLength(target), std::ios::binary | std::ios::trunc);
    const void *block = nullptr;
    std::size_t size = 0;
    la_int64_t offset = 0;
    int state = ARCHIVE_OK;
    while (file && (state = archive_read_data_block(reader, &block, &size, &offset)) == ARCHIVE_OK) {
        // Holes of sparse files come as jumps of the offset.
        file.seekp(offset);
        file.write(static_cast<const char *>(block), static_cast<std::streamsize>(size));
    }
    file.close();
    return state == ARCHIVE_EOF && !file.fail();
}

bool extractEntry(archive *reader, archive_entry *entry, const fs::path &folder)
{
    const std::string name = entryName(entry);
    const auto type = archive_entry_filetype(entry);
    const bool isLink = archive_entry_hardlink(entry) || archive_entry_symlink(entry);
    const auto relative = safeEntryPath(name);
    if (!relative || isLink || (type != AE_IFDIR && type != AE_IFREG))
        return complain(name, "refused");

    std::error_code error;
    const fs::path target = folder / fs::u8path(*relative);
    if (!makeFolders(type == AE_IFDIR ? target : target.parent_path()))
        return complain(name, "its folder cannot be made");
    if (type == AE_IFDIR)
        return true;
    if (fs::is_symlink(fs::symlink_status(target, error)))
        return complain(name, "refused");
    if (writeContent(reader, target))
        return true;
    fs::remove(anyLength(target), error);
    return complain(name, archive_error_string(reader) ? archive_error_string(reader) : "cannot be written");
}

} // namespace

bool extractArchive(const fs::path &archivePath, const fs::path &folder)
{
    const Reader reader(archive_read_new());
    if (!reader || !openArchive(reader.get(), archivePath))
        return complain(archivePath.u8string(), reader ? archive_error_string(reader.get()) : "out of memory");

    // The mark of a long path belongs to whole ones only.
    std::error_code error;
    const fs::path place = fs::absolute(folder, error);
    bool allWell = !error;
    archive_entry *entry = nullptr;
    int state = ARCHIVE_OK;
    while ((state = archive_read_next_header(reader.get(), &entry)) == ARCHIVE_OK || state == ARCHIVE_WARN)
        allWell = extractEntry(reader.get(), entry, place) && allWell;
    if (state != ARCHIVE_EOF)
        return complain(archivePath.u8string(), archive_error_string(reader.get()));
    return allWell;
}
