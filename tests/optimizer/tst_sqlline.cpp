#include "optimizer/sqlline.h"

#include "songfactory/songfactory.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

Q_DECLARE_METATYPE(SongInfo)

namespace {

const QString kRoot = QStringLiteral("E:/");
const QString kPath = QStringLiteral("E:/My Songs/song.mid");
const QString kStart = QStringLiteral(
    "INSERT INTO songs (filename,onlyFilename,title,artist,genre,DriveName,format,author,bpm,[key],marker) VALUES (");
const QString kNote = QStringLiteral("\U0001F3B5");

QString text(int count, char c = 'a')
{
    return QString(count, QLatin1Char(c));
}

SongInfo fullInfo()
{
    SongInfo info;
    info.title = QStringLiteral("Night and Day");
    info.genre = QStringLiteral("Jazz");
    info.userBpm = 120;
    info.key = QStringLiteral("C");
    info.format = QStringLiteral("MIDI");
    info.markers.append(SongMarker{4, QStringLiteral("Intro")});
    return info;
}

/// A database as the player has it, in memory.
class PlayerDatabase
{
public:
    PlayerDatabase()
    {
        m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
        m_database.setDatabaseName(QStringLiteral(":memory:"));
        m_open = m_database.open() &&
                 run(QStringLiteral("CREATE TABLE songs (filename TEXT, onlyFilename TEXT, title TEXT, artist TEXT, "
                                    "genre TEXT, DriveName TEXT, format TEXT, author TEXT, bpm TEXT, [key] TEXT, "
                                    "marker TEXT)"));
    }
    ~PlayerDatabase()
    {
        const QString name = m_database.connectionName();
        m_database = QSqlDatabase();
        QSqlDatabase::removeDatabase(name);
    }
    PlayerDatabase(const PlayerDatabase &) = delete;
    PlayerDatabase &operator=(const PlayerDatabase &) = delete;

    bool isOpen() const { return m_open; }
    bool run(const QString &statement)
    {
        QSqlQuery query(m_database);
        const bool done = query.exec(statement);
        if (!done)
            qWarning() << query.lastError().text() << statement;
        return done;
    }
    /// All rows, each as its columns in order.
    QList<QStringList> songs()
    {
        QList<QStringList> rows;
        QSqlQuery query(QStringLiteral("SELECT * FROM songs ORDER BY rowid"), m_database);
        while (query.next()) {
            QStringList row;
            for (int column = 0; column < 11; ++column)
                row.append(query.value(column).toString());
            rows.append(row);
        }
        return rows;
    }

private:
    QSqlDatabase m_database;
    bool m_open = false;
};

} // namespace

class TestSqlLine : public QObject
{
    Q_OBJECT

private slots:
    void textIsEscaped_data();
    void textIsEscaped();
    void everyLengthAroundTheLimitIsCut();
    void songIsInserted();
    void emptyFieldsGetTheirStandIns();
    void fieldsAreWritten_data();
    void fieldsAreWritten();
    void mountedVolumeIsNotInThePath();
    void vanishedSongIsDeleted_data();
    void vanishedSongIsDeleted();
    void longPathIsCutTheSameInBothStatements();

    void insertedRowHoldsTheValues_data();
    void insertedRowHoldsTheValues();
    void deletionTakesOutWhatInsertionPutIn();
    void songFileIsInserted_data();
    void songFileIsInserted();
    void fileThatIsNoSongGivesNoLine_data();
    void fileThatIsNoSongGivesNoLine();
};

void TestSqlLine::textIsEscaped_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("limit");
    QTest::addColumn<QString>("escaped");
    const auto row = [](const char *name, const QString &value, int limit, const QString &escaped) {
        QTest::newRow(name) << value << limit << escaped;
    };
    row("empty", QString(), 100, QString());
    row("plain", QStringLiteral("Azzurro"), 100, QStringLiteral("Azzurro"));
    row("single quotes", QStringLiteral("Rock 'n' Roll"), 100, QStringLiteral("Rock ''n'' Roll"));
    row("quotes one behind the other", QStringLiteral("''"), 100, QStringLiteral("''''"));
    row("double quotes stay", QStringLiteral("\"heroes\""), 100, QStringLiteral("\"heroes\""));
    row("backslashes stay", QStringLiteral("\\a\\"), 100, QStringLiteral("\\a\\"));
    row("Windows line end is one blank", QStringLiteral("a\r\nb"), 100, QStringLiteral("a b"));
    row("Unix line end", QStringLiteral("a\nb"), 100, QStringLiteral("a b"));
    row("old line end", QStringLiteral("a\rb"), 100, QStringLiteral("a b"));
    row("line ends the wrong way round", QStringLiteral("a\n\rb"), 100, QStringLiteral("a  b"));
    row("two returns and a feed", QStringLiteral("a\r\r\nb"), 100, QStringLiteral("a  b"));
    row("line end is replaced before the cut", QStringLiteral("a\r\nbc"), 3, QStringLiteral("a b"));
    row("limit 0", QStringLiteral("abc"), 0, QString());
    row("limit 1", QStringLiteral("abc"), 1, QStringLiteral("a"));
    row("one below the limit", text(99), 100, text(99));
    row("as long as the limit", text(100), 100, text(100));
    row("one over the limit", text(101), 100, text(100));
    row("twice the limit", text(200), 100, text(100));
    row("quotes are doubled after the cut", text(100, '\''), 100, text(200, '\''));
    row("quote as the last character", text(99) + QStringLiteral("'b"), 100, text(99) + QStringLiteral("''"));
    row("quote behind the cut", text(100) + QStringLiteral("'"), 100, text(100));
    row("emoji that fits", text(98) + kNote, 100, text(98) + kNote);
    row("emoji that fits with text behind", text(98) + kNote + text(5), 100, text(98) + kNote);
    row("emoji at the cut", text(99) + kNote, 100, text(99));
    row("emoji behind the cut", text(100) + kNote, 100, text(100));
    row("emoji and limit 1", kNote, 1, QString());
    row("emoji and limit 2", kNote, 2, kNote);
}

void TestSqlLine::textIsEscaped()
{
    QFETCH(QString, value);
    QFETCH(int, limit);
    QTEST(sqlEscaped(value, limit), "escaped");
}

void TestSqlLine::everyLengthAroundTheLimitIsCut()
{
    for (const int limit : {0, 1, 2, 50, 100, 250}) {
        for (int notes = 0; notes <= limit; ++notes) {
            const QString cut = sqlEscaped(kNote.repeated(notes), limit);
            QCOMPARE(cut, kNote.repeated(qMin(notes, limit / 2)));
        }
    }
}

void TestSqlLine::songIsInserted()
{
    QCOMPARE(insertLine(fullInfo(), kPath, kRoot),
             kStart +
                 QStringLiteral("'\\sdmemory\\My Songs\\song.mid','song.mid','Night and Day','<unknown>','Jazz','',"
                                "'0','<unknown>','120','C','1')\n"));
}

void TestSqlLine::emptyFieldsGetTheirStandIns()
{
    QCOMPARE(insertLine(SongInfo(), kPath, kRoot),
             kStart +
                 QStringLiteral("'\\sdmemory\\My Songs\\song.mid','song.mid','song.mid','<unknown>','<unknown>','',"
                                "'0','<unknown>','0','','0')\n"));
}

void TestSqlLine::fieldsAreWritten_data()
{
    QTest::addColumn<SongInfo>("info");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("values");
    const QString front = QStringLiteral("'\\sdmemory\\a.mp3','a.mp3',");
    const QString path = QStringLiteral("E:/a.mp3");
    const auto row = [&](const char *name, const SongInfo &info, const QString &values) {
        QTest::newRow(name) << info << path << front + values;
    };
    SongInfo info;
    info.format = QStringLiteral("MP3");
    row("MP3", info, QStringLiteral("'a.mp3','<unknown>','<unknown>','','1','<unknown>','0','','0'"));
    info.format = QStringLiteral("mp3");
    row("format in small letters", info,
        QStringLiteral("'a.mp3','<unknown>','<unknown>','','0','<unknown>','0','','0'"));
    info.format = QStringLiteral("MP34");
    row("longer format", info, QStringLiteral("'a.mp3','<unknown>','<unknown>','','0','<unknown>','0','','0'"));
    info = SongInfo();
    info.title = info.artist = info.genre = info.author = text(101);
    info.key = text(51);
    row("texts over their limits", info,
        QStringLiteral("'%1','%1','%1','','0','%1','0','%2','0'").arg(text(100), text(50)));
    info.title = info.artist = info.genre = info.author = text(100);
    info.key = text(50);
    row("texts at their limits", info,
        QStringLiteral("'%1','%1','%1','','0','%1','0','%2','0'").arg(text(100), text(50)));
    info = SongInfo();
    info.title = text(99) + QLatin1Char('\'');
    row("title of 100 characters with a quote", info,
        QStringLiteral("'") + text(99) + QStringLiteral("''','<unknown>','<unknown>','','0','<unknown>','0','','0'"));
    info = SongInfo();
    info.title = QStringLiteral(" ");
    info.userBpm = -1;
    info.key = QStringLiteral("F#-");
    row("blank title is a title, tempo as it is", info,
        QStringLiteral("' ','<unknown>','<unknown>','','0','<unknown>','-1','F#-','0'"));
    info = SongInfo();
    info.title = QStringLiteral("100%1 %2");
    row("percent signs", info, QStringLiteral("'100%1 %2','<unknown>','<unknown>','','0','<unknown>','0','','0'"));
}

void TestSqlLine::fieldsAreWritten()
{
    QFETCH(SongInfo, info);
    QFETCH(QString, path);
    QFETCH(QString, values);
    QCOMPARE(insertLine(info, path, kRoot), kStart + values + QStringLiteral(")\n"));
}

void TestSqlLine::mountedVolumeIsNotInThePath()
{
    const QString root = QStringLiteral("/media/u/CORVIN4/");
    QVERIFY(insertLine(SongInfo(), root + QStringLiteral("a/b.mid"), root)
                .contains(QStringLiteral("('\\sdmemory\\a\\b.mid',")));
    QCOMPARE(deleteLine(root + QStringLiteral("a/b.mid"), root),
             QStringLiteral("DELETE FROM songs WHERE filename='\\sdmemory\\a\\b.mid'\n"));
}

void TestSqlLine::vanishedSongIsDeleted_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("value");
    QTest::newRow("song") << kPath << R"(\sdmemory\My Songs\song.mid)";
    QTest::newRow("apostrophe") << "E:/L'altra/it's.mid"
                                << R"(\sdmemory\L''altra\it''s.mid)";
    QTest::newRow("accents") << QStringLiteral("E:/Perch\u00E9.mid") << QStringLiteral("\\sdmemory\\Perch\u00E9.mid");
    QTest::newRow("root alone") << "E:/"
                                << R"(\sdmemory\)";
}

void TestSqlLine::vanishedSongIsDeleted()
{
    QFETCH(QString, path);
    QFETCH(QString, value);
    QCOMPARE(deleteLine(path, kRoot),
             QStringLiteral("DELETE FROM songs WHERE filename='") + value + QStringLiteral("'\n"));
}

void TestSqlLine::longPathIsCutTheSameInBothStatements()
{
    const QString device = QStringLiteral("\\sdmemory\\");
    for (const int length : {249, 250, 251, 500}) {
        const QString name = text(length - device.size());
        const QString value = QLatin1Char('\'') + (device + name).left(250) + QLatin1Char('\'');
        QVERIFY(insertLine(SongInfo(), kRoot + name, kRoot).startsWith(kStart + value + QLatin1Char(',')));
        QCOMPARE(deleteLine(kRoot + name, kRoot),
                 QStringLiteral("DELETE FROM songs WHERE filename=") + value + QLatin1Char('\n'));
    }
}

void TestSqlLine::insertedRowHoldsTheValues_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("stored");
    const auto row = [](const char *name, const QString &value, const QString &stored) {
        QTest::newRow(name) << value << stored;
    };
    row("plain", QStringLiteral("Azzurro"), QStringLiteral("Azzurro"));
    row("quotes", QStringLiteral("Rock 'n' \"Roll\""), QStringLiteral("Rock 'n' \"Roll\""));
    row("quotes alone", QStringLiteral("'''"), QStringLiteral("'''"));
    row("statement inside", QStringLiteral("'); DROP TABLE songs; --"), QStringLiteral("'); DROP TABLE songs; --"));
    row("accents", QStringLiteral("Perch\u00E9 \u00F9 \u4F60"), QStringLiteral("Perch\u00E9 \u00F9 \u4F60"));
    row("line ends", QStringLiteral("a\r\nb\nc\rd"), QStringLiteral("a b c d"));
    row("emoji at the cut", text(99) + kNote, text(99));
    row("emoji that fits", text(98) + kNote, text(98) + kNote);
    row("quotes at the cut", text(99) + QStringLiteral("''"), text(99) + QLatin1Char('\''));
}

void TestSqlLine::insertedRowHoldsTheValues()
{
    QFETCH(QString, value);
    QFETCH(QString, stored);
    SongInfo info = fullInfo();
    info.title = info.artist = info.genre = info.author = value;
    PlayerDatabase database;
    QVERIFY(database.isOpen());
    const QString line = insertLine(info, kPath, kRoot);
    QCOMPARE(line.count(QLatin1Char('\n')), 1);
    QVERIFY(line.endsWith(QLatin1Char('\n')));
    QVERIFY(database.run(line));
    const QStringList row = {QStringLiteral("\\sdmemory\\My Songs\\song.mid"),
                             QStringLiteral("song.mid"),
                             stored,
                             stored,
                             stored,
                             QString(),
                             QStringLiteral("0"),
                             stored,
                             QStringLiteral("120"),
                             QStringLiteral("C"),
                             QStringLiteral("1")};
    QCOMPARE(database.songs(), QList<QStringList>{row});
}

void TestSqlLine::deletionTakesOutWhatInsertionPutIn()
{
    PlayerDatabase database;
    QVERIFY(database.isOpen());
    const QStringList paths = {QStringLiteral("E:/L'altra/Perch\u00E9.mid"), QStringLiteral("E:/a.mid"),
                               kRoot + text(400), QStringLiteral("E:/line\nend.mid")};
    for (const QString &path : paths)
        QVERIFY(database.run(insertLine(SongInfo(), path, kRoot)));
    QCOMPARE(database.songs().size(), paths.size());
    for (int i = 0; i < paths.size(); ++i) {
        QVERIFY(database.run(deleteLine(paths.at(i), kRoot)));
        QCOMPARE(database.songs().size(), paths.size() - 1 - i);
    }
}

void TestSqlLine::songFileIsInserted_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("song");
    QTest::addColumn<QStringList>("row");
    SongInfo info;
    info.title = QStringLiteral("L'amica \u00E8 \"qui\"");
    info.artist = QStringLiteral("D'Angel\u00F2");
    info.genre = QStringLiteral("Rock 'n' Roll");
    info.author = QStringLiteral("O'Neill");
    info.userBpm = 128;
    info.key = QStringLiteral("F#-");
    info.markers.append(SongMarker{1, QStringLiteral("Intro")});
    const auto row = [&](const QString &name, const QByteArray &song, bool isMp3, bool hasMarkers) {
        const QStringList columns = {QStringLiteral("\\sdmemory\\My Songs\\") + name,
                                     name,
                                     info.title,
                                     info.artist,
                                     info.genre,
                                     QString(),
                                     isMp3 ? QStringLiteral("1") : QStringLiteral("0"),
                                     info.author,
                                     QStringLiteral("128"),
                                     QStringLiteral("F#-"),
                                     hasMarkers ? QStringLiteral("1") : QStringLiteral("0")};
        QTest::newRow(qPrintable(name)) << name << song << columns;
    };
    row(QStringLiteral("smf0.mid"), SongFactory::midi(info, 0), false, true);
    row(QStringLiteral("smf1.mid"), SongFactory::midi(info, 1), false, true);
    row(QStringLiteral("standard markers.kar"), SongFactory::midi(info, 0, SongFactory::Markers::Standard), false,
        true);
    row(QStringLiteral("it's an mf3.mf3"), SongFactory::mfx(3, info), false, true);
    row(QStringLiteral("mf4.mf4"), SongFactory::mfx(4, info), false, true);
    row(QStringLiteral("mf5.mf5"), SongFactory::mfx(5, info), false, true);
    row(QStringLiteral("v23.mp3"), SongFactory::mp3(3, info, 1), true, false);
    row(QStringLiteral("v24.mp3"), SongFactory::mp3(4, info, 3), true, false);
    info = SongInfo();
    info.title = QStringLiteral("notag.mp3");
    info.artist = info.genre = info.author = QStringLiteral("<unknown>");
    QTest::newRow("no tag") << QStringLiteral("notag.mp3") << SongFactory::mp3(3, SongInfo())
                            << QStringList{QStringLiteral("\\sdmemory\\My Songs\\notag.mp3"),
                                           QStringLiteral("notag.mp3"),
                                           QStringLiteral("notag.mp3"),
                                           info.artist,
                                           info.genre,
                                           QString(),
                                           QStringLiteral("1"),
                                           info.author,
                                           QStringLiteral("0"),
                                           QString(),
                                           QStringLiteral("0")};
}

void TestSqlLine::songFileIsInserted()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, song);
    QFETCH(QStringList, row);
    const QTemporaryDir dir;
    const QString root = dir.path() + QLatin1Char('/');
    QVERIFY(QDir(root).mkdir(QStringLiteral("My Songs")));
    const QString path = root + QStringLiteral("My Songs/") + name;
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(song);
    file.close();

    PlayerDatabase database;
    QVERIFY(database.isOpen());
    const QString line = insertLineForSong(path, root);
    QVERIFY(!line.isEmpty());
    QVERIFY(database.run(line));
    QCOMPARE(database.songs(), QList<QStringList>{row});
}

void TestSqlLine::fileThatIsNoSongGivesNoLine_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << "a.mid" << QByteArray();
    QTest::newRow("three bytes") << "a.mid" << QByteArray("MTh");
    QTest::newRow("cut MIDI") << "a.mid" << QByteArray("MThd\0\0\0\6", 8);
    QTest::newRow("text") << "a.mid" << QByteArray("this is no song at all");
    QTest::newRow("MFx without its header") << "a.mf5" << QByteArray("_MF5") + QByteArray(600, '\0');
    QTest::newRow("MP3 by name only") << "a.mp3" << QByteArray("RIFFRIFFRIFF");
    QTest::newRow("MP3 with another name") << "a.mid" << QByteArray("ID3\3\0\0\0\0\0\0", 10);
}

void TestSqlLine::fileThatIsNoSongGivesNoLine()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    const QTemporaryDir dir;
    const QString path = dir.filePath(name);
    QCOMPARE(insertLineForSong(path, dir.path() + QLatin1Char('/')), QString());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    QCOMPARE(insertLineForSong(path, dir.path() + QLatin1Char('/')), QString());
    QVERIFY(QFile::exists(path));
}

QTEST_GUILESS_MAIN(TestSqlLine)
#include "tst_sqlline.moc"
