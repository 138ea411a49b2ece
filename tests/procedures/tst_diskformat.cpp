#include "playerdisk.h"
#include "systemfixture.h"

#include "app/mainwindow.h"
#include "app/shared/sharedfonts.h"
#include "resources/resources.h"
#include "support/boxanswerer.h"
#include "support/logcapture.h"
#include "support/simulatedplayer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

namespace {

const QString kTitle = QStringLiteral("Cancellazione Drive");
const QString kYes = QStringLiteral("Si");
const QString kNo = QStringLiteral("No");
const QString kBegin = QStringLiteral("FormatCorvinDisk : Inizio");
const QString kEnd = QStringLiteral("FormatCorvinDisk : Fine");

// 500 ms before the first look for the player, 1000 ms after it was found.
constexpr int kShortestRunMs = 1500;

} // namespace

class TestDiskFormat : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void questionReadsAsWritten();
    void refusedFormatDoesNothing_data();
    void refusedFormatDoesNothing();
    void commandGetsItsArgumentsInOrder();
    void commandThatFailsButRunsCountsAsDone();
    void commandThatCannotBeStartedIsAFailure();
    void outputOfTheCommandIsLogged();
    void waitsUntilThePlayerIsBackWhateverStopSays();
    void realVolumeIsFormattedAndFoundAgain();
};

void TestDiskFormat::initTestCase()
{
    loadResources();
    registerEmbeddedFonts();
}

void TestDiskFormat::questionReadsAsWritten()
{
    const SimulatedPlayer player;
    const ProcedureWindow window;
    BoxAnswerer boxes;
    boxes.answer(kTitle, kNo);
    QVERIFY(!window->FormatCorvinDisk(QStringLiteral("E:/")));
    const BoxAnswerer::Seen &box = boxes.seen().first();
    QCOMPARE(box.text, QStringLiteral("ATTENZIONE: Il drive E:/ verrà cancellato.\nVuoi continuare?"));
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.defaultButton, kYes);
    QVERIFY(!box.hadParent);
    QStringList buttons = box.buttons;
    buttons.sort();
    const QStringList expected = {kNo, kYes};
    QCOMPARE(buttons, expected);
}

void TestDiskFormat::refusedFormatDoesNothing_data()
{
    QTest::addColumn<QString>("means");
    QTest::newRow("no") << "no";
    QTest::newRow("escape") << "escape";
    QTest::newRow("closing") << "close";
}

void TestDiskFormat::refusedFormatDoesNothing()
{
    QFETCH(QString, means);
    const SimulatedPlayer player;
    const QTemporaryDir notes;
    ProgramFolder programs;
    addFormatCommand(programs, {Does::make(notes.filePath(QStringLiteral("ran")))});
    const ProcedureWindow window;
    window.bar()->setMaximum(7);
    window.bar()->setValue(3);
    BoxAnswerer boxes;
    if (means == QLatin1String("no"))
        boxes.answer(kTitle, kNo);
    else if (means == QLatin1String("escape"))
        boxes.answerByKey(kTitle, Qt::Key_Escape);
    else
        boxes.answerByClosing(kTitle);
    const LogCapture log;
    QVERIFY(!window->FormatCorvinDisk(player.root()));
    for (const LogCapture::Line &line : log.lines())
        QVERIFY2(line.type != QtInfoMsg && line.type != QtDebugMsg, qPrintable(line.text));
    QCOMPARE(window.bar()->maximum(), 7);
    QCOMPARE(window.bar()->value(), 3);
    QVERIFY(!QFileInfo::exists(notes.filePath(QStringLiteral("ran"))));
}

void TestDiskFormat::commandGetsItsArgumentsInOrder()
{
    const SimulatedPlayer player;
    const QTemporaryDir notes;
    const QString record = notes.filePath(QStringLiteral("arguments"));
    ProgramFolder programs;
    addFormatCommand(programs, {Does::record(record)});
    const ProcedureWindow window;
    BoxAnswerer boxes;
    boxes.answer(kTitle, kYes);
    const LogCapture log;
    QElapsedTimer clock;
    clock.start();
    QVERIFY(window->FormatCorvinDisk(player.root()));
    QVERIFY2(clock.elapsed() >= kShortestRunMs, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(QString::fromUtf8(contentOf(record)).split(QLatin1Char('\n'), Qt::SkipEmptyParts),
             formatArguments(player.root().chopped(1)));
    QVERIFY(log.contains(QtInfoMsg, kBegin));
    QVERIFY(log.contains(QtInfoMsg, kEnd));
    QVERIFY(log.texts().indexOf(kBegin) < log.texts().indexOf(kEnd));
    QCOMPARE(log.texts().last(), kEnd);
    QCOMPARE(window.bar()->maximum(), 10);
}

void TestDiskFormat::commandThatFailsButRunsCountsAsDone()
{
    const SimulatedPlayer player;
    ProgramFolder programs;
    addFormatCommand(programs, {Does::complain(QStringLiteral("Cannot format.")), Does::exitWith(4)});
    const ProcedureWindow window;
    BoxAnswerer boxes;
    boxes.answer(kTitle, kYes);
    QVERIFY(window->FormatCorvinDisk(player.root()));
}

void TestDiskFormat::commandThatCannotBeStartedIsAFailure()
{
    SimulatedPlayer player;
    player.addFile(QStringLiteral("Songs/a.mid"));
    ProgramFolder programs;
    programs.addBroken(QStringLiteral("cmd.exe"));
    const ProcedureWindow window;
    BoxAnswerer boxes;
    boxes.answer(kTitle, kYes);
    const LogCapture log;
    // While it looks for the player, which is there: busy, and the window lives.
    int rounds = 0;
    QString status;
    int maximum = -1;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (!log.contains(kBegin))
            return;
        ++rounds;
        status = window.label()->text();
        maximum = window.bar()->maximum();
    });
    timer.start(10);
    QVERIFY(!window->FormatCorvinDisk(player.root()));
    QVERIFY(rounds > 1);
    QCOMPARE(status, QStringLiteral("Sto formattando Corvin..."));
    QCOMPARE(maximum, 0);
    QCOMPARE(log.texts().last(), kEnd);
    QCOMPARE(window.bar()->maximum(), 10);
    QCOMPARE(player.files(), QStringList{QStringLiteral("Songs/a.mid")});
}

void TestDiskFormat::outputOfTheCommandIsLogged()
{
    const SimulatedPlayer player;
    ProgramFolder programs;
    addFormatCommand(programs, {Does::print(QStringLiteral("spoken")), Does::complain(QStringLiteral("complained"))});
    const ProcedureWindow window;
    BoxAnswerer boxes;
    boxes.answer(kTitle, kYes);
    const LogCapture log;
    QVERIFY(window->FormatCorvinDisk(player.root()));
    QStringList lines;
    for (const LogCapture::Line &line : log.lines()) {
        if (line.type == QtDebugMsg)
            lines.append(line.text);
    }
    QCOMPARE(lines.size(), 1);
    const QStringList parts = {QStringLiteral("cmd.exe"), QStringLiteral("spoken"), QStringLiteral("complained"),
                               QStringLiteral("/C, format, ") + player.root().chopped(1) +
                                   QStringLiteral(", /FS:exFAT, /V:CORVIN4, /Q, /X, /Y")};
    for (const QString &part : parts)
        QVERIFY2(lines.first().contains(part), qPrintable(lines.first()));
}

void TestDiskFormat::waitsUntilThePlayerIsBackWhateverStopSays()
{
    SimulatedPlayer player;
    ProgramFolder programs;
    addFormatCommand(programs, {});
    const ProcedureWindow window;
    BoxAnswerer boxes;
    boxes.answer(kTitle, kYes);
    boxes.answer(QStringLiteral("Interrompi Operazione"), kYes);
    constexpr int kAwayMs = 1200;
    bool back = false;
    boxes.whenShown([&](const QMessageBox *box) {
        if (box->windowTitle() != kTitle)
            return;
        SimulatedPlayer::disconnect();
        QTimer::singleShot(kAwayMs / 2, window.stop(), &QPushButton::click);
        QTimer::singleShot(kAwayMs, this, [&] {
            back = true;
            player.connect();
        });
    });
    QElapsedTimer clock;
    clock.start();
    QVERIFY(window->FormatCorvinDisk(player.root()));
    QVERIFY(back);
    QVERIFY(window->abortRequested);
    // Found again, it is left a second to settle.
    QVERIFY2(clock.elapsed() >= kAwayMs + 1000, qPrintable(QString::number(clock.elapsed())));
}

void TestDiskFormat::realVolumeIsFormattedAndFoundAgain()
{
    QString why;
    if (!ExFatVolume::isPossible(&why))
        QSKIP(qPrintable(why));
    ExFatVolume volume(16);
    QVERIFY2(volume.isMounted(), qPrintable(volume.error()));
    QVERIFY(volume.linkLabel());
    const QByteArray before = qgetenv("CORVIN_VOLUMES");
    qunsetenv("CORVIN_VOLUMES");
    putFile(volume.path(QStringLiteral("Songs/a.mid")), "a");
    ProgramFolder programs;
    const QString device = volume.device();
    programs.addScript(QStringLiteral("cmd.exe"),
                       QStringLiteral("PATH=/usr/sbin:/usr/bin:/sbin:/bin\n"
                                      "umount \"$3\" && mkfs.exfat -L \"${5#/V:}\" %1 && mount.exfat-fuse %1 \"$3\"\n")
                           .arg(device)
                           .toUtf8());
    const ProcedureWindow window;
    BoxAnswerer boxes;
    boxes.answer(kTitle, kYes);
    const QString root = DeviceLocator().findDeviceRoot();
    const bool formatted = !root.isEmpty() && window->FormatCorvinDisk(root);
    const QString rootAfter = DeviceLocator().findDeviceRoot();
    qputenv("CORVIN_VOLUMES", before);
    QCOMPARE(root, volume.root());
    QVERIFY(formatted);
    QCOMPARE(rootAfter, volume.root());
    QVERIFY(QDir(volume.root()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot));
    putFile(volume.path(QStringLiteral("b.mid")), "b");
    QCOMPARE(contentOf(volume.path(QStringLiteral("b.mid"))), QByteArray("b"));
}

QTEST_MAIN(TestDiskFormat)
#include "tst_diskformat.moc"
