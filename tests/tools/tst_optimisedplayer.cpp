#include "optimizer/ottimizza.h"
#include "playertool/judge.h"
#include "playertool/makeplayer.h"
#include "support/boxanswerer.h"
#include "support/exfatvolume.h"
#include "support/files.h"
#include "support/logcapture.h"
#include "support/testing.h"

/// The whole optimisation on realistic disks, judged by a judge of its own.
class TestOptimisedPlayer : public QObject
{
    Q_OBJECT

    /// Makes a player's disk in an empty folder and connects it.
    static Manifest makeDisk(const QString &folder, const MakeOptions &options) {
        qputenv("CORVIN_VOLUMES", QFile::encodeName(folder));
        const MakeResult made = makePlayer(folder, options);
        if (!made.error.isEmpty())
            failTest(made.error);
        return made.manifest;
    }

    static void optimise() {
        const BoxAnswerer noBoxes;
        Ottimizza page;
        const QSignalSpy ended(&page, &Ottimizza::backFromOttimizzaToEndOttimizza);
        page.show();
        page.startAllOptimization();
        QCOMPARE(ended.size(), 1);
        QCOMPARE(ended.first().first().toInt(), int(Ottimizza::Success));
    }

    static void makeOptimiseAndJudge(const QString &folder, const MakeOptions &options) {
        const Manifest manifest = makeDisk(folder, options);
        const Snapshot before = Snapshot::take(folder);
        optimise();
        const Verdict verdict = judge(before, folder, manifest);
        QVERIFY2(verdict.isRight(), qPrintable(verdictText(verdict)));
    }

private slots:
    // What the page says in between would drown what the tests say.
    void initTestCase() { QLoggingCategory::setFilterRules("default=false"_s); }

    void realisticDiskIsOptimisedAsItMustBe_data() {
        columns<int, uint>("songs", "seed");
        row("usual", 1700, 1U);
        row("another", 1700, 20260U);
        row("nested big folders", 5000, 3U);
    }
    void realisticDiskIsOptimisedAsItMustBe() {
        QFETCH(int, songs);
        QFETCH(uint, seed);
        makeOptimiseAndJudge(PcFolder().path(), {songs, seed});
    }

    /// On the player's own file system, which ignores the case of names.
    void realisticVolumeIsOptimisedAsItMustBe() {
        constexpr int kMegabytes = 256;
        QString why;
        if (!ExFatVolume::isPossible(&why))
            QSKIP(qPrintable("No exFAT volume can be made here: "_s + why));
        const ExFatVolume volume(kMegabytes);
        QVERIFY2(volume.isMounted(), qPrintable(volume.error()));
        makeOptimiseAndJudge(volume.root(), MakeOptions());
    }

    void secondRunHasNothingLeftToMove() {
        const QString kImport = "CorvinImportDB.sql"_s;
        const PcFolder folder;
        const auto importLines = [&] {
            QList<QByteArray> lines = folder.content(kImport).split('\n');
            std::sort(lines.begin(), lines.end());
            return lines;
        };
        makeDisk(folder.path(), MakeOptions());
        optimise();
        const Snapshot first = Snapshot::take(folder.path());
        const QList<QByteArray> firstLines = importLines();
        optimise();
        const Snapshot second = Snapshot::take(folder.path());
        QCOMPARE(second.files.keys(), first.files.keys());
        for (auto it = second.files.cbegin(); it != second.files.cend(); ++it)
            QVERIFY2(it.key() == kImport || it->sha1 == first.files.value(it.key()).sha1, qPrintable(it.key()));
        // Repaired names may come in another order the second time.
        QCOMPARE(importLines(), firstLines);
    }
};

QTEST_MAIN(TestOptimisedPlayer)
#include "tst_optimisedplayer.moc"
