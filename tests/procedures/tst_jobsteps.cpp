#include "procedures/job.h"
#include "support/jobrecorder.h"
#include "support/logcapture.h"

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

/// The loop that runs the steps of every job.
class TestJobSteps : public QObject
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
};

QTEST_GUILESS_MAIN(TestJobSteps)
#include "tst_jobsteps.moc"
