#include "optimizer/sqlline.h"

#include "songfactory/songfactory.h"
#include "support/files.h"
#include "support/given.h"
#include "support/playerdatabase.h"

Q_DECLARE_METATYPE(SongInfo)

class TestSqlLine : public QObject
{
    Q_OBJECT

    static inline const QString kRoot = "E:/"_s;
    static inline const Player kPlayer = Player(kRoot);
    static inline const QString kPath = "E:/My Songs/song.mid"_s;
    static inline const QString kStart =
        "INSERT INTO songs (filename,onlyFilename,title,artist,genre,DriveName,format,author,bpm,[key],marker) VALUES ("_s;
    static inline const QString kNote = "🎵"_s;

    static QString text(int count, char c = 'a') { return QString(count, QLatin1Char(c)); }
    /// A song with these texts, 120 beats a minute and a marker.
    static SongInfo song(const QString &title, const QString &artist, const QString &genre, const QString &author,
                         const QString &key) {
        return {title, artist, genre, author, 0, 120, key, {}, false, {{4, "Intro"_s}}, "MIDI"_s, {}, 0};
    }
    /// The row of such a song in the player's database.
    static QStringList storedRow(const QString &name, const SongInfo &info, const QString &format,
                                 const QString &marker) {
        return R"(\sdmemory\My Songs\%1|%1|%2|%3|%4||%5|%6|%7|%8|%9)"_s
            .arg(name, info.title, info.artist, info.genre, format, info.author, QString::number(info.userBpm),
                 info.key, marker)
            .split(QLatin1Char('|'));
    }

private slots:
    void textIsEscaped_data() {
        columns<QString, int, QString>("value", "limit", "escaped");
        row("empty", QString(), 100, QString());
        row("plain", "Azzurro"_s, 100, "Azzurro"_s);
        row("single quotes", "Rock 'n' Roll"_s, 100, "Rock ''n'' Roll"_s);
        row("quotes one behind the other", "''"_s, 100, "''''"_s);
        row("double quotes stay", "\"heroes\""_s, 100, "\"heroes\""_s);
        row("backslashes stay", "\\a\\"_s, 100, "\\a\\"_s);
        row("Windows line end is one blank", "a\r\nb"_s, 100, "a b"_s);
        row("Unix line end", "a\nb"_s, 100, "a b"_s);
        row("old line end", "a\rb"_s, 100, "a b"_s);
        row("line ends the wrong way round", "a\n\rb"_s, 100, "a  b"_s);
        row("two returns and a feed", "a\r\r\nb"_s, 100, "a  b"_s);
        row("line end is replaced before the cut", "a\r\nbc"_s, 3, "a b"_s);
        row("limit 0", "abc"_s, 0, QString());
        row("limit 1", "abc"_s, 1, "a"_s);
        for (const int length : {99, 100, 101, 200})
            row(qPrintable("%1 characters for 100"_s.arg(length)), text(length), 100, text(qMin(length, 100)));
        row("quotes are doubled after the cut", text(100, '\''), 100, text(200, '\''));
        row("quote as the last character", text(99) + "'b"_s, 100, text(99) + "''"_s);
        row("quote behind the cut", text(100) + "'"_s, 100, text(100));
        row("emoji that fits", text(98) + kNote, 100, text(98) + kNote);
        row("emoji that fits with text behind", text(98) + kNote + text(5), 100, text(98) + kNote);
        row("emoji at the cut", text(99) + kNote, 100, text(99));
        row("emoji behind the cut", text(100) + kNote, 100, text(100));
        row("emoji and limit 1", kNote, 1, QString());
        row("emoji and limit 2", kNote, 2, kNote);
    }
    void textIsEscaped() { QTEST(sqlEscaped(given<QString>("value"), given<int>("limit")), "escaped"); }

    void everyLengthAroundTheLimitIsCut() {
        for (const int limit : {0, 1, 2, 50, 100, 250}) {
            for (int notes = 0; notes <= limit; ++notes)
                QCOMPARE(sqlEscaped(kNote.repeated(notes), limit), kNote.repeated(qMin(notes, limit / 2)));
        }
    }

    void fieldsAreWritten_data() {
        columns<QString, SongInfo, QString>("path", "info", "values");
        const QString front = R"('\sdmemory\My Songs\song.mid','song.mid',)"_s;
        const QString rest = ",'<unknown>','<unknown>','','0','<unknown>','0','','0'"_s;
        row("song", kPath, song("Night and Day"_s, QString(), "Jazz"_s, QString(), "C"_s),
            front + "'Night and Day','<unknown>','Jazz','','0','<unknown>','120','C','1'"_s);
        row("empty fields get their stand-ins", kPath, SongInfo(), front + "'song.mid'"_s + rest);
        SongInfo info;
        info.title = text(99) + "'"_s;
        row("title of 100 characters with a quote", kPath, info, front + "'"_s + text(99) + "'''"_s + rest);
        info.title = "100%1 %2"_s;
        row("percent signs", kPath, info, front + "'100%1 %2'"_s + rest);
        info.title = " "_s;
        info.userBpm = -1;
        info.key = "F#-"_s;
        row("blank title is a title, tempo as it is", kPath, info,
            front + "' ','<unknown>','<unknown>','','0','<unknown>','-1','F#-','0'"_s);
        const QString limits = "'%1','%1','%1','','0','%1','120','%2','1'"_s.arg(text(100), text(50));
        row("texts at their limits", kPath, song(text(100), text(100), text(100), text(100), text(50)), front + limits);
        row("texts over their limits", kPath, song(text(101), text(101), text(101), text(101), text(51)),
            front + limits);
        for (const QString &format : words("MP3 mp3 MP34")) {
            info = SongInfo();
            info.format = format;
            row(qPrintable("format "_s + format), "E:/a.mp3"_s, info,
                R"('\sdmemory\a.mp3','a.mp3','a.mp3','<unknown>','<unknown>','','%1','<unknown>','0','','0')"_s.arg(
                    int(format == "MP3"_s)));
        }
    }
    void fieldsAreWritten() {
        QCOMPARE(insertLine(given<SongInfo>("info"), given<QString>("path"), kPlayer),
                 kStart + given<QString>("values") + ")\n"_s);
    }

    void mountedVolumeIsNotInThePath() {
        const QString root = "/media/u/CORVIN4/"_s;
        QVERIFY(insertLine(SongInfo(), root + "a/b.mid"_s, Player(root)).contains(R"(('\sdmemory\a\b.mid',)"_s));
        QCOMPARE(deleteLine(root + "a/b.mid"_s, Player(root)),
                 "DELETE FROM songs WHERE filename='\\sdmemory\\a\\b.mid'\n"_s);
    }

    void vanishedSongIsDeleted() {
        const QString line = "DELETE FROM songs WHERE filename='\\sdmemory\\%1'\n"_s;
        QCOMPARE(deleteLine(kPath, kPlayer), line.arg(R"(My Songs\song.mid)"_s));
        QCOMPARE(deleteLine("E:/L'altra/it's.mid"_s, kPlayer), line.arg(R"(L''altra\it''s.mid)"_s));
        QCOMPARE(deleteLine("E:/Perché.mid"_s, kPlayer), line.arg("Perché.mid"_s));
        QCOMPARE(deleteLine(kRoot, kPlayer), line.arg(QString())); // the root alone
    }

    void longPathIsCutTheSameInBothStatements() {
        const QString device = R"(\sdmemory\)"_s;
        for (const int length : {249, 250, 251, 500}) {
            const QString name = text(length - device.size());
            const QString value = "'"_s + (device + name).left(250) + "'"_s;
            QVERIFY(insertLine(SongInfo(), kRoot + name, kPlayer).startsWith(kStart + value + ","_s));
            QCOMPARE(deleteLine(kRoot + name, kPlayer), "DELETE FROM songs WHERE filename="_s + value + "\n"_s);
        }
    }

    void insertedRowHoldsTheValues_data() {
        columns<QString, QString>("value", "stored");
        const QString emojiThatFits = text(98) + kNote;
        for (const QString &kept : {"Azzurro"_s, "Rock 'n' \"Roll\""_s, "'"_s.repeated(3), "'); DROP TABLE songs; --"_s,
                                    "Perché ù 你"_s, emojiThatFits})
            row(qPrintable("as it is: "_s + kept), kept, kept);
        row("line ends", "a\r\nb\nc\rd"_s, "a b c d"_s);
        row("emoji at the cut", text(99) + kNote, text(99));
        row("quotes at the cut", text(99) + "''"_s, text(99) + "'"_s);
    }
    void insertedRowHoldsTheValues() {
        QFETCH(QString, value);
        QFETCH(QString, stored);
        const QString line = insertLine(song(value, value, value, value, "C"_s), kPath, kPlayer);
        QCOMPARE(line.indexOf(QLatin1Char('\n')), line.size() - 1);
        PlayerDatabase database;
        QCOMPARE(database.run(line), QString());
        const SongInfo expected = song(stored, stored, stored, stored, "C"_s);
        QCOMPARE(database.songs(), QList<QStringList>{storedRow("song.mid"_s, expected, "0"_s, "1"_s)});
    }

    void deletionTakesOutWhatInsertionPutIn() {
        PlayerDatabase database;
        const QStringList paths = {"E:/L'altra/Perché.mid"_s, "E:/a.mid"_s, kRoot + text(400), "E:/line\nend.mid"_s};
        for (const QString &path : paths)
            QCOMPARE(database.run(insertLine(SongInfo(), path, kPlayer)), QString());
        for (int left = paths.size(); left > 0; --left) {
            QCOMPARE(database.songs().size(), left);
            QCOMPARE(database.run(deleteLine(paths.at(paths.size() - left), kPlayer)), QString());
        }
        QCOMPARE(database.songs().size(), 0);
    }

    void songFileIsInserted_data() {
        columns<QString, QByteArray, QStringList>("name", "content", "stored");
        const SongInfo info = song("L'amica è \"qui\""_s, "D'Angelò"_s, "Rock 'n' Roll"_s, "O'Neill"_s, "F#-"_s);
        const auto row = [&](const QString &name, const QByteArray &content) {
            const bool isMp3 = name.endsWith(".mp3"_s);
            ::row(qPrintable(name), name, content, storedRow(name, info, isMp3 ? "1"_s : "0"_s, isMp3 ? "0"_s : "1"_s));
        };
        row("smf0.mid"_s, SongFactory::midi(info, 0));
        row("smf1.mid"_s, SongFactory::midi(info, 1));
        row("standard markers.kar"_s, SongFactory::midi(info, 0, SongFactory::Markers::Standard));
        row("it's an mf3.mf3"_s, SongFactory::mfx(3, info));
        row("mf4.mf4"_s, SongFactory::mfx(4, info));
        row("mf5.mf5"_s, SongFactory::mfx(5, info));
        row("v23.mp3"_s, SongFactory::mp3(3, info, 1));
        row("v24.mp3"_s, SongFactory::mp3(4, info, 3));
        const QString noTag =
            R"(\sdmemory\My Songs\notag.mp3|notag.mp3|notag.mp3|<unknown>|<unknown>||1|<unknown>|0||0)"_s;
        ::row("no tag", "notag.mp3"_s, SongFactory::mp3(3, SongInfo()), noTag.split(QLatin1Char('|')));
    }
    void songFileIsInserted() {
        PcFolder folder;
        const QString path = folder.addFile("My Songs/"_s + given<QString>("name"), given<QByteArray>("content"));
        PlayerDatabase database;
        QCOMPARE(database.run(insertLineForSong(path, Player(folder.path() + "/"_s)).text), QString());
        QCOMPARE(database.songs(), QList<QStringList>{given<QStringList>("stored")});
    }

    void fileThatIsNoSongGivesNoLine_data() {
        columns<QString, QByteArray>("name", "content");
        row("empty", "a.mid"_s, QByteArray());
        row("three bytes", "a.mid"_s, QByteArray("MTh"));
        row("cut MIDI", "a.mid"_s, QByteArray("MThd\0\0\0\6", 8));
        row("text", "a.mid"_s, QByteArray("this is no song at all"));
        row("MFx without its header", "a.mf5"_s, QByteArray("_MF5") + QByteArray(600, '\0'));
        row("MP3 by name only", "a.mp3"_s, QByteArray("RIFFRIFFRIFF"));
        row("MP3 with another name", "a.mid"_s, QByteArray("ID3\3\0\0\0\0\0\0", 10));
    }
    void fileThatIsNoSongGivesNoLine() {
        PcFolder folder;
        const Player player(folder.path() + "/"_s);
        const QString path = folder.path(given<QString>("name"));
        QCOMPARE(insertLineForSong(path, player).text, QString());
        QCOMPARE(insertLineForSong(putFile(path, given<QByteArray>("content")), player).text, QString());
        QTEST(contentOf(path), "content");
    }
};

QTEST_GUILESS_MAIN(TestSqlLine)
#include "tst_sqlline.moc"
