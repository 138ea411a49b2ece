#pragma once

#include "optimizer/titlereader.h"

#include "songfiles/id3tag.h"
#include "support/files.h"
#include "support/testing.h"

/// Reads the titles of songs in a folder of its own: a test of titles inherits it.
class TitleTest : public QObject
{
protected:
    static inline const QStringList kSuffixes = words("mp3 midi mid mf3 mf4 mf5 kar xmp3 xmid");
    static constexpr int kMp3 = 0;
    static constexpr int kMid = 2;
    static constexpr int kKar = 6;
    /// The name of each song without its suffix, which is its title when it has no other.
    static inline const QString kBase = "file.name"_s;
    static constexpr int kMidiLimit = 4096;

    /// What the whole tag says of an MP3 song with this content.
    static QString titleOfWholeTag(const QByteArray &content) {
        Id3Tag tag;
        const QString title = tag.load(content) ? tag.title() : QString();
        return title.isEmpty() ? kBase : title;
    }

    QString path(int formatIndex) const { return folder.path(kBase + "."_s + kSuffixes.value(formatIndex, "txt"_s)); }
    QString titleOf(int formatIndex, const QByteArray &content) const {
        // A new file each time: some disks write out at once what replaces the content of an old one.
        QFile::remove(path(formatIndex));
        QString title = readSongTitle(formatIndex, QFileInfo(putFile(path(formatIndex), content)));
        if (formatIndex == kMp3 && title != titleOfWholeTag(content))
            failTest("The whole tag has another title than "_s + title);
        return title;
    }

    PcFolder folder;
};
