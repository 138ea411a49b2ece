#include "checks.h"
#include "draws.h"
#include "midiedits.h"

#include "songfiles/rawmidifile.h"

#include <QtEndian>

namespace {

constexpr int kEdits = 12;
constexpr int kFileHeadBytes = 12; ///< as far as it is read
constexpr int kTrackHeadBytes = 8;
constexpr int kTrackLengthBytes = 4;
constexpr int kMostLetters = 100;
constexpr int kMostNumber = 100000;
/// No byte of a bar is the one by which events are found.
constexpr int kMostBar = 0x7F;

int trackStart(const QByteArray &bytes)
{
    return bytes.indexOf("MTrk", 1) + kTrackHeadBytes;
}

quint32 trackLength(const QByteArray &bytes)
{
    return qFromBigEndian<quint32>(bytes.constData() + trackStart(bytes) - kTrackLengthBytes);
}

using FuzzChecks::Verdict;

Verdict readsBack(bool isRight, const char *what)
{
    return isRight ? QString() : QStringLiteral("an edit does not read back: ") + QLatin1String(what);
}

Verdict editText(RawMidiFile &file, Draws &draws)
{
    const QString text = draws.plainText(kMostLetters);
    switch (draws.below(4)) {
    case 0:
        file.setTitle(text);
        return readsBack(file.title() == text && file.hasTitle(), "title");
    case 1:
        file.setGenre(text);
        return readsBack(file.genre() == text && file.hasGenre(), "genre");
    case 2:
        file.setArtist(text);
        return readsBack(file.artist() == text && file.hasArtist(), "artist");
    default:
        file.setAuthor(text);
        return readsBack(file.author() == text && file.hasAuthor(), "author");
    }
}

Verdict editNumber(RawMidiFile &file, Draws &draws)
{
    const int number = draws.below(kMostNumber);
    if (draws.below(2) == 0) {
        file.setLength(number);
        return readsBack(file.length() == number && file.hasLength(), "length");
    }
    file.setBpm(number);
    return readsBack(file.bpm() == number && file.hasBpm(), "tempo");
}

Verdict editKey(RawMidiFile &file, Draws &draws)
{
    const QStringList names = file.keyNames();
    const QString &name = names.at(draws.below(names.size()));
    file.setKey(name);
    return readsBack(file.key() == name && file.hasKey(), "key");
}

Verdict editMarkers(RawMidiFile &file, Draws &draws)
{
    QList<SongMarker> wanted;
    for (int left = 1 + draws.below(3); left > 0; --left)
        wanted.append({static_cast<quint16>(draws.below(kMostBar)), draws.plainText(kMostLetters)});
    file.setMarkers(wanted);
    QList<SongMarker> found;
    file.markers(found, false);
    return readsBack(found.mid(0, wanted.size()) == wanted && file.hasMarkers(), "markers");
}

/// Writes what the song says of itself, whatever that is, and what reads back differently by design.
Verdict editOddly(RawMidiFile &file, Draws &draws)
{
    const QString odd = file.title() + file.author() + QStringLiteral("\u00e8\u4e2d\U0001F3B5");
    QList<SongMarker> markers;
    file.markers(markers, draws.below(2) == 0);
    file.setTitle(odd);
    file.setLength(-1);
    file.setKey(odd.right(2));
    file.setMarkers(markers.mid(0, 3));
    file.removeStandardEvents(static_cast<quint8>(draws.below(128)), draws.below(2) == 0);
    file.removeOwnEvents(static_cast<quint8>(draws.below(8)), draws.below(2) == 0);
    return QString();
}

bool isSameSong(const RawMidiFile &a, const RawMidiFile &b)
{
    QList<SongMarker> markersOfA;
    QList<SongMarker> markersOfB;
    // Where a track begins inside the file's head, its length is also taken for these two.
    const bool isHeadWhole = trackStart(a.bytes()) >= kFileHeadBytes + kTrackHeadBytes;
    const bool isSameHead = a.formatCode() == b.formatCode() && a.trackCount() == b.trackCount();
    return a.bytes() == b.bytes() && (isSameHead || !isHeadWhole) && a.title() == b.title() && a.genre() == b.genre() &&
           a.artist() == b.artist() && a.author() == b.author() && a.key() == b.key() && a.length() == b.length() &&
           a.bpm() == b.bpm() && a.isQArte() == b.isQArte() &&
           a.markers(markersOfA, false) == b.markers(markersOfB, false) && markersOfA == markersOfB;
}

} // namespace

Verdict FuzzChecks::editMidi(RawMidiFile &file, Draws &draws)
{
    using Edit = Verdict (*)(RawMidiFile &, Draws &);
    constexpr Edit kKinds[] = {editText, editNumber, editKey, editMarkers, editOddly};
    for (int i = 0; i < kEdits; ++i) {
        const QByteArray before = file.bytes();
        Verdict wrong = kKinds[draws.below(int(std::size(kKinds)))](file, draws);
        const QByteArray &after = file.bytes();
        const int start = trackStart(before);
        // Without room for a track's head nothing can be written.
        if (start > before.size())
            return after == before ? QString() : QStringLiteral("a song without a track was changed");
        if (!wrong.isEmpty())
            return wrong;
        if (trackLength(after) - trackLength(before) != quint32(after.size()) - quint32(before.size()))
            return QStringLiteral("the length of the track is not kept up");
        if (after.left(start - kTrackLengthBytes) != before.left(start - kTrackLengthBytes))
            return QStringLiteral("what stands before the track was changed");
    }
    return QString();
}

Verdict FuzzChecks::rawMidiFile(const QByteArray &bytes)
{
    RawMidiFile file;
    RawMidiFile::titleIn(bytes);
    if (!file.load(bytes))
        return file.bytes().isEmpty() ? QString() : QStringLiteral("a song that was refused is held");
    Draws draws(bytes);
    Verdict wrong = editMidi(file, draws);
    if (!wrong.isEmpty())
        return wrong;
    RawMidiFile again;
    if (!again.load(file.bytes()))
        return QStringLiteral("an edited song is refused");
    return isSameSong(file, again) ? QString() : QStringLiteral("an edited song reads differently when reloaded");
}
