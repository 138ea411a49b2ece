#include "songtest.h"
#include "support/given.h"
#include "support/logcapture.h"

using namespace SongFactory;

Q_DECLARE_METATYPE(ImportResult)

/// Files that are no songs, or broken ones.
class TestMetaSongRefused : public QObject
{
    Q_OBJECT

private slots:
    void fileThatCannotBeOpenedIsRefused() {
        const LogCapture log;
        const PcFolder folder;
        MetaSong song;
        QVERIFY(!song.importFile(folder.path("missing.mid"_s)));
        QVERIFY(!song.importFile(QString()));
        QVERIFY(!song.importFile(folder.path()));
        QCOMPARE(song.formatCode(), int(UnknownFormat));
    }

    void brokenSongIsSkippedWithItsMessage() {
        const QString noExpansion = "[MetaSong::importFile] LzHuff Expand filed, skipping file"_s;
        const QString noMidi = "[MetaSong::importFile] MidiStream corrupted, skipping file"_s;
        const QString ruler(69, QLatin1Char('='));
        const QString tooLong = "WARNING: skipping file, compressed stream corrupted/wrong size !!!"_s;
        const QByteArray noStream = compressed("certainly no MIDI stream at all");
        const auto head = [](int version) { return mfxHeader(version, fullInfo(), 0, 0); };
        same("nothing", linesAt("a.mid"_s, ""), QStringList());
        same("MIDI of three bytes", linesAt("b.mid"_s, "MTh"), QStringList());
        same("MP3 of three bytes", linesAt("c.mp3"_s, "ID3"), QStringList());
        same("MIDI that is cut", linesAt("a.mid"_s, midi(fullInfo()).left(21)), QStringList(noMidi));
        same("MF5 of 1000 bytes", linesAt("a.mf5"_s, mfx(5, fullInfo()).left(1000)), QStringList());
        same("MF5 of 1023 bytes", linesAt("a.mf5"_s, mfx(5, fullInfo()).left(1023)), QStringList());
        same("MF3 without a stream", linesAt("a.mf3"_s, head(3) + "\0\0\0\0"_b), QStringList(noExpansion));
        same("MF4 whose stream is no MIDI", linesAt("a.mf4"_s, head(4) + noStream), QStringList(noMidi));
        same("MF5 whose stream is a byte too long", linesAt("a.mf5"_s, head(5) + littleEndian(500001) + "stream"),
             QStringList({ruler, tooLong, "Text size:  500001"_s, ruler, "Expand: ERROR"_s, noExpansion}));
    }

    void failedImportLeavesTheFormatAsItWas() {
        SongOnDisk file("a.mp3"_s, mp3(3, fullInfo()));
        QVERIFY(!isTaken(file.song, "b.mid"_s, midi(fullInfo()).left(21)));
        QCOMPARE(file.song.formatCode(), int(Mp3Format));
        QVERIFY(!isTaken(file.song, "c.mf3"_s, mfx(3, SongInfo()).left(513)));
        QCOMPARE(file.song.formatCode(), int(Mp3Format));
    }

    void whyASongWasNotTakenCanBeTold_data() {
        columns<QString, QByteArray, qint64, ImportResult>("name", "start", "size", "result");
        const auto row = [](const char *name, const char *file, const QByteArray &start, ImportResult result,
                            qint64 size = 0) { ::row(name, QString::fromUtf8(file), start, size, result); };
        constexpr qint64 kMegabyte = 1 << 20;
        const auto header = [](const QByteArray &sizeBytes) { return "ID3\x03\0\0"_b + sizeBytes; };
        const QByteArray large = header("20000001"_hex);
        row("a song", "a.mid", midi(fullInfo()), ImportResult::Imported);
        row("three bytes", "a.mid", "MTh", ImportResult::NotASong);
        row("nothing", "a.mp3", "", ImportResult::NotASong);
        row("half a MIDI file", "a.mid", midi(fullInfo()).left(21), ImportResult::NotASong);
        row("half an MFx header", "a.mf3", mfx(3, fullInfo()).left(300), ImportResult::NotASong);
        row("half an MFx stream", "a.mf3", mfx(3, fullInfo()).left(513), ImportResult::NotASong);
        row("a tag that claims more than there is", "a.mp3", header("00000200"_hex), ImportResult::NotASong);
        row("a large tag that claims more than there is", "a.mp3", large, ImportResult::NotASong, kMegabyte);
        row("a tag of more than 64 MiB", "a.mp3", large, ImportResult::TooLarge, 65 * kMegabyte);
        row("a MIDI file of more than 256 MiB", "a.mid", "MThd", ImportResult::TooLarge, 256 * kMegabyte + 1);
    }
    void whyASongWasNotTakenCanBeTold() {
        const PcFolder folder;
        const QString path = putFile(folder.path(given<QString>("name")), given<QByteArray>("start"));
        if (given<qint64>("size") > 0)
            QVERIFY(QFile::resize(path, given<qint64>("size")));
        MetaSong song;
        QCOMPARE(song.importFile(path), given<ImportResult>("result") == ImportResult::Imported);
        QVERIFY(song.importResult() == given<ImportResult>("result"));
    }

    void fileThatCannotBeReadIsNotJudged() {
        MetaSong song;
        PcFolder folder;
        QVERIFY(!song.importFile(folder.path("missing.mid"_s)));
        QVERIFY(song.importResult() == ImportResult::NotRead);
        // A folder can be opened as little as a file whose reader has no right to it.
        folder.addFolder("folder.mid"_s);
        QVERIFY(!song.importFile(folder.path("folder.mid"_s)));
        QVERIFY(song.importResult() == ImportResult::NotRead);
#ifdef Q_OS_LINUX
        // Its first page is not mapped: every read of it fails, as on a disk with a bad sector.
        if (QFileInfo("/proc/self/mem"_s).isReadable()) {
            QVERIFY(QFile::link("/proc/self/mem"_s, folder.path("bad.mid"_s)));
            QVERIFY(!song.importFile(folder.path("bad.mid"_s)));
            QVERIFY(song.importResult() == ImportResult::NotRead);
        }
#endif
    }

private:
    /// The log lines with which a song is refused.
    static QStringList linesAt(const QString &name, const QByteArray &bytes) {
        const LogCapture log;
        MetaSong song;
        if (isTaken(song, name, bytes) || song.formatCode() != UnknownFormat)
            failTest("this song should be refused"_s);
        for (const LogCapture::Line &line : log.lines()) {
            if (line.type != QtDebugMsg)
                failTest("no debug message: "_s + line.text);
        }
        return log.texts();
    }
};

QTEST_GUILESS_MAIN(TestMetaSongRefused)
#include "tst_metasongrefused.moc"
