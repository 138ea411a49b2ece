#include "runrecorder.h"
#include "support/simulatedplayer.h"

#include "optimizer/ottimizza.h"
#include "songfactory/songfactory.h"

#include <QTest>

class tst_FolderSplitting : public QObject
{
    Q_OBJECT

private:
    // Files that hold no song are filed under their own names, which makes the titles easy to choose.
    static void addSongs(SimulatedPlayer &player, const QString &folder, const QString &front, int count)
    {
        for (int i = 0; i < count; ++i)
            player.addFile(QStringLiteral("%1/%2%3.mid").arg(folder, front).arg(i, 5, 10, QLatin1Char('0')));
    }
    static int count(const SimulatedPlayer &player, const QString &folder) { return player.files(folder).size(); }
    static void prepare(Ottimizza &page, const SimulatedPlayer &player, const QStringList &folders)
    {
        page.rootPath = player.root();
        for (const QString &folder : folders)
            page.bigFolders.append(QFileInfo(player.path(folder)));
    }
    static SongInfo titled(const QString &title)
    {
        SongInfo info;
        info.title = title;
        return info;
    }

private slots:
    void withoutBigFoldersNothingHappens()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("A/a.mid"));
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        page.corvin_optimizer();
        QCOMPARE(recorder.lines(), QStringList({QStringLiteral("label Caricamento risorse..."),
                                                QStringLiteral("label Operazione completata")}));
        QCOMPARE(player.files(), QStringList(QStringLiteral("A/a.mid")));
    }

    void everyStageIsReportedInOrder()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("X/beta.mid"));
        player.addFile(QStringLiteral("X/Alpha.MID"));
        player.addFolder(QStringLiteral("X/sub"));
        player.addFile(QStringLiteral("Y/1.kar"));
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X"), QStringLiteral("Y")});
        RunRecorder recorder(page);
        page.corvin_optimizer();
        const QString x = player.path(QStringLiteral("X"));
        const QString y = player.path(QStringLiteral("Y"));
        const QStringList expected = {
            QStringLiteral("label Caricamento risorse..."),
            QStringLiteral("log corvin_optimizer : START"),
            QStringLiteral("min 0"),
            QStringLiteral("max 0"),
            QStringLiteral("label (1/2) Ottimizzazione cartelle \n") + x,
            QStringLiteral("log corvin_optimizer : Start Open Dir  \"%1\"").arg(x),
            QStringLiteral("log corvin_optimizer : End Open Dir N. Entry  3"),
            QStringLiteral("label (1/2) Ottimizzazione cartelle  : Ricerca dei titoli nei brani\n[3] ") + x,
            QStringLiteral("max 3"),
            QStringLiteral("log corvin_optimizer : Start Ricerca Titoli"),
            QStringLiteral("value 1"),
            QStringLiteral("value 2"),
            QStringLiteral("value 3"),
            QStringLiteral("log corvin_optimizer : Start Ordinamento"),
            QStringLiteral("label (1/2) Ottimizzazione cartelle  : Organizzazione in sottocartelle\n[3] ") + x,
            QStringLiteral("max 3"),
            QStringLiteral("log corvin_optimizer : Start Move in sottocartelle"),
            QStringLiteral("value 1"),
            QStringLiteral("value 2"),
            QStringLiteral("log corvin_optimizer : SubDir  \"%1/A0\"").arg(x),
            QStringLiteral("value 3"),
            QStringLiteral("log corvin_optimizer : SubDir  \"%1/B0\"").arg(x),
            QStringLiteral("value 3"),
            QStringLiteral("min 0"),
            QStringLiteral("max 0"),
            QStringLiteral("label (2/2) Ottimizzazione cartelle \n") + y,
            QStringLiteral("log corvin_optimizer : Start Open Dir  \"%1\"").arg(y),
            QStringLiteral("log corvin_optimizer : End Open Dir N. Entry  1"),
            QStringLiteral("label (2/2) Ottimizzazione cartelle  : Ricerca dei titoli nei brani\n[1] ") + y,
            QStringLiteral("max 1"),
            QStringLiteral("log corvin_optimizer : Start Ricerca Titoli"),
            QStringLiteral("value 1"),
            QStringLiteral("log corvin_optimizer : Start Ordinamento"),
            QStringLiteral("label (2/2) Ottimizzazione cartelle  : Organizzazione in sottocartelle\n[1] ") + y,
            QStringLiteral("max 1"),
            QStringLiteral("log corvin_optimizer : Start Move in sottocartelle"),
            QStringLiteral("value 1"),
            QStringLiteral("log corvin_optimizer : SubDir  \"%1/10\"").arg(y),
            QStringLiteral("value 1"),
            QStringLiteral("log corvin_optimizer : END"),
            QStringLiteral("label Operazione completata"),
        };
        QCOMPARE(recorder.lines(), expected);
        for (const LogCapture::Line &line : recorder.log().lines())
            QCOMPARE(line.type, QtInfoMsg);
        QCOMPARE(player.files(), QStringList({QStringLiteral("X/A0/Alpha.MID"), QStringLiteral("X/B0/beta.mid"),
                                              QStringLiteral("Y/10/1.kar")}));
        QVERIFY(QFileInfo(player.path(QStringLiteral("X/sub"))).isDir());
    }

    void twoAndAHalfThousandSongsFillThreeSubfolders()
    {
        SimulatedPlayer player;
        addSongs(player, QStringLiteral("X"), QStringLiteral("b"), 2500);
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        page.corvin_optimizer();
        QCOMPARE(player.folders(QStringLiteral("X")),
                 QStringList({QStringLiteral("B0"), QStringLiteral("B1"), QStringLiteral("B2")}));
        QCOMPARE(count(player, QStringLiteral("X/B0")), 900);
        QCOMPARE(count(player, QStringLiteral("X/B1")), 900);
        QCOMPARE(count(player, QStringLiteral("X/B2")), 700);
        // In the order of their titles.
        QVERIFY(player.exists(QStringLiteral("X/B0/b00899.mid")));
        QVERIFY(player.exists(QStringLiteral("X/B1/b00900.mid")));
        QVERIFY(player.exists(QStringLiteral("X/B2/b01800.mid")));
    }

    void companionsCountTowardsTheLimit()
    {
        SimulatedPlayer player;
        addSongs(player, QStringLiteral("X"), QStringLiteral("c"), 1000);
        // The first song brings two companions (3 files), the 898th three: 902 files before the limit is seen.
        for (const char *file : {"c00000.dat", "c00000.cdg", "c00897.dat", "c00897.cdg", "c00897.bak"})
            player.addFile(QStringLiteral("X/") + QString::fromLatin1(file));
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        page.corvin_optimizer();
        // 3 + 896 songs = 899, then the song with its three companions: 903.
        QCOMPARE(count(player, QStringLiteral("X/C0")), 903);
        QVERIFY(player.exists(QStringLiteral("X/C0/c00897.bak")));
        QVERIFY(player.exists(QStringLiteral("X/C1/c00898.mid")));
        QCOMPARE(count(player, QStringLiteral("X/C1")), 102);
    }

    void titleDecidesTheSubfolder_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("subfolder");
        QTest::newRow("letter") << QStringLiteral("azzurro") << QStringLiteral("A0");
        QTest::newRow("apostrophe") << QStringLiteral("'Round") << QStringLiteral("R0");
        QTest::newRow("parenthesis") << QStringLiteral("(I can't") << QStringLiteral("I0");
        QTest::newRow("double quote") << QStringLiteral("\"Heroes\"") << QStringLiteral("H0");
        QTest::newRow("exclamation mark") << QStringLiteral("!Viva") << QStringLiteral("#0");
        QTest::newRow("accent") << QStringLiteral("École") << QStringLiteral("E0");
        QTest::newRow("number") << QStringLiteral("99 Luftballons") << QStringLiteral("90");
    }
    void titleDecidesTheSubfolder()
    {
        QFETCH(QString, title);
        QFETCH(QString, subfolder);
        SimulatedPlayer player;
        player.addFile(QStringLiteral("X/zzz1.mid"), SongFactory::midi(titled(title)));
        player.addFile(QStringLiteral("X/zzz2.MF3"), SongFactory::mfx(3, titled(title)));
        player.addFile(QStringLiteral("X/zzz3.mp3"), SongFactory::mp3(3, titled(title)));
        player.addFile(QStringLiteral("X/zzz4.kar"), SongFactory::karaoke({QStringLiteral("@T") + title}, {}));
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        page.corvin_optimizer();
        QCOMPARE(player.folders(QStringLiteral("X")), QStringList(subfolder));
        QCOMPARE(count(player, QStringLiteral("X/") + subfolder), 4);
    }

    void ellipsisIsFiledUnderTheSharp()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("X/\u2026e penso a te.mid"));
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        page.corvin_optimizer();
        QCOMPARE(player.folders(QStringLiteral("X")), QStringList(QStringLiteral("#0")));
    }

    void takenNameGetsANumberAndTheCompanionFollows()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("X/Song.mid"), "new");
        player.addFile(QStringLiteral("X/Song.dat"), "words");
        player.addFile(QStringLiteral("X/S0/Song.mid"), "old");
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        page.corvin_optimizer();
        QCOMPARE(player.content(QStringLiteral("X/S0/Song.mid")), QByteArray("old"));
        QCOMPARE(player.content(QStringLiteral("X/S0/Song(1).mid")), QByteArray("new"));
        QCOMPARE(player.content(QStringLiteral("X/S0/Song(1).dat")), QByteArray("words"));
        QCOMPARE(player.files().size(), 3);
    }

    void nearlyFullSubfolderTakesOneMoreSong()
    {
        SimulatedPlayer player;
        for (int i = 0; i < 899; ++i)
            player.addFile(QStringLiteral("X/A0/old%1.txt").arg(i));
        addSongs(player, QStringLiteral("X"), QStringLiteral("a"), 3);
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        page.corvin_optimizer();
        QCOMPARE(count(player, QStringLiteral("X/A0")), 900);
        QVERIFY(player.exists(QStringLiteral("X/A0/a00000.mid")));
        QVERIFY(player.exists(QStringLiteral("X/A1/a00001.mid")));
        QVERIFY(player.exists(QStringLiteral("X/A1/a00002.mid")));
    }

    void fullSubfolderIsPassedOverForMoreThanOneSong()
    {
        SimulatedPlayer player;
        for (int i = 0; i < 900; ++i)
            player.addFile(QStringLiteral("X/A0/old%1.txt").arg(i));
        addSongs(player, QStringLiteral("X"), QStringLiteral("a"), 950);
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        page.corvin_optimizer();
        QCOMPARE(count(player, QStringLiteral("X/A0")), 900);
        QCOMPARE(count(player, QStringLiteral("X/A1")), 900);
        QCOMPARE(count(player, QStringLiteral("X/A2")), 50);
    }

    // A split made before left songs in their sub-folders: what stands there stays, what is new joins it.
    void subfoldersKeepWhatTheyHold()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("X/B0/inside.mid"), "kept");
        player.addFile(QStringLiteral("X/B0/deep/down.txt"), "kept too");
        player.addFile(QStringLiteral("X/Zeta.mid/odd.dat"), "in a folder with a song's suffix");
        addSongs(player, QStringLiteral("X"), QStringLiteral("b"), 2);
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        page.corvin_optimizer();
        QCOMPARE(player.files(), QStringList({QStringLiteral("X/B0/b00000.mid"), QStringLiteral("X/B0/b00001.mid"),
                                              QStringLiteral("X/B0/deep/down.txt"), QStringLiteral("X/B0/inside.mid"),
                                              QStringLiteral("X/Zeta.mid/odd.dat")}));
    }

    void hiddenSubfolderIsKeptAndNotCounted()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("X/Song.mid"));
        player.addFile(QStringLiteral("X/.mine/deep/Inside.mid"), "inside");
        player.addFile(QStringLiteral("X/.file.mid"));
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        RunRecorder recorder(page);
        page.corvin_optimizer();
        QCOMPARE(player.files(),
                 QStringList({QStringLiteral("X/.mine/deep/Inside.mid"), QStringLiteral("X/S0/Song.mid")}));
        QVERIFY(recorder.log().contains(QStringLiteral("corvin_optimizer : End Open Dir N. Entry  1")));
    }

    void songWhoseNameIsThatOfItsSubfolderFindsAnother()
    {
        SimulatedPlayer player;
        // Neither a song nor a folder may take the place of a sub-folder: "B0" is a file in the way.
        addSongs(player, QStringLiteral("X"), QStringLiteral("b"), 1);
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        QObject::connect(&page, &Ottimizza::updateLabelAction, &page, [&player](const QString &text) {
            if (text.contains(QLatin1String("Organizzazione")))
                player.addFile(QStringLiteral("X/B0"), "in the way");
        });
        page.corvin_optimizer();
        QCOMPARE(player.files(), QStringList({QStringLiteral("X/B0"), QStringLiteral("X/B1/b00000.mid")}));
    }

    void whatIsNoSongGoesWithTheOldFolder()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("X/Song.mid"));
        player.addFile(QStringLiteral("X/Song.cdg"));
        player.addFile(QStringLiteral("X/Other.dat"));
        player.addFile(QStringLiteral("X/notes.txt"));
        player.addFile(QStringLiteral("X/.hidden.mid"));
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        page.corvin_optimizer();
        QCOMPARE(player.files(), QStringList({QStringLiteral("X/S0/Song.cdg"), QStringLiteral("X/S0/Song.mid")}));
        QCOMPARE(player.folders(), QStringList(QStringLiteral("X")));
    }

    void linkInTheOldFolderDoesNotLeadTheDeletionOutside()
    {
        SimulatedPlayer player;
        QTemporaryDir elsewhere;
        QFile kept(elsewhere.filePath(QStringLiteral("kept.txt")));
        QVERIFY(kept.open(QIODevice::WriteOnly));
        player.addFile(QStringLiteral("X/Song.mid"));
        player.addFolder(QStringLiteral("X/sub"));
        QVERIFY(QFile::link(elsewhere.path(), player.path(QStringLiteral("X/sub/link"))));
        QVERIFY(QFile::link(kept.fileName(), player.path(QStringLiteral("X/link.txt"))));
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        // With its name taken the sub-folder cannot move and is deleted where it is.
        QObject::connect(&page, &Ottimizza::updateLabelAction, &page, [&player](const QString &text) {
            if (text.contains(QLatin1String("Organizzazione")))
                player.addFile(QStringLiteral("X/sub"), "in the way");
        });
        page.corvin_optimizer();
        QVERIFY(kept.exists());
        QCOMPARE(player.content(QStringLiteral("X/sub")), QByteArray("in the way"));
        QCOMPARE(player.folders(), QStringList(QStringLiteral("X")));
    }

    void takenOldNamesPileUpTheirNumbers()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("X/Song.mid"));
        player.addFile(QStringLiteral("X.old/kept.txt"));
        player.addFile(QStringLiteral("X.old1/kept.txt"));
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        bool seen = false;
        QObject::connect(&page, &Ottimizza::updateLabelAction, &page, [&](const QString &text) {
            if (text.contains(QLatin1String("Ricerca")))
                seen = player.exists(QStringLiteral("X.old12/Song.mid")) && player.files(QStringLiteral("X")).isEmpty();
        });
        page.corvin_optimizer();
        QVERIFY(seen);
        QCOMPARE(player.folders(),
                 QStringList({QStringLiteral("X"), QStringLiteral("X.old"), QStringLiteral("X.old1")}));
        QVERIFY(player.exists(QStringLiteral("X/S0/Song.mid")));
    }

    void nestedBigFolderMovesWithItsParent()
    {
        SimulatedPlayer player;
        addSongs(player, QStringLiteral("X"), QStringLiteral("a"), 1001);
        addSongs(player, QStringLiteral("X/In"), QStringLiteral("n"), 1001);
        Ottimizza page;
        page.rootPath = player.root();
        page.scan_directories();
        QCOMPARE(page.bigFolders.size(), 2);
        page.corvin_optimizer();
        QCOMPARE(count(player, QStringLiteral("X/A0")), 900);
        QCOMPARE(count(player, QStringLiteral("X/A1")), 101);
        QCOMPARE(count(player, QStringLiteral("X/In/N0")), 900);
        QCOMPARE(count(player, QStringLiteral("X/In/N1")), 101);
        QCOMPARE(player.files().size(), 2002);
        page.scan_directories();
        QVERIFY(page.bigFolders.isEmpty());
    }

    void stopDuringTheThirdOfFiveFoldersFinishesIt()
    {
        SimulatedPlayer player;
        QStringList folders;
        for (int i = 1; i <= 5; ++i) {
            folders.append(QStringLiteral("F%1").arg(i));
            addSongs(player, folders.last(), QStringLiteral("a"), 3);
        }
        Ottimizza page;
        prepare(page, player, folders);
        RunRecorder recorder(page);
        QObject::connect(&page, &Ottimizza::updateLabelAction, &page, [&page](const QString &text) {
            if (text.startsWith(QLatin1String("(3/5) ")) && text.contains(QLatin1String("Ricerca")))
                page.on_stopActionPressed();
        });
        page.corvin_optimizer();
        for (int i = 1; i <= 3; ++i)
            QCOMPARE(count(player, QStringLiteral("F%1/A0").arg(i)), 3);
        for (int i = 4; i <= 5; ++i)
            QVERIFY(player.exists(QStringLiteral("F%1/a00000.mid").arg(i)));
        QVERIFY(!page.abortRequested);
        QVERIFY(!recorder.labels().contains(QStringLiteral("Operazione completata")));
        QVERIFY(!recorder.logged().contains(QStringLiteral("corvin_optimizer : END")));
        QCOMPARE(player.folders(), folders);
    }

    void stopDuringTheLastFolderShowsNoFinalText()
    {
        SimulatedPlayer player;
        addSongs(player, QStringLiteral("X"), QStringLiteral("a"), 3);
        Ottimizza page;
        prepare(page, player, {QStringLiteral("X")});
        RunRecorder recorder(page);
        QObject::connect(&page, &Ottimizza::updateProgressBarVal, &page, &Ottimizza::on_stopActionPressed);
        page.corvin_optimizer();
        QCOMPARE(count(player, QStringLiteral("X/A0")), 3);
        QVERIFY(!page.abortRequested);
        QVERIFY(!recorder.labels().contains(QStringLiteral("Operazione completata")));
        QVERIFY(!recorder.logged().contains(QStringLiteral("corvin_optimizer : END")));
    }

    void playlistsAreNotCorrected()
    {
        SimulatedPlayer player;
        const QByteArray list("\\sdmemory\\X\\Song.mid^1^2\n");
        player.addFile(QStringLiteral("System/Playlist/a.pls"), list);
        player.addFile(QStringLiteral("X/Song.mid"));
        Ottimizza page;
        page.rootPath = player.root();
        page.scan_directories();
        prepare(page, player, {QStringLiteral("X")});
        page.corvin_optimizer();
        QVERIFY(player.exists(QStringLiteral("X/S0/Song.mid")));
        QCOMPARE(player.content(QStringLiteral("System/Playlist/a.pls")), list);
    }
};

QTEST_MAIN(tst_FolderSplitting)
#include "tst_foldersplitting.moc"
