#pragma once

#include <QByteArray>
#include <QString>

/// The header block at the start of an MFx song, the player's own song file, held in memory.
///
/// | offset | bytes | content (numbers low byte first)                                   |
/// |--------|-------|--------------------------------------------------------------------|
/// | 0      | 4     | "_MF3", "_MF4" or "_MF5"                                           |
/// | 4      | 4     | size of the whole file                                             |
/// | 12     | 4     | size of the uncompressed MIDI stream                               |
/// | 38     | 2     | beats per minute, valid from 1 to 499                              |
/// | 42     | 13    | text: long name                                                    |
/// | 122    | 32    | text: title                                                        |
/// | 185    | 1     | flags; bit 0x01: the song has markers                              |
/// | 186    | 32    | text: author                                                       |
/// | 218    | 32    | text: artist                                                       |
/// | 250    | 32    | text: genre                                                        |
///
/// Everything else, up to the block's 512 ("_MF3", "_MF4") or 1024 bytes ("_MF5"), is carried through unchanged. A text
/// ends at its first zero byte or at the end of its field and is read as Latin-1, without white space at both ends.
/// Readers never fail: where bytes are missing they give an empty text or 0. Writers that reach beyond the stored bytes
/// extend them with zeros.
class MfxHeader
{
public:
    static constexpr int kSmallSize = 512;  ///< bytes of a block of version 3 or 4
    static constexpr int kLargeSize = 1024; ///< bytes of a block of version 5

    /// The version (3, 4 or 5) that the first four bytes of @p bytes name; 0 when they name none.
    static int versionOf(const QByteArray &bytes);
    /// Bytes that a header block of @p version has; 0 for a version that does not exist.
    static int sizeOfVersion(int version);

    /// The title in the first kSmallSize bytes of a file, whatever version they name; empty when there are fewer.
    static QString titleIn(const QByteArray &start);

    /// Drops the stored block and takes @p block as it stands. Returns false, with nothing stored and the version 0,
    /// when it names no version or is shorter than that version's block.
    bool setHeader(const QByteArray &block);

    /// 3, 4 or 5; 0 while no block is held.
    int version() const { return m_version; }
    /// The block with all changes made since.
    const QByteArray &bytes() const { return m_bytes; }

    /// The texts of the block; empty where there is none.
    QString title() const;
    QString author() const;
    QString artist() const;
    QString genre() const;
    QString longName() const;
    /// Beats per minute as stored, valid or not.
    quint16 bpm() const;
    /// The flag byte.
    quint8 flags() const;

    /// Whether the tempo lies within 1 to 499.
    bool isBpmValid() const;

    /// Whether the field reads as a text that is not empty.
    bool hasTitle() const { return !title().isEmpty(); }
    bool hasAuthor() const { return !author().isEmpty(); }
    bool hasArtist() const { return !artist().isEmpty(); }
    bool hasGenre() const { return !genre().isEmpty(); }

    /// Puts the first 32 characters of @p text into the field. Characters outside ASCII make the block longer, see
    /// putText in the source.
    void setTitle(const QString &text);
    void setAuthor(const QString &text);
    void setArtist(const QString &text);
    void setGenre(const QString &text);

    /// Stores the lowest 16 bits of @p value as beats per minute.
    void setBpm(int value);
    /// Sets the flags that are set in @p bits; none is ever cleared.
    void orFlags(quint8 bits);
    /// Stores the size of the whole file in bytes.
    void setFileSize(quint32 value);
    /// Stores the size of the uncompressed MIDI stream in bytes.
    void setMidiSize(quint32 value);

private:
    void extendTo(int size);
    void putText(int offset, const QString &text);
    void putNumber(int offset, quint32 value, int count);

    QByteArray m_bytes;
    int m_version = 0;
};
