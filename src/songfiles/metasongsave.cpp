#include "metasong.h"

#include "lzhuff.h"

#include <QDebug>
#include <QFile>

namespace {

constexpr qint64 kBlockBytes = 100000;

/// @p path up to its last dot, wherever that stands, followed by ".tmp".
QString temporaryPath(const QString &path)
{
    const int dot = path.lastIndexOf(QLatin1Char('.'));
    return (dot < 0 ? path : path.left(dot)) + QStringLiteral(".tmp");
}

void makeWritable(QFile &file)
{
    file.setPermissions(file.permissions() | QFileDevice::WriteUser);
}

/// Whether @p song can be read from @p offset on. Past its end there is nothing: that would leave the tag alone.
bool seekAudio(QFile &song, qint64 offset)
{
    return offset <= song.size() && song.seek(offset);
}

bool copyRest(QFile &song, QFile &temporary)
{
    qint64 remaining = song.size() - song.pos();
    while (remaining > 0) {
        const QByteArray block = song.read(qMin(remaining, kBlockBytes));
        // A read that fails must not pass for the end of the song: the rest of it would be lost.
        if (block.isEmpty() || temporary.write(block) != block.size())
            return false;
        remaining -= block.size();
    }
    return true;
}

} // namespace

bool MetaSong::saveToFile(const QString &path)
{
    if (m_format == Mp3Format)
        return saveMp3(path);
    if (!isSavable()) {
        qDebug() << "[MetaSong::saveToFile] UNKNOWN format (or data corrupted) in memory, aborting";
        return false;
    }
    QFile file(path);
    makeWritable(file);
    if (!file.open(QIODevice::WriteOnly)) {
        qDebug() << "[MetaSong::saveToFile] Impossible to write to file. Maybe it's write protected? Aborting!";
        return false;
    }
    // Deliberate: the file is written over, and whether all of it could be written is not looked at.
    if (isMidi()) {
        qDebug() << "[MetaSong::saveToFile] MIDI";
        file.write(m_midi.bytes());
    } else {
        qDebug() << "[MetaSong::saveToFile] MFx";
        writeMfx(file);
    }
    file.close();
    return true;
}

bool MetaSong::isSavable() const
{
    if (m_midi.bytes().isEmpty() || m_format == UnknownFormat)
        return false;
    if (!isMfx())
        return true;
    // A longer stream would never be expanded again: written over the song, it would be the end of it.
    return m_header.bytes().size() == MfxHeader::sizeOfVersion(m_format) && storedStream().size() <= LzHuff::kMostBytes;
}

QByteArray MetaSong::storedStream() const
{
    QByteArray stream = m_midi.bytes();
    const int extra = mf4ExtraBytesOffset(stream);
    if (m_format == Mf4Format && extra >= 0)
        stream.insert(extra, QByteArray("\xFF\x00\xFF", kMf4ExtraBytes));
    return stream;
}

void MetaSong::writeMfx(QFile &file)
{
    const QByteArray stream = storedStream();
    QByteArray compressed;
    LzHuff codec;
    codec.compress(stream, compressed);
    m_header.setFileSize(static_cast<quint32>(m_header.bytes().size() + compressed.size()));
    m_header.setMidiSize(static_cast<quint32>(stream.size()));
    file.write(m_header.bytes());
    file.write(compressed);
}

bool MetaSong::saveMp3(const QString &path)
{
    const QString temporaryName = temporaryPath(path);
    QFile song(path);
    makeWritable(song);
    if (!completeTag() || !song.open(QIODevice::ReadOnly)) {
        qDebug() << "[MetaSong::saveToFile] Impossible to read from file.";
        return false;
    }
    QFile temporary(temporaryName);
    // The player's disk ignores case; a song that bears the temporary name itself must not be emptied.
    const bool isSongItself = temporaryName.compare(path, Qt::CaseInsensitive) == 0;
    // Unbuffered, so that a full disk shows at the write that met it.
    if (isSongItself || !temporary.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        qDebug() << "[MetaSong::saveToFile] Impossible to write to file. Maybe it's write protected? Aborting!";
        return false;
    }
    // The open file would answer with what held before it was made writable.
    temporary.setPermissions(QFile::permissions(path));
    const bool written = writeMp3(song, temporary);
    song.close();
    temporary.close();
    if (!written) {
        temporary.remove();
        return false;
    }
    // Without its song the temporary file is the only copy; with it, it stays for the user to find.
    if (!song.remove() || !temporary.rename(path))
        return false;
    m_tag.startAudioHere();
    return true;
}

bool MetaSong::writeMp3(QFile &song, QFile &temporary) const
{
    if (temporary.write(m_tag.bytes()) != m_tag.bytes().size()) {
        qDebug() << "[MetaSong::saveToFile] Impossible to write to file.";
        return false;
    }
    if (!seekAudio(song, m_tag.audioOffset())) {
        qDebug() << "[MetaSong::saveToFile] Impossible to seek file.";
        return false;
    }
    if (!copyRest(song, temporary)) {
        qDebug() << "[MetaSong::saveToFile] Impossible to copy part of file.";
        return false;
    }
    return true;
}
