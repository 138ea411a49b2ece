// Backup and restore on a real exFAT volume, and with disks that are full, read-only or pulled out.
#include "systemfixture.h"

#include "app/mainwindow.h"
#include "app/shared/sharedfonts.h"
#include "resources/resources.h"
#include "support/boxanswerer.h"
#include "support/exfatvolume.h"
#include "support/simulatedplayer.h"

#include <QApplication>
#include <QDir>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString kDone = QStringLiteral("Fatto");
const QString kError = QStringLiteral("ERRORE");
const QString kBackupError = QStringLiteral("Errore durante il BackUp");
const QString kFailed = QStringLiteral("Errore sulla copia");
const QString kFull = QStringLiteral("Trovati alcuni files");
const QString kStop = QStringLiteral("Interrompi Operazione");
const QString kOk = QStringLiteral("OK");
const QString kYes = QStringLiteral("Yes");
const QString kSi = QStringLiteral("Si");
const QString kYesToAll = QStringLiteral("Si,Tutti");

const QString kReading = QStringLiteral("Lettura del contenuto di Corvin...");
const QString kSaving = QStringLiteral("Copia di backup dei files sul PC...");
const QString kRestoring = QStringLiteral("Ripristino copia di backup sul Corvin...");

constexpr int kMegabyte = 1024 * 1024;

} // namespace

class TestMaintenanceFaultsCopy : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void backupAndRestoreOnARealVolume();
    void systemPartsAreKnownOnAVolumeThatIgnoresCase();
    void proceduresOnARealVolumeCanBeStopped_data();
    void proceduresOnARealVolumeCanBeStopped();
    void restoreOntoAFullVolumeLeavesNoHalfFile();
    void playerPulledOutWhileItIsReadIsNoBackup();
    void playerPulledOutWhileSavingIsAskedAbout();
    void playerPulledOutWhileRestoringIsNoSuccess();
    void backupOntoAFullDiskLeavesNoHalfFile();
    void backupOntoAReadOnlyDiskIsRefused();
    void backupOntoTheRootOfADiskKeepsWhatIsThere();
    void backupOntoTheSameDiskByAnotherWayIsRefused();
    void destinationThatCannotBeEmptiedIsTold();
    void restoreOntoAReadOnlyPlayerIsNoSuccess();

private:
    void mountPlayer(int megabytes);
    QString player(const QString &relative) const { return m_volume->path(relative); }
    QStringList onPlayer() const;
    void backup(const QString &destination);
    void restore(const QString &source);
    QStringList titles() const;

    std::unique_ptr<ExFatVolume> m_volume;
    std::unique_ptr<QTemporaryDir> m_pc;
    std::unique_ptr<ProcedureWindow> m_procedure;
    std::unique_ptr<BoxAnswerer> m_boxes;
    QString m_destination;
};

void TestMaintenanceFaultsCopy::initTestCase()
{
    QString why;
    if (!ExFatVolume::isPossible(&why))
        QSKIP(qPrintable(QStringLiteral("SKIPPED WHOLE: ") + why));
    loadResources();
    registerEmbeddedFonts();
}

void TestMaintenanceFaultsCopy::init()
{
    m_pc = std::make_unique<QTemporaryDir>();
    m_destination = m_pc->path() + QStringLiteral("/backup");
    QVERIFY(QDir().mkdir(m_destination));
    m_procedure = std::make_unique<ProcedureWindow>();
    m_boxes = std::make_unique<BoxAnswerer>();
}

void TestMaintenanceFaultsCopy::cleanup()
{
    m_boxes.reset();
    m_procedure.reset();
    m_volume.reset();
    m_pc.reset();
    SimulatedPlayer::disconnect();
}

/// Mounts a volume as the player that the program finds.
void TestMaintenanceFaultsCopy::mountPlayer(int megabytes)
{
    m_volume = std::make_unique<ExFatVolume>(megabytes);
    QVERIFY2(m_volume->isMounted(), qPrintable(m_volume->error()));
    putFile(player(QStringLiteral(".windows-label")), "CORVIN4\n");
    qputenv("CORVIN_VOLUMES", QFile::encodeName(QDir::cleanPath(m_volume->root())));
}

QStringList TestMaintenanceFaultsCopy::onPlayer() const
{
    QStringList entries = entriesBelow(m_volume->root());
    entries.removeOne(QStringLiteral(".windows-label"));
    return entries;
}

void TestMaintenanceFaultsCopy::backup(const QString &destination)
{
    const FolderDialogAnswerer dialogs(destination);
    m_procedure->run("makeSecurityCopyOfSongs");
    QCOMPARE(dialogs.captions().size(), 1);
    QVERIFY(m_procedure->stop()->isHidden());
}

void TestMaintenanceFaultsCopy::restore(const QString &source)
{
    const FolderDialogAnswerer dialogs(source);
    m_procedure->run("restoreSecurityCopyOfSongs");
    QCOMPARE(dialogs.captions().size(), 1);
    QVERIFY(m_procedure->stop()->isHidden());
}

QStringList TestMaintenanceFaultsCopy::titles() const
{
    QStringList titles;
    for (const BoxAnswerer::Seen &box : m_boxes->seen())
        titles.append(box.title);
    return titles;
}

void TestMaintenanceFaultsCopy::backupAndRestoreOnARealVolume()
{
    mountPlayer(16);
    const QMap<QString, QByteArray> songs = {{QStringLiteral("a.mid"), "a"},
                                             {QStringLiteral("My Songs/b.mid"), QByteArray(100000, 'b')},
                                             {QString::fromUtf8("Là/perché.mp3"), "c"},
                                             {QStringLiteral("System/playlist/one.pls"), "d"},
                                             {QStringLiteral("My Songs/empty.mid"), ""}};
    for (auto song = songs.begin(); song != songs.end(); ++song)
        putFile(player(song.key()), song.value());
    m_boxes->answer(kDone, kOk);
    backup(m_destination);
    for (auto song = songs.begin(); song != songs.end(); ++song) {
        QCOMPARE(contentOf(m_destination + QLatin1Char('/') + song.key()), song.value());
        QVERIFY(QFile::remove(player(song.key())));
    }
    m_boxes->answer(kDone, kOk);
    restore(m_destination);
    // What stands after the cable was pulled is what reached the disk.
    QVERIFY(m_volume->pull());
    QVERIFY(m_volume->mount());
    for (auto song = songs.begin(); song != songs.end(); ++song)
        QCOMPARE(contentOf(player(song.key())), song.value());
}

void TestMaintenanceFaultsCopy::systemPartsAreKnownOnAVolumeThatIgnoresCase()
{
    mountPlayer(16);
    for (const char *name : {"SYSTEM/PLAYLIST/one.pls", "SYSTEM/GuiProc/GuiProc.exe", "BRIDGES/a.mid", "Effects/b.fx",
                             "AutoExec.bat", "Songs/c.mid"})
        putFile(player(QLatin1String(name)));
    m_boxes->answer(kDone, kOk);
    backup(m_destination);
    // A name that is found as it is written keeps that spelling.
    const QStringList expected = {QStringLiteral("Songs"), QStringLiteral("Songs/c.mid"), QStringLiteral("System"),
                                  QStringLiteral("System/playlist"), QStringLiteral("System/playlist/one.pls")};
    QCOMPARE(entriesBelow(m_destination), expected);
}

void TestMaintenanceFaultsCopy::proceduresOnARealVolumeCanBeStopped_data()
{
    QTest::addColumn<bool>("saving");
    QTest::addColumn<QString>("status");
    QTest::addColumn<bool>("counting");
    QTest::addColumn<int>("copied");
    QTest::newRow("backup, while reading") << true << kReading << true << 0;
    QTest::newRow("backup, while copying") << true << kSaving << true << 1;
    QTest::newRow("restore, while listing") << false << kRestoring << false << 0;
    QTest::newRow("restore, while copying") << false << kRestoring << true << 1;
}

void TestMaintenanceFaultsCopy::proceduresOnARealVolumeCanBeStopped()
{
    QFETCH(bool, saving);
    QFETCH(QString, status);
    QFETCH(bool, counting);
    QFETCH(int, copied);
    mountPlayer(16);
    const QString from = saving ? player(QStringLiteral("Songs/")) : m_destination + QStringLiteral("/Songs/");
    for (int i = 0; i < 10; ++i)
        putFile(from + QStringLiteral("%1.mid").arg(i));
    m_boxes->answer(kStop, kSi);
    m_boxes->answer(kBackupError, kOk);
    const StopPresser stop(*m_procedure, [&] {
        return m_procedure->status() == status && !QApplication::activeModalWidget() &&
               (m_procedure->bar()->format() == QLatin1String("%v")) == counting;
    });
    if (saving)
        backup(m_destination);
    else
        restore(m_destination);
    QVERIFY(stop.pressed);
    const QStringList to = saving ? entriesBelow(m_destination) : onPlayer();
    QCOMPARE(to.filter(QStringLiteral(".mid")).size(), copied);
}

void TestMaintenanceFaultsCopy::restoreOntoAFullVolumeLeavesNoHalfFile()
{
    mountPlayer(8);
    const QByteArray song(kMegabyte, 's');
    for (int i = 0; i < 10; ++i)
        putFile(m_destination + QStringLiteral("/%1.mid").arg(i), song);
    m_boxes->answer(kFailed, kYesToAll);
    m_boxes->answer(kBackupError, kOk);
    restore(m_destination);
    const QStringList names = onPlayer();
    QVERIFY(!names.isEmpty() && names.size() < 10);
    for (const QString &name : names)
        QCOMPARE(contentOf(player(name)), song);
}

void TestMaintenanceFaultsCopy::playerPulledOutWhileItIsReadIsNoBackup()
{
    mountPlayer(16);
    for (int i = 0; i < 20; ++i)
        putFile(player(QStringLiteral("Songs%1/a.mid").arg(i)));
    bool pulled = false;
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&] {
        if (!pulled && m_procedure->status() == kReading)
            pulled = m_volume->pull();
    });
    watch.start(0);
    m_boxes->answer(kBackupError, kOk);
    backup(m_destination);
    QVERIFY(pulled);
    QCOMPARE(titles(), QStringList{kBackupError});
}

void TestMaintenanceFaultsCopy::playerPulledOutWhileSavingIsAskedAbout()
{
    mountPlayer(16);
    for (int i = 0; i < 20; ++i)
        putFile(player(QStringLiteral("%1.mid").arg(i)));
    bool pulled = false;
    connect(m_procedure->bar(), &QProgressBar::valueChanged, this, [&](int value) {
        if (m_procedure->status() == kSaving && value == 3)
            pulled = m_volume->pull();
    });
    m_boxes->answer(kFailed, kYesToAll);
    m_boxes->answer(kBackupError, kOk);
    backup(m_destination);
    QVERIFY(pulled);
    QCOMPARE(entriesBelow(m_destination).size(), 3);
}

void TestMaintenanceFaultsCopy::playerPulledOutWhileRestoringIsNoSuccess()
{
    mountPlayer(16);
    for (int i = 0; i < 6; ++i)
        putFile(m_destination + QStringLiteral("/%1.mid").arg(i));
    bool pulled = false;
    connect(m_procedure->bar(), &QProgressBar::valueChanged, this, [&](int value) {
        if (value == 3 && m_procedure->bar()->maximum() == 6)
            pulled = m_volume->pull();
    });
    m_boxes->answer(kBackupError, kOk);
    restore(m_destination);
    QVERIFY(pulled);
    QCOMPARE(titles(), QStringList{kBackupError});
}

void TestMaintenanceFaultsCopy::backupOntoAFullDiskLeavesNoHalfFile()
{
    mountPlayer(16);
    const QByteArray song(kMegabyte / 4, 's');
    for (int i = 0; i < 8; ++i)
        putFile(player(QStringLiteral("%1.mid").arg(i)), song);
    const QString disk = m_pc->path() + QStringLiteral("/disk");
    QVERIFY(QDir().mkdir(disk));
    const Mount mount(disk, 1100);
    if (!mount.isGood())
        QSKIP("Nothing can be mounted here");
    const QString folder = disk + QStringLiteral("/backup");
    QVERIFY(QDir().mkdir(folder));
    m_boxes->answer(kFailed, kYesToAll);
    m_boxes->answer(kBackupError, kOk);
    backup(folder);
    const QStringList names = entriesBelow(folder);
    QVERIFY(!names.isEmpty() && names.size() < 8);
    for (const QString &name : names)
        QCOMPARE(contentOf(folder + QLatin1Char('/') + name), song);
}

void TestMaintenanceFaultsCopy::backupOntoAReadOnlyDiskIsRefused()
{
    mountPlayer(16);
    putFile(player(QStringLiteral("a.mid")));
    const QString disk = m_pc->path() + QStringLiteral("/disk");
    putFile(disk + QStringLiteral("/backup/old.mid"));
    const Mount mount(disk);
    if (!mount.isGood())
        QSKIP("Nothing can be mounted here");
    m_boxes->answer(kFull, kYes);
    m_boxes->answer(kError, kYes);
    m_boxes->answer(kBackupError, kOk);
    backup(disk + QStringLiteral("/backup"));
    QVERIFY(QFileInfo::exists(disk + QStringLiteral("/backup/old.mid")));
}

void TestMaintenanceFaultsCopy::backupOntoTheRootOfADiskKeepsWhatIsThere()
{
    mountPlayer(16);
    putFile(player(QStringLiteral("a.mid")));
    const QString disk = m_pc->path() + QStringLiteral("/disk");
    QVERIFY(QDir().mkdir(disk));
    const Mount mount(disk, 1000);
    if (!mount.isGood())
        QSKIP("Nothing can be mounted here");
    putFile(disk + QStringLiteral("/old.mid"));
    m_boxes->answer(kFull, kYes);
    m_boxes->answer(kError, kYes);
    m_boxes->answer(kBackupError, kOk);
    backup(disk);
    QCOMPARE(entriesBelow(disk), QStringList{QStringLiteral("old.mid")});
}

void TestMaintenanceFaultsCopy::backupOntoTheSameDiskByAnotherWayIsRefused()
{
    mountPlayer(16);
    putFile(player(QStringLiteral("Songs/a.mid")));
    const QString other = m_pc->path() + QStringLiteral("/other");
    QVERIFY(QDir().mkdir(other));
    if (!runProgram(QStringLiteral("mount"), {QStringLiteral("--bind"), m_volume->root(), other}))
        QSKIP("Nothing can be mounted here");
    m_boxes->answer(kError, kYes);
    m_boxes->answer(kBackupError, kOk);
    backup(other + QStringLiteral("/Songs"));
    QVERIFY(runProgram(QStringLiteral("umount"), {other}));
    QVERIFY(QFileInfo::exists(player(QStringLiteral("Songs/a.mid"))));
}

void TestMaintenanceFaultsCopy::destinationThatCannotBeEmptiedIsTold()
{
    mountPlayer(16);
    putFile(player(QStringLiteral("a.mid")));
    const QString kept = m_destination + QStringLiteral("/kept.mid");
    putFile(kept);
    if (!runProgram(QStringLiteral("chattr"), {QStringLiteral("+i"), kept}))
        QSKIP("This file system has no immutable files");
    m_boxes->answer(kFull, kYes);
    m_boxes->answer(kError, kYes);
    m_boxes->answer(kBackupError, kOk);
    backup(m_destination);
    QVERIFY(runProgram(QStringLiteral("chattr"), {QStringLiteral("-i"), kept}));
    const QStringList expected = {kFull, kError, kBackupError};
    QCOMPARE(titles(), expected);
    QCOMPARE(entriesBelow(m_destination), QStringList{QStringLiteral("kept.mid")});
}

void TestMaintenanceFaultsCopy::restoreOntoAReadOnlyPlayerIsNoSuccess()
{
    SimulatedPlayer player;
    putFile(m_destination + QStringLiteral("/a.mid"));
    putFile(m_destination + QStringLiteral("/b.mid"));
    const Mount mount(QDir::cleanPath(player.root()));
    if (!mount.isGood())
        QSKIP("Nothing can be mounted here");
    m_boxes->answer(kFailed, kSi);
    m_boxes->answer(kFailed, kSi);
    m_boxes->answer(kBackupError, kOk);
    restore(m_destination);
    QVERIFY((*m_procedure)->procedureOk);
    // In a folder of its own, the folder is what cannot be made.
    QVERIFY(QFile::remove(m_destination + QStringLiteral("/a.mid")) &&
            QFile::remove(m_destination + QStringLiteral("/b.mid")));
    putFile(m_destination + QStringLiteral("/Songs/a.mid"));
    m_boxes->answer(kError, kOk);
    m_boxes->answer(kBackupError, kOk);
    restore(m_destination);
    QVERIFY(!(*m_procedure)->procedureOk);
    QVERIFY(player.files().isEmpty());
}

QTEST_MAIN(TestMaintenanceFaultsCopy)
#include "tst_maintenancefaults_copy.moc"
