#include "rawmidifile.h"

#include "byteview.h"
#include "cuttext.h"
#include "midievents.h"

#include <QDebug>

using namespace MidiEvents;

namespace {

constexpr int kMostCharacters = 125;
constexpr int kLengthFieldBytes = 4;
constexpr int kDeltaBytes = 1;
constexpr int kEventFrameBytes = kDeltaBytes + kContentOffset; ///< delta time, FF, type, length

QByteArray encodedText(const QString &text)
{
    return cutText(text, kMostCharacters).toUtf8();
}

/// An event with delta time 0. Deliberate: of the content's size only the low 8 bits are stored.
QByteArray metaEvent(quint8 type, const QByteArray &content)
{
    QByteArray event;
    event.append(static_cast<char>(kDeltaZero));
    event.append(static_cast<char>(kMeta));
    event.append(static_cast<char>(type));
    event.append(static_cast<char>(content.size()));
    return event + content;
}

} // namespace

void RawMidiFile::setTitle(const QString &text)
{
    removeStandardEvents(kTrackName, false);
    insertEvent(metaEvent(kTrackName, encodedText(text)));
}

void RawMidiFile::setGenre(const QString &text)
{
    setOwnText(kGenreTag, text);
}

void RawMidiFile::setArtist(const QString &text)
{
    setOwnText(kArtistTag, text);
}

void RawMidiFile::setAuthor(const QString &text)
{
    setOwnText(kAuthorTag, text);
}

void RawMidiFile::setLength(qint32 seconds)
{
    setOwnNumber(kLengthTag, seconds);
}

void RawMidiFile::setBpm(qint32 beatsPerMinute)
{
    setOwnNumber(kBpmTag, beatsPerMinute);
}

void RawMidiFile::setKey(const QString &name)
{
    removeStandardEvents(kKeySignature, false);
    if (name.isEmpty())
        return;
    QString plainName = name;
    plainName.remove(QLatin1Char(' '));
    const std::optional<quint16> code = m_keys.code(plainName);
    if (!code) {
        qDebug() << "[RawMidiFile::setKey] WARNING: unknown key:" << plainName << ". Metaevent not added !!!";
        return;
    }
    QByteArray content;
    content.append(static_cast<char>(*code >> ByteView::kByteBits));
    content.append(static_cast<char>(*code));
    insertEvent(metaEvent(kKeySignature, content));
}

void RawMidiFile::setMarkers(const QList<SongMarker> &list)
{
    // Deliberate: the author goes, though it is no marker; the markers there already were stay.
    removeOwnEvents(kAuthorTag, false);
    for (int i = list.size() - 1; i >= 0; --i)
        addMarker(cutText(list.at(i).text, kMostCharacters), list.at(i).bar);
}

qint32 RawMidiFile::addMarker(const QString &text, quint16 bar)
{
    QByteArray payload;
    payload.append(static_cast<char>(bar >> ByteView::kByteBits));
    payload.append(static_cast<char>(bar));
    return insertOwn(kMarkerTag, payload + text.toUtf8());
}

int RawMidiFile::removeStandardEvents(quint8 type, bool firstOnly)
{
    return removeEvents([this, type](int from) { return findStandard(type, from); }, firstOnly);
}

int RawMidiFile::removeOwnEvents(quint8 tag, bool firstOnly)
{
    return removeEvents([this, tag](int from) { return findOwn(tag, from); }, firstOnly);
}

/// Removes the events whose FF byte @p find gives, searching from the offset it takes.
template <typename Find> int RawMidiFile::removeEvents(Find find, bool firstOnly)
{
    int removed = 0;
    int from = m_trackDataStart;
    for (;;) {
        const int meta = find(from + kDeltaBytes);
        const int event = meta - kDeltaBytes;
        if (meta < 0 || event >= qint64(m_trackDataStart) + m_trackLength)
            break;
        from = event;
        // An event with another delta time than 0 is left alone.
        if (ByteView::byteAt(m_data, event) != kDeltaZero) {
            from = meta;
            continue;
        }
        // A length that is negative enough claims fewer bytes than the event's own frame: nothing can be removed, and
        // the same event would be met for ever.
        if (removeEventAt(event) <= 0)
            break;
        ++removed;
        if (firstOnly)
            break;
    }
    return removed;
}

/// Removes the event that begins at @p offset and returns how many bytes went, never more than there are.
int RawMidiFile::removeEventAt(int offset)
{
    const int claimed = eventLength(offset + kDeltaBytes) + kEventFrameBytes;
    const int bytes = qMin(claimed, m_data.size() - offset);
    if (bytes <= 0)
        return 0;
    m_data.remove(offset, bytes);
    changeTrackLength(-bytes);
    return bytes;
}

qint32 RawMidiFile::insertEvent(const QByteArray &event)
{
    if (m_data.isEmpty() || m_trackDataStart > m_data.size())
        return 0;
    m_data.insert(m_trackDataStart, event);
    changeTrackLength(event.size());
    return event.size();
}

qint32 RawMidiFile::insertOwn(quint8 tag, const QByteArray &payload)
{
    return insertEvent(metaEvent(kOwn, QByteArray(kTagBytes, static_cast<char>(tag)) + payload));
}

void RawMidiFile::setOwnText(quint8 tag, const QString &text)
{
    removeOwnEvents(tag, false);
    insertOwn(tag, encodedText(text));
}

void RawMidiFile::setOwnNumber(quint8 tag, qint32 number)
{
    removeOwnEvents(tag, false);
    insertOwn(tag, QByteArray::number(number));
}

/// Called after every edit, and before the next search.
void RawMidiFile::changeTrackLength(int bytes)
{
    m_first.isKnown = false;
    // The stated length may be anything: it is counted round, as the 32 bits it is stored in.
    const quint32 length = static_cast<quint32>(m_trackLength) + static_cast<quint32>(bytes);
    m_trackLength = static_cast<qint32>(length);
    for (int i = 0; i < kLengthFieldBytes; ++i) {
        const int shift = (kLengthFieldBytes - 1 - i) * ByteView::kByteBits;
        m_data[m_trackLengthOffset + i] = static_cast<char>(length >> shift);
    }
}
