// Preloaded into the program of this machine: every folder lists its entries as Wine lists them, sorted by name
// whatever the case. What a run leaves on the player depends on that order here and there (which of two pictures of one
// name keeps it, how songs of one title are spread over folders), and every file system has one of its own.
#include <dirent.h>
#include <dlfcn.h>
#include <locale.h>
#include <wctype.h>

#include <algorithm>
#include <cwchar>
#include <map>
#include <mutex>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

struct Entry
{
    std::u16string key;
    std::u16string name;
    dirent64 value;
};

struct Listing
{
    std::vector<Entry> entries;
    size_t next = 0;
};

std::mutex lock;
std::map<DIR *, Listing> listings;

template <typename Function> Function *next(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

void append(std::u16string &text, wchar_t character)
{
    const auto code = static_cast<char32_t>(character);
    if (code > 0xffff) {
        text += static_cast<char16_t>(0xd800 + ((code - 0x10000) >> 10));
        text += static_cast<char16_t>(0xdc00 + ((code - 0x10000) & 0x3ff));
    } else {
        text += static_cast<char16_t>(code);
    }
}

Entry entryOf(const dirent64 &value)
{
    static const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const locale_t before = uselocale(utf8);
    Entry entry;
    entry.value = value;
    const char *bytes = value.d_name;
    std::mbstate_t state = {};
    wchar_t character = 0;
    // 0 at the end of the name; what is no character has a length that no character can have.
    for (;;) {
        const size_t length = std::mbrtowc(&character, bytes, MB_CUR_MAX, &state);
        if (length == 0 || length > MB_CUR_MAX)
            break;
        append(entry.key, static_cast<wchar_t>(towupper(static_cast<wint_t>(character))));
        append(entry.name, character);
        bytes += length;
    }
    uselocale(before);
    return entry;
}

Listing readSorted(DIR *folder)
{
    static auto *const readNext = next<dirent64 *(DIR *)>("readdir64");
    Listing listing;
    while (const dirent64 *value = readNext(folder))
        listing.entries.push_back(entryOf(*value));
    std::sort(listing.entries.begin(), listing.entries.end(),
              [](const Entry &a, const Entry &b) { return std::tie(a.key, a.name) < std::tie(b.key, b.name); });
    return listing;
}

} // namespace

extern "C" dirent64 *readdir64(DIR *folder)
{
    const std::lock_guard<std::mutex> guard(lock);
    auto found = listings.find(folder);
    if (found == listings.end())
        found = listings.emplace(folder, readSorted(folder)).first;
    Listing &listing = found->second;
    return listing.next < listing.entries.size() ? &listing.entries[listing.next++].value : nullptr;
}

extern "C" dirent *readdir(DIR *folder)
{
    static_assert(sizeof(dirent) == sizeof(dirent64), "64-bit systems only");
    return reinterpret_cast<dirent *>(readdir64(folder));
}

extern "C" int closedir(DIR *folder)
{
    {
        const std::lock_guard<std::mutex> guard(lock);
        listings.erase(folder);
    }
    return next<int(DIR *)>("closedir")(folder);
}
