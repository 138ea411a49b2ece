#include "checks.h"
#include "draws.h"
#include "midiedits.h"
#include "packedsize.h"

#include "songfiles/lzhuff.h"
#include "songfiles/metasong.h"
#include "songfiles/mfxheader.h"
#include "songfiles/rawmidifile.h"

namespace {

using FuzzChecks::Verdict;

constexpr int kMostLetters = 32;
constexpr int kFixedUntil = 4; ///< the bytes that name the version

/// Writes every field and says which does not read back.
Verdict editHeader(MfxHeader &header, Draws &draws)
{
    const QString title = draws.plainText(kMostLetters);
    const QString author = draws.plainText(kMostLetters);
    const QString artist = draws.plainText(kMostLetters);
    const QString genre = draws.plainText(kMostLetters);
    const auto bits = static_cast<quint8>(draws.below(256));
    const int flags = header.flags() | bits;
    const int bpm = draws.below(0x10000);
    header.setGenre(genre);
    header.setTitle(title);
    header.setArtist(artist);
    header.setAuthor(author);
    header.setBpm(bpm);
    header.orFlags(bits);
    header.setFileSize(static_cast<quint32>(draws.below(1 << 30)));
    header.setMidiSize(static_cast<quint32>(draws.below(1 << 30)));
    if (header.title() != title || header.author() != author || header.artist() != artist || header.genre() != genre)
        return QStringLiteral("a text of the header does not read back");
    if (header.bpm() != bpm || header.flags() != flags)
        return QStringLiteral("a number of the header does not read back");
    return QString();
}

/// As a song is packed and unpacked.
QByteArray packed(RawMidiFile &midi, int version, LzHuff &codec)
{
    QByteArray stream = midi.bytes();
    if (version == Mf4Format)
        stream.insert(mf4ExtraBytesOffset(stream), QByteArray(kMf4ExtraBytes, '\xFF'));
    QByteArray compressed;
    codec.compress(stream, compressed);
    return compressed;
}

bool unpack(const QByteArray &compressed, int version, LzHuff &codec, RawMidiFile &midi)
{
    QByteArray stream;
    if (!codec.expand(compressed, stream))
        return false;
    const int extra = mf4ExtraBytesOffset(stream);
    if (version == Mf4Format && extra >= 0)
        stream.remove(extra, kMf4ExtraBytes);
    return midi.load(stream);
}

} // namespace

Verdict FuzzChecks::mfxHeader(const QByteArray &bytes)
{
    MfxHeader header;
    const int version = MfxHeader::versionOf(bytes);
    const bool isWhole = version != 0 && bytes.size() >= MfxHeader::sizeOfVersion(version);
    if (header.setHeader(bytes) != isWhole || header.bytes() != (isWhole ? bytes : QByteArray()))
        return QStringLiteral("a header is taken for what it is not");
    Draws draws(bytes);
    Verdict wrong = editHeader(header, draws);
    if (!wrong.isEmpty() || !isWhole)
        return wrong;
    if (header.bytes().size() != bytes.size() || header.bytes().left(kFixedUntil) != bytes.left(kFixedUntil))
        return QStringLiteral("plain texts have moved the header");
    // Letters of other alphabets take more bytes than the field has: nothing may be read outside it then.
    header.setTitle(QStringLiteral("\u4e2d\u00e8\U0001F3B5") + header.longName());
    header.setAuthor(header.title());
    header.setTitle(header.genre() + header.artist());
    return QString();
}

Verdict FuzzChecks::mfxSong(const QByteArray &bytes)
{
    static LzHuff codec;
    const int version = MfxHeader::versionOf(bytes);
    const int headerSize = MfxHeader::sizeOfVersion(version);
    MfxHeader header;
    RawMidiFile midi;
    if (!header.setHeader(bytes.left(headerSize)) ||
        !unpack(withQuickSize(bytes, headerSize).mid(headerSize), version, codec, midi))
        return QString();
    Draws draws(bytes);
    Verdict wrongHeader = editHeader(header, draws);
    if (!wrongHeader.isEmpty())
        return wrongHeader;
    Verdict wrongStream = editMidi(midi, draws);
    // A track whose head is cut off has no place for the bytes that this version adds.
    if (!wrongStream.isEmpty() || mf4ExtraBytesOffset(midi.bytes()) > midi.bytes().size())
        return wrongStream;
    RawMidiFile again;
    if (!unpack(packed(midi, version, codec), version, codec, again))
        return QStringLiteral("an edited song does not unpack");
    return again.bytes() == midi.bytes() ? QString() : QStringLiteral("an edited song unpacks to another one");
}
