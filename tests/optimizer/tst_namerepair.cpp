#include "databaserun.h"
#include "support/playerdatabase.h"

/// Before the database step lists a song, it gives it a name that the player can bear.
class TestNameRepair : public QObject
{
    Q_OBJECT

private slots:
    void midiSuffixLosesItsLastLetter_data() {
        columns<QStringList, QStringList>("before", "after");
        row("a free name", words("A/Song.MIDI"), words("A/Song.MID"));
        row("a taken name: both stay", words("A/Song.midi A/Song.mid"), words("A/Song.mid A/Song.midi"));
    }
    void midiSuffixLosesItsLastLetter() {
        QFETCH(QStringList, before);
        QFETCH(QStringList, after);
        DatabaseRun run(before);
        run.work();
        QCOMPARE(run.player.files("A"_s), after);
        QVERIFY(run.logged("Rinomino file .midi in .mid : \"%1\""_s.arg(run.player.path(before.first()))));
        QCOMPARE(run.told.count("log Impossibile rinominare!"_s), after.size() - 1);
        // The shortened path is used all the same.
        QVERIFY(run.lines().last().contains("'\\sdmemory\\A\\"_s + after.first().mid(2)));
        QVERIFY(!run.file().toLower().contains("song.midi"));
    }

    void overLongNameIsCutAndItsCompanionsFollow() {
        const QString base = "A/"_s + "n"_s.repeated(116); // with ".mid" a name of 120 bytes
        DatabaseRun run({base + ".mid"_s});
        run.put({base + ".cdg"_s, base + ".dat"_s, base + ".bak"_s});
        run.work();
        const QString newName = "n"_s.repeated(86) + "(0)"_s; // 120 - 90 = 30 characters less
        const QString expected = "A/%1.bak A/%1.cdg A/%1.dat A/%1.mid"_s.arg(newName);
        QCOMPARE(run.player.files("A"_s), words(qPrintable(expected)));
        QVERIFY(run.logged("FilePath troppo lungo : \"%1.mid\""_s.arg(run.player.path(base))));
        QVERIFY(run.logged("FilePath rinominato in : \"%1A/%2.mid\""_s.arg(run.player.root(), newName)));
        QVERIFY(run.lines().last().contains(newName + ".mid'"_s));
    }

    void nameThatCannotMakeUpForItsFoldersStays() {
        DatabaseRun run;
        QString folder;
        while (run.player.root().size() + folder.size() < 300)
            folder += "d"_s.repeated(40) + "/"_s;
        const QString song = run.player.addFile(folder + "s.mid"_s, DatabaseRun::song());
        run.work();
        QVERIFY(QFileInfo::exists(song));
        QVERIFY(run.logged("FilePath troppo lungo : \"%1\""_s.arg(song)));
        QVERIFY(run.logged("FilePath NON rinominato !"_s, QtWarningMsg));
        QVERIFY(run.file().contains("INSERT"));
    }

    void songThatCannotBeRenamedIsLogged() {
        DatabaseRun run({"A/%1.mid"_s.arg("m"_s.repeated(116)), "A/%1.mid"_s.arg("n"_s.repeated(116))});
        // Events are processed when the first of the two has been repaired: the other one vanishes then.
        run.atFirstEvents([&run] {
            for (const QString &song : run.player.files("A"_s).filter(QRegularExpression("/(m+|n+)\\.mid$"_s)))
                QFile::remove(run.player.path(song));
        });
        run.work();
        const QString kept = run.player.files("A"_s).value(0);
        const QString gone = kept.startsWith("A/m"_s) ? "n"_s : "m"_s;
        const auto renaming = [&run](const QString &letter) {
            const QString before = run.player.path("A/%1.mid"_s.arg(letter.repeated(116)));
            const QString after = run.player.path("A/%1(0).mid"_s.arg(letter.repeated(86)));
            return QStringList(
                {"FilePath troppo lungo : \"%1\""_s.arg(before), "FilePath rinominato in : \"%1\""_s.arg(after)});
        };
        QCOMPARE(run.told.logged().filter(QRegularExpression("^File"_s)),
                 renaming(kept.mid(2, 1)) + renaming(gone) +
                     QStringList({"FilePath, impossibile rinominare!"_s,
                                  "File non valido, rimuovo : \"%1\""_s.arg(
                                      run.player.path("A/%1(0).mid"_s.arg(gone.repeated(86)))),
                                  "File non valido, impossibile rimuovere!"_s}));
        QCOMPARE(run.lines().size(), 3 + 1);
    }

    void everyFileIsRepairedOnce() {
        DatabaseRun run;
        run.addSongs(500, "midi"_s);
        run.work();
        QCOMPARE(run.told.count("log dir file found:  500"_s), 1);
        PlayerDatabase database;
        QCOMPARE(database.runFile(run.file()), QString());
        QStringList paths = database.paths();
        QCOMPARE(paths.size(), 500);
        QCOMPARE(paths.removeDuplicates(), 0);
    }
};

QTEST_MAIN(TestNameRepair)
#include "tst_namerepair.moc"
