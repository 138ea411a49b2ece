#include "runrecorder.h"
#include "support/platform.h"
#include "support/simulatedplayer.h"

#include "optimizer/ottimizza.h"

#include <QTest>

#include <cstdlib>

class tst_MediaMove : public QObject
{
    Q_OBJECT

private:
    // The same page and the same words for both steps.
    static void addRows()
    {
        QTest::addColumn<QString>("step");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("status");
        QTest::newRow("images") << QStringLiteral("move_images") << QStringLiteral("Images") << QStringLiteral("jpg")
                                << QStringLiteral("Spostamento immagini...");
        QTest::newRow("videos") << QStringLiteral("move_videos") << QStringLiteral("Videos") << QStringLiteral("avi")
                                << QStringLiteral("Spostamento video...");
    }
    static void run(Ottimizza &page, const QString &step)
    {
        if (step == QLatin1String("move_images"))
            page.move_images();
        else
            page.move_videos();
    }
    static QList<QFileInfo> &list(Ottimizza &page, const QString &step)
    {
        return step == QLatin1String("move_images") ? page.imageFiles : page.videoFiles;
    }

private slots:
    void stoppedStepDoesNothing_data() { addRows(); }
    void stoppedStepDoesNothing()
    {
        QFETCH(QString, step);
        QFETCH(QString, folder);
        SimulatedPlayer player;
        Ottimizza page;
        page.rootPath = player.root();
        list(page, step).append(QFileInfo(player.addFile(QStringLiteral("A/x.jpg"))));
        page.abortRequested = true;
        RunRecorder recorder(page);
        run(page, step);
        QCOMPARE(recorder.lines(), QStringList());
        QVERIFY(!player.exists(folder));
    }

    void emptyListMakesNoFolder_data() { addRows(); }
    void emptyListMakesNoFolder()
    {
        QFETCH(QString, step);
        QFETCH(QString, folder);
        QFETCH(QString, status);
        SimulatedPlayer player;
        Ottimizza page;
        page.rootPath = player.root();
        RunRecorder recorder(page);
        run(page, step);
        QCOMPARE(recorder.lines(),
                 QStringList({QStringLiteral("label ") + status, QStringLiteral("label Operazione completata")}));
        QVERIFY(!player.exists(folder));
    }

    void filesMoveAndTakenNamesGetANumber_data() { addRows(); }
    void filesMoveAndTakenNamesGetANumber()
    {
        QFETCH(QString, step);
        QFETCH(QString, folder);
        QFETCH(QString, suffix);
        QFETCH(QString, status);
        SimulatedPlayer player;
        Ottimizza page;
        page.rootPath = player.root();
        const QString first = player.addFile(QStringLiteral("A/cover.") + suffix, "first");
        const QString second = player.addFile(QStringLiteral("B/cover.") + suffix, "second");
        const QString third = player.addFile(QStringLiteral("B/C/cover.") + suffix, "third");
        list(page, step) = {QFileInfo(first), QFileInfo(second), QFileInfo(third)};
        RunRecorder recorder(page);
        run(page, step);
        QCOMPARE(player.content(folder + QStringLiteral("/cover.") + suffix), QByteArray("first"));
        QCOMPARE(player.content(folder + QStringLiteral("/cover_1.") + suffix), QByteArray("second"));
        QCOMPARE(player.content(folder + QStringLiteral("/cover_2.") + suffix), QByteArray("third"));
        QCOMPARE(player.files().size(), 3);
        QCOMPARE(recorder.lines(),
                 QStringList({QStringLiteral("label ") + status, QStringLiteral("log %1 : START").arg(step),
                              QStringLiteral("min 0"), QStringLiteral("max 3"), QStringLiteral("value 0"),
                              QStringLiteral("log Move : \"%1\"").arg(first), QStringLiteral("value 1"),
                              QStringLiteral("log Move : \"%1\"").arg(second), QStringLiteral("value 2"),
                              QStringLiteral("log Move : \"%1\"").arg(third), QStringLiteral("value 3"),
                              QStringLiteral("log %1 : N. files  3").arg(step),
                              QStringLiteral("label Operazione completata")}));
        for (const LogCapture::Line &line : recorder.log().lines())
            QCOMPARE(line.type, QtInfoMsg);
    }

    void nameIsPartedAtItsFirstDot()
    {
        SimulatedPlayer player;
        Ottimizza page;
        page.rootPath = player.root();
        player.addFile(QStringLiteral("Images/photo.2019.jpg"), "old");
        page.imageFiles.append(QFileInfo(player.addFile(QStringLiteral("A/photo.2019.jpg"), "new")));
        page.move_images();
        QCOMPARE(player.content(QStringLiteral("Images/photo.2019.jpg")), QByteArray("old"));
        QCOMPARE(player.content(QStringLiteral("Images/photo_1.2019.jpg")), QByteArray("new"));
    }

    // With the generator's next number known, a file that bears it stops the detour where it stands.
    void takenNumericNameStopsTheDetour_data()
    {
        QTest::addColumn<QString>("blockerFolder");
        QTest::addColumn<QString>("resultFolder");
        QTest::addColumn<bool>("keepsItsName");
        QTest::newRow("in the file's folder") << QStringLiteral("A/") << QStringLiteral("A/") << true;
        QTest::newRow("in the target folder") << QStringLiteral("Images/") << QStringLiteral("A/") << false;
    }
    void takenNumericNameStopsTheDetour()
    {
        QFETCH(QString, blockerFolder);
        QFETCH(QString, resultFolder);
        QFETCH(bool, keepsItsName);
        constexpr unsigned kSeed = 4;
        std::srand(kSeed);
        const QString numeric = QString::number(std::rand() % 1000000) + QStringLiteral(".jpg");
        std::srand(kSeed);
        SimulatedPlayer player;
        Ottimizza page;
        page.rootPath = player.root();
        player.addFile(QStringLiteral("Images/p.jpg"), "old");
        player.addFile(blockerFolder + numeric, "blocker");
        const QString source = player.addFile(QStringLiteral("A/p.jpg"), "new");
        page.imageFiles.append(QFileInfo(source));
        RunRecorder recorder(page);
        page.move_images();
        QCOMPARE(player.content(resultFolder + (keepsItsName ? QStringLiteral("p.jpg") : numeric)), QByteArray("new"));
        QVERIFY(recorder.log().contains(QStringLiteral("Move : \"%1\"").arg(source)));
        // The renames that follow take what bears the number for the file on its way.
        QCOMPARE(player.content(QStringLiteral("Images/p_1.jpg")), QByteArray("blocker"));
        QCOMPARE(player.content(QStringLiteral("Images/p.jpg")), QByteArray("old"));
    }

    void videoInItsFolderStaysAndOneAmongSongsMoves()
    {
        SimulatedPlayer player;
        player.addFile(QStringLiteral("Videos/Clips/v.avi"), "clip");
        player.addFile(QStringLiteral("My Songs/w.MP4"), "song");
        Ottimizza page;
        page.rootPath = player.root();
        page.scan_directories();
        page.move_videos();
        QCOMPARE(player.files(), QStringList({QStringLiteral("Videos/Clips/v.avi"), QStringLiteral("Videos/w.MP4")}));
    }

    void folderOfAnotherCaseIsUsed_data() { addRows(); }
    void folderOfAnotherCaseIsUsed()
    {
        SKIP_ON_WINDOWS("the file system ignores case here");
        QFETCH(QString, step);
        QFETCH(QString, folder);
        QFETCH(QString, suffix);
        SimulatedPlayer player;
        const QString there = folder.toUpper();
        player.addFile(there + QStringLiteral("/cover.") + suffix, "old");
        player.addFile(QStringLiteral("A/cover.") + suffix, "new");
        player.addFile(QStringLiteral("A/other.") + suffix, "other");
        Ottimizza page;
        page.rootPath = player.root();
        page.scan_directories();
        QCOMPARE(list(page, step).size(), 2);
        run(page, step);
        QVERIFY(!player.exists(folder));
        QCOMPARE(player.content(there + QStringLiteral("/cover.") + suffix), QByteArray("old"));
        QCOMPARE(player.content(there + QStringLiteral("/cover_1.") + suffix), QByteArray("new"));
        QCOMPARE(player.content(there + QStringLiteral("/other.") + suffix), QByteArray("other"));
        QCOMPARE(player.files().size(), 3);
    }

    void fileCalledAsTheFolderLeavesEverythingInPlace()
    {
        SimulatedPlayer player;
        Ottimizza page;
        page.rootPath = player.root();
        player.addFile(QStringLiteral("Images"), "a file");
        page.imageFiles.append(QFileInfo(player.addFile(QStringLiteral("A/p.jpg"), "p")));
        page.move_images();
        QCOMPARE(player.content(QStringLiteral("A/p.jpg")), QByteArray("p"));
        QCOMPARE(player.content(QStringLiteral("Images")), QByteArray("a file"));
    }

    void stopLeavesTheRemainingFiles_data() { addRows(); }
    void stopLeavesTheRemainingFiles()
    {
        QFETCH(QString, step);
        QFETCH(QString, folder);
        QFETCH(QString, suffix);
        SimulatedPlayer player;
        Ottimizza page;
        page.rootPath = player.root();
        for (int i = 0; i < 5; ++i)
            list(page, step).append(QFileInfo(player.addFile(QStringLiteral("A/%1.%2").arg(i).arg(suffix))));
        RunRecorder recorder(page);
        QObject::connect(&page, &Ottimizza::updateProgressBarVal, &page, [&page](int value) {
            if (value == 3)
                page.on_stopActionPressed();
        });
        run(page, step);
        QCOMPARE(player.files(folder).size(), 3);
        QCOMPARE(player.files(QStringLiteral("A")).size(), 2);
        QCOMPARE(recorder.lines().last(), QStringLiteral("value 3"));
        QCOMPARE(recorder.labels().size(), 1);
    }
};

QTEST_MAIN(tst_MediaMove)
#include "tst_mediamove.moc"
