#include "optimizer/longname.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestLongName : public QObject
{
    Q_OBJECT

private slots:
    void midiSuffixLosesItsLastCharacter_data();
    void midiSuffixLosesItsLastCharacter();
    void pathIsTooLongByBytes_data();
    void pathIsTooLongByBytes();
    void charactersAreCutByPathOrName_data();
    void charactersAreCutByPathOrName();
    void everyTooLongPathLosesSomething();
    void shortenedNameFitsTheRule();
    void nameIsShortened_data();
    void nameIsShortened();
    void pathWithLongFoldersIsShortenedByItsOwnLength();
    void foldersTooLongLeaveThePathAsItIs();
    void takenNumbersArePassed();
    void cutNeverHalvesACharacter_data();
    void cutNeverHalvesACharacter();
    void companionPathIsFormedFromTheBase_data();
    void companionPathIsFormedFromTheBase();
};

namespace {

QString text(int count, char c = 'a')
{
    return QString(count, QLatin1Char(c));
}

/// A folder path of @p bytes bytes, closing slash included, that does not exist on the disk.
QString missingFolder(int bytes)
{
    return QLatin1Char('/') + text(bytes - 2, 'q') + QLatin1Char('/');
}

} // namespace

void TestLongName::midiSuffixLosesItsLastCharacter_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("shorter");
    QTest::newRow("midi") << "E:/a/song.midi"
                          << "E:/a/song.mid";
    QTest::newRow("MIDI") << "E:/a/Song.MIDI"
                          << "E:/a/Song.MID";
    QTest::newRow("mixed case") << "E:/Song.MidI"
                                << "E:/Song.Mid";
    QTest::newRow("mid") << "E:/a/song.mid"
                         << "E:/a/song.mid";
    QTest::newRow("no dot") << "E:/a/songmidi"
                            << "E:/a/songmidi";
    QTest::newRow("twice") << "E:/song.midi.midi"
                           << "E:/song.midi.mid";
    QTest::newRow("in a folder") << "E:/a.midi/song.mp3"
                                 << "E:/a.midi/song.mp3";
    QTest::newRow("longer suffix") << "E:/song.midix"
                                   << "E:/song.midix";
    QTest::newRow("suffix alone") << ".midi"
                                  << ".mid";
    QTest::newRow("empty") << ""
                           << "";
}

void TestLongName::midiSuffixLosesItsLastCharacter()
{
    QFETCH(QString, path);
    QTEST(withoutMidiSuffixEnd(path), "shorter");
}

void TestLongName::pathIsTooLongByBytes_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("tooLong");
    const auto row = [](const char *name, int folderBytes, const QString &fileName, bool tooLong) {
        QTest::newRow(name) << missingFolder(folderBytes) + fileName << tooLong;
    };
    row("short", 5, QStringLiteral("a.mid"), false);
    row("name of 94 bytes", 5, text(90) + QStringLiteral(".mid"), false);
    row("name of 95 bytes", 5, text(91) + QStringLiteral(".mid"), false);
    row("name of 96 bytes", 5, text(92) + QStringLiteral(".mid"), true);
    row("name of 190 bytes", 5, text(186) + QStringLiteral(".mid"), true);
    row("path of 244 bytes", 200, text(40) + QStringLiteral(".mid"), false);
    row("path of 245 bytes", 200, text(41) + QStringLiteral(".mid"), false);
    row("path of 246 bytes", 200, text(42) + QStringLiteral(".mid"), true);
    row("path of 490 bytes", 480, text(6) + QStringLiteral(".mid"), true);
    row("48 accented letters are 96 bytes", 5, QString(46, QChar(0xE8)) + QStringLiteral(".mid"), true);
    row("47 accented letters and a letter are 95", 5, QString(45, QChar(0xE8)) + QStringLiteral("a.mid"), false);
}

void TestLongName::pathIsTooLongByBytes()
{
    QFETCH(QString, path);
    QTEST(isPathTooLong(path), "tooLong");
}

void TestLongName::charactersAreCutByPathOrName_data()
{
    QTest::addColumn<int>("pathBytes");
    QTest::addColumn<int>("nameBytes");
    QTest::addColumn<int>("cut");
    QTest::newRow("name just too long") << 120 << 96 << 6;
    QTest::newRow("name of 120 bytes") << 150 << 120 << 30;
    QTest::newRow("name of 250 bytes") << 260 << 250 << 160;
    QTest::newRow("folders of 149 bytes, long name") << 249 << 100 << 10;
    QTest::newRow("folders of 150 bytes, long name") << 250 << 100 << 10;
    QTest::newRow("folders of 151 bytes, long name") << 251 << 100 << 11;
    QTest::newRow("path just too long") << 246 << 20 << 6;
    QTest::newRow("path twice too long") << 490 << 20 << 250;
    QTest::newRow("both just too long") << 246 << 96 << 6;
}

void TestLongName::charactersAreCutByPathOrName()
{
    QFETCH(int, pathBytes);
    QFETCH(int, nameBytes);
    QVERIFY(isPathTooLong(pathBytes, nameBytes));
    QTEST(charactersToCut(pathBytes, nameBytes), "cut");
}

void TestLongName::everyTooLongPathLosesSomething()
{
    for (int nameBytes = 1; nameBytes <= 600; ++nameBytes) {
        for (int pathBytes = nameBytes + 1; pathBytes <= 600; ++pathBytes) {
            if (isPathTooLong(pathBytes, nameBytes))
                QVERIFY(charactersToCut(pathBytes, nameBytes) >= 1);
        }
    }
}

void TestLongName::shortenedNameFitsTheRule()
{
    for (int folderBytes = 3; folderBytes <= 260; ++folderBytes) {
        for (int baseBytes = 1; baseBytes <= 251; ++baseBytes) {
            const QString path = missingFolder(folderBytes) + text(baseBytes) + QStringLiteral(".mid");
            if (!isPathTooLong(path))
                continue;
            const std::optional<QString> shorter = shortenedPath(path);
            const int cut = charactersToCut(path.size(), baseBytes + 4);
            QCOMPARE(shorter.has_value(), cut < baseBytes + 4);
            // Where the base has the characters to give, the result is one the player can open.
            if (cut <= baseBytes)
                QVERIFY2(!isPathTooLong(*shorter), qPrintable(*shorter));
        }
    }
}

void TestLongName::nameIsShortened_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shorter");
    const auto row = [](const char *title, const QString &name, const QString &shorter) {
        QTest::newRow(title) << missingFolder(10) + name << missingFolder(10) + shorter;
    };
    row("96 bytes", text(92) + QStringLiteral(".mid"), text(86) + QStringLiteral("(0).mid"));
    row("120 bytes", text(116) + QStringLiteral(".mid"), text(86) + QStringLiteral("(0).mid"));
    row("suffix in capitals", text(116) + QStringLiteral(".MP3"), text(86) + QStringLiteral("(0).MP3"));
    row("base with dots", text(50) + QLatin1Char('.') + text(50) + QStringLiteral(".mid"),
        text(50) + QLatin1Char('.') + text(35) + QStringLiteral("(0).mid"));
    row("percent signs", QStringLiteral("%1") + text(114) + QStringLiteral(".mid"),
        QStringLiteral("%1") + text(84) + QStringLiteral("(0).mid"));
    // 164 bytes: 74 characters go, though fewer would do.
    row("as many characters as bytes are too many", QString(60, QChar(0xE8)) + text(40) + QStringLiteral(".mid"),
        QString(26, QChar(0xE8)) + QStringLiteral("(0).mid"));
    row("no more than the base", QString(60, QChar(0x6B4C)) + QStringLiteral(".mid"), QStringLiteral("(0).mid"));
    row("dots alone", text(96, '.') + QStringLiteral("mid"), text(86, '.') + QStringLiteral("(0).mid"));
}

void TestLongName::nameIsShortened()
{
    QFETCH(QString, name);
    QFETCH(QString, shorter);
    QVERIFY(isPathTooLong(name));
    const std::optional<QString> result = shortenedPath(name);
    QVERIFY(result.has_value());
    QCOMPARE(*result, shorter);
}

void TestLongName::pathWithLongFoldersIsShortenedByItsOwnLength()
{
    const QString folder = missingFolder(200);
    // 246 bytes: 6 characters go.
    QCOMPARE(*shortenedPath(folder + text(42) + QStringLiteral(".mid")), folder + text(36) + QStringLiteral("(0).mid"));
    // 251 bytes with a name of 95 behind 156 bytes of folders: 11 characters go.
    QCOMPARE(*shortenedPath(missingFolder(156) + text(91) + QStringLiteral(".mid")),
             missingFolder(156) + text(80) + QStringLiteral("(0).mid"));
}

void TestLongName::foldersTooLongLeaveThePathAsItIs()
{
    // With 240 bytes of folders the characters to cut are exactly those of the name.
    QVERIFY(!shortenedPath(missingFolder(240) + QStringLiteral("aaaa.mid")).has_value());
    QVERIFY(!shortenedPath(missingFolder(241) + QStringLiteral("aaaa.mid")).has_value());
    QVERIFY(!shortenedPath(missingFolder(480) + QStringLiteral("aaaa.mid")).has_value());
    QCOMPARE(*shortenedPath(missingFolder(239) + QStringLiteral("aaaa.mid")),
             missingFolder(239) + QStringLiteral("(0).mid"));
}

void TestLongName::takenNumbersArePassed()
{
    const QTemporaryDir dir;
    const QString front = dir.path() + QLatin1Char('/');
    const QString longName = front + text(116) + QStringLiteral(".mid");
    const QString shortName = front + text(86);
    QCOMPARE(*shortenedPath(longName), shortName + QStringLiteral("(0).mid"));
    QVERIFY(QFile(shortName + QStringLiteral("(0).mid")).open(QIODevice::WriteOnly));
    QCOMPARE(*shortenedPath(longName), shortName + QStringLiteral("(1).mid"));
    QVERIFY(QDir().mkdir(shortName + QStringLiteral("(1).mid")));
    QCOMPARE(*shortenedPath(longName), shortName + QStringLiteral("(2).mid"));
    QVERIFY(QFile(shortName + QStringLiteral("(2).mp3")).open(QIODevice::WriteOnly));
    QCOMPARE(*shortenedPath(longName), shortName + QStringLiteral("(2).mid"));
}

void TestLongName::cutNeverHalvesACharacter_data()
{
    QTest::addColumn<int>("letters");
    QTest::addColumn<int>("notesKept");
    QTest::newRow("cut between two characters") << 52 << 7;
    QTest::newRow("cut inside a character") << 53 << 6;
    QTest::newRow("cut behind the first character") << 64 << 1;
    QTest::newRow("cut inside the first character") << 65 << 0;
    QTest::newRow("cut in front of the first character") << 66 << 0;
}

void TestLongName::cutNeverHalvesACharacter()
{
    QFETCH(int, letters);
    QFETCH(int, notesKept);
    // A note is two units and four bytes: of letters + 20 units, letters + 44 - 90 go and 66 stay.
    const QString note = QStringLiteral("\U0001F3B5");
    const QString front = missingFolder(10) + text(letters);
    const std::optional<QString> shorter = shortenedPath(front + note.repeated(10) + QStringLiteral(".mid"));
    QVERIFY(shorter.has_value());
    QCOMPARE(*shorter, front + note.repeated(notesKept) + QStringLiteral("(0).mid"));
}

void TestLongName::companionPathIsFormedFromTheBase_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("base");
    QTest::newRow("song") << "E:/a/song.mid"
                          << "E:/a/song";
    QTest::newRow("dots in the name") << "E:/a/a.b.mid"
                                      << "E:/a/a.b";
    QTest::newRow("dots in the folder") << "E:/a.b/song.mid"
                                        << "E:/a.b/song";
    QTest::newRow("no suffix") << "E:/a.b/song"
                               << "E:/a.b/song";
    QTest::newRow("no folder") << "song.mid"
                               << "song";
}

void TestLongName::companionPathIsFormedFromTheBase()
{
    QFETCH(QString, path);
    QTEST(pathWithoutSuffix(path), "base");
}

QTEST_GUILESS_MAIN(TestLongName)
#include "tst_longname.moc"
