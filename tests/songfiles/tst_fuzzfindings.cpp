#include "checks.h"
#include "songtest.h"
#include "support/logcapture.h"

/// What fuzzing has found, and what it ought to find, goes through every parser: one file a row, named after what is
/// wrong with it.
class TestFuzzFindings : public QObject
{
    Q_OBJECT

private slots:
    void everyFindingIsRightForEveryParserInTime_data() {
        columns<QByteArray>("bytes");
        const QDir folder(QStringLiteral(CORVIN_FINDINGS_FOLDER));
        const QStringList names = folder.entryList(QDir::Files, QDir::Name);
        for (const QString &name : names)
            row(qPrintable(name), contentOf(folder.filePath(name)));
    }
    void everyFindingIsRightForEveryParserInTime() {
        QFETCH(QByteArray, bytes);
        QVERIFY(!bytes.isEmpty());
        QCOMPARE(wrongWith(bytes), QStringList());
    }

    void everyPartOfAWholeSongIsRightForEveryParserInTime_data() {
        columns<QByteArray>("bytes");
        SongInfo info = fullInfo();
        info.markers = {{1, "a"_s}};
        row("MIDI", SongFactory::midi(info, 1, SongFactory::Markers::WithBars, 1));
        row("MF4", SongFactory::mfx(4, info, 1));
        row("MP3", SongFactory::mp3(3, info, 1, 1));
        row("playlist", "\\sdmemory\\My Songs\\\xC3\xA8.mid^1^0\r\n\\SDmemory\\a.mp3^12^0\r\nno song\n"_b);
        row("export", "x\\sdmemory\\My Songs\\\xC3\xA8.mid\0\1\\sdmemory\\a.mp3\0y"_b);
        row("entry name", "./a\\b//c.txt"_b);
    }
    void everyPartOfAWholeSongIsRightForEveryParserInTime() {
        QFETCH(QByteArray, bytes);
        for (int size = 0; size <= bytes.size(); ++size)
            QCOMPARE(wrongWith(bytes.left(size)), QStringList());
    }

private:
    static constexpr int kMostMilliseconds = 3000;

    /// What the checks find wrong, each with its name.
    static QStringList wrongWith(const QByteArray &bytes) {
        const LogCapture log; // keeps what parsers say of damaged songs out of the report
        QStringList wrong;
        for (const FuzzChecks::Check &check : FuzzChecks::all()) {
            QElapsedTimer timer;
            timer.start();
            const QString verdict = check.run(bytes);
            if (!verdict.isEmpty())
                wrong += QLatin1String(check.name) + ": "_s + verdict;
            if (timer.elapsed() > kMostMilliseconds)
                wrong += QLatin1String(check.name) + " took too long"_s;
        }
        return wrong;
    }
};

QTEST_GUILESS_MAIN(TestFuzzFindings)
#include "tst_fuzzfindings.moc"
