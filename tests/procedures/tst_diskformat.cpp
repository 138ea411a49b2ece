#include "playerdisk.h"
#include "systemfixture.h"

namespace {

const QString kBegin = "FormatCorvinDisk : Inizio"_s;
const QString kEnd = "FormatCorvinDisk : Fine"_s;

// 500 ms before the first look for the player, 1000 ms after it was found.
constexpr int kShortestRunMs = 1500;

/// A format command that erases the drive and does this, for a player with a song.
struct Format : Maintenance
{
    explicit Format(const QStringList &does = {}) {
        player.addFile("Songs/a.mid"_s);
        addFormatCommand(programs, QStringList{eraseDrive()} + does);
    }
    /// Formats the player, or another drive, while the question is answered so.
    bool erase(const QString &how = Buttons::kSi, const QString &drive = QString()) {
        announce(boxes, {{Titles::kEraseDrive, how}});
        return window->FormatCorvinDisk(drive.isEmpty() ? player.root() : drive);
    }
};

} // namespace

class TestDiskFormat : public QObject
{
    Q_OBJECT

private slots:
    void refusedFormatDoesNothing_data() {
        columns<QString>("how");
        row("no", Buttons::kNo);
        row("escape", "escape"_s);
        row("closing", "close"_s);
    }
    void refusedFormatDoesNothing() {
        QFETCH(QString, how);
        const PcFolder notes;
        Format format({Does::make(notes.path("ran"_s))});
        QProgressBar *bar = format.window.bar();
        bar->setMaximum(7);
        bar->setValue(3);
        const LogCapture log;
        QVERIFY(!format.erase(how, "E:/"_s));
        expectLook(format.lastBox(), QMessageBox::Question,
                   "ATTENZIONE: Il drive E:/ verrà cancellato.\nVuoi continuare?"_s, {Buttons::kNo, Buttons::kSi});
        QCOMPARE(format.lastBox().defaultButton, Buttons::kSi);
        QVERIFY(!format.lastBox().hadParent);
        QVERIFY(format.lastBox().hadFixedSize);
        for (const LogCapture::Line &line : log.lines())
            QVERIFY2(line.type != QtInfoMsg && line.type != QtDebugMsg, qPrintable(line.text));
        QCOMPARE(bar->maximum(), 7);
        QCOMPARE(bar->value(), 3);
        QCOMPARE(notes.files(), QStringList());
    }

    void endOfTheCommandDecidesHowAReinstallGoesOn_data() {
        columns<QString, QString, QString>("how", "command", "lastBox");
        row("refused", Buttons::kNo, Does::exitWith(0), Titles::kEraseDrive);
        row("refused by escape", "escape"_s, Does::exitWith(0), Titles::kEraseDrive);
        row("refused by closing", "close"_s, Does::exitWith(0), Titles::kEraseDrive);
        row("well", Buttons::kSi, Does::exitWith(0), Titles::kFinished);
        row("ran and failed", Buttons::kSi, Does::exitWith(4), Titles::kFinished);
        row("could not be started", Buttons::kSi, QString(), Titles::kFormatError);
        row("refused by the system", Buttons::kSi, "refuse"_s, Titles::kFormatError);
    }
    void endOfTheCommandDecidesHowAReinstallGoesOn() {
        QFETCH(QString, how);
        QFETCH(QString, command);
        QFETCH(QString, lastBox);
        Format format({command == "refuse"_s ? Does::exitWith(0) : command});
        if (command.isEmpty())
            format.programs.addBroken("cmd.exe"_s);
        if (command == "refuse"_s)
            addFormatCommand(format.programs, {Does::print("Accesso negato"_s)});
        QList<Answer> answers = {Titles::kErase, {Titles::kEraseDrive, how}};
        if (lastBox != Titles::kEraseDrive)
            answers.append(lastBox);
        format.run(Slots::kReinstallClean, answers);
        QCOMPARE(format.player.exists("System/Corvin/Corvin.exe"_s), lastBox == Titles::kFinished);
        QCOMPARE(format.player.exists("Songs/a.mid"_s), lastBox != Titles::kFinished);
    }

    void commandThatFailsButRunsCountsAsDone() {
        const PcFolder notes;
        Format format({Does::record(notes.path("arguments"_s)), Does::print("spoken"_s), Does::complain("complained"_s),
                       Does::exitWith(4)});
        const QString drive = format.player.root().chopped(1);
        const LogCapture log;
        QElapsedTimer clock;
        clock.start();
        QVERIFY(format.erase());
        QVERIFY2(clock.elapsed() >= kShortestRunMs, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(QString::fromUtf8(notes.content("arguments"_s)).split(QLatin1Char('\n'), Qt::SkipEmptyParts),
                 formatArguments(drive));
        QCOMPARE(format.window.bar()->maximum(), 10);
        QStringList infos;
        QStringList debugs;
        for (const LogCapture::Line &line : log.lines()) {
            if (line.type == QtInfoMsg && line.text.startsWith("Format"_s))
                infos.append(line.text);
            if (line.type == QtDebugMsg)
                debugs.append(line.text);
        }
        QCOMPARE(infos, (QStringList{kBegin, kEnd}));
        QCOMPARE(log.texts().last(), kEnd);
        QCOMPARE(debugs.size(), 1);
        for (const QString &part : {"cmd.exe"_s, "spoken"_s, "complained"_s,
                                    "/C, format, %1, /FS:exFAT, /V:CORVIN4, /Q, /X, /Y"_s.arg(drive)})
            QVERIFY2(debugs.first().contains(part), qPrintable(debugs.first()));
    }

    void commandThatCannotBeStartedIsAFailure() {
        Format format;
        format.programs.addBroken("cmd.exe"_s);
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
            status = format.window.status();
            maximum = format.window.bar()->maximum();
        });
        timer.start(10);
        QVERIFY(!format.erase());
        QVERIFY(rounds > 1);
        QCOMPARE(status, Status::kFormatting);
        QCOMPARE(maximum, 0);
        QCOMPARE(log.texts().last(), kEnd);
        QCOMPARE(format.window.bar()->maximum(), 10);
        QCOMPARE(format.player.files(), words("Songs/a.mid"));
    }

    void driveThatIsNoLongerThePlayersIsNotFormatted_data() {
        columns<QString>("now");
        row("pulled", "pulled"_s);
#ifndef Q_OS_WIN // Wine looks at a drive's label and number only when the drive is plugged in.
        row("another label", "another label"_s);
        row("no label", "no label"_s);
        row("the player under another root", "elsewhere"_s);
#endif
    }
    void driveThatIsNoLongerThePlayersIsNotFormatted() {
        QFETCH(QString, now);
        const PcFolder notes;
        Format format({Does::make(notes.path("ran"_s))});
        std::optional<SimulatedPlayer> other;
        format.boxes.whenShown([&](QMessageBox *) {
            if (now == "another label"_s)
                format.player.addFile(".windows-label"_s, "PHOTOS");
            else if (now == "no label"_s)
                QFile::remove(format.player.path(".windows-label"_s));
            else if (now == "elsewhere"_s)
                other.emplace();
            else
                SimulatedPlayer::disconnect();
        });
        const LogCapture log;
        QElapsedTimer clock;
        clock.start();
        QVERIFY(!format.erase());
        // It does not wait for a player that is not the matter here.
        QVERIFY2(clock.elapsed() < kShortestRunMs, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(notes.files(), QStringList());
        QVERIFY(QFile::exists(format.player.path("Songs/a.mid"_s)) || now == "pulled"_s);
        QCOMPARE(log.texts().last(), kEnd);
    }

    void whatTheSystemKeepsOnEveryDiskIsNoSignOfAFailure_data() {
        columns<QString, bool>("left", "erased");
        row("system's own folder", "System Volume Information/x"_s, true);
        row("recycle bin in any case", "$Recycle.Bin/x"_s, true);
        row("name with a dot in front", ".Trash-1000/x"_s, true);
        row("a song", "My Songs/a.mid"_s, false);
        row("a name without a dot", "README"_s, false);
    }
    void whatTheSystemKeepsOnEveryDiskIsNoSignOfAFailure() {
        QFETCH(QString, left);
        QFETCH(bool, erased);
        Format format;
        QVERIFY(QFile::remove(format.player.path("Songs/a.mid"_s)) && QDir().rmdir(format.player.path("Songs"_s)));
        format.player.addFile(left);
        addFormatCommand(format.programs, {Does::print("Accesso negato"_s)});
        QCOMPARE(format.erase(), erased);
    }

    void questionOfTheCommandMeetsTheEndOfItsInput() {
        const PcFolder notes;
        Format format({Does::readInput(), Does::make(notes.path("ended"_s))});
        QVERIFY(format.erase());
        QCOMPARE(notes.files(), words("ended"));
    }

    void waitsUntilThePlayerIsBackWhateverStopSays() {
        constexpr int kAwayMs = 1200;
        Format format;
        const LogCapture log;
        bool away = false;
        bool back = false;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            if (away || !log.contains(kBegin))
                return;
            away = true;
            SimulatedPlayer::disconnect();
            QTimer::singleShot(kAwayMs / 2, format.window.stop(), &QPushButton::click);
            QTimer::singleShot(kAwayMs, this, [&] {
                back = true;
                format.player.connect();
            });
        });
        timer.start(10);
        announce(format.boxes, {Titles::kEraseDrive, Titles::kStop});
        QElapsedTimer clock;
        clock.start();
        QVERIFY(format.window->FormatCorvinDisk(format.player.root()));
        QVERIFY(back);
        QVERIFY(format.window->abortRequested);
        // Found again, it is left a second to settle.
        QVERIFY2(clock.elapsed() >= kAwayMs + 1000, qPrintable(QString::number(clock.elapsed())));
    }

    void waitForThePlayerEndsWhenTheWindowIsToClose() {
        Format format;
        const LogCapture log;
        bool away = false;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            if (away)
                format.window->closeRequested = true;
            if (away || !log.contains(kBegin))
                return;
            away = true;
            SimulatedPlayer::disconnect();
        });
        timer.start(300);
        QVERIFY(!format.erase());
        QVERIFY(format.window->closeRequested);
        QCOMPARE(log.texts().last(), kEnd);
    }

    void realVolumeIsFormattedAndFoundAgain() {
        QString why;
        NEEDS(ExFatVolume::isPossible(&why), qPrintable(why));
        Maintenance m;
        ExFatVolume volume(16);
        QVERIFY2(volume.isMounted(), qPrintable(volume.error()));
        QVERIFY(volume.linkLabel());
        const QByteArray before = qgetenv("CORVIN_VOLUMES");
        qunsetenv("CORVIN_VOLUMES");
        putFile(volume.path("Songs/a.mid"_s), "a");
        const QString script = "PATH=/usr/sbin:/usr/bin:/sbin:/bin\n"
                               "for once in $(seq 50); do umount \"$3\" && break; sleep 0.1; done\n"
                               "for once in $(seq 50); do mkfs.exfat -L \"${5#/V:}\" %1 && break; sleep 0.1; done\n"
                               "mount.exfat-fuse %1 \"$3\"\n"_s;
        m.programs.addScript("cmd.exe"_s, script.arg(volume.device()).toUtf8());
        m.boxes.answer(Titles::kEraseDrive, Buttons::kSi);
        const QString root = DeviceLocator().findDeviceRoot();
        const bool formatted = !root.isEmpty() && m.window->FormatCorvinDisk(root);
        const QString rootAfter = DeviceLocator().findDeviceRoot();
        qputenv("CORVIN_VOLUMES", before);
        QCOMPARE(root, volume.root());
        QVERIFY(formatted);
        QCOMPARE(rootAfter, volume.root());
        QCOMPARE(entriesBelow(volume.root()), QStringList());
        putFile(volume.path("b.mid"_s), "b");
        QCOMPARE(contentOf(volume.path("b.mid"_s)), QByteArray("b"));
    }
};

PAGE_TEST_MAIN(TestDiskFormat)
#include "tst_diskformat.moc"
