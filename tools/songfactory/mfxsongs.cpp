#include "songfactory/songfactory.h"

#include "songfiles/lzhuff.h"

namespace {

constexpr int kSmallHeader = 512;
constexpr int kLargeHeader = 1024;
constexpr int kTrackHeadBytes = 8;

void putNumber(QByteArray &block, int offset, quint32 value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        block[offset + i] = char((value >> (8 * i)) & 0xFF);
}

void putText(QByteArray &block, int offset, int width, const QString &text)
{
    block.replace(offset, width, text.toLatin1().left(width).leftJustified(width, '\0'));
}

} // namespace

QByteArray SongFactory::mfxHeader(int version, const SongInfo &info, quint32 fileSize, quint32 midiSize)
{
    QByteArray block(version == 5 ? kLargeHeader : kSmallHeader, '\0');
    for (int i = 0; i < block.size(); ++i)
        block[i] = char(0x80 + i % 0x60);
    block.replace(0, 4, QByteArrayLiteral("_MF") + QByteArray::number(version));
    putNumber(block, 4, fileSize, 4);
    putNumber(block, 12, midiSize, 4);
    putNumber(block, 38, info.userBpm > 0 ? quint32(info.userBpm) : 0, 2);
    putText(block, 42, 13, info.MfxLongName);
    putText(block, 90, 20, QStringLiteral("unused one"));
    putText(block, 122, 32, info.title);
    putText(block, 154, 31, QStringLiteral("unused two"));
    putNumber(block, 185, info.MfxFlags, 1);
    putText(block, 186, 32, info.author);
    putText(block, 218, 32, info.artist);
    putText(block, 250, 32, info.genre);
    return block;
}

QByteArray SongFactory::mfx(int version, const SongInfo &info, int bars)
{
    QByteArray stream = midi(info, 0, Markers::WithBars, bars);
    if (version == 4)
        stream.insert(stream.indexOf("MTrk") + kTrackHeadBytes, QByteArray::fromHex("FF00FF"));
    QByteArray compressed;
    LzHuff().compress(stream, compressed);
    const int headerSize = version == 5 ? kLargeHeader : kSmallHeader;
    return mfxHeader(version, info, quint32(headerSize + compressed.size()), quint32(stream.size())) + compressed;
}
