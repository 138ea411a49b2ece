#include "startupuser.h"

#include "support/platform.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

// The start-up builds what belongs to a whole process. Each run here is therefore a child: this program, started again
// with "--run", in which a timer made together with the application object plays the user, writes down what it sees
// and closes the window.

namespace {

const QString kDateFormat = QStringLiteral("yyyy-MM-dd");
#ifdef Q_OS_WIN
const QString kOrganization = QStringLiteral("Q-Arte");
const QString kApplication = QStringLiteral("Corvin4Manager");
#endif

} // namespace

class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void firstStartTakesTheSystemsLanguage_data();
    void firstStartTakesTheSystemsLanguage();
    void storedLanguageIsTakenAsItStands_data();
    void storedLanguageIsTakenAsItStands();
    void noSetCountsAsAFirstStart();
    void clickOnTheButtonIsKeptForTheNextStart();
    void logBeginsWithBannerSettingsAndLanguage();
    void logLiesInTheFolderOfTheExecutable();
    void twoStartsOfADayShareOneLog();
    void windowIsAPlainTopLevelWindow();
    void identityIsSet();
    void highDpiIsPrepared();
    void fontsAndPicturesAreLoaded();
    void exitCodeOfTheEventLoopIsReturned();
    void windowIsGoneWhenTheProgramReturns();
    void startsWithoutAPlaceForTheLog();
    void startsWithoutAPlaceForTheSettings();
    void programItselfStarts();

private:
    QProcessEnvironment environment(const QString &locale = QStringLiteral("it_IT.UTF-8")) const;
    void run(const QProcessEnvironment &environment);
    void storeLanguageValue(const QString &value);
    QString storedLine() const;
    QString dataHome() const;
    QString settingsPlace() const;
    QStringList logTexts(const QString &executable = QStringLiteral("tst_startup")) const;
    QString path(const QString &relative) const { return m_home->filePath(relative); }

    std::unique_ptr<QTemporaryDir> m_home;
    QJsonObject m_seen;
    QString m_console;
    int m_exitCode = -1;
};

void TestStartup::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkdir(path(QStringLiteral("data"))));
    QVERIFY(QDir().mkdir(path(QStringLiteral("config"))));
#ifdef Q_OS_WIN
    // Both have a fixed place for each user.
    QSettings(kOrganization, kApplication).clear();
    const QStringList executables = {QStringLiteral("tst_startup"), kApplication};
    for (const QString &executable : executables)
        QVERIFY(QDir(dataHome() + QLatin1Char('/') + executable).removeRecursively());
#endif
}

void TestStartup::cleanup()
{
    m_home.reset();
}

QProcessEnvironment TestStartup::environment(const QString &locale) const
{
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    result.insert(QStringLiteral("LC_ALL"), locale);
    result.insert(QStringLiteral("LANG"), locale);
    result.remove(QStringLiteral("LANGUAGE"));
    result.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    result.insert(QStringLiteral("HOME"), m_home->path());
    result.insert(QStringLiteral("XDG_DATA_HOME"), path(QStringLiteral("data")));
    result.insert(QStringLiteral("XDG_CONFIG_HOME"), path(QStringLiteral("config")));
    result.insert(QStringLiteral("CORVIN_VOLUMES"), QStringLiteral("/nonexistent"));
    result.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    result.insert(QStringLiteral("TEST_REPORT"), path(QStringLiteral("report.json")));
    return result;
}

void TestStartup::run(const QProcessEnvironment &environment)
{
    QFile::remove(path(QStringLiteral("report.json")));
    QProcess child;
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--run")});
    QVERIFY(child.waitForFinished());
    m_console = QString::fromUtf8(child.readAll());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    m_exitCode = child.exitCode();
    QFile report(path(QStringLiteral("report.json")));
    QVERIFY2(report.open(QIODevice::ReadOnly), qPrintable(m_console));
    m_seen = QJsonDocument::fromJson(report.readAll()).object();
}

#ifdef Q_OS_WIN
QString TestStartup::dataHome() const
{
    return QFileInfo(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).path();
}

QString TestStartup::settingsPlace() const
{
    return QStringLiteral("\\\\HKEY_CURRENT_USER\\\\Software\\\\Q-Arte\\\\Corvin4Manager"); // as the log escapes it
}

void TestStartup::storeLanguageValue(const QString &value)
{
    QSettings(kOrganization, kApplication).setValue(QStringLiteral("Application/Language"), value);
}

QString TestStartup::storedLine() const
{
    const QVariant value = QSettings(kOrganization, kApplication).value(QStringLiteral("Application/Language"));
    return value.isValid() ? QStringLiteral("Language=") + value.toString() : QStringLiteral("no settings");
}
#else
QString TestStartup::dataHome() const
{
    return path(QStringLiteral("data"));
}

QString TestStartup::settingsPlace() const
{
    return path(QStringLiteral("config/Q-Arte/Corvin4Manager.conf"));
}

void TestStartup::storeLanguageValue(const QString &value)
{
    QVERIFY(QDir().mkpath(path(QStringLiteral("config/Q-Arte"))));
    QFile settings(path(QStringLiteral("config/Q-Arte/Corvin4Manager.conf")));
    QVERIFY(settings.open(QIODevice::WriteOnly));
    settings.write("[Application]\nLanguage=" + value.toUtf8() + '\n');
}

QString TestStartup::storedLine() const
{
    QFile settings(path(QStringLiteral("config/Q-Arte/Corvin4Manager.conf")));
    if (!settings.open(QIODevice::ReadOnly))
        return QStringLiteral("no settings file");
    return QString::fromUtf8(settings.readAll()).trimmed().section(QLatin1Char('\n'), -1);
}
#endif

QStringList TestStartup::logTexts(const QString &executable) const
{
    QFile file(dataHome() +
               QStringLiteral("/%1/log_%2.txt").arg(executable, QDate::currentDate().toString(kDateFormat)));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QStringList texts;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    constexpr int kStampLength = 15;
    for (const QString &line : lines)
        texts.append(line.mid(kStampLength));
    return texts;
}

void TestStartup::firstStartTakesTheSystemsLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("italianTexts");
    QTest::newRow("English") << QStringLiteral("en_US.UTF-8") << QStringLiteral("en") << false;
    QTest::newRow("German") << QStringLiteral("de_DE.UTF-8") << QStringLiteral("de") << false;
    QTest::newRow("Italian") << QStringLiteral("it_IT.UTF-8") << QStringLiteral("it") << true;
    QTest::newRow("Spanish, no translation") << QStringLiteral("es_ES.UTF-8") << QStringLiteral("es") << true;
}

void TestStartup::firstStartTakesTheSystemsLanguage()
{
    QFETCH(QString, locale);
    QFETCH(QString, code);
    QFETCH(bool, italianTexts);
    run(environment(locale));
    QCOMPARE(storedLine(), QLatin1String("Language=lang_") + code);
    QCOMPARE(m_seen.value(QLatin1String("button")).toString(), code.toUpper());
    QCOMPARE(m_seen.value(QLatin1String("text")).toString() == QLatin1String("Interrompi Operazione"), italianTexts);
}

void TestStartup::storedLanguageIsTakenAsItStands_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("italianTexts");
    QTest::newRow("known") << QStringLiteral("lang_de") << QStringLiteral("DE") << false;
    QTest::newRow("without a translation") << QStringLiteral("lang_fr") << QStringLiteral("FR") << true;
    QTest::newRow("nonsense") << QStringLiteral("qwerty") << QStringLiteral("TY") << true;
    QTest::newRow("empty") << QString() << QString() << true;
}

void TestStartup::storedLanguageIsTakenAsItStands()
{
    QFETCH(QString, value);
    QFETCH(bool, italianTexts);
    storeLanguageValue(value);
    run(environment(QStringLiteral("en_US.UTF-8")));
    QCOMPARE(storedLine(), QLatin1String("Language=") + value);
    QTEST(m_seen.value(QLatin1String("button")).toString(), "button");
    QCOMPARE(m_seen.value(QLatin1String("text")).toString() == QLatin1String("Interrompi Operazione"), italianTexts);
    QVERIFY(logTexts().contains(QStringLiteral("INF Start Application/Language : \"%1\"").arg(value)));
}

void TestStartup::noSetCountsAsAFirstStart()
{
    storeLanguageValue(QStringLiteral("no_set"));
    run(environment(QStringLiteral("de_AT.UTF-8")));
    QCOMPARE(storedLine(), QStringLiteral("Language=lang_de"));
    QCOMPARE(m_seen.value(QLatin1String("button")).toString(), QStringLiteral("DE"));
}

void TestStartup::clickOnTheButtonIsKeptForTheNextStart()
{
    QProcessEnvironment withClick = environment(QStringLiteral("es_ES.UTF-8"));
    withClick.insert(QStringLiteral("TEST_CLICKS"), QStringLiteral("1"));
    run(withClick);
    QCOMPARE(storedLine(), QStringLiteral("Language=lang_it"));
    QCOMPARE(m_seen.value(QLatin1String("button")).toString(), QStringLiteral("IT"));

    run(environment(QStringLiteral("es_ES.UTF-8")));
    QCOMPARE(m_seen.value(QLatin1String("button")).toString(), QStringLiteral("IT"));
}

void TestStartup::logBeginsWithBannerSettingsAndLanguage()
{
    run(environment(QStringLiteral("en_US.UTF-8")));
    const QStringList texts = logTexts();
    const QString stars = QLatin1String("INF ") + QString(46, QLatin1Char('*'));
    const QStringList expected = {
        stars,
        QStringLiteral("INF ***** START LOGGING SESSION KRT Rel, 3.0 *****"),
        stars,
        QStringLiteral("INF WIN : \"%1\"").arg(QSysInfo::productVersion()),
        QStringLiteral("INF Log File : \"%1\"").arg(m_seen.value(QLatin1String("log")).toString()),
        QStringLiteral("INF Application Settings : \"%1\"").arg(settingsPlace()),
        QStringLiteral("INF Start Application/Language : \"lang_en\""),
    };
    QCOMPARE(texts.mid(0, expected.size()), expected);
}

void TestStartup::logLiesInTheFolderOfTheExecutable()
{
    run(environment());
    const QString expected = dataHome() + QStringLiteral("/tst_startup/log_") +
                             QDate::currentDate().toString(kDateFormat) + QLatin1String(".txt");
    QCOMPARE(m_seen.value(QLatin1String("log")).toString(), expected);
    QVERIFY(QFileInfo::exists(expected));
    QVERIFY(!QFileInfo::exists(dataHome() + QStringLiteral("/Q-Arte")));
    QVERIFY(!QFileInfo::exists(dataHome() + QStringLiteral("/Corvin4Manager")));
}

void TestStartup::twoStartsOfADayShareOneLog()
{
    run(environment());
    const QStringList first = logTexts();
    run(environment());
    QCOMPARE(logTexts().mid(0, first.size()), first);
    QCOMPARE(logTexts().filter(QStringLiteral("START LOGGING SESSION")).size(), 2);
}

void TestStartup::windowIsAPlainTopLevelWindow()
{
    run(environment());
    QVERIFY(m_seen.value(QLatin1String("flagsAsPlainWindow")).toBool());
    QVERIFY(!m_seen.value(QLatin1String("hasParent")).toBool(true));
    QCOMPARE(m_seen.value(QLatin1String("title")).toString(), QStringLiteral("Corvin4 Manager"));
}

void TestStartup::identityIsSet()
{
    run(environment());
    QCOMPARE(m_seen.value(QLatin1String("organization")).toString(), QStringLiteral("Q-Arte"));
    QCOMPARE(m_seen.value(QLatin1String("application")).toString(), QStringLiteral("Corvin4Manager"));
}

void TestStartup::highDpiIsPrepared()
{
    run(environment());
    QVERIFY(m_seen.value(QLatin1String("highDpiScaling")).toBool());
    QVERIFY(m_seen.value(QLatin1String("highDpiPixmaps")).toBool());
    QVERIFY(m_seen.value(QLatin1String("scaleAsItIs")).toBool());
    // Set too late, the attribute is refused with this complaint.
    QVERIFY(!m_console.contains(QStringLiteral("must be set before QCoreApplication is created")));
}

void TestStartup::fontsAndPicturesAreLoaded()
{
    run(environment());
    QCOMPARE(m_seen.value(QLatin1String("titleFont")).toString(), QStringLiteral("Bebas Neue"));
    QVERIFY(m_seen.value(QLatin1String("background")).toBool());
}

void TestStartup::exitCodeOfTheEventLoopIsReturned()
{
    QProcessEnvironment withCode = environment();
    withCode.insert(QStringLiteral("TEST_EXIT_CODE"), QStringLiteral("7"));
    run(withCode);
    QCOMPARE(m_exitCode, 7);
}

void TestStartup::windowIsGoneWhenTheProgramReturns()
{
    run(environment());
    QVERIFY(m_exitCode != kExitCodeWindowAlive);
    QCOMPARE(m_exitCode, 0);
}

void TestStartup::startsWithoutAPlaceForTheLog()
{
    SKIP_ON_WINDOWS("the place of the folder is fixed");
    QFile obstacle(path(QStringLiteral("obstacle")));
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    QProcessEnvironment blocked = environment();
    blocked.insert(QStringLiteral("XDG_DATA_HOME"), obstacle.fileName());
    run(blocked);
    QCOMPARE(m_exitCode, 0);
    QCOMPARE(m_seen.value(QLatin1String("title")).toString(), QStringLiteral("Corvin4 Manager"));
    QVERIFY(m_console.contains(QStringLiteral("START LOGGING SESSION")));
}

void TestStartup::startsWithoutAPlaceForTheSettings()
{
    SKIP_ON_WINDOWS("the settings are in the registry");
    QFile obstacle(path(QStringLiteral("obstacle")));
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    QProcessEnvironment blocked = environment(QStringLiteral("de_DE.UTF-8"));
    blocked.insert(QStringLiteral("XDG_CONFIG_HOME"), obstacle.fileName());
    run(blocked);
    QCOMPARE(m_exitCode, 0);
    QCOMPARE(m_seen.value(QLatin1String("button")).toString(), QStringLiteral("DE"));
}

void TestStartup::programItselfStarts()
{
    QProcessEnvironment own = environment(QStringLiteral("en_US.UTF-8"));
    own.remove(QStringLiteral("TEST_REPORT"));
    QProcess program;
    program.setProcessEnvironment(own);
    program.start(QStringLiteral(CORVIN_PROGRAM), QStringList());
    QVERIFY(program.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(logTexts(QStringLiteral("Corvin4Manager"))
                                 .contains(QStringLiteral("INF Start Application/Language : \"lang_en\"")),
                             30000);
    QCOMPARE(program.state(), QProcess::Running);
    program.kill();
    QVERIFY(program.waitForFinished());
}

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--run") == 0)
        return runProgramWithUser(argc, argv);
    const QCoreApplication application(argc, argv);
    TestStartup test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_startup.moc"
