#include "optimizer/playlist.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

namespace {

const QString kRoot = QStringLiteral("E:/");
const QString kOld = QStringLiteral("\\sdmemory\\song.mid");
const QString kNew = QStringLiteral("\\sdmemory\\My Songs\\song_2.mid");

} // namespace

class TestPlaylist : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void keyIsTheSongInFrontOfItsNumbers_data();
    void keyIsTheSongInFrontOfItsNumbers();
    void keyOfAHugeLineIsFoundQuickly_data();
    void keyOfAHugeLineIsFoundQuickly();
    void keysComeLineByLineInFileOrder();
    void keysOfAPlaylistThatCannotBeOpenedAreNone();

    void rewritingReplacesTheSong_data();
    void rewritingReplacesTheSong();
    void rewritingLeavesNoBackupBehind();
    void backupOfAnEarlierRunIsLost();
    void missingPlaylistBecomesAnEmptyOne();
    void playlistWhoseBackupNameIsAFolderBecomesEmpty();
    void fullDiskLeavesThePlaylistAsItWas();
    void emptyOldPathReplacesNothing();
    void hugeLineIsRewrittenWhole();
    void playlistIsUtf8WhateverTheLanguageOfThePc();

private:
    void write(const QByteArray &content);
    QByteArray content() const;
    QString playlist() const { return m_dir->filePath(QStringLiteral("list.pls")); }
    QString backup() const { return playlist() + QStringLiteral(".old"); }

    QScopedPointer<QTemporaryDir> m_dir;
};

void TestPlaylist::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

void TestPlaylist::write(const QByteArray &content)
{
    QFile file(playlist());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray TestPlaylist::content() const
{
    QFile file(playlist());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(cannot be read)");
}

void TestPlaylist::keyIsTheSongInFrontOfItsNumbers_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("key");
    const auto row = [](const char *name, const QByteArray &line, const QString &key) {
        QTest::newRow(name) << line << key;
    };
    const QString song = QStringLiteral("E:/My Songs/song.mid");
    row("Windows line end", "\\sdmemory\\My Songs\\song.mid^12^0\r\n", song);
    row("Unix line end", "\\sdmemory\\My Songs\\song.mid^12^0\n", song);
    row("last line without an end", "\\sdmemory\\My Songs\\song.mid^12^0", song);
    row("device root in capitals", "\\SDMEMORY\\My Songs\\song.mid^12^0\r\n", song);
    row("one digit each", "\\sdmemory\\a.mid^1^2\n", QStringLiteral("E:/a.mid"));
    row("five digits each", "\\sdmemory\\a.mid^12345^67890\n", QStringLiteral("E:/a.mid"));
    row("six digits first", "\\sdmemory\\a.mid^123456^1\n", QStringLiteral("E:/a.mid^123456^1\n"));
    row("six digits second", "\\sdmemory\\a.mid^1^123456\n", QStringLiteral("E:/a.mid^1^123456\n"));
    row("numbers that a letter follows", "\\sdmemory\\a.mid^1^2x\n", QStringLiteral("E:/a.mid^1^2x\n"));
    row("no numbers, line end included", "\\sdmemory\\a.mid\r\n", QStringLiteral("E:/a.mid\r\n"));
    row("one number alone", "\\sdmemory\\a.mid^1\n", QStringLiteral("E:/a.mid^1\n"));
    row("number without digits", "\\sdmemory\\a.mid^^1\n", QStringLiteral("E:/a.mid^^1\n"));
    row("three numbers", "\\sdmemory\\a.mid^1^2^3\n", QStringLiteral("E:/a.mid"));
    row("caret in the name", "\\sdmemory\\a^b.mid^1^2\n", QStringLiteral("E:/a^b.mid"));
    row("numbers in the name that a letter follows", "\\sdmemory\\a^1^2b.mid^3^4\n", QStringLiteral("E:/a^1^2b.mid"));
    row("numbers only", "^1^2\n", QString());
    row("text that names no song", "hello\n", QStringLiteral("hello\n"));
    row("accents", "\\sdmemory\\Perch\xC3\xA9.mid^1^2\n", QString::fromUtf8("E:/Perch\xC3\xA9.mid"));
    row("byte-order mark", "\xEF\xBB\xBF\\sdmemory\\a.mid^1^2\n", QStringLiteral("E:/a.mid"));
    row("bytes that are no UTF-8", "\\sdmemory\\Perch\xE9.mid^1^2\n", QString::fromUtf8("E:/Perch\xEF\xBF\xBD.mid"));
    row("NUL behind the numbers", QByteArray("\\sdmemory\\a.mid^1^2\0^3^4\n", 25), QStringLiteral("E:/a.mid"));
    row("NUL in front of the numbers", QByteArray("\\sdmemory\\a.mid\0^1^2\n", 21), QStringLiteral("E:/a.mid"));
    row("NUL at the start", QByteArray("\0\\sdmemory\\a.mid^1^2\n", 21), QString());
    row("empty", QByteArray(), QString());
    row("empty line", "\n", QStringLiteral("\n"));
}

void TestPlaylist::keyIsTheSongInFrontOfItsNumbers()
{
    QFETCH(QByteArray, line);
    QTEST(playlistKey(line, kRoot), "key");
}

void TestPlaylist::keyOfAHugeLineIsFoundQuickly_data()
{
    QTest::addColumn<QByteArray>("unit");
    QTest::newRow("letters") << QByteArray("abcdefgh");
    QTest::newRow("carets") << QByteArray("^");
    QTest::newRow("numbers too long") << QByteArray("^123456");
    QTest::newRow("numbers that end in a letter") << QByteArray("^1^2x");
    QTest::newRow("bytes that are no text") << QByteArray("\xFF\xFE\x80");
}

void TestPlaylist::keyOfAHugeLineIsFoundQuickly()
{
    QFETCH(QByteArray, unit);
    constexpr int kBytes = 4000000;
    constexpr int kMilliseconds = 20000;
    const QByteArray front = unit.repeated(kBytes / unit.size());
    QElapsedTimer time;
    time.start();
    const QString key = playlistKey(front + "/^1^2\n", kRoot);
    QVERIFY(time.elapsed() < kMilliseconds);
    QCOMPARE(key, QString::fromUtf8(front) + QLatin1Char('/'));
}

void TestPlaylist::keysComeLineByLineInFileOrder()
{
    write("\\sdmemory\\b.mid^1^2\r\n\\sdmemory\\a.mid^3^4\n\n\\sdmemory\\b.mid^5^6");
    const QStringList keys = {QStringLiteral("E:/b.mid"), QStringLiteral("E:/a.mid"), QStringLiteral("\n"),
                              QStringLiteral("E:/b.mid")};
    QCOMPARE(playlistKeys(playlist(), kRoot), keys);
}

void TestPlaylist::keysOfAPlaylistThatCannotBeOpenedAreNone()
{
    QVERIFY(playlistKeys(playlist(), kRoot).isEmpty());
    QVERIFY(playlistKeys(m_dir->path(), kRoot).isEmpty());
}

void TestPlaylist::rewritingReplacesTheSong_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char *name, const QByteArray &before, const QByteArray &after) {
        QTest::newRow(name) << before << after;
    };
    row("empty playlist", "", "");
    row("Windows line end", "\\sdmemory\\song.mid^1^2\r\n", "\\sdmemory\\My Songs\\song_2.mid^1^2\r\n");
    row("Unix line end", "\\sdmemory\\song.mid^1^2\n", "\\sdmemory\\My Songs\\song_2.mid^1^2\n");
    row("no line end", "\\sdmemory\\song.mid^1^2", "\\sdmemory\\My Songs\\song_2.mid^1^2");
    row("mixed line ends", "a\r\n\\sdmemory\\song.mid^1^2\nb\n\r\nc\r",
        "a\r\n\\sdmemory\\My Songs\\song_2.mid^1^2\nb\n\r\nc\r");
    row("other case", "\\SDMEMORY\\Song.MID^1^2\n", "\\sdmemory\\My Songs\\song_2.mid^1^2\n");
    row("every line", "\\sdmemory\\song.mid^1^2\nx\n\\sdmemory\\song.mid^3^4\n",
        "\\sdmemory\\My Songs\\song_2.mid^1^2\nx\n\\sdmemory\\My Songs\\song_2.mid^3^4\n");
    row("twice in a line", "\\sdmemory\\song.mid;\\sdmemory\\song.mid\n",
        "\\sdmemory\\My Songs\\song_2.mid;\\sdmemory\\My Songs\\song_2.mid\n");
    row("start of a longer name", "\\sdmemory\\song.midi^1^2\n", "\\sdmemory\\My Songs\\song_2.midi^1^2\n");
    row("same name in a folder", "\\sdmemory\\A\\song.mid^1^2\n", "\\sdmemory\\A\\song.mid^1^2\n");
    row("other songs", "\\sdmemory\\Perch\xC3\xA9 \xF0\x9F\x8E\xB5.mid^1^2\r\n",
        "\\sdmemory\\Perch\xC3\xA9 \xF0\x9F\x8E\xB5.mid^1^2\r\n");
    row("what stands behind a NUL is no text", QByteArray("\\sdmemory\\song.mid^1^2\0junk\nb\n", 30),
        "\\sdmemory\\My Songs\\song_2.mid^1^2b\n");
    row("bytes that are no UTF-8", "Perch\xE9\n", "Perch\xEF\xBF\xBD\n");
    row("byte-order mark", "\xEF\xBB\xBF\\sdmemory\\song.mid^1^2\n", "\\sdmemory\\My Songs\\song_2.mid^1^2\n");
}

void TestPlaylist::rewritingReplacesTheSong()
{
    QFETCH(QByteArray, before);
    write(before);
    rewritePlaylistFile(playlist(), kOld, kNew);
    QTEST(content(), "after");
}

void TestPlaylist::rewritingLeavesNoBackupBehind()
{
    write("\\sdmemory\\song.mid^1^2\n");
    rewritePlaylistFile(playlist(), kOld, kNew);
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList(QStringLiteral("list.pls")));
}

void TestPlaylist::backupOfAnEarlierRunIsLost()
{
    write("\\sdmemory\\song.mid^1^2\n");
    QFile old(backup());
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("of an earlier run\n");
    old.close();
    rewritePlaylistFile(playlist(), kOld, kNew);
    QCOMPARE(content(), QByteArray("\\sdmemory\\My Songs\\song_2.mid^1^2\n"));
    QVERIFY(!QFile::exists(backup()));
}

void TestPlaylist::missingPlaylistBecomesAnEmptyOne()
{
    rewritePlaylistFile(playlist(), kOld, kNew);
    QVERIFY(QFile::exists(playlist()));
    QCOMPARE(content(), QByteArray());
}

void TestPlaylist::playlistWhoseBackupNameIsAFolderBecomesEmpty()
{
    write("\\sdmemory\\song.mid^1^2\n");
    QVERIFY(QDir().mkdir(backup()));
    rewritePlaylistFile(playlist(), kOld, kNew);
    QCOMPARE(content(), QByteArray());
    QVERIFY(QDir(backup()).exists());
}

void TestPlaylist::fullDiskLeavesThePlaylistAsItWas()
{
#ifdef Q_OS_UNIX
    const QByteArray before = QByteArray("\\sdmemory\\song.mid^1^2\n").repeated(1000);
    write(before);
    // Files of this process cannot grow past some kilobytes: writing fails as on a full disk.
    constexpr rlim_t kMostBytes = 8192;
    rlimit former{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &former), 0);
    const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{kMostBytes, former.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    rewritePlaylistFile(playlist(), kOld, kNew);
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, formerHandler);
    QVERIFY(content() == before);
    QVERIFY(!QFile::exists(backup()));
#else
    QSKIP("No limit for the size of files here");
#endif
}

void TestPlaylist::emptyOldPathReplacesNothing()
{
    write("\\sdmemory\\song.mid^1^2\n");
    rewritePlaylistFile(playlist(), QString(), kNew);
    QCOMPARE(content(), QByteArray("\\sdmemory\\song.mid^1^2\n"));
}

void TestPlaylist::hugeLineIsRewrittenWhole()
{
    constexpr int kCharacters = 3000001;
    const QByteArray front = QByteArray(kCharacters, 'a');
    // Characters of two to four bytes that straddle any buffer between reading and writing.
    const QByteArray wide = QByteArray("\xC3\xA9\xF0\x9F\x8E\xB5").repeated(100001);
    write(front + wide + "\\sdmemory\\song.mid^1^2\r\n");
    rewritePlaylistFile(playlist(), kOld, kNew);
    QVERIFY(content() == front + wide + "\\sdmemory\\My Songs\\song_2.mid^1^2\r\n");
}

void TestPlaylist::playlistIsUtf8WhateverTheLanguageOfThePc()
{
    QTextCodec *const codec = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    write("\\sdmemory\\song.mid^1^2\nPerch\xC3\xA9\n");
    rewritePlaylistFile(playlist(), kOld, QStringLiteral("\\sdmemory\\\u4F60.mid"));
    QTextCodec::setCodecForLocale(codec);
    QCOMPARE(content(), QByteArray("\\sdmemory\\\xE4\xBD\xA0.mid^1^2\nPerch\xC3\xA9\n"));
}

QTEST_GUILESS_MAIN(TestPlaylist)
#include "tst_playlist.moc"
