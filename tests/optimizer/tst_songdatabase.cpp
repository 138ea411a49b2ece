#include "runrecorder.h"
#include "support/playerdatabase.h"
#include "support/boxanswerer.h"
#include "support/simulatedplayer.h"

#include "optimizer/ottimizza.h"
#include "songfactory/songfactory.h"

#include <QTest>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

class tst_SongDatabase : public QObject
{
    Q_OBJECT

private:
    static SongInfo info(const QString &title)
    {
        SongInfo song;
        song.title = title;
        return song;
    }
    static QString addSong(SimulatedPlayer &player, const QString &path)
    {
        return player.addFile(path, SongFactory::midi(info(QStringLiteral("Title"))));
    }
    /// Binary noise with the device paths in it, each ended by a NUL.
    static void writeFastDb(SimulatedPlayer &player, const QStringList &devicePaths)
    {
        QByteArray data = QByteArrayLiteral("\x01\xFF\x00noise\\sdmem\\");
        for (const QString &path : devicePaths)
            data += QByteArrayLiteral("\x07\x00\x80") + path.toUtf8() + QByteArrayLiteral("\x00tail");
        player.addFile(QStringLiteral("System/Corvin/data.fastDB"), data);
    }
    static QByteArray importFile(const SimulatedPlayer &player)
    {
        return player.content(QStringLiteral("CorvinImportDB.sql"));
    }
    static QStringList importLines(const SimulatedPlayer &player)
    {
        QStringList lines = QString::fromUtf8(importFile(player)).split(QLatin1Char('\n'));
        lines.removeLast();
        return lines;
    }
    static void stopAtValue(Ottimizza &page, int value)
    {
        QObject::connect(&page, &Ottimizza::updateProgressBarVal, &page, [&page, value](int step) {
            if (step == value)
                page.on_stopActionPressed();
        });
    }

private slots:
    void goneDeviceEndsTheStepUntouched()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("A/broken.mid"), "no song");
        addSong(player, QStringLiteral("A/Song.midi"));
        player.addFile(QStringLiteral("CorvinImportDB.sql"), "old");
        const QStringList before = player.files();
        Ottimizza page;
        page.rootPath = player.root();
        SimulatedPlayer::disconnect();
        RunRecorder recorder(page);
        page.createDiffDatabaseImportFile();
        QCOMPARE(page.failCode, 1);
        QCOMPARE(recorder.lines(), QStringList());
        QCOMPARE(player.files(), before);
        QCOMPARE(importFile(player), QByteArray("old"));
        QVERIFY(!QFileInfo::exists(QStringLiteral("CorvinImportDB.sql")));
        QVERIFY(!QFileInfo::exists(QStringLiteral("/CorvinImportDB.sql")));
    }

    void stagesAreReportedInOrder()
    {
        SimulatedPlayer player;
        addSong(player, QStringLiteral("A/one.mid"));
        player.addFile(QStringLiteral("A/two.mid"), "no song");
        writeFastDb(player, {QStringLiteral("\\sdmemory\\A\\gone.mid")});
        Ottimizza page;
        page.abortRequested = true; // pressed before the step: forgotten
        page.failCode = 0;
        RunRecorder recorder(page);
        page.createDiffDatabaseImportFile();
        QStringList lines = recorder.lines();
        // The two songs come in the order of the disk.
        const QString invalid =
            QStringLiteral("log File non valido, rimuovo : \"%1\"").arg(player.path(QStringLiteral("A/two.mid")));
        QCOMPARE(lines.removeAll(invalid), 1);
        // What the song files themselves say is not of this step.
        lines.erase(std::remove_if(lines.begin(), lines.end(),
                                   [](const QString &line) { return line.startsWith(QLatin1String("log [")); }),
                    lines.end());
        QCOMPARE(lines,
                 QStringList({QStringLiteral("visible 1"), QStringLiteral("min 0"), QStringLiteral("max 0"),
                              QStringLiteral("value 0"), QStringLiteral("log createDiffDatabaseImportFile : START"),
                              QStringLiteral("label Caricamento dati in corso..."),
                              QStringLiteral("log fast db file found:  1"), QStringLiteral("log dir file found:  2"),
                              QStringLiteral("label Creazione database in corso..."), QStringLiteral("value 0"),
                              QStringLiteral("max 3"), QStringLiteral("value 1"), QStringLiteral("value 2"),
                              QStringLiteral("value 3"), QStringLiteral("log createDiffDatabaseImportFile : END"),
                              QStringLiteral("visible 0")}));
        QVERIFY(recorder.log().contains(QtDebugMsg, QStringLiteral("fast db file found:  1")));
        QVERIFY(recorder.log().contains(QtDebugMsg, QStringLiteral("dir file found:  2")));
        QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("createDiffDatabaseImportFile : START")));
        QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("createDiffDatabaseImportFile : END")));
        QVERIFY(recorder.log().contains(QtInfoMsg, invalid.mid(4)));
        QVERIFY(!player.exists(QStringLiteral("A/two.mid")));
        QCOMPARE(page.failCode, 0);
        QVERIFY(!page.abortRequested);
    }

    void withoutFastDbEverySongIsInserted()
    {
        SimulatedPlayer player;
        SongInfo night = info(QStringLiteral("Night and Day"));
        night.genre = QStringLiteral("Jazz");
        night.userBpm = 120;
        night.key = QStringLiteral("C");
        night.markers = {{1, QStringLiteral("Intro")}};
        player.addFile(QStringLiteral("My Songs/song.mid"), SongFactory::midi(night));
        SongInfo rock = info(QStringLiteral("Rock 'n' Roll"));
        rock.artist = QStringLiteral("L'Artista");
        rock.author = QStringLiteral("Autore");
        player.addFile(QStringLiteral("My Songs/rock.mf4"), SongFactory::mfx(4, rock));
        player.addFile(QStringLiteral("plain.MP3"), SongFactory::mp3(0, SongInfo()));
        for (const char *folder : {"Bridges", "effects/deep", "System", "BridgesOld"})
            addSong(player, QString::fromLatin1(folder) + QStringLiteral("/no.mid"));
        player.addFile(QStringLiteral("My Songs/notes.txt"));
        player.addFile(QStringLiteral("CorvinImportDB.sql"), QByteArray(100000, 'x'));

        Ottimizza page;
        page.createDiffDatabaseImportFile();

        const QStringList lines = importLines(player);
        QCOMPARE(lines.size(), 6);
        QCOMPARE(lines.mid(0, 3),
                 QStringList({QStringLiteral("DELETE FROM songs"), QStringLiteral("DELETE FROM artists"),
                              QStringLiteral("DELETE FROM genres")}));
        QVERIFY(lines.contains(QStringLiteral(
            "INSERT INTO songs (filename,onlyFilename,title,artist,genre,DriveName,format,author,bpm,[key],marker) "
            "VALUES ('\\sdmemory\\My Songs\\song.mid','song.mid','Night and Day','<unknown>','Jazz','','0','<unknown>',"
            "'120','C','1')")));

        PlayerDatabase database;
        database.run(QStringLiteral("INSERT INTO songs (filename) VALUES ('old')"));
        database.run(QStringLiteral("INSERT INTO artists VALUES ('old')"));
        database.run(QStringLiteral("INSERT INTO genres VALUES ('old')"));
        QCOMPARE(database.runFile(importFile(player)), QString());
        QCOMPARE(database.rowCount(QStringLiteral("artists")), 0);
        QCOMPARE(database.rowCount(QStringLiteral("genres")), 0);
        const QString unknown = QStringLiteral("<unknown>");
        const QList<QStringList> rows = database.songs();
        QCOMPARE(rows.size(), 3);
        QCOMPARE(rows.at(0).mid(0, 5),
                 QStringList({QStringLiteral("\\sdmemory\\My Songs\\rock.mf4"), QStringLiteral("rock.mf4"),
                              QStringLiteral("Rock 'n' Roll"), QStringLiteral("L'Artista"), unknown}));
        QCOMPARE(rows.at(0).at(7), QStringLiteral("Autore"));
        QCOMPARE(rows.at(1), QStringList({QStringLiteral("\\sdmemory\\My Songs\\song.mid"), QStringLiteral("song.mid"),
                                          QStringLiteral("Night and Day"), unknown, QStringLiteral("Jazz"), QString(),
                                          QStringLiteral("0"), unknown, QStringLiteral("120"), QStringLiteral("C"),
                                          QStringLiteral("1")}));
        QCOMPARE(rows.at(2).mid(0, 8),
                 QStringList({QStringLiteral("\\sdmemory\\plain.MP3"), QStringLiteral("plain.MP3"),
                              QStringLiteral("plain.MP3"), unknown, unknown, QString(), QStringLiteral("1"), unknown}));
        QCOMPARE(rows.at(2).at(10), QStringLiteral("0"));
    }

    void longTitleIsCutBeforeItsQuotesAreDoubled()
    {
        SimulatedPlayer player;
        // 100 characters, one of them a quote, and 20 more that are cut.
        const QString title = QStringLiteral("it's") + QString(116, QLatin1Char('x'));
        player.addFile(QStringLiteral("A/s.mid"), SongFactory::midi(info(title)));
        Ottimizza page;
        page.createDiffDatabaseImportFile();
        QVERIFY(importLines(player).last().contains(QStringLiteral(",'it''s%1',").arg(QString(96, QLatin1Char('x')))));
        PlayerDatabase database;
        QCOMPARE(database.runFile(importFile(player)), QString());
        QCOMPARE(database.songs().first().at(2), title.left(100));
    }

    void agreeingDatabaseLeavesNoFile()
    {
        SimulatedPlayer player;
        addSong(player, QStringLiteral("A/one.mid"));
        addSong(player, QStringLiteral("A/Tw\u00f2.kar"));
        player.addFile(QStringLiteral("CorvinImportDB.sql"), "old");
        // Case makes no difference on the player's disk.
        writeFastDb(player, {QStringLiteral("\\sdmemory\\a\\ONE.mid"), QStringLiteral("\\sdmemory\\A\\Tw\u00f2.kar")});
        Ottimizza page;
        RunRecorder recorder(page);
        page.createDiffDatabaseImportFile();
        QVERIFY(!player.exists(QStringLiteral("CorvinImportDB.sql")));
        QVERIFY(recorder.logged().contains(QStringLiteral("createDiffDatabaseImportFile : END")));
        QCOMPARE(recorder.lines().last(), QStringLiteral("visible 0"));
        QCOMPARE(page.failCode, 0);
    }

    void knownSongIsNotRead()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("A/one.mid"), "no song, but known to the player");
        writeFastDb(player, {QStringLiteral("\\sdmemory\\A\\one.mid")});
        Ottimizza page;
        page.createDiffDatabaseImportFile();
        QVERIFY(player.exists(QStringLiteral("A/one.mid")));
    }

    void differenceIsWrittenAsInsertsThenDeletes()
    {
        SimulatedPlayer player;
        addSong(player, QStringLiteral("A/kept.mid"));
        addSong(player, QStringLiteral("A/new.mid"));
        writeFastDb(player, {QStringLiteral("\\sdmemory\\A\\gone'1.mid"), QStringLiteral("\\sdmemory\\A\\kept.mid"),
                             QStringLiteral("\\sdmemory\\B\\gone2.mid")});
        Ottimizza page;
        page.createDiffDatabaseImportFile();
        const QStringList lines = importLines(player);
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines.at(0).startsWith(QLatin1String("INSERT INTO songs ")));
        QVERIFY(lines.at(0).contains(QLatin1String("'\\sdmemory\\A\\new.mid'")));
        QCOMPARE(lines.at(1), QStringLiteral("DELETE FROM songs WHERE filename='\\sdmemory\\A\\gone''1.mid'"));
        QCOMPARE(lines.at(2), QStringLiteral("DELETE FROM songs WHERE filename='\\sdmemory\\B\\gone2.mid'"));
        PlayerDatabase database;
        for (const char *path : {"A\\gone''1.mid", "A\\kept.mid", "B\\gone2.mid"})
            database.run(QStringLiteral("INSERT INTO songs (filename) VALUES ('\\sdmemory\\%1')")
                             .arg(QString::fromLatin1(path)));
        QCOMPARE(database.runFile(importFile(player)), QString());
        QCOMPARE(database.paths(),
                 QStringList({QStringLiteral("\\sdmemory\\A\\kept.mid"), QStringLiteral("\\sdmemory\\A\\new.mid")}));
    }

    void midiSuffixLosesItsLastLetter()
    {
        SimulatedPlayer player;
        const QString former = addSong(player, QStringLiteral("A/Song.MIDI"));
        Ottimizza page;
        RunRecorder recorder(page);
        page.createDiffDatabaseImportFile();
        QCOMPARE(player.files(QStringLiteral("A")), QStringList(QStringLiteral("A/Song.MID")));
        QVERIFY(importLines(player).last().contains(QLatin1String("'\\sdmemory\\A\\Song.MID'")));
        QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("Rinomino file .midi in .mid : \"%1\"").arg(former)));
        QVERIFY(!recorder.log().contains(QStringLiteral("Impossibile rinominare!")));
    }

    void takenMidNameKeepsBothFiles()
    {
        SimulatedPlayer player;
        addSong(player, QStringLiteral("A/Song.midi"));
        addSong(player, QStringLiteral("A/Song.mid"));
        Ottimizza page;
        RunRecorder recorder(page);
        page.createDiffDatabaseImportFile();
        QCOMPARE(player.files(QStringLiteral("A")),
                 QStringList({QStringLiteral("A/Song.mid"), QStringLiteral("A/Song.midi")}));
        QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("Impossibile rinominare!")));
        // The shortened path is used all the same.
        QVERIFY(!importFile(player).contains("Song.midi"));
    }

    void overLongNameIsCutAndItsCompanionsFollow()
    {
        SimulatedPlayer player;
        const QString base(116, QLatin1Char('n')); // with ".mid" 120 bytes
        const QString former = addSong(player, QStringLiteral("A/") + base + QStringLiteral(".mid"));
        for (const char *suffix : {".cdg", ".dat", ".bak"})
            player.addFile(QStringLiteral("A/") + base + QString::fromLatin1(suffix));
        Ottimizza page;
        RunRecorder recorder(page);
        page.createDiffDatabaseImportFile();
        const QString newBase = QString(86, QLatin1Char('n')) + QStringLiteral("(0)"); // 120 - 90 = 30 characters less
        QCOMPARE(player.files(QStringLiteral("A")),
                 QStringList({QStringLiteral("A/%1.bak").arg(newBase), QStringLiteral("A/%1.cdg").arg(newBase),
                              QStringLiteral("A/%1.dat").arg(newBase), QStringLiteral("A/%1.mid").arg(newBase)}));
        QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("FilePath troppo lungo : \"%1\"").arg(former)));
        QVERIFY(recorder.log().contains(
            QtInfoMsg, QStringLiteral("FilePath rinominato in : \"%1A/%2.mid\"").arg(player.root(), newBase)));
        QVERIFY(importLines(player).last().contains(newBase + QStringLiteral(".mid'")));
    }

    void nameThatCannotMakeUpForItsFoldersStays()
    {
        SimulatedPlayer player;
        QString folder;
        while (player.root().size() + folder.size() < 300)
            folder += QString(40, QLatin1Char('d')) + QLatin1Char('/');
        const QString song = addSong(player, folder + QStringLiteral("s.mid"));
        Ottimizza page;
        RunRecorder recorder(page);
        page.createDiffDatabaseImportFile();
        QVERIFY(QFileInfo::exists(song));
        QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("FilePath troppo lungo : \"%1\"").arg(song)));
        QVERIFY(recorder.log().contains(QtWarningMsg, QStringLiteral("FilePath NON rinominato !")));
        QVERIFY(importFile(player).contains("INSERT"));
    }

    void songThatCannotBeRenamedIsLogged()
    {
        SimulatedPlayer player;
        for (const QChar letter : {QChar(u'm'), QChar(u'n')})
            addSong(player, QStringLiteral("A/%1.mid").arg(QString(116, letter)));
        Ottimizza page;
        RunRecorder recorder(page);
        // Events are processed when the first of the two has been repaired: the other one vanishes then.
        QMetaObject::invokeMethod(
            &page,
            [&player] {
                const QStringList songs = player.files(QStringLiteral("A"));
                for (const QString &song : songs) {
                    if (!song.contains(QLatin1String("(0)")))
                        QFile::remove(player.path(song));
                }
            },
            Qt::QueuedConnection);
        page.createDiffDatabaseImportFile();
        QCOMPARE(recorder.logged().filter(QStringLiteral("FilePath troppo lungo :")).size(), 2);
        QCOMPARE(recorder.logged().count(QStringLiteral("FilePath, impossibile rinominare!")), 1);
        QVERIFY(recorder.log().contains(QtInfoMsg, QStringLiteral("File non valido, impossibile rimuovere!")));
        QCOMPARE(importLines(player).size(), 3 + 1);
    }

    void everyFileIsRepairedOnce()
    {
        SimulatedPlayer player;
        for (int i = 0; i < 500; ++i)
            addSong(player, QStringLiteral("A/%1.midi").arg(i));
        Ottimizza page;
        RunRecorder recorder(page);
        page.createDiffDatabaseImportFile();
        QVERIFY(recorder.logged().contains(QStringLiteral("dir file found:  500")));
        PlayerDatabase database;
        QCOMPARE(database.runFile(importFile(player)), QString());
        QStringList paths = database.paths();
        QCOMPARE(paths.size(), 500);
        QCOMPARE(paths.removeDuplicates(), 0);
    }

    void blockedImportFileFailsWithABox()
    {
        SimulatedPlayer player;
        addSong(player, QStringLiteral("A/one.mid"));
        player.addFolder(QStringLiteral("CorvinImportDB.sql"));
        Ottimizza page;
        RunRecorder recorder(page);
        BoxAnswerer boxes;
        boxes.answer(QStringLiteral("Errore"), QStringLiteral("OK"));
        page.createDiffDatabaseImportFile();
        QCOMPARE(page.failCode, 2);
        QCOMPARE(boxes.seen().size(), 1);
        QCOMPARE(boxes.seen().first().text, QStringLiteral("Database non creato"));
        QCOMPARE(boxes.seen().first().icon, QMessageBox::Critical);
        QCOMPARE(boxes.seen().first().buttons, QStringList(QStringLiteral("OK")));
        QVERIFY(!recorder.labels().contains(QStringLiteral("Creazione database in corso...")));
        QVERIFY(!recorder.logged().contains(QStringLiteral("createDiffDatabaseImportFile : END")));
    }

    void fullDiskIsAFailureAndLeavesNoHalfFile()
    {
#ifdef Q_OS_UNIX
        SimulatedPlayer player;
        for (int i = 0; i < 200; ++i)
            addSong(player, QStringLiteral("A/%1.mid").arg(i));
        Ottimizza page;
        BoxAnswerer boxes;
        boxes.answer(QStringLiteral("Errore"), QStringLiteral("OK"));
        // Files of this process cannot grow past some kilobytes: writing fails as on a full disk.
        constexpr rlim_t kMostBytes = 8192;
        rlimit former{};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &former), 0);
        const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{kMostBytes, former.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        page.createDiffDatabaseImportFile();
        setrlimit(RLIMIT_FSIZE, &former);
        std::signal(SIGXFSZ, formerHandler);
        QCOMPARE(page.failCode, 2);
        QVERIFY(!player.exists(QStringLiteral("CorvinImportDB.sql")));
        QCOMPARE(player.files(QStringLiteral("A")).size(), 200);
#else
        QSKIP("No limit for the size of files here");
#endif
    }

    void stopWhileCollectingWritesNothing()
    {
        SimulatedPlayer player;
        for (int i = 0; i < 200; ++i)
            addSong(player, QStringLiteral("A/%1.midi").arg(i));
        player.addFile(QStringLiteral("CorvinImportDB.sql"), "old");
        Ottimizza page;
        RunRecorder recorder(page);
        QObject::connect(&page, &Ottimizza::updateLabelAction, &page, [&page](const QString &text) {
            if (text.startsWith(QLatin1String("Caricamento")))
                page.on_stopActionPressed();
        });
        page.createDiffDatabaseImportFile();
        QCOMPARE(importFile(player), QByteArray("old"));
        QVERIFY(player.exists(QStringLiteral("A/0.midi")));
        QCOMPARE(recorder.lines().last(), QStringLiteral("visible 0"));
        QVERIFY(!recorder.logged().contains(QStringLiteral("createDiffDatabaseImportFile : END")));
        QVERIFY(page.abortRequested);
    }

    void stopWhileRepairingNamesLeavesTheRest()
    {
        SimulatedPlayer player;
        // Fewer files than a round of the listing: the first events are processed after the first repair.
        for (int i = 0; i < 10; ++i)
            addSong(player, QStringLiteral("A/%1.midi").arg(i));
        Ottimizza page;
        RunRecorder recorder(page);
        QMetaObject::invokeMethod(&page, "on_stopActionPressed", Qt::QueuedConnection);
        page.createDiffDatabaseImportFile();
        int repaired = 0;
        const QStringList files = player.files();
        for (const QString &file : files)
            repaired += file.endsWith(QLatin1String(".mid")) ? 1 : 0;
        QCOMPARE(repaired, 1);
        QVERIFY(!player.exists(QStringLiteral("CorvinImportDB.sql")));
        QCOMPARE(recorder.lines().last(), QStringLiteral("visible 0"));
        QVERIFY(!recorder.logged().contains(QStringLiteral("dir file found:  10")));
    }

    void stopWhileInsertingLeavesThePartialFile()
    {
        SimulatedPlayer player;
        for (int i = 0; i < 10; ++i)
            addSong(player, QStringLiteral("A/%1.mid").arg(i));
        Ottimizza page;
        RunRecorder recorder(page);
        stopAtValue(page, 4);
        page.createDiffDatabaseImportFile();
        QCOMPARE(importLines(player).size(), 3 + 4);
        QCOMPARE(recorder.of(QStringLiteral("value")).last(), QStringLiteral("4"));
        QCOMPARE(recorder.lines().last(), QStringLiteral("visible 0"));
        QVERIFY(!recorder.logged().contains(QStringLiteral("createDiffDatabaseImportFile : END")));
    }

    void stopWhileWritingDeletesLeavesThePartialFile()
    {
        SimulatedPlayer player;
        QStringList gone;
        for (int i = 0; i < 10; ++i)
            gone.append(QStringLiteral("\\sdmemory\\A\\%1.mid").arg(i));
        writeFastDb(player, gone);
        Ottimizza page;
        stopAtValue(page, 3);
        page.createDiffDatabaseImportFile();
        QCOMPARE(importLines(player).size(), 3);
    }

    void stopAtTheLastSongDeletesTheFile()
    {
        SimulatedPlayer player;
        for (int i = 0; i < 5; ++i)
            addSong(player, QStringLiteral("A/%1.mid").arg(i));
        Ottimizza page;
        RunRecorder recorder(page);
        stopAtValue(page, 5);
        page.createDiffDatabaseImportFile();
        QVERIFY(!player.exists(QStringLiteral("CorvinImportDB.sql")));
        QVERIFY(recorder.logged().contains(QStringLiteral("createDiffDatabaseImportFile : END")));
        QVERIFY(page.abortRequested);
    }

    void exportOfAnotherCaseIsFound()
    {
        SimulatedPlayer player;
        addSong(player, QStringLiteral("A/one.mid"));
        player.addFile(QStringLiteral("SYSTEM/corvin/DATA.FASTDB"), QByteArrayLiteral("\\sdmemory\\A\\one.mid\0"));
        Ottimizza page;
        RunRecorder recorder(page);
        page.createDiffDatabaseImportFile();
        QVERIFY(recorder.log().contains(QtDebugMsg, QStringLiteral("fast db file found:  1")));
        QVERIFY(!player.exists(QStringLiteral("CorvinImportDB.sql")));
    }

    // The player would execute either of them.
    void importFileOfAnotherCaseIsReplaced()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("corvinimportdb.SQL"), "of an earlier run");
        addSong(player, QStringLiteral("A/one.mid"));
        Ottimizza page;
        page.createDiffDatabaseImportFile();
        QCOMPARE(player.files(), QStringList({QStringLiteral("A/one.mid"), QStringLiteral("CorvinImportDB.sql")}));
        QCOMPARE(importLines(player).size(), 3 + 1);
        // It goes as well when there is nothing new to tell.
        QVERIFY(QFile::rename(player.path(QStringLiteral("CorvinImportDB.sql")),
                              player.path(QStringLiteral("corvinimportdb.sql"))));
        writeFastDb(player, {QStringLiteral("\\sdmemory\\A\\one.mid")});
        page.createDiffDatabaseImportFile();
        QCOMPARE(player.files(),
                 QStringList({QStringLiteral("A/one.mid"), QStringLiteral("System/Corvin/data.fastDB")}));
    }

    // Half of the songs would be taken for all of them, and the other half inserted a second time.
    void exportThatCannotBeReadToItsEndCountsAsNone()
    {
        SimulatedPlayer player;
        addSong(player, QStringLiteral("A/one.mid"));
        addSong(player, QStringLiteral("A/two.mid"));
        constexpr int kMoreThanOneBlock = 3 << 20;
        const QString path =
            player.addFile(QStringLiteral("System/Corvin/data.fastDB"),
                           QByteArrayLiteral("\\sdmemory\\A\\one.mid\0") + QByteArray(kMoreThanOneBlock, '\xFF') +
                               QByteArrayLiteral("\\sdmemory\\A\\two.mid\0"));
        Ottimizza page;
        RunRecorder recorder(page);
        // The first events are processed between two blocks: the rest of the file is gone then.
        QMetaObject::invokeMethod(
            &page, [&path] { QFile::resize(path, 1000); }, Qt::QueuedConnection);
        page.createDiffDatabaseImportFile();
        QVERIFY(recorder.log().contains(QtDebugMsg, QStringLiteral("fast db file found:  0")));
        QCOMPARE(importLines(player).size(), 3 + 2);
        QCOMPARE(importLines(player).first(), QStringLiteral("DELETE FROM songs"));
    }

    void lastPathWithoutItsEndIsNoSong()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("System/Corvin/data.fastDB"),
                       QByteArrayLiteral("\\sdmemory\\A\\one.mid\0\\sdmemory\\A\\two.mid"));
        Ottimizza page;
        page.createDiffDatabaseImportFile();
        QCOMPARE(importLines(player),
                 QStringList(QStringLiteral("DELETE FROM songs WHERE filename='\\sdmemory\\A\\one.mid'")));
    }
};

QTEST_MAIN(tst_SongDatabase)
#include "tst_songdatabase.moc"
