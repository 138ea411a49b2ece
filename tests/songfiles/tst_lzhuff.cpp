#include "publishedlzhuff.h"

#include "lzhuffsamples.h"
#include "mutations.h"
#include "songfiles/lzhuff.h"
#include "songfiles/positioncodes.h"
#include "support/logcapture.h"
#include "support/platform.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace LzHuffSamples;

namespace {

const int kLookAhead = 29;

/// Reaches the core whose longest match is a parameter.
class LzHuffCore : public LzHuff
{
public:
    using LzHuff::decode;
    using LzHuff::encode;
    using LzHuff::kMostLookAhead;
};

QByteArray littleEndian(quint32 value, int bytes)
{
    QByteArray result;
    for (int i = 0; i < bytes; ++i)
        result.append(static_cast<char>(value >> (8 * i)));
    return result;
}

void addRows(const QList<Sample> &samples)
{
    QTest::addColumn<QByteArray>("input");
    for (const Sample &sample : samples)
        QTest::newRow(sample.name) << sample.bytes;
}

quint16 crc16(const QByteArray &bytes)
{
    unsigned crc = 0;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1U) ? (crc >> 1) ^ 0xA001U : crc >> 1;
    }
    return static_cast<quint16>(crc);
}

/// An LHA archive of one file "song", its header of level 0.
QByteArray lhaArchive(const QByteArray &packed, const QByteArray &plain)
{
    const QByteArray name("song");
    QByteArray header("-lh1-");
    header += littleEndian(static_cast<quint32>(packed.size()), 4);
    header += littleEndian(static_cast<quint32>(plain.size()), 4);
    header += littleEndian(0x50210000, 4); // date and time
    header += littleEndian(0x20, 1);       // attribute
    header += littleEndian(0, 1);          // level
    header += littleEndian(static_cast<quint32>(name.size()), 1) + name;
    header += littleEndian(crc16(plain), 2);
    unsigned sum = 0;
    for (const char byte : qAsConst(header))
        sum += static_cast<quint8>(byte);
    return littleEndian(static_cast<quint32>(header.size()), 1) + littleEndian(sum, 1) + header + packed +
           littleEndian(0, 1);
}

/// Length of the longest earlier text in the window that equals the one at @p at, found by trying all.
int longestMatch(const QByteArray &withBlanks, int blanks, int at)
{
    const int first = qMax(blanks - kLookAhead, at - blanks);
    int longest = 0;
    for (int from = first; from < at; ++from) {
        int same = 0;
        while (same < kLookAhead && at + same < withBlanks.size() &&
               withBlanks.at(from + same) == withBlanks.at(at + same))
            ++same;
        longest = qMax(longest, same);
    }
    return longest;
}

} // namespace

class TestLzHuff : public QObject
{
    Q_OBJECT

private slots:
    void emptyInputCompressesToItsSizeAlone()
    {
        QByteArray packed("left over");
        LzHuff().compress(QByteArray(), packed);
        QCOMPARE(packed, QByteArray(4, '\0'));
    }

    void sizeZeroFailsWithoutAWord()
    {
        LogCapture log;
        QByteArray plain("left over");
        QVERIFY(!LzHuff().expand(QByteArray(4, '\0'), plain));
        QVERIFY(plain.isEmpty());
        QVERIFY(!LzHuff().expand(QByteArray(4, '\0') + "more", plain));
        QVERIFY(log.lines().isEmpty());
    }

    void tooLargeSizeIsRefusedWithItsLines_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("sizeLine");
        QTest::newRow("empty input") << QByteArray() << "Text size:  4294967295";
        QTest::newRow("one byte of the size") << QByteArray(1, '\1') << "Text size:  4294967041";
        QTest::newRow("three bytes of the size") << QByteArray("\1\0\0", 3) << "Text size:  4278190081";
        QTest::newRow("one byte too many") << littleEndian(500001, 4) + "data"
                                           << "Text size:  500001";
        QTest::newRow("as large as can be") << littleEndian(0xFFFFFFFF, 4) << "Text size:  4294967295";
    }
    void tooLargeSizeIsRefusedWithItsLines()
    {
        QFETCH(QByteArray, input);
        QFETCH(QString, sizeLine);
        LogCapture log;
        QByteArray plain("left over");
        QVERIFY(!LzHuff().expand(input, plain));
        QVERIFY(plain.isEmpty());
        const QString ruler = QString(69, QLatin1Char('='));
        const QStringList expected = {
            ruler, QStringLiteral("WARNING: skipping file, compressed stream corrupted/wrong size !!!"), sizeLine,
            ruler, QStringLiteral("Expand: ERROR")};
        QCOMPARE(log.texts(), expected);
        QCOMPARE(log.lines().first().type, QtDebugMsg);
    }

    void largestSizeExpands()
    {
        QByteArray packed;
        QByteArray plain;
        LzHuff codec;
        codec.compress(QByteArray(kLargest, 'z'), packed);
        LogCapture log;
        QVERIFY(codec.expand(packed, plain));
        QCOMPARE(plain, QByteArray(kLargest, 'z'));
        QVERIFY(log.lines().isEmpty());

        codec.compress(QByteArray(kLargest + 1, 'z'), packed);
        QVERIFY(!codec.expand(packed, plain));
    }

    void compressLogsBothLengths()
    {
        LogCapture log;
        QByteArray packed;
        LzHuff().compress("A", packed);
        LzHuff().compress(QByteArray(), packed);
        QCOMPARE(log.texts(),
                 QStringList({QStringLiteral("Compress:  1  -->  5"), QStringLiteral("Compress:  0  -->  4")}));
        QVERIFY(log.contains(QtDebugMsg, QStringLiteral("Compress:  1  -->  5")));
    }

    // In the new tree of 283 leaves the parent of node i is 283 + i / 2 and the bit that leads to it i % 2. Node 65:
    // 65, 315, 440, 503, 534, 550, 558, 562, root. Node 256: 256, 411, 488, 527, 546, 556, 561, 563, root.
    void firstSymbolsHaveTheCodesOfTheNewTree()
    {
        QByteArray packed;
        LzHuff().compress("A", packed);
        QCOMPARE(packed.toHex(), QByteArray("010000000b"));
        // A match of three blanks: code 11001010, upper position 000, lower position 000000.
        LzHuff().compress("   ", packed);
        QCOMPARE(packed.toHex(), QByteArray("03000000ca0000"));
    }

    void positionCodesFollowTheirLengths_data()
    {
        QTest::addColumn<int>("upper");
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("length");
        QTest::newRow("only one of 3 bits") << 0 << 0x00 << 3;
        QTest::newRow("first of 4 bits") << 1 << 0x20 << 4;
        QTest::newRow("last of 4 bits") << 3 << 0x40 << 4;
        QTest::newRow("first of 5 bits") << 4 << 0x50 << 5;
        QTest::newRow("last of 5 bits") << 11 << 0x88 << 5;
        QTest::newRow("first of 6 bits") << 12 << 0x90 << 6;
        QTest::newRow("last of 6 bits") << 23 << 0xBC << 6;
        QTest::newRow("first of 7 bits") << 24 << 0xC0 << 7;
        QTest::newRow("last of 7 bits") << 47 << 0xEE << 7;
        QTest::newRow("first of 8 bits") << 48 << 0xF0 << 8;
        QTest::newRow("last of 8 bits") << 63 << 0xFF << 8;
    }
    void positionCodesFollowTheirLengths()
    {
        QFETCH(int, upper);
        QFETCH(int, code);
        QFETCH(int, length);
        const PositionCodes codes;
        QCOMPARE(int(codes.code.at(std::size_t(upper))), code);
        QCOMPARE(int(codes.length.at(std::size_t(upper))), length);
        const int lastByte = code + (1 << (8 - length)) - 1;
        for (const int byte : {code, lastByte}) {
            QCOMPARE(int(codes.decodedUpper.at(std::size_t(byte))), upper);
            QCOMPARE(int(codes.decodedLength.at(std::size_t(byte))), length);
        }
    }

    void whatIsCompressedExpandsToTheSameBytes_data()
    {
        addRows(smallSamples() + largeSamples());
        for (const int size : {1, 2, 3, 27, 28, 29, 30, 57, 58, 59, 4066, 4067, 4068, 4095, 4096, 4097, 8192})
            QTest::addRow("song of %d bytes", size) << songLike(size);
    }
    void whatIsCompressedExpandsToTheSameBytes()
    {
        QFETCH(QByteArray, input);
        LzHuff codec;
        QByteArray packed;
        QByteArray plain;
        codec.compress(input, packed);
        QCOMPARE(packed.left(4), littleEndian(static_cast<quint32>(input.size()), 4));
        QVERIFY(codec.expand(packed, plain));
        QVERIFY(plain == input);
    }

    void oneObjectServesBothDirectionsAgainAndAgain()
    {
        LzHuff used;
        QByteArray packed;
        QByteArray plain;
        for (const Sample &sample : smallSamples()) {
            QByteArray fresh;
            LzHuff().compress(sample.bytes, fresh);
            used.compress(sample.bytes, packed);
            QCOMPARE(packed, fresh);
            QVERIFY(used.expand(packed, plain));
            QVERIFY(plain == sample.bytes);
        }
    }

    void anotherDecoderReadsTheStream_data() { addRows(smallSamples()); }
    void anotherDecoderReadsTheStream()
    {
        QFETCH(QByteArray, input);
        QByteArray packed;
        QByteArray plain;
        LzHuff().compress(input, packed);
        PublishedLzHuff::decode(packed.mid(4), input.size(), kLookAhead, plain);
        QVERIFY(plain == input);
    }

    void matchesAreThosePublishedOnes_data() { addRows(smallSamples()); }
    void matchesAreThosePublishedOnes()
    {
        QFETCH(QByteArray, input);
        QByteArray packed;
        QByteArray plain;
        LzHuff().compress(input, packed);
        const auto written = PublishedLzHuff::decode(packed.mid(4), input.size(), kLookAhead, plain);
        const auto expected = PublishedLzHuff::chooseMatches(input, kLookAhead);
        for (int i = 0; i < qMin(written.size(), expected.size()); ++i)
            QVERIFY2(written.at(i) == expected.at(i), qPrintable(QStringLiteral("token %1").arg(i)));
        QCOMPARE(written.size(), expected.size());
    }

    void everyMatchIsTheLongestInTheWindow_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::newRow("song") << songLike(9000);
        QTest::newRow("two values at random") << randomBytes(9000, 2);
        QTest::newRow("ten values at random") << randomBytes(9000, 10);
    }
    void everyMatchIsTheLongestInTheWindow()
    {
        QFETCH(QByteArray, input);
        QByteArray packed;
        QByteArray plain;
        LzHuff().compress(input, packed);
        const int blanks = 4096 - kLookAhead;
        const QByteArray withBlanks = QByteArray(blanks, ' ') + input;
        int at = blanks;
        for (const auto &token : PublishedLzHuff::decode(packed.mid(4), input.size(), kLookAhead, plain)) {
            // Near the end old text in the ring takes part in the search; there only the texts themselves are checked.
            if (at + kLookAhead <= withBlanks.size()) {
                const int longest = longestMatch(withBlanks, blanks, at);
                QCOMPARE(token.length, longest > 2 ? longest : 1);
            }
            at += token.length;
        }
        QCOMPARE(at, withBlanks.size());
    }

    void foreignProgramReadsTheSameAlgorithm_data() { addRows(smallSamples() + largeSamples()); }
    void foreignProgramReadsTheSameAlgorithm()
    {
        SKIP_ON_WINDOWS("the other program is one of Linux");
        QFETCH(QByteArray, input);
        // The archiver knows the same algorithm with a longest match of 60.
        QByteArray packed;
        LzHuffCore().encode(input, 60, packed);
        const QTemporaryDir folder;
        QFile archive(folder.filePath(QStringLiteral("a.lzh")));
        QVERIFY(archive.open(QIODevice::WriteOnly));
        archive.write(lhaArchive(packed, input));
        archive.close();
        QProcess lhasa;
        lhasa.setWorkingDirectory(folder.path());
        lhasa.start(QStringLiteral("lhasa"), {QStringLiteral("xfq2"), QStringLiteral("a.lzh")});
        QVERIFY2(lhasa.waitForStarted(), "the program lhasa is needed");
        QVERIFY(lhasa.waitForFinished());
        QCOMPARE(lhasa.exitCode(), 0);
        QFile extracted(folder.filePath(QStringLiteral("song")));
        QVERIFY(extracted.open(QIODevice::ReadOnly));
        QVERIFY(extracted.readAll() == input);
    }

    void largestLookAheadFitsIntoTheStorage()
    {
        LzHuffCore codec;
        for (const Sample &sample : smallSamples()) {
            QByteArray packed;
            QByteArray plain;
            codec.encode(sample.bytes, LzHuffCore::kMostLookAhead, packed);
            codec.decode(packed, 0, sample.bytes.size(), LzHuffCore::kMostLookAhead, plain);
            QVERIFY(plain == sample.bytes);
        }
    }

    void missingBitsCountAsZero()
    {
        QByteArray packed;
        QByteArray cut;
        QByteArray filledUp;
        LzHuff().compress(songLike(2000), packed);
        packed.truncate(packed.size() / 2);
        QVERIFY(LzHuff().expand(packed, cut));
        QVERIFY(LzHuff().expand(packed + QByteArray(4000, '\0'), filledUp));
        QCOMPARE(cut.size(), 2000);
        QVERIFY(cut == filledUp);
    }

    void damagedStreamsEndAfterTheStatedSize()
    {
        QByteArray packed;
        LzHuff codec;
        codec.compress(songLike(300) + QByteArray(100, ' '), packed);
        QElapsedTimer timer;
        timer.start();
        LogCapture log;
        forEachDamagedCopy(packed, [&codec](const QByteArray &damaged) {
            quint32 size = 0;
            for (int i = 3; i >= 0; --i)
                size = size << 8 | (i < damaged.size() ? quint8(damaged.at(i)) : 0xFFU);
            QByteArray plain;
            const bool expanded = codec.expand(damaged, plain);
            QCOMPARE(expanded, size >= 1 && size <= quint32(kLargest));
            QCOMPARE(plain.size(), expanded ? int(size) : 0);
        });
        QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
    }

    void garbageExpandsToTheStatedSize()
    {
        LzHuff codec;
        const QByteArray garbage = randomBytes(60000, 256);
        for (const int size : {1, 28, 29, 30, 4096, 77777, kLargest}) {
            QByteArray plain;
            QVERIFY(codec.expand(littleEndian(static_cast<quint32>(size), 4) + garbage, plain));
            QCOMPARE(plain.size(), size);
        }
        QByteArray plain;
        QVERIFY(codec.expand(littleEndian(1000, 4) + QByteArray(5000, '\xFF'), plain));
        QCOMPARE(plain.size(), 1000);
    }
};

QTEST_GUILESS_MAIN(TestLzHuff)
#include "tst_lzhuff.moc"
