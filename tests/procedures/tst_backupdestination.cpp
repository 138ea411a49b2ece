#include "backupfixture.h"

/// The folder that a backup goes to, with what it holds already.
class TestBackupDestination : public QObject
{
    Q_OBJECT

private slots:
    void fullDestinationIsDeletedWholeAfterAYes() {
        Backup b;
        b.addToPlayer(words("a.mid"), "new");
        b.addToFolder(words("a.mid sub/old.mid sub/.hidden"));
        b.backUp({Titles::kBackupNotEmpty, Titles::kDone});
        // The question names what it is about.
        QCOMPARE(b.firstBox().informativeText, QDir::toNativeSeparators(b.backup));
        QCOMPARE(entriesBelow(b.backup), words("a.mid"));
        QCOMPARE(contentOf(b.backup + "/a.mid"_s), QByteArray("new"));
    }

    void fullDestinationStaysWithoutAYes_data() {
        columns<QString, QString>("how", "held");
        row("no, name with a dot", Buttons::kNo, "old.mid"_s);
        row("enter", "enter"_s, "old.mid"_s);
        row("escape", "escape"_s, "old.mid"_s);
        row("closing", "close"_s, "old.mid"_s);
        row("no, name without a dot", Buttons::kNo, "precious"_s);
        row("no, folder without a dot", Buttons::kNo, "folder/old.mid"_s);
        row("no, hidden file", Buttons::kNo, ".precious"_s);
        row("no, hidden folder", Buttons::kNo, ".folder/old.mid"_s);
    }
    void fullDestinationStaysWithoutAYes() {
        QFETCH(QString, how);
        QFETCH(QString, held);
        Backup b;
        b.addToPlayer(words("a.mid"));
        b.addToFolder({held});
        b.backUp({{Titles::kBackupNotEmpty, how}, Titles::kBackupError});
        QCOMPARE(filesBelow(b.backup), QStringList{held});
    }

    void dangerousDestinationIsRefused_data() {
        columns<QString, QString>("from", "way");
        row("the player", "player"_s, "."_s);
        row("a folder on the player", "player"_s, "Songs"_s);
        row("an empty folder on the player", "player"_s, "Empty"_s);
        row("what holds the player", "player"_s, ".."_s);
        row("the home folder", "home"_s, "."_s);
        row("what holds the home folder", "home"_s, ".."_s);
        row("the program's folder", "program"_s, "."_s);
        row("the user's documents", "documents"_s, "."_s);
        row("the user's desktop", "desktop"_s, "."_s);
    }
    void dangerousDestinationIsRefused() {
        QFETCH(QString, from);
        QFETCH(QString, way);
        Backup b;
        b.addToPlayer(words("Songs/a.mid"));
        b.player.addFolder("Empty"_s);
        b.pc.addFile("homes/anna/letter.txt"_s);
        // Windows keeps to the real one. An unexpected question, whether to empty it, would be closed.
        const Environment otherHome("HOME", QFile::encodeName(b.pc.path("homes/anna"_s)));
        const auto atHome = [] {
            return QDir::home().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        };
        const auto usersOwn = [](QStandardPaths::StandardLocation place) {
            QString folder = QStandardPaths::writableLocation(place);
            QDir().mkpath(folder);
            return folder;
        };
        const QMap<QString, QString> roots = {{"player"_s, b.player.root()},
                                              {"home"_s, QDir::homePath()},
                                              {"program"_s, QCoreApplication::applicationDirPath()},
                                              {"documents"_s, usersOwn(QStandardPaths::DocumentsLocation)},
                                              {"desktop"_s, usersOwn(QStandardPaths::DesktopLocation)}};
        const QString kept = from.startsWith(QLatin1Char('d')) ? roots[from] + "/kept.txt"_s : QString();
        if (!kept.isEmpty())
            putFile(kept);
        const QStringList homeBefore = atHome();
        b.run(Slots::kBackUp, {{Titles::kError, Buttons::kYes}, Titles::kBackupError},
              QDir::cleanPath(roots[from] + QLatin1Char('/') + way));
        expectLook(b.firstBox(), QMessageBox::Question, Titles::kError, {Buttons::kYes});
        QVERIFY(b.firstBox().informativeText.contains("Scegliere"_s));
        QVERIFY(kept.isEmpty() || QFile::remove(kept));
        QCOMPARE(b.player.files(), words("Songs/a.mid"));
        QVERIFY(b.player.folders().contains("Empty"_s));
        QCOMPARE(atHome(), homeBefore);
        QVERIFY(!homeBefore.isEmpty());
        QVERIFY(QFileInfo::exists(QCoreApplication::applicationFilePath()));
    }

    void oldBackupStaysUntilTheFirstFileIsCopied_data() {
        columns<QString>("until");
        row("no to many files", "no"_s);
        row("player pulled while that question is open", "pull"_s);
        row("stop while the player is read", "stop"_s);
    }
    void oldBackupStaysUntilTheFirstFileIsCopied() {
        QFETCH(QString, until);
        Backup b;
        b.addToPlayer(until == "stop"_s ? words("a.mid b.mid") : numbered(1001));
        b.addToFolder(words("a.mid sub/old.mid sub/.hidden"));
        const QMap<QString, QByteArray> before = contentBelow(b.pc.path());
        QList<Answer> answers = {Titles::kBackupNotEmpty, Titles::kStop, Titles::kBackupError};
        std::optional<StopPresser> stop;
        if (until == "stop"_s)
            stop.emplace(b.window, Status::kReading);
        else
            answers[1] = {Titles::kManyFiles, until == "pull"_s ? Buttons::kYes : Buttons::kNo};
        b.boxes.whenShown([&](const QMessageBox *box) {
            if (until == "pull"_s && box->windowTitle() == Titles::kManyFiles)
                SimulatedPlayer::disconnect();
        });
        b.backUp(answers);
        QCOMPARE(contentBelow(b.pc.path()), before);
    }

    void oldBackupThatIsBeingDeletedComesBackAsFarAsItIsThere_data() {
        columns<bool>("stops");
        row("stop", true);
        row("player pulled", false);
    }
    void oldBackupThatIsBeingDeletedComesBackAsFarAsItIsThere() {
        QFETCH(bool, stops);
        Backup b;
        b.addToPlayer(words("a.mid"));
        constexpr int kOld = 500;
        b.addToFolder(numbered(kOld));
        std::optional<StopPresser> stop;
        QList<Answer> answers = {Titles::kBackupNotEmpty};
        QTimer pull;
        if (stops) {
            stop.emplace(b.window, Status::kBackingUp);
            answers.append(Titles::kStop);
        } else {
            connect(&pull, &QTimer::timeout, this, [&] {
                if (b.window.status() == Status::kBackingUp)
                    SimulatedPlayer::disconnect();
            });
            pull.start(0);
        }
        b.backUp(answers + QList<Answer>{Titles::kBackupError});
        const int left = filesBelow(b.backup).size();
        QVERIFY2(left > 0 && left < kOld, qPrintable(QString::number(left)));
        QVERIFY(!QFileInfo::exists(b.backup + "/a.mid"_s));
    }
};

PAGE_TEST_MAIN(TestBackupDestination)
#include "tst_backupdestination.moc"
