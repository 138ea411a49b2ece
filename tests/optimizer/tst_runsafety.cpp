#include "pagerun.h"
#include "support/boxanswerer.h"
#include "support/exfatvolume.h"
#include "support/files.h"
#include "support/given.h"
#include "support/limits.h"
#include "support/mountedplayer.h"
#include "support/platform.h"

#include "disk/datafolder.h"
#include "songfactory/songfactory.h"

/// What a run takes off the player lies on the PC first, and a run that loses its player or its window ends.
class TestRunSafety : public QObject
{
    Q_OBJECT

    static QByteArray song() { return SongFactory::midi(SongInfo()); }
    /// What earlier runs have kept, below the folder of the run.
    QStringList kept() const {
        QStringList found;
        const QStringList files = filesBelow(m_pc->path("removed"_s));
        for (const QString &file : files)
            found.append(file.section(QLatin1Char('/'), 1));
        return found;
    }
    void blockThePc() { setDataFolder(m_pc->addFile("a file"_s) + "/data"_s); }
    static bool makesLine(const OptimizerRun &run, const QString &song) {
        return run.player.content("CorvinImportDB.sql"_s).contains(song.toUtf8());
    }

private slots:
    void init() {
        m_pc = std::make_unique<PcFolder>();
        setDataFolder(m_pc->path());
    }
    void cleanup() { setDataFolder(QString()); }

    void unsupportedFileLiesOnThePcBeforeItGoes() {
        PageRun run(words("A/notes.txt=mine A/deep/readme"));
        run.start();
        QCOMPARE(run.player.files(), words("CorvinImportDB.sql"));
        QCOMPARE(kept(), words("A/deep/readme A/notes.txt"));
        const QStringList folder = run.told.of("filesKept"_s);
        QCOMPARE(folder.size(), 1);
        QCOMPARE(contentOf(folder.first() + "/A/notes.txt"_s), QByteArray("mine"));
        QVERIFY(run.told.lines().indexOf("filesKept "_s + folder.first()) <
                run.told.lines().indexOf("backFromOttimizzaToEndOttimizza 0"_s));
        // The next run keeps nothing and says nothing.
        run.told.clear();
        run.start();
        QCOMPARE(run.ends(), words("0"));
        QCOMPARE(run.told.of("filesKept"_s), QStringList());
    }

    void unsupportedFileGoesThoughItCannotBeKept() {
        {
            PageRun large;
            const QString file = large.player.addFile("A/large.txt"_s);
            QVERIFY(QFile::resize(file, 100000001));
            large.start();
            QVERIFY(!QFileInfo::exists(file));
            QCOMPARE(kept(), QStringList());
        }
        blockThePc();
        PageRun run(words("A/notes.txt"));
        run.start();
        QVERIFY(!run.player.exists("A/notes.txt"_s));
    }

    void stopWhileAFileIsKeptLeavesItInPlace() {
        PageRun run(words("A/second.txt"), words("Check_Delete"));
        run.player.addFile("A/first.txt"_s, QByteArray(5 << 20, 'x'));
        run.atLabel("Cancellazione"_s, [&run] { run.stopAtFirstEvents(); });
        run.start();
        QCOMPARE(run.player.files("A"_s), words("A/first.txt A/second.txt"));
        QCOMPARE(kept(), QStringList());
        QCOMPARE(run.ends(), QStringList());
    }

    void songThatIsNoneLiesOnThePcBeforeItGoes() {
        PageRun run(words("A/broken.mid=mine"));
        run.start();
        QVERIFY(!run.player.exists("A/broken.mid"_s));
        QCOMPARE(kept(), words("A/broken.mid"));
    }

    void songThatCannotBeKeptStaysWithoutARow() {
        blockThePc();
        PageRun run(words("A/broken.mid=mine"));
        run.start();
        QCOMPARE(run.player.content("A/broken.mid"_s), QByteArray("mine"));
        QVERIFY(!makesLine(run, "broken"_s));
        QVERIFY(run.logged("File non valido, impossibile rimuovere!"_s));
        QCOMPARE(run.ends(), words("0"));
    }

    void songThatIsTooLargeForUsStaysWithoutARow() {
        PageRun run;
        const QString large = run.player.addFile("A/large.mid"_s, "MThd");
        QVERIFY(QFile::resize(large, (256 << 20) + 1));
        run.player.addFile("A/small.mid"_s, song());
        run.start();
        QVERIFY(QFileInfo::exists(large));
        QVERIFY(!makesLine(run, "large"_s));
        QVERIFY(makesLine(run, "small"_s));
        QVERIFY(run.logged("File troppo grande, escluso dal database : \"%1\""_s.arg(large)));
        QCOMPARE(kept(), QStringList());
    }

    void songThatCannotBeReadStays() {
#ifdef Q_OS_UNIX
        PageRun run(words("A/locked.mid"), words("Check_Database"));
        for (const QString &folder : {run.player.root(), run.player.path("A"_s), m_pc->path()})
            QVERIFY(QFile::setPermissions(folder, QFile::Permissions(0x7777)));
        QVERIFY(QFile::setPermissions(run.player.path("A/locked.mid"_s), QFile::Permissions()));
        {
            const NoRoot noRoot;
            run.start();
        }
        QCOMPARE(run.ends(), words("0"));
        QVERIFY(run.player.exists("A/locked.mid"_s));
        QVERIFY(run.logged("File non valido, impossibile rimuovere!"_s));
#else
        QSKIP("Every file can be read here");
#endif
    }

    void keptFilesOfLongAgoGoWhenARunStarts() {
        const QString folder = "removed/%1/a.mid"_s;
        const QDateTime now = QDateTime::currentDateTime();
        m_pc->addFile(folder.arg(now.addDays(-31).toString("yyyy-MM-dd HH.mm.ss"_s)));
        m_pc->addFile(folder.arg(now.addDays(-29).toString("yyyy-MM-dd HH.mm.ss"_s)));
        PageRun run;
        run.start();
        QCOMPARE(kept(), words("a.mid"));
    }

    void playerPulledInTheDatabaseStepEndsTheRunAsAFailure() {
        QString why;
        if (!ExFatVolume::isPossible(&why))
            QSKIP(qPrintable("no exFAT volume can be made here: "_s + why));
        MountedPlayer player(16);
        QVERIFY2(player.isMounted(), qPrintable(player.volume->error()));
        for (int i = 0; i < 40; ++i)
            putFile(player.path("A/%1.mid"_s.arg(i)), song());
        Ottimizza page;
        SignalRecorder told(page);
        QStringList before;
        connect(&page, &Ottimizza::updateProgressBarVal, &page, [&](int value) {
            if (value == 10) {
                before = player.files();
                QVERIFY(player.volume->pull());
            }
        });
        page.show();
        page.startAllOptimization();
        QCOMPARE(told.lines().last(), "backFromOttimizzaToEndOttimizza 1"_s);
        QCOMPARE(told.logged().filter("File non valido"_s), QStringList());
        // Nothing was written to where the player was.
        QCOMPARE(entriesBelow(player.root()), QStringList());
        QVERIFY(player.volume->mount());
        QCOMPARE(player.files(), before);
    }

    void playerThatGoesInAnyStepEndsTheRunAsAFailure_data() {
        columns<QString>("status");
        for (const char *status :
             {"Scansione", "Cancellazione", "Spostamento immagini", "Spostamento video", "Ottimizzazione cartelle",
              "Ricerca dei titoli", "Organizzazione", "Caricamento dati", "Creazione database"})
            row(status, QString::fromUtf8(status));
    }
    void playerThatGoesInAnyStepEndsTheRunAsAFailure() {
        PageRun run(words("loose.mid A/broken.mid A/notes.txt A/p.jpg A/v.avi A/Song.midi"));
        run.addNumbered("Big/b"_s, 1001, "mid"_s, song());
        run.put({"System/Playlist/a.pls=\\sdmemory\\loose.mid^1^2"_s});
        // The import file is open already when it is written: what is in it goes with the player.
        const auto state = [&run] {
            return (run.disk() + entriesBelow(run.player.root())).filter(QRegularExpression("^(?!CorvinImportDB)"_s));
        };
        QStringList before;
        run.atLabel(given<QString>("status"), [&] {
            SimulatedPlayer::disconnect();
            before = state();
        });
        run.start();
        QCOMPARE(state(), before);
        QCOMPARE(run.ends(), words("1"));
        QVERIFY(run.lastLine() == "backFromOttimizzaToEndOttimizza 1"_s);
    }

    void playerThatIsGoneAtTheEndIsAFailure() {
        PageRun run({}, words("Check_Database"));
        run.player.addFile("A/a.mid"_s, song());
        run.stopAtValue(-1);
        connect(&run.page, &Ottimizza::setProgressBarVisible, &run.page, [](bool visible) {
            if (!visible)
                SimulatedPlayer::disconnect();
        });
        run.start();
        QCOMPARE(run.ends(), words("1"));
    }

    void otherPlayerUnderTheSameNameIsLeftAlone() {
        SKIP_ON_WINDOWS("a volume is known by its number, which a new label does not change");
        PageRun run(words("A/one.txt A/two.txt"));
        connect(&run.page, &Ottimizza::updateProgressBarVal, &run.page, [&run](int value) {
            if (value == 1)
                putFile(run.player.path(".windows-label"_s), "BACKUP\n");
        });
        run.start();
        QCOMPARE(run.ends(), words("1"));
        QVERIFY(run.player.exists("A/one.txt"_s) != run.player.exists("A/two.txt"_s));
    }

    void closingTheWindowEndsTheRunThoughStepsForgetAStop_data() {
        columns<QString>("status");
        for (const char *status : {"Scansione", "Ricerca dei titoli", "Organizzazione", "Caricamento dati"})
            row(status, QString::fromUtf8(status));
    }
    void closingTheWindowEndsTheRunThoughStepsForgetAStop() {
        PageRun run;
        run.addNumbered("Big/b"_s, 1001, "mid"_s, song());
        QVERIFY(!run.page.isRunning());
        bool wasRunning = false;
        run.atLabel(given<QString>("status"), [&] {
            wasRunning = run.page.isRunning();
            run.page.on_closeRequested();
        });
        run.start();
        QVERIFY(wasRunning && !run.page.isRunning());
        QCOMPARE(run.ends(), QStringList());
        QVERIFY(!run.player.exists("CorvinImportDB.sql"_s));
        QCOMPARE(run.player.files().size(), 1001);
        QVERIFY(!run.player.exists("Big.old"_s));
        QVERIFY(run.page.abortRequested);
    }

    void closingThatWasAskedForBeforeARunDoesNotEndIt() {
        // The window has stayed open after all.
        PageRun run(words("A/notes.txt"));
        run.page.on_closeRequested();
        run.start();
        QCOMPARE(run.ends(), words("0"));
    }

    void numbersOfTheMediaStepDifferFromRunToRun() {
        QList<int> drawn;
        for (int i = 0; i < 2; ++i) {
            std::srand(1);
            PageRun run;
            run.start();
            drawn.append(std::rand());
        }
        QVERIFY(drawn.at(0) != drawn.at(1));
    }

    void songWhosePlaylistCannotBeRewrittenStaysWhereItIsNamed() {
#ifdef Q_OS_UNIX
        const QStringList files = {"System/Playlist/a.pls=\\sdmemory\\a.mid^1^2\n"_s,
                                   "System/Playlist/b.pls=\\sdmemory\\a.mid^1^2\n\\sdmemory\\other.mid^1^2\n"_s,
                                   "a.mid"_s};
        OptimizerRun run(files);
        {
            const FullDisk disk(34); // room for the short one alone
            run.scan();
        }
        QCOMPARE(run.disk(), files);
        run.scan();
        QVERIFY(run.player.exists("My Songs/a.mid"_s));
#else
        QSKIP("No limit for the size of files here");
#endif
    }

    void ownNamesAreFoundWhateverTheirCase() {
        SKIP_ON_WINDOWS("no name differs in case alone there");
        PageRun run(words("a.mid b/p.jpg b/v.avi IMAGES/x.jpg VIDEOS/x.avi corvinimportdb.SQL=old"));
        run.player.addFile("a.mid"_s, song());
        run.player.addFile("MY SONGS/known.mid"_s, song());
        run.player.addFile("SYSTEM/PLAYLIST/L.PLS"_s, "\\sdmemory\\a.mid^1^2\n");
        run.player.addFile("SYSTEM/corvin/DATA.fastdb"_s, QByteArrayLiteral("\\sdmemory\\MY SONGS\\known.mid\0"));
        run.start();
        QStringList expected = words("IMAGES/p.jpg IMAGES/x.jpg VIDEOS/v.avi VIDEOS/x.avi CorvinImportDB.sql "
                                     "SYSTEM/PLAYLIST/L.PLS SYSTEM/corvin/DATA.fastdb");
        expected += {"MY SONGS/a.mid"_s, "MY SONGS/known.mid"_s};
        expected.sort();
        QCOMPARE(run.player.files(), expected);
        QCOMPARE(run.player.content("SYSTEM/PLAYLIST/L.PLS"_s), QByteArray("\\sdmemory\\MY SONGS\\a.mid^1^2\n"));
        QCOMPARE(run.player.content("CorvinImportDB.sql"_s).count('\n'), 1);
        QVERIFY(makesLine(run, "a.mid"_s));
    }

private:
    std::unique_ptr<PcFolder> m_pc;
};

QTEST_MAIN(TestRunSafety)
#include "tst_runsafety.moc"
