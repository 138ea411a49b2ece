#include "player.h"

#include "devicecase.h"
#include "listedvolumes.h"

#include "disk/aside.h"
#include "disk/diskcalls.h"

#include <QFile>

namespace {
constexpr QLatin1Char kPcSeparator('/');
constexpr QLatin1Char kDeviceSeparator('\\');
} // namespace

Player::Player(const QString &root) : m_root(root), m_volume(volumeId(root)) {}

QString Player::path(const QString &relative) const
{
    return resolveDevicePath(m_root, relative);
}

QString Player::pcPath(QString text) const
{
    text.replace(PlayerNames::kPathStart, m_root, Qt::CaseInsensitive);
    return text.replace(kDeviceSeparator, kPcSeparator);
}

QString Player::devicePath(QString path) const
{
    // Replacing an empty text would put the player's root between any two characters.
    if (m_root.isEmpty())
        return path.replace(kPcSeparator, kDeviceSeparator);
    // Nearly always the root comes in front and nowhere else: to put the two pieces together takes half the time.
    if (path.startsWith(m_root) && path.indexOf(m_root, m_root.size()) < 0)
        path = PlayerNames::kPathStart + path.midRef(m_root.size());
    else
        path.replace(m_root, PlayerNames::kPathStart);
    return path.replace(kPcSeparator, kDeviceSeparator);
}

bool Player::isThere() const
{
    // A folder that plays the volume stays what it is when it is no longer listed.
    return m_volume != 0 && volumeId(m_root) == m_volume &&
           (!ListedVolumes::areInForce() || isPlayerLabel(ListedVolumes::label(m_root)));
}

bool Player::flush(const std::function<bool()> &goOn) const
{
    return flushVolumeAside(m_root, goOn) && isThere();
}

bool Player::isOwnFolder(const QString &name)
{
    using namespace PlayerNames;
    for (const QLatin1String own : {kSystem, kUpdate, kBridges, kEffects, kMySongs, kImages, kVideos}) {
        if (name.compare(own, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

bool Player::hasSystemFiles() const
{
    using namespace PlayerNames;
    bool all = true;
    for (const QLatin1String file : {kStartScript, kMainProgram, kInterfaceProcess})
        all = QFile::exists(path(file)) && all;
    return all;
}
