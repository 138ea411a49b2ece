#include "playerdisk.h"

#include "support/testing.h"

bool PlayerDisk::isPossible(QString *) {
    return true;
}

PlayerDisk::PlayerDisk() = default;

QByteArray PlayerDisk::content(const QString &relative) const {
    return SimulatedPlayer::content(relative);
}

void PlayerDisk::addFormatCommand(ProgramFolder &programs, const QString &recordTo, const QString &inTheWay) const {
    QStringList does = {Does::record(recordTo), Does::emptyArgument(1)};
    if (!inTheWay.isEmpty())
        does.append(Does::make(path(inTheWay)));
    ::addFormatCommand(programs, does);
}

void addFormatCommand(ProgramFolder &programs, const QStringList &does) {
    programs.addStandIn("format"_s, does);
}

QString eraseDrive() {
    return Does::emptyArgument(1);
}

QStringList formatArguments(const QString &drive) {
    return QStringList{drive} + words("/FS:exFAT /V:CORVIN4 /Q /X /Y");
}
