#include "titlereader.h"

#include "songfiles/id3tag.h"
#include "songfiles/mfxheader.h"
#include "songfiles/rawmidifile.h"
#include "songfiles/songkind.h"

#include <QFile>

namespace {

constexpr int kMidiReadLimit = 4096;

QString mp3Title(QFile &song)
{
    Id3Tag tag;
    return tag.loadTexts(song, song.read(Id3Tag::kFirstRead)) ? tag.title() : QString();
}

QString storedTitle(SongKind kind, QFile &song)
{
    switch (kind) {
    case SongKind::Mp3:
        return mp3Title(song);
    case SongKind::Midi:
        return RawMidiFile::titleIn(song.read(kMidiReadLimit));
    case SongKind::Mfx:
        return MfxHeader::titleIn(song.read(MfxHeader::kSmallSize));
    }
    return QString();
}

} // namespace

QString readSongTitle(int formatIndex, const QFileInfo &file)
{
    QString title;
    if (formatIndex >= 0 && formatIndex < static_cast<int>(kSongSuffixes.size())) {
        QFile song(file.filePath());
        // Unbuffered: Qt would read 16 KiB for the first byte.
        if (song.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            title = storedTitle(kSongSuffixes.at(static_cast<size_t>(formatIndex)).kind, song);
    }
    return title.isEmpty() ? file.completeBaseName() : title;
}
