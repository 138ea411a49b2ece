#include "playerdisk.h"

#include "support/testing.h"

bool PlayerDisk::isPossible(QString *why) {
    return ExFatVolume::isPossible(why);
}

PlayerDisk::PlayerDisk() : MountedPlayer(16) {
    if (!isMounted())
        qFatal("%s", qPrintable(volume->error()));
}

QByteArray PlayerDisk::content(const QString &relative) const {
    return contentOf(path(relative));
}

void PlayerDisk::addFormatCommand(ProgramFolder &programs, const QString &recordTo, const QString &inTheWay) const {
    // What served the old file system may hold the device a moment longer.
    QString lines =
        "PATH=/usr/sbin:/usr/bin:/sbin:/bin\n"
        "printf '%s\\n' \"$@\" > '%1'\n"
        "for once in $(seq 50); do umount \"$3\" && break; sleep 0.1; done\n"
        "for once in $(seq 50); do mkfs.exfat -L CORVIN4 %2 && break; sleep 0.1; done\n"
        "mount.exfat-fuse %2 \"$3\" && echo CORVIN4 > \"$3/.windows-label\"\n"_s.arg(recordTo, volume->device());
    if (!inTheWay.isEmpty())
        lines += "echo > \"$3/%1\"\n"_s.arg(inTheWay);
    programs.addScript("cmd.exe"_s, lines.toUtf8());
}

void addFormatCommand(ProgramFolder &programs, const QStringList &does) {
    programs.addStandIn("cmd.exe"_s, does);
}

QString eraseDrive() {
    return Does::emptyArgument(3);
}

QStringList formatArguments(const QString &drive) {
    return words("/C format") + QStringList{drive} + words("/FS:exFAT /V:CORVIN4 /Q /X /Y");
}
