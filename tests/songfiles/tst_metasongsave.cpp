#include "savelines.h"
#include "songtest.h"
#include "support/logcapture.h"

using namespace SongFactory;

const QString kUnknown = "[MetaSong::saveToFile] UNKNOWN format (or data corrupted) in memory, aborting"_s;

/// Writing a song back to the disk: what is refused, and how MIDI and MFx files are written over.
class TestMetaSongSave : public QObject
{
    Q_OBJECT

private slots:
    void songIsNotSavedAndNothingIsChanged() {
        SongOnDisk nothing("a.mid"_s, midi(fullInfo()));
        nothing.song = MetaSong();
        same("a song that was not loaded", linesAt(nothing, "a.mid"_s), QStringList(kUnknown));
        for (const int version : {3, 4, 5}) {
            SongOnDisk longer("a.mfx"_s, mfx(version, fullInfo()));
            SongInfo accented = fullInfo();
            accented.title = "Perché"_s;
            longer.song.setSongInfo(accented, true);
            same(qPrintable("MF%1 whose header has another size"_s.arg(version)), linesAt(longer, "a.mfx"_s),
                 QStringList(kUnknown));
        }
        SongOnDisk mid("a.mid"_s, midi(SongInfo()));
        mid.folder.addFolder("folder"_s);
        same("MIDI over a folder", linesAt(mid, "folder"_s), QStringList(kProtected));
        same("MIDI in no folder", linesAt(mid, "none/b.mid"_s), QStringList(kProtected));
        SongOnDisk mf5("a.mf5"_s, mfx(5, SongInfo()));
        mf5.folder.addFolder("folder"_s);
        same("MFx over a folder", linesAt(mf5, "folder"_s), QStringList(kProtected));
        same("MFx in no folder", linesAt(mf5, "none/b.mf5"_s), QStringList(kProtected));
        SongOnDisk mp3("a.mp3"_s, SongFactory::mp3(3, fullInfo()));
        same("missing MP3", linesAt(mp3, "b.mp3"_s),
             QStringList("[MetaSong::saveToFile] Impossible to read from file."_s));
        for (const QString &name : words("a.tmp a.TMP")) {
            SongOnDisk temporary("a.mp3"_s, SongFactory::mp3(3, fullInfo()));
            temporary.folder.addFile(name, temporary.content());
            same("MP3 that bears the temporary name", linesAt(temporary, name), QStringList(kProtected));
        }
        mp3.folder.addFile("a.mp3"_s, "short");
        same("MP3 shorter than its tag", linesAt(mp3, "a.mp3"_s), QStringList(kNoSeek));
    }

    void mfxStreamThatCouldNotBeExpandedAgainIsNotSaved() {
        const QByteArray stream = midi(fullInfo()).leftJustified(500000, 'x');
        SongOnDisk file("a.mf3"_s, mfxHeader(3, fullInfo(), 0, 0) + compressed(stream));
        QVERIFY(file.save());
        QCOMPARE(streamOf(file.content()), stream);
        QVERIFY(file.song.addMarker("one too many"_s, 1) > 0);
        QCOMPARE(linesAt(file, "a.mf3"_s), QStringList(kUnknown));
    }

    void midiIsWrittenOverTheFile() {
        const QByteArray bytes = midi(fullInfo(), 1);
        SongOnDisk file("a.mid"_s, bytes);
        file.folder.addFile("b.mid"_s, QByteArray(5000, 'x'));
        const LogCapture log;
        QVERIFY(file.song.saveToFile(file.folder.path("b.mid"_s)));
        QCOMPARE(log.texts(), QStringList("[MetaSong::saveToFile] MIDI"_s));
        QCOMPARE(file.folder.content("b.mid"_s), bytes);
        QVERIFY(file.song.saveToFile(file.folder.path("new.mid"_s)));
        QCOMPARE(file.folder.content("new.mid"_s), bytes);
        QCOMPARE(entriesBelow(file.folder.path()), words("a.mid b.mid new.mid"));
    }

    void mfxIsWrittenWithItsSizes_data() {
        columns<int>("version");
        for (const int version : {3, 4, 5})
            QTest::addRow("MF%d", version) << version;
    }
    void mfxIsWrittenWithItsSizes() {
        QFETCH(int, version);
        const int headerSize = version == 5 ? 1024 : 512;
        const QByteArray before = mfx(version, fullInfo());
        SongOnDisk file("a.mfx"_s, before);
        QVERIFY(file.save());
        QCOMPARE(file.content(), before);
        file.song.addMarker("Fine"_s, 9);
        LogCapture log;
        QVERIFY(file.save());
        QCOMPARE(log.texts().size(), 2);
        QCOMPARE(log.texts().at(0), "[MetaSong::saveToFile] MFx"_s);
        QVERIFY(log.texts().at(1).startsWith("Compress: "_s)); // the codec's own line
        const QByteArray saved = file.content();
        QCOMPARE(streamOf(saved).size(), streamOf(before).size() + 11);
        // Everything else of the header, known or not, is as it was.
        QCOMPARE(saved.left(headerSize), before.left(4) + littleEndian(unsigned(saved.size())) + before.mid(8, 4) +
                                             littleEndian(unsigned(streamOf(saved).size())) +
                                             before.mid(16, headerSize - 16));
    }

    void mf4SongGetsItsThreeBytesBack() {
        const QByteArray before = streamOf(mfx(4, fullInfo()));
        SongOnDisk file("a.mf4"_s, mfx(4, fullInfo()));
        file.song.addMarker("Fine"_s, 9);
        QVERIFY(file.save());
        const int data = before.indexOf("MTrk") + 8;
        const int trackSize = before.size() - data - 3;
        const QByteArray marker = "00FF4B07060009"_hex + "Fine";
        // The length in the track's head never counts the three bytes, only the marker.
        QCOMPARE(before.mid(data - 4, 4), bigEndian(unsigned(trackSize)));
        QCOMPARE(streamOf(file.content()).mid(data - 4),
                 bigEndian(unsigned(trackSize + marker.size())) + "FF00FF"_hex + marker + before.mid(data + 3));
    }

    void writeProtectedFileIsMadeWritable_data() {
        columns<QString, QByteArray>("name", "bytes");
        row("MIDI", "a.mid"_s, midi(SongInfo()));
        row("MFx", "a.mf3"_s, mfx(3, SongInfo()));
        row("MP3", "a.mp3"_s, mp3(3, SongInfo()));
    }
    void writeProtectedFileIsMadeWritable() {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        SongOnDisk file(name, bytes);
        QVERIFY(QFile::setPermissions(file.path, QFileDevice::ReadOwner | QFileDevice::ReadGroup));
        QVERIFY(file.save());
        QCOMPARE(file.content(), bytes);
        const QFileDevice::Permissions now = QFile::permissions(file.path);
        QVERIFY(now & QFileDevice::WriteOwner);
        QVERIFY(now & QFileDevice::ReadGroup);
#ifdef Q_OS_UNIX
        QVERIFY(!(now & (QFileDevice::ReadOther | QFileDevice::WriteGroup | QFileDevice::ExeOwner)));
#endif
    }

private:
    /// The log lines with which a song is not saved under a name in its folder, which stays as it was.
    static QStringList linesAt(SongOnDisk &file, const QString &name) {
        const QString folder = file.folder.path();
        const QStringList entries = entriesBelow(folder);
        const QMap<QString, QByteArray> content = contentBelow(folder);
        const LogCapture log;
        if (file.song.saveToFile(file.folder.path(name)))
            failTest(name + " should not be saved"_s);
        if (entriesBelow(folder) != entries || contentBelow(folder) != content)
            failTest("the folder has changed"_s);
        if (!log.lines().isEmpty() && log.lines().constFirst().type != QtDebugMsg)
            failTest("no debug message"_s);
        return log.texts();
    }
};

QTEST_GUILESS_MAIN(TestMetaSongSave)
#include "tst_metasongsave.moc"
