#include "systemattributes.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>
#ifdef __linux__
#include <linux/msdos_fs.h>
#include <sys/ioctl.h>
#endif

namespace {

/// Whatever goes wrong, the entry is left as it is: most volumes simply have no such attributes.
void hide(const QString &path)
{
#ifdef __linux__
    const int entry = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (entry < 0)
        return;
    __u32 attributes = 0;
    if (::ioctl(entry, FAT_IOCTL_GET_ATTRIBUTES, &attributes) == 0) {
        attributes |= ATTR_HIDDEN | ATTR_SYS;
        ::ioctl(entry, FAT_IOCTL_SET_ATTRIBUTES, &attributes);
    }
    ::close(entry);
#else
    Q_UNUSED(path)
#endif
}

} // namespace

bool runAttributeBatch(const QString &, const Player &player)
{
    hide(player.path(PlayerNames::kSystem));
    hide(player.path(PlayerNames::kStartScript));
    return true;
}
