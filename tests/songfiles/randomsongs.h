#pragma once

#include "midibytes.h"
#include "rounds.h"
#include "songtest.h"

/// Random songs, with all that others put into theirs: running status, system exclusives, events of the kinds that
/// describe a song in places where no edit looks for them, tags with pictures and free room.
class RandomSongs
{
public:
    explicit RandomSongs(QRandomGenerator &random) : m_random(random) {}

    /// A file of format 0 with one track, or of format 1 with up to four.
    QByteArray midi() {
        const int format = m_random.bounded(2);
        const int tracks = format == 0 ? 1 : 1 + m_random.bounded(4);
        QByteArray file = MidiBytes::header(format, tracks);
        for (int i = 0; i < tracks; ++i)
            file += track();
        return file;
    }
    QByteArray mfx(int version) {
        QByteArray stream = midi();
        if (version == 4)
            stream.insert(stream.indexOf("MTrk") + 8, "FF00FF"_hex);
        const QByteArray packed = compressed(stream);
        SongInfo info;
        info.title = title();
        info.author = title();
        info.userBpm = m_random.bounded(600);
        const QByteArray header = SongFactory::mfxHeader(version, info, 0, quint32(stream.size()));
        return header + packed;
    }
    /// With no tag for the version 0.
    QByteArray mp3(int version) {
        const QByteArray audio = "\xFF\xFB\x90\xC4"_b + randomBytes(m_random, m_random.bounded(250000));
        const QByteArray end = m_random.bounded(3) == 0 ? "TAG" + QByteArray(125, 'v') : QByteArray();
        return (version == 0 ? QByteArray() : tag(version)) + audio + end;
    }

    /// A record with texts, numbers and markers of all kinds.
    SongInfo info() {
        SongInfo info;
        info.title = text();
        info.artist = text();
        info.genre = text();
        info.author = text();
        info.length = m_random.bounded(-5, 100000);
        info.userBpm = m_random.bounded(-5, 70000);
        info.key = QStringList({QString(), "C"_s, "F # -"_s, "Bb"_s, "no key"_s}).at(m_random.bounded(5));
        info.isQArte = m_random.bounded(2) == 0;
        for (int i = m_random.bounded(4); i > 0; --i)
            info.markers.append({quint16(m_random.bounded(0x10000)), text()});
        return info;
    }
    /// What a writer can put into an event whose length is told by one byte.
    QString text() {
        const QString all = "abcXYZ 0123456789'\";\n\r\t%\\-()àèìòù\u20AC"_s + QChar(u'\0');
        return m_random.bounded(5) == 0 ? QString() : randomText(m_random, 40, all);
    }

private:
    QString title() { return randomText(m_random, 30, "abc XYZ-"_s); }
    /// A time between two events.
    QByteArray delta(bool isOfEditedKind = false) {
        // Known: an event whose distance ends in a byte of 0 (every 128 ticks) is taken for one without a distance.
        static const QByteArrayList kDeltas = {"00"_hex,   "01"_hex,   "40"_hex,   "7F"_hex,   "8101"_hex,
                                               "8378"_hex, "817F"_hex, "8100"_hex, "8300"_hex, "81808000"_hex};
        return kDeltas.at(m_random.bounded(isOfEditedKind ? 7 : kDeltas.size()));
    }
    QByteArray meta(int type, const QByteArray &content) {
        const bool isEdited = type == 0x03 || type == 0x59 || type == 0x4B;
        return delta(isEdited) + MidiBytes::meta(type, content).mid(1);
    }
    QByteArray anyMeta() {
        static const QByteArray kTypes = "010203050607205159582F4B7F4B59035103"_hex;
        const int type = quint8(kTypes.at(m_random.bounded(kTypes.size())));
        switch (type) {
        case 0x2F:
            return {};
        case 0x4B:
            return meta(type, bigEndian(1 + unsigned(m_random.bounded(9)), 1) + letters());
        case 0x51:
            return meta(type, bigEndian(300000 + unsigned(m_random.bounded(700000)), 3).replace('\xFF', '\x7E'));
        case 0x58:
            return meta(type, "04021808"_hex);
        case 0x59:
            return meta(type, bigEndian(unsigned(m_random.bounded(-7, 8)), 1).replace('\xFF', '\x02') +
                                  bigEndian(unsigned(m_random.bounded(2)), 1));
        default:
            return meta(type, letters());
        }
    }
    QByteArray letters() { return randomText(m_random, 100, "ab 12"_s).toLatin1(); }
    QByteArray track() {
        QByteArray events;
        bool isRunning = false;
        for (int i = m_random.bounded(120); i > 0; --i) {
            const int kind = m_random.bounded(8);
            if (kind < 2)
                events += anyMeta();
            else if (kind == 2)
                events += delta() + "F0"_hex + bigEndian(unsigned(m_random.bounded(100)) + 1, 1);
            if (kind == 2)
                events += randomBytes(m_random, quint8(events.back()) - 1, 0x80) + '\xF7';
            if (kind > 2)
                events += delta() + (isRunning && kind > 4 ? ""_b : "90"_hex) + randomBytes(m_random, 2, 0x80);
            isRunning = kind > 2;
        }
        return MidiBytes::chunk(events + delta() + "FF2F00"_hex);
    }
    QByteArray frame(int version, const char *id, const QByteArray &payload) {
        QByteArray size = bigEndian(unsigned(payload.size()));
        if (version == 4)
            size = bigEndian(unsigned(payload.size() >> 7), 3) + bigEndian(payload.size() & 0x7F, 1);
        return id + size + bigEndian(unsigned(m_random.bounded(2)) << 14, 2) + payload;
    }
    /// Known: what looks like the name of a frame is taken for one, also where a "T" comes before the name "COMM".
    QByteArray payload() {
        return randomBytes(m_random, 1 + m_random.bounded(5000)).replace('T', 't').replace('M', 'm');
    }
    QByteArray tag(int version) {
        QByteArray frames;
        for (int i = m_random.bounded(12); i > 0; --i) {
            static const QList<const char *> kEdited = {"TIT2", "TPE1", "TCON", "TCOM", "TKEY", "TLEN", "TBPM", "MEDT"};
            static const QList<const char *> kOthers = {"APIC", "COMM", "TXXX", "TALB", "PRIV"};
            if (m_random.bounded(2) == 0)
                frames += frame(version, kEdited.at(m_random.bounded(kEdited.size())), '\0' + letters());
            else
                frames += frame(version, kOthers.at(m_random.bounded(kOthers.size())), payload());
        }
        return SongFactory::id3v2TagAround(version, frames + QByteArray(m_random.bounded(3) * 700, '\0'));
    }

    QRandomGenerator &m_random;
};
