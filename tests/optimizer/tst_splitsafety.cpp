#include "optimizerrun.h"
#include "support/exfatvolume.h"
#include "support/files.h"
#include "support/given.h"
#include "support/limits.h"
#include "support/mountedplayer.h"

#include "disk/datafolder.h"

/// Whatever happens while folders are split, every song stays on the player, and what leaves it lies on the PC.
class TestSplitSafety : public QObject
{
    Q_OBJECT

    static constexpr int kSongs = 1056;

    /// Splits folders of a player that is not simulated.
    static void split(Ottimizza &page, const QString &root, const QStringList &folders = words("Big")) {
        page.rootPath = root;
        for (const QString &folder : folders)
            page.bigFolders.append(QFileInfo(root + folder));
        page.corvin_optimizer();
    }
    /// Songs with content of their own; the first letter of their names is each of @p letters from @p first on in turn.
    static void addSongs(const QString &folder, ushort first = 'A', int letters = 26) {
        for (int i = 0; i < kSongs; ++i)
            putFile("%1/%2 song %3.mid"_s.arg(folder).arg(QChar(first + i % letters)).arg(i), QByteArray::number(i));
    }
    /// The contents of all files, sorted, the filler's and the label's left out.
    static QByteArrayList contents(const QString &root) {
        QByteArrayList found;
        const QMap<QString, QByteArray> files = contentBelow(root);
        for (auto file = files.begin(); file != files.end(); ++file) {
            if (!file.key().startsWith("filler"_s))
                found.append(file.value());
        }
        std::sort(found.begin(), found.end());
        return found;
    }
    /// Fills the volume but for so many bytes.
    static void fill(const QString &root, qint64 left) {
        QFile filler(root + "filler"_s);
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered));
        const auto room = [&root] { return QStorageInfo(root).bytesAvailable(); };
        while (room() > left) {
            if (filler.write(QByteArray(int(qMin(room() - left, qint64(1) << 20)), '\0')) <= 0)
                break;
        }
        filler.close();
        QVERIFY(room() <= left);
    }
    QStringList kept() const {
        const QStringList files = filesBelow(m_pc->path("removed"_s));
        QStringList found;
        for (const QString &file : files)
            found.append(file.section(QLatin1Char('/'), 1));
        return found;
    }
    QStringList notes() const { return filesBelow(m_pc->path("splitting"_s)); }

private slots:
    void init() {
        m_pc = std::make_unique<PcFolder>();
        setDataFolder(m_pc->path());
    }
    void cleanup() { setDataFolder(QString()); }

    void noSongIsLostOnANearlyFullVolume_data() {
        columns<int, qint64, bool>("cluster", "left", "isSplit");
        for (const qint64 left : {0, 4096, 12288, 40960})
            row(qPrintable("%1 bytes free"_s.arg(left)), 4096, left, false);
        row("room for all", 4096, qint64(1) << 20, true);
        row("clusters of 128 KiB", 131072, qint64(1300000), false);
        row("clusters of 128 KiB and room for all", 131072, qint64(80) << 17, true);
    }
    void noSongIsLostOnANearlyFullVolume() {
        QString why;
        if (!ExFatVolume::isPossible(&why))
            QSKIP(qPrintable("no exFAT volume can be made here: "_s + why));
        QFETCH(int, cluster);
        const MountedPlayer player(cluster > 4096 ? 180 : 48, cluster);
        QVERIFY2(player.isMounted(), qPrintable(player.volume->error()));
        addSongs(player.path("Big"_s));
        fill(player.root(), given<qint64>("left"));
        const QByteArrayList before = contents(player.root());
        Ottimizza page;
        SignalRecorder told(page);
        split(page, player.root());
        QVERIFY(contents(player.root()) == before);
        QCOMPARE(QDir(player.root()).entryList({"Big*"_s}), words("Big"));
        QCOMPARE(QFileInfo::exists(player.path("Big/A0"_s)), given<bool>("isSplit"));
        QCOMPARE(told.logged().filter("Spazio insufficiente"_s).size(), given<bool>("isSplit") ? 0 : 1);
        QCOMPARE(notes(), QStringList());
    }

    void folderWhoseTitlesNeedMoreSubFoldersThanThereIsRoomForStaysAsItIs() {
        QString why;
        if (!ExFatVolume::isPossible(&why))
            QSKIP(qPrintable("no exFAT volume can be made here: "_s + why));
        const MountedPlayer player(48);
        QVERIFY2(player.isMounted(), qPrintable(player.volume->error()));
        // Room for a sub-folder of each letter that is usual, and not for one of each Chinese character.
        addSongs(player.path("Big"_s), 0x4e00, 600);
        fill(player.root(), qint64(1) << 20);
        const QStringList before = filesBelow(player.root());
        Ottimizza page;
        SignalRecorder told(page);
        split(page, player.root());
        QCOMPARE(filesBelow(player.root()), before);
        QCOMPARE(QDir(player.root()).entryList({"Big*"_s}), words("Big"));
        QCOMPARE(told.logged().filter("Spazio insufficiente"_s).size(), 1);
        QCOMPARE(notes(), QStringList());
    }

    // Others write to the disk, too: it may fill up when half of the songs have moved.
    void noSongIsLostOnAVolumeThatFillsUpMeanwhile() {
        QString why;
        if (!ExFatVolume::isPossible(&why))
            QSKIP(qPrintable("no exFAT volume can be made here: "_s + why));
        const MountedPlayer player(48);
        QVERIFY2(player.isMounted(), qPrintable(player.volume->error()));
        addSongs(player.path("Big"_s));
        const QByteArrayList before = contents(player.root());
        Ottimizza page;
        connect(&page, &Ottimizza::updateProgressBarVal, &page, [&](int value) {
            if (value == 500 && QFileInfo::exists(player.path("Big/A0"_s)))
                fill(player.root(), 0);
        });
        split(page, player.root());
        QVERIFY(contents(player.root()) == before);
        QCOMPARE(QDir(player.root()).entryList({"Big*"_s}), words("Big"));
        QVERIFY(QFileInfo::exists(player.path("Big/A0"_s)));
        QCOMPARE(notes(), QStringList());
        // Some had to stay, and they are in no other folder than their own.
        QVERIFY(QDir(player.path("Big"_s)).entryList(QDir::Files).size() > 100);
    }

    void folderThatRefusesWritesStaysAsItIs() {
#ifdef Q_OS_UNIX
        OptimizerRun run(words("X/a.mid X/b.mid X/c.txt"));
        QFile folder(run.player.path("X"_s));
        QVERIFY(QFile::setPermissions(run.player.root(), QFile::Permissions(0x7777)));
        QVERIFY(folder.setPermissions(QFile::Permissions(0x5555)));
        const QStringList before = run.disk();
        QStringList after;
        {
            const NoRoot noRoot;
            split(run.page, run.player.root(), words("X"));
            after = entriesBelow(run.player.root());
        }
        QCOMPARE(run.disk(), before);
        QCOMPARE(after.filter("X"_s), words("X X/a.mid X/b.mid X/c.txt"));
        QVERIFY(run.logged("corvin_optimizer : Cartella protetta, non suddivisa  \"%1\""_s.arg(folder.fileName()),
                           QtWarningMsg));
        QVERIFY(folder.setPermissions(QFile::Permissions(0x7777)));
#else
        QSKIP("Folders refuse no writes here");
#endif
    }

    void songWhoseNumberDoesNotFitStaysInItsFolderWithItsCompanion() {
        const QString name = "s"_s.repeated(249); // 253 bytes with ".mid": no room for "(1)"
        const QStringList files = {"X/%1.cdg=words"_s.arg(name), "X/%1.mid=new"_s.arg(name),
                                   "X/S0/%1.mid=old"_s.arg(name)};
        OptimizerRun run(files + words("X/sure.mid"));
        split(run.page, run.player.root(), words("X"));
        QStringList after = {"X/S0/%1.mid=old"_s.arg(name), "X/S0/sure.mid"_s, files.at(0), files.at(1)};
        after.sort();
        QCOMPARE(run.disk(), after);
        QCOMPARE(run.player.folders(), words("X"));
        QCOMPARE(kept(), QStringList());
    }

    void companionWhoseNameIsTakenStaysWithItsSong() {
        OptimizerRun run(words("X/S0/Song.dat=another X/Song.dat=words X/Song.mid"));
        split(run.page, run.player.root(), words("X"));
        QCOMPARE(run.disk(), words("X/S0/Song.dat=another X/Song.dat=words X/Song.mid"));
    }

    void picturesAndVideosOfABigFolderStay() {
        OptimizerRun run(words("Images/cover.jpg=cover Images/Clip.MP4=clip Images/sub/p.png=p Videos/v.avi"));
        run.addNumbered("Images/b"_s, 1001);
        run.scan();
        run.page.corvin_optimizer();
        QStringList others = run.disk();
        others = others.filter(QRegularExpression("^(?!Images/B[01]/)"_s));
        QCOMPARE(others, words("Images/Clip.MP4=clip Images/cover.jpg=cover Images/sub/p.png=p Videos/v.avi"));
        QCOMPARE(run.disk().size(), 1005);
    }

    void restOfAFolderLiesOnThePcBeforeItGoes() {
        OptimizerRun run(words("X/Song.mid X/Other.dat=1 X/notes.txt=2 X/.hidden.mid=3"));
        split(run.page, run.player.root(), words("X"));
        QCOMPARE(run.disk(), words("X/S0/Song.mid"));
        QCOMPARE(kept(), words("X/.hidden.mid X/Other.dat X/notes.txt"));
    }

    void restThatCannotBeKeptOnThePcStays() {
        setDataFolder(m_pc->addFile("a file"_s) + "/data"_s);
        OptimizerRun run(words("X/Song.mid X/Other.dat=1 X/notes.txt=2 X/.hidden.mid=3"));
        split(run.page, run.player.root(), words("X"));
        QCOMPARE(run.disk(), words("X/.hidden.mid=3 X/Other.dat=1 X/S0/Song.mid X/notes.txt=2"));
        QCOMPARE(run.player.folders(), words("X"));
    }

    void folderInTheWayOfAnotherGetsANumber() {
        OptimizerRun run(words("X/Song.mid X/sub/inside.mid"));
        run.atLabel("Organizzazione"_s, [&run] { run.put(words("X/sub=file")); });
        split(run.page, run.player.root(), words("X"));
        QCOMPARE(run.disk(), words("X/S0/Song.mid X/sub=file X/sub(1)/inside.mid"));
    }

    // Under the player's path may lie a folder of the PC's own by then.
    void playerThatGoesMeanwhileIsLeftAsItIs() {
        OptimizerRun run;
        run.addNumbered("X/b"_s, 20);
        run.put(words("X/notes.txt"));
        QStringList left;
        QObject::connect(&run.page, &Ottimizza::updateProgressBarVal, &run.page, [&](int value) {
            if (value == 10 && left.isEmpty() && run.player.exists("X/B0"_s)) {
                SimulatedPlayer::disconnect();
                left = run.disk();
            }
        });
        split(run.page, run.player.root(), words("X"));
        QCOMPARE(run.disk(), left);
        QCOMPARE(run.page.failCode, 1);
        QVERIFY(run.page.abortRequested);
        // It comes back, and the next run makes good what was left.
        run.player.connect();
        QCOMPARE(notes().size(), 1);
        run.page.abortRequested = false;
        run.page.optDelete = false;
        run.page.startAllOptimization();
        QCOMPARE(run.player.files("X/B0"_s).size(), 20);
        QCOMPARE(run.player.folders(), QStringList({"My Songs"_s, "X"_s}));
        QCOMPARE(kept(), words("X/notes.txt"));
        QCOMPARE(notes(), QStringList());
    }

private:
    std::unique_ptr<PcFolder> m_pc;
};

QTEST_MAIN(TestSplitSafety)
#include "tst_splitsafety.moc"
