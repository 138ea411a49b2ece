#pragma once

#include "ottimizza.h"

#include "pathset.h"
#include "splitroom.h"

#include <QHash>
#include <QVector>

/// What is known of the folder that is being split.
struct Ottimizza::SplitRun
{
    /// A song or sub-folder with its title.
    struct TitledEntry
    {
        QString sortKey; ///< the title in upper case, made once and not at every comparison
        QString title;
        QFileInfo entry;
    };

    QString folder;     ///< full path of the folder
    QString oldFolder;  ///< full path under which its former content waits
    QString header;     ///< first words of the status texts
    SplitRoom room;     ///< of its songs and their companions
    PathSet companions; ///< names that companions of songs may have
    QFileInfoList entries;
    QVector<TitledEntry> titled;
    QChar initial = QChar(u'\0'); ///< of the song moved last
    QString subfolder;            ///< full path of the sub-folder that is being filled
    int count = 0;                ///< files counted for it; 0 forces a new choice
    QHash<QChar, int> lastFull;   ///< by initial, the number of the last sub-folder that was seen to be full

    /// A file that a song of the folder may take along.
    void addCompanion(const QString &name)
    {
        room.addFile(name);
        companions.insert(name);
    }
};
