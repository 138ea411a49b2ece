#pragma once

#include "optimizerrun.h"
#include "songfactory/songfactory.h"
#include "songfiles/bytes.h"
#include "songfiles/rounds.h"
#include "support/files.h"
#include "support/playerdatabase.h"

#include "disk/datafolder.h"

/// A whole run over a disk that means no good.
struct HostileRun : OptimizerRun
{
    HostileRun() { setDataFolder(pc.path()); }
    ~HostileRun() { setDataFolder(QString()); }
    Q_DISABLE_COPY(HostileRun)

    QString addSong(const QString &path, const QString &title = QString()) {
        SongInfo info;
        info.title = title;
        info.author = QString::number(++m_songs); // no two songs are the same
        return player.addFile(path, SongFactory::midi(info, 0, SongFactory::Markers::WithBars, 1));
    }
    /// The run ends well, in time, and every content is still on the player or on the PC.
    void runWhole() {
        const QSet<QByteArray> before = contents({player.root()});
        QElapsedTimer timer;
        timer.start();
        page.show();
        page.startAllOptimization();
        QVERIFY(timer.elapsed() < (isSoak() ? 20 : 1) * kMostMilliseconds);
        QCOMPARE(ends(), words("0"));
        const QSet<QByteArray> after = contents({player.root(), pc.path("removed"_s)});
        QVERIFY(after.contains(before));
    }
    QByteArray importFile() const { return player.content("CorvinImportDB.sql"_s); }
    /// Executes the import file; each of its lines is one statement of the three kinds.
    void importInto(PlayerDatabase &database) const {
        QCOMPARE(database.runFile(importFile()), QString());
        const QByteArrayList lines = importFile().chopped(1).split('\n');
        for (const QByteArray &line : lines)
            QVERIFY(line.startsWith("INSERT INTO songs (") || line.startsWith("DELETE FROM "));
    }

    PcFolder pc;

private:
    static constexpr qint64 kMostMilliseconds = 60000;

    /// Playlists are rewritten, the database export belongs to the player, and import files come and go.
    static QSet<QByteArray> contents(const QStringList &roots) {
        QSet<QByteArray> found;
        for (const QString &root : roots) {
            const QStringList files = filesBelow(root);
            for (const QString &file : files) {
                const QFileInfo info(root + QLatin1Char('/') + file);
                if (info.isFile() && !file.startsWith("System/"_s) && info.suffix() != "sql"_s)
                    found.insert(contentOf(info.filePath()));
            }
        }
        return found;
    }

    int m_songs = 0;
};
