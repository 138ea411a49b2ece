// A text that tells the user to unplug the player comes when everything is on its disk, and not at all when that
// failed.
#include "systemfixture.h"

#include "disk/volumeflush.h"

namespace {

constexpr unsigned long kSlowFlushMs = 100;
constexpr int kLongFlushMs = 20000;
const QString kSong = "My Songs/a.mid"_s;

/// What the stand-in for the flush saw, and what it answers.
struct FlushRecord
{
    QStringList folders;      ///< the flushed folders, in order
    QStringList lastContents; ///< the files in the folder at the last flush
    bool good = true;
    bool onGuiThread = false;
    bool lasts = false; ///< goes on for long, asking between two files
    bool ended = false; ///< because the caller did not want to go on
};
FlushRecord record;

/// Procedures of a player with a song, and a PC with another.
struct Unplugging : Maintenance
{
    Unplugging() {
        record = {};
        player.addFile(kSong, "MThd");
    }
};

} // namespace

// Both take the place of the program's own flush in this test alone.
bool flushVolume(const QString &path, const BetweenFlushes &goOn) {
    record.folders.append(path);
    record.lastContents = filesBelow(path);
    record.onGuiThread = record.onGuiThread || QThread::currentThread() == qApp->thread();
    const QDeadlineTimer end(kLongFlushMs);
    do
        QThread::msleep(kSlowFlushMs);
    while (record.lasts && !end.hasExpired() && !(record.ended = goOn && !goOn()));
    return record.good && !record.ended;
}

bool flushFolder(const QString &path, const BetweenFlushes &goOn) {
    return flushVolume(path, goOn);
}

class TestUnplugTexts : public QObject
{
    Q_OBJECT

private slots:
    void everythingIsOnThePlayerBeforeTheText_data() {
        columns<QByteArray, bool, QStringList>("slot", "withUpdate", "boxes");
        row("update", QByteArray(Slots::kUpdate), true, QStringList{Titles::kFinished});
        row("reinstall", QByteArray(Slots::kReinstall), true, QStringList{Titles::kFinished});
        row("reinstall without the update", QByteArray(Slots::kReinstall), false,
            QStringList{Titles::kDownloadError1, Titles::kFinished});
        row("restore", QByteArray(Slots::kRestore), false, QStringList{Titles::kDone});
    }
    void everythingIsOnThePlayerBeforeTheText() {
        QFETCH(QByteArray, slot);
        QFETCH(bool, withUpdate);
        QFETCH(QStringList, boxes);
        Unplugging p;
        p.pc.addFile("backup/b.mid"_s);
        if (!withUpdate)
            p.server.serveError(kUpdateArchivePath, 404, "short");
        // The window lives during the flush.
        int rounds = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] { rounds += record.folders.isEmpty() ? 0 : 1; });
        timer.start(5);
        p.boxes.whenShown([&](const QMessageBox *box) {
            if (box->windowTitle() == Titles::kDownloadError1)
                return;
            timer.stop();
            const bool isEnd = withUpdate && box->windowTitle() == Titles::kFinished;
            QVERIFY(!isEnd || (p.window.bar()->isHidden() && p.window.label()->isHidden()));
            QVERIFY(!isEnd || p.window.stop()->isHidden());
            QVERIFY(!record.folders.isEmpty());
            QCOMPARE(record.folders.last(), p.player.root());
            QCOMPARE(record.lastContents, p.player.files());
        });
        p.runThrough(slot, boxes);
        QCOMPARE(p.player.exists("CorvinUpdate/sub/a.exe"_s), withUpdate);
        QVERIFY(!record.onGuiThread);
        QVERIFY(rounds > 1);
    }

    void whatWasNotFlushedIsAFailure_data() {
        columns<QByteArray, QString>("slot", "title");
        row("update", QByteArray(Slots::kUpdate), Titles::kDownloadError3);
        row("reinstall", QByteArray(Slots::kReinstall), Titles::kError);
        row("backup", QByteArray(Slots::kBackUp), Titles::kBackupError);
        row("restore", QByteArray(Slots::kRestore), Titles::kBackupError);
    }
    void whatWasNotFlushedIsAFailure() {
        QFETCH(QByteArray, slot);
        QFETCH(QString, title);
        Unplugging p;
        record.good = false;
        const bool saves = slot == Slots::kBackUp;
        if (!saves)
            p.pc.addFile("backup/b.mid"_s);
        p.runThrough(slot, {title});
        if (slot == Slots::kReinstall)
            QCOMPARE(p.lastBox().text, Texts::kReinstallAgain);
        QVERIFY(!p.player.exists("CorvinUpdate"_s));
        QVERIFY(!QFile::exists(p.pc.downloads()));
        QCOMPARE(saves ? record.folders : record.folders.mid(0, 1), QStringList{saves ? p.backup : p.player.root()});
        if (saves)
            QCOMPARE(record.lastContents, QStringList{kSong});
    }

    void longFlushEndsAtStop_data() {
        columns<QByteArray, QStringList>("slot", "boxes");
        row("update", QByteArray(Slots::kUpdate), QStringList{Titles::kStop, Titles::kDownloadError3});
        row("backup", QByteArray(Slots::kBackUp), QStringList{Titles::kStop, Titles::kBackupError});
        row("restore", QByteArray(Slots::kRestore), QStringList{Titles::kStop, Titles::kBackupError});
    }
    void longFlushEndsAtStop() {
        QFETCH(QByteArray, slot);
        QFETCH(QStringList, boxes);
        Unplugging p;
        if (slot != Slots::kBackUp)
            p.pc.addFile("backup/b.mid"_s);
        record.lasts = true;
        StopPresser stop(p.window, {}, [] { return !record.folders.isEmpty(); });
        QElapsedTimer clock;
        clock.start();
        p.runThrough(slot, boxes);
        QVERIFY(record.ended);
        QVERIFY2(clock.elapsed() < kLongFlushMs / 2, qPrintable(QString::number(clock.elapsed())));
        QVERIFY(!p.player.exists("CorvinUpdate"_s));
    }

    void removedUpdateIsFlushedBeforeItsErrorBox() {
        Unplugging p;
        p.serveUpdate({{"CorvinUpdate/a.exe"_s, "new"}, {"CorvinUpdate/v1.0/b.exe"_s, "b"}});
        p.run(Slots::kUpdate, {{Titles::kCopyFailed, Buttons::kNo}, Titles::kDownloadError3});
        QCOMPARE(record.folders, QStringList{p.player.root()});
        QCOMPARE(record.lastContents, QStringList{kSong});
    }
};

PAGE_TEST_MAIN(TestUnplugTexts)
#include "tst_unplugtexts.moc"
