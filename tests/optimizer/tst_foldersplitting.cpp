#include "optimizerrun.h"
#include "support/files.h"
#include "support/given.h"

#include "songfactory/songfactory.h"

/// The splitting of folders. Files that hold no song are filed under their own names, which makes the titles easy to
/// choose.
struct SplitRun : OptimizerRun
{
    using OptimizerRun::OptimizerRun;
    void split(const QStringList &folders = words("X")) {
        page.rootPath = player.root();
        for (const QString &folder : folders)
            page.bigFolders.append(QFileInfo(player.path(folder)));
        page.corvin_optimizer();
    }
    /// How many files the folders below "X/" hold, in this order.
    QList<int> counts(const QStringList &folders) const {
        QList<int> found;
        for (const QString &folder : folders)
            found.append(player.files("X/"_s + folder).size());
        return found;
    }
    /// Puts a file in the way once the old folder is set aside.
    void block(const QString &path) {
        atLabel("Organizzazione"_s, [this, path] { player.addFile(path, "in the way"); });
    }
};

class TestFolderSplitting : public QObject
{
    Q_OBJECT

    /// What is told of one folder, from its being opened to its songs being moved.
    static QStringList reported(const QString &number, const QString &folder, int entries) {
        const QString label = "label (%1) Ottimizzazione cartelle "_s.arg(number);
        const QString counted = "\n[%1] %2"_s.arg(entries).arg(folder);
        const QString max = "max %1"_s.arg(entries);
        QStringList lines = {"min 0"_s, "max 0"_s, label + "\n"_s + folder};
        lines += {"log corvin_optimizer : Start Open Dir  \"%1\""_s.arg(folder),
                  "log corvin_optimizer : End Open Dir N. Entry  %1"_s.arg(entries),
                  label + " : Ricerca dei titoli nei brani"_s + counted, max,
                  "log corvin_optimizer : Start Ricerca Titoli"_s};
        for (int i = 1; i <= entries; ++i)
            lines.append("value %1"_s.arg(i));
        return lines + QStringList({"log corvin_optimizer : Start Ordinamento"_s,
                                    label + " : Organizzazione in sottocartelle"_s + counted, max,
                                    "log corvin_optimizer : Start Move in sottocartelle"_s});
    }

private slots:
    void withoutBigFoldersNothingHappens() {
        SplitRun run({"A/a.mid"_s});
        run.split({});
        QCOMPARE(run.told.lines(), QStringList({"label Caricamento risorse..."_s, "label Operazione completata"_s}));
        QCOMPARE(run.player.files(), words("A/a.mid"));
    }

    void everyStageIsReportedInOrder() {
        SplitRun run(words("X/beta.mid X/Alpha.MID Y/1.kar"));
        run.player.addFolder("X/sub"_s);
        run.split(words("X Y"));
        const QString x = run.player.path("X"_s);
        const QString y = run.player.path("Y"_s);
        const QString subDir = "log corvin_optimizer : SubDir  \"%1/%2\""_s;
        QStringList expected = {"label Caricamento risorse..."_s, "log corvin_optimizer : START"_s};
        expected += reported("1/2"_s, x, 3);
        expected += {"value 1"_s, "value 2"_s, subDir.arg(x, "A0"_s), "value 3"_s, subDir.arg(x, "B0"_s), "value 3"_s};
        expected += reported("2/2"_s, y, 1);
        expected += {"value 1"_s, subDir.arg(y, "10"_s), "value 1"_s, "log corvin_optimizer : END"_s,
                     "label Operazione completata"_s};
        QCOMPARE(run.told.lines(), expected);
        QVERIFY(run.loggedOnlyInfos());
        QCOMPARE(run.player.files(), words("X/A0/Alpha.MID X/B0/beta.mid Y/10/1.kar"));
        QVERIFY(QFileInfo(run.player.path("X/sub"_s)).isDir());
    }

    void subfoldersFillUpInTheOrderOfTheTitles_data() {
        columns<int, int, QList<int>, QStringList>("before", "songs", "counts", "places");
        row("2500 songs", 0, 2500, QList<int>({900, 900, 700}), words("A0/a00899 A1/a00900 A2/a01800"));
        row("a nearly full one takes one more", 899, 3, QList<int>({900, 2}), words("A0/a00000 A1/a00001 A1/a00002"));
        row("a full one is passed over", 900, 950, QList<int>({900, 900, 50}), words("A1/a00000 A2/a00949"));
    }
    void subfoldersFillUpInTheOrderOfTheTitles() {
        QFETCH(QList<int>, counts);
        SplitRun run;
        run.addNumbered("X/A0/old"_s, given<int>("before"), "txt"_s);
        run.addNumbered("X/a"_s, given<int>("songs"));
        run.split();
        QCOMPARE(run.player.folders("X"_s), words("A0 A1 A2").mid(0, counts.size()));
        QCOMPARE(run.counts(run.player.folders("X"_s)), counts);
        for (const QString &song : given<QStringList>("places"))
            QVERIFY2(run.player.exists("X/%1.mid"_s.arg(song)), qPrintable(song));
    }

    void companionsCountTowardsTheLimit() {
        // The first song brings two companions (3 files), the 898th three: 902 files before the limit is seen.
        SplitRun run(words("X/c00000.dat X/c00000.cdg X/c00897.dat X/c00897.cdg X/c00897.bak"));
        run.addNumbered("X/c"_s, 1000);
        run.split();
        // 3 + 896 songs = 899, then the song with its three companions: 903.
        QCOMPARE(run.counts(words("C0 C1")), QList<int>({903, 102}));
        QVERIFY(run.player.exists("X/C0/c00897.bak"_s));
        QVERIFY(run.player.exists("X/C1/c00898.mid"_s));
    }

    void titleDecidesTheSubfolder_data() {
        columns<QString, QString>("title", "subfolder");
        row("letter", "azzurro"_s, "A0"_s);
        row("apostrophe", "'Round"_s, "R0"_s);
        row("parenthesis", "(I can't"_s, "I0"_s);
        row("double quote", "\"Heroes\""_s, "H0"_s);
        row("exclamation mark", "!Viva"_s, "#0"_s);
        row("accent", "École"_s, "E0"_s);
        row("number", "99 Luftballons"_s, "90"_s);
    }
    void titleDecidesTheSubfolder() {
        const QString &title = given<QString>("title");
        SongInfo info;
        info.title = title;
        SplitRun run;
        run.player.addFile("X/zzz1.mid"_s, SongFactory::midi(info));
        run.player.addFile("X/zzz2.MF3"_s, SongFactory::mfx(3, info));
        run.player.addFile("X/zzz3.mp3"_s, SongFactory::mp3(3, info));
        run.player.addFile("X/zzz4.kar"_s, SongFactory::karaoke({"@T"_s + title}, {}));
        run.split();
        QCOMPARE(run.player.folders("X"_s), QStringList(given<QString>("subfolder")));
        QCOMPARE(run.counts(run.player.folders("X"_s)), QList<int>({4}));
    }

    void songsMoveAndTheRestOfTheFolderGoes_data() {
        columns<QStringList, QStringList>("before", "after");
        row("an ellipsis is filed under the sharp", QStringList("X/…e penso a te.mid"_s),
            QStringList("X/#0/…e penso a te.mid"_s));
        row("a taken name gets a number and the companion follows",
            words("X/Song.mid=new X/Song.dat=words X/S0/Song.mid=old"),
            words("X/S0/Song(1).dat=words X/S0/Song(1).mid=new X/S0/Song.mid=old"));
        // A split made before left songs in their sub-folders; a folder may have a song's suffix.
        row("sub-folders keep what they hold, and what is new joins it",
            words("X/B0/inside.mid=1 X/B0/deep/down.txt=2 X/Zeta.mid/odd.dat=3 X/b0.mid X/b1.mid"),
            words("X/B0/b0.mid X/B0/b1.mid X/B0/deep/down.txt=2 X/B0/inside.mid=1 X/Zeta.mid/odd.dat=3"));
        row("what is no song goes with the old folder",
            words("X/Song.mid X/Song.cdg X/Other.dat X/notes.txt X/.hidden.mid"), words("X/S0/Song.cdg X/S0/Song.mid"));
        const QString list = "System/Playlist/a.pls=\\sdmemory\\X\\Song.mid^1^2\n"_s;
        row("playlists are not corrected", QStringList({list, "X/Song.mid"_s}), QStringList({list, "X/S0/Song.mid"_s}));
    }
    void songsMoveAndTheRestOfTheFolderGoes() {
        SplitRun run(given<QStringList>("before"));
        run.scan();
        run.split();
        QTEST(run.disk(), "after");
        QVERIFY(!run.player.exists("X.old"_s));
    }

    void hiddenSubfolderIsKeptAndNotCounted() {
        SplitRun run(words("X/Song.mid X/.mine/deep/Inside.mid=inside X/.file.mid"));
        run.split();
        QCOMPARE(run.disk(), words("X/.mine/deep/Inside.mid=inside X/S0/Song.mid"));
        QVERIFY(run.logged("corvin_optimizer : End Open Dir N. Entry  1"_s));
    }

    // Neither a song nor a folder may take the place of a sub-folder: "B0" is a file in the way.
    void songWhoseNameIsThatOfItsSubfolderFindsAnother() {
        SplitRun run(words("X/b.mid"));
        run.block("X/B0"_s);
        run.split();
        QCOMPARE(run.player.files(), words("X/B0 X/B1/b.mid"));
    }

    void linkInTheOldFolderDoesNotLeadTheDeletionOutside() {
        SplitRun run({"X/Song.mid"_s});
        PcFolder elsewhere;
        const QString kept = elsewhere.addFile("kept.txt"_s);
        run.player.addFolder("X/sub"_s);
        QVERIFY(QFile::link(elsewhere.path(), run.player.path("X/sub/link"_s)));
        QVERIFY(QFile::link(kept, run.player.path("X/link.txt"_s)));
        // With its name taken the sub-folder cannot move and is deleted where it is.
        run.block("X/sub"_s);
        run.split();
        QVERIFY(QFileInfo::exists(kept));
        QCOMPARE(run.player.content("X/sub"_s), QByteArray("in the way"));
        QCOMPARE(run.player.folders(), words("X"));
    }

    void takenOldNamesPileUpTheirNumbers() {
        SplitRun run(words("X/Song.mid X.old/kept.txt X.old1/kept.txt"));
        QStringList aside;
        run.atLabel("Ricerca"_s, [&] { aside = run.player.files(); });
        run.split();
        QCOMPARE(aside, words("X.old/kept.txt X.old1/kept.txt X.old12/Song.mid"));
        QCOMPARE(run.player.folders(), words("X X.old X.old1"));
        QVERIFY(run.player.exists("X/S0/Song.mid"_s));
    }

    void nestedBigFolderMovesWithItsParent() {
        SplitRun run;
        run.addNumbered("X/a"_s, 1001);
        run.addNumbered("X/In/n"_s, 1001);
        run.scan();
        QCOMPARE(run.page.bigFolders.size(), 2);
        run.page.corvin_optimizer();
        QCOMPARE(run.counts(words("A0 A1 In/N0 In/N1")), QList<int>({900, 101, 900, 101}));
        QCOMPARE(run.player.files().size(), 2002);
        run.scan();
        QVERIFY(run.page.bigFolders.isEmpty());
    }

    void stopStillFinishesTheFolderAtWork_data() {
        columns<QString, QStringList, int>("at", "folders", "finished");
        row("the third of five", "(3/5) Ottimizzazione cartelle  : Ricerca"_s, words("F1 F2 F3 F4 F5"), 3);
        row("the last: no final text", "(1/1) Ottimizzazione cartelle  : Ricerca"_s, words("F1"), 1);
    }
    void stopStillFinishesTheFolderAtWork() {
        QFETCH(QStringList, folders);
        SplitRun run;
        for (const QString &folder : qAsConst(folders))
            run.addNumbered(folder + "/a"_s, 3);
        run.stopAtLabel(given<QString>("at"));
        run.split(folders);
        for (int i = 0; i < folders.size(); ++i)
            QCOMPARE(run.player.files(folders.at(i) + "/A0"_s).size(), i < given<int>("finished") ? 3 : 0);
        QCOMPARE(run.player.files().size(), 3 * folders.size());
        QCOMPARE(run.player.folders(), folders);
        // A stop is used up, and nothing says that all is done.
        QVERIFY(!run.page.abortRequested);
        QCOMPARE(run.told.count("label Operazione completata"_s), 0);
        QCOMPARE(run.told.count("log corvin_optimizer : END"_s), 0);
    }
};

QTEST_MAIN(TestFolderSplitting)
#include "tst_foldersplitting.moc"
