#include "songfactory/songfactory.h"

namespace {

constexpr int kFrameBytes = 417; // 144 * 128000 / 44100, without the padding byte
constexpr int kTagHeaderBytes = 10;

enum Encoding
{
    Latin1 = 0,
    Utf16WithMark = 1,
    Utf16BigEndian = 2,
    Utf8 = 3,
};

QByteArray plain(quint32 value, int bytes)
{
    QByteArray out;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        out.append(char((value >> shift) & 0xFF));
    return out;
}

QByteArray synchSafe(quint32 value)
{
    QByteArray out;
    for (int shift = 21; shift >= 0; shift -= 7)
        out.append(char((value >> shift) & 0x7F));
    return out;
}

QByteArray utf16(const QString &text, bool bigEndian)
{
    QByteArray out;
    for (const QChar c : text) {
        const char high = char(c.unicode() >> 8);
        const char low = char(c.unicode() & 0xFF);
        out.append(bigEndian ? high : low).append(bigEndian ? low : high);
    }
    return out;
}

QByteArray encoded(const QString &text, int encodingByte)
{
    switch (encodingByte) {
    case Utf16WithMark:
        return QByteArrayLiteral("\xFF\xFE") + utf16(text, false);
    case Utf16BigEndian:
        return utf16(text, true);
    case Utf8:
        return text.toUtf8();
    default:
        return text.toLatin1();
    }
}

struct FrameName
{
    const char *inVersion2;
    const char *later;
};

constexpr FrameName kTitle = {"TT2", "TIT2"};
constexpr FrameName kArtist = {"TP1", "TPE1"};
constexpr FrameName kGenre = {"TCO", "TCON"};
constexpr FrameName kComposer = {"TCM", "TCOM"};
constexpr FrameName kKey = {"TKE", "TKEY"};
constexpr FrameName kLength = {"TLE", "TLEN"};
constexpr FrameName kBpm = {"TBP", "TBPM"};
constexpr FrameName kCopyright = {"TCR", "TCOP"};

} // namespace

QByteArray SongFactory::silentMp3Frames(int count)
{
    // Side information of all zeros: no main data, nothing to add to silence.
    QByteArray frame = QByteArray::fromHex("FFFB90C4");
    frame.append(QByteArray(kFrameBytes - frame.size(), '\0'));
    return frame.repeated(count);
}

QByteArray SongFactory::id3v2TextFrame(int majorVersion, const QByteArray &id, const QString &text, int encodingByte)
{
    const QByteArray payload = QByteArray(1, char(encodingByte)) + encoded(text, encodingByte);
    const quint32 size = quint32(payload.size());
    if (majorVersion == 2)
        return id + plain(size, 3) + payload;
    return id + (majorVersion == 3 ? plain(size, 4) : synchSafe(size)) + QByteArray(2, '\0') + payload;
}

QByteArray SongFactory::id3v2TagAround(int majorVersion, const QByteArray &frames)
{
    QByteArray header = QByteArrayLiteral("ID3");
    header.append(char(majorVersion)).append(2, '\0').append(synchSafe(quint32(frames.size())));
    Q_ASSERT(header.size() == kTagHeaderBytes);
    return header + frames;
}

QByteArray SongFactory::id3v2Tag(int majorVersion, const SongInfo &info, int encodingByte, int padding)
{
    QByteArray frames;
    const auto add = [&](const FrameName &name, const QString &text) {
        const char *id = majorVersion == 2 ? name.inVersion2 : name.later;
        if (!text.isEmpty())
            frames += id3v2TextFrame(majorVersion, QByteArray(id), text, encodingByte);
    };
    const auto number = [](qint64 value) { return value > 0 ? QString::number(value) : QString(); };
    add(kTitle, info.title);
    add(kArtist, info.artist);
    add(kGenre, info.genre);
    add(kComposer, info.author);
    add(kKey, info.key);
    add(kLength, number(qint64(info.length) * 1000));
    add(kBpm, number(info.userBpm));
    if (info.isQArte)
        add(kCopyright, QStringLiteral("2019 Q-Arte"));
    return id3v2TagAround(majorVersion, frames + QByteArray(padding, '\0'));
}

QByteArray SongFactory::mp3(int tagVersion, const SongInfo &info, int encodingByte, int frames)
{
    const QByteArray audio = silentMp3Frames(frames);
    return tagVersion == 0 ? audio : id3v2Tag(tagVersion, info, encodingByte) + audio;
}
