#include "optimizerrun.h"
#include "support/platform.h"

#include <cstdlib>

/// One of the two steps that move media, on a player.
struct MediaRun : OptimizerRun
{
    explicit MediaRun(bool ofImages) : images(ofImages) { page.rootPath = player.root(); }
    QString list(const QString &path, const QByteArray &content = "x")
    {
        files.append(QFileInfo(player.addFile(path, content)));
        return player.path(path);
    }
    void move()
    {
        if (images)
            page.move_images();
        else
            page.move_videos();
    }

    const bool images;
    QList<QFileInfo> &files = images ? page.imageFiles : page.videoFiles;
    const QString folder = images ? "Images"_s : "Videos"_s;
    const QString suffix = images ? "jpg"_s : "avi"_s;
};

class TestMediaMove : public QObject
{
    Q_OBJECT

    // Both steps work alike.
    static void addSteps()
    {
        columns<bool, QString, QString>("images", "step", "status");
        row("images", true, "move_images"_s, "Spostamento immagini..."_s);
        row("videos", false, "move_videos"_s, "Spostamento video..."_s);
    }

private slots:
    void stoppedStepDoesNothing_data() { addSteps(); }
    void stoppedStepDoesNothing()
    {
        QFETCH(bool, images);
        MediaRun run(images);
        run.list("A/x.jpg"_s);
        run.page.abortRequested = true;
        run.move();
        QCOMPARE(run.told.lines(), QStringList());
        QVERIFY(!run.player.exists(run.folder));
    }

    void emptyListMakesNoFolder_data() { addSteps(); }
    void emptyListMakesNoFolder()
    {
        QFETCH(bool, images);
        QFETCH(QString, status);
        MediaRun run(images);
        run.move();
        QCOMPARE(run.told.lines(), QStringList({"label "_s + status, "label Operazione completata"_s}));
        QVERIFY(!run.player.exists(run.folder));
    }

    void filesMoveAndTakenNamesGetANumber_data() { addSteps(); }
    void filesMoveAndTakenNamesGetANumber()
    {
        QFETCH(bool, images);
        QFETCH(QString, step);
        QFETCH(QString, status);
        MediaRun run(images);
        const QString first = run.list("A/cover."_s + run.suffix, "first");
        const QString second = run.list("B/cover."_s + run.suffix, "second");
        const QString third = run.list("B/C/cover."_s + run.suffix, "third");
        run.move();
        QCOMPARE(run.player.content(run.folder + "/cover."_s + run.suffix), QByteArray("first"));
        QCOMPARE(run.player.content(run.folder + "/cover_1."_s + run.suffix), QByteArray("second"));
        QCOMPARE(run.player.content(run.folder + "/cover_2."_s + run.suffix), QByteArray("third"));
        QCOMPARE(run.player.files().size(), 3);
        QCOMPARE(run.told.lines(),
                 QStringList({"label "_s + status, "log %1 : START"_s.arg(step), "min 0"_s, "max 3"_s, "value 0"_s,
                              "log Move : \"%1\""_s.arg(first), "value 1"_s, "log Move : \"%1\""_s.arg(second),
                              "value 2"_s, "log Move : \"%1\""_s.arg(third), "value 3"_s,
                              "log %1 : N. files  3"_s.arg(step), "label Operazione completata"_s}));
        QVERIFY(run.loggedOnlyInfos());
    }

    void nameIsPartedAtItsFirstDot()
    {
        MediaRun run(true);
        run.player.addFile("Images/photo.2019.jpg"_s, "old");
        run.list("A/photo.2019.jpg"_s, "new");
        run.move();
        QCOMPARE(run.player.content("Images/photo.2019.jpg"_s), QByteArray("old"));
        QCOMPARE(run.player.content("Images/photo_1.2019.jpg"_s), QByteArray("new"));
    }

    // With the generator's next number known, a file that bears it stops the detour where it stands.
    void takenNumericNameStopsTheDetour_data()
    {
        columns<QString, bool>("blockerFolder", "keepsItsName");
        row("in the file's folder", "A/"_s, true);
        row("in the target folder", "Images/"_s, false);
    }
    void takenNumericNameStopsTheDetour()
    {
        QFETCH(QString, blockerFolder);
        QFETCH(bool, keepsItsName);
        constexpr unsigned kSeed = 4;
        std::srand(kSeed);
        const QString numeric = "%1.jpg"_s.arg(std::rand() % 1000000);
        std::srand(kSeed);
        MediaRun run(true);
        run.player.addFile("Images/p.jpg"_s, "old");
        run.player.addFile(blockerFolder + numeric, "blocker");
        const QString source = run.list("A/p.jpg"_s, "new");
        run.move();
        QCOMPARE(run.player.content("A/"_s + (keepsItsName ? "p.jpg"_s : numeric)), QByteArray("new"));
        QVERIFY(run.logged("Move : \"%1\""_s.arg(source)));
        // The renames that follow take what bears the number for the file on its way.
        QCOMPARE(run.player.content("Images/p_1.jpg"_s), QByteArray("blocker"));
        QCOMPARE(run.player.content("Images/p.jpg"_s), QByteArray("old"));
    }

    void videoInItsFolderStaysAndOneAmongSongsMoves()
    {
        MediaRun run(false);
        run.addFiles({"Videos/Clips/v.avi"_s, "My Songs/w.MP4"_s});
        run.scan();
        run.move();
        QCOMPARE(run.player.files(), words("Videos/Clips/v.avi Videos/w.MP4"));
    }

    void folderOfAnotherCaseIsUsed_data() { addSteps(); }
    void folderOfAnotherCaseIsUsed()
    {
        SKIP_ON_WINDOWS("the file system ignores case here");
        QFETCH(bool, images);
        MediaRun run(images);
        const QString there = run.folder.toUpper();
        run.player.addFile(there + "/cover."_s + run.suffix, "old");
        run.player.addFile("A/cover."_s + run.suffix, "new");
        run.player.addFile("A/other."_s + run.suffix, "other");
        run.scan();
        QCOMPARE(run.files.size(), 2);
        run.move();
        QVERIFY(!run.player.exists(run.folder));
        QCOMPARE(run.player.content(there + "/cover."_s + run.suffix), QByteArray("old"));
        QCOMPARE(run.player.content(there + "/cover_1."_s + run.suffix), QByteArray("new"));
        QCOMPARE(run.player.content(there + "/other."_s + run.suffix), QByteArray("other"));
        QCOMPARE(run.player.files().size(), 3);
    }

    void fileCalledAsTheFolderLeavesEverythingInPlace()
    {
        MediaRun run(true);
        run.player.addFile("Images"_s, "a file");
        run.list("A/p.jpg"_s, "p");
        run.move();
        QCOMPARE(run.player.content("A/p.jpg"_s), QByteArray("p"));
        QCOMPARE(run.player.content("Images"_s), QByteArray("a file"));
    }

    void stopLeavesTheRemainingFiles_data() { addSteps(); }
    void stopLeavesTheRemainingFiles()
    {
        QFETCH(bool, images);
        MediaRun run(images);
        for (int i = 0; i < 5; ++i)
            run.list("A/%1.%2"_s.arg(i).arg(run.suffix));
        run.stopAtValue(3);
        run.move();
        QCOMPARE(run.player.files(run.folder).size(), 3);
        QCOMPARE(run.player.files("A"_s).size(), 2);
        QCOMPARE(run.lastLine(), "value 3"_s);
        QCOMPARE(run.told.labels().size(), 1);
    }
};

QTEST_MAIN(TestMediaMove)
#include "tst_mediamove.moc"
