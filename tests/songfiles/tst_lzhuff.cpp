#include "lzhuffsamples.h"
#include "publishedlzhuff.h"
#include "songfiles/lzhuff.h"
#include "songfiles/positioncodes.h"
#include "support/files.h"
#include "support/logcapture.h"
#include "support/platform.h"

using namespace LzHuffSamples;

const int kLookAhead = 29;

/// Reaches the core whose longest match is a parameter.
class LzHuffCore : public LzHuff
{
public:
    using LzHuff::decode;
    using LzHuff::encode;
    using LzHuff::kMostLookAhead;
};

static QByteArray compressed(const QByteArray &bytes) {
    QByteArray packed("left over");
    LzHuff().compress(bytes, packed);
    return packed;
}

static quint16 crc16(const QByteArray &bytes) {
    unsigned crc = 0;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1U) ? (crc >> 1) ^ 0xA001U : crc >> 1;
    }
    return static_cast<quint16>(crc);
}

/// The log lines with which a stream is refused.
static QStringList refused(const QByteArray &input) {
    const LogCapture log;
    QByteArray plain("left over");
    if (LzHuff().expand(input, plain) || !plain.isEmpty())
        failTest("the stream should be refused"_s);
    return log.lines().isEmpty() || log.lines().constFirst().type == QtDebugMsg ? log.texts()
                                                                                : words("no debug message");
}

/// An LHA archive of one file "song", its header of level 0.
static QByteArray lhaArchive(const QByteArray &packed, const QByteArray &plain) {
    const QByteArray dateAttributeAndLevel = "000021502000"_hex;
    const QByteArray header = "-lh1-" + littleEndian(unsigned(packed.size())) + littleEndian(unsigned(plain.size())) +
                              dateAttributeAndLevel + "\4song" + littleEndian(crc16(plain), 2);
    unsigned sum = 0;
    for (const char byte : header)
        sum += static_cast<quint8>(byte);
    return littleEndian(unsigned(header.size()), 1) + littleEndian(sum, 1) + header + packed + '\0';
}

/// Length of the longest earlier text in the window that equals the one at @p at, found by trying all.
static int longestMatch(const QByteArray &withBlanks, int blanks, int at) {
    int longest = 0;
    for (int from = qMax(blanks - kLookAhead, at - blanks); from < at; ++from) {
        int same = 0;
        while (same < kLookAhead && at + same < withBlanks.size() &&
               withBlanks.at(from + same) == withBlanks.at(at + same))
            ++same;
        longest = qMax(longest, same);
    }
    return longest;
}

class TestLzHuff : public QObject
{
    Q_OBJECT

private slots:
    // In the new tree of 283 leaves the parent of node i is 283 + i / 2 and the bit that leads to it i % 2. Node 65:
    // 65, 315, 440, 503, 534, 550, 558, 562, root. Node 256: 256, 411, 488, 527, 546, 556, 561, 563, root.
    void firstSymbolsHaveTheCodesOfTheNewTree() {
        QCOMPARE(compressed("A"), "010000000b"_hex);
        // A match of three blanks: code 11001010, upper position 000, lower position 000000.
        QCOMPARE(compressed("   "), "03000000ca0000"_hex);
        QCOMPARE(compressed(""), "\0\0\0\0"_b); // its size alone
    }

    void emptyOrTooLargeSizeIsRefusedWithItsLines() {
        const QString ruler = QString(69, QLatin1Char('='));
        const QString warning = "WARNING: skipping file, compressed stream corrupted/wrong size !!!"_s;
        const auto tooLarge = [ruler, warning](const QString &size) {
            return QStringList({ruler, warning, "Text size:  "_s + size, ruler, "Expand: ERROR"_s});
        };
        same("zero", refused("\0\0\0\0"_b), QStringList());
        same("zero and more", refused("\0\0\0\0more"_b), QStringList());
        same("empty input", refused(""), tooLarge("4294967295"_s));
        same("one byte of the size", refused("\1"), tooLarge("4294967041"_s));
        same("three bytes of the size", refused("\1\0\0"_b), tooLarge("4278190081"_s));
        same("one byte too many", refused(littleEndian(500001) + "data"), tooLarge("500001"_s));
        same("as large as can be", refused(littleEndian(0xFFFFFFFF)), tooLarge("4294967295"_s));
    }

    void largestSizeExpands() {
        QByteArray packed = compressed(QByteArray(kLargest, 'z'));
        QByteArray plain;
        LogCapture log;
        QVERIFY(LzHuff().expand(packed, plain));
        QCOMPARE(plain, QByteArray(kLargest, 'z'));
        QVERIFY(log.lines().isEmpty());
        packed = compressed(QByteArray(kLargest + 1, 'z'));
        QVERIFY(!LzHuff().expand(packed, plain));
    }

    void compressLogsBothLengths() {
        LogCapture log;
        compressed("A");
        compressed("");
        QCOMPARE(log.texts(), QStringList({"Compress:  1  -->  5"_s, "Compress:  0  -->  4"_s}));
        QVERIFY(log.contains(QtDebugMsg, "Compress:  1  -->  5"_s));
    }

    void positionCodesFollowTheirLengths() {
        const PositionCodes codes;
        const auto check = [&codes](const char *name, int upper, int code, int length) {
            same(name, int(codes.code.at(std::size_t(upper))), code);
            same(name, int(codes.length.at(std::size_t(upper))), length);
            const int lastByte = code + (1 << (8 - length)) - 1;
            for (const int byte : {code, lastByte}) {
                same(name, int(codes.decodedUpper.at(std::size_t(byte))), upper);
                same(name, int(codes.decodedLength.at(std::size_t(byte))), length);
            }
        };
        check("only one of 3 bits", 0, 0x00, 3);
        check("first of 4 bits", 1, 0x20, 4);
        check("last of 4 bits", 3, 0x40, 4);
        check("first of 5 bits", 4, 0x50, 5);
        check("last of 5 bits", 11, 0x88, 5);
        check("first of 6 bits", 12, 0x90, 6);
        check("last of 6 bits", 23, 0xBC, 6);
        check("first of 7 bits", 24, 0xC0, 7);
        check("last of 7 bits", 47, 0xEE, 7);
        check("first of 8 bits", 48, 0xF0, 8);
        check("last of 8 bits", 63, 0xFF, 8);
    }

    void whatIsCompressedExpandsToTheSameBytes_data() {
        addAllSamples();
        for (const int size : {1, 2, 3, 27, 28, 29, 30, 57, 58, 59, 4066, 4067, 4068, 4095, 4096, 4097, 8192})
            QTest::addRow("song of %d bytes", size) << songLike(size);
    }
    void whatIsCompressedExpandsToTheSameBytes() {
        QFETCH(QByteArray, input);
        static LzHuff used; // one object serves both directions again and again
        QByteArray packed("left over");
        QByteArray plain("left over");
        used.compress(input, packed);
        QVERIFY(packed == compressed(input));
        QCOMPARE(packed.left(4), littleEndian(unsigned(input.size())));
        QVERIFY(used.expand(packed, plain));
        QVERIFY(plain == input);
    }

    void anotherDecoderReadsTheStreamMadeOfThePublishedMatches_data() { addSmallSamples(); }
    void anotherDecoderReadsTheStreamMadeOfThePublishedMatches() {
        QFETCH(QByteArray, input);
        QByteArray plain;
        const auto written = PublishedLzHuff::decode(compressed(input).mid(4), input.size(), kLookAhead, plain);
        QVERIFY(plain == input);
        const auto expected = PublishedLzHuff::chooseMatches(input, kLookAhead);
        for (int i = 0; i < qMin(written.size(), expected.size()); ++i)
            QVERIFY2(written.at(i) == expected.at(i), qPrintable("token %1"_s.arg(i)));
        QCOMPARE(written.size(), expected.size());
    }

    void everyMatchIsTheLongestInTheWindow_data() {
        columns<QByteArray>("input");
        row("song", songLike(9000));
        row("two values at random", randomBytes(9000, 2));
        row("ten values at random", randomBytes(9000, 10));
    }
    void everyMatchIsTheLongestInTheWindow() {
        QFETCH(QByteArray, input);
        QByteArray plain;
        const int blanks = 4096 - kLookAhead;
        const QByteArray withBlanks = QByteArray(blanks, ' ') + input;
        int at = blanks;
        for (const auto &token : PublishedLzHuff::decode(compressed(input).mid(4), input.size(), kLookAhead, plain)) {
            // Near the end old text in the ring takes part in the search; there only the texts themselves are checked.
            if (at + kLookAhead <= withBlanks.size()) {
                const int longest = longestMatch(withBlanks, blanks, at);
                QCOMPARE(token.length, longest > 2 ? longest : 1);
            }
            at += token.length;
        }
        QCOMPARE(at, withBlanks.size());
    }

    void foreignProgramReadsTheSameAlgorithm_data() { addAllSamples(); }
    void foreignProgramReadsTheSameAlgorithm() {
        SKIP_ON_WINDOWS("the other program is one of Linux");
        QFETCH(QByteArray, input);
        // The archiver knows the same algorithm with a longest match of 60.
        QByteArray packed;
        LzHuffCore().encode(input, 60, packed);
        PcFolder folder;
        const QString archive = folder.addFile("a.lzh"_s, lhaArchive(packed, input));
        QVERIFY2(runProgram("lhasa"_s, {"xfq2w="_s + folder.path(), archive}), "the program lhasa is needed");
        QVERIFY(folder.content("song"_s) == input);
    }

    void largestLookAheadFitsIntoTheStorage_data() { addSmallSamples(); }
    void largestLookAheadFitsIntoTheStorage() {
        QFETCH(QByteArray, input);
        static LzHuffCore codec;
        QByteArray packed;
        QByteArray plain;
        codec.encode(input, LzHuffCore::kMostLookAhead, packed);
        codec.decode(packed, 0, input.size(), LzHuffCore::kMostLookAhead, plain);
        QVERIFY(plain == input);
    }

    void missingBitsCountAsZero() {
        QByteArray packed = compressed(songLike(2000));
        packed.truncate(packed.size() / 2);
        QByteArray cut;
        QByteArray filledUp;
        QVERIFY(LzHuff().expand(packed, cut));
        QVERIFY(LzHuff().expand(packed + QByteArray(4000, '\0'), filledUp));
        QCOMPARE(cut.size(), 2000);
        QVERIFY(cut == filledUp);
    }

    void damagedStreamsEndAfterTheStatedSize() {
        const QByteArray packed = compressed(songLike(300) + QByteArray(100, ' '));
        QElapsedTimer timer;
        timer.start();
        LzHuff codec;
        LogCapture log;
        forEachDamagedCopy(packed, [&codec](const QByteArray &damaged) {
            const QByteArray head = damaged.left(4).leftJustified(4, '\xFF'); // missing bytes count as FF
            const auto size = qFromLittleEndian<quint32>(head.constData());
            QByteArray plain;
            const bool expanded = codec.expand(damaged, plain);
            QCOMPARE(expanded, size >= 1 && size <= quint32(kLargest));
            QCOMPARE(plain.size(), expanded ? int(size) : 0);
        });
        QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
    }

    void garbageExpandsToTheStatedSize() {
        LzHuff codec;
        QByteArray plain;
        for (const int size : {1, 28, 29, 30, 4096, 77777, kLargest}) {
            QVERIFY(codec.expand(littleEndian(unsigned(size)) + randomBytes(60000), plain));
            QCOMPARE(plain.size(), size);
        }
        QVERIFY(codec.expand(littleEndian(1000) + QByteArray(5000, '\xFF'), plain));
        QCOMPARE(plain.size(), 1000);
    }
};

QTEST_GUILESS_MAIN(TestLzHuff)
#include "tst_lzhuff.moc"
