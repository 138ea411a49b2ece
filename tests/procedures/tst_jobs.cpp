#include "device/keptfiles.h"
#include "disk/datafolder.h"
#include "procedures/reinstall.h"
#include "procedures/songbackup.h"
#include "procedures/songrestore.h"
#include "procedures/systemupdate.h"
#include "support/boxtexts.h"
#include "support/files.h"
#include "support/jobrecorder.h"
#include "support/simulatedplayer.h"

namespace {

/// The program's data in a folder of the test's own.
struct Data
{
    Data() { setDataFolder(folder.path("data"_s)); }
    ~Data() { setDataFolder(QString()); }
    PcFolder folder;
};

/// A player with a system and with what a backup takes and does not take.
struct FullPlayer : SimulatedPlayer
{
    FullPlayer() {
        addSystemFiles();
        for (const QString &file : words("System/x.dat Bridges/b.dat EFFECTS/e.dat CorvinUpdate/a.exe autoexec.bat"))
            addFile(file, "system");
        for (const QString &file : users())
            addFile(file, file.toUtf8());
    }
    static QStringList users() {
        return {".hidden"_s,
                ".old/deep/a.mid"_s,
                "My Songs/.c.mid"_s,
                "My Songs/Bridges/intro.mid"_s,
                "My Songs/Effects/applauso.mp3"_s,
                "My Songs/System/d.mid"_s,
                "My Songs/autoexec.bat"_s,
                "My Songs/b.mid"_s,
                "My Songs/no dot"_s,
                "README"_s,
                "System/Playlist/.e.pls"_s,
                "System/Playlist/f.pls"_s};
    }
};

} // namespace

/// The jobs without a window.
class TestJobs : public QObject
{
    Q_OBJECT

private slots:
    void everyProcedureEndsWithoutAPlayer() {
        SimulatedPlayer::disconnect();
        JobRecorder view;
        const std::vector<std::shared_ptr<MaintenanceJob>> jobs = {
            std::make_shared<SongBackup>(view),
            std::make_shared<SongRestore>(view),
            std::make_shared<SystemUpdate>(view, true),
            std::make_shared<Reinstall>(view, Reinstall::Songs::Stay),
            std::make_shared<Reinstall>(view, Reinstall::Songs::AreErased),
            std::make_shared<Reinstall>(view, Reinstall::Songs::ComeBack)};
        for (const auto &job : jobs) {
            view.shown.clear();
            const JobEnd end = job->run();
            QCOMPARE(int(end.kind), int(JobEnd::Refused));
            QCOMPARE(QString(end.step), "findPlayer"_s);
            QCOMPARE(view.shown, QStringList({"status "_s + Status::kLooking,
                                              "tell "_s + Titles::kDeviceNotFound + "|"_s + Texts::kConnectAgain}));
        }
    }

    void onlyTheReinstallationThatErasesAsksFirst() {
        JobRecorder view;
        QVERIFY(SongBackup(view).confirm() && SongRestore(view).confirm() && SystemUpdate(view, true).confirm());
        QVERIFY(Reinstall(view, Reinstall::Songs::Stay).confirm());
        QVERIFY(Reinstall(view, Reinstall::Songs::ComeBack).confirm());
        QVERIFY(view.shown.isEmpty());
        QVERIFY(!Reinstall(view, Reinstall::Songs::AreErased).confirm());
        view.answers[Titles::kErase] = JobAnswer::Yes;
        QVERIFY(Reinstall(view, Reinstall::Songs::AreErased).confirm());
        QCOMPARE(view.of("ask"_s),
                 QStringList({Titles::kErase + "|"_s + Texts::kErase, Titles::kErase + "|"_s + Texts::kErase}));
    }

    void backupAndRestoreShowTheirSteps() {
        SimulatedPlayer player;
        player.addFile("My Songs/a.mid"_s, "a");
        PcFolder pc;
        JobRecorder view;
        view.folder = pc.addFolder("backup"_s);
        QVERIFY(SongBackup(view).run().isDone());
        QCOMPARE(view.of("status"_s),
                 QStringList({Status::kLooking, Status::kLooking, Status::kReading, Status::kBackingUp}));
        QCOMPARE(view.of("tell"_s), QStringList(Titles::kDone + "|"_s + Titles::kDone));
        // The bar and STOP are gone before the box comes.
        QCOMPARE(view.shown.mid(view.shown.size() - 2).first(), "hide"_s);
        QCOMPARE(pc.files(), QStringList("backup/My Songs/a.mid"_s));

        QVERIFY(QFile::remove(player.path("My Songs/a.mid"_s)));
        JobRecorder back;
        back.folder = view.folder;
        QVERIFY(SongRestore(back).run().isDone());
        QCOMPARE(back.of("status"_s), QStringList({Status::kLooking, Status::kRestoring}));
        QCOMPARE(player.content("My Songs/a.mid"_s), QByteArray("a"));
    }

    void everythingOfTheUsersIsSavedBeforeTheDiskIsErased() {
        FullPlayer player;
        PcFolder pc;
        JobRecorder view;
        view.folder = pc.addFolder("backup"_s);
        view.then = [&view](const QString &line) { view.stopped |= line == "status "_s + Status::kDownloading; };
        qputenv("CORVIN_UPDATE_SERVER", "http://127.0.0.1:1");
        Reinstall(view, Reinstall::Songs::ComeBack).run();
        QVERIFY(view.of("tell"_s).isEmpty());
        QStringList expected = FullPlayer::users();
        // The described list takes it, and nobody brings it back.
        expected.append("CorvinUpdate/a.exe"_s);
        expected.sort();
        QStringList saved = filesBelow(view.folder);
        saved.replaceInStrings("System/playlist/"_s, "System/Playlist/"_s);
        saved.sort();
        QCOMPARE(saved, expected);
        QCOMPARE(contentOf(view.folder + "/My Songs/Effects/applauso.mp3"_s),
                 QByteArray("My Songs/Effects/applauso.mp3"));
    }

    void everythingOfTheUsersComesBackButNoOldUpdate() {
        PcFolder pc;
        JobRecorder view;
        {
            FullPlayer old;
            QVERIFY(SongBackup(view).saveEverything(Player(old.root()), pc.addFolder("backup"_s)).isDone());
        }
        SimulatedPlayer player;
        player.addFile("System/new.dat"_s);
        player.addFile("CorvinUpdate/new.exe"_s);
        const QString backup = pc.path("backup"_s);
        const int saved = SongRestore::countFiles(backup, [] { return true; });
        QCOMPARE(saved, FullPlayer::users().size() + 1);
        QVERIFY(SongRestore(view).bringBack(backup, Player(player.root()), saved).isDone());
        QStringList expected = FullPlayer::users() + words("System/new.dat CorvinUpdate/new.exe");
        expected.sort();
        QStringList files = player.files();
        files.replaceInStrings("System/playlist/"_s, "System/Playlist/"_s);
        files.sort();
        QCOMPARE(files, expected);
    }

    void fileThatDoesNotComeBackIsAFailureThoughTheLastOneDid() {
        SimulatedPlayer player;
        PcFolder pc;
        for (const QString &file : words("backup/My/a.mid backup/My/b.mid backup/My/c.mid backup/nodot"))
            pc.addFile(file);
        player.addFile("My/b.mid/in its way"_s);
        JobRecorder view;
        view.answers = {{Titles::kCopyExists, JobAnswer::Yes}, {Titles::kCopyFailed, JobAnswer::Yes}};
        const JobEnd end = SongRestore(view).bringBack(pc.path("backup"_s), Player(player.root()), 4);
        QCOMPARE(int(end.kind), int(JobEnd::Failed));
        QCOMPARE(player.files(), QStringList({"My/a.mid"_s, "My/b.mid/in its way"_s, "My/c.mid"_s, "nodot"_s}));
    }

    // A listing tells nothing of what it does not see.
    void backupThatHasLostAFileIsAFailureThoughTheRestCame() {
        const SimulatedPlayer player;
        PcFolder pc;
        pc.addFile("backup/My/a.mid"_s);
        JobRecorder view;
        const JobEnd end = SongRestore(view).bringBack(pc.path("backup"_s), Player(player.root()), 2);
        QCOMPARE(int(end.kind), int(JobEnd::Failed));
        QCOMPARE(player.files(), words("My/a.mid"));
    }

    void restoreFromAFolderThatHasGoneIsNotCalledDone() {
        const SimulatedPlayer player;
        const PcFolder pc;
        JobRecorder view;
        view.folder = pc.path("gone"_s);
        QCOMPARE(int(SongRestore(view).run().kind), int(JobEnd::Failed));
        QCOMPARE(view.of("tell"_s), QStringList(Titles::kBackupError + "|"_s + Texts::kBackupError));
    }

    void playerGoneBehindTheFolderDialogChangesNothing_data() {
        columns<QString>("job");
        row("backup", "backup"_s);
        row("restore", "restore"_s);
        row("reinstallation with the songs", "reinstall"_s);
    }
    void playerGoneBehindTheFolderDialogChangesNothing() {
        QFETCH(QString, job);
        SimulatedPlayer player;
        player.addFile("a.mid"_s, "on the player");
        PcFolder pc;
        pc.addFile("backup/old.mid"_s);
        JobRecorder view;
        view.folder = pc.path("backup"_s);
        view.answers = {{Titles::kBackupNotEmpty, JobAnswer::Yes}};
        view.then = [](const QString &line) {
            if (line.startsWith("choose"_s))
                SimulatedPlayer::disconnect();
        };
        const QMap<QString, std::shared_ptr<MaintenanceJob>> jobs = {
            {"backup"_s, std::make_shared<SongBackup>(view)},
            {"restore"_s, std::make_shared<SongRestore>(view)},
            {"reinstall"_s, std::make_shared<Reinstall>(view, Reinstall::Songs::ComeBack)}};
        QVERIFY(!jobs[job]->run().isDone());
        QCOMPARE(view.of("tell"_s), QStringList(Titles::kDeviceNotFound + "|"_s + Texts::kConnectAgain));
        QVERIFY(view.of("ask"_s).isEmpty());
        QCOMPARE(pc.files(), words("backup/old.mid"));
        QCOMPARE(player.files(), words("a.mid"));
    }

    void playlistsThatWereKeptAreRestoredWhereThePlayerHasThem_data() {
        columns<QString>("folder");
        row("as the program writes it", "System/Playlist"_s);
        row("in capitals", "SYSTEM/PLAYLIST"_s);
    }
    void playlistsThatWereKeptAreRestoredWhereThePlayerHasThem() {
        QFETCH(QString, folder);
        const Data data;
        SimulatedPlayer player;
        const Player found(player.root());
        KeptFiles kept(found, {0, 1, 1});
        const QString one = player.addFile("System/Playlist/one.pls"_s, "one");
        const QString two = player.addFile("System/Playlist/sub/Città.pls"_s, "two");
        QVERIFY(kept.keep(one, KeptFiles::Kind::Songs) && kept.keep(two, KeptFiles::Kind::Songs));
        // The new system.
        QVERIFY(QDir(player.path("System"_s)).removeRecursively());
        player.addFile(folder + "/x.dat"_s);
        JobRecorder view;
        view.folder = kept.folder();
        QVERIFY(SongRestore(view).run().isDone());
        QStringList expected = {folder + "/one.pls"_s, folder + "/sub/Città.pls"_s, folder + "/x.dat"_s};
        QCOMPARE(player.files(), expected);
        QCOMPARE(player.content(folder + "/one.pls"_s), QByteArray("one"));
    }

    void stopBetweenTheStepsOfABackupIsTold() {
        SimulatedPlayer player;
        player.addFile("a.mid"_s);
        PcFolder pc;
        JobRecorder view;
        view.folder = pc.addFolder("backup"_s);
        view.then = [&view](const QString &line) { view.stopped |= line == "status "_s + Status::kReading; };
        const JobEnd end = SongBackup(view).run();
        QVERIFY(!end.isDone());
        QCOMPARE(view.of("tell"_s), QStringList(Titles::kBackupError + "|"_s + Texts::kBackupError));
        QVERIFY(pc.files().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestJobs)
#include "tst_jobs.moc"
