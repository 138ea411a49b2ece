#include "optimizer/fastdb.h"

#include "support/given.h"

class TestFastDb : public QObject
{
    Q_OBJECT

    static inline const QString kRoot = "E:/"_s;

    static QStringList songs(const QByteArray &data) {
        FastDbReader reader(data, Player(kRoot));
        QStringList found;
        while (const std::optional<QString> path = reader.next())
            found.append(*path);
        return found;
    }
    /// @p text as bytes, each "|" standing for a NUL.
    static QByteArray bytes(const char *text) { return QByteArray(text).replace('|', '\0'); }
    static inline const QByteArray kThreeSongs =
        bytes("x\\sdmemory\\a.mid|noise|\\sdmemory\\b\\c.mp3|\\sdmemory\\d.kar|");

private slots:
    void songsAreFound_data() {
        columns<QByteArray, QStringList>("data", "found");
        const auto row = [](const char *name, const char *data, const QStringList &found) {
            ::row(name, bytes(data), found);
        };
        const QString a = "E:/a.mid"_s;
        const QString b = "E:/My Songs/b.mp3"_s;
        row("empty export", "", {});
        row("one song", "\\sdmemory\\a.mid|", {a});
        row("folders", "\\sdmemory\\My Songs\\b.mp3|", {b});
        row("two songs one behind the other", "\\sdmemory\\a.mid|\\sdmemory\\My Songs\\b.mp3|", {a, b});
        row("noise between", "\xFF\x01|x\\sdmemory\\a.mid|\x80\\sdmem|y|\\sdmemory\\My Songs\\b.mp3||", {a, b});
        row("same song twice", "\\sdmemory\\a.mid|\\sdmemory\\a.mid|", {a, a});
        row("no NUL behind the last", "\\sdmemory\\a.mid|\\sdmemory\\My Songs\\b.mp3", {a});
        row("device root alone", "\\sdmemory\\|", {kRoot});
        row("device root at the very end", "\\sdmemory\\", {});
        row("device root in other case", "\\SDMemory\\a.mid|", {});
        row("other case inside a path", "\\sdmemory\\a\\SDMEMORY\\b|", {"E:/a/SDMEMORY/b"_s});
        row("twice in one path", "\\sdmemory\\x\\sdmemory\\a.mid|", {"E:/xE:/a.mid"_s});
        row("cut device root", "\\sdmemory|a.mid|", {});
        row("accents", "\\sdmemory\\Perché.mid|", {"E:/Perché.mid"_s});
        row("no UTF-8", "\\sdmemory\\Perch\xE9.mid|", {"E:/Perch\uFFFD.mid"_s});
        row("line ends are part of a path", "\\sdmemory\\a\r\n.mid|", {"E:/a\r\n.mid"_s});
        row("nothing but NULs", "||||", {});
    }
    void songsAreFound() { QTEST(songs(given<QByteArray>("data")), "found"); }

    void endStaysTheEnd() {
        FastDbReader reader(bytes("\\sdmemory\\a.mid|\\sdmemory\\b.mid"), Player(kRoot));
        QVERIFY(reader.next());
        QVERIFY(!reader.next());
        QVERIFY(!reader.next());
        QVERIFY(!FastDbReader("nothing", Player(kRoot)).next());
    }

    void songsOfManyBlocksAreFoundQuickly() {
        QByteArray data;
        for (int i = 0; i < 200000; ++i)
            data += "\x07\xF0\\sdmemory\\My Songs\\Artist\\song" + QByteArray::number(i) + bytes(".mid|\x01");
        QElapsedTimer time;
        time.start();
        const QStringList found = songs(data);
        QVERIFY(time.elapsed() < 20000);
        QCOMPARE(found.size(), 200000);
        QCOMPARE(found.constFirst(), "E:/My Songs/Artist/song0.mid"_s);
        QCOMPARE(found.constLast(), "E:/My Songs/Artist/song199999.mid"_s);
    }

    void hugeExportWithoutASongIsReadQuickly() {
        for (const QByteArray &unit : {bytes("|"), bytes("\\"), bytes("\\sdmemory"), bytes("\\sdmemory\\")}) {
            const QByteArray data = unit.repeated(20000000 / unit.size());
            QElapsedTimer time;
            time.start();
            QVERIFY2(songs(data).isEmpty(), unit.constData());
            QVERIFY2(time.elapsed() < 20000, unit.constData());
        }
    }

    void everyPrefixGivesTheSongsThatAreWhole() {
        const QStringList all = songs(kThreeSongs);
        QCOMPARE(all.size(), 3);
        for (int length = 0; length <= kThreeSongs.size(); ++length) {
            const int whole = (length >= 17) + (length >= 41) + (length >= kThreeSongs.size());
            QCOMPARE(songs(kThreeSongs.left(length)), all.mid(0, whole));
        }
    }

    void noFlippedBitMakesMoreThanOneSongDiffer() {
        const QStringList all = songs(kThreeSongs);
        for (int bit = 0; bit < kThreeSongs.size() * 8; ++bit) {
            QByteArray flipped = kThreeSongs;
            flipped[bit / 8] = static_cast<char>(flipped.at(bit / 8) ^ (1 << bit % 8));
            const QStringList found = songs(flipped);
            const auto kept = std::count_if(found.begin(), found.end(), [&](auto &path) { return all.contains(path); });
            // A lost NUL joins a song with the next one; any other flip touches one song at most.
            QVERIFY2(kept >= (kThreeSongs.at(bit / 8) == '\0' ? 1 : 2), qPrintable("bit %1"_s.arg(bit)));
            QVERIFY(found.size() <= all.size());
        }
    }
};

QTEST_GUILESS_MAIN(TestFastDb)
#include "tst_fastdb.moc"
