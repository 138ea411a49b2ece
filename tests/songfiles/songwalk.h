#pragma once

#include "bytes.h"

// Readers of whole songs, apart from those of the program: they walk from event to event and from frame to frame.

/// The events of a standard MIDI file.
class MidiWalk
{
public:
    struct Event
    {
        QByteArray delta; ///< as it is stored
        QByteArray bytes; ///< status, type, length and content
        /// Whether an edit may take it: of a kind that describes the song, at no distance from the event before it.
        bool isEditable() const {
            if (delta != QByteArray(1, '\0') || bytes.at(0) != '\xFF')
                return false;
            const int type = quint8(bytes.at(1));
            return type == 0x03 || type == 0x59 || (type == 0x4B && bytes.size() > 3);
        }
    };

    explicit MidiWalk(const QByteArray &file) : m_file(file) {
        if (!file.startsWith("MThd"))
            return;
        m_at = 8 + int(number(4, 4));
        m_head = file.left(m_at);
        while (m_good && m_at < file.size())
            m_good = walkTrack();
        m_good = m_good && !m_tracks.isEmpty() && m_at == file.size();
    }

    /// Whether every track ends where its length says, with the event that ends a track.
    bool isGood() const { return m_good; }
    /// All that no edit may touch: the header, and every track without what may be edited in the first.
    QByteArrayList untouchable() const {
        QByteArrayList parts = {m_head};
        for (int track = 0; track < m_tracks.size(); ++track) {
            QByteArray kept;
            for (const Event &event : m_tracks.at(track)) {
                if (track > 0 || !event.isEditable())
                    kept += event.delta + event.bytes;
            }
            parts.append(kept);
        }
        return parts;
    }

private:
    quint32 number(int at, int count) const {
        quint32 value = 0;
        for (int i = 0; i < count; ++i)
            value = value << 8 | quint8(m_file.mid(at + i, 1).append('\0').at(0));
        return value;
    }
    /// A number of 7 bits a byte at m_at, which goes behind it.
    quint32 variable() {
        quint32 value = 0;
        while (m_at < m_file.size()) {
            const auto byte = quint8(m_file.at(m_at++));
            value = value << 7 | (byte & 0x7F);
            if (byte < 0x80)
                return value;
        }
        m_good = false;
        return 0;
    }
    bool walkTrack() {
        if (m_file.mid(m_at, 4) != "MTrk")
            return false;
        const int end = m_at + 8 + int(number(m_at + 4, 4));
        m_at += 8;
        m_status = 0;
        QList<Event> events;
        while (m_good && m_at < end && end <= m_file.size())
            events.append(nextEvent());
        m_tracks.append(events);
        return m_good && m_at == end && !events.isEmpty() && events.last().bytes == "FF2F00"_hex;
    }
    Event nextEvent() {
        Event event;
        const int start = m_at;
        variable();
        event.delta = m_file.mid(start, m_at - start);
        const int begin = m_at;
        const int status = quint8(m_file.mid(m_at, 1).append('\0').at(0));
        if (status == 0xFF || status == 0xF0 || status == 0xF7) {
            m_at += status == 0xFF ? 2 : 1;
            const quint32 length = variable();
            m_at = int(qMin(qint64(m_at) + length, qint64(m_file.size())));
            m_status = 0;
        } else {
            if (status >= 0x80) {
                m_status = status;
                ++m_at;
            }
            const int kind = m_status >> 4;
            m_good = m_good && kind >= 0x8 && kind < 0xF;
            m_at += kind == 0xC || kind == 0xD ? 1 : 2;
        }
        event.bytes = m_file.mid(begin, m_at - begin);
        return event;
    }

    const QByteArray m_file;
    QByteArray m_head;
    QList<QList<Event>> m_tracks;
    int m_at = 0;
    int m_status = 0;
    bool m_good = true;
};

/// An MP3 file with a tag of version 2.3 or 2.4, or without one.
class Mp3Walk
{
public:
    explicit Mp3Walk(const QByteArray &file) {
        int end = 0;
        if (file.startsWith("ID3")) {
            m_head = file.left(6);
            end = 10 + size(file, 6, 7);
            int at = 10;
            // An edit writes sizes of less than 128, which both versions read alike.
            while (at + 10 <= end && file.at(at) != '\0') {
                const int next = at + 10 + size(file, at + 4, file.at(3) == 4 ? 7 : 8);
                if (next > end)
                    return;
                if (!isEditable(file.mid(at, 4)))
                    m_frames.append(file.mid(at, next - at));
                at = next;
            }
            m_padding = end - at;
        }
        m_good = end <= file.size();
        m_audio = file.mid(end);
    }

    bool isGood() const { return m_good; }
    const QByteArray &audio() const { return m_audio; }
    /// Version, revision and flags; empty without a tag.
    const QByteArray &head() const { return m_head; }
    /// The frames that no edit may touch, in their order, and how many bytes are free behind them.
    const QByteArrayList &frames() const { return m_frames; }
    int padding() const { return m_padding; }

private:
    static int size(const QByteArray &file, int at, int bits) {
        int value = 0;
        for (int i = 0; i < 4; ++i)
            value = value << bits | quint8(file.mid(at + i, 1).append('\0').at(0));
        return value;
    }
    static bool isEditable(const QByteArray &id) {
        return QByteArrayList({"TIT2", "TPE1", "TCON", "TCOM", "TKEY", "TLEN", "TBPM", "MEDT"}).contains(id);
    }

    QByteArray m_head;
    QByteArrayList m_frames;
    QByteArray m_audio;
    int m_padding = 0;
    bool m_good = false;
};

/// The header of an MFx file without the fields that an edit writes.
inline QByteArray untouchableHeader(const QByteArray &file) {
    QByteArray header = file.left(file.startsWith("_MF5") ? 1024 : 512);
    for (const auto &field : {qMakePair(4, 4), qMakePair(12, 4), qMakePair(38, 2), qMakePair(122, 32),
                              qMakePair(185, 1), qMakePair(186, 32), qMakePair(218, 32), qMakePair(250, 32)})
        header.replace(field.first, field.second, QByteArray(field.second, '\0'));
    return header;
}
