#include "app/sessionlog.h"

#include "childsession.h"
#include "disk/waitms.h"
#include "support/platform.h"

#ifdef Q_OS_LINUX
#include <cstdio>
#include <unistd.h>
#endif

constexpr QtMsgType kUnknownType = static_cast<QtMsgType>(7);
const QString kExecutable = "tst_sessionlog"_s;

static void sayEveryLevel() {
    qDebug() << "a debug text";
    qInfo() << "an info text";
    qWarning() << "a warning text";
    qCritical() << "a critical text";
    sessionMessageHandler(QtFatalMsg, QMessageLogContext(), "a fatal text"_s);
    sessionMessageHandler(kUnknownType, QMessageLogContext(), "a text of no level"_s);
    sessionMessageHandler(QtInfoMsg, QMessageLogContext(), QString());
    qInfo() << "Città :"
            << "perché"_s;
}

static void sayLate() {
    QDebug message = qInfo();
    message << "composed at" << QDateTime::currentDateTime().toString("hh:mm:ss.zzz"_s);
    waitMs(300);
    // Leaves here.
}

/// What the child process does. Returns its exit code.
static int runSession(const QString &what, int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    qInfo() << "before the session";
    startSessionLog();
    QCoreApplication::setOrganizationName("Q-Arte"_s);
    QCoreApplication::setApplicationName("Corvin4Manager"_s);
    if (what == "levels"_s)
        sayEveryLevel();
    else if (what == "late"_s)
        sayLate();
    else if (what == "fatal"_s)
        qFatal("the end");
    qInfo() << "last line of the session";
    return 0;
}

#ifdef Q_OS_LINUX
/// Runs when all static objects of the program are gone, and says which log is still open then.
__attribute__((destructor)) static void tellOpenLogs() {
    for (int file = 0; file < 100; ++file) {
        char target[4096] = {};
        const QByteArray link = "/proc/self/fd/" + QByteArray::number(file);
        if (readlink(link.constData(), target, sizeof target - 1) > 0 && QByteArray(target).contains("/log_"))
            std::fprintf(stderr, "still open: %s\n", target);
    }
    std::fputs("static objects are gone\n", stderr);
}
#endif

class TestSessionLog : public QObject
{
    Q_OBJECT

    std::optional<QTemporaryDir> home;
    QString dataHome;
    Child child;

    void runSession(const char *what) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_DATA_HOME"_s, dataHome);
        child = runChild({"--session"_s, QString::fromLatin1(what)}, environment);
    }
    QString logPath() const { return logOfToday(dataHome, kExecutable); }
    QStringList texts() const { return logTexts(logPath()); }
    void verifyThatTheSessionRanWithoutItsLog(const QString &text) const {
        QCOMPARE(child.exitStatus, QProcess::NormalExit);
        QCOMPARE(child.exitCode, 0);
        QVERIFY(child.console.contains(text));
        QVERIFY(!child.console.contains("device not open"_s));
    }

private slots:
    void init() {
        home.emplace();
#ifdef Q_OS_WIN
        // Its place is fixed for each user; the last folder is this test's own.
        const QDir own(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
        QVERIFY(QDir(own).removeRecursively());
        dataHome = QFileInfo(own.path()).path();
#else
        dataHome = home->path();
#endif
    }

    void bannerHasItsFiveLinesInOrder() {
        runSession("nothing");
        QCOMPARE(texts(), bannerOf(logPath()) + QStringList("INF last line of the session"_s));
        QCOMPARE(child.exitCode, 0);
    }

    void missingFolderIsMadeNamedAfterTheExecutableAndItsFileAfterTheDay() {
        QVERIFY(!QFileInfo::exists(QFileInfo(logPath()).path()));
        runSession("nothing");
        const QFileInfo log(logPath());
        QCOMPARE(filesBelow(log.path()), QStringList(log.fileName()));
#ifdef Q_OS_UNIX
        QCOMPARE(entriesBelow(dataHome), QStringList({kExecutable, kExecutable + QLatin1Char('/') + log.fileName()}));
#endif
    }

    void onlyTheLastFolderIsMade() {
        SKIP_ON_WINDOWS("the place of the folder is fixed");
        dataHome += "/missing"_s;
        runSession("nothing");
        QCOMPARE(child.exitCode, 0);
        QVERIFY(!QFileInfo::exists(dataHome));
    }

    void folderThatCannotBeMadeIsTolerated() {
        SKIP_ON_WINDOWS("the place of the folder is fixed");
        // A file where the folder's parent should be: it stops the super-user too.
        dataHome = putFile(home->filePath("obstacle"_s));
        runSession("levels");
        verifyThatTheSessionRanWithoutItsLog("a warning text"_s);
    }

    void fileThatCannotBeOpenedIsTolerated() {
        QVERIFY(QDir().mkpath(logPath()));
        runSession("levels");
        verifyThatTheSessionRanWithoutItsLog("last line of the session"_s);
    }

    void secondSessionOfADayIsAppended() {
        runSession("nothing");
        const QStringList first = texts();
        runSession("nothing");
        QCOMPARE(first.size(), 6);
        QCOMPARE(texts(), first + first);
    }

    void everyLevelHasItsTag() {
        runSession("levels");
        QStringList expected = {"DBG a debug text"_s, "INF an info text"_s, "WRN a warning text"_s};
        expected += {"CRT a critical text"_s, "FTL a fatal text"_s, "a text of no level"_s};
        expected += {"INF "_s, "INF Città : \"perché\""_s};
        QCOMPARE(texts().mid(5, expected.size()), expected);
        // The text is written in the system's encoding.
        QVERIFY(contentOf(logPath()).contains("Città"_s.toLocal8Bit()));
    }

    void linesEndAsTheSystemsLinesDo() {
        runSession("nothing");
        const QByteArray bytes = contentOf(logPath());
        QCOMPARE(bytes.count('\n'), 6);
#ifdef Q_OS_WIN
        QCOMPARE(bytes.count("\r\n"), 6);
        QCOMPARE(bytes.count('\r'), 6);
#else
        QCOMPARE(bytes.count('\r'), 0);
#endif
    }

    void messagesStillReachTheHandlerBefore() {
        runSession("levels");
        for (const char *text : {"START LOGGING SESSION", "a debug text", "an info text", "a fatal text"})
            QCOMPARE(child.console.count(QLatin1String(text)), 1);
    }

    void stampIsTheTimeOfTheWrite() {
        runSession("late");
        const QStringList lines = logLines(logPath());
        QCOMPARE(lines.size(), 7);
        const QString text = texts().at(5);
        QVERIFY2(text.startsWith("INF composed at \""_s), qPrintable(text));
        const QTime composed = QTime::fromString(text.section(QLatin1Char('"'), 1, 1), "hh:mm:ss.zzz"_s);
        const QTime written = QTime::fromString(lines.at(5).mid(1, 12), "hh:mm:ss.zzz"_s);
        QVERIFY(composed.isValid());
        constexpr int kDayMs = 24 * 60 * 60 * 1000;
        const int between = (composed.msecsTo(written) + kDayMs) % kDayMs;
        QVERIFY2(between >= 300 && between < 60000, qPrintable(QString::number(between)));
    }

    void everyLineHasAStampWithMillisecondsTheEmptyOneToo() {
        runSession("levels");
        const QStringList lines = logLines(logPath());
        QCOMPARE(lines.size(), 14);
        const QRegularExpression stamp("^\\[\\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\] "_s);
        QCOMPARE(lines.filter(stamp), lines);
        const QRegularExpression emptyMessage(stamp.pattern() + "INF $"_s);
        QCOMPARE(lines.filter(emptyMessage).size(), 1);
    }

    void fileOfTheLogIsClosedWhenTheStaticObjectsGo() {
        SKIP_ON_WINDOWS("what a process has open is looked up in its /proc");
        runSession("nothing");
        QVERIFY(child.console.contains("static objects are gone"_s));
        QVERIFY2(!child.console.contains("still open"_s), qPrintable(child.console));
    }

    void fatalMessageIsWrittenBeforeTheEnd() {
        runSession("fatal");
        QVERIFY(child.exitStatus == QProcess::CrashExit || child.exitCode != 0);
        QCOMPARE(texts().last(), "FTL the end"_s);
        QVERIFY(child.console.contains("the end"_s));
    }

    void messageBeforeTheSessionIsNotInTheFile() {
        QVERIFY(sessionLogPath().isEmpty());
        runSession("nothing");
        QVERIFY(child.console.contains("before the session"_s));
        QVERIFY(!texts().contains("INF before the session"_s));
    }
};

int main(int argc, char **argv) {
    if (argc == 3 && qstrcmp(argv[1], "--session") == 0)
        return runSession(QString::fromLocal8Bit(argv[2]), argc, argv);
    const QCoreApplication application(argc, argv);
    TestSessionLog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_sessionlog.moc"
