#include "runrecorder.h"
#include "support/simulatedplayer.h"

#include "optimizer/ottimizza.h"

#include <QTest>

class tst_UnsupportedFiles : public QObject
{
    Q_OBJECT

private slots:
    void stoppedStepDoesNothing()
    {
        SimulatedPlayer player;
        Ottimizza page;
        page.unsupportedFiles.append(QFileInfo(player.addFile(QStringLiteral("A/t.txt"))));
        page.abortRequested = true;
        RunRecorder recorder(page);
        page.delete_files();
        QCOMPARE(recorder.lines(), QStringList());
        QVERIFY(player.exists(QStringLiteral("A/t.txt")));
    }

    void diskOfSongsAndPicturesShowsOnlyTheStatusTexts()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("A/s.mid"));
        player.addFile(QStringLiteral("A/p.jpg"));
        player.addFile(QStringLiteral("A/v.avi"));
        Ottimizza page;
        page.rootPath = player.root();
        page.scan_directories();
        RunRecorder recorder(page);
        page.delete_files();
        QCOMPARE(recorder.lines(), QStringList({QStringLiteral("label Cancellazione file non supportati..."),
                                                QStringLiteral("label Operazione completata")}));
        QCOMPARE(player.files().size(), 3);
    }

    void everyListedFileIsDeletedInOrder()
    {
        SimulatedPlayer player;
        Ottimizza page;
        const QString first = player.addFile(QStringLiteral("B/z.txt"));
        const QString second = player.addFile(QStringLiteral("A/a.doc"));
        page.unsupportedFiles = {QFileInfo(first), QFileInfo(second)};
        RunRecorder recorder(page);
        page.delete_files();
        QCOMPARE(
            recorder.lines(),
            QStringList({QStringLiteral("label Cancellazione file non supportati..."),
                         QStringLiteral("log delete_files : START"), QStringLiteral("min 0"), QStringLiteral("max 2"),
                         QStringLiteral("value 0"), QStringLiteral("log Delete : \"%1\"").arg(first),
                         QStringLiteral("value 1"), QStringLiteral("log Delete : \"%1\"").arg(second),
                         QStringLiteral("value 2"), QStringLiteral("log delete_files : N. files  2"),
                         QStringLiteral("label Operazione completata")}));
        QCOMPARE(player.files(), QStringList());
        for (const LogCapture::Line &line : recorder.log().lines())
            QCOMPARE(line.type, QtInfoMsg);
    }

    void textFilesGoButThoseOfTheSystemStay()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("My Songs/notes.TXT"));
        player.addFile(QStringLiteral("My Songs/readme"));
        player.addFile(QStringLiteral("My Songs/s.xmid"));
        player.addFile(QStringLiteral("System/sub/notes.TXT"));
        player.addFile(QStringLiteral("CorvinUpdate/notes.TXT"));
        Ottimizza page;
        page.rootPath = player.root();
        page.scan_directories();
        page.delete_files();
        QCOMPARE(player.files(),
                 QStringList({QStringLiteral("CorvinUpdate/notes.TXT"), QStringLiteral("My Songs/s.xmid"),
                              QStringLiteral("System/sub/notes.TXT")}));
    }

    void fileThatCannotBeDeletedIsLoggedAllTheSame()
    {
        SimulatedPlayer player;
        Ottimizza page;
        // A folder in the place of the file: it cannot be removed as a file, not even by root.
        const QString blocked = player.addFolder(QStringLiteral("A/blocked.txt"));
        const QString next = player.addFile(QStringLiteral("A/next.txt"));
        page.unsupportedFiles = {QFileInfo(blocked), QFileInfo(next)};
        RunRecorder recorder(page);
        page.delete_files();
        QVERIFY(recorder.log().contains(QStringLiteral("Delete : \"%1\"").arg(blocked)));
        QVERIFY(player.exists(QStringLiteral("A/blocked.txt")));
        QVERIFY(!player.exists(QStringLiteral("A/next.txt")));
        QVERIFY(recorder.log().contains(QStringLiteral("delete_files : N. files  2")));
    }

    void stopLeavesTheRemainingFiles()
    {
        SimulatedPlayer player;
        Ottimizza page;
        for (int i = 0; i < 5; ++i)
            page.unsupportedFiles.append(QFileInfo(player.addFile(QStringLiteral("A/%1.txt").arg(i))));
        RunRecorder recorder(page);
        QObject::connect(&page, &Ottimizza::updateProgressBarVal, &page, [&page](int value) {
            if (value == 2)
                page.on_stopActionPressed();
        });
        page.delete_files();
        QCOMPARE(player.files().size(), 3);
        QCOMPARE(recorder.lines().last(), QStringLiteral("value 2"));
        QCOMPARE(recorder.labels().size(), 1);
        QVERIFY(page.abortRequested);
    }
};

QTEST_MAIN(tst_UnsupportedFiles)
#include "tst_unsupportedfiles.moc"
