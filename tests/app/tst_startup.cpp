#include "childsession.h"
#include "startupuser.h"

#include "support/boxtexts.h"
#include "support/platform.h"

// The start-up builds what belongs to a whole process. Each run here is therefore a child: this program, started again
// with "--run", in which a timer made together with the application object plays the user, writes down what it sees
// and closes the window.

namespace {

const QString kSettings = "config/Q-Arte/Corvin4Manager.conf"_s;
const QString kOwn = "tst_startup"_s;
const QString kProgram = "Corvin4Manager"_s;
#ifdef Q_OS_WIN
const QString kKey = "Application/Language"_s;
#endif

} // namespace

class TestStartup : public QObject
{
    Q_OBJECT

    using Variables = QMap<QString, QString>;

    std::optional<PcFolder> home;
    Child child;
    QJsonObject report;

    QProcessEnvironment environment(const QString &locale) const
    {
        QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
        result.remove("LANGUAGE"_s);
        for (const char *name : {"LC_ALL", "LANG"})
            result.insert(QLatin1String(name), locale + ".UTF-8"_s);
        result.insert("QT_QPA_PLATFORM"_s, "offscreen"_s);
        result.insert("HOME"_s, home->path());
        result.insert("XDG_DATA_HOME"_s, home->path("data"_s));
        result.insert("XDG_CONFIG_HOME"_s, home->path("config"_s));
        result.insert("CORVIN_VOLUMES"_s, "/nonexistent"_s);
        return result;
    }
    void run(const QString &locale = "it_IT"_s, const Variables &variables = {})
    {
        const QString path = home->path("report.json"_s);
        QFile::remove(path);
        QProcessEnvironment variablesOfRun = environment(locale);
        variablesOfRun.insert("TEST_REPORT"_s, path);
        for (auto variable = variables.begin(); variable != variables.end(); ++variable)
            variablesOfRun.insert(variable.key(), variable.value());
        child = runChild({"--run"_s}, variablesOfRun);
        QCOMPARE(child.exitStatus, QProcess::NormalExit);
        report = QJsonDocument::fromJson(contentOf(path)).object();
        QVERIFY2(!report.isEmpty(), qPrintable(child.console));
    }
    /// What the user saw; a yes or no is "true" or "false".
    QString seen(const char *what) const { return report.value(QLatin1String(what)).toVariant().toString(); }
    bool textsAreItalian() const { return seen("text") == Titles::kStop; }

#ifdef Q_OS_WIN
    static QString dataHome()
    {
        return QFileInfo(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).path();
    }
    static QString settingsPlace()
    {
        return "\\\\HKEY_CURRENT_USER\\\\Software\\\\Q-Arte\\\\Corvin4Manager"_s; // as the log escapes it
    }
    static void storeLanguageValue(const QString &value)
    {
        QSettings("Q-Arte"_s, kProgram).setValue(kKey, value);
    }
    static QString storedLine()
    {
        const QVariant value = QSettings("Q-Arte"_s, kProgram).value(kKey);
        return value.isValid() ? "Language="_s + value.toString() : "no settings"_s;
    }
#else
    QString dataHome() const
    {
        return home->path("data"_s);
    }
    QString settingsPlace() const
    {
        return home->path(kSettings);
    }
    void storeLanguageValue(const QString &value)
    {
        home->addFile(kSettings, "[Application]\nLanguage=" + value.toUtf8() + '\n');
    }
    QString storedLine() const
    {
        return QString::fromUtf8(home->content(kSettings)).trimmed().section(QLatin1Char('\n'), -1);
    }
#endif
    QString logPath() const
    {
        return logOfToday(dataHome(), kOwn);
    }

private slots:
    void init()
    {
        home.emplace();
        home->addFolder("data"_s);
        home->addFolder("config"_s);
#ifdef Q_OS_WIN
        // Both have a fixed place for each user.
        QSettings("Q-Arte"_s, kProgram).clear();
        for (const QString &executable : {kOwn, kProgram})
            QVERIFY(QDir(dataHome() + QLatin1Char('/') + executable).removeRecursively());
#endif
    }

    void firstStartTakesTheSystemsLanguage_data()
    {
        columns<QString, QString, bool>("locale", "code", "italianTexts");
        row("English", "en_US"_s, "en"_s, false);
        row("German", "de_DE"_s, "de"_s, false);
        row("Italian", "it_IT"_s, "it"_s, true);
        row("Spanish, no translation", "es_ES"_s, "es"_s, true);
    }
    void firstStartTakesTheSystemsLanguage()
    {
        QFETCH(QString, locale);
        QFETCH(QString, code);
        run(locale);
        QCOMPARE(storedLine(), "Language=lang_"_s + code);
        QCOMPARE(seen("button"), code.toUpper());
        QTEST(textsAreItalian(), "italianTexts");
    }

    void storedLanguageIsTakenAsItStands_data()
    {
        columns<QString, QString, bool>("value", "button", "italianTexts");
        row("known", "lang_de"_s, "DE"_s, false);
        row("without a translation", "lang_fr"_s, "FR"_s, true);
        row("nonsense", "qwerty"_s, "TY"_s, true);
        row("empty", QString(), QString(), true);
    }
    void storedLanguageIsTakenAsItStands()
    {
        QFETCH(QString, value);
        storeLanguageValue(value);
        run("en_US"_s);
        QCOMPARE(storedLine(), "Language="_s + value);
        QTEST(seen("button"), "button");
        QTEST(textsAreItalian(), "italianTexts");
        QVERIFY(logTexts(logPath()).contains("INF Start Application/Language : \"%1\""_s.arg(value)));
    }

    void noSetCountsAsAFirstStart()
    {
        storeLanguageValue("no_set"_s);
        run("de_AT"_s);
        QCOMPARE(storedLine(), "Language=lang_de"_s);
        QCOMPARE(seen("button"), "DE"_s);
    }

    void clickOnTheButtonIsKeptForTheNextStart()
    {
        run("es_ES"_s, {{"TEST_CLICKS"_s, "1"_s}});
        QCOMPARE(storedLine(), "Language=lang_it"_s);
        QCOMPARE(seen("button"), "IT"_s);
        run("es_ES"_s);
        QCOMPARE(seen("button"), "IT"_s);
    }

    void logBeginsWithBannerSettingsAndLanguage()
    {
        run("en_US"_s);
        const QStringList expected =
            bannerOf(seen("log")) + QStringList{"INF Application Settings : \"%1\""_s.arg(settingsPlace()),
                                                "INF Start Application/Language : \"lang_en\""_s};
        QCOMPARE(logTexts(logPath()).mid(0, expected.size()), expected);
    }

    void logLiesInTheFolderOfTheExecutable()
    {
        run();
        QCOMPARE(seen("log"), logPath());
        QVERIFY(QFileInfo::exists(logPath()));
        QVERIFY(!QFileInfo::exists(dataHome() + "/Q-Arte"_s));
        QVERIFY(!QFileInfo::exists(dataHome() + "/Corvin4Manager"_s));
    }

    void twoStartsOfADayShareOneLog()
    {
        run();
        const QStringList first = logTexts(logPath());
        run();
        const QStringList both = logTexts(logPath());
        QCOMPARE(both.mid(0, first.size()), first);
        QCOMPARE(both.filter("START LOGGING SESSION"_s).size(), 2);
    }

    void windowIsAPlainTopLevelWindow()
    {
        run();
        QCOMPARE(seen("flagsAsPlainWindow"), "true"_s);
        QCOMPARE(seen("hasParent"), "false"_s);
        QCOMPARE(seen("title"), "Corvin4 Manager"_s);
    }

    void identityIsSet()
    {
        run();
        QCOMPARE(seen("organization"), "Q-Arte"_s);
        QCOMPARE(seen("application"), kProgram);
    }

    void highDpiIsPrepared()
    {
        run();
        for (const char *what : {"highDpiScaling", "highDpiPixmaps", "scaleAsItIs"})
            QVERIFY2(seen(what) == "true"_s, what);
        // Set too late, the attribute is refused with this complaint.
        QVERIFY(!child.console.contains("must be set before QCoreApplication is created"_s));
    }

    void fontsAndPicturesAreLoaded()
    {
        run();
        QCOMPARE(seen("titleFont"), "Bebas Neue"_s);
        QCOMPARE(seen("background"), "true"_s);
    }

    void exitCodeOfTheEventLoopIsReturned()
    {
        run("it_IT"_s, {{"TEST_EXIT_CODE"_s, "7"_s}});
        QCOMPARE(child.exitCode, 7);
    }

    void windowIsGoneWhenTheProgramReturns()
    {
        run();
        QVERIFY(child.exitCode != kExitCodeWindowAlive);
        QCOMPARE(child.exitCode, 0);
    }

    void startsWithoutAPlaceForTheLog()
    {
        SKIP_ON_WINDOWS("the place of the folder is fixed");
        run("it_IT"_s, {{"XDG_DATA_HOME"_s, home->addFile("obstacle"_s)}});
        QCOMPARE(child.exitCode, 0);
        QCOMPARE(seen("title"), "Corvin4 Manager"_s);
        QVERIFY(child.console.contains("START LOGGING SESSION"_s));
    }

    void startsWithoutAPlaceForTheSettings()
    {
        SKIP_ON_WINDOWS("the settings are in the registry");
        run("de_DE"_s, {{"XDG_CONFIG_HOME"_s, home->addFile("obstacle"_s)}});
        QCOMPARE(child.exitCode, 0);
        QCOMPARE(seen("button"), "DE"_s);
    }

    void programItselfStarts()
    {
        QProcess program;
        program.setProcessEnvironment(environment("en_US"_s));
        program.start(QStringLiteral(CORVIN_PROGRAM), QStringList());
        QVERIFY(program.waitForStarted());
        const QString started = "INF Start Application/Language : \"lang_en\""_s;
        QTRY_VERIFY_WITH_TIMEOUT(logTexts(logOfToday(dataHome(), kProgram)).contains(started), 30000);
        QCOMPARE(program.state(), QProcess::Running);
        program.kill();
        QVERIFY(program.waitForFinished());
    }
};

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--run") == 0)
        return runProgramWithUser(argc, argv);
    const QCoreApplication application(argc, argv);
    TestStartup test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_startup.moc"
