#include "systemfixture.h"

namespace {

constexpr int kLongestStopMs = 1000;
const QString kName = "CorvinUpdate.c4"_s;

struct Download : Maintenance
{
    QString run(bool makeFolder = true) { return window->downloadFile(server.url(kUpdateArchivePath), makeFolder); }
    void serve(int size) { server.serve(kUpdateArchivePath, noise(size)); }
    QString saved(const QString &name = kName) const { return pc.downloads(name); }
};

} // namespace

class TestFileDownload : public QObject
{
    Q_OBJECT

private slots:
    void fileOfTenThousandBytesIsARelease_data() {
        columns<QString, int, int>("line", "size", "arrives");
        for (const int size : {0, 1, 9999, 10000, 10001, 3000000})
            QTest::addRow("%d bytes", size) << "good"_s << size << size;
        // Deliberate: the size on the disk alone decides, even for half a file and for a long error page.
        row("cut early", "cut"_s, 40000, 9999);
        row("cut late", "cut"_s, 40000, 10000);
        row("unknown length", "no length"_s, 40000, 40000);
        row("unknown length, short", "no length"_s, 500, 500);
        row("length 0 for no content", "length 0"_s, 0, 0);
        row("too long a length", "long length"_s, 40000, 40000);
        row("short error page", "404"_s, 300, 300);
        row("long error page", "404"_s, 40000, 40000);
        row("refused connection", "refused"_s, 40000, 0);
    }
    void fileOfTenThousandBytesIsARelease() {
        QFETCH(QString, line);
        QFETCH(int, size);
        QFETCH(int, arrives);
        const QByteArray content = noise(size);
        Download download;
        if (line == "good"_s)
            download.serve(size);
        else if (line == "cut"_s)
            download.server.serveCut(kUpdateArchivePath, content, arrives);
        else if (line == "no length"_s)
            download.server.serveWithoutLength(kUpdateArchivePath, content);
        else if (line == "404"_s)
            download.server.serveError(kUpdateArchivePath, 404, content);
        else if (line == "refused"_s)
            download.server.refuse();
        else
            download.server.serveUnderLength(kUpdateArchivePath, content, line == "length 0"_s ? 0 : size * 2LL);
        QCOMPARE(download.run(), arrives >= kLeastRelease ? download.saved() : QString());
        QCOMPARE(contentOf(download.saved()), content.left(arrives));
    }

    void anotherServersFileIsTheSame() {
        SKIP_ON_WINDOWS("the other server is a program of Linux");
        Download download;
        const QTemporaryDir files;
        putFile(files.path() + kUpdateArchivePath, noise(300000));
        QProcess server;
        server.setProcessChannelMode(QProcess::MergedChannels);
        server.start("/usr/bin/python3"_s, words("-u -m http.server 0 --bind 127.0.0.1 --directory") << files.path());
        QString said;
        QRegularExpressionMatch port;
        QTRY_VERIFY((said += QString::fromLocal8Bit(server.readAll()),
                     port = QRegularExpression("port (\\d+)"_s).match(said), port.hasMatch()));
        const QString address = "http://127.0.0.1:"_s + port.captured(1);
        QCOMPARE(download.window->downloadFile(address + kUpdateArchivePath, true), download.saved());
        QCOMPARE(contentOf(download.saved()), noise(300000));
        // Its page for a missing file is a short one.
        QCOMPARE(download.window->downloadFile(address + "/missing.zip"_s, true), QString());
        server.kill();
        server.waitForFinished();
    }

    void urlThatEndsInASlashIsSavedAsDownload() {
        Download download;
        download.server.serve("/folder/"_s, noise(kLeastRelease));
        const QString url = download.server.url("/folder/"_s);
        QCOMPARE(download.window->downloadFile(url, true), download.saved("download"_s));
    }

    void barStaysAtZeroWhileTheSizeIsUnknown() {
        Download download;
        download.server.serveWithoutLength(kUpdateArchivePath, noise(40000));
        QProgressBar *bar = download.window.bar();
        bar->setValue(50);
        QSignalSpy values(bar, &QProgressBar::valueChanged);
        download.run();
        for (int i = 0; i < values.size(); ++i)
            QVERIFY(values.at(i).first().toInt() == 0 || values.at(i).first().toInt() == 100);
        QCOMPARE(bar->value(), 100);
    }

    void stopEndsTheWaitAtOnceAndTheBarRunsFromZeroToHundred_data() {
        columns<int, int>("arrived", "percent");
        row("before anything came", 0, 0);
        row("with 9999 bytes", 9999, 24);
        row("with 10000 bytes", 10000, 25);
        row("with 30000 bytes", 30000, 75);
    }
    void stopEndsTheWaitAtOnceAndTheBarRunsFromZeroToHundred() {
        QFETCH(int, arrived);
        QFETCH(int, percent);
        Download download;
        download.server.serveStalled(kUpdateArchivePath, noise(40000), arrived);
        QProgressBar *bar = download.window.bar();
        bar->setRange(5, 7);
        announce(download.boxes, {Titles::kStop});
        const StopPresser stop(download.window, QString(), [&] {
            return !download.server.requests().isEmpty() && QFileInfo(download.saved()).size() == arrived &&
                   bar->value() == percent;
        });
        QElapsedTimer clock;
        // Started when the user is asked, and answers at once.
        download.boxes.whenShown([&clock](QMessageBox *) { clock.start(); });
        // The server would keep it waiting for ever.
        QCOMPARE(download.run(), arrived >= kLeastRelease ? download.saved() : QString());
        QVERIFY2(clock.elapsed() < kLongestStopMs, qPrintable(QString::number(clock.elapsed())));
        QVERIFY(download.window->abortRequested);
        QCOMPARE(bar->minimum(), 0);
        QCOMPARE(bar->maximum(), 100);
        QCOMPARE(bar->value(), 100);
    }

    void folderIsEmptiedWhenAskedFor() {
        Download download;
        putFile(download.saved("sub/old.txt"_s), "old");
        putFile(download.saved(), "old");
        download.serve(kLeastRelease);
        QCOMPARE(download.run(true), download.saved());
        QCOMPARE(entriesBelow(download.pc.downloads()), QStringList{kName});
    }

    void folderIsLeftButForTheSameFileWhenNotAskedFor() {
        Download download;
        putFile(download.saved("sub/old.txt"_s), "old");
        putFile(download.saved(), noise(60000));
        download.serve(20000);
        QCOMPARE(download.run(false), download.saved());
        QCOMPARE(filesBelow(download.pc.downloads()), (QStringList{kName, "sub/old.txt"_s}));
        QCOMPARE(contentOf(download.saved()), noise(20000));
    }

    void folderThatCannotBeEmptiedIsUsedAsItIs() {
        // A mounted volume cannot be removed, only its content can.
        Download download;
        MOUNT_PLAYER(volume, 4);
        const QString folder = download.pc.addFolder("Corvin"_s);
        QVERIFY(runProgram("mount"_s, {"--bind"_s, QDir::cleanPath(volume.root()), folder}));
        download.serve(kLeastRelease);
        const QString path = download.run(true);
        const QByteArray content = contentOf(path);
        runProgram("umount"_s, {folder});
        QCOMPARE(path, download.saved());
        QCOMPARE(content, noise(kLeastRelease));
    }

    void missingFolderGivesNothing() {
        Download download;
        download.serve(kLeastRelease);
        QCOMPARE(download.run(false), QString());
        QVERIFY(download.server.requests().isEmpty());
        // A file where the folder should be: it is kept, and nothing is downloaded.
        putFile(download.pc.downloads(), "file");
        QCOMPARE(download.run(true), QString());
        QCOMPARE(contentOf(download.pc.downloads()), QByteArray("file"));
    }
};

PAGE_TEST_MAIN(TestFileDownload)
#include "tst_filedownload.moc"
