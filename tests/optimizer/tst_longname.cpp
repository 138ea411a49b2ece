#include "optimizer/longname.h"

#include "support/files.h"
#include "support/given.h"

class TestLongName : public QObject
{
    Q_OBJECT

    static QString text(int count, char c = 'a') { return QString(count, QLatin1Char(c)); }
    /// A path of folders that do not exist, of this many bytes with its closing slash.
    static QString missingFolder(int bytes) { return QLatin1Char('/') + text(bytes - 2, 'q') + QLatin1Char('/'); }
    static QString shortened(const QString &path) { return shortenedPath(path).value_or("stays as it is"_s); }

private slots:
    void midiSuffixLosesItsLastCharacter() {
        for (const QString &path : words("E:/a/song.midi E:/a/Song.MIDI E:/Song.MidI E:/song.midi.midi .midi"))
            QCOMPARE(withoutMidiSuffixEnd(path), path.chopped(1));
        // Another suffix, no dot, in a folder, a longer suffix.
        for (const QString &path : words("E:/a/song.mid E:/a/songmidi E:/a.midi/song.mp3 E:/song.midix"))
            QCOMPARE(withoutMidiSuffixEnd(path), path);
        QCOMPARE(withoutMidiSuffixEnd(QString()), QString());
    }

    void pathIsTooLongByBytes_data() {
        columns<int, QString, bool>("folderBytes", "base", "tooLong");
        row("short", 5, "a"_s, false);
        for (const int bytes : {94, 95, 96, 190})
            row(qPrintable("name of %1 bytes"_s.arg(bytes)), 5, text(bytes - 4), bytes > 95);
        for (const int bytes : {244, 245, 246})
            row(qPrintable("path of %1 bytes"_s.arg(bytes)), 200, text(bytes - 204), bytes > 245);
        row("path of 490 bytes", 480, text(6), true);
        row("48 accented letters are 96 bytes", 5, QString(46, QChar(0xE8)), true);
        row("47 accented letters and a letter are 95", 5, QString(45, QChar(0xE8)) + "a"_s, false);
    }
    void pathIsTooLongByBytes() {
        QTEST(isPathTooLong(missingFolder(given<int>("folderBytes")) + given<QString>("base") + ".mid"_s), "tooLong");
    }

    void charactersAreCutByPathOrName_data() {
        columns<int, int, int>("pathBytes", "nameBytes", "cut");
        row("name just too long", 120, 96, 6);
        row("name of 120 bytes", 150, 120, 30);
        row("name of 250 bytes", 260, 250, 160);
        row("folders of 149 bytes, long name", 249, 100, 10);
        row("folders of 150 bytes, long name", 250, 100, 10);
        row("folders of 151 bytes, long name", 251, 100, 11);
        row("path just too long", 246, 20, 6);
        row("path twice too long", 490, 20, 250);
        row("both just too long", 246, 96, 6);
    }
    void charactersAreCutByPathOrName() {
        QVERIFY(isPathTooLong(given<int>("pathBytes"), given<int>("nameBytes")));
        QTEST(charactersToCut(given<int>("pathBytes"), given<int>("nameBytes")), "cut");
    }

    void everyTooLongPathLosesSomething() {
        for (int nameBytes = 1; nameBytes <= 600; ++nameBytes) {
            for (int pathBytes = nameBytes + 1; pathBytes <= 600; ++pathBytes)
                QVERIFY(!isPathTooLong(pathBytes, nameBytes) || charactersToCut(pathBytes, nameBytes) >= 1);
        }
    }

    void shortenedNameFitsTheRule() {
        for (int folderBytes = 3; folderBytes <= 260; ++folderBytes) {
            for (int baseBytes = 1; baseBytes <= 251; ++baseBytes) {
                const QString path = missingFolder(folderBytes) + text(baseBytes) + ".mid"_s;
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

    void nameIsShortened_data() {
        columns<int, QString, QString, QString>("folderBytes", "base", "suffix", "shorter");
        row("96 bytes", 10, text(92), ".mid"_s, text(86));
        row("120 bytes", 10, text(116), ".mid"_s, text(86));
        row("suffix in capitals", 10, text(116), ".MP3"_s, text(86));
        row("base with dots", 10, text(50) + "."_s + text(50), ".mid"_s, text(50) + "."_s + text(35));
        row("percent signs", 10, "%1"_s + text(114), ".mid"_s, "%1"_s + text(84));
        // 164 bytes: 74 characters go, though fewer would do.
        row("as many characters as bytes are too many", 10, QString(60, QChar(0xE8)) + text(40), ".mid"_s,
            QString(26, QChar(0xE8)));
        row("no more than the base", 10, QString(60, QChar(0x6B4C)), ".mid"_s, QString());
        row("dots alone", 10, text(95, '.'), ".mid"_s, text(86, '.'));
        row("path of 246 bytes: 6 characters go", 200, text(42), ".mid"_s, text(36));
        row("path of 251 bytes, name of 95: 11 go", 156, text(91), ".mid"_s, text(80));
        row("folders that the whole base makes up for", 239, "aaaa"_s, ".mid"_s, QString());
    }
    void nameIsShortened() {
        QFETCH(QString, suffix);
        const QString folder = missingFolder(given<int>("folderBytes"));
        const QString path = folder + given<QString>("base") + suffix;
        QVERIFY(isPathTooLong(path));
        QCOMPARE(shortened(path), folder + given<QString>("shorter") + "(0)"_s + suffix);
    }

    void foldersTooLongLeaveThePathAsItIs() {
        // With 240 bytes of folders the characters to cut are exactly those of the name.
        for (const int folderBytes : {240, 241, 480})
            QCOMPARE(shortened(missingFolder(folderBytes) + "aaaa.mid"_s), "stays as it is"_s);
    }

    void takenNumbersArePassed() {
        PcFolder folder;
        const QString longName = folder.path(text(116) + ".mid"_s);
        const QString shortName = text(86);
        QCOMPARE(shortened(longName), folder.path(shortName + "(0).mid"_s));
        folder.addFile(shortName + "(0).mid"_s);
        QCOMPARE(shortened(longName), folder.path(shortName + "(1).mid"_s));
        folder.addFolder(shortName + "(1).mid"_s);
        folder.addFile(shortName + "(2).mp3"_s);
        QCOMPARE(shortened(longName), folder.path(shortName + "(2).mid"_s));
    }

    void cutNeverHalvesACharacter() {
        // A note is two units and four bytes: of letters + 20 units, letters + 44 - 90 go and 66 stay.
        for (int letters = 52; letters <= 66; ++letters) {
            const QString front = missingFolder(10) + text(letters);
            const QString notes = "🎵"_s.repeated((66 - letters) / 2);
            QCOMPARE(shortened(front + "🎵"_s.repeated(10) + ".mid"_s), front + notes + "(0).mid"_s);
        }
    }

    void companionPathIsFormedFromTheBase() {
        QCOMPARE(pathWithoutSuffix("E:/a/song.mid"_s), "E:/a/song"_s);
        QCOMPARE(pathWithoutSuffix("E:/a/a.b.mid"_s), "E:/a/a.b"_s);
        // The folder's dots are not the name's.
        QCOMPARE(pathWithoutSuffix("E:/a.b/song.mid"_s), "E:/a.b/song"_s);
        QCOMPARE(pathWithoutSuffix("E:/a.b/song"_s), "E:/a.b/song"_s);
        QCOMPARE(pathWithoutSuffix("song.mid"_s), "song"_s);
    }
};

QTEST_GUILESS_MAIN(TestLongName)
#include "tst_longname.moc"
