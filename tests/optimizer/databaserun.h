#pragma once

#include "optimizerrun.h"
#include "songfactory/songfactory.h"

/// The database step and the file that it writes.
struct DatabaseRun : OptimizerRun
{
    static QByteArray song(const QString &title = "Title"_s) {
        SongInfo info;
        info.title = title;
        return SongFactory::midi(info);
    }
    /// On the disk are @p songs, in the player's database @p known.
    explicit DatabaseRun(const QStringList &songs = {}, const QStringList &known = {}) {
        for (const QString &path : songs)
            player.addFile(path, song());
        if (!known.isEmpty())
            writeFastDb(known);
    }
    void addSongs(int count, const QString &suffix = "mid"_s) { addNumbered("A/"_s, count, suffix, song()); }
    /// Binary noise with device paths in it, each ended by a NUL.
    void writeFastDb(const QStringList &paths, const QString &file = "System/Corvin/data.fastDB"_s) {
        QByteArray data = QByteArrayLiteral("\x01\xFF\x00noise\\sdmem\\");
        for (const QString &path : paths)
            data += QByteArrayLiteral("\x07\x00\x80\\sdmemory\\") + path.toUtf8() + QByteArrayLiteral("\x00tail");
        player.addFile(file, data);
    }
    void work() { page.createDiffDatabaseImportFile(); }
    bool hasFile() const { return player.exists("CorvinImportDB.sql"_s); }
    QByteArray file() const { return player.content("CorvinImportDB.sql"_s); }
    QStringList lines() const { return QString::fromUtf8(file()).split(QLatin1Char('\n'), Qt::SkipEmptyParts); }
    bool isDone() { return told.count("log createDiffDatabaseImportFile : END"_s) == 1; }
};
