#include "mutations.h"
#include "songfactory/songfactory.h"
#include "songfiles/metasong.h"
#include "songtest.h"
#include "support/logcapture.h"

#include <QtTest>

/// Songs with missing ends and changed bytes go the whole way from import to saving.
class TestDamagedSongs : public QObject
{
    Q_OBJECT

private slots:
    void everyDamagedSongIsReadChangedAndSavedInTime_data();
    void everyDamagedSongIsReadChangedAndSavedInTime();

private:
    void goAllTheWay(const QString &path, const QByteArray &bytes, bool manual);
};

namespace {

constexpr int kMostMillisecondsASong = 3000;

/// What an MP3 song holds behind its tag.
QByteArray audioOf(const QByteArray &bytes)
{
    Id3Tag tag;
    return tag.load(bytes) ? bytes.mid(int(tag.audioOffset())) : QByteArray();
}

} // namespace

void TestDamagedSongs::everyDamagedSongIsReadChangedAndSavedInTime_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    SongInfo info = SongTest::fullInfo();
    info.markers = {{1, QStringLiteral("a")}};
    QTest::newRow("MIDI format 0") << QStringLiteral("a.mid")
                                   << SongFactory::midi(info, 0, SongFactory::Markers::WithBars, 1);
    QTest::newRow("MIDI format 1") << QStringLiteral("a.mid")
                                   << SongFactory::midi(info, 1, SongFactory::Markers::Standard, 1);
    QTest::newRow("karaoke") << QStringLiteral("a.kar")
                             << SongFactory::karaoke({QStringLiteral("@TA")}, {QStringLiteral("la")});
    QTest::newRow("MF3") << QStringLiteral("a.mf3") << SongFactory::mfx(3, info, 1);
    QTest::newRow("MF4") << QStringLiteral("a.mf4") << SongFactory::mfx(4, info, 1);
    QTest::newRow("MF5") << QStringLiteral("a.mf5") << SongFactory::mfx(5, info, 1);
    QTest::newRow("MP3 without tag") << QStringLiteral("a.mp3") << SongFactory::mp3(0, info, 0, 1);
    QTest::newRow("MP3 2.2") << QStringLiteral("a.mp3") << SongFactory::mp3(2, info, 0, 1);
    QTest::newRow("MP3 2.3 Latin-1") << QStringLiteral("a.mp3") << SongFactory::mp3(3, info, 0, 1);
    QTest::newRow("MP3 2.3 UTF-16") << QStringLiteral("a.mp3") << SongFactory::mp3(3, info, 1, 1);
    QTest::newRow("MP3 2.4 UTF-8") << QStringLiteral("a.mp3") << SongFactory::mp3(4, info, 3, 1);
}

void TestDamagedSongs::everyDamagedSongIsReadChangedAndSavedInTime()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    const QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const LogCapture log; // keeps thousands of lines out of the report
    bool manual = false;
    forEachDamagedCopy(bytes, [&](const QByteArray &damaged) {
        if (QTest::currentTestFailed())
            return;
        manual = !manual;
        goAllTheWay(dir.filePath(name), damaged, manual);
    });
}

void TestDamagedSongs::goAllTheWay(const QString &path, const QByteArray &bytes, bool manual)
{
    QFile::remove(path);
    QVERIFY(SongTest::write(path, bytes));
    QElapsedTimer timer;
    timer.start();
    MetaSong song;
    SongInfo info;
    const bool imported = song.importFile(path);
    song.getSongInfo(info);
    QCOMPARE(info.format != QStringLiteral("UNKNOWN"), imported);
    info.title = QStringLiteral("Other title");
    info.artist = QStringLiteral("Other artist");
    song.setSongInfo(info, manual);
    song.addMarker(QStringLiteral("marker"), 3);
    // An MP3 is saved on top of itself. The others go where nothing is: many file systems wait for the disk whenever a
    // file is written over, which takes longer than all the rest.
    const bool isMp3 = song.formatCode() == Mp3Format;
    if (!isMp3)
        QVERIFY(QFile::remove(path));
    const bool saved = song.saveToFile(path);
    QVERIFY(timer.elapsed() < kMostMillisecondsASong);

    const QByteArray after = SongTest::read(path);
    if (!saved) {
        QVERIFY(after == (isMp3 ? bytes : QByteArray()));
        QVERIFY(!QFile::exists(path.left(path.lastIndexOf(QLatin1Char('.'))) + QStringLiteral(".tmp")));
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

QTEST_GUILESS_MAIN(TestDamagedSongs)
#include "tst_damagedsongs.moc"
