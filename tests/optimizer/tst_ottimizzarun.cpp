#include "pagerun.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"
#include "support/files.h"
#include "support/pagetest.h"
#include "support/platform.h"

#include "disk/datafolder.h"
#include "songfactory/songfactory.h"

/// Runs that the user starts on the page, from their first signal to the result.
class TestOttimizzaRun : public QObject
{
    Q_OBJECT

    const QString kEnd = "backFromOttimizzaToEndOttimizza %1"_s;

private slots:
    void unpluggedDeviceLeadsToTheFailurePage() {
        PageRun run({"A/t.txt"_s});
        SimulatedPlayer::disconnect();
        run.start();
        QCOMPARE(run.told.lines(), QStringList({"visible 1"_s, "format %p%"_s, "visible 0"_s, kEnd.arg(1)}));
        QCOMPARE(run.player.files(), words("A/t.txt"));
        QCOMPARE(run.page.failCode, 1);
        QCOMPARE(run.enabled(), kControls);
        // Plugged in again, the next run works.
        run.player.connect();
        run.start();
        QCOMPARE(run.lastLine(), kEnd.arg(0));
        QVERIFY(!run.player.exists("A/t.txt"_s));
    }

    void completeRunTakesItsStepsInOrder() {
        PageRun run;
        run.start();
        QCOMPARE(run.told.labels(),
                 QStringList({"Scansione cartelle in corso..."_s, "Cancellazione file non supportati..."_s,
                              "Operazione completata"_s, "Spostamento immagini..."_s, "Operazione completata"_s,
                              "Spostamento video..."_s, "Operazione completata"_s, "Caricamento risorse..."_s,
                              "Operazione completata"_s, "Caricamento dati in corso..."_s,
                              "Creazione database in corso..."_s}));
        const QStringList lines = run.told.lines();
        QCOMPARE(lines.mid(0, 2), QStringList({"visible 1"_s, "format %p%"_s}));
        QCOMPARE(lines.mid(lines.size() - 2), QStringList({"visible 0"_s, kEnd.arg(0)}));
        QCOMPARE(run.page.rootPath, run.player.root());
    }

    void onlyTheTickedStepsRun_data() {
        columns<int>("choice");
        for (int choice = 0; choice < 16; ++choice)
            row(qPrintable("choice %1"_s.arg(choice)), choice);
    }
    void onlyTheTickedStepsRun() {
        QFETCH(int, choice);
        const QList<QStringList> labels = {{"Cancellazione file non supportati..."_s},
                                           {"Spostamento immagini..."_s, "Spostamento video..."_s},
                                           {"Caricamento risorse..."_s},
                                           {"Caricamento dati in corso..."_s}};
        const bool scans = (choice & 7) != 0;
        QStringList expected = scans ? QStringList("Scansione cartelle in corso..."_s) : QStringList();
        QStringList options;
        for (int i = 0; i < 4; ++i) {
            if ((choice & 1 << i) != 0) {
                options.append(kOptions.at(i));
                expected += labels.at(i);
            }
        }
        PageRun run({}, options);
        run.start();
        QStringList told = run.told.labels();
        told.removeAll("Operazione completata"_s);
        told.removeAll("Creazione database in corso..."_s);
        QCOMPARE(told, expected);
        QCOMPARE(run.lastLine(), kEnd.arg(0));
        // The database step alone makes no folder and moves nothing.
        QCOMPARE(run.player.exists("My Songs"_s), scans);
    }

    void stopDuringTheDeletionEndsWithoutResultPage() {
        PageRun run(words("A/0.txt A/1.txt A/2.txt A/3.txt A/4.txt A/p.jpg"), words("Check_Delete Check_Move"));
        run.stopAtValue(2);
        run.start();
        QCOMPARE(run.ends(), QStringList());
        QCOMPARE(run.lastLine(), "visible 0"_s);
        QCOMPARE(run.player.files().size(), 4);
        QCOMPARE(run.told.count("label Spostamento immagini..."_s), 0);
        QVERIFY(run.page.isVisible());
        QCOMPARE(run.enabled(), kControls);
    }

    void stopDuringTheImagesLeavesTheVideos() {
        PageRun run(words("A/p.jpg A/v.avi"), words("Check_Move Check_Split Check_Database"));
        run.stopAtLabel("Spostamento immagini"_s);
        run.start();
        QCOMPARE(run.player.files(), words("A/p.jpg A/v.avi"));
        QCOMPARE(run.told.labels().last(), "Spostamento immagini..."_s);
        QCOMPARE(run.ends(), QStringList());
    }

    void stopDuringTheSplitStillEndsInSuccess() {
        for (const bool database : {true, false}) {
            PageRun run({}, words(database ? "Check_Split Check_Database" : "Check_Split"));
            run.addNumbered("Big/b"_s, 1001);
            run.stopAtLabel("Organizzazione in sottocartelle"_s);
            run.start();
            QCOMPARE(run.player.folders("Big"_s), words("B0 B1"));
            QCOMPARE(run.ends(), words("0"));
            QCOMPARE(run.told.count("log createDiffDatabaseImportFile : END"_s), database ? 1 : 0);
            QVERIFY(!run.page.abortRequested);
        }
    }

    void stopDuringTheDatabaseStepEndsWithoutResultPage() {
        PageRun run({}, words("Check_Database"));
        run.addNumbered("A/"_s, 3, "mid"_s, SongFactory::midi(SongInfo()));
        run.stopAtValue(1);
        run.start();
        QCOMPARE(run.ends(), QStringList());
        QVERIFY(run.player.exists("CorvinImportDB.sql"_s));
    }

    void playerGoneBeforeTheDatabaseStepIsAFailure() {
        PageRun run({"A/broken.mid"_s});
        run.atLabel("Caricamento risorse..."_s, &SimulatedPlayer::disconnect);
        run.start();
        QCOMPARE(run.ends(), words("1"));
        QCOMPARE(run.player.files(), words("A/broken.mid"));
    }

    // Two players are plugged in, and the second one comes first in the list.
    void playerThatComesUpDuringTheRunIsLeftAlone() {
        SKIP_ON_WINDOWS("there is room for one simulated drive");
        PageRun run(words("A/one.txt"));
        run.player.addFile("A/song.mid"_s, SongFactory::midi(SongInfo()));
        const PcFolder pc;
        setDataFolder(pc.path());
        const PcFolder other;
        putFile(other.path(".windows-label"_s), "CORVIN4\n");
        putFile(other.path("song.mid"_s), "no song");
        run.atLabel("Scansione"_s, [&] {
            qputenv("CORVIN_VOLUMES", QFile::encodeName(other.path() + QDir::listSeparator() + run.player.root()));
        });
        run.start();
        QCOMPARE(run.ends(), words("1"));
        QCOMPARE(other.files(), words("song.mid"));
        // The user still hears where the file lies that was taken off.
        QCOMPARE(run.told.of("filesKept"_s).size(), 1);
        setDataFolder(QString());
    }

    void importFileThatCannotBeMadeIsAFailure() {
        PageRun run;
        QDir blocker(run.player.addFolder("CorvinImportDB.sql"_s));
        BoxAnswerer boxes;
        boxes.answer(Titles::kNoDatabase, Buttons::kOk);
        run.start();
        const QStringList lines = run.told.lines();
        QCOMPARE(lines.mid(lines.size() - 2), QStringList({"visible 0"_s, kEnd.arg(2)}));
        // The next run starts afresh.
        QVERIFY(blocker.removeRecursively());
        run.start();
        QCOMPARE(run.lastLine(), kEnd.arg(0));
    }

    void runDisablesTheControlsAndForgetsAnEarlierStop_data() {
        columns<bool>("fromTheButton");
        row("started by OTTIMIZZA", true);
        row("started by the transfer page", false);
    }
    void runDisablesTheControlsAndForgetsAnEarlierStop() {
        QFETCH(bool, fromTheButton);
        PageRun run;
        QList<QStringList> meanwhile;
        run.atLabel(QString(), [&] { meanwhile.append(run.enabled()); });
        run.page.setHidden(!fromTheButton);
        run.page.on_stopActionPressed();
        if (fromTheButton) {
            run.start();
        } else {
            // FINE shows the page and starts the run: a stop of the transfer before must not end it.
            run.page.show();
            run.page.startAllOptimization();
        }
        QCOMPARE(run.ends(), words("0"));
        QVERIFY(meanwhile.size() > 5);
        QCOMPARE(meanwhile.count(QStringList()), meanwhile.size());
        // Wanted so: the option boxes come back enabled though the complete option is ticked.
        QCOMPARE(run.enabled(), kControls);
        QCOMPARE(run.ticked(), kBoxes);
    }

    void secondStartDuringARunIsRefused() {
        PageRun run({"A/t.txt"_s});
        bool stopKept = false;
        run.atLabel("Spostamento immagini"_s, [&] {
            run.page.on_stopActionPressed();
            run.page.startAllOptimization();
            run.page.on_Btn_Opt_Ok_clicked();
            run.page.hide();
            run.page.show();
            stopKept = run.page.abortRequested && run.enabled().isEmpty();
        });
        run.page.startAllOptimization();
        QVERIFY(stopKept);
        QCOMPARE(run.told.of("visible"_s), words("1 0"));
        QCOMPARE(run.ends(), QStringList());
    }
};

PAGE_TEST_MAIN(TestOttimizzaRun)
#include "tst_ottimizzarun.moc"
