#include "rawmidifile.h"

#include "byteview.h"
#include "midievents.h"

#include <QDebug>

#include <cstring>
#include <limits>

using namespace MidiEvents;

namespace {

constexpr int kSmallestFile = 22;
constexpr int kFormatWordOffset = 8;
constexpr int kTrackCountOffset = 10;
constexpr int kChunkNameBytes = 4;
constexpr int kChunkHeadBytes = 8;
constexpr int kHexDigits = 2;
constexpr int kHexBase = 16;

quint16 wordAt(const QByteArray &bytes, int offset)
{
    return static_cast<quint16>((ByteView::byteAt(bytes, offset) << ByteView::kByteBits) |
                                ByteView::byteAt(bytes, offset + 1));
}

/// The first FF byte from @p from on that has a type behind it; -1 when there is none.
int nextMeta(const QByteArray &bytes, int from)
{
    const int count = bytes.size() - kTypeOffset - from;
    if (count <= 0)
        return -1;
    // Qt looks at one byte after the other, the C library at many at once.
    const char *const begin = bytes.constData();
    const void *const at = std::memchr(begin + from, kMeta, static_cast<std::size_t>(count));
    return at ? static_cast<int>(static_cast<const char *>(at) - begin) : -1;
}

QString hexByte(int byte)
{
    return QStringLiteral("%1").arg(byte, kHexDigits, kHexBase, QLatin1Char('0'));
}

} // namespace

bool RawMidiFile::load(const QByteArray &bytes)
{
    if (bytes.size() < kSmallestFile || !bytes.startsWith("MThd"))
        return false;
    const int track = bytes.indexOf("MTrk", 1);
    if (track < 0)
        return false;
    m_data = bytes;
    m_first.isKnown = false;
    m_formatCode = wordAt(bytes, kFormatWordOffset) == 0 ? Midi0Format : Midi1Format;
    m_trackCount = wordAt(bytes, kTrackCountOffset);
    m_trackLengthOffset = track + kChunkNameBytes;
    m_trackDataStart = track + kChunkHeadBytes;
    const quint32 high = wordAt(bytes, m_trackLengthOffset);
    m_trackLength = static_cast<qint32>((high << (2 * ByteView::kByteBits)) | wordAt(bytes, m_trackLengthOffset + 2));
    return true;
}

QString RawMidiFile::title() const
{
    return standardText(kTrackName);
}

QString RawMidiFile::genre() const
{
    return ownText(kGenreTag);
}

QString RawMidiFile::artist() const
{
    return ownText(kArtistTag);
}

QString RawMidiFile::author() const
{
    return ownText(kAuthorTag);
}

qint32 RawMidiFile::length() const
{
    return ownNumber(kLengthTag);
}

qint32 RawMidiFile::bpm() const
{
    return ownNumber(kBpmTag);
}

QString RawMidiFile::key() const
{
    QString name;
    extractKey(name);
    return name;
}

bool RawMidiFile::isQArte() const
{
    const QString copyright = standardText(kCopyright).toUpper();
    return copyright.contains(QLatin1String("Q-ARTE")) || copyright.contains(QLatin1String("MIDISOFT"));
}

qint32 RawMidiFile::markers(QList<SongMarker> &list, bool firstOnly) const
{
    list.clear();
    const qint32 first = ownMarkers(list, firstOnly);
    if (first < 0)
        standardMarkers(list, firstOnly);
    return first;
}

qint32 RawMidiFile::ownMarkers(QList<SongMarker> &list, bool firstOnly) const
{
    const int first = findOwn(kMarkerTag, m_trackDataStart);
    for (int at = first; at >= 0; at = findOwn(kMarkerTag, at + 1)) {
        SongMarker marker;
        marker.bar = wordAt(m_data, at + kPayloadOffset);
        marker.text =
            ByteView::textAt(m_data, at + kPayloadOffset + kBarBytes, eventLength(at) - kTagBytes - kBarBytes);
        list.append(marker);
        if (firstOnly)
            break;
    }
    return first;
}

void RawMidiFile::standardMarkers(QList<SongMarker> &list, bool firstOnly) const
{
    for (int at = findStandard(kMarker, m_trackDataStart); at >= 0; at = findStandard(kMarker, at + 1)) {
        SongMarker marker;
        marker.text = standardTextAt(at);
        list.append(marker);
        if (firstOnly)
            break;
    }
}

qint32 RawMidiFile::extractKey(QString &name) const
{
    name.clear();
    const int at = findStandard(kKeySignature, m_trackDataStart);
    if (at < 0)
        return -1;
    const quint16 code = wordAt(m_data, at + kContentOffset);
    name = m_keys.name(code);
    if (name.isEmpty()) {
        constexpr int kByteMask = std::numeric_limits<quint8>::max();
        // Deliberate: small hexadecimal digits for sf, capital ones for mi.
        const QString unknown = QStringLiteral("[sf=") + hexByte(code >> ByteView::kByteBits) + QStringLiteral("|mi=") +
                                hexByte(code & kByteMask).toUpper() + QLatin1Char(']');
        qDebug() << "[RawMidiFile::extractKey] WARNING: unknown key metaevent" << unknown << "in MIDI file.";
    }
    return at;
}

bool RawMidiFile::hasTitle() const
{
    return hasStandard(kTrackName);
}

bool RawMidiFile::hasGenre() const
{
    return hasOwn(kGenreTag);
}

bool RawMidiFile::hasArtist() const
{
    return hasOwn(kArtistTag);
}

bool RawMidiFile::hasAuthor() const
{
    return hasOwn(kAuthorTag);
}

bool RawMidiFile::hasLength() const
{
    return hasOwn(kLengthTag);
}

bool RawMidiFile::hasBpm() const
{
    return hasOwn(kBpmTag);
}

bool RawMidiFile::hasKey() const
{
    return hasStandard(kKeySignature);
}

bool RawMidiFile::hasMarkers() const
{
    return hasOwn(kMarkerTag);
}

/// The length byte, taken as signed, of the event whose FF byte stands at @p offset.
int RawMidiFile::eventLength(int offset) const
{
    return static_cast<qint8>(ByteView::byteAt(m_data, offset + kLengthOffset));
}

void RawMidiFile::lookForEvents() const
{
    m_first.standard.fill(-1);
    m_first.own.fill(-1);
    for (int at = nextMeta(m_data, m_trackDataStart); at >= 0; at = nextMeta(m_data, at + 1)) {
        const quint8 type = ByteView::byteAt(m_data, at + kTypeOffset);
        int &standard = m_first.standard[type];
        if (standard < 0)
            standard = at;
        int &own = m_first.own[ByteView::byteAt(m_data, at + kContentOffset)];
        if (type == kOwn && own < 0)
            own = at;
    }
    m_first.isKnown = true;
}

int RawMidiFile::searchStandard(quint8 type, int from) const
{
    int at = nextMeta(m_data, from);
    while (at >= 0 && ByteView::byteAt(m_data, at + kTypeOffset) != type)
        at = nextMeta(m_data, at + 1);
    return at;
}

int RawMidiFile::findStandard(quint8 type, int from) const
{
    if (!m_first.isKnown)
        lookForEvents();
    const int first = m_first.standard[type];
    return first < 0 || first >= from ? first : searchStandard(type, from);
}

int RawMidiFile::findOwn(quint8 tag, int from) const
{
    if (!m_first.isKnown)
        lookForEvents();
    int at = m_first.own[tag];
    if (at < 0 || at >= from)
        return at;
    do
        at = searchStandard(kOwn, qMax(from, at + 1));
    while (at >= 0 && ByteView::byteAt(m_data, at + kContentOffset) != tag);
    return at;
}

QString RawMidiFile::standardText(quint8 type) const
{
    const int at = findStandard(type, m_trackDataStart);
    return at < 0 ? QString() : standardTextAt(at);
}

QString RawMidiFile::standardTextAt(int offset) const
{
    return ByteView::textAt(m_data, offset + kContentOffset, eventLength(offset));
}

QString RawMidiFile::ownText(quint8 tag) const
{
    const int at = findOwn(tag, m_trackDataStart);
    return at < 0 ? QString() : ByteView::textAt(m_data, at + kPayloadOffset, eventLength(at) - kTagBytes);
}

qint32 RawMidiFile::ownNumber(quint8 tag) const
{
    bool isNumber = false;
    const qint32 number = ownText(tag).toInt(&isNumber);
    return isNumber ? qMax(number, 0) : 0;
}
