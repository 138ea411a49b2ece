#include "playerdisk.h"

#include "systemfixture.h"

namespace {

constexpr int kMegabytes = 16;

const QString kInterpreter = QStringLiteral("cmd.exe");

} // namespace

struct PlayerDisk::Volume
{
    MountedPlayer player{kMegabytes};
};

bool PlayerDisk::isPossible(QString *why)
{
    return ExFatVolume::isPossible(why);
}

PlayerDisk::PlayerDisk() : m_volume(std::make_unique<Volume>()) {}

PlayerDisk::~PlayerDisk() = default;

bool PlayerDisk::isThere() const
{
    return m_volume->player.isMounted();
}

QString PlayerDisk::error() const
{
    return m_volume->player.volume->error();
}

QString PlayerDisk::root() const
{
    return m_volume->player.root();
}

QStringList PlayerDisk::files() const
{
    return m_volume->player.files();
}

QByteArray PlayerDisk::content(const QString &relative) const
{
    return contentOf(path(relative));
}

void PlayerDisk::addFormatCommand(ProgramFolder &programs, const QString &recordTo, const QString &inTheWay) const
{
    QString lines = QStringLiteral("PATH=/usr/sbin:/usr/bin:/sbin:/bin\n"
                                   "printf '%s\\n' \"$@\" > '%1'\n"
                                   "umount \"$3\" && mkfs.exfat -L CORVIN4 %2 &&\n"
                                   "mount.exfat-fuse %2 \"$3\" && echo CORVIN4 > \"$3/.windows-label\"\n")
                        .arg(recordTo, m_volume->player.volume->device());
    if (!inTheWay.isEmpty())
        lines += QStringLiteral("echo > \"$3/%1\"\n").arg(inTheWay);
    programs.addScript(kInterpreter, lines.toUtf8());
}

void addFormatCommand(ProgramFolder &programs, const QStringList &does)
{
    programs.addStandIn(kInterpreter, does);
}

QStringList formatArguments(const QString &drive)
{
    return {QStringLiteral("/C"),        QStringLiteral("format"),     drive,
            QStringLiteral("/FS:exFAT"), QStringLiteral("/V:CORVIN4"), QStringLiteral("/Q"),
            QStringLiteral("/X"),        QStringLiteral("/Y")};
}
