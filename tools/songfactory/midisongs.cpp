#include "songfactory/songfactory.h"

#include <QList>

namespace {

constexpr int kTicksPerBeat = 96;
constexpr int kBeatsPerBar = 4;
constexpr int kDefaultBpm = 120;
constexpr int kMicrosecondsPerMinute = 60000000;
constexpr int kMaxTextBytes = 120; // one-byte lengths are read with a sign: 127 is the end

constexpr char kCopyright = 0x02;
constexpr char kTrackName = 0x03;
constexpr char kText = 0x01;
constexpr char kMarker = 0x06;
constexpr char kEndOfTrack = 0x2F;
constexpr char kTempo = 0x51;
constexpr char kTimeSignature = 0x58;
constexpr char kKeySignature = 0x59;
constexpr char kMakersMeta = 0x4B;

QByteArray bigEndian(quint32 value, int bytes)
{
    QByteArray out;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        out.append(char((value >> shift) & 0xFF));
    return out;
}

QByteArray meta(char type, const QByteArray &payload)
{
    QByteArray out;
    out.append('\0').append('\xFF').append(type).append(char(payload.size())).append(payload);
    return out;
}

QByteArray latin1(const QString &text)
{
    return text.toLatin1().left(kMaxTextBytes);
}

QByteArray textMeta(char type, const QString &text)
{
    return text.isEmpty() ? QByteArray() : meta(type, latin1(text));
}

QByteArray makersMeta(char tag, const QByteArray &payload)
{
    return payload.isEmpty() ? QByteArray() : meta(kMakersMeta, QByteArray(1, tag) + payload);
}

QByteArray number(int value)
{
    return value > 0 ? QByteArray::number(value) : QByteArray();
}

/// Sharps (negative: flats) and mode of a key name; a name that is no key gives no event.
QByteArray keySignature(const QString &name)
{
    static const QStringList kMajors = {
        QStringLiteral("Cb"), QStringLiteral("Gb"), QStringLiteral("Db"), QStringLiteral("Ab"), QStringLiteral("Eb"),
        QStringLiteral("Bb"), QStringLiteral("F"),  QStringLiteral("C"),  QStringLiteral("G"),  QStringLiteral("D"),
        QStringLiteral("A"),  QStringLiteral("E"),  QStringLiteral("B"),  QStringLiteral("F#"), QStringLiteral("C#")};
    static const QStringList kMinors = {QStringLiteral("Ab-"), QStringLiteral("Eb-"), QStringLiteral("Bb-"),
                                        QStringLiteral("F-"),  QStringLiteral("C-"),  QStringLiteral("G-"),
                                        QStringLiteral("D-"),  QStringLiteral("A-"),  QStringLiteral("E-"),
                                        QStringLiteral("B-"),  QStringLiteral("F#-"), QStringLiteral("C#-"),
                                        QStringLiteral("G#-"), QStringLiteral("D#-"), QStringLiteral("A#-")};
    constexpr int kMostFlats = 7;
    for (int mode = 0; mode < 2; ++mode) {
        const int index = (mode == 0 ? kMajors : kMinors).indexOf(name);
        if (index >= 0)
            return meta(kKeySignature, QByteArray(1, char(index - kMostFlats)) + QByteArray(1, char(mode)));
    }
    return QByteArray();
}

QByteArray songEvents(const SongInfo &info, SongFactory::Markers style)
{
    QByteArray out = textMeta(kTrackName, info.title);
    if (info.isQArte)
        out += meta(kCopyright, QByteArrayLiteral("(c) Q-ARTE"));
    out += makersMeta(1, latin1(info.genre));
    out += makersMeta(2, latin1(info.artist));
    out += makersMeta(3, latin1(info.author));
    out += makersMeta(4, number(info.length));
    out += makersMeta(5, number(info.userBpm));
    for (const SongMarker &marker : info.markers) {
        if (style == SongFactory::Markers::Standard)
            out += textMeta(kMarker, marker.text);
        else
            out += makersMeta(6, bigEndian(marker.bar, 2) + latin1(marker.text));
    }
    return out + keySignature(info.key);
}

QByteArray timeEvents(int bpm)
{
    const int tempo = kMicrosecondsPerMinute / (bpm > 0 ? bpm : kDefaultBpm);
    return meta(kTimeSignature, QByteArray::fromHex("04021808")) + meta(kTempo, bigEndian(quint32(tempo), 3));
}

/// A scale that walks up and down, one note a beat; all deltas stay below 128, a single byte.
QByteArray notes(int bars)
{
    static const char kScale[] = {60, 62, 64, 65, 67, 69, 71, 72};
    QByteArray out = QByteArray::fromHex("00C000"); // program change: piano
    for (int beat = 0; beat < bars * kBeatsPerBar; ++beat) {
        const char pitch = kScale[beat % int(sizeof kScale)];
        out.append('\0').append('\x90').append(pitch).append('\x50');
        out.append(char(kTicksPerBeat)).append('\x80').append(pitch).append('\x40');
    }
    return out;
}

QByteArray track(const QByteArray &events)
{
    const QByteArray data = events + meta(kEndOfTrack, QByteArray());
    return QByteArrayLiteral("MTrk") + bigEndian(quint32(data.size()), 4) + data;
}

QByteArray file(int headerFormat, const QList<QByteArray> &tracks)
{
    constexpr quint32 kHeaderDataSize = 6;
    QByteArray out = QByteArrayLiteral("MThd") + bigEndian(kHeaderDataSize, 4) + bigEndian(quint32(headerFormat), 2) +
                     bigEndian(quint32(tracks.size()), 2) + bigEndian(kTicksPerBeat, 2);
    for (const QByteArray &one : tracks)
        out += one;
    return out;
}

} // namespace

QByteArray SongFactory::midi(const SongInfo &info, int headerFormat, Markers markers, int bars)
{
    const QByteArray head = songEvents(info, markers) + timeEvents(info.userBpm);
    if (headerFormat == 0)
        return file(0, {track(head + notes(bars))});
    return file(headerFormat, {track(head), track(notes(bars))});
}

QByteArray SongFactory::karaoke(const QStringList &atTexts, const QStringList &lyrics)
{
    QByteArray words = textMeta(kTrackName, QStringLiteral("Words"));
    for (const QString &text : atTexts)
        words += textMeta(kText, text);
    for (const QString &syllable : lyrics) {
        QByteArray event = textMeta(kText, syllable);
        if (!event.isEmpty())
            event[0] = char(kTicksPerBeat);
        words += event;
    }
    const int bars = lyrics.size() / kBeatsPerBar + 1;
    return file(1, {track(timeEvents(kDefaultBpm)), track(words), track(notes(bars))});
}
