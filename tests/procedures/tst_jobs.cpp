#include "procedures/job.h"
#include "procedures/reinstall.h"
#include "procedures/songbackup.h"
#include "procedures/songrestore.h"
#include "procedures/systemupdate.h"
#include "support/boxtexts.h"
#include "support/files.h"
#include "support/jobrecorder.h"
#include "support/logcapture.h"
#include "support/simulatedplayer.h"

namespace {

/// Three steps of which one may end otherwise than well.
class ThreeSteps : private Steps<ThreeSteps>
{
public:
    JobRecorder view;
    QStringList ran;
    int endsAt = 0;
    JobEnd end;
    std::function<void()> during;

    JobEnd run() { return runSteps("ThreeSteps", view, kSteps); }
    JobEnd runWithOwnStop() { return runSteps("ThreeSteps", view, kSteps, Stop::IsLeftToTheSteps); }

private:
    friend class Steps<ThreeSteps>;
    JobEnd one() { return step(1); }
    JobEnd two() { return step(2); }
    JobEnd three() { return step(3); }
    JobEnd step(int number) {
        ran.append(QString::number(number));
        if (during)
            during();
        return number == endsAt ? end : JobEnd();
    }

    static constexpr std::initializer_list<Step> kSteps = {
        {"one", &ThreeSteps::one}, {"two", &ThreeSteps::two}, {"three", &ThreeSteps::three}};
};

} // namespace

/// The loop that runs the steps of every job, and the jobs without a window.
class TestJobs : public QObject
{
    Q_OBJECT

private slots:
    void stepsRunInTheirOrder() {
        ThreeSteps job;
        const LogCapture log;
        QVERIFY(job.run().isDone());
        QCOMPARE(job.ran, words("1 2 3"));
        QVERIFY(log.lines().isEmpty());
    }

    void runEndsAtTheStepThatDoesNotGoOn_data() {
        columns<int, QString, QStringList>("kind", "said", "logged");
        row("refused", int(JobEnd::Refused), QString(), QStringList());
        row("stopped", int(JobEnd::Stopped), QString(), QStringList("ThreeSteps : two stopped"_s));
        row("failed", int(JobEnd::Failed), QString(), QStringList("ThreeSteps : two failed"_s));
        row("failed at a step within", int(JobEnd::Failed), "makeFolders"_s,
            QStringList("ThreeSteps : makeFolders failed"_s));
    }
    void runEndsAtTheStepThatDoesNotGoOn() {
        QFETCH(int, kind);
        QFETCH(QString, said);
        ThreeSteps job;
        const QByteArray name = said.toLatin1();
        job.endsAt = 2;
        job.end = {static_cast<JobEnd::Kind>(kind), QLatin1String(name)};
        const LogCapture log;
        const JobEnd end = job.run();
        QCOMPARE(int(end.kind), kind);
        QCOMPARE(QString(end.step), said.isEmpty() ? "two"_s : said);
        QCOMPARE(end.failedAt(kMakingFolders), !said.isEmpty());
        QCOMPARE(job.ran, words("1 2"));
        QTEST(log.texts(), "logged");
    }

    void stopEndsTheRunBeforeTheNextStep() {
        ThreeSteps early;
        early.view.stopped = true;
        QCOMPARE(int(early.run().kind), int(JobEnd::Stopped));
        QVERIFY(early.ran.isEmpty());

        ThreeSteps between;
        between.during = [&between] { between.view.stopped = between.ran.size() == 2; };
        const JobEnd end = between.run();
        QCOMPARE(int(end.kind), int(JobEnd::Stopped));
        QCOMPARE(QString(end.step), "three"_s);
        QCOMPARE(between.ran, words("1 2"));
    }

    void stopIsLeftToStepsThatLookAtItThemselves() {
        ThreeSteps job;
        job.view.stopped = true;
        QVERIFY(job.runWithOwnStop().isDone());
        QCOMPARE(job.ran, words("1 2 3"));
    }

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
        QCOMPARE(pc.files(), QStringList("backup/My Songs/a.mid"_s));

        QVERIFY(QFile::remove(player.path("My Songs/a.mid"_s)));
        JobRecorder back;
        back.folder = view.folder;
        QVERIFY(SongRestore(back).run().isDone());
        QCOMPARE(back.of("status"_s), QStringList({Status::kLooking, Status::kRestoring}));
        QCOMPARE(player.content("My Songs/a.mid"_s), QByteArray("a"));
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
