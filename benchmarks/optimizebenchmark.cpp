#include "programrun.h"

#include "playertool/judge.h"
#include "playertool/makeplayer.h"
#include "playertool/snapshot.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QTextCodec>
#include <QTextStream>

#include <cstring>

namespace {

constexpr char kMeasure[] = "--measure"; ///< internal: this process is the program that is measured
constexpr char kReport[] = "--report";   ///< the same on the player that is connected, as one line of JSON for scripts

struct Limits
{
    qint64 totalMs = 60000;
    qint64 gapMs = 200;
};

void say(const QString &text)
{
    QTextStream(stdout) << text << Qt::endl;
}

/// The measured process prints what it found; its end says whether the limits held.
int measure(int argc, char **argv, const Limits &limits)
{
    const QApplication application(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    const ProgramRun run = runOptimisation();
    if (!run.finished || run.failCode != 0) {
        say(QStringLiteral("FAILED: the optimisation did not reach its result page in success (code %1)")
                .arg(run.failCode));
        return 2;
    }
    say(QStringLiteral("%1 %2  step").arg(QStringLiteral("time ms"), 9).arg(QStringLiteral("gap ms"), 8));
    for (const GapMeter::Step &step : run.steps) {
        say(QStringLiteral("%1 %2  %3").arg(step.totalMs(), 9).arg(step.longestGapMs, 8).arg(step.name));
        if (step.longestGapMs > limits.gapMs)
            say(QStringLiteral("                    over the limit at: ") + step.worstPlace.simplified());
    }
    say(QStringLiteral("From the program's start to the result page: %1 ms (limit %2), the optimisation alone %3 ms")
            .arg(run.sinceStartMs)
            .arg(limits.totalMs)
            .arg(run.optimisationMs));
    say(QStringLiteral("Longest gap between processed events: %1 ms (limit %2)")
            .arg(run.longestGapMs)
            .arg(limits.gapMs));
    return run.sinceStartMs > limits.totalMs || run.longestGapMs > limits.gapMs ? 1 : 0;
}

/// The most memory that this process has held, in kB.
qint64 peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    const int at = text.indexOf("VmHWM:");
    return at < 0 ? 0 : text.mid(at + 6).simplified().split(' ').first().toLongLong();
}

int report(int argc, char **argv)
{
    constexpr double kNsPerMs = 1e6;
    const QApplication application(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    const ProgramRun run = runOptimisation();
    QJsonObject steps;
    for (const GapMeter::Step &step : run.steps)
        steps.insert(step.name, double(step.totalNs) / kNsPerMs);
    const QJsonObject found{{QStringLiteral("good"), run.finished && run.failCode == 0},
                            {QStringLiteral("run"), double(run.optimisationMs)},
                            {QStringLiteral("gap"), double(run.longestGapMs)},
                            {QStringLiteral("memory"), double(peakMemory())},
                            {QStringLiteral("steps"), steps}};
    say(QString::fromUtf8(QJsonDocument(found).toJson(QJsonDocument::Compact)));
    return 0;
}

QProcessEnvironment environmentFor(const QTemporaryDir &home, const QString &player)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!environment.contains(QStringLiteral("QT_QPA_PLATFORM")))
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("CORVIN_VOLUMES"), player);
    for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        environment.insert(QString::fromLatin1(name), home.path());
    return environment;
}

int runMeasured(const QTemporaryDir &home, const QString &player, const Limits &limits)
{
    QProcess program;
    program.setProcessEnvironment(environmentFor(home, player));
    program.setProcessChannelMode(QProcess::ForwardedOutputChannel);
    program.setStandardErrorFile(home.filePath(QStringLiteral("messages")));
    program.start(QCoreApplication::applicationFilePath(),
                  {QString::fromLatin1(kMeasure), QString::number(limits.totalMs), QString::number(limits.gapMs)});
    program.waitForFinished(-1);
    return program.exitStatus() == QProcess::NormalExit ? program.exitCode() : 2;
}

int benchmark(const QCommandLineParser &line)
{
    Limits limits;
    limits.totalMs = line.value(QStringLiteral("max-ms")).toLongLong();
    limits.gapMs = line.value(QStringLiteral("max-gap-ms")).toLongLong();
    MakeOptions options;
    options.songs = line.value(QStringLiteral("songs")).toInt();
    const QTemporaryDir home;
    const QString player = home.filePath(QStringLiteral("player"));
    QDir().mkpath(player);
    const MakeResult made = makePlayer(player, options);
    if (!made.error.isEmpty()) {
        say(made.error);
        return 2;
    }
    say(QStringLiteral("A player of %1 songs, %2 files").arg(made.manifest.songs.size()).arg(made.files));
    const bool judged = line.isSet(QStringLiteral("judge"));
    const Snapshot before = judged ? Snapshot::take(player) : Snapshot();
    const int result = runMeasured(home, player, limits);
    if (!judged)
        return result;
    const Verdict verdict = judge(before, player, made.manifest);
    say(verdictText(verdict));
    return verdict.isRight() ? result : 2;
}

} // namespace

/// Measures the optimisation of a large archive from the program's start: how long it takes, and how long the window
/// does not answer meanwhile. Ends with 0 when both keep their limits.
int main(int argc, char **argv)
{
    if (argc == 4 && std::strcmp(argv[1], kMeasure) == 0) {
        Limits limits;
        limits.totalMs = QByteArray(argv[2]).toLongLong();
        limits.gapMs = QByteArray(argv[3]).toLongLong();
        return measure(argc, argv, limits);
    }
    if (argc == 2 && std::strcmp(argv[1], kReport) == 0)
        return report(argc, argv);
    const QCoreApplication application(argc, argv);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QCommandLineParser line;
    line.setApplicationDescription(QStringLiteral("Measures the optimisation of a large archive, window included."));
    line.addHelpOption();
    line.addOptions(
        {{QStringLiteral("songs"), QStringLiteral("number of songs"), QStringLiteral("n"), QStringLiteral("20000")},
         {QStringLiteral("max-ms"), QStringLiteral("limit from the start to the result page"), QStringLiteral("ms"),
          QStringLiteral("60000")},
         {QStringLiteral("max-gap-ms"), QStringLiteral("limit between two processed events"), QStringLiteral("ms"),
          QStringLiteral("200")},
         {QStringLiteral("judge"), QStringLiteral("also judge what stands on the disk afterwards")}});
    line.process(application);
    return benchmark(line);
}
