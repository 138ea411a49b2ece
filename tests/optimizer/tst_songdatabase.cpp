#include "optimizerrun.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/limits.h"
#include "support/playerdatabase.h"

#include "songfactory/songfactory.h"

/// The database step and the file that it writes.
struct DatabaseRun : OptimizerRun
{
    static QByteArray song(const QString &title = "Title"_s)
    {
        SongInfo info;
        info.title = title;
        return SongFactory::midi(info);
    }
    QString addSong(const QString &path) { return player.addFile(path, song()); }
    void addSongs(int count, const QString &suffix = "mid"_s) { addNumbered("A/"_s, count, suffix, song()); }
    /// Binary noise with device paths in it, each ended by a NUL.
    void writeFastDb(const QStringList &paths)
    {
        QByteArray data = QByteArrayLiteral("\x01\xFF\x00noise\\sdmem\\");
        for (const QString &path : paths)
            data += QByteArrayLiteral("\x07\x00\x80\\sdmemory\\") + path.toUtf8() + QByteArrayLiteral("\x00tail");
        player.addFile("System/Corvin/data.fastDB"_s, data);
    }

    bool hasFile() const { return player.exists("CorvinImportDB.sql"_s); }
    QByteArray file() const { return player.content("CorvinImportDB.sql"_s); }
    QStringList lines() const
    {
        QStringList lines = QString::fromUtf8(file()).split(QLatin1Char('\n'));
        lines.removeLast();
        return lines;
    }
    bool isDone() { return told.count("log createDiffDatabaseImportFile : END"_s) == 1; }
};

class TestSongDatabase : public QObject
{
    Q_OBJECT

private slots:
    void goneDeviceEndsTheStepUntouched()
    {
        DatabaseRun run;
        run.player.addFile("A/broken.mid"_s, "no song");
        run.addSong("A/Song.midi"_s);
        run.player.addFile("CorvinImportDB.sql"_s, "old");
        const QStringList before = run.player.files();
        run.page.rootPath = run.player.root();
        SimulatedPlayer::disconnect();
        run.page.createDiffDatabaseImportFile();
        QCOMPARE(run.page.failCode, 1);
        QCOMPARE(run.told.lines(), QStringList());
        QCOMPARE(run.player.files(), before);
        QCOMPARE(run.file(), QByteArray("old"));
        QVERIFY(!QFileInfo::exists("CorvinImportDB.sql"_s));
        QVERIFY(!QFileInfo::exists("/CorvinImportDB.sql"_s));
    }

    void stagesAreReportedInOrder()
    {
        DatabaseRun run;
        run.addSong("A/one.mid"_s);
        const QString broken = run.player.addFile("A/two.mid"_s, "no song");
        run.writeFastDb({"A\\gone.mid"_s});
        run.page.abortRequested = true; // pressed before the step: forgotten
        run.page.createDiffDatabaseImportFile();
        QStringList lines = run.told.lines();
        // The two songs come in the order of the disk.
        const QString invalid = "File non valido, rimuovo : \"%1\""_s.arg(broken);
        QCOMPARE(lines.removeAll("log "_s + invalid), 1);
        // What the song files themselves say is not of this step.
        const auto isOfSong = [](const QString &line) { return line.startsWith("log ["_s); };
        lines.erase(std::remove_if(lines.begin(), lines.end(), isOfSong), lines.end());
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

    void withoutFastDbEverySongIsInserted()
    {
        DatabaseRun run;
        SongInfo night;
        night.title = "Night and Day"_s;
        night.genre = "Jazz"_s;
        night.userBpm = 120;
        night.key = "C"_s;
        night.markers = {{1, "Intro"_s}};
        run.player.addFile("My Songs/song.mid"_s, SongFactory::midi(night));
        SongInfo rock;
        rock.title = "Rock 'n' Roll"_s;
        rock.artist = "L'Artista"_s;
        rock.author = "Autore"_s;
        run.player.addFile("My Songs/rock.mf4"_s, SongFactory::mfx(4, rock));
        run.player.addFile("plain.MP3"_s, SongFactory::mp3(0, SongInfo()));
        for (const QString &folder : words("Bridges effects/deep System BridgesOld"))
            run.addSong(folder + "/no.mid"_s);
        run.player.addFile("My Songs/notes.txt"_s);
        run.player.addFile("CorvinImportDB.sql"_s, QByteArray(100000, 'x'));

        run.page.createDiffDatabaseImportFile();

        QCOMPARE(run.lines().size(), 6);
        QCOMPARE(run.lines().mid(0, 3),
                 QStringList({"DELETE FROM songs"_s, "DELETE FROM artists"_s, "DELETE FROM genres"_s}));
        QVERIFY(run.lines().contains(
            "INSERT INTO songs (filename,onlyFilename,title,artist,genre,DriveName,format,author,bpm,[key],marker) "
            "VALUES ('\\sdmemory\\My Songs\\song.mid','song.mid','Night and Day','<unknown>','Jazz','','0','<unknown>',"
            "'120','C','1')"_s));
        PlayerDatabase database;
        database.run("INSERT INTO songs (filename) VALUES ('old')"_s);
        database.run("INSERT INTO artists VALUES ('old')"_s);
        database.run("INSERT INTO genres VALUES ('old')"_s);
        QCOMPARE(database.runFile(run.file()), QString());
        QCOMPARE(database.rowCount("artists"_s), 0);
        QCOMPARE(database.rowCount("genres"_s), 0);
        const QString unknown = "<unknown>"_s;
        const QList<QStringList> rows = database.songs();
        QCOMPARE(rows.size(), 3);
        QCOMPARE(rows.at(0).mid(0, 5), QStringList({"\\sdmemory\\My Songs\\rock.mf4"_s, "rock.mf4"_s, "Rock 'n' Roll"_s,
                                                    "L'Artista"_s, unknown}));
        QCOMPARE(rows.at(0).at(7), "Autore"_s);
        QCOMPARE(rows.at(1), QStringList({"\\sdmemory\\My Songs\\song.mid"_s, "song.mid"_s, "Night and Day"_s, unknown,
                                          "Jazz"_s, QString(), "0"_s, unknown, "120"_s, "C"_s, "1"_s}));
        QCOMPARE(rows.at(2).mid(0, 8), QStringList({"\\sdmemory\\plain.MP3"_s, "plain.MP3"_s, "plain.MP3"_s, unknown,
                                                    unknown, QString(), "1"_s, unknown}));
        QCOMPARE(rows.at(2).at(10), "0"_s);
    }

    void longTitleIsCutBeforeItsQuotesAreDoubled()
    {
        DatabaseRun run;
        // 100 characters, one of them a quote, and 20 more that are cut.
        const QString title = "it's"_s + QString(116, QLatin1Char('x'));
        run.player.addFile("A/s.mid"_s, DatabaseRun::song(title));
        run.page.createDiffDatabaseImportFile();
        QVERIFY(run.lines().last().contains(",'it''s%1',"_s.arg(QString(96, QLatin1Char('x')))));
        PlayerDatabase database;
        QCOMPARE(database.runFile(run.file()), QString());
        QCOMPARE(database.songs().first().at(2), title.left(100));
    }

    void agreeingDatabaseLeavesNoFile()
    {
        DatabaseRun run;
        run.addSong("A/one.mid"_s);
        run.addSong("A/Twò.kar"_s);
        run.player.addFile("CorvinImportDB.sql"_s, "old");
        // Case makes no difference on the player's disk.
        run.writeFastDb({"a\\ONE.mid"_s, "A\\Twò.kar"_s});
        run.page.createDiffDatabaseImportFile();
        QVERIFY(!run.hasFile());
        QVERIFY(run.isDone());
        QCOMPARE(run.lastLine(), "visible 0"_s);
        QCOMPARE(run.page.failCode, 0);
    }

    void knownSongIsNotRead()
    {
        DatabaseRun run;
        run.player.addFile("A/one.mid"_s, "no song, but known to the player");
        run.writeFastDb({"A\\one.mid"_s});
        run.page.createDiffDatabaseImportFile();
        QVERIFY(run.player.exists("A/one.mid"_s));
    }

    void differenceIsWrittenAsInsertsThenDeletes()
    {
        DatabaseRun run;
        run.addSong("A/kept.mid"_s);
        run.addSong("A/new.mid"_s);
        run.writeFastDb({"A\\gone'1.mid"_s, "A\\kept.mid"_s, "B\\gone2.mid"_s});
        run.page.createDiffDatabaseImportFile();
        const QStringList lines = run.lines();
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines.at(0).startsWith("INSERT INTO songs "_s));
        QVERIFY(lines.at(0).contains("'\\sdmemory\\A\\new.mid'"_s));
        QCOMPARE(lines.at(1), "DELETE FROM songs WHERE filename='\\sdmemory\\A\\gone''1.mid'"_s);
        QCOMPARE(lines.at(2), "DELETE FROM songs WHERE filename='\\sdmemory\\B\\gone2.mid'"_s);
        PlayerDatabase database;
        for (const QString &path : words("A\\gone''1.mid A\\kept.mid B\\gone2.mid"))
            database.run("INSERT INTO songs (filename) VALUES ('\\sdmemory\\%1')"_s.arg(path));
        QCOMPARE(database.runFile(run.file()), QString());
        QCOMPARE(database.paths(), words("\\sdmemory\\A\\kept.mid \\sdmemory\\A\\new.mid"));
    }

    void midiSuffixLosesItsLastLetter()
    {
        DatabaseRun run;
        const QString former = run.addSong("A/Song.MIDI"_s);
        run.page.createDiffDatabaseImportFile();
        QCOMPARE(run.player.files("A"_s), words("A/Song.MID"));
        QVERIFY(run.lines().last().contains("'\\sdmemory\\A\\Song.MID'"_s));
        QVERIFY(run.logged("Rinomino file .midi in .mid : \"%1\""_s.arg(former)));
        QCOMPARE(run.told.count("log Impossibile rinominare!"_s), 0);
    }

    void takenMidNameKeepsBothFiles()
    {
        DatabaseRun run;
        run.addSong("A/Song.midi"_s);
        run.addSong("A/Song.mid"_s);
        run.page.createDiffDatabaseImportFile();
        QCOMPARE(run.player.files("A"_s), words("A/Song.mid A/Song.midi"));
        QVERIFY(run.logged("Impossibile rinominare!"_s));
        // The shortened path is used all the same.
        QVERIFY(!run.file().contains("Song.midi"));
    }

    void overLongNameIsCutAndItsCompanionsFollow()
    {
        DatabaseRun run;
        const QString base = "A/"_s + QString(116, QLatin1Char('n')); // with ".mid" a name of 120 bytes
        const QString former = run.addSong(base + ".mid"_s);
        run.addFiles({base + ".cdg"_s, base + ".dat"_s, base + ".bak"_s});
        run.page.createDiffDatabaseImportFile();
        const QString newName = QString(86, QLatin1Char('n')) + "(0)"_s; // 120 - 90 = 30 characters less
        const QString newBase = "A/"_s + newName;
        QCOMPARE(run.player.files("A"_s),
                 QStringList({newBase + ".bak"_s, newBase + ".cdg"_s, newBase + ".dat"_s, newBase + ".mid"_s}));
        QVERIFY(run.logged("FilePath troppo lungo : \"%1\""_s.arg(former)));
        QVERIFY(run.logged("FilePath rinominato in : \"%1.mid\""_s.arg(run.player.path(newBase))));
        QVERIFY(run.lines().last().contains(newName + ".mid'"_s));
    }

    void nameThatCannotMakeUpForItsFoldersStays()
    {
        DatabaseRun run;
        QString folder;
        while (run.player.root().size() + folder.size() < 300)
            folder += QString(40, QLatin1Char('d')) + QLatin1Char('/');
        const QString song = run.addSong(folder + "s.mid"_s);
        run.page.createDiffDatabaseImportFile();
        QVERIFY(QFileInfo::exists(song));
        QVERIFY(run.logged("FilePath troppo lungo : \"%1\""_s.arg(song)));
        QVERIFY(run.logged("FilePath NON rinominato !"_s, QtWarningMsg));
        QVERIFY(run.file().contains("INSERT"));
    }

    void songThatCannotBeRenamedIsLogged()
    {
        DatabaseRun run;
        for (const QString &letter : words("m n"))
            run.addSong("A/%1.mid"_s.arg(letter.repeated(116)));
        // Events are processed when the first of the two has been repaired: the other one vanishes then.
        run.atFirstEvents([&run] {
            const QStringList songs = run.player.files("A"_s);
            for (const QString &song : songs) {
                if (!song.contains("(0)"_s))
                    QFile::remove(run.player.path(song));
            }
        });
        run.page.createDiffDatabaseImportFile();
        QCOMPARE(run.told.logged().filter("FilePath troppo lungo :"_s).size(), 2);
        QCOMPARE(run.told.count("log FilePath, impossibile rinominare!"_s), 1);
        QVERIFY(run.logged("File non valido, impossibile rimuovere!"_s));
        QCOMPARE(run.lines().size(), 3 + 1);
    }

    void everyFileIsRepairedOnce()
    {
        DatabaseRun run;
        run.addSongs(500, "midi"_s);
        run.page.createDiffDatabaseImportFile();
        QCOMPARE(run.told.count("log dir file found:  500"_s), 1);
        PlayerDatabase database;
        QCOMPARE(database.runFile(run.file()), QString());
        QStringList paths = database.paths();
        QCOMPARE(paths.size(), 500);
        QCOMPARE(paths.removeDuplicates(), 0);
    }

    void blockedImportFileFailsWithABox()
    {
        DatabaseRun run;
        run.addSong("A/one.mid"_s);
        run.player.addFolder("CorvinImportDB.sql"_s);
        BoxAnswerer boxes;
        boxes.answer(Titles::kNoDatabase, Buttons::kOk);
        run.page.createDiffDatabaseImportFile();
        QCOMPARE(run.page.failCode, 2);
        QCOMPARE(boxes.seen().size(), 1);
        QCOMPARE(boxes.seen().first().text, Texts::kNoDatabase);
        QCOMPARE(boxes.seen().first().icon, QMessageBox::Critical);
        QCOMPARE(boxes.seen().first().buttons, QStringList(Buttons::kOk));
        QCOMPARE(run.told.count("label Creazione database in corso..."_s), 0);
        QVERIFY(!run.isDone());
    }

    void fullDiskIsAFailureAndLeavesNoHalfFile()
    {
#ifdef Q_OS_UNIX
        DatabaseRun run;
        run.addSongs(200);
        BoxAnswerer boxes;
        boxes.answer(Titles::kNoDatabase, Buttons::kOk);
        {
            const FullDisk disk(8192);
            run.page.createDiffDatabaseImportFile();
        }
        QCOMPARE(run.page.failCode, 2);
        QVERIFY(!run.hasFile());
        QCOMPARE(run.player.files("A"_s).size(), 200);
#else
        QSKIP("No limit for the size of files here");
#endif
    }

    void stopWhileCollectingWritesNothing()
    {
        DatabaseRun run;
        run.addSongs(200, "midi"_s);
        run.player.addFile("CorvinImportDB.sql"_s, "old");
        run.stopAtLabel("Caricamento"_s);
        run.page.createDiffDatabaseImportFile();
        QCOMPARE(run.file(), QByteArray("old"));
        QVERIFY(run.player.exists("A/00000.midi"_s));
        QCOMPARE(run.lastLine(), "visible 0"_s);
        QVERIFY(!run.isDone());
        QVERIFY(run.page.abortRequested);
    }

    void stopWhileRepairingNamesLeavesTheRest()
    {
        DatabaseRun run;
        // Fewer files than a round of the listing: the first events are processed after the first repair.
        run.addSongs(10, "midi"_s);
        run.stopAtFirstEvents();
        run.page.createDiffDatabaseImportFile();
        QCOMPARE(run.player.files().filter(QRegularExpression("\\.mid$"_s)).size(), 1);
        QVERIFY(!run.hasFile());
        QCOMPARE(run.lastLine(), "visible 0"_s);
        QCOMPARE(run.told.count("log dir file found:  10"_s), 0);
    }

    void stopWhileWritingLeavesThePartialFile_data()
    {
        columns<int, int, int, int>("songs", "gone", "value", "lines");
        row("while inserting", 10, 0, 4, 3 + 4);
        row("while writing deletes", 0, 10, 3, 3);
        row("at the last song: the file is deleted", 5, 0, 5, 0);
    }
    void stopWhileWritingLeavesThePartialFile()
    {
        QFETCH(int, songs);
        QFETCH(int, gone);
        QFETCH(int, value);
        QFETCH(int, lines);
        DatabaseRun run;
        run.addSongs(songs);
        QStringList paths;
        for (int i = 0; i < gone; ++i)
            paths.append("A\\%1.mid"_s.arg(i));
        if (gone > 0)
            run.writeFastDb(paths);
        run.stopAtValue(value);
        run.page.createDiffDatabaseImportFile();
        QCOMPARE(run.hasFile(), lines > 0);
        QCOMPARE(run.lines().size(), lines);
        QCOMPARE(run.told.of("value"_s).last(), QString::number(value));
        QCOMPARE(run.lastLine(), "visible 0"_s);
        QCOMPARE(run.isDone(), lines == 0);
        QVERIFY(run.page.abortRequested);
    }

    void exportOfAnotherCaseIsFound()
    {
        DatabaseRun run;
        run.addSong("A/one.mid"_s);
        run.player.addFile("SYSTEM/corvin/DATA.FASTDB"_s, QByteArrayLiteral("\\sdmemory\\A\\one.mid\0"));
        run.page.createDiffDatabaseImportFile();
        QVERIFY(run.logged("fast db file found:  1"_s, QtDebugMsg));
        QVERIFY(!run.hasFile());
    }

    // The player would execute either of them.
    void importFileOfAnotherCaseIsReplaced()
    {
        DatabaseRun run;
        run.player.addFile("corvinimportdb.SQL"_s, "of an earlier run");
        run.addSong("A/one.mid"_s);
        run.page.createDiffDatabaseImportFile();
        QCOMPARE(run.player.files(), words("A/one.mid CorvinImportDB.sql"));
        QCOMPARE(run.lines().size(), 3 + 1);
        // It goes as well when there is nothing new to tell.
        QVERIFY(QFile::rename(run.player.path("CorvinImportDB.sql"_s), run.player.path("corvinimportdb.sql"_s)));
        run.writeFastDb({"A\\one.mid"_s});
        run.page.createDiffDatabaseImportFile();
        QCOMPARE(run.player.files(), words("A/one.mid System/Corvin/data.fastDB"));
    }

    // Half of the songs would be taken for all of them, and the other half inserted a second time.
    void exportThatCannotBeReadToItsEndCountsAsNone()
    {
        DatabaseRun run;
        run.addSong("A/one.mid"_s);
        run.addSong("A/two.mid"_s);
        const QByteArray moreThanOneBlock(3 << 20, '\xFF');
        const QString path = run.player.addFile("System/Corvin/data.fastDB"_s,
                                                QByteArrayLiteral("\\sdmemory\\A\\one.mid\0") + moreThanOneBlock +
                                                    QByteArrayLiteral("\\sdmemory\\A\\two.mid\0"));
        // The first events are processed between two blocks: the rest of the file is gone then.
        run.atFirstEvents([&path] { QFile::resize(path, 1000); });
        run.page.createDiffDatabaseImportFile();
        QVERIFY(run.logged("fast db file found:  0"_s, QtDebugMsg));
        QCOMPARE(run.lines().size(), 3 + 2);
        QCOMPARE(run.lines().first(), "DELETE FROM songs"_s);
    }

    void lastPathWithoutItsEndIsNoSong()
    {
        DatabaseRun run;
        run.player.addFile("System/Corvin/data.fastDB"_s,
                           QByteArrayLiteral("\\sdmemory\\A\\one.mid\0\\sdmemory\\A\\two.mid"));
        run.page.createDiffDatabaseImportFile();
        QCOMPARE(run.lines(), QStringList("DELETE FROM songs WHERE filename='\\sdmemory\\A\\one.mid'"_s));
    }
};

QTEST_MAIN(TestSongDatabase)
#include "tst_songdatabase.moc"
