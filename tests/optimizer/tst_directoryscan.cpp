#include "runrecorder.h"
#include "support/platform.h"
#include "support/simulatedplayer.h"

#include "optimizer/ottimizza.h"

#include <QDir>
#include <QTest>

class tst_DirectoryScan : public QObject
{
    Q_OBJECT

private:
    static QStringList relative(const Ottimizza &page, const QList<QFileInfo> &files)
    {
        QStringList paths;
        for (const QFileInfo &file : files)
            paths.append(file.absoluteFilePath().mid(page.rootPath.size()));
        paths.sort();
        return paths;
    }
    static void addSongs(SimulatedPlayer &player, const QString &folder, int count,
                         const QString &suffix = QStringLiteral("mid"))
    {
        for (int i = 0; i < count; ++i)
            player.addFile(QStringLiteral("%1/%2.%3").arg(folder).arg(i, 5, 10, QLatin1Char('0')).arg(suffix));
    }

private slots:
    void stoppedScanTouchesNothing()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("song.mid"));
        Ottimizza page;
        page.rootPath = player.root();
        page.playlistIndex.insert(QStringLiteral("a"), QStringLiteral("b"));
        page.abortRequested = true;
        RunRecorder recorder(page);
        page.scan_directories();
        QCOMPARE(recorder.lines(), QStringList());
        QCOMPARE(page.playlistIndex.size(), 1);
        QCOMPARE(player.files(), QStringList(QStringLiteral("song.mid")));
    }

    void emptyDiskReportsEachStage()
    {
        SimulatedPlayer player;
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        page.scan_directories();
        QCOMPARE(recorder.lines(),
                 QStringList({QStringLiteral("label Scansione cartelle in corso..."),
                              QStringLiteral("log scan_directories : START"), QStringLiteral("min 0"),
                              QStringLiteral("max 0"),
                              QStringLiteral("log scan_directories : Mappatura dei files presenti nelle playlist"),
                              QStringLiteral("log scan_directories : N. FileInPlayList : 0"),
                              QStringLiteral("log scan_directories : Scan Root Dir : move to  My Songs"),
                              QStringLiteral("log scan_directories : Scan Root Dir : file count  0"),
                              QStringLiteral("log scan_directories : Scan All Corvin Dirs : START"),
                              QStringLiteral("log scan_directories : Scan All Corvin Dirs : Big Folder : 0"),
                              QStringLiteral("max 100")}));
        QVERIFY(QFileInfo(player.path(QStringLiteral("My Songs"))).isDir());
        for (const LogCapture::Line &line : recorder.log().lines())
            QCOMPARE(line.type, QtInfoMsg);
    }

    void formerFindingsAreEmptied()
    {
        SimulatedPlayer player;
        Ottimizza page;
        page.rootPath = player.root();
        page.playlistIndex.insert(QStringLiteral("a"), QStringLiteral("b"));
        const QFileInfo old(QStringLiteral("/old"));
        page.imageFiles.append(old);
        page.videoFiles.append(old);
        page.unsupportedFiles.append(old);
        page.bigFolders.append(old);
        page.scan_directories();
        QVERIFY(page.playlistIndex.isEmpty());
        QVERIFY(page.imageFiles.isEmpty());
        QVERIFY(page.videoFiles.isEmpty());
        QVERIFY(page.unsupportedFiles.isEmpty());
        QVERIFY(page.bigFolders.isEmpty());
    }

    void everyMentionOfASongIsAnEntry()
    {
        SimulatedPlayer player;
        const QString a =
            player.addFile(QStringLiteral("System/Playlist/a.pls"), "\\sdmemory\\My Songs\\one.mid^12^0\r\n"
                                                                    "\\SDMemory\\My Songs\\tw\xC3\xB2.mp3^1^99999\r\n"
                                                                    "\\sdmemory\\My Songs\\bare.mid\n");
        const QString b =
            player.addFile(QStringLiteral("System/Playlist/b.PLS"), "\\sdmemory\\My Songs\\one.mid^12^0\n");
        player.addFile(QStringLiteral("System/Playlist/c.txt"), "\\sdmemory\\My Songs\\one.mid^12^0\n");
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        page.scan_directories();
        QStringList lists = page.playlistIndex.values(player.path(QStringLiteral("My Songs/one.mid")));
        lists.sort();
        QCOMPARE(lists, QStringList({a, b}));
        QCOMPARE(page.playlistIndex.values(player.path(QStringLiteral("My Songs/twò.mp3"))), QStringList(a));
        // Without its numbers the line is kept whole, line end included: it can never name a file.
        QCOMPARE(page.playlistIndex.values(player.path(QStringLiteral("My Songs/bare.mid\n"))), QStringList(a));
        QCOMPARE(page.playlistIndex.size(), 4);
        QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("scan_directories : Playlist : \"%1\"").arg(a)));
        QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("scan_directories : Playlist : \"%1\"").arg(b)));
        QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("scan_directories : N. FileInPlayList : 4")));
    }

    void rootFileWithTakenNameGetsNextFreeNumber()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("song.mid"), "new");
        player.addFile(QStringLiteral("My Songs/song.mid"), "first");
        player.addFile(QStringLiteral("My Songs/song_1.mid"), "second");
        player.addFile(QStringLiteral("readme"), "r");
        player.addFile(QStringLiteral("My Songs/readme"), "R");
        player.addFile(QStringLiteral("System/Playlist/a.pls"), "\\sdmemory\\song.mid^1^2\r\n\\sdmemory\\x.mid^1^2\n");
        player.addFile(QStringLiteral("System/Playlist/b.pls"), "\\sdmemory\\SONG.mid^1^2\n\\sdmemory\\song.mid^3^4");
        player.addFile(QStringLiteral("System/Playlist/other.pls"), "\\sdmemory\\x.mid^1^2\n");
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        page.scan_directories();
        QCOMPARE(player.content(QStringLiteral("My Songs/song_2.mid")), QByteArray("new"));
        QCOMPARE(player.content(QStringLiteral("My Songs/song.mid")), QByteArray("first"));
        QCOMPARE(player.content(QStringLiteral("My Songs/song_1.mid")), QByteArray("second"));
        QCOMPARE(player.content(QStringLiteral("My Songs/readme_1.")), QByteArray("r"));
        QVERIFY(!player.exists(QStringLiteral("song.mid")));
        QCOMPARE(player.content(QStringLiteral("System/Playlist/a.pls")),
                 QByteArray("\\sdmemory\\My Songs\\song_2.mid^1^2\r\n\\sdmemory\\x.mid^1^2\n"));
        QCOMPARE(player.content(QStringLiteral("System/Playlist/b.pls")),
                 QByteArray("\\sdmemory\\My Songs\\song_2.mid^1^2\n\\sdmemory\\My Songs\\song_2.mid^3^4"));
        QCOMPARE(player.content(QStringLiteral("System/Playlist/other.pls")), QByteArray("\\sdmemory\\x.mid^1^2\n"));
        QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("scan_directories : Scan Root Dir : file count  2")));
    }

    void rewrittenPlaylistNamesTheNewPlace()
    {
        SimulatedPlayer player;
        const QString list =
            player.addFile(QStringLiteral("System/Playlist/a.pls"), "\\sdmemory\\A\\s.mid^1^2\n\\sdmemory\\b.mid^1^2");
        Ottimizza page;
        page.rootPath = player.root();
        page.rewritePlaylist(list, player.path(QStringLiteral("A/s.mid")), player.path(QStringLiteral("B/C/t.mid")));
        QCOMPARE(player.content(QStringLiteral("System/Playlist/a.pls")),
                 QByteArray("\\sdmemory\\B\\C\\t.mid^1^2\n\\sdmemory\\b.mid^1^2"));
        QVERIFY(!player.exists(QStringLiteral("System/Playlist/a.pls.old")));
    }

    void thePlayersOwnRootFilesStay_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("device file") << QStringLiteral("q-artedev");
        QTest::newRow("device file, capitals") << QStringLiteral("Q-ARTEDEV");
        QTest::newRow("import file") << QStringLiteral("CorvinImportDB.sql");
        QTest::newRow("import file, small") << QStringLiteral("corvinimportdb.sql");
        QTest::newRow("batch file") << QStringLiteral("AUTOEXEC.BAT");
        QTest::newRow("batch file, small") << QStringLiteral("autoexec.bat");
    }
    void thePlayersOwnRootFilesStay()
    {
        QFETCH(QString, name);
        SimulatedPlayer player;
        player.addFile(name);
        player.addFile(QStringLiteral("Songs/") + name);
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        page.scan_directories();
        QVERIFY(player.exists(name));
        QVERIFY(!player.exists(QStringLiteral("My Songs/") + name));
        // Elsewhere the name means nothing.
        QCOMPARE(relative(page, page.unsupportedFiles), QStringList(QStringLiteral("Songs/") + name));
        QVERIFY(recorder.log().contains(QStringLiteral("scan_directories : Scan Root Dir : file count  0")));
    }

    void fileCalledMySongsKeepsRootAndPlaylistsAsTheyAre()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("My Songs"), "a file");
        player.addFile(QStringLiteral("song.mid"));
        const QByteArray list("\\sdmemory\\song.mid^1^2\n");
        player.addFile(QStringLiteral("System/Playlist/a.pls"), list);
        Ottimizza page;
        page.rootPath = player.root();
        page.scan_directories();
        QVERIFY(player.exists(QStringLiteral("song.mid")));
        QCOMPARE(player.content(QStringLiteral("My Songs")), QByteArray("a file"));
        QCOMPARE(player.content(QStringLiteral("System/Playlist/a.pls")), list);
    }

    // The player's disk ignores case: on a volume that does not, what is there is used, and no second folder is made.
    void thePlayersFoldersAreFoundWhateverTheirCase()
    {
        SKIP_ON_WINDOWS("the file system ignores case here");
        SimulatedPlayer player;
        player.addFile(QStringLiteral("Song.mid"), "new");
        player.addFile(QStringLiteral("my songs/Song.mid"), "old");
        const QString list =
            player.addFile(QStringLiteral("SYSTEM/playlist/Mine.PLS"), "\\sdmemory\\Song.mid^12^0\r\n");
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        page.scan_directories();
        QCOMPARE(player.folders(), QStringList({QStringLiteral("SYSTEM"), QStringLiteral("my songs")}));
        QCOMPARE(player.folders(QStringLiteral("SYSTEM")), QStringList(QStringLiteral("playlist")));
        QCOMPARE(player.content(QStringLiteral("my songs/Song_1.mid")), QByteArray("new"));
        QCOMPARE(player.content(QStringLiteral("my songs/Song.mid")), QByteArray("old"));
        QCOMPARE(player.content(QStringLiteral("SYSTEM/playlist/Mine.PLS")),
                 QByteArray("\\sdmemory\\my songs\\Song_1.mid^12^0\r\n"));
        QCOMPARE(page.playlistIndex.values(player.path(QStringLiteral("Song.mid"))), QStringList(list));
        QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("scan_directories : Playlist : \"%1\"").arg(list)));
        QVERIFY(
            recorder.log().contains(QtInfoMsg, QStringLiteral("scan_directories : Scan Root Dir : move to  My Songs")));
    }

    void fileCalledMySongsInAnotherCaseKeepsTheRootAsItIs()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("MY SONGS"), "a file");
        player.addFile(QStringLiteral("song.mid"));
        Ottimizza page;
        page.rootPath = player.root();
        page.scan_directories();
        QCOMPARE(player.files(), QStringList({QStringLiteral("MY SONGS"), QStringLiteral("song.mid")}));
        QCOMPARE(player.folders(), QStringList());
    }

    void everyKindOfFileGoesIntoItsList()
    {
        SimulatedPlayer player;
        for (const char *suffix :
             {"mp3", "midi", "MID", "mf3", "mf4", "mf5", "Kar",  "xmp3", "xmid", "cdg", "DAT", "bak",
              "jpg", "JPEG", "png", "bmp", "avi", "mpg", "mpeg", "Mp4",  "wmv",  "mov", "txt"})
            player.addFile(QStringLiteral("Songs/f.") + QString::fromLatin1(suffix));
        player.addFile(QStringLiteral("Songs/readme"));
        player.addFile(QStringLiteral("Songs/.hidden.txt"));
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        page.scan_directories();
        QCOMPARE(relative(page, page.imageFiles),
                 QStringList({QStringLiteral("Songs/f.JPEG"), QStringLiteral("Songs/f.bmp"),
                              QStringLiteral("Songs/f.jpg"), QStringLiteral("Songs/f.png")}));
        QCOMPARE(relative(page, page.videoFiles),
                 QStringList({QStringLiteral("Songs/f.Mp4"), QStringLiteral("Songs/f.avi"),
                              QStringLiteral("Songs/f.mov"), QStringLiteral("Songs/f.mpeg"),
                              QStringLiteral("Songs/f.mpg"), QStringLiteral("Songs/f.wmv")}));
        QCOMPARE(relative(page, page.unsupportedFiles),
                 QStringList({QStringLiteral("Songs/f.txt"), QStringLiteral("Songs/readme")}));
        QVERIFY(recorder.log().contains(
            QtInfoMsg, QStringLiteral("\"[    12]\" \"%1\"").arg(player.path(QStringLiteral("Songs")))));
    }

    void filesInTheirOwnFolderAreNotListed_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("listed");
        QTest::newRow("picture in Images") << QStringLiteral("Images/2019/p.JPG") << false;
        QTest::newRow("picture in images") << QStringLiteral("images/p.jpg") << false;
        QTest::newRow("picture in a song folder") << QStringLiteral("My Songs/p.JPG") << true;
        QTest::newRow("picture in Videos") << QStringLiteral("Videos/p.jpg") << true;
        QTest::newRow("video in Videos") << QStringLiteral("Videos/Clips/v.avi") << false;
        QTest::newRow("video in VIDEOS") << QStringLiteral("VIDEOS/v.avi") << false;
        QTest::newRow("video in a song folder") << QStringLiteral("My Songs/v.avi") << true;
        QTest::newRow("video in Images") << QStringLiteral("Images/v.avi") << true;
        QTest::newRow("video in System") << QStringLiteral("System/v.avi") << false;
        QTest::newRow("picture in CorvinUpdate") << QStringLiteral("CorvinUpdate/x/p.png") << false;
        QTest::newRow("text in a song folder") << QStringLiteral("My Songs/t.txt") << true;
        QTest::newRow("text in system") << QStringLiteral("system/sub/notes.TXT") << false;
        QTest::newRow("text in SystemOld") << QStringLiteral("SystemOld/notes.txt") << false;
        QTest::newRow("text in corvinupdate") << QStringLiteral("corvinupdate/t.txt") << false;
        QTest::newRow("text in a System further down") << QStringLiteral("A/System/t.txt") << true;
    }
    void filesInTheirOwnFolderAreNotListed()
    {
        QFETCH(QString, file);
        QFETCH(bool, listed);
        SimulatedPlayer player;
        player.addFile(file);
        Ottimizza page;
        page.rootPath = player.root();
        page.scan_directories();
        const QStringList all =
            relative(page, page.imageFiles) + relative(page, page.videoFiles) + relative(page, page.unsupportedFiles);
        QCOMPARE(all, listed ? QStringList(file) : QStringList());
    }

    void linksAndHiddenFoldersAreNotFollowed()
    {
        SKIP_ON_WINDOWS("links are files of another kind here");
        SimulatedPlayer player;
        player.addFile(QStringLiteral(".trash/t.txt"));
        player.addFolder(QStringLiteral("A"));
        QTemporaryDir elsewhere;
        QFile file(elsewhere.filePath(QStringLiteral("outside.txt")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(QFile::link(elsewhere.path(), player.path(QStringLiteral("A/folder"))));
        QVERIFY(QFile::link(file.fileName(), player.path(QStringLiteral("A/file.txt"))));
        QVERIFY(QFile::link(file.fileName(), player.path(QStringLiteral("link.mid"))));
        Ottimizza page;
        page.rootPath = player.root();
        page.scan_directories();
        QVERIFY(page.unsupportedFiles.isEmpty());
        QVERIFY(QFileInfo(player.path(QStringLiteral("link.mid"))).isSymLink());
    }

    void folderIsBigFromOneThousandAndOneFiles_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<int>("songs");
        QTest::addColumn<int>("companions");
        QTest::addColumn<bool>("big");
        QTest::newRow("1000 songs") << QStringLiteral("A") << 1000 << 0 << false;
        QTest::newRow("1001 songs") << QStringLiteral("A") << 1001 << 0 << true;
        QTest::newRow("999 songs and 2 companions") << QStringLiteral("A") << 999 << 2 << true;
        QTest::newRow("songs in Bridges") << QStringLiteral("Bridges") << 1001 << 0 << false;
        QTest::newRow("songs below effects") << QStringLiteral("effects/deep") << 1001 << 0 << false;
        QTest::newRow("companions in Effects") << QStringLiteral("Effects") << 5 << 1001 << true;
        QTest::newRow("songs in System") << QStringLiteral("System") << 1001 << 0 << false;
        QTest::newRow("songs in CorvinUpdate") << QStringLiteral("CorvinUpdate/x") << 1001 << 0 << false;
    }
    void folderIsBigFromOneThousandAndOneFiles()
    {
        QFETCH(QString, folder);
        QFETCH(int, songs);
        QFETCH(int, companions);
        QFETCH(bool, big);
        SimulatedPlayer player;
        addSongs(player, folder, songs);
        addSongs(player, folder, companions, QStringLiteral("dat"));
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        page.scan_directories();
        QCOMPARE(relative(page, page.bigFolders), big ? QStringList(folder) : QStringList());
        QVERIFY(recorder.log().contains(
            QtInfoMsg, QStringLiteral("scan_directories : Scan All Corvin Dirs : Big Folder : %1").arg(big ? 1 : 0)));
        // A folder that is passed over has no line of its own either.
        const int counted = folder.startsWith(QLatin1String("A")) ? songs + companions : companions;
        QCOMPARE(recorder.log().contains(QStringLiteral("\"[%1]\" \"%2\"").arg(counted, 6).arg(player.path(folder))),
                 counted > 0);
    }

    void deeperBigFoldersComeFirst()
    {
        SimulatedPlayer player;
        addSongs(player, QStringLiteral("A"), 1001);
        addSongs(player, QStringLiteral("A/B/C"), 1001);
        addSongs(player, QStringLiteral("A/Z"), 1001);
        Ottimizza page;
        page.rootPath = player.root();
        page.scan_directories();
        QCOMPARE(page.bigFolders.size(), 3);
        QCOMPARE(page.bigFolders.at(0).absoluteFilePath(), player.path(QStringLiteral("A/B/C")));
        QCOMPARE(page.bigFolders.at(1).absoluteFilePath(), player.path(QStringLiteral("A/Z")));
        QCOMPARE(page.bigFolders.at(2).absoluteFilePath(), player.path(QStringLiteral("A")));
    }

    void theRootIsNeverABigFolder()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("My Songs"));
        for (int i = 0; i < 1001; ++i)
            player.addFile(QStringLiteral("%1.mid").arg(i));
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        page.scan_directories();
        QVERIFY(page.bigFolders.isEmpty());
        QVERIFY(recorder.log().contains(QStringLiteral("\"[  1001]\" \"%1\"").arg(QDir(player.root()).path())));
    }

    void labelComesEveryTwoHundredAndFiftyFiles()
    {
        SimulatedPlayer player;
        addSongs(player, QStringLiteral("A"), 260);
        addSongs(player, QStringLiteral("B"), 239, QStringLiteral("txt"));
        // Files that are passed over do not count.
        addSongs(player, QStringLiteral("System"), 100);
        player.addFile(QStringLiteral("AUTOEXEC.BAT"));
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        page.scan_directories();
        QCOMPARE(recorder.labels(), QStringList({QStringLiteral("Scansione cartelle in corso..."),
                                                 QStringLiteral("Scansione cartelle in corso... [250]")}));
        player.addFile(QStringLiteral("C/one.jpg"));
        recorder.clear();
        page.scan_directories();
        QCOMPARE(recorder.labels().last(), QStringLiteral("Scansione cartelle in corso... [500]"));
    }

    void stopDuringTheRootCleanUpEndsTheStep()
    {
        SimulatedPlayer player;
        for (int i = 0; i < 5; ++i)
            player.addFile(QStringLiteral("%1.mid").arg(i));
        player.addFile(QStringLiteral("A/t.txt"));
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        // Posted events are handled with the first root file, which is still moved.
        QMetaObject::invokeMethod(&page, "on_stopActionPressed", Qt::QueuedConnection);
        page.scan_directories();
        QCOMPARE(player.files(QStringLiteral("My Songs")).size(), 1);
        QVERIFY(page.unsupportedFiles.isEmpty());
        QCOMPARE(recorder.logged().last(), QStringLiteral("scan_directories : Scan Root Dir : move to  My Songs"));
        QCOMPARE(recorder.lines().count(QStringLiteral("max 100")), 0);
        QVERIFY(page.abortRequested);
    }

    void stopDuringTheWalkLeavesNoBigFolders()
    {
        SimulatedPlayer player;
        addSongs(player, QStringLiteral("A"), 1001);
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        QObject::connect(&page, &Ottimizza::updateLabelAction, &page, [&page](const QString &text) {
            if (text.endsWith(QLatin1String("[250]")))
                page.on_stopActionPressed();
        });
        page.scan_directories();
        QVERIFY(page.bigFolders.isEmpty());
        QCOMPARE(recorder.labels().last(), QStringLiteral("Scansione cartelle in corso... [250]"));
        QCOMPARE(recorder.logged().last(), QStringLiteral("scan_directories : Scan All Corvin Dirs : START"));
    }

    void rootFileIsClassifiedOnceInItsNewPlace()
    {
        SimulatedPlayer player;
        for (int i = 0; i < 300; ++i)
            player.addFile(QStringLiteral("%1.jpg").arg(i));
        Ottimizza page;
        page.rootPath = player.root();
        page.scan_directories();
        QCOMPARE(page.imageFiles.size(), 300);
        for (const QFileInfo &file : qAsConst(page.imageFiles))
            QVERIFY(file.absoluteFilePath().startsWith(player.path(QStringLiteral("My Songs/"))));
    }
};

QTEST_MAIN(tst_DirectoryScan)
#include "tst_directoryscan.moc"
