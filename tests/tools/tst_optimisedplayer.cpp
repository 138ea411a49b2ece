#include "optimizer/ottimizza.h"
#include "playertool/judge.h"
#include "playertool/makeplayer.h"

#include "support/boxanswerer.h"
#include "support/exfatvolume.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString kImport = QStringLiteral("CorvinImportDB.sql");

QStringList sortedLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringList();
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    lines.sort();
    return lines;
}

void silence(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

/// The whole optimisation on realistic disks, judged by a judge of its own.
class TestOptimisedPlayer : public QObject
{
    Q_OBJECT

private slots:
    void realisticDiskIsOptimisedAsItMustBe_data();
    void realisticDiskIsOptimisedAsItMustBe();
    void realisticVolumeIsOptimisedAsItMustBe();
    void secondRunHasNothingLeftToMove();

private:
    static void optimise();
    static void makeOptimiseAndJudge(const QString &folder, const MakeOptions &options);
};

void TestOptimisedPlayer::optimise()
{
    const BoxAnswerer noBoxes;
    Ottimizza page;
    const QSignalSpy ended(&page, &Ottimizza::backFromOttimizzaToEndOttimizza);
    const QtMessageHandler previous = qInstallMessageHandler(silence);
    page.show();
    page.startAllOptimization();
    qInstallMessageHandler(previous);
    QCOMPARE(ended.size(), 1);
    QCOMPARE(ended.first().first().toInt(), int(Ottimizza::Success));
}

void TestOptimisedPlayer::makeOptimiseAndJudge(const QString &folder, const MakeOptions &options)
{
    qputenv("CORVIN_VOLUMES", QFile::encodeName(folder));
    const QtMessageHandler previous = qInstallMessageHandler(silence);
    const MakeResult made = makePlayer(folder, options);
    qInstallMessageHandler(previous);
    QCOMPARE(made.error, QString());
    const Snapshot before = Snapshot::take(folder);
    optimise();
    const Verdict verdict = judge(before, folder, made.manifest);
    QVERIFY2(verdict.isRight(), qPrintable(verdictText(verdict)));
}

void TestOptimisedPlayer::realisticDiskIsOptimisedAsItMustBe_data()
{
    QTest::addColumn<int>("songs");
    QTest::addColumn<uint>("seed");
    QTest::newRow("usual") << 1700 << 1U;
    QTest::newRow("another") << 1700 << 20260U;
    QTest::newRow("nested big folders") << 5000 << 3U;
}

void TestOptimisedPlayer::realisticDiskIsOptimisedAsItMustBe()
{
    QFETCH(int, songs);
    QFETCH(uint, seed);
    const QTemporaryDir folder;
    MakeOptions options;
    options.songs = songs;
    options.seed = seed;
    makeOptimiseAndJudge(folder.path(), options);
}

/// On the player's own file system, which ignores the case of names.
void TestOptimisedPlayer::realisticVolumeIsOptimisedAsItMustBe()
{
    constexpr int kMegabytes = 256;
    QString why;
    if (!ExFatVolume::isPossible(&why))
        QSKIP(qPrintable(QStringLiteral("No exFAT volume can be made here: ") + why));
    const ExFatVolume volume(kMegabytes);
    QVERIFY2(volume.isMounted(), qPrintable(volume.error()));
    makeOptimiseAndJudge(volume.root(), MakeOptions());
}

void TestOptimisedPlayer::secondRunHasNothingLeftToMove()
{
    QTemporaryDir folder;
    qputenv("CORVIN_VOLUMES", QFile::encodeName(folder.path()));
    const QtMessageHandler previous = qInstallMessageHandler(silence);
    const MakeResult made = makePlayer(folder.path(), MakeOptions());
    qInstallMessageHandler(previous);
    QCOMPARE(made.error, QString());
    optimise();
    const Snapshot first = Snapshot::take(folder.path());
    const QStringList firstLines = sortedLines(folder.filePath(kImport));
    optimise();
    const Snapshot second = Snapshot::take(folder.path());
    QCOMPARE(second.files.keys(), first.files.keys());
    for (auto it = second.files.cbegin(); it != second.files.cend(); ++it)
        QVERIFY2(it.key() == kImport || it->sha1 == first.files.value(it.key()).sha1, qPrintable(it.key()));
    // Repaired names may come in another order the second time.
    QCOMPARE(sortedLines(folder.filePath(kImport)), firstLines);
}

QTEST_MAIN(TestOptimisedPlayer)
#include "tst_optimisedplayer.moc"
