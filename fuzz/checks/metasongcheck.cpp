#include "checks.h"
#include "draws.h"
#include "packedsize.h"
#include "scratchfolder.h"

#include "songfiles/id3tag.h"
#include "songfiles/metasong.h"

namespace {

using FuzzChecks::Verdict;

constexpr int kMostLetters = 32;
constexpr int kMostNumber = 400;

SongInfo infoOf(const MetaSong &song)
{
    SongInfo info;
    song.getSongInfo(info);
    return info;
}

bool isSameInfo(const SongInfo &a, const SongInfo &b)
{
    return a.title == b.title && a.artist == b.artist && a.genre == b.genre && a.author == b.author &&
           a.length == b.length && a.userBpm == b.userBpm && a.key == b.key && a.isQArte == b.isQArte &&
           a.markers == b.markers && a.format == b.format && a.MfxLongName == b.MfxLongName && a.MfxFlags == b.MfxFlags;
}

/// Whether a text of the song, when it is written again, stands in nobody's way: with characters outside ASCII it may
/// be longer than its field and move the others, and in a tag it may be taken for a frame, whose names begin with a T.
bool isHarmless(const QString &text)
{
    return text.toUtf8().size() == text.size() && !text.contains(u'T');
}

/// Changes the song; what the user sets by hand must be there afterwards.
Verdict edit(MetaSong &song, Draws &draws)
{
    SongInfo info = infoOf(song);
    info.title = draws.plainText(kMostLetters);
    info.author = draws.plainText(kMostLetters);
    if (draws.below(2) == 0)
        info.genre = draws.plainText(kMostLetters);
    info.userBpm = 1 + draws.below(kMostNumber);
    const bool manual = draws.below(2) == 0;
    const qint32 inserted =
        song.addMarker(draws.plainText(kMostLetters), static_cast<quint16>(draws.below(kMostNumber)));
    // A track whose head is cut off has no place for anything.
    const bool hasPlace = inserted > 0 || song.formatCode() == Mp3Format;
    song.setSongInfo(info, manual);
    const SongInfo after = infoOf(song);
    if (manual && hasPlace && isHarmless(info.artist) && isHarmless(info.genre) && isHarmless(info.key) &&
        (after.title != info.title || after.author != info.author || after.userBpm != info.userBpm))
        return QStringLiteral("what the user has set is not there");
    return QString();
}

QByteArray audioOf(const QByteArray &bytes)
{
    Id3Tag tag;
    return tag.load(bytes) ? bytes.mid(int(tag.audioOffset())) : QByteArray();
}

/// Whether the song has its first track where one begins. One that begins within the file's head has its length where
/// the format stands: with another length the song is of another format.
bool hasWholeHead(const QByteArray &song)
{
    constexpr int kHeadSize = 14;
    const int track = song.indexOf("MTrk");
    return track < 0 || track >= kHeadSize;
}

Verdict savesWhole(MetaSong &song, const QString &path, const QByteArray &before)
{
    const bool isSaved = song.saveToFile(path);
    const QByteArray after = ScratchFolder::read(path);
    if (!isSaved)
        return after == before ? QString() : QStringLiteral("a song that could not be saved was changed");
    MetaSong again;
    if (!again.importFile(path))
        return QStringLiteral("a saved song is refused");
    if ((again.formatCode() != song.formatCode() && hasWholeHead(before)) || !isSameInfo(infoOf(again), infoOf(song)))
        return QStringLiteral("a saved song reads differently");
    if (song.formatCode() == Mp3Format && audioOf(after) != audioOf(before))
        return QStringLiteral("a saved song has lost audio");
    return QString();
}

} // namespace

/// The name of the file matters for MP3 alone: every song gets that one.
Verdict FuzzChecks::metaSong(const QByteArray &bytes)
{
    static const ScratchFolder folder;
    static const QString path = folder.path(QStringLiteral("song.mp3"));
    const QByteArray quick = withQuickSize(bytes, MfxHeader::sizeOfVersion(MfxHeader::versionOf(bytes)));
    const QByteArray &song = MfxHeader::versionOf(bytes) == 0 ? bytes : quick;
    ScratchFolder::write(path, song);
    MetaSong loaded;
    const bool isLoaded = loaded.importFile(path);
    if (isLoaded != (loaded.importResult() == ImportResult::Imported) ||
        isLoaded != (loaded.formatCode() != UnknownFormat))
        return QStringLiteral("a song is both read and refused");
    if (!isLoaded)
        return QString();
    Draws draws(bytes);
    Verdict wrong = edit(loaded, draws);
    return wrong.isEmpty() ? savesWhole(loaded, path, song) : wrong;
}
