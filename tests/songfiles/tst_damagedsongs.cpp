#include "songtest.h"
#include "support/logcapture.h"
#include "support/platform.h"

/// Songs with missing ends and changed bytes go the whole way from import to saving.
class TestDamagedSongs : public QObject
{
    Q_OBJECT

private slots:
    void everyDamagedSongIsReadChangedAndSavedInTime_data() {
        columns<QString, QByteArray>("name", "bytes");
        SongInfo info = fullInfo();
        info.markers = {{1, "a"_s}};
        row("MIDI format 0", "a.mid"_s, SongFactory::midi(info, 0, SongFactory::Markers::WithBars, 1));
        row("MIDI format 1", "a.mid"_s, SongFactory::midi(info, 1, SongFactory::Markers::Standard, 1));
        row("karaoke", "a.kar"_s, SongFactory::karaoke({"@TA"_s}, {"la"_s}));
        row("MF3", "a.mf3"_s, SongFactory::mfx(3, info, 1));
        row("MF4", "a.mf4"_s, SongFactory::mfx(4, info, 1));
        row("MF5", "a.mf5"_s, SongFactory::mfx(5, info, 1));
        row("MP3 without tag", "a.mp3"_s, SongFactory::mp3(0, info, 0, 1));
        row("MP3 2.2", "a.mp3"_s, SongFactory::mp3(2, info, 0, 1));
        row("MP3 2.3 Latin-1", "a.mp3"_s, SongFactory::mp3(3, info, 0, 1));
        row("MP3 2.3 UTF-16", "a.mp3"_s, SongFactory::mp3(3, info, 1, 1));
        row("MP3 2.4 UTF-8", "a.mp3"_s, SongFactory::mp3(4, info, 3, 1));
    }
    void everyDamagedSongIsReadChangedAndSavedInTime() {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        const PcFolder folder;
        const LogCapture log; // keeps thousands of lines out of the report
        bool manual = false;
        int number = 0;
        forEachDamagedCopy(bytes, [&](const QByteArray &damaged) {
            if (QTest::currentTestFailed() || number++ % kBrokenFilesStep != 0)
                return;
            manual = !manual;
            goAllTheWay(folder.path(name), damaged, manual);
        });
    }

private:
    static constexpr int kMostMillisecondsASong = 3000;

    static void goAllTheWay(const QString &path, const QByteArray &bytes, bool manual) {
        QFile::remove(path);
        putFile(path, bytes);
        QElapsedTimer timer;
        timer.start();
        MetaSong song;
        SongInfo info;
        const bool imported = song.importFile(path);
        song.getSongInfo(info);
        QCOMPARE(info.format != "UNKNOWN"_s, imported);
        info.title = "Other title"_s;
        info.artist = "Other artist"_s;
        song.setSongInfo(info, manual);
        song.addMarker("marker"_s, 3);
        // An MP3 is saved on top of itself. The others go where nothing is: many file systems wait for the disk
        // whenever a file is written over, which takes longer than all the rest.
        const bool isMp3 = song.formatCode() == Mp3Format;
        if (!isMp3)
            QVERIFY(QFile::remove(path));
        const bool saved = song.saveToFile(path);
        QVERIFY(timer.elapsed() < kMostMillisecondsASong);

        const QByteArray after = contentOf(path);
        if (!saved) {
            QVERIFY(after == (isMp3 ? bytes : QByteArray()));
            QVERIFY(!QFile::exists(path.left(path.lastIndexOf(QLatin1Char('.'))) + ".tmp"_s));
            return;
        }
        QVERIFY(imported);
        // What was saved is a song again, and an MP3 still has all of its audio.
        MetaSong again;
        QVERIFY(again.importFile(path));
        QCOMPARE(again.formatCode(), song.formatCode());
        if (isMp3)
            QVERIFY(after.endsWith(audioOf(bytes)));
    }

    /// What an MP3 song holds behind its tag.
    static QByteArray audioOf(const QByteArray &bytes) {
        Id3Tag tag;
        return tag.load(bytes) ? bytes.mid(int(tag.audioOffset())) : QByteArray();
    }
};

QTEST_GUILESS_MAIN(TestDamagedSongs)
#include "tst_damagedsongs.moc"
