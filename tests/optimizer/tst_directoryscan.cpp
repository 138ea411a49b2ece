#include "optimizerrun.h"
#include "places.h"
#include "support/files.h"
#include "support/given.h"
#include "support/platform.h"

class TestDirectoryScan : public QObject
{
    Q_OBJECT

    static QStringList sorted(QStringList texts) {
        texts.sort();
        return texts;
    }

private slots:
    void stoppedScanTouchesNothing() {
        OptimizerRun run({"song.mid"_s});
        run.page.playlistIndex.insert("a"_s, "b"_s);
        run.page.abortRequested = true;
        run.scan();
        QCOMPARE(run.told.lines(), QStringList());
        QCOMPARE(run.page.playlistIndex.size(), 1);
        QCOMPARE(run.player.files(), words("song.mid"));
    }

    void emptyDiskReportsEachStage() {
        OptimizerRun run;
        run.scan();
        QCOMPARE(run.told.lines(),
                 QStringList({"label Scansione cartelle in corso..."_s, "log scan_directories : START"_s, "min 0"_s,
                              "max 0"_s, "log scan_directories : Mappatura dei files presenti nelle playlist"_s,
                              "log scan_directories : N. FileInPlayList : 0"_s,
                              "log scan_directories : Scan Root Dir : move to  My Songs"_s,
                              "log scan_directories : Scan Root Dir : file count  0"_s,
                              "log scan_directories : Scan All Corvin Dirs : START"_s,
                              "log scan_directories : Scan All Corvin Dirs : Big Folder : 0"_s, "max 100"_s}));
        QVERIFY(QFileInfo(run.player.path("My Songs"_s)).isDir());
        QVERIFY(run.loggedOnlyInfos());
    }

    void diskIsReportedInTheOrderOfTheWork() {
        OptimizerRun run({"System/Playlist/b.pls=\\sdmemory\\B\\1.mid^12^0\n"_s,
                          "System/Playlist/a.pls=\\sdmemory\\A\\1.mid^12^0\n"_s, "loose.mid"_s, "B/1.mid"_s,
                          "A/1.mid"_s, "A/C/1.mid"_s, "A/C/2.dat"_s});
        run.scan();
        const auto folder = [&run](int count, const char *name) {
            return "log \"[%1]\" \"%2\""_s.arg(count, 6).arg(run.player.path(QLatin1String(name)));
        };
        const auto playlist = [&run](const char *name) {
            return "log scan_directories : Playlist : \"%1\""_s.arg(
                run.player.path("System/Playlist/"_s + QLatin1String(name)));
        };
        QCOMPARE(run.told.lines(),
                 QStringList({"label Scansione cartelle in corso..."_s, "log scan_directories : START"_s, "min 0"_s,
                              "max 0"_s, "log scan_directories : Mappatura dei files presenti nelle playlist"_s,
                              playlist("a.pls"), playlist("b.pls"), "log scan_directories : N. FileInPlayList : 2"_s,
                              "log scan_directories : Scan Root Dir : move to  My Songs"_s,
                              "log scan_directories : Scan Root Dir : file count  1"_s,
                              "log scan_directories : Scan All Corvin Dirs : START"_s, folder(1, "A"), folder(2, "A/C"),
                              folder(1, "B"), folder(1, "My Songs"),
                              "log scan_directories : Scan All Corvin Dirs : Big Folder : 0"_s, "max 100"_s}));
    }

    void formerFindingsAreEmptied() {
        OptimizerRun run;
        run.page.playlistIndex.insert("a"_s, "b"_s);
        const QList<QList<QFileInfo> *> lists = {&run.page.imageFiles, &run.page.videoFiles, &run.page.unsupportedFiles,
                                                 &run.page.bigFolders};
        for (QList<QFileInfo> *list : lists)
            list->append(QFileInfo("/old"_s));
        run.scan();
        QVERIFY(run.page.playlistIndex.isEmpty());
        for (const QList<QFileInfo> *list : lists)
            QCOMPARE(*list, QList<QFileInfo>());
    }

    void everyMentionOfASongIsAnEntry() {
        OptimizerRun run({"System/Playlist/a.pls=\\sdmemory\\My Songs\\one.mid^12^0\r\n"
                          "\\SDMemory\\My Songs\\twò.mp3^1^99999\r\n\\sdmemory\\My Songs\\bare.mid\n"_s,
                          "System/Playlist/b.PLS=\\sdmemory\\My Songs\\one.mid^12^0\n"_s,
                          "System/Playlist/c.txt=\\sdmemory\\My Songs\\one.mid^12^0\n"_s});
        run.scan();
        const QString a = run.player.path("System/Playlist/a.pls"_s);
        const QString b = run.player.path("System/Playlist/b.PLS"_s);
        const auto &index = run.page.playlistIndex;
        const QString songs = run.player.path("My Songs/"_s);
        QCOMPARE(sorted(index.values(songs + "one.mid"_s)), QStringList({a, b}));
        QCOMPARE(index.values(songs + "twò.mp3"_s), QStringList(a));
        // Without its numbers the line is kept whole, line end included: it can never name a file.
        QCOMPARE(index.values(songs + "bare.mid\n"_s), QStringList(a));
        QCOMPARE(index.size(), 4);
        QVERIFY(run.logged("scan_directories : Playlist : \"%1\""_s.arg(a)));
        QVERIFY(run.logged("scan_directories : Playlist : \"%1\""_s.arg(b)));
        QVERIFY(run.logged("scan_directories : N. FileInPlayList : 4"_s));
    }

    // The player's disk ignores case: on a volume that does not, what is there is used, and no second folder is made.
    void thePlayersFoldersAreFoundWhateverTheirCase() {
        SKIP_ON_WINDOWS("the file system ignores case here");
        OptimizerRun run(
            {"Song.mid=new"_s, "my songs/Song.mid=old"_s, "SYSTEM/playlist/Mine.PLS=\\sdmemory\\Song.mid^12^0\r\n"_s});
        run.scan();
        QCOMPARE(run.player.folders(), QStringList({"SYSTEM"_s, "my songs"_s}));
        QCOMPARE(run.player.folders("SYSTEM"_s), words("playlist"));
        QCOMPARE(run.disk(), QStringList({"SYSTEM/playlist/Mine.PLS=\\sdmemory\\my songs\\Song_1.mid^12^0\r\n"_s,
                                          "my songs/Song.mid=old"_s, "my songs/Song_1.mid=new"_s}));
        const QString list = run.player.path("SYSTEM/playlist/Mine.PLS"_s);
        QCOMPARE(run.page.playlistIndex.values(run.player.path("Song.mid"_s)), QStringList(list));
        QVERIFY(run.logged("scan_directories : Playlist : \"%1\""_s.arg(list)));
        QVERIFY(run.logged("scan_directories : Scan Root Dir : move to  My Songs"_s));
    }

    void everyKindOfFileGoesIntoItsList() {
        const QStringList images = words("Songs/f.JPEG Songs/f.bmp Songs/f.jpg Songs/f.png");
        const QStringList videos = words("Songs/f.Mp4 Songs/f.avi Songs/f.mov Songs/f.mpeg Songs/f.mpg Songs/f.wmv");
        const QStringList others = words("Songs/f.txt Songs/readme");
        OptimizerRun run(images + videos + others + words("Songs/.hidden.txt"));
        for (const QString &suffix : words("mp3 midi MID mf3 mf4 mf5 Kar xmp3 xmid cdg DAT bak"))
            run.player.addFile("Songs/f."_s + suffix);
        run.scan();
        QCOMPARE(sorted(places(run, run.page.imageFiles)), images);
        QCOMPARE(sorted(places(run, run.page.videoFiles)), videos);
        QCOMPARE(sorted(places(run, run.page.unsupportedFiles)), others);
        QVERIFY(run.logged("\"[    12]\" \"%1\""_s.arg(run.player.path("Songs"_s))));
    }

    void filesInTheirOwnFolderAreNotListed_data() {
        columns<QString, bool>("file", "listed");
        row("picture in Images", "Images/2019/p.JPG"_s, false);
        row("picture in images", "images/p.jpg"_s, false);
        row("picture in a song folder", "My Songs/p.JPG"_s, true);
        row("picture in Videos", "Videos/p.jpg"_s, true);
        row("video in Videos", "Videos/Clips/v.avi"_s, false);
        row("video in VIDEOS", "VIDEOS/v.avi"_s, false);
        row("video in a song folder", "My Songs/v.avi"_s, true);
        row("video in Images", "Images/v.avi"_s, true);
        row("video in System", "System/v.avi"_s, false);
        row("picture in CorvinUpdate", "CorvinUpdate/x/p.png"_s, false);
        row("text in a song folder", "My Songs/t.txt"_s, true);
        row("text in system", "system/sub/notes.TXT"_s, false);
        row("text in SystemOld", "SystemOld/notes.txt"_s, false);
        row("text in corvinupdate", "corvinupdate/t.txt"_s, false);
        row("picture in Images2", "Images2/p.jpg"_s, false);
        row("video in VideosOld", "VideosOld/v.avi"_s, false);
        row("text in CorvinUpdateOld", "CorvinUpdateOld/t.txt"_s, false);
        row("text in a System further down", "A/System/t.txt"_s, true);
    }
    void filesInTheirOwnFolderAreNotListed() {
        const QStringList file(given<QString>("file"));
        OptimizerRun run(file);
        run.scan();
        const QList<QFileInfo> all = run.page.imageFiles + run.page.videoFiles + run.page.unsupportedFiles;
        QCOMPARE(places(run, all), given<bool>("listed") ? file : QStringList());
    }

    void linksAndHiddenFoldersAreNotFollowed() {
        SKIP_ON_WINDOWS("links are files of another kind here");
        OptimizerRun run({".trash/t.txt"_s});
        PcFolder elsewhere;
        const QString file = elsewhere.addFile("outside.txt"_s);
        run.player.addFolder("A"_s);
        QVERIFY(QFile::link(elsewhere.path(), run.player.path("A/folder"_s)));
        QVERIFY(QFile::link(file, run.player.path("A/file.txt"_s)));
        QVERIFY(QFile::link(file, run.player.path("link.mid"_s)));
        run.scan();
        QVERIFY(run.page.unsupportedFiles.isEmpty());
        QVERIFY(QFileInfo(run.player.path("link.mid"_s)).isSymLink());
    }

    void folderIsBigFromOneThousandAndOneFiles_data() {
        columns<QString, int, int, bool>("folder", "songs", "companions", "big");
        row("1000 songs", "A"_s, 1000, 0, false);
        row("1001 songs", "A"_s, 1001, 0, true);
        row("999 songs and 2 companions", "A"_s, 999, 2, true);
        row("songs in Bridges", "Bridges"_s, 1001, 0, false);
        row("songs below effects", "effects/deep"_s, 1001, 0, false);
        row("companions in Effects", "Effects"_s, 5, 1001, true);
        row("songs in BridgesOld", "BridgesOld"_s, 1001, 0, false);
        row("songs in EffectsX", "EffectsX"_s, 1001, 0, false);
        row("songs in System", "System"_s, 1001, 0, false);
        row("songs in CorvinUpdate", "CorvinUpdate/x"_s, 1001, 0, false);
    }
    void folderIsBigFromOneThousandAndOneFiles() {
        QFETCH(QString, folder);
        QFETCH(int, companions);
        QFETCH(bool, big);
        const int songs = given<int>("songs");
        OptimizerRun run;
        run.addNumbered(folder + "/"_s, songs);
        run.addNumbered(folder + "/"_s, companions, "dat"_s);
        run.scan();
        QCOMPARE(places(run, run.page.bigFolders), big ? QStringList(folder) : QStringList());
        QVERIFY(run.logged("scan_directories : Scan All Corvin Dirs : Big Folder : %1"_s.arg(big ? 1 : 0)));
        // A folder that is passed over has no line of its own either.
        const int counted = folder == "A"_s ? songs + companions : companions;
        QCOMPARE(run.logged("\"[%1]\" \"%2\""_s.arg(counted, 6).arg(run.player.path(folder))), counted > 0);
    }

    void deeperBigFoldersComeFirst() {
        OptimizerRun run;
        for (const QString &folder : words("A/ A/B/C/ A/Z/"))
            run.addNumbered(folder, 1001);
        run.scan();
        QCOMPARE(places(run, run.page.bigFolders), words("A/B/C A/Z A"));
    }

    void theRootIsNeverABigFolder() {
        OptimizerRun run({"My Songs"_s});
        run.addNumbered(QString(), 1001);
        run.scan();
        QVERIFY(run.page.bigFolders.isEmpty());
        QVERIFY(run.logged("\"[  1001]\" \"%1\""_s.arg(QDir(run.player.root()).path())));
    }

    void labelComesEveryTwoHundredAndFiftyFiles() {
        OptimizerRun run({"AUTOEXEC.BAT"_s});
        run.addNumbered("A/"_s, 260);
        run.addNumbered("B/"_s, 239, "txt"_s);
        // Files that are passed over do not count.
        run.addNumbered("System/"_s, 100);
        const QString label = "Scansione cartelle in corso..."_s;
        run.scan();
        QCOMPARE(run.told.labels(), QStringList({label, label + " [250]"_s}));
        run.player.addFile("C/one.jpg"_s);
        run.told.clear();
        run.scan();
        QCOMPARE(run.told.labels().last(), label + " [500]"_s);
    }

    void stopDuringTheWalkLeavesNoBigFolders() {
        OptimizerRun run;
        run.addNumbered("A/"_s, 1001);
        run.stopAtLabel("[250]"_s);
        run.scan();
        QVERIFY(run.page.bigFolders.isEmpty());
        QCOMPARE(run.told.labels().last(), "Scansione cartelle in corso... [250]"_s);
        QCOMPARE(run.told.logged().last(), "scan_directories : Scan All Corvin Dirs : START"_s);
    }
};

QTEST_MAIN(TestDirectoryScan)
#include "tst_directoryscan.moc"
