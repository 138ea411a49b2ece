#pragma once

#include "keynametable.h"
#include "songinfo.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <array>

/// One standard MIDI file as bytes, with the few meta events that carry what is known of a song.
///
/// Deliberate: the events are not walked, and so may be found within other data. A reader searches the bytes for a
/// pattern, from the data of the first track up to the end of the file, and a writer removes and inserts whole events
/// and corrects the length of the first track. A new event always goes to the very start of the first track, with delta
/// time 0. All lengths are one byte, read as a signed number; whatever they claim, only bytes that exist are read and
/// removed.
///
/// | event                        | bytes                                                                |
/// |------------------------------|----------------------------------------------------------------------|
/// | standard text of type t      | 00 FF t n text; t: 02 copyright, 03 track name, 06 marker            |
/// | key signature                | 00 FF 59 02 sf mi                                                    |
/// | the maker's own, with tag g  | 00 FF 4B n g payload, n counts the tag byte too                      |
///
/// Tags of the maker's own event: 1 genre, 2 artist, 3 author (texts), 4 length, 5 tempo (decimal numbers as text),
/// 6 marker (bar number in two bytes, high byte first, then a text).
///
/// Deliberate: texts are written as UTF-8 but read as Latin-1, up to the first zero byte, without white space around.
class RawMidiFile
{
public:
    /// Checks and takes a whole file. Returns false, and keeps what was held before, when there are fewer than 22
    /// bytes, when they do not begin with "MThd", or when no "MTrk" follows; nothing else is checked.
    bool load(const QByteArray &bytes);

    /// The title by which a song is filed, in the first bytes of a file, which need not be a whole one: the first
    /// karaoke title that is not empty, else the first track name, which may be empty.
    static QString titleIn(const QByteArray &start);

    /// The file as it stands after all edits; empty before the first load.
    const QByteArray &bytes() const { return m_data; }
    /// Midi0Format when the format word of the file is 0, else Midi1Format; UnknownFormat before the first load.
    int formatCode() const { return m_formatCode; }
    /// Number of tracks that the file states.
    quint16 trackCount() const { return m_trackCount; }

    /// The texts of the song; empty where the event is missing.
    QString title() const;
    QString genre() const;
    QString artist() const;
    QString author() const;
    /// Seconds; 0 for anything that is not a number of 0 or more.
    qint32 length() const;
    /// Beats per minute; 0 for anything that is not a number of 0 or more.
    qint32 bpm() const;
    /// Name of the key signature; empty when there is none, or, after a log line, when it is unknown.
    QString key() const;
    /// Whether the copyright names the maker.
    bool isQArte() const;

    /// Fills @p list (emptied first) with the markers in file order: the maker's own ones if there are any, else the
    /// standard ones with bar 0. With @p firstOnly only the first is read. Returns the offset of the first marker of
    /// the maker's own, or -1 when there is none of these.
    qint32 markers(QList<SongMarker> &list, bool firstOnly) const;

    /// Names of all keys a song can be given, in the order of their codes.
    QStringList keyNames() const { return m_keys.names(); }

    /// Puts the name of the first key signature into @p name, which stays empty (with a log line) for an unknown key.
    /// Returns the offset of the event's FF byte, or -1 when the song has no key signature.
    qint32 extractKey(QString &name) const;

    /// Whether the event exists, even when it reads as empty.
    bool hasTitle() const;
    bool hasGenre() const;
    bool hasArtist() const;
    bool hasAuthor() const;
    bool hasLength() const;
    bool hasBpm() const;
    bool hasKey() const;
    /// Deliberate: only the maker's own markers count, standard ones do not.
    bool hasMarkers() const;

    /// Writers of texts: the first 125 characters take the place of all such events there were.
    void setTitle(const QString &text);
    void setGenre(const QString &text);
    void setArtist(const QString &text);
    void setAuthor(const QString &text);
    /// Writers of numbers, which take the place of all such events there were. A negative number reads back as 0.
    void setLength(qint32 seconds);
    void setBpm(qint32 beatsPerMinute);

    /// Removes every key signature, then writes that of the key called @p name (blanks are ignored, case counts). An
    /// empty name removes the key. Deliberate: so does an unknown one, with a log line.
    void setKey(const QString &name);

    /// Adds markers so that the file holds them in the order of @p list, each text cut to 125 characters. Markers there
    /// already were stay, behind the new ones.
    void setMarkers(const QList<SongMarker> &list);

    /// Adds one marker before all others; @p text is not cut. Returns the number of bytes inserted, 0 when the first
    /// track has no place for them.
    qint32 addMarker(const QString &text, quint16 bar);

    /// Removes the standard events of type @p type (all, or the first only) that begin within the first track. Returns
    /// how many were removed.
    int removeStandardEvents(quint8 type, bool firstOnly);
    /// The same for the maker's own events with tag @p tag.
    int removeOwnEvents(quint8 tag, bool firstOnly);

private:
    int eventLength(int offset) const;
    void lookForEvents() const;
    int searchStandard(quint8 type, int from) const;
    int findStandard(quint8 type, int from) const;
    int findOwn(quint8 tag, int from) const;
    QString standardText(quint8 type) const;
    QString standardTextAt(int offset) const;
    QString ownText(quint8 tag) const;
    qint32 ownNumber(quint8 tag) const;
    bool hasStandard(quint8 type) const { return findStandard(type, m_trackDataStart) >= 0; }
    bool hasOwn(quint8 tag) const { return findOwn(tag, m_trackDataStart) >= 0; }
    qint32 ownMarkers(QList<SongMarker> &list, bool firstOnly) const;
    void standardMarkers(QList<SongMarker> &list, bool firstOnly) const;

    template <typename Find> int removeEvents(Find find, bool firstOnly);
    int removeEventAt(int offset);
    qint32 insertEvent(const QByteArray &event);
    qint32 insertOwn(quint8 tag, const QByteArray &payload);
    void setOwnText(quint8 tag, const QString &text);
    void setOwnNumber(quint8 tag, qint32 number);
    void changeTrackLength(int bytes);

    QByteArray m_data;
    qint32 m_trackLength = 0; ///< as the file states it, which may be anything
    int m_trackDataStart = 0;
    int m_trackLengthOffset = 0;
    quint16 m_trackCount = 0;
    int m_formatCode = UnknownFormat;
    KeyNameTable m_keys;

    /// Where the first event of each kind that a song can have begins: all are looked for in one pass, since most songs
    /// lack most of them, and each search would then go through the whole file. Made when it is first asked for, and
    /// anew after every edit.
    struct FirstEvents
    {
        bool isKnown = false;
        std::array<int, 256> standard = {}; ///< by type; -1: none
        std::array<int, 256> own = {};      ///< by tag; -1: none
    };
    mutable FirstEvents m_first;
};
