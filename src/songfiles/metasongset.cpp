#include "metasong.h"

#include <QDebug>

namespace {

constexpr quint8 kHasMarkersFlag = 0x01;

bool isEmptyOrDash(const QString &text)
{
    return text.isEmpty() || text == QLatin1String("-") || text == QLatin1String("--");
}

} // namespace

void MetaSong::setSongInfo(const SongInfo &info, bool manual)
{
    qDebug() << "[MetaSong] setSongInfo,"
             << "manual: " << (manual ? "true" : "false");
    if (m_format == Mp3Format && completeTag())
        setMp3Info(info, manual);
    if (isMidi() || isMfx())
        setMidiStreamInfo(info, manual);
    if (isMidi())
        setMidiTexts(info, manual);
    if (isMfx())
        setMfxFields(info, manual);
    qDebug() << "";
}

void MetaSong::setMp3Info(const SongInfo &info, bool manual)
{
    if (manual) {
        m_tag.setTitle(info.title);
        m_tag.setAuthor(info.author);
        m_tag.setBpm(info.userBpm);
        m_tag.setKey(info.key);
        m_tag.setLength(info.length);
        m_tag.setArtist(info.artist);
        m_tag.setGenre(info.genre);
    } else {
        fillMp3Info(info);
    }
    if (!m_tag.hasMedt())
        m_tag.setMedt();
}

/// Deliberate: here as in the other formats the artist is never filled in automatically.
void MetaSong::fillMp3Info(const SongInfo &info)
{
    if (!m_tag.hasTitle())
        m_tag.setTitle(info.title);
    if (!m_tag.hasAuthor())
        m_tag.setAuthor(info.author);
    if (!m_tag.hasBpm() && info.userBpm >= 0 && info.isQArte)
        m_tag.setBpm(info.userBpm);
    if (!m_tag.hasKey() && info.isQArte)
        m_tag.setKey(info.key);
    if (!m_tag.hasLength() && info.length >= 0 && info.isQArte)
        m_tag.setLength(info.length);
    if (!m_tag.hasGenre())
        m_tag.setGenre(info.genre);
}

void MetaSong::setMidiStreamInfo(const SongInfo &info, bool manual)
{
    if (manual) {
        m_midi.setKey(info.key);
        m_midi.setLength(info.length);
        return;
    }
    // Setting markers also removes the author, which MIDI songs get back with their texts.
    if (!m_midi.hasMarkers())
        m_midi.setMarkers(info.markers);
    if (!m_midi.hasKey() && info.isQArte)
        m_midi.setKey(info.key);
    if (!m_midi.hasLength() && info.length >= 0 && info.isQArte)
        m_midi.setLength(info.length);
}

void MetaSong::setMidiTexts(const SongInfo &info, bool manual)
{
    const bool titleExtendsOld = info.title.toUpper().startsWith(m_midi.title().toUpper());
    if (manual || !m_midi.hasTitle() || titleExtendsOld)
        m_midi.setTitle(info.title);
    if (manual || !m_midi.hasAuthor())
        m_midi.setAuthor(info.author);
    if (manual || (!m_midi.hasBpm() && info.userBpm >= 0 && info.isQArte))
        m_midi.setBpm(info.userBpm);
    if (manual)
        m_midi.setArtist(info.artist);
    if (manual || !m_midi.hasGenre())
        m_midi.setGenre(info.genre);
}

void MetaSong::setMfxFields(const SongInfo &info, bool manual)
{
    if (manual || isEmptyOrDash(m_header.title()))
        m_header.setTitle(info.title);
    if (manual || isEmptyOrDash(m_header.author()))
        m_header.setAuthor(info.author);
    if (manual || (!m_header.isBpmValid() && info.userBpm >= 0))
        m_header.setBpm(info.userBpm);
    if (manual)
        m_header.setArtist(info.artist);
    if (manual || isEmptyOrDash(m_header.genre()))
        m_header.setGenre(info.genre);
    if (!info.markers.isEmpty())
        m_header.orFlags(kHasMarkersFlag);
}

qint32 MetaSong::addMarker(const QString &text, quint16 bar)
{
    qDebug() << "[MetaSong] addMarker";
    const qint32 inserted = m_midi.bytes().isEmpty() ? 0 : m_midi.addMarker(text, bar);
    qDebug() << "Marker added, len= " << inserted;
    qDebug() << "-----------------------------------";
    qDebug() << "";
    return inserted;
}
