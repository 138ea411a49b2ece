#include "optimizerrun.h"
#include "places.h"
#include "support/files.h"
#include "support/platform.h"

/// What lies loose in the root moves into "My Songs" when the disk is scanned.
class TestRootFiles : public QObject
{
    Q_OBJECT

private slots:
    void looseFilesMoveIntoMySongs_data() {
        columns<QStringList, QStringList>("before", "after");
        row("a file with a taken name gets the next free number",
            QStringList({"song.mid=new"_s, "My Songs/song.mid=first"_s, "My Songs/song_1.mid=second"_s, "b.mid=b"_s,
                         "System/Playlist/a.pls=\\sdmemory\\song.mid^1^2\r\n\\sdmemory\\x.mid^1^2\n"_s,
                         "System/Playlist/b.pls=\\sdmemory\\SONG.mid^1^2\n\\sdmemory\\song.mid^3^4"_s,
                         "System/Playlist/other.pls=\\sdmemory\\x.mid^1^2\n"_s}),
            QStringList({"My Songs/b.mid=b"_s, "My Songs/song.mid=first"_s, "My Songs/song_1.mid=second"_s,
                         "My Songs/song_2.mid=new"_s,
                         "System/Playlist/a.pls=\\sdmemory\\My Songs\\song_2.mid^1^2\r\n\\sdmemory\\x.mid^1^2\n"_s,
                         "System/Playlist/b.pls=\\sdmemory\\My Songs\\song_2.mid^1^2\n"
                         "\\sdmemory\\My Songs\\song_2.mid^3^4"_s,
                         "System/Playlist/other.pls=\\sdmemory\\x.mid^1^2\n"_s}));
#ifdef Q_OS_WIN
        const QString numbered = "My Songs/readme_1=r"_s; // a dot at the end of a name is no part of it there
#else
        const QString numbered = "My Songs/readme_1.=r"_s;
#endif
        row("a name without a suffix keeps a dot behind its number",
            QStringList({"readme=r"_s, "b.mid"_s, "My Songs/readme=R"_s}),
            QStringList({"My Songs/b.mid"_s, "My Songs/readme=R"_s, numbered}));
        for (const QString &name : {"My Songs"_s, "MY SONGS"_s}) {
            const QStringList files = {name + "=a file"_s, "System/Playlist/a.pls=\\sdmemory\\song.mid^1^2\n"_s,
                                       "song.mid"_s};
            row(qPrintable("a file called %1 keeps root and playlists as they are"_s.arg(name)), files, files);
        }
    }
    void looseFilesMoveIntoMySongs() {
        QFETCH(QStringList, before);
        QFETCH(QStringList, after);
        OptimizerRun run(before);
        run.scan();
        QCOMPARE(run.disk(), after);
        QCOMPARE(run.player.folders().contains("My Songs"_s), before != after);
        if (before != after)
            QVERIFY(run.logged("scan_directories : Scan Root Dir : file count  2"_s));
    }

    void rewrittenPlaylistNamesTheNewPlace() {
        OptimizerRun run;
        const QString list =
            run.player.addFile("System/Playlist/a.pls"_s, "\\sdmemory\\A\\s.mid^1^2\n\\sdmemory\\b.mid^1^2");
        run.page.rootPath = run.player.root();
        run.page.rewritePlaylist(list, run.player.path("A/s.mid"_s), run.player.path("B/C/t.mid"_s));
        QCOMPARE(contentOf(list), QByteArray("\\sdmemory\\B\\C\\t.mid^1^2\n\\sdmemory\\b.mid^1^2"));
        QVERIFY(!run.player.exists("System/Playlist/a.pls.old"_s));
    }

    void playlistsStillNameARootSongThatCannotMove() {
        SKIP_ON_WINDOWS("the path is too long there");
        const QString song = QString(251, QLatin1Char('s')) + ".mid"_s;
        OptimizerRun run({song, "My Songs/"_s + song + "=other"_s});
        run.player.addFile("System/Playlist/p.pls"_s, "\\sdmemory\\" + song.toUtf8() + "^1^2");
        const QByteArray before = run.player.content("System/Playlist/p.pls"_s);
        run.scan();
        QVERIFY(run.player.exists(song));
        QCOMPARE(run.player.content("System/Playlist/p.pls"_s), before);
    }

    void thePlayersOwnRootFilesStay() {
        for (const QString &name :
             words("q-artedev Q-ARTEDEV CorvinImportDB.sql corvinimportdb.sql AUTOEXEC.BAT autoexec.bat")) {
            OptimizerRun run({name, "Songs/"_s + name});
            run.scan();
            QVERIFY2(run.player.exists(name) && !run.player.exists("My Songs/"_s + name), qPrintable(name));
            // Elsewhere the name means nothing.
            QCOMPARE(places(run, run.page.unsupportedFiles), QStringList("Songs/"_s + name));
            QVERIFY(run.logged("scan_directories : Scan Root Dir : file count  0"_s));
        }
    }

    void stopDuringTheRootCleanUpEndsTheStep() {
        OptimizerRun run({"A/t.txt"_s});
        run.addNumbered(QString(), 5);
        // Posted events are handled with the first root file, which is still moved.
        run.stopAtFirstEvents();
        run.scan();
        QCOMPARE(run.player.files("My Songs"_s).size(), 1);
        QVERIFY(run.page.unsupportedFiles.isEmpty());
        QCOMPARE(run.told.logged().last(), "scan_directories : Scan Root Dir : move to  My Songs"_s);
        QCOMPARE(run.told.count("max 100"_s), 0);
        QVERIFY(run.page.abortRequested);
    }

    void rootFileIsClassifiedOnceInItsNewPlace() {
        OptimizerRun run;
        run.addNumbered(QString(), 300, "jpg"_s);
        run.scan();
        QCOMPARE(run.page.imageFiles.size(), 300);
        for (const QFileInfo &file : qAsConst(run.page.imageFiles))
            QVERIFY(file.absoluteFilePath().startsWith(run.player.path("My Songs/"_s)));
    }
};

QTEST_MAIN(TestRootFiles)
#include "tst_rootfiles.moc"
