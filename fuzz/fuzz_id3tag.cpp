#include "songfiles/id3tag.h"

#include <cstdlib>

namespace {

QString readAll(const Id3Tag &tag)
{
    const int numbers = (tag.length() / 2) + (tag.bpm() / 2) + (tag.isQArte() ? 1 : 0);
    return tag.title() + tag.artist() + tag.genre() + tag.author() + tag.key() + QString::number(numbers);
}

void writeAll(Id3Tag &tag, const QString &text)
{
    tag.setTitle(text);
    tag.setAuthor(text);
    tag.setBpm(tag.length());
    tag.setKey(text.right(2));
    tag.setLength(tag.bpm());
    tag.setArtist(text);
    tag.setGenre(text);
    tag.setMedt();
}

} // namespace

/// Reads and edits any bytes as the start of an MP3 song; however they look, the place of the audio stays inside them.
extern "C" int LLVMFuzzerTestOneInput(const quint8 *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const int needed = Id3Tag::bytesNeeded(bytes.left(Id3Tag::kHeaderSize));
    Id3Tag whole;
    Id3Tag tag;
    const bool loaded = tag.load(bytes.left(needed));
    if (loaded != whole.load(bytes.left(Id3Tag::kMostBytes)) || tag.bytes() != whole.bytes())
        std::abort();
    if (!loaded)
        return 0;
    if (tag.audioOffset() > bytes.size())
        std::abort();
    for (int round = 0; round < 2; ++round)
        writeAll(tag, readAll(tag));
    return 0;
}
