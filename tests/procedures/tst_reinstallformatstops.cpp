#include "reinstallformattest.h"

#include "app/mainwindow.h"
#include "procedures/updateserver.h"
#include "support/boxanswerer.h"

#include <QLabel>
#include <QProgressBar>
#include <QTest>

class TestReinstallFormatStops : public ReinstallFormatTest
{
    Q_OBJECT

private slots:
    void stopBeforeTheFormatKeepsTheDisk_data();
    void stopBeforeTheFormatKeepsTheDisk();
    void stopAfterTheFormatOfACleanReinstallIsSilent_data();
    void stopAfterTheFormatOfACleanReinstallIsSilent();
    void stopAfterTheFormatTellsWhereTheSongsAre_data();
    void stopAfterTheFormatTellsWhereTheSongsAre();
    void stopDuringTheUpdateNamesNoBackup_data();
    void stopDuringTheUpdateNamesNoBackup();
};

void TestReinstallFormatStops::stopBeforeTheFormatKeepsTheDisk_data()
{
    QTest::addColumn<QString>("procedure");
    QTest::addColumn<QString>("step");
    QTest::newRow("clean, download") << QString(QLatin1String(kClean)) << kDownloading;
    QTest::newRow("clean, unpacking") << QString(QLatin1String(kClean)) << kUnpacking;
    QTest::newRow("restore, reading") << QString(QLatin1String(kRestore)) << kReading;
    QTest::newRow("restore, backup") << QString(QLatin1String(kRestore)) << kBackingUp;
    QTest::newRow("restore, download") << QString(QLatin1String(kRestore)) << kDownloading;
    QTest::newRow("restore, unpacking") << QString(QLatin1String(kRestore)) << kUnpacking;
}

void TestReinstallFormatStops::stopBeforeTheFormatKeepsTheDisk()
{
    QFETCH(QString, procedure);
    QFETCH(QString, step);
    if (step == kUnpacking)
        useSlowTool();
    const FolderDialogAnswerer folder(backup());
    BoxAnswerer answers;
    if (procedure == QLatin1String(kClean))
        answers.answer(kEraseTitle, kYes);
    answers.answer(kStopTitle, kYes);
    const StopPresser stop(*m_window, step);
    m_window->run(procedure.toLatin1().constData());
    QVERIFY(stop.pressed);
    QCOMPARE(answers.pending(), 0);
    expectOldDisk();
}

void TestReinstallFormatStops::stopAfterTheFormatOfACleanReinstallIsSilent_data()
{
    QTest::addColumn<QString>("step");
    QTest::newRow("format") << kFormatting;
    QTest::newRow("transfer") << kTransferring;
}

void TestReinstallFormatStops::stopAfterTheFormatOfACleanReinstallIsSilent()
{
    QFETCH(QString, step);
    BoxAnswerer answers;
    answers.answer(kEraseTitle, kYes);
    answers.answer(kDriveTitle, kYes);
    answers.answer(kStopTitle, kYes);
    const StopPresser stop(*m_window, step);
    m_window->run(kClean);
    QVERIFY(stop.pressed);
    QCOMPARE(answers.pending(), 0);
    QCOMPARE(m_server->requests(), QStringList{kSystemArchivePath});
    QVERIFY(m_window->isAtRest());
}

void TestReinstallFormatStops::stopAfterTheFormatTellsWhereTheSongsAre_data()
{
    QTest::addColumn<QString>("step");
    QTest::newRow("format") << kFormatting;
    QTest::newRow("transfer") << kTransferring;
    QTest::newRow("restore") << kRestoring;
}

void TestReinstallFormatStops::stopAfterTheFormatTellsWhereTheSongsAre()
{
    QFETCH(QString, step);
    const FolderDialogAnswerer folder(backup());
    BoxAnswerer answers;
    answers.answer(kDriveTitle, kYes);
    answers.answer(kStopTitle, kYes);
    answers.answer(kRestoreErrorTitle, kOk);
    const StopPresser stop(*m_window, step);
    m_window->run(kRestore);
    QVERIFY(stop.pressed);
    QVERIFY(answers.seen().last().informativeText.contains(shownBackup()));
    QCOMPARE(filesBelow(backup()).size(), kManyFiles + 1);
    QVERIFY(m_window->isAtRest());
}

void TestReinstallFormatStops::stopDuringTheUpdateNamesNoBackup_data()
{
    QTest::addColumn<QString>("procedure");
    QTest::newRow("clean") << QString(QLatin1String(kClean));
    QTest::newRow("restore") << QString(QLatin1String(kRestore));
}

void TestReinstallFormatStops::stopDuringTheUpdateNamesNoBackup()
{
    QFETCH(QString, procedure);
    const bool restores = procedure == QLatin1String(kRestore);
    m_server->serveStalled(kUpdateArchivePath, noise(40000), 100);
    const FolderDialogAnswerer folder(backup());
    BoxAnswerer answers;
    if (!restores)
        answers.answer(kEraseTitle, kYes);
    answers.answer(kDriveTitle, kYes);
    answers.answer(kStopTitle, kYes);
    const StopPresser stop(*m_window, kDownloading,
                           [this] { return m_server->requests().contains(kUpdateArchivePath); });
    m_window->run(procedure.toLatin1().constData());
    QVERIFY(stop.pressed);
    QCOMPARE(answers.pending(), 0);
    expectNewSystem();
    QCOMPARE(filesBelow(m_player->path(QStringLiteral("My Songs"))).size(), restores ? kManyFiles : 0);
}

QTEST_MAIN(TestReinstallFormatStops)
#include "tst_reinstallformatstops.moc"
