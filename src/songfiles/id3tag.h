#pragma once

#include <QByteArray>
#include <QString>

class QFile;

/// The ID3v2 tag at the start of an MP3 song, held in memory: reads and rewrites the text frames that describe a song.
///
/// | offset | bytes | tag header                                     |
/// |--------|-------|------------------------------------------------|
/// | 0      | 3     | "ID3"                                          |
/// | 3      | 3     | version, revision, flags                       |
/// | 6      | 4     | size of what follows, 7 bits a byte, high first |
///
/// | offset | bytes | frame                                          |
/// |--------|-------|------------------------------------------------|
/// | 0      | 4     | identifier                                     |
/// | 4      | 4     | size of what follows the frame's header        |
/// | 8      | 2     | flags                                          |
/// | 10     | size  | text encoding (1 byte), text                   |
///
/// Deliberate: frames are found by a plain search for their identifier, which may also hit the text of another frame.
/// New frames go directly behind the tag's header, whatever version the tag says it has. Only bytes that exist are read
/// or removed, whatever size a frame claims.
class Id3Tag
{
public:
    static constexpr int kHeaderSize = 10;      ///< bytes of the tag's header; frames start here
    static constexpr int kFrameHeaderSize = 10; ///< bytes of a frame's header; its content follows
    static constexpr int kFirstRead = 4096;     ///< bytes in which most tags without a picture end
    static constexpr int kMostBytes = 64 << 20; ///< a tag of more content than this is never taken into memory

    /// How many bytes from the start of a file load() needs, given the file's first @p header bytes (10, or all there
    /// are): more change nothing. Never more than kMostBytes and a header.
    static int bytesNeeded(const QByteArray &header);
    /// How many bytes the tag has behind its header, by what the header says; 0 for a file without a tag.
    static qint64 statedSize(const QByteArray &header);

    /// Takes the first bytes of a file; what lies behind the tag is dropped. A file without a tag gets a new, empty
    /// one. Returns false for fewer than 10 bytes and for a tag that says it is longer than @p bytes.
    bool load(const QByteArray &bytes);

    /// The tag with all changes made since, header included.
    const QByteArray &bytes() const { return m_bytes; }
    /// Size of the tag, header included, as it was loaded: where the audio begins in the file. 0 without a tag.
    qint64 audioOffset() const { return m_audioOffset; }
    /// The tag as it is now has been written: the audio of the file begins behind it.
    void startAudioHere() { m_audioOffset = m_bytes.size(); }
    /// Always the code of MP3.
    int formatCode() const;

    /// Reads the first frame @p id (4 bytes) into @p text and returns the frame's offset. Returns -1 with an empty text
    /// when there is none. A damaged frame and an unknown text encoding give an empty text.
    int frameText(const QByteArray &id, QString &text) const;
    /// Whether there is a frame @p id.
    bool hasFrame(const QByteArray &id) const;
    /// Removes the first frame @p id and returns the number of bytes removed, 0 when there is none.
    int removeFrame(const QByteArray &id);
    /// Inserts a frame @p id with @p payload (without its encoding byte) at @p offset of the tag. Returns the number of
    /// bytes inserted; 0 when the payload is empty or the offset lies outside the tag.
    int addFrame(const QByteArray &id, const QByteArray &payload, int offset);

    /// Takes of the tag of the song @p song what the readers below can ask for: large frames that are no texts, as
    /// pictures are, are passed over unread. A tag in which that cannot be told for certain is read whole. @p start is
    /// what has been read of the song, which stands behind that: kFirstRead bytes, or all there are. Returns false as
    /// load() does. Only a tag that isWhole() can be changed and written.
    bool loadTexts(QFile &song, const QByteArray &start);
    /// Whether all of the tag has been taken.
    bool isWhole() const { return m_isWhole; }

    // The fields: id3tagfields.cpp

    /// The texts of their frames; empty where there is none.
    QString title() const;
    QString artist() const;
    QString genre() const;
    QString author() const;
    QString key() const;
    /// Seconds, truncated; 0 when absent, not a number or negative.
    int length() const;
    /// Beats per minute; 0 when absent, not a number or negative.
    int bpm() const;
    /// Whether the copyright text holds the maker's mark.
    bool isQArte() const;

    /// Whether the frame of that field is there, even with an empty text.
    bool hasTitle() const;
    bool hasGenre() const;
    bool hasAuthor() const;
    bool hasKey() const;
    bool hasLength() const;
    bool hasBpm() const;

    /// These replace the frame; an empty @p text leaves it removed.
    void setTitle(const QString &text);
    void setArtist(const QString &text);
    void setGenre(const QString &text);
    void setAuthor(const QString &text);
    void setKey(const QString &text);
    /// Replaces the length; a value of @p seconds of 0 or less leaves it removed.
    void setLength(int seconds);
    /// Replaces the tempo; a value of @p value of 0 or less leaves it removed.
    void setBpm(int value);

    /// Whether the frame "MEDT" is there, by which the player knows a tag that has been worked on.
    bool hasMedt() const;
    /// Adds the frame "MEDT", even when there is one.
    void setMedt();

private:
    static quint32 headerSizeField(const QByteArray &bytes);
    void take(const QByteArray &bytes, quint32 size);
    int find(const QByteArray &id) const;
    static quint32 payloadSize(const QByteArray &bytes, int frame);
    QString text(const char *id) const;
    qint64 number(const char *id) const;
    void replaceFrame(const char *id, const QByteArray &payload);
    void writeTagSize();

    QByteArray m_bytes;
    quint32 m_tagSize = 0;
    qint64 m_audioOffset = 0;
    bool m_isWhole = true;
};
