#include "databaserun.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/given.h"
#include "support/limits.h"
#include "support/playerdatabase.h"

class TestSongDatabase : public QObject
{
    Q_OBJECT

private slots:
    void goneDeviceEndsTheStepUntouched() {
        DatabaseRun run({"A/Song.midi"_s});
        run.put({"A/broken.mid=no song"_s, "CorvinImportDB.sql=old"_s});
        const QStringList before = run.disk();
        run.page.rootPath = run.player.root();
        SimulatedPlayer::disconnect();
        run.work();
        QCOMPARE(run.page.failCode, 1);
        QCOMPARE(run.told.lines(), QStringList());
        QCOMPARE(run.disk(), before);
        QVERIFY(!QFileInfo::exists("CorvinImportDB.sql"_s));
        QVERIFY(!QFileInfo::exists("/CorvinImportDB.sql"_s));
    }

    void stagesAreReportedInOrder() {
        DatabaseRun run({"A/one.mid"_s}, {"A\\gone.mid"_s});
        run.put({"A/two.mid=no song"_s});
        run.page.abortRequested = true; // pressed before the step: forgotten
        run.work();
        QStringList lines = run.told.lines();
        // The two songs come in the order of the disk.
        const QString invalid = "File non valido, rimuovo : \"%1\""_s.arg(run.player.path("A/two.mid"_s));
        QCOMPARE(lines.removeAll("log "_s + invalid), 1);
        // What the song files themselves say is not of this step.
        lines = lines.filter(QRegularExpression("^(?!log \\[)"_s));
        QCOMPARE(lines,
                 QStringList({"visible 1"_s, "min 0"_s, "max 0"_s, "value 0"_s,
                              "log createDiffDatabaseImportFile : START"_s, "label Caricamento dati in corso..."_s,
                              "log fast db file found:  1"_s, "log dir file found:  2"_s,
                              "label Creazione database in corso..."_s, "value 0"_s, "max 3"_s, "value 1"_s,
                              "value 2"_s, "value 3"_s, "log createDiffDatabaseImportFile : END"_s, "visible 0"_s}));
        QVERIFY(run.logged("fast db file found:  1"_s, QtDebugMsg));
        QVERIFY(run.logged("dir file found:  2"_s, QtDebugMsg));
        QVERIFY(run.logged("createDiffDatabaseImportFile : START"_s));
        QVERIFY(run.logged("createDiffDatabaseImportFile : END"_s));
        QVERIFY(run.logged(invalid));
        QVERIFY(!run.player.exists("A/two.mid"_s));
        QCOMPARE(run.page.failCode, 0);
        QVERIFY(!run.page.abortRequested);
    }

    void withoutFastDbEverySongIsInserted() {
        DatabaseRun run(words("Bridges/no.mid effects/deep/no.mid System/no.mid BridgesOld/no.mid Bridge/no.mid "
                              "EffectsOld/no.mid SystemOld/no.mid"));
        const SongInfo night = {"Night and Day"_s, {}, "Jazz"_s, {}, 0, 120, "C"_s, {}, false,
                                {{1, "Intro"_s}},  {}, {},       0};
        const SongInfo rock = {"Rock 'n' Roll"_s, "L'Artista"_s, {}, "Autore"_s, 0, 0, {}, {}, false, {}, {}, {}, 0};
        run.player.addFile("My Songs/song.mid"_s, SongFactory::midi(night));
        run.player.addFile("My Songs/rock.mf4"_s, SongFactory::mfx(4, rock));
        run.player.addFile("plain.MP3"_s, SongFactory::mp3(0, SongInfo()));
        run.put({"My Songs/notes.txt"_s, "CorvinImportDB.sql="_s + "x"_s.repeated(100000)});
        run.work();
        const QStringList lines = run.lines();
        QCOMPARE(lines.size(), 6);
        QCOMPARE(lines.mid(0, 3),
                 QStringList({"DELETE FROM songs"_s, "DELETE FROM artists"_s, "DELETE FROM genres"_s}));
        QVERIFY(lines.contains(
            "INSERT INTO songs (filename,onlyFilename,title,artist,genre,DriveName,format,author,bpm,[key],marker) "
            "VALUES ('\\sdmemory\\My Songs\\song.mid','song.mid','Night and Day','<unknown>','Jazz','','0','<unknown>',"
            "'120','C','1')"_s));
        PlayerDatabase database;
        for (const char *table : {"songs (filename)", "artists", "genres"})
            database.run("INSERT INTO %1 VALUES ('old')"_s.arg(QLatin1String(table)));
        QCOMPARE(database.runFile(run.file()), QString());
        QCOMPARE(database.rowCount("artists"_s) + database.rowCount("genres"_s), 0);
        const QString unknown = "<unknown>"_s;
        const QList<QStringList> rows = database.songs();
        QCOMPARE(rows.size(), 3);
        QCOMPARE(rows.at(0).mid(0, 5) + rows.at(0).mid(7, 1),
                 QStringList({"\\sdmemory\\My Songs\\rock.mf4"_s, "rock.mf4"_s, "Rock 'n' Roll"_s, "L'Artista"_s,
                              unknown, "Autore"_s}));
        QCOMPARE(rows.at(1), QStringList({"\\sdmemory\\My Songs\\song.mid"_s, "song.mid"_s, "Night and Day"_s, unknown,
                                          "Jazz"_s, QString(), "0"_s, unknown, "120"_s, "C"_s, "1"_s}));
        QCOMPARE(rows.at(2).mid(0, 8), QStringList({"\\sdmemory\\plain.MP3"_s, "plain.MP3"_s, "plain.MP3"_s, unknown,
                                                    unknown, QString(), "1"_s, unknown}));
        QCOMPARE(rows.at(2).at(10), "0"_s);
    }

    void longTitleIsCutBeforeItsQuotesAreDoubled() {
        DatabaseRun run;
        // 100 characters, one of them a quote, and 20 more that are cut.
        const QString title = "it's"_s + "x"_s.repeated(116);
        run.player.addFile("A/s.mid"_s, DatabaseRun::song(title));
        run.work();
        QVERIFY(run.lines().last().contains(",'it''s%1',"_s.arg("x"_s.repeated(96))));
        PlayerDatabase database;
        QCOMPARE(database.runFile(run.file()), QString());
        QCOMPARE(database.songs().first().at(2), title.left(100));
    }

    void agreeingDatabaseLeavesNoFile_data() {
        columns<QString, QStringList, QStringList>("database", "songs", "known");
        row("known songs are not read", "System/Corvin/data.fastDB"_s, words("A/one.mid"), words("A\\one.mid"));
        row("case makes no difference on the player's disk", "System/Corvin/data.fastDB"_s,
            words("A/Twò.kar A/one.mid"), words("a\\ONE.mid A\\Twò.kar"));
        row("nor does that of the database", "SYSTEM/corvin/DATA.FASTDB"_s, words("A/one.mid"), words("A\\one.mid"));
    }
    void agreeingDatabaseLeavesNoFile() {
        QFETCH(QStringList, songs);
        QFETCH(QStringList, known);
        DatabaseRun run;
        run.put(songs + QStringList("CorvinImportDB.sql=old"_s));
        run.writeFastDb(known, given<QString>("database"));
        run.work();
        QVERIFY(!run.hasFile());
        QCOMPARE(run.player.files("A"_s), songs);
        QVERIFY(run.logged("fast db file found:  %1"_s.arg(known.size()), QtDebugMsg));
        QVERIFY(run.isDone());
        QCOMPARE(run.lastLine(), "visible 0"_s);
        QCOMPARE(run.page.failCode, 0);
    }

    void differenceIsWrittenAsInsertsThenDeletes() {
        DatabaseRun run(words("A/kept.mid A/new.mid"), words("A\\gone'1.mid A\\kept.mid B\\gone2.mid"));
        run.work();
        const QStringList lines = run.lines();
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines.at(0).startsWith("INSERT INTO songs "_s));
        QVERIFY(lines.at(0).contains("'\\sdmemory\\A\\new.mid'"_s));
        QCOMPARE(lines.mid(1), QStringList({"DELETE FROM songs WHERE filename='\\sdmemory\\A\\gone''1.mid'"_s,
                                            "DELETE FROM songs WHERE filename='\\sdmemory\\B\\gone2.mid'"_s}));
        PlayerDatabase database;
        database.run("INSERT INTO songs (filename) VALUES ('\\sdmemory\\A\\gone''1.mid'), "
                     "('\\sdmemory\\A\\kept.mid'), ('\\sdmemory\\B\\gone2.mid')"_s);
        QCOMPARE(database.runFile(run.file()), QString());
        QCOMPARE(database.paths(), words("\\sdmemory\\A\\kept.mid \\sdmemory\\A\\new.mid"));
    }

    void blockedImportFileFailsWithABox() {
        DatabaseRun run({"A/one.mid"_s});
        run.player.addFolder("CorvinImportDB.sql"_s);
        BoxAnswerer boxes;
        boxes.answer(Titles::kNoDatabase, Buttons::kOk);
        run.work();
        QCOMPARE(run.page.failCode, 2);
        QCOMPARE(boxes.seen().size(), 1);
        QCOMPARE(boxes.seen().first().text, Texts::kNoDatabase);
        QCOMPARE(boxes.seen().first().icon, QMessageBox::Critical);
        QCOMPARE(boxes.seen().first().buttons, QStringList(Buttons::kOk));
        QCOMPARE(run.told.count("label Creazione database in corso..."_s), 0);
        QVERIFY(!run.isDone());
    }

    void fullDiskIsAFailureAndLeavesNoHalfFile_data() {
        columns<int>("stopped");
        row("at the end", 0);
        // What a stop leaves may end between any two lines, but within none.
        row("after a stop", 150);
    }
    void fullDiskIsAFailureAndLeavesNoHalfFile() {
#ifdef Q_OS_UNIX
        QFETCH(int, stopped);
        DatabaseRun run;
        run.addSongs(200);
        if (stopped > 0)
            run.stopAtValue(stopped);
        BoxAnswerer boxes;
        boxes.answer(Titles::kNoDatabase, Buttons::kOk);
        auto disk = std::make_unique<FullDisk>(8192);
        run.work();
        disk.reset();
        QCOMPARE(run.told.of("value"_s).last(), QString::number(stopped > 0 ? stopped : 200));
        QCOMPARE(run.page.failCode, 2);
        QVERIFY(!run.hasFile());
        QCOMPARE(run.player.files("A"_s).size(), 200);
#else
        QSKIP("No limit for the size of files here");
#endif
    }

    void stopBeforeWritingWritesNothing() {
        // While the disk is listed, or, with fewer files than a round of the listing, after the first repair.
        for (const int songs : {200, 10}) {
            DatabaseRun run;
            run.addSongs(songs, "midi"_s);
            run.put({"CorvinImportDB.sql=old"_s});
            if (songs == 200)
                run.stopAtLabel("Caricamento"_s);
            else
                run.stopAtFirstEvents();
            run.work();
            const QStringList repaired = run.player.files("A"_s).filter(QRegularExpression("\\.mid$"_s));
            QCOMPARE(repaired.size(), songs == 200 ? 0 : 1);
            QCOMPARE(run.file(), QByteArray("old"));
            QCOMPARE(run.lastLine(), "visible 0"_s);
            QCOMPARE(run.told.logged().filter("dir file found:"_s), QStringList());
            QVERIFY(!run.isDone());
            QVERIFY(run.page.abortRequested);
        }
    }

    void stopWhileWritingLeavesThePartialFile_data() {
        columns<int, QStringList, int, int>("songs", "gone", "value", "lines");
        row("while inserting", 10, QStringList(), 4, 3 + 4);
        row("while writing deletes", 0, words("A\\1.mid A\\2.mid A\\3.mid A\\4.mid A\\5.mid"), 3, 3);
        row("at the last song: the file is deleted", 5, QStringList(), 5, 0);
    }
    void stopWhileWritingLeavesThePartialFile() {
        QFETCH(int, value);
        QFETCH(int, lines);
        DatabaseRun run({}, given<QStringList>("gone"));
        run.addSongs(given<int>("songs"));
        run.stopAtValue(value);
        run.work();
        QCOMPARE(run.hasFile(), lines > 0);
        QCOMPARE(run.lines().size(), lines);
        QCOMPARE(run.told.of("value"_s).last(), QString::number(value));
        QCOMPARE(run.lastLine(), "visible 0"_s);
        QCOMPARE(run.isDone(), lines == 0);
        QVERIFY(run.page.abortRequested);
    }

    // The player would execute either of them.
    void importFileOfAnotherCaseIsReplaced() {
        DatabaseRun run({"A/one.mid"_s});
        run.put({"corvinimportdb.SQL=of an earlier run"_s});
        run.work();
        QCOMPARE(run.player.files(), words("A/one.mid CorvinImportDB.sql"));
        QCOMPARE(run.lines().size(), 3 + 1);
        // It goes as well when there is nothing new to tell.
        QVERIFY(QFile::rename(run.player.path("CorvinImportDB.sql"_s), run.player.path("corvinimportdb.sql"_s)));
        run.writeFastDb({"A\\one.mid"_s});
        run.work();
        QCOMPARE(run.player.files(), words("A/one.mid System/Corvin/data.fastDB"));
    }

    // Half of the songs would be taken for all of them, and the other half inserted a second time.
    void exportThatCannotBeReadToItsEndCountsAsNone() {
        DatabaseRun run(words("A/one.mid A/two.mid"), {"A\\one.mid"_s});
        QFile database(run.player.path("System/Corvin/data.fastDB"_s));
        QVERIFY(database.open(QIODevice::Append));
        database.write(QByteArray(3 << 20, '\xFF') + QByteArrayLiteral("\\sdmemory\\A\\two.mid\0"));
        database.close();
        // The first events are processed between two blocks: the rest of the file is gone then.
        run.atFirstEvents([&database] { database.resize(1000); });
        run.work();
        QVERIFY(run.logged("fast db file found:  0"_s, QtDebugMsg));
        QCOMPARE(run.lines().size(), 3 + 2);
        QCOMPARE(run.lines().first(), "DELETE FROM songs"_s);
    }

    void lastPathWithoutItsEndIsNoSong() {
        DatabaseRun run;
        const QByteArray data = QByteArrayLiteral("\\sdmemory\\A\\one.mid\0\\sdmemory\\A\\two.mid");
        run.player.addFile("System/Corvin/data.fastDB"_s, data);
        run.work();
        QCOMPARE(run.lines(), QStringList("DELETE FROM songs WHERE filename='\\sdmemory\\A\\one.mid'"_s));
    }
};

QTEST_MAIN(TestSongDatabase)
#include "tst_songdatabase.moc"
