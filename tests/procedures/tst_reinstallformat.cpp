#include "reinstallformattest.h"

#include "app/mainwindow.h"
#include "procedures/updateserver.h"
#include "support/boxanswerer.h"
#include "support/logcapture.h"
#include "support/platform.h"
#include "support/simulatedplayer.h"

#include <QDir>
#include <QLabel>
#include <QTest>

class TestReinstallFormat : public ReinstallFormatTest
{
    Q_OBJECT

private slots:
    void cleanReinstallErasesTheSongs();
    void restoringReinstallBringsTheSongsBack();
    void formatCommandGetsThePlayersDrive();
    void textsOfTheCleanReinstallAppearInTheirOrder();
    void textsOfTheRestoringReinstallAppearInTheirOrder();
    void userWhoSaysNoKeepsTheDisk_data();
    void userWhoSaysNoKeepsTheDisk();
    void failureBeforeTheFormatKeepsTheDisk_data();
    void failureBeforeTheFormatKeepsTheDisk();
    void unreadySystemKeepsTheDisk_data();
    void unreadySystemKeepsTheDisk();
    void missingFormatCommandKeepsTheDisk_data();
    void missingFormatCommandKeepsTheDisk();
    void backupInTheDownloadFolderIsRefused_data();
    void backupInTheDownloadFolderIsRefused();
    void incompleteBackupKeepsTheDisk();
    void failureAfterTheFormatTellsWhereTheSongsAre_data();
    void failureAfterTheFormatTellsWhereTheSongsAre();
    void failedUpdateTellsWhereTheSongsAre();
};

void TestReinstallFormat::cleanReinstallErasesTheSongs()
{
    BoxAnswerer answers;
    answers.answer(kEraseTitle, kYes);
    answers.answer(kDriveTitle, kYes);
    answers.answer(kEndTitle, kOk);
    m_window->run(kClean);
    QCOMPARE(answers.seen().at(0).text,
             QStringLiteral("ATTENZIONE!\nOgni contenuto presente nell' HD verrà cancellato!\nContinuare?"));
    QCOMPARE(answers.seen().at(0).defaultButton, kNo);
    QVERIFY(answers.seen().at(2).text.startsWith(QStringLiteral("Installazione terminata.\n")));
    QVERIFY(answers.seen().at(2).informativeText.isEmpty());
    expectNewSystem();
    QVERIFY(!QFile::exists(m_player->path(QStringLiteral("My Songs"))));
    QVERIFY(!QFile::exists(m_player->path(QStringLiteral("System/Playlist"))));
    QVERIFY(QFile::exists(m_player->path(QStringLiteral("CorvinUpdate/u.exe"))));
}

void TestReinstallFormat::restoringReinstallBringsTheSongsBack()
{
    FolderDialogAnswerer folder(backup());
    BoxAnswerer answers;
    answers.answer(kDriveTitle, kYes);
    answers.answer(kEndTitle, kOk);
    m_window->run(kRestore);
    QCOMPARE(folder.captions(), QStringList{QStringLiteral("Scegli una cartella per il salvataggio dei files")});
    QVERIFY(answers.seen().last().informativeText.isEmpty());
    expectNewSystem();
    for (int i = 0; i < kManyFiles; ++i)
        QCOMPARE(m_player->content(QStringLiteral("My Songs/%1.mid").arg(i)), QByteArray::number(i));
    QCOMPARE(m_player->content(QStringLiteral("System/Playlist/mine.pls")), QByteArray("list"));
    QVERIFY(QFile::exists(m_player->path(QStringLiteral("CorvinUpdate/u.exe"))));
    // Nobody asked for the backup to be deleted.
    QCOMPARE(filesBelow(backup()).size(), kManyFiles + 1);
}

void TestReinstallFormat::formatCommandGetsThePlayersDrive()
{
    BoxAnswerer answers;
    answers.answer(kEraseTitle, kYes);
    answers.answer(kDriveTitle, kYes);
    answers.answer(kEndTitle, kOk);
    m_window->run(kClean);
    QCOMPARE(QString::fromUtf8(contentOf(m_formatRecord)).split(QLatin1Char('\n'), Qt::SkipEmptyParts),
             formatArguments(m_player->root().chopped(1)));
}

void TestReinstallFormat::textsOfTheCleanReinstallAppearInTheirOrder()
{
    BoxAnswerer answers;
    answers.answer(kEraseTitle, kYes);
    answers.answer(kDriveTitle, kYes);
    answers.answer(kEndTitle, kOk);
    const LogCapture log;
    m_window->run(kClean);
    QCOMPARE(statusTexts(log), (QStringList{kLooking, kDownloading, kUnpacking, kFormatting, kTransferring, kLooking,
                                            kDownloading, kCopyingUpdate}));
    QCOMPARE(log.textsStartingWith(QStringLiteral("FormatCorvinDisk")),
             (QStringList{QStringLiteral("FormatCorvinDisk : Inizio"), QStringLiteral("FormatCorvinDisk : Fine")}));
}

void TestReinstallFormat::textsOfTheRestoringReinstallAppearInTheirOrder()
{
    const FolderDialogAnswerer folder(backup());
    BoxAnswerer answers;
    answers.answer(kDriveTitle, kYes);
    answers.answer(kEndTitle, kOk);
    const LogCapture log;
    m_window->run(kRestore);
    QCOMPARE(statusTexts(log),
             (QStringList{kLooking, kLooking, kReading, kBackingUp, kDownloading, kUnpacking, kFormatting,
                          kTransferring, kRestoring, kLooking, kDownloading, kCopyingUpdate}));
}

void TestReinstallFormat::userWhoSaysNoKeepsTheDisk_data()
{
    QTest::addColumn<QString>("procedure");
    QTest::addColumn<QString>("refused");
    QTest::newRow("clean, first question") << QString(QLatin1String(kClean)) << kEraseTitle;
    QTest::newRow("clean, drive question") << QString(QLatin1String(kClean)) << kDriveTitle;
    QTest::newRow("restore, no folder") << QString(QLatin1String(kRestore)) << QString();
    QTest::newRow("restore, drive question") << QString(QLatin1String(kRestore)) << kDriveTitle;
}

void TestReinstallFormat::userWhoSaysNoKeepsTheDisk()
{
    QFETCH(QString, procedure);
    QFETCH(QString, refused);
    const FolderDialogAnswerer folder(refused.isEmpty() ? QString() : backup());
    // No box comes after the refused one.
    BoxAnswerer answers;
    if (procedure == QLatin1String(kClean))
        answers.answer(kEraseTitle, refused == kEraseTitle ? kNo : kYes);
    if (refused == kDriveTitle)
        answers.answer(kDriveTitle, kNo);
    m_window->run(procedure.toLatin1().constData());
    QCOMPARE(answers.pending(), 0);
    expectOldDisk();
}

void TestReinstallFormat::failureBeforeTheFormatKeepsTheDisk_data()
{
    QTest::addColumn<QString>("procedure");
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QString>("title");
    for (const char *procedure : {kClean, kRestore}) {
        const QString name = QLatin1String(procedure);
        QTest::addRow("%s, not on the server", procedure) << name << QStringLiteral("download") << kCodeOne;
        QTest::addRow("%s, no tool", procedure) << name << QStringLiteral("tool") << kErrorTitle;
        QTest::addRow("%s, long error page", procedure) << name << QStringLiteral("page") << kErrorTitle;
        QTest::addRow("%s, player pulled", procedure)
            << name << QStringLiteral("pulled") << QStringLiteral("Corvin4 non è stato trovato");
    }
}

void TestReinstallFormat::failureBeforeTheFormatKeepsTheDisk()
{
    QFETCH(QString, procedure);
    QFETCH(QString, failing);
    QFETCH(QString, title);
    if (failing == QStringLiteral("download")) {
        m_server->serveError(kSystemArchivePath, 404, "short");
    } else if (failing == QStringLiteral("page")) {
        m_server->serveError(kSystemArchivePath, 404, noise(kLeast));
    } else if (failing == QStringLiteral("pulled")) {
        connect(m_server.data(), &HttpServer::answered, this, [] { SimulatedPlayer::disconnect(); });
    } else {
        m_programs->remove(QStringLiteral("unar"));
        m_programs->hideOthers();
    }
    const FolderDialogAnswerer folder(backup());
    BoxAnswerer answers;
    if (procedure == QLatin1String(kClean))
        answers.answer(kEraseTitle, kYes);
    answers.answer(title, kOk);
    m_window->run(procedure.toLatin1().constData());
    QCOMPARE(answers.pending(), 0);
    expectOldDisk();
    if (procedure == QLatin1String(kRestore))
        QCOMPARE(filesBelow(backup()).size(), kManyFiles + 1);
}

void TestReinstallFormat::unreadySystemKeepsTheDisk_data()
{
    QTest::addColumn<QByteArray>("archive");
    QTest::newRow("only names that are not copied") << zipOf({{QStringLiteral("README"), noise(kLeast)}});
    QTest::newRow("only folders") << zipOf({{QStringLiteral("System/"), ""}, {QStringLiteral("big"), noise(kLeast)}});
}

void TestReinstallFormat::unreadySystemKeepsTheDisk()
{
    QFETCH(QByteArray, archive);
    m_server->serve(kSystemArchivePath, archive);
    BoxAnswerer answers;
    answers.answer(kEraseTitle, kYes);
    answers.answer(kErrorTitle, kOk);
    m_window->run(kClean);
    expectOldDisk();
}

void TestReinstallFormat::missingFormatCommandKeepsTheDisk_data()
{
    QTest::addColumn<QString>("procedure");
    QTest::newRow("clean") << QString(QLatin1String(kClean));
    QTest::newRow("restore") << QString(QLatin1String(kRestore));
}

void TestReinstallFormat::missingFormatCommandKeepsTheDisk()
{
    QFETCH(QString, procedure);
    m_programs->addBroken(QStringLiteral("cmd.exe"));
    const FolderDialogAnswerer folder(backup());
    BoxAnswerer answers;
    if (procedure == QLatin1String(kClean))
        answers.answer(kEraseTitle, kYes);
    answers.answer(kDriveTitle, kYes);
    answers.answer(kFormatErrorTitle, kOk);
    m_window->run(procedure.toLatin1().constData());
    QCOMPARE(answers.seen().last().text,
             QStringLiteral("C'è stato un errore durante la formattazione di Corvin4.\n"
                            "Spegnere Corvin4 e connetterlo alla porta USB del PC.\nQuindi accendere Corvin4 e\n"
                            "quando appare la schermata di connessione sul display di Corvin,\n"
                            "cliccare ancora su START"));
    expectOldDisk();
}

void TestReinstallFormat::backupInTheDownloadFolderIsRefused_data()
{
    QTest::addColumn<QString>("below");
    QTest::newRow("the folder itself") << QStringLiteral("Corvin");
    QTest::newRow("below it") << QStringLiteral("Corvin/backup");
    QTest::newRow("around it") << QStringLiteral(".");
}

void TestReinstallFormat::backupInTheDownloadFolderIsRefused()
{
    QFETCH(QString, below);
    const QString chosen = QDir::cleanPath(m_pc->path(below));
    putFile(chosen + QStringLiteral("/kept.txt"), "kept");
    const FolderDialogAnswerer folder(chosen);
    BoxAnswerer answers;
    answers.answer(kErrorTitle, kOk);
    m_window->run(kRestore);
    QVERIFY(QFile::exists(chosen + QStringLiteral("/kept.txt")));
    expectOldDisk();
}

void TestReinstallFormat::incompleteBackupKeepsTheDisk()
{
    // The copy as a whole counts as good, because its last file was copied; one song in the middle is missing all the same.
    const QString lost = backup() + QStringLiteral("/My Songs/7.mid");
    bool taken = false;
    QTimer spoil;
    connect(&spoil, &QTimer::timeout, this, [&] { taken = taken || QFile::remove(lost); });
    spoil.start(1);
    const FolderDialogAnswerer folder(backup());
    BoxAnswerer answers;
    answers.answer(kBackupErrorTitle, kOk);
    m_window->run(kRestore);
    QVERIFY(taken);
    QCOMPARE(answers.seen().last().text,
             QStringLiteral("C'è stato durante il salvataggio delle basi.\nOperazione annullata"));
    QVERIFY(m_server->requests().isEmpty());
    expectOldDisk();
}

void TestReinstallFormat::failureAfterTheFormatTellsWhereTheSongsAre_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::newRow("transfer") << QStringLiteral("transfer") << kErrorTitle << kErrorTitle;
    const QString unexpected =
        QStringLiteral("Procedura terminata in modo inaspettato.\nProvare a reinstallare il sistema operativo.");
    QTest::newRow("folder with a name that exFAT does not know") << QStringLiteral("name") << kErrorTitle << unexpected;
    QTest::newRow("folder with a file in its way") << QStringLiteral("file") << kErrorTitle << unexpected;
    QTest::newRow("restore") << QStringLiteral("restore") << kRestoreErrorTitle
                             << QStringLiteral("C'è stato durante il ripristino delle basi.\nOperazione annullata");
}

void TestReinstallFormat::failureAfterTheFormatTellsWhereTheSongsAre()
{
    QFETCH(QString, failing);
    QFETCH(QString, title);
    QFETCH(QString, text);
    if (failing == QStringLiteral("transfer"))
        SKIP_ON_WINDOWS("the drive is as large as the disk of the machine");
    if (failing == QStringLiteral("name"))
        SKIP_ON_WINDOWS("no folder of the PC can have that name either");
    const FolderDialogAnswerer folder(backup());
    BoxAnswerer answers;
    answers.answer(kDriveTitle, kYes);
    if (failing == QStringLiteral("transfer")) {
        Entries entries = systemEntries();
        entries.insert(QStringLiteral("Zzz/big.bin"), noise(20 * 1024 * 1024));
        m_server->serve(kSystemArchivePath, zipOf(entries));
        answers.answer(kCopyErrorTitle, kNo);
    } else if (failing == QStringLiteral("name")) {
        Entries entries = systemEntries();
        entries.insert(QStringLiteral("bad:name/x.txt"), "x");
        m_server->serve(kSystemArchivePath, zipOf(entries, QStringLiteral("System/"), kLeast));
        addUnar(*m_programs, QStringLiteral("/usr/bin/unar"));
        answers.answer(kErrorTitle, kOk);
    } else if (failing == QStringLiteral("file")) {
        Entries entries = systemEntries();
        entries.insert(QStringLiteral("Data/x.txt"), "x");
        m_server->serve(kSystemArchivePath, zipOf(entries, QStringLiteral("System/"), kLeast));
        m_player->addFormatCommand(*m_programs, m_formatRecord, QStringLiteral("Data"));
        answers.answer(kErrorTitle, kOk);
    } else {
        answers.answer(kCopyErrorTitle, kNo);
    }
    answers.answer(title, kOk);
    // The last song vanishes from the backup while the system is transferred.
    QTimer spoil;
    connect(&spoil, &QTimer::timeout, this, [&] {
        if (failing == QStringLiteral("restore") && m_window->label()->text() == kTransferring) {
            const QString song = backup() + QStringLiteral("/My Songs/7.mid");
            QFile::remove(song);
            QDir().mkpath(song);
        }
    });
    spoil.start(1);
    m_window->run(kRestore);
    QCOMPARE(answers.seen().last().text, text);
    QVERIFY2(answers.seen().last().informativeText.contains(shownBackup()),
             qPrintable(answers.seen().last().informativeText));
    QVERIFY(QFile::exists(m_formatRecord));
    QVERIFY(filesBelow(backup()).size() >= kManyFiles);
    // After a transfer that was completed the download is gone, whatever came then.
    QCOMPARE(QFile::exists(m_pc->downloads()), failing == QStringLiteral("transfer"));
    QVERIFY(m_window->isAtRest());
}

void TestReinstallFormat::failedUpdateTellsWhereTheSongsAre()
{
    m_server->serveError(kUpdateArchivePath, 404, "short");
    const FolderDialogAnswerer folder(backup());
    BoxAnswerer answers;
    answers.answer(kDriveTitle, kYes);
    answers.answer(kCodeOne, kOk);
    answers.answer(kEndTitle, kOk);
    m_window->run(kRestore);
    QVERIFY(answers.seen().last().informativeText.contains(shownBackup()));
    expectNewSystem();
}

QTEST_MAIN(TestReinstallFormat)
#include "tst_reinstallformat.moc"
