#include "device/devicelocator.h"
#include "playertool/judge.h"
#include "playertool/makeplayer.h"
#include "playertool/report.h"
#include "playertool/snapshot.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTextCodec>
#include <QTextStream>

namespace {

enum ExitCode
{
    Success = 0,
    JudgedWrong = 1,
    CannotDo = 2,
};

void say(const QString &text)
{
    QTextStream(stdout) << text << Qt::endl;
}

int complain(const QString &text)
{
    QTextStream(stderr) << text << Qt::endl;
    return CannotDo;
}

int make(const QCommandLineParser &line, const QStringList &arguments)
{
    MakeOptions options;
    bool songsOk = true;
    bool seedOk = true;
    if (line.isSet(QStringLiteral("songs")))
        options.songs = line.value(QStringLiteral("songs")).toInt(&songsOk);
    if (line.isSet(QStringLiteral("seed")))
        options.seed = line.value(QStringLiteral("seed")).toUInt(&seedOk);
    if (!songsOk || !seedOk)
        return complain(QStringLiteral("--songs and --seed take whole numbers."));
    const MakeResult result = makePlayer(arguments.at(1), options);
    if (!result.error.isEmpty())
        return complain(result.error);
    const QString manifest = line.value(QStringLiteral("manifest"));
    if (!manifest.isEmpty() && !result.manifest.save(manifest))
        return complain(QStringLiteral("Cannot write %1").arg(manifest));
    say(QStringLiteral("Made a player of %1 files, %2 of them songs, in %3")
            .arg(result.files)
            .arg(result.manifest.songs.size())
            .arg(arguments.at(1)));
    return Success;
}

/// The program's own look-up, so that scripts use the player that the program will use.
int locate()
{
    const QString root = DeviceLocator().findDeviceRoot();
    if (root.isEmpty())
        return JudgedWrong;
    say(root);
    return Success;
}

int takeSnapshot(const QStringList &arguments)
{
    const Snapshot snapshot = Snapshot::take(arguments.at(1));
    if (!snapshot.save(arguments.at(2)))
        return complain(QStringLiteral("Cannot write %1").arg(arguments.at(2)));
    say(QStringLiteral("Noted %1 files").arg(snapshot.files.size()));
    return Success;
}

int reportOrJudge(const QCommandLineParser &line, const QStringList &arguments)
{
    Snapshot before;
    Manifest manifest;
    if (!Snapshot::load(arguments.at(1), before))
        return complain(QStringLiteral("No snapshot: %1").arg(arguments.at(1)));
    if (arguments.first() == QLatin1String("report")) {
        say(changesText(before, arguments.at(2)));
        return Success;
    }
    const QString file = line.value(QStringLiteral("manifest"));
    if (!file.isEmpty() && !Manifest::load(file, manifest))
        return complain(QStringLiteral("No manifest: %1").arg(file));
    const Verdict verdict = judge(before, arguments.at(2), manifest);
    say(verdictText(verdict));
    return verdict.isRight() ? Success : JudgedWrong;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    // File names on the player are Unicode, whatever locale the caller runs in.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    // The compression of songs tells of each one.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QCommandLineParser line;
    line.setApplicationDescription(QStringLiteral(
        "Makes a simulated player's disk, and tells what an optimisation did to it.\n\n"
        "  make <folder>                      fills an empty folder\n"
        "  locate                             prints the root of the connected player; ends with 1 without one\n"
        "  snapshot <folder> <file>           notes all files of the disk\n"
        "  report <snapshot-before> <folder>  prints what changed since\n"
        "  judge <snapshot-before> <folder>   ends with 0 only when the disk is optimised as it must be, else with 1"));
    line.addHelpOption();
    line.addOptions({{QStringLiteral("songs"), QStringLiteral("make: number of songs, 1500 to 200000."),
                      QStringLiteral("n"), QStringLiteral("1700")},
                     {QStringLiteral("seed"), QStringLiteral("make: equal seeds give equal disks."),
                      QStringLiteral("s"), QStringLiteral("1")},
                     {QStringLiteral("manifest"),
                      QStringLiteral("make writes, judge reads the truth about every song: a file outside the disk."),
                      QStringLiteral("file")}});
    line.addPositionalArgument(QStringLiteral("command"), QStringLiteral("make, locate, snapshot, report or judge"));
    line.process(application);
    const QStringList arguments = line.positionalArguments();
    const QString command = arguments.value(0);
    if (command == QLatin1String("locate") && arguments.size() == 1)
        return locate();
    if (command == QLatin1String("make") && arguments.size() == 2)
        return make(line, arguments);
    if (command == QLatin1String("snapshot") && arguments.size() == 3)
        return takeSnapshot(arguments);
    if ((command == QLatin1String("report") || command == QLatin1String("judge")) && arguments.size() == 3)
        return reportOrJudge(line, arguments);
    return complain(line.helpText());
}
