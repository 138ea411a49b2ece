#include "italianwindow.h"
#include "pages/avanzate.h"
#include "pages/check.h"
#include "procedures/systemfixture.h"
#include "support/announcedserver.h"
#include "support/boxanswerer.h"
#include "support/boxtexts.h"

// Each signal of a page must start the procedure that bears its name and no other: told apart by what the procedure
// asks first of the user or of the server.

const QString kBackupCaption = "Scegli una cartella per il salvataggio dei files"_s;
const QString kRestoreCaption = "Scegli cartella da cui prendere i files salvati"_s;
const QString kUpdate = "/download/Corvin4/CorvinUpdate.c4"_s;
const QString kSystem = "/download/Corvin4/CorvinAll.zip"_s;
const QByteArray kAfterTheCheck("reinstallOpSysOnly of the check");

static void start(const ProcedureWindow &shell, const QByteArray &procedure) {
    QObject *page = pageOf<Avanzate>(*shell.window);
    if (procedure == kAfterTheCheck)
        page = pageOf<Check>(*shell.window);
    QVERIFY(QMetaObject::invokeMethod(page, procedure.split(' ').first().constData()));
}

/// Makes a folder dialog larger than the screen, as the toolkit does where there is little room.
class Enlarger : public QObject
{
protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        auto *dialog = qobject_cast<QFileDialog *>(watched);
        if (dialog && event->type() == QEvent::Show)
            dialog->resize(dialog->screen()->availableSize() * 2);
        return QObject::eventFilter(watched, event);
    }
};

class TestMaintenanceStart : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startInItalian(); }

    void withoutAPlayerEveryProcedureSaysSo_data() {
        columns<QByteArray>("procedure");
        for (const char *procedure :
             {"updateCorvinWithLastRelease", "makeSecurityCopyOfSongs", "restoreSecurityCopyOfSongs",
              "reinstallOpSysOnly", "reinstallOpSysAndCleanSongs", "reinstallOpSysAndRestoreSongs"})
            row(procedure, QByteArray(procedure));
        row("reinstall after the check", kAfterTheCheck);
    }
    void withoutAPlayerEveryProcedureSaysSo() {
        QFETCH(QByteArray, procedure);
        const ProcedureWindow shell;
        BoxAnswerer boxes;
        if (procedure == "reinstallOpSysAndCleanSongs")
            boxes.answer(Titles::kErase, Buttons::kSi);
        boxes.answer(Titles::kDeviceNotFound, Buttons::kOk);
        start(shell, procedure);
        QVERIFY(shell.bar()->isHidden());
    }

    void procedureAsksForWhatIsItsOwn_data() {
        columns<QByteArray, QString, QString, QStringList>("procedure", "box", "answer", "asked");
        const QString failed = Titles::kDownloadError1;
        row("update", QByteArray("updateCorvinWithLastRelease"), failed, "OK"_s, QStringList(kUpdate));
        row("reinstall", QByteArray("reinstallOpSysOnly"), failed, "OK"_s, QStringList(kSystem));
        row("reinstall after the check", kAfterTheCheck, failed, "OK"_s, QStringList(kSystem));
        row("backup", QByteArray("makeSecurityCopyOfSongs"), QString(), QString(), QStringList(kBackupCaption));
        row("restore", QByteArray("restoreSecurityCopyOfSongs"), QString(), QString(), QStringList(kRestoreCaption));
        row("reinstall, clean songs", QByteArray("reinstallOpSysAndCleanSongs"), Titles::kErase, "No"_s, QStringList());
    }
    void procedureAsksForWhatIsItsOwn() {
        QFETCH(QByteArray, procedure);
        QFETCH(QString, box);
        QFETCH(QString, answer);
        const SimulatedPlayer player;
        const AnnouncedServer server;
        const ProcedureWindow shell;
        BoxAnswerer boxes;
        if (!box.isEmpty())
            boxes.answer(box, answer);
        const FolderDialogAnswerer dialogs{QString()};
        start(shell, procedure);
        QCOMPARE(boxes.seen().size(), box.isEmpty() ? 0 : 1);
        QTEST(dialogs.captions() + server.requests(), "asked");
    }

    void backIsDisabledFromTheStartOfAProcedureToItsEnd() {
        SimulatedPlayer player;
        player.addFile("My Songs/a.mid"_s, "song");
        const PcFolder backup;
        const ProcedureWindow shell;
        shell->on_gotoAvanzate();
        const QPushButton *back = button(*pageOf<Avanzate>(*shell.window), "pushBtnBack");
        QStringList enabled;
        int looks = 0;
        const auto look = [&](const QString &when) {
            ++looks;
            if (back->isEnabled())
                enabled.append(when);
        };
        QTimer rounds;
        connect(&rounds, &QTimer::timeout, this, [&] { look("between files"_s); });
        connect(shell.bar(), &QProgressBar::valueChanged, this, [&] { look("at the bar"_s); });
        BoxAnswerer boxes;
        boxes.whenShown([&](QMessageBox *box) { look(box->windowTitle()); });
        boxes.answer(Titles::kDone, Buttons::kOk);
        FolderDialogAnswerer dialogs(backup.path());
        dialogs.whenShown = [&](QFileDialog *dialog) {
            look(dialog->windowTitle());
            rounds.start(0);
        };
        click(*pageOf<Avanzate>(*shell.window), "pushBtnBackup");
        QCOMPARE(enabled, QStringList());
        QVERIFY(looks >= 4);
        QVERIFY(back->isEnabled());
    }

    void folderDialogShowsFoldersAloneAndLeavesLinksAlone_data() {
        columns<QByteArray>("procedure");
        for (const char *procedure : {Slots::kBackUp, Slots::kRestore, Slots::kReinstallRestoring})
            row(procedure, QByteArray(procedure));
    }
    void folderDialogShowsFoldersAloneAndLeavesLinksAlone() {
        QFETCH(QByteArray, procedure);
        const SimulatedPlayer player;
        const ProcedureWindow shell;
        const BoxAnswerer boxes;
        FolderDialogAnswerer dialogs{QString()};
        QFileDialog::Options options;
        dialogs.whenShown = [&options](QFileDialog *dialog) { options = dialog->options(); };
        start(shell, procedure);
        QVERIFY(options.testFlag(QFileDialog::ShowDirsOnly));
        QVERIFY(options.testFlag(QFileDialog::DontResolveSymlinks));
    }

    void folderDialogIsNoLargerThanTheScreenAndHasRoomForDates() {
        const SimulatedPlayer player;
        const ProcedureWindow shell;
        const BoxAnswerer boxes;
        Enlarger enlarger;
        qApp->installEventFilter(&enlarger);
        FolderDialogAnswerer dialogs{QString()};
        QRect place;
        QHeaderView::ResizeMode dates = QHeaderView::Interactive;
        dialogs.whenShown = [&](QFileDialog *dialog) {
            place = dialog->geometry();
            dates = dialog->findChild<QTreeView *>()->header()->sectionResizeMode(3);
        };
        start(shell, Slots::kBackUp);
        QVERIFY(!place.isEmpty());
        QVERIFY(shell.window->screen()->availableGeometry().contains(place));
        QCOMPARE(dates, QHeaderView::ResizeToContents);
    }

    void folderOfADialogIsNotKeptByTheProgram() {
        const SimulatedPlayer player;
        const PcFolder shown;
        const ProcedureWindow shell;
        const BoxAnswerer boxes;
        FolderDialogAnswerer dialogs{QString()};
        // As the dialog of Windows does.
        dialogs.whenShown = [&shown](QFileDialog *) { QVERIFY(QDir::setCurrent(shown.path())); };
        start(shell, Slots::kBackUp);
        QCOMPARE(QDir::currentPath(), QCoreApplication::applicationDirPath());
    }

    void reinstallWithSongsSavesThemBeforeItLoadsTheSystem() {
        SimulatedPlayer player;
        player.addFile("My Songs/a.mid"_s, "song");
        const PcFolder backup;
        const AnnouncedServer server;
        const ProcedureWindow shell;
        BoxAnswerer boxes;
        boxes.answer(Titles::kDownloadError1, Buttons::kOk);
        const FolderDialogAnswerer dialogs(backup.path());
        start(shell, "reinstallOpSysAndRestoreSongs");
        QCOMPARE(dialogs.captions(), QStringList(kBackupCaption));
        QCOMPARE(backup.content("My Songs/a.mid"_s), QByteArray("song"));
        QCOMPARE(server.requests(), QStringList(kSystem));
    }
};

PAGE_TEST_MAIN(TestMaintenanceStart)
#include "tst_maintenancestart.moc"
