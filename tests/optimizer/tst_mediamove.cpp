#include "optimizerrun.h"

#include <cstdlib>

/// One of the two steps that move media, on a player.
struct MediaRun : OptimizerRun
{
    explicit MediaRun(bool ofImages) : images(ofImages) { page.rootPath = player.root(); }
    void list(const QStringList &paths) {
        put(paths);
        for (const QString &path : paths)
            files.append(QFileInfo(player.path(path.section(QLatin1Char('='), 0, 0))));
    }
    void move() {
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
    static void addSteps() {
        columns<bool, QString, QString>("images", "step", "status");
        row("images", true, "move_images"_s, "Spostamento immagini..."_s);
        row("videos", false, "move_videos"_s, "Spostamento video..."_s);
    }

private slots:
    void stoppedStepDoesNothing_data() { addSteps(); }
    void stoppedStepDoesNothing() {
        QFETCH(bool, images);
        MediaRun run(images);
        run.list({"A/x.jpg"_s});
        run.page.abortRequested = true;
        run.move();
        QCOMPARE(run.told.lines(), QStringList());
        QVERIFY(!run.player.exists(run.folder));
    }

    void emptyListMakesNoFolder_data() { addSteps(); }
    void emptyListMakesNoFolder() {
        QFETCH(bool, images);
        QFETCH(QString, status);
        MediaRun run(images);
        run.move();
        QCOMPARE(run.told.lines(), QStringList({"label "_s + status, "label Operazione completata"_s}));
        QVERIFY(!run.player.exists(run.folder));
    }

    void filesMoveAndTakenNamesGetANumber_data() { addSteps(); }
    void filesMoveAndTakenNamesGetANumber() {
        QFETCH(bool, images);
        QFETCH(QString, step);
        QFETCH(QString, status);
        MediaRun run(images);
        const QString suffix = run.suffix;
        run.list(
            {"A/cover.%1=first"_s.arg(suffix), "B/cover.%1=second"_s.arg(suffix), "B/C/cover.%1=3rd"_s.arg(suffix)});
        QStringList expected = {"label "_s + status, "log %1 : START"_s.arg(step), "min 0"_s, "max 3"_s, "value 0"_s};
        for (int i = 0; i < 3; ++i)
            expected += {"log Move : \"%1\""_s.arg(run.files.at(i).filePath()), "value %1"_s.arg(i + 1)};
        expected += {"log %1 : N. files  3"_s.arg(step), "label Operazione completata"_s};
        run.move();
        const QString moved = run.folder + "/cover%1.%2=%3"_s;
        QCOMPARE(run.disk(), QStringList({moved.arg(QString(), suffix, "first"_s),
                                          moved.arg("_1"_s, suffix, "second"_s), moved.arg("_2"_s, suffix, "3rd"_s)}));
        QCOMPARE(run.told.lines(), expected);
        QVERIFY(run.loggedOnlyInfos());
    }

    void foundFilesMove_data() {
        columns<bool, QStringList, QStringList>("images", "before", "after");
        row("a name is parted at its first dot", true, words("Images/photo.2019.jpg=old A/photo.2019.jpg=new"),
            words("Images/photo.2019.jpg=old Images/photo_1.2019.jpg=new"));
        row("a video in its folder stays and one among songs moves", false, words("Videos/Clips/v.avi Songs/w.MP4=w"),
            words("Videos/Clips/v.avi Videos/w.MP4=w"));
#ifndef Q_OS_WIN
        row("a folder of pictures in another case is used", true, words("IMAGES/c.jpg=old A/c.jpg=new A/d.jpg"),
            words("IMAGES/c.jpg=old IMAGES/c_1.jpg=new IMAGES/d.jpg"));
        row("a folder of videos in another case is used", false, words("VIDEOS/c.avi=old A/c.avi=new A/d.avi"),
            words("VIDEOS/c.avi=old VIDEOS/c_1.avi=new VIDEOS/d.avi"));
#endif
    }
    void foundFilesMove() {
        QFETCH(bool, images);
        QFETCH(QStringList, before);
        QFETCH(QStringList, after);
        MediaRun run(images);
        run.put(before);
        run.scan();
        run.move();
        QCOMPARE(run.disk(), after);
        QCOMPARE(run.player.folders().filter(run.folder, Qt::CaseInsensitive).size(), 1);
    }

    // With the generator's next number known, a file that bears it stops the detour where it stands.
    void takenNumericNameStopsTheDetour_data() {
        columns<QString, bool>("blockerFolder", "keepsItsName");
        row("in the file's folder", "A/"_s, true);
        row("in the target folder", "Images/"_s, false);
    }
    void takenNumericNameStopsTheDetour() {
        QFETCH(QString, blockerFolder);
        QFETCH(bool, keepsItsName);
        constexpr unsigned kSeed = 4;
        std::srand(kSeed);
        const QString numeric = "%1.jpg"_s.arg(std::rand() % 1000000);
        std::srand(kSeed);
        MediaRun run(true);
        run.put({"Images/p.jpg=old"_s, blockerFolder + numeric + "=blocker"_s});
        run.list({"A/p.jpg=new"_s});
        run.move();
        // The renames that follow take what bears the number for the file on its way.
        QCOMPARE(run.disk(), QStringList({"A/%1=new"_s.arg(keepsItsName ? "p.jpg"_s : numeric), "Images/p.jpg=old"_s,
                                          "Images/p_1.jpg=blocker"_s}));
        QVERIFY(run.logged("Move : \"%1\""_s.arg(run.player.path("A/p.jpg"_s))));
    }

    void fileCalledAsTheFolderLeavesEverythingInPlace() {
        MediaRun run(true);
        run.put({"Images=a file"_s});
        run.list({"A/p.jpg=p"_s});
        run.move();
        QCOMPARE(run.disk(), QStringList({"A/p.jpg=p"_s, "Images=a file"_s}));
    }

    void stopLeavesTheRemainingFiles_data() {
        addSteps();
    }
    void stopLeavesTheRemainingFiles() {
        QFETCH(bool, images);
        MediaRun run(images);
        for (int i = 0; i < 5; ++i)
            run.list({"A/%1.%2"_s.arg(i).arg(run.suffix)});
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
