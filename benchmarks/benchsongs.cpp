#include "benchsongs.h"

#include "songfactory/songfactory.h"
#include "songfiles/lzhuff.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <cstdlib>

namespace {

constexpr char kMidiFolder[] = "/usr/share/games/openttd/baseset/openmsx";
constexpr int kStreamBytes = 50000;
constexpr int kMp3Songs = 100;
constexpr int kPictureBytes = 60000;
constexpr int kMp3Frames = 500;

QString folderTemplate()
{
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/corvin-bench-XXXXXX");
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Bytes as a JPEG picture has them: any.
QByteArray picture()
{
    QByteArray bytes(kPictureBytes, Qt::Uninitialized);
    quint32 state = 1;
    for (char &byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

QByteArray mp3Song(int number)
{
    SongInfo info;
    info.title = QStringLiteral("Canzone numero %1").arg(number);
    info.artist = QStringLiteral("Interprete %1").arg(number);
    info.genre = QStringLiteral("Pop");
    QByteArray frames;
    frames += SongFactory::id3v2TextFrame(3, "TIT2", info.title);
    frames += SongFactory::id3v2TextFrame(3, "TPE1", info.artist);
    frames += QByteArray("APIC\0\0", 6) + char(kPictureBytes >> 8) + char(kPictureBytes & 0xFF) + QByteArray(2, '\0') +
              picture();
    frames += SongFactory::id3v2TextFrame(3, "TCON", info.genre);
    return SongFactory::id3v2TagAround(3, frames) + SongFactory::silentMp3Frames(kMp3Frames);
}

} // namespace

BenchSongs::BenchSongs() : m_folder(folderTemplate())
{
    const QDir installed(QString::fromLatin1(kMidiFolder));
    QByteArray all;
    for (const QFileInfo &file : installed.entryInfoList({QStringLiteral("*.mid")}, QDir::Files, QDir::Name)) {
        const QByteArray content = contentOf(file.filePath());
        all += content;
        midi.append(add(file.fileName(), content));
        QByteArray compressed;
        LzHuff().compress(content, compressed);
        const QByteArray header = SongFactory::mfxHeader(5, SongInfo(), static_cast<quint32>(1024 + compressed.size()),
                                                         static_cast<quint32>(content.size()));
        mfx.append(add(file.completeBaseName() + QStringLiteral(".mf5"), header + compressed));
    }
    for (int at = 0; at + kStreamBytes <= all.size(); at += kStreamBytes)
        streams.append(all.mid(at, kStreamBytes));
    if (streams.isEmpty()) {
        QTextStream(stderr) << "There are no MIDI files in " << kMidiFolder << Qt::endl;
        std::exit(2);
    }
    for (int number = 0; number < kMp3Songs; ++number)
        mp3.append(add(QStringLiteral("%1.mp3").arg(number), mp3Song(number)));
}

QString BenchSongs::add(const QString &name, const QByteArray &content) const
{
    QString path = m_folder.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("No room for the songs");
    return path;
}
