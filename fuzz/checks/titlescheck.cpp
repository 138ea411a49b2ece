#include "checks.h"
#include "scratchfolder.h"

#include "optimizer/titlereader.h"
#include "songfiles/id3tag.h"
#include "songfiles/mfxheader.h"
#include "songfiles/rawmidifile.h"
#include "songfiles/songkind.h"

#include <QFile>

namespace {

constexpr int kMidiStart = 4096;

/// The title as the whole tag gives it, for which no quick way is gone.
QString tagTitle(const QByteArray &bytes)
{
    Id3Tag tag;
    return tag.load(bytes.left(Id3Tag::bytesNeeded(bytes.left(Id3Tag::kHeaderSize)))) ? tag.title() : QString();
}

QString mfxTitle(const QByteArray &bytes)
{
    MfxHeader header;
    return header.setHeader(bytes) ? header.title() : MfxHeader::titleIn(bytes.left(MfxHeader::kSmallSize));
}

QString expectedTitle(SongKind kind, const QByteArray &bytes)
{
    switch (kind) {
    case SongKind::Mp3:
        return tagTitle(bytes);
    case SongKind::Midi:
        return RawMidiFile::titleIn(bytes.left(kMidiStart));
    case SongKind::Mfx:
        return mfxTitle(bytes);
    }
    return QString();
}

} // namespace

FuzzChecks::Verdict FuzzChecks::titles(const QByteArray &bytes)
{
    static const ScratchFolder folder;
    static const QFileInfo file(folder.path(QStringLiteral("a.b.song")));
    ScratchFolder::write(file.filePath(), bytes);
    constexpr int kOneOfEachKind[] = {0, 2, 3};
    for (const int index : kOneOfEachKind) {
        const QString expected = expectedTitle(kSongSuffixes.at(std::size_t(index)).kind, bytes);
        if (readSongTitle(index, file) != (expected.isEmpty() ? file.completeBaseName() : expected))
            return QStringLiteral("another title than that of the whole song: ") +
                   QLatin1String(kSongSuffixes.at(std::size_t(index)).suffix);
        if (expected.contains(QChar(u'\0')))
            return QStringLiteral("a title goes on behind its end");
    }
    return QString();
}
