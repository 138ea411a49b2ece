#include "playerdisk.h"

#include "playerpaths.h"
#include "titles.h"

#include <QDir>
#include <QFile>

namespace {

constexpr int kHundred = 100;

struct Share
{
    Recipe recipe;
    int weight;
};

constexpr Share kLatin1Shares[] = {{Recipe::Midi0, 22},
                                   {Recipe::Midi1, 20},
                                   {Recipe::MidiStandardMarkers, 5},
                                   {Recipe::Karaoke, 10},
                                   {Recipe::Mf3, 7},
                                   {Recipe::Mf4, 7},
                                   {Recipe::Mf5, 6},
                                   {Recipe::Mp3Tag22, 3},
                                   {Recipe::Mp3Tag23Latin1, 5},
                                   {Recipe::Mp3Tag23Utf16, 5},
                                   {Recipe::Mp3Tag24Latin1, 3},
                                   {Recipe::Mp3NoTag, 2},
                                   {Recipe::Mp3Tag24Utf16, 2},
                                   {Recipe::Mp3Tag24Utf8, 3}};

constexpr Recipe kAnyAlphabet[] = {Recipe::Mp3Tag23Utf16, Recipe::Mp3Tag24Utf16, Recipe::Mp3Tag24Utf8};

} // namespace

PlayerDisk::PlayerDisk(const QString &root, quint32 seed, int mp3Frames)
    : m_root(root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/')), m_random(seed), m_mp3Frames(mp3Frames)
{
}

void PlayerDisk::makeFolder(const QString &path)
{
    if (!path.isEmpty() && !m_folders.contains(path)) {
        QDir(m_root).mkpath(path);
        m_folders.insert(path);
    }
}

void PlayerDisk::write(const QString &path, const QByteArray &bytes)
{
    if (!m_failedAt.isEmpty())
        return;
    makeFolder(PlayerPaths::folderOf(path));
    QFile file(m_root + path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(bytes) != bytes.size())
        m_failedAt = path;
    ++m_fileCount;
}

SongInfo PlayerDisk::randomInfo(const QString &title)
{
    constexpr int kMaxMarkers = 4;
    constexpr int kSlowest = 55;
    constexpr int kFastest = 210;
    SongInfo info;
    info.title = title;
    info.artist = Titles::artist(m_random);
    info.genre = Titles::genre(m_random);
    info.author = QStringLiteral("%1 %2").arg(Titles::author(m_random)).arg(m_serial);
    info.userBpm = m_random.bounded(10) == 0 ? 0 : m_random.bounded(kSlowest, kFastest);
    info.key = Titles::keyName(m_random);
    info.length = m_random.bounded(1, 400);
    info.isQArte = m_random.bounded(5) == 0;
    const int markers = m_random.bounded(kMaxMarkers);
    for (int i = 0; i < markers; ++i)
        info.markers.append({quint16(1 + 8 * i), QStringLiteral("Strofa %1").arg(i + 1)});
    info.MfxLongName = title.left(10);
    info.MfxFlags = markers > 0 ? 1 : 0;
    return info;
}

Recipe PlayerDisk::randomRecipe(const QString &title)
{
    if (!Titles::isLatin1(title))
        return kAnyAlphabet[m_random.bounded(int(std::size(kAnyAlphabet)))];
    int ball = m_random.bounded(kHundred);
    for (const Share &share : kLatin1Shares) {
        ball -= share.weight;
        if (ball < 0)
            return share.recipe;
    }
    return Recipe::Midi0;
}

QString PlayerDisk::rareSuffix(Recipe recipe)
{
    const int chance = m_random.bounded(kHundred);
    if (isMp3(recipe))
        return chance < 3 ? QStringLiteral("MP3") : chance < 4 ? QStringLiteral("xmp3") : QString();
    if (usualSuffix(recipe) != QLatin1String("mid"))
        return QString();
    if (chance < 4)
        return chance < 2 ? QStringLiteral("midi") : QStringLiteral("MIDI");
    return chance < 6 ? QStringLiteral("MID") : chance < 7 ? QStringLiteral("xmid") : QString();
}

QString PlayerDisk::addSong(const QString &folder, Recipe recipe, const QString &title, const QString &stem,
                            const QString &suffix)
{
    ++m_serial;
    QString name = stem;
    if (name.isEmpty())
        name = QStringLiteral("%1 - %2").arg(Titles::asFileName(title)).arg(m_serial, 4, 10, QLatin1Char('0'));
    const MadeSong song = makeSong(recipe, randomInfo(title), name, m_serial, m_mp3Frames);
    QString path =
        PlayerPaths::join(folder, name + QLatin1Char('.') + (suffix.isEmpty() ? usualSuffix(recipe) : suffix));
    m_manifest.songs.insert(path, song.expected);
    write(path, song.bytes);
    return path;
}

QString PlayerDisk::addRandomSong(const QString &folder, const QString &title)
{
    const Recipe recipe = randomRecipe(title);
    const QString suffix = rareSuffix(recipe);
    return addSong(folder, recipe, title, QString(), suffix);
}

void PlayerDisk::addCompanions(const QString &song, const QStringList &suffixes)
{
    for (const QString &suffix : suffixes)
        addOther(PlayerPaths::join(PlayerPaths::folderOf(song), PlayerPaths::stemOf(song) + QLatin1Char('.') + suffix),
                 "companion");
}

int PlayerDisk::addSomeCompanions(const QString &song, int chance)
{
    static const QStringList kSets[] = {{QStringLiteral("cdg")},
                                        {QStringLiteral("cdg")},
                                        {QStringLiteral("dat")},
                                        {QStringLiteral("bak")},
                                        {QStringLiteral("dat"), QStringLiteral("cdg")},
                                        {QStringLiteral("dat"), QStringLiteral("cdg"), QStringLiteral("bak")}};
    if (m_random.bounded(kHundred) >= chance)
        return 0;
    const QStringList &suffixes = kSets[m_random.bounded(int(std::size(kSets)))];
    addCompanions(song, suffixes);
    return suffixes.size();
}

void PlayerDisk::addBrokenSong(const QString &path, const QByteArray &bytes)
{
    ExpectedSong broken;
    broken.broken = true;
    m_manifest.songs.insert(path, broken);
    write(path, bytes);
}

void PlayerDisk::addOther(const QString &path, const QByteArray &beginning)
{
    write(path, beginning + ' ' + path.toUtf8() + '\n');
}
