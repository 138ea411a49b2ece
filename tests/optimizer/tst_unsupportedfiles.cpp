#include "optimizerrun.h"

class TestUnsupportedFiles : public QObject
{
    Q_OBJECT

private slots:
    void stoppedStepDoesNothing() {
        OptimizerRun run;
        run.page.unsupportedFiles.append(QFileInfo(run.player.addFile("A/t.txt"_s)));
        run.page.abortRequested = true;
        run.page.delete_files();
        QCOMPARE(run.told.lines(), QStringList());
        QVERIFY(run.player.exists("A/t.txt"_s));
    }

    void diskOfSongsAndPicturesShowsOnlyTheStatusTexts() {
        OptimizerRun run(words("A/s.mid A/p.jpg A/v.avi"));
        run.scan();
        run.told.clear();
        run.page.delete_files();
        QCOMPARE(run.told.lines(),
                 QStringList({"label Cancellazione file non supportati..."_s, "label Operazione completata"_s}));
        QCOMPARE(run.player.files().size(), 3);
    }

    void everyListedFileIsDeletedInOrder() {
        OptimizerRun run;
        const QString first = run.player.addFile("B/z.txt"_s);
        const QString second = run.player.addFile("A/a.doc"_s);
        run.page.unsupportedFiles = {QFileInfo(first), QFileInfo(second)};
        run.page.delete_files();
        QCOMPARE(run.told.lines(),
                 QStringList({"label Cancellazione file non supportati..."_s, "log delete_files : START"_s, "min 0"_s,
                              "max 2"_s, "value 0"_s, "log Delete : \"%1\""_s.arg(first), "value 1"_s,
                              "log Delete : \"%1\""_s.arg(second), "value 2"_s, "log delete_files : N. files  2"_s,
                              "label Operazione completata"_s}));
        QCOMPARE(run.player.files(), QStringList());
        QVERIFY(run.loggedOnlyInfos());
    }

    void textFilesGoButThoseOfTheSystemStay() {
        const QStringList staying = {"CorvinUpdate/notes.TXT"_s, "My Songs/s.xmid"_s, "System/sub/notes.TXT"_s};
        OptimizerRun run(staying + QStringList({"My Songs/notes.TXT"_s, "My Songs/readme"_s}));
        run.scan();
        run.page.delete_files();
        QCOMPARE(run.player.files(), staying);
    }

    void fileThatCannotBeDeletedIsLoggedAllTheSame() {
        OptimizerRun run;
        // A folder in the place of the file: it cannot be removed as a file, not even by root.
        const QString blocked = run.player.addFolder("A/blocked.txt"_s);
        run.page.unsupportedFiles = {QFileInfo(blocked), QFileInfo(run.player.addFile("A/next.txt"_s))};
        run.page.delete_files();
        QVERIFY(run.logged("Delete : \"%1\""_s.arg(blocked)));
        QVERIFY(run.player.exists("A/blocked.txt"_s));
        QVERIFY(!run.player.exists("A/next.txt"_s));
        QVERIFY(run.logged("delete_files : N. files  2"_s));
    }

    void stopLeavesTheRemainingFiles() {
        OptimizerRun run;
        for (int i = 0; i < 5; ++i)
            run.page.unsupportedFiles.append(QFileInfo(run.player.addFile("A/%1.txt"_s.arg(i))));
        run.stopAtValue(2);
        run.page.delete_files();
        QCOMPARE(run.player.files().size(), 3);
        QCOMPARE(run.lastLine(), "value 2"_s);
        QCOMPARE(run.told.labels().size(), 1);
        QVERIFY(run.page.abortRequested);
    }
};

QTEST_MAIN(TestUnsupportedFiles)
#include "tst_unsupportedfiles.moc"
