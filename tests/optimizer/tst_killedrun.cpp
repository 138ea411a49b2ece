#include "optimizerrun.h"
#include "support/files.h"
#include "support/limits.h"

#include "disk/datafolder.h"
#include "optimizer/splitnote.h"
#include "songfactory/songfactory.h"

#include <atomic>
#include <csignal>

/// Ends this process at a moment that nothing announces, so many microseconds from now.
static void killAfter(qint64 microseconds) {
    QThread *const killer = QThread::create([microseconds] {
        QThread::usleep(static_cast<unsigned long>(microseconds));
        std::raise(SIGKILL);
    });
    killer->start();
}

/// What this program does as a child: the whole optimisation, killed on the way when the environment says so.
static int optimise() {
    setDataFolder(qEnvironmentVariable("CORVIN_TEST_DATA"));
    Ottimizza page;
    page.show();
    const QString moment = qEnvironmentVariable("CORVIN_TEST_KILL");
    // From the first status text on, so that the start of a program does not count.
    bool first = !moment.isEmpty();
    QObject::connect(&page, &Ottimizza::updateLabelAction, &page, [&first, moment] {
        if (first)
            killAfter(moment.toLongLong());
        first = false;
    });
    QElapsedTimer timer;
    timer.start();
    page.startAllOptimization();
    printf("took %lld\n", static_cast<long long>(timer.nsecsElapsed() / 1000));
    return page.failCode;
}

/// Runs that are killed, and the runs after them.
class TestKilledRun : public QObject
{
    Q_OBJECT

    static constexpr int kSongs = 1010;

    /// A player, and what belongs to it on the PC.
    struct Disk
    {
        Disk() {
            SongInfo info;
            for (int i = 0; i < kSongs; ++i) {
                info.title = "%1 title %2"_s.arg(QChar('A' + i % 3)).arg(i, 5, 10, QLatin1Char('0'));
                player.addFile("Big/%1.mid"_s.arg(i), SongFactory::midi(info));
                if (i % 3 == 0)
                    player.addFile("Big/%1.cdg"_s.arg(i), "graphics of " + QByteArray::number(i));
                if (i % 5 == 0)
                    player.addFile("Big/%1.dat"_s.arg(i), "words of " + QByteArray::number(i));
            }
            player.addFile("Big/notes.txt"_s, "notes");
            player.addFile("Big/lonely.dat"_s, "lonely");
            QByteArray list;
            for (int i = 0; i < 20; ++i) {
                info.title = "Loose %1"_s.arg(i);
                player.addFile("loose%1.mid"_s.arg(i), SongFactory::midi(info));
                list += "\\sdmemory\\loose" + QByteArray::number(i) + ".mid^1^2\n";
            }
            for (int i = 0; i < 5; ++i)
                player.addFile("System/Playlist/%1.pls"_s.arg(i), list);
            for (int i = 0; i < 10; ++i)
                player.addFile("Big/%1.jpg"_s.arg(i), "picture " + QByteArray::number(i));
        }
        /// The child's exit code, -1 when it was killed; how many microseconds it took.
        int optimise(qint64 killAt = -1, qint64 *took = nullptr) const {
            QProcess child;
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert("CORVIN_TEST_DATA"_s, pc.path());
            if (killAt >= 0)
                environment.insert("CORVIN_TEST_KILL"_s, QString::number(killAt));
            child.setProcessEnvironment(environment);
            child.setStandardErrorFile(QProcess::nullDevice());
            child.start(QCoreApplication::applicationFilePath(), QStringList());
            if (!child.waitForFinished(120000))
                qFatal("the run does not end");
            const QByteArray said = child.readAllStandardOutput();
            if (took)
                *took = said.mid(said.indexOf("took ") + 5).trimmed().toLongLong();
            return child.exitStatus() == QProcess::NormalExit ? child.exitCode() : -1;
        }
        /// Everything but the playlists, by content; what was kept on the PC counts once.
        QSet<QByteArray> contents() const {
            QSet<QByteArray> found;
            for (const QString &root : {player.root(), pc.path("removed"_s)}) {
                const QMap<QString, QByteArray> files = contentBelow(root);
                for (auto file = files.begin(); file != files.end(); ++file) {
                    if (!file.key().contains(".pls"_s) && !file.key().endsWith(".sql"_s))
                        found.insert(file.value());
                }
            }
            return found;
        }
        QMap<QString, QByteArray> files() const {
            QMap<QString, QByteArray> found = contentBelow(player.root());
            // Its lines are in the order of the disk.
            found.remove("CorvinImportDB.sql"_s);
            return found;
        }
        QStringList notes() const { return filesBelow(pc.path("splitting"_s)); }

        SimulatedPlayer player;
        PcFolder pc;
    };

private slots:
    void nextRunEndsAsIfNothingHadHappened() {
        const Disk undisturbed;
        const QSet<QByteArray> all = undisturbed.contents();
        qint64 whole = 0;
        QCOMPARE(undisturbed.optimise(-1, &whole), 0);
        QVERIFY(whole > 0);
        const QMap<QString, QByteArray> expected = undisturbed.files();
        QVERIFY(expected.contains("Big/A0/0.mid"_s));
        QVERIFY(undisturbed.notes().isEmpty());

        constexpr int kKills = 8;
        int killed = 0;
        int cutSplits = 0;
        for (int round = 0; killed < kKills || cutSplits == 0; ++round) {
            QVERIFY2(round < 5 * kKills, "too few runs were killed");
            const Disk disk;
            const auto moment = qint64(double(whole) * QRandomGenerator::global()->generateDouble());
            qint64 took = 0;
            if (disk.optimise(moment, &took) == -1)
                ++killed;
            else
                whole = qMin(whole, took);
            cutSplits += disk.notes().size();
            QVERIFY2(disk.contents().contains(all), qPrintable("killed after %1 us"_s.arg(moment)));
            for (int i = 0; i < 5; ++i) {
                const QByteArray list = disk.player.content("System/Playlist/%1.pls"_s.arg(i));
                QCOMPARE(list.count('\n'), 20);
                QCOMPARE(list.count("\\sdmemory\\loose") + list.count("\\sdmemory\\My Songs\\loose"), 20);
            }
            QCOMPARE(disk.optimise(), 0);
            const QMap<QString, QByteArray> after = disk.files();
            for (const QString &path : expected.keys())
                QVERIFY2(after.value(path) == expected.value(path),
                         qPrintable("%1 after %2 us"_s.arg(path).arg(moment)));
            QCOMPARE(after.keys(), expected.keys());
            QCOMPARE(disk.notes(), QStringList());
        }
    }

    // Every state that the disk can be in while a folder is split.
    void everyStageOfASplitIsMadeGood_data() {
        columns<QStringList>("files");
        row("set aside and not made again", words("X.old/a.mid X.old/a.dat X.old/b.mid"));
        row("half of the songs have moved", words("X.old/b.mid X/A0/a.mid X/A0/a.dat"));
        row("a companion has moved before its song", words("X.old/a.mid X.old/b.mid X/A0/a.dat"));
        row("all have moved", words("X/A0/a.mid X/A0/a.dat X/B0/b.mid"));
        row("the other way round", words("X.old/A0/a.mid X.old/A0/a.dat X.old/b.mid"));
    }
    void everyStageOfASplitIsMadeGood() {
        const PcFolder pc;
        setDataFolder(pc.path());
        OptimizerRun run;
        for (const QString &file : *static_cast<const QStringList *>(QTest::qData("files", QMetaType::QStringList)))
            run.player.addFile(file, QFileInfo(file).fileName().toUtf8());
        run.player.addFolder("X.old"_s);
        writeNote(run, "X"_s, "X.old"_s);
        run.page.startAllOptimization();
        QCOMPARE(run.ends(), words("0"));
        QCOMPARE(run.player.files(), words("X/A0/a.dat X/A0/a.mid X/B0/b.mid"));
        QCOMPARE(run.player.folders(), QStringList({"My Songs"_s, "X"_s}));
        QCOMPARE(filesBelow(pc.path("splitting"_s)), QStringList());
        setDataFolder(QString());
    }

    void takenNamesGetANumberWhenAFolderIsBroughtBack() {
        const PcFolder pc;
        setDataFolder(pc.path());
        OptimizerRun run(words("X.old/a.mid=old X.old/a.cdg=graphics X.old/sub/s.mid X/a.mid=new X/sub=file"));
        writeNote(run, "X"_s, "X.old"_s);
        run.page.optSplit = false;
        run.page.optDelete = false;
        run.page.startAllOptimization();
        QCOMPARE(run.disk(), words("X/a(1).cdg=graphics X/a(1).mid=old X/a.mid=new X/sub=file X/sub(1)/s.mid"));
        setDataFolder(QString());
    }

    void noteOfAnotherPlayerOrOutsideOfThisOneIsLeftAlone() {
        const PcFolder pc;
        setDataFolder(pc.path());
        OptimizerRun run(words("X.old/a.mid Y/b.mid"));
        const PcFolder elsewhere;
        putFile(elsewhere.path("a.mid"_s));
        const QString outside = QDir(run.player.root()).relativeFilePath(elsewhere.path());
        const qint64 size = QStorageInfo(run.player.root()).bytesTotal();
        putFile(pc.path("splitting/a.txt"_s), QByteArray::number(size + 1) + " \nX\nX.old\n");
        putFile(pc.path("splitting/b.txt"_s), QByteArray::number(size) + " 1A2B-3C4D\nX\nX.old\n");
        writeNote(run, "Y"_s, outside);
        run.page.startAllOptimization();
        QCOMPARE(run.player.files(), words("X.old/a.mid Y/b.mid"));
        QCOMPARE(elsewhere.files(), words("a.mid"));
        setDataFolder(QString());
    }

    void playlistCutByAnEarlierVersionIsPutBackBeforeTheScan() {
        OptimizerRun run({"loose.mid"_s, "System/Playlist/a.pls=\\sdm"_s,
                          "System/Playlist/a.pls.old=\\sdmemory\\loose.mid^1^2\n"_s});
        run.scan();
        QCOMPARE(run.disk(), QStringList({"My Songs/loose.mid"_s,
                                          "System/Playlist/a.pls=\\sdmemory\\My Songs\\loose.mid^1^2\n"_s}));
    }

private:
    /// As a killed run leaves it.
    static void writeNote(const OptimizerRun &run, const QString &folder, const QString &aside) {
        QVERIFY(writeSplitNote(Player(run.player.root()), {run.player.path(folder), run.player.path(aside)}));
    }
};

int main(int argc, char **argv) {
    QApplication app(argc, argv);
    if (qEnvironmentVariableIsSet("CORVIN_TEST_DATA"))
        return optimise();
    TestKilledRun test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_killedrun.moc"
