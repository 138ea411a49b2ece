#include "app/startup.h"

#include "app/appsettings.h"
#include "childsession.h"
#include "disk/datafolder.h"
#include "disk/worklock.h"
#include "optimizer/ottimizza.h"
#include "pages/check.h"
#include "procedures/systemfixture.h"
#include "support/intactplayer.h"
#include "transfer/opentransfer.h"

// The whole program, closed in the middle of its work, ends by itself and leaves whole disks behind. Each run is a
// child: this program, started again with "--run", in which a timer plays the user, who does the job TEST_JOB with the
// folder TEST_FOLDER of the PC and closes the window in the middle. Then the file TEST_CLOSED is written.

constexpr int kManySongs = 4000;
constexpr int kSongsBeforeTheClose = 50;

namespace {

/// The user of a child.
class User : public QObject
{
public:
    User() {
        for (const QString &title : {Titles::kBackupError, Titles::kNotClosed, Titles::kNotAllCopied})
            m_boxes.answerAlways(title, Buttons::kOk);
        m_boxes.answerAlways(Titles::kManyFiles, Buttons::kYes);
        connect(&m_timer, &QTimer::timeout, this, &User::act);
        m_timer.start(5);
    }

private:
    void act() {
        if (!m_window) {
            const QWidgetList widgets = QApplication::topLevelWidgets();
            for (QWidget *widget : widgets) {
                if (auto *window = qobject_cast<MainWindow *>(widget))
                    m_window = window;
            }
        } else if (!m_begun && button(*pageOf<Check>(*m_window), "pushButton")->isVisible()) {
            m_begun = true;
            button(*pageOf<Check>(*m_window), "pushButton")->click();
            // Not from within this timer, which would not fire again before the job has ended.
            QTimer::singleShot(0, this, [this] { begin(); });
        } else if (m_begun && isTimeToClose()) {
            m_timer.stop();
            putFile(qEnvironmentVariable("TEST_CLOSED"));
            m_window->close();
        }
    }
    void begin() {
        if (m_job == "backup"_s) {
            QMetaObject::invokeMethod(m_window, Slots::kBackUp);
        } else if (m_job == "download"_s || m_job == "patience"_s) {
            QMetaObject::invokeMethod(m_window, Slots::kUpdate);
        } else if (m_job == "copy"_s) {
            m_window->on_gotoTransfer();
            Drag(*pageOf<Transfer>(*m_window), fileUrls({m_folder})).bring(QPoint(5, 5));
        } else {
            m_window->on_gotoOptimizer();
            button(*m_window, "Btn_Opt_Ok")->click();
        }
    }
    bool isTimeToClose() const {
        if (m_job == "download"_s)
            return textOf(*m_window, "labelAction") == Status::kDownloading;
        if (m_job == "optimisation"_s)
            return pageOf<Ottimizza>(*m_window)->isRunning();
        if (m_job == "patience"_s)
            return false;
        const auto *bar = child<QProgressBar>(*m_window, "progressBar");
        return bar->format() == "%v"_s && bar->value() >= kSongsBeforeTheClose;
    }

    const QString m_job = qEnvironmentVariable("TEST_JOB");
    const QString m_folder = qEnvironmentVariable("TEST_FOLDER");
    BoxAnswerer m_boxes;
    const FolderDialogAnswerer m_dialogs{m_folder};
    QPointer<MainWindow> m_window;
    QTimer m_timer;
    bool m_begun = false;
};

void employTheUser() {
    if (!qEnvironmentVariableIsSet("TEST_JOB"))
        return;
    // Gone with the event loop: what watches the boxes needs the application.
    const auto user = std::make_shared<std::optional<User>>(std::in_place);
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, [user] { user->reset(); });
}

QString song(int number) {
    return "%1.mid"_s.arg(number, 4, 10, QLatin1Char('0'));
}

QByteArray contentOfSong(int number) {
    return "song " + QByteArray::number(number) + QByteArray(1000, char(number));
}

/// Whether each song that stands in @p folder is whole.
bool songsAreWhole(const QString &folder, int *count) {
    const QStringList files = QDir(folder).entryList(QDir::Files | QDir::Hidden);
    *count = files.size();
    return std::all_of(files.begin(), files.end(), [&folder](const QString &file) {
        return contentOf(folder + QLatin1Char('/') + file) == contentOfSong(file.leftRef(4).toInt());
    });
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(employTheUser)

class TestClosingProcess : public QObject
{
    Q_OBJECT

    std::optional<PcFolder> home;

    void start(QProcess &program, const QString &job, const QString &folder) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CONFIG_HOME"_s, home->path("config"_s));
        environment.insert("LC_ALL"_s, "C.UTF-8"_s); // the texts of the sources
        environment.insert("TEST_JOB"_s, job);
        environment.insert("TEST_FOLDER"_s, folder);
        environment.insert("TEST_CLOSED"_s, home->path("closed"_s));
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedChannels);
        program.start(QCoreApplication::applicationFilePath(), {"--run"_s});
        QVERIFY(program.waitForStarted());
    }
    bool isClosed() const { return QFileInfo::exists(home->path("closed"_s)); }

private slots:
    void init() {
        home.emplace();
        home->addFolder("config"_s);
    }

    void programEndsByItselfAndBothDisksAreWhole_data() {
        columns<QString>("job");
        for (const char *job : {"backup", "download", "optimisation"})
            row(job, QString::fromLatin1(job));
    }
    void programEndsByItselfAndBothDisksAreWhole() {
        QFETCH(QString, job);
        IntactPlayer player;
        for (int i = 0; i < kManySongs; ++i)
            player.addFile("My Songs/"_s + song(i), contentOfSong(i));
        HttpServer server;
        const Environment address{"CORVIN_UPDATE_SERVER", server.address().toLatin1()};
        server.serveStalled(kUpdateArchivePath, noise(20000), 12000);
        const QString folder = home->addFolder("pc"_s);
        QProcess program;
        start(program, job, folder);
        QTRY_VERIFY_WITH_TIMEOUT(isClosed(), kLongWaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(program.state(), QProcess::NotRunning, kLongWaitMs);
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        int songs = 0;
        if (job != "optimisation"_s) { // which may have begun to split the folder
            QVERIFY(songsAreWhole(player.path("My Songs"_s), &songs));
            QCOMPARE(songs, kManySongs);
        }
        QCOMPARE(player.files().filter(".mid"_s).size(), kManySongs);
        QVERIFY(!player.exists("CorvinUpdate"_s));
        QVERIFY(songsAreWhole(folder + "/My Songs"_s, &songs));
        QCOMPARE(songs >= kSongsBeforeTheClose && songs < kManySongs, job == "backup"_s);
    }

    void copyEndsWithWholeFilesAndTheProgramWaitsForFinish() {
        IntactPlayer player;
        PcFolder album;
        for (int i = 0; i < kManySongs; ++i)
            album.addFile("album/"_s + song(i), contentOfSong(i));
        QProcess program;
        start(program, "copy"_s, album.path("album"_s));
        QTRY_VERIFY_WITH_TIMEOUT(isClosed(), kLongWaitMs);
        // The copy is over as soon as another job could begin.
        QTRY_VERIFY_WITH_TIMEOUT(WorkLock().isTaken(), kLongWaitMs);
        QCOMPARE(program.state(), QProcess::Running);
        int songs = 0;
        QVERIFY(songsAreWhole(player.path("album"_s), &songs));
        QVERIFY2(songs >= kSongsBeforeTheClose && songs < kManySongs, qPrintable(QString::number(songs)));
        QCOMPARE(album.files().size(), kManySongs);
        program.kill();
        QVERIFY(program.waitForFinished());
    }

    void programThatWorksKeepsAnotherFromWorkingUntilItIsGone() {
        const IntactPlayer player;
        HttpServer server;
        const Environment address{"CORVIN_UPDATE_SERVER", server.address().toLatin1()};
        server.serveStalled(kUpdateArchivePath, noise(20000), 12000);
        QProcess first;
        start(first, "patience"_s, QString());
        QTRY_VERIFY_WITH_TIMEOUT(!server.requests().isEmpty(), kLongWaitMs);
        {
            Maintenance second;
            setDataFolder(QString()); // the one that both programs share
            second.run(Slots::kUpdate, {{"Corvin4 Manager"_s}});
            QCOMPARE(second.server.requests(), QStringList());
        }
        first.kill();
        QVERIFY(first.waitForFinished());
        Maintenance third;
        setDataFolder(QString());
        third.run(Slots::kUpdate, {{Titles::kFinished}});
    }
};

int main(int argc, char **argv) {
    if (argc == 2 && qstrcmp(argv[1], "--run") == 0)
        return runCorvin4Manager(argc, argv);
    const QApplication application(argc, argv);
    loadResources();
    registerEmbeddedFonts();
    appSettings().setValue("Application/Language"_s,
                           "lang_xx"_s); // no translation: the buttons of the system speak English
    TestClosingProcess test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_closingprocess.moc"
