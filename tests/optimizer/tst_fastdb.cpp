#include "optimizer/fastdb.h"

#include <QElapsedTimer>
#include <QStringList>
#include <QTest>

namespace {

const QString kRoot = QStringLiteral("E:/");

QStringList songs(const QByteArray &data)
{
    FastDbReader reader(data, kRoot);
    QStringList found;
    QString path;
    while (reader.next(path))
        found.append(path);
    return found;
}

/// @p text as bytes, each "|" standing for a NUL.
QByteArray bytes(const char *text)
{
    return QByteArray(text).replace('|', '\0');
}

} // namespace

class TestFastDb : public QObject
{
    Q_OBJECT

private slots:
    void songsAreFound_data();
    void songsAreFound();
    void pathStaysAsItWasAtTheEnd();
    void endStaysTheEnd();
    void songsOfManyBlocksAreFoundQuickly();
    void hugeExportWithoutASongIsReadQuickly_data();
    void hugeExportWithoutASongIsReadQuickly();
    void everyPrefixGivesTheSongsThatAreWhole();
    void noFlippedBitMakesMoreThanOneSongDiffer();
};

void TestFastDb::songsAreFound_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QStringList>("found");
    const auto row = [](const char *name, const QByteArray &data, const QStringList &found) {
        QTest::newRow(name) << data << found;
    };
    const QString a = QStringLiteral("E:/a.mid");
    const QString b = QStringLiteral("E:/My Songs/b.mp3");
    row("empty export", QByteArray(), {});
    row("one song", bytes(R"(\sdmemory\a.mid|)"), {a});
    row("folders", bytes(R"(\sdmemory\My Songs\b.mp3|)"), {b});
    row("two songs one behind the other", bytes(R"(\sdmemory\a.mid|\sdmemory\My Songs\b.mp3|)"), {a, b});
    row("noise between", bytes("\xFF\x01|x\\sdmemory\\a.mid|\x80\\sdmem|y|\\sdmemory\\My Songs\\b.mp3||"), {a, b});
    row("same song twice", bytes(R"(\sdmemory\a.mid|\sdmemory\a.mid|)"), {a, a});
    row("no NUL behind the last", bytes(R"(\sdmemory\a.mid|\sdmemory\My Songs\b.mp3)"), {a});
    row("device root alone", bytes(R"(\sdmemory\|)"), {kRoot});
    row("device root at the very end", bytes(R"(\sdmemory\)"), {});
    row("device root in other case", bytes(R"(\SDMemory\a.mid|)"), {});
    row("other case inside a path", bytes(R"(\sdmemory\a\SDMEMORY\b|)"), {QStringLiteral("E:/a/SDMEMORY/b")});
    row("twice in one path", bytes(R"(\sdmemory\x\sdmemory\a.mid|)"), {QStringLiteral("E:/xE:/a.mid")});
    row("cut device root", bytes(R"(\sdmemory|a.mid|)"), {});
    row("accents", bytes("\\sdmemory\\Perch\xC3\xA9.mid|"), {QString::fromUtf8("E:/Perch\xC3\xA9.mid")});
    row("no UTF-8", bytes("\\sdmemory\\Perch\xE9.mid|"), {QString::fromUtf8("E:/Perch\xEF\xBF\xBD.mid")});
    row("line ends are part of a path", bytes("\\sdmemory\\a\r\n.mid|"), {QStringLiteral("E:/a\r\n.mid")});
    row("nothing but NULs", bytes("||||"), {});
}

void TestFastDb::songsAreFound()
{
    QFETCH(QByteArray, data);
    QTEST(songs(data), "found");
}

void TestFastDb::pathStaysAsItWasAtTheEnd()
{
    FastDbReader reader(QByteArrayLiteral("nothing"), kRoot);
    QString path = QStringLiteral("before");
    QVERIFY(!reader.next(path));
    QCOMPARE(path, QStringLiteral("before"));
}

void TestFastDb::endStaysTheEnd()
{
    FastDbReader reader(bytes(R"(\sdmemory\a.mid|\sdmemory\b.mid)"), kRoot);
    QString path;
    QVERIFY(reader.next(path));
    QVERIFY(!reader.next(path));
    QVERIFY(!reader.next(path));
}

void TestFastDb::songsOfManyBlocksAreFoundQuickly()
{
    constexpr int kSongs = 200000;
    constexpr int kMilliseconds = 20000;
    QByteArray data;
    for (int i = 0; i < kSongs; ++i)
        data += "\x07\xF0\\sdmemory\\My Songs\\Artist\\song" + QByteArray::number(i) + QByteArray(".mid\0\x01", 6);
    QElapsedTimer time;
    time.start();
    const QStringList found = songs(data);
    QVERIFY(time.elapsed() < kMilliseconds);
    QCOMPARE(found.size(), kSongs);
    QCOMPARE(found.constFirst(), QStringLiteral("E:/My Songs/Artist/song0.mid"));
    QCOMPARE(found.constLast(), QStringLiteral("E:/My Songs/Artist/song199999.mid"));
}

void TestFastDb::hugeExportWithoutASongIsReadQuickly_data()
{
    QTest::addColumn<QByteArray>("unit");
    QTest::newRow("NULs") << QByteArray(1, '\0');
    QTest::newRow("backslashes") << QByteArray("\\");
    QTest::newRow("almost the device root") << QByteArray("\\sdmemory");
    QTest::newRow("no NUL anywhere") << QByteArray("\\sdmemory\\");
}

void TestFastDb::hugeExportWithoutASongIsReadQuickly()
{
    QFETCH(QByteArray, unit);
    constexpr int kBytes = 20000000;
    constexpr int kMilliseconds = 20000;
    const QByteArray data = unit.repeated(kBytes / unit.size());
    QElapsedTimer time;
    time.start();
    QVERIFY(songs(data).isEmpty());
    QVERIFY(time.elapsed() < kMilliseconds);
}

void TestFastDb::everyPrefixGivesTheSongsThatAreWhole()
{
    const QByteArray data = bytes("x\\sdmemory\\a.mid|noise|\\sdmemory\\b\\c.mp3|\\sdmemory\\d.kar|");
    const QStringList all = songs(data);
    QCOMPARE(all.size(), 3);
    for (int length = 0; length <= data.size(); ++length) {
        const QByteArray prefix = data.left(length);
        const int whole = (length >= 17) + (length >= 41) + (length >= data.size());
        QCOMPARE(songs(prefix), all.mid(0, whole));
    }
}

void TestFastDb::noFlippedBitMakesMoreThanOneSongDiffer()
{
    const QByteArray data = bytes("x\\sdmemory\\a.mid|noise|\\sdmemory\\b\\c.mp3|\\sdmemory\\d.kar|");
    const QStringList all = songs(data);
    for (int byte = 0; byte < data.size(); ++byte) {
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray flipped = data;
            flipped[byte] = static_cast<char>(flipped.at(byte) ^ (1 << bit));
            const QStringList found = songs(flipped);
            int kept = 0;
            for (const QString &path : found)
                kept += all.contains(path) ? 1 : 0;
            // A lost NUL joins a song with the next one; any other flip touches one song at most.
            QVERIFY2(kept >= (data.at(byte) == '\0' ? 1 : 2),
                     qPrintable(QStringLiteral("byte %1 bit %2").arg(byte).arg(bit)));
            QVERIFY(found.size() <= all.size());
        }
    }
}

QTEST_GUILESS_MAIN(TestFastDb)
#include "tst_fastdb.moc"
