#include "checks.h"
#include "draws.h"

#include "songfiles/id3tag.h"

namespace {

using FuzzChecks::Verdict;

constexpr int kEdits = 12;
constexpr int kMostLetters = 100;
constexpr int kMostNumber = 100000;

Verdict readsBack(bool isRight, const char *what)
{
    return isRight ? QString() : QStringLiteral("a frame does not read back: ") + QLatin1String(what);
}

Verdict editText(Id3Tag &tag, Draws &draws)
{
    const QString text = draws.plainText(kMostLetters);
    switch (draws.below(5)) {
    case 0:
        tag.setTitle(text);
        return readsBack(tag.title() == text && tag.hasTitle(), "title");
    case 1:
        tag.setArtist(text);
        return readsBack(tag.artist() == text, "artist");
    case 2:
        tag.setGenre(text);
        return readsBack(tag.genre() == text && tag.hasGenre(), "genre");
    case 3:
        tag.setAuthor(text);
        return readsBack(tag.author() == text && tag.hasAuthor(), "author");
    default:
        tag.setKey(text);
        return readsBack(tag.key() == text && tag.hasKey(), "key");
    }
}

Verdict editNumber(Id3Tag &tag, Draws &draws)
{
    const int number = 1 + draws.below(kMostNumber);
    if (draws.below(2) == 0) {
        tag.setLength(number);
        return readsBack(tag.length() == number && tag.hasLength(), "length");
    }
    tag.setBpm(number);
    return readsBack(tag.bpm() == number && tag.hasBpm(), "tempo");
}

/// Writes what the tag says of itself, whatever that is, and what is not read back by design.
Verdict editOddly(Id3Tag &tag, Draws &draws)
{
    const QString odd = tag.title() + tag.genre() + QStringLiteral("\u00e8\u4e2d\U0001F3B5TIT2");
    tag.setArtist(odd);
    tag.setTitle(draws.below(2) == 0 ? odd : QString());
    tag.setBpm(-tag.length());
    tag.setLength(tag.bpm());
    tag.removeFrame(QByteArrayLiteral("TCOM"));
    const int frames = tag.bytes().size() - Id3Tag::kHeaderSize;
    tag.addFrame(QByteArrayLiteral("TCON"), odd.toUtf8(), Id3Tag::kHeaderSize + draws.below(frames + 2));
    tag.setMedt();
    return readsBack(tag.hasMedt(), "mark");
}

bool isSameTag(const Id3Tag &a, const Id3Tag &b)
{
    return a.bytes() == b.bytes() && a.title() == b.title() && a.artist() == b.artist() && a.genre() == b.genre() &&
           a.author() == b.author() && a.key() == b.key() && a.length() == b.length() && a.bpm() == b.bpm() &&
           a.isQArte() == b.isQArte();
}

/// As much of a file as is read, and all of it, are the same tag.
Verdict load(Id3Tag &tag, const QByteArray &bytes, bool &isLoaded)
{
    const int needed = Id3Tag::bytesNeeded(bytes.left(Id3Tag::kHeaderSize));
    Id3Tag whole;
    isLoaded = tag.load(bytes.left(needed));
    if (isLoaded != whole.load(bytes) || tag.bytes() != whole.bytes())
        return QStringLiteral("the bytes that are needed are not all that matter");
    if (isLoaded && tag.audioOffset() > bytes.size())
        return QStringLiteral("the audio begins behind the end of the song");
    return QString();
}

} // namespace

Verdict FuzzChecks::id3Tag(const QByteArray &bytes)
{
    Id3Tag tag;
    bool isLoaded = false;
    Verdict wrong = load(tag, bytes, isLoaded);
    if (!wrong.isEmpty() || !isLoaded)
        return wrong;
    const qint64 audio = tag.audioOffset();
    Draws draws(bytes);
    using Edit = Verdict (*)(Id3Tag &, Draws &);
    constexpr Edit kKinds[] = {editText, editText, editNumber, editOddly};
    for (int i = 0; i < kEdits && wrong.isEmpty(); ++i)
        wrong = kKinds[draws.below(int(std::size(kKinds)))](tag, draws);
    if (!wrong.isEmpty())
        return wrong;
    if (tag.audioOffset() != audio)
        return QStringLiteral("edits have moved the audio of the song on the disk");
    Id3Tag again;
    if (!again.load(tag.bytes()))
        return QStringLiteral("an edited tag is refused");
    return isSameTag(tag, again) ? QString() : QStringLiteral("an edited tag reads differently when reloaded");
}
