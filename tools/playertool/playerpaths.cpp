#include "playerpaths.h"

namespace {

const QString kDeviceRoot = QStringLiteral("\\sdmemory\\");

template <std::size_t N> bool isOneOf(const QString &text, const char *const (&words)[N])
{
    for (const char *word : words) {
        if (text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

constexpr const char *kSongs[] = {"mp3", "midi", "mid", "mf3", "mf4", "mf5", "kar", "xmp3", "xmid"};
constexpr const char *kCompanions[] = {"cdg", "dat", "bak"};
constexpr const char *kImages[] = {"jpg", "jpeg", "png", "bmp"};
constexpr const char *kVideos[] = {"avi", "mpg", "mpeg", "mp4", "wmv", "mov"};

} // namespace

PlayerPaths::Kind PlayerPaths::kindOf(const QString &path)
{
    const QString suffix = suffixOf(path);
    if (isOneOf(suffix, kSongs))
        return Kind::Song;
    if (isOneOf(suffix, kCompanions))
        return Kind::Companion;
    if (isOneOf(suffix, kImages))
        return Kind::Image;
    return isOneOf(suffix, kVideos) ? Kind::Video : Kind::Unsupported;
}

QString PlayerPaths::nameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString PlayerPaths::folderOf(const QString &path)
{
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    return slash < 0 ? QString() : path.left(slash);
}

QString PlayerPaths::stemOf(const QString &path)
{
    const QString name = nameOf(path);
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? name : name.left(dot);
}

QString PlayerPaths::suffixOf(const QString &path)
{
    const QString name = nameOf(path);
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : name.mid(dot + 1);
}

QString PlayerPaths::join(const QString &folder, const QString &name)
{
    return folder.isEmpty() ? name : folder + QLatin1Char('/') + name;
}

bool PlayerPaths::isHidden(const QString &path)
{
    return path.startsWith(QLatin1Char('.')) || path.contains(QLatin1String("/."));
}

bool PlayerPaths::beginsWithAny(const QString &folder, const QStringList &beginnings)
{
    for (const QString &beginning : beginnings) {
        if (folder.startsWith(beginning, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

bool PlayerPaths::isPlayersOwn(const QString &path)
{
    return beginsWithAny(folderOf(path), {QStringLiteral("System"), QStringLiteral("CorvinUpdate")});
}

bool PlayerPaths::isOutsideDatabase(const QString &path)
{
    return beginsWithAny(path, {QStringLiteral("Bridge"), QStringLiteral("Effects"), QStringLiteral("System")});
}

bool PlayerPaths::staysInRoot(const QString &path)
{
    const auto is = [&](const char *name) { return path.compare(QLatin1String(name), Qt::CaseInsensitive) == 0; };
    return is("q-artedev") || is("CorvinImportDB.sql") || is("AUTOEXEC.BAT");
}

QString PlayerPaths::toDevice(const QString &path)
{
    return kDeviceRoot + QString(path).replace(QLatin1Char('/'), QLatin1Char('\\'));
}

QString PlayerPaths::fromDevice(const QString &devicePath)
{
    if (!devicePath.startsWith(kDeviceRoot, Qt::CaseInsensitive))
        return QString();
    return devicePath.mid(kDeviceRoot.size()).replace(QLatin1Char('\\'), QLatin1Char('/'));
}
