#include "playerdisk.h"

#include "support/simulatedplayer.h"

struct PlayerDisk::Volume
{
    SimulatedPlayer player;
};

bool PlayerDisk::isPossible(QString *)
{
    return true;
}

PlayerDisk::PlayerDisk() : m_volume(std::make_unique<Volume>()) {}

PlayerDisk::~PlayerDisk() = default;

// Had it not been plugged in, the test would have failed by now.
bool PlayerDisk::isThere() const
{
    return true;
}

QString PlayerDisk::error() const
{
    return {};
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
    return m_volume->player.content(relative);
}

void PlayerDisk::addFormatCommand(ProgramFolder &programs, const QString &recordTo, const QString &inTheWay) const
{
    QStringList does = {Does::record(recordTo), Does::emptyArgument(1)};
    if (!inTheWay.isEmpty())
        does.append(Does::make(path(inTheWay)));
    ::addFormatCommand(programs, does);
}

void addFormatCommand(ProgramFolder &programs, const QStringList &does)
{
    programs.addStandIn(QStringLiteral("format"), does);
}

QStringList formatArguments(const QString &drive)
{
    return {drive,
            QStringLiteral("/FS:exFAT"),
            QStringLiteral("/V:CORVIN4"),
            QStringLiteral("/Q"),
            QStringLiteral("/X"),
            QStringLiteral("/Y")};
}
