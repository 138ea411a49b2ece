#include "app/startup.h"

#include "app/sessionlog.h"
#include "app/shared/sharedfonts.h"
#include "childsession.h"
#include "support/boxtexts.h"
#include "support/platform.h"
#include "support/same.h"
#include "support/widgets.h"

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

// The start-up builds what belongs to a whole process. Each run here is therefore a child: this program, started again
// with "--run", in which a timer made together with the application object plays the user: it presses the language
// button TEST_CLICKS times, writes what it sees as JSON into the file TEST_REPORT, and closes the window or ends the
// event loop with TEST_EXIT_CODE. The names are environment variables.

const QString kSettings = "config/Q-Arte/Corvin4Manager.conf"_s;
const QString kOwn = "tst_startup"_s;
const QString kProgram = "Corvin4Manager"_s;
#ifdef Q_OS_WIN
const QString kKey = "Application/Language"_s;
static bool asksForMedium() {
    return !(GetErrorMode() & SEM_FAILCRITICALERRORS);
}
#else
static bool asksForMedium() {
    return false;
}
#endif

/// What the child process returns when the main window outlived the program's run.
constexpr int kExitCodeWindowAlive = 90;
static QPointer<QMainWindow> windowOfRun;

static QJsonObject describe(const QMainWindow &window) {
    QWidget plain;
    plain.setWindowFlags(Qt::Window);
    return {
        {"title"_s, window.windowTitle()},
        {"button"_s, textOf(window, "pButLang")},
        {"text"_s, QCoreApplication::translate("MainWindow", "Interrompi Operazione")},
        {"flagsAsPlainWindow"_s, window.windowFlags() == plain.windowFlags()},
        {"hasParent"_s, window.parent() != nullptr},
        {"organization"_s, QCoreApplication::organizationName()},
        {"application"_s, QCoreApplication::applicationName()},
        {"highDpiScaling"_s, QCoreApplication::testAttribute(Qt::AA_EnableHighDpiScaling)},
        {"highDpiPixmaps"_s, QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps)},
        {"scaleAsItIs"_s,
         QGuiApplication::highDpiScaleFactorRoundingPolicy() == Qt::HighDpiScaleFactorRoundingPolicy::PassThrough},
        {"titleFont"_s, QFontInfo(sharedFonts().fontTitle18).family()},
        {"background"_s, !window.palette().brush(QPalette::Window).texture().isNull()},
        {"log"_s, sessionLogPath()},
        {"asksForMedium"_s, asksForMedium()},
    };
}

static void playTheUser(QMainWindow *window) {
    windowOfRun = window;
    for (int clicks = qEnvironmentVariableIntValue("TEST_CLICKS"); clicks > 0; --clicks)
        button(*window, "pButLang")->click();
    putFile(qEnvironmentVariable("TEST_REPORT"), QJsonDocument(describe(*window)).toJson());
    if (qEnvironmentVariableIsSet("TEST_EXIT_CODE"))
        QCoreApplication::exit(qEnvironmentVariableIntValue("TEST_EXIT_CODE"));
    else
        window->close();
}

static void employTheUser() {
    if (!qEnvironmentVariableIsSet("TEST_REPORT"))
        return;
    auto *timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, timer, [timer] {
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget *widget : widgets) {
            auto *window = qobject_cast<QMainWindow *>(widget);
            if (!window || !window->isVisible())
                continue;
            timer->stop();
            playTheUser(window);
            return;
        }
    });
    timer->start(20);
}

Q_COREAPP_STARTUP_FUNCTION(employTheUser)

class TestStartup : public QObject
{
    Q_OBJECT

    using Variables = QMap<QString, QString>;

    std::optional<PcFolder> home;
    Child child;
    QJsonObject report;

    QProcessEnvironment environment(const QString &locale) const {
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
    void run(const QString &locale = "it_IT"_s, const Variables &variables = {}) {
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
    static QString dataHome() {
        return QFileInfo(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).path();
    }
    static QString settingsPlace() {
        return "\\\\HKEY_CURRENT_USER\\\\Software\\\\Q-Arte\\\\Corvin4Manager"_s; // as the log escapes it
    }
    static void storeLanguageValue(const QString &value) {
        QSettings("Q-Arte"_s, kProgram).setValue(kKey, value);
    }
    static QString storedLine() {
        const QVariant value = QSettings("Q-Arte"_s, kProgram).value(kKey);
        return value.isValid() ? "Language="_s + value.toString() : "no settings"_s;
    }
#else
    QString dataHome() const {
        return home->path("data"_s);
    }
    QString settingsPlace() const {
        return home->path(kSettings);
    }
    void storeLanguageValue(const QString &value) {
        home->addFile(kSettings, "[Application]\nLanguage=" + value.toUtf8() + '\n');
    }
    QString storedLine() const {
        return QString::fromUtf8(home->content(kSettings)).trimmed().section(QLatin1Char('\n'), -1);
    }
#endif
    QString logPath() const {
        return logOfToday(dataHome(), kOwn);
    }

private slots:
    void init() {
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

    void languageIsTheStoredOneOrTheSystems_data() {
        const QString none;
        columns<QString, QString, QString, QString, bool>("stored", "locale", "value", "button", "italianTexts");
        row("first start, English", none, "en_US"_s, "lang_en"_s, "EN"_s, false);
        row("first start, German", none, "de_DE"_s, "lang_de"_s, "DE"_s, false);
        row("first start, Italian", none, "it_IT"_s, "lang_it"_s, "IT"_s, true);
        row("first start, Spanish, no translation", none, "es_ES"_s, "lang_es"_s, "ES"_s, true);
        row("no_set counts as a first start", "no_set"_s, "de_AT"_s, "lang_de"_s, "DE"_s, false);
        row("stored, known", "lang_de"_s, "en_US"_s, "lang_de"_s, "DE"_s, false);
        row("stored, without a translation", "lang_fr"_s, "en_US"_s, "lang_fr"_s, "FR"_s, true);
        row("stored, nonsense", "qwerty"_s, "en_US"_s, "qwerty"_s, "TY"_s, true);
        row("stored, empty", ""_s, "en_US"_s, QString(), QString(), true);
    }
    void languageIsTheStoredOneOrTheSystems() {
        QFETCH(QString, stored);
        QFETCH(QString, locale);
        QFETCH(QString, value);
        if (!stored.isNull())
            storeLanguageValue(stored);
        run(locale);
        QCOMPARE(storedLine(), "Language="_s + value);
        QTEST(seen("button"), "button");
        QTEST(textsAreItalian(), "italianTexts");
        QVERIFY(logTexts(logPath()).contains("INF Start Application/Language : \"%1\""_s.arg(value)));
    }

    void clickOnTheButtonIsKeptForTheNextStart() {
        run("es_ES"_s, {{"TEST_CLICKS"_s, "1"_s}});
        QCOMPARE(storedLine(), "Language=lang_it"_s);
        QCOMPARE(seen("button"), "IT"_s);
        run("es_ES"_s);
        QCOMPARE(seen("button"), "IT"_s);
    }

    void logBeginsWithBannerSettingsAndLanguage() {
        run("en_US"_s);
        const QStringList expected =
            bannerOf(seen("log")) + QStringList{"INF Application Settings : \"%1\""_s.arg(settingsPlace()),
                                                "INF Start Application/Language : \"lang_en\""_s};
        QCOMPARE(logTexts(logPath()).mid(0, expected.size()), expected);
    }

    void logLiesInTheFolderOfTheExecutable() {
        run();
        QCOMPARE(seen("log"), logPath());
        QVERIFY(QFileInfo::exists(logPath()));
        QVERIFY(!QFileInfo::exists(dataHome() + "/Q-Arte"_s));
        QVERIFY(!QFileInfo::exists(dataHome() + "/Corvin4Manager"_s));
    }

    void twoStartsOfADayShareOneLog() {
        run();
        const QStringList first = logTexts(logPath());
        run();
        const QStringList both = logTexts(logPath());
        QCOMPARE(both.mid(0, first.size()), first);
        QCOMPARE(both.filter("START LOGGING SESSION"_s).size(), 2);
    }

    void everythingIsSetUpWhenTheWindowShows() {
        run();
        QCOMPARE(seen("asksForMedium"), "false"_s);
        for (const char *what : {"flagsAsPlainWindow", "highDpiScaling", "highDpiPixmaps", "scaleAsItIs", "background"})
            same(what, seen(what), "true"_s);
        same("the window has no parent", seen("hasParent"), "false"_s);
        same("the window has its title", seen("title"), "Corvin4 Manager"_s);
        same("the organisation is set", seen("organization"), "Q-Arte"_s);
        same("the application's name is set", seen("application"), kProgram);
        same("the fonts are loaded", seen("titleFont"), "Bebas Neue"_s);
        // Set too late, an attribute is refused with this complaint.
        QVERIFY(!child.console.contains("must be set before QCoreApplication is created"_s));
    }

    void exitCodeOfTheEventLoopIsReturned() {
        run("it_IT"_s, {{"TEST_EXIT_CODE"_s, "7"_s}});
        QCOMPARE(child.exitCode, 7);
    }

    void windowIsGoneWhenTheProgramReturns() {
        run();
        QCOMPARE(child.exitCode, 0); // not kExitCodeWindowAlive
    }

    void startsWithoutAPlaceForTheLog() {
        SKIP_ON_WINDOWS("the place of the folder is fixed");
        run("it_IT"_s, {{"XDG_DATA_HOME"_s, home->addFile("obstacle"_s)}});
        QCOMPARE(child.exitCode, 0);
        QCOMPARE(seen("title"), "Corvin4 Manager"_s);
        QVERIFY(child.console.contains("START LOGGING SESSION"_s));
    }

    void startsWithoutAPlaceForTheSettings() {
        SKIP_ON_WINDOWS("the settings are in the registry");
        run("de_DE"_s, {{"XDG_CONFIG_HOME"_s, home->addFile("obstacle"_s)}});
        QCOMPARE(child.exitCode, 0);
        QCOMPARE(seen("button"), "DE"_s);
    }

    void programItselfStarts() {
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

int main(int argc, char **argv) {
    if (argc == 2 && qstrcmp(argv[1], "--run") == 0) {
        const int code = runCorvin4Manager(argc, argv);
        return windowOfRun ? kExitCodeWindowAlive : code;
    }
    const QCoreApplication application(argc, argv);
    TestStartup test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_startup.moc"
