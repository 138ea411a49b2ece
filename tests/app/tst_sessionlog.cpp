#include "app/sessionlog.h"

#include "disk/waitms.h"
#include "support/platform.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>

// A session log belongs to a whole process, so the sessions here are child processes: this program, started again with
// the name of what the session is to do.

namespace {

const QString kDateFormat = QStringLiteral("yyyy-MM-dd");
constexpr QtMsgType kUnknownType = static_cast<QtMsgType>(7);

void sayEveryLevel()
{
    qDebug() << "a debug text";
    qInfo() << "an info text";
    qWarning() << "a warning text";
    qCritical() << "a critical text";
    sessionMessageHandler(QtFatalMsg, QMessageLogContext(), QStringLiteral("a fatal text"));
    sessionMessageHandler(kUnknownType, QMessageLogContext(), QStringLiteral("a text of no level"));
    sessionMessageHandler(QtInfoMsg, QMessageLogContext(), QString());
    qInfo() << "Città :" << QStringLiteral("perché");
}

void sayLate()
{
    QDebug message = qInfo();
    message << "composed at" << QDateTime::currentDateTime().toString(QStringLiteral("hh:mm:ss.zzz"));
    waitMs(300);
    // Leaves here.
}

/// What the child process does. Returns its exit code.
int runSession(const QString &what, int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    qInfo() << "before the session";
    startSessionLog();
    QCoreApplication::setOrganizationName(QStringLiteral("Q-Arte"));
    QCoreApplication::setApplicationName(QStringLiteral("Corvin4Manager"));
    if (what == QLatin1String("levels"))
        sayEveryLevel();
    if (what == QLatin1String("late"))
        sayLate();
    if (what == QLatin1String("fatal"))
        qFatal("the end");
    qInfo() << "last line of the session";
    return 0;
}

struct Line
{
    QTime time;
    QString rest; ///< tag and text
};

} // namespace

class TestSessionLog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void bannerHasItsFiveLinesInOrder();
    void fileIsNamedAfterTheDayAndTheFolderAfterTheExecutable();
    void missingFolderIsMade();
    void onlyTheLastFolderIsMade();
    void folderThatCannotBeMadeIsTolerated();
    void fileThatCannotBeOpenedIsTolerated();
    void secondSessionOfADayIsAppended();
    void everyLevelHasItsTag();
    void emptyMessageLeavesStampAndTag();
    void textIsWrittenInTheSystemsEncoding();
    void linesEndAsTheSystemsLinesDo();
    void messagesStillReachTheHandlerBefore();
    void stampIsTheTimeOfTheWrite();
    void everyLineHasAStampWithMilliseconds();
    void fatalMessageIsWrittenBeforeTheEnd();
    void messageBeforeTheSessionIsNotInTheFile();
    void pathIsEmptyBeforeTheSession();

private:
    void runChild(const QString &what);
    QString logPath() const;
    QList<Line> lines() const;
    QStringList rests() const;

    std::unique_ptr<QTemporaryDir> m_home;
    QString m_dataHome;
    QString m_consoleOfChild;
    int m_exitCode = 0;
    QProcess::ExitStatus m_exitStatus = QProcess::NormalExit;
};

void TestSessionLog::init()
{
    m_home = std::make_unique<QTemporaryDir>();
#ifdef Q_OS_WIN
    // Its place is fixed for each user; the last folder is this test's own.
    const QDir own(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    QVERIFY(QDir(own).removeRecursively());
    m_dataHome = QFileInfo(own.path()).path();
#else
    m_dataHome = m_home->path();
#endif
}

void TestSessionLog::cleanup()
{
    m_home.reset();
}

void TestSessionLog::runChild(const QString &what)
{
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), m_dataHome);
    environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--session"), what});
    QVERIFY(child.waitForFinished());
    m_consoleOfChild = QString::fromUtf8(child.readAll());
    m_exitCode = child.exitCode();
    m_exitStatus = child.exitStatus();
}

QString TestSessionLog::logPath() const
{
    return m_dataHome + QStringLiteral("/tst_sessionlog/log_") + QDate::currentDate().toString(kDateFormat) +
           QStringLiteral(".txt");
}

QList<Line> TestSessionLog::lines() const
{
    QFile file(logPath());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QList<Line> found;
    const QStringList texts = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (const QString &text : texts) {
        if (!text.isEmpty())
            found.append({QTime::fromString(text.mid(1, 12), QStringLiteral("hh:mm:ss.zzz")), text.mid(15)});
    }
    return found;
}

QStringList TestSessionLog::rests() const
{
    QStringList found;
    const QList<Line> all = lines();
    for (const Line &line : all)
        found.append(line.rest);
    return found;
}

void TestSessionLog::bannerHasItsFiveLinesInOrder()
{
    runChild(QStringLiteral("nothing"));
    const QString stars(46, QLatin1Char('*'));
    const QStringList expected = {
        QStringLiteral("INF ") + stars,
        QStringLiteral("INF ***** START LOGGING SESSION KRT Rel, 3.0 *****"),
        QStringLiteral("INF ") + stars,
        QStringLiteral("INF WIN : \"%1\"").arg(QSysInfo::productVersion()),
        QStringLiteral("INF Log File : \"%1\"").arg(logPath()),
        QStringLiteral("INF last line of the session"),
    };
    QCOMPARE(rests(), expected);
    QCOMPARE(m_exitCode, 0);
}

void TestSessionLog::fileIsNamedAfterTheDayAndTheFolderAfterTheExecutable()
{
    runChild(QStringLiteral("nothing"));
#ifdef Q_OS_UNIX
    QCOMPARE(QDir(m_dataHome).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
             QStringList{QStringLiteral("tst_sessionlog")});
#endif
    const QStringList files = QDir(m_dataHome + QStringLiteral("/tst_sessionlog")).entryList(QDir::Files);
    QCOMPARE(files.size(), 1);
    QVERIFY(QRegularExpression(QStringLiteral("^log_\\d{4}-\\d{2}-\\d{2}\\.txt$")).match(files.first()).hasMatch());
}

void TestSessionLog::missingFolderIsMade()
{
    QVERIFY(!QFileInfo::exists(m_dataHome + QStringLiteral("/tst_sessionlog")));
    runChild(QStringLiteral("nothing"));
    QVERIFY(QFileInfo::exists(logPath()));
}

void TestSessionLog::onlyTheLastFolderIsMade()
{
    SKIP_ON_WINDOWS("the place of the folder is fixed");
    m_dataHome += QStringLiteral("/missing");
    runChild(QStringLiteral("nothing"));
    QCOMPARE(m_exitCode, 0);
    QVERIFY(!QFileInfo::exists(m_dataHome));
}

void TestSessionLog::folderThatCannotBeMadeIsTolerated()
{
    SKIP_ON_WINDOWS("the place of the folder is fixed");
    // A file where the folder's parent should be: it stops the super-user too.
    QFile obstacle(m_home->filePath(QStringLiteral("obstacle")));
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    m_dataHome = obstacle.fileName();
    runChild(QStringLiteral("levels"));
    QCOMPARE(m_exitStatus, QProcess::NormalExit);
    QCOMPARE(m_exitCode, 0);
    QVERIFY(m_consoleOfChild.contains(QStringLiteral("a warning text")));
    QVERIFY(!m_consoleOfChild.contains(QStringLiteral("device not open")));
}

void TestSessionLog::fileThatCannotBeOpenedIsTolerated()
{
    QVERIFY(QDir().mkpath(logPath()));
    runChild(QStringLiteral("levels"));
    QCOMPARE(m_exitStatus, QProcess::NormalExit);
    QCOMPARE(m_exitCode, 0);
    QVERIFY(m_consoleOfChild.contains(QStringLiteral("last line of the session")));
    QVERIFY(!m_consoleOfChild.contains(QStringLiteral("device not open")));
}

void TestSessionLog::secondSessionOfADayIsAppended()
{
    runChild(QStringLiteral("nothing"));
    const QStringList first = rests();
    runChild(QStringLiteral("nothing"));
    QCOMPARE(first.size(), 6);
    QCOMPARE(rests(), first + first);
}

void TestSessionLog::everyLevelHasItsTag()
{
    runChild(QStringLiteral("levels"));
    const QStringList expected = {
        QStringLiteral("DBG a debug text"),
        QStringLiteral("INF an info text"),
        QStringLiteral("WRN a warning text"),
        QStringLiteral("CRT a critical text"),
        QStringLiteral("FTL a fatal text"),
        QStringLiteral("a text of no level"),
        QStringLiteral("INF "),
        QStringLiteral("INF Città : \"perché\""),
    };
    QCOMPARE(rests().mid(5, expected.size()), expected);
}

void TestSessionLog::emptyMessageLeavesStampAndTag()
{
    runChild(QStringLiteral("levels"));
    QFile file(logPath());
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
    const QString text = QString::fromUtf8(file.readAll());
    const QRegularExpression emptyLine(QStringLiteral("^\\[\\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\] INF $"),
                                       QRegularExpression::MultilineOption);
    QVERIFY(emptyLine.match(text).hasMatch());
}

void TestSessionLog::textIsWrittenInTheSystemsEncoding()
{
    runChild(QStringLiteral("levels"));
    QFile file(logPath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains(QStringLiteral("Città").toLocal8Bit()));
}

void TestSessionLog::linesEndAsTheSystemsLinesDo()
{
    runChild(QStringLiteral("nothing"));
    QFile file(logPath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QCOMPARE(bytes.count('\n'), 6);
#ifdef Q_OS_WIN
    QCOMPARE(bytes.count("\r\n"), 6);
    QCOMPARE(bytes.count('\r'), 6);
#else
    QCOMPARE(bytes.count('\r'), 0);
#endif
}

void TestSessionLog::messagesStillReachTheHandlerBefore()
{
    runChild(QStringLiteral("levels"));
    const QStringList texts = {QStringLiteral("START LOGGING SESSION"), QStringLiteral("a debug text"),
                               QStringLiteral("an info text"), QStringLiteral("a fatal text")};
    for (const QString &text : texts)
        QCOMPARE(m_consoleOfChild.count(text), 1);
}

void TestSessionLog::stampIsTheTimeOfTheWrite()
{
    runChild(QStringLiteral("late"));
    const QList<Line> all = lines();
    QCOMPARE(all.size(), 7);
    const QString text = all.at(5).rest;
    QVERIFY2(text.startsWith(QStringLiteral("INF composed at \"")), qPrintable(text));
    const QTime composed = QTime::fromString(text.section(QLatin1Char('"'), 1, 1), QStringLiteral("hh:mm:ss.zzz"));
    QVERIFY(composed.isValid());
    constexpr int kDayMs = 24 * 60 * 60 * 1000;
    const int between = (composed.msecsTo(all.at(5).time) + kDayMs) % kDayMs;
    QVERIFY2(between >= 300 && between < 60000, qPrintable(QString::number(between)));
}

void TestSessionLog::everyLineHasAStampWithMilliseconds()
{
    runChild(QStringLiteral("levels"));
    QFile file(logPath());
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
    const QStringList texts = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(texts.size(), 14);
    const QRegularExpression stamp(QStringLiteral("^\\[\\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\] "));
    for (const QString &text : texts)
        QVERIFY2(stamp.match(text).hasMatch(), qPrintable(text));
}

void TestSessionLog::fatalMessageIsWrittenBeforeTheEnd()
{
    runChild(QStringLiteral("fatal"));
    QVERIFY(m_exitStatus == QProcess::CrashExit || m_exitCode != 0);
    QCOMPARE(rests().last(), QStringLiteral("FTL the end"));
    QVERIFY(m_consoleOfChild.contains(QStringLiteral("the end")));
}

void TestSessionLog::messageBeforeTheSessionIsNotInTheFile()
{
    runChild(QStringLiteral("nothing"));
    QVERIFY(m_consoleOfChild.contains(QStringLiteral("before the session")));
    QVERIFY(!rests().contains(QStringLiteral("INF before the session")));
}

void TestSessionLog::pathIsEmptyBeforeTheSession()
{
    QVERIFY(sessionLogPath().isEmpty());
}

int main(int argc, char **argv)
{
    if (argc == 3 && qstrcmp(argv[1], "--session") == 0)
        return runSession(QString::fromLocal8Bit(argv[2]), argc, argv);
    const QCoreApplication application(argc, argv);
    TestSessionLog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_sessionlog.moc"
