#include "optimizerrun.h"
#include "support/given.h"

#include <cstdlib>

/// One of the three steps that work through the files that the scan has listed.
struct Step
{
    void (Ottimizza::*work)();
    QList<QFileInfo> Ottimizza::*files;
    QString name, status, verb, suffix;
    QString folder; ///< where its files go, empty when they are deleted
};
template <typename... Parts> Step stepOf(const Parts &...parts) {
    return {parts...};
}
inline const Step kDeletion = stepOf(&Ottimizza::delete_files, &Ottimizza::unsupportedFiles, "delete_files"_s,
                                     "label Cancellazione file non supportati..."_s, "Delete"_s, "txt"_s, QString());
inline const Step kImages = stepOf(&Ottimizza::move_images, &Ottimizza::imageFiles, "move_images"_s,
                                   "label Spostamento immagini..."_s, "Move"_s, "jpg"_s, "Images"_s);
inline const Step kVideos = stepOf(&Ottimizza::move_videos, &Ottimizza::videoFiles, "move_videos"_s,
                                   "label Spostamento video..."_s, "Move"_s, "avi"_s, "Videos"_s);
Q_DECLARE_METATYPE(const Step *)

struct StepRun : OptimizerRun
{
    explicit StepRun(const Step &wanted) : step(wanted) { page.rootPath = player.root(); }
    void list(const QStringList &paths) {
        put(paths);
        for (const QString &path : paths)
            files.append(QFileInfo(player.path(path.section(QLatin1Char('='), 0, 0))));
    }
    void work() { (page.*step.work)(); }

    const Step &step;
    QList<QFileInfo> &files = page.*step.files;
};

class TestListedFiles : public QObject
{
    Q_OBJECT

    static void addSteps() {
        columns<const Step *>("step");
        for (const Step *step : {&kDeletion, &kImages, &kVideos})
            row(qPrintable(step->name), step);
    }

private slots:
    void stoppedStepDoesNothing_data() { addSteps(); }
    void stoppedStepDoesNothing() {
        QFETCH(const Step *, step);
        StepRun run(*step);
        run.list({"A/x"_s});
        run.page.abortRequested = true;
        run.work();
        QCOMPARE(run.told.lines(), QStringList());
        QCOMPARE(run.player.files(), words("A/x"));
        QCOMPARE(run.player.folders(), words("A"));
    }

    void emptyListShowsOnlyTheStatusTexts_data() { addSteps(); }
    void emptyListShowsOnlyTheStatusTexts() {
        QFETCH(const Step *, step);
        StepRun run(*step);
        run.work();
        QCOMPARE(run.told.lines(), QStringList({step->status, "label Operazione completata"_s}));
        QCOMPARE(run.player.folders(), QStringList());
    }

    void diskOfSongsAndPicturesHasNothingToDelete() {
        StepRun run(kDeletion);
        const QStringList files = words("A/p.jpg A/s.mid A/v.avi");
        run.put(files);
        run.scan();
        run.told.clear();
        run.work();
        QCOMPARE(run.told.lines(), QStringList({kDeletion.status, "label Operazione completata"_s}));
        QCOMPARE(run.player.files(), files);
    }

    void listedFilesGoInOrderAndTakenNamesGetANumber_data() { addSteps(); }
    void listedFilesGoInOrderAndTakenNamesGetANumber() {
        QFETCH(const Step *, step);
        StepRun run(*step);
        QStringList paths;
        for (const char *path : {"B/cover.%1=first", "A/cover.%1=second", "B/C/cover.%1=3rd"})
            paths.append(QLatin1String(path).arg(step->suffix));
        run.list(paths);
        QStringList expected = {step->status, "log %1 : START"_s.arg(step->name), "min 0"_s, "max 3"_s, "value 0"_s};
        for (int i = 0; i < 3; ++i)
            expected += {"log %1 : \"%2\""_s.arg(step->verb, run.files.at(i).filePath()), "value %1"_s.arg(i + 1)};
        expected += {"log %1 : N. files  3"_s.arg(step->name), "label Operazione completata"_s};
        run.work();
        QCOMPARE(run.told.lines(), expected);
        QVERIFY(run.loggedOnlyInfos());
        const QString moved =
            "%1/cover.%2=first %1/cover_1.%2=second %1/cover_2.%2=3rd"_s.arg(step->folder, step->suffix);
        QCOMPARE(run.disk(), step == &kDeletion ? QStringList() : words(qPrintable(moved)));
    }

    void foundFilesMove_data() {
        columns<const Step *, QStringList, QStringList>("step", "before", "after");
        row("a name is parted at its first dot", &kImages, words("Images/photo.2019.jpg=old A/photo.2019.jpg=new"),
            words("Images/photo.2019.jpg=old Images/photo_1.2019.jpg=new"));
        row("a video in its folder stays and one among songs moves", &kVideos,
            words("Videos/Clips/v.avi Songs/w.MP4=w"), words("Videos/Clips/v.avi Videos/w.MP4=w"));
#ifndef Q_OS_WIN
        row("a folder of pictures in another case is used", &kImages, words("IMAGES/c.jpg=old A/c.jpg=new A/d.jpg"),
            words("IMAGES/c.jpg=old IMAGES/c_1.jpg=new IMAGES/d.jpg"));
        row("a folder of videos in another case is used", &kVideos, words("VIDEOS/c.avi=old A/c.avi=new A/d.avi"),
            words("VIDEOS/c.avi=old VIDEOS/c_1.avi=new VIDEOS/d.avi"));
#endif
    }
    void foundFilesMove() {
        QFETCH(const Step *, step);
        StepRun run(*step);
        run.put(given<QStringList>("before"));
        run.scan();
        run.work();
        QTEST(run.disk(), "after");
        QCOMPARE(run.player.folders().filter(step->folder, Qt::CaseInsensitive).size(), 1);
    }

    void textFilesGoButThoseOfTheSystemStay() {
        const QStringList staying = words("CorvinUpdate/notes.TXT Songs/s.xmid System/sub/notes.TXT");
        StepRun run(kDeletion);
        run.put(staying + words("Songs/notes.TXT Songs/readme"));
        run.scan();
        run.work();
        QCOMPARE(run.player.files(), staying);
    }

    // With the generator's next number known, a file that bears it stops the detour where it stands.
    void takenNumericNameStopsTheDetour_data() {
        columns<QString, bool>("blockerFolder", "keepsItsName");
        row("in the file's folder", "A/"_s, true);
        row("in the target folder", "Images/"_s, false);
    }
    void takenNumericNameStopsTheDetour() {
        constexpr unsigned kSeed = 4;
        std::srand(kSeed);
        const QString numeric = "%1.jpg"_s.arg(std::rand() % 1000000);
        std::srand(kSeed);
        StepRun run(kImages);
        run.put({"Images/p.jpg=old"_s, given<QString>("blockerFolder") + numeric + "=blocker"_s});
        run.list({"A/p.jpg=new"_s});
        run.work();
        // The renames that follow take what bears the number for the file on its way.
        QCOMPARE(run.disk(), QStringList({"A/%1=new"_s.arg(given<bool>("keepsItsName") ? "p.jpg"_s : numeric),
                                          "Images/p.jpg=old"_s, "Images/p_1.jpg=blocker"_s}));
        QVERIFY(run.logged("Move : \"%1\""_s.arg(run.player.path("A/p.jpg"_s))));
    }

    void fileCalledAsTheFolderLeavesEverythingInPlace() {
        StepRun run(kImages);
        run.put({"Images=a file"_s});
        run.list({"A/p.jpg=p"_s});
        run.work();
        QCOMPARE(run.disk(), QStringList({"A/p.jpg=p"_s, "Images=a file"_s}));
    }

    void fileThatCannotBeDeletedIsLoggedAllTheSame() {
        StepRun run(kDeletion);
        // A folder in the place of the file: it cannot be removed as a file, not even by root.
        const QString blocked = run.player.addFolder("A/blocked.txt"_s);
        run.files.append(QFileInfo(blocked));
        run.list({"A/next.txt"_s});
        run.work();
        QVERIFY(run.logged("Delete : \"%1\""_s.arg(blocked)));
        QVERIFY(run.player.exists("A/blocked.txt"_s));
        QVERIFY(!run.player.exists("A/next.txt"_s));
        QVERIFY(run.logged("delete_files : N. files  2"_s));
    }

    void stopLeavesTheRemainingFiles_data() {
        addSteps();
    }
    void stopLeavesTheRemainingFiles() {
        QFETCH(const Step *, step);
        StepRun run(*step);
        for (int i = 0; i < 5; ++i)
            run.list({"A/%1.%2"_s.arg(i).arg(step->suffix)});
        run.stopAtValue(3);
        run.work();
        QCOMPARE(run.player.files("A"_s).size(), 2);
        QCOMPARE(run.player.files().size(), step == &kDeletion ? 2 : 5);
        QCOMPARE(run.lastLine(), "value 3"_s);
        QCOMPARE(run.told.labels().size(), 1);
        QVERIFY(run.page.abortRequested);
    }
};

QTEST_MAIN(TestListedFiles)
#include "tst_listedfiles.moc"
